#include "zelbase/geometry/Point.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "tests/geometry/EdgeValues.h"
#include "zelbase/geometry/FloatPoint.h"

namespace {

TEST(Point, IsThreePlainWords) {
  static_assert(sizeof(Point) == 24 && std::is_trivially_copyable_v<Point> && std::is_standard_layout_v<Point>);
  const Point p(1, 2, 3);
  std::array<double, 3> words{};
  std::memcpy(words.data(), &p, sizeof p);
  EXPECT_EQ(words, (std::array<double, 3>{1, 2, 3}));
}

TEST(Point, IsMadeFromItsSisterAndFromAPixel) {
  EXPECT_EQ(Point(), Point(0, 0, 0));
  const Point fromFloats = FloatPoint(1.5, 2.5, -3.5);
  EXPECT_EQ(fromFloats, Point(1.5, 2.5, -3.5));
  const Point fromPixel = CPoint(7, -8);
  EXPECT_EQ(fromPixel, Point(7, -8, 0));
  Point copy(fromPixel);
  copy.Set(4, 5, 6);
  EXPECT_EQ(copy, Point(4, 5, 6));
}

TEST(Point, ComparesExactlyOverAllThree) {
  EXPECT_TRUE(Point(1, 2, 3) == Point(1, 2, 3));
  EXPECT_TRUE(Point(1, 2, 3) != Point(std::nextafter(1.0, 2.0), 2, 3));
  EXPECT_TRUE(Point(1, 2, 3) != Point(1, 2.0000000001, 3));
  EXPECT_TRUE(Point(1, 2, 3) != Point(1, 2, -3));
  EXPECT_TRUE(Point(0.0, 0, 0) == Point(-0.0, 0, 0));
}

TEST(Point, NanIsEqualToNothing) {
  const Point p(kNan, 0, 0);
  const Point copy = p;
  EXPECT_FALSE(p == copy);
  EXPECT_TRUE(p != copy);
}

template <class A, class B>
constexpr bool kComparable = requires(const A& a, const B& b) {
  a == b;
};

TEST(Point, ComparisonWithItsSisterIsAmbiguous) {
  static_assert(kComparable<Point, Point> && kComparable<FloatPoint, FloatPoint>);
  EXPECT_FALSE((kComparable<Point, FloatPoint>));
  EXPECT_FALSE((kComparable<FloatPoint, Point>));
}

TEST(Point, AddsAndTakesByComponent) {
  Point p(1, 2, 3);
  EXPECT_EQ(p + Point(10, 20, 30), Point(11, 22, 33));
  EXPECT_EQ(p - Point(10, 20, 30), Point(-9, -18, -27));
  EXPECT_EQ(-p, Point(-1, -2, -3));
  EXPECT_TRUE(Same(-Point(), Point(-0.0, -0.0, -0.0)));
  p += Point(1, 1, 1);
  p -= Point(0, 0, 4);
  EXPECT_EQ(p, Point(2, 3, 0));
  const Point& itself = p;
  p += itself;
  EXPECT_EQ(p, Point(4, 6, 0));
  p -= itself;
  EXPECT_EQ(p, Point());
}

TEST(Point, TakesItsSisterAsAnOperand) { EXPECT_EQ(Point(1, 2, 3) + FloatPoint(1.0, 1.0, 1.0), Point(2, 3, 4)); }

TEST(Point, TimesAFactor) {
  Point p(1, -2, 3);
  EXPECT_EQ(p * 2, Point(2, -4, 6));
  p *= -0.5;
  EXPECT_EQ(p, Point(-0.5, 1, -1.5));
}

TEST(Point, AZeroDivisorLeavesTheValue) {
  EXPECT_EQ(Point(1, 2, 3) / 0.0, Point(1, 2, 3));
  EXPECT_EQ(Point(1, 2, 3) / -0.0, Point(1, 2, 3));
  Point p(1, 2, 3);
  p /= 0.0;
  EXPECT_EQ(p, Point(1, 2, 3));
}

TEST(Point, ATinyDivisorDivides) {
  EXPECT_EQ(Point(1, 2, 3) / 1e-300, Point(1 / 1e-300, 2 / 1e-300, 3 / 1e-300));
  EXPECT_EQ(Point(1, 2, 3) / kSmallest, Point(kInfinity, kInfinity, kInfinity));
}

TEST(Point, DivisionIsTrueAndNotByAReciprocal) {
  EXPECT_EQ((Point(5, 0, 0) / 49.0 * 49.0).x, 5.0 / 49.0 * 49.0);
  EXPECT_EQ((Point(49, 0, 0) / 49.0).x, 1);  // 49 times the reciprocal is less
  EXPECT_NE(49 * (1 / 49.0), 1);
}

TEST(Point, RotateGoesClockwiseOnTheMapAndKeepsZ) {
  Point p(0, 1, 5);
  p.Rotate(90, Point(0, 0, 0));
  EXPECT_NEAR(p.x, 1, 1e-12);
  EXPECT_NEAR(p.y, 0, 1e-12);
  EXPECT_EQ(p.z, 5);
  p.Set(11, 20, 5);
  p.Rotate(-90, Point(10, 20, 30));
  EXPECT_NEAR(p.x, 10, 1e-12);
  EXPECT_NEAR(p.y, 21, 1e-12);
  EXPECT_EQ(p.z, 5);
}

TEST(Point, RotateByZeroTouchesNothing) {
  // The way to this centre and back would lose the point.
  Point p(1, 2, 3);
  p.Rotate(0.0, Point(1e30, 1e30, 0));
  EXPECT_EQ(p, Point(1, 2, 3));
  p.Rotate(-0.0, Point(kNan, kNan, 0));
  EXPECT_EQ(p, Point(1, 2, 3));
}

TEST(Point, RotateBy360DoesNotCountAsZero) {
  Point p(1, 2, 3);
  p.Rotate(360.0, Point(1e30, 1e30, 0));
  EXPECT_NE(p, Point(1, 2, 3));
}

TEST(Point, RotateAroundItselfStays) {
  Point p(1, 2, 3);
  p.Rotate(77, p);
  EXPECT_EQ(p, Point(1, 2, 3));
}

TEST(Point, DistancesAreOverTwoOrThreeComponents) {
  const Point a(1, 2, 3);
  const Point b(4, 6, 15);
  EXPECT_EQ(a.Dist2D(b, false), 5);
  EXPECT_EQ(a.Dist2D(b, true), 25);
  EXPECT_EQ(a.Dist3D(b, false), 13);
  EXPECT_EQ(b.Dist3D(a, true), 169);
  EXPECT_EQ(a.Dist3D(a, false), 0);
  EXPECT_EQ(Point(1e200, 0, 0).Dist2D(Point(), false), kInfinity);
  EXPECT_TRUE(std::isnan(Point(0, 0, kNan).Dist3D(a, true)));
  EXPECT_EQ(Point(0, 0, kNan).Dist2D(Point(3, 4, 0), false), 5);
}

TEST(Point, ToStringHasSixDecimals) {
  EXPECT_EQ(Point(1, -2.5, 3.1234567).ToString(), "point: 1.000000, -2.500000, 3.123457");
  EXPECT_EQ(Point(kNan, kInfinity, -kInfinity).ToString(), "point: nan, inf, -inf");
}

TEST(Point, ToStringHasRoomForTheLargestNumbers) {
  const std::string text = Point(-kLargest, kLargest, 0).ToString();
  // 309 digits before the point of each, and six behind it.
  EXPECT_EQ(text.size(), std::strlen("point: ") + 1 + 316 + 2 + 316 + 2 + 8);
  EXPECT_EQ(text.substr(0, 24), "point: -1797693134862315");
}

TEST(PointLong, RandomArithmeticGoesComponentByComponent) {
  EdgeValues random(7107);
  Tally tally({"divisor 0", "divisor", "not rotated", "rotated"});
  for (int i = 0; i < kRandomRounds; ++i) {
    const double a[3] = {random.Coordinate(), random.Coordinate(), random.Coordinate()};
    const double b[3] = {random.Flag() ? random.Near(a[0]) : random.Coordinate(), random.Coordinate(),
                         random.Flag() ? a[2] : random.Coordinate()};
    const double factor = random.Coordinate();
    const Point pa(a[0], a[1], a[2]);
    const Point pb(b[0], b[1], b[2]);
    double sum[3], difference[3], product[3], quotient[3], square[3];
    for (int k = 0; k < 3; ++k) {
      sum[k] = a[k] + b[k];
      difference[k] = a[k] - b[k];
      product[k] = a[k] * factor;
      quotient[k] = factor != 0 ? a[k] / factor : a[k];
      square[k] = (b[k] - a[k]) * (b[k] - a[k]);
    }
    tally.Count(factor == 0 ? "divisor 0" : "divisor");
    ASSERT_TRUE(Same(pa + pb, Point(sum[0], sum[1], sum[2])));
    ASSERT_TRUE(Same(pa - pb, Point(difference[0], difference[1], difference[2])));
    ASSERT_TRUE(Same(pa * factor, Point(product[0], product[1], product[2])));
    ASSERT_TRUE(Same(pa / factor, Point(quotient[0], quotient[1], quotient[2])));
    ASSERT_EQ(pa == pb, a[0] == b[0] && a[1] == b[1] && a[2] == b[2]);
    ASSERT_TRUE(Same(pa.Dist2D(pb, true), square[0] + square[1]));
    ASSERT_TRUE(Same(pa.Dist2D(pb, false), std::sqrt(square[0] + square[1])));
    ASSERT_TRUE(Same(pa.Dist3D(pb, true), square[0] + square[1] + square[2]));
    ASSERT_TRUE(Same(pa.Dist3D(pb, false), std::sqrt(square[0] + square[1] + square[2])));

    const double angle = random.Bearing();
    Point turned = pa;
    turned.Rotate(angle, pb);
    if (!tally.Either(angle != 0.0, "rotated", "not rotated")) {
      ASSERT_TRUE(Same(turned, pa));
      continue;
    }
    const double c = std::cos(0.017453292519943 * angle);
    const double s = std::sin(0.017453292519943 * angle);
    ASSERT_TRUE(Same(turned, Point(c * difference[0] + s * difference[1] + b[0], c * difference[1] - s * difference[0] + b[1], a[2])))
        << pa.ToString() << ' ' << angle << ' ' << pb.ToString();
  }
}

}  // namespace
