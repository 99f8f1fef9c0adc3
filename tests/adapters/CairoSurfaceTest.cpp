#include "adapters/cairo/CairoSurface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/adapters/ImagePixels.h"

#if defined(__SANITIZE_ADDRESS__)
// The fonts' library keeps what it has read until the end of the process, out of the leak check's sight.
extern "C" const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }
#endif

namespace {

class CairoImage : public testing::Test {
 protected:
  void SelectPen(int width, COLORREF color, unsigned style = PS_SOLID) { m_surface.SelectObject(m_surface.CreatePen(style, width, color)); }

  CairoSurface m_surface{CairoFormat::Png, 64, 48};
};
using CairoImageLong = CairoImage;

// --- Lines -----------------------------------------------------------------------------------------------------------------

TEST_F(CairoImage, BeginsWhiteWithABlackPenAndAWhiteBrush) {
  EXPECT_TRUE(m_surface.IsGood());
  EXPECT_TRUE(Painted(m_surface).empty());
  LOGPEN pen;
  ASSERT_TRUE(m_surface.GetObject(m_surface.GetCurrentObject(OBJ_PEN), pen));
  EXPECT_EQ(std::make_tuple(pen.lopnStyle, pen.lopnWidth.x, pen.lopnColor), std::make_tuple(PS_SOLID, 0, kBlack));
  EXPECT_EQ(m_surface.GetROP2(), R2_COPYPEN);
  EXPECT_EQ(m_surface.GetBkColor(), kWhite);
  EXPECT_EQ(m_surface.GetDeviceCaps(LOGPIXELSY), 96);
  EXPECT_EQ(m_surface.GetDeviceCaps(8), 0);
}

TEST_F(CairoImage, LineToLeavesOutTheLastPixel) {
  Draw(m_surface, 3, 5, 7, 5);
  EXPECT_EQ(Painted(m_surface), Filled(3, 5, 7, 6));
  EXPECT_EQ(m_surface.MoveTo(0, 0), CPoint(7, 5));
}

TEST_F(CairoImage, ALineToItsOwnBeginningPaintsNothing) {
  Draw(m_surface, 3, 5, 3, 5);
  SelectPen(5, kBlack);
  Draw(m_surface, 3, 5, 3, 5);
  EXPECT_TRUE(Painted(m_surface).empty());
}

// In the longer direction each coordinate once; in the other one at most half a pixel from the straight line. The tie goes to the
// lower coordinate: so twice the distance, on the scale of the longer direction, is in [-run, run).
void ExpectNearestPixels(const Pixels& painted, int x1, int y1, int x2, int y2) {
  const int dx = x2 - x1;
  const int dy = y2 - y1;
  const int run = std::max(std::abs(dx), std::abs(dy));
  ASSERT_EQ(painted.size(), static_cast<std::size_t>(run)) << x1 << ' ' << y1 << ' ' << x2 << ' ' << y2;
  std::set<int> along;
  for (const auto& [x, y] : painted) {
    const bool isFlat = std::abs(dx) >= std::abs(dy);
    const int steps = isFlat ? std::abs(x - x1) : std::abs(y - y1);
    EXPECT_LT(steps, run);
    along.insert(steps);
    const int twice = isFlat ? 2 * ((y - y1) * run - steps * dy) : 2 * ((x - x1) * run - steps * dx);
    EXPECT_TRUE(twice >= -run && twice < run) << x << ' ' << y << " of " << x1 << ' ' << y1 << ' ' << x2 << ' ' << y2;
  }
  EXPECT_EQ(along.size(), static_cast<std::size_t>(run));
}

TEST_F(CairoImage, LinesOfAllDirectionsHaveThePixelsNearestToTheStraightLine) {
  for (int dx = -12; dx <= 12; ++dx) {
    for (int dy = -12; dy <= 12; ++dy) {
      CairoSurface surface(CairoFormat::Png, 32, 32);
      Draw(surface, 15, 16, 15 + dx, 16 + dy);
      ExpectNearestPixels(Painted(surface), 15, 16, 15 + dx, 16 + dy);
    }
  }
}

TEST_F(CairoImage, ThereAndBackAreTheSamePixelsButForTheEnds) {
  std::mt19937 random(7);
  for (int i = 0; i < 200; ++i) {
    const auto next = [&random] { return static_cast<int>(random() % 32); };
    const int x1 = next(), y1 = next(), x2 = next(), y2 = next();
    CairoSurface there(CairoFormat::Png, 32, 32);
    CairoSurface back(CairoFormat::Png, 32, 32);
    Draw(there, x1, y1, x2, y2);
    Draw(back, x2, y2, x1, y1);
    there.SetPixel(x2, y2, kBlack);
    back.SetPixel(x1, y1, kBlack);
    EXPECT_EQ(Painted(there), Painted(back)) << x1 << ' ' << y1 << ' ' << x2 << ' ' << y2;
  }
}

// A line that is cut by the edge of the image has the pixels that it has on a larger one.
TEST_F(CairoImage, TheEdgeOfTheImageDoesNotBendALine) {
  std::mt19937 random(20);
  constexpr int kMargin = 100;
  for (int i = 0; i < 300; ++i) {
    const auto next = [&random] { return static_cast<int>(random() % 220) - kMargin; };
    const int x1 = next(), y1 = next(), x2 = next(), y2 = next();
    CairoSurface cut(CairoFormat::Png, 20, 20);
    CairoSurface whole(CairoFormat::Png, 20 + 2 * kMargin, 20 + 2 * kMargin);
    Draw(cut, x1, y1, x2, y2);
    Draw(whole, x1 + kMargin, y1 + kMargin, x2 + kMargin, y2 + kMargin);
    for (int y = 0; y < 20; ++y) {
      for (int x = 0; x < 20; ++x) {
        ASSERT_EQ(cut.GetPixel(x, y), whole.GetPixel(x + kMargin, y + kMargin)) << x1 << ' ' << y1 << ' ' << x2 << ' ' << y2;
      }
    }
  }
}

TEST_F(CairoImage, LinesBetweenTheFarthestPointsAreExact) {
  Draw(m_surface, INT_MIN, 7, INT_MAX, 7);
  EXPECT_EQ(Painted(m_surface), Filled(0, 7, 64, 8));
  m_surface.FillSolidRect(CRect(0, 0, 64, 48), kWhite);
  Draw(m_surface, 9, INT_MAX, 9, INT_MIN);
  EXPECT_EQ(Painted(m_surface), Filled(9, 0, 10, 48));
  m_surface.FillSolidRect(CRect(0, 0, 64, 48), kWhite);
  Draw(m_surface, INT_MIN, INT_MIN, INT_MAX, INT_MAX);
  Pixels diagonal;
  for (int i = 0; i < 48; ++i) diagonal.emplace(i, i);
  EXPECT_EQ(Painted(m_surface), diagonal);
}

TEST_F(CairoImageLong, CoordinatesWithoutBoundAreTakenByEveryOperation) {
  const std::vector<int> far = {INT_MIN, INT_MIN + 1, -(1 << 24), -1, 0, 13, 1 << 24, INT_MAX - 1, INT_MAX};
  const std::vector<CPoint> ends = {CPoint(INT_MIN, INT_MAX), CPoint(INT_MAX, INT_MIN)};
  const std::vector<COLORREF> one = {kRed};
  const auto drawAll = [&](CairoSurface& surface) {
    for (const int a : far) {
      for (const int b : far) {
        Draw(surface, a, b, b, a);
        Draw(surface, a, 3, b, 20);
        surface.SetPixel(a, b, kRed);
        EXPECT_TRUE(surface.Rectangle(a, b, b, a));
        surface.Ellipse(a, b, b, a);
        surface.FillSolidRect(CRect(a, a, b, b), kBlue);
        EXPECT_TRUE(surface.TextOut(a, b, "x"));
      }
    }
    for (const int radius : {INT_MIN, -1, 0, 3, 64, 65, INT_MAX}) surface.FillDots(ends, one, radius);
    surface.SetPixels(ends, one);
    surface.SetClipRect(CRect(INT_MIN, INT_MIN, INT_MAX, INT_MAX));
    surface.SetClipRect(CRect(INT_MAX, INT_MAX, INT_MIN, INT_MIN));
    surface.ResetClip();
    EXPECT_TRUE(surface.IsGood());
  };
  for (const CairoFormat format : {CairoFormat::Png, CairoFormat::Svg, CairoFormat::Pdf}) {
    for (const int width : {1, 2, 7, INT_MAX}) {
      for (const unsigned style : {PS_SOLID, PS_DASHDOT}) {
        CairoSurface surface(format, 20, 20);
        surface.SelectObject(surface.CreatePen(style, width, kRed));
        drawAll(surface);
        surface.SetSmooth(true);
        if (width != INT_MAX) drawAll(surface);
        EXPECT_FALSE(Saved(surface).empty());
      }
    }
  }
  SelectPen(3, kRed);
  m_surface.SetROP2(R2_XORPEN);
  drawAll(m_surface);
}

TEST_F(CairoImage, GapsOfAPenGoOnThroughTheCornersOfALine) {
  SelectPen(1, kBlack, PS_DASH);
  m_surface.MoveTo(0, 2);
  m_surface.LineTo(10, 2);
  m_surface.LineTo(60, 2);
  Pixels expected;  // 18 painted, 6 not
  for (int x = 0; x < 60; ++x) {
    if (x % 24 < 18) expected.emplace(x, 2);
  }
  EXPECT_EQ(Painted(m_surface), expected);
}

TEST_F(CairoImage, GapsStayInPlaceWhenALineBeginsOutside) {
  SelectPen(1, kBlack, PS_DASHDOTDOT);
  Draw(m_surface, -1000, 2, 64, 2);
  const std::string period = "#########...###...###...";
  for (int x = 0; x < 64; ++x) EXPECT_EQ(m_surface.GetPixel(x, 2) == kBlack, period[static_cast<std::size_t>((x + 1000) % 24)] == '#') << x;
}

TEST_F(CairoImage, TheNullPenDrawsNoLine) {
  m_surface.SelectStockObject(NULL_PEN);
  Draw(m_surface, 0, 0, 20, 20);
  EXPECT_TRUE(Painted(m_surface).empty());
}

// --- Wide pens and crosses ---------------------------------------------------------------------------------------------------

// What a level line of a wide pen covers: by hand, the pixels whose centres are in its strip or in the half circles at its ends.
// Pixels whose centres lie on the very edge may be either.
void ExpectStrip(CairoSurface& surface, double left, double right, double middle, double radius) {
  for (int y = 0; y < surface.Height(); ++y) {
    for (int x = 0; x < surface.Width(); ++x) {
      const double beyond = std::max({left - (x + 0.5), x + 0.5 - right, 0.0});
      const double distance = std::hypot(beyond, y + 0.5 - middle);
      if (std::abs(distance - radius) < 0.25) continue;
      EXPECT_EQ(surface.GetPixel(x, y) == kBlack, distance < radius) << x << ' ' << y;
    }
  }
}

// An independent rule: the distance of each pixel's centre from the pen's track, by the nearest point of it.
TEST(CairoWidePen, HasThePixelsWhoseCentresItCovers) {
  std::mt19937 random(33);
  int decided = 0;
  for (int i = 0; i < 300; ++i) {
    const auto next = [&random] { return static_cast<int>(random() % 60) - 10; };
    const int x1 = next(), y1 = next(), x2 = next(), y2 = next();
    const int width = 2 + i % 9;
    if (x1 == x2 && y1 == y2) continue;
    CairoSurface surface(CairoFormat::Png, 40, 40);
    surface.SelectObject(surface.CreatePen(PS_SOLID, width, kBlack));
    Draw(surface, x1, y1, x2, y2);
    const double middle = width % 2 != 0 ? 0.5 : 0.0;
    const double steps = std::max(std::abs(x2 - x1), std::abs(y2 - y1));
    const double part = width % 2 != 0 ? (steps - 1) / steps : 1.0;
    const double dx = (x2 - x1) * part;
    const double dy = (y2 - y1) * part;
    for (int y = 0; y < 40; ++y) {
      for (int x = 0; x < 40; ++x) {
        const double fromX = x + 0.5 - x1 - middle;
        const double fromY = y + 0.5 - y1 - middle;
        const double square = dx * dx + dy * dy;
        const double along = square > 0 ? std::clamp((fromX * dx + fromY * dy) / square, 0.0, 1.0) : 0.0;
        const double distance = std::hypot(fromX - along * dx, fromY - along * dy);
        if (std::abs(distance - width / 2.0) < 1e-9) continue;
        ASSERT_EQ(surface.GetPixel(x, y) == kBlack, distance < width / 2.0)
            << x << ' ' << y << " of " << x1 << ' ' << y1 << ' ' << x2 << ' ' << y2;
        ++decided;
      }
    }
  }
  EXPECT_GT(decided, 400000);
}

TEST_F(CairoImage, AWideOddPenRunsThroughThePixelsCentresAndEndsAStepBefore) {
  SelectPen(5, kBlack);
  Draw(m_surface, 20, 20, 40, 20);
  ExpectStrip(m_surface, 20.5, 39.5, 20.5, 2.5);
  EXPECT_EQ(BoxOf(Painted(m_surface)), CRect(18, 18, 42, 23));
}

TEST_F(CairoImage, AWideEvenPenRunsAlongThePixelsEdges) {
  SelectPen(6, kBlack);
  Draw(m_surface, 20, 20, 40, 20);
  ExpectStrip(m_surface, 20, 40, 20, 3);
  EXPECT_EQ(BoxOf(Painted(m_surface)), CRect(17, 17, 43, 23));
}

// --- Pixels, rectangles, ellipses --------------------------------------------------------------------------------------------

TEST_F(CairoImage, SetPixelPaintsOneAndTellsItsColour) {
  EXPECT_EQ(m_surface.SetPixel(3, 4, kRed), kRed);
  EXPECT_EQ(m_surface.SetPixel(63, 47, 0xFF123456), 0x123456u);
  EXPECT_EQ(Painted(m_surface), (Pixels{{3, 4}, {63, 47}}));
  EXPECT_EQ(m_surface.GetPixel(3, 4), kRed);
  EXPECT_EQ(m_surface.GetPixel(63, 47), 0x123456u);
  for (const auto& [x, y] : Pixels{{-1, 0}, {0, -1}, {64, 0}, {0, 48}}) {
    EXPECT_EQ(m_surface.SetPixel(x, y, kRed), kNoColour);
    EXPECT_EQ(m_surface.GetPixel(x, y), kNoColour);
  }
}

// Cairo paints the colour that a pixel was set to: red is red on both ways.
TEST_F(CairoImage, ColoursAreTheSameOnBothWays) {
  m_surface.FillSolidRect(CRect(0, 0, 4, 4), 0x102030);
  SelectPen(5, 0x102030);
  Draw(m_surface, 20, 20, 40, 20);
  EXPECT_EQ(m_surface.GetPixel(2, 2), 0x102030u);
  EXPECT_EQ(m_surface.GetPixel(30, 20), 0x102030u);
}

TEST_F(CairoImage, FillSolidRectIsExactAndLeavesItsColourAsTheBackground) {
  m_surface.FillSolidRect(CRect(3, 4, 10, 20), kBlue);
  EXPECT_EQ(Painted(m_surface), Filled(3, 4, 10, 20));
  EXPECT_EQ(m_surface.GetBkColor(), kBlue);
  m_surface.FillSolidRect(CRect(10, 4, 3, 20), kRed);  // without width
  EXPECT_EQ(m_surface.GetPixel(5, 5), kBlue);
  EXPECT_EQ(m_surface.SetBkColor(kWhite), kRed);
}

TEST_F(CairoImage, ARectanglesEdgeAndInsideExcludeRightAndBottom) {
  m_surface.SelectObject(m_surface.CreateSolidBrush(kRed));
  EXPECT_TRUE(m_surface.Rectangle(3, 4, 10, 20));
  EXPECT_EQ(Painted(m_surface), Filled(3, 4, 10, 20));
  const Pixels inside = Filled(4, 5, 9, 19);
  for (const auto& [x, y] : Painted(m_surface)) EXPECT_EQ(m_surface.GetPixel(x, y), inside.contains({x, y}) ? kRed : kBlack);
}

TEST_F(CairoImage, AHollowRectangleIsItsEdge) {
  m_surface.SelectStockObject(HOLLOW_BRUSH);
  EXPECT_TRUE(m_surface.Rectangle(10, 20, 3, 4));  // in any order
  EXPECT_EQ(Painted(m_surface), Without(Filled(3, 4, 10, 20), Filled(4, 5, 9, 19)));
  EXPECT_TRUE(m_surface.Rectangle(30, 4, 31, 5));
  EXPECT_EQ(m_surface.GetPixel(30, 4), kBlack);
  EXPECT_TRUE(m_surface.Rectangle(40, 4, 40, 9));  // without width
  EXPECT_EQ(m_surface.GetPixel(40, 4), kWhite);
}

TEST_F(CairoImage, WithoutAPenTheBrushFillsAllOfTheRectangle) {
  m_surface.SelectStockObject(NULL_PEN);
  m_surface.SelectStockObject(BLACK_BRUSH);
  m_surface.Rectangle(3, 4, 10, 20);
  EXPECT_EQ(Painted(m_surface), Filled(3, 4, 10, 20));
}

TEST_F(CairoImage, AWidePenReachesBeyondARectangleAllAround) {
  m_surface.SelectStockObject(HOLLOW_BRUSH);
  SelectPen(3, kBlack);
  m_surface.Rectangle(10, 10, 20, 30);
  EXPECT_EQ(Painted(m_surface), Without(Filled(9, 9, 21, 31), Filled(12, 12, 18, 28)));
  m_surface.FillSolidRect(CRect(0, 0, 64, 48), kWhite);
  SelectPen(4, kBlack);
  m_surface.Rectangle(10, 10, 20, 30);
  EXPECT_EQ(Painted(m_surface), Without(Filled(8, 8, 22, 32), Filled(12, 12, 18, 28)));
}

// By whole numbers: twice a centre's distance from the middle, on the scale of the sides. 0 on the ellipse, below it inside.
long long SideOf(int x, int y, int width, int height) {
  const long long a = 2LL * x + 1 - width;
  const long long b = 2LL * y + 1 - height;
  return a * a * height * height + b * b * width * width - 1LL * width * width * height * height;
}

TEST(CairoEllipseLong, HasThePixelsWhoseCentresAreInside) {
  for (int width = 1; width <= 30; ++width) {
    for (int height = 1; height <= 30; ++height) {
      CairoSurface surface(CairoFormat::Png, 40, 40);
      surface.SelectStockObject(NULL_PEN);
      surface.SelectStockObject(BLACK_BRUSH);
      EXPECT_TRUE(surface.Ellipse(4, 5, 4 + width, 5 + height));
      const Pixels painted = Painted(surface);
      for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 40; ++x) {
          const bool isInBox = x >= 4 && x < 4 + width && y >= 5 && y < 5 + height;
          const long long side = SideOf(x - 4, y - 5, width, height);
          if (isInBox && side == 0) continue;  // exactly on it
          ASSERT_EQ(painted.contains({x, y}), isInBox && side < 0) << width << " x " << height << " at " << x << ' ' << y;
        }
      }
      if (width == height) {
        EXPECT_EQ(BoxOf(painted), CRect(4, 5, 4 + width, 5 + height));
      }
    }
  }
}

