#include "zelbase/time/CExTime.h"

#include <gtest/gtest.h>

#include <atomic>
#include <bit>
#include <chrono>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/Printed.h"
#include "tests/support/ScopedTimeZone.h"
#include "tests/time/ClockAccess.h"
#include "zelbase/platform/CAtlException.h"

namespace {

using namespace clock_access;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kCycle = 4294967296.0;
constexpr long long kFirstSecondOf3001 = 32535216000;

const char* const kAmsterdam = "CET-1CEST,M3.5.0,M10.5.0/3";
const char* const kStJohns = "NST3:30NDT,M3.2.0,M11.1.0";
const char* const kKolkata = "IST-5:30";
const char* const kLordHowe = "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0";  // saves half an hour

// Every double that a careless caller may bring along.
const double kAnyDoubles[] = {0.0,
                              -0.0,
                              0.5,
                              -0.5,
                              999.999,
                              -999.999,
                              1e3,
                              -1e3,
                              1e9,
                              -1e9,
                              1e12,
                              -1e12,
                              1.5e12,
                              3.3e13,
                              -3.3e13,
                              1e15,
                              -1e15,
                              9.3e18,
                              -9.3e18,
                              1e22,
                              -1e22,
                              1e300,
                              -1e300,
                              5e-324,
                              -5e-324,
                              std::numeric_limits<double>::max(),
                              std::numeric_limits<double>::lowest(),
                              kInfinity,
                              -kInfinity,
                              kNan};

const int kAnyInts[] = {INT_MIN, INT_MIN + 1, -1000000, -401,    -400,    -101,    -100,        -5,     -4,  -3,  -2,
                        -1,      0,           1,        2,       3,       4,       5,           11,     12,  13,  28,
                        29,      30,          31,       32,      99,      100,     101,         365,    366, 367, 399,
                        400,     401,         1721119,  1721120, 2451605, 1000000, INT_MAX - 1, INT_MAX};

// Whole seconds of a UTC date and time by the standard library's calendar.
CTime Seconds(int year, unsigned month, unsigned day, int hour = 0, int minute = 0, int second = 0) {
  const std::chrono::sys_days date = std::chrono::year{year} / static_cast<int>(month) / static_cast<int>(day);
  return date.time_since_epoch().count() * 86400LL + hour * 3600 + minute * 60 + second;
}

double Milliseconds(int year, unsigned month, unsigned day, int hour = 0, int minute = 0, int second = 0) {
  return static_cast<double>(Seconds(year, month, day, hour, minute, second)) * 1000.0;
}

using CExTimeTest = ClockTest;

// --- First use and base ---------------------------------------------------------------------------------------------

TEST_F(CExTimeTest, FirstUseTakesTheBaseFromTheWallClockAfterFiveMilliseconds) {
  clock.counter = 25000000;  // 2500 ms
  clock.wall = {1234567890, 123, false};
  EXPECT_EQ(time.GetExTime(10.0), 1234567890123.0 - 2500.0 + 10.0);
  EXPECT_EQ(clock.slept, 5u);
  EXPECT_EQ(time.GetWin1970BaseTime(), 1234567890123.0 - 2500.0);
}

TEST_F(CExTimeTest, LaterUsesNeitherWaitNorLookAtTheWallClock) {
  clock.wall = {1000, 0, false};
  time.GetExTime(1.0);
  clock.wall = {2000, 0, false};
  EXPECT_EQ(time.GetExTime(2.0), 1000002.0);
  EXPECT_EQ(clock.slept, 5u);
}

TEST_F(CExTimeTest, FirstUsePutsTheReferenceAtTheWallClock) {
  clock.wall = {5000000, 0, false};
  time.GetExTime(0.0);
  EXPECT_EQ(Reference(), 5000000000.0);
}

TEST_F(CExTimeTest, BaseIsZeroBeforeTheFirstUse) { EXPECT_EQ(time.GetWin1970BaseTime(), 0.0); }

TEST_F(CExTimeTest, MakingAssigningAndCopyingHandlesTouchesNothing) {
  CExTime other;
  other = time;
  const CExTime copy(other);
  EXPECT_EQ(copy.GetWin1970BaseTime(), 0.0);
  EXPECT_EQ(clock.slept, 0u);
}

// --- Counter reading ------------------------------------------------------------------------------------------------

TEST_F(CExTimeTest, CounterReadingIsDividedByTheThousandthOfTheFrequency) {
  std::mt19937_64 random(20261121);
  int differsFromOtherOrder = 0;
  for (int i = 0; i < 2000; ++i) {
    clock.counter = static_cast<long long>(random() >> 8);
    clock.frequency = 1000 + static_cast<long long>(random() % 4000000000);
    const double counter = static_cast<double>(clock.counter);
    const double frequency = static_cast<double>(clock.frequency);
    ASSERT_EQ(time.GetCurSystemTime(), counter / (frequency / 1000.0));
    if (counter / (frequency / 1000.0) != counter * 1000.0 / frequency) ++differsFromOtherOrder;
  }
  EXPECT_GT(differsFromOtherOrder, 100);
}

TEST_F(CExTimeTest, FrequencyIsAskedEachTime) {
  clock.counter = 1000000;
  clock.frequency = 1000;
  EXPECT_EQ(time.GetCurSystemTime(), 1000000.0);
  clock.frequency = 1000000;
  EXPECT_EQ(time.GetCurSystemTime(), 1000.0);
}

TEST_F(CExTimeTest, NowIsTheTimeOfTheCounterReading) {
  SetBase(1e12, 1e12);
  clock.counter = 12345678;  // 1234.5678 ms
  EXPECT_EQ(time.GetCurTime(), 1e12 + 1234.5678);
}

TEST_F(CExTimeTest, NowComesAsWholeSecondsAndMilliseconds) {
  SetBase(1234567890000.0, 1234567890000.0);
  clock.counter = 29999990;  // 2999.999 ms
  CTime seconds = 0;
  int milliseconds = 0;
  time.GetCurTime(seconds, milliseconds);
  EXPECT_EQ(seconds, 1234567892);
  EXPECT_EQ(milliseconds, 999);
}

TEST_F(CExTimeTest, NowBefore1970TruncatesTowardsZero) {
  SetBase(-5000.0, 0.0);
  clock.counter = 12500000;  // 1250 ms
  CTime seconds = 0;
  int milliseconds = 0;
  time.GetCurTime(seconds, milliseconds);  // -3750 ms
  EXPECT_EQ(seconds, -3);
  EXPECT_EQ(milliseconds, -750);
}

// --- Wraps ----------------------------------------------------------------------------------------------------------

TEST_F(CExTimeTest, ReadingZeroNegativeAndNanLeaveTheReferenceAlone) {
  SetBase(1e12, 1e12 + 5000.0);
  EXPECT_EQ(time.GetExTime(0.0), 1e12);
  EXPECT_EQ(time.GetExTime(-0.0), 1e12);
  EXPECT_EQ(time.GetExTime(-3e9), 1e12 - 3e9);
  EXPECT_TRUE(std::isnan(time.GetExTime(kNan)));
  EXPECT_EQ(Reference(), 1e12 + 5000.0);
  EXPECT_EQ(time.GetWin1970BaseTime(), 1e12);
}

TEST_F(CExTimeTest, ReadingZeroGoesThroughTheModel) {
  SetBase(1e6, 1e6);
  SetModel(500.0, 2.0, 1e6 - 10.0);
  EXPECT_EQ(time.GetExTime(0.0), 500.0 + 10.0 * 2.0);
}

TEST_F(CExTimeTest, EveryPositiveReadingMovesTheReference) {
  SetBase(1e12, 1e12);
  time.GetExTime(1000.0);
  EXPECT_EQ(Reference(), 1e12 + 1000.0);
  time.GetExTime(250.0);
  EXPECT_EQ(Reference(), 1e12 + 250.0);
}

TEST_F(CExTimeTest, ReadingMoreThanHalfACycleBelowIsPlacedOneCycleHigher) {
  SetBase(0.0, 2147483648.0 + 1001.0);
  EXPECT_EQ(time.GetExTime(1000.0), kCycle + 1000.0);
  EXPECT_EQ(Reference(), kCycle + 1000.0);
  EXPECT_EQ(time.GetWin1970BaseTime(), kCycle);
}

TEST_F(CExTimeTest, ReadingMoreThanHalfACycleAboveIsPlacedOneCycleLower) {
  SetBase(1e12, 1e12 + 100.0);
  EXPECT_EQ(time.GetExTime(2147483749.0), 1e12 + 2147483749.0 - kCycle);
  EXPECT_EQ(Reference(), 1e12 + 2147483749.0 - kCycle);
  EXPECT_EQ(time.GetWin1970BaseTime(), 1e12 - kCycle);
}

TEST_F(CExTimeTest, ExactlyHalfACycleApartIsNoWrap) {
  SetBase(0.0, 2147483648.0 + 1000.0);
  EXPECT_EQ(time.GetExTime(1000.0), 1000.0);
  EXPECT_EQ(Reference(), 1000.0);
  EXPECT_EQ(time.GetExTime(2147483648.0 + 1000.0), 2147483648.0 + 1000.0);
  EXPECT_EQ(time.GetWin1970BaseTime(), 0.0);
}

TEST_F(CExTimeTest, SlaveMovesTheReferenceButNotTheBaseOnAWrap) {
  time.SetBaseTime(1e12);
  SetBase(1e12, 1e12 + 2147483648.0 + 1001.0);
  EXPECT_EQ(time.GetExTime(1000.0), 1e12 + kCycle + 1000.0);
  EXPECT_EQ(Reference(), 1e12 + kCycle + 1000.0);
  EXPECT_EQ(time.GetWin1970BaseTime(), 1e12);
  SetBase(1e12, 1e12 + 100.0);
  EXPECT_EQ(time.GetExTime(2147483749.0), 1e12 + 2147483749.0 - kCycle);
  EXPECT_EQ(time.GetWin1970BaseTime(), 1e12);
}

TEST_F(CExTimeTest, ThirtyTwoBitReadingsRunOnThroughManyCycles) {
  SetBase(1.6e12, 1.6e12);
  double elapsed = 0.0;
  for (int i = 0; i < 20000; ++i) {
    elapsed += 1234567.0;  // 24,691,340,000 ms in all: five cycles
    ASSERT_EQ(time.GetExTime(std::fmod(elapsed, kCycle)), 1.6e12 + elapsed) << i;
  }
  EXPECT_EQ(time.GetWin1970BaseTime(), 1.6e12 + 5 * kCycle);
}

TEST_F(CExTimeTest, TimeIsNeitherClampedNorHeldBack) {
  SetBase(1e12, 1e12);
  EXPECT_EQ(time.GetExTime(5000.0), 1e12 + 5000.0);
  EXPECT_EQ(time.GetExTime(4000.0), 1e12 + 4000.0);
  time.SetUtcCoeffs(9e11, 1.0, 1e12);
  EXPECT_EQ(time.GetExTime(5000.0), 9e11 + 5000.0);
}

TEST_F(CExTimeTest, AnyReadingIsTaken) {
  for (const double reading : kAnyDoubles) {
    SetBase(1e12, 1e12);
    const double result = time.GetExTime(reading);
    EXPECT_EQ(std::isnan(result), std::isnan(reading));
    if (std::isinf(reading)) {
      EXPECT_EQ(result, reading);
    }
  }
}

// --- The two guards of the model ------------------------------------------------------------------------------------

TEST_F(CExTimeTest, ModelIsALineThroughItsReferencePoint) {
  SetBase(1e12, 1e12);
  SetModel(1.5e12, 1.0001, 1e12 + 7.0);
  const double raw = 1e12 + 123456.789;
  EXPECT_EQ(time.GetExTime(123456.789), 1.5e12 + (raw - (1e12 + 7.0)) * 1.0001);
}

TEST_F(CExTimeTest, InterceptZeroSwitchesOnlyTheForwardModelOff) {
  SetBase(1e12, 1e12);
  SetModel(0.0, 2.0, 5.0);
  EXPECT_EQ(time.GetExTime(1000.0), 1e12 + 1000.0);
  EXPECT_EQ(time.GetZelTime(1000.0), 1000.0 / 2.0 + 5.0);
}

TEST_F(CExTimeTest, SlopeZeroMakesTheForwardModelAConstantAndTheInverseTheIdentity) {
  SetBase(1e12, 1e12);
  SetModel(42.0, 0.0, 5.0);
  EXPECT_EQ(time.GetExTime(1000.0), 42.0);
  EXPECT_EQ(time.GetZelTime(1000.0), 1000.0);
}

TEST_F(CExTimeTest, SlopeNanGoesThroughForwardAndNotBack) {
  SetBase(1e12, 1e12);
  SetModel(42.0, kNan, 5.0);
  EXPECT_TRUE(std::isnan(time.GetExTime(1000.0)));
  EXPECT_EQ(time.GetZelTime(1000.0), 1000.0);
}

TEST_F(CExTimeTest, InterceptNanSwitchesBothOff) {
  SetBase(1e12, 1e12);
  SetModel(kNan, 2.0, 5.0);
  EXPECT_EQ(time.GetExTime(1000.0), 1e12 + 1000.0);
  EXPECT_EQ(time.GetZelTime(1000.0), 1000.0);
}

TEST_F(CExTimeTest, InverseGivesTheRawTimeAndKeepsTheBase) {
  SetBase(1.3e12, 1.3e12);
  SetModel(1.3e12 + 250.0, 1.00002, 1.3e12 + 100.0);
  for (double reading = 1.0; reading < 1e9; reading *= 3.7) {
    EXPECT_NEAR(time.GetZelTime(time.GetExTime(reading)), 1.3e12 + reading, 1e-3);
  }
}

// --- Window time ----------------------------------------------------------------------------------------------------

TEST_F(CExTimeTest, WinTimeIsTheDistanceFromTheBaseWithin32Bits) {
  struct Row {
    double time;
    unsigned long expected;
  };
  const Row rows[] = {
      {0.0, 0},
      {1.0, 1},
      {1.999, 1},
      {4294967295.0, 4294967295},
      {4294967295.9, 4294967295},
      {4294967296.0, 0},  // not above the cycle: the cut to 32 bits does it
      {4294967297.0, 1},
      {2 * kCycle, 0},
      {2 * kCycle + 5.0, 5},  // taken off once, then cut
      {-1.0, 4294967295},
      {-0.5, 4294967295},  // 4294967295.5
      {-kCycle, 0},
      {-kCycle - 1.0, 4294967295},  // still below 0: -1, of which the low half
      {-kCycle - 1.9, 4294967295},
      {1e300, 0},
      {-1e300, 0},
      {kInfinity, 0},
      {-kInfinity, 0},
      {kNan, 0},
  };
  SetBase(0.0, 0.0);
  for (const Row& row : rows) EXPECT_EQ(time.GetWinTime(row.time), row.expected) << row.time;
}

TEST_F(CExTimeTest, WinTimeUndoesExTimeWhileThereIsNoModel) {
  std::mt19937 random(5);
  for (const bool slave : {false, true}) {
    SetBase(1.4e12, 1.4e12);
    if (slave) time.SetBaseTime(1.4e12);
    for (int i = 0; i < 5000; ++i) {
      const unsigned long reading = random();
      ASSERT_EQ(time.GetWinTime(time.GetExTime(static_cast<double>(reading))), reading);
    }
  }
}

TEST_F(CExTimeTest, WinTimeDoesNotUndoTheModel) {
  SetBase(1e12, 1e12);
  SetModel(1e12 + 250.0, 1.0, 1e12);
  EXPECT_EQ(time.GetWinTime(time.GetExTime(1000.0)), 1250u);
}

// --- Base and model from outside ------------------------------------------------------------------------------------

TEST_F(CExTimeTest, SetBaseTimeMakesASlaveAndPutsTheReferenceAtNow) {
  clock.counter = 70000;  // 7 ms
  EXPECT_TRUE(time.SetBaseTime(1e12));
  EXPECT_EQ(time.GetWin1970BaseTime(), 1e12);
  EXPECT_EQ(Reference(), 1e12 + 7.0);
  EXPECT_FALSE(*Find(Master{}));
  EXPECT_EQ(time.GetCurTime(), 1e12 + 7.0);
  EXPECT_EQ(clock.slept, 0u);  // the wall clock is no longer asked
}

TEST_F(CExTimeTest, SetUtcCoeffsStoresTheModelAndTheMoment) {
  clock.counter = 1230000;  // 123 ms
  EXPECT_TRUE(time.SetUtcCoeffs(1.0, 2.0, 3.0));
  EXPECT_EQ(CurrentModel(), (Model{1.0, 2.0, 3.0}));
  EXPECT_EQ(*Find(LastUpdate{}), 123.0);
  clock.counter = 2230000;
  EXPECT_EQ(time.GetUtcUpdateAge(), 100.0);
}

TEST_F(CExTimeTest, UpdateAgeBeforeAnyUpdateIsTheWholeCounterReading) {
  clock.counter = 987650000;
  EXPECT_EQ(time.GetUtcUpdateAge(), 98765.0);
}

// --- Setting the computer's clock -----------------------------------------------------------------------------------

TEST_F(CExTimeTest, AdjustRtcSetsTheUtcFieldsWhateverTheZone) {
  for (const char* const zone : {"UTC0", kAmsterdam, kStJohns, kKolkata}) {
    const ScopedTimeZone local(zone);
    clock = HandClock();
    clock.counter = 10000;  // 1 ms
    clock.wall = {Seconds(2026, 1, 15, 10, 11, 12), 345, false};
    const double wall = static_cast<double>(clock.wall.seconds) * 1000.0 + 345.0;
    SetBase(wall - 1.0 + 400.0, wall);
    EXPECT_TRUE(time.AdjustRTC());
    EXPECT_EQ(clock.timesSet, 1) << zone;
    EXPECT_EQ(clock.slept, 5u);
    EXPECT_EQ(clock.set.wYear, 2026) << zone;
    EXPECT_EQ(clock.set.wMonth, 1) << zone;
    EXPECT_EQ(clock.set.wDayOfWeek, 4) << zone;  // a Thursday
    EXPECT_EQ(clock.set.wDay, 15) << zone;
    EXPECT_EQ(clock.set.wHour, 10) << zone;
    EXPECT_EQ(clock.set.wMinute, 11) << zone;
    EXPECT_EQ(clock.set.wSecond, 12) << zone;
    EXPECT_EQ(clock.set.wMilliseconds, 745) << zone;
  }
}

TEST_F(CExTimeTest, AdjustRtcTakesDaylightSavingIntoAccount) {
  const ScopedTimeZone local(kAmsterdam);
  clock.wall = {Seconds(2026, 7, 15, 10, 11, 12), 0, true};
  SetBase(Milliseconds(2026, 7, 15, 10, 11, 12), 0.0);
  time.AdjustRTC();
  EXPECT_EQ(clock.set.wHour, 10);
  EXPECT_EQ(clock.set.wDay, 15);
}

TEST_F(CExTimeTest, AdjustRtcGoesThroughTheModel) {
  const ScopedTimeZone local("UTC0");
  SetBase(1e12, 1e12);
  SetModel(Milliseconds(2000, 2, 29, 23, 59, 59) + 999.0, 1.0, 1e12);
  time.AdjustRTC();
  EXPECT_EQ(clock.set.wDay, 29);
  EXPECT_EQ(clock.set.wSecond, 59);
  EXPECT_EQ(clock.set.wMilliseconds, 999);
}

TEST_F(CExTimeTest, AdjustRtcIsOneHourOffJustAfterTheChangeOfDaylightSaving) {
  const ScopedTimeZone local(kAmsterdam);
  clock.wall = {Seconds(2026, 3, 29, 1, 30), 0, true};  // summer time began at 01:00 UTC
  SetBase(Milliseconds(2026, 3, 29, 1, 30), 0.0);
  time.AdjustRTC();
  EXPECT_EQ(clock.set.wHour, 0);
  EXPECT_EQ(clock.set.wMinute, 30);
}

TEST_F(CExTimeTest, AdjustRtcSetsNothingOutsideTheCalendar) {
  const ScopedTimeZone local("UTC0");
  for (const double base : {-1e6, 1e17, kNan, kInfinity, -kInfinity}) {
    SetBase(base, base);
    EXPECT_TRUE(time.AdjustRTC());
  }
  EXPECT_EQ(clock.timesSet, 0);
}

TEST_F(CExTimeTest, TimezoneIsPositiveWestOfGreenwichInMilliseconds) {
  struct Row {
    const char* zone;
    bool daylight;
    long expected;
  };
  const Row rows[] = {{"UTC0", false, 0},          {kAmsterdam, false, -3600000}, {kAmsterdam, true, -7200000},
                      {kStJohns, false, 12600000}, {kStJohns, true, 9000000},     {kKolkata, false, -19800000}};
  for (const Row& row : rows) {
    const ScopedTimeZone local(row.zone);
    clock.wall.daylight = row.daylight;
    EXPECT_EQ(CExTime::GetTimezone(), row.expected) << row.zone << row.daylight;
  }
}

TEST_F(CExTimeTest, TimezoneTakesAWholeHourForDaylightSavingWhateverTheZone) {
  const ScopedTimeZone local(kLordHowe);
  clock.wall.daylight = true;
  EXPECT_EQ(CExTime::GetTimezone(), -41400000);  // 11.5 h, though the island is 11 h ahead
}

// --- Stamps ---------------------------------------------------------------------------------------------------------

TEST_F(CExTimeTest, StampIsTheCounterInSixteenUpperCaseDigits) {
  clock.counter = 0x0123456789ABCDEF;
  EXPECT_EQ(time.GetTimeStampString(), "<0x0123456789ABCDEF>");
  clock.counter = 0;
  EXPECT_EQ(time.GetTimeStampString(), "<0x0000000000000000>");
  clock.counter = -1;
  EXPECT_EQ(time.GetTimeStampString(), "<0xFFFFFFFFFFFFFFFF>");
}

TEST_F(CExTimeTest, StampOfATimeTakesModelAndBaseOff) {
  clock.frequency = 10000;
  SetBase(1e12, 1e12);
  SetModel(1e12 + 500.0, 1.0, 1e12);
  EXPECT_EQ(time.GetTimeStampString(1e12 + 500.0 + 25.75), "<0x0000000000000101>");  // 257.5 counts
}

TEST_F(CExTimeTest, StampOfAnyTimeIsDefined) {
  SetBase(0.0, 0.0);
  EXPECT_EQ(time.GetTimeStampString(kNan), "<0x8000000000000000>");
  EXPECT_EQ(time.GetTimeStampString(kInfinity), "<0x8000000000000000>");
  EXPECT_EQ(time.GetTimeStampString(-1e300), "<0x8000000000000000>");
  clock.frequency = 1000;
  EXPECT_EQ(time.GetTimeStampString(-1.0), "<0xFFFFFFFFFFFFFFFF>");
}

TEST_F(CExTimeTest, StampComesBackAsItsTime) {
  clock.counter = 123456789;
  SetBase(1e12, 1e12);
  const std::string stamp = time.GetTimeStampString();
  EXPECT_EQ(time.TimeStampStringToTime(stamp), time.GetCurTime());
  EXPECT_EQ(time.GetTimeStampString(time.TimeStampStringToTime(stamp)), stamp);
}

TEST_F(CExTimeTest, StampIsReadAsTheScanFormatDoes) {
  clock.frequency = 1000;
  struct Row {
    const char* stamp;
    double counter;
  };
  const Row rows[] = {
      {"<0x0000000000000100>", 256.0},
      {"<0x100>", 256.0},
      {"<0xff>", 255.0},
      {"<0xFf", 255.0},
      {"<0x1G>", 1.0},
      {"<0x 1F>", 31.0},
      {"<0x\t\n1F>", 31.0},
      {"<0x0x1F>", 31.0},
      {"<0x0X1F>", 31.0},
      {"<0x+1F>", 31.0},
      {"<0x-1>", -1.0},
      {"<0x0x>", 0.0},
      {"<0x00000000000000011>", 1.0},  // sixteen characters count, sign and "0x" among them
      {"<0x+00000000000000011>", 0.0},
      {"<0x0x00000000000012F>", 18.0},
      {"<0x  0000000000000100>", 256.0},  // the blanks do not count
      {"<0xFFFFFFFFFFFFFFFF>", -1.0},
  };
  for (const Row& row : rows) {
    SetBase(1e6, 1e6);
    EXPECT_EQ(time.TimeStampStringToTime(row.stamp), 1e6 + row.counter) << row.stamp;
  }
}

TEST_F(CExTimeTest, UnreadableStampGivesZeroAndDoesNotTouchTheClock) {
  for (const char* const stamp :
       {"", "<", "<0", "<0x", "0x1", " <0x1>", "<0X1>", "<0xG>", "<0x>", "<0x-", "<0x ", "< 0x1>", "<1>", "x", "<0x\xFF"}) {
    EXPECT_EQ(time.TimeStampStringToTime(stamp), 0.0) << stamp;
  }
  EXPECT_EQ(time.TimeStampStringToTime(std::string("<0x\0001", 5)), 0.0);
  EXPECT_EQ(clock.slept, 0u);  // the first use has not come yet
}

// --- Julian days ----------------------------------------------------------------------------------------------------

TEST_F(CExTimeTest, JulianDaysOfEveryDateFrom1600To3000) {
  constexpr int kJulianOf1970 = 2440588;  // of the noon of 1 January 1970
  using namespace std::chrono;
  const sys_days last = year{3001} / 1 / 1;
  for (sys_days date = year{1600} / 1 / 1; date < last; date += days{1}) {
    const year_month_day ymd(date);
    const int year = static_cast<int>(ymd.year());
    const int month = static_cast<int>(static_cast<unsigned>(ymd.month()));
    const int day = static_cast<int>(static_cast<unsigned>(ymd.day()));
    const int expected = kJulianOf1970 + static_cast<int>(date.time_since_epoch().count());
    ASSERT_EQ(time.ConvertToJulian(month, day, year), expected);
    ASSERT_EQ(time.ConvertToJulianFrac(month, day, year), expected - 0.5);

    const int marchYear = month >= 3 ? year : year - 1;
    const sys_days march = std::chrono::year{marchYear} / 3 / 1;
    const int dayFromMarch = static_cast<int>((date - march).count()) + 1;
    ASSERT_EQ(time.ConvertToJulian(dayFromMarch, marchYear), expected);
    int back = 0;
    ASSERT_EQ(time.ConvertFromJulian(expected, back), dayFromMarch) << expected;
    ASSERT_EQ(back, marchYear) << expected;
  }
}

TEST_F(CExTimeTest, JulianDaysThatAreKnown) {
  EXPECT_EQ(time.ConvertToJulian(1, 2000), 2451605);
  EXPECT_EQ(time.ConvertToJulian(3, 1, 2000), 2451605);
  EXPECT_EQ(time.ConvertToJulianFrac(1, 1, 1970), 2440587.5);
  EXPECT_EQ(time.ConvertToJulianFrac(1, 1, 2000), 2451544.5);
  EXPECT_EQ(time.ConvertToJulian(11, 17, 1858), 2400001);  // the day at whose beginning the modified count starts
}

TEST_F(CExTimeTest, ThreeArgumentConvertFromJulianIsADateOnlyOnTheFirstOfMarchOfACentury) {
  for (int century = 1600; century <= 2900; century += 100) {
    int month = 0, year = 0;
    EXPECT_EQ(time.ConvertFromJulian(time.ConvertToJulian(3, 1, century), month, year), 1) << century;
    EXPECT_EQ(month, 3);
    EXPECT_EQ(year, century);
  }
  // The day after, which is 2 March: still the first.
  int month = 0, year = 0;
  EXPECT_EQ(time.ConvertFromJulian(2451606, month, year), 1);
  EXPECT_EQ(month, 3);
  EXPECT_EQ(year, 2000);
}

TEST_F(CExTimeTest, ThreeArgumentConvertFromJulianGivesMonthsUpTo289) {
  // 28 February 2100 is day 36523 of its century: e = 9131, m = 45652 / 153 = 298, rest 58.
  int month = 0, year = 0;
  EXPECT_EQ(time.ConvertFromJulian(2451605 + 36523, month, year), (58 + 5) / 5);
  EXPECT_EQ(month, 289);
  EXPECT_EQ(year, 2100);  // 2099 from March, and one more
  // 1 January 1970 is day 25508 of the century of 1900: e = 6378, m = 31887 / 153 = 208, rest 63.
  EXPECT_EQ(time.ConvertFromJulian(2440588, month, year), (63 + 5) / 5);
  EXPECT_EQ(month, 199);
  EXPECT_EQ(year, 1970);
}

TEST_F(CExTimeTest, CalendarTakesAnyInt) {
  for (const int a : kAnyInts) {
    for (const int b : kAnyInts) {
      int month = 7, day = 7, year = 7;
      const unsigned int leapDays = static_cast<unsigned int>(b / 4 - b / 100 + b / 400);
      const unsigned int wrapped = static_cast<unsigned int>(a) + 365u * static_cast<unsigned int>(b) + leapDays + 1721119u;
      ASSERT_EQ(time.ConvertToJulian(a, b), static_cast<int>(wrapped));
      ASSERT_EQ(time.ConvertToJulian(3, a, b), static_cast<int>(wrapped));
      ASSERT_TRUE(std::isfinite(time.ConvertToJulianFrac(a, b, b)));
      if (!time.JulianDate(a, b, month, day)) {
        ASSERT_EQ(month, 7);
        ASSERT_EQ(day, 7);
      }
      time.ConvertFromJulian(a, month, year);
      time.ConvertFromJulian(a, year);
      ASSERT_NO_THROW(time.ConvertToJulian(a, b, a));
    }
  }
}

TEST_F(CExTimeTest, ConvertFromJulianFollowsItsStepsForAnyInt) {
  std::mt19937 random(17);
  for (int i = 0; i < 200000; ++i) {
    const int julian = static_cast<int>(random());
    // x = 4 * (jd - 1721119) - 1 is whole, so that whole numbers tell the same.
    const long long x = (static_cast<long long>(julian) - 1721119) * 4 - 1;
    const long long d = x % 146097 / 4;
    const long long yearInCentury = (4 * d + 3) / 1461;
    const int year = static_cast<int>(yearInCentury + 100 * (x / 146097));
    int back = 0;
    ASSERT_EQ(time.ConvertFromJulian(julian, back), 1 + (4 * d + 3) % 1461 / 4);
    ASSERT_EQ(back, year);
    const long long e = (d + 4) / 4;
    const long long m = (5 * e - 3) / 153;
    int month = 0;
    ASSERT_EQ(time.ConvertFromJulian(julian, month, back), ((5 * e - 3) % 153 + 5) / 5);
    ASSERT_EQ(month, m < 10 ? m + 3 : m - 9);
    ASSERT_EQ(back, m < 10 ? year : year + 1);
  }
}

TEST_F(CExTimeTest, JulianDateWalksThroughEveryDayOfTheYear) {
  using namespace std::chrono;
  for (const int year : {1900, 1999, 2000, 2004, 2023, 2100, 2400, 0, -4, -100}) {
    const sys_days first = std::chrono::year{year} / 1 / 1;
    const int length = std::chrono::year{year}.is_leap() ? 366 : 365;
    for (int dayOfYear = 1; dayOfYear <= length; ++dayOfYear) {
      int month = 0, day = 0;
      ASSERT_TRUE(time.JulianDate(year, dayOfYear, month, day));
      const year_month_day expected(first + days{dayOfYear - 1});
      ASSERT_EQ(month, static_cast<int>(static_cast<unsigned>(expected.month()))) << year << ' ' << dayOfYear;
      ASSERT_EQ(day, static_cast<int>(static_cast<unsigned>(expected.day()))) << year << ' ' << dayOfYear;
    }
  }
}

TEST_F(CExTimeTest, JulianDateOutsideTheYearIsFalseAndLeavesTheOutputs) {
  int month = 77, day = 88;
  for (const int dayOfYear : {INT_MIN, -1, 0, 367, INT_MAX}) EXPECT_FALSE(time.JulianDate(2000, dayOfYear, month, day));
  EXPECT_FALSE(time.JulianDate(2001, 366, month, day));
  EXPECT_FALSE(time.JulianDate(1900, 366, month, day));
  EXPECT_EQ(month, 77);
  EXPECT_EQ(day, 88);
}

// --- Whole seconds --------------------------------------------------------------------------------------------------

TEST_F(CExTimeTest, WholeSecondsTruncateTowardsZero) {
  struct Row {
    double time;
    CTime expected;
  };
  const Row rows[] = {{0.0, 0}, {999.9, 0}, {1000.0, 1}, {1999.999, 1}, {-999.9, 0}, {-1000.0, -1}, {-1999.9, -1}, {1e15, 1000000000000}};
  for (const Row& row : rows) {
    EXPECT_EQ(time.MsecToCTime(row.time), row.expected) << row.time;
    EXPECT_EQ(time.ConvertToCTime(row.time), row.expected) << row.time;
  }
}

TEST_F(CExTimeTest, WholeSecondsThatDoNotFitAreTheSmallestNumber) {
  for (const double value : {kNan, kInfinity, -kInfinity, 1e300, -1e300, 9.3e21}) {
    EXPECT_EQ(time.MsecToCTime(value), LLONG_MIN) << value;
  }
}

TEST_F(CExTimeTest, WholeSecondsToTime) {
  EXPECT_EQ(time.ConvertCTime(1234567890), 1234567890000.0);
  EXPECT_EQ(time.ConvertCTime(-1), -1000.0);
  EXPECT_EQ(time.ConvertCTime(LLONG_MIN), -9223372036854775808.0 * 1000.0);
}

// --- Automation dates -----------------------------------------------------------------------------------------------

TEST_F(CExTimeTest, OleDateIsLocalTimeWithoutMilliseconds) {
  const ScopedTimeZone local(kStJohns);  // 3.5 h behind
  // 2000-01-01 03:30 UTC is local midnight; automation day 36526.
  EXPECT_EQ(time.ConvertToOleTime(Milliseconds(2000, 1, 1, 3, 30) + 999.0).m_dt, 36526.0);
  EXPECT_EQ(time.ConvertToOleTime(Milliseconds(2000, 1, 1, 15, 30)).m_dt, 36526.5);
  EXPECT_EQ(time.ConvertToOleTime(Milliseconds(2000, 1, 1, 15, 30)).m_status, COleDateTime::valid);
}

TEST_F(CExTimeTest, OleDateComesBackAsTheWholeSecond) {
  for (const char* const zone : {"UTC0", kAmsterdam, kStJohns, kKolkata}) {
    const ScopedTimeZone local(zone);
    std::mt19937_64 random(3);
    for (int i = 0; i < 20000; ++i) {
      const CTime seconds = static_cast<CTime>(86400 + random() % 32535000000);
      const COleDateTime date = time.ConvertToOleTime(static_cast<double>(seconds) * 1000.0 + 567.0);
      ASSERT_EQ(date.m_status, COleDateTime::valid) << seconds;
      const double back = time.ConvertOleTime(date);
      const double wanted = static_cast<double>(seconds) * 1000.0;
      // In the hour that autumn repeats either of the two is right.
      const bool isOneOfTwo = std::fabs(back - wanted) == 3600000.0 && time.GetHHMMSS(back) == time.GetHHMMSS(wanted);
      ASSERT_TRUE(back == wanted || isOneOfTwo) << zone << ' ' << seconds << ' ' << back;
    }
  }
}

TEST_F(CExTimeTest, OleDateInSummerComesBack) {
  const ScopedTimeZone local(kAmsterdam);
  const double noon = Milliseconds(2026, 7, 1, 12);
  EXPECT_EQ(time.ConvertOleTime(time.ConvertToOleTime(noon + 750.0)), noon);
}

TEST_F(CExTimeTest, OleDateOfATimeOutsideTheCalendarIsInvalid) {
  const ScopedTimeZone local("UTC0");
  for (const double value : {-1000.0, kFirstSecondOf3001 * 1000.0, kNan, kInfinity, -kInfinity}) {
    EXPECT_NE(time.ConvertToOleTime(value).m_status, COleDateTime::valid) << value;
  }
  EXPECT_EQ(time.ConvertToOleTime(kFirstSecondOf3001 * 1000.0 - 1.0).m_status, COleDateTime::valid);
}

TEST_F(CExTimeTest, InvalidOleDateGivesZero) {
  COleDateTime date;
  date.m_dt = 36526.0;
  date.m_status = COleDateTime::invalid;
  EXPECT_EQ(time.ConvertOleTime(date), 0.0);
  date.m_status = COleDateTime::null;
  EXPECT_EQ(time.ConvertOleTime(date), 0.0);
  date.m_status = COleDateTime::valid;
  for (const double value : {kNan, kInfinity, -kInfinity, 1e300, -1e300}) {
    date.m_dt = value;
    EXPECT_EQ(time.ConvertOleTime(date), 0.0) << value;
  }
}

TEST_F(CExTimeTest, OleDateBefore1900GivesZero) {
  const ScopedTimeZone local("UTC0");
  COleDateTime date;
  date.m_status = COleDateTime::valid;
  date.m_dt = 1.0;  // 1899-12-31
  EXPECT_EQ(time.ConvertOleTime(date), 0.0);
  date.m_dt = 2.0;  // 1900-01-01
  EXPECT_EQ(time.ConvertOleTime(date), Milliseconds(1900, 1, 1));
}

TEST_F(CExTimeTest, OleDateIntoAPointer) {
  const ScopedTimeZone local("UTC0");
  COleDateTime date;
  time.ConvertToOleTime(Milliseconds(2000, 1, 1, 12), &date);
  EXPECT_EQ(date.m_dt, 36526.5);
  EXPECT_EQ(date.m_status, COleDateTime::valid);
}

TEST_F(CExTimeTest, OleDateIntoANullPointerThrows) {
  try {
    time.ConvertToOleTime(0.0, nullptr);
    FAIL() << "nothing was thrown";
  } catch (const CAtlException& failure) {
    EXPECT_EQ(failure.m_hr, 0x80070057u);
  }
}

// --- UTC dates ------------------------------------------------------------------------------------------------------

TEST_F(CExTimeTest, UtcDatesOfEveryDayBothWays) {
  const ScopedTimeZone local(kAmsterdam);  // has no say here
  using namespace std::chrono;
  std::mt19937 random(8);
  const sys_days last = year{3001} / 1 / 1;
  for (sys_days date = year{1970} / 1 / 1; date < last; date += days{1}) {
    const year_month_day ymd(date);
    const int secondOfDay = static_cast<int>(random() % 86400);
    const CTime expected = date.time_since_epoch().count() * 86400LL + secondOfDay;
    const int year = static_cast<int>(ymd.year());
    const int month = static_cast<int>(static_cast<unsigned>(ymd.month()));
    const int day = static_cast<int>(static_cast<unsigned>(ymd.day()));
    const int hour = secondOfDay / 3600, minute = secondOfDay / 60 % 60, second = secondOfDay % 60;
    ASSERT_EQ(CExTime::UtcDateToTime(year, month, day, hour, minute, second), expected);
    int y = 0, mo = 0, d = 0, h = 0, mi = 0, s = 0;
    CExTime::TimeToUtcDate(expected, y, mo, d, h, mi, s);
    ASSERT_TRUE(y == year && mo == month && d == day && h == hour && mi == minute && s == second) << expected;
  }
}

TEST_F(CExTimeTest, UtcDateOutsideItsRangeGivesZeroWithoutAFailure) {
  EXPECT_EQ(CExTime::UtcDateToTime(1969, 6, 1, 0, 0, 0), 0);
  EXPECT_EQ(CExTime::UtcDateToTime(3001, 1, 1, 0, 0, 0), 0);
  EXPECT_EQ(CExTime::UtcDateToTime(2000, 0, 1, 0, 0, 0), 0);
  EXPECT_EQ(CExTime::UtcDateToTime(2000, 13, 1, 0, 0, 0), 0);
  EXPECT_EQ(CExTime::UtcDateToTime(2000, 1, 0, 0, 0, 0), 0);
  EXPECT_EQ(CExTime::UtcDateToTime(2000, 1, 32, 0, 0, 0), 0);
  EXPECT_EQ(CExTime::UtcDateToTime(INT_MIN, INT_MIN, INT_MIN, INT_MIN, INT_MIN, INT_MIN), 0);
  EXPECT_EQ(CExTime::UtcDateToTime(2000, 13, 1, 24, 60, 60), 0);  // the date is looked at first
}

TEST_F(CExTimeTest, UtcDateWithAnImpossibleTimeOfDayThrows) {
  const int rows[][3] = {{24, 0, 0}, {0, 60, 0}, {0, 0, 60}, {-1, 0, 0}, {0, -1, 0}, {0, 0, -1}, {INT_MAX, INT_MAX, INT_MIN}};
  for (const auto& row : rows) {
    try {
      CExTime::UtcDateToTime(1970, 1, 1, row[0], row[1], row[2]);
      ADD_FAILURE() << "nothing was thrown";
    } catch (const CAtlException& failure) {
      EXPECT_EQ(failure.m_hr, 0x80004005u);
    }
  }
}

TEST_F(CExTimeTest, UtcDateRunsOverIntoTheNextMonth) {
  EXPECT_EQ(CExTime::UtcDateToTime(2001, 2, 31, 1, 2, 3), Seconds(2001, 3, 3, 1, 2, 3));
  EXPECT_EQ(CExTime::UtcDateToTime(2000, 2, 30, 0, 0, 0), Seconds(2000, 3, 1));
  EXPECT_EQ(CExTime::UtcDateToTime(2000, 4, 31, 0, 0, 0), Seconds(2000, 5, 1));
}

TEST_F(CExTimeTest, UtcDateAtTheEndsOfItsRange) {
  EXPECT_EQ(CExTime::UtcDateToTime(1970, 1, 1, 0, 0, 0), 0);
  EXPECT_EQ(CExTime::UtcDateToTime(1970, 1, 1, 0, 0, 1), 1);
  EXPECT_EQ(CExTime::UtcDateToTime(3000, 12, 31, 23, 59, 59), kFirstSecondOf3001 - 1);
}

TEST_F(CExTimeTest, TimeOutsideTheCalendarLeavesTheUtcDate) {
  for (const CTime seconds : {-1LL, kFirstSecondOf3001, LLONG_MIN, LLONG_MAX}) {
    int year = 1, month = 2, day = 3, hour = 4, minute = 5, second = 6;
    CExTime::TimeToUtcDate(seconds, year, month, day, hour, minute, second);
    EXPECT_TRUE(year == 1 && month == 2 && day == 3 && hour == 4 && minute == 5 && second == 6) << seconds;
  }
}

// --- Local time of day ----------------------------------------------------------------------------------------------

TEST_F(CExTimeTest, LocalTimeOfDayFollowsTheZoneAndItsRules) {
  struct Row {
    const char* zone;
    double time;
    long expected;
  };
  const Row rows[] = {
      {"UTC0", Milliseconds(2026, 1, 1, 12, 34, 56) + 999.0, 123456},
      {kAmsterdam, Milliseconds(2026, 1, 1, 12, 34, 56), 133456},
      {kAmsterdam, Milliseconds(2026, 7, 1, 12, 34, 56), 143456},
      {kAmsterdam, Milliseconds(2026, 3, 29, 0, 59, 59), 15959},  // the second before the change
      {kAmsterdam, Milliseconds(2026, 3, 29, 1, 0, 0), 30000},    // the change
      {kAmsterdam, Milliseconds(2026, 10, 25, 0, 30, 0), 23000},  // half past two,
      {kAmsterdam, Milliseconds(2026, 10, 25, 1, 30, 0), 23000},  // and again
      {kStJohns, Milliseconds(2026, 1, 1, 0, 0, 0), 203000},
      {kStJohns, Milliseconds(2026, 7, 1, 0, 0, 0), 213000},
      {kKolkata, Milliseconds(2026, 7, 1, 20, 0, 1), 13001},
      {kLordHowe, Milliseconds(2026, 1, 1, 0, 0, 0), 110000},
      {kLordHowe, Milliseconds(2026, 7, 1, 0, 0, 0), 103000},
      {"UTC0", 0.0, 0},
      {"UTC0", -999.0, 0},  // truncates to second 0
      {"UTC0", kFirstSecondOf3001 * 1000.0 - 1.0, 235959},
  };
  for (const Row& row : rows) {
    const ScopedTimeZone local(row.zone);
    EXPECT_EQ(time.GetHHMMSS(row.time), row.expected) << row.zone << ' ' << row.time;
  }
}

TEST_F(CExTimeTest, LocalTimeOutsideTheCalendarCountsAsMinusOneInEachField) {
  for (const double value : {-1000.0, kFirstSecondOf3001 * 1000.0, kInfinity, -kInfinity, kNan}) {
    EXPECT_EQ(time.GetHHMMSS(value), -10101) << value;
  }
  double secondsOfDay = 0.0;
  EXPECT_EQ(time.TimestampToDaytime(-1500.0, secondsOfDay), -1);
  EXPECT_EQ(secondsOfDay, -3661.0 - 0.5);
  EXPECT_EQ(time.TimestampToDaytime(kNan, secondsOfDay), LLONG_MIN);
  EXPECT_TRUE(std::isnan(secondsOfDay));
}

TEST_F(CExTimeTest, DaytimeIsSecondsSinceLocalMidnightWithFraction) {
  const ScopedTimeZone local(kKolkata);
  double secondsOfDay = 0.0;
  EXPECT_EQ(time.TimestampToDaytime(Milliseconds(2026, 7, 1, 20, 0, 1) + 250.5, secondsOfDay), Seconds(2026, 7, 1, 20, 0, 1));
  EXPECT_EQ(secondsOfDay, 5401.0 + 250.5 / 1000.0);
}

// --- Text -----------------------------------------------------------------------------------------------------------

TEST_F(CExTimeTest, TextShowsWhatIsAskedFor) {
  const CLocale form;  // of the date
  const ScopedTimeZone local("UTC0");
  const double value = 1234567890125.0;  // 2009-02-13 23:31:30.125
  struct Row {
    bool milliseconds, date, seconds;
    const char* expected;
  };
  const Row rows[] = {
      {false, false, false, "23:31"},
      {false, false, true, "23:31:30"},
      {true, false, false, "23:31:30.125"},  // milliseconds alone still show the seconds
      {true, false, true, "23:31:30.125"},
      {false, true, false, "02/13/09 23:31"},
      {false, true, true, "02/13/09 23:31:30"},
      {true, true, false, "02/13/09 23:31:30.125"},
      {true, true, true, "02/13/09 23:31:30.125"},
  };
  for (const Row& row : rows) EXPECT_EQ(time.TimeToString(value, row.milliseconds, row.date, row.seconds), row.expected);
}

TEST_F(CExTimeTest, TextIsInLocalTime) {
  const CLocale form;  // of the date
  const ScopedTimeZone local(kKolkata);
  EXPECT_EQ(time.TimeToString(1234567890000.0, false, true, true), "02/14/09 05:01:30");
}

TEST_F(CExTimeTest, TextHasThreeDigitsOfTruncatedMilliseconds) {
  const ScopedTimeZone local("UTC0");
  EXPECT_EQ(time.TimeToString(1000.0, true, false, true), "00:00:01.000");
  EXPECT_EQ(time.TimeToString(1007.999, true, false, true), "00:00:01.007");
  EXPECT_EQ(time.TimeToString(1999.9999, true, false, true), "00:00:01.999");
  EXPECT_EQ(time.TimeToString(-7.0, true, false, true), "00:00:00.-007");
}

TEST_F(CExTimeTest, TextOutsideTheCalendarIsEmptyButForTheMilliseconds) {
  EXPECT_EQ(time.TimeToString(-1500.0, false, true, true), "");
  EXPECT_EQ(time.TimeToString(-1500.0, true, true, true), ".-500");
  EXPECT_EQ(time.TimeToString(kFirstSecondOf3001 * 1000.0 + 12.0, true, true, true), ".012");
  EXPECT_EQ(time.TimeToString(kNan, true, false, false), ".000");
  EXPECT_EQ(time.TimeToString(kInfinity, true, false, false), ".000");
}

TEST_F(CExTimeTest, ConversionsTakeAnyDouble) {
  const ScopedTimeZone local(kAmsterdam);
  for (const double value : kAnyDoubles) {
    SetBase(0.0, 0.0);
    tagTIME5Q record{};
    double secondsOfDay = 0.0;
    EXPECT_TRUE(time.TimeTo5qTime(value, &record));
    EXPECT_EQ(time.TimestampToDaytime(value, secondsOfDay), time.MsecToCTime(value));
    EXPECT_EQ(time.GetTimeStampString(value).size(), 20u);
    EXPECT_LE(time.GetWinTime(value), 4294967295u);
    const bool inCalendar = time.MsecToCTime(value) >= 0 && time.MsecToCTime(value) < kFirstSecondOf3001;
    EXPECT_EQ(time.TimeToString(value, false, true, true).empty(), !inCalendar);
    EXPECT_EQ(time.GetHHMMSS(value) < 0, !inCalendar);
    EXPECT_EQ(time.ConvertToOleTime(value).m_status == COleDateTime::valid, inCalendar);
    COleDateTime date;
    date.m_dt = value;
    date.m_status = COleDateTime::valid;
    EXPECT_TRUE(std::isfinite(time.ConvertOleTime(date)));
  }
}

// --- Threads --------------------------------------------------------------------------------------------------------

TEST_F(CExTimeTest, WrapThatManyThreadsMeetMovesTheBaseOnce) {
  constexpr int kThreads = 4;
  for (int round = 0; round < 200; ++round) {
    SetBase(1e12, 1e12 + 4e9);  // the last raw time lies most of a cycle ahead
    std::atomic<int> waiting{kThreads}, wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
      threads.emplace_back([&] {
        --waiting;
        while (waiting > 0) std::this_thread::yield();
        if (time.GetExTime(1000.0) != 1e12 + kCycle + 1000.0) ++wrong;
      });
    }
    for (std::thread& thread : threads) thread.join();
    ASSERT_EQ(wrong, 0);
    ASSERT_EQ(time.GetWin1970BaseTime(), 1e12 + kCycle);
  }
}

