// What the map shows, where, and how large; the grid and the frame around it; scale bar and north arrow.

#include "survey/ChartLayout.h"

#include <algorithm>
#include <cmath>
#include <random>

#include "survey/ChartDesign.h"
#include "survey/ChartFurniture.h"
#include "survey/ChartGrid.h"
#include "survey/ChartSteps.h"
#include "survey/ProfileLayout.h"
#include "tests/apps/ChartFixture.h"

using namespace zel;

namespace {

// Millimetres on the sheet.
Point Placed(const MapView& view, const Point& world) {
  Point pixel;
  view.System(1000).WorldToPixel(world, &pixel);
  return Point(pixel.x / 1000.0, pixel.y / 1000.0, 0.0);
}

std::vector<Point> RandomPoints(unsigned seed) {
  std::mt19937 engine(seed);
  std::uniform_real_distribution<double> any(0.0, 1.0);
  const double wide = std::pow(10.0, 6.0 * any(engine) - 1.0), high = wide * (0.1 + 3.0 * any(engine));
  std::vector<Point> points;
  for (int i = 0; i < 50; ++i) points.emplace_back(512000 + wide * any(engine), 5.7e6 + high * any(engine), -any(engine));
  return points;
}

}  // namespace

TEST(MapView, ShowsAllSoundingsAtACustomaryScaleAndNotSmallerThanNeeded) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    Survey survey = SurveyOf(RandomPoints(seed));
    survey.mapRotation = seed * 9.7;
    const MapView view = ViewOf(survey);
    ASSERT_TRUE(view.isDrawable && !view.isEmpty);
    EXPECT_EQ(view.scale, NiceScale(view.scale));
    Page page;
    for (const Point& point : survey.soundings) page |= Placed(view, point);
    EXPECT_TRUE(page.left >= sheet::kMap.left && page.right <= sheet::kMap.right && page.bottom >= sheet::kMap.bottom &&
                page.top <= sheet::kMap.top)
        << seed;
    const double filled = std::max(page.Width() / sheet::kMap.Width(), page.Height() / sheet::kMap.Height());
    EXPECT_TRUE(view.scale == 10.0 || filled > 0.65) << seed;
  }
}

TEST(MapView, IsTrueToScaleAndTurnedByTheBearingThatIsUp) {
  for (const double rotation : {0.0, 30.0, 90.0, 135.0, 180.0, 270.0, 332.5}) {
    Survey survey = SurveyOf({Point(1000, 2000, -5), Point(1900, 2600, -6)});
    survey.mapRotation = rotation;
    const MapView view = ViewOf(survey);
    const double bearing = rotation * 3.14159265358979 / 180.0, metres = 10.0 * view.MetresPerMillimetre();
    const Point ahead = view.centre + Point(std::sin(bearing) * metres, std::cos(bearing) * metres, 0);
    const Point from = Placed(view, view.centre), to = Placed(view, ahead);
    EXPECT_NEAR(to.x - from.x, 0.0, 0.003) << rotation;
    EXPECT_NEAR(to.y - from.y, -10.0, 0.003) << rotation;
    EXPECT_NEAR(from.x, (sheet::kMap.left + sheet::kMap.right) / 2, 0.003);
  }
}

TEST(MapView, TakesInWhatBelongsToTheSurveyUnlessThatCostsTooMuch) {
  Survey survey = SurveyOf({Point(0, 0, -5), Point(1000, 900, -6)});
  const double alone = ViewOf(survey).scale;
  survey.vessel = {.known = true, .x = 1100, .y = 450, .heading = 0, .time = 0, .hasContour = false, .contour = {}};
  EXPECT_NEAR(ViewOf(survey).centre.x, 550, 1e-6) << "the vessel is close";
  survey.vessel.x = 90000;
  EXPECT_NEAR(ViewOf(survey).centre.x, 500, 1e-6) << "too far";
  EXPECT_EQ(ViewOf(survey).scale, alone);
  survey.soundings = {Point(0, 0, -5)};
  survey.workArea.push_back({Point(-500, -500, 0), Point(500, -500, 0), Point(0, 500, 0)});
  EXPECT_EQ(ViewOf(survey).scale, 5000.0) << "around a single sounding the work area is seen: 1000 m * 1.06 on 261 mm are 1 : 4061";
}

