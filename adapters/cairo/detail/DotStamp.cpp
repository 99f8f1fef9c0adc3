#include "adapters/cairo/detail/DotStamp.h"

#include <cstddef>

namespace zelbase::detail {
namespace {

// Each of the three colours on its own: from `under` towards `over` by coverage / 255, rounded.
std::uint32_t Mix(std::uint32_t under, std::uint32_t over, std::uint32_t coverage) {
  std::uint32_t result = 0;
  for (unsigned shift = 0; shift < 24; shift += 8) {
    const std::uint32_t sum = (under >> shift & 0xFFu) * (255 - coverage) + (over >> shift & 0xFFu) * coverage;
    result |= (sum + 127) / 255 << shift;
  }
  return result;
}

}  // namespace

DotStamp::DotStamp(int radius) : m_radius(radius) {
  const EllipseRows rows(CRect(-radius, -radius, radius + 1, radius + 1));
  for (int dy = -radius; dy <= radius; ++dy) {
    m_rows.push_back(rows.Row(dy));
    for (int dx = -radius; dx <= radius; ++dx) m_coverage.push_back(CoverageOf(dx, dy));
  }
}

// By 16 x 16 points in the pixel.
std::uint8_t DotStamp::CoverageOf(int dx, int dy) const {
  constexpr int kPoints = 16;
  const auto place = [](int pixel, int i) { return (2 * i + 1 - kPoints) + 2 * kPoints * pixel; };  // in 32nds of a pixel
  const int reach = kPoints * (2 * m_radius + 1);
  int inside = 0;
  for (int i = 0; i < kPoints; ++i) {
    for (int j = 0; j < kPoints; ++j) {
      const int x = place(dx, i);
      const int y = place(dy, j);
      inside += x * x + y * y <= reach * reach ? 1 : 0;
    }
  }
  return static_cast<std::uint8_t>(inside * 255 / (kPoints * kPoints));
}

void DotStamp::Paint(const PixelCanvas& canvas, int x, int y, const PixelInk& ink) const {
  const CRect& clip = canvas.Clip();
  const bool isWhole = x >= clip.left + m_radius && x < clip.right - m_radius && y >= clip.top + m_radius && y < clip.bottom - m_radius;
  if (isWhole) {
    for (int dy = -m_radius; dy <= m_radius; ++dy) {
      const RowSpan& row = m_rows[static_cast<std::size_t>(dy + m_radius)];
      std::uint32_t* const middle = &canvas.At(x, y + dy);
      for (int dx = row.first; dx <= row.last; ++dx) ink.Paint(middle[dx]);
    }
    return;
  }
  for (int dy = -m_radius; dy <= m_radius; ++dy) {
    const RowSpan& row = m_rows[static_cast<std::size_t>(dy + m_radius)];
    canvas.FillRow(SaturatedAdd(y, dy), SaturatedAdd(x, row.first), SaturatedAdd(x, row.last), ink);
  }
}

void DotStamp::PaintSmooth(const PixelCanvas& canvas, int x, int y, std::uint32_t pixel) const {
  std::size_t at = 0;
  for (int dy = -m_radius; dy <= m_radius; ++dy) {
    for (int dx = -m_radius; dx <= m_radius; ++dx, ++at) {
      const int column = SaturatedAdd(x, dx);
      const int row = SaturatedAdd(y, dy);
      const std::uint32_t coverage = m_coverage[at];
      if (coverage == 0 || !canvas.IsInside(column, row)) continue;
      std::uint32_t& painted = canvas.At(column, row);
      painted = coverage == 255 ? pixel : Mix(painted, pixel, coverage);
    }
  }
}

}  // namespace zelbase::detail
