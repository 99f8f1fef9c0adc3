#include "zelbase/geometry/PolyClipper.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "tests/geometry/EdgeValues.h"
#include "tests/geometry/LiteralPolyClipper.h"

namespace {

using Points = std::vector<Point>;

const Page kPage(0, 0, 10, 10);

Points PointsOf(const PolyClipper& clipper) {
  Points points;
  for (int i = 0; i < clipper.GetOutputSize(); ++i) points.push_back(clipper.GetOutputPoint(i));
  return points;
}

// The indexes at which a ring begins.
std::vector<int> StartsOf(const PolyClipper& clipper) {
  std::vector<int> starts;
  for (int i = 0; i < clipper.GetOutputSize(); ++i) {
    if (clipper.GetOutputFlag(i)) starts.push_back(i);
  }
  return starts;
}

PolyClipper Clipped(const Page& page, const Points& polygon) {
  PolyClipper clipper;
  clipper.SetPage(page);
  EXPECT_TRUE(clipper.FillPolygon(polygon));
  return clipper;
}

Points Flat(std::initializer_list<std::pair<double, double>> plane) {
  Points points;
  for (const auto& [x, y] : plane) points.emplace_back(x, y, 0);
  return points;
}

Points Square(double left, double bottom, double side) {
  return Flat({{left, bottom}, {left + side, bottom}, {left + side, bottom + side}, {left, bottom + side}});
}

void Feed(PolyClipper& clipper, const Points& polygon, bool close) {
  for (std::size_t i = 0; i < polygon.size(); ++i) EXPECT_TRUE(clipper.StoreOutputPoint(polygon[i], i == 0));
  if (close) clipper.StoreOutputPoint(polygon.front(), false);
}

// --- Whole, none, and the page itself ---

TEST(PolyClipper, NewOneHasTheInvalidPageAndNoOutput) {
  PolyClipper clipper;
  EXPECT_EQ(clipper.GetOutputSize(), 0);
  EXPECT_EQ(clipper.Area(), 0.0);
  EXPECT_TRUE(clipper.FillPolygon(Square(-5, -5, 10)));
  // With left 1 and right -1 nothing but what lies on x = 1 is kept.
  EXPECT_GT(clipper.GetOutputSize(), 0);
  for (const Point& point : PointsOf(clipper)) EXPECT_EQ(point.x, 1);
}

TEST(PolyClipper, PolygonInsideComesBackAsGivenAndClosed) {
  Points square = Square(2, 3, 4);
  square[1].z = 7;
  const PolyClipper clipper = Clipped(kPage, square);
  Points expected = square;
  expected.push_back(square.front());
  EXPECT_EQ(PointsOf(clipper), expected);
  EXPECT_EQ(StartsOf(clipper), std::vector<int>({0}));
  EXPECT_EQ(clipper.Area(), 16.0);
}

TEST(PolyClipper, ClosedPolygonIsNotClosedAgain) {
  Points square = Square(2, 3, 4);
  square.push_back(square.front());
  EXPECT_EQ(PointsOf(Clipped(kPage, square)), square);
}

TEST(PolyClipper, PolygonThatClosesAtAnotherHeightIsClosed) {
  Points square = Square(2, 3, 4);
  square.emplace_back(2, 3, 1);
  EXPECT_EQ(Clipped(kPage, square).GetOutputSize(), 6);
}

TEST(PolyClipper, PolygonOutsideGivesNothingAndTrue) {
  for (const Points& square : {Square(20, 2, 4), Square(-20, 2, 4), Square(2, 20, 4), Square(2, -20, 4), Square(20, 20, 4)}) {
    const PolyClipper clipper = Clipped(kPage, square);
    EXPECT_EQ(clipper.GetOutputSize(), 0);
    EXPECT_EQ(clipper.Area(), 0.0);
  }
}

TEST(PolyClipper, PageInsideAPolygonComesBackAsOneRing) {
  const PolyClipper clipper = Clipped(kPage, Flat({{-10, -10}, {20, -10}, {20, 20}, {-10, 20}}));
  EXPECT_EQ(PointsOf(clipper), Flat({{10, 0}, {10, 10}, {0, 10}, {0, 0}, {10, 0}}));
  EXPECT_EQ(StartsOf(clipper), std::vector<int>({0}));
  EXPECT_EQ(clipper.Area(), 100.0);
}

TEST(PolyClipper, CornerIsCutOff) {
  // A right triangle over the upper right corner; a square of 2 by 2 of it lies inside.
  const PolyClipper clipper = Clipped(kPage, Square(8, 8, 5));
  EXPECT_EQ(clipper.Area(), 4.0);
  EXPECT_EQ(StartsOf(clipper).size(), 1u);
  for (const Point& point : PointsOf(clipper)) EXPECT_TRUE(kPage.IsPointInPage(point));
}

// --- Rings ---

TEST(PolyClipper, UWithItsBaseOutsideGivesTwoRings) {
  // The base lies above the page, the arms reach down to y = 5.
  const Points u = Flat({{2, 5}, {4, 5}, {4, 12}, {6, 12}, {6, 5}, {8, 5}, {8, 14}, {2, 14}});
  const PolyClipper clipper = Clipped(kPage, u);
  EXPECT_EQ(StartsOf(clipper).size(), 2u);
  EXPECT_TRUE(clipper.GetOutputFlag(0));
  EXPECT_EQ(clipper.Area(), 20.0);
}

TEST(PolyClipper, UWithItsBaseInsideGivesOneRing) {
  const Points u = Flat({{2, 5}, {8, 5}, {8, 14}, {6, 14}, {6, 7}, {4, 7}, {4, 14}, {2, 14}});
  const PolyClipper clipper = Clipped(kPage, u);
  EXPECT_EQ(StartsOf(clipper), std::vector<int>({0}));
  // Two arms of 2 by 5 and the base of 2 by 2 between them.
  EXPECT_EQ(clipper.Area(), 24.0);
}

TEST(PolyClipper, CombGivesARingForEachTooth) {
  Points comb = Flat({{0.5, 20}});
  for (int tooth = 0; tooth < 5; ++tooth) {
    const double x = 0.5 + 2 * tooth;
    comb.emplace_back(x, 5, 0);
    comb.emplace_back(x + 1, 5, 0);
    comb.emplace_back(x + 1, 15, 0);
    comb.emplace_back(x + 2, 15, 0);
  }
  comb.emplace_back(10.5, 20, 0);
  const PolyClipper clipper = Clipped(kPage, comb);
  EXPECT_EQ(StartsOf(clipper).size(), 5u);
  EXPECT_EQ(clipper.Area(), 25.0);
}

TEST(PolyClipper, VertexOnTheSideWithItsNeighboursOutsideIsStoredFourTimes) {
  const PolyClipper clipper = Clipped(kPage, Flat({{5, 10}, {7, 15}, {3, 15}}));
  // Entering crossing, vertex, leaving crossing and its partner in one place; here the vertex comes first and
  // closes.
  const PolyClipper fromOutside = Clipped(kPage, Flat({{3, 15}, {5, 10}, {7, 15}}));
  EXPECT_EQ(PointsOf(fromOutside), Flat({{5, 10}, {5, 10}, {5, 10}, {5, 10}}));
  EXPECT_EQ(StartsOf(fromOutside), std::vector<int>({0}));
  EXPECT_EQ(fromOutside.Area(), 0.0);
  EXPECT_EQ(clipper.Area(), 0.0);
}

TEST(PolyClipper, EdgeAlongTheSideIsInside) {
  const Points square = Square(0, 0, 10);
  const PolyClipper clipper = Clipped(kPage, square);
  EXPECT_EQ(clipper.GetOutputSize(), 5);
  EXPECT_EQ(clipper.Area(), 100.0);
}

// --- Heights ---

TEST(PolyClipper, CrossingHalfwayHasTheMeanHeight) {
  const Points sloping = {Point(5, 2, 10), Point(15, 2, 20), Point(5, 8, 10)};
  bool found = false;
  for (const Point& point : PointsOf(Clipped(kPage, sloping))) {
    if (point != Point(10, 2, 15)) continue;
    found = true;
  }
  EXPECT_TRUE(found);
}

TEST(PolyClipper, EqualHeightsAreCopiedWithoutArithmetic) {
  // 0.1 + 0 / anything would do; but so must an infinite height, which arithmetic would turn into NaN.
  Points square = Square(5, 2, 10);
  for (Point& point : square) point.z = kInfinity;
  const PolyClipper clipper = Clipped(kPage, square);
  EXPECT_EQ(clipper.GetOutputSize(), 5);
  for (const Point& point : PointsOf(clipper)) EXPECT_EQ(point.z, kInfinity);
}

// --- What is refused ---

TEST(PolyClipper, EmptyPolygonIsRefusedAndLeavesTheOutput) {
  PolyClipper clipper = Clipped(kPage, Square(2, 3, 4));
  const Points before = PointsOf(clipper);
  const Point point;
  EXPECT_FALSE(clipper.FillPolygon(Points()));
  EXPECT_FALSE(clipper.FillPolygon(&point, 0));
  EXPECT_FALSE(clipper.FillPolygon(&point, -1));
  EXPECT_FALSE(clipper.FillPolygon(nullptr, 3));
  EXPECT_FALSE(clipper.FillPolygon(&point, 2147483648L));
  EXPECT_FALSE(clipper.FillPolygon(&point, LONG_MAX));
  EXPECT_FALSE(clipper.FillPolygon(&point, LONG_MIN));
  EXPECT_EQ(PointsOf(clipper), before);
  EXPECT_EQ(StartsOf(clipper), std::vector<int>({0}));
}

TEST(PolyClipper, NothingStoredIsRefused) {
  PolyClipper clipper;
  EXPECT_FALSE(clipper.DoPolyClip(true));
  EXPECT_FALSE(clipper.DoPolyClip(false));
}

TEST(PolyClipper, IndexOutOfRangeGivesTheDefaultPointAndFalse) {
  const PolyClipper clipper = Clipped(kPage, Square(2, 3, 4));
  for (const int index : {-1, 5, INT_MAX, INT_MIN}) {
    EXPECT_EQ(clipper.GetOutputPoint(index), Point());
    EXPECT_FALSE(clipper.GetOutputFlag(index));
  }
}

// --- Several polygons, fed by hand ---

TEST(PolyClipper, SeveralPolygonsAreClippedTogether) {
  PolyClipper clipper;
  clipper.SetPage(kPage);
  Feed(clipper, Square(-1, 2, 2), true);
  Feed(clipper, Square(4, 4, 1), true);
  Feed(clipper, Square(9, 9, 3), true);
  EXPECT_TRUE(clipper.DoPolyClip(false));
  EXPECT_EQ(StartsOf(clipper).size(), 3u);
  EXPECT_EQ(clipper.Area(), 2.0 + 1.0 + 1.0);
}

TEST(PolyClipper, UnclosedPolygonHasNoLastEdge) {
  PolyClipper clipper;
  clipper.SetPage(kPage);
  // The last edge, from (5, 8) back to (5, 2), would lie inside; the way over x = 12 does not.
  const Points open = Flat({{5, 2}, {12, 2}, {12, 8}, {5, 8}});
  Feed(clipper, open, false);
  EXPECT_TRUE(clipper.DoPolyClip(false));
  EXPECT_EQ(PointsOf(clipper), Flat({{5, 2}, {10, 2}, {10, 8}, {5, 8}}));

  PolyClipper closed;
  closed.SetPage(kPage);
  Feed(closed, open, false);
  EXPECT_TRUE(closed.DoPolyClip(true));
  EXPECT_EQ(PointsOf(closed), Flat({{5, 2}, {10, 2}, {10, 8}, {5, 8}, {5, 2}}));
}

TEST(PolyClipper, CloseLastTakesTheVeryFirstPointEvenForAnotherPolygon) {
  PolyClipper clipper;
  clipper.SetPage(kPage);
  Feed(clipper, Square(1, 1, 1), true);
  Feed(clipper, Square(4, 4, 1), true);
  EXPECT_TRUE(clipper.DoPolyClip(true));
  EXPECT_EQ(clipper.GetOutputSize(), 11);
  EXPECT_EQ(clipper.GetOutputPoint(10), Point(1, 1, 0));
  EXPECT_FALSE(clipper.GetOutputFlag(10));
}

TEST(PolyClipper, FirstPointBeginsAPolygonWhateverItsFlag) {
  PolyClipper clipper;
  clipper.SetPage(kPage);
  for (const Point& point : Square(1, 1, 1)) clipper.StoreOutputPoint(point, false);
  EXPECT_FALSE(clipper.GetOutputFlag(0));
  EXPECT_TRUE(clipper.DoPolyClip(false));
  EXPECT_EQ(StartsOf(clipper), std::vector<int>({0}));
}

TEST(PolyClipper, FillPolygonReplacesAndResetEmpties) {
  PolyClipper clipper = Clipped(kPage, Square(2, 3, 4));
  EXPECT_TRUE(clipper.FillPolygon(Square(1, 1, 1)));
  EXPECT_EQ(clipper.Area(), 1.0);
  clipper.ResetOutputList();
  EXPECT_EQ(clipper.GetOutputSize(), 0);
  EXPECT_FALSE(clipper.GetOutputFlag(0));
  EXPECT_FALSE(clipper.DoPolyClip(true));
}

TEST(PolyClipper, CopiesAreIndependent) {
  PolyClipper first = Clipped(kPage, Square(8, 8, 5));
  PolyClipper second = first;
  EXPECT_TRUE(first.FillPolygon(Square(1, 1, 1)));
  EXPECT_EQ(second.Area(), 4.0);
  second = first;
  first.ResetOutputList();
  EXPECT_EQ(second.Area(), 1.0);
  second.SetPage(Page(1, 1, 1.5, 1.5));
  EXPECT_TRUE(second.DoPolyClip(false));
  EXPECT_EQ(second.Area(), 0.25);
}

// --- Pairing and walking ---

TEST(PolyClipper, PolygonThatBeginsWithACrossingIsNotStoppedByItsOwnStart) {
  const PolyClipper clipper = Clipped(kPage, Flat({{-4, 5}, {4, 5}, {4, 8}, {-4, 8}}));
  EXPECT_EQ(PointsOf(clipper), Flat({{0, 5}, {4, 5}, {4, 8}, {0, 8}, {0, 5}}));
  EXPECT_EQ(StartsOf(clipper), std::vector<int>({0}));
}

TEST(PolyClipper, CrossingWithoutAPartnerDropsAllThatFollowsAndTheResultIsTrue) {
  PolyClipper clipper;
  clipper.SetPage(kPage);
  Feed(clipper, Flat({{5, 5}, {15, 5}}), false);
  Feed(clipper, Square(1, 1, 1), true);
  EXPECT_TRUE(clipper.DoPolyClip(false));
  EXPECT_EQ(PointsOf(clipper), Flat({{5, 5}}));
}

TEST(PolyClipper, TieThatPairsTwoOfAKindIsSwapped) {
  PolyClipper clipper;
  clipper.SetPage(kPage);
  // The upper one comes first, so that at (0, 5) its leaving crossing stands before the lower one's entering
  // crossing: sorted, two leaving and then two entering.
  Feed(clipper, Flat({{4, 5}, {-4, 5}, {-4, 8}, {4, 8}}), true);
  Feed(clipper, Flat({{4, 2}, {-4, 2}, {-4, 5}, {4, 5}}), true);
  EXPECT_TRUE(clipper.DoPolyClip(false));
  EXPECT_EQ(PointsOf(clipper), Flat({{4, 5}, {0, 5}, {0, 8}, {4, 8}, {4, 5}, {4, 2}, {0, 2}, {0, 5}, {4, 5}, {4, 2}}));
  EXPECT_EQ(StartsOf(clipper), std::vector<int>({0, 5}));
}

TEST(PolyClipper, TieOfTheLastTwoCrossingsIsNeverSwapped) {
  PolyClipper clipper;
  clipper.SetPage(kPage);
  // Crossings: entering at 2, and twice leaving at 5. The first that leaves goes with the one that enters,
  // and the other is alone.
  Feed(clipper, Flat({{-4, 2}, {4, 2}}), false);
  Feed(clipper, Flat({{4, 5}, {-4, 5}}), false);
  Feed(clipper, Flat({{6, 5}, {-6, 5}}), false);
  EXPECT_TRUE(clipper.DoPolyClip(false));
  EXPECT_EQ(PointsOf(clipper), Flat({{0, 2}, {4, 2}, {4, 5}, {0, 5}, {0, 2}, {6, 5}}));
  EXPECT_EQ(StartsOf(clipper), std::vector<int>({0, 2, 5}));
}

// --- Orientation of the page ---

TEST(PolyClipper, FillPolygonTakesLeftUnsortedAndDoPolyClipSortsIt) {
  const Page reversed(10, 0, 0, 10);
  EXPECT_EQ(Clipped(reversed, Square(2, 3, 4)).GetOutputSize(), 0);
  // Points on x = left survive.
  EXPECT_EQ(Clipped(reversed, Flat({{10, 2}, {10, 8}, {10, 5}})).GetOutputSize(), 4);

  PolyClipper clipper;
  clipper.SetPage(reversed);
  Feed(clipper, Square(2, 3, 4), true);
  EXPECT_TRUE(clipper.DoPolyClip(false));
  EXPECT_EQ(clipper.Area(), 16.0);
}

TEST(PolyClipper, ScreenPageClipsAsItsMirror) {
  EXPECT_EQ(PointsOf(Clipped(Page(0, 10, 10, 0), Square(8, 8, 5))), PointsOf(Clipped(kPage, Square(8, 8, 5))));
}

// --- Area ---

TEST(PolyClipper, AreaOfUnitSquaresIsTheirNumber) {
  PolyClipper clipper;
  Feed(clipper, Square(1e6, -1e6, 1), true);
  EXPECT_EQ(clipper.Area(), 1.0);
  Feed(clipper, Square(1e6 + 5, -1e6, 1), true);
  EXPECT_EQ(clipper.Area(), 2.0);
}

TEST(PolyClipper, AreaOfAFoldIsNothing) {
  PolyClipper clipper;
  Feed(clipper, Flat({{0, 0}, {5, 5}, {0, 0}}), false);
  EXPECT_EQ(clipper.Area(), 0.0);
}

TEST(PolyClipper, AreaOfTwoEdgesCountsBeforeAnotherRingOnly) {
  // An open triangle has two edges, and its half of the cross product is 50.
  const Points open = Flat({{0, 0}, {10, 0}, {10, 10}});
  PolyClipper last;
  Feed(last, open, false);
  EXPECT_EQ(last.Area(), 0.0);

  PolyClipper before;
  Feed(before, open, false);
  Feed(before, Square(20, 20, 1), true);
  EXPECT_EQ(before.Area(), 51.0);
}

TEST(PolyClipper, AreaOfASingleEdgeBetweenRingsIsNothing) {
  PolyClipper clipper;
  Feed(clipper, Square(0, 0, 1), true);
  Feed(clipper, Flat({{10, 0}, {10, 10}}), false);
  Feed(clipper, Square(20, 20, 1), true);
  EXPECT_EQ(clipper.Area(), 2.0);
}

// --- Against a literal transcription ---

enum class Kind { kGrid, kAnywhere, kNearSides, kThereAndBack, kWild, kEnd };

Point RandomPoint(EdgeValues& values, Kind kind) {
  const auto coordinate = [&]() -> double {
    if (kind == Kind::kGrid) return values.Index(9) - 2;
    if (kind == Kind::kAnywhere || kind == Kind::kThereAndBack) return values.Between(-5, 10);
    if (kind == Kind::kNearSides) return values.Index(3) == 0 ? values.Between(-5, 10) : values.Near(5.0 * values.Index(2));
    return values.Index(4) == 0 ? values.Wild() : values.Between(-5, 10);
  };
  return Point(coordinate(), coordinate(), kind == Kind::kWild ? values.Coordinate() : values.Grid());
}

Points RandomPolygon(EdgeValues& values, Kind kind, int most) {
  Points polygon;
  const int size = 1 + values.Index(most);
  for (int i = 0; i < size; ++i) {
    // Some points twice, some edges there and back.
    const bool again = !polygon.empty() && values.Index(12) == 0;
    polygon.push_back(again ? polygon[static_cast<std::size_t>(values.Index(i))] : RandomPoint(values, kind));
  }
  if (kind == Kind::kThereAndBack) {
    for (int i = size - 1; i >= 0; --i) {
      const Point& before = polygon[static_cast<std::size_t>(i)];
      const Point& after = polygon[static_cast<std::size_t>(i + 1 < size ? i + 1 : i)];
      polygon.push_back(values.Index(3) == 0 ? before : values.NearLine(before, after));
    }
  }
  if (values.Index(3) == 0) polygon.push_back(polygon.front());
  return polygon;
}

Page RandomPage(EdgeValues& values) {
  switch (values.Index(10)) {
    case 0: return Page(0, 5, 5, 0);
    case 1: return Page(5, 0, 0, 5);
    case 2: return Page(5, 5, 0, 0);
    case 3: return Page(2, 2, 2, 2);
    case 4: return Page(values.Wild(), values.Wild(), values.Wild(), values.Wild());
    default: return Page(0, 0, 5, 5);
  }
}

void CountReached(Tally& tally, const LiteralPolyClipper::Reached& reached) {
  if (reached.swaps > 0) tally.Count("sorted");
  if (reached.ties > 0) tally.Count("pairing mended");
  if (reached.jumps > 0) tally.Count("jump to a partner");
  if (reached.closings > 0) tally.Count("closed at a used partner");
  if (reached.dropped > 0) tally.Count("no partner, rest dropped");
  if (reached.sections > 0) tally.Count("ring begun at a pair");
  if (reached.stops > 0) tally.Count("stopped at the next polygon");
  if (reached.nowhere > 0) tally.Count("edge that is nowhere");
  if (reached.crossedStarts > 0) tally.Count("polygon begins with a crossing");
}

const std::vector<std::string> kBranches = {"sorted",
                                            "pairing mended",
                                            "jump to a partner",
                                            "closed at a used partner",
                                            "no partner, rest dropped",
                                            "ring begun at a pair",
                                            "stopped at the next polygon",
                                            "edge that is nowhere",
                                            "polygon begins with a crossing"};

// One random polygon on a random page. Gives what the transcription came by.
LiteralPolyClipper::Reached ExpectClippedAsLiteral(PolyClipper& clipper, EdgeValues& values) {
  const Kind kind = static_cast<Kind>(values.Index(static_cast<int>(Kind::kEnd)));
  const Points polygon = RandomPolygon(values, kind, 16);
  const Page page = RandomPage(values);
  LiteralPolyClipper literal(page);
  clipper.SetPage(page);
  EXPECT_EQ(clipper.FillPolygon(polygon), literal.FillPolygon(polygon));
  EXPECT_TRUE(SameRings(clipper, literal));
  return literal.reached;
}

TEST(PolyClipper, SomePolygonsAreClippedAsALiteralBubbleSortDoes) {
  EdgeValues values(7410);
  PolyClipper clipper;
  for (int round = 0; round < 3000 && !HasFailure(); ++round) ExpectClippedAsLiteral(clipper, values);
}

TEST(PolyClipperLong, OnePolygonIsClippedAsALiteralBubbleSortDoes) {
  EdgeValues values(7401);
  Tally tally(kBranches);
  PolyClipper clipper;
  for (int round = 0; round < kRandomRounds && !HasFailure(); ++round) CountReached(tally, ExpectClippedAsLiteral(clipper, values));
}

TEST(PolyClipperLong, SeveralPolygonsAreClippedAsALiteralBubbleSortDoes) {
  EdgeValues values(7402);
  Tally tally(kBranches);
  PolyClipper clipper;
  for (int round = 0; round < kRandomRounds; ++round) {
    const Page page = RandomPage(values);
    LiteralPolyClipper literal(page);
    clipper.SetPage(page);
    clipper.ResetOutputList();
    const Kind kind = static_cast<Kind>(values.Index(static_cast<int>(Kind::kEnd)));
    const int polygons = 1 + values.Index(4);
    for (int i = 0; i < polygons; ++i) {
      bool newRing = values.Index(20) != 0;
      for (const Point& point : RandomPolygon(values, kind, 8)) {
        clipper.StoreOutputPoint(point, newRing);
        literal.Store(point, newRing);
        newRing = false;
      }
    }
    const bool closeLast = values.Flag();
    ASSERT_EQ(clipper.DoPolyClip(closeLast), literal.DoPolyClip(closeLast));
    ASSERT_TRUE(SameRings(clipper, literal)) << "round " << round;
    CountReached(tally, literal.reached);
  }
}

TEST(PolyClipperLong, ManyTiedCrossingsAreSortedAsALiteralBubbleSortDoes) {
  EdgeValues values(7403);
  for (int round = 0; round < 300; ++round) {
    Points polygon;
    // To and fro over x = 0 at few heights, so that hundreds of crossings share a place.
    const int places = 1 + values.Index(6);
    for (int i = 0; i < 200; ++i) {
      const double y = values.Index(places);
      polygon.emplace_back(values.Flag() ? -1 : 1, values.Index(4) == 0 ? y + 0.5 : y, i);
    }
    if (values.Flag()) polygon[static_cast<std::size_t>(values.Index(200))].y = kNan;
    LiteralPolyClipper literal(kPage);
    literal.FillPolygon(polygon);
    const PolyClipper clipper = Clipped(kPage, polygon);
    ASSERT_TRUE(SameRings(clipper, literal)) << "round " << round;
  }
}

// --- What must hold of any clip ---

// A polygon around (5, 5) that does not cross itself, with no vertex on a side but by chance.
Points RandomStar(EdgeValues& values, int vertices) {
  Points star;
  for (int i = 0; i < vertices; ++i) {
    const double angle = (i + values.Between(0, 0.9)) * 6.283185307179586 / vertices;
    const double distance = values.Between(1, 10);
    star.emplace_back(5 + distance * std::cos(angle), 5 + distance * std::sin(angle), 0);
  }
  return star;
}

double ShoelaceArea(const Points& ring) {
  double sum = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Point& a = ring[i];
    const Point& b = ring[(i + 1) % ring.size()];
    sum += (a.x - 5) * (b.y - 5) - (b.x - 5) * (a.y - 5);
  }
  return std::fabs(sum) * 0.5;
}

