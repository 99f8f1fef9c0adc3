#include "zelbase/data/XYZDataSource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <stdexcept>
#include <type_traits>
#include <vector>

#include "tests/data/ListSource.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

const Point kUntouched(-7, -8, -9);

const std::vector<TimePoint> kThree = {{3, 10, -2, 100}, {1, 30, -1, 200}, {2, 20, -3, 300}};

struct Box {
  bool found = false;
  Point minimum = kUntouched;
  Point maximum = kUntouched;
};

Box ExtentsOf(XYZDataSource& source) {
  Box box;
  box.found = source.GetExtents(box.minimum, box.maximum);
  return box;
}

void ExpectBox(const Box& box, const Point& minimum, const Point& maximum) {
  EXPECT_TRUE(box.found);
  EXPECT_EQ(box.minimum, minimum);
  EXPECT_EQ(box.maximum, maximum);
}

void ExpectNoBox(const Box& box) {
  EXPECT_FALSE(box.found);
  EXPECT_EQ(box.minimum, kUntouched);
  EXPECT_EQ(box.maximum, kUntouched);
}

TEST(XYZDataSource, IsAbstractAndAnswersNothingWhereItHasADefault) {
  EXPECT_TRUE(std::is_abstract_v<XYZDataSource>);
  EXPECT_TRUE(std::has_virtual_destructor_v<XYZDataSource>);
  ListSource source;
  EXPECT_EQ(source.GetDataGroup(), 0);
  EXPECT_FALSE(source.GetNextDataBlock());
  EXPECT_EQ(source.XYZDataSource::GetDataBlock(), nullptr);
  for (bool flag : {false, true}) {
    const bool before = flag;
    EXPECT_EQ(source.GetPreferredCellSize(flag), 1.0);
    EXPECT_EQ(flag, before);
  }
}

TEST(XYZDataSource, ExtentsAreTakenAxisByAxis) {
  ListSource source(kThree);
  ExpectBox(ExtentsOf(source), Point(1, 10, -3), Point(3, 30, -1));
  EXPECT_EQ(source.GetNumberOfPoints(), 3);
}

TEST(XYZDataSource, OnePointIsItsOwnMinimumAndMaximum) {
  ListSource source({TimePoint(1, 2, 3, 4)});
  ExpectBox(ExtentsOf(source), Point(1, 2, 3), Point(1, 2, 3));
  EXPECT_EQ(source.GetNumberOfPoints(), 1);
}

TEST(XYZDataSource, AnEmptySourceHasNoExtentsAndMinusOnePoints) {
  ListSource source;
  ExpectNoBox(ExtentsOf(source));
  EXPECT_EQ(source.GetNumberOfPoints(), -1);
}

TEST(XYZDataSource, AnEmptySourceIsAskedAgainEveryTime) {
  ListSource source;
  ExtentsOf(source);
  ExtentsOf(source);
  source.GetNumberOfPoints();
  EXPECT_EQ(source.firstCalls, 3);
  EXPECT_EQ(source.nextCalls, 0);
  source.points = kThree;
  EXPECT_TRUE(ExtentsOf(source).found);
}

TEST(XYZDataSource, TheSecondQuestionDoesNotReadTheSource) {
  ListSource source(kThree);
  ExtentsOf(source);
  EXPECT_EQ(source.firstCalls, 1);
  EXPECT_EQ(source.nextCalls, 3);
  ExpectBox(ExtentsOf(source), Point(1, 10, -3), Point(3, 30, -1));
  EXPECT_EQ(source.GetNumberOfPoints(), 3);
  EXPECT_EQ(source.firstCalls, 1);
  EXPECT_EQ(source.nextCalls, 3);
}

TEST(XYZDataSource, TheNumberAloneReadsTheWholeSourceAndKeepsTheExtents) {
  ListSource source(kThree);
  EXPECT_EQ(source.GetNumberOfPoints(), 3);
  EXPECT_EQ(source.next, 3u);
  ExtentsOf(source);
  EXPECT_EQ(source.firstCalls, 1);
}

