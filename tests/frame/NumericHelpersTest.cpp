#include "zelbase/frame/NumericHelpers.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// A second transcription of the search for decimals, with the remainder taken by fmod.
int DecimalsByRemainder(double x) {
  double v = std::fabs(x);
  int i = 0;
  while (i < 16) {
    const double hundred = v * 100;
    const double e = std::fabs(hundred * 2.220446049250313e-16);
    const double r = std::fmod(v, 1);
    const bool between = e < r && r < 1 - e;
    if (!between) break;
    v = v * 10;
    ++i;
  }
  return i;
}

TEST(NumericHelpers, Double125IsAStepOfTheSeries) {
  EXPECT_EQ(Double125(0), 1);
  EXPECT_EQ(Double125(-0.0), 1);
  EXPECT_EQ(Double125(1), 1);
  EXPECT_EQ(Double125(1.5), 1);
  EXPECT_EQ(Double125(1.5000001), 2);
  EXPECT_EQ(Double125(3), 2);
  EXPECT_EQ(Double125(3.1), 5);
  EXPECT_EQ(Double125(7), 5);
  EXPECT_EQ(Double125(7.1), 10);
  EXPECT_EQ(Double125(9.99), 10);
  EXPECT_EQ(Double125(10), 10);
  EXPECT_EQ(Double125(4711), 5000);
  EXPECT_EQ(Double125(0.03), 0.02);
  EXPECT_EQ(Double125(1e300), 1e300);
}

TEST(NumericHelpers, Double125DividesByThePowerSoThatSevenHundredthsGoUp) {
  EXPECT_EQ(Double125(0.07), 10 * 0.01);
  EXPECT_EQ(Double125(0.15), 0.1);
}

TEST(NumericHelpers, Double125OfANegativeIsPositive) {
  EXPECT_EQ(Double125(-4), 5);
  EXPECT_EQ(Double125(-0.03), 0.02);
}

TEST(NumericHelpers, Double125OfWhatIsNotFiniteIsQuiet) {
  EXPECT_TRUE(std::isnan(Double125(kNan)));
  EXPECT_EQ(Double125(kInfinity), kInfinity);
  EXPECT_EQ(Double125(-kInfinity), kInfinity);
}

TEST(NumericHelpers, TimeIntervalFollowsItsTable) {
  struct Row {
    double below;
    double at;
    double step;
  };
  // The last value before each bound, the bound itself, and the step below it.
  double next = 0;
  const Row rows[] = {{44.9, 45, 30},           {89.9, 90, 60},          {179.9, 180, 120},       {449.9, 450, 300},
                      {1199.9, 1200, 600},      {2699.9, 2700, 1800},    {5399.9, 5400, 3600},    {10799.9, 10800, 7200},
                      {17999.9, 18000, 14400},  {25199.9, 25200, 21600}, {32399.9, 32400, 28800}, {64799.9, 64800, 43200},
                      {129599.9, 129600, 86400}};
  for (const Row& row : rows) {
    EXPECT_EQ(TimeInterval(row.below), row.step);
    if (next != 0) {
      EXPECT_EQ(TimeInterval(next), row.step) << next;
    }
    next = row.at;
  }
}

TEST(NumericHelpers, TimeIntervalUpToFifteenIsAStepOfTheSeries) {
  EXPECT_EQ(TimeInterval(15), 10);
  EXPECT_EQ(TimeInterval(std::nextafter(15.0, 16.0)), 30);
  EXPECT_EQ(TimeInterval(4), 5);
  EXPECT_EQ(TimeInterval(0), 1);
  EXPECT_EQ(TimeInterval(-100), 100);
}

TEST(NumericHelpers, TimeIntervalFromOneAndAHalfDaysCountsDays) {
  EXPECT_EQ(TimeInterval(129600), 86400);
  EXPECT_EQ(TimeInterval(129601), 2 * 86400);
  EXPECT_EQ(TimeInterval(4 * 86400), 5 * 86400);
  EXPECT_EQ(TimeInterval(30 * 86400), 20 * 86400);
  EXPECT_TRUE(std::isnan(TimeInterval(kNan)));
  EXPECT_EQ(TimeInterval(kInfinity), kInfinity);
}

TEST(NumericHelpers, MinuteIntervalIsTheNextFiveMinutes) {
  EXPECT_EQ(MinuteInterval(0), 0);
  for (int m = 1; m < 60; ++m) {
    int step = 5;
    while (step < m && step < 55) step += 5;
    EXPECT_EQ(MinuteInterval(m), step) << m;
  }
  EXPECT_EQ(MinuteInterval(60), 0);
  EXPECT_EQ(MinuteInterval(INT_MAX), 0);
}

TEST(NumericHelpers, MinuteIntervalOfANegativeIsFive) {
  EXPECT_EQ(MinuteInterval(-1), 5);
  EXPECT_EQ(MinuteInterval(INT_MIN), 5);
}

