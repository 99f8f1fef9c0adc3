#include "zelbase/platform/SimulatedClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <utility>

#include "tests/support/InChild.h"
#include "tests/support/ThisProcess.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kDay = 86400e3;

double WallMilliseconds(SimulatedClock& clock) {
  const WallClockReading reading = clock.WallClock();
  return static_cast<double>(reading.seconds) * 1000.0 + reading.milliseconds;
}

// A thread that waits `period` milliseconds again and again and notes when it woke, until it is told to stop.
class Ticker {
 public:
  Ticker(SimulatedClock& clock, unsigned int period)
      : m_thread([this, &clock, period] {
          while (!clock.Wait(m_stop, period)) m_wakes.push_back(clock.Elapsed());
        }) {}
  ~Ticker() { Stop(); }

  void Stop() {
    m_stop.Set();
    if (m_thread.joinable()) m_thread.join();
  }

  // To be read while the thread sleeps or after Stop.
  const std::vector<double>& Wakes() const { return m_wakes; }

 private:
  PlatformEvent m_stop;
  std::vector<double> m_wakes;
  std::thread m_thread;
};

std::vector<double> Multiples(double period, double end) {
  std::vector<double> values;
  for (double value = period; value <= end; value += period) values.push_back(value);
  return values;
}

// --- Readings -----------------------------------------------------------------------------------------------------

TEST(SimulatedClock, StandsUntilItIsMoved) {
  SimulatedClock clock;
  EXPECT_EQ(clock.Counter(), 0);
  EXPECT_EQ(clock.Frequency(), 10000000);
  EXPECT_EQ(clock.TickMilliseconds(), 0u);
  EXPECT_EQ(clock.WallClock().seconds, 1234567890);
  EXPECT_EQ(clock.WallClock().milliseconds, 0);
  EXPECT_FALSE(clock.WallClock().daylight);
  EXPECT_EQ(clock.TimezoneSeconds(), 0);
  EXPECT_EQ(clock.Elapsed(), 0.0);
}

TEST(SimulatedClock, AdvanceMovesBothClocks) {
  SimulatedClock clock(5000.0);
  clock.Advance(1234.5);
  EXPECT_EQ(clock.Counter(), 12345000);
  EXPECT_EQ(clock.TickMilliseconds(), 1234u);
  EXPECT_EQ(clock.WallClock().seconds, 6);
  EXPECT_EQ(clock.WallClock().milliseconds, 234) << "truncated";
  EXPECT_EQ(clock.Elapsed(), 1234.5);
}

TEST(SimulatedClock, CanStandInForTheSystemsClock) {
  SimulatedClock clock;
  {
    const PlatformOverride<PlatformClock> guard(clock);
    EXPECT_EQ(&PlatformService<PlatformClock>::Current(), &clock);
  }
  EXPECT_EQ(&PlatformService<PlatformClock>::Current(), &PlatformClock::System());
}

TEST(SimulatedClock, CounterGoesOnFromWhereItStandsWhenItsFrequencyChanges) {
  SimulatedClock clock;
  clock.Advance(1000.0);
  clock.SetFrequency(3579545);
  EXPECT_EQ(clock.Counter(), 10000000);
  clock.Advance(2000.0);
  EXPECT_EQ(clock.Counter(), 10000000 + 2 * 3579545);
  for (const long long frequency : {0LL, -1LL, 999LL, 1000000001LL}) clock.SetFrequency(frequency);
  EXPECT_EQ(clock.Frequency(), 3579545);
}

TEST(SimulatedClock, CounterAndTickCanBeSetAnywhere) {
  SimulatedClock clock;
  clock.Advance(10.0);
  clock.SetCounter(-70000);
  clock.SetTick(4294967290u);
  EXPECT_EQ(clock.Counter(), -70000);
  EXPECT_EQ(clock.TickMilliseconds(), 4294967290u);
  clock.Advance(10.0);
  EXPECT_EQ(clock.Counter(), 30000);
  EXPECT_EQ(clock.TickMilliseconds(), 4u) << "wraps after 2^32";
}

TEST(SimulatedClock, StepWallMovesTheWallClockAlone) {
  SimulatedClock clock(10000.0);
  clock.StepWall(1001.0);
  EXPECT_EQ(WallMilliseconds(clock), 11001.0);
  clock.StepWall(-2001.0);
  EXPECT_EQ(WallMilliseconds(clock), 9000.0);
  EXPECT_EQ(clock.Counter(), 0);
  EXPECT_EQ(clock.Elapsed(), 0.0);
}

