// Numbers compared as geometry needs it: relative to their size, within a hundred steps of a double.
// Neighbours: MathConstants.h for the absolute tolerances, zelbase/frame/NumericHelpers.h for Epsilon and
// Round, Angles.h for cyclic values.
//
// All are pure functions, safe on any thread, and none fails. With M the larger of |a| and |b| and
// e = Epsilon(M) * 100, that is about 2.2e-14 of M:
//
//   function       holds when
//   Equal          |a - b| <= e
//   Less           b - a > e
//   Greater        b - a < e            not the mirror of Less
//   LEqual         Less or Equal
//   GEqual         Greater or Equal
//
// NaN on either side makes each of them false. Two infinities of one sign are not Equal; an infinity and any
// finite number are, since e is infinite then.
#pragma once

#include <algorithm>
#include <cmath>

#include "zelbase/frame/NumericHelpers.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace MATH {

// v * v
inline constexpr double sqr(double v) { return v * v; }

//   Equal(1.0, 1.0 + 1e-15)   // true
//   Equal(1.0, 1.0 + 1e-12)   // false
inline bool Equal(double a, double b) { return std::fabs(a - b) <= Epsilon(std::max(std::fabs(a), std::fabs(b))) * 100.0; }

// `a` lies below `b` by more than the tolerance.
inline bool Less(double a, double b) { return b - a > Epsilon(std::max(std::fabs(a), std::fabs(b))) * 100.0; }

// `a` lies above `b`, or within the tolerance below it: Greater(1.0, 1.0) is true. Only where the tolerance
// itself is 0 do equal values not count: Greater(0.0, 0.0) is false.
inline bool Greater(double a, double b) {
  // Kept: the tolerance widens the question where Less narrows it; callers take equal values in by it.
  return b - a < Epsilon(std::max(std::fabs(a), std::fabs(b))) * 100.0;
}

inline bool LEqual(double a, double b) { return Less(a, b) || Equal(a, b); }

inline bool GEqual(double a, double b) { return Greater(a, b) || Equal(a, b); }

// Round(value, digits) of the numeric helpers, under this name as well.
using ::Round;

}  // namespace MATH
