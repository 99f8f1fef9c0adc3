#include "zelbase/geometry/LineData.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/geometry/ProfileTestHelp.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A station at chainage `distance`; x, y and z tell it from others.
ProfilePoint Station(double distance, bool sectionStart = false) {
  return ProfilePoint(1000 + distance, 2000 - distance, 2 * distance, distance, sectionStart);
}

ProfilePoints Stations(std::initializer_list<double> distances) {
  ProfilePoints points;
  for (const double distance : distances) points.push_back(Station(distance));
  return points;
}

std::vector<double> DistancesOf(const ProfilePoints& points) {
  std::vector<double> distances;
  for (const ProfilePoint& point : points) distances.push_back(point.distance);
  return distances;
}

std::vector<bool> FlagsOf(const ProfilePoints& points) {
  std::vector<bool> flags;
  for (const ProfilePoint& point : points) flags.push_back(point.sectionStart);
  return flags;
}

ProfilePoints Loaded(const ProfilePoints& delivered) {
  SetLine line;
  line.delivered = delivered;
  EXPECT_TRUE(line.LoadLineData("a", "b", CenterLine()));
  return line.Points();
}

const ProfilePoint kUntouched(-1, -2, -3, -4, true);

// False with the output left alone.
void ExpectRefused(const LineData& line, double distance) {
  ProfilePoint out = kUntouched;
  EXPECT_FALSE(line.DataPoint(distance, out)) << distance;
  EXPECT_TRUE(SamePoint(out, kUntouched)) << distance;
}

void ExpectAnswer(const LineData& line, double distance, const ProfilePoint& expected) {
  ProfilePoint out = kUntouched;
  EXPECT_TRUE(line.DataPoint(distance, out)) << distance;
  EXPECT_TRUE(NearPoint(out, expected)) << distance;
}

// --- The base ---------------------------------------------------------------------------------------------------------

TEST(LineData, IsEmptyAtFirst) {
  LineData line("a name");
  EXPECT_EQ(line.NumDataPoints(), 0);
  ExpectRefused(line, 0.0);
}

TEST(LineData, BaseHasNoExtentsAndLeavesThePage) {
  LineData line("a name");
  Page page;
  page.left = 7;
  page.top = 9;
  EXPECT_FALSE(line.GetModelExtents(page));
  EXPECT_EQ(page.left, 7);
  EXPECT_EQ(page.top, 9);
}

TEST(LineData, BaseTakesAttributesAndDoesNothing) {
  SetLine line(Stations({1, 2}));
  line.LineData::SetAttributes(CAttributeMap());
  EXPECT_TRUE(SamePoints(line.Points(), Stations({1, 2})));
}

TEST(LineData, BaseLoadOfAnEmptyLineSucceedsAndFillsNothing) {
  LineData line("a name");
  EXPECT_TRUE(line.LoadLineData("a", "b", CenterLine()));
  EXPECT_EQ(line.NumDataPoints(), 0);
}