TEST(SimulatedClock, WallClockBefore1970KeepsItsMillisecondsPositive) {
  SimulatedClock clock(-1.0);
  EXPECT_EQ(clock.WallClock().seconds, -1);
  EXPECT_EQ(clock.WallClock().milliseconds, 999);
}

TEST(SimulatedClock, DriftingWallClockGainsOnTheCounter) {
  SimulatedClock clock(0.0);
  clock.SetDrift(50.0);
  clock.Advance(kDay);
  EXPECT_EQ(WallMilliseconds(clock), kDay + 4320.0);
  clock.SetDrift(-100.0);
  clock.Advance(kDay);
  EXPECT_EQ(WallMilliseconds(clock), 2 * kDay + 4320.0 - 8640.0);
  EXPECT_EQ(clock.Counter(), static_cast<long long>(2 * kDay) * 10000);
}

TEST(SimulatedClock, DriftDoesNotHangOnHowOftenTheClockIsRead) {
  SimulatedClock seldom(0.0), often(0.0);
  seldom.SetDrift(33.3);
  often.SetDrift(33.3);
  for (int i = 0; i < 86400; ++i) {
    often.Advance(100.0);
    often.WallClock();
  }
  seldom.Advance(8640e3);
  EXPECT_EQ(WallMilliseconds(often), WallMilliseconds(seldom));
}

TEST(SimulatedClock, SuspendKeepsTheWallClockGoing) {
  SimulatedClock clock(0.0);
  clock.Suspend(5000.0);
  EXPECT_EQ(WallMilliseconds(clock), 5000.0);
  EXPECT_EQ(clock.Counter(), 0);
  EXPECT_EQ(clock.TickMilliseconds(), 0u);

  clock.Suspend(5000.0, SimulatedClock::Suspended::Both);
  EXPECT_EQ(WallMilliseconds(clock), 10000.0);
  EXPECT_EQ(clock.Counter(), 50000000);
  EXPECT_EQ(clock.TickMilliseconds(), 5000u);
}

TEST(SimulatedClock, DistancesThatAreNoneMoveNothing) {
  SimulatedClock clock(0.0);
  for (const double distance : {0.0, -1.0, -kInfinity, kNaN}) {
    clock.Advance(distance);
    clock.Suspend(distance);
    clock.Suspend(distance, SimulatedClock::Suspended::Both);
    clock.RunFor(distance);
    clock.RunUntil(distance);
    clock.LetRunFor(distance);
  }
  clock.StepWall(kNaN);
  clock.SetWall(kNaN);
  clock.SetDrift(kNaN);
  EXPECT_EQ(clock.Elapsed(), 0.0);
  EXPECT_EQ(WallMilliseconds(clock), 0.0);
}

TEST(SimulatedClock, EndsQuietlyAfterAHundredYears) {
  SimulatedClock clock(0.0);
  clock.SetDrift(kInfinity);
  clock.SetFrequency(1000000000);
  clock.Advance(1e300);
  clock.Advance(kInfinity);
  EXPECT_EQ(clock.Elapsed(), 36525 * kDay);
  EXPECT_EQ(clock.Counter(), 36525LL * 86400 * 1000000000);
  EXPECT_EQ(clock.RunFor(1.0), 0u);
  clock.StepWall(kInfinity);
  EXPECT_EQ(WallMilliseconds(clock), 25000 * 365.25 * kDay);
  clock.StepWall(-kInfinity);
  EXPECT_EQ(WallMilliseconds(clock), -25000 * 365.25 * kDay);
}

TEST(SimulatedClock, LocalTimeIsUtcLessTheZoneAndOneHourMoreInSummer) {
  SimulatedClock clock;
  clock.SetZone(-3600);
  CalendarTime local;
  ASSERT_TRUE(clock.LocalTime(1234567890, local));
  EXPECT_EQ(local.day, 14);
  EXPECT_EQ(local.hour, 0);
  EXPECT_EQ(local.minute, 31);
  EXPECT_EQ(local.daylight, 0);
  EXPECT_EQ(clock.TimezoneSeconds(), -3600);

  clock.SetDaylight(true);
  ASSERT_TRUE(clock.LocalTime(1234567890, local));
  EXPECT_EQ(local.hour, 1);
  EXPECT_EQ(local.daylight, 1);
  EXPECT_TRUE(clock.WallClock().daylight);
  EXPECT_EQ(clock.TimezoneSeconds(), -3600);

  CalendarTime utc;
  ASSERT_TRUE(clock.UtcTime(1234567890, utc));
  EXPECT_EQ(utc.day, 13);
  EXPECT_EQ(utc.hour, 23);
}

