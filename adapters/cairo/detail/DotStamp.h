// One filled circle, prepared to be painted a million times. Neighbours: PixelCanvas.h, on which it is painted; EllipseRows.h, its
// shape.
#pragma once

#include <cstdint>
#include <vector>

#include "adapters/cairo/detail/EllipseRows.h"
#include "adapters/cairo/detail/PixelCanvas.h"

namespace zelbase::detail {

// The circle of 2 * radius + 1 pixels across, about the pixel that it is painted at.
class DotStamp {
 public:
  static constexpr int kLargest = 64;

  // 0 <= radius <= kLargest.
  explicit DotStamp(int radius);

  // The pixels whose centres are in the circle.
  void Paint(const PixelCanvas& canvas, int x, int y, const PixelInk& ink) const;

  // All pixels that the circle touches, mixed with `pixel` by the part of each that it covers.
  void PaintSmooth(const PixelCanvas& canvas, int x, int y, std::uint32_t pixel) const;

 private:
  std::uint8_t CoverageOf(int dx, int dy) const;

  int m_radius;
  std::vector<RowSpan> m_rows;           // from the top; relative to the middle
  std::vector<std::uint8_t> m_coverage;  // row by row, 255 for all of a pixel
};

}  // namespace zelbase::detail
