#include "zelbase/platform/detail/CivilDate.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace zelbase::detail;

TEST(CivilDate, KnownDaysFromCivil) {
  EXPECT_EQ(DaysFromCivil(1970, 1, 1), 0);
  EXPECT_EQ(DaysFromCivil(1969, 12, 31), -1);
  EXPECT_EQ(DaysFromCivil(1970, 3, 1), 59);
  EXPECT_EQ(DaysFromCivil(2000, 1, 1), 30 * 365 + 7);  // leap days of 1972 to 1996
  EXPECT_EQ(DaysFromCivil(1899, 12, 30), -25569);      // the zero of automation dates
  EXPECT_EQ(DaysFromCivil(1601, 1, 1), -134774);       // the zero of the platform's file times
}

TEST(CivilDate, FieldsBeyondTheirRangeRunOver) {
  EXPECT_EQ(DaysFromCivil(1999, 13, 1), DaysFromCivil(2000, 1, 1));
  EXPECT_EQ(DaysFromCivil(2000, 0, 1), DaysFromCivil(1999, 12, 1));
  EXPECT_EQ(DaysFromCivil(2000, -11, 1), DaysFromCivil(1999, 1, 1));
  EXPECT_EQ(DaysFromCivil(2001, 2, 31), DaysFromCivil(2001, 3, 3));
  EXPECT_EQ(DaysFromCivil(2000, 3, 0), DaysFromCivil(2000, 2, 29));
}

// Walks a calendar by hand, day after day, through four centuries and a bit on either side.
TEST(CivilDate, EveryDayFollowsTheOneBefore) {
  int year = 1569, month = 1, day = 1, dayOfYear = 0;
  int dayOfWeek = 3;  // 401 years before 1970 (Thursday): 400 years are a whole number of weeks, 1969-01-01 a Wednesday
  for (long long days = DaysFromCivil(1569, 1, 1); year < 2401; ++days) {
    const CalendarTime civil = CivilFromSeconds(days * 86400 + 86399);
    ASSERT_EQ(civil.year, year) << days;
    ASSERT_EQ(civil.month, month) << days;
    ASSERT_EQ(civil.day, day) << days;
    ASSERT_EQ(civil.dayOfYear, dayOfYear) << days;
    ASSERT_EQ(civil.dayOfWeek, dayOfWeek) << days;
    ASSERT_EQ(DaysFromCivil(year, month, day), days);
    ASSERT_EQ(civil.hour * 10000 + civil.minute * 100 + civil.second, 235959);

    dayOfWeek = (dayOfWeek + 1) % 7;
    ++day;
    ++dayOfYear;
    const bool leap = year % 400 == 0 || (year % 4 == 0 && year % 100 != 0);
    const int lengths[] = {31, leap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (day > lengths[month - 1]) {
      day = 1;
      if (++month > 12) {
        month = 1;
        ++year;
        dayOfYear = 0;
      }
    }
  }
}

TEST(CivilDate, SecondsBefore1970CountDownwards) {
  const CalendarTime last = CivilFromSeconds(-1);
  EXPECT_EQ(last.year, 1969);
  EXPECT_EQ(last.month, 12);
  EXPECT_EQ(last.day, 31);
  EXPECT_EQ(last.second, 59);
  EXPECT_EQ(SecondsFromCivil(last), -1);
}

TEST(CivilDate, ExtremeFieldsDoNotOverflow) {
  constexpr int kHighest = std::numeric_limits<int>::max();
  constexpr int kLowest = std::numeric_limits<int>::min();
  CalendarTime calendar;
  calendar.year = calendar.month = calendar.day = calendar.hour = calendar.minute = calendar.second = kHighest;
  EXPECT_GT(SecondsFromCivil(calendar), 0);
  calendar.year = calendar.month = calendar.day = calendar.hour = calendar.minute = calendar.second = kLowest;
  EXPECT_LT(SecondsFromCivil(calendar), 0);
}

TEST(CivilDate, LastCalendarSecondIsTheEndOfTheYear3000) {
  EXPECT_EQ(kLastCalendarSecond, DaysFromCivil(3001, 1, 1) * 86400 - 1);
  EXPECT_TRUE(IsCalendarSecond(0));
  EXPECT_FALSE(IsCalendarSecond(-1));
  EXPECT_TRUE(IsCalendarSecond(kLastCalendarSecond));
  EXPECT_FALSE(IsCalendarSecond(kLastCalendarSecond + 1));
}

TEST(CivilDate, SystemTimesThatDoNotExistAreNotValid) {
  const SYSTEMTIME good{2024, 2, 0, 29, 23, 59, 59, 999};
  EXPECT_TRUE(IsValidSystemTime(good));
  EXPECT_EQ(SecondsFromSystemTime(good), DaysFromCivil(2024, 3, 1) * 86400 - 1);

  const SYSTEMTIME bad[] = {
      {1600, 12, 0, 31, 0, 0, 0, 0},
      {2024, 0, 0, 1, 0, 0, 0, 0},
      {2024, 13, 0, 1, 0, 0, 0, 0},
      {2023, 2, 0, 29, 0, 0, 0, 0},
      {2024, 4, 0, 31, 0, 0, 0, 0},
      {2024, 1, 0, 0, 0, 0, 0, 0},
      {2024, 1, 0, 1, 24, 0, 0, 0},
      {2024, 1, 0, 1, 0, 60, 0, 0},
      {2024, 1, 0, 1, 0, 0, 60, 0},
      {2024, 1, 0, 1, 0, 0, 0, 1000},
      {65535, 65535, 65535, 65535, 65535, 65535, 65535, 65535},
  };
  for (const SYSTEMTIME& time : bad) EXPECT_FALSE(IsValidSystemTime(time)) << time.wYear << "-" << time.wMonth;
}

}  // namespace
