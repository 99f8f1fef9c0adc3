#include "zelbase/geometry/Intersect.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "tests/geometry/EdgeValues.h"
#include "tests/geometry/LiteralSegments.h"
#include "tests/geometry/SecondCurve.h"

namespace {

Line Flat(double x1, double y1, double x2, double y2) {
  return Line(Point(x1, y1, 0), Point(x2, y2, 0));
}
Curve Circle(double x, double y, double radius) {
  return Curve(Point(x, y, 0), radius, 0, 360);
}

// An answer with outputs that show whether they were touched.
struct Crossing {
  explicit Crossing(const Line& a, const Line& b) : found(Intersect(a, b, p, flags)) {}
  Point p = Point(77, 78, 79);
  long flags = 80;
  bool found;
};

void ExpectUntouched(const Crossing& crossing) {
  EXPECT_FALSE(crossing.found);
  EXPECT_EQ(crossing.p, Point(77, 78, 79));
  EXPECT_EQ(crossing.flags, 80);
}

TEST(IntersectLines, CrossingInBothSegmentsHasBothMarks) {
  const Crossing crossing(Flat(0, 0, 10, 10), Flat(0, 10, 10, 0));
  EXPECT_TRUE(crossing.found);
  EXPECT_EQ(crossing.p.x, 5);
  EXPECT_EQ(crossing.p.y, 5);
  EXPECT_EQ(crossing.flags, 3);
}

TEST(IntersectLines, HeightIsNeverWritten) {
  EXPECT_EQ(Crossing(Flat(0, 0, 10, 10), Flat(0, 10, 10, 0)).p.z, 79);
  EXPECT_EQ(Crossing(Flat(5, 0, 5, 10), Flat(0, 10, 10, 0)).p.z, 79);
}

TEST(IntersectLines, MarksTellWhichSegmentHoldsTheCrossing) {
  EXPECT_EQ(Crossing(Flat(0, 0, 10, 10), Flat(0, 10, 3, 7)).flags, 1);
  EXPECT_EQ(Crossing(Flat(0, 0, 3, 3), Flat(0, 10, 10, 0)).flags, 2);
  EXPECT_EQ(Crossing(Flat(0, 0, 3, 3), Flat(0, 10, 3, 7)).flags, 0);
  EXPECT_EQ(Crossing(Flat(0, 0, 5, 5), Flat(5, 5, 10, 0)).flags, 3);
}

TEST(IntersectLines, MarksCompareProductsSoThatAPointJustBeyondAnEndCounts) {
  // 0.9e-7 beyond the end of a segment one metre long, and a little more than 1e-7 beyond it.
  EXPECT_EQ(Crossing(Flat(0, 0, 1, 0), Flat(1 + 0.9e-7, -1, 1 + 0.9e-7, 1)).flags, 3);
  EXPECT_EQ(Crossing(Flat(0, 0, 1, 0), Flat(1 + 1.1e-7, -1, 1 + 1.1e-7, 1)).flags, 2);
  // A third of a millimetre beyond both ends of a short one.
  EXPECT_EQ(Crossing(Flat(0, 0, 1e-6, 0), Flat(3.1e-4, -1, 3.1e-4, 1)).flags, 3);
}

TEST(IntersectLines, TwoVerticalLinesAreParallelEvenWhenTheyCoincide) {
  ExpectUntouched(Crossing(Flat(1, 0, 1, 10), Flat(2, 0, 2, 10)));
  ExpectUntouched(Crossing(Flat(1, 0, 1, 10), Flat(1, 0, 1, 10)));
  ExpectUntouched(Crossing(Flat(1, 0, 1 + 0.9e-7, 10), Flat(2, 10, 2, 0)));
}

TEST(IntersectLines, ParallelLinesAreRefused) {
  ExpectUntouched(Crossing(Flat(0, 0, 10, 10), Flat(0, 1, 10, 11)));
  ExpectUntouched(Crossing(Flat(0, 0, 10, 10), Flat(0, 0, 10, 10)));
  ExpectUntouched(Crossing(Flat(0, 0, 1, 0), Flat(0, 1, 1, 1 + 0.9e-7)));
  EXPECT_TRUE(Crossing(Flat(0, 0, 1, 0), Flat(0, 1, 1, 1 + 1.1e-7)).found);
}

TEST(IntersectLines, AVerticalLineCrossesAtItsStart) {
  const Crossing second(Flat(0, 1, 10, 6), Flat(4, -50, 4 + 0.5e-7, 50));
  EXPECT_EQ(second.p.x, 4);
  EXPECT_EQ(second.p.y, 3);
  const Crossing first(Flat(4, 50, 4 - 0.5e-7, -50), Flat(0, 1, 10, 6));
  EXPECT_EQ(first.p.x, 4);
  EXPECT_EQ(first.p.y, 3);
  EXPECT_EQ(first.flags, 3);
}

TEST(IntersectLines, ASteepLineCountsAsVerticalAtItsStart) {
  // Slope 5e10; its middle lies 1e-7 off its start, which is where it is said to cross.
  const Line steep = Flat(3, 0, 3 + 2e-7, 1e4);
  const Line level = Flat(0, 5000, 10, 5000);
  EXPECT_EQ(Crossing(steep, level).p.x, 3);
  EXPECT_EQ(Crossing(level, steep).p.x, 3);
  // Slope 5e9: the true crossing.
  const Line lessSteep = Flat(3, 0, 3 + 2e-6, 1e4);
  EXPECT_NEAR(Crossing(lessSteep, level).p.x, 3 + 1e-6, 1e-9);
}

TEST(IntersectLines, TwoSteepLinesAreRefusedWithEverythingUntouched) {
  ExpectUntouched(Crossing(Flat(3, 0, 3 + 2e-7, 1e4), Flat(4, 0, 4 - 2e-7, 1e4)));
}

TEST(IntersectLines, APointCountsAsAVerticalLine) {
  ExpectUntouched(Crossing(Flat(3, 3, 3, 3), Flat(4, 4, 4, 4)));
  const Crossing crossing(Flat(0, 0, 10, 10), Flat(3, 3, 3, 3));
  EXPECT_TRUE(crossing.found);
  EXPECT_EQ(crossing.p.y, 3);
  EXPECT_EQ(crossing.flags, 3);
}

TEST(IntersectLines, TheResultMayBePartOfALine) {
  Line a = Flat(0, 0, 10, 10);
  long flags = 0;
  EXPECT_TRUE(Intersect(a, Flat(0, 10, 10, 0), a.start, flags));
  EXPECT_EQ(a.start, Point(5, 5, 0));
  EXPECT_EQ(flags, 3);
}

TEST(IntersectLines, NanIsMarkedAsLyingOnNothing) {
  const Crossing crossing(Flat(kNan, 0, 10, 10), Flat(0, 10, 10, 0));
  EXPECT_TRUE(crossing.found);
  EXPECT_TRUE(std::isnan(crossing.p.x));
  EXPECT_EQ(crossing.flags, 0);
}

TEST(IntersectCurves, FirstIsTheCrossingToTheRightOfTheWay) {
  Point p[2] = {Point(7, 7, 7), Point(7, 7, 7)};
  EXPECT_EQ(Intersect(Circle(0, 0, 5), Circle(6, 0, 5), p), 2);
  EXPECT_NEAR(p[0].x, 3, 1e-12);
  EXPECT_NEAR(p[0].y, -4, 1e-12);
  EXPECT_NEAR(p[1].x, 3, 1e-12);
  EXPECT_NEAR(p[1].y, 4, 1e-12);
  EXPECT_EQ(p[0].z, 0);
  EXPECT_EQ(p[1].z, 0);
}

TEST(IntersectCurves, ConcentricCirclesHaveNothingInCommon) {
  Point p[2] = {Point(7, 7, 7), Point(7, 7, 7)};
  EXPECT_EQ(Intersect(Circle(1, 2, 5), Circle(1, 2, 5), p), 0);
  EXPECT_EQ(Intersect(Circle(1, 2, 5), Circle(1, 2, 3), p), 0);
  EXPECT_EQ(p[0], Point(7, 7, 7));
}

TEST(IntersectCurves, CirclesApartOrInsideEachOtherHaveNothingInCommon) {
  Point p[2] = {Point(7, 7, 7), Point(7, 7, 7)};
  EXPECT_EQ(Intersect(Circle(0, 0, 1), Circle(10, 0, 2), p), 0);
  EXPECT_EQ(Intersect(Circle(0, 0, 10), Circle(2, 0, 1), p), 0);
  EXPECT_EQ(Intersect(Circle(2, 0, 1), Circle(0, 0, 10), p), 0);
  EXPECT_EQ(p[0], Point(7, 7, 7));
  EXPECT_EQ(p[1], Point(7, 7, 7));
}

TEST(IntersectCurves, TouchingCirclesCountTwo) {
  Point p[2];
  EXPECT_EQ(Intersect(Circle(0, 0, 2), Circle(5, 0, 3), p), 2);
  EXPECT_EQ(p[0], p[1]);
  EXPECT_NEAR(p[0].x, 2, 1e-12);
  EXPECT_NEAR(p[0].y, 0, 1e-12);
}

TEST(IntersectCurves, ResultsBeyondTheCountAreUntouched) {
  Point p[2] = {Point(7, 7, 7), Point(7, 7, 7)};
  // The northern half of the first circle; the crossing to the north is the second candidate.
  EXPECT_EQ(Intersect(Curve(Point(0, 0, 0), 5, 270, 91), Circle(6, 0, 5), p), 1);
  EXPECT_NEAR(p[0].y, 4, 1e-12);
  EXPECT_EQ(p[1], Point(7, 7, 7));
}

TEST(IntersectCurves, TheSignOfTheRadiusOnlyChoosesTheArc) {
  Point p[2];
  EXPECT_EQ(Intersect(Curve(Point(0, 0, 0), -5, 91, 270), Circle(6, 0, 5), p), 1);
  EXPECT_NEAR(p[0].y, 4, 1e-12);
}

TEST(IntersectLineCurve, BothCrossingsComeInTheOrderOfTravelWithTheirMarks) {
  Point p[2];
  long flags[2];
  EXPECT_TRUE(Intersect(Flat(-10, 3, 10, 3), Circle(0, 0, 5), p, flags));
  EXPECT_NEAR(p[0].x, -4, 1e-12);
  EXPECT_NEAR(p[0].y, 3, 1e-12);
  EXPECT_NEAR(p[1].x, 4, 1e-12);
  EXPECT_EQ(flags[0], 3);
  EXPECT_EQ(flags[1], 3);
  EXPECT_TRUE(Intersect(Flat(0, 3, -1, 3), Curve(Point(0, 0, 0), 5, 0, 180), p, flags));
  EXPECT_NEAR(p[0].x, 4, 1e-12);
  EXPECT_NEAR(p[1].x, -4, 1e-12);
  EXPECT_EQ(flags[0], 2);
  EXPECT_EQ(flags[1], 0);
  EXPECT_TRUE(Intersect(Flat(0, 3, 8, 3), Curve(Point(0, 0, 0), 5, 180, 359), p, flags));
  EXPECT_EQ(flags[0], 2);
  EXPECT_EQ(flags[1], 1);
}

TEST(IntersectLineCurve, ATangentHasItsPointTwice) {
  Point p[2];
  long flags[2];
  EXPECT_TRUE(Intersect(Flat(-10, 5, 10, 5), Circle(0, 0, 5), p, flags));
  EXPECT_EQ(p[0], p[1]);
  EXPECT_EQ(p[0], Point(0, 5, 0));
}

TEST(IntersectLineCurve, FalseLeavesAllOutputsUntouched) {
  Point p[2] = {Point(7, 7, 7), Point(7, 7, 7)};
  long flags[2] = {8, 8};
  EXPECT_FALSE(Intersect(Flat(-10, 5.001, 10, 5.001), Circle(0, 0, 5), p, flags));
  EXPECT_FALSE(Intersect(Line(Point(1, 1, 0), Point(1, 1, 9)), Circle(0, 0, 5), p, flags));
  EXPECT_EQ(p[0], Point(7, 7, 7));
  EXPECT_EQ(p[1], Point(7, 7, 7));
  EXPECT_EQ(flags[0], 8);
  EXPECT_EQ(flags[1], 8);
}

TEST(IntersectP3, IsTheCrossingToTheLeftOfTheWay) {
  Point p(77, 78, 79);
  EXPECT_TRUE(IntersectP3(Point(0, 0, 1), Point(6, 0, 2), 5, 5, p));
  EXPECT_NEAR(p.x, 3, 1e-12);
  EXPECT_NEAR(p.y, 4, 1e-12);
  EXPECT_EQ(p.z, 79);
}

TEST(IntersectP3, FalseLeavesThePointUntouched) {
  Point p(77, 78, 79);
  EXPECT_FALSE(IntersectP3(Point(1, 1, 1), Point(1, 1, 2), 5, 5, p));
  EXPECT_FALSE(IntersectP3(Point(), Point(6, 0, 0), 2, 3, p));
  EXPECT_FALSE(IntersectP3(Point(), Point(6, 0, 0), 10, 3, p));
  EXPECT_FALSE(IntersectP3(Point(), Point(6, 0, 0), 3, 10, p));
  EXPECT_EQ(p, Point(77, 78, 79));
}

TEST(IntersectP3, WithNoRadiusAndTheOtherCircleThroughTheCentreIsTrueWithNan) {
  Point p(77, 78, 79);
  EXPECT_TRUE(IntersectP3(Point(), Point(6, 0, 0), 0, 6, p));
  EXPECT_TRUE(std::isnan(p.x));
  EXPECT_TRUE(std::isnan(p.y));
  EXPECT_EQ(p.z, 79);
}

TEST(IntersectP3, TheResultMayBeACentre) {
  Point a(0, 0, 1);
  EXPECT_TRUE(IntersectP3(a, Point(6, 0, 0), 5, 5, a));
  EXPECT_NEAR(a.x, 3, 1e-12);
  EXPECT_NEAR(a.y, 4, 1e-12);
}

TEST(CentreCircleFrom3P, FindsTheCentreAndLeavesItsHeight) {
  Point centre(77, 78, 79);
  EXPECT_TRUE(CentreCircleFrom3P(Point(7, 4, 1), Point(5, 6, 2), Point(2, -1, 3), centre));
  // The perpendiculars are y = x - 1 through (6, 5) and 3 x + 7 y = 28 through (3.5, 2.5).
  EXPECT_NEAR(centre.x, 3.5, 1e-12);
  EXPECT_NEAR(centre.y, 2.5, 1e-12);
  EXPECT_EQ(centre.z, 79);
}

TEST(CentreCircleFrom3P, PointsOnOneLineAreRefused) {
  Point centre(77, 78, 79);
  EXPECT_FALSE(CentreCircleFrom3P(Point(0, 0, 0), Point(1, 2, 0), Point(2, 4, 0), centre));
  EXPECT_FALSE(CentreCircleFrom3P(Point(0, 0, 0), Point(0, 2, 0), Point(0, 4, 0), centre));
  EXPECT_FALSE(CentreCircleFrom3P(Point(0, 0, 0), Point(3, 0, 0), Point(4, 0, 0), centre));
  EXPECT_FALSE(CentreCircleFrom3P(Point(1, 1, 0), Point(1, 1, 0), Point(1, 1, 0), centre));
  EXPECT_EQ(centre, Point(77, 78, 79));
}

TEST(CentreCircleFrom3P, WithCoincidentFirstPointsIsTrueWithAMeaninglessCentre) {
  Point centre;
  EXPECT_TRUE(CentreCircleFrom3P(Point(1, 1, 0), Point(1, 1, 0), Point(5, 3, 0), centre));
  EXPECT_EQ(centre.x, 1);  // on the perpendicular of the other chord: y = 2 - 2 (x - 3)
  EXPECT_NEAR(centre.y, 6, 1e-12);
}

// Over arrays {x1, y1, x2, y2}.
TEST(IntersectLines, RandomLinesAgreeWithASecondTranscription) {
  EdgeValues random(7209);
  const std::vector<std::string> meetingNames = {"both vertical", "second vertical", "first vertical",
                                                 "parallel",      "both steep",      "second steep",
                                                 "first steep",   "ordinary"};
  std::vector<std::string> branches = meetingNames;
  branches.insert(branches.end(), {"flags 0", "flags 1", "flags 2", "flags 3"});
  Tally tally(branches);
  const char* const flagNames[] = {"flags 0", "flags 1", "flags 2", "flags 3"};
  for (int i = 0; i < kRandomRounds; ++i) {
    std::array<double, 4> l[2];
    for (auto& line : l) {
      for (double& value : line) value = random.Coordinate();
      const int kind = random.Index(12);
      if (kind < 3) line[2] = random.Near(line[0]);
      if (kind == 3) line[2] = line[0] + 2e-7, line[1] = random.Between(-9e4, 9e4);
      if (kind == 4) line = {line[0], -9e4, line[0] - 3e-7, 9e4};
      if (kind == 5) line = {line[0], line[1], line[0] + 0.5, line[1] + random.Near(1.0) / 2};
    }
    if (random.Index(5) == 0) {
      for (int k = 0; k < 4; ++k)
        l[1][static_cast<std::size_t>(k)] = random.Near(l[0][static_cast<std::size_t>(k)]);
    }
    const Line a = Flat(l[0][0], l[0][1], l[0][2], l[0][3]);
    const Line b = Flat(l[1][0], l[1][1], l[1][2], l[1][3]);
    const LiteralCrossing<double> expected = LiteralIntersect(Literal(a), Literal(b));
    tally.Count(meetingNames[static_cast<std::size_t>(expected.meeting)]);
    const Crossing crossing(a, b);
    ASSERT_EQ(crossing.found, expected.Found());
    if (!expected.Found()) {
      ExpectUntouched(crossing);
      ASSERT_FALSE(HasFailure());
      continue;
    }
    ASSERT_TRUE(Same(crossing.p, Point(expected.x, expected.y, 79))) << crossing.p.ToString();
    ASSERT_EQ(crossing.flags, expected.flags);
    tally.Count(flagNames[expected.flags]);
  }
}

Curve AnyCurve(EdgeValues& random) {
  const double radius = random.Index(3) == 0 ? random.Coordinate() : random.Between(-10, 10);
  if (random.Flag()) return Curve(random.GridPoint(), random.Flag() ? random.Grid() : radius, 0, 360);
  return Curve(random.Index(4) == 0 ? random.AnyPoint() : random.GridPoint(), radius, random.Bearing(),
               random.Bearing());
}

SecondCurve Second(const Curve& curve) {
  return {curve.centre.x, curve.centre.y, curve.radius, curve.startAngle, curve.endAngle};
}

TEST(IntersectCurves, RandomCurvesAgreeWithASecondTranscription) {
  EdgeValues random(7210);
  Tally tally(
      {"concentric", "apart", "inside the first", "inside the second", "none on the arcs", "one", "two"});
  for (int i = 0; i < kRandomRounds; ++i) {
    const Curve a = AnyCurve(random);
    Curve b = AnyCurve(random);
    if (random.Index(10) == 0) b.centre = a.centre;
    if (random.Index(10) == 0) b.centre = random.NearPoint(a.centre);
    const double wayX = b.centre.x - a.centre.x;
    const double wayY = b.centre.y - a.centre.y;
    const double d = std::sqrt(wayX * wayX + wayY * wayY);
    const double ra = std::fabs(a.radius);
    const double rb = std::fabs(b.radius);
    std::vector<Point> expected;
    const double t = (a.radius * a.radius + d * d - b.radius * b.radius) / (ra * 2 * d) * ra;
    if (d == 0) {
      tally.Count("concentric");
    } else if (d > rb + ra) {
      tally.Count("apart");
    } else if (ra - rb > d) {
      tally.Count("inside the first");
    } else if (std::fabs(t) > ra) {
      tally.Count("inside the second");
    } else {
      const double h = std::sqrt(a.radius * a.radius - t * t);
      const double ux = wayY / d;
      const double uy = -wayX / d;
      for (const double side : {h, -h}) {
        const double x = a.centre.x + side * ux - t * uy;
        const double y = a.centre.y + side * uy + t * ux;
        if (Second(a).HoldsPoint(x, y) && Second(b).HoldsPoint(x, y)) expected.emplace_back(x, y, 0.0);
      }
      tally.Count(expected.empty() ? "none on the arcs" : expected.size() == 1 ? "one" : "two");
    }
    Point p[2] = {Point(7, 7, 7), Point(8, 8, 8)};
    ASSERT_EQ(Intersect(a, b, p), static_cast<long>(expected.size()));
    for (std::size_t k = 0; k < 2; ++k) {
      const double untouched = 7 + static_cast<double>(k);
      ASSERT_TRUE(Same(p[k], k < expected.size() ? expected[k] : Point(untouched, untouched, untouched)));
    }
  }
}

TEST(IntersectLineCurve, RandomPairsAgreeWithASecondTranscription) {
  EdgeValues random(7211);
  Tally tally({"no length", "passes by", "crosses", "flags 0", "flags 1", "flags 2", "flags 3"});
  const char* const flagNames[] = {"flags 0", "flags 1", "flags 2", "flags 3"};
  for (int i = 0; i < kRandomRounds; ++i) {
    const Curve c = AnyCurve(random);
    const Point start = random.Flag() ? random.GridPoint() : random.AnyPoint();
    const Point end = random.Index(8) == 0 ? random.NearPoint(start)
                      : random.Flag()      ? random.GridPoint()
                                           : random.AnyPoint();
    const Line l(start, end);
    const double vx = end.x - start.x;
    const double vy = end.y - start.y;
    const double length = std::sqrt(vx * vx + vy * vy);
    const double e = (c.centre.x - start.x) * vy / length - (c.centre.y - start.y) * vx / length;
    Point p[2] = {Point(7, 7, 7), Point(7, 7, 7)};
    long flags[2] = {8, 8};
    const bool found = Intersect(l, c, p, flags);
    const bool refused = length == 0 || std::fabs(c.radius) < std::fabs(e);
    ASSERT_EQ(found, !refused);
    if (refused) {
      tally.Count(length == 0 ? "no length" : "passes by");
      ASSERT_TRUE(p[0] == Point(7, 7, 7) && p[1] == Point(7, 7, 7) && flags[0] == 8 && flags[1] == 8);
      continue;
    }
    tally.Count("crosses");
    const double s0 = (c.centre.x - start.x) * vx / length + (c.centre.y - start.y) * vy / length;
    const double h = std::sqrt(c.radius * c.radius - e * e);
    const double s[] = {s0 - h, s0 + h};
    for (int k = 0; k < 2; ++k) {
      const double x = start.x + s[k] * (vx / length);
      const double y = start.y + s[k] * (vy / length);
      ASSERT_TRUE(Same(p[k], Point(x, y, 0)));
      const long mark = (s[k] >= 0 && s[k] <= length ? 1 : 0) + (Second(c).HoldsPoint(x, y) ? 2 : 0);
      ASSERT_EQ(flags[k], mark);
      tally.Count(flagNames[mark]);
    }
  }
}

TEST(IntersectP3, RandomCirclesAgreeWithASecondTranscription) {
  EdgeValues random(7212);
  Tally tally({"concentric", "apart", "inside", "rounded out", "crossing", "NaN"});
  for (int i = 0; i < kRandomRounds; ++i) {
    const Point a = random.Index(3) == 0 ? random.AnyPoint() : random.GridPoint();
    const Point b = random.Index(3) == 0 ? random.NearPoint(a)
                    : random.Flag()      ? random.GridPoint()
                                         : random.AnyPoint();
    const double wayX = b.x - a.x;
    const double wayY = b.y - a.y;
    const double d = std::sqrt(wayX * wayX + wayY * wayY);
    const double ra = random.Index(5) == 0 ? random.Coordinate() : random.Between(0, 6);
    const double rb = random.Index(5) == 0   ? random.Near(d - ra)
                      : random.Index(5) == 0 ? random.Near(d + ra)
                      : random.Index(5) == 0 ? random.Coordinate()
                                             : random.Between(0, 6);
    Point p(77, 78, 79);
    const bool found = IntersectP3(a, b, ra, rb, p);
    const double t = (d * d + ra * ra - rb * rb) / (2 * d * ra) * ra;
    if (d == 0 || ra + rb < d || std::fabs(ra - rb) > d || std::fabs(t) > ra) {
      tally.Count(d == 0                   ? "concentric"
                  : ra + rb < d            ? "apart"
                  : std::fabs(ra - rb) > d ? "inside"
                                           : "rounded out");
      ASSERT_FALSE(found);
      ASSERT_EQ(p, Point(77, 78, 79));
      continue;
    }
    ASSERT_TRUE(found);
    const double h = std::sqrt(ra * ra - t * t);
    const double ux = wayY / d;
    const double uy = -wayX / d;
    ASSERT_TRUE(Same(p, Point(a.x - h * ux - t * uy, a.y - h * uy + t * ux, 79)));
    tally.Count(std::isnan(p.x) ? "NaN" : "crossing");
  }
}

// The centre by the determinant of the three points, which knows no slopes.
TEST(CentreCircleFrom3P, RandomPointsAgreeWithTheDeterminant) {
  EdgeValues random(7213);
  Tally tally({"found", "refused", "left out"});
  for (int i = 0; i < kRandomRounds; ++i) {
    const bool grid = random.Index(4) == 0;
    const auto coordinate = [&] { return grid ? random.Grid() : random.Between(-10, 10); };
    const Point a(coordinate(), coordinate(), 1);
    const Point b(coordinate(), coordinate(), 2);
    const Point c(coordinate(), coordinate(), 3);
    Point centre(77, 78, 79);
    const bool found = CentreCircleFrom3P(a, b, c, centre);
    const double det = 2 * ((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x));
    ASSERT_EQ(centre.z, 79);
    if (!found) {
      ASSERT_NEAR(det, 0, 1e-3);
      ASSERT_EQ(centre.x, 77);
      tally.Count("refused");
      continue;
    }
    // Nearly level chords make steep perpendiculars, and flat triangles far centres: both lose digits.
    if (std::fabs(det) < 1 || std::fabs(b.y - a.y) < 0.1 || std::fabs(c.y - b.y) < 0.1) {
      tally.Count("left out");
      continue;
    }
    const double b2 = (b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y);
    const double c2 = (c.x - a.x) * (c.x - a.x) + (c.y - a.y) * (c.y - a.y);
    ASSERT_NEAR(centre.x, a.x + ((c.y - a.y) * b2 - (b.y - a.y) * c2) / det, 1e-7);
    ASSERT_NEAR(centre.y, a.y + ((b.x - a.x) * c2 - (c.x - a.x) * b2) / det, 1e-7);
    tally.Count("found");
  }
}

TEST(CentreCircleFrom3P, RandomWildPointsAreIntersectedPerpendiculars) {
  EdgeValues random(7214);
  Tally tally({"found", "refused"});
  for (int i = 0; i < kRandomRounds; ++i) {
    const Point a = random.AnyPoint();
    const Point b = random.Index(3) == 0 ? random.NearPoint(a) : random.AnyPoint();
    const Point c = random.Index(3) == 0 ? random.NearPoint(b) : random.AnyPoint();
    const auto perpendicular = [](const Point& from, const Point& to) {
      const double mx = (from.x + to.x) * 0.5;
      const double my = (from.y + to.y) * 0.5;
      return Flat(mx, my, mx - (to.y - from.y), my + (to.x - from.x));
    };
    const Crossing expected(perpendicular(a, b), perpendicular(b, c));
    Point centre(77, 78, 79);
    ASSERT_EQ(CentreCircleFrom3P(a, b, c, centre), expected.found);
    ASSERT_TRUE(Same(centre, expected.p));
    tally.Count(expected.found ? "found" : "refused");
  }
}

}  // namespace