TEST_F(CairoImage, AnEllipsesEdgeIsWhereANeighbourIsOutside) {
  m_surface.SelectObject(m_surface.CreateSolidBrush(kRed));
  m_surface.Ellipse(5, 5, 35, 25);
  const Pixels all = Painted(m_surface);
  for (const auto& [x, y] : all) {
    const bool isEdge = !all.contains({x - 1, y}) || !all.contains({x + 1, y}) || !all.contains({x, y - 1}) || !all.contains({x, y + 1});
    EXPECT_EQ(m_surface.GetPixel(x, y), isEdge ? kBlack : kRed) << x << ' ' << y;
  }
  CairoSurface hollow(CairoFormat::Png, 64, 48);
  hollow.SelectStockObject(HOLLOW_BRUSH);
  hollow.Ellipse(5, 5, 35, 25);
  for (const auto& [x, y] : all) EXPECT_EQ(hollow.GetPixel(x, y) == kBlack, m_surface.GetPixel(x, y) == kBlack);
  EXPECT_EQ(BoxOf(Painted(hollow)), CRect(5, 5, 35, 25));
}

TEST_F(CairoImage, AnEllipseLargerThanTheImageIsCutByIt) {
  m_surface.SelectStockObject(BLACK_BRUSH);
  EXPECT_TRUE(m_surface.Ellipse(INT_MIN, INT_MIN, INT_MAX, INT_MAX));
  EXPECT_EQ(Painted(m_surface), Filled(0, 0, 64, 48));
}

