// Drawing pages; what a page is without a surface, PageTest.cpp and PageClipTest.cpp say.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/geometry/EdgeValues.h"
#include "tests/geometry/SecondDrawing.h"
#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/geometry/Page.h"
#include "zelbase/platform/RecordingSurface.h"

namespace {

using Lines = std::vector<std::string>;

const Page kAll(-1000, -1000, 2000, 2000);

// 800 by 600 pixels on as many metres.
CoordinateSystem OneToOne() {
  CoordinateSystem system;
  system.SetPixelWindow(CRect(0, 0, 800, 600));
  system.SetWorldWindow(Page(0, 0, 800, 600));
  return system;
}

TEST(PageDraw, ARectangleIsDrawnAllTheWayRound) {
  RecordingSurface surface;
  Page(100, 200, 300, 500).DrawRect(&surface, OneToOne(), kAll);
  EXPECT_EQ(surface.Painted(), (Lines{"MoveTo 100 400", "LineTo 100 100", "SetPixel 100 100 0",     // left side, upward
                                      "MoveTo 100 100", "LineTo 300 100", "SetPixel 300 100 0",     // top
                                      "MoveTo 300 100", "LineTo 300 400", "SetPixel 300 400 0",     // right side, downward
                                      "MoveTo 300 400", "LineTo 100 400", "SetPixel 100 400 0"}));  // bottom, back to the start
}

TEST(PageDraw, ARectanglesSidesAreClipped) {
  RecordingSurface surface;
  Page(100, 200, 300, 500).DrawRect(&surface, OneToOne(), Page(200, 300, 800, 600));
  EXPECT_EQ(surface.Painted(),
            (Lines{"MoveTo 200 100", "LineTo 300 100", "SetPixel 300 100 0", "MoveTo 300 100", "LineTo 300 300", "SetPixel 300 300 0"}));
}

TEST(PageDraw, ASideWithoutLengthIsNotDrawn) {
  RecordingSurface surface;
  Page(100, 200, 100, 500).DrawRect(&surface, OneToOne(), kAll);
  EXPECT_EQ(surface.Painted(),
            (Lines{"MoveTo 100 400", "LineTo 100 100", "SetPixel 100 100 0", "MoveTo 100 100", "LineTo 100 400", "SetPixel 100 400 0"}));
}

TEST(PageDraw, ASolidRectangleIsFilledAndTheBackgroundColourPutBack) {
  RecordingSurface surface;
  surface.SetBkColor(1234);
  surface.calls.clear();
  Page(100, 200, 300, 500).DrawSolidRect(&surface, OneToOne(), 0x0000FF, kAll);
  EXPECT_EQ(surface.Lines(), (Lines{"GetBkColor", "FillSolidRect 100 100 300 400 255", "SetBkColor 1234"}));
  EXPECT_EQ(surface.GetBkColor(), 1234u);
}

TEST(PageDraw, ASolidRectangleIsClippedInTheWorldAndRoundedToTheNearestPixel) {
  RecordingSurface surface;
  Page(100, 200, 300, 500).DrawSolidRect(&surface, OneToOne(), 1, Page(200.6, 300.6, 800, 600));
  EXPECT_EQ(surface.Painted(), (Lines{"FillSolidRect 201 100 300 299 1"}));
}

TEST(PageDraw, WhatOnlyTouchesTheClipPageIsNotFilled) {
  RecordingSurface surface;
  Page(100, 200, 300, 500).DrawSolidRect(&surface, OneToOne(), 1, Page(300, 200, 400, 500));
  Page(100, 200, 300, 500).DrawSolidRect(&surface, OneToOne(), 1, Page());
  Page(100, 500, 300, 200).DrawSolidRect(&surface, OneToOne(), 1, Page(100, 200, 300, 500));  // a page of the screen
  EXPECT_EQ(surface.Lines(), Lines());
}

TEST(PageDraw, OnNoSurfaceNothingIsDrawn) {
  const Page page(0, 0, 10, 10);
  page.DrawRect(nullptr, OneToOne(), kAll);
  page.DrawSolidRect(nullptr, OneToOne(), 1, kAll);
  EXPECT_EQ(page, Page(0, 0, 10, 10));
}

TEST(PageDrawLong, RandomPagesAreDrawnAsTheRulesSay) {
  EdgeValues values(97);
  Tally tally({"filled", "not filled"});
  for (int round = 0; round < kHeavyRounds; ++round) {
    const TwoSystems both = AnySystem(values);
    RecordingSurface surface;
    SecondDrawing second(both.second);
    AnySurface(values, surface, second);
    const Page page(AnyPlace(values, both.ours), AnyPlace(values, both.ours));
    const Page clip = values.Flag() ? both.ours.worldWindow : Page(AnyPlace(values, both.ours), AnyPlace(values, both.ours));
    page.DrawRect(&surface, both.ours, clip);
    const Point corners[] = {
        {page.left, page.bottom, 0}, {page.left, page.top, 0}, {page.right, page.top, 0}, {page.right, page.bottom, 0}};
    for (int side = 0; side < 4; ++side) second.DrawLine(Line(corners[side], corners[(side + 1) % 4]), clip);
    ASSERT_EQ(surface.Lines(), second.calls) << round;

    surface.calls.clear();
    page.DrawSolidRect(&surface, both.ours, 9, clip);
    Page left = page;
    if (!tally.Either(clip.ClipRect(left), "filled", "not filled")) {
      ASSERT_EQ(surface.Lines(), Lines());
      continue;
    }
    const Page pixels = both.second.PixelOfPage(left);
    ASSERT_EQ(surface.calls.size(), 3u);
    const std::vector<long long> filled = surface.calls[1].numbers;
    const double expected[] = {pixels.left, pixels.top, pixels.right, pixels.bottom};
    for (std::size_t i = 0; i < 4; ++i) {
      const double nearest = std::isnan(expected[i]) ? 0 : std::max(-2147483648.0, std::min(2147483647.0, expected[i]));
      ASSERT_EQ(static_cast<double>(filled[i]), nearest) << round;
    }
  }
}

}  // namespace
