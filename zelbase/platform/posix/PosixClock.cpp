#include <time.h>

#include <cerrno>
#include <limits>

#include "zelbase/platform/PlatformClock.h"
#include "zelbase/platform/detail/CalendarTm.h"
#include "zelbase/platform/detail/CivilDate.h"

namespace {

using zelbase::detail::IsCalendarSecond;
using zelbase::detail::IsValidSystemTime;
using zelbase::detail::SecondsFromSystemTime;

constexpr long long kNanosecondsPerSecond = 1000000000;
constexpr long kNanosecondsPerMillisecond = 1000000;

// localtime_r need not read TZ by itself; reading it once is all that it lacks.
void ReadZoneOnce() { [[maybe_unused]] static const bool read = (tzset(), true); }

class PosixClock final : public PlatformClock {
 public:
  constexpr PosixClock() = default;

  long long Counter() override {
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<long long>(now.tv_sec) * kNanosecondsPerSecond + now.tv_nsec;
  }

  long long Frequency() override { return kNanosecondsPerSecond; }

  unsigned int TickMilliseconds() override { return static_cast<unsigned int>(Counter() / kNanosecondsPerMillisecond); }

  WallClockReading WallClock() override {
    ReadZoneOnce();
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    WallClockReading reading;
    reading.seconds = now.tv_sec;
    reading.milliseconds = static_cast<int>(now.tv_nsec / kNanosecondsPerMillisecond);
    tm local{};
    reading.daylight = localtime_r(&now.tv_sec, &local) != nullptr && local.tm_isdst > 0;
    return reading;
  }

  long TimezoneSeconds() override {
    tzset();
    return timezone;
  }

  bool LocalTime(long long seconds, CalendarTime& calendar) override {
    if (!IsCalendarSecond(seconds)) return false;
    ReadZoneOnce();
    const time_t value = seconds;
    tm fields{};
    if (localtime_r(&value, &fields) == nullptr) return false;
    calendar = zelbase::detail::FromTm(fields);
    return true;
  }

  bool UtcTime(long long seconds, CalendarTime& calendar) override {
    if (!IsCalendarSecond(seconds)) return false;
    calendar = zelbase::detail::CivilFromSeconds(seconds);
    return true;
  }

  bool FromLocalTime(const CalendarTime& calendar, long long& seconds) override {
    constexpr int kLowest = std::numeric_limits<int>::min();
    if (calendar.year < kLowest + 1900 || calendar.month == kLowest) return false;
    tm fields = zelbase::detail::ToTm(calendar);
    fields.tm_wday = -1;  // success fills it in: -1 alone may be the last second of 1969
    const time_t value = mktime(&fields);
    if (value == -1 && fields.tm_wday == -1) return false;
    seconds = value;
    return true;
  }

  void Sleep(unsigned int milliseconds) override {
    const long long end = Counter() + static_cast<long long>(milliseconds) * kNanosecondsPerMillisecond;
    timespec deadline;
    deadline.tv_sec = end / kNanosecondsPerSecond;
    deadline.tv_nsec = static_cast<long>(end % kNanosecondsPerSecond);
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &deadline, nullptr) == EINTR) {
    }
  }

  bool Wait(PlatformEvent& event, unsigned int milliseconds) override { return event.WaitFor(milliseconds); }

  bool SetSystemClock(const SYSTEMTIME& utc) override {
    if (!IsValidSystemTime(utc)) return false;
    timespec value;
    value.tv_sec = SecondsFromSystemTime(utc);
    value.tv_nsec = static_cast<long>(utc.wMilliseconds) * kNanosecondsPerMillisecond;
    return clock_settime(CLOCK_REALTIME, &value) == 0;
  }
};

// Ready before any code runs and never destroyed.
union ClockStorage {
  constexpr ClockStorage() : clock() {}
  constexpr ~ClockStorage() {}
  PosixClock clock;
};
constinit ClockStorage g_storage;

}  // namespace

PlatformClock& PlatformClock::System() { return g_storage.clock; }
