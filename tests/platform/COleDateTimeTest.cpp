#include "zelbase/platform/COleDateTime.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

SYSTEMTIME Moment(int year, int month, int day, int hour = 0, int minute = 0, int second = 0, int milliseconds = 0) {
  const auto narrow = [](int value) { return static_cast<unsigned short>(value); };
  return {narrow(year), narrow(month), 0, narrow(day), narrow(hour), narrow(minute), narrow(second), narrow(milliseconds)};
}

std::string Text(const SYSTEMTIME& time) {
  const auto padded = [](unsigned int value, std::size_t width) {
    const std::string digits = std::to_string(value);
    return std::string(width > digits.size() ? width - digits.size() : 0, '0') + digits;
  };
  return padded(time.wYear, 4) + "-" + padded(time.wMonth, 2) + "-" + padded(time.wDay, 2) + " " + padded(time.wHour, 2) + ":" +
         padded(time.wMinute, 2) + ":" + padded(time.wSecond, 2);
}

std::string TextOf(double days) {
  SYSTEMTIME time;
  return VariantTimeToSystemTime(days, time) ? Text(time) : "refused";
}

// Published examples of the date form, and a few counted by hand.
TEST(COleDateTime, KnownDates) {
  const struct {
    double days;
    SYSTEMTIME time;
  } rows[] = {
      {0.0, Moment(1899, 12, 30)},     {1.0, Moment(1899, 12, 31)},       {2.0, Moment(1900, 1, 1)},         {5.25, Moment(1900, 1, 4, 6)},
      {5.875, Moment(1900, 1, 4, 21)}, {25569.0, Moment(1970, 1, 1)},     {36526.5, Moment(2000, 1, 1, 12)}, {-1.0, Moment(1899, 12, 29)},
      {-657434.0, Moment(100, 1, 1)},  {2958465.0, Moment(9999, 12, 31)},
  };
  for (const auto& row : rows) {
    double days = 0.5;
    ASSERT_TRUE(SystemTimeToVariantTime(row.time, days)) << Text(row.time);
    EXPECT_EQ(days, row.days) << Text(row.time);
    EXPECT_EQ(TextOf(row.days), Text(row.time));
  }
}

TEST(COleDateTime, TheFractionCountsForwardFromMidnightBeforeTheZeroToo) {
  EXPECT_EQ(TextOf(-1.25), "1899-12-29 06:00:00");
  EXPECT_EQ(TextOf(-1.75), "1899-12-29 18:00:00");
  EXPECT_EQ(TextOf(-0.75), "1899-12-30 18:00:00");
  EXPECT_EQ(TextOf(0.75), "1899-12-30 18:00:00");
  double days = 0.0;
  ASSERT_TRUE(SystemTimeToVariantTime(Moment(1899, 12, 29, 6), days));
  EXPECT_EQ(days, -1.25);
  ASSERT_TRUE(SystemTimeToVariantTime(Moment(1899, 12, 30, 18), days));
  EXPECT_EQ(days, 0.75);
}

TEST(COleDateTime, MillisecondsAreDroppedOnTheWayIn) {
  double whole = 0.0, more = 0.0;
  ASSERT_TRUE(SystemTimeToVariantTime(Moment(2009, 2, 13, 23, 31, 30), whole));
  ASSERT_TRUE(SystemTimeToVariantTime(Moment(2009, 2, 13, 23, 31, 30, 999), more));
  EXPECT_EQ(more, whole);
}

TEST(COleDateTime, HalfASecondIsRoundedUpOnTheWayOut) {
  constexpr double kSecond = 1.0 / 86400.0;
  EXPECT_EQ(TextOf(40000.0 + 10.49 * kSecond), "2009-07-06 00:00:10");
  EXPECT_EQ(TextOf(40000.0 + 10.51 * kSecond), "2009-07-06 00:00:11");
  EXPECT_EQ(TextOf(0.5 * kSecond), "1899-12-30 00:00:01");
  EXPECT_EQ(TextOf(40000.0 + 86399.6 * kSecond), "2009-07-07 00:00:00");
  EXPECT_EQ(TextOf(-1.0 - 86399.6 * kSecond), "1899-12-30 00:00:00") << "forward, before the zero too";
}

TEST(COleDateTime, MillisecondsAreZeroAndTheDayOfTheWeekIsGiven) {
  SYSTEMTIME time = Moment(1, 1, 1, 1, 1, 1, 999);
  ASSERT_TRUE(VariantTimeToSystemTime(25569.25, time));
  EXPECT_EQ(time.wMilliseconds, 0);
  EXPECT_EQ(time.wDayOfWeek, 4) << "1970 began on a Thursday";
}

