#include "zelbase/geometry/OffsetLineData.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <initializer_list>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/geometry/ProfileTestHelp.h"
#include "tests/geometry/SecondProfileOffset.h"
#include "zelbase/geometry/VerticalOffsetLineData.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kPi = 3.14159265358979323846;

// A station of a line that runs along x, from x = 1000 on.
ProfilePoint Along(double distance, double z, bool sectionStart = false) {
  return ProfilePoint(1000 + distance, 50, z, distance, sectionStart);
}

ProfilePoints OffsetOf(const ProfilePoints& profile, double offset) {
  SetLine source(profile);
  OffsetLineData line(&source, false);
  line.SetOffset(offset);
  EXPECT_TRUE(line.ApplyOffset());
  return PointsOf(line);
}

ProfilePoints ClippedAt(const ProfilePoints& profile, double maxZ) {
  SetLine source(profile);
  OffsetLineData line(&source, false);
  line.ApplyOffset();
  line.SetMaxZ(maxZ, false);
  line.ClipToMaxZ();
  return PointsOf(line);
}

// --- Settings -----------------------------------------------------------------------------------------------------------

TEST(OffsetLineData, SettingsHaveTheirDefaults) {
  SetLine source;
  const OffsetLineData line(&source, false);
  EXPECT_EQ(line.GetOffset(), 0.0);
  EXPECT_EQ(line.GetZShift(), 0.0);
  EXPECT_EQ(line.GetMaxZ(), 0.0);
  EXPECT_FALSE(line.IsMaxZEnabled());
  EXPECT_EQ(line.GetTolerance(), 0.1);
  EXPECT_EQ(line.NumDataPoints(), 0);
}

TEST(OffsetLineData, SettingsAreKept) {
  OffsetLineData line(nullptr, false);
  line.SetOffset(-2.5);
  line.SetZShift(1.5);
  line.SetMaxZ(-7, true);
  EXPECT_EQ(line.GetOffset(), -2.5);
  EXPECT_EQ(line.GetZShift(), 1.5);
  EXPECT_EQ(line.GetMaxZ(), -7);
  EXPECT_TRUE(line.IsMaxZEnabled());
  line.SetMaxZ(3, false);
  EXPECT_EQ(line.GetMaxZ(), 3);
  EXPECT_FALSE(line.IsMaxZEnabled());
}

TEST(OffsetLineData, SettingsTakeEffectAtTheNextApply) {
  SetLine source({Along(0, 5), Along(10, 5)});
  OffsetLineData line(&source, false);
  line.ApplyOffset();
  line.SetZShift(1);
  EXPECT_EQ(line.DataPoint(0).z, 5);
  line.ApplyOffset();
  EXPECT_EQ(line.DataPoint(0).z, 6);
}

// --- Without an offset ----------------------------------------------------------------------------------------------------

TEST(OffsetLineData, WithoutOffsetEveryPointIsCopiedAndLifted) {
  const ProfilePoints profile = {Along(0, 1, true), Along(5, 9), Along(6, -3), Along(9, 2, true)};
  SetLine source(profile);
  OffsetLineData line(&source, false);
  line.SetZShift(1);
  EXPECT_TRUE(line.ApplyOffset());
  EXPECT_TRUE(SamePoints(PointsOf(line), {Along(0, 2, true), Along(5, 10), Along(6, -2), Along(9, 3, true)}));
  EXPECT_TRUE(SamePoints(source.Points(), profile));
}

TEST(OffsetLineData, OnePointIsCopiedWithoutOffsetAndGoneWithOne) {
  EXPECT_TRUE(SamePoints(OffsetOf({Along(3, 4)}, 0.0), {Along(3, 4)}));
  EXPECT_TRUE(SamePoints(OffsetOf({Along(3, 4)}, -0.0), {Along(3, 4)}));
  EXPECT_TRUE(SamePoints(OffsetOf({Along(3, 4)}, 2.0), {}));
}

TEST(OffsetLineData, AnEmptySourceGivesAnEmptyLine) {
  EXPECT_TRUE(SamePoints(OffsetOf({}, 0.0), {}));
  EXPECT_TRUE(SamePoints(OffsetOf({}, 2.0), {}));
}

// --- Segments -----------------------------------------------------------------------------------------------------------

