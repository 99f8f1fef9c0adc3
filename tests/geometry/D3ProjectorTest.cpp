#include "zelbase/geometry/D3Projector.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/geometry/EdgeValues.h"
#include "tests/geometry/SecondDrawing.h"
#include "zelbase/platform/RecordingSurface.h"

namespace {

static_assert(std::has_virtual_destructor_v<D3Projector>);

using Lines = std::vector<std::string>;

constexpr double kDegree = 0.017453292519943;

// 800 by 600 pixels on as many metres around the origin; the eye is 1000 metres above it.
D3Projector Above() {
  D3Projector projector;
  projector.SetPixelWindow(CRect(0, 0, 800, 600));
  projector.GetCoordinateSystem().SetWorldWindow(Page(-400, -300, 400, 300));
  projector.SetViewDistance(1000);
  return projector;
}

Lines Drawn(const D3Projector& projector, const Point& p1, const Point& p2, bool noBearing = false) {
  RecordingSurface surface;
  surface.SetPen(std::nullopt);
  projector.DrawLine(&surface, p1, p2, noBearing);
  return surface.Painted();
}

TEST(D3Projector, BeginsAtADistanceOfOneLookingDown) {
  const D3Projector projector;
  EXPECT_EQ(projector.GetViewWindow(), Page(0, 0, 0, 0));
  EXPECT_EQ(projector.GetCoordinateSystem(), CoordinateSystem());
  EXPECT_EQ(projector.GetViewDistance(), 1);
  EXPECT_EQ(projector.GetRefXYposition(), Point(0, 0, 0));
  EXPECT_EQ(projector.GetObserveAngle(), 0);
  EXPECT_EQ(projector.GetBearing(), 0);
  EXPECT_TRUE(projector.IsPerspectiveOn());
}

TEST(D3Projector, KeepsWhatIsSet) {
  D3Projector projector;
  projector.SetViewWindow(Page(1, 2, 3, 4));
  projector.SetViewDistance(50);
  projector.SetRefXYposition(10, 20);
  projector.SetObserveAngle(30);
  projector.SetBearing(40);
  projector.SetPerspective(false);
  D3Projector copy;
  copy = projector;
  for (const D3Projector* const each : {&projector, &copy}) {
    EXPECT_EQ(each->GetViewWindow(), Page(1, 2, 3, 4));
    EXPECT_EQ(each->GetCoordinateSystem(), CoordinateSystem());  // the view window is only stored
    EXPECT_EQ(each->GetViewDistance(), 50);
    EXPECT_EQ(each->GetRefXYposition(), Point(10, 20, 0));
    EXPECT_EQ(each->GetObserveAngle(), 30);
    EXPECT_EQ(each->GetBearing(), 40);
    EXPECT_FALSE(each->IsPerspectiveOn());
  }
  copy.GetCoordinateSystem().SetWorldWindow(Page(0, 0, 5, 5));
  EXPECT_EQ(projector.GetCoordinateSystem(), CoordinateSystem());
}

TEST(D3Projector, APixelWindowIsRaisedToItsTopAndLeftAndThenForwarded) {
  D3Projector projector;
  EXPECT_TRUE(projector.SetPixelWindow(CRect(10, 20, 110, 220)));
  EXPECT_EQ(projector.GetCoordinateSystem().GetPixelWindow(), Page(10, 220, 110, 20));
  // Without width or height after that, it is refused.
  EXPECT_FALSE(projector.SetPixelWindow(CRect(10, 20, 5, 220)));
  EXPECT_FALSE(projector.SetPixelWindow(CRect(10, 20, 110, 15)));
  EXPECT_EQ(projector.GetCoordinateSystem().GetPixelWindow(), Page(10, 220, 110, 20));
}

TEST(D3Projector, RotateTurnsAroundZAndTiltsAroundX) {
  const D3Projector projector;
  Point out;
  projector.Rotate(Point(1, 2, 3), 0, 0, out);
  EXPECT_EQ(out, Point(1, 2, 3));
  projector.Rotate(Point(1, 2, 3), 0, 90, out);
  EXPECT_NEAR(out.x, 2, 1e-12);
  EXPECT_NEAR(out.y, -1, 1e-12);
  EXPECT_NEAR(out.z, 3, 1e-12);
  projector.Rotate(Point(1, 2, 3), 90, 0, out);
  EXPECT_NEAR(out.x, 1, 1e-12);
  EXPECT_NEAR(out.y, 3, 1e-12);
  EXPECT_NEAR(out.z, -2, 1e-12);
}

TEST(D3Projector, RotateKeepsLengthsAndWorksInPlace) {
  EdgeValues values(98);
  const D3Projector projector;
  for (int round = 0; round < kRandomRounds; ++round) {
    const Point point(values.Between(-9, 9), values.Between(-9, 9), values.Between(-9, 9));
    const double a = values.Between(-360, 360);
    const double b = values.Between(-360, 360);
    Point out;
    projector.Rotate(point, a, b, out);
    EXPECT_NEAR(out.Dist3D(Point()), point.Dist3D(Point()), 1e-12);
    Point same = point;
    projector.Rotate(same, a, b, same);
    EXPECT_EQ(same, out);
  }
}

TEST(D3Projector, APointIsProjectedFromTheEyeOntoThePlane) {
  D3Projector projector;
  projector.SetViewDistance(10);
  double x = 0;
  double y = 0;
  EXPECT_TRUE(projector.Conv3dTo2d(Point(3, 4, 0), x, y));
  EXPECT_EQ(x, 3);
  EXPECT_EQ(y, 4);
  EXPECT_TRUE(projector.Conv3dTo2d(Point(3, 4, 5), x, y));  // twice as near
  EXPECT_EQ(x, 6);
  EXPECT_EQ(y, 8);
  EXPECT_TRUE(projector.Conv3dTo2d(Point(3, 4, -10), x, y));  // twice as far
  EXPECT_EQ(x, 1.5);
  EXPECT_EQ(y, 2);
}

TEST(D3Projector, EachAxisMultipliesAndDividesInItsOwnOrder) {
  D3Projector projector;
  projector.SetViewDistance(3);
  double x = 0;
  double y = 0;
  EXPECT_TRUE(projector.Conv3dTo2d(Point(0.1, 0.1, -7), x, y));
  EXPECT_EQ(x, 0.030000000000000006);  // (0.1 * 3) / 10
  EXPECT_EQ(y, 0.03);                  // (3 / 10) * 0.1
}

TEST(D3Projector, APointAtTheEyeOrBehindItIsNotProjected) {
  D3Projector projector;
  projector.SetViewDistance(10);
  double x = 7;
  double y = 8;
  EXPECT_FALSE(projector.Conv3dTo2d(Point(3, 4, 10), x, y));
  EXPECT_FALSE(projector.Conv3dTo2d(Point(3, 4, 11), x, y));
  EXPECT_FALSE(projector.Conv3dTo2d(Point(3, 4, kInfinity), x, y));
  EXPECT_EQ(x, 7);
  EXPECT_EQ(y, 8);
}

TEST(D3Projector, ALineOnThePlaneIsDrawnAsItIs) {
  EXPECT_EQ(Drawn(Above(), Point(0, 0, 0), Point(100, 50, 0)), (Lines{"MoveTo 400 300", "LineTo 500 250"}));
}

TEST(D3Projector, ALineIsClippedToTheWorldWindow) {
  EXPECT_EQ(Drawn(Above(), Point(-1000, 0, 0), Point(1000, 0, 0)), (Lines{"MoveTo 0 300", "LineTo 800 300"}));
}

TEST(D3Projector, TheReferencePositionIsTheMiddle) {
  D3Projector projector = Above();
  projector.SetRefXYposition(5000, 7000);
  EXPECT_EQ(Drawn(projector, Point(5000, 7000, 0), Point(5100, 7050, 0)), (Lines{"MoveTo 400 300", "LineTo 500 250"}));
}

TEST(D3Projector, TheBearingTurnsTheSceneUnlessItIsNotWanted) {
  D3Projector projector = Above();
  projector.SetBearing(90);
  // East comes to point down; half a pixel away from an edge of one.
  EXPECT_EQ(Drawn(projector, Point(0.5, 0.5, 0), Point(100.5, 0.5, 0)), (Lines{"MoveTo 400 300", "LineTo 400 400"}));
  EXPECT_EQ(Drawn(projector, Point(0.5, 0.5, 0), Point(100.5, 0.5, 0), true), (Lines{"MoveTo 400 299", "LineTo 500 299"}));
}

TEST(D3Projector, WithoutPerspectiveTheTiltGoesAndTheDivisionStays) {
  D3Projector projector = Above();
  projector.SetObserveAngle(60);
  // Tilted by 60 degrees: y is 100 * 0.5 and z -100 * 0.866, so that y is 50 / 1.0866 = 46.
  EXPECT_EQ(Drawn(projector, Point(0.5, 0, 0), Point(0.5, 100, 0))[1], "LineTo 400 253");
  projector.SetPerspective(false);
  EXPECT_EQ(Drawn(projector, Point(0.5, 0, 0), Point(0.5, 100, 0))[1], "LineTo 400 200");
  EXPECT_EQ(Drawn(projector, Point(0, 0, 500), Point(100, 0, 500))[1], "LineTo 600 300");
}

TEST(D3Projector, ALineBehindTheEyeIsNotDrawn) {
  EXPECT_EQ(Drawn(Above(), Point(0, 0, 1000), Point(100, 0, 2000)), Lines());
  EXPECT_EQ(Drawn(Above(), Point(0, 0, kNan), Point(100, 0, kNan)), Lines());
}

TEST(D3Projector, ALineThatPassesTheEyeEndsJustBeforeIt) {
  // From (0, 0, 0) to (0.02, 0, 2000): at z = 999.9 x is 0.009999, and 10000 times as large on the plane: 99.99.
  EXPECT_EQ(Drawn(Above(), Point(0, 0, 0), Point(0.02, 0, 2000)), (Lines{"MoveTo 400 300", "LineTo 499 300"}));
  EXPECT_EQ(Drawn(Above(), Point(0.02, 0, 2000), Point(0, 0, 0)), (Lines{"MoveTo 499 300", "LineTo 400 300"}));
}

TEST(D3Projector, ALineThatPassesTheEyeFromNearerThanThatIsProlongedBackwards) {
  // z goes from 999.95 to 1000.05, so that 999.9 is half a length before the start: there x is 0.00505, and 50.5 on the plane.
  EXPECT_EQ(Drawn(Above(), Point(0, 0, 999.95), Point(-0.0101, 0, 1000.05)), (Lines{"MoveTo 400 300", "LineTo 450 300"}));
}

TEST(D3Projector, ALineOfHeightBelowTheEyeIsOnePointOfThePlaneAndNotDrawn) {
  EXPECT_EQ(Drawn(Above(), Point(0, 0, 0), Point(0, 0, -20)), Lines());
  EXPECT_EQ(Drawn(Above(), Point(200, 0, 0), Point(200, 0, 500)), (Lines{"MoveTo 600 300", "LineTo 800 300"}));
}

TEST(D3Projector, BesideAHugeViewDistanceALineThatPassesTheEyeIsNotDrawn) {
  D3Projector projector = Above();
  projector.SetViewDistance(1e20);
  EXPECT_EQ(Drawn(projector, Point(0, 0, 0), Point(100, 0, 2e20)), Lines());
  EXPECT_EQ(Drawn(projector, Point(0, 0, 0), Point(100, 0, 0)), (Lines{"MoveTo 400 300", "LineTo 500 300"}));
}

TEST(D3Projector, OnNoSurfaceNothingIsDrawn) {
  const D3Projector projector = Above();
  projector.DrawLine(nullptr, Point(0, 0, 0), Point(1, 1, 0), false);
  EXPECT_EQ(projector.GetViewDistance(), 1000);
}

TEST(D3Projector, IsDestroyedThroughTheBase) {
  class Derived : public D3Projector {
   public:
    explicit Derived(bool& gone) : m_gone(gone) {}
    ~Derived() override { m_gone = true; }

   private:
    bool& m_gone;
  };
  bool gone = false;
  std::unique_ptr<D3Projector> projector = std::make_unique<Derived>(gone);
  projector.reset();
  EXPECT_TRUE(gone);
}

// --- Against a second transcription --------------------------------------------------------------------------------------

struct Scene {
  double distance, refX, refY, a, b;
  bool perspective;
};

// Projects the line onto the plane; false when there is nothing to draw.
bool Flatten(const Scene& scene, Point (&p)[2], bool noBearing, Line& flat) {
  const double b = (noBearing ? 0 : scene.b) * kDegree;
  const double a = (scene.perspective ? scene.a : 0) * kDegree;
  for (Point& q : p) {
    const double x = q.x - scene.refX;
    const double y = q.y - scene.refY;
    const double z = q.z;
    q = Point(std::cos(b) * x + std::sin(b) * y, std::cos(a) * std::cos(b) * y - std::cos(a) * std::sin(b) * x + std::sin(a) * z,
              std::sin(a) * std::sin(b) * x - std::sin(a) * std::cos(b) * y + std::cos(a) * z);
  }
  const bool seen[] = {scene.distance - p[0].z > 0, scene.distance - p[1].z > 0};
  if (!seen[0] && !seen[1]) return false;
  for (int i = 0; i < 2; ++i) {
    if (seen[i]) continue;
    const Point front = p[1 - i];
    const double z = scene.distance - 0.1;
    const double t = (z - front.z) / (p[i].z - front.z);
    p[i] = Point(front.x + t * (p[i].x - front.x), front.y + t * (p[i].y - front.y), z);
  }
  Point* const ends[] = {&flat.start, &flat.end};
  for (int i = 0; i < 2; ++i) {
    const double d = scene.distance - p[i].z;
    if (d <= 0) return false;
    *ends[i] = Point(p[i].x * scene.distance / d, scene.distance / d * p[i].y, 0);
  }
  return true;
}

TEST(D3Projector, RandomScenesAreDrawnAsTheRulesSay) {
  EdgeValues values(99);
  Tally tally({"drawn", "not seen", "behind the eye"});
  for (int round = 0; round < kHeavyRounds; ++round) {
    const TwoSystems both = AnySystem(values);
    RecordingSurface surface;
    SecondDrawing second(both.second);
    AnySurface(values, surface, second);
    const Scene scene{values.Flag() ? values.Between(1, 1000) : values.Coordinate(),
                      values.Coordinate(),
                      values.Coordinate(),
                      values.Bearing(),
                      values.Bearing(),
                      values.Flag()};
    D3Projector projector;
    projector.GetCoordinateSystem() = both.ours;
    projector.SetViewDistance(scene.distance);
    projector.SetRefXYposition(scene.refX, scene.refY);
    projector.SetObserveAngle(scene.a);
    projector.SetBearing(scene.b);
    projector.SetPerspective(scene.perspective);
    Point p[] = {AnyPlace(values, both.ours), AnyPlace(values, both.ours)};
    if (values.Flag()) p[values.Index(2)].z = values.Between(-2000, 2000);
    const bool noBearing = values.Flag();
    projector.DrawLine(&surface, p[0], p[1], noBearing);
    Line flat;
    if (tally.Either(Flatten(scene, p, noBearing, flat), "drawn", "behind the eye")) {
      second.DrawLine(flat, both.ours.worldWindow);
    }
    ASSERT_EQ(surface.Lines(), second.calls) << round;
    if (surface.calls.empty()) tally.Count("not seen");
  }
}

}  // namespace
