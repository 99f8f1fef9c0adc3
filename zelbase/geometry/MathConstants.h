// The constants of the suite's geometry: tolerances, degrees to radians, and the well-known numbers of
// namespace MATH. Neighbours: GeometryMath.h for the comparisons that are made with them, Angles.h and
// Polar.h for bearings.
//
// <cmath> defines twelve of the names of MATH as macros on many systems. This header includes it first and
// then removes these macros, so that MATH::M_PI is a name like any other; it does not matter which of the two
// a caller includes first. It is the one header of the library that does so, and the library uses no bare
// macro of that kind.
#pragma once

#include <cmath>

#undef M_E
#undef M_LOG2E
#undef M_LOG10E
#undef M_LN2
#undef M_LN10
#undef M_PI
#undef M_PI_2
#undef M_PI_4
#undef M_1_PI
#undef M_2_PI
#undef M_2_SQRTPI
#undef M_SQRT2

// The distance from 1 to the next double: the base of Epsilon, and of the tests for the end of an angle's
// range.
inline constexpr double EPSILON = 2.220446049250313e-16;

// Absolute tolerance of the geometry, in the units of what is compared (metres, square metres, slopes):
// Intersect, XYToPolar. Not MATH::TOLERANCE, which is a thousand times finer and is what the bare name means
// inside namespace MATH and behind `using MATH::TOLERANCE;`. Behind `using namespace MATH;` at global scope
// the compiler refuses the bare name: write ::TOLERANCE or MATH::TOLERANCE there.
inline constexpr double TOLERANCE = 1e-07;

// Degrees to radians by multiplication, radians to degrees by division.
// Kept: truncated after fifteen digits; stored data was made with it, so nothing more exact may stand in for
// it.
inline constexpr double D_TO_R = 0.017453292519943;

namespace MATH {

// Numeric tolerance of this namespace.
inline constexpr double TOLERANCE = 1e-10;

inline constexpr double M_E = 2.718281828459045;
inline constexpr double M_LOG2E = 1.4426950408889634;
inline constexpr double M_LOG10E = 0.4342944819032518;
inline constexpr double M_LN2 = 0.6931471805599453;
inline constexpr double M_LN10 = 2.302585092994046;
inline constexpr double M_PI = 3.141592653589793;
inline constexpr double M_PI_2 = 1.5707963267948966;
inline constexpr double M_PI_4 = 0.7853981633974483;
inline constexpr double M_1_PI = 0.3183098861837907;
inline constexpr double M_2_PI = 0.6366197723675814;
inline constexpr double M_1_SQRTPI = 0.5641895835477563;  // 1 by the root of pi
inline constexpr double M_2_SQRTPI = 1.1283791670955126;  // 2 by the root of pi
inline constexpr double M_SQRT2 = 1.4142135623730951;
inline constexpr double M_SQRT2_2 = 0.7071067811865476;  // half the root of 2

// The precise factors between degrees and radians. The geometry goes by D_TO_R instead.
inline constexpr double DTR = 0.017453292519943295;
inline constexpr double RTD = 57.29577951308232;

inline constexpr double TWOPI = 6.283185307179586;

}  // namespace MATH
