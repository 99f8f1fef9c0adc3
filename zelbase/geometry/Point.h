// A point of the world, or a vector between two, in double precision. Neighbours: FloatPoint.h, its sister of
// half the size; VesselPoint.h, TimePoint.h and ProfilePoint.h, which carry more than a position; CPoint.h
// for pixels.
#pragma once

#include <cmath>
#include <string>
#include <type_traits>

#include "zelbase/platform/COLORREF.h"
#include "zelbase/platform/CPoint.h"
#include "zelbase/platform/CSize.h"
#include "zelbase/platform/ZelBaseApi.h"

class CDC;
class CoordinateSystem;
class FloatPoint;

// A plain value of three doubles: x east, y north, z height, in metres. It owns nothing, may be copied byte
// by byte, and is stored by the million.
//
//   Point p(0, 1, 5);
//   p.Rotate(90, Point());                      // (1, 0, 5): clockwise on the map
//   const double d = p.Dist2D(Point(), true);   // 1: the square, without a root
//
// What always holds:
//   (1) Comparison is exact, over all three components, without a tolerance; NaN is equal to nothing.
//   (2) Arithmetic goes component by component over all three; nothing is guarded but the divisor 0.
//   (3) A Point turns into a FloatPoint, and back, wherever the other is asked for.
//   (4) Comparing the one with the other is therefore ambiguous, and does not compile: name the type you
//   mean.
class ZELBASE_API Point {
 public:
  constexpr Point() = default;
  constexpr Point(double xValue, double yValue, double zValue) : x(xValue), y(yValue), z(zValue) {}
  constexpr Point(const FloatPoint& point);                         // defined in FloatPoint.h
  constexpr Point(const CPoint& point) : x(point.x), y(point.y) {}  // z is 0

  constexpr void Set(double xValue, double yValue, double zValue) { *this = Point(xValue, yValue, zValue); }

  constexpr bool operator==(const Point& other) const { return x == other.x && y == other.y && z == other.z; }

  constexpr Point& operator+=(const Point& other) { return *this = *this + other; }
  constexpr Point& operator-=(const Point& other) { return *this = *this - other; }
  constexpr Point operator+(const Point& other) const { return Point(x + other.x, y + other.y, z + other.z); }
  constexpr Point operator-(const Point& other) const { return Point(x - other.x, y - other.y, z - other.z); }
  constexpr Point operator-() const { return Point(-x, -y, -z); }

  constexpr Point& operator*=(double factor) { return *this = *this * factor; }
  constexpr Point operator*(double factor) const { return Point(x * factor, y * factor, z * factor); }

  // A divisor of exactly 0.0, or -0.0, leaves the value as it is; every other one divides, however small.
  constexpr Point& operator/=(double divisor) { return *this = *this / divisor; }
  constexpr Point operator/(double divisor) const {
    // Kept: no division by zero, but by 1e-300; callers scale by lengths that may be nothing.
    return divisor == 0.0 ? *this : Point(x / divisor, y / divisor, z / divisor);
  }

  // Turns the point in the plane around `centre` by `angle` degrees, clockwise when positive; z stays as it
  // was. An angle of exactly 0.0 does nothing at all, not even the way to the centre and back; 360.0 does not
  // count as 0.
  void Rotate(double angle, const Point& centre);

  // Distance over x and y, or its square.
  double Dist2D(const Point& other, bool squared = false) const {
    const double dx = x - other.x;
    const double dy = y - other.y;
    const double square = dx * dx + dy * dy;
    return squared ? square : std::sqrt(square);
  }

  // Distance over x, y and z, or its square.
  double Dist3D(const Point& other, bool squared = false) const {
    const double dx = x - other.x;
    const double dy = y - other.y;
    const double dz = z - other.z;
    const double square = dx * dx + dy * dy + dz * dz;
    return squared ? square : std::sqrt(square);
  }

  // Drawing, around the pixel that CoordinateSystem::WorldToPixel gives. What ends beyond int ends at the nearest int; a null
  // surface is not drawn on.

  // An upright cross in the selected pen, with arms of `size` pixels at 96 dots to an inch. A pen of odd width gets
  // its far ends one pixel further out. On a turned map the cross is turned, its arms are one pixel longer and
  // truncated, and the pen's width does not count.
  void DrawCross(CDC* dc, const CoordinateSystem& cs, int size) const;

  // Kind 0 is the upright cross, 1 the diagonal one, 2 both; any other is nothing. The diagonal's arms are the
  // corners of the square, and are longer by that.
  void DrawSymbol(CDC* dc, const CoordinateSystem& cs, int size, int kind) const;

  // One pixel, if the pixel window holds it, all edges included.
  void DrawPixel(CDC* dc, const CoordinateSystem& cs, COLORREF color) const;

  // A dot, `offset` pixels away, in the colour of the selected pen (black without one). Below a radius of 1 it is one
  // pixel. With `outline` it is the square around the dot and `margin` more pixels, in the pen and not filled.
  void DrawDot(CDC* dc, const CoordinateSystem& cs, int radius, CSize offset, bool outline, int margin) const;

  // "point: %f, %f, %f", whatever the locale; of any length the numbers need.
  std::string ToString() const;

  double x = 0;
  double y = 0;
  double z = 0;
};

static_assert(sizeof(Point) == 3 * sizeof(double));
static_assert(std::is_trivially_copyable_v<Point> && std::is_standard_layout_v<Point>);
