// Coordinate systems by PROJ, held against published worked examples, closed forms and a projection written down here.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "tests/adapters/GeodesyHost.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kRadian = 3.14159265358979323846 / 180.0;

// A system by its code; a failure of the test when there is none.
std::unique_ptr<GeoCoordSys> Selected(const std::string& code) {
  auto system = MakeSystem();
  EXPECT_TRUE(system != nullptr && system->Select(code)) << code << ": " << (system != nullptr ? system->Reason() : "no plug-in");
  return system;
}

struct Example {
  const char* code;
  double latitude, longitude;  // degrees
  double easting, northing;    // in the system's own unit, x to the east, y to the north
  double tolerance;            // in the same unit: the examples are rounded
};

// Both ways; back to what the tolerance is on the ground.
void ExpectExample(const Example& example) {
  SCOPED_TRACE(example.code);
  const auto system = Selected(example.code);
  double easting = 0.0, northing = 0.0, latitude = 0.0, longitude = 0.0, unit = 0.0;
  ASSERT_TRUE(system->Forward(example.latitude, example.longitude, easting, northing));
  EXPECT_NEAR(easting, example.easting, example.tolerance);
  EXPECT_NEAR(northing, example.northing, example.tolerance);
  ASSERT_TRUE(system->GetLinearUnit(unit));
  ASSERT_TRUE(system->Inverse(example.easting, example.northing, latitude, longitude));
  const double onTheGround = example.tolerance * unit / 111000.0;
  EXPECT_NEAR(latitude, example.latitude, 2 * onTheGround);
  EXPECT_NEAR(longitude, example.longitude, 2 * onTheGround / std::cos(example.latitude * kRadian));
}

// From the EPSG guidance note 7-2, one for each method of projection.
TEST(ProjCoordSys, PublishedWorkedExamples) {
  ExpectInHost([] {
    // Rounds the scale factor at the central meridian, 0.9996012717, to 0.9996013.
    ExpectExample(
        {"+proj=tmerc +lat_0=49 +lon_0=-2 +k=0.9996013 +x_0=400000 +y_0=-100000 +ellps=airy", 50.5, 0.5, 577274.99, 69740.50, 0.006});
    ExpectExample({"EPSG:27700", 50.5, 0.5, 577274.99, 69740.50, 0.01});
    ExpectExample({"EPSG:32040", 28.5, -96.0, 2963503.91, 254759.80, 0.006});
    ExpectExample({"EPSG:24200", Degrees(17, 55, 55.80), -Degrees(76, 56, 37.26), 255966.58, 142493.51, 0.006});
    ExpectExample({"EPSG:3002", -3.0, 120.0, 5009726.58, 569150.82, 0.006});
    ExpectExample({"EPSG:3388", 53.0, 53.0, 165704.29, 5171848.07, 0.006});
    ExpectExample({"EPSG:29873", Degrees(5, 23, 14.1129), Degrees(115, 48, 19.8196), 679245.73, 596562.78, 0.006});
    ExpectExample({"EPSG:30200", 10.0, -62.0, 66644.94, 82536.22, 0.006});
    ExpectExample({"EPSG:28992", 53.0, 6.0, 196105.283, 557057.739, 0.0006});
    ExpectExample({"EPSG:3035", 50.0, 5.0, 3962799.45, 2999718.85, 0.006});
    ExpectExample({"EPSG:5041", 73.0, 44.0, 3320416.75, 632668.43, 0.006});
  });
}

// The axes of these go to the south and west, and in the first the southing stands in front.
TEST(ProjCoordSys, XGoesEastAndYNorthWhateverTheSystemsOwnAxes) {
  ExpectInHost([] {
    ExpectExample({"EPSG:2065", Degrees(50, 12, 32.442), Degrees(16, 50, 59.179), -568991.00, -1050538.64, 0.02});
    ExpectExample({"EPSG:2053", -Degrees(25, 43, 55.302), Degrees(28, 16, 57.479), -71984.49, -2847342.74, 0.02});
    ExpectExample({"EPSG:32661", 73.0, 44.0, 3320416.75, 632668.43, 0.006});
  });
}