TEST(MapView, AnythingGivesAView) {
  EXPECT_TRUE(ViewOf(SurveyOf({})).isEmpty);
  const MapView one = ViewOf(SurveyOf({Point(500, 500, -3)}));
  EXPECT_TRUE(one.isDrawable);
  EXPECT_EQ(one.scale, 1000.0);
  EXPECT_TRUE(ViewOf(SurveyOf(std::vector<Point>(100, Point(1e15, -1e15, 0)))).isDrawable)
      << "equal places, where a metre is near a double's last digit";
  EXPECT_FALSE(ViewOf(SurveyOf({Point(-1e200, 0, 0), Point(1e200, 1, 0)})).isDrawable);
  EXPECT_FALSE(ViewOf(SurveyOf({Point(-1.7e308, 0, 0), Point(1.7e308, 1, 0)})).isDrawable);
  Survey land = SurveyOf({});
  land.land.push_back({Point(0, 0, 0), Point(100, 0, 0), Point(0, 50, 0)});
  EXPECT_TRUE(ViewOf(land).isDrawable) << "land alone is better than nothing";
}

TEST(ChartGrid, MarksRoundCoordinatesOnOppositeSides) {
  Survey survey = SurveyOf({Point(512400, 5752300, -5), Point(513600, 5753200, -6)});
  const MapView view = ViewOf(survey);
  const ChartGrid grid(survey, view);
  EXPECT_EQ(grid.Step(), 200.0) << "1 : 5 000, so that 32 mm are 160 m";
  for (const Side side : {Side::Top, Side::Bottom, Side::Left, Side::Right}) {
    const bool isEasting = grid.ShowsEastings(side);
    EXPECT_EQ(isEasting, side == Side::Top || side == Side::Bottom);
    EXPECT_GE(grid.Marks(side).size(), 10u);
    for (const FrameMark& mark : grid.Marks(side)) {
      EXPECT_EQ(std::fmod(mark.value, 100.0), 0.0);
      EXPECT_EQ(mark.isWhole, std::fmod(mark.value, 200.0) == 0.0);
      const Point place = Placed(view, isEasting ? Point(mark.value, view.centre.y, 0) : Point(view.centre.x, mark.value, 0));
      EXPECT_NEAR(mark.at, isEasting ? place.x : place.y, 0.02);
    }
  }
  EXPECT_EQ(grid.LabelOf(512400, true), Thousands(512400) + " E");
}

TEST(ChartGrid, ATurnedMapIsLabelledWhereTheLinesAreSquare) {
  Survey survey = SurveyOf({Point(0, 0, -5), Point(1200, 900, -6)});
  for (const double rotation : {20.0, 80.0, 100.0, 200.0, 300.0}) {
    survey.mapRotation = rotation;
    const MapView view = ViewOf(survey);
    const ChartGrid grid(survey, view);
    EXPECT_EQ(grid.ShowsEastings(Side::Top), std::abs(std::cos(rotation * 0.017453)) > 0.707) << rotation;
    for (const Side side : {Side::Top, Side::Bottom, Side::Left, Side::Right}) {
      EXPECT_GE(grid.Marks(side).size(), 4u);
      for (const FrameMark& mark : grid.Marks(side)) {
        const double at = mark.at;
        const Point onFrame = side == Side::Top      ? Point(at, sheet::kMap.bottom, 0)
                              : side == Side::Bottom ? Point(at, sheet::kMap.top, 0)
                              : side == Side::Left   ? Point(sheet::kMap.left, at, 0)
                                                     : Point(sheet::kMap.right, at, 0);
        Point world;
        view.System(1000).PixelToWorld(onFrame * 1000.0, &world);
        EXPECT_NEAR(grid.ShowsEastings(side) ? world.x : world.y, mark.value, 0.1) << rotation;
      }
    }
  }
}

