// All pairs of segments of a grid of four by four points, and all pairs of triangles of one of three by
// three: what is asked of them is held against arithmetic without rounding where the rules are exact, and bit
// by bit against a slow transcription where they are not. On such grids most pairs touch, overlap, coincide
// or degenerate.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "tests/geometry/EdgePlaces.h"
#include "tests/geometry/EdgeValues.h"
#include "tests/geometry/Fraction.h"
#include "tests/geometry/LiteralPolyClipper.h"
#include "tests/geometry/LiteralSegments.h"
#include "zelbase/geometry/Intersect.h"
#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/Page.h"
#include "zelbase/geometry/PolyClipper.h"

namespace {

// A point of a grid, by whole numbers.
struct Node {
  int x = 0;
  int y = 0;

  bool operator==(const Node&) const = default;
  operator Point() const { return Point(x, y, 0); }
  LiteralPoint<Fraction> Exact() const { return {x, y, 0}; }
};

struct Segment {
  Node start;
  Node end;

  operator Line() const { return Line(start, end); }
  LiteralSegment<Fraction> Exact() const { return {start.Exact(), end.Exact()}; }
  bool IsPoint() const { return start == end; }
  std::string Shown() const { return Line(*this).start.ToString() + " to " + Line(*this).end.ToString(); }
};

std::vector<Node> NodesOf(int side) {
  std::vector<Node> nodes;
  for (int x = 0; x < side; ++x) {
    for (int y = 0; y < side; ++y) nodes.push_back({x, y});
  }
  return nodes;
}

// The check is asked about every pair of segments of the grid of four by four, or one of 11.
template <class Check>
void ForSegmentPairs(Check check) {
  std::vector<Segment> segments;
  for (const Node& start : NodesOf(4)) {
    for (const Node& end : NodesOf(4)) segments.push_back({start, end});
  }
  const std::size_t count = segments.size();
  std::size_t pair = 0;
  EXPECT_TRUE(ForSpread(count * count, 11, pair, [&](std::size_t i) { return check(segments[i / count], segments[i % count]); }))
      << segments[pair / count].Shown() << " and " << segments[pair % count].Shown();
}

// Twice the area of the triangle, positive to the left of the way from a to b.
int Turn(const Node& a, const Node& b, const Node& c) { return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x); }

bool IsOn(const Segment& s, const Node& p) {
  return Turn(s.start, s.end, p) == 0 && LiteralBetween(p.x, s.start.x, s.end.x) && LiteralBetween(p.y, s.start.y, s.end.y);
}

int Sign(int value) { return (value > 0) - (value < 0); }

// Whether the segments have a point in common, by the turns of their ends.
bool Touch(const Segment& a, const Segment& b) {
  const int b1 = Sign(Turn(a.start, a.end, b.start));
  const int b2 = Sign(Turn(a.start, a.end, b.end));
  const int a1 = Sign(Turn(b.start, b.end, a.start));
  const int a2 = Sign(Turn(b.start, b.end, a.end));
  if (b1 * b2 < 0 && a1 * a2 < 0) return true;
  return IsOn(a, b.start) || IsOn(a, b.end) || IsOn(b, a.start) || IsOn(b, a.end);
}

bool IsNear(double value, const Fraction& exact) {
  return std::abs(value - exact.Nearest()) <= 1e-14 * std::max(1.0, std::abs(exact.Nearest()));
}

bool IsNear(const Point& point, const LiteralPoint<Fraction>& exact) { return IsNear(point.x, exact.x) && IsNear(point.y, exact.y); }

LiteralPage<Fraction> ExactPage(const Segment& corners) { return {corners.start.x, corners.start.y, corners.end.x, corners.end.y}; }

Page PageOf(const Segment& corners) { return Page(corners.start, corners.end); }

// The stretch of the segment, from 0 to 1, that lies in the page; nothing when `to` lies before `from`.
struct Stretch {
  Fraction from = 0;
  Fraction to = 1;