TEST(PolyClipperLong, AreaInsidePlusAreaOutsideIsTheWhole) {
  EdgeValues values(7404);
  const double bounds[] = {-100, 0, 10, 100};
  PolyClipper clipper;
  for (int round = 0; round < kHeavyRounds; ++round) {
    const Points star = RandomStar(values, 3 + values.Index(40));
    double sum = 0;
    // The page and the eight that lie around it.
    for (int column = 0; column < 3; ++column) {
      for (int row = 0; row < 3; ++row) {
        clipper.SetPage(Page(bounds[column], bounds[row], bounds[column + 1], bounds[row + 1]));
        ASSERT_TRUE(clipper.FillPolygon(star));
        sum += clipper.Area();
      }
    }
    ASSERT_NEAR(sum, ShoelaceArea(star), 1e-9) << "round " << round;
  }
}

TEST(PolyClipperLong, EveryPointLiesInThePageAndOnThePlaneOfThePolygon) {
  EdgeValues values(7405);
  PolyClipper clipper;
  clipper.SetPage(kPage);
  const auto height = [](const Point& point) { return 3 * point.x - 2 * point.y + 7; };
  for (int round = 0; round < kRandomRounds; ++round) {
    Points star = RandomStar(values, 3 + values.Index(20));
    for (Point& point : star) point.z = height(point);
    ASSERT_TRUE(clipper.FillPolygon(star));
    for (const Point& point : PointsOf(clipper)) {
      ASSERT_TRUE(Page(-1e-12, -1e-12, 10 + 1e-12, 10 + 1e-12).IsPointInPage(point));
      ASSERT_NEAR(point.z, height(point), 1e-10);
    }
  }
}

