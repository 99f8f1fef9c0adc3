#include "adapters/cairo/detail/StrokePath.h"

#include <cmath>
#include <cstdlib>

#include "adapters/cairo/detail/ThickLine.h"
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

}  // namespace

void StrokePath::Add(cairo_t* path, const CPoint& from, const CPoint& to) {
  if (!GoesOnFrom(from)) {
    Emit(path);
    m_points.push_back(from);
  }
  m_points.push_back(to);
  m_isComplete = false;
}

bool StrokePath::CompleteAt(const CPoint& end) {
  if (!GoesOnFrom(end)) return false;
  m_isComplete = true;
  return true;
}

void StrokePath::Finish(cairo_t* path) {
  Emit(path);
  m_segments = 0;
}

void StrokePath::Emit(cairo_t* path) {
  const std::size_t count = m_points.size();
  bool isInPath = false;  // the path's present point is the line's
  for (std::size_t i = 1; i < count; ++i) {
    const Point from = PenTrack(m_points[i - 1], m_points[i], m_width).start;
    const bool isEnd = i + 1 == count && !m_isComplete;
    // A line that goes on has its end where the next one begins.
    const Point to = isEnd ? PenTrack(m_points[i - 1], m_points[i], m_width).end : PenTrack(m_points[i], m_points[i], m_width).start;
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
