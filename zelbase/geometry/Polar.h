// Vectors as bearing and length, and back. Neighbours: Angles.h for bearings by themselves, Rotation.h for
// turning.
//
// Bearings are degrees, 0 along +y, 90 along +x, clockwise; lengths and coordinates are metres. All are pure
// functions, safe on any thread; none fails, and NaN passes through.
#pragma once

#include "zelbase/geometry/Point.h"
#include "zelbase/platform/ZelBaseApi.h"

// The bearing of the vector (x, y), from 0 to 360, and its length, the root of x * x + y * y. Components
// smaller than TOLERANCE (1e-07) count as 0.0 for the bearing only; a zero vector has bearing 0 and length 0.
//   XYToPolar(1e-8, 1, bearing, length);   // bearing 0 exactly
//   XYToPolar(0, -1, bearing, length);     // bearing 180.00000000000304
// Degrees are the radians divided by D_TO_R, which is a little small: east is 90.00000000000152, west
// 269.99999999999847. A vector just west of north may round up to a bearing of exactly 360.
ZELBASE_API void XYToPolar(double x, double y, double& bearing, double& length);

// The same for the point's x and y.
ZELBASE_API void XYToPolar(const Point& vector, double& bearing, double& length);

// x = sin(bearing) * length, y = cos(bearing) * length. `x` and `y` may be the variables that were given.
ZELBASE_API void PolarToXY(double bearing, double length, double& x, double& y);

// The same into the point's x and y; its z stays as it was.
ZELBASE_API void PolarToXY(double bearing, double length, Point& vector);
