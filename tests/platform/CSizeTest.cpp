#include "zelbase/platform/CSize.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr int kHighest = std::numeric_limits<int>::max();
constexpr int kLowest = std::numeric_limits<int>::min();

TEST(CSize, AddsSubtractsAndCompares) {
  EXPECT_EQ(CSize(), CSize(0, 0));
  EXPECT_NE(CSize(1, 0), CSize(0, 1));
  EXPECT_EQ(CSize(1, 2) + CSize(10, 20), CSize(11, 22));
  EXPECT_EQ(CSize(1, 2) - CSize(10, 20), CSize(-9, -18));
  EXPECT_EQ(-CSize(1, -2), CSize(-1, 2));
  CSize size(1, 2);
  size += CSize(1, 1);
  size -= CSize(5, 0);
  EXPECT_EQ(size, CSize(-3, 3));
}

TEST(CSize, EndsAtTheNearestIntInsteadOfOverflowing) {
  EXPECT_EQ(CSize(kHighest, kLowest) + CSize(kHighest, kLowest), CSize(kHighest, kLowest));
  EXPECT_EQ(CSize(kLowest, kHighest) - CSize(1, -1), CSize(kLowest, kHighest));
  EXPECT_EQ(-CSize(kLowest, kHighest), CSize(kHighest, -kHighest));
}

TEST(CSize, EqualsOnlyInBoth) {
  EXPECT_TRUE(CSize(1, 2) == CSize(1, 2));
  EXPECT_FALSE(CSize(1, 2) == CSize(1, 3));
  EXPECT_FALSE(CSize(1, 2) == CSize(3, 2));
}

}  // namespace
