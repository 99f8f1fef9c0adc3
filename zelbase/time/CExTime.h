// The suite's one time: what "now" is, and how a time value turns into calendar fields, stamps and texts. Neighbours:
// CExTimeSync.h, the thread that keeps it true; Time5Q.h, the packed record; PlatformClock.h, the clocks it is made
// from.
#pragma once

#include <atomic>
#include <string>

#include "zelbase/concurrency/Locker.h"
#include "zelbase/platform/COleDateTime.h"
#include "zelbase/platform/CTime.h"
#include "zelbase/platform/PlatformClock.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/time/Time5Q.h"

// A handle on the clock of the process. An object holds nothing: all handles show the same clock, and copying one
// copies nothing.
//
//   CExTime time;                                              // the first one starts the clock discipline
//   const double now = time.GetCurTime();                      // milliseconds since 1970-01-01 00:00:00 UTC
//   const std::string text = time.TimeToString(now, true, true, true);   // "11/21/26 10:15:30.250" in the "C" locale
//
// Words:
//   time value       double, milliseconds since 1970-01-01 00:00:00 UTC, with fraction
//   counter reading  double, the high-resolution counter in milliseconds: counter / (frequency / 1000.0)
//   raw time         base + counter reading: a time value before the clock model
//   base             raw time at counter zero; found at first use, or set from a master
//   clock model      corrected = a0 + (raw - p0) * a1; absent until the discipline or SetUtcCoeffs writes it
//   slave            a process that was given its base by SetBaseTime; all others are masters
//
// What always holds:
//   (1) Whole seconds of a time value, and whole milliseconds, are truncated towards zero.
//   (2) A time value is never clamped or held back: a new model may make "now" step either way.
//   (3) Any double and any int may be given anywhere. What does not fit a 64-bit count of seconds, NaN included, counts
//       as the smallest such number, and integers that leave the range of an int wrap.
//   (4) A calendar conversion succeeds for seconds in 0..32535215999 (1970-01-01 to 3000-12-31) and fails outside,
//       local and UTC. Each operation says what it gives then.
//   (5) Everything works in constructors and destructors of statics and in functions called at exit.
//
// Threads: every operation may be called from any thread at once. Now, in the common case, is read without the lock. The
// lock is re-entrant and never held while a caller's code runs. A process that forks while
// another of its threads is inside the clock leaves the child's clock locked, as any lock would be.
class ZELBASE_API CExTime {
 public:
  // Makes sure that the clock discipline of the process has been started.
  CExTime();
  CExTime(const CExTime&) noexcept {}
  CExTime& operator=(const CExTime&) noexcept { return *this; }

  // --- The clock ---

  // The time value of a counter reading. At the very first use it takes 5 milliseconds and finds the base from the wall
  // clock.
  //
  // A reading may also be one that was cut to 32 bits (GetWinTime makes such): it is placed into the cycle of 2^32
  // milliseconds that is nearest to the last raw time seen, and on a master the base moves along. Exactly 2147483648
  // milliseconds apart is not yet a wrap. A reading of 0.0, below, or NaN is not placed and is not remembered.
  //
  // The model applies unless a0 is NaN or exactly 0.0; a1 is not asked, so that a1 = 0.0 gives the constant a0.
  double GetExTime(double counterMilliseconds) const;

  // Takes the clock model off: the raw time of a time value, base included. Applies unless a0 or a1 is NaN or a1 is
  // exactly 0.0; here a0 = 0.0 does not switch the model off.
  double GetZelTime(double time) const;

  // Now.
  double GetCurTime() const;

  // Now, as whole seconds and the milliseconds (0..999) within that second.
  void GetCurTime(CTime& seconds, int& milliseconds) const;

  // The counter reading of now in milliseconds, without base and model, despite the name.
  double GetCurSystemTime() const;

  // Milliseconds since the base, modulo 2^32: takes the base off once, and not the model. A difference below 0 gets
  // 2^32 added, one above 2^32 gets it taken off once; what is still out of range keeps its low 32 bits. Never above
  // 4294967295, also where unsigned long has 64 bits.
  unsigned long GetWinTime(double time) const;