TEST(SimulatedClock, FromLocalTimeInvertsLocalTime) {
  SimulatedClock clock;
  clock.SetZone(12600);
  for (const bool summer : {false, true}) {
    clock.SetDaylight(summer);
    for (long long seconds = 0; seconds < 4000000000; seconds += 12345678) {
      CalendarTime local;
      ASSERT_TRUE(clock.LocalTime(seconds, local));
      long long back = -1;
      ASSERT_TRUE(clock.FromLocalTime(local, back));
      EXPECT_EQ(back, seconds);
      local.daylight = -1;
      ASSERT_TRUE(clock.FromLocalTime(local, back));
      EXPECT_EQ(back, seconds);
      local.daylight = summer ? 0 : 1;
      ASSERT_TRUE(clock.FromLocalTime(local, back));
      EXPECT_EQ(back, summer ? seconds + 3600 : seconds - 3600);
    }
  }
}

TEST(SimulatedClock, CalendarRefusesSecondsOutsideItsRange) {
  SimulatedClock clock;
  clock.SetZone(std::numeric_limits<long>::max());
  CalendarTime calendar;
  calendar.year = 4711;
  for (const long long seconds : {-1LL, 32535216000LL, std::numeric_limits<long long>::min(), std::numeric_limits<long long>::max()}) {
    EXPECT_FALSE(clock.LocalTime(seconds, calendar));
    EXPECT_FALSE(clock.UtcTime(seconds, calendar));
  }
  EXPECT_EQ(calendar.year, 4711);
  EXPECT_TRUE(clock.LocalTime(0, calendar));
  EXPECT_EQ(calendar.year, 1969) << "a zone is never more than a day";
  EXPECT_EQ(calendar.day, 31);
}

TEST(SimulatedClock, SettingTheSystemsClockMovesTheWallClockAndIsNoted) {
  SimulatedClock clock;
  const SYSTEMTIME time{2001, 9, 0, 9, 1, 46, 40, 250};
  EXPECT_TRUE(clock.SetSystemClock(time));
  EXPECT_EQ(WallMilliseconds(clock), 1000000000250.0);
  ASSERT_EQ(clock.ClockSettings().size(), 1u);
  EXPECT_EQ(clock.ClockSettings()[0].wYear, 2001);
  EXPECT_EQ(clock.ClockSettings()[0].wMilliseconds, 250);
}

TEST(SimulatedClock, SettingTheSystemsClockCanBeRefused) {
  SimulatedClock clock(0.0);
  EXPECT_FALSE(clock.SetSystemClock(SYSTEMTIME{2001, 2, 0, 29, 0, 0, 0, 0})) << "no such day";
  clock.RefuseSetting(true);
  EXPECT_FALSE(clock.SetSystemClock(SYSTEMTIME{2001, 2, 0, 28, 0, 0, 0, 0}));
  EXPECT_TRUE(clock.ClockSettings().empty());
  EXPECT_EQ(WallMilliseconds(clock), 0.0);
  clock.RefuseSetting(false);
  EXPECT_TRUE(clock.SetSystemClock(SYSTEMTIME{2001, 2, 0, 28, 0, 0, 0, 0}));
}

// --- Actions ------------------------------------------------------------------------------------------------------

class SimulatedClockMovements : public testing::TestWithParam<void (*)(SimulatedClock&, double)> {
 protected:
  void Move(double milliseconds) { GetParam()(clock, milliseconds); }
  SimulatedClock clock{0.0};
};

TEST_P(SimulatedClockMovements, RunActionsAtTheirExactTimeAndInOrder) {
  std::vector<std::pair<std::string, double>> log;
  const auto note = [&](const char* name) { return [&, name] { log.emplace_back(name, clock.Elapsed()); }; };
  clock.At(30.25, note("third"));
  clock.At(10.0, note("first"));
  clock.At(10.0, note("second"));
  clock.At(100.5, note("beyond"));
  clock.At(50.0, nullptr);
  Move(100.0);
  const std::vector<std::pair<std::string, double>> expected = {{"first", 10.0}, {"second", 10.0}, {"third", 30.25}};
  EXPECT_EQ(log, expected);
  EXPECT_EQ(clock.Elapsed(), 100.0);
  Move(1.0);
  EXPECT_EQ(log.back().first, "beyond");
}

