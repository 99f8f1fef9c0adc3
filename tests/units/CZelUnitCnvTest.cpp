#include "zelbase/units/CZelUnitCnv.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/errors/FixedWording.h"
#include "zelbase/frame/KeyTables.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr int kBadKinds[] = {-1, 24, 25, 1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};

// The rows as they are born, in the order of the kinds.
struct Row {
  const char* mnemonic;
  double power;
  bool tied;
};
constexpr Row kRows[24] = {{"", 1, true},
                           {"m", 1, true},
                           {"m/s", 1, true},
                           {"m", 1, true},
                           {"m", 1, true},
                           {"m\xB3", 3, true},
                           {"T/m\xB3", 3, true},
                           {"m/s", 1, true},
                           {"Ton/s", 1, false},
                           {"m", 1, true},
                           {"Bar", 1, false},
                           {"KW", 1, false},
                           {"T/min", 1, false},
                           {"Ton", 1, false},
                           {"\xB0"
                            "BU+",
                            1, false},
                           {"\xB0"
                            "PU+",
                            1, false},
                           {"", 1, true},
                           {"", 1, true},
                           {"m\xB3/s", 3, true},
                           {"\xB0", 1, false},
                           {"m\xB2", 2, true},
                           {"\xB0"
                            "C",
                            1, false},
                           {"mm", 1, true},
                           {"kgf", 1, false}};

bool SetPlain(CZelUnitCnv& units, int kind, double factor, double offset = 0.0) {
  return units.SetUnit(kind, factor, offset, "mnemonic", "key", "display name");
}

// Equal bits; any NaN equals any other.
bool Same(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}
bool Same(float a, float b) {
  return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b) || (std::isnan(a) && std::isnan(b));
}

// --- The table as it is born ---------------------------------------------------------------------------------------------

TEST(CZelUnitCnv, EveryRowBeginsWithItsDefaultUnit) {
  const CZelUnitCnv units;
  for (int kind = 0; kind < 24; ++kind) {
    double factor = -7;
    double offset = -7;
    std::string mnemonic = "?";
    std::string key = "?";
    std::string name = "?";
    EXPECT_TRUE(units.GetUnit(kind, factor, offset, mnemonic, key, name)) << kind;
    EXPECT_EQ(factor, 1.0) << kind;
    EXPECT_EQ(offset, 0.0) << kind;
    EXPECT_EQ(mnemonic, kRows[kind].mnemonic) << kind;
    EXPECT_EQ(key + name, "") << kind;
    EXPECT_EQ(units.GetUnitMnem(kind), kRows[kind].mnemonic) << kind;
    EXPECT_EQ(units.GetUnitKey(kind), "") << kind;
    EXPECT_EQ(units.GetUnitDispName(kind), "") << kind;
    EXPECT_EQ(units.ConvertUnit(kind, 12.5), 12.5) << kind;
    EXPECT_EQ(units.ConvertFromUnit(kind, 12.5), 12.5) << kind;
  }
}

// 2 to the power 1, 2 and 3 are exact, so that a System Units factor of 2 shows power and tie of every row.
TEST(CZelUnitCnv, EveryRowHasItsPowerAndItsTieToSystemUnits) {
  CZelUnitCnv units;
  EXPECT_TRUE(SetPlain(units, CZelUnitCnv::System, 2.0));
  for (int kind = 2; kind < 24; ++kind) {
    const double expected = !kRows[kind].tied ? 1.0 : kRows[kind].power == 1 ? 2.0 : kRows[kind].power == 2 ? 4.0 : 8.0;
    EXPECT_EQ(units.ConvertUnit(kind, 1.0), expected) << kind;
    EXPECT_EQ(units.ConvertFromUnit(kind, 1.0), 1.0 / expected) << kind;
  }
}

