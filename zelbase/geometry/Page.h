// The axis-aligned rectangle of the library: a window on the world or on the screen, a region to clip to, the
// extents of a line; and what it leaves of lines and circles. Neighbours: Line.h, whose Clip tells where a
// line crosses the edges; PolyClipper.h for polygons; Extents3D.h for a box in space, CRect.h for whole
// pixels.
#pragma once

#include <string>
#include <type_traits>

#include "zelbase/geometry/Point.h"
#include "zelbase/geometry/detail/AxisBounds.h"
#include "zelbase/platform/COLORREF.h"
#include "zelbase/platform/ZelBaseApi.h"

class CDC;
class CoordinateSystem;
class Line;

// A plain value of four doubles. A page of the world has its bottom below its top; on a screen y runs down,
// so that the bottom is the larger value. Such a page is not valid in the sense of IsValid until Normalize,
// and its users do not ask.
//
//   Page page;                              // invalid: (1, 1, -1, -1)
//   page |= Point(3, 4, 0);                 // no size, at that point
//   page |= Point(10, 0, 0);                // left 3, bottom 0, right 10, top 4
//   page.IsPointInPage(10, 4);              // true: all edges are inside
//   page.IsRectInPage(10, 0, 20, 4);        // false: rectangles that only touch do not overlap
//
// NaN: an axis with a NaN bound is not reversed for growth and keeps it, and IsValid is false. A NaN
// coordinate is beyond no edge: clipping keeps it and answers true.
class ZELBASE_API Page {
 public:
  constexpr Page() = default;
  constexpr Page(double leftEdge, double bottomEdge, double rightEdge, double topEdge)
      : left(leftEdge), bottom(bottomEdge), right(rightEdge), top(topEdge) {}
  constexpr Page(const Point& bottomLeft, const Point& topRight) : Page(bottomLeft.x, bottomLeft.y, topRight.x, topRight.y) {}

  constexpr void Set(double leftEdge, double bottomEdge, double rightEdge, double topEdge) {
    *this = Page(leftEdge, bottomEdge, rightEdge, topEdge);
  }
  constexpr void Set(const Point& bottomLeft, const Point& topRight) { *this = Page(bottomLeft, topRight); }

  // right >= left and top >= bottom
  constexpr bool IsValid() const { return right >= left && top >= bottom; }
  constexpr void Invalidate() { *this = Page(); }

  // Signed.
  constexpr double Width() const { return right - left; }
  constexpr double Height() const { return top - bottom; }

  // Width and height in x and y.
  constexpr Point Size() const { return Point(Width(), Height(), 0.0); }

  // Height times width.
  // Kept: whether the page is valid is not asked: negative for a page of the screen, 4 for the invalid one.
  constexpr double Area() const { return Height() * Width(); }

  // Corners and the middle, with z 0.
  constexpr Point BottomLeft() const { return Point(left, bottom, 0.0); }
  constexpr Point TopRight() const { return Point(right, top, 0.0); }
  constexpr Point GetCenter() const { return Point(0.5 * (left + right), 0.5 * (bottom + top), 0.0); }

  constexpr void SetBottomLeft(const Point& corner) {
    left = corner.x;
    bottom = corner.y;
  }
  constexpr void SetTopRight(const Point& corner) {
    right = corner.x;
    top = corner.y;
  }

  // Exact, over the four values.
  constexpr bool operator==(const Page& other) const {
    return left == other.left && bottom == other.bottom && right == other.right && top == other.top;
  }

  // Takes the other page in, axis by axis. A reversed axis becomes the other's as it stands, even when that
  // is reversed, too; otherwise a reversed axis of the other changes nothing.
  constexpr Page& operator|=(const Page& other) {
    zelbase::detail::UniteAxis(left, right, other.left, other.right);
    zelbase::detail::UniteAxis(bottom, top, other.bottom, other.top);
    return *this;
  }

  // Takes a point in, axis by axis; on a reversed axis both bounds become the coordinate.
  constexpr Page& operator|=(const Point& point) {
    zelbase::detail::GrowAxis(left, right, point.x);
    zelbase::detail::GrowAxis(bottom, top, point.y);
    return *this;
  }

  // What both pages share; it is invalid when they do not overlap. An invalid page on the right changes
  // nothing, and one on the left becomes a copy of the right.
  constexpr Page& operator&=(const Page& other) {
    if (!other.IsValid()) return *this;
    if (!IsValid()) return *this = other;
    if (other.left > left) left = other.left;
    if (other.bottom > bottom) bottom = other.bottom;
    if (other.right < right) right = other.right;
    if (other.top < top) top = other.top;
    return *this;
  }

  // Grows about the centre by the factors x and y of `factor`; 1 keeps the size, below 1 shrinks.
  constexpr Page& operator*=(const Point& factor) {
    const double wider = (factor.x - 1) * 0.5 * Width();
    const double higher = (factor.y - 1) * 0.5 * Height();
    return *this = Page(left - wider, bottom - higher, right + wider, top + higher);
  }

  // Shifts by x and y.
  constexpr Page& operator+=(const Point& shift) { return *this = Page(left + shift.x, bottom + shift.y, right + shift.x, top + shift.y); }
  constexpr Page& operator-=(const Point& shift) { return *this = Page(left - shift.x, bottom - shift.y, right - shift.x, top - shift.y); }

