// Drawing lines and the texts along them; what a line is without a surface, LineTest.cpp says.

#include <gtest/gtest.h>

#include <climits>
#include <optional>
#include <string>
#include <vector>

#include "tests/geometry/EdgeValues.h"
#include "tests/geometry/SecondDrawing.h"
#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/geometry/Line.h"
#include "zelbase/platform/RecordingSurface.h"

namespace {

using Lines = std::vector<std::string>;

const Page kPage(0, 0, 800, 600);

// 800 by 600 pixels on as many metres.
CoordinateSystem OneToOne() {
  CoordinateSystem system;
  system.SetPixelWindow(CRect(0, 0, 800, 600));
  system.SetWorldWindow(kPage);
  return system;
}

Line Between(double x1, double y1, double x2, double y2) { return Line(Point(x1, y1, 0), Point(x2, y2, 0)); }

Lines Drawn(const Line& line, const Page& page = kPage) {
  RecordingSurface surface;
  line.DrawLine(&surface, OneToOne(), page);
  return surface.Painted();
}

// --- Lines -----------------------------------------------------------------------------------------------------------------

TEST(LineDraw, ALineIsDrawnWithItsLastPixel) {
  RecordingSurface surface;
  surface.SetPen(1, 255);
  Between(10.5, 580.5, 30.5, 570.5).DrawLine(&surface, OneToOne(), kPage);
  EXPECT_EQ(surface.Lines(), (Lines{"MoveTo 10 19", "LineTo 30 29", "GetCurrentObject 1", "GetObject 1", "SetPixel 30 29 255", "GetROP2"}));
}

TEST(LineDraw, InRasterModesSixAndSevenTheLastPixelIsPaintedTwice) {
  for (int rop2 = 0; rop2 <= 16; ++rop2) {
    RecordingSurface surface;
    surface.rop2 = rop2;
    Between(10, 10, 20, 10).DrawLine(&surface, OneToOne(), kPage);
    const std::size_t numPixels = rop2 == 6 || rop2 == 7 ? 2 : 1;
    EXPECT_EQ(surface.Painted().size(), 2 + numPixels) << rop2;
    EXPECT_EQ(surface.Painted().back(), "SetPixel 20 590 0");
  }
}

TEST(LineDraw, WithoutAPenTheLastPixelIsNotPainted) {
  RecordingSurface surface;
  surface.SetPen(std::nullopt);
  Between(10, 10, 20, 10).DrawLine(&surface, OneToOne(), kPage);
  EXPECT_EQ(surface.Lines(), (Lines{"MoveTo 10 590", "LineTo 20 590", "GetCurrentObject 1"}));
}

TEST(LineDraw, ALineWithoutLengthIsNotDrawn) {
  RecordingSurface surface;
  Between(10, 10, 10, 10).DrawLine(&surface, OneToOne(), kPage);
  EXPECT_EQ(surface.Lines(), Lines());
}

TEST(LineDraw, ALineOfHeightPaintsOnePixel) {
  EXPECT_EQ(Drawn(Line(Point(10, 10, 0), Point(10, 10, 5))), (Lines{"MoveTo 10 590", "LineTo 10 590", "SetPixel 10 590 0"}));
}

TEST(LineDraw, ALineIsClippedInPixels) {
  EXPECT_EQ(Drawn(Between(-100, 300, 900, 300)), (Lines{"MoveTo 0 300", "LineTo 800 300", "SetPixel 800 300 0"}));
  EXPECT_EQ(Drawn(Between(900, 300, -100, 300)), (Lines{"MoveTo 800 300", "LineTo 0 300", "SetPixel 0 300 0"}));
  EXPECT_EQ(Drawn(Between(400, 700, 400, -100)), (Lines{"MoveTo 400 0", "LineTo 400 600", "SetPixel 400 600 0"}));
  EXPECT_EQ(Drawn(Between(900, 0, 900, 600)), Lines());
  // By the page that was given, not by the window.
  EXPECT_EQ(Drawn(Between(0, 300, 800, 300), Page(100, 100, 200, 400)), (Lines{"MoveTo 100 300", "LineTo 200 300", "SetPixel 200 300 0"}));
}

TEST(LineDraw, ThePageIsRoundedToTheNearestPixelAndTheEndsDown) {
  // The page's edges at 100.6 and 200.4 become 101 and 200; the line's y of 300.6 is 299.4 and becomes 299.
  EXPECT_EQ(Drawn(Between(0, 300.6, 800, 300.6), Page(100.6, 100, 200.4, 400)),
            (Lines{"MoveTo 101 299", "LineTo 200 299", "SetPixel 200 299 0"}));
}

TEST(LineDraw, ClippedEndsAreTruncated) {
  // In pixels from (-10, 0) to (20, 10): at x 0 the y is 3.33.
  EXPECT_EQ(Drawn(Between(-10, 600, 20, 590)), (Lines{"MoveTo 0 3", "LineTo 20 10", "SetPixel 20 10 0"}));
}

TEST(LineDraw, EndsBeyondIntAreTheNearestInt) {
  EXPECT_EQ(Drawn(Between(1e300, 300, -1e300, 300), Page(-1e300, -1e300, 1e300, 1e300)),
            (Lines{"MoveTo 2147483647 300", "LineTo -2147483648 300", "SetPixel -2147483648 300 0"}));
  // What is no number lies beyond no edge.
  EXPECT_EQ(Drawn(Between(kNan, 300, 400, 300)), (Lines{"MoveTo 0 300", "LineTo 400 300", "SetPixel 400 300 0"}));
}

TEST(LineDraw, OnNoSurfaceNothingIsDrawn) {
  Between(0, 0, 1, 1).DrawLine(nullptr, OneToOne(), kPage);
  EXPECT_FALSE(Between(0, 0, 1, 1).AnnotateLine(nullptr, OneToOne(), kPage, "abc", 16));
}

// --- Texts -------------------------------------------------------------------------------------------------------------------

// "abc" is 24 by 16 pixels. What is left are the font's direction, the alignment and the text.
struct Label {
  bool answer = false;
  long long escapement = -1;
  long long orientation = -1;
  long long align = -1;
  std::string text;
};

Label LabelOn(const Line& line, const Page& page = kPage) {
  RecordingSurface surface;
  Label label;
  label.answer = line.AnnotateLine(&surface, OneToOne(), page, "abc", 14);
  EXPECT_EQ(surface.NumNotDeleted(), 0u);
  if (!label.answer) {
    EXPECT_EQ(surface.Lines(), Lines());
    return label;
  }
  label.escapement = surface.calls[0].numbers[2];
  label.orientation = surface.calls[0].numbers[3];
  label.align = surface.calls[4].numbers[0];
  label.text = surface.calls[5].ToString();
  return label;
}

TEST(LineDraw, ATextIsWrittenAndEverythingPutBack) {
  RecordingSurface surface;
  surface.SetTextAlign(6);
  surface.SetBkMode(77);
  surface.calls.clear();
  EXPECT_TRUE(Between(400, 300, 400, 500).AnnotateLine(&surface, OneToOne(), kPage, "abc", 14));
  // Due north: upwards, which is 90 degrees from the right.
  EXPECT_EQ(surface.Lines(),
            (Lines{"CreateFontIndirect 14 0 900 900 0 'Arial'", "SelectObject 5", "SetBkMode 1", "GetTextExtentPoint32A 'abc'",
                   "SetTextAlign 26", "TextOut 400 300 'abc'", "SelectObject 3", "SetTextAlign 6", "SetBkMode 77", "DeleteObject 5"}));
  EXPECT_EQ(surface.NumNotDeleted(), 0u);
}

TEST(LineDraw, ALineWithoutLengthOrOutOfSightHasNoText) {
  EXPECT_FALSE(LabelOn(Between(10, 10, 10, 10)).answer);
  EXPECT_FALSE(LabelOn(Between(900, 0, 900, 600)).answer);
}

TEST(LineDraw, AnEastwardLabelIsCutTo3599) {
  // The bearing of due east is 90.00000000000152.
  const Label label = LabelOn(Between(400, 300, 500, 300));
  EXPECT_EQ(label.escapement, 3599);
  EXPECT_EQ(label.orientation, 3599);
}

TEST(LineDraw, ADirectionAbove3600LosesATurn) {
  EXPECT_EQ(LabelOn(Between(400, 300, 500, 400)).escapement, 449);   // 45.00000000000076 degrees: 4049.99
  EXPECT_EQ(LabelOn(Between(400, 300, 400, 200)).escapement, 2699);  // 180.00000000000304
  EXPECT_EQ(LabelOn(Between(400, 300, 300, 300)).escapement, 1800);  // 269.99999999999847
}

TEST(LineDraw, ATextThatThePageHoldsEndsAtTheStartOnTheBaseLine) {
  const Label label = LabelOn(Between(400, 300, 500, 300));
  EXPECT_EQ(label.align, 26);
  EXPECT_EQ(label.text, "TextOut 400 300 'abc'");
}

TEST(LineDraw, ATextThatDoesNotFitStaysWhereTheLineBeginsInside) {
  const Label label = LabelOn(Between(10, 300, 500, 300));  // 24 pixels would begin at -14
  EXPECT_EQ(label.align, 26);
  EXPECT_EQ(label.text, "TextOut 10 300 'abc'");
}

// The start of the visible piece is never clipped; that of the whole line is.
TEST(LineDraw, ATextOfALineFromOutsideIsMovedInside) {
  const Label label = LabelOn(Between(-100, 300, 500, 300));
  EXPECT_EQ(label.align, 10);
  EXPECT_EQ(label.text, "TextOut 24 300 'abc'");
}

TEST(LineDraw, ASlantingTextIsMovedByItsHeightToo) {
  // In pixels from (-100, 400) to (300, 0): visible from (0, 300). 24 + 16 / tan(45) = 40 pixels at 45 degrees are 28.28.
  const Label label = LabelOn(Between(-100, 200, 300, 600));
  EXPECT_EQ(label.align, 10);
  EXPECT_EQ(label.text, "TextOut 28 271 'abc'");
}

TEST(LineDraw, AWestwardLabelIsInQuadrantTwoWith89Degrees) {
  // From the right edge: the space to it is 0, so that 16 / tan(89) = 0.28 are added to 24. In quadrant three it would end at 776.
  const Label label = LabelOn(Between(900, 300, 400, 300));
  EXPECT_EQ(label.align, 10);
  EXPECT_EQ(label.text, "TextOut 775 300 'abc'");
}

TEST(LineDraw, AnExactlyVerticalLineHasNoCrossingsAndKeepsItsText) {
  const Label label = LabelOn(Between(400, -100, 400, 300));
  EXPECT_EQ(label.align, 26);
  EXPECT_EQ(label.text, "TextOut 400 600 'abc'");
}

TEST(LineDraw, EachQuadrantLeansOnItsEdge) {
  const double kWay = 24 + 16;  // at 45 degrees
  const double kPart = kWay * std::sqrt(0.5);
  struct Row {
    Line line;
    double x, y;  // where the text ends, in pixels
  };
  // From outside through the middle of the left, top, right and bottom edge, at 45 degrees; y of the world runs up.
  const Row rows[] = {{Between(-100, 200, 100, 400), kPart, 300 - kPart},
                      {Between(300, 700, 500, 500), 400 + kPart, kPart},
                      {Between(900, 400, 700, 200), 800 - kPart, 300 + kPart},
                      {Between(500, -100, 300, 100), 400 - kPart, 600 - kPart}};
  for (const Row& row : rows) {
    const Label label = LabelOn(row.line);
    EXPECT_EQ(label.align, 10);
    EXPECT_EQ(label.text, "TextOut " + std::to_string(static_cast<int>(row.x)) + ' ' + std::to_string(static_cast<int>(row.y)) + " 'abc'");
  }
}

TEST(LineDraw, ATextWithRoomToTheEdgeItLeansOnIsMovedByItsWidthAlone) {
  // Comes in through the bottom, at (400, 600) in pixels, at 45 degrees: quadrant 0 leans on the left edge, which is far.
  const Label label = LabelOn(Between(300, -100, 600, 200));
  EXPECT_EQ(label.align, 10);
  EXPECT_EQ(label.text, "TextOut 416 583 'abc'");  // 24 pixels at 45 degrees are 16.97
}

TEST(LineDraw, AnEmptyTextIsWrittenToo) {
  RecordingSurface surface;
  EXPECT_TRUE(Between(400, 300, 500, 300).AnnotateLine(&surface, OneToOne(), kPage, "", 0));
  EXPECT_EQ(surface.Painted(), (Lines{"TextOut 400 300 ''"}));
}

// --- Against the second transcription ------------------------------------------------------------------------------------

Page AnyPage(EdgeValues& values, const CoordinateSystem& system) {
  if (values.Index(3) == 0) return system.worldWindow;
  const Point a = AnyPlace(values, system);
  const Point b = AnyPlace(values, system);
  return Page(std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y));
}

