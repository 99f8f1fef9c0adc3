// What lines and curves have in common: points of intersection, and the circle through three points.
// Neighbours: Line.h and Curve.h for the shapes, Page.h for clipping.
//
// All are pure functions, safe on any thread. Where one answers false, or a count, whatever it did not count
// is untouched. No test refuses NaN: the answer may be true, and what depends on the NaN is NaN and marked as
// lying on nothing. An output may be part of an input.
//
// The tolerance is the absolute TOLERANCE, 1e-07. z takes no part anywhere.
#pragma once

#include "zelbase/geometry/Curve.h"
#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/Point.h"
#include "zelbase/platform/ZelBaseApi.h"

// The crossing of the two endless lines. p.x and p.y are written, p.z is not. `flags` tells which segments
// hold it: bit 0 (value 1) for a, bit 1 (value 2) for b. For the mark the products (end.x - p.x) * (start.x -
// p.x), and that of y, are to be below 1e-07, so that a point just beyond an end counts as well: 1e-07 by the
// segment's extent beyond it, a third of a millimetre at most.
//
// False when the lines are parallel: slopes less than 1e-07 apart, or both vertical, even when they coincide.
// There are two meanings of vertical: ends less than 1e-07 apart in x, and then the crossing lies at its
// start's x; and a slope above 1e10, which counts as vertical at its start's x, too, once both have passed as
// not vertical in the first meaning.
ZELBASE_API bool Intersect(const Line& a, const Line& b, Point& p, long& flags);

// The number of points that the two arcs have in common, 0 to 2; so many of `p` are written, with z 0. The
// first is the one to the right of the way from a's centre to b's. Touching circles give the same point
// twice. Concentric circles give none.
ZELBASE_API long Intersect(const Curve& a, const Curve& b, Point (&p)[2]);

// Both crossings of the endless line with the circle, in the order of travel along the line, z 0, each with
// its mark: bit 0 (value 1) when it lies between the line's ends, inclusive, bit 1 (value 2) when it lies on
// the arc. False when they do not meet, or when the line has no horizontal length.
ZELBASE_API bool Intersect(const Line& l, const Curve& c, Point (&p)[2], long (&flags)[2]);

// The crossing of the circles around `a` with radius `ra` and around `b` with radius `rb` that lies to the
// left of the way from a to b; p.x and p.y are written, p.z is not. False when they do not meet, and when the
// centres coincide. With ra 0 and rb the distance of the centres it is true with NaN.
ZELBASE_API bool IntersectP3(const Point& a, const Point& b, double ra, double rb, Point& p);

// The centre of the circle through three points: where the perpendiculars on the middles of a-b and b-c
// cross; centre.z is not written. False when they are parallel, as Intersect of two lines tells it. Where a
// and b coincide the answer is true with a meaningless centre.
ZELBASE_API bool CentreCircleFrom3P(const Point& a, const Point& b, const Point& c, Point& centre);
