// Angles brought into their range, and values between two values on a circle. Neighbours: Polar.h for the
// bearing of a vector, Rotation.h for turning points, NumericHelpers.h for degrees, minutes and seconds.
//
// Every angle of the library is in degrees and a compass bearing: 0 along +y, 90 along +x, clockwise. All are
// pure functions, safe on any thread; none fails, and NaN or an infinite angle gives NaN.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

// The bearing within one turn: fmod(angle, 360.0), and a negative one gets 360.0 added.
//   TrimAngle(-30)   // 330
//   TrimAngle(720)   // 0
// Nothing stands guard over the rounding: a negative angle smaller than about 2.8e-14 in size gives exactly
// 360.0, and -360 gives -0.0.
ZELBASE_API double TrimAngle(double angle);

// The angle within half a turn to either side: fmod(angle, 360.0), values above 180.0 lose 360.0, values
// below -180.0 gain 360.0. Both ends stay: 540 gives 180, -540 gives -180.
ZELBASE_API double modgeo(double angle);

// The value at the part `t` of the way from `a` to `b`, for values that repeat with the period hi - lo; the
// way taken is the short one.
//   InterpolateCircular(0, 360, 350, 20, 0.5)   // 5
// `t` is meant to lie within 0..1; outside it only one period is added or taken, so that the result may leave
// lo..hi. So it may with `a` or `b` out of range, or with hi below lo.
ZELBASE_API double InterpolateCircular(double lo, double hi, double a, double b, double t);