TEST(LineData, IndexOutOfRangeGivesADefaultPoint) {
  SetLine line(Stations({1, 2}));
  EXPECT_TRUE(SamePoint(line.DataPoint(1), Station(2)));
  for (const int index : {-1, 2, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_TRUE(SamePoint(line.DataPoint(index), ProfilePoint())) << index;
  }
}

TEST(LineData, IsReachedAndDestroyedThroughTheBase) {
  static_assert(std::has_virtual_destructor_v<LineData>);
  int destroyed = 0;
  SetLine* const line = new SetLine(Stations({1}));
  line->destroyed = &destroyed;
  LineData* const base = line;
  EXPECT_EQ(base->NumDataPoints(), 1);
  delete base;
  EXPECT_EQ(destroyed, 1);
}

// --- The order of travel ------------------------------------------------------------------------------------------------

TEST(LineDataLoad, OnePointStaysWithoutAFlag) { EXPECT_TRUE(SamePoints(Loaded(Stations({5})), Stations({5}))); }

TEST(LineDataLoad, OnePointKeepsAFlagItHas) { EXPECT_TRUE(SamePoints(Loaded({Station(5, true)}), {Station(5, true)})); }

TEST(LineDataLoad, FirstPointGetsTheFlag) {
  EXPECT_TRUE(SamePoints(Loaded(Stations({0, 5, 10})), {Station(0, true), Station(5), Station(10)}));
}

TEST(LineDataLoad, BackwardLineIsTurned) {
  EXPECT_TRUE(SamePoints(Loaded(Stations({10, 5, 0})), {Station(0, true), Station(5), Station(10)}));
}

TEST(LineDataLoad, SectionsOfABackwardLineStaySections) {
  // (a) and (b, c) become (c, b) and (a).
  EXPECT_TRUE(SamePoints(Loaded({Station(10), Station(5, true), Station(1)}), {Station(1, true), Station(5), Station(10, true)}));
}

TEST(LineDataLoad, EqualEndsAreInOrder) {
  const ProfilePoints loaded = Loaded(Stations({5, 9, 5}));
  EXPECT_EQ(DistancesOf(loaded), (std::vector<double>{5, 9, 5}));
  EXPECT_EQ(FlagsOf(loaded), (std::vector<bool>{true, false, false}));
}

TEST(LineDataLoad, TheMiddleIsNotLookedAt) {
  EXPECT_EQ(DistancesOf(Loaded(Stations({1, 9, 3, 2}))), (std::vector<double>{1, 9, 3, 2}));
  EXPECT_EQ(DistancesOf(Loaded(Stations({2, 3, 9, 1}))), (std::vector<double>{1, 9, 3, 2}));
}

TEST(LineDataLoad, AnEndThatIsNotANumberCountsAsBackward) {
  const ProfilePoints loaded = Loaded(Stations({kNaN, 2, 3}));
  EXPECT_EQ(loaded[0].distance, 3);
  EXPECT_EQ(loaded[1].distance, 2);
  EXPECT_TRUE(std::isnan(loaded[2].distance));
  EXPECT_EQ(FlagsOf(loaded), (std::vector<bool>{true, false, false}));
}

TEST(LineDataLoad, TheBaseNeverClears) {
  SetLine line(Stations({1, 2}));
  line.deliver = false;
  EXPECT_TRUE(line.LoadLineData("a", "b", CenterLine()));
  EXPECT_TRUE(line.LoadLineData("a", "b", CenterLine()));
  EXPECT_TRUE(SamePoints(line.Points(), {Station(1, true), Station(2)}));
}

// A list of sections, turned as a list of lists.
ProfilePoints TurnedBySections(const ProfilePoints& points) {
  std::vector<ProfilePoints> sections;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (i == 0 || points[i].sectionStart) sections.emplace_back();
    sections.back().push_back(points[i]);
  }
  ProfilePoints turned;
  for (auto section = sections.rbegin(); section != sections.rend(); ++section) {
    for (auto point = section->rbegin(); point != section->rend(); ++point) {
      turned.push_back(*point);
      turned.back().sectionStart = point == section->rbegin();
    }
  }
  return turned;
}

TEST(LineDataLoadLong, RandomSectionsAreTurnedAsSections) {
  for (unsigned int seed = 1; seed <= 100000; ++seed) {
    std::mt19937 random(seed);
    ProfilePoints delivered;
    const std::size_t count = 2 + random() % 12;
    for (std::size_t i = 0; i < count; ++i) {
      delivered.push_back(Station(100.0 - static_cast<double>(i), random() % 3 == 0));
    }
    ASSERT_TRUE(SamePoints(Loaded(delivered), TurnedBySections(delivered))) << seed;
  }
}

// --- A point by chainage ------------------------------------------------------------------------------------------------

TEST(LineDataPoint, BetweenTwoStationsIsInterpolated) {
  const SetLine line(Stations({1, 5, 9}));
  ExpectAnswer(line, 2.5, Station(2.5));
  ExpectAnswer(line, 8, Station(8));
}

TEST(LineDataPoint, InterpolatesByStartPlusDifferenceTimesT) {
  SetLine line({ProfilePoint(0.3, 0.3, 1, 1, false), ProfilePoint(0.1, 0.7, 3, 4, false)});
  ProfilePoint out;
  ASSERT_TRUE(line.DataPoint(2.0, out));
  const double t = (2.0 - 1.0) / (4.0 - 1.0);
  EXPECT_TRUE(SamePoint(out, ProfilePoint(0.3 + (0.1 - 0.3) * t, 0.3 + (0.7 - 0.3) * t, 1.0 + (3.0 - 1.0) * t, 2.0, false)));
}

TEST(LineDataPoint, OnAnInnerStationIsInterpolatedWithoutAFlag) {
  // The way from 1e16 to 0.1 is 1e16 long, to the last bit, and so ends at 0.
  const SetLine line({ProfilePoint(1e16, 0, 3, 1, true), ProfilePoint(0.1, 0, 7, 2, false), ProfilePoint(9, 0, 9, 3, false)});
  ProfilePoint out = kUntouched;
  ASSERT_TRUE(line.DataPoint(2, out));
  EXPECT_TRUE(SamePoint(out, ProfilePoint(0, 0, 7, 2, false)));
}

