// What is asked of a segment, a second time: where two lines cross, what a page shows of one, and where it
// meets the edges. Step by step as the rules are told, nothing combined, and over any kind of number: doubles
// judge the quick forms to the last bit, fractions (Fraction.h) judge them against what is exact.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/Page.h"

template <class Number>
struct LiteralPoint {
  Number x{};
  Number y{};
  Number z{};
};

template <class Number>
struct LiteralSegment {
  LiteralPoint<Number> start;
  LiteralPoint<Number> end;
};

template <class Number>
struct LiteralPage {
  Number left{};
  Number bottom{};
  Number right{};
  Number top{};
};

inline LiteralPoint<double> Literal(const Point& p) { return {p.x, p.y, p.z}; }
inline LiteralSegment<double> Literal(const Line& l) { return {Literal(l.start), Literal(l.end)}; }
inline LiteralPage<double> Literal(const Page& p) { return {p.left, p.bottom, p.right, p.top}; }
inline Point Plain(const LiteralPoint<double>& p) { return Point(p.x, p.y, p.z); }
inline Line Plain(const LiteralSegment<double>& s) { return Line(Plain(s.start), Plain(s.end)); }

// The constants of the rules, as a number of the kind asked for.
template <class Number>
struct LiteralLimits {
  static constexpr Number tolerance = 1e-07;
  static constexpr Number steep = 1e10;
  static constexpr Number noDistance = 4.440892098500626e-16;
};

// In either order, ends included.
template <class Number>
bool LiteralBetween(const Number& v, const Number& a, const Number& b) {
  if (a <= v && v <= b) return true;
  return b <= v && v <= a;
}

// --- Where two lines cross ---

enum class Meeting { kBothVertical, kSecondVertical, kFirstVertical, kParallel, kBothSteep, kSecondSteep, kFirstSteep, kOrdinary };

template <class Number>
struct LiteralCrossing {
  Meeting meeting = Meeting::kOrdinary;
  Number x{};
  Number y{};
  long flags = 0;

  bool Found() const { return meeting != Meeting::kBothVertical && meeting != Meeting::kParallel && meeting != Meeting::kBothSteep; }
};

// All that the cases ask for is reckoned first, whether it will be needed or not.
template <class Number>
LiteralCrossing<Number> LiteralIntersect(const LiteralSegment<Number>& a, const LiteralSegment<Number>& b) {
  using std::abs;
  const Number tolerance = LiteralLimits<Number>::tolerance;
  const Number steep = LiteralLimits<Number>::steep;
  const Number wayA = abs(a.start.x - a.end.x);
  const Number wayB = abs(b.start.x - b.end.x);
  const Number slopeA = (a.start.y - a.end.y) / (a.start.x - a.end.x);
  const Number slopeB = (b.start.y - b.end.y) / (b.start.x - b.end.x);
  const Number heightA = a.start.y - a.start.x * slopeA;
  const Number heightB = b.start.y - b.start.x * slopeB;

  LiteralCrossing<Number> crossing;
  crossing.meeting = wayB < tolerance && wayA < tolerance         ? Meeting::kBothVertical
                     : wayB < tolerance                           ? Meeting::kSecondVertical
                     : wayB >= tolerance && wayA < tolerance      ? Meeting::kFirstVertical
                     : abs(slopeA - slopeB) < tolerance           ? Meeting::kParallel
                     : abs(slopeB) > steep && abs(slopeA) > steep ? Meeting::kBothSteep
                     : abs(slopeB) > steep                        ? Meeting::kSecondSteep
                     : abs(slopeA) > steep                        ? Meeting::kFirstSteep
                                                                  : Meeting::kOrdinary;
  switch (crossing.meeting) {
    case Meeting::kBothVertical:
    case Meeting::kParallel:
    case Meeting::kBothSteep: return crossing;
    case Meeting::kSecondVertical:
    case Meeting::kSecondSteep:
      crossing.x = b.start.x;
      crossing.y = slopeA * crossing.x + heightA;
      break;
    case Meeting::kFirstVertical:
    case Meeting::kFirstSteep:
      crossing.x = a.start.x;
      crossing.y = slopeB * crossing.x + heightB;
      break;
    case Meeting::kOrdinary:
      crossing.x = (heightB - heightA) / (slopeA - slopeB);
      crossing.y = slopeA * crossing.x + heightA;
      break;
  }
  const auto isOn = [&](const LiteralSegment<Number>& s) {
    const Number acrossX = (s.end.x - crossing.x) * (s.start.x - crossing.x);
    const Number acrossY = (s.end.y - crossing.y) * (s.start.y - crossing.y);
    return acrossX < tolerance && acrossY < tolerance;
  };
  if (isOn(a)) crossing.flags |= 1;
  if (isOn(b)) crossing.flags |= 2;
  return crossing;
}

// --- What a page shows of a segment ---

