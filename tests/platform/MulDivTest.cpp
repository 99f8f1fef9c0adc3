#include "zelbase/platform/MulDiv.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

namespace {

TEST(MulDiv, RoundsToTheNearest) {
  EXPECT_EQ(MulDiv(5, 120, 96), 6);  // 6.25
  EXPECT_EQ(MulDiv(7, 120, 96), 9);  // 8.75
  EXPECT_EQ(MulDiv(10, 96, 96), 10);
  EXPECT_EQ(MulDiv(0, 5, 7), 0);
}

TEST(MulDiv, AHalfGoesAwayFromZero) {
  EXPECT_EQ(MulDiv(3, 48, 96), 2);
  EXPECT_EQ(MulDiv(-3, 48, 96), -2);
  EXPECT_EQ(MulDiv(3, -48, 96), -2);
  EXPECT_EQ(MulDiv(3, 48, -96), -2);
  EXPECT_EQ(MulDiv(-3, -48, -96), -2);
  EXPECT_EQ(MulDiv(1, 48, 96), 1);
  EXPECT_EQ(MulDiv(-1, 48, 96), -1);
}

TEST(MulDiv, DoesNotOverflowOnTheWayAndEndsAtTheNearestInt) {
  EXPECT_EQ(MulDiv(INT_MAX, 1000, 1000), INT_MAX);
  EXPECT_EQ(MulDiv(INT_MIN, INT_MIN, INT_MIN), INT_MIN);
  EXPECT_EQ(MulDiv(INT_MAX, INT_MAX, 1), INT_MAX);
  EXPECT_EQ(MulDiv(INT_MAX, INT_MIN, 1), INT_MIN);
  EXPECT_EQ(MulDiv(INT_MIN, 1, -1), INT_MAX);
}

TEST(MulDiv, OverNothingIsNothing) {
  EXPECT_EQ(MulDiv(5, 6, 0), 0);
  EXPECT_EQ(MulDiv(INT_MIN, INT_MIN, 0), 0);
}

TEST(MulDiv, AgreesWithTheRoundedQuotient) {
  for (int number = -300; number <= 300; number += 7) {
    for (int numerator = -100; numerator <= 100; ++numerator) {
      for (const int denominator : {1, 2, 3, 96, -4, -96}) {
        const double exact = static_cast<double>(number) * numerator / denominator;
        ASSERT_EQ(MulDiv(number, numerator, denominator), std::lround(exact)) << number << ", " << numerator;
      }
    }
  }
}

}  // namespace
