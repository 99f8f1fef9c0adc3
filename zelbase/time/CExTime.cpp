#include "zelbase/time/CExTime.h"

#include <array>
#include <cmath>
#include <string_view>

#include "zelbase/frame/detail/Characters.h"
#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/platform/CAtlException.h"
#include "zelbase/platform/LockGuard.h"
#include "zelbase/platform/detail/CivilDate.h"
#include "zelbase/time/CExTimeSync.h"
#include "zelbase/time/detail/TimeText.h"

using zelbase::detail::AppendHex;
using zelbase::detail::CivilFromSeconds;
using zelbase::detail::IsCalendarSecond;
using zelbase::detail::ScanHex64;
using zelbase::detail::SecondsFromCivil;
using zelbase::detail::ToCount;
using zelbase::detail::ToCount32;
using zelbase::detail::WholeSeconds;

constinit std::atomic<unsigned int> CExTime::m_version{0};
constinit std::atomic<double> CExTime::m_time1970Base{0.0};
constinit std::atomic<double> CExTime::m_a0{0.0};
constinit std::atomic<double> CExTime::m_a1{0.0};
constinit std::atomic<double> CExTime::m_p0{0.0};
constinit std::atomic<double> CExTime::m_lastUtcUpdate{0.0};
constinit bool CExTime::m_masterClock = true;
constinit std::atomic<bool> CExTime::m_bTimeSyncDone{false};
constinit bool CExTime::m_firstTimeInit = false;
constinit Locker CExTime::m_lock;
constinit CExTime::Reference CExTime::m_prevZelTime{0.0};

namespace {

constexpr double kWrap = 4294967296.0;  // milliseconds in one cycle of a 32-bit count
constexpr double kHalfWrap = 2147483648.0;
constexpr unsigned int kSettleMilliseconds = 5;  // the wait before the wall clock is read for good
constexpr std::string_view kStampFront = "<0x";
constexpr int kStampDigits = 16;
constexpr double kJulianOf1970 = 2440587.5;
constexpr double kMillisecondsPerDay = 8.64e7;
constexpr unsigned int kUnspecifiedFailure = 0x80004005u;
constexpr unsigned int kInvalidArgument = 0x80070057u;

using MonthEnds = std::array<int, 13>;
constexpr MonthEnds kCommonYear = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};
constexpr MonthEnds kLeapYear = {0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335, 366};

// Writers release each value, readers acquire it: who has seen one value of a change also sees that it has begun.
double Read(const std::atomic<double>& member) { return member.load(std::memory_order_acquire); }
void Write(std::atomic<double>& member, double value) { member.store(value, std::memory_order_release); }

// What brings `raw` into the cycle nearest to `previous`.
double WrapShift(double raw, double previous) {
  // Kept: exactly half a cycle either way is no wrap.
  if (previous - raw > kHalfWrap) return kWrap;
  if (raw - previous > kHalfWrap) return -kWrap;
  return 0.0;
}

PlatformClock& CurrentClock() { return PlatformService<PlatformClock>::Current(); }

// Both numbers become doubles before the division, which is done in exactly this form everywhere.
double ToMilliseconds(long long counter, long long frequency) {
  return static_cast<double>(counter) / (static_cast<double>(frequency) / 1000.0);
}

double CounterMilliseconds(PlatformClock& clock) {
  const long long frequency = clock.Frequency();
  return ToMilliseconds(clock.Counter(), frequency);
}

// Zone offset now in seconds, positive west.
long ZoneSeconds(PlatformClock& clock, const WallClockReading& wall) {
  // Kept: daylight saving counts as one hour, whatever the zone saves; stamps of other machines are reckoned the same
  // way.
  return clock.TimezoneSeconds() - (wall.daylight ? 3600 : 0);
}

// Local time of `seconds`; -1 in hour, minute and second when there is none.
CalendarTime LocalTimeOfDay(CTime seconds) {
  CalendarTime calendar;
  if (!CurrentClock().LocalTime(seconds, calendar)) calendar.hour = calendar.minute = calendar.second = -1;
  return calendar;
}

SYSTEMTIME ToSystemTime(const CalendarTime& calendar) {
  SYSTEMTIME result;
  result.wYear = static_cast<unsigned short>(calendar.year);
  result.wMonth = static_cast<unsigned short>(calendar.month);
  result.wDayOfWeek = static_cast<unsigned short>(calendar.dayOfWeek);
  result.wDay = static_cast<unsigned short>(calendar.day);
  result.wHour = static_cast<unsigned short>(calendar.hour);
  result.wMinute = static_cast<unsigned short>(calendar.minute);
  result.wSecond = static_cast<unsigned short>(calendar.second);
  return result;
}