TEST(LineDataPoint, EndsGiveTheEndPointWithItsOwnChainageAndFlag) {
  const SetLine line({Station(3, true), Station(5), Station(7, true)});
  const double below = 3 - 1e-14;  // Equal: within 100 Epsilon of 3
  const double above = 7 + 1e-14;
  for (const double request : {3.0, below}) {
    ProfilePoint out = kUntouched;
    ASSERT_TRUE(line.DataPoint(request, out));
    EXPECT_TRUE(SamePoint(out, Station(3, true)));
  }
  ProfilePoint out = kUntouched;
  ASSERT_TRUE(line.DataPoint(above, out));
  EXPECT_TRUE(SamePoint(out, Station(7, true)));
}

TEST(LineDataPoint, OutsideTheLineIsRefused) {
  const SetLine line(Stations({3, 5, 7}));
  for (const double request : {-5.0, 0.0, 2.999999, 7.000001, 1e300}) ExpectRefused(line, request);
}

TEST(LineDataPoint, OnePointAnswersForItselfAlone) {
  const SetLine line({Station(3)});
  ExpectAnswer(line, 3, Station(3));
  ExpectRefused(line, 2);
  ExpectRefused(line, 4);
}

TEST(LineDataPoint, GapBetweenSectionsIsRefused) {
  const SetLine line({Station(1, true), Station(3), Station(5, true), Station(7)});
  ExpectRefused(line, 4);
  ExpectAnswer(line, 2, Station(2));
  ExpectAnswer(line, 6, Station(6));
}

TEST(LineDataPoint, AFlaggedInnerStationRefusesItsOwnChainage) {
  const SetLine line({Station(1, true), Station(3), Station(5, true), Station(7)});
  ExpectRefused(line, 5);
  ExpectAnswer(line, 3, Station(3));  // the last point of a section answers
}

TEST(LineDataPoint, AFlaggedLastStationRefusesItsOwnChainageButNotOneJustAbove) {
  const SetLine line({Station(1, true), Station(3), Station(5, true)});
  ExpectRefused(line, 5);
  ExpectAnswer(line, 5 + 1e-14, Station(5, true));
}

TEST(LineDataPoint, ALineFromZeroAnswersItsFirstPointAndRefusesItsFirstSegment) {
  const SetLine line(Stations({0, 1, 2}));
  ExpectAnswer(line, 0.0, Station(0));
  ExpectRefused(line, 0.1);
  ExpectRefused(line, 1.0);  // the end of the segment from 0
  ExpectAnswer(line, 1.5, Station(1.5));
}

TEST(LineDataPoint, AStationAtZeroRefusesBothItsSegmentsAndItself) {
  for (const double zero : {0.0, -0.0}) {
    const SetLine line(Stations({-2, -1, zero, 1, 2}));
    ExpectAnswer(line, -1.5, Station(-1.5));
    ExpectRefused(line, -0.5);
    ExpectRefused(line, 0.0);
    ExpectRefused(line, 0.5);
    ExpectRefused(line, 1.0);
    ExpectAnswer(line, 1.5, Station(1.5));
  }
}

TEST(LineDataPoint, AStationJustBesideZeroRefusesNothing) {
  constexpr double kTiny = std::numeric_limits<double>::denorm_min();
  const SetLine line(Stations({-1, kTiny, 1}));
  ExpectAnswer(line, 0.5, Station(0.5));
  ExpectAnswer(line, -0.5, Station(-0.5));
}

TEST(LineDataPoint, InfinityCountsAsEqualToAnEnd) {
  const SetLine line(Stations({3, 5, 7}));
  ExpectAnswer(line, kInfinity, Station(7));
  ExpectAnswer(line, -kInfinity, Station(3));
}

TEST(LineDataPoint, NotANumberIsRefused) {
  ExpectRefused(SetLine(Stations({3, 5, 7})), kNaN);
  ExpectRefused(SetLine(Stations({kNaN, kNaN})), kNaN);
}

TEST(LineDataPoint, CoincidingStationsAnswerWithTheFirstOfThem) {
  const SetLine line({Station(1), ProfilePoint(1, 1, 1, 3, false), ProfilePoint(2, 2, 2, 3, false), Station(5)});
  ProfilePoint out;
  ASSERT_TRUE(line.DataPoint(3, out));
  EXPECT_NEAR(out.z, 1, 1e-12);
}

