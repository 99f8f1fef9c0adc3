#include "zelbase/platform/PlatformClock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>

#include "tests/support/ScopedTimeZone.h"
#include "zelbase/platform/detail/CivilDate.h"

namespace {

constexpr const char* kCentralEurope = "CET-1CEST,M3.5.0,M10.5.0/3";

PlatformClock& Clock() { return PlatformClock::System(); }

long long Utc(int year, int month, int day, int hour, int minute, int second) {
  return zelbase::detail::DaysFromCivil(year, month, day) * 86400 + hour * 3600 + minute * 60 + second;
}

long HhMmSs(const CalendarTime& time) { return time.hour * 10000L + time.minute * 100L + time.second; }
long YyyyMmDd(const CalendarTime& time) { return time.year * 10000L + time.month * 100L + time.day; }

TEST(SystemClock, IsTheServiceInForceByDefault) { EXPECT_EQ(&PlatformService<PlatformClock>::Current(), &PlatformClock::System()); }

TEST(SystemClock, CounterHasAConstantFrequencyAndNeverGoesBack) {
  EXPECT_GE(Clock().Frequency(), 1000);
  EXPECT_EQ(Clock().Frequency(), Clock().Frequency());
  long long former = Clock().Counter();
  for (int i = 0; i < 100000; ++i) {
    const long long now = Clock().Counter();
    ASSERT_GE(now, former);
    former = now;
  }
}

TEST(SystemClock, CounterAndTickShareTheirPace) {
  const long long before = Clock().Counter() / (Clock().Frequency() / 1000);
  const unsigned int tick = Clock().TickMilliseconds();
  const long long after = Clock().Counter() / (Clock().Frequency() / 1000);
  EXPECT_LE(tick - static_cast<unsigned int>(before), static_cast<unsigned int>(after - before));
}

TEST(SystemClock, WallClockAgreesWithTheLanguagesOwn) {
  const auto milliseconds = [] {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
  };
  const long long before = milliseconds();
  const WallClockReading reading = Clock().WallClock();
  const long long after = milliseconds();
  EXPECT_LE(before, reading.seconds * 1000 + reading.milliseconds);
  EXPECT_LE(reading.seconds * 1000 + reading.milliseconds, after);
  EXPECT_GE(reading.milliseconds, 0);
  EXPECT_LE(reading.milliseconds, 999);
}

TEST(SystemClock, DaylightFlagFollowsTheZone) {
  {
    const ScopedTimeZone zone("XST5XDT,0/0,J365/25");  // a zone that is always on summer time
    EXPECT_TRUE(Clock().WallClock().daylight);
    EXPECT_EQ(Clock().TimezoneSeconds(), 5 * 3600) << "without daylight saving";
  }
  const ScopedTimeZone zone("XST5");
  EXPECT_FALSE(Clock().WallClock().daylight);
}

TEST(SystemClock, TimezoneIsPositiveWestOfGreenwich) {
  const ScopedTimeZone west("XST3:30");
  EXPECT_EQ(Clock().TimezoneSeconds(), 12600);
  const ScopedTimeZone east(kCentralEurope);
  EXPECT_EQ(Clock().TimezoneSeconds(), -3600);
}

TEST(SystemClock, LocalTimeKnowsSummerAndWinter) {
  const ScopedTimeZone zone(kCentralEurope);
  CalendarTime winter;
  ASSERT_TRUE(Clock().LocalTime(Utc(2009, 2, 13, 23, 31, 30), winter));
  EXPECT_EQ(YyyyMmDd(winter), 20090214);
  EXPECT_EQ(HhMmSs(winter), 3130);
  EXPECT_EQ(winter.dayOfYear, 44);
  EXPECT_EQ(winter.dayOfWeek, 6);
  EXPECT_EQ(winter.daylight, 0);

  CalendarTime summer;
  ASSERT_TRUE(Clock().LocalTime(Utc(2024, 7, 1, 10, 0, 5), summer));
  EXPECT_EQ(HhMmSs(summer), 120005);
  EXPECT_EQ(summer.daylight, 1);
}

TEST(SystemClock, UtcTimeHasNoZone) {
  const ScopedTimeZone zone(kCentralEurope);
  CalendarTime utc;
  ASSERT_TRUE(Clock().UtcTime(1234567890, utc));
  EXPECT_EQ(YyyyMmDd(utc), 20090213);
  EXPECT_EQ(HhMmSs(utc), 233130);
  EXPECT_EQ(utc.dayOfYear, 43);
  EXPECT_EQ(utc.dayOfWeek, 5);
  EXPECT_EQ(utc.daylight, 0);
}

TEST(SystemClock, ConversionsRefuseSecondsOutsideTheirRangeAndKeepTheOutput) {
  constexpr long long kLast = 32535215999;
  CalendarTime calendar;
  EXPECT_TRUE(Clock().UtcTime(kLast, calendar));
  EXPECT_EQ(YyyyMmDd(calendar), 30001231);
  EXPECT_EQ(HhMmSs(calendar), 235959);
  EXPECT_TRUE(Clock().LocalTime(0, calendar));

  for (const long long seconds : {-1LL, kLast + 1, std::numeric_limits<long long>::min(), std::numeric_limits<long long>::max()}) {
    calendar.year = 4711;
    EXPECT_FALSE(Clock().UtcTime(seconds, calendar));
    EXPECT_FALSE(Clock().LocalTime(seconds, calendar));
    EXPECT_EQ(calendar.year, 4711);
  }
}

TEST(SystemClock, FromLocalTimeInvertsLocalTime) {
  const ScopedTimeZone zone(kCentralEurope);
  for (long long seconds = 0; seconds < 2000000000; seconds += 86413 * 7) {
    CalendarTime local;
    ASSERT_TRUE(Clock().LocalTime(seconds, local));
    long long back = -1;
    ASSERT_TRUE(Clock().FromLocalTime(local, back));
    ASSERT_EQ(back, seconds);
  }
}

TEST(SystemClock, FromLocalTimeLetsTheZoneDecideUnknownDaylight) {
  const ScopedTimeZone zone(kCentralEurope);
  CalendarTime noon;
  noon.year = 2024;
  noon.month = 7;
  noon.day = 1;
  noon.hour = 12;
  long long seconds = 0;
  ASSERT_TRUE(Clock().FromLocalTime(noon, seconds));
  EXPECT_EQ(seconds, Utc(2024, 7, 1, 10, 0, 0));
  noon.daylight = 0;
  ASSERT_TRUE(Clock().FromLocalTime(noon, seconds));
  EXPECT_EQ(seconds, Utc(2024, 7, 1, 11, 0, 0));
}

TEST(SystemClock, FromLocalTimeLetsFieldsRunOver) {
  const ScopedTimeZone zone("XST0");
  CalendarTime calendar;
  calendar.year = 1999;
  calendar.month = 14;
  calendar.day = 31;
  calendar.second = -1;
  long long seconds = 0;
  ASSERT_TRUE(Clock().FromLocalTime(calendar, seconds));
  EXPECT_EQ(seconds, Utc(2000, 3, 2, 0, 0, 0) - 1);
}

TEST(SystemClock, TheLastSecondOf1969IsNoFailure) {
  const ScopedTimeZone zone("XST0");
  CalendarTime calendar;
  calendar.second = -1;
  long long seconds = 0;
  EXPECT_TRUE(Clock().FromLocalTime(calendar, seconds));
  EXPECT_EQ(seconds, -1);
}

TEST(SystemClock, FromLocalTimeTakesAnyFields) {
  constexpr int kHighest = std::numeric_limits<int>::max();
  constexpr int kLowest = std::numeric_limits<int>::min();
  for (const int value : {kHighest, kLowest}) {
    CalendarTime calendar;
    calendar.year = calendar.month = calendar.day = calendar.hour = calendar.minute = calendar.second = value;
    calendar.daylight = value;
    long long seconds = 4711;
    if (!Clock().FromLocalTime(calendar, seconds)) {
      EXPECT_EQ(seconds, 4711);
    }
  }
  CalendarTime calendar;
  calendar.month = kLowest;
  long long seconds = 4711;
  EXPECT_FALSE(Clock().FromLocalTime(calendar, seconds));
  EXPECT_EQ(seconds, 4711);
}

TEST(SystemClock, SleepsAtLeastAsLongAsTold) {
  const long long before = Clock().Counter();
  Clock().Sleep(20);
  EXPECT_GE((Clock().Counter() - before) * 1000, 20 * Clock().Frequency());
}

TEST(SystemClock, WaitEndsWithTheEventOrTheTime) {
  PlatformEvent event;
  EXPECT_FALSE(Clock().Wait(event, 0));
  EXPECT_FALSE(Clock().Wait(event, 5));
  event.Set();
  EXPECT_TRUE(Clock().Wait(event, 0));
  EXPECT_TRUE(Clock().Wait(event, 0xFFFFFFFFu));
}

// Only dates that are refused before the system is asked: no test may reach the real clock.
TEST(SystemClock, SettingRefusesDatesThatDoNotExist) {
  EXPECT_FALSE(Clock().SetSystemClock(SYSTEMTIME{2023, 2, 0, 29, 0, 0, 0, 0}));
  EXPECT_FALSE(Clock().SetSystemClock(SYSTEMTIME{0, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_FALSE(Clock().SetSystemClock(SYSTEMTIME{1600, 1, 0, 1, 0, 0, 0, 0}));
}

}  // namespace
