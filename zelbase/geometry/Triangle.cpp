#include "zelbase/geometry/Triangle.h"

#include <cmath>

namespace {

// The angle at `corner` between the sides to `p` and `q`, whose lengths are given.
double AngleBetween(const Point& corner, const Point& p, const Point& q, double lengthP, double lengthQ) {
  const Point toP = p - corner;
  const Point toQ = q - corner;
  return std::acos((toP.x * toQ.x + toP.y * toQ.y) / (lengthP * lengthQ));
}

double DistToMiddle(const Point& corner, const Point& from, const Point& to) { return corner.Dist2D(from + (to - from) * 0.5); }

// An edge that runs from one side of the level to the other is cut where it meets it.
struct Edge {
  Edge(const Point& from, const Point& to, bool fromAbove, bool toAbove, double level) : isCut(fromAbove != toAbove) {
    if (isCut) crossing = from + (to - from) * ((level - from.z) / (to.z - from.z));
  }

  bool isCut;
  Point crossing;
};

void Lift(Point& corner, double level) {
  if (corner.z < level) corner.z = level;
}

}  // namespace

double Triangle::GetAngleA() const { return AngleBetween(m_a, m_b, m_c, GetDistanceAB(), GetDistanceCA()); }

double Triangle::GetAngleB() const { return AngleBetween(m_b, m_c, m_a, GetDistanceBC(), GetDistanceAB()); }

double Triangle::GetAngleC() const { return AngleBetween(m_c, m_a, m_b, GetDistanceCA(), GetDistanceBC()); }

double Triangle::GetHeight(ANGULARPOINT which) const {
  switch (which) {
    case ANGULARPOINT_A: return GetDistanceCA() * std::sin(GetAngleC());
    case ANGULARPOINT_B: return GetDistanceAB() * std::sin(GetAngleA());
    case ANGULARPOINT_C: return GetDistanceBC() * std::sin(GetAngleB());
  }
  return 0.0;
}

double Triangle::GetDistToMiddleOfOppositeSide(ANGULARPOINT which) const {
  switch (which) {
    case ANGULARPOINT_A: return DistToMiddle(m_a, m_b, m_c);
    case ANGULARPOINT_B: return DistToMiddle(m_b, m_c, m_a);
    case ANGULARPOINT_C: return DistToMiddle(m_c, m_a, m_b);
  }
  return 0.0;
}

bool Triangle::GetExtents(Page& page) const {
  // Kept: the page is not reset, so that it can be grown over a whole surface.
  page |= m_a;
  page |= m_b;
  page |= m_c;
  return true;
}

int Triangle::ZMinClip(double zMin, Triangle* out) {
  if (out == nullptr) return 0;
  const bool aboveA = zMin <= m_a.z;
  const bool aboveB = zMin <= m_b.z;
  const bool aboveC = zMin <= m_c.z;
  // Kept: tested first, so that a facet that lies in the level stays as it is.
  if (aboveA && aboveB && aboveC) {
    out[0] = *this;
    return 1;
  }
  if (m_a.z <= zMin && m_b.z <= zMin && m_c.z <= zMin) {
    // Kept: this triangle is flattened as well; callers go on with it.
    m_a.z = m_b.z = m_c.z = zMin;
    out[0] = *this;
    return 1;
  }

  // Kept: crossings come of the heights as they were, before a corner is lifted.
  const Edge ab(m_a, m_b, aboveA, aboveB, zMin);
  const Edge bc(m_b, m_c, aboveB, aboveC, zMin);
  const Edge ca(m_c, m_a, aboveC, aboveA, zMin);
  Lift(m_a, zMin);
  Lift(m_b, zMin);
  Lift(m_c, zMin);
  const Triangle lifted = *this;  // `out` may be this triangle
  const Point& a = lifted.m_a;
  const Point& b = lifted.m_b;
  const Point& c = lifted.m_c;
  out[0] = Triangle(a, ab.isCut ? ab.crossing : b, ca.isCut ? ca.crossing : c);
  out[1] = Triangle(b, bc.isCut ? bc.crossing : c, ab.isCut ? ab.crossing : ca.crossing);
  out[2] = Triangle(c, ca.isCut ? ca.crossing : ab.crossing, bc.isCut ? bc.crossing : ab.crossing);
  return 3;
}
