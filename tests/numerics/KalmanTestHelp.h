// The position filter's calls with one value for their many arguments, and what a test looks at afterwards.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>
#include <vector>

#include "tests/geometry/EdgeValues.h"
#include "tests/numerics/SecondKalmanFilter.h"
#include "zelbase/numerics/KalmanFilter.h"

using Values = SecondKalmanFilter::Values;

inline constexpr const char* kMessage = "Singular KmMatrix in routine LUDCMP\n";

// What is there before a call, so that it shows what was written.
inline const Values kUntouched = {71, 72, 73, 74, 75, 76, 77, 78};

inline bool Same(const Values& a, const Values& b) {
  return ::Same(a.x, b.x) && ::Same(a.y, b.y) && ::Same(a.vx, b.vx) && ::Same(a.vy, b.vy) && ::Same(a.varX, b.varX) &&
         ::Same(a.varY, b.varY) && ::Same(a.covXY, b.covXY) && a.status == b.status;
}

inline std::ostream& operator<<(std::ostream& out, const Values& v) {
  return out << "x " << v.x << " y " << v.y << " vx " << v.vx << " vy " << v.vy << " varX " << v.varX << " varY " << v.varY << " covXY "
             << v.covXY << " status " << v.status;
}

inline void ExpectValues(const Values& values, const Values& expected) {
  EXPECT_TRUE(Same(values, expected)) << values << "\nexpected " << expected;
}

inline void Initialize(KalmanFilter& filter, double time, Values v, double heading = 0, double scale = 0, int dynamics = 3) {
  filter.Initialize(time, v.x, v.y, v.vx, v.vy, v.varX, v.varY, v.covXY, heading, scale, dynamics, v.status);
}

inline void Update(KalmanFilter& filter, double time, Values& v) {
  filter.UpdatePosition(time, v.x, v.y, v.vx, v.vy, v.varX, v.varY, v.covXY, v.status);
}

inline void UpdateVelocity(KalmanFilter& filter, double time, Values& v) {
  filter.UpdateVelocity(time, v.x, v.y, v.vx, v.vy, v.varX, v.varY, v.covXY, v.status);
}

inline Values Fixed(KalmanFilter& filter, double time, double x, double y, double var = 4, double cov = 0) {
  Values v = {x, y, 0, 0, var, var, cov, -1};
  Update(filter, time, v);
  return v;
}

inline Values Moved(KalmanFilter& filter, double time, double vx, double vy) {
  Values v = {0, 0, vx, vy, 0, 0, 0, -1};
  UpdateVelocity(filter, time, v);
  return v;
}

inline Values Predicted(KalmanFilter& filter, double time) {
  Values v = kUntouched;
  filter.PredictState(time, v.x, v.y, v.vx, v.vy, v.varX, v.varY, v.covXY, v.status);
  return v;
}

// The status is not one of the filter's here.
inline Values StateOf(const KalmanFilter& filter, double* time = nullptr) {
  Values v;
  double filterTime = 0;
  filter.GetStateVector(filterTime, v.x, v.y, v.vx, v.vy, v.varX, v.varY, v.covXY);
  if (time != nullptr) *time = filterTime;
  return v;
}

inline double TimeOf(const KalmanFilter& filter) {
  double time = 0;
  StateOf(filter, &time);
  return time;
}

inline double HeadingOf(const KalmanFilter& filter) {
  double heading = kNan;
  double scale = kNan;
  filter.GetCalibrationValues(heading, scale);
  return heading;
}

inline double ScaleOf(const KalmanFilter& filter) {
  double heading = kNan;
  double scale = kNan;
  filter.GetCalibrationValues(heading, scale);
  return scale;
}

// East and north components of a bearing in degrees.
inline double East(double bearing) { return std::sin(bearing * 0.017453292519943295); }

inline double North(double bearing) { return std::cos(bearing * 0.017453292519943295); }

// --- Lines of position ---

inline constexpr int kRange = 0;
inline constexpr int kBearing = 1;

using Fix = SecondKalmanFilter::Fix;

inline const Fix kUntouchedFix = {0, 0, 91, 92, 93, 94, 95, 96};

struct Lops {
  void Add(int type, double x, double y, double observed, double variance = 1, unsigned int flags = 3) {
    LopStruct& lop = lops[static_cast<std::size_t>(count++)];
    lop.type = type;
    lop.flags = flags;
    lop.x = x;
    lop.y = y;
    lop.observed = observed;
    lop.variance = variance;
    lop.residual = lop.azimuth = 55;
  }

  Fix Reduce(double x, double y) {
    Fix fix = kUntouchedFix;
    fix.x = x;
    fix.y = y;
    const KalmanFilter filter;
    filter.ReduceLops(0, lops.data(), fix.x, fix.y, fix.varX, fix.varY, fix.covXY, fix.sigma, fix.count, fix.status);
    return fix;
  }

  std::vector<LopStruct> lops = std::vector<LopStruct>(8);
  int count = 0;
};

inline bool Same(const Fix& a, const Fix& b) {
  return ::Same(a.x, b.x) && ::Same(a.y, b.y) && ::Same(a.varX, b.varX) && ::Same(a.varY, b.varY) && ::Same(a.covXY, b.covXY) &&
         ::Same(a.sigma, b.sigma) && a.count == b.count && a.status == b.status;
}

inline void ExpectRefused(const Fix& fix, int status, double x = 0, double y = 0) {
  Fix expected = kUntouchedFix;
  expected.x = x;
  expected.y = y;
  expected.status = status;
  EXPECT_TRUE(Same(fix, expected)) << "status " << fix.status << " x " << fix.x << " y " << fix.y << " count " << fix.count;
}