TEST_P(SimulatedClockMovements, ActionsCanStepDriftAndScheduleMore) {
  clock.At(1000.0, [&] { clock.StepWall(-300.0); });
  clock.At(2000.0, [&] { clock.SetDrift(1000.0); });
  std::function<void()> again = [&] {
    clock.StepWall(1.0);
    clock.At(clock.Elapsed() + 100.0, again);
  };
  clock.At(9000.0, again);
  Move(9450.0);
  EXPECT_EQ(WallMilliseconds(clock), 9450.0 - 300.0 + 7.0 + 5.0) << "7.45 ms gained, five steps of 1 ms";
}

TEST_P(SimulatedClockMovements, ActionsForThePastRunAtTheNextMovement) {
  Move(100.0);
  double ran = -1.0;
  clock.At(50.0, [&] { ran = clock.Elapsed(); });
  EXPECT_EQ(ran, -1.0);
  Move(0.0);
  EXPECT_EQ(ran, 100.0);
}

TEST_P(SimulatedClockMovements, ActionsCannotWaitOrMove) {
  PlatformEvent clear, set;
  set.Set();
  clock.At(10.0, [&] {
    clock.Sleep(5);
    EXPECT_FALSE(clock.Wait(clear, 5));
    EXPECT_TRUE(clock.Wait(set, 5));
    clock.Advance(5.0);
    clock.Suspend(5.0, SimulatedClock::Suspended::Both);
    EXPECT_EQ(clock.RunFor(5.0), 0u);
    clock.WaitForSleepers(7);
    EXPECT_EQ(clock.Elapsed(), 10.0);
  });
  Move(20.0);
  EXPECT_EQ(clock.Elapsed(), 20.0);
}

INSTANTIATE_TEST_SUITE_P(Ways, SimulatedClockMovements,
                         testing::Values([](SimulatedClock& clock, double ms) { clock.Advance(ms); },
                                         [](SimulatedClock& clock, double ms) { clock.RunFor(ms); }));

TEST(SimulatedClock, ActionsOfASuspendedComputerComeLate) {
  SimulatedClock clock;
  double ran = -1.0;
  clock.At(10.0, [&] { ran = clock.Elapsed(); });
  clock.Suspend(50.0);
  EXPECT_EQ(ran, -1.0);
  clock.Suspend(50.0, SimulatedClock::Suspended::Both);
  EXPECT_EQ(ran, 50.0);
}

// --- Waiting ------------------------------------------------------------------------------------------------------

TEST(SimulatedClock, WaitingForNothingReturnsAtOnce) {
  SimulatedClock clock;
  PlatformEvent event;
  clock.Sleep(0);
  EXPECT_FALSE(clock.Wait(event, 0));
  event.Set();
  EXPECT_TRUE(clock.Wait(event, 0));
  EXPECT_TRUE(clock.Wait(event, 0xFFFFFFFFu));
  EXPECT_EQ(clock.Waits(), 4u);
  EXPECT_EQ(clock.ShortestBetweenWakes(), 0.0);
  EXPECT_EQ(clock.Elapsed(), 0.0);
}

TEST(SimulatedClock, AdvanceWakesASleeperAtItsLimitAndNotBefore) {
  SimulatedClock clock;
  double woke = -1.0;
  std::thread sleeper([&] {
    clock.Sleep(100);
    woke = clock.Elapsed();
  });
  clock.WaitForSleepers(1);
  clock.Advance(99.999999);
  EXPECT_EQ(clock.Sleepers(), 1u);
  clock.Advance(0.000001);
  sleeper.join();
  EXPECT_EQ(woke, 100.0);
  EXPECT_EQ(clock.Sleepers(), 0u);
}

TEST(SimulatedClock, AnEventEndsAWaitWhileTheClockStands) {
  SimulatedClock clock;
  PlatformEvent event;
  bool set = false;
  std::thread waiter([&] { set = clock.Wait(event, 100); });
  clock.WaitForSleepers(1);
  event.Set();
  waiter.join();
  EXPECT_TRUE(set);
  EXPECT_EQ(clock.Elapsed(), 0.0);
}

