#include "zelbase/geometry/Rectan.h"

#include <gtest/gtest.h>

#include "tests/geometry/EdgeValues.h"

namespace {

TEST(Rectan, DefaultsToZeroEverywhere) {
  const Rectan r;
  EXPECT_EQ(r, Rectan(0, 0, 0, 0));
  EXPECT_EQ(r.first, 0);
  EXPECT_EQ(r.second, 0);
}

TEST(Rectan, KeepsItsOrderOfFields) {
  Rectan r;
  r.Set(1, 2, 3, 4, 5, 6);
  const auto* words = reinterpret_cast<const double*>(&r);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(words[i], i + 1);
  EXPECT_EQ(r.first, 5);
  EXPECT_EQ(r.second, 6);
  static_assert(sizeof(Rectan) == 40);
}

TEST(Rectan, WholeNumbersAreLeftOutOfTheComparison) {
  Rectan a;
  Rectan b;
  a.Set(1, 2, 3, 4, 5, 6);
  b.Set(1, 2, 3, 4, -5, -6);
  EXPECT_TRUE(a == b);
  EXPECT_FALSE(a != b);
  for (int i = 0; i < 4; ++i) {
    double v[4] = {1, 2, 3, 4};
    v[i] = std::nextafter(v[i], 9.0);
    EXPECT_TRUE(a != Rectan(v[0], v[1], v[2], v[3])) << i;
  }
  EXPECT_FALSE(Rectan(kNan, 0, 0, 0) == Rectan(kNan, 0, 0, 0));
}

TEST(Rectan, AssignmentCopiesTheWholeNumbersAndConstructionClearsThem) {
  Rectan a;
  a.Set(1, 2, 3, 4, 5, 6);
  Rectan b;
  b = a;
  EXPECT_EQ(b.first, 5);
  EXPECT_EQ(b.second, 6);
  b = Rectan(1, 2, 3, 4);
  EXPECT_EQ(b.first, 0);
  EXPECT_EQ(b.second, 0);
}

TEST(Rectan, SetKeepsTheLow32BitsOfEachLong) {
  Rectan r;
  r.Set(0, 0, 0, 0, 0x1'0000'0007L, 0x8000'0000L);
  EXPECT_EQ(r.first, 7);
  EXPECT_EQ(r.second, -2147483647 - 1);
}

}  // namespace
