// The small numerical vocabulary of the suite: nice steps for axes and grids, the decimals that show a value and no more,
// and degrees as degrees, minutes and seconds. Neighbours: the helpers on angles and bearings stand with the points.
//
// All are pure functions, safe on any thread. None fails; a value that is not finite passes through the formulas as stated
// at each function.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

// --- Steps ---

// A step of the series 1, 2, 5, 10 at the size of `x`, always positive; 1 for 0. With p the power of ten at or below |x|
// and m = |x / p|: above 7 it is 10 p, above 3 it is 5 p, above 1.5 it is 2 p, otherwise p.
//   Double125(7.1)    // 10
//   Double125(-0.03)  // 0.02
// m is what the division gives: 0.07 / 0.01 is a little above 7, so that Double125(0.07) is 0.1. NaN gives NaN, infinity
// gives infinity.
ZELBASE_API double Double125(double x);

// A step for a time axis, in seconds, near to `x` seconds: up to 15 Double125(x), then 30, 60, 120, 300, 600, 1800, 3600
// (an hour), 7200, 14400, 21600, 28800, 43200 and 86400 (a day), and from 129600 on Double125 of the days.
ZELBASE_API double TimeInterval(double x);

// The next step of five minutes at or above `m`, for 1 to 55; 55 also for 56 to 59. 0 and 60 and above give 0, and a negative
// `m` gives 5.
ZELBASE_API int MinuteInterval(int m);

// --- Rounding ---

// floor(x + 0.5) within the range of 32 bits, whatever the width of long: above it 2147483647, below it and for NaN
// -2147483648. So -0.5 gives 0, and 0.49999999999999994 gives 1, because the sum rounds up to 1.
ZELBASE_API long RoundDouble(double x);

// `x` rounded to `digits` decimals, or to tens, hundreds and so on when `digits` is negative; halves go away from zero.
// The value is scaled, 0.5 is added, cut and scaled back: Round(1.005, 2) is 1, since 1.005 is a little less than that.
// Where the scale or the scaled value leaves the range of a double, the result is what the formula then gives, such as NaN.
ZELBASE_API double Round(double x, int digits);

// --- Decimals ---

// The distance to the next double at the size of `x`, roughly: |x * 2.220446049250313e-16|.
ZELBASE_API double Epsilon(double x);

// The number of decimals that shows `x` fully, 0 to 16: the first count at which what is left of |x| behind the point is
// within 100 Epsilon of a whole number. 0 when `x` is not finite.
//   GetDoublePrecision(0.25)  // 2
ZELBASE_API int GetDoublePrecision(double x);

// The decimals worth showing of `value` on an axis that is `span` long, when `percent` of the span is the finest that can be
// seen: the smaller of GetDoublePrecision(value) and the zeros of that finest part, 0 when it is 1 or more.
ZELBASE_API int GetSensiblePrecision(double value, double span, double percent);

// --- Degrees, minutes, seconds ---

// |d| + (s / 60 + m) / 60 degrees, negated when `d` is below 0. With `d` 0 the result is never negative, unless `m` or `s`
// is: the interface has no place for the sign of -0.
ZELBASE_API double DmsToDeg(int d, int m, double s);

// `d` is `x` truncated towards zero, `m` the minutes of the rest, 0 up to 60 and never negative: -0.5 degrees cannot be told
// from 0.5. For `x` beyond an int or NaN `d` is 0, and `m` follows from that.
ZELBASE_API void DegToDm(double x, int& d, double& m);

// As DegToDm, with the minutes truncated too and the rest of them as seconds. Minutes beyond an int are 0 as degrees are.
ZELBASE_API void DegToDms(double x, int& d, int& m, double& s);