TEST(CZelUnitCnv, TheKindsStandInTheOrderOfTheirKeys) {
  const std::pair<int, const char*> kinds[] = {
      {CZelUnitCnv::NoUnit, "No Units"},
      {CZelUnitCnv::System, "System Units"},
      {CZelUnitCnv::Speed, "Speed Units"},
      {CZelUnitCnv::Distance, "Distance Units"},
      {CZelUnitCnv::Depth, "Depth Units"},
      {CZelUnitCnv::Volume, "Volume Units"},
      {CZelUnitCnv::Density, "Density Units"},
      {CZelUnitCnv::Velocity, "Velocity Units"},
      {CZelUnitCnv::Production, "Production Units"},
      {CZelUnitCnv::Height, "Height Units"},
      {CZelUnitCnv::Pressure, "Pressure Units"},
      {CZelUnitCnv::Power, "Power Units"},
      {CZelUnitCnv::Revolutions, "Revolutions Units"},
      {CZelUnitCnv::Weight, "Weight Units"},
      {CZelUnitCnv::Pitch, "Pitch Units"},
      {CZelUnitCnv::Roll, "Roll Units"},
      {CZelUnitCnv::Acceleration, "Acceleration Units"},
      {CZelUnitCnv::AngularRate, "Angular Rate Units"},
      {CZelUnitCnv::Delivery, "Delivery Units"},
      {CZelUnitCnv::Angular, "Angular Units"},
      {CZelUnitCnv::Area, "Area Units"},
      {CZelUnitCnv::Temperature, "Temperature Units"},
      {CZelUnitCnv::Paper, "Paper Units"},
      {CZelUnitCnv::Force, "Force Units"},
  };
  ASSERT_EQ(std::size(kinds), 24U);
  ASSERT_EQ(CZelUnitCnv::kNumKinds, 24);
  for (int i = 0; i < 24; ++i) {
    EXPECT_EQ(kinds[i].first, i);
    EXPECT_EQ(unitsParamKeys[i], kinds[i].second);
  }
}

// --- Choosing ------------------------------------------------------------------------------------------------------------

TEST(CZelUnitCnv, WhatWasSetIsWhatIsGot) {
  CZelUnitCnv units;
  for (int kind = 0; kind < 24; ++kind) {
    const std::string number = std::to_string(kind);
    EXPECT_TRUE(units.SetUnit(kind, kind + 0.5, -kind - 0.25, "m" + number, "k" + number, "d" + number));
  }
  for (int kind = 0; kind < 24; ++kind) {
    double factor = 0;
    double offset = 0;
    std::string mnemonic;
    std::string key;
    std::string name;
    EXPECT_TRUE(units.GetUnit(kind, factor, offset, mnemonic, key, name));
    EXPECT_EQ(factor, kind + 0.5);
    EXPECT_EQ(offset, -kind - 0.25);
    const std::string number = std::to_string(kind);
    EXPECT_EQ(mnemonic, "m" + number);
    EXPECT_EQ(key, "k" + number);
    EXPECT_EQ(name, "d" + number);
    EXPECT_EQ(units.GetUnitMnem(kind), "m" + number);
    EXPECT_EQ(units.GetUnitKey(kind), "k" + number);
    EXPECT_EQ(units.GetUnitDispName(kind), "d" + number);
  }
}

TEST(CZelUnitCnv, AKindWithoutARowDoesNoHarmAndTouchesNothing) {
  CZelUnitCnv units;
  for (const int kind : kBadKinds) {
    double factor = -7;
    double offset = -8;
    std::string mnemonic = "a";
    std::string key = "b";
    std::string name = "c";
    EXPECT_FALSE(SetPlain(units, kind, 0.3048)) << kind;
    EXPECT_FALSE(units.GetUnit(kind, factor, offset, mnemonic, key, name)) << kind;
    EXPECT_EQ(factor, -7);
    EXPECT_EQ(offset, -8);
    EXPECT_EQ(mnemonic + key + name, "abc");
    EXPECT_EQ(units.GetUnitMnem(kind), "");
    EXPECT_EQ(units.GetUnitKey(kind), "");
    EXPECT_EQ(units.GetUnitDispName(kind), "");
    EXPECT_EQ(units.ConvertUnit(kind, 1.25), 1.25);
    EXPECT_EQ(units.ConvertFromUnit(kind, 1.25), 1.25);
    EXPECT_EQ(units.ToInternalUnit(kind, 1.25, 2.0, 3.0), 1.25);
    EXPECT_EQ(units.ToExternalUnit(kind, 1.25, 2.0, 3.0), 1.25);
    EXPECT_EQ(units.ToInternalUnit(kind, 1.25F, 2.0, 3.0), 1.25F);
    EXPECT_EQ(units.ToExternalUnit(kind, 1.25F, 2.0, 3.0), 1.25F);
    EXPECT_TRUE(std::isnan(units.ConvertUnit(kind, kNaN)));
  }
  for (int kind = 0; kind < 24; ++kind) {
    EXPECT_EQ(units.GetUnitMnem(kind), kRows[kind].mnemonic);
    EXPECT_EQ(units.ConvertUnit(kind, 1.0), 1.0);
  }
}

// --- Conversion factors --------------------------------------------------------------------------------------------------

