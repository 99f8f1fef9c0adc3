#include "zelbase/geometry/detail/ProfileBox.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>

using zelbase::detail::ProfileBox;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

ProfilePoint At(double distance, double z) { return ProfilePoint(0, 0, z, distance, false); }

ProfileBox Box(double left, double bottom, double right, double top) { return ProfileBox::Of(At(left, bottom), At(right, top)); }

TEST(ProfileBox, SpansASegmentInAnyDirection) {
  for (const ProfileBox& box : {Box(1, 2, 3, 4), Box(3, 4, 1, 2), Box(1, 4, 3, 2), Box(3, 2, 1, 4)}) {
    EXPECT_EQ(box.left, 1);
    EXPECT_EQ(box.bottom, 2);
    EXPECT_EQ(box.right, 3);
    EXPECT_EQ(box.top, 4);
  }
}

TEST(ProfileBox, IsFarBeyondAMillimetreOnAnySide) {
  const ProfileBox box = Box(0, 0, 10, 10);
  for (const ProfileBox& near : {Box(10.0009, 0, 12, 10), Box(-2, 0, -0.0009, 10), Box(0, 10.0009, 10, 12), Box(0, -2, 10, -0.0009),
                                 Box(4, 4, 5, 5), Box(-5, -5, 15, 15)}) {
    EXPECT_FALSE(box.IsFarFrom(near));
    EXPECT_FALSE(near.IsFarFrom(box));
  }
  for (const ProfileBox& far : {Box(10.0011, 0, 12, 10), Box(-2, 0, -0.0011, 10), Box(0, 10.0011, 10, 12), Box(0, -2, 10, -0.0011)}) {
    EXPECT_TRUE(box.IsFarFrom(far));
    EXPECT_TRUE(far.IsFarFrom(box));
  }
}

TEST(ProfileBox, ReachesToInfinity) {
  const ProfileBox up = Box(1, 0, 1, kInfinity);
  EXPECT_FALSE(up.IsFarFrom(Box(0, 1e300, 2, 1e300)));
  EXPECT_TRUE(up.IsFarFrom(Box(2, 1e300, 3, 1e300)));
}

TEST(ProfileBox, OfASegmentWithNaNIsEmptyAndFarFromEverything) {
  for (const ProfileBox& box : {Box(kNaN, 0, 1, 1), Box(0, kNaN, 1, 1), Box(0, 0, kNaN, 1), Box(0, 0, 1, kNaN)}) {
    EXPECT_TRUE(box.IsFarFrom(Box(0, 0, 1, 1)));
    EXPECT_TRUE(Box(0, 0, 1, 1).IsFarFrom(box));
    EXPECT_TRUE(box.IsFarFrom(box));
  }
}

TEST(ProfileBox, AddingAnEmptyOneChangesNothing) {
  ProfileBox box = Box(0, 0, 1, 1);
  box.Add(ProfileBox());
  EXPECT_EQ(box.left, 0);
  EXPECT_EQ(box.top, 1);
  ProfileBox empty;
  empty.Add(box);
  EXPECT_EQ(empty.bottom, 0);
  EXPECT_EQ(empty.right, 1);
}

}  // namespace