TEST(LineDataPoint, OutMayBeAPointOfNoOrder) {
  // Unsorted, with numbers that are none: some answer, from inside the list.
  for (unsigned int seed = 1; seed <= 3000; ++seed) {
    std::mt19937 random(seed);
    const double values[] = {kNaN, kInfinity, -kInfinity, 0.0, -0.0, 1e308, -1e308, 5e-324, 1, 2, 3, -3};
    ProfilePoints points(random() % 9);
    for (ProfilePoint& point : points) point.distance = values[random() % 12];
    const SetLine line(points);
    for (const double request : values) {
      ProfilePoint out = kUntouched;
      const bool answered = line.DataPoint(request, out);
      ASSERT_EQ(answered, !SamePoint(out, kUntouched)) << seed;
      ASSERT_FALSE(answered && points.empty()) << seed;
    }
  }
}

TEST(LineDataPointLong, RandomRequestsAgreeWithASearchFromTheFront) {
  int refused = 0;
  int interpolated = 0;
  int ends = 0;
  for (unsigned int seed = 1; seed <= 100000; ++seed) {
    std::mt19937 random(seed);
    // Small whole numbers, so that stations coincide and requests hit them.
    ProfilePoints points(1 + random() % 6);
    double distance = static_cast<int>(random() % 7) - 4;
    for (ProfilePoint& point : points) {
      point = Station(distance, random() % 4 == 0);
      distance += static_cast<double>(random() % 3);
    }
    const double request = (static_cast<int>(random() % 40) - 12) / 2.0;
    ProfilePoint out = kUntouched;
    const bool answered = SetLine(points).DataPoint(request, out);

    std::size_t q = 0;
    while (q < points.size() && points[q].distance < request) ++q;
    if (q == 0 || q == points.size()) {
      const ProfilePoint& end = q == 0 ? points.front() : points.back();
      ASSERT_EQ(answered, end.distance == request) << seed;
      if (answered) {
        ASSERT_TRUE(SamePoint(out, end)) << seed;
      }
      (answered ? ends : refused)++;
      continue;
    }
    const bool isRefused = points[q].distance == 0 || points[q - 1].distance == 0 || points[q].sectionStart;
    ASSERT_EQ(answered, !isRefused) << seed;
    if (answered) {
      ASSERT_TRUE(NearPoint(out, Station(request))) << seed;
    }
    (answered ? interpolated : refused)++;
  }
  EXPECT_GT(refused, 1000);
  EXPECT_GT(interpolated, 1000);
  EXPECT_GT(ends, 1000);
}

// --- Loading from memory ------------------------------------------------------------------------------------------------

class LineDataCached : public testing::Test {
 protected:
  bool Load(const std::string& a, const std::string& b) { return line.LoadCached(a, b, center); }

  SetLine line;
  CenterLine center;
};

TEST_F(LineDataCached, FirstRequestLoadsAndPassesEverythingOn) {
  line.delivered = Stations({10, 5});
  EXPECT_TRUE(Load("a", "b"));
  EXPECT_EQ(line.requests, std::vector<std::string>{"a|b"});
  EXPECT_EQ(line.lastLine, &center);
  EXPECT_TRUE(SamePoints(line.Points(), {Station(5, true), Station(10)}));
}

TEST_F(LineDataCached, SecondRequestDoesNotLoad) {
  line.delivered = Stations({1, 2});
  EXPECT_TRUE(Load("a", "b"));
  line.delivered = Stations({3, 4});
  line.Set({});
  EXPECT_TRUE(Load("a", "b"));
  EXPECT_EQ(line.loadCount, 1);
  EXPECT_EQ(DistancesOf(line.Points()), (std::vector<double>{1, 2}));
}

TEST_F(LineDataCached, OtherStringsLoadAnew) {
  line.delivered = Stations({1, 2});
  EXPECT_TRUE(Load("a", "b"));
  line.delivered = Stations({3, 4});
  EXPECT_TRUE(Load("b", "a"));
  EXPECT_EQ(DistancesOf(line.Points()), (std::vector<double>{3, 4}));
  EXPECT_TRUE(Load("a", "b"));
  EXPECT_EQ(DistancesOf(line.Points()), (std::vector<double>{1, 2}));
  EXPECT_EQ(line.loadCount, 2);
}

TEST_F(LineDataCached, ACommaInsideAStringIsNotToldFromTheOneBetween) {
  line.delivered = Stations({1, 2});
  EXPECT_TRUE(Load("a,b", "c"));
  line.delivered = Stations({3, 4});
  EXPECT_TRUE(Load("a", "b,c"));
  EXPECT_EQ(line.loadCount, 1);
  EXPECT_EQ(DistancesOf(line.Points()), (std::vector<double>{1, 2}));
}