TEST(LineDraw, RandomLinesAreDrawnAsTheRulesSay) {
  EdgeValues values(93);
  Tally tally({"drawn", "not seen", "moved text", "text at the start", "no text"});
  for (int round = 0; round < kHeavyRounds; ++round) {
    const TwoSystems both = AnySystem(values);
    RecordingSurface surface;
    SecondDrawing second(both.second);
    AnySurface(values, surface, second);
    Line line(AnyPlace(values, both.ours), AnyPlace(values, both.ours));
    if (values.Index(10) == 0) line.end = line.start;
    const Page page = AnyPage(values, both.ours);
    line.DrawLine(&surface, both.ours, page);
    second.DrawLine(line, page);
    ASSERT_EQ(surface.Lines(), second.calls) << round;
    tally.Either(surface.calls.empty(), "not seen", "drawn");

    const std::string text(static_cast<std::size_t>(values.Index(8)), 'x');
    const int height = values.Index(40) - 20;
    const bool answer = line.AnnotateLine(&surface, both.ours, page, text, height);
    ASSERT_EQ(answer, second.Annotate(line, page, text, height)) << round;
    ASSERT_EQ(surface.Lines(), second.calls) << round;
    ASSERT_EQ(surface.NumNotDeleted(), 0u);
    if (!tally.Either(answer, "text at the start", "no text")) continue;
    const std::size_t alignCall = surface.calls.size() - 6;
    if (surface.calls[alignCall].numbers[0] == 10) tally.Count("moved text");
  }
}

TEST(LineDraw, HostileNumbersEnd) {
  EdgeValues values(94);
  for (int round = 0; round < 5000; ++round) {
    const CoordinateSystem system = WildSystem(values);
    RecordingSurface surface;
    surface.letter = CSize(values.Flag() ? INT_MAX : INT_MIN, values.Flag() ? INT_MAX : 0);
    const Line line(Point(values.Wild(), values.Wild(), values.Wild()), Point(values.Wild(), values.Wild(), values.Wild()));
    const Page page(values.Wild(), values.Wild(), values.Wild(), values.Wild());
    line.DrawLine(&surface, system, page);
    const bool hasText = line.AnnotateLine(&surface, system, page, "text", INT_MIN);
    ASSERT_EQ(hasText, !surface.calls.empty() && surface.calls.back().name == "DeleteObject");
    ASSERT_EQ(surface.NumNotDeleted(), 0u);
  }
}

}  // namespace
