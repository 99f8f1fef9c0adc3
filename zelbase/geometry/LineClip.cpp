#include <limits>
#include <utility>

#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/Page.h"

namespace {

// A coordinate where no line ends: the answer "no crossing".
constexpr double kNowhere = -std::numeric_limits<double>::max();

// In either order; nothing lies between NaN and anything.
bool IsBetween(double value, double a, double b) { return (a <= value && value <= b) || (b <= value && value <= a); }

bool DifferInPlane(const Point& a, const Point& b) { return a.x != b.x || a.y != b.y; }

// The crossings of a line, ordered from left to right, with the edges of a page: two at the most.
// Kept: a line through a corner finds it on both edges, and the second finding stands for the other end's
// crossing.
class EdgeCrossings {
 public:
  EdgeCrossings(const Line& line, const Page& page, bool extend) : m_line(line), m_page(page), m_extend(extend) {}

  void TryVertical(double edge) {
    double y = 0.0;
    bool inSegment = false;
    // Kept: an exactly vertical line is refused here, and TryHorizontal finds NaN for it: it has no
    // crossings.
    if (!m_line.GetLineY(edge, y, inSegment) || !(inSegment || m_extend)) return;
    if (IsBetween(y, m_page.bottom, m_page.top)) m_points[m_count++] = Point(edge, y, 0.0);
  }

  void TryHorizontal(double edge) {
    if (m_count == 2) return;
    double x = 0.0;
    bool inSegment = false;
    if (!m_line.GetLineX(edge, x, inSegment) || !(inSegment || m_extend)) return;
    if (IsBetween(x, m_page.left, m_page.right)) m_points[m_count++] = Point(x, edge, 0.0);
  }

  // The crossings in the direction of the line as it was before it was ordered.
  Line Result(bool reversed) const {
    if (m_count == 0) return Line(Point(kNowhere, kNowhere, 0.0), Point(kNowhere, kNowhere, 0.0));
    // Kept: a line that only enters or leaves has no length; callers ask where its ends lie.
    if (m_count == 1) return Line(m_points[0], m_points[0]);
    const bool runsLeft = m_points[1].x < m_points[0].x;
    return reversed != runsLeft ? Line(m_points[1], m_points[0]) : Line(m_points[0], m_points[1]);
  }

  bool Any() const { return m_count != 0; }

 private:
  const Line& m_line;
  const Page& m_page;
  bool m_extend;
  Point m_points[2];
  int m_count = 0;
};

}  // namespace

Line Line::Clip(const Page& page, bool flip, bool extend, bool& startClipped, bool& endClipped) const {
  startClipped = false;
  endClipped = false;
  Page edges = page;
  edges.Normalize();
  // Kept: this changes nothing but which of the two is tried first.
  if (flip) std::swap(edges.bottom, edges.top);
  const bool reversed = end.x < start.x;
  const Line ordered = reversed ? Line(end, start) : *this;

  EdgeCrossings crossings(ordered, edges, extend);
  crossings.TryVertical(edges.left);
  crossings.TryVertical(edges.right);
  crossings.TryHorizontal(edges.bottom);
  crossings.TryHorizontal(edges.top);
  const Line result = crossings.Result(reversed);
  if (!crossings.Any()) return result;
  startClipped = DifferInPlane(result.start, start);
  endClipped = DifferInPlane(result.end, end);
  return result;
}

Line Line::Clip(const Page& page, bool flip, bool& startClipped, bool& endClipped) const {
  return Clip(page, flip, false, startClipped, endClipped);
}