TEST(SimulatedClock, TheGreatestLimitIsNone) {
  SimulatedClock clock;
  PlatformEvent event;
  bool set = false;
  std::thread waiter([&] { set = clock.Wait(event, 0xFFFFFFFFu); });
  clock.WaitForSleepers(1);
  EXPECT_EQ(clock.RunFor(100 * 365.0 * kDay), 1u);
  event.Set();
  waiter.join();
  EXPECT_TRUE(set);
}

TEST(SimulatedClock, SuspendOfTheWallClockAloneLeavesSleepersAsleep) {
  SimulatedClock clock;
  std::thread sleeper([&] { clock.Sleep(10); });
  clock.WaitForSleepers(1);
  clock.Suspend(1000.0);
  EXPECT_EQ(clock.Sleepers(), 1u);
  clock.Suspend(1000.0, SimulatedClock::Suspended::Both);
  sleeper.join();
  EXPECT_EQ(clock.Elapsed(), 1000.0);
}

TEST(SimulatedClock, ARunWithoutSleepersSaysSo) {
  SimulatedClock clock;
  EXPECT_EQ(clock.RunUntil(500.0), 0u);
  EXPECT_EQ(clock.Elapsed(), 500.0);
  EXPECT_EQ(clock.RunUntil(400.0), 0u);
  EXPECT_EQ(clock.Elapsed(), 500.0) << "a goal in the past moves nothing";
}

TEST(SimulatedClock, ADayOfTenWaitsASecondRunsWithoutWaiting) {
  SimulatedClock clock;
  Ticker ticker(clock, 100);
  clock.WaitForSleepers(1);
  EXPECT_EQ(clock.RunFor(kDay), 1u);
  EXPECT_EQ(ticker.Wakes().size(), 864000u);
  EXPECT_EQ(ticker.Wakes().back(), kDay);
  EXPECT_EQ(clock.Waits(), 864001u);
  EXPECT_EQ(clock.ShortestBetweenWakes(), 100.0);
  EXPECT_EQ(clock.Elapsed(), kDay);
}

TEST(SimulatedClock, ARunEndsBeforeALimitBeyondItsGoal) {
  SimulatedClock clock;
  Ticker ticker(clock, 100);
  clock.WaitForSleepers(1);
  EXPECT_EQ(clock.RunUntil(250.0), 1u);
  EXPECT_EQ(ticker.Wakes(), Multiples(100.0, 200.0));
  EXPECT_EQ(clock.RunUntil(299.0), 1u);
  EXPECT_EQ(ticker.Wakes().size(), 2u);
  EXPECT_EQ(clock.RunFor(1.0), 1u);
  EXPECT_EQ(ticker.Wakes().size(), 3u) << "a limit on the goal belongs to the run";
}

TEST(SimulatedClock, ActionsRunBeforeAnybodyWakesAtTheirTime) {
  SimulatedClock clock(0.0);
  PlatformEvent stop;
  std::vector<double> walls;
  std::thread reader([&] {
    while (!clock.Wait(stop, 100)) walls.push_back(WallMilliseconds(clock));
  });
  clock.WaitForSleepers(1);
  clock.At(200.0, [&] { clock.StepWall(1000.0); });
  clock.RunUntil(300.0);
  EXPECT_EQ(walls, (std::vector<double>{100.0, 1200.0, 1300.0}));
  stop.Set();
  reader.join();
}

TEST(SimulatedClock, AnActionsEventWakesAtThatVeryTime) {
  SimulatedClock clock;
  PlatformEvent event;
  double woke = -1.0;
  std::thread waiter([&] {
    EXPECT_TRUE(clock.Wait(event, 1000));
    woke = clock.Elapsed();
  });
  clock.WaitForSleepers(1);
  clock.At(123.0, [&] { event.Set(); });
  EXPECT_EQ(clock.RunUntil(2000.0), 0u) << "the waiter has ended";
  waiter.join();
  EXPECT_EQ(woke, 123.0);
}

TEST(SimulatedClock, AnEventSetAtTheMomentOfTheLimitCounts) {
  SimulatedClock clock;
  PlatformEvent event;
  bool set = false;
  std::thread waiter([&] { set = clock.Wait(event, 100); });
  clock.WaitForSleepers(1);
  clock.At(100.0, [&] { event.Set(); });
  clock.RunUntil(100.0);
  waiter.join();
  EXPECT_TRUE(set);
}

