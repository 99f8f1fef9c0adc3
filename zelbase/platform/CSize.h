// The framework's size in pixels, or distance between two points. Neighbours: CPoint.h, CRect.h.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/platform/detail/SaturatedInt.h"

// A value of width and height, either of which may be negative. A result beyond the range of int is the nearest int.
class ZELBASE_API CSize {
 public:
  constexpr CSize() = default;
  constexpr CSize(int width, int height) : cx(width), cy(height) {}

  constexpr CSize& operator+=(const CSize& other) {
    cx = zelbase::detail::SaturatedAdd(cx, other.cx);
    cy = zelbase::detail::SaturatedAdd(cy, other.cy);
    return *this;
  }
  constexpr CSize& operator-=(const CSize& other) {
    cx = zelbase::detail::SaturatedSubtract(cx, other.cx);
    cy = zelbase::detail::SaturatedSubtract(cy, other.cy);
    return *this;
  }
  constexpr CSize operator-() const { return CSize() - *this; }
  friend constexpr CSize operator+(CSize a, const CSize& b) { return a += b; }
  friend constexpr CSize operator-(CSize a, const CSize& b) { return a -= b; }
  friend constexpr bool operator==(const CSize&, const CSize&) = default;

  int cx = 0;
  int cy = 0;
};