TEST(NumericHelpers, RoundDoubleGoesUpAtAHalf) {
  EXPECT_EQ(RoundDouble(-0.5), 0);
  EXPECT_EQ(RoundDouble(0.5), 1);
  EXPECT_EQ(RoundDouble(2.5), 3);
  EXPECT_EQ(RoundDouble(-2.5), -2);
  EXPECT_EQ(RoundDouble(-2.6), -3);
}

TEST(NumericHelpers, RoundDoubleAddsTheHalfFirstSoThatJustBelowAHalfIsOne) { EXPECT_EQ(RoundDouble(0.49999999999999994), 1); }

TEST(NumericHelpers, RoundDoubleStaysIn32Bits) {
  EXPECT_EQ(RoundDouble(2147483647.0), 2147483647L);
  EXPECT_EQ(RoundDouble(2147483647.4), 2147483647L);
  EXPECT_EQ(RoundDouble(2147483648.0), 2147483647L);
  EXPECT_EQ(RoundDouble(1e300), 2147483647L);
  EXPECT_EQ(RoundDouble(kInfinity), 2147483647L);
  EXPECT_EQ(RoundDouble(-2147483648.0), -2147483647L - 1);
  EXPECT_EQ(RoundDouble(-2147483649.0), -2147483647L - 1);
  EXPECT_EQ(RoundDouble(-1e300), -2147483647L - 1);
  EXPECT_EQ(RoundDouble(kNan), -2147483647L - 1);
}

TEST(NumericHelpers, RoundGoesAwayFromZeroAtAHalf) {
  EXPECT_EQ(Round(-2.5, 0), -3);
  EXPECT_EQ(Round(2.5, 0), 3);
  EXPECT_EQ(Round(2.49, 0), 2);
  EXPECT_EQ(Round(0.125, 2), 0.13);
  EXPECT_EQ(Round(-0.125, 2), -0.13);
  EXPECT_EQ(Round(1234.5678, 3), 1234.568);
  EXPECT_EQ(Round(1.0 / 3, 10), 0.3333333333);
}

TEST(NumericHelpers, RoundToNegativeDigitsRoundsToTens) {
  EXPECT_EQ(Round(1250, -2), 13 / 0.01);
  EXPECT_EQ(Round(-14, -1), -1 / 0.1);
  EXPECT_EQ(Round(4, -1), 0);
}

TEST(NumericHelpers, RoundGoesByTheFormulaAndNotByTheDecimalText) {
  EXPECT_EQ(Round(1.005, 2), 1);
  EXPECT_EQ(Round(0.49999999999999994, 0), 1);
}

TEST(NumericHelpers, RoundPassesLargeValuesAndExtremeDigitsInSilence) {
  EXPECT_EQ(Round(1e300, 0), 1e300);
  EXPECT_EQ(Round(-1e300, 0), -1e300);
  EXPECT_NEAR(Round(1e300, -300), 1e300, 1e286);  // the power itself is rounded at each squaring
  EXPECT_TRUE(std::isnan(Round(1.0, INT_MAX)));   // infinity by infinity
  EXPECT_TRUE(std::isnan(Round(1.0, INT_MIN)));   // nothing by nothing
  EXPECT_TRUE(std::isnan(Round(kNan, 2)));
  EXPECT_EQ(Round(kInfinity, 2), kInfinity);
}

TEST(NumericHelpers, EpsilonIsRelativeAndPositive) {
  EXPECT_EQ(Epsilon(1), std::numeric_limits<double>::epsilon());
  EXPECT_EQ(Epsilon(-1024), std::ldexp(1.0, -42));
  EXPECT_EQ(Epsilon(0), 0);
}

TEST(NumericHelpers, GetDoublePrecisionShowsTheValueFully) {
  EXPECT_EQ(GetDoublePrecision(0), 0);
  EXPECT_EQ(GetDoublePrecision(1234.0), 0);
  EXPECT_EQ(GetDoublePrecision(0.5), 1);
  EXPECT_EQ(GetDoublePrecision(-0.25), 2);
  EXPECT_EQ(GetDoublePrecision(3.14), 2);
  EXPECT_EQ(GetDoublePrecision(0.1 + 0.2), 1);
  EXPECT_EQ(GetDoublePrecision(599999.123), 3);
  EXPECT_EQ(GetDoublePrecision(1.0 / 3), 14);  // 33333333333333.332: 100 steps of its size are 0.74
  EXPECT_EQ(GetDoublePrecision(1e-20), 16);
  EXPECT_EQ(GetDoublePrecision(1e300), 0);
}