TEST(CZelUnitCnv, SystemUnitsRescaleADistance) {
  CZelUnitCnv units;
  SetPlain(units, 1, 0.3048);
  EXPECT_EQ(units.ConvertUnit(3, 1.0), 0.3048);
  SetPlain(units, 1, 1.0);
  EXPECT_EQ(units.ConvertUnit(3, 1.0), 1.0);
}

TEST(CZelUnitCnv, AVolumeTakesTheThirdPowerOfTheRatio) {
  CZelUnitCnv units;
  SetPlain(units, 1, 0.3048);
  EXPECT_EQ(units.ConvertUnit(5, 1.0), std::pow(0.3048, 3.0));
  SetPlain(units, 5, 0.3048);
  EXPECT_EQ(units.ConvertUnit(5, 1.0), 1.0);
  SetPlain(units, 5, 1.0);
  EXPECT_EQ(units.ConvertUnit(5, 1.0), std::pow(0.3048, 3.0));
  EXPECT_NEAR(units.ConvertUnit(5, 1.0), 0.028316846592, 1e-16);  // a cubic foot, by definition of the foot
}

TEST(CZelUnitCnv, AnAreaTakesTheSecondPowerOfTheRatio) {
  CZelUnitCnv units;
  SetPlain(units, CZelUnitCnv::Area, 0.5);
  EXPECT_EQ(units.ConvertUnit(CZelUnitCnv::Area, 1.0), 4.0);
}

TEST(CZelUnitCnv, APressureIgnoresSystemUnits) {
  CZelUnitCnv units;
  SetPlain(units, 1, 0.3048);
  SetPlain(units, CZelUnitCnv::Pressure, 0.5);
  EXPECT_EQ(units.ConvertUnit(CZelUnitCnv::Pressure, 1.0), 2.0);
}

TEST(CZelUnitCnv, ATemperatureIsShiftedByItsOffset) {
  CZelUnitCnv units;
  SetPlain(units, 21, 1.0, 273.15);
  EXPECT_EQ(units.ConvertUnit(21, 0.0), 273.15);
  EXPECT_EQ(units.ConvertFromUnit(21, 273.15), 0.0);
}

TEST(CZelUnitCnv, DensityHasThePowerOfAVolume) {
  CZelUnitCnv units;
  SetPlain(units, CZelUnitCnv::Density, 0.5);
  EXPECT_EQ(units.ConvertUnit(CZelUnitCnv::Density, 1.0), 8.0);
  SetPlain(units, CZelUnitCnv::System, 2.0);
  EXPECT_EQ(units.ConvertUnit(CZelUnitCnv::Density, 1.0), 64.0);
}

TEST(CZelUnitCnv, PaperAndAngularRateAreTiedToSystemUnits) {
  CZelUnitCnv units;
  SetPlain(units, CZelUnitCnv::System, 4.0);
  EXPECT_EQ(units.ConvertUnit(CZelUnitCnv::Paper, 1.0), 4.0);
  EXPECT_EQ(units.ConvertUnit(CZelUnitCnv::AngularRate, 1.0), 4.0);
}

TEST(CZelUnitCnv, AZeroUnitFactorGivesTheConversionFactorOne) {
  for (const double zero : {0.0, -0.0}) {
    CZelUnitCnv units;
    SetPlain(units, 1, 0.3048);
    for (int kind = 2; kind < 24; ++kind) {
      SetPlain(units, kind, zero);
      EXPECT_EQ(units.ConvertUnit(kind, 3.0), 3.0) << kind;
    }
  }
}

