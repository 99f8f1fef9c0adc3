#include "zelbase/platform/RecordingSurface.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

TEST(RecordingSurface, KeepsEveryCallInOrder) {
  RecordingSurface surface;
  surface.MoveTo(1, 2);
  surface.LineTo(-3, 4);
  surface.SetPixel(5, 6, 0xFFFFFFFF);
  surface.Rectangle(1, 2, 3, 4);
  surface.Ellipse(INT_MIN, INT_MAX, 3, 4);
  surface.GetDeviceCaps(90);
  surface.GetCurrentObject(1);
  surface.GetROP2();
  surface.SelectStockObject(5);
  surface.CreateSolidBrush(255);
  surface.CreateFontIndirect({12, 0, 900, 910, 400, "Arial"});
  surface.GetTextExtentPoint32A("abc");
  surface.SetTextAlign(26);
  surface.SetBkMode(1);
  surface.TextOut(7, 8, "it's");
  surface.FillSolidRect(CRect(1, 2, 3, 4), 99);
  surface.GetBkColor();
  surface.SetBkColor(17);
  EXPECT_EQ(surface.Lines(),
            (Lines{"MoveTo 1 2", "LineTo -3 4", "SetPixel 5 6 4294967295", "Rectangle 1 2 3 4", "Ellipse -2147483648 2147483647 3 4",
                   "GetDeviceCaps 90", "GetCurrentObject 1", "GetROP2", "SelectStockObject 5", "CreateSolidBrush 255",
                   "CreateFontIndirect 12 0 900 910 400 'Arial'", "GetTextExtentPoint32A 'abc'", "SetTextAlign 26", "SetBkMode 1",
                   "TextOut 7 8 'it's'", "FillSolidRect 1 2 3 4 99", "GetBkColor", "SetBkColor 17"}));
  EXPECT_EQ(surface.Painted(), (Lines{"MoveTo 1 2", "LineTo -3 4", "SetPixel 5 6 4294967295", "Rectangle 1 2 3 4",
                                      "Ellipse -2147483648 2147483647 3 4", "TextOut 7 8 'it's'", "FillSolidRect 1 2 3 4 99"}));
  EXPECT_EQ(surface.calls[1], (RecordingSurface::Call{"LineTo", {-3, 4}, ""}));
  EXPECT_EQ(surface.calls[14], (RecordingSurface::Call{"TextOut", {7, 8}, "it's"}));
}

TEST(RecordingSurface, AnswersWithWhatWasThereBefore) {
  RecordingSurface surface;
  EXPECT_EQ(surface.MoveTo(1, 2), CPoint(0, 0));
  EXPECT_EQ(surface.MoveTo(3, 4), CPoint(1, 2));
  EXPECT_TRUE(surface.LineTo(5, 6));
  EXPECT_EQ(surface.MoveTo(0, 0), CPoint(5, 6));
  EXPECT_EQ(surface.SetTextAlign(10), 0u);
  EXPECT_EQ(surface.SetTextAlign(26), 10u);
  EXPECT_EQ(surface.SetBkMode(1), OPAQUE);
  EXPECT_EQ(surface.SetBkMode(2), TRANSPARENT);
  EXPECT_EQ(surface.SetBkColor(7), 0xFFFFFFu);
  surface.FillSolidRect(CRect(), 8);
  EXPECT_EQ(surface.GetBkColor(), 8u);
  EXPECT_EQ(surface.SetPixel(0, 0, 9), 9u);
}

TEST(RecordingSurface, AnswersAsItIsTold) {
  RecordingSurface surface;
  surface.dotsPerInch = 300;
  surface.rop2 = R2_XORPEN;
  surface.letter = CSize(5, 11);
  EXPECT_EQ(surface.GetDeviceCaps(LOGPIXELSY), 300);
  EXPECT_EQ(surface.GetDeviceCaps(88), 0);
  EXPECT_EQ(surface.GetROP2(), 7);
  EXPECT_EQ(surface.GetTextExtentPoint32A("four"), CSize(20, 11));
  EXPECT_EQ(surface.GetTextExtentPoint32A(""), CSize(0, 11));
  surface.letter.cx = INT_MAX;
  EXPECT_EQ(surface.GetTextExtentPoint32A("ab").cx, INT_MAX);
  surface.letter.cx = INT_MIN;
  EXPECT_EQ(surface.GetTextExtentPoint32A("ab").cx, INT_MIN);
}

TEST(RecordingSurface, ASurfaceThatFailsStillKeepsTheCalls) {
  RecordingSurface surface;
  surface.answer = false;
  EXPECT_FALSE(surface.LineTo(1, 1));
  EXPECT_FALSE(surface.Rectangle(1, 1, 2, 2));
  EXPECT_FALSE(surface.Ellipse(1, 1, 2, 2));
  EXPECT_FALSE(surface.TextOut(1, 1, ""));
  EXPECT_EQ(surface.SetPixel(1, 1, 5), 0xFFFFFFFFu);
  EXPECT_EQ(surface.CreateSolidBrush(1), nullptr);
  EXPECT_EQ(surface.CreateFontIndirect(LOGFONT()), nullptr);
  EXPECT_EQ(surface.calls.size(), 7u);
  EXPECT_EQ(surface.NumNotDeleted(), 0u);
}

