// A clock that moves only when told, so that a day of waiting takes a second and a step of the wall clock comes when a test
// wants it. Neighbours: PlatformClock.h, the interface it fills; PlatformService.h, by which it is put in force.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "zelbase/platform/PlatformClock.h"

// One line of simulated time carries everything: the counter and the tick run on it, and so do the limits of Sleep and
// Wait. The wall clock runs along, at a pace of its own when it drifts, and is moved by steps. Times of this line are
// milliseconds since the clock was made (Elapsed), kept in whole nanoseconds, and end after 100 years.
//
// Who moves it:
//   Advance       jumps. Threads whose time has come wake and see the time after the jump.
//   RunUntil      moves from wake to wake. The clock stands whenever a thread that has slept in it is awake, and goes on,
//                 to the earliest limit, when the last of them sleeps again; no real time is waited for. It returns when the
//                 clock stands at its goal and every such thread sleeps beyond it.
//   LetRunUntil   allows the same without waiting for it: sleepers carry the clock, up to the goal.
//
//   SimulatedClock clock;
//   PlatformOverride<PlatformClock> guard(clock);
//   std::thread worker(Work);               // waits on the clock, 100 ms at a time
//   clock.WaitForSleepers(1);
//   clock.At(3600e3, [&] { clock.StepWall(-1001.0); });
//   clock.RunUntil(24 * 3600e3);            // 864,000 waits later
//
// A thread takes part from its first Sleep or Wait until it ends, and the clock is told of its end. While it is awake it
// holds up a run; one that goes on to other things for good (a join, a lock that a sleeper holds) says so by Leave. Advance,
// RunUntil and WaitForSleepers say it for their caller.
//
// The suite's own time runs in it as well. Its first use waits 5 milliseconds, and its discipline is a thread that sleeps
// here 100 at a time, so that the whole of a test begins with
//
//   clock.LetRunUntil(5.0);                 // for the wait of the first use
//   const CExTime time;                     // the process's first
//   clock.WaitForSleepers(1);               // the discipline is there
//
// All operations may be called from any thread. The destruction ends every Sleep and Wait as if its time had come; no other
// call may be under way then. The discipline goes on with the clock that is in force then, finds it far from the suite's
// time, and ends.
class ZELBASE_API SimulatedClock : public PlatformClock {
 public:
  // Which clocks a suspended computer keeps going.
  enum class Suspended {
    WallOnly,  // counter, tick and sleepers stand still
    Both,      // counter and tick go on, and whoever's time came meanwhile wakes at the end
  };

  // The wall clock begins at `wallMilliseconds` since 1970-01-01 00:00:00 UTC (as given here: 2009-02-13 23:31:30), the
  // counter and the tick at 0, zone 0, no daylight saving, frequency 10 MHz.
  explicit SimulatedClock(double wallMilliseconds = 1234567890000.0);
  ~SimulatedClock() override;
  SimulatedClock(const SimulatedClock&) = delete;
  SimulatedClock& operator=(const SimulatedClock&) = delete;

  // --- The clock as the library sees it ---------------------------------------------------------------------------

  long long Counter() override;
  long long Frequency() override;
  unsigned int TickMilliseconds() override;
  WallClockReading WallClock() override;
  long TimezoneSeconds() override;

  // Local time is UTC less the zone, and one hour more while the daylight flag is set, whatever the date.
  bool LocalTime(long long seconds, CalendarTime& calendar) override;
  bool UtcTime(long long seconds, CalendarTime& calendar) override;

  // An unknown daylight field stands for the flag in force. Never fails.
  bool FromLocalTime(const CalendarTime& calendar, long long& seconds) override;

  void Sleep(unsigned int milliseconds) override;

  // An event set at the very moment of the limit counts as set.
  bool Wait(PlatformEvent& event, unsigned int milliseconds) override;

  // Sets the simulated wall clock and keeps a note of it; refuses what the system's clock refuses.
  bool SetSystemClock(const SYSTEMTIME& utc) override;

  // --- Setting it up ----------------------------------------------------------------------------------------------

  // Counts per second, 1000 to 1,000,000,000; others are ignored. The counter goes on from where it stands.
  void SetFrequency(long long countsPerSecond);

  // Where the counter and the tick stand now, back too; sleepers do not notice.
  void SetCounter(long long counts);
  void SetTick(unsigned int milliseconds);

  // Where the wall clock stands now, in milliseconds since 1970-01-01 00:00:00 UTC, kept to the microsecond. NaN is
  // ignored, and beyond 25,000 years either side the nearest end is taken.
  void SetWall(double milliseconds);

  // Seconds, positive west of Greenwich; more than a day either way is a day.
  void SetZone(long secondsWest);
  void SetDaylight(bool inForce);

  // From now on the wall clock gains `partsPerMillion` on the counter (negative: loses), within 900,000 either way.
  void SetDrift(double partsPerMillion);

  // From now on SetSystemClock is refused, or not.
  void RefuseSetting(bool refuse);

  // Calls `action` once when the clock stands at `milliseconds`, on the thread that moves it, before anybody wakes at that
  // time; actions of the same time in the order given, one for the past at the next movement. It may use the clock, but
  // not to wait or to move it: Sleep, Wait, WaitForSleepers, Advance, Suspend of both and the runs return at once. It must
  // not throw.
  void At(double milliseconds, std::function<void()> action);

  // --- Moving it; a negative or NaN distance is none ----------------------------------------------------------------

  double Elapsed() const;

  // Moves all clocks on. Actions on the way run at their time; sleepers wake at the end.
  void Advance(double milliseconds);

  // Moves the wall clock alone, back too.
  void StepWall(double milliseconds);

  // The computer is suspended for `milliseconds` of wall clock. Actions stand or come late like sleepers.
  void Suspend(double milliseconds, Suspended mode = Suspended::WallOnly);

  // Runs to `milliseconds` of Elapsed, or on by as much; see above. Returns how many threads sleep at the end: 0 means that
  // nobody was there to wait for. A goal in the past waits until everybody sleeps again; of several runs at once the
  // furthest decides.
  std::size_t RunUntil(double milliseconds);
  std::size_t RunFor(double milliseconds);

  // Lets sleepers carry the clock up to `milliseconds` of Elapsed from now on; never takes back what was allowed before.
  void LetRunUntil(double milliseconds);
  void LetRunFor(double milliseconds);

  // The calling thread holds up nobody until it sleeps in the clock again.
  void Leave();

  // --- Asking it ----------------------------------------------------------------------------------------------------

  // Threads asleep now.
  std::size_t Sleepers() const;

  // Returns when at least `count` threads are asleep.
  void WaitForSleepers(std::size_t count);

  // Calls of Sleep and Wait since the start or ResetCounts, and the shortest simulated time, in milliseconds, between two
  // returns from them on the same thread (infinite while no thread has returned twice).
  unsigned long long Waits() const;
  double ShortestBetweenWakes() const;
  void ResetCounts();

  // What SetSystemClock was given, refused ones left out.
  std::vector<SYSTEMTIME> ClockSettings() const;

 private:
  class State;
  std::shared_ptr<State> m_state;
};