TEST(SimulatedClock, AThreadThatEndsHoldsUpNobody) {
  SimulatedClock clock;
  std::thread brief([&] { clock.Sleep(100); });
  Ticker ticker(clock, 70);
  clock.WaitForSleepers(2);
  EXPECT_EQ(clock.RunUntil(1000.0), 1u);
  EXPECT_EQ(ticker.Wakes(), Multiples(70.0, 1000.0));
  brief.join();
}

TEST(SimulatedClock, AThreadThatLeftHoldsUpNobody) {
  SimulatedClock clock;
  PlatformEvent go;
  std::thread leaver([&] {
    clock.Sleep(100);
    clock.Leave();
    go.Wait();  // a real wait, of which the clock knows nothing
  });
  clock.WaitForSleepers(1);
  EXPECT_EQ(clock.RunUntil(1000.0), 0u);
  go.Set();
  leaver.join();
}

TEST(SimulatedClock, SleepersCarryAClockThatWasAllowedToRun) {
  SimulatedClock clock;
  clock.LetRunFor(1000.0);
  EXPECT_EQ(clock.Elapsed(), 0.0) << "nobody carries it yet";
  clock.Sleep(5);
  EXPECT_EQ(clock.Elapsed(), 5.0);
  PlatformEvent event;
  EXPECT_FALSE(clock.Wait(event, 100));
  EXPECT_EQ(clock.Elapsed(), 105.0);
  clock.LetRunUntil(10.0);
  clock.Sleep(895);
  EXPECT_EQ(clock.Elapsed(), 1000.0) << "what was allowed stays allowed";
}

TEST(SimulatedClock, ClocksDoNotKnowOfEachOther) {
  SimulatedClock first, second;
  first.LetRunFor(1e6);
  second.LetRunFor(1e6);
  for (int i = 0; i < 10; ++i) {
    first.Sleep(1);
    second.Sleep(10);
  }
  EXPECT_EQ(first.Elapsed(), 10.0);
  EXPECT_EQ(second.Elapsed(), 100.0);
}

TEST(SimulatedClock, MayGoBeforeAThreadThatSleptInIt) {
  PlatformEvent slept, gone;
  auto clock = std::make_unique<SimulatedClock>();
  clock->LetRunFor(100.0);
  std::thread sleeper([&] {
    clock->Sleep(100);
    slept.Set();
    gone.Wait();
  });
  slept.Wait();
  clock.reset();
  gone.Set();
  sleeper.join();
}

TEST(SimulatedClock, CountsWakesOfEachThreadByItself) {
  SimulatedClock clock;
  EXPECT_EQ(clock.ShortestBetweenWakes(), kInfinity);
  Ticker slow(clock, 1000), other(clock, 1001);
  clock.WaitForSleepers(2);
  clock.RunFor(1500.0);
  EXPECT_EQ(clock.ShortestBetweenWakes(), kInfinity) << "1 ms lies between wakes of two threads";
  clock.RunFor(1000.0);
  EXPECT_EQ(clock.ShortestBetweenWakes(), 1000.0);
  EXPECT_EQ(clock.Waits(), 6u);
  clock.ResetCounts();
  EXPECT_EQ(clock.Waits(), 0u);
  EXPECT_EQ(clock.ShortestBetweenWakes(), kInfinity);
}

class SimulatedClockThreads : public testing::TestWithParam<int> {};

TEST_P(SimulatedClockThreads, EachSleeperWakesAtItsOwnTimes) {
  SimulatedClock clock;
  std::vector<std::unique_ptr<Ticker>> tickers;
  for (int i = 0; i < GetParam(); ++i) {
    tickers.push_back(std::make_unique<Ticker>(clock, static_cast<unsigned int>(7 + 3 * i)));
  }
  clock.WaitForSleepers(tickers.size());
  EXPECT_EQ(clock.RunUntil(5000.0), tickers.size());
  for (int i = 0; i < GetParam(); ++i) {
    EXPECT_EQ(tickers[static_cast<std::size_t>(i)]->Wakes(), Multiples(7 + 3 * i, 5000.0)) << i;
  }
  EXPECT_EQ(clock.ShortestBetweenWakes(), 7.0);
}

