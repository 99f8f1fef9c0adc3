// Geoid heights from grids made here, held against an interpolation written down here, and from the packaged EGM96 against its
// published test points.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "tests/adapters/GeodesyHost.h"
#include "tests/adapters/GtxGrid.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr unsigned short kSatellite = 3;
constexpr unsigned short kGrid = 15;

std::unique_ptr<GeoidModel> MakeModel(unsigned short type) {
  return std::unique_ptr<GeoidModel>(GeoidModelList::GetGeoidModelList().Create(type));
}

// A ready model of latitudes and longitudes.
std::unique_ptr<GeoidModel> Opened(const std::string& file, ZelGeoCoordSysBase* system = nullptr) {
  auto model = MakeModel(kSatellite);
  model->SetFileName(file);
  EXPECT_TRUE(model->Init(system)) << file;
  EXPECT_TRUE(model->IsReady());
  return model;
}

double SeparationAt(GeoidModel& model, double first, double second) {
  double unit = kNaN, metres = kNaN;
  EXPECT_TRUE(model.Calculate(first, second, unit, metres, false)) << first << ' ' << second;
  return metres;
}

// Bilinear, between the four nodes around.
double Interpolated(const GtxGrid& grid, double latitude, double longitude) {
  const double row = (latitude - grid.south) / grid.latitudeStep, column = (longitude - grid.west) / grid.longitudeStep;
  const int r = std::min(static_cast<int>(row), grid.rows - 2), c = std::min(static_cast<int>(column), grid.columns - 2);
  const double u = column - c, v = row - r;
  const double lower = grid.At(r, c) + u * (grid.At(r, c + 1) - grid.At(r, c));
  const double upper = grid.At(r + 1, c) + u * (grid.At(r + 1, c + 1) - grid.At(r + 1, c));
  return lower + v * (upper - lower);
}

TEST(ProjGeoidModel, InterpolatesBetweenTheFourValuesAround) {
  const TemporaryFolder folder;
  const GtxGrid grid;
  const std::string file = folder.Write("a.gtx", grid.Bytes());
  ExpectInHost([&] {
    const auto model = Opened(file);
    EXPECT_NEAR(SeparationAt(*model, 50.5, 3.0), 45.0, 1e-6) << "a node";
    EXPECT_NEAR(SeparationAt(*model, 50.25, 2.5), (40.0 + 41.5 + 44.25 + 45.0) / 4, 1e-6) << "the middle of a cell";
    std::mt19937 random(2);
    std::uniform_real_distribution<double> latitudes(50.0, 51.0), longitudes(2.0, 5.0);
    for (int i = 0; i < 500; ++i) {
      const double latitude = latitudes(random), longitude = longitudes(random);
      EXPECT_NEAR(SeparationAt(*model, latitude, longitude), Interpolated(grid, latitude, longitude), 1e-6) << latitude << ' ' << longitude;
    }
  });
}

TEST(ProjGeoidModel, AGeoTiffGivesTheSame) {
  const TemporaryFolder folder;
  const GtxGrid grid;
  const std::string file = folder.Write("a b.tif", grid.TiffBytes()), cut = folder.Write("cut.tif", grid.TiffBytes().substr(0, 60));
  ExpectInHost([&] {
    const auto model = Opened(file);
    for (const double latitude : {50.0, 50.1, 50.77, 51.0}) {
      for (const double longitude : {2.0, 3.3, 4.99})
        EXPECT_NEAR(SeparationAt(*model, latitude, longitude), Interpolated(grid, latitude, longitude), 1e-6);
    }
    model->SetFileName(cut);
    EXPECT_FALSE(model->Init(nullptr));
  });
}

TEST(ProjGeoidModel, TheFlagTurnsTheSignIntoThatOfACorrection) {
  const TemporaryFolder folder;
  const std::string file = folder.Write("a.gtx", GtxGrid().Bytes());
  ExpectInHost([&] {
    const auto model = Opened(file);
    double unit = 0.0, metres = 0.0;
    ASSERT_TRUE(model->Calculate(50.5, 3.0, unit, metres, true));
    EXPECT_NEAR(metres, -45.0, 1e-6);
    EXPECT_EQ(unit, metres) << "metres without a coordinate system";
  });
}