TEST_F(CExTimeTest, ReadersNeverSeeAMixOfTwoModels) {
  // Each model gives, at its own reference point, a value that only a whole model gives.
  SetBase(1000.0, 1000.0);
  time.SetUtcCoeffs(1e6, 1.0, 1000.0);
  std::atomic<bool> stop{false};
  std::atomic<int> wrong{0};
  std::vector<std::thread> readers;
  for (int i = 0; i < 3; ++i) {
    readers.emplace_back([&] {
      const CExTime own;
      while (!stop) {
        const double value = own.GetExTime(0.0);  // raw 1000: 1e6, or 2e6 + (1000 - 3000) * 2
        if (value != 1e6 && value != 2e6 - 4000.0) ++wrong;
      }
    });
  }
  for (int i = 0; i < 20000; ++i) {
    time.SetUtcCoeffs(2e6, 2.0, 3000.0);
    time.SetUtcCoeffs(1e6, 1.0, 1000.0);
  }
  stop = true;
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(wrong, 0);
}

TEST_F(CExTimeTest, FirstUseByManyThreadsEstablishesOneBase) {
  clock.wall = {1234567890, 0, false};
  std::vector<std::thread> users;
  std::atomic<int> wrong{0};
  for (int i = 0; i < 8; ++i) {
    users.emplace_back([&] {
      const CExTime own;
      if (own.GetCurTime() != 1234567890000.0) ++wrong;
    });
  }
  for (std::thread& user : users) user.join();
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(clock.slept, 5u);
}