TEST(OffsetLineDataSegments, ALevelLineIsLiftedAndInnerStationsStandTwice) {
  const ProfilePoints moved = OffsetOf({Along(0, 5, true), Along(10, 5), Along(20, 5), Along(30, 5)}, 2);
  const ProfilePoints expected = {Along(0, 7, true), Along(10, 7), Along(10, 7), Along(20, 7), Along(20, 7), Along(30, 7)};
  ASSERT_EQ(moved.size(), expected.size());
  for (std::size_t i = 0; i < moved.size(); ++i) EXPECT_TRUE(NearPoint(moved[i], expected[i])) << i;
}

TEST(OffsetLineDataSegments, PositiveIsToTheLeftOfTravel) {
  // Down a slope of 3 : 4 the left is forward and up; up a slope it is backward and up.
  const double d = 2 * 0.6;
  const double z = 2 * 0.8;
  ProfilePoints moved = OffsetOf({Along(0, 0), Along(8, -6)}, 2);
  ASSERT_EQ(moved.size(), 2u);
  EXPECT_TRUE(NearPoint(moved[0], Along(d, z)));
  EXPECT_TRUE(NearPoint(moved[1], Along(8 + d, -6 + z)));
  moved = OffsetOf({Along(0, 0), Along(8, 6)}, 2);
  EXPECT_TRUE(NearPoint(moved[0], Along(-d, z)));
  moved = OffsetOf({Along(0, 0), Along(8, 6)}, -2);
  EXPECT_TRUE(NearPoint(moved[1], Along(8 + d, 6 - z)));
}

TEST(OffsetLineDataSegments, ThePlanFollowsTheDirectionOfTheSegment) {
  // To the north-west in the plan, 5 m along it, while the height falls as much as the chainage rises.
  const ProfilePoints moved = OffsetOf({ProfilePoint(100, 200, 0, 0, false), ProfilePoint(97, 204, -5, 5, false)}, 2 * std::sqrt(2.0));
  ASSERT_EQ(moved.size(), 2u);
  EXPECT_TRUE(NearPoint(moved[0], ProfilePoint(100 - 0.6 * 2, 200 + 0.8 * 2, 2, 2, false)));
  EXPECT_TRUE(NearPoint(moved[1], ProfilePoint(97 - 0.6 * 2, 204 + 0.8 * 2, -3, 7, false)));
}

TEST(OffsetLineDataSegments, WithoutMovementInThePlanXGoesBackwards) {
  // Chainage and height alone change: the shift of 2 in chainage is -2 in x.
  const ProfilePoints moved = OffsetOf({ProfilePoint(100, 200, 0, 0, false), ProfilePoint(100, 200, -5, 5, false)}, 2 * std::sqrt(2.0));
  ASSERT_EQ(moved.size(), 2u);
  EXPECT_TRUE(NearPoint(moved[0], ProfilePoint(98, 200, 2, 2, false)));
}

TEST(OffsetLineDataSegments, AnUprightSegmentMovesAgainstTheChainage) {
  const ProfilePoints moved = OffsetOf({Along(5, 0), Along(5, 10)}, 2);
  ASSERT_EQ(moved.size(), 2u);
  EXPECT_NEAR(moved[0].distance, 3, 1e-9);
  EXPECT_NEAR(moved[1].z, 10, 1e-9);
}

TEST(OffsetLineDataSegments, TheZShiftComesFirst) {
  SetLine source({Along(0, 5), Along(10, 5)});
  OffsetLineData line(&source, false);
  line.SetZShift(100);
  line.SetOffset(2);
  line.ApplyOffset();
  EXPECT_NEAR(line.DataPoint(0).z, 107, 1e-9);
}

TEST(OffsetLineDataSegments, NothingRunsAcrossAGapAndNoArcFollowsIt) {
  const ProfilePoints moved =
      OffsetOf({Along(0, 5, true), Along(10, 5), Along(20, 5, true), Along(28, -1), Along(40, 9, true), Along(50, 9)}, 2);
  const double d = 2 * 0.6;
  const double z = 2 * 0.8;
  const ProfilePoints expected = {Along(0, 7, true),   Along(10, 7), Along(20 + d, 5 + z, true), Along(28 + d, -1 + z, false),
                                  Along(40, 11, true), Along(50, 11)};
  ASSERT_EQ(moved.size(), expected.size());
  for (std::size_t i = 0; i < moved.size(); ++i) EXPECT_TRUE(NearPoint(moved[i], expected[i])) << i;
}

