#include "tests/support/Scheduler.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "tests/support/Interleavings.h"
#include "tests/support/OtherLockOrders.h"
#include "zelbase/concurrency/Locker.h"
#include "zelbase/concurrency/detail/Primitives.h"

namespace {

using Grain = Scheduler::Grain;

constexpr unsigned int kSteps = 8;

// A body of `count` steps that do nothing but say whose turn it is.
std::function<void()> Saying(std::string& said, char name, unsigned int count) {
  return [&said, name, count] {
    for (unsigned int i = 0; i < count; ++i) {
      Scheduler::Turn("say");
      said += name;
    }
  };
}

// By hand: 16! / (8! 8!) = 12870, 8! / (3! 5!) = 56.
TEST(Scheduler, AllInterleavingsOfTwoThreadsComeOnceEach) {
  EXPECT_EQ(Interleavings(8, 8), 12870u);
  EXPECT_EQ(Interleavings(3, 5), 56u);
  for (const auto& [first, second] : {std::pair(3u, 5u), std::pair(1u, 1u), std::pair(0u, 4u), std::pair(kSteps, kSteps)}) {
    std::set<std::string> seen;
    const unsigned long long count = TryAllSchedules(
        [&, first = first, second = second](Scheduler& scheduler) {
          std::string said;
          scheduler.Run({Saying(said, 'a', first), Saying(said, 'b', second)});
          scheduler.Expect(scheduler.Steps() == first + second, "as many steps as were said");
          seen.insert(said);
        },
        Grain::Calls);
    EXPECT_EQ(count, Interleavings(first, second));
    EXPECT_EQ(seen.size(), count);
  }
}

// Of three threads by two steps: 6! / (2! 2! 2!) = 90.
TEST(Scheduler, AllInterleavingsOfThreeThreadsComeOnceEach) {
  std::set<std::string> seen;
  const unsigned long long count = TryAllSchedules(
      [&](Scheduler& scheduler) {
        std::string said;
        scheduler.Run({Saying(said, 'a', 2), Saying(said, 'b', 2), Saying(said, 'c', 2)});
        seen.insert(said);
      },
      Grain::Calls);
  EXPECT_EQ(count, 90u);
  EXPECT_EQ(seen.size(), 90u);
}

// Each operation of a lock on its atomics is a step: two threads with a lock each never meet.
TEST(Scheduler, StepsAreTheOperationsOfTheLibrary) {
  const auto body = [](Scheduler& scheduler, Locker& locker) {
    return [&] {
      locker.Lock();  // whose it is, take it, mine
      Scheduler::Turn("inside");
      Scheduler::Turn("inside");
      locker.Unlock();  // whose it is, nobody's, free
      scheduler.Expect(scheduler.StepsOfThisThread() == kSteps, "eight steps");
    };
  };
  const unsigned long long count = TryAllSchedules(
      [&](Scheduler& scheduler) {
        Locker first, second;
        scheduler.Run({body(scheduler, first), body(scheduler, second)});
      },
      Grain::Operations);
  EXPECT_EQ(count, Interleavings(kSteps, kSteps));
}

// A thread is left before its own step 2, 3, ... 8, or never; and either may be the first: 2 * 8 schedules.
TEST(Scheduler, AThreadIsInterruptedNoMoreOftenThanItsBound) {
  const auto program = [](Scheduler& scheduler) {
    std::string said;
    scheduler.Run({Saying(said, 'a', kSteps), Saying(said, 'b', kSteps)});
  };
  EXPECT_EQ(TryAllSchedules(program, Grain::Calls, 0), 2u);
  EXPECT_EQ(TryAllSchedules(program, Grain::Calls, 1), 2u * kSteps);
  EXPECT_EQ(TryAllSchedules(program, Grain::Calls, 100), Interleavings(kSteps, kSteps));
}

TEST(Scheduler, ASeedGivesTheSameStepsAgainAndOthersOtherSteps) {
  const auto said = [](unsigned int seed) {
    SeededSchedule schedule(seed);
    Scheduler scheduler(schedule, Grain::Calls);
    std::string text;
    scheduler.Run({Saying(text, 'a', 200), Saying(text, 'b', 200), Saying(text, 'c', 200)});
    return text;
  };
  std::set<std::string> seen;
  for (unsigned int seed = 0; seed < 50; ++seed) {
    const std::string text = said(seed);
    EXPECT_EQ(text.size(), 600u);
    EXPECT_EQ(said(seed), text) << seed;
    seen.insert(text);
  }
  EXPECT_EQ(seen.size(), 50u);
}

// Two locks in two orders. What stands still for ever is left where it is, locks and all.
struct TwoLocks {
  Locker first;
  Locker second;
};

void TakeInTwoOrders(Scheduler& scheduler) {
  const OtherLockOrders allowed;
  TwoLocks& locks = *new TwoLocks;
  const auto take = [](Locker& outer, Locker& inner) {
    return [&outer, &inner] {
      outer.Lock();
      inner.Lock();
      inner.Unlock();
      outer.Unlock();
    };
  };
  scheduler.Run({take(locks.first, locks.second), take(locks.second, locks.first)});
  if (!scheduler.IsDeadlock()) delete &locks;
}

TEST(Scheduler, FindsADeadlockAndItsChoicesLeadToItAgain) {
  AllSchedules all(1);
  std::vector<std::size_t> choices;
  std::string report;
  do {
    Scheduler scheduler(all);
    TakeInTwoOrders(scheduler);
    if (!scheduler.HasFailed()) continue;
    EXPECT_TRUE(scheduler.IsDeadlock());
    choices = scheduler.Choices();
    report = scheduler.Report();
  } while (report.empty() && all.Next());
  ASSERT_NE(report.find("nobody can go on"), std::string::npos);
  EXPECT_GT(all.Count(), 1u) << "the first schedule runs one thread after the other";

  GivenSchedule given(choices);
  Scheduler scheduler(given);
  TakeInTwoOrders(scheduler);
  EXPECT_TRUE(scheduler.IsDeadlock());
  EXPECT_EQ(scheduler.Report(), report);
}

TEST(Scheduler, SeedsFindADeadlockAndGiveTheSameReportAgain) {
  const auto report = [](unsigned int seed) {
    SeededSchedule schedule(seed);
    Scheduler scheduler(schedule);
    TakeInTwoOrders(scheduler);
    return scheduler.HasFailed() ? scheduler.Report() : std::string();
  };
  unsigned int found = 0;
  for (unsigned int seed = 0; seed < 40; ++seed) {
    const std::string text = report(seed);
    EXPECT_EQ(report(seed), text) << seed;
    found += text.empty() ? 0u : 1u;
  }
  EXPECT_GT(found, 0u);
  EXPECT_LT(found, 40u);
}

// Looks, and sleeps when there is nothing: in between it may come, and nobody wakes the sleeper.
TEST(Scheduler, FindsAWakeUpThatIsLost) {
  AllSchedules all;
  bool found = false;
  do {
    Scheduler scheduler(all);
    auto& flag = *new zelbase::detail::Atomic<int>(0);
    scheduler.Run({[&] {
                     if (flag.load() != 0) return;
                     Scheduler::Turn("gap");
                     Scheduler::Sleep(&flag);
                   },
                   [&] {
                     flag.store(1);
                     flag.notify_all();
                   }});
    found = scheduler.IsDeadlock();
    if (!found) delete &flag;
  } while (!found && all.Next());
  EXPECT_TRUE(found);
}

// The same with the look and the sleep in one is sound.
TEST(Scheduler, AWaitAtAnAtomicLosesNoWakeUp) {
  const unsigned long long count = TryAllSchedules(
      [](Scheduler& scheduler) {
        zelbase::detail::Atomic<int> flag(0);
        scheduler.Run({[&] { flag.wait(0); },
                       [&] {
                         flag.store(1);
                         flag.notify_one();
                       }});
      },
      Grain::Operations);
  // The waiter goes before the store (it sleeps, and ends when it is woken), between store and wake-up, or last.
  EXPECT_EQ(count, 3u);
}

TEST(Scheduler, TheFirstExpectationThatFailsIsReported) {
  SeededSchedule schedule(1);
  Scheduler scheduler(schedule);
  scheduler.Run({[&] {
    Scheduler::Turn("one");
    scheduler.Expect(true, "not this");
    scheduler.Expect(false, "this");
    scheduler.Expect(false, "nor that");
  }});
  EXPECT_TRUE(scheduler.HasFailed());
  EXPECT_FALSE(scheduler.IsDeadlock());
  EXPECT_EQ(scheduler.Report(), "this (after step 1)\nchoices:\nlast of 1 steps:\n  thread 0: one\n");
}

}  // namespace