// Its base has grads from Paris; the point is the origin of the grid.
TEST(ProjCoordSys, LatitudesAndLongitudesAreDegreesFromGreenwichWhateverTheSystemsBase) {
  ExpectInHost([] {
    const double paris = 2.5969213 * 0.9;
    ExpectExample({"EPSG:27571", 55 * 0.9, paris, 600000.0, 1200000.0, 1e-6});
    const auto system = Selected("EPSG:4807");
    double x = 0.0, y = 0.0, unit = 0.0;
    ASSERT_TRUE(system->Forward(45.0, paris + 9.0, x, y));
    EXPECT_NEAR(x, 10.0, 1e-12) << "grads from Paris";
    EXPECT_NEAR(y, 50.0, 1e-12);
    ASSERT_TRUE(system->GetAngularUnit(unit));
    EXPECT_NEAR(unit, kRadian * 0.9, 1e-16);
    double latitude = 0.0, longitude = 0.0;
    ASSERT_TRUE(system->Inverse(10.0, 50.0, latitude, longitude));
    EXPECT_NEAR(latitude, 45.0, 1e-12);
    EXPECT_NEAR(longitude, paris + 9.0, 1e-12);
  });
}

// Krüger's series of the transverse Mercator projection, to the sixth power of the third flattening, on WGS 84; zone 31.
struct Place {
  double easting, northing;
};

Place Utm31(double latitude, double longitude) {
  constexpr double a = 6378137.0, f = 1.0 / 298.257223563, k0 = 0.9996;
  const double n = f / (2 - f), n2 = n * n, n3 = n2 * n, n4 = n3 * n, n5 = n4 * n, n6 = n5 * n;
  const double alpha[] = {n / 2 - 2 * n2 / 3 + 5 * n3 / 16 + 41 * n4 / 180 - 127 * n5 / 288 + 7891 * n6 / 37800,
                          13 * n2 / 48 - 3 * n3 / 5 + 557 * n4 / 1440 + 281 * n5 / 630 - 1983433 * n6 / 1935360,
                          61 * n3 / 240 - 103 * n4 / 140 + 15061 * n5 / 26880 + 167603 * n6 / 181440,
                          49561 * n4 / 161280 - 179 * n5 / 168 + 6601661 * n6 / 7257600,
                          34729 * n5 / 80640 - 3418889 * n6 / 1995840,
                          212378941 * n6 / 319334400};
  const double radius = a / (1 + n) * (1 + n2 / 4 + n4 / 64 + n6 / 256);
  const double e = std::sqrt(f * (2 - f)), sine = std::sin(latitude * kRadian), lambda = (longitude - 3.0) * kRadian;
  const double t = std::sinh(std::atanh(sine) - e * std::atanh(e * sine));
  const double xi = std::atan2(t, std::cos(lambda)), eta = std::asinh(std::sin(lambda) / std::hypot(t, std::cos(lambda)));
  double north = xi, east = eta;
  for (int i = 1; i <= 6; ++i) {
    north += alpha[i - 1] * std::sin(2 * i * xi) * std::cosh(2 * i * eta);
    east += alpha[i - 1] * std::cos(2 * i * xi) * std::sinh(2 * i * eta);
  }
  return {500000.0 + k0 * radius * east, k0 * radius * north};
}

TEST(ProjCoordSys, UtmIsKruegersSeries) {
  ExpectInHost([] {
    const auto system = Selected("EPSG:32631");
    std::mt19937 random(31);
    std::uniform_real_distribution<double> latitudes(0.0, 84.0), longitudes(0.0, 6.0);
    for (int i = 0; i < 2000; ++i) {
      const double latitude = latitudes(random), longitude = longitudes(random);
      const Place expected = Utm31(latitude, longitude);
      double easting = 0.0, northing = 0.0;
      ASSERT_TRUE(system->Forward(latitude, longitude, easting, northing));
      ASSERT_NEAR(easting, expected.easting, 1e-6) << latitude << ' ' << longitude;
      ASSERT_NEAR(northing, expected.northing, 1e-6) << latitude << ' ' << longitude;
    }
  });
}

