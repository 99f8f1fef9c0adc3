// Where a line crosses the edges of a page; LineTest.cpp has the rest of the line.

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "tests/geometry/EdgeValues.h"
#include "tests/geometry/LiteralSegments.h"
#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/Page.h"

namespace {

const Page kPage(0, 0, 10, 10);

struct Clipped {
  Line line;
  bool start = false;
  bool end = false;
};

// The flags go in as true, so that one that is not written is seen.
Clipped Clip(const Line& line, const Page& page, bool flip, bool extend) {
  Clipped clipped{Line(), true, true};
  clipped.line = line.Clip(page, flip, extend, clipped.start, clipped.end);
  return clipped;
}

Line Segment(double x1, double y1, double x2, double y2) { return Line(Point(x1, y1, 0), Point(x2, y2, 0)); }

bool SameLine(const Line& a, const Line& b) { return Same(a.start, b.start) && Same(a.end, b.end); }

void ExpectClip(const Line& line, bool extend, const Line& expected, bool start, bool end) {
  const Clipped clipped = Clip(line, kPage, false, extend);
  EXPECT_EQ(clipped.line.start, expected.start);
  EXPECT_EQ(clipped.line.end, expected.end);
  EXPECT_EQ(clipped.start, start);
  EXPECT_EQ(clipped.end, end);
}

const Line kNone = Segment(-kLargest, -kLargest, -kLargest, -kLargest);

TEST(LineClip, SegmentAcrossGivesItsTwoCrossings) {
  ExpectClip(Segment(-5, 5, 15, 5), false, Segment(0, 5, 10, 5), true, true);
  ExpectClip(Segment(-5, 0, 15, 10), false, Segment(0, 2.5, 10, 7.5), true, true);
  ExpectClip(Segment(2, -2, 14, 22), false, Segment(3, 0, 8, 10), true, true);
}

TEST(LineClip, ResultRunsInTheDirectionOfTheLine) {
  ExpectClip(Segment(15, 10, -5, 0), false, Segment(10, 7.5, 0, 2.5), true, true);
  ExpectClip(Segment(14, 22, 2, -2), false, Segment(8, 10, 3, 0), true, true);
  // Falling, so that the bottom, which is tried first, comes last.
  ExpectClip(Segment(2, 12, 8, -6), false, Segment(8.0 / 3, 10, 6, 0), true, true);
  ExpectClip(Segment(8, -6, 2, 12), false, Segment(6, 0, 8.0 / 3, 10), true, true);
}

TEST(LineClip, HeightsAreZero) {
  const Clipped clipped = Clip(Line(Point(-5, 5, 7), Point(15, 5, 9)), kPage, false, false);
  EXPECT_EQ(clipped.line.start, Point(0, 5, 0));
  EXPECT_EQ(clipped.line.end, Point(10, 5, 0));
}

TEST(LineClip, SegmentInsideGivesNone) { ExpectClip(Segment(2, 3, 8, 5), false, kNone, false, false); }

TEST(LineClip, SegmentOutsideGivesNone) {
  ExpectClip(Segment(12, 3, 18, 5), false, kNone, false, false);
  ExpectClip(Segment(-6, 8, 4, 18), true, kNone, false, false);
}

TEST(LineClip, ExtendedSegmentInsideGivesTheChordAndBothFlags) {
  ExpectClip(Segment(4, 5, 6, 5), true, Segment(0, 5, 10, 5), true, true);
  ExpectClip(Segment(6, 5, 4, 5), true, Segment(10, 5, 0, 5), true, true);
}

TEST(LineClip, OneCrossingIsALineWithoutLengthAndFlagsBothEnds) {
  ExpectClip(Segment(-5, 5, 5, 5), false, Segment(0, 5, 0, 5), true, true);
  ExpectClip(Segment(5, 5, -5, 5), false, Segment(0, 5, 0, 5), true, true);
}

TEST(LineClip, EndThatIsTheCrossingIsNotFlagged) {
  ExpectClip(Segment(0, 5, 5, 7), false, Segment(0, 5, 0, 5), false, true);
  ExpectClip(Segment(5, 7, 0, 5), false, Segment(0, 5, 0, 5), true, false);
  ExpectClip(Segment(0, 5, 10, 7), false, Segment(0, 5, 10, 7), false, false);
}

TEST(LineClip, FlagsLookAtXAndYOnly) {
  const Clipped clipped = Clip(Line(Point(0, 5, 7), Point(10, 5, 9)), kPage, false, false);
  EXPECT_FALSE(clipped.start);
  EXPECT_FALSE(clipped.end);
}

TEST(LineClip, ExactlyVerticalLineHasNoCrossings) {
  ExpectClip(Segment(5, -5, 5, 15), false, kNone, false, false);
  ExpectClip(Segment(5, -5, 5, 15), true, kNone, false, false);
  ExpectClip(Segment(0, -5, 0, 15), true, kNone, false, false);
  ExpectClip(Segment(5, 5, 5, 5), true, kNone, false, false);
}

TEST(LineClip, CornerIsFoundTwiceAndHidesTheRealSecondCrossing) {
  // Through (0, 0) and out at (5, 10), which lies on the top.
  ExpectClip(Segment(-5, -10, 8, 16), false, Segment(0, 0, 0, 0), true, true);
}

TEST(LineClip, FlipChangesWhichHorizontalEdgeIsTriedFirstAndMattersAtACorner) {
  const Clipped flipped = Clip(Segment(-5, -10, 8, 16), kPage, true, false);
  EXPECT_TRUE(SameLine(flipped.line, Segment(0, 0, 5, 10)));
  // Anywhere else nothing changes.
  EXPECT_TRUE(SameLine(Clip(Segment(2, -2, 14, 22), kPage, true, false).line, Segment(3, 0, 8, 10)));
}

TEST(LineClip, OrderOfThePagesValuesDoesNotMatter) {
  const Line line = Segment(-5, 0, 15, 10);
  for (const Page& page : {Page(0, 10, 10, 0), Page(10, 0, 0, 10), Page(10, 10, 0, 0)}) {
    EXPECT_TRUE(SameLine(Clip(line, page, false, false).line, Segment(0, 2.5, 10, 7.5)));
    EXPECT_TRUE(SameLine(Clip(line, page, true, false).line, Segment(0, 2.5, 10, 7.5)));
  }
}

TEST(LineClip, NanEdgeAndTheTwoThatEndAtItHaveNoCrossings) {
  const Line level = Segment(-5, 5, 15, 5);
  const Line steep = Segment(5, 0, 7, 20);
  for (const bool flip : {false, true}) {
    for (const Page& page : {Page(0, kNan, 10, 10), Page(0, 10, 10, kNan)}) {
      EXPECT_TRUE(SameLine(Clip(level, page, flip, true).line, kNone));
      EXPECT_TRUE(SameLine(Clip(steep, page, flip, true).line, Segment(6, 10, 6, 10)));
    }
    for (const Page& page : {Page(0, 0, kNan, 10), Page(kNan, 0, 0, 10)}) {
      EXPECT_TRUE(SameLine(Clip(level, page, flip, true).line, Segment(0, 5, 0, 5)));
      EXPECT_TRUE(SameLine(Clip(steep, page, flip, true).line, kNone));
    }
  }
}

TEST(LineClip, ShortFormDoesNotExtend) {
  bool start = true;
  bool end = true;
  EXPECT_TRUE(SameLine(Segment(4, 5, 6, 5).Clip(kPage, false, start, end), kNone));
  EXPECT_FALSE(start);
  EXPECT_FALSE(end);
  EXPECT_TRUE(SameLine(Segment(-5, 5, 15, 5).Clip(kPage, false, start, end), Segment(0, 5, 10, 5)));
  EXPECT_TRUE(start);
  EXPECT_TRUE(end);
}

Clipped SecondClip(const Line& line, const Page& page, bool flip, bool extend) {
  const LiteralEdges<double> edges = LiteralClip(Literal(line), Literal(page), flip, extend);
  return {edges.count == 0 ? kNone : Plain(edges.line), edges.start, edges.end};
}

TEST(LineClipLong, RandomLinesAgreeWithASecondTranscription) {
  EdgeValues values(7319);
  Tally tally({"none", "one", "two", "corner twice", "reversed", "extended", "flipped"});
  for (int round = 0; round < kRandomRounds; ++round) {
    const Page page = values.Index(4) == 0 ? Page(values.Coordinate(), values.Coordinate(), values.Coordinate(), values.Coordinate())
                                           : Page(values.Grid(), values.Grid(), values.Grid(), values.Grid());
    Line line(values.Index(8) == 0 ? page.BottomLeft() : values.AnyPoint(), values.Index(8) == 0 ? page.TopRight() : values.AnyPoint());
    // Half of them nearly along an edge or a diagonal, either way.
    if (values.Flag()) {
      const Point corner = values.Flag() ? page.TopRight() : Point(page.left, page.top, 0);
      const auto [start, end] = values.Related(page.BottomLeft(), values.Flag() ? corner : Point(page.right, page.bottom, 0));
      line.Set(start, end);
    }
    const bool flip = values.Flag();
    const bool extend = values.Flag();
    const Clipped clipped = Clip(line, page, flip, extend);
    const Clipped expected = SecondClip(line, page, flip, extend);
    ASSERT_TRUE(SameLine(clipped.line, expected.line)) << "round " << round;
    ASSERT_EQ(clipped.start, expected.start) << "round " << round;
    ASSERT_EQ(clipped.end, expected.end) << "round " << round;
    const bool none = clipped.line.start == kNone.start;
    const bool one = clipped.line.start == clipped.line.end;
    const bool corner = one && (clipped.line.start == page.BottomLeft() || clipped.line.start == page.TopRight());
    tally.Count(none ? "none" : corner ? "corner twice" : one ? "one" : "two");
    if (line.end.x < line.start.x) tally.Count("reversed");
    if (extend) tally.Count("extended");
    if (flip) tally.Count("flipped");
  }
}

TEST(LineClip, ChordOfAnExtendedLineLiesOnItAndOnTheEdges) {
  EdgeValues values(7320);
  Tally tally({"chord", "none"});
  for (int round = 0; round < kRandomRounds; ++round) {
    const Line line = Segment(values.Between(-10, 20), values.Between(-10, 20), values.Between(-10, 20), values.Between(-10, 20));
    const Clipped clipped = Clip(line, kPage, values.Flag(), true);
    if (!tally.Either(clipped.start, "chord", "none")) continue;
    const Point way = line.end - line.start;
    for (const Point& point : {clipped.line.start, clipped.line.end}) {
      const Point to = point - line.start;
      // The distance from the line, and from the closest edge.
      const double off = (way.x * to.y - way.y * to.x) / line.Length(false);
      ASSERT_NEAR(off, 0, 1e-8 * (1 + std::fabs(way.y / way.x))) << "round " << round;
      const double edge = std::min({std::fabs(point.x), std::fabs(point.x - 10), std::fabs(point.y), std::fabs(point.y - 10)});
      ASSERT_EQ(edge, 0) << "round " << round;
      ASSERT_TRUE(kPage.IsPointInPage(point)) << "round " << round;
    }
    const Point chord = clipped.line.end - clipped.line.start;
    ASSERT_GE(chord.x * way.x + chord.y * way.y, 0) << "round " << round;
  }
}

}  // namespace
