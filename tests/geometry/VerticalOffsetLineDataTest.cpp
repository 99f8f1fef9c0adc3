#include "zelbase/geometry/VerticalOffsetLineData.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/geometry/ProfileTestHelp.h"

namespace {

const ProfilePoints kProfile = {ProfilePoint(10, 20, -3, 1, true), ProfilePoint(11, 21, -4, 2.5, false), ProfilePoint(12, 22, 5, 4, true)};

TEST(VerticalOffsetLineData, ShowsTheSourceAtFirst) {
  SetLine source(kProfile);
  VerticalOffsetLineData line(&source, false);
  EXPECT_TRUE(SamePoints(PointsOf(line), kProfile));
}

TEST(VerticalOffsetLineData, AddsTheOffsetToHeightsOnly) {
  SetLine source(kProfile);
  VerticalOffsetLineData line(&source, false);
  line.SetOffset(0.25);
  EXPECT_TRUE(SamePoints(PointsOf(line), {ProfilePoint(10, 20, -2.75, 1, true), ProfilePoint(11, 21, -3.75, 2.5, false),
                                          ProfilePoint(12, 22, 5.25, 4, true)}));
  EXPECT_TRUE(SamePoints(source.Points(), kProfile));
}

TEST(VerticalOffsetLineData, FollowsTheSourceAndTheOffsetAtOnce) {
  SetLine source(kProfile);
  VerticalOffsetLineData line(&source, false);
  line.SetOffset(1);
  source.Set({ProfilePoint(0, 0, 7, 0, false)});
  ASSERT_EQ(line.NumDataPoints(), 1);
  EXPECT_EQ(line.DataPoint(0).z, 8);
  line.SetOffset(-1);
  EXPECT_EQ(line.DataPoint(0).z, 6);
}

TEST(VerticalOffsetLineData, ExtentsAreTheSourcesWithItsAnswer) {
  SetLine source;
  source.extents.right = 17;
  VerticalOffsetLineData line(&source, false);
  Page page;
  EXPECT_TRUE(line.GetModelExtents(page));
  EXPECT_EQ(page.right, 17);
  source.hasExtents = false;
  EXPECT_FALSE(line.GetModelExtents(page));
}

TEST(VerticalOffsetLineData, LoadingIsTheSourcesWithItsAnswer) {
  SetLine source;
  source.delivered = kProfile;
  VerticalOffsetLineData line(&source, false);
  CenterLine center;
  EXPECT_TRUE(line.LoadLineData("a", "b", center));
  EXPECT_EQ(source.requests, std::vector<std::string>{"a|b"});
  EXPECT_EQ(source.lastLine, &center);
  EXPECT_EQ(line.NumDataPoints(), 3);
  source.loads = false;
  EXPECT_FALSE(line.LoadLineData("a", "b", center));
}

TEST(VerticalOffsetLineData, AttributesAreNotHandedOn) {
  SetLine source;
  VerticalOffsetLineData line(&source, false);
  line.SetAttributes(CAttributeMap());
  EXPECT_EQ(source.given, nullptr);
}

TEST(VerticalOffsetLineData, APointByChainageIsRefusedAlthoughTheSourceHasIt) {
  SetLine source(kProfile);
  const VerticalOffsetLineData line(&source, false);
  ProfilePoint out(1, 2, 3, 4, true);
  EXPECT_TRUE(source.DataPoint(2.0, out));
  out = ProfilePoint(1, 2, 3, 4, true);
  EXPECT_FALSE(line.DataPoint(2.0, out));
  EXPECT_FALSE(line.DataPoint(1.0, out));
  EXPECT_TRUE(SamePoint(out, ProfilePoint(1, 2, 3, 4, true)));
}

TEST(VerticalOffsetLineData, LoadCachedLoadsTheSourceOnceAndAnswersFalse) {
  SetLine source;
  source.delivered = kProfile;
  VerticalOffsetLineData line(&source, false);
  EXPECT_FALSE(line.LoadCached("a", "b", CenterLine()));
  EXPECT_EQ(source.loadCount, 1);
  EXPECT_EQ(line.NumDataPoints(), 3);  // the source's
  EXPECT_FALSE(line.LoadCached("a", "b", CenterLine()));
  EXPECT_EQ(source.loadCount, 1);
}

TEST(VerticalOffsetLineData, AnIndexOutOfRangeGivesADefaultPointWithTheOffset) {
  SetLine source(kProfile);
  VerticalOffsetLineData line(&source, false);
  line.SetOffset(2);
  for (const int index : {-1, 3, 2147483647, -2147483647}) {
    EXPECT_TRUE(SamePoint(line.DataPoint(index), ProfilePoint(0, 0, 2, 0, false))) << index;
  }
}

TEST(VerticalOffsetLineData, WithoutASourceItIsEmpty) {
  for (const bool owns : {false, true}) {
    VerticalOffsetLineData line(nullptr, owns);
    Page page;
    page.left = 7;
    EXPECT_FALSE(line.GetModelExtents(page));
    EXPECT_EQ(page.left, 7);
    EXPECT_FALSE(line.LoadLineData("a", "b", CenterLine()));
    EXPECT_FALSE(line.LoadCached("a", "b", CenterLine()));
    EXPECT_EQ(line.NumDataPoints(), 0);
    line.SetOffset(2);
    EXPECT_TRUE(SamePoint(line.DataPoint(0), ProfilePoint()));
    line.SetAttributes(CAttributeMap());
  }
}

TEST(VerticalOffsetLineData, AnOwnedSourceGoesWithTheLastCopy) {
  int destroyed = 0;
  SetLine* const source = new SetLine(kProfile);
  source->destroyed = &destroyed;
  auto line = std::make_unique<VerticalOffsetLineData>(source, true);
  line->SetOffset(1);
  auto copy = std::make_unique<VerticalOffsetLineData>(*line);
  line.reset();
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(copy->DataPoint(0).z, -2);
  VerticalOffsetLineData& same = *copy;
  *copy = same;
  EXPECT_EQ(destroyed, 0);
  copy.reset();
  EXPECT_EQ(destroyed, 1);
}

TEST(VerticalOffsetLineData, ASourceThatIsNotOwnedStays) {
  int destroyed = 0;
  SetLine source(kProfile);
  source.destroyed = &destroyed;
  { VerticalOffsetLineData line(&source, false); }
  EXPECT_EQ(destroyed, 0);
}

TEST(VerticalOffsetLineData, AssignmentReleasesAnOwnedSource) {
  int destroyed = 0;
  SetLine* const owned = new SetLine(kProfile);
  owned->destroyed = &destroyed;
  SetLine other({ProfilePoint(0, 0, 1, 0, false)});
  VerticalOffsetLineData line(owned, true);
  VerticalOffsetLineData copy(line);
  const VerticalOffsetLineData replacement(&other, false);
  line = replacement;
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(line.NumDataPoints(), 1);
  EXPECT_EQ(copy.NumDataPoints(), 3);
  copy = replacement;
  EXPECT_EQ(destroyed, 1);
}

TEST(VerticalOffsetLineData, MayStandOnAnotherOne) {
  SetLine source(kProfile);
  VerticalOffsetLineData lower(&source, false);
  VerticalOffsetLineData upper(&lower, false);
  lower.SetOffset(1);
  upper.SetOffset(10);
  EXPECT_EQ(upper.NumDataPoints(), 3);
  EXPECT_EQ(upper.DataPoint(1).z, 7);
}

}  // namespace
