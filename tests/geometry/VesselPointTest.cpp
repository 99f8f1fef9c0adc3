#include "zelbase/geometry/VesselPoint.h"

#include <gtest/gtest.h>

namespace {

TEST(VesselPoint, DefaultsToTheOriginWithoutFlags) {
  const VesselPoint p;
  EXPECT_EQ(p, Point());
  EXPECT_FALSE(p.moveTo);
  EXPECT_FALSE(p.mark);
}

TEST(VesselPoint, KeepsItsFlagsApart) {
  const VesselPoint p(Point(1, 2, 3), true, false);
  EXPECT_TRUE(p.moveTo);
  EXPECT_FALSE(p.mark);
  VesselPoint other(Point(4, 5, 6), false, true);
  EXPECT_FALSE(other.moveTo);
  EXPECT_TRUE(other.mark);
  other = p;
  EXPECT_TRUE(other.moveTo && !other.mark);
  EXPECT_EQ(other, Point(1, 2, 3));
}

}  // namespace