TEST(ProjCoordSys, OnTheCentralMeridianAndTheEquatorUtmIsExact) {
  ExpectInHost([] {
    const auto system = Selected("EPSG:32731");
    double easting = 0.0, northing = 0.0;
    ASSERT_TRUE(system->Forward(0.0, 3.0, easting, northing));
    EXPECT_NEAR(easting, 500000.0, 1e-9);
    EXPECT_NEAR(northing, 10000000.0, 1e-9) << "the south has its own false northing";
  });
}

TEST(ProjCoordSys, WhatGoesForwardComesBack) {
  ExpectInHost([] {
    struct Region {
      const char* code;
      double south, north, west, east;
    };
    const Region regions[] = {{"EPSG:32631", -80, 84, 0, 6},
                              {"EPSG:28992", 50.7, 53.7, 3.2, 7.3},
                              {"EPSG:27700", 49.8, 61, -9, 2},
                              {"EPSG:2229", 32.8, 35.9, -121, -114},
                              {"EPSG:27571", 48.1, 51.2, -4.9, 8.2},
                              {"EPSG:2065", 47.7, 51.1, 12, 22.6},
                              {"EPSG:3031", -89.9, -60, -179.9, 179.9},
                              {"EPSG:4326", -90, 90, -180, 180},
                              {"EPSG:2193", -47.4, -34, 166.3, 178.6}};
    std::mt19937 random(9);
    std::uniform_real_distribution<double> share(0.0, 1.0);
    for (const Region& region : regions) {
      const auto system = Selected(region.code);
      for (int i = 0; i < 500; ++i) {
        const double latitude = region.south + share(random) * (region.north - region.south);
        const double longitude = region.west + share(random) * (region.east - region.west);
        double easting = 0.0, northing = 0.0, latitudeBack = 0.0, longitudeBack = 0.0;
        ASSERT_TRUE(system->Forward(latitude, longitude, easting, northing)) << region.code;
        ASSERT_TRUE(system->Inverse(easting, northing, latitudeBack, longitudeBack)) << region.code;
        ASSERT_NEAR(latitudeBack, latitude, 1e-9) << region.code;
        ASSERT_NEAR(longitudeBack, longitude, 1e-9) << region.code;
      }
    }
  });
}

TEST(ProjCoordSys, LinearUnitsAreMetresAUnit) {
  ExpectInHost([] {
    const std::pair<const char*, double> units[] = {
        {"EPSG:32631", 1.0}, {"EPSG:2229", 1200.0 / 3937.0}, {"EPSG:2222", 0.3048}, {"EPSG:30200", 0.201166195164}};
    for (const auto& [code, expected] : units) {
      double unit = 0.0;
      EXPECT_TRUE(Selected(code)->GetLinearUnit(unit));
      EXPECT_DOUBLE_EQ(unit, expected) << code;
    }
    EXPECT_EQ(Selected("EPSG:2229")->UnitName(), "US survey foot");
    EXPECT_EQ(Selected("EPSG:2222")->UnitName(), "foot");
  });
}

TEST(ProjCoordSys, AGeographicSystemHasDegreesAndALinearUnitOfOne) {
  ExpectInHost([] {
    const auto system = Selected("EPSG:4326");
    double unit = 5.0, angle = 5.0, x = 0.0, y = 0.0;
    EXPECT_TRUE(system->GetLinearUnit(unit));
    EXPECT_EQ(unit, 1.0);
    EXPECT_TRUE(system->GetAngularUnit(angle));
    EXPECT_DOUBLE_EQ(angle, kRadian);
    EXPECT_EQ(system->UnitName(), "degree");
    ASSERT_TRUE(system->Forward(52.5, 4.25, x, y));
    EXPECT_EQ(x, 4.25) << "x is the longitude though the system has the latitude in front";
    EXPECT_EQ(y, 52.5);
    angle = 5.0;
    EXPECT_FALSE(Selected("EPSG:32631")->GetAngularUnit(angle));
    EXPECT_EQ(angle, 5.0);
  });
}

