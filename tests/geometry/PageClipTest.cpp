// What a page leaves of rectangles, lines and circles; PageTest.cpp has the rest of the page.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "tests/geometry/EdgeValues.h"
#include "tests/geometry/LiteralSegments.h"
#include "zelbase/geometry/Angles.h"
#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/MathConstants.h"
#include "zelbase/geometry/Page.h"

namespace {

const Page kPage(0, 0, 10, 10);

Line Segment(double x1, double y1, double x2, double y2) { return Line(Point(x1, y1, 0), Point(x2, y2, 0)); }

Line Segment(double x1, double y1, double z1, double x2, double y2, double z2) { return Line(Point(x1, y1, z1), Point(x2, y2, z2)); }

bool SameLine(const Line& a, const Line& b) { return Same(a.start, b.start) && Same(a.end, b.end); }

// --- ClipRect ---

TEST(PageClipRect, CutsDownToTheCommonPart) {
  Page rect(-5, 2, 5, 20);
  EXPECT_TRUE(kPage.ClipRect(rect));
  EXPECT_EQ(rect, Page(0, 2, 5, 10));
  EXPECT_TRUE(kPage.ClipRect(rect));
  EXPECT_EQ(rect, Page(0, 2, 5, 10));
  rect.Set(-5, -5, 50, 50);
  EXPECT_TRUE(kPage.ClipRect(rect));
  EXPECT_EQ(rect, kPage);
}

TEST(PageClipRect, RectanglesThatOnlyTouchAreLeftAlone) {
  for (const Page& apart : {Page(10, 0, 20, 10), Page(-10, 0, 0, 10), Page(0, 10, 10, 20), Page(20, 20, 30, 30)}) {
    Page rect = apart;
    EXPECT_FALSE(kPage.ClipRect(rect));
    EXPECT_EQ(rect, apart);
  }
}

TEST(PageClipRect, NeverLooksAtOrientation) {
  Page screen(0, 10, 10, 0);
  EXPECT_FALSE(kPage.ClipRect(screen));
  Page rect(2, 2, 4, 4);
  EXPECT_FALSE(screen.ClipRect(rect));
  EXPECT_EQ(rect, Page(2, 2, 4, 4));
}

TEST(PageClipRect, AreasOfTheNineTilesAddUpToTheWhole) {
  EdgeValues values(7310);
  const double bounds[] = {-1000, 0, 10, 1000};
  for (int round = 0; round < kRandomRounds; ++round) {
    // Sixteenths, so that the sums are exact.
    const double x = (values.Index(400) - 200) / 16.0;
    const double y = (values.Index(400) - 200) / 16.0;
    const Page whole(x, y, x + values.Index(400) / 16.0, y + values.Index(400) / 16.0);
    double sum = 0;
    for (int tile = 0; tile < 9; ++tile) {
      const int column = tile / 3;
      const int row = tile % 3;
      Page part = whole;
      if (Page(bounds[column], bounds[row], bounds[column + 1], bounds[row + 1]).ClipRect(part)) sum += part.Area();
    }
    ASSERT_EQ(sum, whole.Area());
  }
}

// --- ClipLine: what is seen ---

TEST(PageClipLine, SegmentInsideIsUnchanged) {
  Line out;
  for (const Line& inside : {Segment(1, 2, 8, 9), Segment(5, 5, 5, 5), Segment(0, 0, 10, 10)}) {
    EXPECT_TRUE(kPage.ClipLine(inside, &out));
    EXPECT_TRUE(SameLine(out, inside));
  }
}

TEST(PageClipLine, SegmentAlongAnEdgeIsUnchanged) {
  Line out;
  for (const Line& edge : {Segment(0, 10, 10, 10), Segment(10, 0, 0, 0), Segment(0, 3, 0, 7), Segment(10, 7, 10, 3)}) {
    EXPECT_TRUE(kPage.ClipLine(edge, &out));
    EXPECT_TRUE(SameLine(out, edge));
  }
}

TEST(PageClipLine, SegmentAcrossIsCutAtBothEnds) {
  Line out;
  EXPECT_TRUE(kPage.ClipLine(Segment(-10, 5, 20, 5), &out));
  EXPECT_TRUE(SameLine(out, Segment(0, 5, 10, 5)));
  EXPECT_TRUE(kPage.ClipLine(Segment(5, 30, 5, -30), &out));
  EXPECT_TRUE(SameLine(out, Segment(5, 10, 5, 0)));
  EXPECT_TRUE(kPage.ClipLine(Segment(-5, 15, 15, -5), &out));
  EXPECT_TRUE(SameLine(out, Segment(0, 10, 10, 0)));
}

TEST(PageClipLine, SegmentBeyondOneEdgeLeavesTheOutputUntouched) {
  const Line before = Segment(1, 2, 3, 4, 5, 6);
  Line out = before;
  for (const Line& beyond : {Segment(-5, 0, -1, 10), Segment(11, 0, 15, 10), Segment(0, 11, 10, 15), Segment(0, -5, 10, -1)}) {
    EXPECT_FALSE(kPage.ClipLine(beyond, &out));
    EXPECT_TRUE(SameLine(out, before));
  }
}

TEST(PageClipLine, SegmentOutsideACornerIsNotSeenAlthoughNoEdgeParts) {
  // From left of the page to above it, past (0, 10).
  Line out;
  EXPECT_FALSE(kPage.ClipLine(Segment(-6, 8, 4, 18), &out));
}

TEST(PageClipLine, FalseMayLeaveAHalfClippedLine) {
  // The start was moved to x = 0 and lies outside still; the end was not looked at.
  Line out;
  EXPECT_FALSE(kPage.ClipLine(Segment(-6, 8, 4, 18), &out));
  EXPECT_TRUE(SameLine(out, Segment(0, 14, 4, 18)));
  Line line = Segment(-6, 8, 4, 18);
  EXPECT_FALSE(kPage.ClipLine(line));
  EXPECT_TRUE(SameLine(line, Segment(0, 14, 4, 18)));
}

// To an end at infinity: the start is moved to x = 0 with its y; the end's y is then 0 times infinity.
TEST(PageClipLine, WhereTheSecondEndFailsTheFirstStaysClipped) {
  Line out;
  EXPECT_FALSE(kPage.ClipLine(Segment(-5, 5, std::numeric_limits<double>::infinity(), 5), &out));
  EXPECT_EQ(out.start, Point(0, 5, 0));
  EXPECT_EQ(out.end.x, 10.0);
  EXPECT_TRUE(std::isnan(out.end.y));
}

TEST(PageClipLine, EdgesAreTriedUpperYFirst) {
  // Above and to the right: the end is moved to y = 10 first, to x = 14, and only then to x = 10.
  Line out;
  EXPECT_TRUE(kPage.ClipLine(Segment(0, 3, 20, 13), &out));
  EXPECT_TRUE(SameLine(out, Segment(0, 3, 10, 8)));
}

TEST(PageClipLine, CodeIsNotFoundAnewSoThatAnEdgeMayBeShownForALineThatMissesThePage) {
  // Below and to the right of the page, towards a point to its left on the line of the bottom. The start is
  // moved to y = 0, which is that point, and then, as it was to the right once, along the bottom to x = 10.
  Line out;
  EXPECT_TRUE(kPage.ClipLine(Segment(15, -5, -5, 0), &out));
  EXPECT_TRUE(SameLine(out, Segment(10, 0, 0, 0)));
}

TEST(PageClipLine, PageOfAnyOrientationClipsTheSame) {
  const Line line = Segment(-5, 3, 1, 12, 17, 2);
  Line expected;
  EXPECT_TRUE(kPage.ClipLine(line, &expected));
  for (const Page& page : {Page(0, 10, 10, 0), Page(10, 0, 0, 10), Page(10, 10, 0, 0)}) {
    Line out;
    EXPECT_TRUE(page.ClipLine(line, &out));
    EXPECT_TRUE(SameLine(out, expected));
  }
}

TEST(PageClipLine, NullGivesFalse) { EXPECT_FALSE(kPage.ClipLine(Segment(1, 1, 2, 2), nullptr)); }

TEST(PageClipLine, NanIsBeyondNoEdgeAndIsSeen) {
  Line out;
  EXPECT_TRUE(kPage.ClipLine(Segment(kNan, kNan, kNan, kNan), &out));
  EXPECT_TRUE(std::isnan(out.start.x));
  EXPECT_TRUE(kPage.ClipLine(Segment(kNan, 5, 5, 5), &out));
}

// --- ClipLine: heights ---

TEST(PageClipLine, HeightsOfExactlyZeroStay) {
  Line out;
  EXPECT_TRUE(kPage.ClipLine(Segment(-7, 3, 17, 8), &out));
  EXPECT_EQ(out.start.z, 0.0);
  EXPECT_EQ(out.end.z, 0.0);
}

TEST(PageClipLine, HeightOfACutEndIsInterpolated) {
  Line out;
  EXPECT_TRUE(kPage.ClipLine(Segment(-5, 5, 10, 5, 5, 20), &out));
  EXPECT_TRUE(SameLine(out, Segment(0, 5, 15, 5, 5, 20)));
  EXPECT_TRUE(kPage.ClipLine(Segment(5, 5, 10, 5, 15, 20), &out));
  EXPECT_TRUE(SameLine(out, Segment(5, 5, 10, 5, 10, 15)));
}

TEST(PageClipLine, HeightsOfAPlumbLineAreCopied) {
  Line out;
  EXPECT_TRUE(kPage.ClipLine(Segment(5, 5, 10, 5, 5, 20), &out));
  EXPECT_TRUE(SameLine(out, Segment(5, 5, 10, 5, 5, 20)));
}

TEST(PageClipLine, InPlaceACutEndKeepsItsOldHeight) {
  Line line = Segment(-5, 5, 10, 5, 5, 20);
  EXPECT_TRUE(kPage.ClipLine(line));
  EXPECT_TRUE(SameLine(line, Segment(0, 5, 10, 5, 5, 20)));
}

TEST(PageClipLine, InPlaceTheSecondHeightIsTheFirstAndTheirDifference) {
  // 1e17 + (1 - 1e17) is 0: the 1 is lost.
  Line line = Segment(2, 5, 1e17, 4, 5, 1);
  EXPECT_TRUE(kPage.ClipLine(line));
  EXPECT_EQ(line.end.z, 0.0);
}

TEST(PageClipLine, OutputThatIsTheInputIsTheFormInPlace) {
  Line line = Segment(-5, 5, 10, 15, 15, 20);
  Line same = line;
  EXPECT_TRUE(kPage.ClipLine(line));
  EXPECT_TRUE(kPage.ClipLine(same, &same));
  EXPECT_TRUE(SameLine(line, same));
}

// --- ClipLine: at random ---

bool LiteralClipLine(const Page& page, const Line& in, Line* out) {
  LiteralSegment<double> clipped = Literal(*out);
  const bool seen = LiteralClipLine(Literal(page), Literal(in), &clipped);
  *out = Plain(clipped);
  return seen;
}

// As the form in place does: what is read is what has been written.
bool LiteralClipLineInPlace(const Page& page, Line* line) {
  LiteralSegment<double> same = Literal(*line);
  const bool seen = LiteralClipLine(Literal(page), same, &same);
  *line = Plain(same);
  return seen;
}

// Ends at the page's corners and edges, near to them, beyond them, and at times wild.
Point RandomEnd(EdgeValues& values, const Page& page) {
  const auto coordinate = [&](double a, double b) {
    switch (values.Index(8)) {
      case 0: return a;
      case 1: return values.Near(values.Flag() ? a : b);
      case 2: return values.Coordinate();
      case 3: return b;
      default: return values.Between(-15, 15);
    }
  };
  return Point(coordinate(page.left, page.right), coordinate(page.bottom, page.top), values.Flag() ? 0 : values.Grid());
}

// Half of them nearly along an edge or a diagonal of the page, either way.
Line RandomSegment(EdgeValues& values, const Page& page) {
  if (values.Flag()) return Line(RandomEnd(values, page), RandomEnd(values, page));
  const Point corners[] = {page.BottomLeft(), Point(page.left, page.top, 0), page.TopRight(), Point(page.right, page.bottom, 0)};
  const int corner = values.Index(4);
  auto [start, end] = values.Related(corners[corner], corners[(corner + 1 + values.Index(3)) % 4]);
  start.z = values.Flag() ? 0 : values.Grid();
  end.z = values.Flag() ? 0 : values.Grid();
  return Line(start, end);
}

TEST(PageClipLineLong, RandomLinesAgreeWithASecondTranscription) {
  EdgeValues values(7311);
  Tally tally({"beyond one edge", "outside a corner", "inside", "start cut", "end cut", "both cut", "in place"});
  for (int round = 0; round < kRandomRounds; ++round) {
    const Page page = values.Index(4) == 0 ? Page(values.Coordinate(), values.Coordinate(), values.Coordinate(), values.Coordinate())
                                           : Page(values.Grid(), values.Grid(), values.Grid(), values.Grid());
    const Line in = RandomSegment(values, page);
    const Line before = Segment(7, 7, 7, 8, 8, 8);
    Line out = before;
    Line expected = before;
    const bool seen = page.ClipLine(in, &out);
    ASSERT_EQ(seen, LiteralClipLine(page, in, &expected));
    ASSERT_TRUE(SameLine(out, expected)) << "round " << round;
    const bool startCut = !Same(Point(in.start.x, in.start.y, 0), Point(out.start.x, out.start.y, 0));
    const bool endCut = !Same(Point(in.end.x, in.end.y, 0), Point(out.end.x, out.end.y, 0));
    tally.Count(!seen      ? SameLine(out, before) ? "beyond one edge" : "outside a corner"
                : startCut ? endCut ? "both cut" : "start cut"
                : endCut   ? "end cut"
                           : "inside");

    Line line = in;
    Line same = in;
    ASSERT_EQ(page.ClipLine(line), LiteralClipLineInPlace(page, &same));
    ASSERT_TRUE(SameLine(line, same)) << "round " << round;
    tally.Count("in place");
  }
}

// By the two parameters of the line, in extended precision.
bool VisiblePart(const Page& page, const Line& line, long double& from, long double& to) {
  from = 0;
  to = 1;
  const auto cut = [&](long double start, long double way, long double low, long double high) {
    if (way == 0) {
      if (start < low || start > high) to = -1;
      return;
    }
    const long double a = (low - start) / way;
    const long double b = (high - start) / way;
    from = std::max(from, std::min(a, b));
    to = std::min(to, std::max(a, b));
  };
  cut(line.start.x, static_cast<long double>(line.end.x) - line.start.x, page.left, page.right);
  cut(line.start.y, static_cast<long double>(line.end.y) - line.start.y, page.bottom, page.top);
  return from <= to;
}

TEST(PageClipLine, VisiblePartIsThatOfTheParametersOfTheLine) {
  EdgeValues values(7312);
  Tally tally({"seen", "not seen"});
  for (int round = 0; round < kRandomRounds; ++round) {
    const auto end = [&] { return Point(values.Between(-10, 20), values.Between(-10, 20), values.Grid()); };
    const Line in(end(), end());
    long double from = 0;
    long double to = 0;
    const bool visible = VisiblePart(kPage, in, from, to);
    if (std::fabs(static_cast<double>(to - from)) < 1e-12) continue;  // too close to call
    Line out;
    ASSERT_EQ(kPage.ClipLine(in, &out), tally.Either(visible, "seen", "not seen")) << "round " << round;
    if (!visible) continue;
    const Point way = in.end - in.start;
    const auto at = [&](long double t) { return in.start + way * static_cast<double>(t); };
    ASSERT_LT(out.start.Dist3D(at(from)), 1e-11) << "round " << round;
    ASSERT_LT(out.end.Dist3D(at(to)), 1e-11) << "round " << round;
  }
}

TEST(PageClipLine, LengthsInTheNineTilesAddUpToTheWhole) {
  EdgeValues values(7313);
  const double bounds[] = {-100, 0, 10, 100};
  for (int round = 0; round < kRandomRounds; ++round) {
    const Line line = Segment(values.Between(-10, 20), values.Between(-10, 20), values.Between(-10, 20), values.Between(-10, 20));
    double sum = 0;
    for (int tile = 0; tile < 9; ++tile) {
      const int column = tile / 3;
      const int row = tile % 3;
      Line out;
      const Page page(bounds[column], bounds[row], bounds[column + 1], bounds[row + 1]);
      if (page.ClipLine(line, &out)) sum += out.start.Dist2D(out.end);
    }
    ASSERT_NEAR(sum, line.start.Dist2D(line.end), 1e-10) << "round " << round;
  }
}

TEST(PageClipLine, ClippingAgainChangesNothingInThePlane) {
  EdgeValues values(7314);
  for (int round = 0; round < kRandomRounds; ++round) {
    const Line line = Segment(values.Between(-10, 20), values.Between(-10, 20), values.Between(-10, 20), values.Between(-10, 20));
    Line once;
    if (!kPage.ClipLine(line, &once)) continue;
    Line twice;
    ASSERT_TRUE(kPage.ClipLine(once, &twice)) << "round " << round;
    ASSERT_TRUE(SameLine(twice, once)) << "round " << round;
  }
}

TEST(PageClipLine, ShiftByAPowerOfTwoIsExactAndSoIsAScale) {
  EdgeValues values(7315);
  const Point shift(4096, -65536, 0);
  Page shifted = kPage;
  shifted += shift;
  const double scale = 1024;
  const Page scaled(0, 0, 10 * scale, 10 * scale);
  for (int round = 0; round < kRandomRounds; ++round) {
    // A slope of a power of two through sixteenths, so that every crossing has few binary digits.
    const Point start((values.Index(480) - 160) / 16.0, (values.Index(480) - 160) / 16.0, 0);
    const double length = values.Index(20) - 10;
    const Point way(length, std::ldexp(values.Flag() ? length : -length, values.Index(3) - 1), 0);
    const Line line(start, start + way);
    Line out;
    Line there;
    const bool seen = kPage.ClipLine(line, &out);
    ASSERT_EQ(shifted.ClipLine(Line(line.start + shift, line.end + shift), &there), seen) << "round " << round;
    if (seen) {
      ASSERT_TRUE(SameLine(there, Line(out.start + shift, out.end + shift))) << "round " << round;
    }

    const Line any = Segment(values.Between(-10, 20), values.Between(-10, 20), values.Between(-10, 20), values.Between(-10, 20));
    const bool anySeen = kPage.ClipLine(any, &out);
    ASSERT_EQ(scaled.ClipLine(Line(any.start * scale, any.end * scale), &there), anySeen) << "round " << round;
    if (anySeen) {
      ASSERT_TRUE(SameLine(there, Line(out.start * scale, out.end * scale))) << "round " << round;
    }
  }
}

// --- ClipCircle ---

struct Arcs {
  bool result = false;
  std::vector<std::pair<double, double>> pieces;
};

// Hands the page arrays for 5, with a guard behind each.
Arcs ClipCircle(const Page& page, const Point& centre, double radius, double start, double end) {
  constexpr double kGuard = 12345;
  double starts[6];
  double ends[6];
  std::fill_n(starts, 6, kGuard);
  std::fill_n(ends, 6, kGuard);
  int count = -1;
  Arcs arcs;
  arcs.result = page.ClipCircle(centre, radius, start, end, count, starts, ends);
  EXPECT_GE(count, 0);
  EXPECT_LE(count, 5);
  for (int i = 0; i < 6; ++i) {
    if (i < count) {
      arcs.pieces.emplace_back(starts[i], ends[i]);
    } else {
      EXPECT_EQ(starts[i], kGuard);
      EXPECT_EQ(ends[i], kGuard);
    }
  }
  return arcs;
}

void ExpectPieces(const Arcs& arcs, const std::vector<std::pair<double, double>>& expected) {
  EXPECT_TRUE(arcs.result);
  ASSERT_EQ(arcs.pieces.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_NEAR(arcs.pieces[i].first, expected[i].first, 1e-9) << i;
    EXPECT_NEAR(arcs.pieces[i].second, expected[i].second, 1e-9) << i;
  }
}

// A circle of radius 5 around the middle of this page crosses its edges at 3 and 4: at the bearing b of (3,
// 4), at 90 - b, and so on round. Between b and 90 - b it runs through the corner, which lies outside it.
const Page kMiddle(-4, -4, 4, 4);
constexpr double kThreeFour = 36.86989764584402;  // atan(3 / 4) in degrees

TEST(PageClipCircle, CircleInsideIsOnePieceFromNorthToNorth) {
  const Arcs arcs = ClipCircle(kPage, Point(5, 5, 0), 2, 0, 360);
  EXPECT_TRUE(arcs.result);
  ASSERT_EQ(arcs.pieces.size(), 1u);
  EXPECT_EQ(arcs.pieces[0].first, 0.0);
  EXPECT_EQ(arcs.pieces[0].second, 0.0);
}

TEST(PageClipCircle, ArcInsideComesBack) {
  ExpectPieces(ClipCircle(kPage, Point(5, 5, 0), 2, 10, 50), {{10, 50}});
  ExpectPieces(ClipCircle(kPage, Point(5, 5, 0), -2, 350, 20), {{350, 20}});
}

TEST(PageClipCircle, WithoutCrossingsTheEndStaysAsGivenAndComesBackByWayOfAFullTurn) {
  const double end = 50.123456789;
  const Arcs arcs = ClipCircle(kPage, Point(5, 5, 0), 2, 10, end);
  ASSERT_EQ(arcs.pieces.size(), 1u);
  EXPECT_EQ(arcs.pieces[0].second, TrimAngle(end + 360.0));
}

TEST(PageClipCircle, CircleAroundThePageGivesNoPieceAndTrue) {
  ExpectPieces(ClipCircle(kPage, Point(5, 5, 0), 100, 0, 360), {});
  ExpectPieces(ClipCircle(kPage, Point(50, 50, 0), 1, 0, 360), {});
}

TEST(PageClipCircle, RadiusBelowTheSmallestIsRefused) {
  EXPECT_FALSE(ClipCircle(kPage, Point(5, 5, 0), 0.9e-5, 0, 360).result);
  EXPECT_FALSE(ClipCircle(kPage, Point(5, 5, 0), 0, 0, 360).result);
  EXPECT_TRUE(ClipCircle(kPage, Point(5, 5, 0), 1e-5, 0, 360).result);
  EXPECT_TRUE(ClipCircle(kPage, Point(5, 5, 0), -1e-5, 0, 360).result);
}

TEST(PageClipCircle, NullArraysAreRefused) {
  double room[5];
  int count = 7;
  EXPECT_FALSE(kPage.ClipCircle(Point(5, 5, 0), 2, 0, 360, count, nullptr, room));
  EXPECT_EQ(count, 0);
  count = 7;
  EXPECT_FALSE(kPage.ClipCircle(Point(5, 5, 0), 2, 0, 360, count, room, nullptr));
  EXPECT_EQ(count, 0);
}

TEST(PageClipCircle, CircleOverAllFourEdgesIsFourPiecesInItsCorners) {
  const double b = kThreeFour;
  ExpectPieces(ClipCircle(kMiddle, Point(), 5, 0, 360), {{b, 90 - b}, {90 + b, 180 - b}, {180 + b, 270 - b}, {270 + b, 360 - b}});
}

TEST(PageClipCircle, CircleThatBeginsInACornerIsFivePieces) {
  const double b = kThreeFour;
  ExpectPieces(ClipCircle(kMiddle, Point(), 5, 45, 45), {{45, 90 - b}, {90 + b, 180 - b}, {180 + b, 270 - b}, {270 + b, 360 - b}, {b, 45}});
}

TEST(PageClipCircle, EqualBearingsAreAFullCircle) {
  ExpectPieces(ClipCircle(kMiddle, Point(2, 2, 0), 4, 200, 200), ClipCircle(kMiddle, Point(2, 2, 0), 4, 200, 560).pieces);
  EXPECT_FALSE(ClipCircle(kMiddle, Point(2, 2, 0), 4, 200, 200).pieces.empty());
}

TEST(PageClipCircle, ArcsAreCutBetweenTheirEnds) {
  const double b = kThreeFour;
  ExpectPieces(ClipCircle(kMiddle, Point(), 5, 0, 45), {{b, 45}});
  ExpectPieces(ClipCircle(kMiddle, Point(), 5, 0, 90), {{b, 90 - b}});
  ExpectPieces(ClipCircle(kMiddle, Point(), 5, 45, 90), {{45, 90 - b}});
  ExpectPieces(ClipCircle(kMiddle, Point(), 5, 50, 40), ClipCircle(kMiddle, Point(), 5, 410, -320).pieces);
  // Past north: out of the upper left corner and into the upper right one.
  ExpectPieces(ClipCircle(kMiddle, Point(), 5, 315, 45), {{315, 360 - b}, {b, 45}});
}

TEST(PageClipCircle, EndAtNorthIsThreeHundredAndSixty) {
  const double b = kThreeFour;
  ExpectPieces(ClipCircle(kMiddle, Point(), 5, 315, 0), {{315, 360 - b}});
  ExpectPieces(ClipCircle(kMiddle, Point(), 5, 315, 360), {{315, 360 - b}});
}

TEST(PageClipCircle, AWholeCircleFromNorthOnTheEdgeIsTheHalfWithin) {
  const Page east(0, -20, 20, 20);
  ExpectPieces(ClipCircle(east, Point(), 10, 0, 360), {{0, 180}});
  ExpectPieces(ClipCircle(east, Point(), 10, 0, 0), {{0, 180}});
}

TEST(PageClipCircle, TangentEdgeIsNoCrossing) {
  // Touches the right edge from inside.
  ExpectPieces(ClipCircle(kMiddle, Point(2, 0, 0), 2, 10, 300), {{10, 300}});
  // And from outside, its start being on the edge: it is inside, and nothing ends it.
  ExpectPieces(ClipCircle(kMiddle, Point(6, 0, 0), 2, 0, 180), {});
}

TEST(PageClipCircle, StartOnAnEdgeIsJudgedByWhereTheArcGoes) {
  const double b = std::atan2(3.0, 4.0) / D_TO_R;
  // On the top edge, to the right of the centre: down into the page.
  ExpectPieces(ClipCircle(kMiddle, Point(), 5, b, 90), {{kThreeFour, 90 - kThreeFour}});
  // On the right edge, above the centre: out of the page; it comes back below.
  const double right = std::atan2(4.0, 3.0) / D_TO_R;
  ExpectPieces(ClipCircle(kMiddle, Point(), 5, right, 135), {{90 + kThreeFour, 135}});
  // On the bottom edge, to the right of the centre: out.
  const double bottom = std::atan2(3.0, -4.0) / D_TO_R;
  ExpectPieces(ClipCircle(kMiddle, Point(), 5, bottom, 180), {});
  // On the left edge, above the centre: in.
  const double left = TrimAngle(std::atan2(-4.0, 3.0) / D_TO_R);
  ExpectPieces(ClipCircle(kMiddle, Point(), 5, left, 315), {{270 + kThreeFour, 315}});
  // At the leftmost point of the circle, which touches the left edge: up and into the page.
  ExpectPieces(ClipCircle(Page(0, -20, 20, 2000), Point(5, 1005, 0), 5, 270, 90), {{270, 90}});
  // The same point where the bottom edge goes through the centre, and so crosses the circle in the page's corner; so far up that the
  // start lies at the very height of the centre.
  const double far = 1e12;
  const double leftmost = TrimAngle(std::atan2(-5.0, 0.0) / D_TO_R);
  ExpectPieces(ClipCircle(Page(0, far, 20, far + 2000), Point(5, far, 0), 5, leftmost, 80), {{leftmost, 80}});
}

// A corner of the page lies on the circle, and rounding leaves one of its two edges beside it. One crossing is enough for the end to
// be turned into the circle: it is then in front of the crossing, and nothing is left.
TEST(PageClipCircle, AnEndBeyondTheCircleIsTurnedIntoItFromOneCrossingOn) {
  const double x = 2.0 / 7.0;
  const double y = std::sqrt(1.0 - x * x);
  ASSERT_LT(std::sqrt(1.0 - y * y), x);
  ASSERT_GE(std::sqrt(1.0 - x * x), y);
  ExpectPieces(ClipCircle(Page(x, y, 10, 10), Point(), 1, 0, 360 + 10), {});
}

TEST(PageClipCircle, FullCircleThatBeginsOnACrossingGivesAnEmptyPieceAndThenThoseOutside) {
  const double b = std::atan2(3.0, 4.0) / D_TO_R;
  const Arcs arcs = ClipCircle(kMiddle, Point(), 5, b, b);
  const double t = kThreeFour;
  ExpectPieces(arcs, {{t, t}, {90 - t, 90 + t}, {180 - t, 180 + t}, {270 - t, 270 + t}, {360 - t, t}});
  EXPECT_EQ(arcs.pieces[0].first, arcs.pieces[0].second);
}

TEST(PageClipCircle, ScreenPageGivesTheBearingsOfTheMirroredPicture) {
  const Page screen(-4, 3, 5, -6);
  const Page mirrored(-4, -3, 5, 6);
  for (const double start : {0.0, 77.0, 200.0}) {
    const Arcs onScreen = ClipCircle(screen, Point(1, 2, 0), 4.5, start, 300);
    const Arcs inMirror = ClipCircle(mirrored, Point(1, -2, 0), 4.5, start, 300);
    EXPECT_FALSE(onScreen.pieces.empty());
    EXPECT_EQ(onScreen.pieces, inMirror.pieces);
  }
  // And over x.
  EXPECT_EQ(ClipCircle(Page(5, -3, -4, 6), Point(1, 2, 0), 4.5, 10, 300).pieces,
            ClipCircle(Page(-5, -3, 4, 6), Point(-1, 2, 0), 4.5, 10, 300).pieces);
}

TEST(PageClipCircle, WhatIsNotFiniteIsQuiet) {
  for (const double wild : {kNan, kInfinity, -kInfinity, kLargest, kSmallest}) {
    ClipCircle(kMiddle, Point(wild, 0, 0), 5, 0, 360);
    ClipCircle(kMiddle, Point(0, wild, 0), 5, 0, 360);
    ClipCircle(kMiddle, Point(), wild, 0, 360);
    ClipCircle(kMiddle, Point(), 5, wild, 360);
    ClipCircle(kMiddle, Point(), 5, 0, wild);
    ClipCircle(Page(wild, wild, wild, wild), Point(), 5, 0, 360);
  }
  EXPECT_TRUE(ClipCircle(kMiddle, Point(), kNan, 0, 360).result);
  EXPECT_TRUE(ClipCircle(kMiddle, Point(), kNan, 0, 360).pieces.empty());
}

// --- ClipCircle: at random ---

// A second transcription, with lists and the library's sort.
Arcs LiteralClipCircle(Page page, Point centre, double radius, double start, double end) {
  Arcs arcs;
  const double r = std::abs(radius);
  if (r < 1e-05) return arcs;
  arcs.result = true;
  const double a0 = TrimAngle(start);
  if (page.top < page.bottom) {
    page.bottom = -page.bottom;
    page.top = -page.top;
    centre.y = -centre.y;
  }
  if (page.right < page.left) {
    page.left = -page.left;
    page.right = -page.right;
    centre.x = -centre.x;
  }
  std::vector<double> crossings;
  for (const double y : {page.top, page.bottom}) {
    const double d = y - centre.y;
    const double s = r * r - d * d;
    if (!(s > 0)) continue;
    for (const double offset : {-std::sqrt(s), std::sqrt(s)}) {
      const double x = centre.x + offset;
      if (page.left <= x && x <= page.right) crossings.push_back(TrimAngle(std::atan2(offset, d) / D_TO_R));
    }
  }
  for (const double x : {page.right, page.left}) {
    const double d = x - centre.x;
    const double s = r * r - d * d;
    if (!(s > 0)) continue;
    for (const double offset : {-std::sqrt(s), std::sqrt(s)}) {
      const double y = centre.y + offset;
      if (page.bottom <= y && y <= page.top) crossings.push_back(TrimAngle(std::atan2(d, offset) / D_TO_R));
    }
  }
  const bool startOnEdge = std::count(crossings.begin(), crossings.end(), a0) > 0;
  double e = end;
  std::vector<double> a;
  if (!crossings.empty()) {
    e = TrimAngle(end);
    if (e < 2.220446049250313e-16) e = 360;
    for (const double b : crossings) {
      if (a0 < e && !(a0 < b && b < e)) continue;
      if (!(a0 < e) && a0 != e && !(b < e || b > a0)) continue;
      a.push_back(!(a0 < e) && b < a0 ? b + 360 : b);
    }
  }
  a.push_back(e + 360);
  std::sort(a.begin(), a.end(), [](double x, double y) { return std::isnan(y) ? !std::isnan(x) : x < y; });
  for (double& b : a) b = TrimAngle(b);
  a.insert(a.begin(), a0);

  const double x = centre.x + r * std::sin(a0 * D_TO_R);
  const double y = centre.y + r * std::cos(a0 * D_TO_R);
  bool inside = page.left <= x && x <= page.right && page.bottom <= y && y <= page.top;
  if (startOnEdge) {
    const double distances[] = {std::abs(x - page.left), std::abs(x - page.right), std::abs(y - page.bottom), std::abs(y - page.top)};
    const bool goesIn[] = {centre.y <= y, centre.y >= y, x <= centre.x, x >= centre.x};
    inside = goesIn[std::min_element(distances, distances + 4) - distances];
  }
  for (std::size_t k = inside ? 0 : 1; k + 1 < a.size(); k += 2) arcs.pieces.emplace_back(a[k], a[k + 1]);
  return arcs;
}

bool SamePieces(const Arcs& a, const Arcs& b) {
  if (a.result != b.result || a.pieces.size() != b.pieces.size()) return false;
  for (std::size_t i = 0; i < a.pieces.size(); ++i) {
    if (!Same(a.pieces[i].first, b.pieces[i].first) || !Same(a.pieces[i].second, b.pieces[i].second)) return false;
  }
  return true;
}

TEST(PageClipCircleLong, RandomArcsAgreeWithASecondTranscription) {
  EdgeValues values(7316);
  Tally tally({"refused", "no piece", "one piece", "two pieces", "three pieces or more", "begins on an edge"});
  const double onEdge[] = {std::atan2(3.0, 4.0) / D_TO_R, std::atan2(4.0, 3.0) / D_TO_R, std::atan2(3.0, -4.0) / D_TO_R,
                           std::atan2(-4.0, 3.0) / D_TO_R, std::atan2(-3.0, -4.0) / D_TO_R};
  for (int round = 0; round < kRandomRounds; ++round) {
    const bool three = values.Index(4) == 0;
    const Page page = three ? kMiddle : Page(values.Grid(), values.Grid(), values.Grid(), values.Grid());
    const Point centre = three ? Point() : Point(values.Coordinate(), values.Coordinate(), 0);
    const double radius = three ? 5 : values.Index(8) == 0 ? values.Wild() : values.Between(-6, 6);
    const bool begins = three && values.Flag();
    const double start = begins ? onEdge[values.Index(5)] : values.Bearing();
    const double end = values.Index(4) == 0 ? start : begins && values.Flag() ? onEdge[values.Index(5)] : values.Bearing();
    const Arcs arcs = ClipCircle(page, centre, radius, start, end);
    ASSERT_TRUE(SamePieces(arcs, LiteralClipCircle(page, centre, radius, start, end))) << "round " << round;
    if (begins) tally.Count("begins on an edge");
    tally.Count(!arcs.result              ? "refused"
                : arcs.pieces.empty()     ? "no piece"
                : arcs.pieces.size() == 1 ? "one piece"
                : arcs.pieces.size() == 2 ? "two pieces"
                                          : "three pieces or more");
  }
}

double Sweep(const std::pair<double, double>& piece) {
  const double sweep = TrimAngle(piece.second - piece.first);
  return sweep;
}

TEST(PageClipCircle, BearingsOfThePiecesLieInThePageAndTheOthersDoNot) {
  EdgeValues values(7317);
  Tally tally({"in a piece", "in no piece"});
  for (int round = 0; round < kRandomRounds; ++round) {
    const Point centre(values.Between(-5, 15), values.Between(-5, 15), 0);
    const double radius = values.Between(0.5, 15);
    const double start = values.Between(0, 360);
    const double sweep = values.Between(1, 359);
    const Arcs arcs = ClipCircle(kPage, centre, radius, start, start + sweep);
    const double bearing = start + values.Between(0, 1) * sweep;
    const double x = centre.x + radius * std::sin(bearing * 3.141592653589793 / 180);
    const double y = centre.y + radius * std::cos(bearing * 3.141592653589793 / 180);
    const double margin = std::min({std::fabs(x), std::fabs(x - 10), std::fabs(y), std::fabs(y - 10)});
    if (margin < 1e-9) continue;  // too close to call
    const bool isInPiece = std::any_of(arcs.pieces.begin(), arcs.pieces.end(),
                                       [&](const auto& piece) { return TrimAngle(bearing - piece.first) <= Sweep(piece); });
    ASSERT_EQ(kPage.IsPointInPage(x, y), tally.Either(isInPiece, "in a piece", "in no piece")) << "round " << round;
  }
}

TEST(PageClipCircleLong, SweepsInTheNineTilesAddUpToTheWhole) {
  EdgeValues values(7318);
  const double bounds[] = {-100, 0, 10, 100};
  for (int round = 0; round < kRandomRounds; ++round) {
    const Point centre(values.Between(-5, 15), values.Between(-5, 15), 0);
    const double radius = values.Between(0.5, 15);
    const double start = values.Between(0, 360);
    const double whole = values.Between(1, 359);
    double sum = 0;
    for (int tile = 0; tile < 9; ++tile) {
      const int column = tile / 3;
      const int row = tile % 3;
      const Page page(bounds[column], bounds[row], bounds[column + 1], bounds[row + 1]);
      for (const auto& piece : ClipCircle(page, centre, radius, start, start + whole).pieces) sum += Sweep(piece);
    }
    ASSERT_NEAR(sum, whole, 1e-9) << "round " << round;
  }
}

}  // namespace
