// Drawing points; what a point is without a surface, PointTest.cpp and FloatPointTest.cpp say.

#include <gtest/gtest.h>

#include <climits>
#include <optional>
#include <string>
#include <vector>

#include "tests/geometry/EdgeValues.h"
#include "tests/geometry/SecondDrawing.h"
#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/geometry/FloatPoint.h"
#include "zelbase/geometry/Point.h"
#include "zelbase/platform/RecordingSurface.h"

namespace {

using Lines = std::vector<std::string>;

// 800 by 600 pixels on as many metres; the point (100.5, 499.5) lies in the middle of the pixel (100, 100).
CoordinateSystem OneToOne() {
  CoordinateSystem system;
  system.SetPixelWindow(CRect(0, 0, 800, 600));
  system.SetWorldWindow(Page(0, 0, 800, 600));
  return system;
}

const Point kMiddle(100.5, 499.5, 7);

// One pixel to a metre, turned around the same centre.
CoordinateSystem TurnedOneToOne(double skew) {
  CoordinateSystem system = OneToOne();
  system.SetRotationMode(ROTATIONMODE_SKEW);
  system.SetSkew(skew);
  return system;
}

Lines CrossOf(int penWidth, int size, const CoordinateSystem& system, const Point& at, int dotsPerInch = 96) {
  RecordingSurface surface;
  surface.SetPen(penWidth, 5);
  surface.dotsPerInch = dotsPerInch;
  at.DrawCross(&surface, system, size);
  return surface.Painted();
}

// --- Crosses -------------------------------------------------------------------------------------------------------------

TEST(PointDraw, ACrossWithAnEvenPenHasArmsOfOneLength) {
  const Lines expected{"MoveTo 90 100", "LineTo 110 100", "MoveTo 100 90", "LineTo 100 110"};
  EXPECT_EQ(CrossOf(2, 10, OneToOne(), kMiddle), expected);
  EXPECT_EQ(CrossOf(0, 10, OneToOne(), kMiddle), expected);
}

TEST(PointDraw, ACrossWithAnOddPenGoesOnePixelFurther) {
  const Lines expected{"MoveTo 90 100", "LineTo 111 100", "MoveTo 100 90", "LineTo 100 111"};
  EXPECT_EQ(CrossOf(1, 10, OneToOne(), kMiddle), expected);
  EXPECT_EQ(CrossOf(3, 10, OneToOne(), kMiddle), expected);
}

TEST(PointDraw, WithoutAPenTheWidthIsNothing) {
  RecordingSurface surface;
  surface.SetPen(std::nullopt);
  kMiddle.DrawCross(&surface, OneToOne(), 10);
  EXPECT_EQ(surface.Lines(),
            (Lines{"GetDeviceCaps 90", "GetCurrentObject 1", "MoveTo 90 100", "LineTo 110 100", "MoveTo 100 90", "LineTo 100 110"}));
}

TEST(PointDraw, SizesAreAtNinetySixDotsToAnInchAndHalvesGoAwayFromZero) {
  const auto reach = [](int size, int dotsPerInch) { return CrossOf(0, size, OneToOne(), kMiddle, dotsPerInch)[1]; };
  EXPECT_EQ(reach(10, 192), "LineTo 120 100");
  EXPECT_EQ(reach(5, 120), "LineTo 106 100");  // 6.25
  EXPECT_EQ(reach(3, 48), "LineTo 102 100");   // 1.5
  EXPECT_EQ(reach(-3, 48), "LineTo 98 100");   // -1.5
  EXPECT_EQ(reach(10, 0), "LineTo 100 100");
}

TEST(PointDraw, TheArmOnATurnedMapIsOneLongerAndThePenDoesNotCount) {
  // 11 pixels at 30 degrees: 9.53 and 5.5 less a trifle, truncated.
  const Lines expected{"MoveTo 91 95", "LineTo 109 105", "MoveTo 105 91", "LineTo 95 109"};
  const CoordinateSystem system = TurnedOneToOne(30);
  Point at;
  system.PixelToWorld(Point(100, 100, 0), &at);
  EXPECT_EQ(CrossOf(1, 10, system, at), expected);
  EXPECT_EQ(CrossOf(2, 10, system, at), expected);
}

TEST(PointDraw, ASkewOutsideTheTurnedModeDoesNotTurnACross) {
  CoordinateSystem system = OneToOne();
  system.SetSkew(30);
  system.SetRotationMode(ROTATIONMODE_2);
  EXPECT_EQ(CrossOf(1, 10, system, kMiddle), CrossOf(1, 10, OneToOne(), kMiddle));
}

TEST(PointDraw, ACrossBeginsInThePixelThatThePointLiesIn) {
  EXPECT_EQ(CrossOf(0, 1, OneToOne(), Point(100.999, 499.001, 0))[0], "MoveTo 99 100");
  EXPECT_EQ(CrossOf(0, 1, OneToOne(), Point(-0.001, 600.001, 0))[0], "MoveTo -2 -1");
}

// --- Symbols -------------------------------------------------------------------------------------------------------------

TEST(PointDraw, ASymbolIsAnUprightCrossADiagonalOneOrBoth) {
  const Lines upright{"MoveTo 90 100", "LineTo 111 100", "MoveTo 100 90", "LineTo 100 111"};
  const Lines diagonal{"MoveTo 90 90", "LineTo 111 110", "MoveTo 110 90", "LineTo 90 111"};
  for (const int kind : {0, 1, 2}) {
    RecordingSurface surface;
    surface.SetPen(1, 0);
    kMiddle.DrawSymbol(&surface, OneToOne(), 10, kind);
    Lines expected = kind == 1 ? diagonal : upright;
    if (kind == 2) expected.insert(expected.end(), diagonal.begin(), diagonal.end());
    EXPECT_EQ(surface.Painted(), expected) << kind;
  }
}

TEST(PointDraw, ASymbolOfAnotherKindIsNothing) {
  RecordingSurface surface;
  for (const int kind : {-1, 3, INT_MAX, INT_MIN}) kMiddle.DrawSymbol(&surface, OneToOne(), 10, kind);
  EXPECT_EQ(surface.Lines(), Lines());
}

TEST(PointDraw, ADiagonalOnATurnedMapIsTurnedToo) {
  RecordingSurface surface;
  surface.SetPen(1, 0);
  const CoordinateSystem system = TurnedOneToOne(90);
  Point at;
  system.PixelToWorld(Point(100, 100, 0), &at);
  at.DrawSymbol(&surface, system, 9, 1);
  // (10, 10) turned by 90 degrees is (-10, 10); a little less may be truncated to 9.
  ASSERT_EQ(surface.Painted().size(), 4u);
  EXPECT_EQ(surface.calls.size(), 7u);
  const std::vector<long long> from = surface.calls[3].numbers;
  EXPECT_NEAR(static_cast<double>(from[0]), 110, 1);
  EXPECT_NEAR(static_cast<double>(from[1]), 90, 1);
}

// --- Pixels --------------------------------------------------------------------------------------------------------------

Lines PixelOf(double x, double y) {
  RecordingSurface surface;
  Point(x, y, 0).DrawPixel(&surface, OneToOne(), 0xFF8040);
  return surface.Lines();
}

TEST(PointDraw, APixelIsPaintedWhenTheWindowHoldsItEdgesIncluded) {
  EXPECT_EQ(PixelOf(100.5, 499.5), (Lines{"SetPixel 100 100 16744512"}));
  EXPECT_EQ(PixelOf(0, 600), (Lines{"SetPixel 0 0 16744512"}));
  EXPECT_EQ(PixelOf(800.9, -0.9), (Lines{"SetPixel 800 600 16744512"}));  // one beyond the last pixel, and painted
  EXPECT_EQ(PixelOf(801, 300), Lines());
  EXPECT_EQ(PixelOf(300, -1), Lines());
  EXPECT_EQ(PixelOf(-0.1, 300), Lines());
  EXPECT_EQ(PixelOf(300, 600.1), Lines());
  EXPECT_EQ(PixelOf(1e300, 0), Lines());
}

TEST(PointDraw, APixelWithoutANumberIsOutsideOfNothingAndGoesToZero) {
  EXPECT_EQ(PixelOf(kNan, 499.5), (Lines{"SetPixel 0 100 16744512"}));
}

// --- Dots ----------------------------------------------------------------------------------------------------------------

Lines DotOf(int radius, CSize offset, bool outline, int margin) {
  RecordingSurface surface;
  surface.SetPen(1, 0x0000FF);
  kMiddle.DrawDot(&surface, OneToOne(), radius, offset, outline, margin);
  EXPECT_EQ(surface.NumNotDeleted(), 0u);
  Lines lines = surface.Lines();
  EXPECT_EQ(lines[0], "GetCurrentObject 1");
  EXPECT_EQ(lines[1], "GetObject 1");
  return Lines(lines.begin() + 2, lines.end());
}

TEST(PointDraw, ASmallDotIsOnePixelInThePensColour) {
  EXPECT_EQ(DotOf(0, CSize(3, -4), false, 9), (Lines{"SetPixel 103 96 255"}));
  EXPECT_EQ(DotOf(-5, CSize(), false, 9), (Lines{"SetPixel 100 100 255"}));
}

TEST(PointDraw, AnOutlineIsASquareInTheHollowBrushWhichIsPutBack) {
  EXPECT_EQ(DotOf(0, CSize(), true, 2), (Lines{"SelectStockObject 5", "Rectangle 98 98 103 103", "SelectObject 2"}));
  EXPECT_EQ(DotOf(-7, CSize(), true, 2), (Lines{"SelectStockObject 5", "Rectangle 98 98 103 103", "SelectObject 2"}));
  EXPECT_EQ(DotOf(4, CSize(1, 1), true, 2), (Lines{"SelectStockObject 5", "Rectangle 95 95 108 108", "SelectObject 2"}));
}

TEST(PointDraw, ALargeDotIsADiscInABrushThatIsPutBackAndDeleted) {
  EXPECT_EQ(DotOf(1, CSize(), false, 9),
            (Lines{"CreateSolidBrush 255", "SelectObject 5", "Ellipse 99 99 102 102", "SelectObject 2", "DeleteObject 5"}));
}

TEST(PointDraw, WithoutAPenADotIsBlack) {
  RecordingSurface surface;
  surface.SetPen(std::nullopt);
  kMiddle.DrawDot(&surface, OneToOne(), 0, CSize(), false, 0);
  kMiddle.DrawDot(&surface, OneToOne(), 1, CSize(), false, 0);
  EXPECT_EQ(surface.calls[1].ToString(), "SetPixel 100 100 0");
  EXPECT_EQ(surface.calls[3].ToString(), "CreateSolidBrush 0");
}

TEST(PointDraw, ASurfaceThatMakesNoBrushKeepsItsOwn) {
  RecordingSurface surface;
  surface.answer = false;
  const HGDIOBJ before = surface.GetCurrentObject(OBJ_BRUSH);
  kMiddle.DrawDot(&surface, OneToOne(), 3, CSize(), false, 0);
  EXPECT_EQ(surface.GetCurrentObject(OBJ_BRUSH), before);
  EXPECT_EQ(surface.Painted(), (Lines{"Ellipse 97 97 104 104"}));
}

// --- FloatPoints, and what ought not to be given ---------------------------------------------------------------------------

TEST(PointDraw, AFloatPointDrawsWhatItsPointDraws) {
  const FloatPoint at(123.25f, 234.5f, 3.0f);
  const Point same(123.25, 234.5, 3);
  RecordingSurface a;
  RecordingSurface b;
  for (RecordingSurface* const surface : {&a, &b}) surface->SetPen(3, 77);
  at.DrawCross(&a, OneToOne(), 5);
  same.DrawCross(&b, OneToOne(), 5);
  at.DrawSymbol(&a, OneToOne(), 6, 2);
  same.DrawSymbol(&b, OneToOne(), 6, 2);
  at.DrawPixel(&a, OneToOne(), 99);
  same.DrawPixel(&b, OneToOne(), 99);
  at.DrawDot(&a, OneToOne(), 4, CSize(1, 2), false, 3);
  same.DrawDot(&b, OneToOne(), 4, CSize(1, 2), false, 3);
  EXPECT_EQ(a.Lines(), b.Lines());
  EXPECT_EQ(a.Painted().size(), 4u + 8u + 1u + 1u);
}

TEST(PointDraw, OnNoSurfaceNothingIsDrawn) {
  const CoordinateSystem system;
  kMiddle.DrawCross(nullptr, system, 1);
  kMiddle.DrawSymbol(nullptr, system, 1, 2);
  kMiddle.DrawPixel(nullptr, system, 1);
  kMiddle.DrawDot(nullptr, system, 1, CSize(), true, 1);
  FloatPoint().DrawCross(nullptr, system, 1);
  FloatPoint().DrawSymbol(nullptr, system, 1, 2);
  FloatPoint().DrawPixel(nullptr, system, 1);
  FloatPoint().DrawDot(nullptr, system, 1, CSize(), true, 1);
  EXPECT_EQ(system, CoordinateSystem());
}

TEST(PointDraw, PixelsBeyondIntEndAtTheNearestInt) {
  RecordingSurface surface;
  surface.SetPen(1, 0);
  surface.dotsPerInch = INT_MAX;
  Point(1e300, -1e300, 0).DrawCross(&surface, OneToOne(), INT_MAX);
  EXPECT_EQ(surface.Painted(),
            (Lines{"MoveTo 0 2147483647", "LineTo 2147483647 2147483647", "MoveTo 2147483647 0", "LineTo 2147483647 2147483647"}));
  surface.calls.clear();
  Point(-1e300, 1e300, 0).DrawDot(&surface, OneToOne(), INT_MAX, CSize(INT_MIN, INT_MIN), true, INT_MAX);
  // -2^31 - 2^31, and 2 * (2^31 - 1) to either side.
  EXPECT_EQ(surface.Painted(), (Lines{"Rectangle -2147483648 -2147483648 -1 -1"}));
}

// --- Against the second transcription ------------------------------------------------------------------------------------

TEST(PointDrawLong, RandomPointsAreDrawnAsTheRulesSay) {
  EdgeValues values(91);
  for (int round = 0; round < kHeavyRounds; ++round) {
    const TwoSystems both = AnySystem(values);
    RecordingSurface surface;
    SecondDrawing second(both.second);
    AnySurface(values, surface, second);
    const Point at = AnyPlace(values, both.ours);
    const int size = values.Index(40) - 5;
    const int kind = values.Index(3);
    at.DrawSymbol(&surface, both.ours, size, kind);
    second.Symbol(at.x, at.y, size, kind);
    at.DrawCross(&surface, both.ours, size);
    second.Symbol(at.x, at.y, size, 0);
    at.DrawPixel(&surface, both.ours, 1234);
    second.Pixel(at.x, at.y, 1234);
    const int radius = values.Index(8) - 2;
    const CSize offset(values.Index(40) - 20, values.Index(40) - 20);
    const bool outline = values.Flag();
    const int margin = values.Index(6) - 1;
    at.DrawDot(&surface, both.ours, radius, offset, outline, margin);
    second.Dot(at.x, at.y, radius, offset, outline, margin);
    ASSERT_EQ(surface.Lines(), second.calls) << round;
    ASSERT_EQ(surface.NumNotDeleted(), 0u);
  }
}

TEST(PointDraw, HostileNumbersDrawSomethingAndEnd) {
  EdgeValues values(92);
  const int sizes[] = {0, 1, -1, INT_MAX, INT_MIN, 96};
  for (int round = 0; round < 5000; ++round) {
    const CoordinateSystem system = WildSystem(values);
    RecordingSurface surface;
    surface.SetPen(sizes[values.Index(6)], 1);
    surface.dotsPerInch = sizes[values.Index(6)];
    const Point at(values.Wild(), values.Wild(), 0);
    const int a = sizes[values.Index(6)];
    const int b = sizes[values.Index(6)];
    at.DrawSymbol(&surface, system, a, 2);
    at.DrawPixel(&surface, system, 1);
    at.DrawDot(&surface, system, a, CSize(b, a), values.Flag(), b);
    ASSERT_GE(surface.Painted().size(), 9u);
    ASSERT_EQ(surface.NumNotDeleted(), 0u);
  }
}

}  // namespace
