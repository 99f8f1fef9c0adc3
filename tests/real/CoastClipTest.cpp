// Polygons of a real coast, clipped to many pages and held against GEOS. Built where the coast's data and GEOS are there.

#include <geos_c.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/Printed.h"
#include "tests/support/SourceFolder.h"
#include "zelbase/geometry/PolyClipper.h"

namespace {

using Polygon = std::vector<Point>;

constexpr char kRegion[] = "-71.5/-65/41/45.2";

// The region's land, as scripts/real-survey makes it.
std::vector<Polygon> Coast() {
  const std::string command = std::string("gmt coast -Dl -R") + kRegion + " -A0/0/1 -W -M 2>/dev/null | python3 '" + SourceFolder() +
                              "/scripts/real/coast.py' " + kRegion;
  std::string text;
  FILE* const pipe = popen(command.c_str(), "r");
  char block[4096];
  while (pipe != nullptr) {
    const std::size_t got = std::fread(block, 1, sizeof block, pipe);
    text.append(block, got);
    if (got == 0) break;
  }
  if (pipe != nullptr) pclose(pipe);
  const CLocale locale;  // the commands write points, whatever the host's locale has
  std::vector<Polygon> polygons;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    double x = 0.0, y = 0.0;
    if (line.starts_with(">")) {
      polygons.emplace_back();
    } else if (std::sscanf(line.c_str(), "%lf %lf", &x, &y) == 2 && !polygons.empty()) {
      polygons.back().emplace_back(x, y, 0.0);
    }
  }
  return polygons;
}

double AreaOf(const Polygon& ring) {
  double twice = 0.0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Point& a = ring[i];
    const Point& b = ring[(i + 1) % ring.size()];
    twice += (a.x - ring[0].x) * (b.y - ring[0].y) - (b.x - ring[0].x) * (a.y - ring[0].y);
  }
  return twice / 2.0;
}

// The signed areas of the rings, added: a polygon that crosses itself has the same with every library.
double ClippedArea(const Polygon& polygon, const Page& page) {
  PolyClipper clipper;
  clipper.SetPage(page);
  clipper.FillPolygon(polygon);
  double area = 0.0;
  Polygon ring;
  for (int i = 0; i < clipper.GetOutputSize(); ++i) {
    if (clipper.GetOutputFlag(i)) {
      area += AreaOf(ring);
      ring.clear();
    }
    ring.push_back(clipper.GetOutputPoint(i));
  }
  return area + AreaOf(ring);
}

void Quiet(const char*, ...) {}

class Geos {
 public:
  Geos() : m_handle(initGEOS_r(Quiet, Quiet)) {}
  ~Geos() { finishGEOS_r(m_handle); }
  Geos(const Geos&) = delete;
  Geos& operator=(const Geos&) = delete;

  // Null for a polygon that is not simple.
  GEOSGeometry* Make(const Polygon& polygon) {
    const bool closed = polygon.front() == polygon.back();
    const auto size = static_cast<unsigned>(polygon.size() + (closed ? 0 : 1));
    GEOSCoordSequence* const places = GEOSCoordSeq_create_r(m_handle, size, 2);
    for (unsigned i = 0; i < size; ++i) {
      const Point& point = polygon[i % polygon.size()];
      GEOSCoordSeq_setXY_r(m_handle, places, i, point.x, point.y);
    }
    GEOSGeometry* const made = GEOSGeom_createPolygon_r(m_handle, GEOSGeom_createLinearRing_r(m_handle, places), nullptr, 0);
    if (GEOSisValid_r(m_handle, made) == 1) return made;
    GEOSGeom_destroy_r(m_handle, made);
    return nullptr;
  }

  double ClippedArea(const GEOSGeometry* polygon, const Page& page) {
    GEOSGeometry* const box = GEOSGeom_createRectangle_r(m_handle, page.left, page.bottom, page.right, page.top);
    GEOSGeometry* const part = GEOSIntersection_r(m_handle, polygon, box);
    double area = -1.0;
    GEOSArea_r(m_handle, part, &area);
    GEOSGeom_destroy_r(m_handle, part);
    GEOSGeom_destroy_r(m_handle, box);
    return area;
  }

  void Destroy(GEOSGeometry* geometry) { GEOSGeom_destroy_r(m_handle, geometry); }

 private:
  GEOSContextHandle_t m_handle;
};

TEST(RealCoast, ClippedAreasAreThoseOfGeos) {
  const std::vector<Polygon> coast = Coast();
  ASSERT_GT(coast.size(), 10u);
  Geos geos;
  std::mt19937 engine(20261121);
  std::uniform_real_distribution<double> part(0.0, 1.0), logSize(-3.0, 0.7);
  int compared = 0, cut = 0;
  for (const Polygon& polygon : coast) {
    ASSERT_GE(polygon.size(), 4u);
    GEOSGeometry* const reference = geos.Make(polygon);
    if (reference == nullptr) continue;
    const double whole = std::abs(AreaOf(polygon));
    for (int i = 0; i < 400; ++i) {
      // A page of any size that has one of the corners somewhere in it.
      const Point& corner = polygon[static_cast<std::size_t>(part(engine) * static_cast<double>(polygon.size()))];
      const double width = std::pow(10.0, logSize(engine)), height = width * (0.2 + 2.0 * part(engine));
      const double left = corner.x - part(engine) * width, bottom = corner.y - part(engine) * height;
      const Page page(left, bottom, left + width, bottom + height);
      const double expected = geos.ClippedArea(reference, page);
      ASSERT_GE(expected, 0.0);
      EXPECT_NEAR(std::abs(ClippedArea(polygon, page)), expected, 1e-9 * whole + 1e-13) << i << " of a polygon of " << polygon.size();
      ++compared;
      if (expected > 0.0 && expected < whole * 0.999) ++cut;
    }
    geos.Destroy(reference);
  }
  EXPECT_GT(compared, 8000);
  EXPECT_GT(cut, 3000) << "pages that show a part";
}

}  // namespace
