#include "adapters/cairo/detail/PixelCanvas.h"

#include <algorithm>
#include <array>
#include <initializer_list>

#include "zelbase/platform/CDC.h"

namespace zelbase::detail {
namespace {

// Bits of pixels painted and left out by turns, painted first.
constexpr std::uint32_t Bits(std::initializer_list<unsigned> runs) {
  std::uint32_t bits = 0;
  unsigned at = 0;
  bool painted = true;
  for (const unsigned run : runs) {
    if (painted) bits |= ((1u << run) - 1) << at;
    at += run;
    painted = !painted;
  }
  return bits;
}

constexpr std::array<std::uint32_t, 5> kDashes = {DashPattern::kSolid, Bits({18, 6}), Bits({3, 3, 3, 3, 3, 3, 3, 3}), Bits({9, 6, 3, 6}),
                                                  Bits({9, 3, 3, 3, 3, 3})};

using Wide = long long;

// Pixels along a line, counted from 0: those in [first, last] are seen.
struct Stretch {
  Wide first;
  Wide last;
};

// Cuts to the pixels whose coordinate start + sign * k lies in [low, high).
void CutAlong(Stretch& seen, int start, int sign, int low, int high) {
  const Wide near = sign > 0 ? Wide{low} - start : Wide{start} - (Wide{high} - 1);
  const Wide far = sign > 0 ? Wide{high} - 1 - start : Wide{start} - low;
  seen.first = std::max(seen.first, near);
  seen.last = std::min(seen.last, far);
}

// How a line moves across its longer direction: after k pixels by the whole number nearest to k * rise / run, where an exact
// half goes down when `turn` is more than half of `run`, and up otherwise.
struct Slope {
  std::uint64_t run;
  std::uint64_t rise;
  std::uint64_t turn;

  Wide At(Wide k) const {
    const std::uint64_t product = static_cast<std::uint64_t>(k) * rise;  // both below 2^32
    return static_cast<Wide>(product / run + (product % run >= turn ? 1 : 0));
  }

  // The remainder at k, less what is missing to the next step: below 0, and at 0 the step is made.
  Wide ErrorAt(Wide k) const {
    const std::uint64_t rest = static_cast<std::uint64_t>(k) * rise % run;
    return static_cast<Wide>(rest) - static_cast<Wide>(turn) - (rest >= turn ? static_cast<Wide>(run) : 0);
  }