TEST(ProjGeoidModel, TheFirstResultIsInTheCoordinateSystemsUnitTheSecondInMetres) {
  const TemporaryFolder folder;
  const std::string file = folder.Write("a.gtx", GtxGrid().Bytes());
  ExpectInHost([&] {
    const auto system = MakeSystem();
    ASSERT_TRUE(system->Select("EPSG:2229"));
    const auto model = Opened(file, system.get());
    double unit = 0.0, metres = 0.0, growth = 0.0;
    ASSERT_TRUE(model->Calculate(50.5, 3.0, unit, metres, false));
    EXPECT_NEAR(metres, 45.0, 1e-6);
    EXPECT_NEAR(unit, 45.0 * 3937.0 / 1200.0, 1e-5);
    ASSERT_TRUE(model->Calculate(50.5, 3.0, 50.0, 2.0, growth));
    EXPECT_NEAR(growth, (40.0 - 45.0) * 3937.0 / 1200.0, 1e-5) << "from the first position to the second";
  });
}

TEST(ProjGeoidModel, OfGridPositionsTakesEastingAndNorthing) {
  const TemporaryFolder folder;
  const GtxGrid grid;
  const std::string file = folder.Write("a.gtx", grid.Bytes());
  ExpectInHost([&] {
    const auto system = MakeSystem();
    ASSERT_TRUE(system->Select("EPSG:32631"));
    const auto model = MakeModel(kGrid);
    model->SetFileName(file);
    ASSERT_TRUE(model->Init(system.get()));
    double easting = 0.0, northing = 0.0;
    ASSERT_TRUE(system->Forward(50.6, 3.7, easting, northing));
    EXPECT_NEAR(SeparationAt(*model, easting, northing), Interpolated(grid, 50.6, 3.7), 1e-6);
    double a = 7.0, b = 8.0;
    EXPECT_FALSE(model->Calculate(50.6, 3.7, a, b, false)) << "metres from the false origin: far off the grid";
    EXPECT_EQ(a, 7.0);
  });
}

TEST(ProjGeoidModel, OfGridPositionsNeedsACoordinateSystem) {
  const TemporaryFolder folder;
  const std::string file = folder.Write("a.gtx", GtxGrid().Bytes());
  ExpectInHost([&] {
    const auto model = MakeModel(kGrid);
    model->SetFileName(file);
    EXPECT_FALSE(model->Init(nullptr));
    EXPECT_FALSE(model->IsReady());
    const auto system = MakeSystem();
    EXPECT_FALSE(model->Init(system.get())) << "nothing selected";
    ASSERT_TRUE(system->Select("EPSG:32631"));
    EXPECT_TRUE(model->Init(system.get()));
    EXPECT_TRUE(model->IsReady());
  });
}

TEST(ProjGeoidModel, OutsideTheGridAndOffTheGlobeIsFalseAndLeavesTheOutputs) {
  const TemporaryFolder folder;
  const std::string file = folder.Write("a.gtx", GtxGrid().Bytes());
  ExpectInHost([&] {
    const auto model = Opened(file);
    double a = 7.0, b = 8.0;
    for (const double bad : {kNaN, kInfinity, -kInfinity, 1e300, 49.9, 51.1, -50.5, 90.1})
      EXPECT_FALSE(model->Calculate(bad, 3.0, a, b, false)) << bad;
    for (const double bad : {kNaN, kInfinity, -kInfinity, 1e300, 1.9, 5.1, 183.0, 1000.0})
      EXPECT_FALSE(model->Calculate(50.5, bad, a, b, false)) << bad;
    EXPECT_FALSE(model->Calculate(50.5, 3.0, 60.0, 3.0, a)) << "the second position, too";
    EXPECT_FALSE(model->CalculateLocalEllipsCorrection(50.5, 3.0, a, b, false)) << "the base's";
    EXPECT_EQ(a, 7.0);
    EXPECT_EQ(b, 8.0);
  });
}

TEST(ProjGeoidModel, IsReadyFromInitToTheNextFileName) {
  const TemporaryFolder folder;
  const std::string file = folder.Write("a.gtx", GtxGrid().Bytes());
  ExpectInHost([&] {
    const auto model = MakeModel(kSatellite);
    double a = 7.0, b = 8.0;
    EXPECT_FALSE(model->IsReady());
    EXPECT_FALSE(model->Init(nullptr)) << "no file named";
    model->SetFileName(file);
    EXPECT_FALSE(model->IsReady());
    EXPECT_FALSE(model->Calculate(50.5, 3.0, a, b, false));
    EXPECT_TRUE(model->Init(nullptr));
    EXPECT_TRUE(model->IsReady());
    model->SetFileName(folder.File("none.gtx"));
    EXPECT_FALSE(model->IsReady());
    EXPECT_FALSE(model->Init(nullptr));
    EXPECT_FALSE(model->Calculate(50.5, 3.0, a, b, false));
    EXPECT_EQ(a, 7.0);
  });
}