  // Whether the point lies in the page or on an edge. In y the page may have either orientation; in x it must
  // have left <= right to hold anything. A NaN coordinate is outside of nothing and counts as inside.
  constexpr bool IsPointInPage(double x, double y) const {
    // Kept: only y minds the orientation; no page of the library runs leftwards.
    const bool isWorld = top > bottom;
    const double lower = isWorld ? bottom : top;
    const double upper = isWorld ? top : bottom;
    // All four are looked at, without a branch that a processor could guess wrong.
    const bool isOutside = (x < left) | (x > right) | (y < lower) | (y > upper);
    return !isOutside;
  }
  constexpr bool IsPointInPage(const Point& point) const { return IsPointInPage(point.x, point.y); }

  // Whether the page and the rectangle share more than an edge. Orientation is not looked at: a page of the
  // screen overlaps nothing.
  constexpr bool IsRectInPage(double otherLeft, double otherBottom, double otherRight, double otherTop) const {
    // Kept: strict and without regard to orientation, unlike IsPointInPage.
    return !(top <= otherBottom || right <= otherLeft || bottom >= otherTop || left >= otherRight);
  }
  constexpr bool IsRectInPage(const Page& other) const { return IsRectInPage(other.left, other.bottom, other.right, other.top); }

  // Cuts `rect` down to what lies in this page. False, `rect` untouched, when they do not overlap
  // (IsRectInPage); orientation is not looked at here either.
  bool ClipRect(Page& rect) const;

  // The tool for drawing: true when some part of the segment `in` lies in the page, edges included, and
  // `*out` is that part, in the direction of `in`. A page of either orientation will do.
  //
  //   Line visible;
  //   Page(0, 0, 10, 10).ClipLine(Line(Point(-5, 5, 10), Point(5, 5, 20)), &visible);
  //   // visible is (0, 5, 15) to (5, 5, 20)
  //
  // x and y of an end inside are those of `in`. Heights are found anew for both ends, by their part of the
  // longer of the way in x and the way in y; they stay when both are exactly 0 or there is no such way.
  // False: `*out` is untouched when both ends lie beyond one edge; otherwise it holds a segment that is
  // clipped in part. Null gives false. `out` may be `&in`: that is the form below.
  // On which sides an end lies is asked once only: a line that misses the page and ends exactly on the
  // prolongation of an edge may be answered by that edge.
  bool ClipLine(const Line& in, Line* out) const;

  // The same in place, but for the heights: each cut end keeps the height that it had. A false may leave
  // the line clipped in part.
  bool ClipLine(Line& line) const;

  // What lies in the page of the arc that runs clockwise from bearing `start` to bearing `end`, in degrees.
  // Piece i of `count` runs clockwise from starts[i] to ends[i], perhaps past north. There are 0 to 5, and
  // both arrays need room for 5. Only the size of `radius` counts: for an arc that runs counter-clockwise
  // exchange its ends.
  //
  // False, `count` 0, when the radius is below 1e-05 in size or an array is null; otherwise true, also when
  // no piece is left.
  //
  // - Equal ends are a full circle here, as 0 and 360 are. One that begins exactly on an edge gives an empty
  //   piece first, and then the pieces outside.
  // - An arc that crosses nothing comes back from `start` to `end` as they fall into one turn: (0, 360) as
  //   (0, 0).
  // - Touching an edge is no crossing.
  // - A page whose edges stand in the other order is mirrored, the centre with it, and the bearings are those
  //   in the mirror: on a page of the screen as if y ran up.
  bool ClipCircle(const Point& centre, double radius, double start, double end, int& count, double* starts, double* ends) const;

  // Swaps edges so that right >= left and top >= bottom.
  constexpr void Normalize() {
    zelbase::detail::OrderAxis(left, right);
    zelbase::detail::OrderAxis(bottom, top);
  }

  // Swaps edges so that right >= left and bottom >= top: the y axis of a screen.
  constexpr void NormalizeToScreen() {
    zelbase::detail::OrderAxis(left, right);
    zelbase::detail::OrderAxis(top, bottom);
  }

  // Draws in the selected pen what `clip` shows of the four sides (Line::DrawLine): left upwards, top, right downwards, bottom back
  // to the start. Null draws nothing.
  void DrawRect(CDC* dc, const CoordinateSystem& cs, const Page& clip) const;

  // Fills with a colour what `clip` leaves of the page (ClipRect), on the pixels that CoordinateSystem gives for a page. The
  // surface's background colour is as before. Null draws nothing.
  void DrawSolidRect(CDC* dc, const CoordinateSystem& cs, COLORREF color, const Page& clip) const;

  // "%f, %f\n%f, %f" over left, bottom, right and top, whatever the locale; of any length the numbers need.
  std::string ToString() const;

  double left = 1.0;
  double bottom = 1.0;
  double right = -1.0;
  double top = -1.0;
};

static_assert(sizeof(Page) == 4 * sizeof(double));
static_assert(std::is_trivially_copyable_v<Page> && std::is_standard_layout_v<Page>);