  // The first k of [first, last + 1] from which on the line has moved by at least `least`.
  Wide FirstReaching(const Stretch& range, Wide least) const {
    Wide low = range.first;
    Wide high = range.last + 1;
    while (low < high) {
      const Wide middle = low + (high - low) / 2;
      if (At(middle) >= least) {
        high = middle;
      } else {
        low = middle + 1;
      }
    }
    return low;
  }
};

// The same across the line.
void CutAcross(Stretch& seen, const Slope& slope, int start, int sign, int low, int high) {
  const Wide rise = static_cast<Wide>(slope.rise);
  Stretch moved = {0, rise};
  CutAlong(moved, start, sign, low, high);
  Stretch cut = seen;
  if (moved.last < rise) cut.last = slope.FirstReaching(seen, moved.last + 1) - 1;
  if (moved.first > 0) cut.first = slope.FirstReaching(seen, moved.first);
  seen = cut;
}

// One direction of a line: where it begins, which way it goes and how far.
struct Direction {
  int start;
  int sign;
  std::uint64_t length;
  Direction(int from, int to)
      : start(from), sign(to < from ? -1 : 1), length(static_cast<std::uint64_t>(to < from ? Wide{from} - to : Wide{to} - from)) {}
};

}  // namespace

PixelInk PixelInk::Make(COLORREF color, int rop2) {
  if (rop2 == R2_NOT) return {~0u, kColourBits};
  return {rop2 == R2_XORPEN ? ~0u : 0u, ToPixel(color)};
}

DashPattern DashPattern::Make(unsigned style) { return {style < kDashes.size() ? kDashes[style] : kSolid, 0}; }

PixelCanvas::PixelCanvas(std::uint32_t* pixels, std::ptrdiff_t stride, int width, int height)
    : m_pixels(pixels), m_stride(stride), m_width(width), m_height(height), m_clip(0, 0, width, height) {}

void PixelCanvas::SetClip(const CRect& clip) {
  m_clip = CRect(std::max(clip.left, 0), std::max(clip.top, 0), std::min(clip.right, m_width), std::min(clip.bottom, m_height));
}

void PixelCanvas::FillRow(int y, int first, int last, const PixelInk& ink) const {
  if (y < m_clip.top || y >= m_clip.bottom) return;
  const int from = std::max(first, m_clip.left);
  const int to = std::min(last, m_clip.right - 1);
  if (from > to) return;
  std::uint32_t* const row = &At(0, y);
  for (int x = from; x <= to; ++x) ink.Paint(row[x]);
}

void PixelCanvas::FillRect(const CRect& rect, const PixelInk& ink) const {
  if (rect.IsRectEmpty()) return;
  const int bottom = std::min(rect.bottom, m_clip.bottom);
  for (int y = std::max(rect.top, m_clip.top); y < bottom; ++y) FillRow(y, rect.left, rect.right - 1, ink);
}

void PixelCanvas::Line(const CPoint& from, const CPoint& to, const PixelInk& ink, DashPattern& dash) const {
  const Direction x(from.x, to.x);
  const Direction y(from.y, to.y);
  const bool isFlat = x.length >= y.length;
  const Direction& along = isFlat ? x : y;
  const Direction& across = isFlat ? y : x;
  if (along.length == 0 || m_clip.IsRectEmpty()) return;

  const Slope slope = {along.length, across.length, across.sign > 0 ? along.length / 2 + 1 : (along.length + 1) / 2};
  Stretch seen = {0, static_cast<Wide>(along.length) - 1};
  CutAlong(seen, along.start, along.sign, isFlat ? m_clip.left : m_clip.top, isFlat ? m_clip.right : m_clip.bottom);
  if (seen.first <= seen.last) {
    CutAcross(seen, slope, across.start, across.sign, isFlat ? m_clip.top : m_clip.left, isFlat ? m_clip.bottom : m_clip.right);
  }
  const unsigned phase = dash.phase;
  dash.phase = static_cast<unsigned>((phase + along.length) % DashPattern::kPeriod);
  if (seen.first > seen.last) return;

  const std::ptrdiff_t stepAlong = along.sign * (isFlat ? 1 : m_stride);
  const std::ptrdiff_t stepAcross = across.sign * (isFlat ? m_stride : 1);
  const Wide a = along.start + along.sign * seen.first;
  const Wide b = across.start + across.sign * slope.At(seen.first);
  std::ptrdiff_t at = (isFlat ? b : a) * m_stride + (isFlat ? a : b);
  Wide error = slope.ErrorAt(seen.first);
  const Wide rise = static_cast<Wide>(slope.rise);
  const Wide run = static_cast<Wide>(slope.run);
  const auto step = [&] {
    at += stepAlong;
    error += rise;
    const bool moves = error >= 0;
    at += moves ? stepAcross : 0;
    error -= moves ? run : 0;
  };
  if (dash.bits == DashPattern::kSolid) {
    for (Wide k = seen.first; k <= seen.last; ++k, step()) ink.Paint(m_pixels[at]);
    return;
  }
  for (Wide k = seen.first; k <= seen.last; ++k, step()) {
    if ((dash.bits >> (static_cast<std::uint64_t>(k) + phase) % DashPattern::kPeriod & 1u) != 0) ink.Paint(m_pixels[at]);
  }
}

void PixelCanvas::Line(const ThickLine& line, const PixelInk& ink) const {
  const int bottom = std::min(line.Bottom(), m_clip.bottom);
  for (int y = std::max(line.Top(), m_clip.top); y < bottom; ++y) {
    const RowSpan row = line.Row(y);
    FillRow(y, row.first, row.last, ink);
  }
}

void PixelCanvas::Ellipse(const EllipseRows& rows, const PixelInk* edge, const PixelInk* inside) const {
  const int top = std::max(rows.Bounds().top, m_clip.top);
  const int bottom = std::min(rows.Bounds().bottom, m_clip.bottom);
  if (top >= bottom) return;
  RowSpan above = top == rows.Bounds().top ? RowSpan() : rows.Row(top - 1);
  RowSpan row = rows.Row(top);
  for (int y = top; y < bottom; ++y) {
    const RowSpan below = rows.Row(y + 1);  // bottom is at most the clip's: y + 1 does not overflow
    if (!row.IsEmpty()) {
      RowSpan inner = {std::max({row.first + 1, above.first, below.first}), std::min({row.last - 1, above.last, below.last})};
      if (above.IsEmpty() || below.IsEmpty() || inner.IsEmpty()) inner = {row.last + 1, row.last};
      if (edge != nullptr) {
        FillRow(y, row.first, inner.first - 1, *edge);
        FillRow(y, inner.last + 1, row.last, *edge);
      }
      if (inside != nullptr) FillRow(y, inner.first, inner.last, *inside);
    }
    above = row;
    row = below;
  }
}

}  // namespace zelbase::detail
