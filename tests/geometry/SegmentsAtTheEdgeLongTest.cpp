// Every question that is asked of two segments, or of a segment or an arc and a page, over the edge values in
// all its places: the answer is that of the rules taken step by step, to the last bit, and what is not
// written stays. A whole set is 43 million.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "tests/geometry/EdgePlaces.h"
#include "tests/geometry/EdgeValues.h"
#include "tests/geometry/LiteralArcs.h"
#include "tests/geometry/LiteralSegments.h"
#include "zelbase/geometry/Intersect.h"
#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/Page.h"

namespace {

using EightPlaces = std::array<double, 8>;

Line FirstSegment(const EightPlaces& v) { return Line(Point(v[0], v[1], 0), Point(v[2], v[3], 0)); }
Line SecondSegment(const EightPlaces& v) { return Line(Point(v[4], v[5], 0), Point(v[6], v[7], 0)); }
Page SecondPage(const EightPlaces& v) { return Page(v[4], v[5], v[6], v[7]); }

// An edge value that goes through all of them as the fillings do, at another pace.
double HeightOf(std::size_t filling, std::size_t pace) { return kEdgeValues[(filling / pace + filling) % kEdgeValueCount]; }

bool SamePlane(const Point& a, const Point& b) { return Same(a.x, b.x) && Same(a.y, b.y); }

TEST(IntersectLinesAtTheEdgeLong, AllPairsCrossAsTheRulesSay) {
  KindCount kinds({"both vertical", "second vertical", "first vertical", "parallel", "both steep", "second steep", "first steep",
                   "ordinary", "flags 0", "flags 1", "flags 2", "flags 3"});
  ForEdgeFillings<8>([&](const EightPlaces& v, std::size_t filling) {
    const Line a = FirstSegment(v);
    const Line b = SecondSegment(v);
    const double height = HeightOf(filling, 729);
    Point p(77, 78, height);
    long flags = 80;
    const bool found = Intersect(a, b, p, flags);
    const LiteralCrossing<double> expected = LiteralIntersect(Literal(a), Literal(b));
    kinds.Count(static_cast<std::size_t>(expected.meeting));
    if (found != expected.Found()) return false;
    if (!found) return Same(p, Point(77, 78, height)) && flags == 80;
    kinds.Count(8 + static_cast<std::size_t>(expected.flags));
    return Same(p, Point(expected.x, expected.y, height)) && flags == expected.flags;
  });
}

TEST(PageClipLineAtTheEdgeLong, AllSegmentsAreClippedToAllPagesAsTheRulesSay) {
  KindCount kinds({"beyond one edge", "beyond a corner", "inside", "start cut", "end cut", "both cut"});
  ForEdgeFillings<8>([&](const EightPlaces& v, std::size_t filling) {
    Line in = FirstSegment(v);
    in.start.z = HeightOf(filling, 81);
    in.end.z = HeightOf(filling, 6561);
    const Page page = SecondPage(v);
    const Line before(Point(7, 7, 7), Point(8, 8, 8));
    Line out = before;
    const bool seen = page.ClipLine(in, &out);
    LiteralSegment<double> expected = Literal(before);
    if (seen != LiteralClipLine(Literal(page), Literal(in), &expected)) return false;
    if (!Same(out.start, Plain(expected.start)) || !Same(out.end, Plain(expected.end))) return false;
    if (!seen) {
      kinds.Count(Same(out.start, before.start) && Same(out.end, before.end) ? 0 : 1);
      return true;
    }
    const bool startCut = !SamePlane(in.start, out.start);
    const bool endCut = !SamePlane(in.end, out.end);
    kinds.Count(static_cast<std::size_t>(2 + (startCut ? 1 : 0) + (endCut ? 2 : 0)));
    return true;
  });
}

TEST(PageClipLineAtTheEdgeLong, AllSegmentsAreClippedInPlaceAsTheRulesSay) {
  KindCount kinds({"not seen", "seen"});
  ForEdgeFillings<8>([&](const EightPlaces& v, std::size_t filling) {
    Line line = FirstSegment(v);
    line.start.z = HeightOf(filling, 81);
    line.end.z = HeightOf(filling, 6561);
    const Page page = SecondPage(v);
    LiteralSegment<double> expected = Literal(line);
    const bool seen = page.ClipLine(line);
    kinds.Count(seen ? 1 : 0);
    if (seen != LiteralClipLine(Literal(page), expected, &expected)) return false;
    return Same(line.start, Plain(expected.start)) && Same(line.end, Plain(expected.end));
  });
}

// The endless line and the segment by turns, and the page of the world and of the screen.
TEST(LineClipAtTheEdgeLong, AllSegmentsMeetTheEdgesOfAllPagesAsTheRulesSay) {
  KindCount kinds({"none", "one", "two"});
  const Point nowhere(-kLargest, -kLargest, 0);
  ForEdgeFillings<8>([&](const EightPlaces& v, std::size_t filling) {
    const Line line = FirstSegment(v);
    const Page page = SecondPage(v);
    const std::size_t turn = filling / 6561 + filling;
    const bool flip = turn % 2 == 1;
    const bool extend = turn / 2 % 2 == 1;
    bool start = true;
    bool end = true;
    const Line clipped = line.Clip(page, flip, extend, start, end);
    const LiteralEdges<double> expected = LiteralClip(Literal(line), Literal(page), flip, extend);
    kinds.Count(static_cast<std::size_t>(expected.count));
    if (start != expected.start || end != expected.end) return false;
    if (expected.count == 0) return Same(clipped.start, nowhere) && Same(clipped.end, nowhere);
    return Same(clipped.start, Plain(expected.line.start)) && Same(clipped.end, Plain(expected.line.end));
  });
}

// Overlap is told by what lies beyond what; both pages lie in any order.
TEST(PageAtTheEdgeLong, AllPairsOfPagesOverlapAndMeetAsTheRulesSay) {
  KindCount kinds({"apart", "overlapping", "invalid", "valid"});
  const auto same = [](const Page& a, const Page& b) {
    return Same(a.left, b.left) && Same(a.bottom, b.bottom) && Same(a.right, b.right) && Same(a.top, b.top);
  };
  ForEdgeFillings<8>([&](const EightPlaces& v, std::size_t) {
    const Page a(v[0], v[1], v[2], v[3]);
    const Page b = SecondPage(v);
    bool overlap = true;
    if (a.top <= b.bottom) overlap = false;
    if (a.right <= b.left) overlap = false;
    if (a.bottom >= b.top) overlap = false;
    if (a.left >= b.right) overlap = false;
    kinds.Count(overlap ? 1 : 0);
    if (a.IsRectInPage(b) != overlap) return false;

    Page cut = b;
    Page expectedCut = b;
    if (overlap) {
      if (a.left > b.left) expectedCut.left = a.left;
      if (a.bottom > b.bottom) expectedCut.bottom = a.bottom;
      if (a.right < b.right) expectedCut.right = a.right;
      if (a.top < b.top) expectedCut.top = a.top;
    }
    if (a.ClipRect(cut) != overlap || !same(cut, expectedCut)) return false;

    const auto isValid = [](const Page& page) {
      if (!(page.right >= page.left)) return false;
      return page.top >= page.bottom;
    };
    kinds.Count(isValid(a) ? 3 : 2);
    Page met = a;
    met &= b;
    Page expected = a;
    if (isValid(b) && !isValid(a)) expected = b;
    if (isValid(b) && isValid(a)) {
      expected = Page(b.left > a.left ? b.left : a.left, b.bottom > a.bottom ? b.bottom : a.bottom, b.right < a.right ? b.right : a.right,
                      b.top < a.top ? b.top : a.top);
    }
    return same(met, expected);
  });
}

// --- Arcs and circles ---

TEST(IntersectLineCurveAtTheEdgeLong, AllLinesAndCirclesCrossAsTheRulesSay) {
  KindCount kinds({"no length", "passes by", "flags 0", "flags 1", "flags 2", "flags 3"});
  constexpr std::array<std::array<double, 2>, 3> kArcs = {{{0, 360}, {350, 10}, {45, 225}}};
  ForEdgeFillings<7>([&](const std::array<double, 7>& v, std::size_t filling) {
    const Line l(Point(v[0], v[1], 1), Point(v[2], v[3], 2));
    const auto& arc = kArcs[(filling / 9 + filling) % kArcs.size()];
    const double radius = (filling / 729 + filling) % 2 == 0 ? v[6] : -v[6];
    const Curve c(Point(v[4], v[5], 3), radius, arc[0], arc[1]);
    const SecondCurve second{v[4], v[5], radius, arc[0], arc[1]};
    Point p[2] = {Point(7, 7, 7), Point(8, 8, 8)};
    long flags[2] = {80, 81};
    const bool found = Intersect(l, c, p, flags);

    const LiteralChord expected = LiteralIntersect(Literal(l), second);
    if (found != (expected.meeting == ChordMeeting::kCrosses)) return false;
    if (!found) {
      kinds.Count(static_cast<std::size_t>(expected.meeting));
      return Same(p[0], Point(7, 7, 7)) && Same(p[1], Point(8, 8, 8)) && flags[0] == 80 && flags[1] == 81;
    }
    for (std::size_t i = 0; i < 2; ++i) {
      kinds.Count(2 + static_cast<std::size_t>(expected.flags[i]));
      if (!Same(p[i], expected.points[i]) || flags[i] != expected.flags[i]) return false;
    }
    return true;
  });
}

TEST(IntersectCurvesAtTheEdgeLong, AllPairsOfCirclesCrossAsTheRulesSay) {
  KindCount kinds(kCirclesMeetings);
  constexpr std::array<std::array<double, 2>, 4> kArcs = {{{0, 360}, {350, 190}, {45, 225}, {90, 90}}};
  for (std::size_t arcs = 0; arcs < kArcs.size() * kArcs.size(); ++arcs) {
    const auto& arcA = kArcs[arcs / kArcs.size()];
    const auto& arcB = kArcs[arcs % kArcs.size()];
    ForEdgeFillings<6>([&](const std::array<double, 6>& v, std::size_t) {
      const SecondCurve a{v[0], v[1], v[2], arcA[0], arcA[1]};
      const SecondCurve b{v[3], v[4], -v[5], arcB[0], arcB[1]};
      Point p[2] = {Point(7, 7, 7), Point(8, 8, 8)};
      const long count =
          Intersect(Curve(Point(v[0], v[1], 1), v[2], arcA[0], arcA[1]), Curve(Point(v[3], v[4], 2), -v[5], arcB[0], arcB[1]), p);

      const LiteralCommon expected = LiteralIntersect(a, b);
      kinds.Count(static_cast<std::size_t>(expected.meeting));
      if (count != static_cast<long>(expected.count)) return false;
      for (std::size_t i = 0; i < 2; ++i) {
        const double untouched = 7 + static_cast<double>(i);
        if (!Same(p[i], i < expected.count ? expected.points[i] : Point(untouched, untouched, untouched))) return false;
      }
      return true;
    });
  }
}

TEST(IntersectP3AtTheEdgeLong, AllPairsOfCirclesCrossAsTheRulesSay) {
  KindCount kinds({"concentric", "apart", "one in the other", "beyond by rounding", "a number", "no number"}, 1);
  for (const double side : {1.0, -1.0}) {
    ForEdgeFillings<6>([&](const std::array<double, 6>& v, std::size_t) {
      const double ra = v[4] * side;
      const double rb = v[5];
      Point p(77, 78, 79);
      const bool found = IntersectP3(Point(v[0], v[1], 1), Point(v[2], v[3], 2), ra, rb, p);
      const LiteralRanges expected = LiteralIntersectP3(Point(v[0], v[1], 1), Point(v[2], v[3], 2), ra, rb);
      if (expected.meeting != RangesMeeting::kCrossing) {
        kinds.Count(static_cast<std::size_t>(expected.meeting));
        return !found && Same(p, Point(77, 78, 79));
      }
      kinds.Count(std::isnan(expected.x) || std::isnan(expected.y) ? 5 : 4);
      return found && Same(p, Point(expected.x, expected.y, 79));
    });
  }
}

TEST(CentreCircleFrom3PAtTheEdgeLong, AllTriplesCrossTheirPerpendicularsAsTheRulesSay) {
  KindCount kinds({"refused", "found"});
  ForEdgeFillings<6>([&](const std::array<double, 6>& v, std::size_t) {
    const auto perpendicular = [](double x1, double y1, double x2, double y2) {
      const double middleX = (x1 + x2) * 0.5;
      const double middleY = (y1 + y2) * 0.5;
      return LiteralSegment<double>{{middleX, middleY, 0}, {middleX - (y2 - y1), middleY + (x2 - x1), 0}};
    };
    const LiteralCrossing<double> expected = LiteralIntersect(perpendicular(v[0], v[1], v[2], v[3]), perpendicular(v[2], v[3], v[4], v[5]));
    Point centre(77, 78, 79);
    const bool found = CentreCircleFrom3P(Point(v[0], v[1], 1), Point(v[2], v[3], 2), Point(v[4], v[5], 3), centre);
    kinds.Count(found ? 1 : 0);
    if (found != expected.Found()) return false;
    return Same(centre, found ? Point(expected.x, expected.y, 79) : Point(77, 78, 79));
  });
}

// --- One segment ---

TEST(LineAtTheEdgeLong, AllLinesAnswerAtAllCoordinatesAsTheRulesSay) {
  KindCount kinds({"refused for y", "beside for y", "in the segment for y", "refused for x", "beside for x", "in the segment for x"});
  ForEdgeFillings<5>([&](const std::array<double, 5>& v, std::size_t) {
    const Line line(Point(v[0], v[1], 1), Point(v[2], v[3], 2));
    const double m = (v[1] - v[3]) / (v[0] - v[2]);
    const double c = v[1] - v[0] * m;
    double y = 77;
    bool inSegment = true;
    if (line.GetLineY(v[4], y, inSegment) == (v[0] == v[2])) return false;
    if (v[0] == v[2]) {
      kinds.Count(0);
      if (y != 77 || !inSegment) return false;
    } else {
      const double expected = m * v[4] + c;
      const bool isIn = LiteralBetween(v[4], v[0], v[2]) && LiteralBetween(expected, v[1], v[3]);
      kinds.Count(isIn ? 2 : 1);
      if (!Same(y, expected) || inSegment != isIn) return false;
    }
    double x = 77;
    inSegment = true;
    if (line.GetLineX(v[4], x, inSegment) == (v[1] == v[3])) return false;
    if (v[1] == v[3]) {
      kinds.Count(3);
      return x == 77 && inSegment;
    }
    const double expected = (v[4] - c) / m;
    const bool isIn = LiteralBetween(expected, v[0], v[2]) && LiteralBetween(v[4], v[1], v[3]);
    kinds.Count(isIn ? 5 : 4);
    return Same(x, expected) && inSegment == isIn;
  });
}

}  // namespace