TEST_F(CExTimeTest, BaseAndUpdateAgeAreReadWhileOthersSetThem) {
  std::atomic<bool> stop{false};
  std::thread setter([&] {
    const CExTime own;
    while (!stop) {
      own.SetBaseTime(1.0);
      own.SetBaseTime(2.0);
      own.SetUtcCoeffs(1.0, 1.0, 1.0);
    }
  });
  int wrong = 0;
  for (int i = 0; i < 20000; ++i) {
    const double base = time.GetWin1970BaseTime();
    if (base != 0.0 && base != 1.0 && base != 2.0) ++wrong;
    if (time.GetUtcUpdateAge() != 0.0) ++wrong;
  }
  stop = true;
  setter.join();
  EXPECT_EQ(wrong, 0);
}

TEST_F(CExTimeTest, ReadingWhileAChangeIsUnderWayGoesBehindIt) {
  SetBase(1e12, 1e12);
  SetModel(5.0, 2.0, 1e12);
  ++*Find(Version{});  // as between the first and the last member of a change
  EXPECT_EQ(time.GetExTime(10.0), 25.0);
  EXPECT_EQ(Reference(), 1e12 + 10.0);
  EXPECT_EQ(time.GetExTime(0.0), 5.0);
  ++*Find(Version{});
  EXPECT_EQ(time.GetExTime(20.0), 45.0);
}