TEST(PolyClipperLong, ClippingAgainChangesNothing) {
  EdgeValues values(7406);
  Tally tally({"exactly the same", "off a side by a rounding"});
  PolyClipper clipper;
  clipper.SetPage(kPage);
  for (int round = 0; round < kRandomRounds; ++round) {
    ASSERT_TRUE(clipper.FillPolygon(RandomStar(values, 3 + values.Index(20))));
    if (clipper.GetOutputSize() == 0) continue;
    const Points once = PointsOf(clipper);
    const std::vector<int> starts = StartsOf(clipper);
    const double area = clipper.Area();
    ASSERT_TRUE(clipper.DoPolyClip(false));
    const bool allInside = std::all_of(once.begin(), once.end(), [](const Point& p) { return kPage.IsPointInPage(p); });
    if (tally.Either(allInside, "exactly the same", "off a side by a rounding")) {
      ASSERT_EQ(PointsOf(clipper), once) << "round " << round;
      ASSERT_EQ(StartsOf(clipper), starts) << "round " << round;
    } else {
      ASSERT_NEAR(clipper.Area(), area, 1e-9) << "round " << round;
    }
  }
}

// Columns of random height side by side, from left to right or from the bottom to the top. Every crossing has
// few binary digits, and no vertex lies on a side.
Points RandomSkyline(EdgeValues& values) {
  Points skyline = Flat({{-2.5, -7.75}});
  double x = -2.5;
  while (x < 12.5) {
    const double y = values.Index(18) - 5.25;
    skyline.emplace_back(x, y, 0);
    x += 1 + values.Index(3);
    skyline.emplace_back(x, y, 0);
  }
  skyline.emplace_back(x, -7.75, 0);
  if (values.Flag()) {
    for (Point& point : skyline) std::swap(point.x, point.y);
  }
  return skyline;
}

