#include "zelbase/geometry/Line.h"

#include <gtest/gtest.h>

#include "tests/geometry/EdgeValues.h"

namespace {

TEST(Line, DefaultsToTheOriginTwice) {
  EXPECT_EQ(Line().start, Point());
  EXPECT_EQ(Line().end, Point());
}

TEST(Line, IsItsStartAndThenItsEnd) {
  Line line(Point(1, 2, 3), Point(4, 5, 6));
  const auto* words = reinterpret_cast<const double*>(&line);
  for (int i = 0; i < 6; ++i) EXPECT_EQ(words[i], i + 1);
  line.Set(Point(7, 8, 9), Point());
  Line copy;
  copy = line;
  EXPECT_EQ(copy.start, Point(7, 8, 9));
  EXPECT_EQ(copy.end, Point());
  copy.Set(copy.end, copy.start);
  EXPECT_EQ(copy.start, Point());
  EXPECT_EQ(copy.end, Point(7, 8, 9));
}

TEST(Line, LengthIsOverTwoOrThreeComponents) {
  const Line line(Point(1, 2, 3), Point(4, 6, 15));
  EXPECT_EQ(line.Length(false), 5);
  EXPECT_EQ(line.Length(true), 13);
}

TEST(Line, GetCenterIsTheMiddleInHeightToo) { EXPECT_EQ(Line(Point(1, 2, 3), Point(5, -2, 4)).GetCenter(), Point(3, 0, 3.5)); }

TEST(Line, ExtentsIsThePageAroundBothEnds) {
  EXPECT_EQ(Line(Point(1, 9, 3), Point(5, -2, 4)).Extents(), Page(1, -2, 5, 9));
  EXPECT_EQ(Line(Point(5, -2, 4), Point(1, 9, 3)).Extents(), Page(1, -2, 5, 9));
  EXPECT_EQ(Line(Point(1, 2, 3), Point(1, 2, 4)).Extents(), Page(1, 2, 1, 2));
}

TEST(Line, GetLineYTellsThePointAndWhetherItLiesBetweenTheEnds) {
  const Line line(Point(0, 1, 0), Point(10, 6, 0));
  double y = 0;
  bool inSegment = false;
  EXPECT_TRUE(line.GetLineY(4, y, inSegment));
  EXPECT_EQ(y, 3);
  EXPECT_TRUE(inSegment);
  EXPECT_TRUE(line.GetLineY(0, y, inSegment));
  EXPECT_TRUE(inSegment);
  EXPECT_TRUE(line.GetLineY(10, y, inSegment));
  EXPECT_EQ(y, 6);
  EXPECT_TRUE(inSegment);
  EXPECT_TRUE(line.GetLineY(20, y, inSegment));
  EXPECT_EQ(y, 11);
  EXPECT_FALSE(inSegment);
}

TEST(Line, GetLineXTellsThePointAndWhetherItLiesBetweenTheEnds) {
  const Line line(Point(10, 6, 0), Point(0, 1, 0));
  double x = 0;
  bool inSegment = false;
  EXPECT_TRUE(line.GetLineX(3, x, inSegment));
  EXPECT_EQ(x, 4);
  EXPECT_TRUE(inSegment);
  EXPECT_TRUE(line.GetLineX(11, x, inSegment));
  EXPECT_EQ(x, 20);
  EXPECT_FALSE(inSegment);
}

TEST(Line, GetLineYRefusesAVerticalLine) {
  const Line line(Point(3, 0, 0), Point(3, 10, 0));
  double y = 77;
  bool inSegment = true;
  EXPECT_FALSE(line.GetLineY(3, y, inSegment));
  EXPECT_EQ(y, 77);
  EXPECT_TRUE(inSegment);
}

TEST(Line, GetLineXOfAVerticalLineIsTrueWithNanAndNotInTheSegment) {
  for (const double at : {3.0, 0.0, -3.0}) {
    const Line line(Point(at, 0, 0), Point(at, 10, 0));
    double x = 77;
    bool inSegment = true;
    EXPECT_TRUE(line.GetLineX(5, x, inSegment));
    EXPECT_TRUE(std::isnan(x));
    EXPECT_FALSE(inSegment);
  }
}

TEST(Line, GetLineXRefusesALevelLineAndAPoint) {
  for (const Line& line : {Line(Point(0, 4, 0), Point(9, 4, 0)), Line(Point(1, 1, 0), Point(1, 1, 5))}) {
    double x = 77;
    bool inSegment = true;
    EXPECT_FALSE(line.GetLineX(4, x, inSegment));
    EXPECT_EQ(x, 77);
    EXPECT_TRUE(inSegment);
  }
}

TEST(Line, ResultsMayGoIntoTheLineItself) {
  Line line(Point(0, 1, 0), Point(10, 6, 0));
  bool inSegment = false;
  EXPECT_TRUE(line.GetLineY(4, line.start.y, inSegment));
  EXPECT_TRUE(inSegment);
  EXPECT_EQ(line.start.y, 3);
}

TEST(Line, OffsetGoesToTheRightOfTravelAndRaisesByTheLinesOwnDifferenceInHeight) {
  const Line shifted = Line(Point(0, 0, 1), Point(0, 10, 4)).Offset(2);
  EXPECT_NEAR(shifted.start.x, 2, 1e-12);
  EXPECT_NEAR(shifted.start.y, 0, 1e-12);
  EXPECT_EQ(shifted.start.z, 4);
  EXPECT_NEAR(shifted.end.x, 2, 1e-12);
  EXPECT_NEAR(shifted.end.y, 10, 1e-12);
  EXPECT_EQ(shifted.end.z, 7);
}

TEST(Line, OffsetByANegativeDistanceGoesToTheLeft) {
  const Line shifted = Line(Point(5, 5, 0), Point(9, 5, 0)).Offset(-3);  // to the east: left is north
  EXPECT_NEAR(shifted.start.x, 5, 1e-12);
  EXPECT_NEAR(shifted.start.y, 8, 1e-12);
  EXPECT_NEAR(shifted.end.x, 9, 1e-12);
  EXPECT_NEAR(shifted.end.y, 8, 1e-12);
}

TEST(Line, OffsetOfALineWithoutLengthGoesEast) {
  const Line shifted = Line(Point(5, 5, 1), Point(5, 5, 2)).Offset(3);
  EXPECT_NEAR(shifted.start.x, 8, 1e-12);
  EXPECT_NEAR(shifted.start.y, 5, 1e-12);
  EXPECT_EQ(shifted.end.z, 3);
}

TEST(LineLong, RandomLinesAgreeWithASecondTranscription) {
  EdgeValues random(7201);
  Tally tally({"y refused", "x refused", "y inside", "y outside", "x inside", "x outside", "x NaN"});
  for (int i = 0; i < kRandomRounds; ++i) {
    const Point a = random.AnyPoint();
    Point b = random.Flag() ? random.NearPoint(a) : random.AnyPoint();
    if (random.Index(8) == 0) b.x = a.x;
    if (random.Index(8) == 0) b.y = a.y;
    const Line line(a, b);
    const double at = random.Index(3) == 0   ? a.x
                      : random.Index(3) == 0 ? (a.y + b.y) / 2
                      : random.Flag()        ? random.Near(b.y)
                                             : random.Coordinate();
    const double m = (a.y - b.y) / (a.x - b.x);
    const double c = a.y - a.x * m;
    const auto between = [&](double x, double y) {
      return std::fmin(a.x, b.x) <= x && x <= std::fmax(a.x, b.x) && std::fmin(a.y, b.y) <= y && y <= std::fmax(a.y, b.y) &&
             !std::isnan(a.x + b.x) && !std::isnan(a.y + b.y);
    };
    double found = 77;
    bool inSegment = false;
    if (tally.Either(!line.GetLineY(at, found, inSegment), "y refused", "y inside")) {
      ASSERT_TRUE(a.x == b.x);
      ASSERT_EQ(found, 77);
    } else {
      ASSERT_TRUE(a.x != b.x);
      ASSERT_TRUE(Same(found, m * at + c));
      if (std::isfinite(a.x + b.x + a.y + b.y)) {
        ASSERT_EQ(inSegment, between(at, found));
      }
      if (!inSegment) tally.Count("y outside");
    }
    found = 77;
    if (tally.Either(!line.GetLineX(at, found, inSegment), "x refused", "x inside")) {
      ASSERT_TRUE(a.y == b.y);
      ASSERT_EQ(found, 77);
    } else {
      ASSERT_TRUE(a.y != b.y);
      ASSERT_TRUE(Same(found, (at - c) / m));
      if (std::isfinite(a.x + b.x + a.y + b.y)) {
        ASSERT_EQ(inSegment, between(found, at));
      }
      if (!inSegment) tally.Count("x outside");
      if (std::isnan(found)) {
        tally.Count("x NaN");
        ASSERT_FALSE(inSegment);
      }
    }
  }
}

TEST(Line, RandomOffsetsAgreeWithASecondTranscription) {
  EdgeValues random(7202);
  for (int i = 0; i < kRandomRounds; ++i) {
    const Point a = random.AnyPoint();
    const Point b = random.Flag() ? random.NearPoint(a) : random.AnyPoint();
    const double distance = random.Coordinate();
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double tx = dx > -1e-07 && dx < 1e-07 ? 0.0 : dx;
    const double ty = dy > -1e-07 && dy < 1e-07 ? 0.0 : dy;
    double bearing = std::atan2(tx, ty) / 0.017453292519943;
    if (bearing < 0) bearing += 360.0;
    const double turned = (bearing + 90.0) * 0.017453292519943;
    const double sx = std::sin(turned) * distance;
    const double sy = std::cos(turned) * distance;
    const double sz = b.z - a.z;
    const Line shifted = Line(a, b).Offset(distance);
    ASSERT_TRUE(Same(shifted.start, Point(a.x + sx, a.y + sy, a.z + sz)));
    ASSERT_TRUE(Same(shifted.end, Point(b.x + sx, b.y + sy, b.z + sz)));
    const Line straight(a, b);
    ASSERT_TRUE(Same(straight.GetCenter(), Point((b.x + a.x) / 2, (b.y + a.y) / 2, (b.z + a.z) / 2)));
    ASSERT_TRUE(Same(straight.Length(false), std::sqrt(dx * dx + dy * dy)));
    ASSERT_TRUE(Same(straight.Length(true), std::sqrt(dx * dx + dy * dy + sz * sz)));
  }
}

}  // namespace
