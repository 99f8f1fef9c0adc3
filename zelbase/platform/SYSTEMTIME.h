// The platform's broken-down time. Neighbour: PlatformClock.h converts to and from it.
#pragma once

// A calendar date and time of day in 16-bit fields. The zone (local or UTC) is the business of who hands it over.
struct SYSTEMTIME {
  unsigned short wYear = 0;          // full year
  unsigned short wMonth = 0;         // 1..12
  unsigned short wDayOfWeek = 0;     // 0 = Sunday
  unsigned short wDay = 0;           // 1..31
  unsigned short wHour = 0;          // 0..23
  unsigned short wMinute = 0;        // 0..59
  unsigned short wSecond = 0;        // 0..59
  unsigned short wMilliseconds = 0;  // 0..999
};
