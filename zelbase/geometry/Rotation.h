// Turns vectors in the plane and in space. Neighbours: Point::Rotate and FloatPoint::Rotate, which turn a
// point around another; Polar.h for bearings.
//
// All are pure functions, safe on any thread; none fails, and NaN passes through. Angles are degrees, turned
// into radians with D_TO_R; a positive one turns clockwise on the map.
#pragma once

#include "zelbase/geometry/Point.h"
#include "zelbase/platform/ZelBaseApi.h"

// Turns the vector (dx, dy), metres from the centre, by `angle` degrees and adds the centre (cx, cy):
//   x = cos(a) * dx + sin(a) * dy + cx
//   y = cos(a) * dy - sin(a) * dx + cy
// `x` and `y` may be the variables that were given.
ZELBASE_API void Rotation2D(double cx, double cy, double dx, double dy, double angle, double& x, double& y);

// Turns the vector `in` around the origin by three plane rotations in this order, each in the form of
// Rotation2D: x and z by -angles.y, y and z by angles.x, x and y by angles.z (degrees). `out` may be the same
// object as `in` or `angles`.
ZELBASE_API void Rotation3D(const Point& in, const Point& angles, Point& out);
