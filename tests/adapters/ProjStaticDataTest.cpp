// Figures of ellipsoids, units and meridians, held against their definitions.

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "tests/adapters/GeodesyHost.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

TEST(ProjStaticData, EllipsoidsByCodeAndName) {
  ExpectInHost([] {
    const auto data = MakeStaticData();
    GeoEllipsoid ellipsoid;
    ASSERT_TRUE(data->FindEllipsoid("wgs 84", ellipsoid));
    EXPECT_EQ(ellipsoid.code, "EPSG:7030");
    EXPECT_EQ(ellipsoid.semiMajor, 6378137.0);
    EXPECT_NEAR(ellipsoid.inverseFlattening, 298.257223563, 1e-9);
    EXPECT_NEAR(ellipsoid.semiMinor, 6378137.0 * (1 - 1 / 298.257223563), 1e-4);
    ASSERT_TRUE(data->FindEllipsoid("epsg:7001", ellipsoid));
    EXPECT_EQ(ellipsoid.name, "Airy 1830");
    EXPECT_EQ(ellipsoid.semiMajor, 6377563.396);
    EXPECT_NEAR(ellipsoid.semiMinor, 6356256.909, 1e-3);
    // Given by both its half axes.
    ASSERT_TRUE(data->FindEllipsoid("Clarke 1866", ellipsoid));
    EXPECT_EQ(ellipsoid.semiMajor, 6378206.4);
    EXPECT_EQ(ellipsoid.semiMinor, 6356583.8);
    EXPECT_NEAR(ellipsoid.inverseFlattening, 6378206.4 / (6378206.4 - 6356583.8), 1e-9);
  });
}

TEST(ProjStaticData, ASphereHasNoFlattening) {
  ExpectInHost([] {
    GeoEllipsoid ellipsoid;
    ASSERT_TRUE(MakeStaticData()->FindEllipsoid("EPSG:7048", ellipsoid));
    EXPECT_EQ(ellipsoid.inverseFlattening, 0.0);
    EXPECT_EQ(ellipsoid.semiMajor, ellipsoid.semiMinor);
  });
}

TEST(ProjStaticData, LinearUnitsAreMetresAUnit) {
  ExpectInHost([] {
    const auto data = MakeStaticData();
    GeoUnit unit;
    const std::pair<const char*, double> units[] = {
        {"metre", 1.0}, {"foot", 0.3048}, {"US survey foot", 1200.0 / 3937.0}, {"nautical mile", 1852.0}, {"fathom", 1.8288}};
    for (const auto& [name, factor] : units) {
      ASSERT_TRUE(data->FindLinearUnit(name, unit)) << name;
      EXPECT_DOUBLE_EQ(unit.factor, factor) << name;
      EXPECT_EQ(unit.name, name);
    }
    ASSERT_TRUE(data->FindLinearUnit("EPSG:9001", unit));
    EXPECT_EQ(unit.name, "metre");
    EXPECT_FALSE(data->FindLinearUnit("degree", unit)) << "of another kind";
    EXPECT_EQ(unit.name, "metre") << "untouched";
  });
}

TEST(ProjStaticData, AngularUnitsAreRadiansAUnit) {
  ExpectInHost([] {
    const auto data = MakeStaticData();
    GeoUnit unit;
    const std::pair<const char*, double> units[] = {
        {"radian", 1.0}, {"degree", kPi / 180}, {"grad", kPi / 200}, {"arc-second", kPi / 648000}};
    for (const auto& [name, factor] : units) {
      ASSERT_TRUE(data->FindAngularUnit(name, unit)) << name;
      EXPECT_NEAR(unit.factor, factor, 1e-13 * factor) << name;
    }
    std::vector<GeoUnit> all;
    const int count = data->GetAngularUnits(all);
    EXPECT_EQ(count, static_cast<int>(all.size()));
    for (const GeoUnit& each : all) EXPECT_GT(each.factor, 0.0) << each.name;
  });
}

TEST(ProjStaticData, PrimeMeridiansAreDegreesEastOfGreenwich) {
  ExpectInHost([] {
    const auto data = MakeStaticData();
    GeoPrimeMeridian meridian;
    ASSERT_TRUE(data->FindPrimeMeridian("greenwich", meridian));
    EXPECT_EQ(meridian.longitude, 0.0);
    ASSERT_TRUE(data->FindPrimeMeridian("Paris", meridian));
    EXPECT_NEAR(meridian.longitude, 2.5969213 * 0.9, 1e-9) << "stored in grads";
    ASSERT_TRUE(data->FindPrimeMeridian("Ferro", meridian));
    EXPECT_NEAR(meridian.longitude, -Degrees(17, 40), 1e-9);
    std::vector<GeoPrimeMeridian> all;
    EXPECT_GT(data->GetPrimeMeridians(all), 10);
  });
}

TEST(ProjStaticData, WhatIsNotThereIsFalseAndLeavesTheOutput) {
  ExpectInHost([] {
    const auto data = MakeStaticData();
    GeoEllipsoid ellipsoid;
    ellipsoid.semiMajor = 5.0;
    for (const std::string& name :
         {std::string(), std::string("WGS"), std::string("EPSG:1"), std::string("\0", 1), std::string(100000, '[')}) {
      EXPECT_FALSE(data->FindEllipsoid(name, ellipsoid));
    }
    EXPECT_EQ(ellipsoid.semiMajor, 5.0);
    GeoPrimeMeridian meridian;
    EXPECT_FALSE(data->FindPrimeMeridian("Atlantis", meridian));
    GeoUnit unit;
    EXPECT_FALSE(data->FindAngularUnit("metre", unit));
  });
}

}  // namespace