TEST_F(CairoImage, EllipsesThatCairoIsToPaintAreRefusedBeyondItsCoordinates) {
  SelectPen(3, kBlack);
  EXPECT_FALSE(m_surface.Ellipse(0, 0, 65537, 20));
  EXPECT_TRUE(Painted(m_surface).empty());
  EXPECT_TRUE(m_surface.Ellipse(-65536, 0, 65536, 20));
}

// --- Rows of pixels and dots -------------------------------------------------------------------------------------------------

TEST_F(CairoImage, SetPixelsTakesAColourEachOrOneForAll) {
  const std::vector<CPoint> points = {CPoint(1, 1), CPoint(2, 1), CPoint(-5, 1), CPoint(3, 1)};
  m_surface.SetPixels(points, std::vector<COLORREF>{kRed, kBlue, kRed});  // the last point has none
  EXPECT_EQ(Painted(m_surface), (Pixels{{1, 1}, {2, 1}}));
  EXPECT_EQ(m_surface.GetPixel(2, 1), kBlue);
  m_surface.SetPixels(points, std::vector<COLORREF>{kRed});
  EXPECT_EQ(Painted(m_surface), (Pixels{{1, 1}, {2, 1}, {3, 1}}));
  EXPECT_EQ(m_surface.GetPixel(2, 1), kRed);
  m_surface.SetPixels(points, {});
  m_surface.SetPixels({}, std::vector<COLORREF>{kRed});
}