TEST_F(CExTimeTest, LockIsReentrantForItsOwner) {
  SetBase(1e12, 1e12);
  const std::lock_guard guard(*Find(ClockLock{}));
  EXPECT_EQ(time.GetExTime(1.0), 1e12 + 1.0);
  EXPECT_TRUE(time.AdjustRTC());
}

// --- A clock with a calendar of its own -------------------------------------------------------------------------------

class OwnCalendar : public HandClock {
 public:
  bool LocalTime(long long, CalendarTime& calendar) override {
    calendar = local;
    return true;
  }
  bool FromLocalTime(const CalendarTime&, long long&) override { return false; }

  CalendarTime local;
};

TEST_F(CExTimeTest, OleDateOfALocalTimeThatIsNoDateIsInvalid) {
  OwnCalendar own;
  const PlatformOverride<PlatformClock> ownInForce(own);
  const auto statusOf = [&](int year, int month, int day) {
    own.local.year = year;
    own.local.month = month;
    own.local.day = day;
    return time.ConvertToOleTime(0.0).m_status;
  };
  EXPECT_EQ(statusOf(2024, 2, 29), COleDateTime::valid);
  EXPECT_EQ(statusOf(2024, 2, 30), COleDateTime::invalid);
  EXPECT_EQ(statusOf(2023, 2, 29), COleDateTime::invalid);
  EXPECT_EQ(statusOf(2024, 1, 0), COleDateTime::invalid);
  EXPECT_EQ(statusOf(9999, 11, 31), COleDateTime::invalid);
  EXPECT_EQ(statusOf(99, 1, 1), COleDateTime::invalid);
  EXPECT_EQ(time.ConvertToOleTime(0.0).m_dt, 0.0);
}

TEST_F(CExTimeTest, OleDateThatTheClockCannotPlaceGivesZero) {
  OwnCalendar own;
  const PlatformOverride<PlatformClock> ownInForce(own);
  COleDateTime date;
  date.m_dt = 36526.0;
  date.m_status = COleDateTime::valid;
  EXPECT_EQ(time.ConvertOleTime(date), 0.0);
}

}  // namespace