// Whether a date has read back equal. A day that its month does not have, by a clock with a calendar of its own, comes back in another.
bool SameSecond(const SYSTEMTIME& a, const SYSTEMTIME& b) {
  // Unreached: another year or day in the same month
  return a.wYear == b.wYear && a.wMonth == b.wMonth && a.wDay == b.wDay &&
         // Unreached: another time of the same day
         a.wHour == b.wHour && a.wMinute == b.wMinute && a.wSecond == b.wSecond;
}

// What both ways back from a Julian day begin with.
struct JulianParts {
  long long dayInCentury;  // 0 = 1 March of the first year
  long long yearInCentury;
  long long century;

  int Year() const { return static_cast<int>(yearInCentury + 100 * century); }
};

JulianParts SplitJulian(int julianDay) {
  const double x = static_cast<double>(julianDay - 1721119LL) * 4.0 - 1.0;
  JulianParts parts;
  parts.dayInCentury = ToCount(std::fmod(x, 146097.0) * 0.25);
  parts.yearInCentury = (4 * parts.dayInCentury + 3) / 1461;
  parts.century = ToCount(x) / 146097;
  return parts;
}

long long LeapDays(long long year) { return year / 4 - year / 100 + year / 400; }

// January and February count as months 13 and 14 of the year before.
void CountFromMarch(long long& month, long long& year) {
  if (month >= 3) return;
  month += 12;
  --year;
}

}  // namespace

CExTime::CExTime() { CExTimeSync::GetExTimeSync(); }

double CExTime::MakeMilliSec(const WallClockReading& wall) {
  return static_cast<double>(wall.seconds) * 1000.0 + static_cast<double>(wall.milliseconds);
}

class CExTime::Change {
 public:
  Change() { m_version.store(m_version.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed); }
  ~Change() { m_version.store(m_version.load(std::memory_order_relaxed) + 1, std::memory_order_release); }
  Change(const Change&) = delete;
  Change& operator=(const Change&) = delete;
};

void CExTime::EstablishBase() {
  PlatformClock& clock = CurrentClock();
  clock.Sleep(kSettleMilliseconds);
  const double wall = MakeMilliSec(clock.WallClock());
  const double counter = CounterMilliseconds(clock);
  const Change change;
  Write(m_prevZelTime, wall);
  m_bTimeSyncDone.store(true, std::memory_order_release);
  Write(m_time1970Base, wall - counter);
}

double CExTime::ApplyModel(double raw) {
  const double a0 = Read(m_a0);
  // Kept: only a0 is asked here, unlike GetZelTime; a model with slope 0.0 is a constant.
  if (std::isnan(a0) || a0 == 0.0) return raw;
  return a0 + (raw - Read(m_p0)) * Read(m_a1);
}

// Places `raw` and makes it the reference. Other threads may move the reference meanwhile, but not begin to.
double CExTime::Remember(double base, double raw) {
  const Change change;
  double previous = Read(m_prevZelTime);
  double shift = WrapShift(raw, previous);
  // Unreached: by chance only, when a reader without the lock moves the reference between the two lines.
  while (!m_prevZelTime.compare_exchange_weak(previous, shift == 0.0 ? raw : raw + shift)) {
    shift = WrapShift(raw, previous);
  }
  if (shift == 0.0) return raw;
  // Kept: a slave's base is its master's business and does not follow a wrap.
  if (m_masterClock) Write(m_time1970Base, base + shift);
  return raw + shift;
}

// As the way under the lock, when the base is there, no wrap has come, and nothing changes meanwhile. The exchange fails
// when another thread has moved the reference since it was read, and so also when that came with another base.
bool CExTime::TryGetExTime(double counterMilliseconds, double& time) {
  constexpr int kAttempts = 8;
  // Unreached: by chance only, when others come between in every attempt.
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const unsigned int version = m_version.load(std::memory_order_acquire);
    if ((version & 1) != 0 || !m_bTimeSyncDone.load(std::memory_order_acquire)) return false;
    const double raw = Read(m_time1970Base) + counterMilliseconds;
    const double corrected = ApplyModel(raw);
    double previous = Read(m_prevZelTime);
    // Unreached: by chance only, when a change begins between the lines above.
    if (m_version.load(std::memory_order_relaxed) != version) continue;
    if (counterMilliseconds > 0.0) {
      if (WrapShift(raw, previous) != 0.0) return false;
      // Unreached: by chance only, when another reader comes between.
      if (!m_prevZelTime.compare_exchange_strong(previous, raw)) continue;
    }
    time = corrected;
    return true;
  }
  return false;
}