TEST(PolyClipperLong, ShiftByAPowerOfTwoShiftsTheRingsExactly) {
  EdgeValues values(7407);
  const Point shift(1024, -4096, 0);
  Page shifted = kPage;
  shifted += shift;
  for (int round = 0; round < kRandomRounds; ++round) {
    const Points skyline = RandomSkyline(values);
    Points there;
    for (const Point& point : skyline) there.push_back(point + shift);
    const PolyClipper here = Clipped(kPage, skyline);
    const PolyClipper moved = Clipped(shifted, there);
    Points expected;
    for (const Point& point : PointsOf(here)) expected.push_back(point + shift);
    ASSERT_EQ(PointsOf(moved), expected) << "round " << round;
    ASSERT_EQ(StartsOf(moved), StartsOf(here)) << "round " << round;
    ASSERT_EQ(moved.Area(), here.Area()) << "round " << round;
  }
}

TEST(PolyClipperLong, ScaleByAPowerOfTwoScalesTheRingsExactly) {
  EdgeValues values(7408);
  const double scale = 64;
  for (int round = 0; round < kRandomRounds; ++round) {
    const Points polygon = RandomPolygon(values, Kind::kAnywhere, 16);
    Points larger;
    for (const Point& point : polygon) larger.push_back(point * scale);
    const PolyClipper here = Clipped(Page(0, 0, 5, 5), polygon);
    const PolyClipper scaled = Clipped(Page(0, 0, 5 * scale, 5 * scale), larger);
    Points expected;
    for (const Point& point : PointsOf(here)) expected.push_back(point * scale);
    ASSERT_EQ(PointsOf(scaled), expected) << "round " << round;
    ASSERT_EQ(scaled.Area(), here.Area() * scale * scale) << "round " << round;
  }
}

