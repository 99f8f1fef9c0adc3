// A facet of a surface: three points, what can be measured on them, and the cut along a level. Neighbours:
// Point.h for the corners, Page.h for the rectangle around them.
#pragma once

#include <type_traits>

#include "zelbase/geometry/Page.h"
#include "zelbase/geometry/Point.h"
#include "zelbase/platform/ZelBaseApi.h"

// Selects a corner of a triangle.
enum ANGULARPOINT : int {
  ANGULARPOINT_A = 0,
  ANGULARPOINT_B = 1,
  ANGULARPOINT_C = 2,
};

// A plain value of three points A, B and C, metres; in any order and place. Distances, angles and heights are
// those of the map: z takes no part in them.
//
//   Triangle facet(Point(0, 0, 10), Point(4, 0, 10), Point(0, 3, -10));
//   facet.GetDistanceBC();                                  // 5
//   Triangle cut[3];
//   const int count = facet.ZMinClip(0, cut);               // 3: nothing of them lies below 0
class ZELBASE_API Triangle {
 public:
  constexpr Triangle() = default;
  constexpr Triangle(const Point& a, const Point& b, const Point& c) : m_a(a), m_b(b), m_c(c) {}

  constexpr void SetPointA(const Point& point) { m_a = point; }
  constexpr void SetPointB(const Point& point) { m_b = point; }
  constexpr void SetPointC(const Point& point) { m_c = point; }
  constexpr void SetPoints(const Point& a, const Point& b, const Point& c) { *this = Triangle(a, b, c); }

  constexpr Point GetPointA() const { return m_a; }
  constexpr Point GetPointB() const { return m_b; }
  constexpr Point GetPointC() const { return m_c; }
  constexpr void GetPoints(Point& a, Point& b, Point& c) const {
    a = m_a;
    b = m_b;
    c = m_c;
  }

  // Lengths of the sides.
  double GetDistanceAB() const { return m_a.Dist2D(m_b); }
  double GetDistanceBC() const { return m_b.Dist2D(m_c); }
  double GetDistanceCA() const { return m_c.Dist2D(m_a); }

  // The inner angle at a corner in radians, 0 to pi: acos of the dot product of both sides by the product of
  // their lengths. NaN where a side at the corner has no length. Corners on one line give 0 and pi, or NaN
  // where the quotient is rounded to beyond 1.
  double GetAngleA() const;
  double GetAngleB() const;
  double GetAngleC() const;

  // The height from a corner onto the opposite side: CA * sin(angle C) from A, AB * sin(angle A) from B, BC *
  // sin(angle B) from C. 0.0 for any other value; NaN where the angle is.
  double GetHeight(ANGULARPOINT which) const;

  // The distance from a corner to the middle of the opposite side; 0.0 for any other value.
  double GetDistToMiddleOfOppositeSide(ANGULARPOINT which) const;

  // Takes the corners into `page`, which is not reset before. Always true.
  bool GetExtents(Page& page) const;

  // Limits the facet to heights of at least `zMin`, and returns how many triangles were written to `out`,
  // which has room for three:
  //
  //   corners                  result   out                                     this triangle
  //   none below the level     1        a copy                                  untouched
  //   none above the level     1        a copy with all z at the level          flattened likewise
  //   some below, some not     3        the facet, cut where the level is met   lower corners lifted to it
  //
  // With the result 1 the other two are untouched. Of the three pieces one or two lie flat on the level. An
  // edge that begins on the level (of A to B, B to C, C to A) and falls is cut exactly at that corner; one
  // that rises to the level from below is cut there within rounding. Crossings have the z of the formula,
  // within rounding of the level, and lifted corners the level itself.
  //
  // NaN: a corner whose z is NaN counts as below and keeps it; where no edge can be cut, the origin stands in
  // for the crossing. A null `out` gives 0 and touches nothing. `out` may be this triangle.
  int ZMinClip(double zMin, Triangle* out);

 private:
  Point m_a;
  Point m_b;
  Point m_c;
};

static_assert(sizeof(Triangle) == 3 * sizeof(Point));
static_assert(std::is_trivially_copyable_v<Triangle> && std::is_standard_layout_v<Triangle>);