TEST(ProjGeoidModel, TakesNamesOfAnyCharactersAndBothSeparators) {
  const TemporaryFolder folder;
  const std::string bytes = GtxGrid().Bytes();
  const std::string odd = folder.Write("a b,c \"d\" +proj=x\xE9.gtx", bytes);
  folder.Write("plain.gtx", bytes);
  ExpectInHost([&] {
    EXPECT_NEAR(SeparationAt(*Opened(odd), 50.5, 3.0), 45.0, 1e-6);
    EXPECT_NEAR(SeparationAt(*Opened(folder.InterfacePath() + "\\plain.gtx"), 50.5, 3.0), 45.0, 1e-6);
    std::filesystem::current_path(folder.Path());
    EXPECT_NEAR(SeparationAt(*Opened("plain.gtx"), 50.5, 3.0), 45.0, 1e-6);
  });
}

TEST(ProjGeoidModel, TwoModelsWithTwoGridsDoNotMix) {
  const TemporaryFolder folder;
  GtxGrid other;
  for (float& value : other.values) value += 100.0F;
  const std::string one = folder.Write("a.gtx", GtxGrid().Bytes()), two = folder.Write("b.gtx", other.Bytes());
  ExpectInHost([&] {
    const auto first = Opened(one), second = Opened(two);
    EXPECT_NEAR(SeparationAt(*first, 50.5, 3.0), 45.0, 1e-6);
    EXPECT_NEAR(SeparationAt(*second, 50.5, 3.0), 145.0, 1e-6);
    first->SetFileName(two);
    ASSERT_TRUE(first->Init(nullptr));
    EXPECT_NEAR(SeparationAt(*first, 50.5, 3.0), 145.0, 1e-6);
  });
}

TEST(ProjGeoidModel, WhatIsNoWholeGridIsRefused) {
  const TemporaryFolder folder;
  const std::string bytes = GtxGrid().Bytes();
  std::vector<std::string> files = {folder.Path(),
                                    folder.MakeFifo("pipe.gtx"),
                                    folder.File("none.gtx"),
                                    "/dev/zero",
                                    std::string("a\0b.gtx", 7),
                                    "null",
                                    "@null",
                                    "a.gtx,b.gtx",
                                    folder.Write("text.gtx", "no grid at all, but long enough to be a header of forty bytes"),
                                    folder.Write("text.tif", std::string("II*\0\xFF\xFF\xFF\xFF", 8)),
                                    folder.Write("empty.gtx", "")};
  for (const std::size_t size : {std::size_t{1}, std::size_t{39}, std::size_t{40}, std::size_t{60}, bytes.size() - 1})
    files.push_back(folder.Write("cut" + std::to_string(size) + ".gtx", bytes.substr(0, size)));
  GtxGrid huge;
  huge.rows = huge.columns = 0x7FFFFFFF;
  files.push_back(folder.Write("huge.gtx", huge.Bytes()));
  huge.rows = -1;
  files.push_back(folder.Write("negative.gtx", huge.Bytes()));
  GtxGrid odd;
  odd.latitudeStep = kNaN;
  files.push_back(folder.Write("nan.gtx", odd.Bytes()));
  ExpectInHost([&] {
    for (const std::string& file : files) {
      const auto model = MakeModel(kSatellite);
      model->SetFileName(file);
      double a = 7.0, b = 8.0;
      EXPECT_FALSE(model->Init(nullptr)) << file;
      EXPECT_FALSE(model->IsReady()) << file;
      EXPECT_FALSE(model->Calculate(50.9, 4.9, a, b, false)) << file;
      EXPECT_EQ(a, 7.0) << file;
      EXPECT_EQ(b, 8.0) << file;
    }
  });
}

// The test points that come with EGM96's own program, which interpolates by splines: hence the tolerance.
TEST(ProjGeoidModel, PackagedEgm96MeetsItsPublishedTestPoints) {
  ExpectInHost([] {
    const auto model = Opened("egm96_15.gtx");
    EXPECT_NEAR(SeparationAt(*model, 38.6281550, 269.7791550), -31.628, 0.1);
    EXPECT_NEAR(SeparationAt(*model, -14.6212170, 305.0211140), -2.969, 0.1);
    EXPECT_NEAR(SeparationAt(*model, 46.8743190, 102.4487290), -43.575, 0.1);
    EXPECT_NEAR(SeparationAt(*model, -23.6174460, 133.8747120), 15.871, 0.1);
    EXPECT_NEAR(SeparationAt(*model, 38.6254730, 359.9995000), 50.066, 0.1);
    EXPECT_NEAR(SeparationAt(*model, -0.4667440, 0.0023000), 17.329, 0.1);
    EXPECT_NEAR(SeparationAt(*model, 52.0, 4.0), SeparationAt(*model, 52.0, -356.0), 1e-9);
  });
}

}  // namespace
