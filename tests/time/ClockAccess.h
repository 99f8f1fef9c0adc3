// Lets tests set the clock of the process back to what it is before its first use, and reach the private steps of the
// clock discipline. Every test that touches CExTime stands on ClockTest, so that no test sees the clock of another.
#pragma once

#include <gtest/gtest.h>

#include <mutex>

#include "zelbase/platform/PlatformClock.h"
#include "zelbase/time/CExTime.h"
#include "zelbase/time/CExTimeSync.h"

namespace clock_access {

// Names of private members may stand in an explicit instantiation; the friend hands them out.
template <class Tag, auto Member>
struct Reveal {
  friend auto Find(Tag) { return Member; }
};

#define ZELBASE_REVEAL(Tag, Member) \
  struct Tag {                      \
    friend auto Find(Tag);          \
  };                                \
  template struct Reveal<Tag, Member>

ZELBASE_REVEAL(Version, &CExTime::m_version);
ZELBASE_REVEAL(Base, &CExTime::m_time1970Base);
ZELBASE_REVEAL(Previous, &CExTime::m_prevZelTime);
ZELBASE_REVEAL(A0, &CExTime::m_a0);
ZELBASE_REVEAL(A1, &CExTime::m_a1);
ZELBASE_REVEAL(P0, &CExTime::m_p0);
ZELBASE_REVEAL(LastUpdate, &CExTime::m_lastUtcUpdate);
ZELBASE_REVEAL(Master, &CExTime::m_masterClock);
ZELBASE_REVEAL(SyncDone, &CExTime::m_bTimeSyncDone);
ZELBASE_REVEAL(ClockLock, &CExTime::m_lock);
ZELBASE_REVEAL(Stop, &CExTimeSync::m_bStop);
ZELBASE_REVEAL(Thread, &CExTimeSync::m_pThread);
ZELBASE_REVEAL(StopEvent, &CExTimeSync::m_stopEvent);
ZELBASE_REVEAL(Samples, &CExTimeSync::m_samples);
ZELBASE_REVEAL(Loop, &CExTimeSync::ThreadFunction);
ZELBASE_REVEAL(Fit, &CExTimeSync::ComputeCoefficients);
ZELBASE_REVEAL(PublishModel, &CExTimeSync::Publish);

#undef ZELBASE_REVEAL

inline CExTimeSync& Sync() { return CExTimeSync::GetExTimeSync(); }

struct Model {
  double a0 = 0.0;
  double a1 = 0.0;
  double p0 = 0.0;
  bool operator==(const Model&) const = default;
};

inline Model CurrentModel() { return {*Find(A0{}), *Find(A1{}), *Find(P0{})}; }

inline Model CurrentModelUnderLock() {
  const std::lock_guard guard(*Find(ClockLock{}));
  return CurrentModel();
}

// A model without an outside source behind it.
inline void SetModel(double a0, double a1, double p0) {
  *Find(A0{}) = a0;
  *Find(A1{}) = a1;
  *Find(P0{}) = p0;
}

// The base as it is after the first use, without the wait.
inline void SetBase(double base, double previous) {
  *Find(Base{}) = base;
  *Find(Previous{}) = previous;
  *Find(SyncDone{}) = true;
}

inline double Reference() { return *Find(Previous{}); }

// The process's own discipline thread comes to its end, and the clock is as before its first use.
inline void ResetClock() {
  CExTimeSync& sync = Sync();
  (sync.*Find(Stop{})) = true;
  (sync.*Find(StopEvent{})).Set();
  if (PlatformThread* const thread = (sync.*Find(Thread{})).get()) thread->Wait(PlatformThread::kNoLimit);
  (sync.*Find(StopEvent{})).Reset();
  (sync.*Find(Stop{})) = false;
  SetBase(0.0, 0.0);
  *Find(SyncDone{}) = false;
  SetModel(0.0, 0.0, 0.0);
  *Find(LastUpdate{}) = 0.0;
  *Find(Master{}) = true;
  *Find(Samples{}) = {};
}

// Wall clock and counter as a test sets them; local time by the system's rules, so that ScopedTimeZone decides. For one
// thread.
class HandClock : public PlatformClock {
 public:
  long long Counter() override { return counter; }
  long long Frequency() override { return frequency; }
  unsigned int TickMilliseconds() override { return 0; }
  WallClockReading WallClock() override { return wall; }
  long TimezoneSeconds() override { return System().TimezoneSeconds(); }
  bool LocalTime(long long seconds, CalendarTime& calendar) override { return System().LocalTime(seconds, calendar); }
  bool UtcTime(long long seconds, CalendarTime& calendar) override { return System().UtcTime(seconds, calendar); }
  bool FromLocalTime(const CalendarTime& calendar, long long& seconds) override { return System().FromLocalTime(calendar, seconds); }
  void Sleep(unsigned int milliseconds) override { slept += milliseconds; }
  bool Wait(PlatformEvent&, unsigned int milliseconds) override {
    slept += milliseconds;
    return false;
  }
  bool SetSystemClock(const SYSTEMTIME& utc) override {
    set = utc;
    ++timesSet;
    return false;  // as for most users
  }

  long long counter = 0;
  long long frequency = 10000000;
  WallClockReading wall;
  unsigned int slept = 0;
  SYSTEMTIME set;
  int timesSet = 0;
};

}  // namespace clock_access

// The clock of the process is as before its first use, by a HandClock that stands at 0.
class ClockTest : public ::testing::Test {
 private:
  // First and last of all: the discipline thread must not see the clocks below.
  struct ResetAround {
    ResetAround() { clock_access::ResetClock(); }
    ~ResetAround() { clock_access::ResetClock(); }
    ResetAround(const ResetAround&) = delete;
    ResetAround& operator=(const ResetAround&) = delete;
  };
  ResetAround m_resetAround;

 protected:
  clock_access::HandClock clock;
  PlatformOverride<PlatformClock> clockInForce{clock};
  CExTime time;
};
