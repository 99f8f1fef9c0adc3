#include "adapters/cairo/detail/StrokePath.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/Page.h"

namespace zelbase::detail {
namespace {

bool IsFar(const Point& point) { return std::abs(point.x) > kFarthest || std::abs(point.y) > kFarthest; }

// A line of which a part lies too far away: that part is cut off.
void EmitCut(cairo_t* path, const Point& from, const Point& to) {
  static const Page page(-kFarthest, -kFarthest, kFarthest, kFarthest);
  Line line(from, to);
  if (!page.ClipLine(line)) return;
  cairo_move_to(path, line.start.x, line.start.y);
  cairo_line_to(path, line.end.x, line.end.y);
}

// One step along the longer direction before `to`.
Point StepBefore(const Point& from, const Point& to) {
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const double run = std::max(std::abs(dx), std::abs(dy));
  return Point(to.x - dx / run, to.y - dy / run, 0);
}

}  // namespace

void StrokePath::Add(cairo_t* path, const CPoint& from, const CPoint& to) {
  if (m_points.empty() || !(m_points.back() == from)) {
    Emit(path);
    m_points.push_back(from);
  }
  m_points.push_back(to);
  m_isComplete = false;
}

bool StrokePath::CompleteAt(const CPoint& end) {
  if (m_points.empty() || !(m_points.back() == end)) return false;
  m_isComplete = true;
  return true;
}

void StrokePath::Finish(cairo_t* path) {
  Emit(path);
  m_segments = 0;
}

void StrokePath::Emit(cairo_t* path) {
  const double half = m_isOdd ? 0.5 : 0.0;
  const auto at = [half](const CPoint& point) { return Point(point.x + half, point.y + half, 0); };
  const std::size_t count = m_points.size();
  bool isInPath = false;  // the path's present point is the line's
  for (std::size_t i = 1; i < count; ++i) {
    const Point from = at(m_points[i - 1]);
    Point to = at(m_points[i]);
    if (i + 1 == count && m_isOdd && !m_isComplete) to = StepBefore(from, to);
    if (IsFar(from) || IsFar(to)) {
      EmitCut(path, from, to);
      isInPath = false;
      continue;
    }
    if (!isInPath) cairo_move_to(path, from.x, from.y);
    cairo_line_to(path, to.x, to.y);
    isInPath = true;
  }
  m_segments += count;
  m_points.clear();
}

}  // namespace zelbase::detail
