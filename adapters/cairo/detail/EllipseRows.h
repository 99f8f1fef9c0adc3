// The pixels of an ellipse, row by row. Neighbour: PixelCanvas.h, which paints them.
#pragma once

#include "zelbase/platform/CRect.h"

namespace zelbase::detail {

// Pixels of a row, both ends included; none when `last` is less than `first`.
struct RowSpan {
  int first = 1;
  int last = 0;
  bool IsEmpty() const { return last < first; }
};

// The ellipse that touches the four sides of a rectangle. A pixel belongs to it when its centre is inside or on it: the shape is
// its own mirror image both ways, and a circle reaches all four sides.
class EllipseRows {
 public:
  // The edges in order, right and bottom excluded.
  explicit EllipseRows(const CRect& bounds);

  const CRect& Bounds() const { return m_bounds; }

  // Empty for a row outside the rectangle.
  RowSpan Row(int y) const;

 private:
  CRect m_bounds;
  double m_centreX;
  double m_centreY;
  double m_radiusX;
  double m_radiusY;
};

}  // namespace zelbase::detail