TEST(CairoDots, AreTheEllipsesOfABrush) {
  std::mt19937 random(5);
  for (const int radius : {0, 1, 2, 3, 10, 64, 65, 100}) {
    CairoSurface dots(CairoFormat::Png, 80, 70);
    CairoSurface ellipses(CairoFormat::Png, 80, 70);
    ellipses.SelectStockObject(NULL_PEN);
    std::vector<CPoint> points;
    std::vector<COLORREF> colors;
    for (int i = 0; i < 40; ++i) {
      points.emplace_back(static_cast<int>(random() % 120) - 20, static_cast<int>(random() % 110) - 20);
      colors.push_back(static_cast<COLORREF>(random() % 0xFFFFFF));
      const HGDIOBJ white = ellipses.SelectObject(ellipses.CreateSolidBrush(colors.back()));
      const CPoint& p = points.back();
      ellipses.Ellipse(p.x - radius, p.y - radius, p.x + radius + 1, p.y + radius + 1);
      EXPECT_TRUE(ellipses.DeleteObject(ellipses.SelectObject(white)));
    }
    dots.FillDots(points, colors, radius);
    EXPECT_EQ(Saved(dots), Saved(ellipses)) << radius;
  }
}

TEST_F(CairoImage, SmoothDotsCoverAsMuchAsTheCircle) {
  m_surface.SetSmooth(true);
  const std::vector<CPoint> points = {CPoint(30, 20)};
  m_surface.FillDots(points, std::vector<COLORREF>{kBlack}, 6);
  double covered = 0;
  for (int y = 0; y < 48; ++y) {
    for (int x = 0; x < 64; ++x) covered += (255 - (m_surface.GetPixel(x, y) & 0xFF)) / 255.0;
  }
  EXPECT_NEAR(covered, 3.14159265 * 6.5 * 6.5, 0.5);
  EXPECT_EQ(BoxOf(Painted(m_surface)), CRect(24, 14, 37, 27));
  EXPECT_EQ(m_surface.GetPixel(30, 20), kBlack);
  const Pixels painted = Painted(m_surface);
  EXPECT_EQ(painted, TurnedOver(painted, 61, 41));
}

