#include "zelbase/geometry/Angles.h"

#include <gtest/gtest.h>

#include "tests/geometry/EdgeValues.h"

namespace {

TEST(Angles, TrimAngleBringsABearingIntoOneTurn) {
  EXPECT_EQ(TrimAngle(-30), 330);
  EXPECT_EQ(TrimAngle(720), 0);
  EXPECT_EQ(TrimAngle(0), 0);
  EXPECT_EQ(TrimAngle(359.5), 359.5);
  EXPECT_EQ(TrimAngle(360), 0);
  EXPECT_EQ(TrimAngle(-370), 350);
  EXPECT_EQ(TrimAngle(1e6), 280);  // 2777 turns and 280
}

TEST(Angles, TrimAngleOfANegativeTrifleIsExactly360) {
  EXPECT_EQ(TrimAngle(-1e-14), 360.0);
  EXPECT_EQ(TrimAngle(-kSmallest), 360.0);
  EXPECT_LT(TrimAngle(-3e-14), 360.0);  // steps below 360 are 5.7e-14 wide
}

TEST(Angles, TrimAngleOfMinus360IsMinusZero) {
  EXPECT_TRUE(Same(TrimAngle(-360), -0.0));
  EXPECT_TRUE(Same(TrimAngle(-0.0), -0.0));
}

TEST(Angles, WhatIsNotFiniteGivesNan) {
  for (const double angle : {kNan, kInfinity, -kInfinity}) {
    EXPECT_TRUE(std::isnan(TrimAngle(angle)));
    EXPECT_TRUE(std::isnan(modgeo(angle)));
    EXPECT_TRUE(std::isnan(InterpolateCircular(0, 360, angle, 10, 0.5)));
  }
}

TEST(Angles, ModgeoKeepsBothEndsOfItsRange) {
  EXPECT_EQ(modgeo(180), 180);
  EXPECT_EQ(modgeo(-180), -180);
  EXPECT_EQ(modgeo(540), 180);
  EXPECT_EQ(modgeo(-540), -180);
}

TEST(Angles, ModgeoBringsAnAngleWithinHalfATurn) {
  EXPECT_EQ(modgeo(190), -170);
  EXPECT_EQ(modgeo(-190), 170);
  EXPECT_EQ(modgeo(360), 0);
  EXPECT_EQ(modgeo(725), 5);
  EXPECT_EQ(modgeo(-1), -1);
}

TEST(Angles, InterpolateCircularTakesTheShortWay) {
  EXPECT_EQ(InterpolateCircular(0, 360, 350, 20, 0.5), 5);
  EXPECT_EQ(InterpolateCircular(0, 360, 20, 350, 0.5), 5);
  EXPECT_EQ(InterpolateCircular(0, 360, 10, 50, 0.25), 20);
  EXPECT_EQ(InterpolateCircular(-180, 180, 170, -170, 0.75), -175);
  EXPECT_EQ(InterpolateCircular(0, 360, 350, 10, 0), 350);
  EXPECT_EQ(InterpolateCircular(0, 360, 350, 10, 1), 10);
}

TEST(Angles, InterpolateCircularOfExactlyHalfAPeriodGoesStraight) {
  EXPECT_EQ(InterpolateCircular(0, 360, 0, 180, 0.5), 90);
  EXPECT_EQ(InterpolateCircular(0, 360, 180, 0, 0.5), 90);
}

TEST(Angles, InterpolateCircularReachingTheUpperEndGivesTheLower) { EXPECT_EQ(InterpolateCircular(0, 360, 350, 10, 0.5), 0); }

TEST(Angles, InterpolateCircularAddsOrTakesOnePeriodOnly) {
  EXPECT_EQ(InterpolateCircular(0, 360, 0, 90, 10), 540);    // 900 less one period
  EXPECT_EQ(InterpolateCircular(0, 360, 0, 90, -10), -540);  // -900 and one period
}

TEST(Angles, InterpolateCircularWithRangesOfNoWidthOrReversedEnds) {
  EXPECT_EQ(InterpolateCircular(5, 5, 1, 2, 0.5), 1.5);  // the period 0 changes nothing
  EXPECT_EQ(InterpolateCircular(10, 0, 4, 8, 0.5), -9);  // -6 and 8 make 1, below 10: -10 is added
}

TEST(Angles, RandomAnglesAgreeWithTheRemainderTakenOtherwise) {
  EdgeValues random(7102);
  Tally tally({"negative", "not negative", "exactly 360", "above 180", "below -180", "within", "not finite"});
  for (int i = 0; i < kRandomRounds; ++i) {
    const double angle = random.Bearing();
    if (!std::isfinite(angle)) {
      tally.Count("not finite");
      ASSERT_TRUE(std::isnan(TrimAngle(angle)) && std::isnan(modgeo(angle)));
      continue;
    }
    // The exact remainder to the nearest, moved to the side of the angle's own sign.
    double rest = std::remainder(angle, 360.0);
    if (rest < 0 && angle > 0) rest += 360.0;
    if (rest > 0 && angle < 0) rest -= 360.0;
    if (rest == 0) rest = std::copysign(0.0, angle);
    double trimmed = rest;
    if (tally.Either(rest < 0, "negative", "not negative")) trimmed = 360.0 + rest;
    if (trimmed == 360.0) tally.Count("exactly 360");
    double half = rest;
    if (rest > 180.0) half = rest - 360.0;
    if (rest < -180.0) half = rest + 360.0;
    tally.Count(rest > 180.0 ? "above 180" : rest < -180.0 ? "below -180" : "within");
    // A remainder that crossed a turn on its way was rounded by it.
    ASSERT_NEAR(TrimAngle(angle), trimmed, 1e-13) << angle;
    ASSERT_NEAR(modgeo(angle), half, 1e-13) << angle;
    ASSERT_TRUE(TrimAngle(angle) >= 0 && TrimAngle(angle) <= 360.0) << angle;
  }
}

TEST(Angles, RandomInterpolationAgreesWithASecondTranscription) {
  EdgeValues random(7103);
  Tally tally({"straight", "a moved", "b moved", "added", "taken", "kept"});
  for (int i = 0; i < kRandomRounds; ++i) {
    const double lo = random.Flag() ? 0 : random.Grid() * 90;
    const double hi = lo + (random.Index(8) == 0 ? random.Coordinate() : 360);
    const double a = random.Bearing();
    const double b = random.Index(4) == 0 ? random.Near(a) : random.Bearing();
    const double t = random.Index(8) == 0 ? random.Between(-3, 3) : random.Between(0, 1);
    const double p = hi - lo;
    double ends[2] = {a, b};
    if (const double apart = b - a; apart > p * 0.5 || -apart > p * 0.5) {
      const int smaller = ends[0] < ends[1] ? 0 : 1;
      ends[smaller] = ends[smaller] + p;
      tally.Count(smaller == 0 ? "a moved" : "b moved");
    } else {
      tally.Count("straight");
    }
    double r = (ends[1] - ends[0]) * t + ends[0];
    const bool below = r < lo;
    if (below) r = r + p;
    const bool above = r >= hi;
    if (above) r = r - p;
    tally.Count(below ? "added" : above ? "taken" : "kept");
    ASSERT_TRUE(Same(InterpolateCircular(lo, hi, a, b, t), r)) << lo << ' ' << hi << ' ' << a << ' ' << b << ' ' << t;
  }
}

}  // namespace