TEST(OffsetLineDataSegments, SectionsOfOnePointVanish) {
  EXPECT_TRUE(SamePoints(OffsetOf({Along(0, 5, true), Along(10, 5, true), Along(20, 5, true)}, 2), {}));
}

TEST(OffsetLineDataSegments, CoincidingStationsCountAsASegmentToTheRight) {
  // Bearing 0 of nothing: the normal points against the chainage.
  const ProfilePoints moved = OffsetOf({Along(5, 3), Along(5, 3)}, 2);
  ASSERT_EQ(moved.size(), 2u);
  EXPECT_NEAR(moved[0].distance, 3, 1e-9);
  EXPECT_NEAR(moved[0].z, 3, 1e-9);
}

// --- Corners ------------------------------------------------------------------------------------------------------------

// A ridge of 90 degrees at (10, 10), both slopes 45 degrees. Its outside is above.
const ProfilePoints kRidge = {Along(0, 0, true), Along(10, 10), Along(20, 0)};

TEST(OffsetLineDataCorners, AnOutsideArcStandsOnTheLargerRadius) {
  const ProfilePoints moved = OffsetOf(kRidge, 10);
  const double step = std::acos(9.9 / 10.1);
  const int count = 1 + static_cast<int>(kPi / 2 / step);
  ASSERT_EQ(count, 8);
  const double c = std::cos(step / 2);
  const double radius = 10 + (1 - c) * 10 / (1 + c);
  ASSERT_EQ(moved.size(), 4u + static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    // From 45 degrees left of upright to 45 right of it, the first half of an eighth after the start.
    const double angle = -kPi / 4 + kPi / 2 / count * (i + 0.5);
    const ProfilePoint expected = Along(10 + radius * std::sin(angle), 10 + radius * std::cos(angle));
    EXPECT_TRUE(NearPoint(moved[2 + static_cast<std::size_t>(i)], expected, 1e-8)) << i;
  }
}

TEST(OffsetLineDataCorners, UnderOneStepThereAreTwoPointsOnTheRadiusItself) {
  // A turn of 2 * atan(0.01), 1.15 degrees, with an offset of 2: a step is 25 degrees.
  const ProfilePoints moved = OffsetOf({Along(0, 0), Along(100, 1), Along(200, 0)}, 2);
  ASSERT_EQ(moved.size(), 6u);
  const double half = std::atan(0.01);
  for (const int side : {-1, 1}) {
    const double angle = side * half / 2;
    const ProfilePoint expected = Along(100 + 2 * std::sin(angle), 1 + 2 * std::cos(angle));
    EXPECT_TRUE(NearPoint(moved[side < 0 ? 2 : 3], expected)) << side;
  }
}

TEST(OffsetLineDataCorners, UnderOneStepThereAreTwoPointsWhicheverWayTheQuotientRounds) {
  // The turn and its way to radians and back differ in the last bit at some of these.
  for (int i = 1; i <= 2000; ++i) {
    const double rise = i * 0.0007;
    ASSERT_EQ(OffsetOf({Along(0, 0), Along(10, rise), Along(20, 0)}, 0.2).size(), 6u) << i;
  }
}

TEST(OffsetLineDataCorners, AStraightJointHasNoPointsBetween) {
  const ProfilePoints moved = OffsetOf({Along(0, 0), Along(8, 6), Along(16, 12)}, 10);
  EXPECT_EQ(moved.size(), 4u);
}

TEST(OffsetLineDataCorners, NoArcAtAnOffsetWithinTheTolerance) {
  for (const double offset : {0.1, 0.05, 1e-300}) EXPECT_EQ(OffsetOf(kRidge, offset).size(), 4u) << offset;
  for (const double offset : {-0.1, -0.05}) EXPECT_EQ(OffsetOf(kRidge, offset).size(), 3u) << offset;  // one crossing
  EXPECT_GT(OffsetOf(kRidge, 0.1000001).size(), 4u);
}