TEST_F(CairoImage, SmoothDotsAtTheEdgeAreCut) {
  m_surface.SetSmooth(true);
  m_surface.SetClipRect(CRect(0, 0, 10, 10));
  m_surface.FillDots(std::vector<CPoint>{CPoint(0, 0), CPoint(9, 9), CPoint(INT_MAX, INT_MIN)}, std::vector<COLORREF>{kBlack}, 4);
  EXPECT_EQ(BoxOf(Painted(m_surface)), CRect(0, 0, 10, 10));
}

// --- Raster modes ------------------------------------------------------------------------------------------------------------

TEST_F(CairoImage, RasterModesAreThoseOfThePixel) {
  m_surface.FillSolidRect(CRect(0, 0, 64, 48), 0x123456);
  EXPECT_EQ(m_surface.SetROP2(R2_XORPEN), R2_COPYPEN);
  EXPECT_EQ(m_surface.SetPixel(1, 1, 0x00FF00), 0x12CB56u);
  EXPECT_EQ(m_surface.SetROP2(R2_NOT), R2_XORPEN);
  EXPECT_EQ(m_surface.SetPixel(2, 2, 0x00FF00), 0xEDCBA9u);
  EXPECT_EQ(m_surface.SetROP2(99), R2_NOT);
  EXPECT_EQ(m_surface.GetROP2(), R2_NOT);
}