  bool IsNothing() const { return to < from; }
  void Cut(const Fraction& start, const Fraction& end, const Fraction& a, const Fraction& b) {
    const Fraction low = std::min(a, b);
    const Fraction high = std::max(a, b);
    if (start == end) {
      if (start < low || start > high) to = -1;
      return;
    }
    const Fraction first = (low - start) / (end - start);
    const Fraction second = (high - start) / (end - start);
    from = std::max(from, std::min(first, second));
    to = std::min(to, std::max(first, second));
  }
};

Stretch Visible(const LiteralPage<Fraction>& page, const LiteralSegment<Fraction>& s) {
  Stretch stretch;
  stretch.Cut(s.start.x, s.end.x, page.left, page.right);
  stretch.Cut(s.start.y, s.end.y, page.bottom, page.top);
  return stretch;
}

LiteralPoint<Fraction> PointAt(const LiteralSegment<Fraction>& s, const Fraction& t) {
  return {s.start.x + (s.end.x - s.start.x) * t, s.start.y + (s.end.y - s.start.y) * t, 0};
}

// --- Two segments ---

TEST(IntersectLinesOnTheGridLong, AllPairsCrossWhereFractionsSay) {
  KindCount kinds(
      {"both vertical", "second vertical", "first vertical", "parallel", "crossing", "flags 0", "flags 1", "flags 2", "flags 3"});
  ForSegmentPairs([&](const Segment& a, const Segment& b) {
    Point p(77, 78, 79);
    long flags = 80;
    const bool found = Intersect(a, b, p, flags);
    const LiteralCrossing<Fraction> exact = LiteralIntersect(a.Exact(), b.Exact());
    kinds.Count(std::min<std::size_t>(static_cast<std::size_t>(exact.meeting), 4));
    if (found != exact.Found()) return false;
    if (!found) return p == Point(77, 78, 79) && flags == 80;
    kinds.Count(5 + static_cast<std::size_t>(exact.flags));
    return IsNear(p, {exact.x, exact.y, 0}) && p.z == 79 && flags == exact.flags;
  });
}

// By turns and by Cramer's rule, which know no slopes.
TEST(IntersectLinesOnTheGridLong, LinesOfAnyLengthCrossWhereDeterminantsSay) {
  KindCount kinds({"parallel", "crossing beside", "crossing on both"});
  ForSegmentPairs([&](const Segment& a, const Segment& b) {
    if (a.IsPoint() || b.IsPoint()) return true;
    const int ax = a.end.x - a.start.x;
    const int ay = a.end.y - a.start.y;
    const int bx = b.end.x - b.start.x;
    const int by = b.end.y - b.start.y;
    const int det = ax * by - ay * bx;
    Point p(77, 78, 79);
    long flags = 80;
    if (Intersect(a, b, p, flags) != (det != 0)) return false;
    if (det == 0) {
      kinds.Count(0);
      return true;
    }
    const Fraction t((b.start.x - a.start.x) * by - (b.start.y - a.start.y) * bx, det);
    const Fraction u((b.start.x - a.start.x) * ay - (b.start.y - a.start.y) * ax, det);
    const long onA = Fraction(0) <= t && t <= Fraction(1) ? 1 : 0;
    const long onB = Fraction(0) <= u && u <= Fraction(1) ? 2 : 0;
    kinds.Count(onA + onB == 3 ? 2 : 1);
    return IsNear(p, PointAt(a.Exact(), t)) && flags == onA + onB && (flags == 3) == Touch(a, b);
  });
}

// --- A segment and a page ---

