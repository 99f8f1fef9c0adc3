// Before the header on purpose, as most callers have it.
#include <cmath>

#include "zelbase/geometry/GeometryMath.h"

#include <gtest/gtest.h>

#include "tests/geometry/EdgeValues.h"

namespace {

TEST(GeometryMath, SqrIsTheProductWithItself) {
  EXPECT_EQ(MATH::sqr(-3), 9);
  EXPECT_EQ(MATH::sqr(1e200), kInfinity);
  EXPECT_TRUE(std::isnan(MATH::sqr(kNan)));
}

TEST(GeometryMath, EqualTakesAHundredStepsOfADouble) {
  EXPECT_TRUE(MATH::Equal(1.0, 1.0 + 1e-15));
  EXPECT_FALSE(MATH::Equal(1.0, 1.0 + 1e-12));
  const double step = std::numeric_limits<double>::epsilon();
  EXPECT_TRUE(MATH::Equal(1.0, 1.0 + 100 * step));
  EXPECT_FALSE(MATH::Equal(1.0, 1.0 + 101 * step));
  EXPECT_TRUE(MATH::Equal(-1e6, -1e6 - 1e-8));
  EXPECT_FALSE(MATH::Equal(1.0, -1.0));
  EXPECT_TRUE(MATH::Equal(0.0, -0.0));
  EXPECT_FALSE(MATH::Equal(0.0, kSmallest));
}

TEST(GeometryMath, LessMeansLessByMoreThanTheTolerance) {
  EXPECT_TRUE(MATH::Less(1.0, 1.0 + 1e-12));
  EXPECT_FALSE(MATH::Less(1.0, 1.0 + 1e-15));
  EXPECT_FALSE(MATH::Less(1.0, 1.0));
  EXPECT_FALSE(MATH::Less(2.0, 1.0));
  EXPECT_TRUE(MATH::LEqual(1.0, 1.0));
  EXPECT_TRUE(MATH::LEqual(1.0 + 1e-15, 1.0));
  EXPECT_FALSE(MATH::LEqual(1.0 + 1e-12, 1.0));
}

TEST(GeometryMath, GreaterIsNotTheMirrorOfLess) {
  EXPECT_TRUE(MATH::Greater(1.0, 1.0));
  EXPECT_FALSE(MATH::Less(1.0, 1.0));
  EXPECT_TRUE(MATH::Greater(1.0, 1.0 + 1e-15));
  EXPECT_FALSE(MATH::Greater(1.0, 1.0 + 1e-12));
  EXPECT_TRUE(MATH::Greater(2.0, 1.0));
  EXPECT_TRUE(MATH::GEqual(1.0, 1.0 + 1e-15));
}

TEST(GeometryMath, GreaterOfTwoZerosIsFalseAndGEqualIsTrueThroughEqual) {
  EXPECT_FALSE(MATH::Greater(0.0, 0.0));
  EXPECT_TRUE(MATH::GEqual(0.0, 0.0));
}

TEST(GeometryMath, NothingHoldsOfNan) {
  for (const double other : {1.0, 0.0, kInfinity, kNan}) {
    EXPECT_FALSE(MATH::Equal(kNan, other) || MATH::Equal(other, kNan));
    EXPECT_FALSE(MATH::LEqual(kNan, other) || MATH::LEqual(other, kNan));
    EXPECT_FALSE(MATH::GEqual(kNan, other) || MATH::GEqual(other, kNan));
  }
}

TEST(GeometryMath, InfinityIsWithinItsOwnInfiniteToleranceOfAnythingFinite) {
  EXPECT_TRUE(MATH::Equal(kInfinity, 1.0));
  EXPECT_TRUE(MATH::Equal(kInfinity, -kInfinity));
  EXPECT_FALSE(MATH::Equal(kInfinity, kInfinity));  // their difference is no number
  EXPECT_FALSE(MATH::Less(1.0, kInfinity));
  EXPECT_FALSE(MATH::Greater(1.0, kInfinity));
  EXPECT_TRUE(MATH::Greater(kInfinity, 1.0));
}

TEST(GeometryMath, RoundIsTheOneOfTheNumericHelpers) {
  EXPECT_EQ(MATH::Round(-2.5, 0), -3);
  EXPECT_EQ(MATH::Round(1234.5678, 2), 1234.57);
  using namespace MATH;
  EXPECT_EQ(Round(2.5, 0), 3);  // one function, and therefore not ambiguous
}

// The comparisons told by their table, with the larger magnitude found by sorting.
TEST(GeometryMath, RandomPairsCompareAsTheTableSays) {
  EdgeValues random(7101);
  Tally tally({"equal", "apart", "greater only by the tolerance", "less", "NaN"});
  for (int i = 0; i < kRandomRounds; ++i) {
    const double a = random.Coordinate();
    const double b = random.Flag() ? random.Near(a) : random.Coordinate();
    if (std::isnan(a) || std::isnan(b)) {
      tally.Count("NaN");
      ASSERT_FALSE(MATH::LEqual(a, b) || MATH::GEqual(a, b));
      continue;
    }
    const double larger = std::fabs(a) < std::fabs(b) ? std::fabs(b) : std::fabs(a);
    const double tolerance = larger * 2.220446049250313e-16 * 100.0;
    const double way = b - a;
    const bool equal = way <= tolerance && -way <= tolerance;
    tally.Count(equal ? "equal" : "apart");
    if (way > tolerance) tally.Count("less");
    if (way >= 0 && way < tolerance) tally.Count("greater only by the tolerance");
    ASSERT_EQ(MATH::Equal(a, b), equal) << a << ' ' << b;
    ASSERT_EQ(MATH::Less(a, b), way > tolerance) << a << ' ' << b;
    ASSERT_EQ(MATH::Greater(a, b), way < tolerance) << a << ' ' << b;
    ASSERT_EQ(MATH::LEqual(a, b), way > tolerance || equal) << a << ' ' << b;
    ASSERT_EQ(MATH::GEqual(a, b), way < tolerance || equal) << a << ' ' << b;
  }
}

}  // namespace
