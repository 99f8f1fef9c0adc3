// The pixels of a wide line with round ends, row by row. Neighbours: EllipseRows.h, the same of an ellipse; PixelCanvas.h, which
// paints them; StrokePath.h, lines that Cairo strokes.
#pragma once

#include <array>

#include "adapters/cairo/detail/EllipseRows.h"
#include "zelbase/geometry/Point.h"
#include "zelbase/platform/CPoint.h"

namespace zelbase::detail {

// What a pen covers between the first and the last point of a line as CDC draws it: a pen of an odd width runs through the pixels'
// centres and ends one step, along the longer direction, before the end; one of an even width runs along their edges to the end.
struct PenTrack {
  PenTrack(const CPoint& from, const CPoint& to, int width);
  Point start;
  Point end;
};

// All that is at most half the width away from a track: a pixel belongs to it when its centre does.
class ThickLine {
 public:
  // Two different points.
  ThickLine(const CPoint& from, const CPoint& to, int width);

  // Rows with pixels are among these; as far as int reaches.
  int Top() const { return m_top; }
  int Bottom() const { return m_bottom; }  // excluded

  RowSpan Row(int y) const;

 private:
  struct Reach {
    double left;
    double right;
    void Include(double x);
  };
  void IncludeEnd(Reach& reach, const Point& end, double y) const;
  static void IncludeSide(Reach& reach, const Point& a, const Point& b, double y);

  PenTrack m_track;
  double m_radius;
  std::array<Point, 4> m_corners;  // of the part between the ends
  int m_top;
  int m_bottom;
};

}  // namespace zelbase::detail
