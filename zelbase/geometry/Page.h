// The axis-aligned rectangle of the library: a window on the world or on the screen, a region to clip to, the
// extents of a line. Neighbours: Extents3D.h for a box in space, CRect.h for whole pixels.
#pragma once

#include <string>
#include <type_traits>

#include "zelbase/geometry/Point.h"
#include "zelbase/geometry/detail/AxisBounds.h"
#include "zelbase/platform/ZelBaseApi.h"

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
// NaN: an axis with a NaN bound is not reversed for growth and keeps it, and IsValid is false.
class ZELBASE_API Page {
 public:
  constexpr Page() = default;
  constexpr Page(double leftEdge, double bottomEdge, double rightEdge, double topEdge)
      : left(leftEdge), bottom(bottomEdge), right(rightEdge), top(topEdge) {}
  constexpr Page(const Point& bottomLeft, const Point& topRight)
      : Page(bottomLeft.x, bottomLeft.y, topRight.x, topRight.y) {}

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

  // Height times width: negative for a page of the screen, and 4 for the invalid page.
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
  constexpr Page& operator+=(const Point& shift) {
    return *this = Page(left + shift.x, bottom + shift.y, right + shift.x, top + shift.y);
  }
  constexpr Page& operator-=(const Point& shift) {
    return *this = Page(left - shift.x, bottom - shift.y, right - shift.x, top - shift.y);
  }

  // Whether the point lies in the page or on an edge. In y the page may have either orientation; in x it must
  // have left <= right to hold anything. A NaN coordinate is outside of nothing and counts as inside.
  constexpr bool IsPointInPage(double x, double y) const {
    if (x < left || x > right) return false;
    // Kept: only y minds the orientation; no page of the library runs leftwards.
    return top > bottom ? !(y < bottom || y > top) : !(y > bottom || y < top);
  }
  constexpr bool IsPointInPage(const Point& point) const { return IsPointInPage(point.x, point.y); }

  // Whether the page and the rectangle share more than an edge. Orientation is not looked at: a page of the
  // screen overlaps nothing.
  constexpr bool IsRectInPage(double otherLeft, double otherBottom, double otherRight,
                              double otherTop) const {
    // Kept: strict and without regard to orientation, unlike IsPointInPage.
    return !(top <= otherBottom || right <= otherLeft || bottom >= otherTop || left >= otherRight);
  }
  constexpr bool IsRectInPage(const Page& other) const {
    return IsRectInPage(other.left, other.bottom, other.right, other.top);
  }

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

  // "%f, %f\n%f, %f" over left, bottom, right and top, whatever the locale; of any length the numbers need.
  std::string ToString() const;

  double left = 1.0;
  double bottom = 1.0;
  double right = -1.0;
  double top = -1.0;
};

static_assert(sizeof(Page) == 4 * sizeof(double));
static_assert(std::is_trivially_copyable_v<Page> && std::is_standard_layout_v<Page>);