// While anybody is awake the clock stands: what all threads write, in the order of writing, is in order of time.
TEST_P(SimulatedClockThreads, TheEarliestLimitGoesFirst) {
  SimulatedClock clock;
  std::mutex mutex;
  std::vector<double> times;
  std::vector<std::thread> threads;
  for (int i = 0; i < GetParam(); ++i) {
    threads.emplace_back([&, i] {
      std::mt19937 random(static_cast<unsigned int>(i));
      double expected = 0.0;
      for (int round = 0; round < 300; ++round) {
        const unsigned int distance = static_cast<unsigned int>(random() % 50);
        expected += distance;
        clock.Sleep(distance);
        const std::lock_guard guard(mutex);
        EXPECT_EQ(clock.Elapsed(), expected);
        times.push_back(clock.Elapsed());
      }
      clock.Sleep(1000000);
    });
  }
  clock.WaitForSleepers(threads.size());
  EXPECT_EQ(clock.RunUntil(100000.0), threads.size());
  EXPECT_EQ(times.size(), threads.size() * 300);
  EXPECT_TRUE(std::is_sorted(times.begin(), times.end()));
  clock.Advance(1000000.0);
  for (std::thread& thread : threads) thread.join();
}

TEST_P(SimulatedClockThreads, OneSetOfAnAutoResetEventWakesOneWaiter) {
  SimulatedClock clock;
  PlatformEvent token(PlatformEvent::Mode::AutoReset);
  std::atomic<int> taken{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < GetParam(); ++i) {
    threads.emplace_back([&] {
      if (clock.Wait(token, 1000)) ++taken;
    });
  }
  clock.WaitForSleepers(threads.size());
  token.Set();
  EXPECT_EQ(clock.RunFor(0.0), threads.size() - 1) << "waits until all but one sleep again";
  clock.RunFor(999.0);
  EXPECT_EQ(taken, 1);
  clock.RunFor(1.0);
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(taken, 1);
}

TEST_P(SimulatedClockThreads, SleepersWakeEachOtherInSimulatedTime) {
  SimulatedClock clock;
  const int count = GetParam();
  std::vector<std::unique_ptr<PlatformEvent>> events;
  for (int i = 0; i < count; ++i) {
    events.push_back(std::make_unique<PlatformEvent>(PlatformEvent::Mode::AutoReset));
  }
  std::vector<std::thread> threads;
  std::atomic<int> laps{0};
  for (int i = 0; i < count; ++i) {
    threads.emplace_back([&, i] {
      PlatformEvent& mine = *events[static_cast<std::size_t>(i)];
      PlatformEvent& next = *events[static_cast<std::size_t>((i + 1) % count)];
      for (int lap = 0; lap < 50; ++lap) {
        EXPECT_TRUE(clock.Wait(mine, 0xFFFFFFFFu));
        EXPECT_EQ(clock.Elapsed(), lap * 10.0 * count + 10.0 * i);
        clock.Sleep(10);
        ++laps;
        next.Set();
      }
    });
  }
  clock.WaitForSleepers(threads.size());
  events[0]->Set();
  EXPECT_EQ(clock.RunUntil(1e6), 0u);
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(laps, 50 * count);
}

// Advances, runs, steps, events and readings from all sides: nothing hangs, and the counter never goes back.
TEST_P(SimulatedClockThreads, RandomUseFromAllSidesEnds) {
  SimulatedClock clock;
  PlatformEvent stop, tap(PlatformEvent::Mode::AutoReset);
  std::vector<std::thread> threads;
  for (int i = 0; i < GetParam(); ++i) {
    threads.emplace_back([&, i] {
      std::mt19937 random(static_cast<unsigned int>(100 + i));
      long long former = 0;
      while (!stop.TryWait()) {
        clock.Wait(tap, static_cast<unsigned int>(random() % 20));
        const long long now = clock.Counter();
        EXPECT_GE(now, former);
        former = now;
        if (random() % 8 == 0) tap.Set();
        if (random() % 8 == 0) clock.StepWall(-1.0);
        if (random() % 8 == 0) clock.At(clock.Elapsed() + 3.0, [&] { tap.Set(); });
        if (random() % 8 == 0) clock.Advance(1.0);
        if (random() % 16 == 0) clock.RunFor(1.0);
      }
    });
  }
  for (int i = 0; i < 200; ++i) clock.RunFor(10.0);
  stop.Set();
  clock.LetRunFor(1e6);
  for (std::thread& thread : threads) thread.join();
  EXPECT_GE(clock.Elapsed(), 2000.0);
}

