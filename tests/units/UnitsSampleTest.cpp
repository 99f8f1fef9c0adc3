// The sample catalogue, unit by unit: what it makes of quantities whose size in both units is known from elsewhere.

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "tests/support/SourceFolder.h"
#include "zelbase/config/SettingsReport.h"
#include "zelbase/platform/CFile.h"
#include "zelbase/units/CZelUnitCnv.h"
#include "zelbase/units/UnitDefinition.h"

namespace {

using U = CZelUnitCnv;

// `inside`, in the unit of the suite, reads as `shown` in the unit.
struct Known {
  int code;
  const char* key;
  double inside;
  double shown;
};

constexpr Known kKnown[] = {
    {U::FormatSpeed, "MetrePerSecond", 3.5, 3.5},
    {U::FormatSpeed, "Knot", 1.0, 1.943844492},  // and an hour of one knot is a mile of 1852 m
    {U::FormatSpeed, "Knot", 1852.0 / 3600.0, 1.0},
    {U::FormatSpeed, "KilometrePerHour", 10.0, 36.0},
    {U::FormatSpeed, "FootPerSecond", 1.0, 3.280839895},
    {U::FormatSpeed, "MetrePerMinute", 1.0, 60.0},
    {U::FormatSpeed, "MilePerHour", 1.0, 2.236936292},

    {U::FormatDistance, "Metre", 12.25, 12.25},
    {U::FormatDistance, "Kilometre", 1500.0, 1.5},
    {U::FormatDistance, "Centimetre", 1.5, 150.0},
    {U::FormatDistance, "Foot", 1.0, 3.280839895},
    {U::FormatDistance, "USSurveyFoot", 1200.0, 3937.0},
    {U::FormatDistance, "Yard", 1.0, 1.093613298},
    {U::FormatDistance, "Fathom", 1.0, 0.546806649},
    {U::FormatDistance, "Cable", 1852.0, 10.0},
    {U::FormatDistance, "NauticalMile", 3704.0, 2.0},
    {U::FormatDistance, "StatuteMile", 1609.344, 1.0},

    {U::FormatDepth, "Metre", 12.25, 12.25},
    {U::FormatDepth, "Decimetre", 1.25, 12.5},
    {U::FormatDepth, "Centimetre", 1.25, 125.0},
    {U::FormatDepth, "Foot", 3.048, 10.0},
    {U::FormatDepth, "USSurveyFoot", 12.0, 39.37},
    {U::FormatDepth, "Fathom", 1.0, 0.546806649},
    {U::FormatDepth, "Fathom", 182.88, 100.0},

    {U::FormatVolume, "CubicMetre", 5.0, 5.0},
    {U::FormatVolume, "CubicYard", 1.0, 1.307950619},
    {U::FormatVolume, "CubicYard", 0.764554857984, 1.0},  // 0.9144 cubed
    {U::FormatVolume, "CubicFoot", 1.0, 35.31466672},
    {U::FormatVolume, "Litre", 1.0, 1000.0},
    {U::FormatVolume, "USGallon", 0.003785411784, 1.0},
    {U::FormatVolume, "ThousandCubicMetres", 2500.0, 2.5},

    {U::FormatDensity, "TonPerCubicMetre", 1.025, 1.025},
    {U::FormatDensity, "KilogramPerCubicMetre", 1.025, 1025.0},
    {U::FormatDensity, "GramPerCubicCentimetre", 2.65, 2.65},
    {U::FormatDensity, "KilogramPerLitre", 2.65, 2.65},
    {U::FormatDensity, "PoundPerCubicFoot", 1.0, 62.42796058},
    {U::FormatDensity, "PoundPerCubicYard", 1.0, 1685.554936},

    {U::FormatVelocity, "MetrePerSecond", 1500.0, 1500.0},
    {U::FormatVelocity, "CentimetrePerSecond", 1.5, 150.0},
    {U::FormatVelocity, "FootPerSecond", 1.0, 3.280839895},
    {U::FormatVelocity, "FootPerMinute", 1.0, 196.8503937},
    {U::FormatVelocity, "KilometrePerHour", 10.0, 36.0},
    {U::FormatVelocity, "Knot", 1.0, 1.943844492},

    {U::FormatProduction, "TonPerSecond", 2.0, 2.0},
    {U::FormatProduction, "TonPerMinute", 1.0, 60.0},
    {U::FormatProduction, "TonPerHour", 1.0, 3600.0},
    {U::FormatProduction, "KilogramPerSecond", 1.0, 1000.0},
    {U::FormatProduction, "LongTonPerHour", 1.0, 3543.143501},   // 3600 / 1.0160469088
    {U::FormatProduction, "ShortTonPerHour", 1.0, 3968.320719},  // 3600 / 0.90718474
    {U::FormatProduction, "PoundPerSecond", 1.0, 2204.622622},

    {U::FormatHeight, "Metre", 2.5, 2.5},
    {U::FormatHeight, "Centimetre", 2.5, 250.0},
    {U::FormatHeight, "Millimetre", 2.5, 2500.0},
    {U::FormatHeight, "Foot", 3.048, 10.0},
    {U::FormatHeight, "USSurveyFoot", 12.0, 39.37},
    {U::FormatHeight, "Inch", 2.54, 100.0},

    {U::FormatPressure, "Bar", 2.5, 2.5},
    {U::FormatPressure, "Millibar", 1.01325, 1013.25},
    {U::FormatPressure, "Pascal", 1.0, 100000.0},
    {U::FormatPressure, "Hectopascal", 1.01325, 1013.25},
    {U::FormatPressure, "Kilopascal", 1.0, 100.0},
    {U::FormatPressure, "Megapascal", 25.0, 2.5},
    {U::FormatPressure, "PoundPerSquareInch", 1.0, 14.50377377},
    {U::FormatPressure, "StandardAtmosphere", 1.01325, 1.0},
    {U::FormatPressure, "TechnicalAtmosphere", 1.0, 1.019716213},
    {U::FormatPressure, "MetreOfWater", 1.0, 10.19716213},

    {U::FormatPower, "Kilowatt", 750.0, 750.0},
    {U::FormatPower, "Watt", 1.5, 1500.0},
    {U::FormatPower, "Megawatt", 1500.0, 1.5},
    {U::FormatPower, "MetricHorsepower", 1.0, 1.359621617},
    {U::FormatPower, "Horsepower", 1.0, 1.341022090},

    {U::FormatRevolutions, "TurnPerMinute", 120.0, 120.0},
    {U::FormatRevolutions, "TurnPerSecond", 120.0, 2.0},
    {U::FormatRevolutions, "DegreePerSecond", 10.0, 60.0},
    {U::FormatRevolutions, "RadianPerSecond", 60.0, 6.283185307},

    {U::FormatWeight, "Ton", 3.0, 3.0},
    {U::FormatWeight, "Kilogram", 1.0, 1000.0},
    {U::FormatWeight, "Gram", 0.5, 500000.0},
    {U::FormatWeight, "Pound", 1.0, 2204.622622},
    {U::FormatWeight, "LongTon", 1.0, 0.9842065276},
    {U::FormatWeight, "ShortTon", 1.0, 1.102311311},

    {U::FormatPitch, "DegreeBowUp", 2.5, 2.5},
    {U::FormatPitch, "DegreeBowDown", 2.5, -2.5},
    {U::FormatPitch, "RadianBowUp", 180.0, 3.141592654},
    {U::FormatPitch, "MilliradianBowUp", 1.0, 17.45329252},

    {U::FormatRoll, "DegreePortUp", 2.5, 2.5},
    {U::FormatRoll, "DegreePortDown", 2.5, -2.5},
    {U::FormatRoll, "RadianPortUp", 180.0, 3.141592654},
    {U::FormatRoll, "MilliradianPortUp", 1.0, 17.45329252},

    {U::FormatAcceleration, "MetrePerSecondSquared", 2.0, 2.0},
    {U::FormatAcceleration, "FootPerSecondSquared", 9.80665, 32.17404856},
    {U::FormatAcceleration, "StandardGravity", 9.80665, 1.0},
    {U::FormatAcceleration, "Gal", 9.80665, 980.665},

    {U::FormatAngularRate, "DegreePerSecond", 2.0, 2.0},
    {U::FormatAngularRate, "DegreePerMinute", 1.0, 60.0},
    {U::FormatAngularRate, "RadianPerSecond", 180.0, 3.141592654},
    {U::FormatAngularRate, "MilliradianPerSecond", 1.0, 17.45329252},

    {U::FormatDelivery, "CubicMetrePerSecond", 2.0, 2.0},
    {U::FormatDelivery, "CubicMetrePerMinute", 1.0, 60.0},
    {U::FormatDelivery, "CubicMetrePerHour", 1.0, 3600.0},
    {U::FormatDelivery, "LitrePerSecond", 1.0, 1000.0},
    {U::FormatDelivery, "CubicYardPerHour", 1.0, 4708.622230},  // 1.3079506193 * 3600
    {U::FormatDelivery, "CubicFootPerSecond", 1.0, 35.31466672},
    {U::FormatDelivery, "USGallonPerMinute", 1.0, 15850.32314},

    {U::FormatTemperature, "Celsius", 21.5, 21.5},
    {U::FormatTemperature, "Fahrenheit", 10.0, 50.0},
    {U::FormatTemperature, "Fahrenheit", 100.0, 212.0},
    {U::FormatTemperature, "Fahrenheit", -40.0, -40.0},
    {U::FormatTemperature, "Kelvin", 0.0, 273.15},

    {U::FormatPaper, "Millimetre", 210.0, 210.0},
    {U::FormatPaper, "Centimetre", 210.0, 21.0},
    {U::FormatPaper, "Inch", 215.9, 8.5},
    {U::FormatPaper, "Point", 25.4, 72.0},

    {U::FormatForce, "KilogramForce", 100.0, 100.0},
    {U::FormatForce, "TonForce", 2500.0, 2.5},
    {U::FormatForce, "Newton", 1.0, 9.80665},
    {U::FormatForce, "Kilonewton", 1000.0, 9.80665},
    {U::FormatForce, "PoundForce", 1.0, 2.204622622},
    {U::FormatForce, "LongTonForce", 1016.0469088, 1.0},
};

struct Unit {
  std::string key;
  std::string name;
  std::string mnemonic;
  double factor = std::nan("");
  double offset = std::nan("");
};

class UnitsSample : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(m_catalogue.FileOpen(Path(), CFile::modeRead | CFile::shareDenyWrite)); }

  static std::string Path() { return SourceFolder() + "/samples/common/VESOK/ZELCORE/Units.uni"; }

  // Every unit of a group; each must be complete.
  std::map<std::string, Unit> Group(int code) {
    std::map<std::string, Unit> units;
    Unit unit;
    for (bool more = m_catalogue.GetFirstGroupItem(code, unit.key, unit.name, unit.factor, unit.offset, unit.mnemonic); more;
         more = m_catalogue.GetNextGroupItem(unit.key, unit.name, unit.factor, unit.offset, unit.mnemonic)) {
      units[unit.key] = unit;
      unit = Unit();
    }
    int count = 0;  // stays when there is no group
    m_catalogue.GetGroupNumItems(code, count);
    EXPECT_EQ(static_cast<int>(units.size()), count) << "the walk over " << code << " ends early";
    return units;
  }

  void Choose(CZelUnitCnv& units, int code, const std::string& key) const {
    Unit unit;
    ASSERT_TRUE(m_catalogue.GetGroupItemData(code, key, unit.name, unit.factor, unit.offset, unit.mnemonic)) << key;
    units.SetUnit(U::ConvertFMTtoUNIT(code), unit.factor, unit.offset, unit.mnemonic, key, unit.name);
  }

  UnitDefinition m_catalogue;
};