TEST(CairoRasterMode, WhatIsDrawnTwiceLeavesNoTrace) {
  for (const int mode : {R2_XORPEN, R2_NOT}) {
    for (const int width : {1, 2, 5}) {
      for (const unsigned style : {PS_SOLID, PS_DASHDOT}) {
        CairoSurface surface(CairoFormat::Png, 64, 48);
        surface.SetSmooth(true);  // does not hold in these modes
        surface.FillSolidRect(CRect(10, 10, 30, 30), kBlue);
        const std::string before = Saved(surface);
        surface.SelectObject(surface.CreatePen(style, width, 0xABCDEF));
        surface.SelectObject(surface.CreateSolidBrush(0x00FFFF));
        surface.SetROP2(mode);
        const auto draw = [&](int step) {
          if (step == 0) Draw(surface, 3, 5, 60, 33);
          if (step == 1) surface.Rectangle(5, 5, 25, 40);
          if (step == 2) surface.Ellipse(5, 5, 50, 40);
          if (step == 3) surface.FillDots(std::vector<CPoint>{CPoint(20, 20)}, std::vector<COLORREF>{kRed}, 5);
          if (step == 4) surface.Ellipse(5, 5, 6, 6);
        };
        for (int step = 0; step < 5; ++step) {
          draw(step);
          EXPECT_NE(Saved(surface), before) << mode << ' ' << width << ' ' << step;
          draw(step);
          EXPECT_EQ(Saved(surface), before) << mode << ' ' << width << ' ' << step;
        }
      }
    }
  }
}

TEST_F(CairoImage, FilledAreasAndTextsCopyInEveryMode) {
  m_surface.SetROP2(R2_XORPEN);
  m_surface.FillSolidRect(CRect(0, 0, 4, 4), kRed);
  EXPECT_EQ(m_surface.GetPixel(1, 1), kRed);
  m_surface.SetBkMode(TRANSPARENT);
  m_surface.TextOut(10, 10, "I");
  for (const auto& [x, y] : Painted(m_surface)) {
    if (x >= 10) {
      EXPECT_EQ(m_surface.GetPixel(x, y), kBlack);
    }
  }
}

// --- Objects -----------------------------------------------------------------------------------------------------------------

TEST_F(CairoImage, SelectingGivesWhatWasSelectedOfTheKind) {
  const HGDIOBJ black = m_surface.GetCurrentObject(OBJ_PEN);
  const HGDIOBJ pen = m_surface.CreatePen(PS_DOT, 3, kRed);
  const HGDIOBJ brush = m_surface.CreateSolidBrush(kBlue);
  EXPECT_EQ(m_surface.SelectObject(pen), black);
  EXPECT_EQ(m_surface.GetCurrentObject(OBJ_PEN), pen);
  EXPECT_EQ(m_surface.SelectObject(black), pen);
  const HGDIOBJ white = m_surface.GetCurrentObject(OBJ_BRUSH);
  EXPECT_EQ(m_surface.SelectObject(brush), white);
  EXPECT_EQ(m_surface.SelectStockObject(WHITE_BRUSH), brush);
  EXPECT_EQ(m_surface.GetCurrentObject(OBJ_BRUSH), white);
  const HGDIOBJ font = m_surface.CreateFontIndirect(LOGFONT());
  const HGDIOBJ system = m_surface.SelectObject(font);
  EXPECT_EQ(m_surface.GetCurrentObject(OBJ_FONT), font);
  EXPECT_EQ(m_surface.SelectStockObject(SYSTEM_FONT), font);
  EXPECT_EQ(m_surface.GetCurrentObject(OBJ_FONT), system);
  EXPECT_EQ(m_surface.GetCurrentObject(3), nullptr);
  EXPECT_EQ(m_surface.GetCurrentObject(UINT_MAX), nullptr);
}

