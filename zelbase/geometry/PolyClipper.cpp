#include "zelbase/geometry/PolyClipper.h"

#include <algorithm>
#include <cmath>

using zelbase::detail::PolygonRun;
using zelbase::detail::PolygonSide;

namespace {

// The most points that any list holds: their number is an int.
constexpr std::size_t kMostPoints = 2147483647;

// How far a pass may grow beyond what was fed. Only NaN ever comes near.
constexpr std::size_t kMostGrowth = 16;
constexpr std::size_t kMostGrowthMore = 1000000;

constexpr bool kOnX = true;
constexpr bool kOnY = false;
constexpr bool kKeepBelow = true;
constexpr bool kKeepAbove = false;

}  // namespace

bool PolyClipper::FillPolygon(const Point* points, long count) {
  if (points == nullptr || count <= 0 || static_cast<std::size_t>(count) > kMostPoints) return false;
  m_polygons.assign(1, PolygonRun{points, points + count, true});
  if (points[count - 1] != points[0]) m_polygons.push_back(PolygonRun{points, points + 1, false});
  // Kept: `left` as it stands, where DoPolyClip sorts; this way in expects a page in order.
  ProcessPoly(m_page.left);
  return true;
}

bool PolyClipper::FillPolygon(const std::vector<Point>& points) {
  // Unreached: so many points take 48 GB.
  if (points.size() > kMostPoints) return false;
  return FillPolygon(points.data(), static_cast<long>(points.size()));
}

void PolyClipper::ResetOutputList() {
  m_outputPoints.clear();
  m_outputFlags.clear();
}

bool PolyClipper::StoreOutputPoint(const Point& point, bool newRing) {
  // Unreached: so many points take 48 GB.
  if (m_outputPoints.size() >= kMostPoints) return true;
  m_outputPoints.push_back(point);
  m_outputFlags.push_back(newRing ? 1 : 0);
  return true;
}

bool PolyClipper::DoPolyClip(bool closeLast) {
  if (m_outputPoints.empty()) return false;
  m_polygons.clear();
  const Point* const points = m_outputPoints.data();
  auto begin = m_outputFlags.cbegin();
  while (begin != m_outputFlags.cend()) {
    const auto end = std::find(begin + 1, m_outputFlags.cend(), 1);
    m_polygons.push_back(PolygonRun{points + (begin - m_outputFlags.cbegin()), points + (end - m_outputFlags.cbegin()), true});
    begin = end;
  }
  // Kept: the very first point closes, also when the last polygon is another one.
  if (closeLast && m_outputPoints.back() != m_outputPoints.front()) {
    m_polygons.push_back(PolygonRun{points, points + 1, false});
  }
  ProcessPoly(std::min(m_page.left, m_page.right));
  return true;
}

double PolyClipper::Area() const {
  if (m_outputPoints.empty()) return 0.0;
  const std::vector<Point>& points = m_outputPoints;
  const double x0 = points[0].x;
  const double y0 = points[0].y;
  double total = 0.0;
  double ring = 0.0;
  int edges = 0;
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    const Point& a = points[i];
    const Point& b = points[i + 1];
    ++edges;
    if (m_outputFlags[i + 1] != 0) {
      // Kept: the joint between two rings has been counted as an edge of the first.
      if (edges > 2) total += std::fabs(ring);
      ring = 0.0;
      edges = 0;
    } else {
      ring += ((a.x - x0) * (b.y - y0) - (b.x - x0) * (a.y - y0)) * 0.5;
    }
  }
  if (edges > 2) total += std::fabs(ring);
  return total;
}

// The four passes over m_polygons; what they leave becomes the output list.
void PolyClipper::ProcessPoly(double firstLimit) {
  std::size_t fed = 0;
  for (const PolygonRun& run : m_polygons) fed += static_cast<std::size_t>(run.end - run.begin);
  const std::size_t most = std::min(kMostGrowth * fed + kMostGrowthMore, kMostPoints);

  const PolygonSide sides[] = {{firstLimit, kOnX, kKeepAbove},
                               {std::max(m_page.bottom, m_page.top), kOnY, kKeepBelow},
                               {std::max(m_page.left, m_page.right), kOnX, kKeepBelow},
                               {std::min(m_page.bottom, m_page.top), kOnY, kKeepAbove}};
  const std::vector<PolygonRun>* rings = &m_polygons;
  for (std::size_t i = 0; i < m_passes.size(); ++i) rings = &m_passes[i].Clip(*rings, sides[i], most);
  WriteOutputList(*rings);
}

// The rings may point into the old list.
void PolyClipper::WriteOutputList(const std::vector<PolygonRun>& rings) {
  std::size_t size = 0;
  for (const PolygonRun& run : rings) size += static_cast<std::size_t>(run.end - run.begin);
  m_newPoints.clear();
  m_newPoints.reserve(size);
  m_outputFlags.assign(size, 0);
  for (const PolygonRun& run : rings) {
    if (run.newRing) m_outputFlags[m_newPoints.size()] = 1;
    m_newPoints.insert(m_newPoints.end(), run.begin, run.end);
  }
  std::swap(m_outputPoints, m_newPoints);
}
