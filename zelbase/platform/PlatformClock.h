// The clocks of the computer: wall clock with zone and daylight flag, high-resolution counter, millisecond tick, waiting,
// and the setting of the system's clock. Neighbours: SimulatedClock.h, the clock that moves only when told;
// zelbase/time/CExTime.h, the suite's own time, which is made from these.
#pragma once

#include "zelbase/platform/PlatformEvent.h"
#include "zelbase/platform/PlatformService.h"
#include "zelbase/platform/SYSTEMTIME.h"
#include "zelbase/platform/ZelBaseApi.h"

// One reading of the wall clock.
struct WallClockReading {
  long long seconds = 0;  // whole seconds since 1970-01-01 00:00:00 UTC
  int milliseconds = 0;   // 0..999, truncated
  bool daylight = false;  // daylight saving time is in force here at this moment
};

// A time of day and date as the calendar functions of C have it, with full years and months from 1.
struct CalendarTime {
  int year = 1970;
  int month = 1;      // 1..12
  int day = 1;        // 1..31
  int hour = 0;       // 0..23
  int minute = 0;     // 0..59
  int second = 0;     // 0..59
  int dayOfYear = 0;  // 0..365, given only
  int dayOfWeek = 0;  // 0 = Sunday, given only
  int daylight = -1;  // 1 summer time, 0 not, -1 unknown: the zone's rules decide
};

// All operations may be called from any thread at once.
class ZELBASE_API PlatformClock {
 public:
  virtual ~PlatformClock() = default;

  // The high-resolution counter: never goes back, unknown zero. Frequency: counts per second, at least 1000, constant.
  virtual long long Counter() = 0;
  virtual long long Frequency() = 0;

  // Milliseconds since some start, wrapping after 2^32.
  virtual unsigned int TickMilliseconds() = 0;

  virtual WallClockReading WallClock() = 0;

  // The zone's standard offset in seconds, positive west of Greenwich, without daylight saving. Looks at the environment
  // variable TZ anew; the conversions below look at it once, at first use.
  virtual long TimezoneSeconds() = 0;

  // Whole seconds since 1970 to local time or UTC. False, output untouched, outside 0 to 32535215999.
  virtual bool LocalTime(long long seconds, CalendarTime& calendar) = 0;
  virtual bool UtcTime(long long seconds, CalendarTime& calendar) = 0;

  // Local time to whole seconds since 1970, negative before; fields beyond their range run over into the next. False,
  // output untouched, when there is no such time.
  virtual bool FromLocalTime(const CalendarTime& calendar, long long& seconds) = 0;

  // Holds the calling thread for at least `milliseconds`.
  virtual void Sleep(unsigned int milliseconds) = 0;

  // Waits until `event` is set, at most `milliseconds` (0xFFFFFFFF: without limit; 0 looks once). True when it was set.
  virtual bool Wait(PlatformEvent& event, unsigned int milliseconds) = 0;

  // Sets the computer's clock to `utc`. False when the system refuses, which it does to most users, and for a date that
  // does not exist or lies before 1601.
  virtual bool SetSystemClock(const SYSTEMTIME& utc) = 0;

  // This system's clock; never destroyed.
  static PlatformClock& System();
};
