#include "zelbase/geometry/StatusPoint.h"

#include <gtest/gtest.h>

namespace {

TEST(StatusPoint, DefaultsToTheOriginWithStatusZero) {
  const StatusPoint p;
  EXPECT_EQ(p.status, 0u);
  EXPECT_EQ(p, FloatPoint());
}

TEST(StatusPoint, CarriesAllOf32Bits) {
  const StatusPoint p(FloatPoint(1.0, 2.0, 3.0), 0xFFFFFFFFu);
  StatusPoint copy;
  copy = p;
  EXPECT_EQ(copy.status, 4294967295u);
  EXPECT_EQ(copy.y, 2.0f);
  EXPECT_EQ(StatusPoint(p).status, 4294967295u);
}

TEST(StatusPoint, ComparisonDoesNotLookAtTheStatus) {
  EXPECT_TRUE(StatusPoint(FloatPoint(1.0, 2.0, 3.0), 1) == StatusPoint(FloatPoint(1.0, 2.0, 3.0), 2));
}

TEST(StatusPoint, ToStringShowsTheStatusUnsigned) {
  EXPECT_EQ(StatusPoint(FloatPoint(1.0, -2.5, 3.0), 0x80000000u).ToString(), "point: 1.000000, -2.500000, 3.000000, status: 2147483648");
}

}  // namespace