void ExpectRelative(double value, double expected, double tolerance) { EXPECT_NEAR(value, expected, std::abs(expected) * tolerance); }

// The handbooks' values above have ten digits.
TEST_F(UnitsSample, EveryUnitConvertsAsTheHandbooksSay) {
  for (const Known& known : kKnown) {
    SCOPED_TRACE(std::to_string(known.code) + " " + known.key);
    CZelUnitCnv units;
    ASSERT_NO_FATAL_FAILURE(Choose(units, known.code, known.key));
    const int kind = U::ConvertFMTtoUNIT(known.code);
    ExpectRelative(units.ConvertUnit(kind, known.inside), known.shown, 6e-10);
    EXPECT_NEAR(units.ConvertFromUnit(kind, known.shown), known.inside, std::abs(known.inside) * 6e-10 + 1e-12);
  }
}

TEST_F(UnitsSample, NoUnitIsLeftOut) {
  std::map<int, std::set<std::string>> known;
  for (const Known& row : kKnown) known[row.code].insert(row.key);
  known[U::FormatSystem] = {"Metre", "Foot", "USSurveyFoot"};  // below
  for (int code = 0; code <= 60; ++code) {
    std::string name;
    std::set<std::string> keys;
    if (m_catalogue.GetGroupName(code, name)) {
      for (const auto& [key, unit] : Group(code)) keys.insert(key);
      EXPECT_FALSE(keys.empty()) << name;
    }
    EXPECT_EQ(keys, known[code]) << code << " " << name;
  }
}

