#include "zelbase/geometry/Triangle.h"

#include <gtest/gtest.h>

#include <array>
#include <numbers>

#include "tests/geometry/EdgeValues.h"

namespace {

using Corners = std::array<Point, 3>;

Corners Of(const Triangle& t) { return {t.GetPointA(), t.GetPointB(), t.GetPointC()}; }

void ExpectCorners(const Triangle& t, const Point& a, const Point& b, const Point& c) {
  EXPECT_EQ(t.GetPointA(), a);
  EXPECT_EQ(t.GetPointB(), b);
  EXPECT_EQ(t.GetPointC(), c);
}

const Point kUntouched(70, 71, 72);

// Room for three, which shows whether it was written to.
struct Room {
  Room() { out[0] = out[1] = out[2] = Triangle(kUntouched, kUntouched, kUntouched); }
  bool IsUntouched(int i) const { return Of(out[i]) == Corners{kUntouched, kUntouched, kUntouched}; }
  Triangle out[3];
};

ANGULARPOINT Which(int value) { return static_cast<ANGULARPOINT>(value); }

TEST(Triangle, DefaultsToTheOriginThrice) { ExpectCorners(Triangle(), Point(), Point(), Point()); }

TEST(Triangle, KeepsItsCornersInOrder) {
  Triangle t(Point(1, 2, 3), Point(4, 5, 6), Point(7, 8, 9));
  const auto* words = reinterpret_cast<const double*>(&t);
  for (int i = 0; i < 9; ++i) EXPECT_EQ(words[i], i + 1);
  t.SetPointA(Point(1, 1, 1));
  t.SetPointB(Point(2, 2, 2));
  t.SetPointC(Point(3, 3, 3));
  ExpectCorners(t, Point(1, 1, 1), Point(2, 2, 2), Point(3, 3, 3));
  t.SetPoints(t.GetPointC(), t.GetPointA(), t.GetPointB());
  Point a, b, c;
  t.GetPoints(a, b, c);
  EXPECT_EQ((Corners{a, b, c}), (Corners{Point(3, 3, 3), Point(1, 1, 1), Point(2, 2, 2)}));
}

TEST(Triangle, HeightOfCornersTakesNoPartInItsMeasures) {
  const Triangle t(Point(0, 0, 100), Point(4, 0, -7), Point(0, 3, 2));
  EXPECT_EQ(t.GetDistanceAB(), 4);
  EXPECT_EQ(t.GetDistanceBC(), 5);
  EXPECT_EQ(t.GetDistanceCA(), 3);
  EXPECT_NEAR(t.GetAngleA(), std::numbers::pi / 2, 1e-15);
  EXPECT_NEAR(t.GetAngleB(), std::atan(3.0 / 4), 1e-15);
  EXPECT_NEAR(t.GetAngleC(), std::atan(4.0 / 3), 1e-15);
  EXPECT_NEAR(t.GetHeight(Which(0)), 2.4, 1e-14);  // twice the area by BC
  EXPECT_NEAR(t.GetHeight(Which(1)), 4, 1e-14);
  EXPECT_NEAR(t.GetHeight(Which(2)), 3, 1e-14);
}

TEST(Triangle, DistanceToTheMiddleOfTheOppositeSide) {
  const Triangle t(Point(0, 0, 9), Point(4, 0, 9), Point(0, 6, 9));
  EXPECT_EQ(t.GetDistToMiddleOfOppositeSide(Which(0)), std::sqrt(13.0));  // to (2, 3)
  EXPECT_EQ(t.GetDistToMiddleOfOppositeSide(Which(1)), 5);                // to (0, 3)
  EXPECT_EQ(t.GetDistToMiddleOfOppositeSide(Which(2)), std::sqrt(40.0));  // to (2, 0)
}

TEST(Triangle, AnyOtherCornerHasNoHeightAndNoMiddle) {
  const Triangle t(Point(0, 0, 0), Point(4, 0, 0), Point(0, 3, 0));
  for (const int value : {-1, 3, 4, 1000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_TRUE(Same(t.GetHeight(Which(value)), 0.0));
    EXPECT_TRUE(Same(t.GetDistToMiddleOfOppositeSide(Which(value)), 0.0));
  }
}

TEST(Triangle, ASideWithoutLengthGivesNanAtItsTwoCorners) {
  const Triangle t(Point(0, 0, 0), Point(0, 0, 5), Point(3, 4, 0));
  EXPECT_TRUE(std::isnan(t.GetAngleA()));
  EXPECT_TRUE(std::isnan(t.GetAngleB()));
  EXPECT_EQ(t.GetAngleC(), 0);
  const Triangle point(Point(1, 1, 0), Point(1, 1, 1), Point(1, 1, 2));
  EXPECT_TRUE(std::isnan(point.GetAngleA()) && std::isnan(point.GetAngleB()) && std::isnan(point.GetAngleC()));
}

TEST(Triangle, CornersOnOneLineGiveZeroAndPi) {
  const Triangle t(Point(0, 0, 0), Point(1, 0, 0), Point(3, 0, 0));
  EXPECT_EQ(t.GetAngleA(), 0);
  EXPECT_EQ(t.GetAngleB(), std::numbers::pi);
  EXPECT_EQ(t.GetAngleC(), 0);
}

TEST(Triangle, AnglesOfOneLineAreNotClampedAgainstRounding) {
  // Among these one quotient is rounded to beyond 1, and acos has no answer for it.
  int nans = 0;
  for (int i = 1; i < 1000; ++i) {
    const double x = i * 0.1;
    const double y = i * 0.3;
    const Triangle t(Point(0, 0, 0), Point(x, y, 0), Point(x * 2, y * 2, 0));
    const double quotient = (x * (x * 2) + y * (y * 2)) / (std::sqrt(x * x + y * y) * std::sqrt(x * 2 * (x * 2) + y * 2 * (y * 2)));
    EXPECT_EQ(std::isnan(t.GetAngleA()), quotient > 1) << i;
    nans += quotient > 1 ? 1 : 0;
  }
  EXPECT_GT(nans, 0);
}

TEST(Triangle, GetExtentsTakesTheCornersInWithoutResetting) {
  const Triangle t(Point(1, 9, 0), Point(5, 2, 0), Point(-3, 4, 0));
  Page page;
  EXPECT_TRUE(t.GetExtents(page));
  EXPECT_EQ(page, Page(-3, 2, 5, 9));
  page.Set(0, 0, 20, 3);
  EXPECT_TRUE(t.GetExtents(page));
  EXPECT_EQ(page, Page(-3, 0, 20, 9));
}

TEST(Triangle, WhollyAboveTheLevelIsUnchanged) {
  Triangle t(Point(1, 2, 3), Point(4, 5, 6), Point(7, 8, 9));
  const Corners before = Of(t);
  Room room;
  EXPECT_EQ(t.ZMinClip(2, room.out), 1);
  EXPECT_EQ(Of(t), before);
  EXPECT_EQ(Of(room.out[0]), before);
  EXPECT_TRUE(room.IsUntouched(1) && room.IsUntouched(2));
}

TEST(Triangle, OneCornerOnTheLevelAndTheOthersAboveIsUnchanged) {
  for (int k = 0; k < 3; ++k) {
    Corners corners = {Point(1, 2, 6), Point(4, 5, 6), Point(7, 8, 9)};
    corners[static_cast<std::size_t>(k)].z = 3;
    Triangle t(corners[0], corners[1], corners[2]);
    Room room;
    EXPECT_EQ(t.ZMinClip(3, room.out), 1);
    EXPECT_EQ(Of(t), corners);
    EXPECT_EQ(Of(room.out[0]), corners);
  }
}

TEST(Triangle, AllOnTheLevelIsUnchanged) {
  Triangle t(Point(1, 2, -0.0), Point(4, 5, 0), Point(7, 8, 0));
  Room room;
  EXPECT_EQ(t.ZMinClip(0, room.out), 1);
  EXPECT_TRUE(std::signbit(t.GetPointA().z));  // flattening would have written +0
}

TEST(Triangle, WhollyBelowTheLevelIsFlattenedInTheObjectToo) {
  Triangle t(Point(1, 2, 3), Point(4, 5, 6), Point(7, 8, 9));
  Room room;
  EXPECT_EQ(t.ZMinClip(10, room.out), 1);
  ExpectCorners(t, Point(1, 2, 10), Point(4, 5, 10), Point(7, 8, 10));
  EXPECT_EQ(Of(room.out[0]), Of(t));
  EXPECT_TRUE(room.IsUntouched(1) && room.IsUntouched(2));
}

TEST(Triangle, TheHighestCornerOnTheLevelAndTheOthersBelowIsFlattened) {
  Triangle t(Point(1, 2, 3), Point(4, 5, 9), Point(7, 8, 6));
  Room room;
  EXPECT_EQ(t.ZMinClip(9, room.out), 1);
  ExpectCorners(t, Point(1, 2, 9), Point(4, 5, 9), Point(7, 8, 9));
  EXPECT_EQ(Of(room.out[0]), Of(t));
}

// One corner on its own side, at the height 4 or -4 over a level of 0, the others at -4 or 4: cuts are in the
// middle.
TEST(Triangle, WithOneCornerAloneTheThreePiecesAreAsListed) {
  const Point a(0, 0, 0), b(8, 0, 0), c(0, 8, 0);
  const Point ab(4, 0, 0), bc(4, 4, 0), ca(0, 4, 0);
  const auto at = [](Point p, double z) {
    p.z = z;
    return p;
  };
  for (const double side : {4.0, -4.0}) {
    const double lone = side < 0 ? 0 : side;  // after lifting
    const double others = side < 0 ? -side : 0;
    Room room;
    Triangle t(at(a, side), at(b, -side), at(c, -side));
    EXPECT_EQ(t.ZMinClip(0, room.out), 3);
    ExpectCorners(t, at(a, lone), at(b, others), at(c, others));
    ExpectCorners(room.out[0], at(a, lone), ab, ca);
    ExpectCorners(room.out[1], at(b, others), at(c, others), ab);
    ExpectCorners(room.out[2], at(c, others), ca, ab);

    t.SetPoints(at(a, -side), at(b, side), at(c, -side));
    EXPECT_EQ(t.ZMinClip(0, room.out), 3);
    ExpectCorners(room.out[0], at(a, others), ab, at(c, others));
    ExpectCorners(room.out[1], at(b, lone), bc, ab);
    ExpectCorners(room.out[2], at(c, others), ab, bc);

    t.SetPoints(at(a, -side), at(b, -side), at(c, side));
    EXPECT_EQ(t.ZMinClip(0, room.out), 3);
    ExpectCorners(room.out[0], at(a, others), at(b, others), ca);
    ExpectCorners(room.out[1], at(b, others), bc, ca);
    ExpectCorners(room.out[2], at(c, lone), ca, bc);
  }
}

TEST(Triangle, AnEdgeThatBeginsOnTheLevelAndFallsIsCutExactlyAtItsCorner) {
  // Coordinates that do not come back from a sum: level corner A with B below, B with C below, C with A
  // below.
  const Point level(0.1, 0.7, 0.3);
  const Point below(7.3, -2.9, -5.1);
  const Point above(-3.7, 4.1, 9.3);
  Room room;
  Triangle t(level, below, above);
  EXPECT_EQ(t.ZMinClip(0.3, room.out), 3);
  EXPECT_EQ(room.out[0].GetPointB(), level);  // the crossing of A to B
  t.SetPoints(above, level, below);
  EXPECT_EQ(t.ZMinClip(0.3, room.out), 3);
  EXPECT_EQ(room.out[1].GetPointB(), level);  // of B to C
  t.SetPoints(below, above, level);
  EXPECT_EQ(t.ZMinClip(0.3, room.out), 3);
  EXPECT_EQ(room.out[2].GetPointB(), level);  // of C to A
}

TEST(Triangle, AnEdgeThatRisesToTheLevelIsCutAtItsCornerWithinRounding) {
  const Point level(0.1, 0.7, 0.3);
  const Point below(7.3, -2.9, -5.1);
  const Point above(-3.7, 4.1, 9.3);
  Room room;
  Triangle t(level, above, below);  // C to A rises to the level
  EXPECT_EQ(t.ZMinClip(0.3, room.out), 3);
  const Point crossing = room.out[2].GetPointB();
  EXPECT_NEAR(crossing.Dist3D(level), 0, 1e-14);
  // t = 1 gives C + (A - C), which is not A to the last bit.
  EXPECT_EQ(crossing, below + (level - below));
  EXPECT_NE(crossing, level);
}

TEST(Triangle, ZMinClipIntoItself) {
  Triangle own[3] = {Triangle(Point(0, 0, 4), Point(8, 0, -4), Point(0, 8, -4)), Triangle(), Triangle()};
  Triangle other = own[0];
  Room room;
  EXPECT_EQ(other.ZMinClip(0, room.out), 3);
  EXPECT_EQ(own[0].ZMinClip(0, own), 3);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Of(own[i]), Of(room.out[i])) << i;
}

TEST(Triangle, ZMinClipIntoNothingTouchesNothing) {
  Triangle t(Point(0, 0, -4), Point(8, 0, -4), Point(0, 8, -4));
  EXPECT_EQ(t.ZMinClip(0, nullptr), 0);
  EXPECT_EQ(t.GetPointA().z, -4);
}

TEST(Triangle, AHeightThatIsNoNumberIsCutQuietly) {
  // No corner is at or above the level, and not all are below: no edge is cut, and the origin stands for its
  // crossing.
  Triangle t(Point(1, 1, kNan), Point(2, 2, -5), Point(3, 3, -5));
  Room room;
  EXPECT_EQ(t.ZMinClip(0, room.out), 3);
  EXPECT_EQ(room.out[0].GetPointB(), Point(2, 2, 0));
  EXPECT_EQ(room.out[1].GetPointC(), Point());
  EXPECT_EQ(room.out[2].GetPointB(), Point());
  EXPECT_TRUE(std::isnan(t.GetPointA().z));
  // A level that is no number lifts nothing.
  Triangle u(Point(1, 1, 1), Point(2, 2, -5), Point(3, 3, -5));
  EXPECT_EQ(u.ZMinClip(kNan, room.out), 3);
  EXPECT_EQ(u.GetPointB().z, -5);
}

double Area(const Triangle& t) {
  const Point u = t.GetPointB() - t.GetPointA();
  const Point v = t.GetPointC() - t.GetPointA();
  return (u.x * v.y - u.y * v.x) / 2;
}

// The three lists of pieces, chosen by which corner is alone on its side.
TEST(TriangleLong, RandomCutsAgreeWithTheListsOfPieces) {
  EdgeValues random(7601);
  Tally tally({"unchanged", "flattened", "A alone", "B alone", "C alone", "on the level", "not a number"});
  for (int i = 0; i < kRandomRounds; ++i) {
    Corners p = {random.AnyPoint(), random.AnyPoint(), random.AnyPoint()};
    if (random.Flag()) p[2] = random.NearLine(p[0], p[1]);
    const double level = random.Flag() ? random.Near(p[static_cast<std::size_t>(random.Index(3))].z) : random.Coordinate();
    Triangle t(p[0], p[1], p[2]);
    Room room;
    const int count = t.ZMinClip(level, room.out);
    if (std::isnan(level + p[0].z) || std::isnan(level + p[1].z) || std::isnan(level + p[2].z)) {
      tally.Count("not a number");
      ASSERT_TRUE(count == 1 || count == 3);
      continue;
    }
    const bool up[3] = {p[0].z >= level, p[1].z >= level, p[2].z >= level};
    for (const Point& corner : p) {
      if (corner.z == level) tally.Count("on the level");
    }
    const int above = up[0] + up[1] + up[2];
    const bool noneAbove = !(p[0].z > level) && !(p[1].z > level) && !(p[2].z > level);
    if (above == 3 || noneAbove) {
      if (above != 3) {
        for (Point& corner : p) corner.z = level;
      }
      tally.Count(above == 3 ? "unchanged" : "flattened");
      ASSERT_EQ(count, 1);
      for (std::size_t k = 0; k < 3; ++k) {
        ASSERT_TRUE(Same(Of(t)[k], p[k]));
        ASSERT_TRUE(Same(Of(room.out[0])[k], p[k]));
      }
      ASSERT_TRUE(room.IsUntouched(1) && room.IsUntouched(2));
      continue;
    }
    ASSERT_EQ(count, 3);
    const auto cut = [&](std::size_t from, std::size_t to) {
      const double part = (level - p[from].z) / (p[to].z - p[from].z);
      return Point(p[from].x + (p[to].x - p[from].x) * part, p[from].y + (p[to].y - p[from].y) * part,
                   p[from].z + (p[to].z - p[from].z) * part);
    };
    const Point ab = cut(0, 1);
    const Point bc = cut(1, 2);
    const Point ca = cut(2, 0);
    for (Point& corner : p) corner.z = corner.z < level ? level : corner.z;
    const auto& [a, b, c] = p;
    std::array<Corners, 3> pieces;
    if (up[1] == up[2]) {
      tally.Count("A alone");
      pieces = {Corners{a, ab, ca}, Corners{b, c, ab}, Corners{c, ca, ab}};
    } else if (up[0] == up[2]) {
      tally.Count("B alone");
      pieces = {Corners{a, ab, c}, Corners{b, bc, ab}, Corners{c, ab, bc}};
    } else {
      tally.Count("C alone");
      pieces = {Corners{a, b, ca}, Corners{b, bc, ca}, Corners{c, ca, bc}};
    }
    for (std::size_t k = 0; k < 3; ++k) {
      ASSERT_TRUE(Same(Of(t)[k], p[k]));
      for (std::size_t m = 0; m < 3; ++m) ASSERT_TRUE(Same(Of(room.out[k])[m], pieces[k][m])) << k << ' ' << m;
    }
  }
}

TEST(Triangle, RandomPiecesCoverTheFacetAndStayAboveTheLevel) {
  EdgeValues random(7602);
  Tally tally({"one piece", "three pieces"});
  for (int i = 0; i < kRandomRounds; ++i) {
    const auto corner = [&] { return Point(random.Between(-100, 100), random.Between(-100, 100), random.Grid()); };
    Triangle t(corner(), corner(), corner());
    const double area = Area(t);
    const double level = random.Flag() ? random.Grid() : random.Between(-4, 4);
    Triangle out[3];
    const int count = t.ZMinClip(level, out);
    tally.Count(count == 1 ? "one piece" : "three pieces");
    double sum = 0;
    for (int k = 0; k < count; ++k) {
      sum += Area(out[k]);
      for (const Point& p : Of(out[k])) ASSERT_GE(p.z, level - 1e-12);
    }
    ASSERT_NEAR(sum, area, 1e-8);
  }
}

TEST(TriangleLong, RandomMeasuresAgreeWithASecondTranscription) {
  EdgeValues random(7603);
  Tally tally({"an angle is no number", "all angles are numbers"});
  for (int i = 0; i < kRandomRounds; ++i) {
    Corners p = {random.AnyPoint(), random.AnyPoint(), random.AnyPoint()};
    if (random.Index(5) == 0) p[1] = random.NearPoint(p[0]);
    if (random.Flag()) p[2] = random.NearLine(p[0], p[1]);
    const Triangle t(p[0], p[1], p[2]);
    double angle[3], side[3];  // side k runs from corner k to the next
    for (std::size_t k = 0; k < 3; ++k) {
      const Point& q = p[(k + 1) % 3];
      side[k] = std::sqrt((q.x - p[k].x) * (q.x - p[k].x) + (q.y - p[k].y) * (q.y - p[k].y));
    }
    for (std::size_t k = 0; k < 3; ++k) {
      const Point& q = p[(k + 1) % 3];
      const Point& r = p[(k + 2) % 3];
      const double dot = (q.x - p[k].x) * (r.x - p[k].x) + (q.y - p[k].y) * (r.y - p[k].y);
      angle[k] = std::acos(dot / (side[k] * side[(k + 2) % 3]));
    }
    const bool nan = std::isnan(angle[0]) || std::isnan(angle[1]) || std::isnan(angle[2]);
    tally.Count(nan ? "an angle is no number" : "all angles are numbers");
    ASSERT_TRUE(Same(t.GetDistanceAB(), side[0]) && Same(t.GetDistanceBC(), side[1]) && Same(t.GetDistanceCA(), side[2]));
    ASSERT_TRUE(Same(t.GetAngleA(), angle[0]) && Same(t.GetAngleB(), angle[1]) && Same(t.GetAngleC(), angle[2]));
    ASSERT_TRUE(Same(t.GetHeight(Which(0)), side[2] * std::sin(angle[2])));
    ASSERT_TRUE(Same(t.GetHeight(Which(1)), side[0] * std::sin(angle[0])));
    ASSERT_TRUE(Same(t.GetHeight(Which(2)), side[1] * std::sin(angle[1])));
    for (std::size_t k = 0; k < 3; ++k) {
      const Point& q = p[(k + 1) % 3];
      const Point& r = p[(k + 2) % 3];
      const double dx = p[k].x - (q.x + (r.x - q.x) * 0.5);
      const double dy = p[k].y - (q.y + (r.y - q.y) * 0.5);
      ASSERT_TRUE(Same(t.GetDistToMiddleOfOppositeSide(Which(static_cast<int>(k))), std::sqrt(dx * dx + dy * dy)));
    }
  }
}

}  // namespace