TEST_F(CairoImage, WhatIsSelectedOrOfTheStockIsNotDeleted) {
  const HGDIOBJ pen = m_surface.CreatePen(PS_SOLID, 1, kRed);
  const HGDIOBJ black = m_surface.SelectObject(pen);
  EXPECT_FALSE(m_surface.DeleteObject(pen));
  EXPECT_FALSE(m_surface.DeleteObject(black));
  Draw(m_surface, 0, 0, 5, 0);
  EXPECT_EQ(m_surface.GetPixel(0, 0), kRed);
  EXPECT_EQ(m_surface.SelectObject(black), pen);
  EXPECT_TRUE(m_surface.DeleteObject(pen));
  EXPECT_FALSE(m_surface.DeleteObject(pen));
  EXPECT_EQ(m_surface.SelectObject(pen), nullptr);
  EXPECT_EQ(m_surface.GetCurrentObject(OBJ_PEN), black);
}

TEST_F(CairoImage, HandlesOfOthersAreNoneOfOurs) {
  CairoSurface other(CairoFormat::Png, 4, 4);
  int number = 0;
  const auto bits = [](std::uintptr_t value) { return reinterpret_cast<HGDIOBJ>(value); };
  const HGDIOBJ black = m_surface.GetCurrentObject(OBJ_PEN);
  for (const HGDIOBJ foreign : {HGDIOBJ{nullptr}, HGDIOBJ{&number}, bits(~std::uintptr_t{0}), bits(0x10), other.GetCurrentObject(OBJ_PEN),
                                other.CreatePen(PS_SOLID, 1, kRed), other.CreateSolidBrush(kRed)}) {
    LOGPEN pen;
    pen.lopnColor = 77;
    EXPECT_EQ(m_surface.SelectObject(foreign), nullptr);
    EXPECT_FALSE(m_surface.DeleteObject(foreign));
    EXPECT_FALSE(m_surface.GetObject(foreign, pen));
    EXPECT_EQ(pen.lopnColor, 77u);
  }
  LOGPEN pen;
  EXPECT_FALSE(m_surface.GetObject(m_surface.GetCurrentObject(OBJ_BRUSH), pen));
  EXPECT_EQ(m_surface.SelectStockObject(1234), nullptr);
  EXPECT_EQ(m_surface.GetCurrentObject(OBJ_PEN), black);
}

TEST_F(CairoImage, APenIsWhatItWasMadeAs) {
  EXPECT_EQ(m_surface.CreatePen(6, 1, kRed), nullptr);
  for (const auto& [asked, given] : std::vector<std::pair<int, int>>{{-5, 0}, {0, 0}, {7, 7}, {INT_MAX, 32767}}) {
    LOGPEN pen;
    ASSERT_TRUE(m_surface.GetObject(m_surface.CreatePen(PS_DASH, asked, 0xFF0000FF), pen));
    EXPECT_EQ(std::make_tuple(pen.lopnStyle, pen.lopnWidth.x, pen.lopnColor), std::make_tuple(PS_DASH, given, kRed));
  }
}

TEST_F(CairoImage, ObjectsEndAtTenThousand) {
  HGDIOBJ last = nullptr;
  for (int i = 0; i < 10000; ++i) last = m_surface.CreateSolidBrush(kRed);
  ASSERT_NE(last, nullptr);
  EXPECT_EQ(m_surface.CreateSolidBrush(kRed), nullptr);
  EXPECT_TRUE(m_surface.DeleteObject(last));
  EXPECT_NE(m_surface.CreateSolidBrush(kRed), nullptr);
}

// A pen's lines are the pen's, also those that Cairo has not stroked yet when another one is selected.
TEST_F(CairoImage, LinesKeepThePenTheyWereDrawnWith) {
  SelectPen(3, kRed);
  Draw(m_surface, 5, 5, 20, 5);
  SelectPen(5, kBlue);
  Draw(m_surface, 5, 20, 20, 20);
  EXPECT_EQ(m_surface.GetPixel(10, 5), kRed);
  EXPECT_EQ(m_surface.GetPixel(10, 20), kBlue);
}

TEST_F(CairoImage, WhatIsDrawnLaterLiesAbove) {
  SelectPen(5, kRed);
  Draw(m_surface, 5, 10, 40, 10);
  m_surface.FillSolidRect(CRect(10, 0, 20, 20), kBlue);
  Draw(m_surface, 15, 2, 15, 18);
  m_surface.SetPixel(15, 10, kBlack);
  EXPECT_EQ(m_surface.GetPixel(12, 10), kBlue);
  EXPECT_EQ(m_surface.GetPixel(15, 5), kRed);
  EXPECT_EQ(m_surface.GetPixel(15, 10), kBlack);
  EXPECT_EQ(m_surface.GetPixel(30, 10), kRed);
}

// --- Clip, smooth, Cairo's context -------------------------------------------------------------------------------------------

