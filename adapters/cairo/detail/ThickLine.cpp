#include "adapters/cairo/detail/ThickLine.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zelbase::detail {
namespace {

int NearestWhole(double value) {
  constexpr double kLowest = std::numeric_limits<int>::min();
  constexpr double kHighest = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(value, kLowest, kHighest));
}

}  // namespace

PenTrack::PenTrack(const CPoint& from, const CPoint& to, int width) {
  const bool isOdd = width % 2 != 0;
  const double half = isOdd ? 0.5 : 0.0;
  start = Point(from.x + half, from.y + half, 0);
  end = Point(to.x + half, to.y + half, 0);
  const double dx = end.x - start.x;
  const double dy = end.y - start.y;
  const double run = std::max(std::abs(dx), std::abs(dy));
  if (isOdd && run > 0) end = Point(end.x - dx / run, end.y - dy / run, 0);
}

ThickLine::ThickLine(const CPoint& from, const CPoint& to, int width) : m_track(from, to, width), m_radius(width / 2.0) {
  const double dx = m_track.end.x - m_track.start.x;
  const double dy = m_track.end.y - m_track.start.y;
  const double length = std::hypot(dx, dy);
  const double acrossX = length > 0 ? -dy / length * m_radius : 0;
  const double acrossY = length > 0 ? dx / length * m_radius : 0;
  m_corners = {Point(m_track.start.x + acrossX, m_track.start.y + acrossY, 0), Point(m_track.end.x + acrossX, m_track.end.y + acrossY, 0),
               Point(m_track.end.x - acrossX, m_track.end.y - acrossY, 0), Point(m_track.start.x - acrossX, m_track.start.y - acrossY, 0)};
  m_top = NearestWhole(std::floor(std::min(m_track.start.y, m_track.end.y) - m_radius));
  m_bottom = NearestWhole(std::ceil(std::max(m_track.start.y, m_track.end.y) + m_radius));
}

void ThickLine::Reach::Include(double x) {
  left = std::min(left, x);
  right = std::max(right, x);
}

void ThickLine::IncludeEnd(Reach& reach, const Point& end, double y) const {
  const double square = m_radius * m_radius - (y - end.y) * (y - end.y);
  if (square < 0) return;
  const double half = std::sqrt(square);
  reach.Include(end.x - half);
  reach.Include(end.x + half);
}

void ThickLine::IncludeSide(Reach& reach, const Point& a, const Point& b, double y) {
  if (a.y == b.y || (y < a.y) == (y < b.y)) return;
  reach.Include(a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x));
}

// The shape has no dents: a row of it is one piece.
RowSpan ThickLine::Row(int y) const {
  constexpr double kNowhere = std::numeric_limits<double>::infinity();
  Reach reach = {kNowhere, -kNowhere};
  const double centre = y + 0.5;
  IncludeEnd(reach, m_track.start, centre);
  IncludeEnd(reach, m_track.end, centre);
  for (std::size_t i = 0; i < m_corners.size(); ++i) IncludeSide(reach, m_corners[i], m_corners[(i + 1) % m_corners.size()], centre);
  if (reach.left > reach.right) return {};
  return {NearestWhole(std::ceil(reach.left - 0.5)), NearestWhole(std::floor(reach.right - 0.5))};
}

}  // namespace zelbase::detail