// A grid with so many metres to a degree of either, from the equator and 3 degrees east; no place beyond the poles.
class EvenGrid : public GeoCoordSys {
 public:
  bool Select(const std::string&) override { return false; }
  std::string Reason() override { return ""; }
  std::string Code() override { return ""; }
  std::string Name() override { return "Even grid"; }
  GeoCoordSysKind Kind() override { return GeoCoordSysKind::Projected; }
  std::string UnitName() override { return "metre"; }
  bool GetLinearUnit(double&) override { return false; }
  bool GetAngularUnit(double&) override { return false; }
  bool GetAreaOfUse(GeoArea&) override { return false; }
  bool Forward(double latitude, double longitude, double& easting, double& northing) override {
    easting = 500000.0 + (longitude - 3.0) * 68500.0;
    northing = latitude * 111200.0;
    return true;
  }
  bool Inverse(double easting, double northing, double& latitude, double& longitude) override {
    if (northing / 111200.0 > 90.0) return false;
    latitude = northing / 111200.0;
    longitude = 3.0 + (easting - 500000.0) / 68500.0;
    return true;
  }
  bool SelectTarget(const std::string&) override { return false; }
  bool Convert(double, double, double&, double&) override { return false; }
  bool GetConversionInfo(GeoConversionInfo&) override { return false; }
};

TEST(ChartGrid, ShowsDegreesWhenTheProjectionIsKnown) {
  Survey survey = SurveyOf({Point(500000, 5752300, -5), Point(501200, 5753200, -6)});
  survey.coordinates.form = CoordinateForm::Minutes;
  EXPECT_FALSE(ChartGrid(survey, ViewOf(survey)).IsGeographic()) << "no projection";
  survey.coordinates.projection = SurveyProjection(std::make_unique<EvenGrid>());
  const MapView view = ViewOf(survey);
  const ChartGrid grid(survey, view);
  ASSERT_TRUE(grid.IsGeographic());
  EXPECT_NEAR(grid.Step() * 60.0, 0.1, 1e-9) << "a tenth of a minute of latitude is 185 m";
  EXPECT_EQ(grid.LabelOf(3.0 + 0.2 / 60.0, true), "003\u00B000.2'E");
  for (const FrameMark& mark : grid.Marks(Side::Left)) {
    Point world;
    view.System(1000).PixelToWorld(Point(sheet::kMap.left * 1000.0, mark.at * 1000.0, 0), &world);
    double latitude = 0.0, longitude = 0.0;
    ASSERT_TRUE(survey.coordinates.projection.ToGeographic(world.x, world.y, latitude, longitude));
    EXPECT_NEAR(latitude, mark.value, 1e-6);
  }
  survey.soundings = {Point(1e9, 5e9, -1), Point(1e9 + 500, 5e9 + 500, -1)};
  EXPECT_FALSE(ChartGrid(survey, ViewOf(survey)).IsGeographic()) << "no place on Earth";
}

TEST(ScaleBar, IsTrueToScaleAndRound) {
  Survey survey = SurveyOf({});
  for (const double scale : {100.0, 1250.0, 5000.0, 30000.0, 2e6}) {
    MapView view;
    view.scale = scale;
    const ScaleBar bar = ScaleBarFor(survey, view, 50.0);
    EXPECT_NEAR(bar.paper * scale, bar.metres * 1000.0, 1e-9 * bar.metres * 1000.0);
    EXPECT_LE(bar.paper, 50.0 * (1 + 1e-8));
    EXPECT_GT(bar.paper, 19.9);
    EXPECT_EQ(bar.unit, scale > 40000.0 || 50.0 * scale >= 2e6 ? "km" : "m") << scale;
  }
  survey.units.SetUnit(CZelUnitCnv::Distance, 0.3048, 0.0, "ft", "Foot", "Foot");
  const ScaleBar feet = ScaleBarFor(survey, MapView{}, 50.0);
  EXPECT_EQ(feet.unit, "ft");
  EXPECT_EQ(feet.length, 100.0);
  EXPECT_NEAR(feet.metres, 30.48, 1e-9);
}

