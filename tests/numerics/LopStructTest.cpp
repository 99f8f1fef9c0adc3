#include "zelbase/numerics/LopStruct.h"

#include <gtest/gtest.h>

#include <cstddef>

TEST(LopStruct, IsZeroWhenMade) {
  const LopStruct lops[8] = {};
  for (const LopStruct& lop : lops) {
    EXPECT_EQ(lop.type, 0);
    EXPECT_EQ(lop.callerWord1, 0u);
    EXPECT_EQ(lop.callerWord2, 0u);
    EXPECT_EQ(lop.flags, 0u);
    for (const double value : {lop.x, lop.y, lop.callerValue, lop.observed, lop.variance, lop.correction, lop.residual, lop.azimuth}) {
      EXPECT_EQ(value, 0.0);
    }
  }
}

TEST(LopStruct, KeepsItsFieldsInTheOrderThatCallersExchange) {
  EXPECT_EQ(offsetof(LopStruct, type), 0u);
  EXPECT_EQ(offsetof(LopStruct, flags), 12u);
  EXPECT_EQ(offsetof(LopStruct, x), 16u);
  EXPECT_EQ(offsetof(LopStruct, y), 24u);
  EXPECT_EQ(offsetof(LopStruct, observed), 40u);
  EXPECT_EQ(offsetof(LopStruct, variance), 48u);
  EXPECT_EQ(offsetof(LopStruct, correction), 56u);
  EXPECT_EQ(offsetof(LopStruct, residual), 64u);
  EXPECT_EQ(offsetof(LopStruct, azimuth), 72u);
}
