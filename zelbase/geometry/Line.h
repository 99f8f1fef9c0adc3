// A directed straight segment between two points. Neighbours: Curve.h for arcs, Intersect.h for what lines
// and curves have in common, Page.h for the rectangle around a line and the part of a line that it shows.
#pragma once

#include <string>
#include <type_traits>

#include "zelbase/geometry/Page.h"
#include "zelbase/geometry/Point.h"
#include "zelbase/platform/CSize.h"
#include "zelbase/platform/ZelBaseApi.h"

class CDC;
class CoordinateSystem;

// A plain value of two points, metres. Where it asks for "the line", it means the endless line through both.
//
//   const Line line(Point(0, 0, 0), Point(10, 5, 0));
//   double y = 0;
//   bool inSegment = false;
//   line.GetLineY(4, y, inSegment);   // true: y 2, inSegment true
//   line.Offset(2);                   // 2 metres to the right of travel
class ZELBASE_API Line {
 public:
  constexpr Line() = default;
  constexpr Line(const Point& p1, const Point& p2) : start(p1), end(p2) {}

  constexpr void Set(const Point& p1, const Point& p2) { *this = Line(p1, p2); }

  // Over x and y, and over z as well when `with3D`.
  double Length(bool with3D = false) const { return with3D ? start.Dist3D(end) : start.Dist2D(end); }

  // The middle of both ends over x, y and z, 0.5 * (start + end).
  constexpr Point GetCenter() const { return (start + end) * 0.5; }

  // The page around both ends.
  constexpr Page Extents() const { return Page(start, start) |= end; }

  // The line's y at `x`, by m * x + (start.y - start.x * m) with the slope m; `inSegment` tells whether the
  // point lies between the ends in x and in y, both inclusive and without a tolerance. False, outputs
  // untouched, when both ends have exactly the same x.
  bool GetLineY(double x, double& y, bool& inSegment) const;

  // The line's x at `y`, by (y - (start.y - start.x * m)) / m. False, outputs untouched, when both ends have
  // exactly the same y. A line whose ends have exactly the same x gives true nevertheless, with NaN and not
  // in the segment: unlike GetLineY this one does not refuse what it cannot answer, and clipping counts on
  // it.
  bool GetLineX(double y, double& x, bool& inSegment) const;

  // The line shifted sideways by `distance` metres, to the right of travel when positive. Its heights are the
  // originals raised by the line's own difference in height:
  //   Line(Point(0, 0, 1), Point(0, 10, 4)).Offset(2);   // (2, 0, 4) to (2, 10, 7)
  // A line without length counts as one to the north.
  Line Offset(double distance) const;

  // Where the segment, or with `extend` the endless line, crosses the edges of the page: another question
  // than Page::ClipLine answers. `flip` says that it is a page of the screen; the page's own order does not
  // matter. What comes back has z 0 and runs in the direction of the line:
  //
  //   crossings   result                       startClipped and endClipped
  //   two         from one to the other        whether that end differs from the line's, in x or y, exactly
  //   one         both ends are the crossing   as with two
  //   none        both ends are (-m, -m, 0)    false; m is the largest double
  //
  // A segment wholly inside gives "none" as one wholly outside does, and a segment with one end inside gives
  // a line without length; Page::IsPointInPage of the ends tells them apart. A line whose ends have exactly
  // the same x has no crossings at all. A line through a corner finds it twice, and then not where it crosses
  // the page's other side: there, and only there, `flip` makes a difference.
  // An edge that is NaN, and the two that end at it, have no crossings.
  Line Clip(const Page& page, bool flip, bool extend, bool& startClipped, bool& endClipped) const;

  // Without `extend`.
  Line Clip(const Page& page, bool flip, bool& startClipped, bool& endClipped) const;

  // Draws in the selected pen what `page` shows of the line; both are turned into pixels first, and the line is clipped there. The
  // last pixel is painted, too, and twice in the raster modes 6 and 7, which would otherwise take it away again. Without
  // a pen that pixel is not painted. Ends that are equal in x, y and z draw nothing; a line of nothing but height is
  // one pixel. Null draws nothing.
  void DrawLine(CDC* dc, const CoordinateSystem& cs, const Page& page) const;

  // Writes a text along what `page` shows of the line, in Arial `height` pixels high. It ends at the visible
  // piece's start, on the line's base. Where it would leave the page there, and the line comes in from outside, it is
  // moved along the line until it is inside, and lies above the line.
  //
  // False, and nothing written, when the ends are equal in x, y and z, nothing is visible or there is no surface. The surface's
  // font, alignment and background mode are as before.
  bool AnnotateLine(CDC* dc, const CoordinateSystem& cs, const Page& page, const std::string& text, int height) const;

  Point start;
  Point end;

 private:
  // For a line and a page in pixels: moves the anchor of a text of this size, which runs along the bearing, into the page.
  // False, the anchor untouched, when the text is wholly inside or the line begins inside.
  bool PlaceText(Point& anchor, double bearing, const CSize& size, const Page& page) const;
};

static_assert(sizeof(Line) == 2 * sizeof(Point));
static_assert(std::is_trivially_copyable_v<Line> && std::is_standard_layout_v<Line>);