TEST(ProjCoordSys, TellsWhatItIs) {
  ExpectInHost([] {
    const auto system = Selected("epsg:32631");
    EXPECT_EQ(system->Code(), "EPSG:32631");
    EXPECT_EQ(system->Name(), "WGS 84 / UTM zone 31N");
    EXPECT_EQ(system->Kind(), GeoCoordSysKind::Projected);
    EXPECT_EQ(system->Reason(), "");
    GeoArea area;
    ASSERT_TRUE(system->GetAreaOfUse(area));
    EXPECT_TRUE(area.hasBounds);
    EXPECT_EQ(area.west, 0.0);
    EXPECT_EQ(area.east, 6.0);
    EXPECT_EQ(area.south, 0.0);
    EXPECT_EQ(area.north, 84.0);
    EXPECT_NE(area.name.find('\xB0'), std::string::npos) << "the degree sign is one byte: " << area.name;
    EXPECT_EQ(Selected("EPSG:4326")->Kind(), GeoCoordSysKind::Geographic);
    EXPECT_EQ(Selected("EPSG:4979")->Kind(), GeoCoordSysKind::Geographic);
  });
}

TEST(ProjCoordSys, OfASystemWithHeightsTheHorizontalPartCounts) {
  ExpectInHost([] {
    const auto system = Selected("EPSG:7405");
    EXPECT_EQ(system->Code(), "EPSG:7405");
    EXPECT_EQ(system->Kind(), GeoCoordSysKind::Projected);
    ExpectExample({"EPSG:7405", 50.5, 0.5, 577274.99, 69740.50, 0.01});
  });
}

TEST(ProjCoordSys, BeforeASelectionEverythingIsFalseAndUntouched) {
  ExpectInHost([] {
    const auto system = MakeSystem();
    double a = 7.0, b = 8.0;
    GeoArea area;
    GeoConversionInfo info;
    EXPECT_FALSE(system->GetLinearUnit(a));
    EXPECT_FALSE(system->GetAngularUnit(a));
    EXPECT_FALSE(system->Forward(52.0, 4.0, a, b));
    EXPECT_FALSE(system->Inverse(500000.0, 5000000.0, a, b));
    EXPECT_FALSE(system->Convert(1.0, 2.0, a, b));
    EXPECT_FALSE(system->SelectTarget("EPSG:4326"));
    EXPECT_EQ(system->Reason(), "no coordinate system has been selected");
    EXPECT_FALSE(system->GetAreaOfUse(area));
    EXPECT_FALSE(system->GetConversionInfo(info));
    EXPECT_EQ(a, 7.0);
    EXPECT_EQ(b, 8.0);
    EXPECT_EQ(system->Code() + system->Name() + system->UnitName(), "");
    EXPECT_EQ(system->Kind(), GeoCoordSysKind::None);
  });
}

const std::vector<std::string>& RefusedCodes() {
  static const std::vector<std::string> codes = {
      "",
      ":",
      "EPSG",
      "EPSG:",
      ":4326",
      "EPSG:99999999",
      "NOSUCH:4326",
      "EPSG:4326 ",
      "EPSG:43 26",
      "EPSG:32631:1",
      "4326",
      "EPSG:-1",
      "EPSG:4978",  // geocentric
      "EPSG:5703",  // heights only
      "EPSG:7030",  // an ellipsoid
      "EPSG:2218",  // a conic projection with west in front, which PROJ lacks
      std::string("EPSG:4326\0x", 11),
      std::string(100, 'A') + ":1",
      "EPSG:'; drop table crs_view;--",
      "%s%s%n:%d",
      "\xFF\xFE:\x80",
      "+proj=",
      "+proj=nonsense",
      "+proj=utm",
      "+proj=pipeline +step +proj=axisswap +order=2,1",
      "+proj=longlat +nadgrids=/dev/zero",
      "+init=epsg:4326",
      "+proj=utm +zone=31 +init=/etc/passwd:x",
      "GEOGCRS[",
      "PROJCS[\"x\"]",
      std::string(70000, '['),
      std::string(60000, '['),
      "[" + std::string(3000, '\xE9') + "]",
      "BOUNDCRS[SOURCECRS[GEOGCRS[\"x\"]],ABRIDGEDTRANSFORMATION[\"x\",PARAMETERFILE[\"f\",\"/dev/zero\"]]]"};
  return codes;
}