TEST(NumericHelpers, GetDoublePrecisionOfWhatIsNotFiniteIsZero) {
  EXPECT_EQ(GetDoublePrecision(kNan), 0);
  EXPECT_EQ(GetDoublePrecision(kInfinity), 0);
  EXPECT_EQ(GetDoublePrecision(-kInfinity), 0);
}

TEST(NumericHelpers, GetDoublePrecisionEqualsASecondTranscription) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 300'000; ++i) {
    const auto bits = random();
    const double any = std::bit_cast<double>(bits);
    const double decimal = static_cast<double>(static_cast<std::int32_t>(bits)) / std::pow(10.0, static_cast<double>(bits >> 61));
    ASSERT_EQ(GetDoublePrecision(any), DecimalsByRemainder(any)) << any;
    ASSERT_EQ(GetDoublePrecision(decimal), DecimalsByRemainder(decimal)) << decimal;
  }
}

TEST(NumericHelpers, GetSensiblePrecisionStopsAtWhatCanBeSeen) {
  EXPECT_EQ(GetSensiblePrecision(3.14159, 1000, 1), 0);  // 10 units
  EXPECT_EQ(GetSensiblePrecision(3.14159, 100, 1), 0);   // 1 unit
  EXPECT_EQ(GetSensiblePrecision(3.14159, 50, 1), 1);    // 0.5
  EXPECT_EQ(GetSensiblePrecision(3.14159, 50, 0.1), 2);  // 0.05
  EXPECT_EQ(GetSensiblePrecision(3.5, 50, 0.01), 1);     // the value has no more
  EXPECT_EQ(GetSensiblePrecision(3, 1, 1), 0);
  EXPECT_EQ(GetSensiblePrecision(3.14159, -50, 1), 1);
  EXPECT_EQ(GetSensiblePrecision(1e-20, 0, 1), 16);
  EXPECT_EQ(GetSensiblePrecision(3.14, kNan, 1), 2);
  EXPECT_EQ(GetSensiblePrecision(kNan, 0.01, 1), 0);
}

TEST(NumericHelpers, DmsToDegTakesItsSignFromTheDegrees) {
  EXPECT_EQ(DmsToDeg(-1, 30, 0), -1.5);
  EXPECT_EQ(DmsToDeg(1, 30, 0), 1.5);
  EXPECT_EQ(DmsToDeg(10, 15, 36), 10 + (36.0 / 60 + 15) / 60);
  EXPECT_EQ(DmsToDeg(INT_MIN, 0, 0), -2147483648.0);
}

TEST(NumericHelpers, DmsToDegBetweenMinusOneAndZeroLosesItsSign) { EXPECT_EQ(DmsToDeg(-0, 30, 0), 0.5); }

TEST(NumericHelpers, DegToDmTruncatesTowardsZero) {
  int d = 7;
  double m = 7;
  DegToDm(52.75, d, m);
  EXPECT_EQ(d, 52);
  EXPECT_EQ(m, 45);
  DegToDm(-52.75, d, m);
  EXPECT_EQ(d, -52);
  EXPECT_EQ(m, 45);
}

TEST(NumericHelpers, DegToDmOfMinusHalfADegreeLosesItsSign) {
  int d = 7;
  double m = 7;
  DegToDm(-0.5, d, m);
  EXPECT_EQ(d, 0);
  EXPECT_EQ(m, 30);
}

TEST(NumericHelpers, DegToDmsSplitsTheMinutesToo) {
  int d = 7;
  int m = 7;
  double s = 7;
  DegToDms(-1.50390625, d, m,
           s);  // 0.50390625 degrees are 30.234375 minutes, 0.234375 minutes 14.0625 seconds
  EXPECT_EQ(d, -1);
  EXPECT_EQ(m, 30);
  EXPECT_EQ(s, 14.0625);
}

TEST(NumericHelpers, DegreesBeyondAnIntAreZero) {
  int d = 7;
  int whole = 7;
  double m = 7;
  double s = 7;
  DegToDm(2147483647.5, d, m);
  EXPECT_EQ(d, INT_MAX);
  EXPECT_EQ(m, 30);
  DegToDm(-2147483648.5, d, m);
  EXPECT_EQ(d, INT_MIN);
  EXPECT_EQ(m, 30);
  DegToDm(2147483648.0, d, m);
  EXPECT_EQ(d, 0);
  EXPECT_EQ(m, 2147483648.0 * 60);
  DegToDm(kNan, d, m);
  EXPECT_EQ(d, 0);
  EXPECT_TRUE(std::isnan(m));
  DegToDms(-1e10, d, whole, s);
  EXPECT_EQ(d, 0);
  EXPECT_EQ(whole, 0);
  EXPECT_EQ(s, 1e10 * 60 * 60);
  DegToDms(kInfinity, d, whole, s);
  EXPECT_EQ(d, 0);
  EXPECT_EQ(whole, 0);
  EXPECT_EQ(s, kInfinity);
}

}  // namespace