TEST(OffsetLineDataCorners, ArcPointsGoByTheDirectionOfTheNewSegmentAndHaveNoFlag) {
  // In the plan first along x, then along y.
  const ProfilePoints moved =
      OffsetOf({ProfilePoint(0, 0, 0, 0, true), ProfilePoint(10, 0, 10, 10, false), ProfilePoint(10, 10, 0, 20, false)}, 10);
  ASSERT_EQ(moved.size(), 12u);
  for (std::size_t i = 2; i < 10; ++i) {
    EXPECT_NEAR(moved[i].x, 10, 1e-9) << i;
    EXPECT_NEAR(moved[i].y, moved[i].distance - 10, 1e-9) << i;
    EXPECT_FALSE(moved[i].sectionStart);
  }
}

TEST(OffsetLineDataCorners, TheOtherSideOfTheRidgeIsAnInnerCorner) {
  const ProfilePoints moved = OffsetOf(kRidge, -2);
  ASSERT_EQ(moved.size(), 3u);
  const double d = std::sqrt(2.0);
  EXPECT_TRUE(NearPoint(moved[0], Along(d, -d, true)));
  EXPECT_TRUE(NearPoint(moved[1], Along(10, 10 - 2 * d)));
  EXPECT_TRUE(NearPoint(moved[2], Along(20 - d, -d)));
}

TEST(OffsetLineDataCorners, ADitchNarrowerThanTheOffsetIsLeftOut) {
  // 1 m deep and 2 m wide in a level line, raised by 5: what remains runs above it and never falls back.
  const ProfilePoints moved = OffsetOf({Along(0, 0), Along(20, 0), Along(21, -1), Along(22, 0), Along(40, 0)}, 5);
  for (std::size_t i = 1; i < moved.size(); ++i) {
    EXPECT_GE(moved[i].distance, moved[i - 1].distance - 1e-9) << i;
    EXPECT_GE(moved[i].z, 4.7) << i;
    EXPECT_LE(moved[i].z, 5.1) << i;
  }
}

TEST(OffsetLineDataCorners, OverlappingSectionsAreJoinedAndTheFlagIsLost) {
  const ProfilePoints moved = OffsetOf({Along(0, 0, true), Along(10, 10), Along(10.1, 10, true), Along(20, 0)}, -2);
  ASSERT_EQ(moved.size(), 3u);
  EXPECT_TRUE(moved[0].sectionStart);
  EXPECT_FALSE(moved[1].sectionStart);
}

TEST(OffsetLineDataCorners, TheResultStaysAtTheOffsetFromTheSource) {
  // A slope with a bend on either side, shorter than its legs: every point of the result is 2 m from the nearest segment.
  const ProfilePoints profile = {Along(0, 0), Along(20, 0), Along(40, -15), Along(60, -15)};
  const ProfilePoints moved = OffsetOf(profile, 2);
  for (const ProfilePoint& point : moved) {
    double nearest = kInfinity;
    for (std::size_t i = 1; i < profile.size(); ++i) {
      const double dd = profile[i].distance - profile[i - 1].distance;
      const double dz = profile[i].z - profile[i - 1].z;
      double t = ((point.distance - profile[i - 1].distance) * dd + (point.z - profile[i - 1].z) * dz) / (dd * dd + dz * dz);
      t = std::fmin(1, std::fmax(0, t));
      nearest = std::fmin(nearest, std::hypot(point.distance - profile[i - 1].distance - t * dd, point.z - profile[i - 1].z - t * dz));
    }
    EXPECT_NEAR(nearest, 2, 0.1);
  }
}

// --- Bounds ---------------------------------------------------------------------------------------------------------------

TEST(OffsetLineDataHostile, HugeOffsetsGiveAtMost4096ArcPointsACorner) {
  for (const double offset : {1e6, 1e8, 1e15, 1e300, 1.7e308}) {
    const ProfilePoints moved = OffsetOf(kRidge, offset);
    EXPECT_LE(moved.size(), 4u + 4096u) << offset;
    EXPECT_GT(moved.size(), 1000u) << offset;
  }
  EXPECT_EQ(OffsetOf(kRidge, 1e300).size(), 4u + 4096u);
}

