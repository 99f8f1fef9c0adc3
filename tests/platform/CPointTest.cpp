#include "zelbase/platform/CPoint.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr int kHighest = std::numeric_limits<int>::max();
constexpr int kLowest = std::numeric_limits<int>::min();

TEST(CPoint, BeginsAtZero) {
  EXPECT_EQ(CPoint(), CPoint(0, 0));
  EXPECT_NE(CPoint(), CPoint(0, 1));
  EXPECT_NE(CPoint(), CPoint(1, 0));
}

TEST(CPoint, MovesBySizesAndPoints) {
  CPoint point(1, 2);
  point.Offset(10, 20);
  EXPECT_EQ(point, CPoint(11, 22));
  point.Offset(CSize(-1, -2));
  point.Offset(CPoint(5, 6));
  EXPECT_EQ(point, CPoint(15, 26));
  point += CSize(1, 1);
  point -= CSize(6, 7);
  EXPECT_EQ(point, CPoint(10, 20));
  EXPECT_EQ(point + CSize(1, 2), CPoint(11, 22));
  EXPECT_EQ(point - CSize(1, 2), CPoint(9, 18));
  EXPECT_EQ(point + CPoint(1, 2), CPoint(11, 22));
}

TEST(CPoint, TheDifferenceOfTwoPointsIsASize) { EXPECT_EQ(CPoint(10, 20) - CPoint(1, 25), CSize(9, -5)); }

TEST(CPoint, EndsAtTheNearestIntInsteadOfOverflowing) {
  EXPECT_EQ(CPoint(kHighest, kLowest) + CSize(1, -1), CPoint(kHighest, kLowest));
  EXPECT_EQ(CPoint(0, 0) - CSize(kLowest, kHighest), CPoint(kHighest, -kHighest));
  EXPECT_EQ(CPoint(kHighest, kLowest) - CPoint(kLowest, kHighest), CSize(kHighest, kLowest));
}

TEST(CPoint, EqualsOnlyInBoth) {
  EXPECT_TRUE(CPoint(1, 2) == CPoint(1, 2));
  EXPECT_FALSE(CPoint(1, 2) == CPoint(1, 3));
  EXPECT_FALSE(CPoint(1, 2) == CPoint(3, 2));
}

}  // namespace