  // The base, 0.0 while it is unset. Read without the lock.
  double GetWin1970BaseTime() const;

  // Takes the base (raw time at counter zero, milliseconds since 1970) from a master elsewhere and makes this process a
  // slave for good: wraps no longer move the base. Always true.
  bool SetBaseTime(double base) const;

  // Sets the clock model from an outside UTC source, and thereby ends the clock discipline for good; from then on only
  // further calls change the model. a0: time value at the reference point; a1: slope; p0: reference point, raw time.
  // Always true.
  bool SetUtcCoeffs(double a0, double a1, double p0) const;

  // Milliseconds since the last SetUtcCoeffs; the whole counter reading when there was none.
  double GetUtcUpdateAge() const;

  // Sets the computer's clock to the suite's time, which the system refuses to most users. Takes 5 milliseconds under
  // the lock. Always true, whatever came of it. Nothing is set when the time lies outside the calendar's range.
  bool AdjustRTC() const;

  // Offset of local time now in milliseconds, positive west of Greenwich: the zone's standard offset, less one hour
  // while daylight saving is in force, whatever amount the zone really saves.
  static long GetTimezone();

  // --- Stamps: the raw counter as text, for modules on one machine ---

  // "<0x" + sixteen upper-case hexadecimal digits + ">" of the counter now, or of the counter at a time value.
  std::string GetTimeStampString() const;
  std::string GetTimeStampString(double time) const;

  // The time value of a stamp. Any text may come: the scan is that of "<0x%16I64X>", so lower case, fewer digits,
  // blanks, a sign or a second "0x" before the digits, and whatever follows them, all pass. An unreadable text gives
  // 0.0.
  double TimeStampStringToTime(std::string stamp) const;

  // --- Calendar: full years, months 1..12 ---

  // Julian day number of the `day`-th day counted from 1 March of `year`: (1, 2000) is 2451605, 1 March 2000.
  int ConvertToJulian(int day, int year) const;

  // Julian day number of a date.
  int ConvertToJulian(int month, int day, int year) const;

  // Julian date of the midnight that begins a date: (1, 1, 1970) is 2440587.5. Reckoned in 64 bits, so that no int
  // wraps.
  double ConvertToJulianFrac(int month, int day, int year) const;

  // The inverse of the two-argument ConvertToJulian: returns the day counted from 1 March, 1..366.
  int ConvertFromJulian(int julianDay, int& year) const;

  // Not a calendar date, except on 1 March of the first year of a century count (1600, 1700, ... 2000): the day within
  // the century is taken for a day within the year, so that months up to 289 come out. Use TimeToUtcDate or JulianDate.
  // Returns the day of the month.
  int ConvertFromJulian(int julianDay, int& month, int& year) const;

  // Turns a day of the year, 1 = 1 January, into month and day of the month. False, outputs untouched, for a day
  // outside 1..366 and for day 366 of a common year.
  bool JulianDate(int year, int dayOfYear, int& month, int& day) const;

  // --- Conversions ---

  CTime ConvertToCTime(double time) const;
  CTime MsecToCTime(double time) const;
  double ConvertCTime(CTime seconds) const;

  // Local time as an automation date; milliseconds are lost. The status is valid only when the date reads back equal to
  // the second, and invalid for a time outside the calendar's range.
  COleDateTime ConvertToOleTime(double time) const;

  // The same into `date`. Throws CAtlException 0x80070057 for a null `date`.
  void ConvertToOleTime(double time, COleDateTime* date) const;

  // The time value of a local automation date; the zone's rules tell summer time. 0.0 for a date that is not valid,
  // that lies before 1900, or that local time does not have; from 1900 to 1969 it is negative.
  // In the hour that autumn repeats, either of the two.
  double ConvertOleTime(const COleDateTime& date) const;

