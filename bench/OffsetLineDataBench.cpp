// OffsetLineData on profiles of 1,000, 10,000 and 100,000 points, against GEOS's offset curve of the same
// line in the plane of the profile, with 4 segments a quarter circle (ours has 4 at 2 m, 6 at 5 m). Then how
// the time for a point grows from a short profile to a long one, and from one wide fold to one ten and a
// hundred times as wide: near 1 is linear.

#include <geos_c.h>

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/geometry/OffsetLineData.h"

namespace {

using Points = std::vector<ProfilePoint>;

class Profile : public LineData {
 public:
  explicit Profile(Points points) : LineData("profile") { m_points = std::move(points); }
  const Points& GetPoints() const { return m_points; }
};

// A sounded bottom: a station every `spacing` metres, a long swell, and `noise` metres of its own at each.
Points Bottom(std::size_t count, double spacing, double noise) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> own(-noise, noise);
  Points points;
  for (std::size_t i = 0; i < count; ++i) {
    const double distance = 10 + spacing * static_cast<double>(i);
    const double z = -15 + 3 * std::sin(distance / 40) + own(random);
    points.emplace_back(1000 + distance * 0.6, 2000 + distance * 0.8, z, distance, i == 0);
  }
  return points;
}

// A valley with as many stations on either side, at an offset that leaves most of it in one fold.
Points Valley(std::size_t count) {
  Points points;
  const double half = static_cast<double>(count) / 2;
  for (std::size_t i = 0; i < count; ++i) {
    const double at = static_cast<double>(i) - half;
    points.emplace_back(at, 0, at * at / half, at + half, i == 0);
  }
  return points;
}

class GeosLine {
 public:
  explicit GeosLine(const Points& points) : m_context(GEOS_init_r()) {
    GEOSCoordSequence* const sequence = GEOSCoordSeq_create_r(m_context, static_cast<unsigned int>(points.size()), 2);
    for (std::size_t i = 0; i < points.size(); ++i) {
      GEOSCoordSeq_setXY_r(m_context, sequence, static_cast<unsigned int>(i), points[i].distance, points[i].z);
    }
    m_line = GEOSGeom_createLineString_r(m_context, sequence);
  }
  GeosLine(const GeosLine&) = delete;
  GeosLine& operator=(const GeosLine&) = delete;
  ~GeosLine() {
    GEOSGeom_destroy_r(m_context, m_line);
    GEOS_finish_r(m_context);
  }

  void Offset(double offset) const {
    constexpr int kSegmentsAQuarter = 4;
    constexpr double kMitreLimit = 5.0;
    GEOSGeometry* const curve = GEOSOffsetCurve_r(m_context, m_line, offset, kSegmentsAQuarter, GEOSBUF_JOIN_ROUND, kMitreLimit);
    if (curve == nullptr) std::abort();
    Keep(curve);
    GEOSGeom_destroy_r(m_context, curve);
  }

 private:
  GEOSContextHandle_t m_context;
  GEOSGeometry* m_line = nullptr;
};

void CompareWithGeos(Comparison& table, const std::string& name, const Points& points, double offset) {
  Profile profile(points);
  OffsetLineData line(&profile, false);
  line.SetOffset(offset);
  const GeosLine peer(points);
  const double units = static_cast<double>(points.size());
  table.Row(
      name, units, "pt", Comparison::kNoBar, [&] { line.ApplyOffset(); }, [&] { peer.Offset(offset); }, [&] { ReadOnce(points); });
}

// "ours" is the longer profile, "peer" the shorter one, both by the point: the ratio says how much of the
// speed remains.
void Growth(Comparison& table, const std::string& name, Points shortPoints, Points longPoints, double shortOffset, double longOffset) {
  Profile shortProfile(std::move(shortPoints));
  Profile longProfile(std::move(longPoints));
  OffsetLineData shortLine(&shortProfile, false);
  OffsetLineData longLine(&longProfile, false);
  shortLine.SetOffset(shortOffset);
  longLine.SetOffset(longOffset);
  const std::size_t times = longProfile.GetPoints().size() / shortProfile.GetPoints().size();
  table.Row(
      name, static_cast<double>(longProfile.GetPoints().size()), "pt", Comparison::kNoBar, [&] { longLine.ApplyOffset(); },
      [&] {
        for (std::size_t i = 0; i < times; ++i) shortLine.ApplyOffset();
      });
}

}  // namespace

int main() {
  Comparison table("OffsetLineData against GEOSOffsetCurve", 3);
  for (const std::size_t count : {1000u, 10000u, 100000u}) {
    const std::string points = std::to_string(count) + " points";
    CompareWithGeos(table, "smooth bottom, 1 m apart, +2 m, " + points, Bottom(count, 1.0, 0.05), 2);
    CompareWithGeos(table, "rough bottom, 1 m apart, +2 m, " + points, Bottom(count, 1.0, 0.5), 2);
    CompareWithGeos(table, "rough bottom, 1 m apart, -2 m, " + points, Bottom(count, 1.0, 0.5), -2);
  }
  CompareWithGeos(table, "rough bottom, 0.1 m apart, +5 m, 1000 points", Bottom(1000, 0.1, 0.1), 5);
  table.Finish();
  Comparison growth("OffsetLineData, a longer profile (ours) against a shorter one (peer)", 3);
  Growth(growth, "rough bottom, +2 m, 10,000 : 1,000 points", Bottom(1000, 1, 0.5), Bottom(10000, 1, 0.5), 2, 2);
  Growth(growth, "rough bottom, +2 m, 100,000 : 1,000 points", Bottom(1000, 1, 0.5), Bottom(100000, 1, 0.5), 2, 2);
  Growth(growth, "0.1 m apart, +5 m, 100,000 : 1,000 points", Bottom(1000, 0.1, 0.1), Bottom(100000, 0.1, 0.1), 5, 5);
  Growth(growth, "one wide fold, 10,000 : 1,000 points", Valley(1000), Valley(10000), 1000, 10000);
  Growth(growth, "one wide fold, 100,000 : 1,000 points", Valley(1000), Valley(100000), 1000, 100000);
  Growth(growth, "offset beyond the length, 1,000 : 100 points", Bottom(100, 1, 0.5), Bottom(1000, 1, 0.5), 1e4, 1e4);
  return growth.Finish();
}