// Where fractions of the parameters and the rules part, the segment misses the page and an end lies on the
// prolongation of an edge.
TEST(PageClipLineOnTheGridLong, AllSegmentsAreClippedToAllPagesAsFractionsSay) {
  KindCount kinds({"not seen", "seen", "answered by a prolongation"});
  ForSegmentPairs([&](const Segment& corners, const Segment& s) {
    // Heights on a plane, so that they tell where an end lies; not both 0.
    const auto height = [](const Point& p) { return 3 * p.x + 16 * p.y + 1; };
    Line in = s;
    in.start.z = height(in.start);
    in.end.z = height(in.end);
    Line out;
    const bool seen = PageOf(corners).ClipLine(in, &out);
    LiteralSegment<Fraction> expected;
    if (seen != LiteralClipLine(ExactPage(corners), s.Exact(), &expected)) return false;
    const Stretch stretch = Visible(ExactPage(corners), s.Exact());
    if (seen == stretch.IsNothing()) {
      kinds.Count(2);
      const bool isOnProlongation = [&] {
        for (const Node& end : {s.start, s.end}) {
          if (end.x == corners.start.x || end.x == corners.end.x || end.y == corners.start.y || end.y == corners.end.y) return true;
        }
        return false;
      }();
      return seen && isOnProlongation && IsNear(out.start, expected.start) && IsNear(out.end, expected.end);
    }
    kinds.Count(seen ? 1 : 0);
    if (!seen) return true;
    if (!IsNear(out.start, PointAt(s.Exact(), stretch.from)) || !IsNear(out.end, PointAt(s.Exact(), stretch.to))) return false;
    return std::abs(out.start.z - height(out.start)) < 1e-13 && std::abs(out.end.z - height(out.end)) < 1e-13;
  });
}

TEST(LineClipOnTheGridLong, AllSegmentsMeetTheEdgesOfAllPagesWhereFractionsSay) {
  KindCount kinds({"none", "one", "two"});
  ForSegmentPairs([&](const Segment& corners, const Segment& s) {
    for (const bool flip : {false, true}) {
      for (const bool extend : {false, true}) {
        bool start = true;
        bool end = true;
        const Line clipped = Line(s).Clip(PageOf(corners), flip, extend, start, end);
        const LiteralEdges<Fraction> exact = LiteralClip(s.Exact(), ExactPage(corners), flip, extend);
        kinds.Count(static_cast<std::size_t>(exact.count));
        const bool isNowhere = clipped.start.x == -kLargest && clipped.end.y == -kLargest;
        if (start != exact.start || end != exact.end || isNowhere != (exact.count == 0)) return false;
        if (isNowhere) continue;
        if (!IsNear(clipped.start, exact.line.start) || !IsNear(clipped.end, exact.line.end)) return false;
      }
    }
    return true;
  });
}

// --- Polygons ---

using Polygon = std::vector<Node>;

std::vector<Point> PointsOf(const Polygon& polygon) { return {polygon.begin(), polygon.end()}; }

// What lies on one side of a limit, ring by ring along the polygon, with bridges along the side that hold no
// area.
std::vector<LiteralPoint<Fraction>> CutOff(const std::vector<LiteralPoint<Fraction>>& polygon, Fraction LiteralPoint<Fraction>::*across,
                                           const Fraction& limit, bool keepBelow) {
  const auto isIn = [&](const LiteralPoint<Fraction>& p) { return keepBelow ? p.*across <= limit : p.*across >= limit; };
  std::vector<LiteralPoint<Fraction>> kept;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const LiteralPoint<Fraction>& a = polygon[i];
    const LiteralPoint<Fraction>& b = polygon[(i + 1) % polygon.size()];
    if (isIn(a)) kept.push_back(a);
    if (isIn(a) != isIn(b)) kept.push_back(PointAt({a, b}, (limit - a.*across) / (b.*across - a.*across)));
  }
  return kept;
}

// What of the polygon lies in the page, likewise.
std::vector<LiteralPoint<Fraction>> Inside(const Polygon& polygon, const LiteralPage<Fraction>& page) {
  std::vector<LiteralPoint<Fraction>> rest;
  for (const Node& node : polygon) rest.push_back(node.Exact());
  rest = CutOff(rest, &LiteralPoint<Fraction>::y, std::max(page.bottom, page.top), true);
  rest = CutOff(rest, &LiteralPoint<Fraction>::x, std::min(page.left, page.right), false);
  rest = CutOff(rest, &LiteralPoint<Fraction>::y, std::min(page.bottom, page.top), false);
  rest = CutOff(rest, &LiteralPoint<Fraction>::x, std::max(page.left, page.right), true);
  return rest;
}