TEST_F(UnitsSample, EveryUnitIsComplete) {
  for (int code = 0; code <= 60; ++code) {
    std::set<std::string> mnemonics;
    for (const auto& [key, unit] : Group(code)) {
      EXPECT_TRUE(std::isfinite(unit.factor) && unit.factor != 0.0) << key;
      EXPECT_TRUE(std::isfinite(unit.offset)) << key;
      EXPECT_FALSE(unit.mnemonic.empty()) << key;
      EXPECT_FALSE(unit.name.empty()) << key;
      EXPECT_TRUE(mnemonics.insert(unit.mnemonic).second) << "twice: " << unit.mnemonic;
    }
  }
}

// What a table begins with can be chosen again.
TEST_F(UnitsSample, TheBaseUnitOfEachGroupIsTheDefault) {
  const CZelUnitCnv defaults;
  for (int code = 0; code <= 60; ++code) {
    const std::string mnemonic = defaults.GetUnitMnem(U::ConvertFMTtoUNIT(code));
    const std::map<std::string, Unit> units = Group(code);
    if (units.empty() || mnemonic.empty()) continue;
    int found = 0;
    for (const auto& [key, unit] : units) found += unit.mnemonic == mnemonic && unit.factor == 1.0 && unit.offset == 0.0;
    EXPECT_EQ(found, 1) << code << " " << mnemonic;
  }
}