TEST(COleDateTime, ADayBeyondItsMonthRunsOverAndDayZeroIsTheDayBefore) {
  double days = 0.0;
  ASSERT_TRUE(SystemTimeToVariantTime(Moment(2001, 2, 29), days));
  EXPECT_EQ(TextOf(days), "2001-03-01 00:00:00");
  ASSERT_TRUE(SystemTimeToVariantTime(Moment(2001, 2, 31), days));
  EXPECT_EQ(TextOf(days), "2001-03-03 00:00:00");
  ASSERT_TRUE(SystemTimeToVariantTime(Moment(2001, 2, 0), days));
  EXPECT_EQ(TextOf(days), "2001-01-31 00:00:00");
}

TEST(COleDateTime, FieldsOutsideTheirRangeAreRefusedAndTheOutputStays) {
  const SYSTEMTIME bad[] = {
      Moment(99, 12, 31),
      Moment(10000, 1, 1),
      Moment(0, 1, 1),
      Moment(2001, 0, 1),
      Moment(2001, 13, 1),
      Moment(2001, 1, 32),
      Moment(2001, 1, 1, 24),
      Moment(2001, 1, 1, 0, 60),
      Moment(2001, 1, 1, 0, 0, 60),
      Moment(100, 1, 0),
      Moment(65535, 65535, 65535, 65535, 65535, 65535, 65535),
  };
  for (const SYSTEMTIME& time : bad) {
    double days = 4711.0;
    EXPECT_FALSE(SystemTimeToVariantTime(time, days)) << Text(time);
    EXPECT_EQ(days, 4711.0);
  }
}

TEST(COleDateTime, DaysOutsideTheirRangeAreRefusedAndTheOutputStays) {
  EXPECT_EQ(TextOf(-657434.99), "0100-01-01 23:45:36");
  EXPECT_EQ(TextOf(2958465.99), "9999-12-31 23:45:36");
  for (const double days : {-657435.0, 2958466.0, 2958465.999999, 1e300, -1e300, std::numeric_limits<double>::infinity(),
                            -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    SYSTEMTIME time = Moment(4711, 1, 1);
    EXPECT_FALSE(VariantTimeToSystemTime(days, time)) << days;
    EXPECT_EQ(time.wYear, 4711);
  }
}

TEST(COleDateTime, EverySecondOfADayComesBack) {
  for (const int year : {100, 1899, 1900, 2024, 9999}) {
    for (int second = 0; second < 86400; second += 7) {
      const SYSTEMTIME time = Moment(year, 2, 28, second / 3600, second / 60 % 60, second % 60);
      double days = 0.0;
      ASSERT_TRUE(SystemTimeToVariantTime(time, days));
      ASSERT_EQ(TextOf(days), Text(time));
    }
  }
}

TEST(COleDateTime, KnowsItsStatus) {
  EXPECT_EQ(COleDateTime().GetStatus(), COleDateTime::valid);
  EXPECT_EQ(COleDateTime().m_dt, 0.0);

  const COleDateTime good(Moment(2000, 1, 1, 12));
  EXPECT_EQ(good.GetStatus(), COleDateTime::valid);
  EXPECT_EQ(good.m_dt, 36526.5);

  const COleDateTime bad(Moment(2000, 13, 1));
  EXPECT_EQ(bad.GetStatus(), COleDateTime::invalid);
  EXPECT_EQ(bad.m_dt, 0.0);

  EXPECT_EQ(COleDateTime(-657434.5).GetStatus(), COleDateTime::valid);
  EXPECT_EQ(COleDateTime(1e9).GetStatus(), COleDateTime::invalid);
  EXPECT_EQ(COleDateTime(std::nan("")).GetStatus(), COleDateTime::invalid);

  COleDateTime date;
  date.SetStatus(COleDateTime::null);
  EXPECT_EQ(date.m_status, 2);
}

TEST(COleDateTime, TheDayBeforeTheFirstIsRefused) {
  SYSTEMTIME time;
  time.wYear = 100;
  time.wMonth = 1;
  double days = 7.0;
  time.wDay = 0;  // the last of the year 99
  EXPECT_FALSE(SystemTimeToVariantTime(time, days));
  EXPECT_EQ(days, 7.0);
  time.wDay = 1;
  EXPECT_TRUE(SystemTimeToVariantTime(time, days));
  EXPECT_EQ(days, -657434.0);
}

}  // namespace