TEST(OffsetLineDataHostile, AnArcThatIsNotANumberHasNoPoints) {
  for (const double offset : {kNaN, kInfinity, -kInfinity}) {
    EXPECT_EQ(OffsetOf(kRidge, offset).size(), 4u) << offset;
  }
  EXPECT_EQ(OffsetOf({Along(0, 0), Along(10, kNaN), Along(20, 0)}, 2).size(), 4u);
  EXPECT_EQ(OffsetOf({Along(0, 0), Along(10, 0), Along(20, kNaN)}, 2).size(), 4u);
}

TEST(OffsetLineDataHostileLong, AHugeOffsetOnALongLineEnds) {
  ProfilePoints profile;
  for (int i = 0; i < 300; ++i) profile.push_back(Along(i, i % 2));
  EXPECT_GT(OffsetOf(profile, 1e5).size(), 1u);
  EXPECT_GT(OffsetOf(profile, -1e5).size(), 1u);
}

// --- The level ----------------------------------------------------------------------------------------------------------

TEST(OffsetLineDataLevel, APointBelowIsLiftedWithACrossingOnTheWayFromTheOrigin) {
  const ProfilePoints clipped = ClippedAt({ProfilePoint(60, 36, -12, 24, false)}, -10);
  ASSERT_EQ(clipped.size(), 2u);
  EXPECT_TRUE(NearPoint(clipped[0], ProfilePoint(50, 30, -10, 20, false)));
  EXPECT_TRUE(SamePoint(clipped[1], ProfilePoint(60, 36, -10, 24, false)));
}

TEST(OffsetLineDataLevel, ThePointBeforePlaysNoPart) {
  // The second point is below the level as the first one is; its crossing is on its own way from the origin.
  const ProfilePoints clipped = ClippedAt({ProfilePoint(60, 36, -12, 24, false), ProfilePoint(80, 40, -20, 40, false)}, -10);
  ASSERT_EQ(clipped.size(), 4u);
  EXPECT_TRUE(NearPoint(clipped[2], ProfilePoint(40, 20, -10, 20, false)));
  EXPECT_TRUE(SamePoint(clipped[3], ProfilePoint(80, 40, -10, 40, false)));
}

TEST(OffsetLineDataLevel, AtZeroThereAreNoCrossings) {
  EXPECT_TRUE(SamePoints(ClippedAt({Along(1, -5), Along(2, 5), Along(3, 0)}, 0), {Along(1, 0), Along(2, 5), Along(3, 0)}));
}

TEST(OffsetLineDataLevel, AboveTheOriginPointsAboveGetTheCrossing) {
  // The origin lies below a level of 4: the way to a point above it crosses, the way to one below does not.
  const ProfilePoints clipped = ClippedAt({ProfilePoint(80, 40, 16, 20, false), ProfilePoint(80, 40, 3, 30, false)}, 4);
  ASSERT_EQ(clipped.size(), 3u);
  EXPECT_TRUE(NearPoint(clipped[0], ProfilePoint(20, 10, 4, 5, false)));
  EXPECT_TRUE(SamePoint(clipped[1], ProfilePoint(80, 40, 16, 20, false)));
  EXPECT_TRUE(SamePoint(clipped[2], ProfilePoint(80, 40, 4, 30, false)));
}

TEST(OffsetLineDataLevel, AFlaggedPointHasNoCrossingButIsLifted) {
  EXPECT_TRUE(SamePoints(ClippedAt({Along(5, -12, true)}, -10), {Along(5, -10, true)}));
}

TEST(OffsetLineDataLevel, RunsByHandWhetherEnabledOrNot) {
  SetLine source({Along(5, -12, true)});
  OffsetLineData line(&source, false);
  line.SetMaxZ(-10, false);
  line.ApplyOffset();
  EXPECT_EQ(line.DataPoint(0).z, -12);
  line.ClipToMaxZ();
  EXPECT_EQ(line.DataPoint(0).z, -10);
}

TEST(OffsetLineDataLevel, RunsWithApplyWhereEnabledWithAndWithoutOffset) {
  SetLine source({Along(5, -12, true), Along(10, -12)});
  OffsetLineData line(&source, false);
  line.SetMaxZ(-10, true);
  for (const double offset : {0.0, 1.0}) {
    line.SetOffset(offset);
    line.ApplyOffset();
    ASSERT_EQ(line.NumDataPoints(), 3);
    for (const ProfilePoint& point : PointsOf(line)) EXPECT_EQ(point.z, -10);
  }
}