TEST_F(LineDataCached, AFailedLoadClearsAndIsNotTriedAgain) {
  line.Set(Stations({1, 2}));
  line.loads = false;
  EXPECT_FALSE(Load("a", "b"));
  EXPECT_EQ(line.NumDataPoints(), 0);
  line.loads = true;
  line.delivered = Stations({1, 2});
  line.Set(Stations({8, 9}));
  EXPECT_FALSE(Load("a", "b"));
  EXPECT_EQ(line.NumDataPoints(), 0);
  EXPECT_EQ(line.loadCount, 1);
}

TEST_F(LineDataCached, AnEmptyLoadIsNotTriedAgain) {
  EXPECT_FALSE(Load("a", "b"));
  line.delivered = Stations({1, 2});
  EXPECT_FALSE(Load("a", "b"));
  EXPECT_EQ(line.loadCount, 1);
}

TEST_F(LineDataCached, TheLoadFindsTheOldPointsInPlace) {
  line.Set(Stations({1, 2, 3}));
  line.deliver = false;
  EXPECT_TRUE(Load("a", "b"));
  EXPECT_TRUE(SamePoints(line.found, Stations({1, 2, 3})));
  EXPECT_EQ(DistancesOf(line.Points()), (std::vector<double>{1, 2, 3}));
}

TEST_F(LineDataCached, ThePlainLoadNeitherReadsNorFillsTheMemory) {
  line.delivered = Stations({1, 2});
  EXPECT_TRUE(line.LoadLineData("a", "b", center));
  EXPECT_TRUE(Load("a", "b"));
  EXPECT_EQ(line.loadCount, 2);
  line.delivered = Stations({3, 4});
  EXPECT_TRUE(line.LoadLineData("a", "b", center));
  EXPECT_EQ(line.loadCount, 3);
  EXPECT_EQ(DistancesOf(line.Points()), (std::vector<double>{3, 4}));
  EXPECT_TRUE(Load("a", "b"));
  EXPECT_EQ(DistancesOf(line.Points()), (std::vector<double>{1, 2}));
}

TEST_F(LineDataCached, WhatIsChangedAfterwardsIsNotRemembered) {
  line.delivered = Stations({1, 2});
  EXPECT_TRUE(Load("a", "b"));
  line.Set(Stations({7, 8, 9}));
  EXPECT_TRUE(Load("a", "b"));
  EXPECT_EQ(DistancesOf(line.Points()), (std::vector<double>{1, 2}));
}

TEST_F(LineDataCached, CopiesTakeThePointsAndTheMemoryAlong) {
  line.delivered = Stations({1, 2});
  EXPECT_TRUE(Load("a", "b"));
  line.Set(Stations({5}));
  SetLine copy(line);
  EXPECT_EQ(DistancesOf(copy.Points()), (std::vector<double>{5}));
  EXPECT_TRUE(copy.LoadCached("a", "b", center));
  EXPECT_EQ(copy.loadCount, line.loadCount);
  EXPECT_EQ(DistancesOf(copy.Points()), (std::vector<double>{1, 2}));
  EXPECT_EQ(DistancesOf(line.Points()), (std::vector<double>{5}));

  SetLine assigned(Stations({6}));
  EXPECT_TRUE(assigned.LoadCached("x", "y", center) || assigned.loadCount == 1);
  assigned = line;
  assigned.delivered = Stations({3});
  EXPECT_TRUE(assigned.LoadCached("x", "y", center));  // its own memory of x, y is gone
  EXPECT_EQ(DistancesOf(assigned.Points()), (std::vector<double>{3}));
}

TEST_F(LineDataCached, AssignmentToItselfChangesNothing) {
  line.delivered = Stations({1, 2});
  EXPECT_TRUE(Load("a", "b"));
  SetLine& same = line;
  line = same;
  EXPECT_EQ(DistancesOf(line.Points()), (std::vector<double>{1, 2}));
  EXPECT_TRUE(Load("a", "b"));
  EXPECT_EQ(line.loadCount, 1);
}

class ThrowingLine : public LineData {
 public:
  ThrowingLine() : LineData("throwing") {}
  bool LoadLineData(const std::string&, const std::string&, const CenterLine&) override {
    ++loadCount;
    throw std::runtime_error("no line");
  }
  int loadCount = 0;
};

TEST(LineDataCachedFailure, ALoadThatThrowsIsTriedAgain) {
  ThrowingLine line;
  EXPECT_THROW(line.LoadCached("a", "b", CenterLine()), std::runtime_error);
  EXPECT_THROW(line.LoadCached("a", "b", CenterLine()), std::runtime_error);
  EXPECT_EQ(line.loadCount, 2);
}

}  // namespace
