#include "zelbase/geometry/Curve.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>

#include "tests/geometry/EdgeValues.h"
#include "tests/geometry/SecondCurve.h"
#include "zelbase/geometry/Intersect.h"

namespace {

constexpr double kDegree = SecondCurve::kDegree;

Curve Arc(double radius, double start, double end) { return Curve(Point(0, 0, 0), radius, start, end); }

// On a circle, 10 and 360 + 10 are the same.
double BearingGap(double a, double b) { return std::fabs(std::remainder(a - b, 360.0)); }

TEST(Curve, DefaultsToZero) {
  const Curve curve;
  EXPECT_EQ(curve.centre, Point());
  EXPECT_EQ(curve.radius, 0);
  EXPECT_EQ(curve.startAngle, 0);
  EXPECT_EQ(curve.endAngle, 0);
}

TEST(Curve, IsItsCentreRadiusAndAngles) {
  const Curve curve(Point(1, 2, 3), -4, 5, 6);
  const auto* words = reinterpret_cast<const double*>(&curve);
  const double expected[] = {1, 2, 3, -4, 5, 6};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(words[i], expected[i]);
}

TEST(Curve, AnglesAreStoredTrimmed) {
  Curve curve(Point(), 1, -30, 720);
  EXPECT_EQ(curve.startAngle, 330);
  EXPECT_EQ(curve.endAngle, 0);
  curve.Set(Point(1, 1, 1), 2, 370, 360);
  EXPECT_EQ(curve.startAngle, 10);
  EXPECT_EQ(curve.endAngle, 0);
}

TEST(Curve, ThePairZeroAnd360IsStoredAsGiven) {
  EXPECT_EQ(Arc(1, 0, 360).startAngle, 0);
  EXPECT_EQ(Arc(1, 0, 360).endAngle, 360);
  EXPECT_EQ(Arc(1, 360, 0).startAngle, 0);
  EXPECT_EQ(Arc(1, 360, 0).endAngle, 0);
  EXPECT_EQ(Arc(1, 0, 720).endAngle, 0);
  EXPECT_EQ(Arc(1, 1e-300, 360).endAngle, 0);
}

TEST(Curve, ArcsAcrossNorthHoldNorth) {
  EXPECT_TRUE(Arc(5, 350, 10).AngleInCurve(0));
  EXPECT_TRUE(Arc(-5, 10, 350).AngleInCurve(0));
  EXPECT_FALSE(Arc(5, 10, 350).AngleInCurve(0));
  EXPECT_FALSE(Arc(-5, 350, 10).AngleInCurve(0));
  EXPECT_TRUE(Arc(5, 350, 10).AngleInCurve(720));
}

TEST(Curve, BothEndsArePartOfTheArc) {
  for (const double radius : {5.0, 0.0, -5.0}) {
    EXPECT_TRUE(Arc(radius, 20, 70).AngleInCurve(20)) << radius;
    EXPECT_TRUE(Arc(radius, 20, 70).AngleInCurve(70)) << radius;
    EXPECT_EQ(Arc(radius, 20, 70).AngleInCurve(45), radius >= 0) << radius;
    EXPECT_EQ(Arc(radius, 20, 70).AngleInCurve(180), radius < 0) << radius;
  }
}

TEST(Curve, TheFullCircleHoldsEveryBearingAndHasNoSectorAngle) {
  const Curve circle = Arc(5, 0, 360);
  for (double bearing = -720; bearing <= 720; bearing += 7.5) EXPECT_TRUE(circle.AngleInCurve(bearing)) << bearing;
  EXPECT_EQ(circle.SectorAngle(), 0);
  EXPECT_EQ(circle.Bow(), 0);
  double ratio = 0;
  EXPECT_TRUE(circle.PointInCurveRatio(Point(1, 1, 0), ratio));
  EXPECT_EQ(ratio, kInfinity);
}

TEST(Curve, TheFullCircleOfANegativeRadiusHoldsNorthAlone) {
  const Curve circle = Arc(-5, 0, 360);
  EXPECT_TRUE(circle.AngleInCurve(0));
  EXPECT_TRUE(circle.AngleInCurve(360));
  EXPECT_FALSE(circle.AngleInCurve(1));
  EXPECT_FALSE(circle.AngleInCurve(180));
  Page page;
  EXPECT_TRUE(circle.GetExtents(page));
  EXPECT_EQ(page.top, 5);
  EXPECT_NEAR(page.bottom, 5, 1e-12);
  EXPECT_NEAR(page.left, 0, 1e-11);
  EXPECT_NEAR(page.right, 0, 1e-11);
}

TEST(Curve, TwoEqualAnglesAreAnEmptyArc) {
  for (const double radius : {5.0, -5.0}) {
    const Curve arc = Arc(radius, 40, 40);
    EXPECT_FALSE(arc.AngleInCurve(40)) << radius;
    EXPECT_FALSE(arc.AngleInCurve(90)) << radius;
    EXPECT_EQ(arc.SectorAngle(), 0);
    // Epsilon(40 * 40) is 3.6e-13.
    EXPECT_FALSE(Arc(radius, 40, 40 + 3e-13).AngleInCurve(40));
    EXPECT_EQ(Arc(radius, 40, 40 + 3e-13).SectorAngle(), 0);
    EXPECT_TRUE(Arc(radius, 40, 40 + 4e-13).AngleInCurve(40));
  }
}

TEST(Curve, TwoAnglesOfZeroHoldExactlyNorthAndSoDoesADefaultCurve) {
  for (const Curve& curve : {Curve(), Arc(5, 0, 0), Arc(-5, 0, 0)}) {
    EXPECT_TRUE(curve.AngleInCurve(0));
    EXPECT_TRUE(curve.AngleInCurve(360));
    EXPECT_FALSE(curve.AngleInCurve(1e-9));
    EXPECT_FALSE(curve.AngleInCurve(180));
    EXPECT_EQ(curve.SectorAngle(), 0);
  }
}

TEST(Curve, APointDueSouthOrEastIsJustBeyondAnArcThatEndsThere) {
  EXPECT_FALSE(Arc(5, 0, 180).PointInSegment(Point(0, -5, 0)));
  EXPECT_FALSE(Arc(5, 0, 90).PointInSegment(Point(5, 0, 0)));
  EXPECT_FALSE(Arc(5, 270, 300).PointInSegment(Point(-5, 0, 0)));
  EXPECT_TRUE(Arc(5, 180, 270).PointInSegment(Point(0, -5, 0)));
  EXPECT_TRUE(Arc(5, 0, 90).PointInSegment(Point(0, 5, 0)));
}

TEST(Curve, PointInSegmentDoesNotLookAtTheDistance) {
  const Curve arc(Point(10, 20, 0), 5, 30, 60);
  EXPECT_TRUE(arc.PointInSegment(Point(1e6, 1e6, 0)));
  EXPECT_TRUE(arc.PointInSegment(Point(10.001, 20.001, 0)));
  EXPECT_FALSE(arc.PointInSegment(Point(0, 0, 0)));
}

TEST(Curve, AngleToPointKeepsTheCentresHeight) {
  const Point p = Curve(Point(10, 20, 3), -5, 0, 90).AngleToPoint(90);
  EXPECT_NEAR(p.x, 15, 1e-12);
  EXPECT_NEAR(p.y, 20, 1e-12);
  EXPECT_EQ(p.z, 3);
}

TEST(Curve, SectorAngleFollowsTheDirectionOfTravel) {
  EXPECT_EQ(Arc(5, 20, 80).SectorAngle(), 60);
  EXPECT_EQ(Arc(0, 20, 80).SectorAngle(), 60);
  EXPECT_EQ(Arc(-5, 20, 80).SectorAngle(), 300);
  EXPECT_EQ(Arc(5, 80, 20).SectorAngle(), 300);
  EXPECT_EQ(Arc(5, 350, 10).SectorAngle(), 20);
  EXPECT_EQ(Arc(-5, 10, 350).SectorAngle(), 20);
}

TEST(Curve, BowIsTheLengthAlongTheArc) {
  EXPECT_NEAR(Arc(10, 0, 90).Bow(), 5 * std::numbers::pi, 1e-11);
  EXPECT_NEAR(Arc(-10, 90, 0).Bow(), 5 * std::numbers::pi, 1e-11);
  EXPECT_EQ(Arc(0, 0, 90).Bow(), 0);
}

TEST(Curve, PointInCurveRatioIsThePartOfTheWay) {
  double ratio = 0;
  EXPECT_TRUE(Arc(5, 0, 90).PointInCurveRatio(Point(1, 1, 0), ratio));
  EXPECT_NEAR(ratio, 0.5, 1e-12);
  EXPECT_TRUE(Arc(5, 315, 45).PointInCurveRatio(Point(0, 1, 0), ratio));
  EXPECT_NEAR(ratio, 0.5, 1e-12);
  EXPECT_TRUE(Arc(-5, 45, 315).PointInCurveRatio(Point(0, 1, 0), ratio));
  EXPECT_NEAR(ratio, 0.5, 1e-12);
  EXPECT_TRUE(Arc(-5, 100, 20).PointInCurveRatio(Point(1, 1 / std::sqrt(3.0), 0), ratio));  // bearing 60
  EXPECT_NEAR(ratio, 0.5, 1e-12);
}

TEST(Curve, PointInCurveRatioBeyondTheArcIsWrittenAndAboveOne) {
  double ratio = 0;
  EXPECT_FALSE(Arc(5, 0, 90).PointInCurveRatio(Point(0, -1, 0), ratio));
  EXPECT_NEAR(ratio, 2, 1e-12);
  EXPECT_FALSE(Arc(-5, 180, 90).PointInCurveRatio(Point(0, 1, 0), ratio));
  EXPECT_NEAR(ratio, 2, 1e-12);
}

TEST(Curve, PointInCurveRatioOfADegenerateArcDividesByZero) {
  double ratio = 0;
  EXPECT_FALSE(Arc(5, 40, 40).PointInCurveRatio(Point(1, 0, 0), ratio));
  EXPECT_EQ(ratio, kInfinity);
  EXPECT_TRUE(Curve().PointInCurveRatio(Point(0, 1, 0), ratio));
  EXPECT_TRUE(std::isnan(ratio));
}

TEST(Curve, BulgeOfOneIsAHalfCircleToTheRightRunCounterClockwise) {
  const Curve arc(Point(0, 0, 2), Point(0, 10, 4), 1.0);
  EXPECT_NEAR(arc.centre.x, 0, 1e-12);
  EXPECT_NEAR(arc.centre.y, 5, 1e-12);
  EXPECT_EQ(arc.centre.z, 3);
  EXPECT_NEAR(arc.radius, -5, 1e-12);
  EXPECT_NEAR(arc.startAngle, 180, 1e-11);
  EXPECT_LT(BearingGap(arc.endAngle, 0), 1e-11);
  EXPECT_TRUE(arc.AngleInCurve(90));
  EXPECT_FALSE(arc.AngleInCurve(270));
}

TEST(Curve, NegativeBulgeBowsToTheLeftAndRunsClockwise) {
  const Curve arc(Point(0, 0, 0), Point(0, 10, 0), -0.5);
  // Sagitta 2.5: radius (5 * 5 + 2.5 * 2.5) / (2 * 2.5) = 6.25; the centre lies 3.75 to the right of the
  // chord.
  EXPECT_NEAR(arc.radius, 6.25, 1e-11);
  EXPECT_NEAR(arc.centre.x, 3.75, 1e-11);
  EXPECT_NEAR(arc.centre.y, 5, 1e-11);
  EXPECT_TRUE(arc.AngleInCurve(270));
  EXPECT_FALSE(arc.AngleInCurve(90));
}

TEST(Curve, BulgeOfPointsOnOneLineLeavesADefaultCurve) {
  const Point p(3, 4, 9);
  for (const Curve& curve : {Curve(p, Point(8, 5, 7), 0.0), Curve(p, p, 1.0), Curve(p, Point(8, 5, 7), -0.0), Curve(p, p, kInfinity)}) {
    if (curve.radius != 0) {
      EXPECT_TRUE(std::isnan(curve.radius));
      continue;
    }
    EXPECT_EQ(curve.centre, Point());
    EXPECT_EQ(curve.startAngle, 0);
    EXPECT_EQ(curve.endAngle, 0);
  }
  EXPECT_EQ(Curve(p, Point(8, 5, 7), 0.0).radius, 0);
  EXPECT_EQ(Curve(p, Point(8, 5, 7), 0.0).centre.z, 0);
  EXPECT_EQ(Curve(p, p, 1.0).radius, 0);
}

TEST(Curve, GetExtentsWidensByTheQuartersThatItHoldsAndOverwritesThePage) {
  Page page(-100, -100, 100, 100);
  EXPECT_TRUE(Arc(10, 0, 90).GetExtents(page));
  EXPECT_NEAR(page.left, 0, 1e-11);
  EXPECT_NEAR(page.bottom, 0, 1e-11);
  EXPECT_EQ(page.right, 10);
  EXPECT_EQ(page.top, 10);
  Curve(Point(1, 2, 3), 10, 0, 360).GetExtents(page);
  EXPECT_EQ(page, Page(-9, -8, 11, 12));
  Arc(-10, 45, 315).GetExtents(page);  // over north
  EXPECT_EQ(page.top, 10);
  EXPECT_NEAR(page.bottom, 10 * std::sqrt(0.5), 1e-11);
  EXPECT_NEAR(page.left, -10 * std::sqrt(0.5), 1e-11);
  EXPECT_NEAR(page.right, 10 * std::sqrt(0.5), 1e-11);
}

TEST(Curve, GetAsPointsOfAToleranceEqualToTheRadiusStepsByAQuarter) {
  std::vector<Point> points;
  EXPECT_TRUE(Curve(Point(100, 200, 3), 10, 0, 200).GetAsPoints(points, 10));
  ASSERT_EQ(points.size(), 4u);                    // two steps of 100 degrees
  const double outer = 20 / (1 + std::sqrt(0.5));  // r + (1 - c) * r / (1 + c) with c = cos(45)
  const double bearings[] = {0, 50, 150, 200};
  const double radii[] = {10, outer, outer, 10};
  for (std::size_t i = 0; i < 4; ++i) {
    const double angle = bearings[i] * std::numbers::pi / 180;
    EXPECT_NEAR(points[i].x, 100 + std::sin(angle) * radii[i], 1e-10) << i;
    EXPECT_NEAR(points[i].y, 200 + std::cos(angle) * radii[i], 1e-10) << i;
    EXPECT_EQ(points[i].z, 3);
  }
}

TEST(Curve, GetAsPointsOfANegativeRadiusRunsCounterClockwise) {
  std::vector<Point> points;
  EXPECT_TRUE(Arc(-10, 200, 0).GetAsPoints(points, 10));
  ASSERT_EQ(points.size(), 4u);
  EXPECT_GT(points[2].x, 0);  // 50 degrees
  EXPECT_GT(points[2].y, 0);
  EXPECT_GT(points[1].x, 0);  // 150 degrees
  EXPECT_LT(points[1].y, 0);
}

TEST(Curve, GetAsPointsOfASweepBelowOneStepHasItsEndsOnly) {
  std::vector<Point> points;
  EXPECT_TRUE(Arc(10, 0, 80).GetAsPoints(points, 10));
  ASSERT_EQ(points.size(), 2u);
  EXPECT_NEAR(points[0].y, 10, 1e-12);
  EXPECT_NEAR(points[1].x, 10 * std::sin(80 * std::numbers::pi / 180), 1e-10);
}

TEST(Curve, GetAsPointsOfTheFullCircleHasTwoCoincidingPoints) {
  std::vector<Point> points;
  EXPECT_TRUE(Arc(10, 0, 360).GetAsPoints(points, 0.1));
  ASSERT_EQ(points.size(), 2u);
  EXPECT_NEAR(points[0].Dist2D(points[1]), 0, 1e-11);
}

TEST(Curve, GetAsPointsAppends) {
  std::vector<Point> points(3, Point(7, 7, 7));
  EXPECT_TRUE(Arc(10, 0, 80).GetAsPoints(points, 10));
  EXPECT_EQ(points.size(), 5u);
  EXPECT_EQ(points[2], Point(7, 7, 7));
}

TEST(Curve, GetAsPointsStraddlesTheArc) {
  std::vector<Point> points;
  const double r = 100;
  const double tolerance = 0.5;
  EXPECT_TRUE(Arc(r, 10, 300).GetAsPoints(points, tolerance));
  ASSERT_GT(points.size(), 10u);
  for (std::size_t i = 1; i + 2 < points.size(); ++i) {
    EXPECT_GT(points[i].Dist2D(Point()), r);
    const double middle = ((points[i] + points[i + 1]) * 0.5).Dist2D(Point());
    EXPECT_LT(middle, r);
    EXPECT_GT(middle, r - 2 * tolerance);
    EXPECT_LT(points[i].Dist2D(Point()), r + 2 * tolerance);
  }
}

TEST(Curve, GetAsPointsRefusesWhatHasNoStepOrTooMany) {
  std::vector<Point> points(1);
  const Curve arc = Arc(1000, 0, 180);
  for (const double tolerance :
       {0.0, -0.0, -1.0, -1000.0, -5000.0, kNan, -kInfinity, kInfinity, kSmallest, 1e-300, 1e-13, 1e-12, 1000.0001}) {
    EXPECT_FALSE(arc.GetAsPoints(points, tolerance)) << tolerance;
  }
  for (const double radius : {kNan, kInfinity, -kInfinity, 1e300, kLargest}) {
    EXPECT_FALSE(Arc(radius, 0, 180).GetAsPoints(points, 1e-3)) << radius;
  }
  EXPECT_FALSE(Arc(10, kNan, 180).GetAsPoints(points, 1));
  EXPECT_FALSE(Arc(10, 0, kInfinity).GetAsPoints(points, 1));
  EXPECT_FALSE(Arc(0, 0, 180).GetAsPoints(points, 0));
  EXPECT_EQ(points.size(), 1u);
}

TEST(Curve, GetAsPointsOfNoRadiusAndANegativeToleranceIsAHalfTurnOnTheSpot) {
  std::vector<Point> points;
  EXPECT_TRUE(Arc(0, 200, 0).GetAsPoints(points, -1));  // acos(-1): the sweep of 200 degrees has one step
  ASSERT_EQ(points.size(), 3u);
  for (const Point& p : points) EXPECT_EQ(p, Point());
}

TEST(Curve, NoRadiusIsSweptClockwiseBySectorAngleAndBackwardsByGetAsPoints) {
  const Curve spot = Arc(0, 0, 100);
  EXPECT_EQ(spot.SectorAngle(), 100);
  std::vector<Point> points;
  EXPECT_TRUE(spot.GetAsPoints(points, -1));  // a step is half a turn: 260 degrees have one, 100 would have none
  EXPECT_EQ(points.size(), 3u);
}

TEST(Curve, GetAsPointsNearItsBoundStillAnswers) {
  // cos(step) = 1 - 2 * 1e-8 / 1000 about: step 6.3e-6, half a circle has half a million.
  std::vector<Point> points;
  EXPECT_TRUE(Arc(1000, 0, 180).GetAsPoints(points, 1e-8));
  EXPECT_NEAR(static_cast<double>(points.size()), std::numbers::pi / std::sqrt(4e-11), 200);
}

SecondCurve Second(const Curve& curve) { return {curve.centre.x, curve.centre.y, curve.radius, curve.startAngle, curve.endAngle}; }

Curve AnyCurve(EdgeValues& random) {
  Curve curve(random.AnyPoint(), random.Coordinate(), random.Bearing(), random.Bearing());
  if (random.Index(6) == 0) curve.Set(random.GridPoint(), random.Grid(), 0, 360);
  if (random.Index(6) == 0) curve.endAngle = random.Near(curve.startAngle);
  return curve;
}

TEST(Curve, RandomBearingsAgreeWithASecondTranscription) {
  EdgeValues random(7203);
  Tally tally({"empty", "clockwise", "counter-clockwise", "past north", "held", "not held", "sector 0"});
  for (int i = 0; i < kRandomRounds; ++i) {
    const Curve curve = AnyCurve(random);
    const SecondCurve second = Second(curve);
    const double angle = random.Flag() ? random.Near(curve.startAngle) : random.Bearing();
    ASSERT_EQ(curve.AngleInCurve(angle), second.Holds(angle))
        << curve.radius << ' ' << curve.startAngle << ' ' << curve.endAngle << ' ' << angle;
    ASSERT_TRUE(Same(curve.SectorAngle(), second.Sector()));
    ASSERT_TRUE(Same(curve.Bow(), second.Sector() * kDegree * std::fabs(curve.radius)));
    if (second.IsEmpty()) tally.Count("empty");
    tally.Count(curve.radius < 0 ? "counter-clockwise" : "clockwise");
    if (curve.radius >= 0 && curve.startAngle > curve.endAngle) tally.Count("past north");
    tally.Count(second.Holds(angle) ? "held" : "not held");
    if (second.Sector() == 0) tally.Count("sector 0");

    const Point p = random.Flag() ? random.NearPoint(curve.centre) : random.AnyPoint();
    double bearing = SecondCurve::Bearing(p.x - curve.centre.x, p.y - curve.centre.y);
    double ratio = 0;
    ASSERT_EQ(curve.PointInSegment(p), second.Holds(bearing));
    ASSERT_EQ(curve.PointInCurveRatio(p, ratio), second.Holds(bearing));
    const bool clockwise = curve.radius >= 0;
    if (clockwise && bearing < curve.startAngle) bearing += 360.0;
    if (!clockwise && bearing > curve.startAngle) bearing -= 360.0;
    const double run = clockwise ? bearing - curve.startAngle : curve.startAngle - bearing;
    ASSERT_TRUE(Same(ratio, run / second.Sector()));
  }
}

TEST(CurveLong, RandomExtentsHoldTheArcAndTouchIt) {
  EdgeValues random(7204);
  Tally tally({"no quarter", "one", "two", "three", "four"});
  const char* const names[] = {"no quarter", "one", "two", "three", "four"};
  for (int i = 0; i < kRandomRounds; ++i) {
    const Point centre(random.Between(-100, 100), random.Between(-100, 100), 0);
    const double radius = random.Between(-50, 50);
    const bool full = random.Index(10) == 0;
    const double start = full ? 0 : random.Flag() ? 90.0 * random.Index(5) : random.Between(0, 360);
    const double end = full ? 360 : random.Between(0, 360);
    const Curve curve(centre, full ? std::fabs(radius) : radius, start, end);
    Page page;
    ASSERT_TRUE(curve.GetExtents(page));
    // Steps along the arc find its box but for what lies between two of them.
    const double sweep = full ? 360 : curve.SectorAngle();
    Page walked;
    constexpr int kSteps = 64;
    for (int k = 0; k <= kSteps; ++k) {
      const double bearing = start + (curve.radius < 0 ? -1 : 1) * sweep * k / kSteps;
      const double radians = bearing * std::numbers::pi / 180;
      walked |= Point(centre.x + std::sin(radians) * std::fabs(radius), centre.y + std::cos(radians) * std::fabs(radius), 0);
    }
    const double miss = std::fabs(radius) * (1 - std::cos(std::numbers::pi / kSteps)) + 1e-9;
    int quarters = 0;
    for (const auto& [exact, found] : {std::pair(page.left, walked.left), std::pair(page.bottom, walked.bottom),
                                       std::pair(-page.right, -walked.right), std::pair(-page.top, -walked.top)}) {
      ASSERT_LE(exact, found + 1e-9);
      ASSERT_GE(exact, found - miss);
    }
    for (const double bearing : {0.0, 90.0, 180.0, 270.0}) quarters += curve.AngleInCurve(bearing) ? 1 : 0;
    tally.Count(names[quarters]);
  }
}

TEST(Curve, RandomWildExtentsAreQuiet) {
  EdgeValues random(7205);
  for (int i = 0; i < kRandomRounds; ++i) {
    const Curve curve = AnyCurve(random);
    Page page;
    ASSERT_TRUE(curve.GetExtents(page));
    const double r = std::fabs(curve.radius);
    if (curve.AngleInCurve(0)) {
      ASSERT_TRUE(Same(page.top, curve.centre.y + r));
    }
    if (curve.AngleInCurve(90)) {
      ASSERT_TRUE(Same(page.right, curve.centre.x + r));
    }
    if (curve.AngleInCurve(180)) {
      ASSERT_TRUE(Same(page.bottom, curve.centre.y - r));
    }
    if (curve.AngleInCurve(270)) {
      ASSERT_TRUE(Same(page.left, curve.centre.x - r));
    }
  }
}

TEST(CurveLong, RandomPolylinesAgreeWithASecondTranscription) {
  EdgeValues random(7206);
  Tally tally({"tolerance above radius", "no step", "too many", "ends only", "clockwise", "counter-clockwise", "left out, long"});
  std::vector<Point> points;
  std::vector<Point> expected;
  for (int i = 0; i < kRandomRounds; ++i) {
    const Curve curve = AnyCurve(random);
    const double r = std::fabs(curve.radius);
    const double tolerance = random.Index(4) == 0   ? random.Wild()
                             : random.Index(8) == 0 ? random.Near(r)
                             : random.Index(8) == 0 ? r * 1e-15
                                                    : r * random.Between(0.001, 1.1);
    const double steps = curve.SectorAngle() * kDegree / std::acos((r - tolerance) / (r + tolerance));
    if (steps > 1000 && steps < 2e7) {
      tally.Count("left out, long");
      continue;
    }
    expected.clear();
    const auto accepts = [&] {
      if (r < tolerance) {
        tally.Count("tolerance above radius");
        return false;
      }
      const double step = std::acos((r - tolerance) / (tolerance + r));
      const double turn = curve.radius > 0 ? curve.endAngle - curve.startAngle : curve.startAngle - curve.endAngle;
      const double sweep = SecondCurve::Trim(turn) * kDegree;
      if (std::isnan(step) || step == 0 || std::isnan(sweep)) {
        tally.Count("no step");
        return false;
      }
      const double parts = std::trunc(sweep / step);
      if (sweep / step > 1e7) {
        tally.Count("too many");
        return false;
      }
      const double c = std::cos(step / 2);
      const double outer = r + (1 - c) * r / (1 + c);
      const auto put = [&](double angle, double radius) {
        const Point& m = curve.centre;
        expected.emplace_back(std::sin(angle) * radius + m.x, std::cos(angle) * radius + m.y, m.z);
      };
      put(curve.startAngle * kDegree, r);
      const double part = sweep / parts * (curve.radius < 0 ? -1 : 1);
      double angle = part / 2 + curve.startAngle * kDegree;
      for (double k = 0; k < parts; k = k + 1) {
        put(angle, outer);
        angle = angle + part;
      }
      put(curve.endAngle * kDegree, r);
      tally.Count(parts == 0 ? "ends only" : curve.radius < 0 ? "counter-clockwise" : "clockwise");
      return true;
    };
    const bool accepted = accepts();
    points.clear();
    ASSERT_EQ(curve.GetAsPoints(points, tolerance), accepted) << r << ' ' << tolerance;
    ASSERT_EQ(points.size(), expected.size());
    for (std::size_t k = 0; k < points.size(); ++k) ASSERT_TRUE(Same(points[k], expected[k])) << k;
  }
}

// A bulge is the tangent of a quarter of the sweep.
TEST(Curve, RandomBulgesMakeTheArcThroughBothEnds) {
  EdgeValues random(7207);
  Tally tally({"to the right", "to the left", "refused"});
  for (int i = 0; i < kRandomRounds; ++i) {
    const Point p1(random.Between(-100, 100), random.Between(-100, 100), 1);
    const Point p2 = random.Index(20) == 0 ? p1 : Point(random.Between(-100, 100), random.Between(-100, 100), 5);
    const double bulge = (random.Flag() ? 1 : -1) * random.Between(0.05, 2);
    const Curve arc(p1, p2, bulge);
    if (tally.Either(arc.radius == 0, "refused", bulge > 0 ? "to the right" : "to the left")) {
      ASSERT_TRUE(p1 == p2);
      continue;
    }
    const double chord = p1.Dist2D(p2);
    if (chord < 1) continue;
    // Where two perpendiculars of nearly one slope, or a steep one, meet, digits are lost.
    const double r = chord * (1 + bulge * bulge) / (4 * std::fabs(bulge));
    ASSERT_EQ(arc.radius<0, bulge> 0);
    ASSERT_NEAR(std::fabs(arc.radius), r, 1e-4 * r);
    ASSERT_NEAR(arc.centre.Dist2D(p1), r, 1e-4 * r);
    ASSERT_EQ(arc.centre.z, p1 == p2 ? 1 : 3);
    ASSERT_LT(BearingGap(arc.SectorAngle(), 4 * std::atan(std::fabs(bulge)) * 180 / std::numbers::pi), 0.01);
    const double x = arc.centre.x;
    const double y = arc.centre.y;
    ASSERT_TRUE(Same(arc.startAngle, SecondCurve::Bearing(p1.x - x, p1.y - y)));
    ASSERT_TRUE(Same(arc.endAngle, SecondCurve::Bearing(p2.x - x, p2.y - y)));
  }
}

TEST(Curve, RandomWildBulgesAgreeWithASecondTranscription) {
  EdgeValues random(7208);
  Tally tally({"default", "arc"});
  for (int i = 0; i < kRandomRounds; ++i) {
    const Point p1 = random.AnyPoint();
    const Point p2 = random.Index(4) == 0 ? random.NearPoint(p1) : random.AnyPoint();
    // Half of the arcs are nearly straight.
    const double bulge = random.Flag() ? random.Near(0) : random.Coordinate();
    const double dx = p2.x - p1.x;
    const double dy = p2.y - p1.y;
    const double sagitta = std::fabs(bulge) * std::sqrt(dx * dx + dy * dy) * 0.5;
    const double turned = (SecondCurve::Bearing(dx, dy) + (bulge >= 0 ? 90.0 : -90.0)) * kDegree;
    const Point third((p1.x + p2.x) * 0.5 + std::sin(turned) * sagitta, (p1.y + p2.y) * 0.5 + std::cos(turned) * sagitta, 0);
    Point centre;
    const bool found = CentreCircleFrom3P(p1, third, p2, centre);
    const Curve arc(p1, p2, bulge);
    if (!tally.Either(found, "arc", "default")) {
      ASSERT_TRUE(arc.radius == 0 && arc.startAngle == 0 && arc.endAngle == 0 && arc.centre == Point());
      continue;
    }
    const double rx = p2.x - centre.x;
    const double ry = p2.y - centre.y;
    const double r = std::sqrt(rx * rx + ry * ry);
    ASSERT_TRUE(Same(arc.centre, Point(centre.x, centre.y, (p1.z + p2.z) * 0.5)));
    ASSERT_TRUE(Same(arc.radius, bulge > 0 ? -r : r));
    ASSERT_TRUE(Same(arc.startAngle, SecondCurve::Bearing(p1.x - centre.x, p1.y - centre.y)));
    ASSERT_TRUE(Same(arc.endAngle, SecondCurve::Bearing(rx, ry)));
  }
}

}  // namespace
