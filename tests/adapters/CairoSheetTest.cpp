// The drawing surface as a sheet of SVG or PDF, and surfaces that cannot be made.

#include <gtest/gtest.h>

#include <climits>
#include <iterator>
#include <regex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "tests/adapters/ImagePixels.h"
#include "tests/support/Printed.h"

namespace {

int Count(const std::string& text, const std::string& pattern) {
  const std::regex expression(pattern);
  return static_cast<int>(std::distance(std::sregex_iterator(text.begin(), text.end(), expression), std::sregex_iterator()));
}

class CairoSheet : public testing::TestWithParam<CairoFormat> {};

void DrawEverything(CairoSurface& surface) {
  surface.SelectObject(surface.CreatePen(PS_DASH, 2, kRed));
  Draw(surface, 10, 10, 60, 40);
  surface.Rectangle(20, 20, 30, 30);
  surface.Ellipse(20, 20, 40, 30);
  surface.SetPixel(1, 1, kBlue);
  surface.FillSolidRect(CRect(40, 1, 50, 5), kBlue);
  surface.TextOut(10, 30, "25 m");
  surface.FillDots(std::vector<CPoint>{CPoint(5, 5), CPoint(9, 5)}, std::vector<COLORREF>{kRed, kBlue}, 2);
}

void ExpectThatNothingIsDrawn(CairoSurface& surface) {
  surface.MoveTo(0, 0);
  EXPECT_FALSE(surface.IsGood());
  EXPECT_FALSE(surface.LineTo(1, 1));
  EXPECT_FALSE(surface.Rectangle(1, 1, 5, 5));
  EXPECT_FALSE(surface.Ellipse(1, 1, 5, 5));
  EXPECT_FALSE(surface.TextOut(1, 1, "x"));
  EXPECT_EQ(surface.SetPixel(1, 1, kRed), kNoColour);
  EXPECT_EQ(surface.GetPixel(1, 1), kNoColour);
  EXPECT_EQ(surface.GetTextExtentPoint32A("x"), CSize());
  EXPECT_EQ(surface.GetDeviceCaps(LOGPIXELSY), 0);
  EXPECT_EQ(surface.Context(), nullptr);
  surface.FillSolidRect(CRect(0, 0, 5, 5), kRed);
  surface.SetPixels(std::vector<CPoint>{CPoint(1, 1)}, std::vector<COLORREF>{kRed});
  surface.FillDots(std::vector<CPoint>{CPoint(1, 1)}, std::vector<COLORREF>{kRed}, 3);
  surface.SetClipRect(CRect(0, 0, 5, 5));
  surface.ResetClip();
  surface.SetSmooth(true);
  EXPECT_FALSE(surface.LineTo(20, 20));
  surface.SelectObject(surface.CreatePen(PS_SOLID, 9, kRed));
  surface.SetROP2(R2_NOT);
  EXPECT_FALSE(surface.LineTo(1, 1));
  EXPECT_FALSE(surface.IsGood());
}

TEST_P(CairoSheet, IsClosedBySavingAndCanBeSavedAgain) {
  CairoSurface surface(GetParam(), 64, 48);
  DrawEverything(surface);
  const std::string bytes = Saved(surface);
  EXPECT_GT(bytes.size(), 500u);
  EXPECT_FALSE(surface.IsGood());
  ExpectThatNothingIsDrawn(surface);
  EXPECT_EQ(Saved(surface), bytes);
}

TEST_P(CairoSheet, AWriterThatRefusesOrThrowsIsFalse) {
  CairoSurface surface(GetParam(), 64, 48);
  DrawEverything(surface);
  EXPECT_FALSE(surface.Save([](std::string_view) { return false; }));
  EXPECT_FALSE(surface.Save([](std::string_view) -> bool { throw std::runtime_error("full"); }));
  EXPECT_FALSE(surface.Save(nullptr));
  EXPECT_FALSE(Saved(surface).empty());
}

TEST(CairoSheets, AnImpossibleSurfaceTakesEveryCallAndDoesNothing) {
  const std::vector<std::tuple<int, int, int>> sizes = {
      {0, 10, 96},        {10, 0, 96}, {-1, 10, 96}, {10, INT_MIN, 96}, {32768, 10, 96},  {INT_MAX, INT_MAX, 96},
      {32767, 32767, 96}, {10, 10, 0}, {10, 10, 9},  {10, 10, 10001},   {10, 10, INT_MIN}};
  for (const CairoFormat format : {CairoFormat::Png, CairoFormat::Svg, CairoFormat::Pdf, static_cast<CairoFormat>(77)}) {
    for (const auto& [width, height, dots] : sizes) {
      CairoSurface surface(format, width, height, dots);
      ExpectThatNothingIsDrawn(surface);
      EXPECT_FALSE(surface.Save([](std::string_view) { return true; }));
      EXPECT_EQ(surface.Width(), width);
    }
  }
  CairoSurface unknown(static_cast<CairoFormat>(77), 10, 10);
  ExpectThatNothingIsDrawn(unknown);
}

TEST(CairoSheets, APdfPageHasTheSizeOfThePrintedImage) {
  CairoSurface surface(CairoFormat::Pdf, 2100, 2970, 254);  // 210 mm by 297 mm
  DrawEverything(surface);
  const std::string bytes = Saved(surface);
  EXPECT_EQ(bytes.substr(0, 5), "%PDF-");
  EXPECT_NE(bytes.find("%%EOF"), std::string::npos);
  std::smatch box;
  ASSERT_TRUE(std::regex_search(bytes, box, std::regex(R"(/MediaBox \[ 0 0 ([0-9.]+) ([0-9.]+) \])")));
  EXPECT_NEAR(ReadDouble(box[1].str().c_str()), 2100 * 72 / 254.0, 0.01);
  EXPECT_NEAR(ReadDouble(box[2].str().c_str()), 2970 * 72 / 254.0, 0.01);
}

TEST(CairoSheets, AnSvgHasTheSizeAndWhatWasDrawn) {
  CairoSurface surface(CairoFormat::Svg, 640, 480);
  Draw(surface, 10, 20, 30, 20);
  surface.FillSolidRect(CRect(40, 50, 60, 80), kRed);
  surface.SetPixel(7, 9, kBlue);
  const std::string text = Saved(surface);
  EXPECT_EQ(Count(text, R"(<svg [^>]*width="640px" height="480px" viewBox="0 0 640 480")"), 1);
  EXPECT_EQ(Count(text, "</svg>"), 1);
  EXPECT_EQ(Count(text, R"re(d="M 10.5 20.5 L 29.5 20.5 ")re"), 1) << text;
  EXPECT_EQ(Count(text, R"re(rgb\(100%,0%,0%\)[^>]*d="M 40 50 L 60 50 L 60 80 L 40 80 Z)re"), 1) << text;
  EXPECT_EQ(Count(text, R"re(rgb\(0%,0%,100%\)[^>]*d="M 7 9 L 8 9 L 8 10 L 7 10 Z)re"), 1) << text;
}

TEST(CairoSheets, TheSvgUnitIsThePrintedSize) {
  CairoSurface surface(CairoFormat::Svg, 960, 480, 192);
  EXPECT_EQ(surface.GetDeviceCaps(LOGPIXELSY), 192);
  EXPECT_EQ(Count(Saved(surface), R"(width="480px" height="240px")"), 1);
}

TEST(CairoSheets, AClipHoldsOnASheet) {
  CairoSurface surface(CairoFormat::Svg, 64, 48);
  surface.SetClipRect(CRect(10, 10, 20, 20));
  EXPECT_EQ(surface.SetPixel(5, 5, kRed), kNoColour);
  EXPECT_EQ(surface.SetPixel(15, 15, kRed), kRed);
  Draw(surface, 0, 0, 64, 48);
  EXPECT_EQ(Count(Saved(surface), R"re(clipPath id="[^"]*">\s*<path d="M 10 10 L 20 10 L 20 20 L 10 20 Z)re"), 1);
}

INSTANTIATE_TEST_SUITE_P(Formats, CairoSheet, testing::Values(CairoFormat::Svg, CairoFormat::Pdf));
}  // namespace
