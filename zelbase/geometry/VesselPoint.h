// A point of a vessel's outline with the pen's two flags. Neighbours: Point.h, from which it has position and
// arithmetic; the vessel contour, which stores the flags as bit 0 and bit 1 of one number.
#pragma once

#include "zelbase/geometry/Point.h"
#include "zelbase/platform/ZelBaseApi.h"

// A plain value. The comparison is that of Point: it does not look at the flags.
class ZELBASE_API VesselPoint : public Point {
 public:
  constexpr VesselPoint() = default;
  constexpr VesselPoint(const Point& point, bool moveToValue, bool markValue) : Point(point), moveTo(moveToValue), mark(markValue) {}

  bool moveTo = false;  // bit 0: the pen goes to this point without drawing
  bool mark = false;    // bit 1: the point is marked
};
