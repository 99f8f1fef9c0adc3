// What geometry draws on an image, to the pixel: the ends of lines, the arms of crosses, dots; and on a sheet.

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "adapters/cairo/CairoSurface.h"
#include "tests/adapters/ImagePixels.h"
#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/geometry/Curve.h"
#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/Page.h"
#include "zelbase/geometry/Point.h"

namespace {

// A unit of the world is a pixel, and y runs upwards in the world.
CoordinateSystem SystemOf(int width, int height) {
  CoordinateSystem system;
  system.SetPixelWindow(CRect(0, 0, width, height));
  system.SetWorldWindow(Page(0, 0, width, height));
  return system;
}

class CairoGeometry : public testing::Test {
 protected:
  CairoSurface m_surface{CairoFormat::Png, 64, 48};
};

TEST_F(CairoGeometry, ALineDrawnByGeometryHasItsLastPixel) {
  const CoordinateSystem system = SystemOf(64, 48);
  // y 42.5 is row 48 - 42.5, floored: 5
  Line(Point(3.5, 42.5, 0), Point(7.5, 42.5, 0)).DrawLine(&m_surface, system, Page(0, 0, 64, 48));
  EXPECT_EQ(Painted(m_surface), Filled(3, 5, 8, 6));
}

// Its middle is pixel (30, 24).
Pixels CrossOf(CairoSurface& surface, int penWidth, int size) {
  const CoordinateSystem system = SystemOf(64, 48);
  surface.SelectObject(surface.CreatePen(PS_SOLID, penWidth, kBlack));
  Point(30.5, 23.5, 0).DrawCross(&surface, system, size);
  return Painted(surface);
}

TEST_F(CairoGeometry, ACrossOfAPenOfAPixelIsSymmetrical) {
  Pixels expected = Filled(25, 24, 36, 25);
  expected.merge(Filled(30, 19, 31, 30));
  EXPECT_EQ(CrossOf(m_surface, 1, 5), expected);
}

TEST_F(CairoGeometry, ACrossOfAPenOfWidthZeroLacksTheLastPixelsOfItsArms) {
  Pixels expected = Filled(25, 24, 35, 25);
  expected.merge(Filled(30, 19, 31, 29));
  EXPECT_EQ(CrossOf(m_surface, 0, 5), expected);
}

TEST(CairoGeometryCross, OfAnyPenIsItsOwnMirrorImage) {
  for (const int width : {1, 2, 3, 4, 5}) {
    for (const int size : {4, 7}) {
      CairoSurface surface(CairoFormat::Png, 64, 48);
      const Pixels cross = CrossOf(surface, width, size);
      ASSERT_FALSE(cross.empty());
      // An odd pen is centred on the pixel's middle, an even one on its upper left corner.
      const int odd = width % 2;
      EXPECT_EQ(cross, TurnedOver(cross, 2 * 30 + odd, 2 * 24 + odd)) << width << ' ' << size;
      const CRect box = BoxOf(cross);
      EXPECT_EQ(box.Width(), box.Height());
      EXPECT_EQ(box.Width(), 2 * size + odd + 2 * (width / 2));
    }
  }
}

TEST_F(CairoGeometry, ADotOfGeometryIsACircle) {
  const CoordinateSystem system = SystemOf(64, 48);
  m_surface.SelectObject(m_surface.CreatePen(PS_SOLID, 1, kRed));
  Point(30.5, 23.5, 0).DrawDot(&m_surface, system, 2, CSize(), false, 0);
  Pixels expected = Filled(28, 23, 33, 26);
  expected.merge(Filled(29, 22, 32, 27));
  EXPECT_EQ(Painted(m_surface), expected);
  EXPECT_EQ(m_surface.GetPixel(30, 24), kRed);
}

TEST_F(CairoGeometry, ALineOfGeometryDrawnTwiceLeavesNoTrace) {
  const CoordinateSystem system = SystemOf(64, 48);
  m_surface.SelectObject(m_surface.CreatePen(PS_SOLID, 1, kRed));
  m_surface.SetROP2(R2_XORPEN);
  const Line line(Point(3, 4, 0), Point(50, 30, 0));
  line.DrawLine(&m_surface, system, Page(0, 0, 64, 48));
  EXPECT_FALSE(Painted(m_surface).empty());
  line.DrawLine(&m_surface, system, Page(0, 0, 64, 48));
  EXPECT_TRUE(Painted(m_surface).empty());
}

TEST(CairoGeometryText, ALineIsAnnotatedAlongIt) {
  CairoSurface surface(CairoFormat::Png, 300, 300);
  const CoordinateSystem system = SystemOf(300, 300);
  EXPECT_TRUE(Line(Point(50, 50, 0), Point(250, 250, 0)).AnnotateLine(&surface, system, Page(0, 0, 300, 300), "KP 1.250", 16));
  const CRect ink = BoxOf(Painted(surface));
  EXPECT_GT(ink.Width(), 20);
  EXPECT_NEAR(ink.Width(), ink.Height(), 6);  // at 45 degrees
}

TEST(CairoGeometrySheet, ALineOfGeometryGoesToItsEndOnASheetAndChordsAreOnePath) {
  const CoordinateSystem system = SystemOf(640, 480);
  CairoSurface surface(CairoFormat::Svg, 640, 480);
  Line(Point(10.5, 459.5, 0), Point(30.5, 459.5, 0)).DrawLine(&surface, system, Page(0, 0, 640, 480));
  surface.SelectObject(surface.CreatePen(PS_SOLID, 1, kRed));
  Curve(Point(320, 240, 0), 100, 0, 359).DrawCurve(&surface, system, Page(0, 0, 640, 480));
  const std::string text = Saved(surface);
  EXPECT_NE(text.find(R"(d="M 10.5 20.5 L 30.5 20.5 ")"), std::string::npos) << text;
  EXPECT_EQ(text.find("stroke:rgb(100%,0%,0%)"), text.rfind("stroke:rgb(100%,0%,0%)")) << text;
  EXPECT_NE(text.find("stroke:rgb(100%,0%,0%)"), std::string::npos);
}

}  // namespace
