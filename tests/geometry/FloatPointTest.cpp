#include "zelbase/geometry/FloatPoint.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "tests/geometry/EdgeValues.h"

namespace {

bool SameFloats(const FloatPoint& a, const FloatPoint& b) { return Same(a.x, b.x) && Same(a.y, b.y) && Same(a.z, b.z); }

TEST(FloatPoint, IsThreePlainWords) {
  static_assert(sizeof(FloatPoint) == 12 && std::is_trivially_copyable_v<FloatPoint> && std::is_standard_layout_v<FloatPoint>);
  const FloatPoint p(1.0f, 2.0f, 3.0f);
  std::array<float, 3> words{};
  std::memcpy(words.data(), &p, sizeof p);
  EXPECT_EQ(words, (std::array<float, 3>{1, 2, 3}));
}

TEST(FloatPoint, IsMadeFromFloatsDoublesItsSisterAndAPixel) {
  EXPECT_EQ(FloatPoint(), FloatPoint(0.0f, 0.0f, 0.0f));
  EXPECT_EQ(FloatPoint(0.1, 0.2, 0.3), FloatPoint(0.1f, 0.2f, 0.3f));
  const FloatPoint fromDoubles = Point(1.5, 0.1, -3.5);
  EXPECT_EQ(fromDoubles, FloatPoint(1.5f, 0.1f, -3.5f));
  const FloatPoint fromPixel = CPoint(7, -8);
  EXPECT_EQ(fromPixel, FloatPoint(7.0f, -8.0f, 0.0f));
  FloatPoint p;
  p.Set(1.0f, 2.0f, 3.0f);
  EXPECT_EQ(p, FloatPoint(1.0f, 2.0f, 3.0f));
  p.Set(0.1, 0.2, 0.3);
  EXPECT_EQ(p, FloatPoint(0.1f, 0.2f, 0.3f));
}

TEST(FloatPoint, WholeNumbersAndMixturesOfNumbersAreTakenAsDoubles) {
  EXPECT_EQ(FloatPoint(1, 2, 3), FloatPoint(1.0f, 2.0f, 3.0f));
  EXPECT_EQ(FloatPoint(0.1f, 0.2, 3), FloatPoint(0.1f, 0.2f, 3.0f));
  EXPECT_EQ((FloatPoint{0.1f, 0.1f, 0.3}), FloatPoint(0.1f, 0.1f, 0.3f));
  // 2^24 + 1 lies half way between two floats, and goes to the even one.
  EXPECT_EQ(FloatPoint(16777217, 16777219u, -16777217LL), FloatPoint(16777216.0f, 16777220.0f, -16777216.0f));
  FloatPoint p;
  p.Set(-1, 2, 3);
  EXPECT_EQ(p, FloatPoint(-1.0f, 2.0f, 3.0f));
  p.Set(p.x, 0.2, 7);
  EXPECT_EQ(p, FloatPoint(-1.0f, 0.2f, 7.0f));
}

TEST(FloatPoint, ADoubleBeyondAFloatIsInfinity) {
  const FloatPoint p(1e300, -1e300, kNan);
  EXPECT_EQ(p.x, std::numeric_limits<float>::infinity());
  EXPECT_EQ(p.y, -std::numeric_limits<float>::infinity());
  EXPECT_TRUE(std::isnan(p.z));
}

TEST(FloatPoint, ComparesExactlyOverAllThree) {
  const float next = std::nextafter(1.0f, 2.0f);
  EXPECT_TRUE(FloatPoint(1.0f, 2.0f, 3.0f) == FloatPoint(1.0f, 2.0f, 3.0f));
  EXPECT_TRUE(FloatPoint(1.0f, 2.0f, 3.0f) != FloatPoint(next, 2.0f, 3.0f));
  EXPECT_TRUE(FloatPoint(1.0f, 2.0f, 3.0f) != FloatPoint(1.0f, 2.0f, 4.0f));
}

TEST(FloatPoint, RoundsEachSumToAFloat) {
  const FloatPoint p = FloatPoint(16777216.0f, 0.0f, 0.0f) + FloatPoint(1.0f, 0.0f, 0.0f);
  EXPECT_EQ(p.x, 16777216.0f);  // 2^24 + 1 is no float
  FloatPoint q(1.0f, 2.0f, 3.0f);
  q += FloatPoint(1.0f, 1.0f, 1.0f);
  q -= FloatPoint(0.0f, 0.0f, 8.0f);
  EXPECT_EQ(q, FloatPoint(2.0f, 3.0f, -4.0f));
  EXPECT_EQ(-q, FloatPoint(-2.0f, -3.0f, 4.0f));
  EXPECT_EQ(q - q, FloatPoint());
}

TEST(FloatPoint, FactorAndDivisorAreAppliedInDoubleAndRoundedOnce) {
  // 3 * 0.1 is 0.3 in double; by way of the float factor 0.1f it would be the float next to 0.3f.
  EXPECT_EQ((FloatPoint(3.0f, 0.0f, 0.0f) * 0.1).x, static_cast<float>(3 * 0.1));
  const double third = 1.0 / 3;
  EXPECT_EQ((FloatPoint(16777213.0f, 0.0f, 0.0f) * third).x, static_cast<float>(16777213.0 * third));
  EXPECT_EQ((FloatPoint(1.0f, 0.0f, 0.0f) / 1e-30).x, 1e30f);
  EXPECT_EQ((FloatPoint(1e-30f, 0.0f, 0.0f) / 1e-60).x, static_cast<float>(static_cast<double>(1e-30f) / 1e-60));
}

TEST(FloatPoint, AZeroDivisorLeavesTheValue) {
  EXPECT_EQ(FloatPoint(1.0, 2.0, 3.0) / 0.0, FloatPoint(1.0, 2.0, 3.0));
  EXPECT_EQ(FloatPoint(1.0, 2.0, 3.0) / -0.0, FloatPoint(1.0, 2.0, 3.0));
  EXPECT_EQ((FloatPoint(1.0, 2.0, 3.0) / 1e-300).x, std::numeric_limits<float>::infinity());
}

TEST(FloatPoint, RotateGoesClockwiseAndKeepsZ) {
  FloatPoint p(0.0, 1.0, 5.0);
  p.Rotate(90, FloatPoint());
  EXPECT_NEAR(p.x, 1, 1e-6);
  EXPECT_NEAR(p.y, 0, 1e-6);
  EXPECT_EQ(p.z, 5);
}

TEST(FloatPoint, RotateByZeroTouchesNothing) {
  FloatPoint p(1.0, 2.0, 3.0);
  p.Rotate(0.0, FloatPoint(1e30, 1e30, 0.0));
  EXPECT_EQ(p, FloatPoint(1.0, 2.0, 3.0));
  p.Rotate(1e-300, FloatPoint(1e30, 1e30, 0.0));  // not 0, though its float is
  EXPECT_NE(p, FloatPoint(1.0, 2.0, 3.0));
}

TEST(FloatPoint, RotateAroundItselfStays) {
  FloatPoint p(1.0, 2.0, 3.0);
  p.Rotate(77, p);
  EXPECT_EQ(p, FloatPoint(1.0, 2.0, 3.0));
}

TEST(FloatPoint, DistancesAreFloatsAllTheWay) {
  const FloatPoint a(1.0, 2.0, 3.0);
  const FloatPoint b(4.0, 6.0, 15.0);
  static_assert(std::is_same_v<decltype(a.Dist2D(b, false)), float>);
  EXPECT_EQ(a.Dist2D(b, false), 5.0f);
  EXPECT_EQ(a.Dist2D(b, true), 25.0f);
  EXPECT_EQ(a.Dist3D(b, false), 13.0f);
  EXPECT_EQ(a.Dist3D(b, true), 169.0f);
  // 4097 squared is 2^24 + 8193, which is no float; the nearest is 2^24 + 8192.
  EXPECT_EQ(FloatPoint(4097.0, 1.0, 0.0).Dist2D(FloatPoint(), true), 16785408.0f);
}

TEST(FloatPoint, ToStringHasSixDecimals) {
  EXPECT_EQ(FloatPoint(1.0, -2.5, 0.1).ToString(), "FloatPoint: 1.000000, -2.500000, 0.100000");
  EXPECT_EQ(FloatPoint(1e300, kNan, 0.0).ToString(), "FloatPoint: inf, nan, 0.000000");
}

// Each step in a variable of its own type, so that each rounding is seen.
TEST(FloatPoint, RandomArithmeticRoundsAtEachStoredStep) {
  EdgeValues random(7108);
  Tally tally({"divisor 0", "divisor", "not rotated", "rotated"});
  for (int i = 0; i < kRandomRounds; ++i) {
    const FloatPoint a(random.AnyPoint());
    const FloatPoint b(random.Flag() ? FloatPoint(random.NearPoint(a)) : FloatPoint(random.AnyPoint()));
    const double factor = random.Coordinate();
    const double productX = static_cast<double>(a.x) * factor;
    const double quotientZ = static_cast<double>(a.z) / factor;
    ASSERT_TRUE(Same((a * factor).x, static_cast<float>(productX)));
    ASSERT_TRUE(Same((a / factor).z, tally.Either(factor == 0, "divisor 0", "divisor") ? a.z : static_cast<float>(quotientZ)));
    const float dx = a.x - b.x;
    const float dy = a.y - b.y;
    const float dz = a.z - b.z;
    const float dx2 = dx * dx;
    const float dy2 = dy * dy;
    const float dz2 = dz * dz;
    const float sum2 = dx2 + dy2;
    const float sum3 = sum2 + dz2;
    ASSERT_TRUE(Same(a.Dist2D(b, true), sum2));
    ASSERT_TRUE(Same(a.Dist3D(b, true), sum3));
    ASSERT_TRUE(Same(a.Dist3D(b, false), std::sqrt(sum3)));
    ASSERT_TRUE(SameFloats(a - b, FloatPoint(dx, dy, dz)));

    const double angle = random.Bearing();
    FloatPoint turned = a;
    turned.Rotate(angle, b);
    if (!tally.Either(angle != 0.0, "rotated", "not rotated")) {
      ASSERT_TRUE(SameFloats(turned, a));
      continue;
    }
    const float radians = static_cast<float>(angle * 0.017453292519943);
    const float s = static_cast<float>(std::sin(static_cast<double>(radians)));
    const float c = static_cast<float>(std::cos(static_cast<double>(radians)));
    const float cdx = c * dx;
    const float sdy = s * dy;
    const float cdy = c * dy;
    const float sdx = s * dx;
    const float xTurned = cdx + sdy;
    const float yTurned = cdy - sdx;
    ASSERT_TRUE(SameFloats(turned, FloatPoint(xTurned + b.x, yTurned + b.y, a.z)));
  }
}

}  // namespace