// The four edges as a table, each with its bit.
template <class Number>
bool LiteralClipLine(const LiteralPage<Number>& page, const LiteralSegment<Number>& in, LiteralSegment<Number>* out) {
  using std::abs;
  using Place = LiteralPoint<Number>;
  const Number noDistance = LiteralLimits<Number>::noDistance;
  const Number xMin = std::min(page.left, page.right);
  const Number xMax = std::max(page.left, page.right);
  const Number yMin = std::min(page.bottom, page.top);
  const Number yMax = std::max(page.bottom, page.top);
  const auto code = [&](const Place& p) { return (p.y > yMax ? 1 : p.y < yMin ? 2 : 0) + (p.x > xMax ? 4 : p.x < xMin ? 8 : 0); };
  int c1 = code(in.start);
  int c2 = code(in.end);
  if ((c1 & c2) != 0) return false;
  *out = in;
  struct Edge {
    int bit;
    Number Place::*across;
    Number Place::*along;
    Number bound;
    Number low;
    Number high;
  };
  const std::array<Edge, 4> edges = {Edge{1, &Place::y, &Place::x, yMax, xMin, xMax}, Edge{2, &Place::y, &Place::x, yMin, xMin, xMax},
                                     Edge{4, &Place::x, &Place::y, xMax, yMin, yMax}, Edge{8, &Place::x, &Place::y, xMin, yMin, yMax}};
  const auto clip = [&](int& c, Place& p, const Place& far) {
    for (const Edge& edge : edges) {
      if ((c & edge.bit) == 0) continue;
      if (abs(far.*edge.across - p.*edge.across) > noDistance) {
        p.*edge.along += (far.*edge.along - p.*edge.along) * (edge.bound - p.*edge.across) / (far.*edge.across - p.*edge.across);
      }
      p.*edge.across = edge.bound;
      if (edge.low <= p.*edge.along && p.*edge.along <= edge.high) c = 0;
    }
    return c == 0;
  };
  if (!clip(c1, out->start, out->end) || !clip(c2, out->end, out->start)) return false;
  if (in.start.z == Number(0) && in.end.z == Number(0)) return true;
  const Number dx = abs(in.end.x - in.start.x);
  const Number dy = abs(in.end.y - in.start.y);
  const Number dz = in.end.z - in.start.z;
  if (!(dx > dy) && dy <= noDistance) {
    out->start.z = in.start.z;
    out->end.z = in.end.z;
    return true;
  }
  Number Place::*const by = dx > dy ? &Place::x : &Place::y;
  const Number way = dx > dy ? dx : dy;
  out->start.z = in.start.z + dz * abs(out->start.*by - in.start.*by) / way;
  out->end.z = in.start.z + dz * abs(out->end.*by - in.start.*by) / way;
  return true;
}

// --- Where a segment meets the edges of a page ---

template <class Number>
struct LiteralEdges {
  int count = 0;                // of the crossings: 0, 1 or 2
  LiteralSegment<Number> line;  // in the direction of the line asked for; nothing when there are none
  bool start = false;
  bool end = false;
};

// With the crossings in a list and the lines' own formulas written out.
template <class Number>
LiteralEdges<Number> LiteralClip(const LiteralSegment<Number>& line, LiteralPage<Number> page, bool flip, bool extend) {
  if (page.right < page.left) std::swap(page.left, page.right);
  if (page.top < page.bottom) std::swap(page.bottom, page.top);
  if (flip) std::swap(page.bottom, page.top);
  const bool reversed = line.end.x < line.start.x;
  const LiteralPoint<Number> a = reversed ? line.end : line.start;
  const LiteralPoint<Number> b = reversed ? line.start : line.end;
  const Number m = (a.y - b.y) / (a.x - b.x);
  const Number c = a.y - a.x * m;
  std::array<LiteralPoint<Number>, 4> found;
  std::size_t count = 0;
  for (const Number& x : {page.left, page.right}) {
    if (a.x == b.x) continue;
    const Number y = m * x + c;
    const bool inSegment = LiteralBetween(x, a.x, b.x) && LiteralBetween(y, a.y, b.y);
    if ((inSegment || extend) && LiteralBetween(y, page.bottom, page.top)) found[count++] = {x, y, Number(0)};
  }
  for (const Number& y : {page.bottom, page.top}) {
    if (count >= 2 || a.y == b.y) continue;
    const Number x = (y - c) / m;
    const bool inSegment = LiteralBetween(x, a.x, b.x) && LiteralBetween(y, a.y, b.y);
    if ((inSegment || extend) && page.left <= x && x <= page.right) found[count++] = {x, y, Number(0)};
  }
  LiteralEdges<Number> edges;
  edges.count = static_cast<int>(count);
  if (count == 0) return edges;
  if (count == 1) found[1] = found[0];
  if (count == 2 && reversed != (found[1].x < found[0].x)) std::swap(found[0], found[1]);
  edges.line = {found[0], found[1]};
  edges.start = !(found[0].x == line.start.x && found[0].y == line.start.y);
  edges.end = !(found[1].x == line.end.x && found[1].y == line.end.y);
  return edges;
}