TEST(OffsetLineDataLevel, OfAnEmptyLineIsEmpty) { EXPECT_TRUE(SamePoints(ClippedAt({}, -10), {})); }

TEST(OffsetLineDataLevel, NotANumberIsNotLifted) {
  const ProfilePoints clipped = ClippedAt({Along(5, kNaN)}, -10);
  ASSERT_EQ(clipped.size(), 1u);
  EXPECT_TRUE(std::isnan(clipped[0].z));
  EXPECT_TRUE(SamePoints(ClippedAt({Along(5, -12)}, kNaN), {Along(5, -12)}));
}

// --- Loading, source and copies -----------------------------------------------------------------------------------------

TEST(OffsetLineDataLoad, LoadsTheSourceAndAppliesTheOffset) {
  SetLine source;
  source.delivered = {Along(20, 5), Along(10, 5)};
  OffsetLineData line(&source, false);
  line.SetOffset(2);
  CenterLine center;
  EXPECT_TRUE(line.LoadLineData("a", "b", center));
  EXPECT_EQ(source.requests, std::vector<std::string>{"a|b"});
  EXPECT_EQ(source.lastLine, &center);
  ASSERT_EQ(line.NumDataPoints(), 2);
  EXPECT_TRUE(NearPoint(line.DataPoint(0), Along(10, 7, true)));
}

TEST(OffsetLineDataLoad, AFailureOfTheSourceLeavesTheLineEmpty) {
  SetLine source({Along(0, 5), Along(10, 5)});
  OffsetLineData line(&source, false);
  line.ApplyOffset();
  EXPECT_EQ(line.NumDataPoints(), 2);
  source.loads = false;
  EXPECT_FALSE(line.LoadLineData("a", "b", CenterLine()));
  EXPECT_EQ(line.NumDataPoints(), 0);
}

TEST(OffsetLineDataLoad, LoadCachedKeepsTheOffsetOfItsFirstLoad) {
  SetLine source;
  source.delivered = {Along(0, 5), Along(10, 5)};
  OffsetLineData line(&source, false);
  line.SetOffset(2);
  EXPECT_TRUE(line.LoadCached("a", "b", CenterLine()));
  line.SetOffset(3);
  EXPECT_TRUE(line.LoadCached("a", "b", CenterLine()));
  EXPECT_NEAR(line.DataPoint(0).z, 7, 1e-9);
  EXPECT_EQ(source.loadCount, 1);
  EXPECT_TRUE(line.LoadLineData("a", "b", CenterLine()));
  EXPECT_NEAR(line.DataPoint(0).z, 8, 1e-9);
}

TEST(OffsetLineDataLoad, ALineByChainageIsTheOffsetOne) {
  SetLine source({Along(1, 5), Along(11, 5)});
  OffsetLineData line(&source, false);
  line.SetOffset(2);
  line.ApplyOffset();
  ProfilePoint out;
  ASSERT_TRUE(line.DataPoint(6.0, out));
  EXPECT_TRUE(NearPoint(out, Along(6, 7)));
}

TEST(OffsetLineDataLoad, ExtentsAndAttributesAreTheSources) {
  SetLine source;
  source.extents.right = 17;
  OffsetLineData line(&source, false);
  Page page;
  EXPECT_TRUE(line.GetModelExtents(page));
  EXPECT_EQ(page.right, 17);
  source.hasExtents = false;
  EXPECT_FALSE(line.GetModelExtents(page));
  const CAttributeMap attributes;
  line.SetAttributes(attributes);
  EXPECT_EQ(source.given, &attributes);
}

TEST(OffsetLineDataLoad, TheSourceIsReadThroughItsVirtualOperations) {
  // The vertical offset has no points of its own.
  SetLine profile({Along(0, 5), Along(10, 5)});
  VerticalOffsetLineData lifted(&profile, false);
  lifted.SetOffset(100);
  OffsetLineData line(&lifted, false);
  line.SetOffset(2);
  line.ApplyOffset();
  ASSERT_EQ(line.NumDataPoints(), 2);
  EXPECT_NEAR(line.DataPoint(0).z, 107, 1e-9);
}

class NegativeLine : public LineData {
 public:
  NegativeLine() : LineData("negative") {}
  int NumDataPoints() const override { return -5; }
};