TEST(XYZDataSource, AnswersStayStaleUntilClear) {
  ListSource source(kThree);
  ExtentsOf(source);
  source.points.push_back(TimePoint(100, 100, 100, 0));
  EXPECT_EQ(source.GetNumberOfPoints(), 3);
  ExpectBox(ExtentsOf(source), Point(1, 10, -3), Point(3, 30, -1));
  source.Clear();
  EXPECT_EQ(source.GetNumberOfPoints(), 4);
  ExpectBox(ExtentsOf(source), Point(1, 10, -3), Point(100, 100, 100));
  source.Change({});
  ExpectNoBox(ExtentsOf(source));
}

TEST(XYZDataSource, ClearIsForDerivedClassesAndConst) {
  ListSource source(kThree);
  ExtentsOf(source);
  const ListSource& constant = source;
  constant.Clear();
  EXPECT_EQ(source.GetNumberOfPoints(), 3);
  EXPECT_EQ(source.firstCalls, 2);
}

TEST(XYZDataSource, OneObjectForBothResultsHoldsTheMaximum) {
  ListSource source(kThree);
  Point both = kUntouched;
  EXPECT_TRUE(source.GetExtents(both, both));
  EXPECT_EQ(both, Point(3, 30, -1));
}

TEST(XYZDataSource, NaNReplacesNothing) {
  ListSource source({{1, 2, 3, 0}, {kNaN, 5, kNaN, 0}, {0, kNaN, 9, 0}});
  ExpectBox(ExtentsOf(source), Point(0, 2, 3), Point(1, 5, 9));
}

TEST(XYZDataSource, ANaNOfTheFirstPointStays) {
  ListSource source({{kNaN, 2, 3, 0}, {1, 5, 1, 0}});
  const Box box = ExtentsOf(source);
  EXPECT_TRUE(box.found);
  EXPECT_TRUE(std::isnan(box.minimum.x));
  EXPECT_TRUE(std::isnan(box.maximum.x));
  EXPECT_EQ(box.minimum.y, 2.0);
  EXPECT_EQ(box.maximum.y, 5.0);
  EXPECT_EQ(box.minimum.z, 1.0);
}

TEST(XYZDataSource, OnlyStrictlyLowerAndHigherReplace) {
  ListSource source({{0.0, -0.0, 0.0, 0}, {-0.0, 0.0, -0.0, 0}});
  const Box box = ExtentsOf(source);
  EXPECT_FALSE(std::signbit(box.minimum.x));
  EXPECT_TRUE(std::signbit(box.minimum.y));
  EXPECT_TRUE(std::signbit(box.maximum.y));
}

TEST(XYZDataSource, ACopySharesWhatIsKept) {
  ListSource source(kThree);
  ExtentsOf(source);
  ListSource copy(source);
  copy.firstCalls = 0;
  EXPECT_EQ(copy.GetNumberOfPoints(), 3);
  ExpectBox(ExtentsOf(copy), Point(1, 10, -3), Point(3, 30, -1));
  EXPECT_EQ(copy.firstCalls, 0);

  copy.Change({TimePoint(5, 5, 5, 0)});
  EXPECT_EQ(source.GetNumberOfPoints(), 3);
  ExpectBox(ExtentsOf(source), Point(1, 10, -3), Point(3, 30, -1));
  ExpectBox(ExtentsOf(copy), Point(5, 5, 5), Point(5, 5, 5));

  source = copy;
  EXPECT_EQ(source.GetNumberOfPoints(), 1);
}

TEST(XYZDataSource, ACopyOutlivesItsSource) {
  auto source = std::make_unique<ListSource>(kThree);
  ExtentsOf(*source);
  ListSource copy(*source);
  source.reset();
  ExpectBox(ExtentsOf(copy), Point(1, 10, -3), Point(3, 30, -1));
}