// --- What ought not to be given ---

TEST(PolyClipper, OnePointIsARingOfOnePoint) {
  EXPECT_EQ(PointsOf(Clipped(kPage, {Point(5, 5, 1)})), Points({Point(5, 5, 1)}));
  EXPECT_EQ(Clipped(kPage, {Point(15, 5, 1)}).GetOutputSize(), 0);
}

TEST(PolyClipper, PentagramEndsWithItsPointsInThePage) {
  Points star;
  for (int i = 0; i < 5; ++i) {
    const double angle = i * 2 * 1.2566370614359172;
    star.emplace_back(5 + 9 * std::sin(angle), 5 + 9 * std::cos(angle), 0);
  }
  const PolyClipper clipper = Clipped(kPage, star);
  EXPECT_GT(clipper.GetOutputSize(), 0);
  for (const Point& point : PointsOf(clipper)) EXPECT_TRUE(kPage.IsPointInPage(point));
}

TEST(PolyClipper, PointThatIsNotANumberIsLeftOutAndItsEdgesAreNotCut) {
  // From inside by NaN to outside: no crossing; back by a crossing on x = 10.
  const PolyClipper clipper = Clipped(kPage, {Point(2, 2, 0), Point(kNan, 3, 0), Point(15, 4, 0), Point(2, 4, 0), Point(2, 2, 0)});
  const Points points = PointsOf(clipper);
  ASSERT_FALSE(points.empty());
  for (const Point& point : points) EXPECT_FALSE(std::isnan(point.x));
}

