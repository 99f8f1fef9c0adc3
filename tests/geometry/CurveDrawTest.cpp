// Drawing arcs; what an arc is without a surface, CurveTest.cpp says.

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "tests/geometry/EdgeValues.h"
#include "tests/geometry/SecondDrawing.h"
#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/geometry/Curve.h"
#include "zelbase/platform/RecordingSurface.h"

namespace {

using Lines = std::vector<std::string>;
using Call = RecordingSurface::Call;

const Page kPage(0, 0, 800, 600);
const Point kCentre(400.5, 299.5, 0);  // in the middle of the pixel (400, 300)

// 800 by 600 pixels on as many metres.
CoordinateSystem OneToOne() {
  CoordinateSystem system;
  system.SetPixelWindow(CRect(0, 0, 800, 600));
  system.SetWorldWindow(kPage);
  return system;
}

// From where to where each chord goes.
struct Chord {
  long long x1, y1, x2, y2;
};

std::vector<Chord> ChordsOf(const Curve& curve, const CoordinateSystem& system = OneToOne(), const Page& page = kPage) {
  RecordingSurface surface;
  curve.DrawCurve(&surface, system, page);
  std::vector<Chord> chords;
  for (const Call& call : surface.calls) {
    if (call.name == "MoveTo") chords.push_back({call.numbers[0], call.numbers[1], 0, 0});
    if (call.name == "LineTo") chords.back().x2 = call.numbers[0], chords.back().y2 = call.numbers[1];
  }
  return chords;
}

void ExpectPixel(long long x, long long y, double expectedX, double expectedY) {
  EXPECT_NEAR(static_cast<double>(x), expectedX, 1.0);
  EXPECT_NEAR(static_cast<double>(y), expectedY, 1.0);
}

// Half a pixel of tolerance beside the radius in pixels.
double StepOf(double radius) { return std::acos((radius - 0.5) / (radius + 0.5)); }

TEST(CurveDraw, AQuarterRunsClockwiseInChordsOfOneStep) {
  const std::vector<Chord> chords = ChordsOf(Curve(kCentre, 100, 0, 90));
  EXPECT_EQ(chords.size(), static_cast<std::size_t>(std::ceil(std::acos(0.0) / StepOf(100))));
  ExpectPixel(chords.front().x1, chords.front().y1, 400, 200);
  ExpectPixel(chords.front().x2, chords.front().y2, 400.5 + 100 * std::sin(StepOf(100)), 300.5 - 100 * std::cos(StepOf(100)));
  ExpectPixel(chords.back().x2, chords.back().y2, 500, 300);
  for (std::size_t i = 1; i < chords.size(); ++i) {
    EXPECT_EQ(chords[i].x1, chords[i - 1].x2);
    EXPECT_EQ(chords[i].y1, chords[i - 1].y2);
  }
}

TEST(CurveDraw, TheLastChordEndsExactlyAtTheEnd) {
  // Due east of the centre by 100 metres, half a pixel from the edges of that pixel.
  const std::vector<Chord> chords = ChordsOf(Curve(kCentre, 100, 33, 90));
  EXPECT_EQ(chords.back().x2, 500);
  EXPECT_EQ(chords.back().y2, 300);
}

TEST(CurveDraw, ANegativeRadiusDrawsTheSameArc) {
  const std::vector<Chord> there = ChordsOf(Curve(kCentre, 100, 20, 70));
  const std::vector<Chord> back = ChordsOf(Curve(kCentre, -100, 70, 20));
  ASSERT_EQ(there.size(), back.size());
  ASSERT_FALSE(there.empty());
  for (std::size_t i = 0; i < there.size(); ++i) {
    EXPECT_EQ(there[i].x1, back[i].x1);
    EXPECT_EQ(there[i].y2, back[i].y2);
  }
}

TEST(CurveDraw, AnArcPastNorthGoesOn) {
  const std::vector<Chord> chords = ChordsOf(Curve(kCentre, 100, 350, 10));
  EXPECT_EQ(chords.size(), static_cast<std::size_t>(std::ceil(20 / 57.29577951308232 / StepOf(100))));
}

TEST(CurveDraw, EqualAnglesDrawTheFullCircle) {
  const std::size_t full = static_cast<std::size_t>(std::ceil(4 * std::acos(0.0) / StepOf(100)));
  EXPECT_EQ(ChordsOf(Curve(kCentre, 100, 0, 360)).size(), full);
  EXPECT_EQ(ChordsOf(Curve(kCentre, 100, 77, 77)).size(), full);
  EXPECT_EQ(ChordsOf(Curve(kCentre, -100, 77, 77)).size(), full);
}

TEST(CurveDraw, AnArcIsClippedToThePage) {
  // Of the circle around the middle of the left edge the right half is seen.
  const std::vector<Chord> chords = ChordsOf(Curve(Point(0, 300, 0), 100, 0, 360));
  ASSERT_FALSE(chords.empty());
  EXPECT_LE(chords.size(), 1 + static_cast<std::size_t>(std::ceil(2 * std::acos(0.0) / StepOf(100))));
  for (const Chord& chord : chords) {
    EXPECT_GE(chord.x1, 0);
    EXPECT_GE(chord.x2, 0);
  }
  EXPECT_TRUE(ChordsOf(Curve(Point(-200, 300, 0), 100, 0, 360)).empty());
}

TEST(CurveDraw, ARadiusBelowHalfAPixelDrawsNothing) {
  EXPECT_TRUE(ChordsOf(Curve(kCentre, 0.49, 0, 90)).empty());
  EXPECT_TRUE(ChordsOf(Curve(kCentre, -0.49, 0, 90)).empty());
  EXPECT_TRUE(ChordsOf(Curve(kCentre, 0, 0, 90)).empty());
  RecordingSurface surface;
  Curve(kCentre, 0.49, 0, 90).DrawCurve(&surface, OneToOne(), kPage);
  EXPECT_EQ(surface.Lines(), Lines());
}

TEST(CurveDraw, ARadiusOfHalfAPixelIsDrawnInQuarters) { EXPECT_EQ(ChordsOf(Curve(kCentre, 0.5, 0, 360)).size(), 4u); }

TEST(CurveDraw, OnATurnedMapTheBearingsAreOfTheWorld) {
  CoordinateSystem system = OneToOne();
  system.SetRotationMode(ROTATIONMODE_SKEW);
  system.SetSkew(90);
  // North is to the right: the quarter from north to east goes from the right to below.
  const std::vector<Chord> chords = ChordsOf(Curve(Point(400, 300, 0), 100, 0, 90), system, Page(-1e4, -1e4, 1e4, 1e4));
  ASSERT_FALSE(chords.empty());
  ExpectPixel(chords.front().x1, chords.front().y1, 500, 300);
  ExpectPixel(chords.back().x2, chords.back().y2, 400, 400);
}

TEST(CurveDraw, EqualAnglesOnATurnedMapAreTurnedBackWithoutHavingBeenTurned) {
  CoordinateSystem system = OneToOne();
  system.SetRotationMode(ROTATIONMODE_SKEW);
  system.SetSkew(90);
  // A full circle from bearing 50 begins at 50 - 90 = 320 instead, which is shown at 320 + 90 = 50.
  const std::vector<Chord> chords = ChordsOf(Curve(Point(400, 300, 0), 100, 50, 50), system, Page(-1e4, -1e4, 1e4, 1e4));
  ASSERT_FALSE(chords.empty());
  const double bearing = 50 / 57.29577951308232;
  ExpectPixel(chords.front().x1, chords.front().y1, 400 + 100 * std::sin(bearing), 300 - 100 * std::cos(bearing));
}

TEST(CurveDraw, TheFullCircleFrom0To360IsADotOnATurnedMapWhere360RoundsUp) {
  // Doubles lie 2^-47 apart above 33 and 2^-44 apart above 393: 360 plus the skew goes to the nearest of the coarser ones.
  const double apart = std::ldexp(1.0, -44);
  const Page everything(-1e4, -1e4, 1e4, 1e4);
  CoordinateSystem system = OneToOne();
  system.SetRotationMode(ROTATIONMODE_SKEW);
  const auto numChords = [&](double skew, double to) {
    system.SetSkew(skew);
    return ChordsOf(Curve(kCentre, 100, 0, to), system, everything).size();
  };
  const std::size_t full = static_cast<std::size_t>(std::ceil(2 * std::acos(-1.0) / StepOf(100)));

  EXPECT_EQ(numChords(33, 360), full);                 // the sum is exact
  EXPECT_EQ(numChords(33 + 0.25 * apart, 360), full);  // rounded down: past north almost to where it began
  EXPECT_LE(numChords(33 + 0.75 * apart, 360), 1u);    // rounded up: from there to the next double
  EXPECT_EQ(numChords(33, 0), full);                   // equal angles are a full circle whatever the skew
  EXPECT_EQ(numChords(33 + 0.25 * apart, 0), full);
  EXPECT_EQ(numChords(33 + 0.75 * apart, 0), full);
}

TEST(CurveDraw, AnArcSoLargeThatItsStepIsNothingIsOneChord) {
  // Through the middle of the page, from a centre far south.
  const std::vector<Chord> chords = ChordsOf(Curve(Point(400, 300 - 1e17, 0), 1e17, 0, 360));
  ASSERT_EQ(chords.size(), 1u);
  EXPECT_NEAR(static_cast<double>(chords[0].y1), 300, 64);
  EXPECT_EQ(chords[0].y1, chords[0].y2);
  EXPECT_LT(chords[0].x1, chords[0].x2);
}

TEST(CurveDraw, AnArcAtANegativeScaleIsOneChord) {
  CoordinateSystem mirrored = OneToOne();
  mirrored.SetPixelWindow(Page(800, 600, 0, 0));
  const std::vector<Chord> chords = ChordsOf(Curve(kCentre, 100, 0, 90), mirrored);
  ASSERT_EQ(chords.size(), 1u);
  // From (400.5, 399.5) to (500.5, 299.5), mirrored at x = 400.
  ExpectPixel(chords[0].x1, chords[0].y1, 399, 200);
  ExpectPixel(chords[0].x2, chords[0].y2, 299, 300);
}

// Counts chords without keeping them.
class ChordCounter : public RecordingSurface {
 public:
  CPoint MoveTo(int, int) override {
    ++count;
    calls.clear();
    return {};
  }
  int count = 0;
};

TEST(CurveDraw, APieceOfMoreThanAMillionChordsIsOneChord) {
  // An arc wholly seen with a radius of 1e11 pixels: a step of 4.5e-6, 1.3 million of them in 340 degrees.
  CoordinateSystem system;
  system.SetPixelWindow(Page(-1e12, 1e12, 1e12, -1e12));
  system.SetWorldWindow(Page(-1, -1, 1, 1));
  ChordCounter surface;
  Curve(Point(), 0.1, 10, 350).DrawCurve(&surface, system, Page(-1, -1, 1, 1));
  EXPECT_EQ(surface.count, 1);
  // Half a degree of it is within the limit, and each chord is drawn.
  surface.count = 0;
  Curve(Point(), 0.1, 0, 0.5).DrawCurve(&surface, system, Page(-1, -1, 1, 1));
  EXPECT_NEAR(surface.count, 0.5 / 57.29577951308232 / StepOf(1e11), 2);
}

TEST(CurveDraw, OnNoSurfaceNothingIsDrawn) {
  const Curve curve(kCentre, 100, 0, 90);
  curve.DrawCurve(nullptr, OneToOne(), kPage);
  EXPECT_EQ(curve.radius, 100);
}

// --- Against the second transcription ------------------------------------------------------------------------------------

TEST(CurveDrawLong, RandomArcsAreDrawnAsTheRulesSay) {
  EdgeValues values(95);
  Tally tally({"drawn", "not seen", "turned", "not turned", "clockwise", "counter-clockwise"});
  for (int round = 0; round < kHeavyRounds; ++round) {
    const TwoSystems both = AnySystem(values);
    RecordingSurface surface;
    SecondDrawing second(both.second);
    AnySurface(values, surface, second);
    const double radius = values.Index(10) == 0 ? values.Wild() : values.Between(-200, 200);
    const Curve curve(AnyPlace(values, both.ours), radius, values.Bearing(), values.Bearing());
    const Page page = values.Flag() ? both.ours.worldWindow : Page(-1e5, -1e5, 1e5, 1e5);
    curve.DrawCurve(&surface, both.ours, page);
    second.DrawArc(curve.centre.x, curve.centre.y, curve.radius, curve.startAngle, curve.endAngle, page);
    ASSERT_EQ(surface.Lines(), second.calls) << round;
    tally.Either(surface.calls.empty(), "not seen", "drawn");
    tally.Either(both.second.mode == 3, "turned", "not turned");
    tally.Either(radius >= 0, "clockwise", "counter-clockwise");
  }
}

TEST(CurveDrawLong, HostileNumbersEnd) {
  EdgeValues values(96);
  ChordCounter surface;
  for (int round = 0; round < 500; ++round) {
    CoordinateSystem system = values.Flag() ? WildSystem(values) : AnySystem(values).ours;
    if (values.Flag()) system.scale.x = values.Wild();
    Curve curve(Point(values.Wild(), values.Wild(), 0), values.Wild(), values.Wild(), values.Wild());
    if (values.Flag()) curve.centre = system.worldCentre;
    surface.count = 0;
    curve.DrawCurve(&surface, system, Page(values.Wild(), values.Wild(), values.Wild(), values.Wild()));
    ASSERT_LE(surface.count, 5000001);
  }
}

}  // namespace