TEST(XYZDataSource, ASourceThatAsksForItsOwnExtentsDoesNotBeginAnotherPass) {
  ListSource source(kThree);
  std::vector<int> counts;
  std::vector<Box> boxes;
  source.atFirst = source.atNext = [&] {
    counts.push_back(source.GetNumberOfPoints());
    boxes.push_back(ExtentsOf(source));
  };
  ExpectBox(ExtentsOf(source), Point(1, 10, -3), Point(3, 30, -1));
  EXPECT_EQ(source.firstCalls, 1);
  EXPECT_EQ(counts, (std::vector<int>{-1, 1, 2, 3}));
  ExpectBox(boxes[0], Point(), Point());
  ExpectBox(boxes[1], Point(3, 10, -2), Point(3, 10, -2));
  ExpectBox(boxes[2], Point(1, 10, -2), Point(3, 30, -1));
}

TEST(XYZDataSource, ClearInTheMiddleOfThePassEndsItWithoutAnAnswer) {
  for (int when = 1; when <= 3; ++when) {
    ListSource source(kThree);
    source.atNext = [&] {
      if (source.nextCalls == when) source.Clear();
    };
    ExpectNoBox(ExtentsOf(source));
    EXPECT_EQ(source.firstCalls, 1);
    EXPECT_EQ(source.nextCalls, when);
    source.atNext = nullptr;
    ExpectBox(ExtentsOf(source), Point(1, 10, -3), Point(3, 30, -1));
    EXPECT_EQ(source.firstCalls, 2);
  }
}

TEST(XYZDataSource, ClearWhileTheFirstPointIsFetchedEndsThePassToo) {
  ListSource source(kThree);
  source.atFirst = [&] { source.Clear(); };
  ExpectNoBox(ExtentsOf(source));
  EXPECT_EQ(source.GetNumberOfPoints(), -1);
  EXPECT_EQ(source.nextCalls, 0);
}

TEST(XYZDataSource, APassWithinAPassAfterClearIsTheOneThatCounts) {
  ListSource source(kThree);
  source.atNext = [&] {
    if (source.nextCalls != 2) return;
    source.atNext = nullptr;
    source.Change({TimePoint(7, 7, 7, 0)});
    ExtentsOf(source);
  };
  ExpectNoBox(ExtentsOf(source));
  ExpectBox(ExtentsOf(source), Point(7, 7, 7), Point(7, 7, 7));
  EXPECT_EQ(source.GetNumberOfPoints(), 1);
  EXPECT_EQ(source.firstCalls, 2);
}

TEST(XYZDataSource, AnExceptionOfTheSourceLeavesNothingHalfDone) {
  ListSource source(kThree);
  source.atNext = [&] {
    if (source.nextCalls == 2) throw std::runtime_error("no more");
  };
  EXPECT_THROW(ExtentsOf(source), std::runtime_error);
  ExpectBox(ExtentsOf(source), Point(1, 10, -3), Point(3, 30, -1));
  EXPECT_EQ(source.GetNumberOfPoints(), 3);
}

// A plain sweep with the sorting algorithms of the language says the same.
TEST(XYZDataSource, AgreesWithSortedAxes) {
  std::mt19937_64 random(71);
  std::uniform_real_distribution<double> number(-1000, 1000);
  for (int round = 0; round < 50; ++round) {
    std::vector<TimePoint> points(1 + random() % 40);
    for (TimePoint& point : points) point = TimePoint(number(random), number(random), number(random), 0);
    ListSource source(points);
    const Box box = ExtentsOf(source);
    for (double Point::*axis : {&Point::x, &Point::y, &Point::z}) {
      std::sort(points.begin(), points.end(),
                [axis](const TimePoint& a, const TimePoint& b) { return a.position.*axis < b.position.*axis; });
      EXPECT_EQ(box.minimum.*axis, points.front().position.*axis);
      EXPECT_EQ(box.maximum.*axis, points.back().position.*axis);
    }
    EXPECT_EQ(source.GetNumberOfPoints(), static_cast<int>(points.size()));
  }
}

}  // namespace