double CExTime::GetExTime(double counterMilliseconds) const {
  double time = 0.0;
  if (TryGetExTime(counterMilliseconds, time)) return time;
  const LockGuard guard(m_lock);
  if (!m_bTimeSyncDone.load(std::memory_order_relaxed)) EstablishBase();
  const double base = Read(m_time1970Base);
  const double raw = base + counterMilliseconds;
  // Kept: readings of 0.0, below, and NaN leave the reference alone; callers ask for the base by GetExTime(0.0).
  return ApplyModel(counterMilliseconds > 0.0 ? Remember(base, raw) : raw);
}

double CExTime::GetZelTime(double time) const {
  const LockGuard guard(m_lock);
  const double a0 = Read(m_a0), a1 = Read(m_a1);
  // Kept: a0 = 0.0 does not switch the model off here, unlike GetExTime; and the base stays in, callers take it off.
  if (std::isnan(a0) || std::isnan(a1) || a1 == 0.0) return time;
  return (time - a0) / a1 + Read(m_p0);
}

double CExTime::GetCurTime() const { return GetExTime(GetCurSystemTime()); }

void CExTime::GetCurTime(CTime& seconds, int& milliseconds) const {
  const double now = GetCurTime();
  milliseconds = zelbase::detail::MillisecondsBeyondSeconds(now);
  seconds = WholeSeconds(now);
}

// Kept: the bare counter under the name of the system's time; device drivers call it for intervals.
double CExTime::GetCurSystemTime() const { return CounterMilliseconds(CurrentClock()); }

unsigned long CExTime::GetWinTime(double time) const {
  const LockGuard guard(m_lock);
  // Kept: the base alone is taken off, not the model.
  double difference = time - m_time1970Base.load(std::memory_order_relaxed);
  if (difference < 0.0) difference += kWrap;
  if (difference > kWrap) difference -= kWrap;
  return static_cast<unsigned int>(ToCount32(difference));
}

double CExTime::GetWin1970BaseTime() const { return m_time1970Base.load(std::memory_order_relaxed); }

bool CExTime::SetBaseTime(double base) const {
  m_bTimeSyncDone.store(true, std::memory_order_release);
  const LockGuard guard(m_lock);
  m_masterClock = false;
  const double now = GetCurSystemTime();
  const Change change;
  Write(m_prevZelTime, now + base);
  Write(m_time1970Base, base);
  return true;
}

void CExTime::SetModel(double a0, double a1, double p0, double utcUpdate) {
  const Change change;
  Write(m_a0, a0);
  Write(m_a1, a1);
  Write(m_p0, p0);
  // Within the change: who reckons with the model of an outside source also sees that there is one.
  Write(m_lastUtcUpdate, utcUpdate);
}

bool CExTime::SetUtcCoeffs(double a0, double a1, double p0) const {
  const LockGuard guard(m_lock);
  SetModel(a0, a1, p0, GetCurSystemTime());
  return true;
}

double CExTime::GetUtcUpdateAge() const { return GetCurSystemTime() - m_lastUtcUpdate.load(std::memory_order_relaxed); }

bool CExTime::AdjustRTC() const {
  const LockGuard guard(m_lock);
  PlatformClock& clock = CurrentClock();
  clock.Sleep(kSettleMilliseconds);
  const double time = GetExTime(CounterMilliseconds(clock));

  // Kept: the zone of now is added and the sum broken down as local time, so that within hours of a change of daylight
  // saving the clock may be set one hour off; all programs of the suite set it alike.
  const long zone = ZoneSeconds(clock, clock.WallClock()) * 1000;
  const double seconds = (static_cast<double>(zone) + time) / 1000.0;
  CalendarTime calendar;
  if (!clock.LocalTime(ToCount(seconds), calendar)) return true;
  SYSTEMTIME utc = ToSystemTime(calendar);
  utc.wMilliseconds = static_cast<unsigned short>(ToCount32(std::fmod(seconds * 1000.0, 1000.0)));
  clock.SetSystemClock(utc);
  return true;
}

long CExTime::GetTimezone() {
  PlatformClock& clock = CurrentClock();
  return ZoneSeconds(clock, clock.WallClock()) * 1000;
}