TEST(ProjCoordSys, AnyTextThatIsNoSystemIsRefusedWithAReasonAndLeavesTheFormerOne) {
  ExpectInHost([] {
    const auto system = Selected("EPSG:32631");
    for (const std::string& code : RefusedCodes()) {
      EXPECT_FALSE(system->Select(code)) << code.substr(0, 60);
      EXPECT_NE(system->Reason(), "") << code.substr(0, 60);
      EXPECT_FALSE(system->SelectTarget(code)) << code.substr(0, 60);
      EXPECT_EQ(system->Code(), "EPSG:32631");
    }
    double easting = 0.0, northing = 0.0;
    EXPECT_TRUE(system->Forward(52.0, 3.0, easting, northing));
    EXPECT_TRUE(system->Select("EPSG:4326"));
    EXPECT_EQ(system->Reason(), "");
  });
}

TEST(ProjCoordSys, RandomTextIsRefusedOrTakenButNeverHarmful) {
  ExpectInHost([] {
    const auto system = MakeSystem();
    std::mt19937 random(4);
    const std::string parts[] = {"EPSG", ":", "4326",    "+proj=", "utm",  " ",      "+zone=",  "31",   "[", "]",
                                 "\"",   ",", "GEOGCRS", "DATUM",  "\xB0", "-1e999", "+ellps=", "airy", "="};
    for (int i = 0; i < 300; ++i) {
      std::string text;
      for (auto count = random() % 12; count > 0; --count) text += parts[random() % std::size(parts)];
      const bool taken = system->Select(text);
      EXPECT_EQ(taken, system->Reason().empty()) << text;
    }
  });
}

TEST(ProjCoordSys, PositionsOffTheGlobeAreFalseAndLeaveTheOutputs) {
  ExpectInHost([] {
    for (const char* const code : {"EPSG:32631", "EPSG:4326", "EPSG:28992", "EPSG:3857", "EPSG:27571"}) {
      const auto system = Selected(code);
      ASSERT_TRUE(system->SelectTarget("EPSG:4258")) << system->Reason();
      double a = 7.0, b = 8.0;
      for (const double bad : {kNaN, kInfinity, -kInfinity, 1e300, -1e300}) {
        EXPECT_FALSE(system->Forward(bad, 4.0, a, b)) << code;
        EXPECT_FALSE(system->Forward(52.0, bad, a, b)) << code;
      }
      for (const double bad : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_FALSE(system->Inverse(bad, 1.0, a, b)) << code;
        EXPECT_FALSE(system->Inverse(1.0, bad, a, b)) << code;
        EXPECT_FALSE(system->Convert(bad, 1.0, a, b)) << code;
        EXPECT_FALSE(system->Convert(1.0, bad, a, b)) << code;
      }
      EXPECT_FALSE(system->Forward(90.0001, 4.0, a, b)) << code;
      EXPECT_FALSE(system->Forward(-90.0001, 4.0, a, b)) << code;
      EXPECT_FALSE(system->Forward(52.0, 360.1, a, b)) << code;
      EXPECT_EQ(a, 7.0);
      EXPECT_EQ(b, 8.0);
      EXPECT_TRUE(system->Forward(52.0, 4.0, a, b)) << "a failure stays no longer than its call";
    }
    double a = 7.0, b = 8.0;
    EXPECT_FALSE(Selected("EPSG:32040")->Forward(-90.0, 0.0, a, b)) << "the other pole is infinitely far in Lambert's projection";
    EXPECT_FALSE(Selected("EPSG:4326")->Inverse(0.0, 90.5, a, b));
    EXPECT_FALSE(Selected("EPSG:4326")->Inverse(361.0, 0.0, a, b));
    EXPECT_EQ(a, 7.0);
    EXPECT_EQ(b, 8.0);
  });
}

