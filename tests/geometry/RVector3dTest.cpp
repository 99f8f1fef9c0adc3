#include "zelbase/geometry/RVector3d.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "zelbase/geometry/Point.h"

namespace {

TEST(RVector3d, IsMadeByBraces) {
  constexpr RVector3d v{1, 2, 3};
  EXPECT_EQ(v.x, 1);
  EXPECT_EQ(v.y, 2);
  EXPECT_EQ(v.z, 3);
}

TEST(RVector3d, DoesNotTurnIntoAPointNorAPointIntoIt) {
  EXPECT_FALSE((std::is_constructible_v<Point, RVector3d>));
  EXPECT_FALSE((std::is_convertible_v<Point, RVector3d>));
}

}  // namespace
