#include <algorithm>
#include <cmath>

#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/Page.h"
#include "zelbase/geometry/detail/ArcPieces.h"

namespace {

// Below this a distance in x or y divides nothing.
constexpr double kNoDistance = 4.440892098500626e-16;

// A circle below this radius is refused.
constexpr double kSmallestRadius = 1e-05;

constexpr unsigned int kAbove = 1;
constexpr unsigned int kBelow = 2;
constexpr unsigned int kRight = 4;
constexpr unsigned int kLeft = 8;

// The lower and the upper bound of both axes of a page, whatever its orientation.
struct Bounds {
  double xMin;
  double xMax;
  double yMin;
  double yMax;
};

Bounds OrderedBounds(const Page& page) {
  return {std::min(page.left, page.right), std::max(page.left, page.right), std::min(page.bottom, page.top),
          std::max(page.bottom, page.top)};
}

// The edges beyond which the point lies; on an edge is inside.
unsigned int ClipOutCode(const Bounds& bounds, const Point& point) {
  const unsigned int above = point.y > bounds.yMax ? kAbove : 0;
  const unsigned int below = point.y < bounds.yMin ? kBelow : 0;
  const unsigned int right = point.x > bounds.xMax ? kRight : 0;
  const unsigned int left = point.x < bounds.xMin ? kLeft : 0;
  return above | below | right | left;
}

// Moves `end` along the segment to `other` onto the edges that its code names, in the order upper y, lower y,
// upper x, lower x. True as soon as it lies in the page.
bool ClipEnd(const Bounds& bounds, unsigned int code, Point& end, const Point& other) {
  // Kept: the code is not found anew after a move; an end becomes "inside" only by the test that follows its
  // own move.
  if ((code & (kAbove | kBelow)) != 0) {
    const double edge = (code & kAbove) != 0 ? bounds.yMax : bounds.yMin;
    if (std::fabs(other.y - end.y) > kNoDistance) end.x += (other.x - end.x) * (edge - end.y) / (other.y - end.y);
    end.y = edge;
    if (bounds.xMin <= end.x && end.x <= bounds.xMax) return true;
  }
  if ((code & (kRight | kLeft)) != 0) {
    const double edge = (code & kRight) != 0 ? bounds.xMax : bounds.xMin;
    if (std::fabs(other.x - end.x) > kNoDistance) end.y += (other.y - end.y) * (edge - end.x) / (other.x - end.x);
    end.x = edge;
    if (bounds.yMin <= end.y && end.y <= bounds.yMax) return true;
  }
  return false;
}

// Heights of both ends of `out` from those of `in`, by the larger of the distances in x and y.
void InterpolateHeights(const Line& in, Line& out) {
  // Kept: `in` may be `out`; then the ends are measured against themselves and keep the heights that they
  // had.
  const double dx = std::fabs(in.end.x - in.start.x);
  const double dy = std::fabs(in.end.y - in.start.y);
  const double dz = in.end.z - in.start.z;
  if (dx > dy) {
    out.start.z = in.start.z + dz * std::fabs(out.start.x - in.start.x) / dx;
    out.end.z = in.start.z + dz * std::fabs(out.end.x - in.start.x) / dx;
  } else if (!(dy <= kNoDistance)) {
    out.start.z = in.start.z + dz * std::fabs(out.start.y - in.start.y) / dy;
    out.end.z = in.start.z + dz * std::fabs(out.end.y - in.start.y) / dy;
  }
}

}  // namespace

bool Page::ClipRect(Page& rect) const {
  if (!IsRectInPage(rect)) return false;
  rect.left = std::max(rect.left, left);
  rect.bottom = std::max(rect.bottom, bottom);
  rect.right = std::min(rect.right, right);
  rect.top = std::min(rect.top, top);
  return true;
}

bool Page::ClipLine(const Line& in, Line* out) const {
  if (out == nullptr) return false;
  const Bounds bounds = OrderedBounds(*this);
  const unsigned int startCode = ClipOutCode(bounds, in.start);
  const unsigned int endCode = ClipOutCode(bounds, in.end);
  if ((startCode & endCode) != 0) return false;

  *out = in;
  // Kept: where the second end fails the first stays clipped in `out`.
  if (startCode != 0 && !ClipEnd(bounds, startCode, out->start, out->end)) return false;
  if (endCode != 0 && !ClipEnd(bounds, endCode, out->end, out->start)) return false;
  if (in.start.z == 0.0 && in.end.z == 0.0) return true;
  InterpolateHeights(in, *out);
  return true;
}

bool Page::ClipLine(Line& line) const { return ClipLine(line, &line); }

bool Page::ClipCircle(const Point& centre, double radius, double start, double end, int& count, double* starts, double* ends) const {
  count = 0;
  const double r = std::fabs(radius);
  if (r < kSmallestRadius || starts == nullptr || ends == nullptr) return false;
  zelbase::detail::ArcPieces pieces(*this, centre, r, start);
  pieces.FindCrossings();
  pieces.SelectCrossings(end);
  count = pieces.Write(starts, ends);
  return true;
}
