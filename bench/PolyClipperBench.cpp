// The polygon clipper against two others, Boost.Geometry's intersection with a box and GEOS's clip by a
// rectangle (which carries no height and does not mend what crosses itself), on coastlines of 100,000
// vertices that cross the sides of the page thousands of times. All three must find the same area.

#define BOOST_ALLOW_DEPRECATED_HEADERS  // Boost's own include each other

#include <geos_c.h>

#include <algorithm>
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/multi_polygon.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/geometry/PolyClipper.h"

namespace {

namespace bg = boost::geometry;
using BoostPoint = bg::model::d2::point_xy<double>;
using BoostPolygon = bg::model::polygon<BoostPoint>;
using BoostRings = bg::model::multi_polygon<BoostPolygon>;
using BoostBox = bg::model::box<BoostPoint>;

constexpr int kBarVertices = 100000;
constexpr double kHalf = 10000.0;  // half a side of the page in metres
constexpr double kTurn = 6.283185307179586;
constexpr double kBarBoost = 3.0;
constexpr double kBarGeos = 1.0;

// Distance from the middle of the page to its edge.
double EdgeDistance(double angle) { return kHalf / std::max(std::fabs(std::cos(angle)), std::fabs(std::sin(angle))); }

// A closed coast around the middle of the page: it follows the page's edge with bays of all sizes, of which
// `roughness` (part of the distance) is from one vertex to the next. Each ray from the middle meets it once,
// so that it never crosses itself.
std::vector<Point> MakeCoast(int count, double roughness) {
  std::mt19937 random(20240607);
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  std::vector<double> phases(14);
  for (double& phase : phases) phase = unit(random) * kTurn;
  std::vector<Point> coast;
  for (int i = 0; i < count; ++i) {
    const double angle = kTurn * i / count;
    double bay = roughness * unit(random);
    double size = 0.05;
    double waves = 3;
    for (const double phase : phases) {
      bay += size * std::sin(waves * angle + phase);
      size *= 0.6;
      waves *= 2;
    }
    const double distance = EdgeDistance(angle) * (1.0 + bay);
    coast.emplace_back(std::sin(angle) * distance, std::cos(angle) * distance, 20.0 * bay);
  }
  coast.push_back(coast.front());
  return coast;
}

BoostPolygon ForBoost(const std::vector<Point>& coast) {
  BoostPolygon polygon;
  for (const Point& point : coast) polygon.outer().emplace_back(point.x, point.y);
  bg::correct(polygon);
  return polygon;
}

// One clip by GEOS at a time; owns what it made.
class GeosClip {
 public:
  explicit GeosClip(const std::vector<Point>& coast) : m_context(GEOS_init_r()) {
    std::vector<double> plane;
    for (const Point& point : coast) plane.insert(plane.end(), {point.x, point.y});
    GEOSCoordSequence* const sequence =
        GEOSCoordSeq_copyFromBuffer_r(m_context, plane.data(), static_cast<unsigned int>(coast.size()), 0, 0);
    m_polygon = GEOSGeom_createPolygon_r(m_context, GEOSGeom_createLinearRing_r(m_context, sequence), nullptr, 0);
  }
  ~GeosClip() {
    GEOSGeom_destroy_r(m_context, m_polygon);
    GEOS_finish_r(m_context);
  }
  GeosClip(const GeosClip&) = delete;
  GeosClip& operator=(const GeosClip&) = delete;

  bool IsValid() const { return GEOSisValid_r(m_context, m_polygon) == 1; }

  void Clip() const {
    GEOSGeometry* const clipped = GEOSClipByRect_r(m_context, m_polygon, -kHalf, -kHalf, kHalf, kHalf);
    Keep(clipped);
    GEOSGeom_destroy_r(m_context, clipped);
  }

  double Area() const {
    double area = 0;
    GEOSGeometry* const clipped = GEOSClipByRect_r(m_context, m_polygon, -kHalf, -kHalf, kHalf, kHalf);
    GEOSArea_r(m_context, clipped, &area);
    GEOSGeom_destroy_r(m_context, clipped);
    return area;
  }

 private:
  GEOSContextHandle_t m_context;
  GEOSGeometry* m_polygon = nullptr;
};

bool IsOnSide(const Point& point) { return std::fabs(point.x) == kHalf || std::fabs(point.y) == kHalf; }

int CountOnSides(const PolyClipper& clipper) {
  int count = 0;
  for (int i = 0; i < clipper.GetOutputSize(); ++i) count += IsOnSide(clipper.GetOutputPoint(i)) ? 1 : 0;
  return count;
}

bool AreSame(double area, double other) { return std::fabs(area - other) <= 1e-9 * area; }

bool Compare(Comparison& table, int count, const std::string& kind, double roughness) {
  const std::vector<Point> coast = MakeCoast(count, roughness);
  const std::string what = kind + ", " + Grouped(static_cast<std::size_t>(count));
  const auto limit = [&] { ReadOnce(coast); };
  const double vertices = static_cast<double>(coast.size());
  const BoostBox box(BoostPoint(-kHalf, -kHalf), BoostPoint(kHalf, kHalf));
  const BoostPolygon polygon = ForBoost(coast);
  const GeosClip geos(coast);
  PolyClipper clipper;
  clipper.SetPage(Page(-kHalf, -kHalf, kHalf, kHalf));
  clipper.FillPolygon(coast);

  BoostRings rings;
  bg::intersection(polygon, box, rings);
  const bool same = geos.IsValid() && AreSame(clipper.Area(), bg::area(rings)) && AreSame(clipper.Area(), geos.Area());
  std::printf("%s: %d points out, %d on the sides; same area: %s\n", what.c_str(), clipper.GetOutputSize(), CountOnSides(clipper),
              same ? "yes" : "NO");

  const auto ours = [&] { Keep(clipper.FillPolygon(coast)); };
  table.Row(
      what + ", Boost.Geometry", vertices, "pt", Comparison::BarAt(count == kBarVertices, kBarBoost), ours,
      [&] {
        BoostRings clipped;
        bg::intersection(polygon, box, clipped);
        Keep(clipped);
      },
      limit);
  table.Row(
      what + ", GEOS", vertices, "pt", Comparison::BarAt(count == kBarVertices, kBarGeos), ours, [&] { geos.Clip(); }, limit);
  return same;
}

}  // namespace

int main() {
  Comparison table("polygon clipper (peers: Boost.Geometry intersection, GEOSClipByRect without heights)");
  bool same = true;
  for (const int count : {1000, 10000, kBarVertices}) {
    same = Compare(table, count, "smooth coast", 0.0) && same;
    same = Compare(table, count, "coast", 0.001) && same;
    same = Compare(table, count, "rugged coast", 0.02) && same;
  }
  const int result = table.Finish();
  return same ? result : 1;
}
