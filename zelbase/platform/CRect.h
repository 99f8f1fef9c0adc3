// The framework's rectangle in pixels, y downwards. Neighbours: CPoint.h, CSize.h; geometry's Page for world coordinates.
#pragma once

#include <utility>

#include "zelbase/platform/CPoint.h"
#include "zelbase/platform/CSize.h"
#include "zelbase/platform/ZelBaseApi.h"

// A value of four edges; the right and the bottom edge lie just outside. The edges may come in any order: then width or
// height is negative, the rectangle is empty and no point is inside, until NormalizeRect. A result beyond the range of int
// is the nearest int.
class ZELBASE_API CRect {
 public:
  constexpr CRect() = default;
  constexpr CRect(int leftEdge, int topEdge, int rightEdge, int bottomEdge)
      : left(leftEdge), top(topEdge), right(rightEdge), bottom(bottomEdge) {}
  constexpr CRect(const CPoint& topLeft, const CPoint& bottomRight) : CRect(topLeft.x, topLeft.y, bottomRight.x, bottomRight.y) {}
  constexpr CRect(const CPoint& topLeft, const CSize& size) : CRect(topLeft, topLeft + size) {}

  constexpr int Width() const { return zelbase::detail::SaturatedSubtract(right, left); }
  constexpr int Height() const { return zelbase::detail::SaturatedSubtract(bottom, top); }
  constexpr CSize Size() const { return CSize(Width(), Height()); }
  constexpr CPoint TopLeft() const { return CPoint(left, top); }
  constexpr CPoint BottomRight() const { return CPoint(right, bottom); }

  // No width or no height, or less.
  constexpr bool IsRectEmpty() const { return left >= right || top >= bottom; }

  // All four edges are 0.
  constexpr bool IsRectNull() const { return *this == CRect(); }

  // On the left and top edge is inside, on the right and bottom edge is not.
  constexpr bool PtInRect(const CPoint& point) const { return point.x >= left && point.x < right && point.y >= top && point.y < bottom; }

  constexpr void SetRect(int leftEdge, int topEdge, int rightEdge, int bottomEdge) {
    *this = CRect(leftEdge, topEdge, rightEdge, bottomEdge);
  }

  // Puts the edges in order.
  constexpr void NormalizeRect() {
    if (left > right) std::swap(left, right);
    if (top > bottom) std::swap(top, bottom);
  }

  constexpr void OffsetRect(int dx, int dy) {
    left = zelbase::detail::SaturatedAdd(left, dx);
    top = zelbase::detail::SaturatedAdd(top, dy);
    right = zelbase::detail::SaturatedAdd(right, dx);
    bottom = zelbase::detail::SaturatedAdd(bottom, dy);
  }
  constexpr void OffsetRect(const CSize& size) { OffsetRect(size.cx, size.cy); }
  constexpr void OffsetRect(const CPoint& point) { OffsetRect(point.x, point.y); }

  // Moves each edge outwards; a negative distance moves it inwards.
  constexpr void InflateRect(int atLeft, int atTop, int atRight, int atBottom) {
    left = zelbase::detail::SaturatedSubtract(left, atLeft);
    top = zelbase::detail::SaturatedSubtract(top, atTop);
    right = zelbase::detail::SaturatedAdd(right, atRight);
    bottom = zelbase::detail::SaturatedAdd(bottom, atBottom);
  }
  constexpr void InflateRect(int atSides, int atTopAndBottom) { InflateRect(atSides, atTopAndBottom, atSides, atTopAndBottom); }
  constexpr void InflateRect(const CSize& size) { InflateRect(size.cx, size.cy); }

  friend constexpr CRect operator+(CRect rect, const CSize& size) {
    rect.OffsetRect(size);
    return rect;
  }
  friend constexpr CRect operator+(CRect rect, const CPoint& point) {
    rect.OffsetRect(point);
    return rect;
  }
  friend constexpr CRect operator-(const CRect& rect, const CSize& size) { return CRect(rect.TopLeft() - size, rect.BottomRight() - size); }
  friend constexpr CRect operator-(const CRect& rect, const CPoint& point) { return rect - CSize(point.x, point.y); }
  friend constexpr bool operator==(const CRect&, const CRect&) = default;

  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};