TEST(OffsetLineDataLoad, ASourceOfANegativeNumberOfPointsIsEmpty) {
  NegativeLine source;
  OffsetLineData line(&source, false);
  for (const double offset : {0.0, 2.0}) {
    line.SetOffset(offset);
    EXPECT_TRUE(line.ApplyOffset());
    EXPECT_EQ(line.NumDataPoints(), 0);
  }
}

TEST(OffsetLineDataLoad, WithoutASourceItIsEmpty) {
  for (const bool owns : {false, true}) {
    OffsetLineData line(nullptr, owns);
    line.SetOffset(2);
    line.SetMaxZ(1, true);
    Page page;
    page.left = 7;
    EXPECT_FALSE(line.GetModelExtents(page));
    EXPECT_EQ(page.left, 7);
    line.SetAttributes(CAttributeMap());
    EXPECT_FALSE(line.LoadLineData("a", "b", CenterLine()));
    EXPECT_FALSE(line.LoadCached("a", "b", CenterLine()));
    EXPECT_TRUE(line.ApplyOffset());
    line.ClipToMaxZ();
    EXPECT_EQ(line.NumDataPoints(), 0);
  }
}

TEST(OffsetLineDataCopies, AnOwnedSourceGoesWithTheLastCopy) {
  int destroyed = 0;
  SetLine* const source = new SetLine({Along(0, 5), Along(10, 5)});
  source->destroyed = &destroyed;
  auto line = std::make_unique<OffsetLineData>(source, true);
  line->SetOffset(2);
  line->SetZShift(1);
  line->SetMaxZ(3, true);
  line->ApplyOffset();
  auto copy = std::make_unique<OffsetLineData>(*line);
  line.reset();
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(copy->GetOffset(), 2);
  EXPECT_EQ(copy->GetZShift(), 1);
  EXPECT_EQ(copy->GetMaxZ(), 3);
  EXPECT_TRUE(copy->IsMaxZEnabled());
  EXPECT_GT(copy->NumDataPoints(), 0);
  OffsetLineData& same = *copy;
  *copy = same;
  EXPECT_EQ(destroyed, 0);
  EXPECT_TRUE(copy->ApplyOffset());
  copy.reset();
  EXPECT_EQ(destroyed, 1);
}

TEST(OffsetLineDataCopies, AssignmentReleasesAnOwnedSourceOnlyFromTheLastCopy) {
  int destroyed = 0;
  SetLine* const owned = new SetLine({Along(0, 5), Along(10, 5)});
  owned->destroyed = &destroyed;
  SetLine other;
  const OffsetLineData replacement(&other, false);
  OffsetLineData line(owned, true);
  OffsetLineData copy(line);
  line = replacement;
  EXPECT_EQ(destroyed, 0);
  EXPECT_TRUE(copy.ApplyOffset());
  EXPECT_EQ(copy.NumDataPoints(), 2);
  copy = replacement;
  EXPECT_EQ(destroyed, 1);
}

TEST(OffsetLineDataCopies, ASourceThatIsNotOwnedStays) {
  int destroyed = 0;
  SetLine source;
  source.destroyed = &destroyed;
  { OffsetLineData line(&source, false); }
  EXPECT_EQ(destroyed, 0);
}

// --- Against the plain way ----------------------------------------------------------------------------------------------

class ProfileGenerator {
 public:
  explicit ProfileGenerator(unsigned int seed) : m_random(seed) {}

  unsigned int Below(unsigned int bound) { return static_cast<unsigned int>(m_random() % bound); }
  double Real(double low, double high) { return low + (high - low) * static_cast<double>(m_random()) / 4294967296.0; }

  // Whole numbers or any, level stretches, coincident and reversed points, gaps.
  ProfilePoints Profile(unsigned int count) {
    const bool isWhole = Below(2) == 0;
    const auto step = [&](double low, double high) { return isWhole ? std::floor(Real(low, high + 1)) : Real(low, high); };
    ProfilePoints profile(count);
    ProfilePoint at(step(-50, 50), step(-50, 50), step(-5, 5), step(-5, 5), false);
    for (ProfilePoint& point : profile) {
      const double length = Below(12) == 0 ? step(-2, 0) : step(0, 4);
      at.distance += length;
      at.x += Below(5) == 0 ? 0 : length;
      at.y += Below(3) == 0 ? step(-2, 2) : 0;
      at.z += Below(3) == 0 ? 0 : step(-2, 2);
      at.sectionStart = Below(10) == 0;
      point = at;
    }
    return profile;
  }

