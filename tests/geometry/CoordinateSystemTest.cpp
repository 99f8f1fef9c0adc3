#include "zelbase/geometry/CoordinateSystem.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <vector>

#include "tests/geometry/EdgeValues.h"
#include "tests/geometry/SecondCoordinateSystem.h"
#include "zelbase/geometry/detail/PixelRow.h"

namespace {

bool SamePage(const Page& a, const Page& b) {
  return Same(a.left, b.left) && Same(a.bottom, b.bottom) && Same(a.right, b.right) && Same(a.top, b.top);
}

// The same state, field by field.
bool SameState(const CoordinateSystem& a, const SecondSystem& b) {
  return Same(a.scale.x, b.scale[0]) && Same(a.scale.y, b.scale[1]) &&
         SamePage(a.worldWindow, Page(b.world[0], b.world[1], b.world[2], b.world[3])) &&
         SamePage(a.pixelWindow, Page(b.pixel[0], b.pixel[1], b.pixel[2], b.pixel[3])) && Same(a.worldCentre.x, b.worldCentre[0]) &&
         Same(a.worldCentre.y, b.worldCentre[1]) && Same(a.pixelCentre.x, b.pixelCentre[0]) && Same(a.pixelCentre.y, b.pixelCentre[1]) &&
         Same(a.skew, b.skew) && a.rotationMode == b.mode && Same(a.sinSkew, b.s) && Same(a.cosSkew, b.c);
}

// 800 by 600 pixels on as many metres: one pixel to a metre, y down.
CoordinateSystem OneToOne() {
  CoordinateSystem system;
  system.SetPixelWindow(CRect(0, 0, 800, 600));
  system.SetWorldWindow(Page(0, 0, 800, 600));
  return system;
}

CoordinateSystem Turned(double skew) {
  CoordinateSystem system;
  system.SetRotationMode(ROTATIONMODE_SKEW);
  system.SetSkew(skew);
  return system;
}

// --- The value -----------------------------------------------------------------------------------------------------------

TEST(CoordinateSystem, BeginsWithTheUnitSquareOnOnePixel) {
  const CoordinateSystem system;
  EXPECT_EQ(system.scale, Point(1, -1, 0));
  EXPECT_EQ(system.worldWindow, Page(0, 0, 1, 1));
  EXPECT_EQ(system.pixelWindow, Page(0, 1, 1, 0));
  EXPECT_EQ(system.GetPixelWindow(), Page(0, 1, 1, 0));
  EXPECT_EQ(system.PixelWindow(), CRect(0, 0, 1, 1));
  EXPECT_EQ(system.worldCentre, Point(0.5, 0.5, 0));
  EXPECT_EQ(system.pixelCentre, Point(0.5, 0.5, 0));
  EXPECT_EQ(system.GetSkew(), 0);
  EXPECT_EQ(system.GetRotationMode(), 0);
  EXPECT_EQ(system.sinSkew, 0);
  EXPECT_EQ(system.cosSkew, 1);
  EXPECT_TRUE(system.IsScaleValid());
}

TEST(CoordinateSystem, AScaleIsValidFromTenthOfABillionthToTenBillionEndsIncluded) {
  CoordinateSystem system;
  const std::pair<double, bool> rows[] = {{1e-10, true},  {-1e-10, true},     {1e10, true},       {-1e10, true},
                                          {9e-11, false}, {1.1e10, false},    {0.0, false},       {kNan, false},
                                          {1.0, true},    {kInfinity, false}, {-kInfinity, false}};
  for (const auto& [scale, valid] : rows) {
    system.scale = Point(scale, -1, 0);
    EXPECT_EQ(system.IsScaleValid(), valid) << scale;
    system.scale = Point(1, scale, 0);
    EXPECT_EQ(system.IsScaleValid(), valid) << scale;
  }
}

TEST(CoordinateSystem, AHugeWindowOnATinyWorldHasAScaleThatIsNotValid) {
  CoordinateSystem system;
  EXPECT_TRUE(system.SetWorldWindow(Page(0, 0, 1e-7, 1e-7)));
  EXPECT_TRUE(system.IsScaleValid());
  EXPECT_TRUE(system.SetPixelWindow(CRect(0, 0, 100000, 100000)));
  EXPECT_FALSE(system.IsScaleValid());
}

TEST(CoordinateSystem, ComparesWindowsAndModeAlone) {
  CoordinateSystem a = OneToOne();
  CoordinateSystem b = a;
  EXPECT_TRUE(a == b);
  b.SetWorldWindow(Page(0, 0, 800, 601));
  EXPECT_TRUE(a != b);
  b = a;
  b.SetPixelWindow(CRect(0, 0, 801, 600));
  EXPECT_TRUE(a != b);
  b = a;
  b.SetRotationMode(ROTATIONMODE_1);
  EXPECT_TRUE(a != b);
  b.SetRotationMode(ROTATIONMODE_0);
  EXPECT_TRUE(a == b);
}

TEST(CoordinateSystem, ComparisonIgnoresSkewAndCentresOutsideTheTurnedMode) {
  CoordinateSystem a = OneToOne();
  CoordinateSystem b = a;
  b.SetSkew(30);
  b.worldCentre.x += 1;
  b.pixelCentre.y += 1;
  EXPECT_TRUE(a == b);
  a.SetRotationMode(ROTATIONMODE_2);
  b.SetRotationMode(ROTATIONMODE_2);
  EXPECT_TRUE(a == b);
}

TEST(CoordinateSystem, ComparisonMindsSkewAndCentresInTheTurnedMode) {
  CoordinateSystem a = Turned(30);
  CoordinateSystem b = a;
  EXPECT_TRUE(a == b);
  b.SetSkew(390);  // the same direction, another number
  EXPECT_TRUE(a != b);
  for (Point CoordinateSystem::*const centre : {&CoordinateSystem::worldCentre, &CoordinateSystem::pixelCentre}) {
    b = a;
    (b.*centre).y += 1e-12;
    EXPECT_TRUE(a != b);
  }
  for (double CoordinateSystem::*const value : {&CoordinateSystem::sinSkew, &CoordinateSystem::cosSkew}) {
    b = a;
    b.*value += 1e-15;
    EXPECT_TRUE(a != b);
  }
}

TEST(CoordinateSystem, ComparisonIgnoresTheScaleAlways) {
  for (const ROTATIONMODE mode : {ROTATIONMODE_0, ROTATIONMODE_SKEW}) {
    CoordinateSystem a = OneToOne();
    a.SetRotationMode(mode);
    CoordinateSystem b = a;
    b.scale = Point(7, 8, 9);
    EXPECT_TRUE(a == b);
  }
}

TEST(CoordinateSystem, SkewAndModeAreStoredAndTheScaleStaysUntilAWindowIsSet) {
  CoordinateSystem system = OneToOne();
  system.SetSkew(90);
  system.SetRotationMode(ROTATIONMODE_SKEW);
  EXPECT_EQ(system.GetSkew(), 90);
  EXPECT_EQ(system.GetRotationMode(), 3);
  EXPECT_EQ(system.scale, Point(1, -1, 0));
  EXPECT_TRUE(system.SetWorldWindow(Page(0, 0, 800, 600)));
  // Turned by 90 degrees the window is 600 wide and -800 high.
  EXPECT_NEAR(system.scale.x, 800.0 / 600.0, 1e-12);
  EXPECT_NEAR(system.scale.y, -600.0 / -800.0, 1e-12);
}

TEST(CoordinateSystem, AnyModeIsStored) {
  CoordinateSystem system;
  for (const int mode : {0, 1, 2, 3, 4, -1, INT_MAX, INT_MIN}) {
    system.SetRotationMode(static_cast<ROTATIONMODE>(mode));
    EXPECT_EQ(system.GetRotationMode(), mode);
  }
}

// --- Turning ---------------------------------------------------------------------------------------------------------------

TEST(CoordinateSystem, TurnsOnlyInModeThree) {
  for (const int mode : {0, 1, 2, 4, -1, 3}) {
    CoordinateSystem system;
    system.SetSkew(90);
    system.SetRotationMode(static_cast<ROTATIONMODE>(mode));
    double x = 3;
    double y = 4;
    system.RotateWtoP(x, y);
    EXPECT_NEAR(x, mode == 3 ? 4 : 3, 1e-12) << mode;
    EXPECT_NEAR(y, mode == 3 ? -3 : 4, 1e-12) << mode;
    system.RotatePtoW(x, y);
    EXPECT_NEAR(x, 3, 1e-12) << mode;
    EXPECT_NEAR(y, 4, 1e-12) << mode;
  }
}

TEST(CoordinateSystem, ASkewOfNinetyPutsNorthToTheRight) {
  CoordinateSystem system = Turned(90);
  system.SetPixelWindow(CRect(0, 0, 101, 101));
  system.SetWorldWindow(Page(-50, 50, 50, -50));  // from corner to corner as it stands on the screen
  EXPECT_NEAR(system.scale.x, -1.01, 1e-9);
  system.scale = Point(1, -1, 0);
  EXPECT_EQ(system.WorldToPixel(Point(0, 10, 0)), CPoint(60, 50));
  EXPECT_EQ(system.WorldToPixel(Point(10, 0, 0)), CPoint(50, 60));
}

// --- World to pixel ------------------------------------------------------------------------------------------------------

TEST(CoordinateSystem, PointsAreRoundedDownPagesToTheNearest) {
  const CoordinateSystem system = OneToOne();
  double px = 0;
  double py = 0;
  system.WorldToPixel(10.75, 10.25, &px, &py);
  EXPECT_EQ(px, 10);
  EXPECT_EQ(py, 589);  // 589.75
  Page page;
  system.WorldToPixel(Page(10.75, 10.25, 20.25, 20.75), &page);
  EXPECT_EQ(page, Page(11, 590, 20, 579));  // 10.75, 589.75, 20.25, 579.25
  system.WorldToPixel(Page(10.5, 10.5, 20.5, 20.5), &page);
  EXPECT_EQ(page, Page(11, 590, 21, 580));  // a half goes up: 589.5, 579.5
}

TEST(CoordinateSystem, APointLeftOfTheWindowIsRoundedDownNotTowardsZero) {
  const CoordinateSystem system = OneToOne();
  EXPECT_EQ(system.WorldToPixel(-0.25, 600.25), CPoint(-1, -1));
  EXPECT_EQ(system.WorldToPixel(Page(-0.25, 600.25, -0.75, 600.75)), CRect(0, -1, -1, 0));
}

TEST(CoordinateSystem, AllFormsOfAPointAgree) {
  const CoordinateSystem system = OneToOne();
  const Point world(123.4, 234.5, 77);
  Point pixel(0, 0, 5);
  system.WorldToPixel(world, &pixel);
  EXPECT_EQ(pixel, Point(123, 365, 5));  // z stays
  EXPECT_EQ(system.WorldToPixel(world), CPoint(123, 365));
  EXPECT_EQ(system.WorldToPixel(123.4, 234.5), CPoint(123, 365));
  Point both = world;
  system.WorldToPixel(both, &both);
  EXPECT_EQ(both, Point(123, 365, 77));
}

TEST(CoordinateSystem, APageAsARectangleIsLeftTopRightBottom) {
  EXPECT_EQ(OneToOne().WorldToPixel(Page(10, 20, 30, 50)), CRect(10, 550, 30, 580));
}

TEST(CoordinateSystem, PixelsBeyondIntAreTheNearestIntAndNoNumberIsZero) {
  const CoordinateSystem system = OneToOne();
  EXPECT_EQ(system.WorldToPixel(1e300, 1e300), CPoint(INT_MAX, INT_MIN));
  EXPECT_EQ(system.WorldToPixel(-kInfinity, -kInfinity), CPoint(INT_MIN, INT_MAX));
  EXPECT_EQ(system.WorldToPixel(kNan, 1), CPoint(0, 599));
  EXPECT_EQ(system.WorldToPixel(Page(kNan, -1e300, 1e300, kNan)), CRect(0, 0, INT_MAX, INT_MAX));
}

TEST(CoordinateSystem, ThePixelWindowAsARectangleIsTruncated) {
  CoordinateSystem system;
  system.SetPixelWindow(Page(-1.75, 99.75, 1e300, kNan));
  EXPECT_EQ(system.PixelWindow(), CRect(-1, 0, INT_MAX, 99));
}

TEST(CoordinateSystem, NullOutputsAreNotWritten) {
  const CoordinateSystem system = OneToOne();
  double value = 7;
  system.WorldToPixel(10.0, 10.0, nullptr, &value);
  EXPECT_EQ(value, 590);
  system.WorldToPixel(10.0, 10.0, &value, nullptr);
  EXPECT_EQ(value, 10);
  system.PixelToWorld(10.0, 10.0, nullptr, &value);
  EXPECT_EQ(value, 589.5);
  system.PixelToWorld(10.0, 10.0, &value, nullptr);
  EXPECT_EQ(value, 10.5);
  system.WorldToPixel(Point(), static_cast<Point*>(nullptr));
  system.WorldToPixel(Page(), static_cast<Page*>(nullptr));
  system.PixelToWorld(Point(), static_cast<Point*>(nullptr));
  system.PixelToWorld(Page(), static_cast<Page*>(nullptr));
  const std::vector<Point> points(3);
  system.WorldToPixel(points, nullptr);
  EXPECT_EQ(value, 10.5);
}

// --- Pixel to world ------------------------------------------------------------------------------------------------------

TEST(CoordinateSystem, TheHalfPixelIsAddedToPointsNeverToPages) {
  const CoordinateSystem system = OneToOne();
  double x = 0;
  double y = 0;
  system.PixelToWorld(10, 20, &x, &y);
  EXPECT_EQ(x, 10.5);
  EXPECT_EQ(y, 579.5);
  EXPECT_EQ(system.PixelToWorld(CPoint(10, 20)), Point(10.5, 579.5, 0));
  Page page;
  system.PixelToWorld(Page(10, 50, 30, 20), &page);
  EXPECT_EQ(page, Page(10, 550, 30, 580));
  EXPECT_EQ(system.PixelToWorld(CRect(10, 20, 30, 50)), Page(10, 550, 30, 580));
}

TEST(CoordinateSystem, TheHeightOfAWrittenPointStays) {
  const CoordinateSystem system = OneToOne();
  Point world(1, 2, 33);
  system.PixelToWorld(Point(10, 20, 44), &world);
  EXPECT_EQ(world, Point(10.5, 579.5, 33));
}

TEST(CoordinateSystem, ThereAndBackIsOffByLessThanAPixel) {
  EdgeValues values(81);
  for (int round = 0; round < kRandomRounds; ++round) {
    const CoordinateSystem system = AnySystem(values).ours;
    if (!system.IsScaleValid()) continue;
    Point offset(values.Between(-300, 300), values.Between(-300, 300), 0);  // in pixels
    offset = Point(offset.x / system.scale.x, offset.y / system.scale.y, 0);
    const Point world = system.worldCentre + offset;
    Point back;
    system.WorldToPixel(world, &back);
    system.PixelToWorld(back, &back);
    double dx = back.x - world.x;
    double dy = back.y - world.y;
    system.RotateWtoP(dx, dy);
    EXPECT_LE(std::fabs(dx * system.scale.x), 0.5 + 1e-6);
    EXPECT_LE(std::fabs(dy * system.scale.y), 0.5 + 1e-6);
  }
}

TEST(CoordinateSystem, ThereAndBackIsNotThePointItself) {
  // On the edge of a pixel: half a pixel off; in the last corner of one: nearly so.
  EXPECT_EQ(OneToOne().PixelToWorld(OneToOne().WorldToPixel(Point(10, 20, 0))), Point(10.5, 19.5, 0));
}

// --- Windows -----------------------------------------------------------------------------------------------------------------

TEST(CoordinateSystem, AWindowWithoutWidthOrHeightIsRefusedAndNothingChanges) {
  CoordinateSystem system = OneToOne();
  EXPECT_FALSE(system.SetWorldWindow(Page(5, 0, 5, 10)));
  EXPECT_FALSE(system.SetWorldWindow(Page(0, 5, 10, 5)));
  EXPECT_FALSE(system.SetPixelWindow(Page(5, 0, 5, 10)));
  EXPECT_FALSE(system.SetPixelWindow(Page(0, 5, 10, 5)));
  EXPECT_FALSE(system.SetPixelWindow(CRect(3, 0, 3, 10)));
  EXPECT_FALSE(system.SetPixelWindow(CRect(0, 4, 10, 4)));
  EXPECT_TRUE(system == OneToOne());
  EXPECT_EQ(system.scale, Point(1, -1, 0));
  EXPECT_EQ(system.worldCentre, Point(400, 300, 0));
  EXPECT_EQ(system.pixelCentre, Point(400, 300, 0));
}

// Empty is a width or height of exactly 0, not a window that is not valid.
TEST(CoordinateSystem, TheInvalidPageIsTaken) {
  CoordinateSystem system = OneToOne();
  EXPECT_TRUE(system.SetWorldWindow(Page()));
  EXPECT_EQ(system.worldCentre, Point(0, 0, 0));
  EXPECT_EQ(system.scale, Point(-400, 300, 0));
}

TEST(CoordinateSystem, ARectangleBecomesThePixelWindowWithItsBottomBelow) {
  CoordinateSystem system;
  EXPECT_TRUE(system.SetPixelWindow(CRect(10, 20, 110, 220)));
  EXPECT_EQ(system.GetPixelWindow(), Page(10, 220, 110, 20));
  EXPECT_EQ(system.pixelCentre, Point(60, 120, 0));
  EXPECT_EQ(system.scale, Point(100, -200, 0));
  EXPECT_EQ(system.PixelWindow(), CRect(10, 20, 110, 220));
}

TEST(CoordinateSystem, EachAxisHasItsOwnScale) {
  CoordinateSystem system;
  system.SetPixelWindow(CRect(0, 0, 100, 100));
  system.SetWorldWindow(Page(0, 0, 50, 1000));
  EXPECT_EQ(system.scale, Point(2, -0.1, 0));
  system.SetPixelWindow(Page(0, 0, 100, 100));  // y upwards
  EXPECT_EQ(system.scale, Point(2, 0.1, 0));
}

// --- The extent of a turned window ----------------------------------------------------------------------------------------

TEST(CoordinateSystem, TheExtentIsThePageItselfUnlessTurned) {
  CoordinateSystem system;
  system.SetSkew(30);
  for (const int mode : {0, 1, 2, 4}) {
    system.SetRotationMode(static_cast<ROTATIONMODE>(mode));
    EXPECT_EQ(system.GetExtend(Page(1, 2, 3, -4)), Page(1, 2, 3, -4));
  }
}

TEST(CoordinateSystem, TheExtentOfATurnedWindowHoldsItsFourCorners) {
  // A square on the screen with the diagonal from (0, 0) to (10, 10) at 45 degrees has no height as it stands.
  const Page flat = Turned(45).GetExtend(Page(0, 0, 10, 10));
  EXPECT_NEAR(flat.left, 0, 1e-9);
  EXPECT_NEAR(flat.top, 10, 1e-9);
  // From (0, 0) to (0, 10) at 45 degrees: a square on its corner, with corners at (-5, 5) and (5, 5).
  const Page square = Turned(45).GetExtend(Page(0, 0, 0, 10));
  EXPECT_NEAR(square.left, -5, 1e-9);
  EXPECT_NEAR(square.right, 5, 1e-9);
  EXPECT_NEAR(square.bottom, 0, 1e-9);
  EXPECT_NEAR(square.top, 10, 1e-9);
}

// --- An area in the middle ---------------------------------------------------------------------------------------------------

TEST(CoordinateSystem, AnAreaFillsTheWindowInItsLongerDirection) {
  CoordinateSystem system;
  system.SetPixelWindow(CRect(0, 0, 200, 100));
  // 10 by 10 metres: 100 pixels are the less; 10 pixels to a metre.
  EXPECT_TRUE(system.CenterWorldAreaOnPixelWindow(Page(0, 0, 10, 10), 1));
  EXPECT_EQ(system.scale, Point(10, -10, 0));
  EXPECT_EQ(system.worldWindow, Page(-5, 0, 15, 10));
  // 40 by 10 metres: 5 pixels to a metre; twice as large.
  EXPECT_TRUE(system.CenterWorldAreaOnPixelWindow(Page(0, 0, 40, 10), 2));
  EXPECT_EQ(system.scale, Point(10, -10, 0));
  EXPECT_EQ(system.worldWindow, Page(10, 0, 30, 10));
}

TEST(CoordinateSystem, AnAreaWithoutWidthOrHeightGoesByTheOther) {
  CoordinateSystem system;
  system.SetPixelWindow(CRect(0, 0, 200, 100));
  EXPECT_TRUE(system.CenterWorldAreaOnPixelWindow(Page(5, 0, 5, 50), 1));
  EXPECT_EQ(system.worldWindow, Page(-45, 0, 55, 50));
  EXPECT_TRUE(system.CenterWorldAreaOnPixelWindow(Page(0, 5, 100, 5), 1));
  EXPECT_EQ(system.worldWindow, Page(0, -20, 100, 30));
}

TEST(CoordinateSystem, AnAreaThatIsAPointShowsAsMuchAsBefore) {
  CoordinateSystem system;
  system.SetPixelWindow(CRect(0, 0, 200, 100));
  system.SetWorldWindow(Page(0, 0, 400, 200));
  EXPECT_TRUE(system.CenterWorldAreaOnPixelWindow(Page(1000, 2000, 1000, 2000), 1));
  EXPECT_EQ(system.worldWindow, Page(800, 1900, 1200, 2100));
}

TEST(CoordinateSystem, ATurnedViewsWindowIsNotTurnedBack) {
  CoordinateSystem system = Turned(90);
  system.SetPixelWindow(CRect(0, 0, 200, 100));
  EXPECT_TRUE(system.CenterWorldAreaOnPixelWindow(Page(0, 0, 10, 40), 1));
  // Turned, the area is 40 wide and -10 high: 5 and 10 pixels to a metre. -10 is less than 5, so that both become 10, the one in x
  // negative: half-sizes of -10 and -5 metres around (5, 20). That window is 10 wide and 20 high when turned.
  EXPECT_NEAR(system.worldWindow.left, 15, 1e-9);
  EXPECT_NEAR(system.worldWindow.bottom, 25, 1e-9);
  EXPECT_NEAR(system.worldWindow.right, -5, 1e-9);
  EXPECT_NEAR(system.worldWindow.top, 15, 1e-9);
  EXPECT_NEAR(system.scale.x, -20, 1e-9);
  EXPECT_NEAR(system.scale.y, -5, 1e-9);
}

TEST(CoordinateSystem, AFactorOfZeroLeavesAScaleThatIsNotValid) {
  CoordinateSystem system;
  system.SetPixelWindow(CRect(0, 0, 200, 100));
  EXPECT_TRUE(system.CenterWorldAreaOnPixelWindow(Page(0, 0, 10, 10), 0));
  EXPECT_FALSE(system.IsScaleValid());
  EXPECT_EQ(system.WorldToPixel(1, 1), CPoint(0, 0));
}

TEST(CoordinateSystem, ShowsWhatAnotherShows) {
  CoordinateSystem other;
  other.SetPixelWindow(CRect(0, 0, 100, 100));
  other.SetWorldWindow(Page(0, 0, 50, 50));  // 2 pixels to a metre around (25, 25)
  CoordinateSystem system;
  system.SetPixelWindow(CRect(0, 0, 400, 200));
  EXPECT_TRUE(system.SetWorldWindowFromCoordinateSystem(other, 1));
  EXPECT_EQ(system.scale, Point(2, -2, 0));
  EXPECT_EQ(system.worldWindow, Page(-75, -25, 125, 75));
  EXPECT_TRUE(system.SetWorldWindowFromCoordinateSystem(other, 0.5));
  EXPECT_EQ(system.worldWindow, Page(-175, -75, 225, 125));
  // Another's mode and skew are not taken.
  other.SetRotationMode(ROTATIONMODE_SKEW);
  other.SetSkew(70);
  EXPECT_TRUE(system.SetWorldWindowFromCoordinateSystem(other, 1));
  EXPECT_EQ(system.worldWindow, Page(-75, -25, 125, 75));
  EXPECT_EQ(system.GetRotationMode(), 0);
  EXPECT_EQ(system.GetSkew(), 0);
}

TEST(CoordinateSystem, ShowsTheSurroundingsOfAPointAtAnothersScale) {
  CoordinateSystem other;
  other.SetPixelWindow(CRect(0, 0, 100, 100));
  other.SetWorldWindow(Page(0, 0, 50, 50));
  CoordinateSystem system;
  system.SetPixelWindow(CRect(0, 0, 400, 200));
  EXPECT_TRUE(system.SetWorldWindowFromPoint(Point(1000, 500, 9), other));
  EXPECT_EQ(system.worldWindow, Page(900, 450, 1100, 550));
  EXPECT_EQ(system.scale, Point(2, -2, 0));
}

TEST(CoordinateSystem, ARefusedPointHasChangedTheScaleAlone) {
  CoordinateSystem other;
  other.scale = Point(1e300, 1e300, 0);
  CoordinateSystem system;
  EXPECT_FALSE(system.SetWorldWindowFromPoint(Point(1000, 500, 0), other));
  EXPECT_TRUE(system == CoordinateSystem());
  EXPECT_EQ(system.scale, other.scale);
}

TEST(CoordinateSystem, MayTakeItselfForTheOther) {
  CoordinateSystem system = OneToOne();
  EXPECT_TRUE(system.SetWorldWindowFromCoordinateSystem(system, 2));
  EXPECT_EQ(system.worldWindow, Page(200, 150, 600, 450));
  EXPECT_TRUE(system.SetWorldWindowFromPoint(Point(0, 0, 0), system));
  EXPECT_EQ(system.worldWindow, Page(-200, -150, 200, 150));
}

// --- Against the second transcription ------------------------------------------------------------------------------------

// Ordinary windows half of the time, any numbers otherwise.
Page AnyPage(EdgeValues& values) { return Page(values.Coordinate(), values.Coordinate(), values.Coordinate(), values.Coordinate()); }

void Change(TwoSystems& both, EdgeValues& values) {
  switch (values.Index(7)) {
    case 0: return both.SetMode(values.Index(5));
    case 1: return both.SetSkew(values.Bearing());
    case 2: return both.SetWorld(AnyPage(values));
    case 3: return both.SetPixel(AnyPage(values));
    case 4: {
      const Page area = AnyPage(values);
      const double factor = values.Coordinate();
      EXPECT_EQ(both.ours.CenterWorldAreaOnPixelWindow(area, factor), both.second.Center(area, factor));
      return;
    }
    case 5: {
      const TwoSystems other = AnySystem(values);
      const double factor = values.Coordinate();
      EXPECT_EQ(both.ours.SetWorldWindowFromCoordinateSystem(other.ours, factor), both.second.FromOther(other.second, factor));
      return;
    }
    default: {
      const TwoSystems other = AnySystem(values);
      const Point point = values.AnyPoint();
      EXPECT_EQ(both.ours.SetWorldWindowFromPoint(point, other.ours), both.second.FromPoint(point.x, point.y, other.second));
    }
  }
}

void ExpectSameAnswers(const TwoSystems& both, EdgeValues& values) {
  const Point point = values.AnyPoint();
  Point pixel = point;
  both.ours.WorldToPixel(point, &pixel);
  const SecondSystem::Pair expected = both.second.PixelOfPoint(point.x, point.y);
  EXPECT_TRUE(Same(pixel, Point(expected.x, expected.y, point.z)));
  Point world = point;
  both.ours.PixelToWorld(point, &world);
  const SecondSystem::Pair back = both.second.WorldOfPoint(point.x, point.y);
  EXPECT_TRUE(Same(world, Point(back.x, back.y, point.z)));
  const Page page = AnyPage(values);
  Page answer;
  both.ours.WorldToPixel(page, &answer);
  EXPECT_TRUE(SamePage(answer, both.second.PixelOfPage(page)));
  both.ours.PixelToWorld(page, &answer);
  EXPECT_TRUE(SamePage(answer, both.second.WorldOfPage(page)));
}

TEST(CoordinateSystem, RandomChangesGoAsTheRulesSay) {
  EdgeValues values(82);
  for (int round = 0; round < kHeavyRounds; ++round) {
    TwoSystems both = AnySystem(values);
    for (int change = 0; change < 8; ++change) {
      Change(both, values);
      ASSERT_TRUE(SameState(both.ours, both.second)) << round << ", " << change;
      ExpectSameAnswers(both, values);
    }
  }
}

TEST(CoordinateSystem, RandomWindowsHaveTheExtentThatTheRulesSay) {
  EdgeValues values(83);
  for (int round = 0; round < kRandomRounds; ++round) {
    const TwoSystems both = AnySystem(values);
    const Page page(values.Grid(), values.Near(values.Grid()), values.Between(-900, 900), values.Grid());
    ASSERT_EQ(both.ours.GetExtend(page), both.second.Extend(page)) << round;
  }
}

// --- Rows of points ------------------------------------------------------------------------------------------------------------

Point AnyPlaceNear(EdgeValues& values, const CoordinateSystem& system) {
  return system.worldCentre + Point(values.Between(-1000, 1000), values.Near(values.Grid()), values.Wild());
}

std::vector<CPoint> OneByOne(const CoordinateSystem& system, const std::vector<Point>& points) {
  std::vector<CPoint> pixels;
  for (const Point& point : points) pixels.push_back(system.WorldToPixel(point));
  return pixels;
}

TEST(CoordinateSystem, ARowOfPointsIsWhatEachPointIs) {
  EdgeValues values(84);
  for (int round = 0; round < 500; ++round) {
    TwoSystems both = AnySystem(values);
    if (round % 5 == 4) Change(both, values);
    std::vector<Point> points(static_cast<std::size_t>(values.Index(70)));
    for (Point& point : points) point = values.Flag() ? values.AnyPoint() : Point(values.Bits(), values.Bits(), kNan);
    const CPoint untouched(123, 456);
    std::vector<CPoint> pixels(points.size() + 1, untouched);
    both.ours.WorldToPixel(points, pixels.data());
    EXPECT_EQ(pixels.back(), untouched);
    pixels.pop_back();
    ASSERT_EQ(pixels, OneByOne(both.ours, points)) << round;
  }
}

using zelbase::detail::PixelRow;

// Those that this processor has.
std::vector<PixelRow::Way> Ways() {
  std::vector<PixelRow::Way> ways;
  for (const PixelRow::Way way : {PixelRow::Way::kSingle, PixelRow::Way::kTwo, PixelRow::Way::kFour}) {
    if (way <= PixelRow::BestWay()) ways.push_back(way);
  }
  return ways;
}

TEST(CoordinateSystem, EveryWayThroughARowGivesTheSamePixels) {
  EdgeValues values(85);
  for (int round = 0; round < 2000; ++round) {
    const CoordinateSystem system = AnySystem(values).ours;
    std::vector<Point> points(static_cast<std::size_t>(values.Index(30)));
    // Mostly what is ordinary: one that is not has all of its neighbours done singly.
    for (Point& point : points) point = values.Index(20) == 0 ? values.AnyPoint() : AnyPlaceNear(values, system);
    const std::vector<CPoint> expected = OneByOne(system, points);
    for (const PixelRow::Way way : Ways()) {
      std::vector<CPoint> pixels(points.size());
      PixelRow(system).PixelsOf(points, pixels.data(), way);
      ASSERT_EQ(pixels, expected) << round << ", " << static_cast<int>(way);
    }
  }
}

TEST(CoordinateSystem, ARowMeetsTheEndsOfIntAndWhatIsNoNumber) {
  const CoordinateSystem system;  // y is -y + 1
  std::vector<Point> points;
  for (const double x : {2147483646.5, 2147483647.0, 2147483648.0, -2147483648.0, -2147483649.5, kNan, kInfinity, -kInfinity, -0.0}) {
    points.push_back(Point(x, 1 - x, 0));
  }
  const int expected[] = {2147483646, INT_MAX, INT_MAX, INT_MIN, INT_MIN, 0, INT_MAX, INT_MIN, 0};
  for (const PixelRow::Way way : Ways()) {
    std::vector<CPoint> pixels(points.size());
    PixelRow(system).PixelsOf(points, pixels.data(), way);
    for (std::size_t i = 0; i < points.size(); ++i) EXPECT_EQ(pixels[i], CPoint(expected[i], expected[i])) << i;
  }
}

TEST(CoordinateSystem, AnEmptyRowWritesNothing) {
  CPoint pixel(1, 2);
  OneToOne().WorldToPixel(std::span<const Point>(), &pixel);
  EXPECT_EQ(pixel, CPoint(1, 2));
}

}  // namespace