std::string CExTime::FormatStamp(long long counter) {
  std::string stamp(kStampFront);
  AppendHex(stamp, static_cast<unsigned long long>(counter), kStampDigits);
  stamp += '>';
  return stamp;
}

std::string CExTime::GetTimeStampString() const { return FormatStamp(CurrentClock().Counter()); }

std::string CExTime::GetTimeStampString(double time) const {
  const double raw = GetZelTime(time) - m_time1970Base.load(std::memory_order_relaxed);
  const double frequency = static_cast<double>(CurrentClock().Frequency());
  return FormatStamp(ToCount(frequency * raw / 1000.0));
}

double CExTime::TimeStampStringToTime(std::string stamp) const {
  std::string_view text = stamp;
  if (!text.starts_with(kStampFront)) return 0.0;
  text.remove_prefix(kStampFront.size());
  unsigned long long counter = 0;
  // The width of the scan counts after the blanks.
  if (ScanHex64(zelbase::detail::TrimLeft(text).substr(0, kStampDigits), counter) == 0) return 0.0;
  return GetExTime(ToMilliseconds(static_cast<long long>(counter), CurrentClock().Frequency()));
}

int CExTime::ConvertToJulian(int day, int year) const { return static_cast<int>(day + 365LL * year + LeapDays(year) + 1721119); }

int CExTime::ConvertToJulian(int month, int day, int year) const {
  long long marchMonth = month, marchYear = year;
  CountFromMarch(marchMonth, marchYear);
  return static_cast<int>((153 * marchMonth - 457) / 5 + day + 365 * marchYear + LeapDays(marchYear) + 1721119);
}

double CExTime::ConvertToJulianFrac(int month, int day, int year) const {
  long long marchMonth = month, marchYear = year;
  CountFromMarch(marchMonth, marchYear);
  const long long century = marchYear / 100;
  const long long wholeDays = ToCount(365.25 * static_cast<double>(marchYear + 4716)) +
                              ToCount(30.6001 * static_cast<double>(marchMonth + 1)) + day + century / 4 - century + 2;
  return static_cast<double>(wholeDays) - 1524.5;
}

int CExTime::ConvertFromJulian(int julianDay, int& year) const {
  const JulianParts parts = SplitJulian(julianDay);
  year = parts.Year();
  return 1 + ToCount32(std::fmod(static_cast<double>(4 * parts.dayInCentury) + 3.0, 1461.0) / 4);
}

int CExTime::ConvertFromJulian(int julianDay, int& month, int& year) const {
  const JulianParts parts = SplitJulian(julianDay);
  // Kept: the day within the century stands where the day within the year belongs; see the header.
  const long long e = (parts.dayInCentury + 4) / 4;
  const int marchMonth = static_cast<int>((5 * e - 3) / 153);
  month = marchMonth < 10 ? marchMonth + 3 : marchMonth - 9;
  year = parts.Year() + (marchMonth < 10 ? 0 : 1);
  return (ToCount32(std::fmod(static_cast<double>(5 * e) - 3.0, 153.0)) + 5) / 5;
}

int CExTime::LeapYear(int year) const { return zelbase::detail::IsLeapYear(year) ? 1 : 0; }

bool CExTime::JulianDate(int year, int dayOfYear, int& month, int& day) const {
  const MonthEnds& ends = LeapYear(year) != 0 ? kLeapYear : kCommonYear;
  if (dayOfYear < 1 || dayOfYear > ends.back()) return false;
  std::size_t index = 1;
  while (ends[index] < dayOfYear) ++index;
  month = static_cast<int>(index);
  day = dayOfYear - ends[index - 1];
  return true;
}

CTime CExTime::ConvertToCTime(double time) const { return MsecToCTime(time); }

CTime CExTime::MsecToCTime(double time) const { return WholeSeconds(time); }

double CExTime::ConvertCTime(CTime seconds) const { return static_cast<double>(seconds) * 1000.0; }

COleDateTime CExTime::ConvertToOleTime(double time) const {
  COleDateTime date;
  ConvertToOleTime(time, &date);
  return date;
}

