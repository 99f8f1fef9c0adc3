// A position with its time. Neighbours: Point.h for the position alone, zelbase/time/CExTime.h for what a
// time is.
#pragma once

#include "zelbase/geometry/Point.h"
#include "zelbase/platform/ZelBaseApi.h"

// A value from which others may derive: it is destroyed through its base. The time is in milliseconds since
// 1970-01-01 00:00:00 UTC.
class ZELBASE_API TimePoint {
 public:
  TimePoint() = default;
  TimePoint(double x, double y, double z, double timeValue) : position(x, y, z), time(timeValue) {}
  TimePoint(const Point& point, double timeValue) : position(point), time(timeValue) {}
  TimePoint(const TimePoint&) = default;
  TimePoint& operator=(const TimePoint&) = default;
  virtual ~TimePoint() = default;

  void SetTime(double timeValue) { time = timeValue; }
  double GetTime() const { return time; }

  Point position;
  double time = 0.0;
};
