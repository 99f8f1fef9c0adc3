// The platform's automation date: days as a double, with a status. Neighbours: SYSTEMTIME.h, the broken-down time that it is
// converted from and to; zelbase/time/CExTime.h, which makes one from a time value.
#pragma once

#include "zelbase/platform/SYSTEMTIME.h"
#include "zelbase/platform/ZelBaseApi.h"

// A value. Days count from 1899-12-30 00:00. The whole part is the day, the fraction the time of day, which counts forward
// from midnight before the zero too: -1.25 is 1899-12-29 06:00, and -0.75 the same moment as 0.75.
class ZELBASE_API COleDateTime {
 public:
  enum DateTimeStatus : int { valid = 0, invalid = 1, null = 2 };

  // Day 0, valid.
  COleDateTime() = default;

  // `days` as they are; invalid outside the years 100 to 9999.
  explicit COleDateTime(double days);

  // Invalid, and day 0, for what SystemTimeToVariantTime refuses.
  explicit COleDateTime(const SYSTEMTIME& time);

  DateTimeStatus GetStatus() const { return m_status; }
  void SetStatus(DateTimeStatus status) { m_status = status; }

  double m_dt = 0.0;
  DateTimeStatus m_status = valid;
};

// The broken-down time as days, to the second: milliseconds and the day of the week are not looked at. A day beyond the end
// of its month runs over into the next, and day 0 is the last of the month before; every other field must be within its
// range. False, output untouched, when one is not or the date is outside the years 100 to 9999.
ZELBASE_API bool SystemTimeToVariantTime(const SYSTEMTIME& time, double& days);

// The days as a broken-down time, rounded to the nearest second (half a second up), milliseconds 0. False, output
// untouched, outside the years 100 to 9999 and for NaN.
ZELBASE_API bool VariantTimeToSystemTime(double days, SYSTEMTIME& time);
