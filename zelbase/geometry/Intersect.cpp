#include "zelbase/geometry/Intersect.h"

#include <cmath>

#include "zelbase/geometry/MathConstants.h"

namespace {

constexpr double kVerticalSlope = 1e10;

// A line as y = slope * x + height.
struct SlopeForm {
  explicit SlopeForm(const Line& line)
      : slope((line.start.y - line.end.y) / (line.start.x - line.end.x)), height(line.start.y - line.start.x * slope) {}
  double At(double x) const { return slope * x + height; }
  bool IsSteep() const { return std::fabs(slope) > kVerticalSlope; }

  double slope;
  double height;
};

// Kept: products against the tolerance, not distances; a point just beyond an end counts.
bool IsOnSegment(const Line& line, double x, double y) {
  return (line.end.x - x) * (line.start.x - x) < TOLERANCE && (line.end.y - y) * (line.start.y - y) < TOLERANCE;
}

// The crossing of two lines; false when they are parallel.
bool Crossing(const Line& a, const Line& b, double& x, double& y) {
  const double dxa = std::fabs(a.start.x - a.end.x);
  const double dxb = std::fabs(b.start.x - b.end.x);
  if (dxb < TOLERANCE) {
    if (dxa < TOLERANCE) return false;
    x = b.start.x;
    y = SlopeForm(a).At(x);
    return true;
  }
  const SlopeForm formB(b);
  if (dxb >= TOLERANCE && dxa < TOLERANCE) {
    x = a.start.x;
    y = formB.At(x);
    return true;
  }
  const SlopeForm formA(a);
  if (std::fabs(formA.slope - formB.slope) < TOLERANCE) return false;
  if (formB.IsSteep()) {
    if (formA.IsSteep()) return false;
    x = b.start.x;
    y = formA.At(x);
  } else if (formA.IsSteep()) {
    x = a.start.x;
    y = formB.At(x);
  } else {
    x = (formB.height - formA.height) / (formA.slope - formB.slope);
    y = formA.At(x);
  }
  return true;
}

// Two circles seen from the first: how far along the way between the centres the chord of their crossings
// lies, half its length, and the unit vector of the chord, which points to the right of the way.
struct CircleChord {
  double along = 0;
  double half = 0;
  double ux = 0;
  double uy = 0;
};

// False when the chord lies beyond the first circle. The distance d is not 0.
bool FindChord(const Point& a, const Point& b, double ra, double rb, double d, CircleChord& chord) {
  chord.along = (ra * ra + d * d - rb * rb) / (ra * (2 * d)) * ra;
  if (std::fabs(chord.along) > ra) return false;
  chord.half = std::sqrt(ra * ra - chord.along * chord.along);
  chord.ux = (b.y - a.y) / d;
  chord.uy = -((b.x - a.x) / d);
  return true;
}

Point RightEnd(const Point& a, const CircleChord& chord) {
  return Point(a.x + chord.half * chord.ux - chord.along * chord.uy, a.y + chord.half * chord.uy + chord.along * chord.ux, 0.0);
}

Point LeftEnd(const Point& a, const CircleChord& chord) {
  return Point(a.x - chord.half * chord.ux - chord.along * chord.uy, a.y - chord.half * chord.uy + chord.along * chord.ux, 0.0);
}

// The line from the middle of a chord at a right angle to it.
Line Perpendicular(const Point& a, const Point& b) {
  const Point middle = (a + b) * 0.5;
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  return Line(middle, Point(middle.x - dy, middle.y + dx, 0.0));
}

}  // namespace

bool Intersect(const Line& a, const Line& b, Point& p, long& flags) {
  double x = 0;
  double y = 0;
  if (!Crossing(a, b, x, y)) return false;
  flags = (IsOnSegment(a, x, y) ? 1 : 0) + (IsOnSegment(b, x, y) ? 2 : 0);
  p.x = x;
  p.y = y;  // Kept: p.z stays as it was.
  return true;
}

long Intersect(const Curve& a, const Curve& b, Point (&p)[2]) {
  const double d = a.centre.Dist2D(b.centre);
  if (d == 0) return 0;
  const double ra = std::fabs(a.radius);
  const double rb = std::fabs(b.radius);
  if (ra + rb < d) return 0;
  // Kept: one way round only, unlike in IntersectP3; that a lies inside of b is found by the chord.
  if (ra - rb > d) return 0;
  CircleChord chord;
  if (!FindChord(a.centre, b.centre, ra, rb, d, chord)) return 0;
  const Point candidates[] = {RightEnd(a.centre, chord), LeftEnd(a.centre, chord)};
  Point found[2];
  long count = 0;
  for (const Point& candidate : candidates) {
    // Kept: touching circles have the same candidate twice, and it counts 2.
    if (a.PointInSegment(candidate) && b.PointInSegment(candidate)) found[count++] = candidate;
  }
  for (long i = 0; i < count; ++i) p[i] = found[i];
  return count;
}

bool Intersect(const Line& l, const Curve& c, Point (&p)[2], long (&flags)[2]) {
  const double length = l.Length(false);
  if (length == 0) return false;
  const double dx = l.end.x - l.start.x;
  const double dy = l.end.y - l.start.y;
  const double cx = c.centre.x - l.start.x;
  const double cy = c.centre.y - l.start.y;
  const double aside = cx * dy / length - cy * dx / length;
  if (std::fabs(c.radius) < std::fabs(aside)) return false;
  const double middle = cx * dx / length + cy * dy / length;
  const double half = std::sqrt(c.radius * c.radius - aside * aside);
  const double along[] = {middle - half, middle + half};
  Point found[2];
  long marks[2];
  for (int i = 0; i < 2; ++i) {
    found[i] = Point(l.start.x + along[i] * (dx / length), l.start.y + along[i] * (dy / length), 0.0);
    marks[i] = (0 <= along[i] && along[i] <= length ? 1 : 0) + (c.PointInSegment(found[i]) ? 2 : 0);
  }
  for (int i = 0; i < 2; ++i) {
    p[i] = found[i];
    flags[i] = marks[i];
  }
  return true;
}

bool IntersectP3(const Point& a, const Point& b, double ra, double rb, Point& p) {
  const double d = a.Dist2D(b);
  if (d == 0) return false;
  if (ra + rb < d) return false;
  if (std::fabs(ra - rb) > d) return false;
  CircleChord chord;
  if (!FindChord(a, b, ra, rb, d, chord)) return false;
  // Kept: the second candidate of two curves, to the left of the way.
  const Point found = LeftEnd(a, chord);
  p.x = found.x;
  p.y = found.y;  // Kept: p.z stays as it was.
  return true;
}

bool CentreCircleFrom3P(const Point& a, const Point& b, const Point& c, Point& centre) {
  long flags = 0;
  return Intersect(Perpendicular(a, b), Perpendicular(b, c), centre, flags);
}
