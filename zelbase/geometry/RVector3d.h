// Three doubles as other modules of the suite hand them over. Neighbours: Point.h, which has the arithmetic;
// Extents3D.h, which grows by either.
#pragma once

// Made by braces, `RVector3d{1, 2, 3}`; it does not turn into a Point, nor a Point into it.
struct RVector3d {
  double x, y, z;
};