TEST_F(CairoImage, AClipHoldsForEveryOperation) {
  const CRect clip(10, 10, 30, 20);
  m_surface.SetClipRect(clip);
  m_surface.SelectStockObject(BLACK_BRUSH);
  m_surface.Rectangle(0, 0, 64, 48);
  EXPECT_EQ(BoxOf(Painted(m_surface)), clip);
  const auto clear = [&] { m_surface.FillSolidRect(CRect(0, 0, 64, 48), kWhite); };
  clear();
  EXPECT_EQ(m_surface.SetPixel(9, 10, kRed), kNoColour);
  m_surface.Ellipse(-100, -100, 200, 200);
  m_surface.FillDots(std::vector<CPoint>{CPoint(30, 20)}, std::vector<COLORREF>{kRed}, 40);
  m_surface.SetPixels(std::vector<CPoint>{CPoint(30, 20)}, std::vector<COLORREF>{kRed});
  m_surface.SetSmooth(true);
  Draw(m_surface, 0, 0, 64, 48);
  SelectPen(9, kBlack);
  Draw(m_surface, 0, 15, 64, 15);
  m_surface.Ellipse(-100, -100, 200, 200);
  m_surface.TextOut(0, 12, "a wide text goes here");
  EXPECT_EQ(BoxOf(Painted(m_surface)), clip);
  clear();
  m_surface.ResetClip();
  EXPECT_TRUE(Painted(m_surface).empty());
  m_surface.SetClipRect(CRect(5, 5, 5, 9));
  Draw(m_surface, 0, 0, 64, 48);
  EXPECT_EQ(m_surface.SetPixel(5, 5, kBlack), kNoColour);
  EXPECT_TRUE(Painted(m_surface).empty());
}

TEST_F(CairoImage, SmoothLinesHaveShades) {
  EXPECT_FALSE(m_surface.SetSmooth(true));
  Draw(m_surface, 3, 5, 60, 33);
  std::set<COLORREF> shades;
  for (const auto& [x, y] : Painted(m_surface)) shades.insert(m_surface.GetPixel(x, y));
  EXPECT_GT(shades.size(), 10u);
  EXPECT_TRUE(m_surface.SetSmooth(false));
}

// A level line of a smooth pen of one pixel through the pixels' centres covers whole pixels; its round ends are the exception.
TEST_F(CairoImage, ASmoothLevelLineIsAsSharpAsAnyAndStopsAStepBeforeItsEnd) {
  m_surface.SetSmooth(true);
  Draw(m_surface, 10, 5, 20, 5);
  for (int x = 11; x < 19; ++x) EXPECT_EQ(m_surface.GetPixel(x, 5), kBlack) << x;
  EXPECT_EQ(BoxOf(Painted(m_surface)), CRect(10, 5, 20, 6));
  m_surface.SetPixel(20, 5, kBlack);
  Draw(m_surface, 10, 15, 20, 15);
  m_surface.SetPixel(20, 15, kBlack);  // before it was stroked: it goes to the end itself
  EXPECT_EQ(BoxOf(Painted(m_surface)), CRect(10, 5, 21, 16));
  EXPECT_EQ(m_surface.GetPixel(19, 15), kBlack);
}

TEST_F(CairoImage, ChordsOfASmoothCurveAreJoined) {
  m_surface.SetSmooth(true);
  m_surface.MoveTo(10, 10);
  m_surface.LineTo(20, 10);
  m_surface.LineTo(20, 30);
  EXPECT_EQ(m_surface.GetPixel(20, 11), kBlack);
  EXPECT_EQ(m_surface.GetPixel(19, 10), kBlack);
  EXPECT_LT(m_surface.GetPixel(20, 10) & 0xFF, 128u);  // a round corner
}

TEST_F(CairoImage, CairosContextSeesAndIsSeen) {
  m_surface.SetPixel(5, 5, kRed);
  cairo_t* const context = m_surface.Context();
  ASSERT_NE(context, nullptr);
  cairo_set_source_rgb(context, 0, 0, 1);
  cairo_rectangle(context, 10, 10, 4, 4);
  cairo_fill(context);
  m_surface.SetPixel(11, 11, kBlack);
  EXPECT_EQ(m_surface.GetPixel(5, 5), kRed);
  EXPECT_EQ(m_surface.GetPixel(10, 10), kBlue);
  EXPECT_EQ(m_surface.GetPixel(11, 11), kBlack);
  SelectPen(3, kRed);
  Draw(m_surface, 30, 30, 40, 30);
  EXPECT_EQ(m_surface.Context(), context);  // the line is in it now
  cairo_surface_flush(cairo_get_target(context));
  EXPECT_EQ(m_surface.GetPixel(35, 30), kRed);
}

// --- Saving -----------------------------------------------------------------------------------------------------------------

// The four bytes from `at`, the highest first.
unsigned int NumberAt(const std::string& bytes, std::size_t at) {
  unsigned int number = 0;
  for (std::size_t i = 0; i < 4; ++i) number = number << 8 | static_cast<unsigned char>(bytes.at(at + i));
  return number;
}

TEST_F(CairoImage, AnImageIsSavedAsPngAndDrawnOn) {
  const std::string first = Saved(m_surface);
  ASSERT_EQ(first.substr(0, 8), "\x89PNG\r\n\x1A\n");
  EXPECT_EQ(NumberAt(first, 16), 64u);
  EXPECT_EQ(NumberAt(first, 20), 48u);
  EXPECT_NE(first.find("IEND"), std::string::npos);
  Draw(m_surface, 0, 0, 5, 5);
  EXPECT_NE(Saved(m_surface), first);
}

}  // namespace