TEST(CZelUnitCnv, ATinyUnitFactorIsNotZero) {
  CZelUnitCnv units;
  SetPlain(units, CZelUnitCnv::Pressure, std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(units.ConvertUnit(CZelUnitCnv::Pressure, 1.0), kInfinity);
}

TEST(CZelUnitCnv, RowOneHasTheConversionFactorOneAlsoForZero) {
  CZelUnitCnv units;
  for (const double factor : {1.0, 0.3048, 0.0, -0.0, -3.0, 1e-300, 1e300, 0.1, 4.9e-324}) {
    SetPlain(units, 1, factor);
    EXPECT_EQ(units.ConvertUnit(1, 5.0), 5.0) << factor;
  }
}

TEST(CZelUnitCnv, RowOneHasNoNumberForAFactorThatIsNotFinite) {
  CZelUnitCnv units;
  for (const double factor : {kInfinity, -kInfinity, kNaN}) {
    SetPlain(units, 1, factor);
    EXPECT_TRUE(std::isnan(units.ConvertUnit(1, 5.0))) << factor;
  }
}

TEST(CZelUnitCnv, RowZeroKeepsItsFactorButTakesItsOffset) {
  CZelUnitCnv units;
  SetPlain(units, 1, 0.3048);
  SetPlain(units, 0, 0.5, 3.0);
  EXPECT_EQ(units.ConvertUnit(0, 10.0), 13.0);
  EXPECT_EQ(units.ConvertFromUnit(0, 13.0), 10.0);
}

TEST(CZelUnitCnv, RowZeroCountsAsTiedBetweenStatedUnits) {
  CZelUnitCnv units;
  SetPlain(units, 1, 2.0);
  SetPlain(units, 0, 0.5, 3.0);
  EXPECT_EQ(units.ToInternalUnit(0, 11.0, 4.0, 100.0), 116.0);  // (11 - 3) * 4 / 2 + 100
  EXPECT_EQ(units.ToExternalUnit(0, 116.0, 4.0, 100.0), 11.0);  // 2 * (116 - 100) / 4 + 3
}

TEST(CZelUnitCnv, AZeroSystemUnitsFactorIsNotGuardedForTheOthers) {
  CZelUnitCnv units;
  SetPlain(units, 1, 0.0);
  for (const int kind : {2, 3, 4, 5, 6, 7, 9, 16, 17, 18, 20, 22}) {
    EXPECT_EQ(units.ConvertUnit(kind, 5.0), 0.0) << kind;
    EXPECT_EQ(units.ConvertFromUnit(kind, 5.0), kInfinity) << kind;
    EXPECT_TRUE(std::isnan(units.ConvertFromUnit(kind, 0.0))) << kind;
    EXPECT_EQ(units.ToInternalUnit(kind, 5.0, 1.0, 0.0), kInfinity) << kind;
  }
  SetPlain(units, 3, 0.0);  // guarded by its own factor
  EXPECT_EQ(units.ConvertUnit(3, 5.0), 5.0);
  EXPECT_EQ(units.ConvertUnit(CZelUnitCnv::Weight, 5.0), 5.0);
}

TEST(CZelUnitCnv, SetUnitOnAnyRowComputesAll) {
  CZelUnitCnv units;
  SetPlain(units, 1, 3.0);
  SetPlain(units, 4, 2.0);
  SetPlain(units, 10, 8.0);
  EXPECT_EQ(units.ConvertUnit(4, 1.0), 1.5);
  EXPECT_EQ(units.ConvertUnit(5, 1.0), 27.0);
  EXPECT_EQ(units.ConvertUnit(10, 1.0), 0.125);
  SetPlain(units, 1, 1.0);
  EXPECT_EQ(units.ConvertUnit(4, 1.0), 0.5);
  EXPECT_EQ(units.ConvertUnit(5, 1.0), 1.0);
  EXPECT_EQ(units.ConvertUnit(10, 1.0), 0.125);
}

TEST(CZelUnitCnv, ANegativeFactorTurnsTheSign) {
  CZelUnitCnv units;
  SetPlain(units, CZelUnitCnv::Pitch, -1.0);
  EXPECT_EQ(units.ConvertUnit(CZelUnitCnv::Pitch, 2.5), -2.5);
  SetPlain(units, CZelUnitCnv::Volume, -1.0);
  EXPECT_EQ(units.ConvertUnit(CZelUnitCnv::Volume, 2.5), -2.5);
  SetPlain(units, CZelUnitCnv::Area, -1.0);
  EXPECT_EQ(units.ConvertUnit(CZelUnitCnv::Area, 2.5), 2.5);
}

// --- Between stated units ------------------------------------------------------------------------------------------------

TEST(CZelUnitCnv, TheRowsOwnUnitFactorHasNoPartBetweenStatedUnits) {
  CZelUnitCnv units;
  for (const int kind : {3, 5, 10, 21}) {
    const double inside = units.ToInternalUnit(kind, 7.0, 0.3048, 2.0);
    const double outside = units.ToExternalUnit(kind, 7.0, 0.3048, 2.0);
    SetPlain(units, kind, 123.0);
    EXPECT_EQ(units.ToInternalUnit(kind, 7.0, 0.3048, 2.0), inside) << kind;
    EXPECT_EQ(units.ToExternalUnit(kind, 7.0, 0.3048, 2.0), outside) << kind;
  }
}

TEST(CZelUnitCnv, BetweenStatedUnitsOfALength) {
  CZelUnitCnv units;
  SetPlain(units, 1, 2.0);
  SetPlain(units, 3, 9.0, 1.0);
  EXPECT_EQ(units.ToInternalUnit(3, 5.0, 8.0, 0.5), 16.5);  // (5 - 1) * 8 / 2 + 0.5
  EXPECT_EQ(units.ToExternalUnit(3, 16.5, 8.0, 0.5), 5.0);  // 2 * (16.5 - 0.5) / 8 + 1
  EXPECT_EQ(units.ToInternalUnit(3, 5.0F, 8.0, 0.5), 16.5F);
  EXPECT_EQ(units.ToExternalUnit(3, 16.5F, 8.0, 0.5), 5.0F);
}

TEST(CZelUnitCnv, BetweenStatedUnitsOfAVolumeAndAnArea) {
  CZelUnitCnv units;
  SetPlain(units, 1, 2.0);
  SetPlain(units, 5, 9.0, 1.0);
  EXPECT_EQ(units.ToInternalUnit(5, 5.0, 8.0, 0.5), 256.5);  // (8 / 2)^3 * (5 - 1) + 0.5
  EXPECT_EQ(units.ToExternalUnit(5, 256.5, 8.0, 0.5), 5.0);  // (2 / 8)^3 * (256.5 - 0.5) + 1
  SetPlain(units, 20, 9.0, 1.0);
  EXPECT_EQ(units.ToInternalUnit(20, 5.0, 8.0, 0.5), 64.5);
  EXPECT_EQ(units.ToExternalUnit(20, 64.5, 8.0, 0.5), 5.0);
  EXPECT_EQ(units.ToInternalUnit(20, 5.0F, 8.0, 0.5), 64.5F);
  EXPECT_EQ(units.ToExternalUnit(20, 64.5F, 8.0, 0.5), 5.0F);
}

TEST(CZelUnitCnv, BetweenStatedUnitsAPressureIgnoresSystemUnits) {
  CZelUnitCnv units;
  SetPlain(units, 1, 2.0);
  EXPECT_EQ(units.ToInternalUnit(10, 5.0, 8.0, 0.5), 40.5);
  EXPECT_EQ(units.ToExternalUnit(10, 40.5, 8.0, 0.5), 5.0);
}

TEST(CZelUnitCnv, AStatedFactorOfZeroIsNotGuarded) {
  const CZelUnitCnv units;
  EXPECT_EQ(units.ToExternalUnit(3, 5.0, 0.0, 0.0), kInfinity);
  EXPECT_EQ(units.ToExternalUnit(5, 5.0, 0.0, 0.0), kInfinity);
  EXPECT_TRUE(std::isnan(units.ToExternalUnit(3, 0.0, 0.0, 0.0)));
  EXPECT_EQ(units.ToInternalUnit(3, 5.0, 0.0, 0.0), 0.0);
  EXPECT_EQ(units.ToExternalUnit(3, -5.0F, 0.0, 0.0), -std::numeric_limits<float>::infinity());
}

// 0.1f is not 0.1: only a subtrahend that was rounded first leaves exactly nothing.
TEST(CZelUnitCnv, TheFloatFormsRoundTheSubtrahendFirst) {
  CZelUnitCnv units;
  SetPlain(units, 3, 1.0, 0.1);
  EXPECT_EQ(units.ToInternalUnit(3, 0.1F, 1e9, 0.0), 0.0F);
  EXPECT_NE(units.ToInternalUnit(3, static_cast<double>(0.1F), 1e9, 0.0), 0.0);
  SetPlain(units, 3, 1.0, 0.0);
  EXPECT_EQ(units.ToExternalUnit(3, 0.1F, 1e-9, 0.1), 0.0F);
  EXPECT_NE(units.ToExternalUnit(3, static_cast<double>(0.1F), 1e-9, 0.1), 0.0);
}

// 16777217 = 2^24 + 1 is not a float: a difference made in float is 2^24, one made in double is not.
TEST(CZelUnitCnv, TheFloatFormsSubtractInFloatAndGoOnInDouble) {
  CZelUnitCnv units;
  SetPlain(units, 3, 1.0, -1.0);
  EXPECT_EQ(units.ToInternalUnit(3, 16777216.0F, 1.0, -16777216.0), 0.0F);
  EXPECT_EQ(units.ToExternalUnit(3, 16777216.0F, 1.0, -1.0), 16777215.0F);
  // In double, 2^24 * (1 + 2^-30) - 2^24 keeps the 2^-6 that a product of floats would have lost.
  SetPlain(units, 3, 1.0, 0.0);
  EXPECT_EQ(units.ToInternalUnit(3, 16777216.0F, 1.0 + 0x1p-30, -16777216.0), 0x1p-6F);
}

TEST(CZelUnitCnv, AFloatBeyondItsRangeIsInfinite) {
  const CZelUnitCnv units;
  EXPECT_EQ(units.ToInternalUnit(3, 1e38F, 1e10, 0.0), std::numeric_limits<float>::infinity());
}

// --- Order of evaluation -------------------------------------------------------------------------------------------------

// The formulas once more, on plain arrays; nothing of the table is shared.
class SecondTable {
 public:
  SecondTable() {
    for (int i = 0; i < 24; ++i) factor[i] = conversion[i] = 1.0;
  }

  void Set(int kind, double unitFactor, double unitOffset) {
    factor[kind] = unitFactor;
    offset[kind] = unitOffset;
    for (int i = 1; i < 24; ++i) {
      if (factor[i] == 0.0) {
        conversion[i] = 1.0;
      } else if (kRows[i].power == 1.0) {
        conversion[i] = S(i) / factor[i];
      } else {
        conversion[i] = std::pow(S(i) / factor[i], kRows[i].power);
      }
    }
  }

  double Convert(int kind, double v) const {
    const double product = conversion[kind] * v;
    return product + offset[kind];
  }
  double ConvertFrom(int kind, double v) const {
    const double difference = v - offset[kind];
    return difference / conversion[kind];
  }
  double Internal(int kind, double d, double f, double o) const {
    const double first = kRows[kind].power == 1.0 ? d * f : std::pow(f / S(kind), kRows[kind].power);
    const double second = kRows[kind].power == 1.0 ? first / S(kind) : first * d;
    return second + o;
  }
  double External(int kind, double d, double f) const {
    const double first = kRows[kind].power == 1.0 ? S(kind) * d : std::pow(S(kind) / f, kRows[kind].power);
    const double second = kRows[kind].power == 1.0 ? first / f : first * d;
    return second + offset[kind];
  }
  double S(int kind) const { return kRows[kind].tied ? factor[1] : 1.0; }

  double factor[24];
  double conversion[24];
  double offset[24] = {};
};

void ExpectSameAnswers(const CZelUnitCnv& units, const SecondTable& second, double v, double f, double o) {
  const auto fv = static_cast<float>(v);
  for (int kind = 0; kind < 24; ++kind) {
    SCOPED_TRACE(testing::Message() << kind << ": " << v << ", " << f << ", " << o);
    ASSERT_TRUE(Same(units.ConvertUnit(kind, v), second.Convert(kind, v)));
    ASSERT_TRUE(Same(units.ConvertFromUnit(kind, v), second.ConvertFrom(kind, v)));
    ASSERT_TRUE(Same(units.ToInternalUnit(kind, v, f, o), second.Internal(kind, v - second.offset[kind], f, o)));
    ASSERT_TRUE(Same(units.ToExternalUnit(kind, v, f, o), second.External(kind, v - o, f)));
    const float inner = fv - static_cast<float>(second.offset[kind]);
    const float outer = fv - static_cast<float>(o);
    ASSERT_TRUE(Same(units.ToInternalUnit(kind, fv, f, o), static_cast<float>(second.Internal(kind, inner, f, o))));
    ASSERT_TRUE(Same(units.ToExternalUnit(kind, fv, f, o), static_cast<float>(second.External(kind, outer, f))));
  }
}

TEST(CZelUnitCnv, RandomChoicesGiveTheSameBitsAsTheFormulas) {
  SCOPED_TRACE("seed 131");
  std::mt19937_64 random(131);
  const double specials[] = {0.0, -0.0, 1.0, -1.0, 0.3048, 0.9144, 273.15, 1e-300, 1e300, 4.9e-324, kInfinity, -kInfinity, kNaN};
  std::uniform_real_distribution<double> ordinary(-2000.0, 2000.0);
  const auto number = [&] {
    const auto choice = random() % 8;
    if (choice == 0) return specials[random() % std::size(specials)];
    return choice == 1 ? std::ldexp(ordinary(random), 60) : ordinary(random);
  };
  for (int round = 0; round < 60; ++round) {
    CZelUnitCnv units;
    SecondTable second;
    for (int step = 0; step < 40; ++step) {
      const int kind = random() % 4 == 0 ? 1 : static_cast<int>(random() % 24);
      const double factor = number();
      const double offset = number();
      ASSERT_TRUE(SetPlain(units, kind, factor, offset));
      second.Set(kind, factor, offset);
      ASSERT_NO_FATAL_FAILURE(ExpectSameAnswers(units, second, number(), number(), number())) << round << " " << step;
    }
  }
}

// Another order would go unnoticed where it gives the same; here it often does not.
TEST(CZelUnitCnv, TheProductIsMadeBeforeTheQuotient) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> ordinary(0.1, 1000.0);
  CZelUnitCnv units;
  int internalDiffers = 0;
  int externalDiffers = 0;
  for (int i = 0; i < 1000; ++i) {
    const double system = ordinary(random);
    const double value = ordinary(random);
    const double factor = ordinary(random);
    SetPlain(units, 1, system);
    const double product = value * factor;
    EXPECT_TRUE(Same(units.ToInternalUnit(3, value, factor, 0.0), product / system));
    internalDiffers += product / system != value * (factor / system);
    const double scaled = system * value;
    EXPECT_TRUE(Same(units.ToExternalUnit(3, value, factor, 0.0), scaled / factor));
    externalDiffers += scaled / factor != value * (system / factor);
  }
  EXPECT_GT(internalDiffers, 100);
  EXPECT_GT(externalDiffers, 100);
}

