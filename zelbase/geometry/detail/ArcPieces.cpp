#include "zelbase/geometry/detail/ArcPieces.h"

#include <cmath>
#include <utility>

#include "zelbase/geometry/Angles.h"
#include "zelbase/geometry/MathConstants.h"

namespace zelbase::detail {

namespace {

double Bearing(double x, double y) { return std::atan2(x, y) / D_TO_R; }

bool IsWithin(double value, double lower, double upper) { return lower <= value && value <= upper; }

// Half the chord that a line at distance `d` from the centre cuts off; false when it does not cross the
// circle.
bool HalfChord(double radius, double d, double& half) {
  const double square = radius * radius - d * d;
  // Kept: a line that only touches the circle does not cross it.
  if (!(square > 0.0)) return false;
  half = std::sqrt(square);
  return true;
}

// Mirrors an axis whose bounds stand in the other order, and the coordinate with it.
void PutInOrder(double& lower, double& upper, double& coordinate) {
  if (!(upper < lower)) return;
  // Kept: by negation, not by swapping; bearings are those of the mirrored picture.
  lower = -lower;
  upper = -upper;
  coordinate = -coordinate;
}

}  // namespace

ArcPieces::ArcPieces(const Page& page, const Point& centre, double radius, double start)
    : m_page(page), m_centre(centre), m_radius(radius) {
  m_bearings[0] = TrimAngle(start);
  PutInOrder(m_page.bottom, m_page.top, m_centre.y);
  PutInOrder(m_page.left, m_page.right, m_centre.x);
}

// --- Finding ---

void ArcPieces::FindCrossings() {
  CrossHorizontal(m_page.top);
  CrossHorizontal(m_page.bottom);
  CrossVertical(m_page.right);
  CrossVertical(m_page.left);
}

void ArcPieces::CrossHorizontal(double edge) {
  const double d = edge - m_centre.y;
  double half;
  if (!HalfChord(m_radius, d, half)) return;
  for (const double offset : {-half, half}) {
    if (IsWithin(m_centre.x + offset, m_page.left, m_page.right)) m_bearings[m_size++] = Bearing(offset, d);
  }
}

void ArcPieces::CrossVertical(double edge) {
  const double d = edge - m_centre.x;
  double half;
  if (!HalfChord(m_radius, d, half)) return;
  for (const double offset : {-half, half}) {
    if (IsWithin(m_centre.y + offset, m_page.bottom, m_page.top)) m_bearings[m_size++] = Bearing(d, offset);
  }
}

// --- Selecting ---

// Keeps the crossings between start and end, in their order along the arc, and puts the end behind them.
void ArcPieces::SelectCrossings(double end) {
  const std::size_t found = m_size;
  // Kept: without any crossing the end stays as it was given.
  double last = end;
  if (found > 1) {
    last = TrimAngle(end);
    if (last < EPSILON) last = 360.0;
  }
  const double start = m_bearings[0];
  m_size = 1;
  for (std::size_t i = 1; i < found; ++i) {
    const double bearing = TrimAngle(m_bearings[i]);
    if (bearing == start) m_startOnEdge = true;
    if (start < last) {
      if (start < bearing && bearing < last) m_bearings[m_size++] = bearing;
    } else if (start == last || bearing < last || bearing > start) {
      // Kept: equal bearings are the full circle here; a crossing at its very start is not "below" it and
      // stays.
      m_bearings[m_size++] = bearing < start ? bearing + 360.0 : bearing;
    }
  }
  m_bearings[m_size++] = last + 360.0;
  SortCrossings();
}

// Ascending, by repeated selection; each is brought back into the circle as it is settled.
void ArcPieces::SortCrossings() {
  for (std::size_t i = 1; i < m_size; ++i) {
    std::size_t least = i;
    for (std::size_t j = i + 1; j < m_size; ++j) {
      if (m_bearings[j] < m_bearings[least]) least = j;
    }
    std::swap(m_bearings[i], m_bearings[least]);
    m_bearings[i] = TrimAngle(m_bearings[i]);
  }
}

// --- Writing ---

int ArcPieces::Write(double* starts, double* ends) {
  int count = 0;
  for (std::size_t i = BeginsInside() ? 0 : 1; i + 1 < m_size; i += 2) {
    starts[count] = m_bearings[i];
    ends[count] = m_bearings[i + 1];
    ++count;
  }
  return count;
}

bool ArcPieces::BeginsInside() const {
  const double angle = m_bearings[0] * D_TO_R;
  const Point start(m_centre.x + m_radius * std::sin(angle), m_centre.y + m_radius * std::cos(angle), 0.0);
  if (m_startOnEdge) return GoesInside(start);
  return IsWithin(start.x, m_page.left, m_page.right) && IsWithin(start.y, m_page.bottom, m_page.top);
}

// Whether the arc, clockwise from a start on an edge, goes into the page: by which half of the circle meets
// the closest edge.
bool ArcPieces::GoesInside(const Point& start) const {
  double closest = std::fabs(start.x - m_page.left);
  bool isInside = m_centre.y <= start.y;
  const auto tryEdge = [&](double distance, bool goesInside) {
    if (!(distance < closest)) return;
    closest = distance;
    isInside = goesInside;
  };
  tryEdge(std::fabs(start.x - m_page.right), m_centre.y >= start.y);
  tryEdge(std::fabs(start.y - m_page.bottom), start.x <= m_centre.x);
  tryEdge(std::fabs(start.y - m_page.top), start.x >= m_centre.x);
  return isInside;
}

}  // namespace zelbase::detail