TEST(ChainageTicks, LieOnTheLineWhereItsChainageIsRound) {
  Survey survey = SurveyOf({});
  AddDesign(survey, Point(100, 200, -8));
  const std::vector<ChainageTick> ticks = ChainageTicks(survey, 2.0);  // 24 mm are 48 m: numbers each 50 m, ticks each 10 m
  ASSERT_EQ(ticks.size(), 56u);
  EXPECT_EQ(ticks[5].text, "50");
  EXPECT_EQ(ticks[4].text, "");
  EXPECT_NEAR(ticks[5].place.x, 150, 1e-9);
  EXPECT_NEAR(ticks[5].across.y, -1, 1e-12) << "south is to the right of east";
  EXPECT_NEAR(ticks[55].place.x, 600, 1e-6);
  EXPECT_NEAR(ticks[55].place.y, 350, 1e-6);
}

TEST(ProfileView, ShowsAllAtRoundScales) {
  Survey survey = SurveyOf({});
  EXPECT_TRUE(ProfileViewOf(survey).isEmpty);
  AddDesign(survey, Point(100, 200, -8));
  const ProfileView view = ProfileViewOf(survey);
  ASSERT_TRUE(view.isDrawable);
  EXPECT_LT(view.window.left, 0.0);
  EXPECT_GT(view.window.right, 550.0);
  EXPECT_LT(view.window.bottom, -9.0);
  EXPECT_GT(view.window.top, -6.8);
  EXPECT_EQ(view.alongScale, 2000.0) << "550 m * 1.04 on 302 mm";
  EXPECT_EQ(view.upwardScale, 25.0) << "2.2 m * 1.25 on 136 mm is 1 : 20.2";
  EXPECT_EQ(view.Exaggeration(), 80.0);
}

namespace {

double DistanceTo(const std::vector<Point>& line, const Point& place) {
  double least = 1e300;
  for (std::size_t i = 1; i < line.size(); ++i) {
    const double dx = line[i].x - line[i - 1].x, dy = line[i].y - line[i - 1].y;
    const double share = std::clamp(((place.x - line[i - 1].x) * dx + (place.y - line[i - 1].y) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
    least = std::min(least, std::hypot(place.x - line[i - 1].x - share * dx, place.y - line[i - 1].y - share * dy));
  }
  return least;
}

}  // namespace

TEST(PathsBeside, KeepTheirDistanceRoundBends) {
  const std::vector<Point> line = {Point(0, 0, -10), Point(100, 0, -10), Point(100, -100, -10), Point(180, -60, -10), Point(300, -60, -10)};
  Survey survey;
  survey.design.line = std::make_shared<SurveyLine>(std::vector<std::vector<Point>>{line});
  for (const double distance : {-10.0, -3.0, 3.0, 10.0}) {
    const std::vector<std::vector<Point>> paths = PathsBeside(survey, distance);
    ASSERT_EQ(paths.size(), 1u);
    for (const Point& place : paths[0])
      EXPECT_NEAR(DistanceTo(line, place), std::abs(distance), 1e-9) << distance << ": " << place.x << ' ' << place.y;
    EXPECT_EQ(paths[0].front().y, -distance);
    EXPECT_EQ(paths[0].back().y, -60 - distance);
  }
  const std::vector<Point> right = PathsBeside(survey, 10.0)[0];
  EXPECT_NEAR(right[1].x, 90.0, 1e-9);  // inside the first bend the two pieces meet
  EXPECT_NEAR(right[1].y, -10.0, 1e-9);
}

TEST(PathsBeside, PiecesTooShortToMeetAndSectionsAreKept) {
  Survey survey;
  EXPECT_TRUE(PathsBeside(survey, 5.0).empty());
  survey.design.line = std::make_shared<SurveyLine>(std::vector<std::vector<Point>>{{Point(0, 0, 0), Point(10, 0, 0), Point(10, -10, 0)},
                                                                                    {Point(50, 0, 0), Point(60, 0, 0), Point(50, 0, 0)}});
  for (const double distance : {-20.0, 20.0}) {
    const std::vector<std::vector<Point>> paths = PathsBeside(survey, distance);
    ASSERT_EQ(paths.size(), 2u);
    EXPECT_EQ(paths[0].front().y, -distance);
    EXPECT_EQ(paths[0].back().x, 10.0 - distance);
    EXPECT_EQ(paths[1].back().y, distance) << "there and back";
  }
}