// --- Format codes --------------------------------------------------------------------------------------------------------

TEST(CZelUnitCnv, FormatCodesNameKinds) {
  const std::map<int, int> kinds = {{2, 3},   {3, 2},   {4, 4},   {5, 1},   {6, 5},   {7, 6},   {8, 7},   {9, 8},
                                    {12, 18}, {35, 9},  {36, 10}, {37, 11}, {38, 12}, {39, 13}, {40, 14}, {41, 15},
                                    {42, 16}, {43, 17}, {47, 19}, {48, 21}, {49, 22}, {50, 23}};
  for (int code = -5; code <= 200; ++code) {
    const auto found = kinds.find(code);
    EXPECT_EQ(CZelUnitCnv::ConvertFMTtoUNIT(code), found == kinds.end() ? 0 : found->second) << code;
  }
  EXPECT_EQ(CZelUnitCnv::ConvertFMTtoUNIT(std::numeric_limits<int>::min()), 0);
  EXPECT_EQ(CZelUnitCnv::ConvertFMTtoUNIT(std::numeric_limits<int>::max()), 0);
}

TEST(CZelUnitCnv, AreaHasNoFormatCode) {
  for (int code = -5; code <= 200; ++code) EXPECT_NE(CZelUnitCnv::ConvertFMTtoUNIT(code), CZelUnitCnv::Area) << code;
}