// With lengths held in feet, a hundred of them read as 30.48 m, and a cubic yard has 27 of their cubes.
TEST_F(UnitsSample, SystemUnitsInFeetRescaleLengthsAndVolumes) {
  const struct {
    const char* key;
    double size;
  } systems[] = {{"Metre", 1.0}, {"Foot", 0.3048}, {"USSurveyFoot", 1200.0 / 3937.0}};
  for (const auto& system : systems) {
    CZelUnitCnv units;
    ASSERT_NO_FATAL_FAILURE(Choose(units, U::FormatSystem, system.key));
    ASSERT_NO_FATAL_FAILURE(Choose(units, U::FormatDistance, "Metre"));
    ASSERT_NO_FATAL_FAILURE(Choose(units, U::FormatVolume, "CubicYard"));
    ASSERT_NO_FATAL_FAILURE(Choose(units, U::FormatDelivery, "CubicMetrePerHour"));
    ASSERT_NO_FATAL_FAILURE(Choose(units, U::FormatPressure, "Kilopascal"));
    const double cube = system.size * system.size * system.size;
    ExpectRelative(units.ConvertUnit(U::Distance, 100.0), 100.0 * system.size, 1e-14);
    ExpectRelative(units.ConvertUnit(U::Volume, 27.0), 27.0 * cube / 0.764554857984, 1e-14);
    ExpectRelative(units.ConvertUnit(U::Delivery, 2.0), 2.0 * cube * 3600.0, 1e-14);
    ExpectRelative(units.ConvertUnit(U::Pressure, 1.0), 100.0, 1e-14);  // not tied
    EXPECT_EQ(units.ConvertUnit(U::System, 5.0), 5.0);
  }
}

TEST_F(UnitsSample, NothingIsLostInReading) {
  SettingsReport report;
  ASSERT_TRUE(report.ReadFile(Path()));
  for (const SettingsFinding& finding : report.Findings()) {
    EXPECT_EQ(finding.severity, SettingsSeverity::Note) << finding.line << ": " << SettingsReport::Message(finding);
  }
  EXPECT_EQ(report.NumSections(), 21);  // all groups but No, Angular and Area Units
}

TEST_F(UnitsSample, MnemonicsAreWindows1252) {
  EXPECT_EQ(Group(U::FormatVolume)["CubicMetre"].mnemonic, "m\xB3");
  EXPECT_EQ(Group(U::FormatAcceleration)["MetrePerSecondSquared"].mnemonic, "m/s\xB2");
  EXPECT_EQ(Group(U::FormatTemperature)["Celsius"].mnemonic,
            "\xB0"
            "C");
  EXPECT_EQ(Group(U::FormatPitch)["DegreeBowUp"].mnemonic,
            "\xB0"
            "BU+");
}

}  // namespace