TEST(ProjCoordSys, HugeEastingsAreAnsweredOneWayOrTheOther) {
  ExpectInHost([] {
    for (const char* const code : {"EPSG:32631", "EPSG:28992", "EPSG:27700", "EPSG:3031", "EPSG:32040", "EPSG:29873", "EPSG:3035"}) {
      const auto system = Selected(code);
      for (const double far : {1e7, 1e9, 1e15, 1e100, 1e300, -1e300}) {
        double latitude = 99.0, longitude = 999.0;
        if (system->Inverse(far, -far, latitude, longitude)) {
          EXPECT_LE(std::abs(latitude), 90.0 + 1e-9) << code << ' ' << far;
          EXPECT_LE(std::abs(longitude), 180.0) << code << ' ' << far;
        } else {
          EXPECT_EQ(latitude, 99.0);
          EXPECT_EQ(longitude, 999.0);
        }
      }
    }
  });
}

TEST(ProjCoordSys, ALongitudeComesBackWithinAHalfTurn) {
  ExpectInHost([] {
    const auto system = Selected("EPSG:4326");
    double latitude = 0.0, longitude = 0.0;
    ASSERT_TRUE(system->Inverse(200.0, 10.0, latitude, longitude));
    EXPECT_NEAR(longitude, -160.0, 1e-12);
    ASSERT_TRUE(system->Inverse(-350.0, 10.0, latitude, longitude));
    EXPECT_NEAR(longitude, 10.0, 1e-12);
    const auto utm = Selected("EPSG:32660");
    double e1 = 0.0, n1 = 0.0, e2 = 0.0, n2 = 0.0;
    ASSERT_TRUE(utm->Forward(10.0, 179.0, e1, n1));
    ASSERT_TRUE(utm->Forward(10.0, -181.0, e2, n2));
    EXPECT_NEAR(e1, e2, 1e-6);
    EXPECT_NEAR(n1, n2, 1e-6);
  });
}

// ---- a definition instead of a code ----

TEST(ProjCoordSys, ADefinitionIsTakenForACode) {
  ExpectInHost([] {
    const auto system = Selected("+proj=utm +zone=31 +ellps=WGS84");
    EXPECT_EQ(system->Code(), "");
    EXPECT_EQ(system->Kind(), GeoCoordSysKind::Projected);
    double easting = 0.0, northing = 0.0;
    ASSERT_TRUE(system->Forward(52.0, 4.5, easting, northing));
    const Place expected = Utm31(52.0, 4.5);
    EXPECT_NEAR(easting, expected.easting, 1e-6);
    EXPECT_NEAR(northing, expected.northing, 1e-6);
    const auto wkt = Selected(
        "GEOGCS[\"Gr\xFC\xDF"
        "e\",DATUM[\"D\",SPHEROID[\"S\",6378137,298.257223563]],PRIMEM[\"Greenwich\",0],UNIT[\"degree\",0.0174532925199433]]");
    EXPECT_EQ(wkt->Kind(), GeoCoordSysKind::Geographic);
    EXPECT_EQ(wkt->Name(),
              "Gr\xFC\xDF"
              "e");
  });
}