TEST(CZelUnitCnv, FormatCodesHaveNames) {
  const std::pair<int, int> codes[] = {
      {CZelUnitCnv::FormatDistance, 2},     {CZelUnitCnv::FormatSpeed, 3},         {CZelUnitCnv::FormatDepth, 4},
      {CZelUnitCnv::FormatSystem, 5},       {CZelUnitCnv::FormatVolume, 6},        {CZelUnitCnv::FormatDensity, 7},
      {CZelUnitCnv::FormatVelocity, 8},     {CZelUnitCnv::FormatProduction, 9},    {CZelUnitCnv::FormatDelivery, 12},
      {CZelUnitCnv::FormatHeight, 35},      {CZelUnitCnv::FormatPressure, 36},     {CZelUnitCnv::FormatPower, 37},
      {CZelUnitCnv::FormatRevolutions, 38}, {CZelUnitCnv::FormatWeight, 39},       {CZelUnitCnv::FormatPitch, 40},
      {CZelUnitCnv::FormatRoll, 41},        {CZelUnitCnv::FormatAcceleration, 42}, {CZelUnitCnv::FormatAngularRate, 43},
      {CZelUnitCnv::FormatAngular, 47},     {CZelUnitCnv::FormatTemperature, 48},  {CZelUnitCnv::FormatPaper, 49},
      {CZelUnitCnv::FormatForce, 50}};
  for (const auto& [name, code] : codes) EXPECT_EQ(name, code);
}

