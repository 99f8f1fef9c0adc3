#include "zelbase/geometry/Intersect.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "tests/geometry/EdgeValues.h"
#include "tests/geometry/LiteralArcs.h"
#include "tests/geometry/LiteralSegments.h"

namespace {

Line Flat(double x1, double y1, double x2, double y2) { return Line(Point(x1, y1, 0), Point(x2, y2, 0)); }
Curve Circle(double x, double y, double radius) { return Curve(Point(x, y, 0), radius, 0, 360); }

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

// Over arrays {x1, y1, x2, y2}; half of them nearly collinear, coincident, reversed or parallel.
TEST(IntersectLines, RandomLinesAgreeWithASecondTranscription) {
  EdgeValues random(7209);
  const std::vector<std::string> meetingNames = {"both vertical", "second vertical", "first vertical", "parallel",
                                                 "both steep",    "second steep",    "first steep",    "ordinary"};
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
    if (random.Flag()) {
      const auto [start, end] = random.Related(Point(l[0][0], l[0][1], 0), Point(l[0][2], l[0][3], 0));
      l[1] = {start.x, start.y, end.x, end.y};
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
  return Curve(random.Index(4) == 0 ? random.AnyPoint() : random.GridPoint(), radius, random.Bearing(), random.Bearing());
}

// A radius with which the circle touches another one at the distance d, from outside or inside, or is equal
// to it; nearly.
double TouchingRadius(EdgeValues& random, double d, double other) {
  const double radius[] = {d - other, d + other, other - d, other};
  return random.Near(radius[random.Index(4)]);
}

TEST(IntersectCurves, RandomCurvesAgreeWithASecondTranscription) {
  EdgeValues random(7210);
  Tally tally(kCirclesMeetings);
  for (int i = 0; i < kRandomRounds; ++i) {
    const Curve a = AnyCurve(random);
    Curve b = AnyCurve(random);
    if (random.Flag()) {
      if (random.Index(3) == 0) b.centre = random.Flag() ? a.centre : random.NearPoint(a.centre);
      b.radius = TouchingRadius(random, a.centre.Dist2D(b.centre), a.radius);
    }
    const LiteralCommon expected = LiteralIntersect(Second(a), Second(b));
    tally.Count(kCirclesMeetings[static_cast<std::size_t>(expected.meeting)]);
    Point p[2] = {Point(7, 7, 7), Point(8, 8, 8)};
    ASSERT_EQ(Intersect(a, b, p), static_cast<long>(expected.count));
    for (std::size_t k = 0; k < 2; ++k) {
      const double untouched = 7 + static_cast<double>(k);
      ASSERT_TRUE(Same(p[k], k < expected.count ? expected.points[k] : Point(untouched, untouched, untouched)));
    }
  }
}

// Half of the lines nearly touch the circle, pass its centre or have no length.
Line LineBy(EdgeValues& random, const Curve& c) {
  const Point start = random.Flag() ? random.GridPoint() : random.AnyPoint();
  if (random.Flag()) return Line(start, random.Flag() ? random.GridPoint() : random.AnyPoint());
  const double bearing = random.Bearing() * 0.017453292519943;
  const Point out(std::sin(bearing), std::cos(bearing), 0);
  const Point touching = c.centre + out * c.radius;
  const Point along = Point(out.y, -out.x, 0) * random.Grid();
  switch (random.Index(4)) {
    case 0: return Line(random.NearPoint(touching - along), random.NearPoint(touching + along));
    case 1: return Line(start, random.NearPoint(c.centre));
    case 2: return Line(random.NearPoint(touching), start);
    default: return Line(start, random.NearPoint(start));
  }
}

TEST(IntersectLineCurve, RandomPairsAgreeWithASecondTranscription) {
  EdgeValues random(7211);
  Tally tally({"no length", "passes by", "crosses", "flags 0", "flags 1", "flags 2", "flags 3"});
  const char* const flagNames[] = {"flags 0", "flags 1", "flags 2", "flags 3"};
  const char* const meetingNames[] = {"no length", "passes by", "crosses"};
  for (int i = 0; i < kRandomRounds; ++i) {
    const Curve c = AnyCurve(random);
    const Line l = LineBy(random, c);
    const LiteralChord expected = LiteralIntersect(Literal(l), Second(c));
    tally.Count(meetingNames[static_cast<std::size_t>(expected.meeting)]);
    Point p[2] = {Point(7, 7, 7), Point(7, 7, 7)};
    long flags[2] = {8, 8};
    const bool found = Intersect(l, c, p, flags);
    ASSERT_EQ(found, expected.meeting == ChordMeeting::kCrosses);
    if (!found) {
      ASSERT_TRUE(p[0] == Point(7, 7, 7) && p[1] == Point(7, 7, 7) && flags[0] == 8 && flags[1] == 8);
      continue;
    }
    for (std::size_t k = 0; k < 2; ++k) {
      ASSERT_TRUE(Same(p[k], expected.points[k]));
      ASSERT_EQ(flags[k], expected.flags[k]);
      tally.Count(flagNames[expected.flags[k]]);
    }
  }
}

TEST(IntersectP3, RandomCirclesAgreeWithASecondTranscription) {
  EdgeValues random(7212);
  Tally tally({"concentric", "apart", "inside", "rounded out", "crossing", "NaN"});
  const char* const refusals[] = {"concentric", "apart", "inside", "rounded out"};
  for (int i = 0; i < kRandomRounds; ++i) {
    const Point a = random.Index(3) == 0 ? random.AnyPoint() : random.GridPoint();
    const Point b = random.Index(3) == 0 ? random.NearPoint(a) : random.Flag() ? random.GridPoint() : random.AnyPoint();
    const double ra = random.Index(5) == 0 ? random.Coordinate() : random.Between(0, 6);
    const double rb = random.Flag()          ? TouchingRadius(random, a.Dist2D(b), ra)
                      : random.Index(5) == 0 ? random.Coordinate()
                                             : random.Between(0, 6);
    Point p(77, 78, 79);
    const bool found = IntersectP3(a, b, ra, rb, p);
    const LiteralRanges expected = LiteralIntersectP3(a, b, ra, rb);
    ASSERT_EQ(found, expected.meeting == RangesMeeting::kCrossing);
    if (!found) {
      tally.Count(refusals[static_cast<std::size_t>(expected.meeting)]);
      ASSERT_EQ(p, Point(77, 78, 79));
      continue;
    }
    ASSERT_TRUE(Same(p, Point(expected.x, expected.y, 79)));
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
    const Point c = random.Flag() ? random.NearLine(a, b) : random.AnyPoint();
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
