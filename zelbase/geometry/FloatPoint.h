// A point in single precision, for records that hold millions of them. Neighbours: Point.h, its sister in
// double precision, which all reckoning should prefer; StatusPoint.h, which adds a status.
#pragma once

#include <cmath>
#include <string>
#include <type_traits>

#include "zelbase/geometry/Point.h"
#include "zelbase/platform/COLORREF.h"
#include "zelbase/platform/CPoint.h"
#include "zelbase/platform/CSize.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

template <class T>
concept Number = std::is_arithmetic_v<T>;

}  // namespace zelbase::detail

// A plain value of three floats: x east, y north, z height, in metres. A float holds a coordinate of some
// hundred kilometres to a few centimetres only.
//
// What always holds:
//   (1) Every stored step rounds to single precision: sums, differences and products of floats are floats.
//   (2) A factor or divisor of double precision is applied in double, and the result rounded once.
//   (3) Comparison is exact, over all three components; NaN is equal to nothing.
//   (4) It turns into a Point, and back, wherever the other is asked for; comparing the two is ambiguous.
//   (5) A double beyond the range of a float becomes infinity.
class ZELBASE_API FloatPoint {
 public:
  constexpr FloatPoint() = default;
  constexpr FloatPoint(float xValue, float yValue, float zValue) : x(xValue), y(yValue), z(zValue) {}
  constexpr FloatPoint(double xValue, double yValue, double zValue) : x(Narrow(xValue)), y(Narrow(yValue)), z(Narrow(zValue)) {}

  // Whole numbers, and any mixture of numbers, fit the floats and the doubles equally well: taken as doubles.
  constexpr FloatPoint(zelbase::detail::Number auto xValue, zelbase::detail::Number auto yValue, zelbase::detail::Number auto zValue)
      : FloatPoint(static_cast<double>(xValue), static_cast<double>(yValue), static_cast<double>(zValue)) {}

  constexpr FloatPoint(const Point& point) : FloatPoint(point.x, point.y, point.z) {}
  constexpr FloatPoint(const CPoint& point) : x(static_cast<float>(point.x)), y(static_cast<float>(point.y)) {}  // z is 0

  constexpr void Set(float xValue, float yValue, float zValue) { *this = FloatPoint(xValue, yValue, zValue); }
  constexpr void Set(double xValue, double yValue, double zValue) { *this = FloatPoint(xValue, yValue, zValue); }
  constexpr void Set(zelbase::detail::Number auto xValue, zelbase::detail::Number auto yValue, zelbase::detail::Number auto zValue) {
    *this = FloatPoint(xValue, yValue, zValue);
  }

  constexpr bool operator==(const FloatPoint& other) const { return x == other.x && y == other.y && z == other.z; }

  constexpr FloatPoint& operator+=(const FloatPoint& other) { return *this = *this + other; }
  constexpr FloatPoint& operator-=(const FloatPoint& other) { return *this = *this - other; }
  constexpr FloatPoint operator+(const FloatPoint& other) const { return FloatPoint(x + other.x, y + other.y, z + other.z); }
  constexpr FloatPoint operator-(const FloatPoint& other) const { return FloatPoint(x - other.x, y - other.y, z - other.z); }
  constexpr FloatPoint operator-() const { return FloatPoint(-x, -y, -z); }

  // In double, rounded once.
  constexpr FloatPoint operator*(double factor) const { return FloatPoint(x * factor, y * factor, z * factor); }

  // In double, rounded once. A divisor of exactly 0.0, or -0.0, leaves the value as it is; every other one
  // divides.
  constexpr FloatPoint operator/(double divisor) const {
    // Kept: as Point does.
    return divisor == 0.0 ? *this : FloatPoint(x / divisor, y / divisor, z / divisor);
  }

  // As Point::Rotate, with the radians, sine, cosine and differences each rounded to float, and products and
  // sums in float.
  void Rotate(double angle, const FloatPoint& centre);

  // Distance over x and y, or its square: the squares are floats, and so is their sum.
  float Dist2D(const FloatPoint& other, bool squared = false) const {
    const float dx = x - other.x;
    const float dy = y - other.y;
    const float square = dx * dx + dy * dy;
    return squared ? square : std::sqrt(square);
  }

  // Distance over x, y and z, or its square, likewise.
  float Dist3D(const FloatPoint& other, bool squared = false) const {
    const float dx = x - other.x;
    const float dy = y - other.y;
    const float dz = z - other.z;
    const float square = dx * dx + dy * dy + dz * dz;
    return squared ? square : std::sqrt(square);
  }

  // Drawing, as Point's.
  void DrawCross(CDC* dc, const CoordinateSystem& cs, int size) const;
  void DrawSymbol(CDC* dc, const CoordinateSystem& cs, int size, int kind) const;
  void DrawPixel(CDC* dc, const CoordinateSystem& cs, COLORREF color) const;
  void DrawDot(CDC* dc, const CoordinateSystem& cs, int radius, CSize offset, bool outline, int margin) const;

  // "FloatPoint: %f, %f, %f", whatever the locale.
  std::string ToString() const;

  float x = 0;
  float y = 0;
  float z = 0;

 private:
  static constexpr float Narrow(double value) { return static_cast<float>(value); }
};

static_assert(sizeof(FloatPoint) == 3 * sizeof(float));
static_assert(std::is_trivially_copyable_v<FloatPoint> && std::is_standard_layout_v<FloatPoint>);

constexpr Point::Point(const FloatPoint& point) : x(point.x), y(point.y), z(point.z) {}