// The three parameters are its own; towards WGS 84 they hold, on its own datum they do not.
TEST(ProjCoordSys, ADefinitionMayBringItsShift) {
  ExpectInHost([] {
    const auto system = Selected("+proj=longlat +ellps=WGS84 +towgs84=0,0,100");
    double x = 0.0, y = 0.0;
    ASSERT_TRUE(system->Forward(0.0, 10.0, x, y));
    EXPECT_EQ(x, 10.0);
    EXPECT_EQ(y, 0.0);
    ASSERT_TRUE(system->SelectTarget("EPSG:4326")) << system->Reason();
    ASSERT_TRUE(system->Convert(10.0, 0.0, x, y));
    // On the equator a shift of 100 m along the earth's axis is one along the meridian, whose radius of curvature is a(1-e^2).
    const double e2 = (2.0 - 1.0 / 298.257223563) / 298.257223563;
    EXPECT_NEAR(y, 100.0 / (6378137.0 * (1 - e2)) / kRadian, 1e-8);
    EXPECT_NEAR(x, 10.0, 1e-9);
  });
}

// ---- conversions ----

TEST(ProjCoordSys, OnOneDatumAConversionIsInverseAndForward) {
  ExpectInHost([] {
    const auto from = Selected("EPSG:32631"), to = Selected("EPSG:32632");
    ASSERT_TRUE(from->SelectTarget("EPSG:32632"));
    double x = 0.0, y = 0.0, latitude = 0.0, longitude = 0.0, easting = 0.0, northing = 0.0;
    ASSERT_TRUE(from->Convert(700000.0, 5800000.0, x, y));
    ASSERT_TRUE(from->Inverse(700000.0, 5800000.0, latitude, longitude));
    ASSERT_TRUE(to->Forward(latitude, longitude, easting, northing));
    EXPECT_NEAR(x, easting, 1e-6);
    EXPECT_NEAR(y, northing, 1e-6);
    GeoConversionInfo info;
    ASSERT_TRUE(from->GetConversionInfo(info));
    EXPECT_EQ(info.accuracy, 0.0);
    EXPECT_NE(info.description.find("UTM zone 32N"), std::string::npos) << info.description;
  });
}

// Holland's parameters as published with Amersfoort to WGS 84 (4): a shift of about 100 m, and the tower of Amersfoort.
TEST(ProjCoordSys, FromOneDatumToAnotherThereIsAShiftAndItsAccuracyIsTold) {
  ExpectInHost([] {
    const auto system = Selected("EPSG:28992");
    ASSERT_TRUE(system->SelectTarget("EPSG:4326"));
    double longitude = 0.0, latitude = 0.0;
    ASSERT_TRUE(system->Convert(155000.0, 463000.0, longitude, latitude));
    EXPECT_NEAR(latitude, Degrees(52, 9, 18.62), 0.5 / 3600);
    EXPECT_NEAR(longitude, Degrees(5, 23, 13.93), 0.8 / 3600);
    GeoConversionInfo info;
    ASSERT_TRUE(system->GetConversionInfo(info));
    EXPECT_EQ(info.accuracy, 1.0);
    double back = 0.0, up = 0.0, x = 0.0, y = 0.0;
    ASSERT_TRUE(system->Select("EPSG:4326") && system->SelectTarget("EPSG:28992"));
    ASSERT_TRUE(system->Convert(longitude, latitude, back, up));
    EXPECT_NEAR(back, 155000.0, 1e-3);
    EXPECT_NEAR(up, 463000.0, 1e-3);
    EXPECT_FALSE(system->Select("nothing"));
    EXPECT_TRUE(system->Convert(longitude, latitude, x, y)) << "a failed selection leaves the target, too";
    ASSERT_TRUE(system->Select("EPSG:4258"));
    EXPECT_FALSE(system->Convert(longitude, latitude, x, y)) << "a new system has none yet";
  });
}

TEST(ProjCoordSys, WithoutAKnownWayThereIsNoConversion) {
  ExpectInHost([] {
    const auto system = Selected("+proj=longlat +a=6378000 +b=6356000");
    EXPECT_FALSE(system->SelectTarget("EPSG:4326"));
    EXPECT_NE(system->Reason().find("no way is known"), std::string::npos) << system->Reason();
    double x = 7.0, y = 8.0;
    EXPECT_FALSE(system->Convert(4.0, 52.0, x, y));
    EXPECT_EQ(x, 7.0);
  });
}