  double Offset() {
    const double offsets[] = {0.05, 0.1, 0.5, 1, 2, 2.5, 10, 40};
    return (Below(2) == 0 ? 1 : -1) * (Below(3) == 0 ? Real(0.01, 5) : offsets[Below(8)]);
  }

 private:
  std::mt19937 m_random;
};

void ExpectSameOffset(const ProfilePoints& profile, double zShift, double offset, OffsetTally& tally, unsigned int seed) {
  SetLine source(profile);
  OffsetLineData line(&source, false);
  line.SetOffset(offset);
  line.SetZShift(zShift);
  line.ApplyOffset();
  ASSERT_TRUE(SamePoints(PointsOf(line), SecondOffset(profile, zShift, offset, tally))) << "seed " << seed;
}

void Print(const char* name, unsigned int seeds, const OffsetTally& tally) {
  std::printf(
      "%s, seeds 1 to %u: segments %ld, gaps %ld, arcs %ld, under one step %ld, straight %ld; folds %ld, cut %ld, "
      "without crossing %ld, open %ld; flags lost %ld\n",
      name, seeds, tally.segments, tally.gaps, tally.fullArcs, tally.shortArcs, tally.straightJoints, tally.folds, tally.cuts,
      tally.foldsKept, tally.openFolds, tally.flagsLost);
}

void ExpectAllReached(const OffsetTally& tally) {
  for (const long count :
       {tally.gaps, tally.fullArcs, tally.shortArcs, tally.straightJoints, tally.cuts, tally.foldsKept, tally.openFolds, tally.flagsLost}) {
    EXPECT_GT(count, 100);
  }
}

TEST(OffsetLineDataAgainstThePlainWayLong, OnShortProfiles) {
  constexpr unsigned int kSeeds = 100000;
  OffsetTally tally;
  for (unsigned int seed = 1; seed <= kSeeds; ++seed) {
    ProfileGenerator generator(seed);
    const ProfilePoints profile = generator.Profile(2 + generator.Below(7));
    ExpectSameOffset(profile, generator.Below(2), generator.Offset(), tally, seed);
    if (HasFatalFailure()) return;
  }
  Print("short", kSeeds, tally);
  ExpectAllReached(tally);
}

TEST(OffsetLineDataAgainstThePlainWayLong, OnLongProfiles) {
  constexpr unsigned int kSeeds = 300;
  OffsetTally tally;
  for (unsigned int seed = 1; seed <= kSeeds; ++seed) {
    ProfileGenerator generator(seed);
    const ProfilePoints profile = generator.Profile(100 + generator.Below(200));
    ExpectSameOffset(profile, 0, generator.Offset(), tally, seed);
    if (HasFatalFailure()) return;
  }
  Print("long", kSeeds, tally);
  EXPECT_GT(tally.cuts, 1000);
  EXPECT_GT(tally.foldsKept, 100);
}

TEST(OffsetLineDataAgainstThePlainWayLong, OnProfilesWithNumbersThatAreNone) {
  constexpr unsigned int kSeeds = 100000;
  const double values[] = {kNaN, kInfinity, -kInfinity, 1e308, -1e308, 1e15, 5e-324, -0.0, 1e-8};
  OffsetTally tally;
  for (unsigned int seed = 1; seed <= kSeeds; ++seed) {
    ProfileGenerator generator(seed);
    ProfilePoints profile = generator.Profile(2 + generator.Below(7));
    for (unsigned int i = 1 + generator.Below(3); i > 0; --i) {
      ProfilePoint& point = profile[generator.Below(static_cast<unsigned int>(profile.size()))];
      double* const fields[] = {&point.x, &point.y, &point.z, &point.distance};
      *fields[generator.Below(4)] = values[generator.Below(9)];
    }
    ExpectSameOffset(profile, 0, generator.Offset(), tally, seed);
    if (HasFatalFailure()) return;
  }
  Print("hostile", kSeeds, tally);
  ExpectAllReached(tally);
}

}  // namespace
