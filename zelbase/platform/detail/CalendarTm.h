// Between CalendarTime and the broken-down time of C. Internal to the library.
#pragma once

#include <ctime>

#include "zelbase/platform/PlatformClock.h"

namespace zelbase::detail {

// The year must be at least INT_MIN + 1900 and the month not INT_MIN.
inline std::tm ToTm(const CalendarTime& calendar) {
  std::tm fields{};
  fields.tm_year = calendar.year - 1900;
  fields.tm_mon = calendar.month - 1;
  fields.tm_mday = calendar.day;
  fields.tm_hour = calendar.hour;
  fields.tm_min = calendar.minute;
  fields.tm_sec = calendar.second;
  fields.tm_wday = calendar.dayOfWeek;
  fields.tm_yday = calendar.dayOfYear;
  fields.tm_isdst = calendar.daylight;
  return fields;
}

inline CalendarTime FromTm(const std::tm& fields) {
  CalendarTime calendar;
  calendar.year = fields.tm_year + 1900;
  calendar.month = fields.tm_mon + 1;
  calendar.day = fields.tm_mday;
  calendar.hour = fields.tm_hour;
  calendar.minute = fields.tm_min;
  calendar.second = fields.tm_sec;
  calendar.dayOfYear = fields.tm_yday;
  calendar.dayOfWeek = fields.tm_wday;
  calendar.daylight = fields.tm_isdst;
  return calendar;
}

}  // namespace zelbase::detail
