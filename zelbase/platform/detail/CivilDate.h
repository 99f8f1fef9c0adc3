// Calendar arithmetic of the proleptic Gregorian calendar, without zones and without the system's calendar calls.
// Neighbours: PlatformClock.h for local time by the zone's rules; COleDateTime.h, which counts days from another zero.
#pragma once

#include "zelbase/platform/PlatformClock.h"

namespace zelbase::detail {

inline constexpr long long kSecondsPerDay = 86400;

// The range of the platform's calendar calls: 1970-01-01 00:00:00 to 3000-12-31 23:59:59 UTC.
inline constexpr long long kFirstCalendarSecond = 0;
inline constexpr long long kLastCalendarSecond = 32535215999;

constexpr bool IsCalendarSecond(long long seconds) { return seconds >= kFirstCalendarSecond && seconds <= kLastCalendarSecond; }

constexpr long long FloorDivide(long long value, long long divisor) {
  const long long quotient = value / divisor;
  return quotient * divisor > value ? quotient - 1 : quotient;
}

constexpr bool IsLeapYear(long long year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

// Length of `month` (1..12) in days.
constexpr int DaysInMonth(long long year, int month) {
  if (month == 2) return IsLeapYear(year) ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

// Days from 1970-01-01 to the first of January of `year`, negative before; |year| up to 10^12.
constexpr long long DaysToYear(long long year) {
  const long long before = year - 1;
  const long long leapDays = FloorDivide(before, 4) - FloorDivide(before, 100) + FloorDivide(before, 400);
  return (year - 1970) * 365 + leapDays - 477;  // 477 leap days lie before 1970
}

// Days from 1970-01-01 to a date. A month or day beyond its range runs over: month 13 is January of the next year, day 0
// the last of the month before. Any int fits.
constexpr long long DaysFromCivil(long long year, long long month, long long day) {
  const long long carriedYear = year + FloorDivide(month - 1, 12);
  const int inYear = static_cast<int>(month - 1 - FloorDivide(month - 1, 12) * 12) + 1;
  long long days = DaysToYear(carriedYear);
  for (int before = 1; before < inYear; ++before) days += DaysInMonth(carriedYear, before);
  return days + day - 1;
}

// Seconds from 1970-01-01 00:00:00 to a date and time of day; fields beyond their range run over.
constexpr long long SecondsFromCivil(const CalendarTime& calendar) {
  return DaysFromCivil(calendar.year, calendar.month, calendar.day) * kSecondsPerDay + calendar.hour * 3600LL + calendar.minute * 60LL +
         calendar.second;
}

// The inverse of SecondsFromCivil, with day of the year and of the week; `daylight` is 0. |seconds| up to 10^16.
constexpr CalendarTime CivilFromSeconds(long long seconds) {
  const long long days = FloorDivide(seconds, kSecondsPerDay);
  const int inDay = static_cast<int>(seconds - days * kSecondsPerDay);

  long long year = 1970 + FloorDivide(days * 400, 146097);  // the mean year has 365.2425 days: at most one off
  while (DaysToYear(year) > days) --year;
  while (DaysToYear(year + 1) <= days) ++year;

  CalendarTime calendar;
  calendar.year = static_cast<int>(year);
  calendar.dayOfYear = static_cast<int>(days - DaysToYear(year));
  calendar.month = 1;
  calendar.day = calendar.dayOfYear + 1;
  while (calendar.day > DaysInMonth(year, calendar.month)) {
    calendar.day -= DaysInMonth(year, calendar.month);
    ++calendar.month;
  }
  calendar.hour = inDay / 3600;
  calendar.minute = inDay / 60 % 60;
  calendar.second = inDay % 60;
  calendar.dayOfWeek = static_cast<int>(days + 4 - FloorDivide(days + 4, 7) * 7);  // 1970-01-01 was a Thursday
  calendar.daylight = 0;
  return calendar;
}

// True when every field lies within its range: month 1..12, the day within its month, time of day, milliseconds 0..999,
// and the year 1601 or later, where the platform's clock begins. The day of the week is not looked at.
constexpr bool IsValidSystemTime(const SYSTEMTIME& time) {
  return time.wYear >= 1601 && time.wMonth >= 1 && time.wMonth <= 12 && time.wDay >= 1 &&
         time.wDay <= DaysInMonth(time.wYear, time.wMonth) && time.wHour <= 23 && time.wMinute <= 59 && time.wSecond <= 59 &&
         time.wMilliseconds <= 999;
}

// Whole seconds since 1970 of a UTC date and time; the milliseconds are left to the caller.
constexpr long long SecondsFromSystemTime(const SYSTEMTIME& time) {
  return DaysFromCivil(time.wYear, time.wMonth, time.wDay) * kSecondsPerDay + time.wHour * 3600LL + time.wMinute * 60LL + time.wSecond;
}

}  // namespace zelbase::detail