TEST(RecordingSurface, HasOnePenWhichMayBeChangedOrTakenAway) {
  RecordingSurface surface;
  LOGPEN pen;
  ASSERT_TRUE(surface.GetObject(surface.GetCurrentObject(OBJ_PEN), pen));
  EXPECT_EQ(pen.lopnWidth.x, 0);
  surface.SetPen(3, 0x0000FF);
  ASSERT_TRUE(surface.GetObject(surface.GetCurrentObject(OBJ_PEN), pen));
  EXPECT_EQ(pen.lopnWidth.x, 3);
  EXPECT_EQ(pen.lopnColor, 0x0000FFu);
  surface.SetPen(std::nullopt);
  EXPECT_EQ(surface.GetCurrentObject(OBJ_PEN), nullptr);
  EXPECT_FALSE(surface.GetObject(surface.GetCurrentObject(OBJ_PEN), pen));
  EXPECT_EQ(pen.lopnWidth.x, 3);
  surface.SetPen(1, 2);
  EXPECT_TRUE(surface.GetObject(surface.GetCurrentObject(OBJ_PEN), pen));
  EXPECT_EQ(surface.calls.back().ToString(), "GetObject 1");
}

TEST(RecordingSurface, SelectsByKindAndGivesWhatWasSelectedBefore) {
  RecordingSurface surface;
  const HGDIOBJ font = surface.GetCurrentObject(OBJ_FONT);
  const HGDIOBJ white = surface.GetCurrentObject(OBJ_BRUSH);
  const HGDIOBJ red = surface.CreateSolidBrush(0x0000FF);
  EXPECT_EQ(surface.SelectObject(red), white);
  EXPECT_EQ(surface.GetCurrentObject(OBJ_BRUSH), red);
  EXPECT_EQ(surface.SelectStockObject(HOLLOW_BRUSH), red);
  const HGDIOBJ hollow = surface.SelectObject(white);
  EXPECT_NE(hollow, nullptr);
  EXPECT_NE(hollow, red);
  EXPECT_EQ(surface.GetCurrentObject(OBJ_FONT), font);
  EXPECT_EQ(surface.GetCurrentObject(77), nullptr);
  LOGPEN pen;
  EXPECT_FALSE(surface.GetObject(red, pen));
}

TEST(RecordingSurface, SelectsNothingForAHandleOfNothing) {
  RecordingSurface surface;
  int elsewhere = 0;
  const HGDIOBJ brush = surface.GetCurrentObject(OBJ_BRUSH);
  EXPECT_EQ(surface.SelectObject(nullptr), nullptr);
  EXPECT_EQ(surface.SelectObject(&elsewhere), nullptr);
  EXPECT_EQ(surface.SelectStockObject(6), nullptr);
  EXPECT_EQ(surface.GetCurrentObject(OBJ_BRUSH), brush);
  EXPECT_EQ(surface.calls[1].ToString(), "SelectObject 0");
  EXPECT_EQ(surface.calls[2].ToString(), "SelectObject -1");
}

TEST(RecordingSurface, CountsWhatIsNotDeleted) {
  RecordingSurface surface;
  EXPECT_EQ(surface.NumNotDeleted(), 0u);
  const HGDIOBJ brush = surface.CreateSolidBrush(1);
  const HGDIOBJ font = surface.CreateFontIndirect(LOGFONT());
  EXPECT_EQ(surface.NumNotDeleted(), 2u);
  EXPECT_TRUE(surface.DeleteObject(brush));
  EXPECT_FALSE(surface.DeleteObject(brush));  // twice
  EXPECT_EQ(surface.NumNotDeleted(), 1u);
  const HGDIOBJ before = surface.SelectObject(font);
  EXPECT_FALSE(surface.DeleteObject(font));  // while it is selected
  EXPECT_EQ(surface.NumNotDeleted(), 1u);
  surface.SelectObject(before);
  EXPECT_TRUE(surface.DeleteObject(font));
  EXPECT_EQ(surface.NumNotDeleted(), 0u);
  EXPECT_FALSE(surface.DeleteObject(before));  // the surface's own
  EXPECT_FALSE(surface.DeleteObject(nullptr));
}

TEST(RecordingSurface, NeverGivesANumberAgain) {
  RecordingSurface surface;
  const HGDIOBJ first = surface.CreateSolidBrush(1);
  surface.DeleteObject(first);
  EXPECT_EQ(surface.calls.back().ToString(), "DeleteObject 5");
  const HGDIOBJ second = surface.CreateSolidBrush(1);
  EXPECT_NE(first, second);
  surface.SelectObject(second);
  EXPECT_EQ(surface.calls.back().ToString(), "SelectObject 6");
  surface.SelectObject(first);
  EXPECT_EQ(surface.calls.back().ToString(), "SelectObject -1");
}

}  // namespace
