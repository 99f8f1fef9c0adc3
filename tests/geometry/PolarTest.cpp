#include "zelbase/geometry/Polar.h"

#include <gtest/gtest.h>

#include "tests/geometry/EdgeValues.h"

namespace {

constexpr double kDegree = 0.017453292519943;

struct Polar {
  double bearing = -1;
  double length = -1;
};

Polar Of(double x, double y) {
  Polar polar;
  XYToPolar(x, y, polar.bearing, polar.length);
  return polar;
}

TEST(Polar, BearingsAreClockwiseFromNorth) {
  EXPECT_EQ(Of(0, 1).bearing, 0);
  EXPECT_NEAR(Of(1, 1).bearing, 45.00000000000076, 1e-11);
  EXPECT_NEAR(Of(1, 0).bearing, 90.00000000000152, 1e-11);
  EXPECT_NEAR(Of(0, -1).bearing, 180.00000000000304, 1e-11);
  EXPECT_NEAR(Of(-1, 0).bearing, 269.99999999999847, 1e-11);
  EXPECT_EQ(Of(3, -4).length, 5);
}

TEST(Polar, DegreesAreAQuotientByTheTruncatedConstant) {
  EXPECT_GT(Of(0, -1).bearing, 180);
  EXPECT_GT(Of(1, 0).bearing, 90);
  EXPECT_LT(Of(-1, 0).bearing, 270);
  EXPECT_EQ(Of(1, 0).bearing, std::atan2(1.0, 0.0) / kDegree);
}

TEST(Polar, TriflesCountAsZeroForTheBearingOnly) {
  EXPECT_EQ(Of(1e-8, 1).bearing, 0);
  EXPECT_EQ(Of(1e-8, 1e-8).bearing, 0);
  EXPECT_EQ(Of(1e-8, 1e-8).length, std::sqrt(1e-8 * 1e-8 + 1e-8 * 1e-8));
  EXPECT_EQ(Of(3e-8, -4e-8).bearing, 0);
  EXPECT_NEAR(Of(3e-8, -4e-8).length, 5e-8, 1e-20);
  EXPECT_NE(Of(1e-7, 1).bearing, 0);  // not below the tolerance
}

TEST(Polar, AZeroVectorHasBearingAndLengthZero) {
  EXPECT_TRUE(Same(Of(0, 0).bearing, 0.0));
  EXPECT_EQ(Of(0, 0).length, 0);
  EXPECT_TRUE(Same(Of(-0.0, -0.0).bearing, 0.0));
}

TEST(Polar, MinusZeroAndANegativeTrifleAreReplacedByPlusZero) {
  EXPECT_EQ(Of(-0.0, -1).bearing, Of(0.0, -1).bearing);
  EXPECT_EQ(Of(-1e-8, -1).bearing, Of(0.0, -1).bearing);
  EXPECT_GT(Of(-0.0, -1).bearing, 180);
}

TEST(Polar, ABearingJustWestOfNorthRoundsUpTo360) { EXPECT_EQ(Of(-1e-6, 1e10).bearing, 360.0); }

TEST(Polar, NanAndInfinitiesPassThrough) {
  EXPECT_TRUE(std::isnan(Of(kNan, 1).bearing));
  EXPECT_TRUE(std::isnan(Of(1, kNan).length));
  EXPECT_EQ(Of(kInfinity, 1).length, kInfinity);
  EXPECT_NEAR(Of(kInfinity, 1).bearing, 90, 1e-11);
  EXPECT_EQ(Of(1e200, 1e200).length, kInfinity);  // the squares leave the range
}

TEST(Polar, APointGivesItsXAndY) {
  double bearing = 0;
  double length = 0;
  XYToPolar(Point(3, 4, 99), bearing, length);
  EXPECT_EQ(length, 5);
  EXPECT_NEAR(bearing, 36.86989764584402, 1e-11);  // atan(3/4)
}

TEST(Polar, ResultsMayGoIntoTheVectorItself) {
  Point p(3, 4, 7);
  XYToPolar(p, p.x, p.y);
  EXPECT_NEAR(p.x, 36.86989764584402, 1e-11);
  EXPECT_EQ(p.y, 5);
  PolarToXY(p.x, p.y, p.x, p.y);
  EXPECT_NEAR(p.x, 3, 1e-14);
  EXPECT_NEAR(p.y, 4, 1e-14);
}

TEST(Polar, PolarToXYGoesClockwiseFromNorth) {
  double x = 0;
  double y = 0;
  PolarToXY(90, 2, x, y);
  EXPECT_NEAR(x, 2, 1e-12);
  EXPECT_NEAR(y, 0, 1e-12);
  PolarToXY(0, 2, x, y);
  EXPECT_EQ(x, 0);
  EXPECT_EQ(y, 2);
  PolarToXY(210, 2, x, y);
  EXPECT_NEAR(x, -1, 1e-12);
  EXPECT_NEAR(y, -std::sqrt(3.0), 1e-12);
}

TEST(Polar, PolarToXYIntoAPointLeavesItsZ) {
  Point p(8, 9, 7);
  PolarToXY(0, 5, p);
  EXPECT_EQ(p, Point(0, 5, 7));
}

TEST(Polar, RandomVectorsAgreeWithASecondTranscription) {
  EdgeValues random(7104);
  Tally tally({"x a trifle", "y a trifle", "zero vector", "west", "not west", "exactly 360", "NaN"});
  for (int i = 0; i < kRandomRounds; ++i) {
    const double x = random.Index(50) == 0 ? -1e-6 : random.Coordinate();
    const double y = random.Index(50) == 0 ? 1e10 : random.Coordinate();
    double bx = x;
    double by = y;
    if (x > -1e-07 && x < 1e-07) {
      bx = 0.0;
      tally.Count("x a trifle");
    }
    if (y > -1e-07 && y < 1e-07) {
      by = 0.0;
      tally.Count("y a trifle");
    }
    if (bx == 0 && by == 0) tally.Count("zero vector");
    double bearing = std::atan2(bx, by) / kDegree;
    if (std::isnan(bearing)) tally.Count("NaN");
    if (tally.Either(bearing < 0, "west", "not west")) bearing = 360.0 + bearing;
    if (bearing == 360.0) tally.Count("exactly 360");
    ASSERT_TRUE(Same(Of(x, y).bearing, bearing)) << x << ' ' << y;
    ASSERT_TRUE(Same(Of(x, y).length, std::sqrt(x * x + y * y))) << x << ' ' << y;
  }
}

TEST(Polar, RandomVectorsComeBack) {
  EdgeValues random(7105);
  for (int i = 0; i < kRandomRounds; ++i) {
    const double x = random.Between(-1000, 1000);
    const double y = random.Between(-1000, 1000);
    double bearing = 0;
    double length = 0;
    XYToPolar(x, y, bearing, length);
    Point back(0, 0, 3);
    PolarToXY(bearing, length, back);
    // 360 degrees by the truncated constant fall 1.1e-13 short of a turn, which is 1.5e-10 at this length.
    ASSERT_NEAR(back.x, x, 2e-10);
    ASSERT_NEAR(back.y, y, 2e-10);
    ASSERT_EQ(back.z, 3);
    const double any = random.Bearing();
    PolarToXY(any, length, back);
    ASSERT_TRUE(Same(back.x, std::sin(kDegree * any) * length));
    ASSERT_TRUE(Same(back.y, std::cos(kDegree * any) * length));
  }
}

}  // namespace