void CExTime::ConvertToOleTime(double time, COleDateTime* date) const {
  if (date == nullptr) throw CAtlException(kInvalidArgument);
  date->m_dt = 0.0;
  date->m_status = COleDateTime::invalid;
  CalendarTime calendar;
  if (!CurrentClock().LocalTime(WholeSeconds(time), calendar)) return;
  const SYSTEMTIME local = ToSystemTime(calendar);  // Kept: without milliseconds, so that the date reads back equal
  SYSTEMTIME back;
  // Unreached: a date that does not read back at all, since it was just made
  if (!SystemTimeToVariantTime(local, date->m_dt) || !VariantTimeToSystemTime(date->m_dt, back)) return;
  if (SameSecond(local, back)) date->m_status = COleDateTime::valid;
}

double CExTime::ConvertOleTime(const COleDateTime& date) const {
  SYSTEMTIME local;
  if (date.m_status != COleDateTime::valid || !VariantTimeToSystemTime(date.m_dt, local)) return 0.0;
  if (local.wYear < 1900) return 0.0;
  CalendarTime calendar;
  calendar.year = local.wYear;
  calendar.month = local.wMonth;
  calendar.day = local.wDay;
  calendar.hour = local.wHour;
  calendar.minute = local.wMinute;
  calendar.second = local.wSecond;
  CTime seconds = 0;
  if (!CurrentClock().FromLocalTime(calendar, seconds)) return 0.0;
  return ConvertCTime(seconds);
}

CTime CExTime::UtcDateToTime(int year, int month, int day, int hour, int minute, int second) {
  if (year < 1970 || year > 3000 || month < 1 || month > 12 || day < 1 || day > 31) return 0;
  const bool isTimeOfDay = hour >= 0 && hour <= 23 && minute >= 0 && minute <= 59 && second >= 0 && second <= 59;
  if (!isTimeOfDay) throw CAtlException(kUnspecifiedFailure);
  CalendarTime calendar;
  calendar.year = year;
  calendar.month = month;
  calendar.day = day;
  calendar.hour = hour;
  calendar.minute = minute;
  calendar.second = second;
  return SecondsFromCivil(calendar);
}

void CExTime::TimeToUtcDate(CTime time, int& year, int& month, int& day, int& hour, int& minute, int& second) {
  if (!IsCalendarSecond(time)) return;
  const CalendarTime utc = CivilFromSeconds(time);
  year = utc.year;
  month = utc.month;
  day = utc.day;
  hour = utc.hour;
  minute = utc.minute;
  second = utc.second;
}

bool CExTime::TimeTo5qTime(double time, tagTIME5Q* record) const {
  if (record == nullptr) return false;
  *record = tagTIME5Q{};
  const CTime seconds = WholeSeconds(time);
  if (!IsCalendarSecond(seconds)) return true;
  const CalendarTime utc = CivilFromSeconds(seconds);
  record->year = static_cast<unsigned short>(utc.year);
  record->day = static_cast<unsigned short>(utc.dayOfYear + 1);
  // Kept: a fraction just below a minute may round up to 60 seconds; readers carry it over by their arithmetic.
  record->seconds = static_cast<float>(std::fmod(time / 1000.0, 60.0));
  record->hours = static_cast<unsigned char>(utc.hour);
  record->minutes = static_cast<unsigned char>(utc.minute);
  return true;
}

bool CExTime::TimeFrom5qTime(double& time, const tagTIME5Q* record) const {
  if (record == nullptr) return false;
  int month = 0, day = 0;
  if (!JulianDate(record->year, record->day, month, day)) return false;
  // Kept: the time of day is not tested; sonars send 60 seconds and more.
  const double days = ConvertToJulianFrac(month, day, record->year) - kJulianOf1970;
  const double secondsOfDay =
      (static_cast<double>(record->hours) * 60.0 + static_cast<double>(record->minutes)) * 60.0 + static_cast<double>(record->seconds);
  time = days * kMillisecondsPerDay + secondsOfDay * 1000.0;
  return true;
}

long CExTime::GetHHMMSS(double time) const {
  const CalendarTime local = LocalTimeOfDay(WholeSeconds(time));
  return local.hour * 10000L + local.minute * 100L + local.second;
}

CTime CExTime::TimestampToDaytime(double time, double& secondsOfDay) const {
  const CTime seconds = WholeSeconds(time);
  const CalendarTime local = LocalTimeOfDay(seconds);
  secondsOfDay = local.hour * 3600 + local.minute * 60 + local.second + std::fmod(time, 1000.0) / 1000.0;
  return seconds;
}

std::string CExTime::TimeToString(double time, bool showMilliseconds, bool showDate, bool showSeconds) const {
  return zelbase::detail::FormatTime(time, showMilliseconds, showDate, showSeconds);
}
