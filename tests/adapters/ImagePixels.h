// What tests ask of a drawn image: which pixels are painted, and where. Neighbour: CairoSurfaceTest.cpp.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/cairo/CairoSurface.h"

inline constexpr COLORREF kWhite = 0xFFFFFF;
inline constexpr COLORREF kBlack = 0;
inline constexpr COLORREF kRed = 0x0000FF;
inline constexpr COLORREF kBlue = 0xFF0000;
inline constexpr COLORREF kNoColour = 0xFFFFFFFF;

using Pixel = std::pair<int, int>;
using Pixels = std::set<Pixel>;

// All pixels that are not white.
inline Pixels Painted(CairoSurface& surface) {
  Pixels painted;
  for (int y = 0; y < surface.Height(); ++y) {
    for (int x = 0; x < surface.Width(); ++x) {
      if (surface.GetPixel(x, y) != kWhite) painted.emplace(x, y);
    }
  }
  return painted;
}

// Right and bottom excluded; empty without any.
inline CRect BoxOf(const Pixels& pixels) {
  if (pixels.empty()) return {};
  CRect box(INT_MAX, INT_MAX, INT_MIN, INT_MIN);
  for (const auto& [x, y] : pixels) {
    box = CRect(std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1), std::max(box.bottom, y + 1));
  }
  return box;
}

inline Pixels Filled(int left, int top, int right, int bottom) {
  Pixels pixels;
  for (int y = top; y < bottom; ++y) {
    for (int x = left; x < right; ++x) pixels.emplace(x, y);
  }
  return pixels;
}

inline Pixels Without(Pixels pixels, const Pixels& others) {
  for (const Pixel& pixel : others) pixels.erase(pixel);
  return pixels;
}

// As they would lie when the image is turned over about (x, y), in half pixels from the outer edge.
inline Pixels TurnedOver(const Pixels& pixels, int twiceX, int twiceY) {
  Pixels turned;
  for (const auto& [x, y] : pixels) turned.emplace(twiceX - 1 - x, twiceY - 1 - y);
  return turned;
}

inline void Draw(CDC& surface, int x1, int y1, int x2, int y2) {
  surface.MoveTo(x1, y1);
  EXPECT_TRUE(surface.LineTo(x2, y2));
}

inline std::string Saved(CairoSurface& surface) {
  std::string bytes;
  EXPECT_TRUE(surface.Save([&bytes](std::string_view piece) {
    bytes += piece;
    return true;
  }));
  return bytes;
}