// Of a polygon that does not cross itself.
Fraction AreaOf(const std::vector<LiteralPoint<Fraction>>& rest) {
  Fraction twice = 0;
  for (std::size_t i = 0; i < rest.size(); ++i) {
    const LiteralPoint<Fraction>& a = rest[i];
    const LiteralPoint<Fraction>& b = rest[(i + 1) % rest.size()];
    twice += a.x * b.y - b.x * a.y;
  }
  return abs(twice) / 2;
}

// Whether four corners, in their order, make a polygon that neither crosses nor touches itself.
bool IsSimple(const Polygon& corners) {
  if (corners.size() != 4) return false;
  const Segment sides[] = {{corners[0], corners[1]}, {corners[1], corners[2]}, {corners[2], corners[3]}, {corners[3], corners[0]}};
  for (const Segment& side : sides) {
    if (side.IsPoint()) return false;
  }
  if (Touch(sides[0], sides[2]) || Touch(sides[1], sides[3])) return false;
  for (std::size_t i = 0; i < 4; ++i) {
    // No fold: neither side's far end lies on its neighbour.
    if (IsOn(sides[i], sides[(i + 1) % 4].end) || IsOn(sides[(i + 1) % 4], sides[i].start)) return false;
  }
  return true;
}

struct GridPage {
  Page page;
  LiteralPage<Fraction> exact;
};

GridPage HalfPage(int left, int bottom, int right, int top) {
  return {Page(left / 2.0, bottom / 2.0, right / 2.0, top / 2.0), {{left, 2}, {bottom, 2}, {right, 2}, {top, 2}}};
}

long RingsOf(const PolyClipper& clipper) {
  long rings = 0;
  for (int i = 0; i < clipper.GetOutputSize(); ++i) rings += clipper.GetOutputFlag(i) ? 1 : 0;
  return rings;
}

// The four ends of two segments as a polygon.
TEST(PolyClipperOnTheGridLong, AllSegmentPairsAsPolygonsAreClippedExactlyOrAsALiteralBubbleSortDoes) {
  KindCount kinds({"nothing", "one ring", "several rings", "exact area", "crosses itself"});
  // No side through a node, all through nodes, some, a page of the screen, the whole grid, and less than a
  // cell.
  const GridPage pages[] = {HalfPage(1, 1, 5, 5), HalfPage(2, 2, 4, 4), HalfPage(0, 3, 6, 4),
                            HalfPage(1, 5, 4, 2), HalfPage(0, 0, 6, 6), HalfPage(2, 3, 3, 4)};
  PolyClipper clipper;
  ForSegmentPairs([&](const Segment& a, const Segment& b) {
    const Polygon polygon = {a.start, a.end, b.start, b.end};
    const bool isSimple = IsSimple(polygon);
    for (const GridPage& page : pages) {
      clipper.SetPage(page.page);
      LiteralPolyClipper literal(page.page);
      if (!clipper.FillPolygon(PointsOf(polygon)) || !literal.FillPolygon(PointsOf(polygon))) return false;
      if (!SameRings(clipper, literal)) return false;
      kinds.Count(static_cast<std::size_t>(std::min(2L, RingsOf(clipper))));
      kinds.Count(isSimple ? 3 : 4);
      if (isSimple && !IsNear(clipper.Area(), AreaOf(Inside(polygon, page.exact)))) return false;
    }
    return true;
  });
}