// --- Language ------------------------------------------------------------------------------------------------------------

TEST(CZelUnitCnv, ALanguageCountsForObjectsThatMakeTheirTableLater) {
  CZelUnitCnv before;
  EXPECT_EQ(before.GetUnitMnem(13), "Ton");
  CZelUnitCnv unused;
  CZelUnitCnv chosen;
  chosen.SetUnit(13, 0.001, 0.0, "kg", "", "");
  {
    const NumberedTextsGuard guard({{12060, "t"}, {12049, "Meter"}, {12050, "Meter/s"}, {12065, ""}});
    EXPECT_EQ(before.GetUnitMnem(13), "Ton");
    EXPECT_EQ(chosen.GetUnitMnem(13), "kg");
    EXPECT_EQ(unused.GetUnitMnem(13), "t");
    for (const int kind : {1, 3, 4, 9}) EXPECT_EQ(unused.GetUnitMnem(kind), "Meter") << kind;
    for (const int kind : {2, 7}) EXPECT_EQ(unused.GetUnitMnem(kind), "Meter/s") << kind;
    EXPECT_EQ(unused.GetUnitMnem(23), "");
    EXPECT_EQ(unused.GetUnitMnem(22), "mm");  // the built-in text of one that the language lacks
    for (const int kind : {0, 16, 17}) EXPECT_EQ(unused.GetUnitMnem(kind), "") << kind;
  }
  EXPECT_EQ(unused.GetUnitMnem(13), "t");
  EXPECT_EQ(CZelUnitCnv().GetUnitMnem(13), "Ton");
}

