// The framework's point in pixels, y downwards. Neighbours: CSize.h, CRect.h; geometry's Point for world coordinates.
#pragma once

#include "zelbase/platform/CSize.h"
#include "zelbase/platform/ZelBaseApi.h"

// A value of two coordinates. A result beyond the range of int is the nearest int.
class ZELBASE_API CPoint {
 public:
  constexpr CPoint() = default;
  constexpr CPoint(int xPosition, int yPosition) : x(xPosition), y(yPosition) {}

  constexpr void Offset(int dx, int dy) {
    x = zelbase::detail::SaturatedAdd(x, dx);
    y = zelbase::detail::SaturatedAdd(y, dy);
  }
  constexpr void Offset(const CSize& size) { Offset(size.cx, size.cy); }
  constexpr void Offset(const CPoint& point) { Offset(point.x, point.y); }

  constexpr CPoint& operator+=(const CSize& size) {
    Offset(size);
    return *this;
  }
  constexpr CPoint& operator-=(const CSize& size) {
    x = zelbase::detail::SaturatedSubtract(x, size.cx);
    y = zelbase::detail::SaturatedSubtract(y, size.cy);
    return *this;
  }
  friend constexpr CPoint operator+(CPoint point, const CSize& size) { return point += size; }
  friend constexpr CPoint operator-(CPoint point, const CSize& size) { return point -= size; }
  friend constexpr CPoint operator+(CPoint a, const CPoint& b) { return a += CSize(b.x, b.y); }

  // The way from `b` to `a`.
  friend constexpr CSize operator-(const CPoint& a, const CPoint& b) { return CSize(a.x, a.y) - CSize(b.x, b.y); }
  friend constexpr bool operator==(const CPoint&, const CPoint&) = default;

  int x = 0;
  int y = 0;
};