TEST(ProjCoordSys, ConversionsTakeAndGiveXEastAndYNorth) {
  ExpectInHost([] {
    const auto system = Selected("EPSG:2053");
    ASSERT_TRUE(system->SelectTarget("EPSG:4148"));
    double longitude = 0.0, latitude = 0.0, x = 0.0, y = 0.0;
    ASSERT_TRUE(system->Convert(-71984.49, -2847342.74, longitude, latitude));
    EXPECT_NEAR(latitude, -Degrees(25, 43, 55.302), 2e-7);
    EXPECT_NEAR(longitude, Degrees(28, 16, 57.479), 2e-7);
    ASSERT_TRUE(system->Select("EPSG:4148") && system->SelectTarget("EPSG:2053"));
    ASSERT_TRUE(system->Convert(longitude, latitude, x, y));
    EXPECT_NEAR(x, -71984.49, 1e-4);
    EXPECT_NEAR(y, -2847342.74, 1e-4);
  });
}

// ---- quiet, and apart from each other ----

TEST(ProjCoordSys, NothingIsEverPrinted) {
  ChildProcess child([] {
    if (!LoadPlugin()) return 2;
    const auto system = MakeSystem();
    double a = 0.0, b = 0.0;
    for (const std::string& code : RefusedCodes()) system->Select(code);
    if (!system->Select("EPSG:32631")) return 3;
    for (const double bad : {kNaN, 1e300}) {
      system->Forward(bad, bad, a, b);
      system->Inverse(bad, bad, a, b);
    }
    return 0;
  });
  EXPECT_EQ(child.Wait(), 0);
  EXPECT_EQ(child.OutputText(), "");
  EXPECT_EQ(child.ErrorText(), "");
}

TEST(ProjCoordSys, ObjectsOfTheirOwnWorkOnThreadsAtTheSameTime) {
  ExpectInHost([] {
    std::vector<double> eastings(4), northings(4);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < eastings.size(); ++i) {
      threads.emplace_back([i, &eastings, &northings] {
        const auto system = MakeSystem();
        for (int turn = 0; turn < 3; ++turn) {
          if (!system->Select("EPSG:32631") || !system->SelectTarget("EPSG:28992")) return;
          for (int j = 0; j < 200; ++j) system->Forward(52.0, 4.5, eastings[i], northings[i]);
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
    const Place expected = Utm31(52.0, 4.5);
    for (std::size_t i = 0; i < eastings.size(); ++i) {
      EXPECT_NEAR(eastings[i], expected.easting, 1e-6);
      EXPECT_NEAR(northings[i], expected.northing, 1e-6);
    }
  });
}

TEST(GeoArea, ContainsItsEdgeAndGoesRoundTheGlobe) {
  GeoArea area{"", true, 170.0, -10.0, -170.0, 10.0};
  EXPECT_TRUE(area.Contains(0.0, 180.0));
  EXPECT_TRUE(area.Contains(0.0, -180.0));
  EXPECT_TRUE(area.Contains(10.0, 170.0));
  EXPECT_TRUE(area.Contains(0.0, 190.0)) << "the same as -170";
  EXPECT_FALSE(area.Contains(0.0, 0.0));
  EXPECT_FALSE(area.Contains(11.0, 180.0));
  area = {"", true, -6.0, 50.0, 2.0, 60.0};
  EXPECT_TRUE(area.Contains(55.0, 359.0));
  EXPECT_FALSE(area.Contains(55.0, 3.0));
  EXPECT_FALSE(area.Contains(kNaN, 0.0));
  EXPECT_FALSE(area.Contains(55.0, kNaN));
  EXPECT_TRUE(GeoArea{}.Contains(55.0, 3.0)) << "nothing is known";
}

}  // namespace
