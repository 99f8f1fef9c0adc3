// Clips closed polygons with heights to a page, and gives back closed rings: as many as the page leaves.
// Neighbours: Page.h is the page, and clips lines and circles; Line.h has Line::Clip.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "zelbase/geometry/Page.h"
#include "zelbase/geometry/Point.h"
#include "zelbase/geometry/detail/PolygonPass.h"
#include "zelbase/platform/ZelBaseApi.h"

// A polygon that leaves the page and comes back is cut into several rings; they are not joined along the
// page's edge. A cut point has its height interpolated along its edge.
//
//   PolyClipper clipper;
//   clipper.SetPage(Page(0, 0, 10, 10));
//   clipper.FillPolygon(points);                          // one polygon, closed here when it is not
//   for (int i = 0; i < clipper.GetOutputSize(); ++i) {
//     if (clipper.GetOutputFlag(i)) ...                   // a new ring begins
//     ... clipper.GetOutputPoint(i) ...
//   }
//
// Several polygons at once: ResetOutputList, StoreOutputPoint for each point (true at the first of each
// polygon), DoPolyClip.
//
// How it works. Four passes, one a side: x >= left, y <= top, x <= right, y >= bottom; each reads what the
// one before left. A pass lists the points inside and the crossings in the order of the polygon, sorts the
// crossings along the side and pairs them, first with second, third with fourth. Then it walks: along the
// polygon as far as a leaving crossing, over to its partner, on along the polygon from there, until it meets
// a partner that is used.
//
// What surprises:
// - On the side is inside. A polygon that touches a side from outside with one vertex gives a ring of four
//   equal points and no area; polygons with vertices on sides may give odd rings.
// - A page wholly inside a polygon gives the page as one ring.
// - Polygons that are clipped at once are paired in one list a side. Those that overlap, or share an edge or a
//   vertex, may lose a part; what has no point in common, and one polygon that does not cross itself, does not.
// - FillPolygon takes the page's `left` for its first side as it stands, DoPolyClip the smaller of left and
//   right: FillPolygon expects a page with left <= right, else nothing but points on x = left is kept.
// - DoPolyClip(true) closes the last polygon only, and with the very first point of all.
// - Where a crossing is left without a partner, the rest of that pass is dropped, and the result is true all
//   the same.
// - A point that cannot be told to lie on either side (NaN, or a side that is NaN) is not kept; the edges at
//   it are not cut.
//
// Bounds: time is n + k log k for n points and k crossings of a side. What comes out is a small multiple of
// what went in, unless NaN is among it; a pass ends, dropping the rest, once it has given more than 16 times
// the points fed and a million, or more than 2147483647 points.
//
// A value: copies are independent. A clipper can be used again and again; its lists keep their memory. One
// thread at a time.
class ZELBASE_API PolyClipper {
 public:
  // The page is the invalid one until SetPage.
  PolyClipper() = default;

  void SetPage(const Page& page) { m_page = page; }

  // --- Clipping ---

  // Clips one polygon; the rings replace the output list. A polygon whose last point differs from its first
  // (in any component) is closed. False, with the output list untouched, when `points` is null or there are
  // none or more than 2147483647; otherwise true, also when nothing lies inside.
  bool FillPolygon(const Point* points, long count);
  bool FillPolygon(const std::vector<Point>& points);

  // Empties the output list.
  void ResetOutputList();

  // Appends to the output list, which is how polygons are fed to DoPolyClip. Always true; beyond 2147483647
  // points nothing is stored.
  bool StoreOutputPoint(const Point& point, bool newRing);

  // Clips all that stands in the output list, in place. False when it is empty. With `closeLast`, and when
  // the last point differs from the first, an edge to the first is added to the last polygon. All others the
  // caller closes; what is not closed has no last edge.
  bool DoPolyClip(bool closeLast);

  // --- The result ---

  int GetOutputSize() const { return static_cast<int>(m_outputPoints.size()); }

  // Point i, from 0; Point() when there is none.
  Point GetOutputPoint(int index) const { return HasOutput(index) ? m_outputPoints[static_cast<std::size_t>(index)] : Point(); }

  // Whether a ring begins at point i; false when there is none.
  bool GetOutputFlag(int index) const { return HasOutput(index) && m_outputFlags[static_cast<std::size_t>(index)] != 0; }

  // The sum of the areas of all rings, each without sign; overlaps count twice.
  // Kept: a last ring of two edges or less adds nothing, but before another ring the joint to it counts as an
  // edge, so that an unclosed ring of three points there adds its part.
  double Area() const;

 private:
  bool HasOutput(int index) const { return index >= 0 && static_cast<std::size_t>(index) < m_outputPoints.size(); }

  void ProcessPoly(double firstLimit);
  void WriteOutputList(const std::vector<zelbase::detail::PolygonRun>& rings);

  Page m_page;

  // The output list; between two calls both have one size.
  std::vector<Point> m_outputPoints;
  std::vector<unsigned char> m_outputFlags;

  // The work, for the memory of its lists: what is fed, the passes, and the output list to come.
  std::vector<zelbase::detail::PolygonRun> m_polygons;
  std::array<zelbase::detail::PolygonPass, 4> m_passes;
  std::vector<Point> m_newPoints;
};
