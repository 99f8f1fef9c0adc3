// A point of a line that a vessel follows, with the distance run along the line. Neighbours: Point.h for the
// position alone; the line data, which hold a list of these.
#pragma once

#include <type_traits>

#include "zelbase/geometry/Point.h"
#include "zelbase/platform/ZelBaseApi.h"

// A plain value of four doubles, metres, and a flag. It is seen in two ways: from above it lies at (x, y, z),
// in the plane of the profile at (distance, z).
//
//   const ProfilePoint p(100, 200, -3, 12.5, false);
//   p.Absolute();   // (100, 200, -3)
//   p.Relative();   // (12.5, -3, 0)
class ZELBASE_API ProfilePoint {
 public:
  constexpr ProfilePoint() = default;
  constexpr ProfilePoint(double xValue, double yValue, double zValue, double distanceValue, bool sectionStartValue)
      : x(xValue), y(yValue), z(zValue), distance(distanceValue), sectionStart(sectionStartValue) {}
  constexpr ProfilePoint(const Point& point, double distanceValue, bool sectionStartValue)
      : ProfilePoint(point.x, point.y, point.z, distanceValue, sectionStartValue) {}

  // The point on the map: (x, y, z).
  constexpr Point Absolute() const { return Point(x, y, z); }

  // The point in the profile plane: (distance, z, 0.0), the distance across and the height up.
  constexpr Point Relative() const { return Point(distance, z, 0.0); }

  // By distance alone.
  constexpr bool operator<(const ProfilePoint& other) const { return distance < other.distance; }

  // This point with `shift` taken from x, y and z; distance and flag are kept.
  constexpr ProfilePoint operator-(const Point& shift) const { return ProfilePoint(Absolute() - shift, distance, sectionStart); }

  double x = 0;
  double y = 0;
  double z = 0;
  double distance = 0;        // run along the line up to here (chainage)
  bool sectionStart = false;  // a new section begins: no line runs to this point from the one before
};

static_assert(std::is_trivially_copyable_v<ProfilePoint> && std::is_standard_layout_v<ProfilePoint>);