TEST_P(SimulatedClockThreads, DestructionEndsEverySleepAndWait) {
  auto clock = std::make_unique<SimulatedClock>();
  SimulatedClock& waitedIn = *clock;
  PlatformEvent never;
  std::atomic<int> waitsTimedOut = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < GetParam(); ++i) {
    threads.emplace_back([&] {
      if (!waitedIn.Wait(never, std::numeric_limits<unsigned int>::max())) ++waitsTimedOut;
    });
  }
  threads.emplace_back([&] { waitedIn.Sleep(1000); });
  waitedIn.WaitForSleepers(threads.size());
  clock.reset();
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(waitsTimedOut, GetParam());
}

INSTANTIATE_TEST_SUITE_P(Counts, SimulatedClockThreads, testing::Values(2, 4, 10));

TEST(SimulatedClock, ASuspensionRunsOnlyTheActionsOfItsTime) {
  SimulatedClock clock;
  int runs = 0;
  clock.At(50.0, [&] { ++runs; });
  clock.At(5000.0, [&] { ++runs; });
  clock.Suspend(1000.0, SimulatedClock::Suspended::Both);
  EXPECT_EQ(runs, 1);
  clock.Advance(10000.0);
  EXPECT_EQ(runs, 2);
}

TEST(SimulatedClock, ARunToNowWaitsForWhoIsAwake) {
  SimulatedClock clock;
  const int runner = ThisThread();
  std::atomic<bool> done{false};
  std::thread worker([&] {
    clock.Sleep(10);
    AwaitWaiting(runner);  // awake meanwhile, and holding the run up
    done = true;
  });
  clock.WaitForSleepers(1);
  clock.Advance(10.0);
  EXPECT_EQ(clock.RunUntil(10.0), 0u);
  EXPECT_TRUE(done);
  worker.join();
}

// While another thread moves the clock on to an action at 10 ms, `move` on this thread comes back behind the action.
template <class Move>
void ExpectBehindAnActionOfAnother(SimulatedClock& clock, Move move) {
  const int mover = ThisThread();
  std::atomic<bool> begun{false};
  std::atomic<bool> done{false};
  clock.At(10.0, [&] {
    begun = true;
    AwaitWaiting(mover);
    done = true;
  });
  std::thread other([&] { clock.RunUntil(10.0); });
  while (!begun) std::this_thread::yield();
  move();
  EXPECT_TRUE(done);
  other.join();
}

TEST(SimulatedClock, ARunToNowWaitsForAnActionOfAnother) {
  SimulatedClock clock;
  ExpectBehindAnActionOfAnother(clock, [&] { clock.RunUntil(10.0); });
}

TEST(SimulatedClock, AMovementWaitsForAnActionOfAnother) {
  SimulatedClock clock;
  ExpectBehindAnActionOfAnother(clock, [&] { clock.Advance(5.0); });
  EXPECT_EQ(clock.Elapsed(), 15.0);
}

TEST(SimulatedClock, AnEventThatIsSetAgainBeforeTheSleeperIsUpWakesItOnce) {
  SimulatedClock clock;
  PlatformEvent event(PlatformEvent::Mode::AutoReset);
  clock.At(10.0, [&] {
    event.Set();
    event.Set();
  });
  clock.LetRunUntil(100.0);
  EXPECT_TRUE(clock.Wait(event, 50));
  EXPECT_EQ(clock.Elapsed(), 10.0);
  EXPECT_FALSE(event.TryWait());
}

// The destructors of what belongs to a thread have run by then, and the clock that they tell keeps nobody for them.
TEST(SimulatedClock, ASleepAtTheEndOfTheProcessIsOneOfNobody) {
  ExpectInChild(
      [] {
        static SimulatedClock& clock = *new SimulatedClock;
        clock.LetRunUntil(1000.0);
        clock.Sleep(10);
        EXPECT_EQ(clock.Elapsed(), 10.0);
        EXPECT_EQ(std::atexit([] {
                    clock.Sleep(10);
                    if (clock.Elapsed() != 20.0) std::_Exit(3);
                  }),
                  0);
      },
      ChildProcess::Ending::Full);
}

}  // namespace