TEST(PolyClipper, PolygonOfNothingButNanGivesNothing) {
  const Points polygon(100, Point(kNan, kNan, kNan));
  EXPECT_EQ(Clipped(kPage, polygon).GetOutputSize(), 0);
}

TEST(PolyClipper, SideThatIsNotANumberKeepsNothing) { EXPECT_EQ(Clipped(Page(kNan, 0, 10, 10), Square(2, 2, 2)).GetOutputSize(), 0); }

TEST(PolyClipperLong, OutputOfAHostilePolygonIsBounded) {
  // Over the side and, by NaN, back without a leaving crossing: entering crossings alone, so that each ring
  // would run on over all that follow.
  Points polygon;
  for (int i = 0; i < 20000; ++i) {
    polygon.emplace_back(-1, 1 + i * 1e-4, 0);
    polygon.emplace_back(1, 1 + i * 1e-4, 0);
    polygon.emplace_back(kNan, 1, 0);
  }
  const PolyClipper clipper = Clipped(kPage, polygon);
  const std::size_t bound = 16 * (polygon.size() + 1) + 1000000;
  EXPECT_GT(static_cast<std::size_t>(clipper.GetOutputSize()), polygon.size());
  EXPECT_LE(static_cast<std::size_t>(clipper.GetOutputSize()), bound + polygon.size());
}

TEST(PolyClipper, HundredThousandCrossingsInOnePlaceAreClipped) {
  Points polygon;
  for (int i = 0; i < 100000; ++i) polygon.emplace_back(i % 2 == 0 ? -1 : 1, 5, 0);
  const PolyClipper clipper = Clipped(kPage, polygon);
  EXPECT_GE(clipper.GetOutputSize(), 100000);
  EXPECT_EQ(clipper.Area(), 0.0);
}

TEST(PolyClipper, HundredThousandCrossingsInFallingOrderAreClipped) {
  // Teeth whose crossings come from the top to the bottom, each 0.5 * 2^-14 of 1 high inside.
  Points polygon;
  const double step = 1.0 / 16384;
  for (int i = 0; i < 100000; ++i) polygon.emplace_back((i / 2) % 2 == 0 ? 1 : -1, 9 - i * step, 0);
  polygon.emplace_back(-2, 9 - 100000 * step, 0);
  polygon.emplace_back(-2, 9, 0);
  const PolyClipper clipper = Clipped(kPage, polygon);
  EXPECT_EQ(StartsOf(clipper).size(), 25000u);
}

}  // namespace