// There and back: what is left of a segment ends where what is seen of it ends. One that only passes a
// corner, or touches, is a point.
TEST(PolyClipperOnTheGridLong, AllSegmentsThereAndBackAreClippedToAllPagesExactly) {
  KindCount kinds({"nothing", "a point", "a stretch"});
  PolyClipper clipper;
  ForSegmentPairs([&](const Segment& corners, const Segment& s) {
    if (corners.end.x < corners.start.x) return true;
    clipper.SetPage(PageOf(corners));
    LiteralPolyClipper literal(PageOf(corners));
    const std::vector<Point> points = PointsOf({s.start, s.end});
    if (!clipper.FillPolygon(points) || !literal.FillPolygon(points) || !SameRings(clipper, literal)) return false;
    const Stretch stretch = Visible(ExactPage(corners), s.Exact());
    kinds.Count(stretch.IsNothing() ? 0 : stretch.from == stretch.to ? 1 : 2);
    if (stretch.IsNothing() || clipper.GetOutputSize() == 0) return stretch.IsNothing() && clipper.GetOutputSize() == 0;
    Page seen;
    for (int i = 0; i < clipper.GetOutputSize(); ++i) seen |= clipper.GetOutputPoint(i);
    const LiteralPoint<Fraction> from = PointAt(s.Exact(), stretch.from);
    const LiteralPoint<Fraction> to = PointAt(s.Exact(), stretch.to);
    return clipper.Area() == 0 && IsNear(seen.BottomLeft(), {std::min(from.x, to.x), std::min(from.y, to.y), 0}) &&
           IsNear(seen.TopRight(), {std::max(from.x, to.x), std::max(from.y, to.y), 0});
  });
}

// Two open ways, each a polygon of one edge: crossings without partners, and pairs of a kind.
TEST(PolyClipperOnTheGridLong, AllPairsOfOpenWaysAreClippedAsALiteralBubbleSortDoes) {
  KindCount kinds({"as fed", "cut", "pairing mended", "no partner, rest dropped"});
  const GridPage pages[] = {HalfPage(1, 1, 5, 5), HalfPage(2, 2, 4, 4), HalfPage(6, 3, 0, 4)};
  PolyClipper clipper;
  ForSegmentPairs([&](const Segment& a, const Segment& b) {
    for (const GridPage& page : pages) {
      for (const bool closeLast : {false, true}) {
        clipper.SetPage(page.page);
        clipper.ResetOutputList();
        LiteralPolyClipper literal(page.page);
        for (const Segment& way : {a, b}) {
          clipper.StoreOutputPoint(way.start, true);
          clipper.StoreOutputPoint(way.end, false);
          literal.Store(way.start, true);
          literal.Store(way.end, false);
        }
        if (!clipper.DoPolyClip(closeLast) || !literal.DoPolyClip(closeLast) || !SameRings(clipper, literal)) return false;
        kinds.Count(literal.reached.jumps + literal.reached.closings + literal.reached.dropped == 0 ? 0 : 1);
        if (literal.reached.ties > 0) kinds.Count(2);
        if (literal.reached.dropped > 0) kinds.Count(3);
      }
    }
    return true;
  });
}

std::vector<Polygon> TrianglesOfTheSmallGrid() {
  const std::vector<Node> nodes = NodesOf(3);
  std::vector<Polygon> triangles;
  for (const Node& a : nodes) {
    for (const Node& b : nodes) {
      for (const Node& c : nodes) triangles.push_back({a, b, c});
    }
  }
  return triangles;
}

// The check is asked about every pair of triangles of the grid of three by three, or one of 11.
template <class Check>
void ForTrianglePairs(Check check) {
  const std::vector<Polygon> triangles = TrianglesOfTheSmallGrid();
  const auto shown = [](const Polygon& triangle) {
    std::string text;
    for (const Node& node : triangle) text += Point(node).ToString() + "; ";
    return text;
  };
  const std::size_t count = triangles.size();
  std::size_t pair = 0;
  EXPECT_TRUE(ForSpread(count * count, 11, pair, [&](std::size_t i) { return check(triangles[i / count], triangles[i % count]); }))
      << shown(triangles[pair / count]) << "and " << shown(triangles[pair % count]);
}