TEST(CZelUnitCnv, AnyOperationMakesTheTableAlsoWithABadKind) {
  CZelUnitCnv asked;
  EXPECT_EQ(asked.ConvertUnit(-1, 2.0), 2.0);
  const NumberedTextsGuard guard({{12060, "t"}});
  EXPECT_EQ(asked.GetUnitMnem(13), "Ton");
}

TEST(CZelUnitCnv, ACopyOfAnUnusedObjectMakesATableOfItsOwn) {
  const CZelUnitCnv unused;
  const CZelUnitCnv copy(unused);
  EXPECT_EQ(unused.GetUnitMnem(13), "Ton");
  const NumberedTextsGuard guard({{12060, "t"}});
  EXPECT_EQ(copy.GetUnitMnem(13), "t");
}

// --- Copies --------------------------------------------------------------------------------------------------------------

TEST(CZelUnitCnv, CopiesAreIndependent) {
  CZelUnitCnv first;
  first.SetUnit(3, 0.3048, 0.0, "ft", "Foot", "International foot");
  CZelUnitCnv second(first);
  EXPECT_EQ(second.GetUnitDispName(3), "International foot");
  EXPECT_EQ(second.ConvertFromUnit(3, 1.0), first.ConvertFromUnit(3, 1.0));
  second.SetUnit(3, 2.0, 1.0, "x", "y", "z");
  EXPECT_EQ(first.GetUnitKey(3), "Foot");
  EXPECT_EQ(first.ConvertUnit(3, 0.3048), 1.0 / 0.3048 * 0.3048);
  first = second;
  EXPECT_EQ(first.GetUnitKey(3), "y");
  EXPECT_EQ(first.ConvertUnit(3, 4.0), 3.0);
  first = CZelUnitCnv();
  EXPECT_EQ(first.GetUnitMnem(3), "m");
  EXPECT_EQ(first.ConvertUnit(3, 4.0), 4.0);
}

TEST(CZelUnitCnv, SelfAssignmentChangesNothing) {
  CZelUnitCnv units;
  units.SetUnit(3, 0.5, 1.0, "a", "b", "c");
  CZelUnitCnv& same = units;
  units = same;
  EXPECT_EQ(units.GetUnitMnem(3), "a");
  EXPECT_EQ(units.ConvertUnit(3, 1.0), 3.0);
}

TEST(CZelUnitCnv, AnObjectThatWasMovedFromStillAnswers) {
  CZelUnitCnv units;
  units.SetUnit(3, 0.5, 0.0, "a", "b", "c");
  const CZelUnitCnv target(std::move(units));
  EXPECT_EQ(units.ConvertUnit(3, 1.0), 2.0);  // moving is copying here
  EXPECT_EQ(target.ConvertUnit(3, 1.0), 2.0);
}

// --- Threads -------------------------------------------------------------------------------------------------------------

TEST(CZelUnitCnv, SeveralThreadsReadAfterTheFirstCall) {
  CZelUnitCnv units;
  units.SetUnit(4, 0.5, 1.0, "half", "Half", "Half a metre");
  std::vector<std::thread> threads;
  std::vector<int> right(4, 0);
  for (std::size_t t = 0; t < right.size(); ++t) {
    threads.emplace_back([&units, &mine = right[t]] {
      double factor = 0;
      double offset = 0;
      std::string mnemonic;
      std::string key;
      std::string name;
      for (int i = 0; i < 500; ++i) {
        mine += units.ConvertUnit(4, i) == 2.0 * i + 1.0 && units.ConvertFromUnit(4, 2.0 * i + 1.0) == i &&
                units.ToInternalUnit(4, i + 1.0, 2.0, 0.0) == 2.0 * i && units.GetUnitMnem(4) == "half" &&
                units.GetUnit(4, factor, offset, mnemonic, key, name) && name == "Half a metre";
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(right, std::vector<int>(4, 500));
}

}  // namespace
