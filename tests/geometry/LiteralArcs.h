// What is asked of circles and arcs, a second time: where two of them cross, and where a line crosses one.
// Step by step as the rules are told, and bit for bit what the quick forms give. LiteralSegments.h has the
// lines, SecondCurve.h the bearings.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "tests/geometry/LiteralSegments.h"
#include "tests/geometry/SecondCurve.h"
#include "zelbase/geometry/Curve.h"

inline SecondCurve Second(const Curve& curve) { return {curve.centre.x, curve.centre.y, curve.radius, curve.startAngle, curve.endAngle}; }

// --- Two arcs ---

enum class CirclesMeeting { kConcentric, kApart, kInsideFirst, kInsideSecond, kNoneOnTheArcs, kOne, kTwo };

inline const std::vector<std::string> kCirclesMeetings = {
    "concentric", "apart", "inside the first", "inside the second", "none on the arcs", "one", "two"};

struct LiteralCommon {
  CirclesMeeting meeting = CirclesMeeting::kConcentric;
  std::size_t count = 0;
  std::array<Point, 2> points;
};

inline LiteralCommon LiteralIntersect(const SecondCurve& a, const SecondCurve& b) {
  LiteralCommon common;
  const double wayX = b.centreX - a.centreX;
  const double wayY = b.centreY - a.centreY;
  const double d = std::sqrt(wayX * wayX + wayY * wayY);
  if (d == 0) return common;
  const double ra = std::abs(a.radius);
  const double rb = std::abs(b.radius);
  common.meeting = CirclesMeeting::kApart;
  if (ra + rb < d) return common;
  common.meeting = CirclesMeeting::kInsideFirst;
  if (ra - rb > d) return common;
  const double t = (a.radius * a.radius + d * d - b.radius * b.radius) / (ra * (2 * d)) * ra;
  common.meeting = CirclesMeeting::kInsideSecond;
  if (std::abs(t) > ra) return common;
  const double h = std::sqrt(a.radius * a.radius - t * t);
  const double ux = wayY / d;
  const double uy = -(wayX / d);
  for (const double side : {h, -h}) {
    const Point candidate(a.centreX + side * ux - t * uy, a.centreY + side * uy + t * ux, 0);
    if (!a.HoldsPoint(candidate.x, candidate.y)) continue;
    if (b.HoldsPoint(candidate.x, candidate.y)) common.points[common.count++] = candidate;
  }
  common.meeting = common.count == 0 ? CirclesMeeting::kNoneOnTheArcs : common.count == 1 ? CirclesMeeting::kOne : CirclesMeeting::kTwo;
  return common;
}

// --- A line and an arc ---

enum class ChordMeeting { kNoLength, kPassesBy, kCrosses };

struct LiteralChord {
  ChordMeeting meeting = ChordMeeting::kNoLength;
  std::array<Point, 2> points;
  std::array<long, 2> flags = {};
};

inline LiteralChord LiteralIntersect(const LiteralSegment<double>& l, const SecondCurve& c) {
  LiteralChord chord;
  const double wayX = l.end.x - l.start.x;
  const double wayY = l.end.y - l.start.y;
  const double length = std::sqrt(wayX * wayX + wayY * wayY);
  if (length == 0) return chord;
  const double toX = c.centreX - l.start.x;
  const double toY = c.centreY - l.start.y;
  const double aside = toX * wayY / length - toY * wayX / length;
  chord.meeting = ChordMeeting::kPassesBy;
  if (std::abs(c.radius) < std::abs(aside)) return chord;
  chord.meeting = ChordMeeting::kCrosses;
  const double middle = toX * wayX / length + toY * wayY / length;
  const double half = std::sqrt(c.radius * c.radius - aside * aside);
  for (std::size_t i = 0; i < 2; ++i) {
    const double s = i == 0 ? middle - half : middle + half;
    chord.points[i] = Point(l.start.x + s * (wayX / length), l.start.y + s * (wayY / length), 0);
    if (s >= 0 && s <= length) chord.flags[i] |= 1;
    if (c.HoldsPoint(chord.points[i].x, chord.points[i].y)) chord.flags[i] |= 2;
  }
  return chord;
}

// --- Two circles by centre and radius ---

enum class RangesMeeting { kConcentric, kApart, kOneInTheOther, kBeyondByRounding, kCrossing };

struct LiteralRanges {
  RangesMeeting meeting = RangesMeeting::kCrossing;
  double x = 0;
  double y = 0;
};

inline LiteralRanges LiteralIntersectP3(const Point& a, const Point& b, double ra, double rb) {
  const double wayX = b.x - a.x;
  const double wayY = b.y - a.y;
  const double d = std::sqrt(wayX * wayX + wayY * wayY);
  const double t = (d * d + ra * ra - rb * rb) / (2 * d * ra) * ra;
  LiteralRanges ranges;
  if (std::abs(t) > ra) ranges.meeting = RangesMeeting::kBeyondByRounding;
  if (std::abs(ra - rb) > d) ranges.meeting = RangesMeeting::kOneInTheOther;
  if (ra + rb < d) ranges.meeting = RangesMeeting::kApart;
  if (d == 0) ranges.meeting = RangesMeeting::kConcentric;
  const double h = std::sqrt(ra * ra - t * t);
  const double ux = wayY / d;
  const double uy = -(wayX / d);
  ranges.x = a.x - h * ux - t * uy;
  ranges.y = a.y - h * uy + t * ux;
  return ranges;
}
