// The box around points in space. Neighbours: Page.h for the rectangle around points in the plane; Point.h,
// FloatPoint.h and RVector3d.h, by which it grows.
#pragma once

#include <limits>

#include "zelbase/geometry/FloatPoint.h"
#include "zelbase/geometry/Point.h"
#include "zelbase/geometry/RVector3d.h"
#include "zelbase/geometry/detail/AxisBounds.h"
#include "zelbase/platform/ZelBaseApi.h"

// A plain value of six doubles, metres. An axis is invalid while its maximum is below its minimum; an empty
// axis has its minimum at the largest double and its maximum at the smallest.
//
//   Extents3D box;              // empty
//   box |= Point(1, 2, 3);      // no width, at that point
//   box |= Point(5, 2, 1);
//   box.GetXDiff();             // 4
//
// NaN: an axis with a NaN bound is not invalid for growth and keeps it, and IsValid is false.
class ZELBASE_API Extents3D {
 public:
  constexpr Extents3D() = default;
  constexpr Extents3D(double xLow, double yLow, double zLow, double xHigh, double yHigh, double zHigh)
      : xMin(xLow), yMin(yLow), zMin(zLow), xMax(xHigh), yMax(yHigh), zMax(zHigh) {}

  // z is empty.
  constexpr Extents3D(double xLow, double yLow, double xHigh, double yHigh) : xMin(xLow), yMin(yLow), xMax(xHigh), yMax(yHigh) {}

  constexpr void Set(double xLow, double yLow, double zLow, double xHigh, double yHigh, double zHigh) {
    *this = Extents3D(xLow, yLow, zLow, xHigh, yHigh, zHigh);
  }

  // Empties z.
  constexpr void Set(double xLow, double yLow, double xHigh, double yHigh) { *this = Extents3D(xLow, yLow, xHigh, yHigh); }

  // Maximum less minimum, also of an invalid axis.
  // Kept: unguarded, so that an empty axis gives -infinity.
  constexpr double GetXDiff() const { return xMax - xMin; }
  constexpr double GetYDiff() const { return yMax - yMin; }
  constexpr double GetZDiff() const { return zMax - zMin; }

  // Every maximum is at least its minimum.
  constexpr bool IsValid() const { return xMax >= xMin && yMax >= yMin && zMax >= zMin; }

  // Empties all three axes.
  constexpr void Invalidate() { *this = Extents3D(); }

  // Empties x and y, and leaves z alone.
  constexpr void Invalidate2D() {
    xMin = yMin = kMost;
    xMax = yMax = -kMost;
  }

  // Exact, over the six values.
  constexpr bool operator==(const Extents3D& other) const {
    return xMin == other.xMin && yMin == other.yMin && zMin == other.zMin && xMax == other.xMax && yMax == other.yMax && zMax == other.zMax;
  }

  // Takes the other box in, axis by axis. An invalid axis becomes the other's as it stands, even when that is
  // invalid, too; otherwise an invalid axis of the other changes nothing.
  constexpr Extents3D& operator|=(const Extents3D& other) {
    zelbase::detail::UniteAxis(xMin, xMax, other.xMin, other.xMax);
    zelbase::detail::UniteAxis(yMin, yMax, other.yMin, other.yMax);
    zelbase::detail::UniteAxis(zMin, zMax, other.zMin, other.zMax);
    return *this;
  }

  // Takes a point in, axis by axis; on an invalid axis both bounds become the coordinate.
  constexpr Extents3D& operator|=(const Point& point) { return Grow(point.x, point.y, point.z); }
  constexpr Extents3D& operator|=(const FloatPoint& point) { return Grow(point.x, point.y, point.z); }
  constexpr Extents3D& operator|=(const RVector3d& vector) { return Grow(vector.x, vector.y, vector.z); }

  // The middle, 0.5 * (minimum + maximum) of each axis.
  constexpr Point GetCenter() const { return Point(0.5 * (xMin + xMax), 0.5 * (yMin + yMax), 0.5 * (zMin + zMax)); }

  // Swaps the bounds of each invalid axis. An empty box thereby turns into the box of all points: do not
  // normalise it.
  constexpr void Normalize() {
    zelbase::detail::OrderAxis(xMin, xMax);
    zelbase::detail::OrderAxis(yMin, yMax);
    zelbase::detail::OrderAxis(zMin, zMax);
  }

 private:
  static constexpr double kMost = std::numeric_limits<double>::max();

  constexpr Extents3D& Grow(double x, double y, double z) {
    zelbase::detail::GrowAxis(xMin, xMax, x);
    zelbase::detail::GrowAxis(yMin, yMax, y);
    zelbase::detail::GrowAxis(zMin, zMax, z);
    return *this;
  }

 public:
  double xMin = kMost;
  double yMin = kMost;
  double zMin = kMost;
  double xMax = -kMost;
  double yMax = -kMost;
  double zMax = -kMost;
};

static_assert(sizeof(Extents3D) == 6 * sizeof(double));