  // UTC date to whole seconds. 0 unless year is in 1970..3000, month in 1..12 and day in 1..31; only after that the
  // time of day is looked at, and an hour outside 0..23 or a minute or second outside 0..59 throws CAtlException
  // 0x80004005. 31 February runs over into March.
  static CTime UtcDateToTime(int year, int month, int day, int hour, int minute, int second);

  // Whole seconds to UTC date; outputs untouched outside the calendar's range.
  static void TimeToUtcDate(CTime time, int& year, int& month, int& day, int& hour, int& minute, int& second);

  // UTC into a record. False only for a null record; a time outside the calendar's range zeroes it and gives true.
  // A fraction just below 60 seconds may round up to 60.0f.
  bool TimeTo5qTime(double time, tagTIME5Q* record) const;

  // A record into a time value. False, `time` untouched, for a null record and for a day that its year does not have.
  // The other fields are taken as they are.
  bool TimeFrom5qTime(double& time, const tagTIME5Q* record) const;

  // Local time of day as hour * 10000 + minute * 100 + second; -10101 outside the calendar's range.
  long GetHHMMSS(double time) const;

  // Returns the whole seconds of `time`; `secondsOfDay` gets the seconds since local midnight with fraction. Outside
  // the calendar's range hour, minute and second count as -1 each.
  CTime TimestampToDaytime(double time, double& secondsOfDay) const;

  // Local time as text in the form of the process's LC_TIME: the date if asked for, then hours and minutes, with
  // seconds if seconds or milliseconds are asked for, then "." and three digits of milliseconds, which go before a
  // closing mark such as " PM". In the "C" locale "02/13/09 23:31:30.125". Empty (but for the milliseconds) outside the
  // calendar's range or when a locale needs more than 127 bytes.
  std::string TimeToString(double time, bool showMilliseconds, bool showDate, bool showSeconds) const;

  // Kept: false, in nobody's use; a part of the declared shape.
  static bool m_firstTimeInit;

 private:
  friend class CExTimeSync;

  static double MakeMilliSec(const WallClockReading& wall);                  // milliseconds since 1970
  static void EstablishBase() ZELBASE_REQUIRES(m_lock);                      // finds the base from the wall clock
  static bool TryGetExTime(double counterMilliseconds, double& time);        // the common case, without the lock
  static double Remember(double base, double raw) ZELBASE_REQUIRES(m_lock);  // places a raw time by the reference
  static double ApplyModel(double raw);
  static void SetModel(double a0, double a1, double p0, double utcUpdate) ZELBASE_REQUIRES(m_lock);
  static std::string FormatStamp(long long counter);
  int LeapYear(int year) const;  // 1 or 0

  // One change of the members below that are read together. Made with the lock held.
  class Change;

  // The clock of the process: constant-initialised and never destroyed, so that any static may use it. All are written with
  // m_lock held, but for m_bTimeSyncDone, and for m_prevZelTime, which GetExTime also exchanges without it. m_version is
  // odd while a change is under way, so that whoever reads several without the lock knows whether they belong together.
  static std::atomic<unsigned int> m_version;
  static std::atomic<double> m_time1970Base;             // the base, milliseconds
  static std::atomic<double> m_a0;                       // model: time value at the reference point; 0.0 or NaN: no model
  static std::atomic<double> m_a1;                       // model: slope
  static std::atomic<double> m_p0;                       // model: reference point, raw time
  static std::atomic<double> m_lastUtcUpdate;            // counter reading at the last SetUtcCoeffs; 0.0: none ever
  static bool m_masterClock ZELBASE_GUARDED_BY(m_lock);  // false once SetBaseTime was called
  static std::atomic<bool> m_bTimeSyncDone;              // the base is established
  static Locker m_lock;

  // Last raw time seen by GetExTime, against which wraps are told. It has a cache line of its own, since every call writes it.
  struct alignas(64) Reference : std::atomic<double> {
    using std::atomic<double>::atomic;
    using std::atomic<double>::operator=;
  };
  static Reference m_prevZelTime;
};
