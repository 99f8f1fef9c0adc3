#include "zelbase/geometry/ProfilePoint.h"

#include <gtest/gtest.h>

#include "tests/geometry/EdgeValues.h"

namespace {

TEST(ProfilePoint, DefaultsToZeroAndNoNewSection) {
  const ProfilePoint p;
  EXPECT_EQ(p.Absolute(), Point());
  EXPECT_EQ(p.distance, 0);
  EXPECT_FALSE(p.sectionStart);
}

TEST(ProfilePoint, KeepsItsOrderOfFields) {
  const ProfilePoint p(1, 2, 3, 4, true);
  EXPECT_EQ(p.x, 1);
  EXPECT_EQ(p.y, 2);
  EXPECT_EQ(p.z, 3);
  EXPECT_EQ(p.distance, 4);
  EXPECT_TRUE(p.sectionStart);
  const auto* words = reinterpret_cast<const double*>(&p);
  EXPECT_EQ(words[0], 1);
  EXPECT_EQ(words[3], 4);
  const ProfilePoint fromPoint(Point(5, 6, 7), 8, false);
  EXPECT_EQ(fromPoint.Absolute(), Point(5, 6, 7));
  EXPECT_EQ(fromPoint.distance, 8);
}

TEST(ProfilePoint, RelativeIsDistanceAcrossAndHeightUp) {
  EXPECT_EQ(ProfilePoint(100, 200, -3, 12.5, true).Relative(), Point(12.5, -3, 0));
}

TEST(ProfilePoint, IsOrderedByDistanceOnly) {
  EXPECT_TRUE(ProfilePoint(9, 9, 9, 1, true) < ProfilePoint(0, 0, 0, 2, false));
  EXPECT_FALSE(ProfilePoint(0, 0, 0, 2, false) < ProfilePoint(9, 9, 9, 2, true));
  EXPECT_FALSE(ProfilePoint(0, 0, 0, kNan, false) < ProfilePoint(0, 0, 0, 2, false));
}

TEST(ProfilePoint, LessAPointKeepsDistanceAndFlag) {
  const ProfilePoint p = ProfilePoint(10, 20, 30, 40, true) - Point(1, 2, 3);
  EXPECT_EQ(p.Absolute(), Point(9, 18, 27));
  EXPECT_EQ(p.distance, 40);
  EXPECT_TRUE(p.sectionStart);
}

}  // namespace
