#include "zelbase/platform/COleDateTime.h"

#include <cmath>

#include "zelbase/platform/detail/CivilDate.h"

namespace {

using zelbase::detail::DaysFromCivil;
using zelbase::detail::kSecondsPerDay;

constexpr long long kZero = DaysFromCivil(1899, 12, 30);
constexpr long long kFirstDay = DaysFromCivil(100, 1, 1) - kZero;
constexpr long long kLastDay = DaysFromCivil(9999, 12, 31) - kZero;

bool IsInRange(double days) {
  return std::trunc(days) >= static_cast<double>(kFirstDay) && std::trunc(days) <= static_cast<double>(kLastDay);
}

bool HasValidFields(const SYSTEMTIME& time) {
  return time.wYear >= 100 && time.wYear <= 9999 && time.wMonth >= 1 && time.wMonth <= 12 && time.wDay <= 31 && time.wHour <= 23 &&
         time.wMinute <= 59 && time.wSecond <= 59;
}

}  // namespace

COleDateTime::COleDateTime(double days) : m_dt(days), m_status(IsInRange(days) ? valid : invalid) {}

COleDateTime::COleDateTime(const SYSTEMTIME& time) {
  if (!SystemTimeToVariantTime(time, m_dt)) m_status = invalid;
}

bool SystemTimeToVariantTime(const SYSTEMTIME& time, double& days) {
  if (!HasValidFields(time)) return false;
  const long long day = DaysFromCivil(time.wYear, time.wMonth, time.wDay) - kZero;
  if (day < kFirstDay) return false;  // never behind the last: a day too many only comes of a month of 30
  const double fraction = (time.wHour * 3600 + time.wMinute * 60 + time.wSecond) / 86400.0;
  const double whole = static_cast<double>(day);
  days = whole < 0.0 ? whole - fraction : whole + fraction;  // Kept: the fraction counts forward on either side of zero
  return true;
}

bool VariantTimeToSystemTime(double days, SYSTEMTIME& time) {
  if (!IsInRange(days)) return false;
  const double whole = std::trunc(days);
  // Kept: the fraction counts forward on either side of zero
  const long long seconds = static_cast<long long>(std::floor(std::abs(days - whole) * 86400.0 + 0.5));
  const CalendarTime civil = zelbase::detail::CivilFromSeconds((static_cast<long long>(whole) + kZero) * kSecondsPerDay + seconds);
  if (civil.year > 9999) return false;
  time.wYear = static_cast<unsigned short>(civil.year);
  time.wMonth = static_cast<unsigned short>(civil.month);
  time.wDay = static_cast<unsigned short>(civil.day);
  time.wDayOfWeek = static_cast<unsigned short>(civil.dayOfWeek);
  time.wHour = static_cast<unsigned short>(civil.hour);
  time.wMinute = static_cast<unsigned short>(civil.minute);
  time.wSecond = static_cast<unsigned short>(civil.second);
  time.wMilliseconds = 0;
  return true;
}