// The page around the first triangle: its sides go through nodes of the second. Every crossing is a half, so
// that doubles are exact.
TEST(PolyClipperOnTheGridLong, AllTrianglesAreClippedToTheBoxesOfAllTrianglesExactly) {
  KindCount kinds({"nothing", "no area", "an area", "whole"});
  PolyClipper clipper;
  ForTrianglePairs([&](const Polygon& boxed, const Polygon& triangle) {
    const auto [left, right] = std::minmax({boxed[0].x, boxed[1].x, boxed[2].x});
    const auto [bottom, top] = std::minmax({boxed[0].y, boxed[1].y, boxed[2].y});
    const LiteralPage<Fraction> box = {left, bottom, right, top};
    const Page page(left, bottom, right, top);
    clipper.SetPage(page);
    LiteralPolyClipper literal(page);
    const std::vector<Point> points = PointsOf(triangle);
    if (!clipper.FillPolygon(points) || !literal.FillPolygon(points) || !SameRings(clipper, literal)) return false;
    const std::vector<LiteralPoint<Fraction>> inside = Inside(triangle, box);
    const Fraction area = AreaOf(inside);
    if (clipper.Area() != area.Nearest()) return false;
    const bool isWhole = area > Fraction(0) && area == AreaOf(Inside(triangle, {0, 0, 2, 2}));
    kinds.Count(inside.empty() ? 0 : area == Fraction(0) ? 1 : isWhole ? 3 : 2);
    if (inside.empty() != (clipper.GetOutputSize() == 0)) return false;
    // Both have the same corners.
    for (int i = 0; i < clipper.GetOutputSize(); ++i) {
      const Point point = clipper.GetOutputPoint(i);
      const bool isCorner = std::any_of(inside.begin(), inside.end(), [&](const LiteralPoint<Fraction>& corner) {
        return corner.x.Nearest() == point.x && corner.y.Nearest() == point.y;
      });
      if (!isCorner) return false;
    }
    return true;
  });
}

bool AreApart(const Polygon& a, const Polygon& b) {
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t k = 0; k < 3; ++k) {
      if (Touch({a[i], a[(i + 1) % 3]}, {b[k], b[(k + 1) % 3]})) return false;
    }
  }
  // One in the other has its corners to one side of all the other's sides.
  const auto holds = [](const Polygon& outer, const Node& node) {
    const int turns[] = {Turn(outer[0], outer[1], node), Turn(outer[1], outer[2], node), Turn(outer[2], outer[0], node)};
    return (turns[0] > 0 && turns[1] > 0 && turns[2] > 0) || (turns[0] < 0 && turns[1] < 0 && turns[2] < 0);
  };
  return !holds(a, b[0]) && !holds(b, a[0]);
}

// Both at once: the areas of triangles that have no point in common add up. All others, neighbours with a
// common edge among them, are paired as the rules say, and may lose a part.
TEST(PolyClipperOnTheGridLong, AllTrianglePairsAreClippedTogetherExactlyOrAsALiteralBubbleSortDoes) {
  KindCount kinds({"apart", "in touch", "pairing mended", "no partner, rest dropped", "closed at a used partner"});
  const GridPage pages[] = {HalfPage(1, 1, 3, 3), HalfPage(0, 1, 2, 4)};
  PolyClipper clipper;
  ForTrianglePairs([&](const Polygon& a, const Polygon& b) {
    for (const GridPage& page : pages) {
      clipper.SetPage(page.page);
      clipper.ResetOutputList();
      LiteralPolyClipper literal(page.page);
      for (const Polygon& triangle : {a, b}) {
        for (std::size_t i = 0; i < 4; ++i) {
          clipper.StoreOutputPoint(triangle[i % 3], i == 0);
          literal.Store(triangle[i % 3], i == 0);
        }
      }
      if (!clipper.DoPolyClip(false) || !literal.DoPolyClip(false) || !SameRings(clipper, literal)) return false;
      if (literal.reached.ties > 0) kinds.Count(2);
      if (literal.reached.dropped > 0) kinds.Count(3);
      if (literal.reached.closings > 0) kinds.Count(4);
      const bool isApart = AreApart(a, b);
      kinds.Count(isApart ? 0 : 1);
      if (!isApart) continue;
      const Fraction area = AreaOf(Inside(a, page.exact)) + AreaOf(Inside(b, page.exact));
      if (!IsNear(clipper.Area(), area)) return false;
    }
    return true;
  });
}

}  // namespace
