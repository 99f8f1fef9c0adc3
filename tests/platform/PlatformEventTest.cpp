#include "zelbase/platform/PlatformEvent.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {

TEST(PlatformEvent, StartsClear) {
  PlatformEvent event;
  EXPECT_FALSE(event.TryWait());
  EXPECT_FALSE(event.WaitFor(0));
  EXPECT_FALSE(event.WaitFor(3));
}

TEST(PlatformEvent, ManualResetLetsEveryWaiterPassUntilReset) {
  PlatformEvent event;
  event.Set();
  event.Set();
  EXPECT_TRUE(event.TryWait());
  EXPECT_TRUE(event.WaitFor(0));
  event.Wait();
  event.Reset();
  EXPECT_FALSE(event.TryWait());
}

TEST(PlatformEvent, AutoResetLetsOnePass) {
  PlatformEvent event(PlatformEvent::Mode::AutoReset);
  event.Set();
  event.Set();
  EXPECT_TRUE(event.WaitFor(0));
  EXPECT_FALSE(event.TryWait()) << "two sets without a wait between them are one";
}

TEST(PlatformEvent, AWaitWithoutLimitEndsWithTheSet) {
  for (const unsigned long limit : {PlatformEvent::kNoLimit, ~0ul}) {
    PlatformEvent event;
    bool set = false;
    std::thread waiter([&] { set = event.WaitFor(limit); });
    event.Set();
    waiter.join();
    EXPECT_TRUE(set);
  }
}

TEST(PlatformEvent, ALimitJustBelowNoneDoesNotOverflow) {
  PlatformEvent event;
  event.Set();
  EXPECT_TRUE(event.WaitFor(PlatformEvent::kNoLimit - 1));
}

TEST(PlatformEvent, ObserversHearOfEachSetUntilTheyAreTakenOff) {
  struct Counter : PlatformEvent::Observer {
    void OnSet() override { ++calls; }
    int calls = 0;
  } first, second;
  PlatformEvent event(PlatformEvent::Mode::AutoReset);
  event.AddObserver(first);
  event.AddObserver(second);
  event.Set();
  event.RemoveObserver(first);
  event.RemoveObserver(first);
  event.Set();
  event.Reset();
  EXPECT_EQ(first.calls, 1);
  EXPECT_EQ(second.calls, 2);
}

TEST(PlatformEvent, MayBeDestroyedAsSoonAsItsWaitReturned) {
  for (int i = 0; i < 2000; ++i) {
    auto event = std::make_unique<PlatformEvent>();
    std::thread setter([raw = event.get()] { raw->Set(); });
    event->Wait();
    event.reset();
    setter.join();
  }
}

class PlatformEventThreads : public testing::TestWithParam<int> {};

TEST_P(PlatformEventThreads, EveryWaiterOfAManualResetEventPasses) {
  PlatformEvent event;
  std::atomic<int> passed{0};
  std::vector<std::thread> waiters;
  for (int i = 0; i < GetParam(); ++i) {
    waiters.emplace_back([&] {
      event.Wait();
      ++passed;
    });
  }
  event.Set();
  for (std::thread& waiter : waiters) waiter.join();
  EXPECT_EQ(passed, GetParam());
}

// Each token passes one waiter: handed round, every Set is answered by exactly one pass.
TEST_P(PlatformEventThreads, EachSetOfAnAutoResetEventPassesExactlyOne) {
  constexpr int kRounds = 500;
  PlatformEvent token(PlatformEvent::Mode::AutoReset);
  PlatformEvent answer(PlatformEvent::Mode::AutoReset);
  std::atomic<int> passes{0};
  std::atomic<bool> end{false};
  std::vector<std::thread> waiters;
  for (int i = 0; i < GetParam(); ++i) {
    waiters.emplace_back([&] {
      for (;;) {
        token.Wait();
        if (end) return token.Set();  // passes the end on
        ++passes;
        answer.Set();
      }
    });
  }
  for (int round = 1; round <= kRounds; ++round) {
    token.Set();
    answer.Wait();
    EXPECT_EQ(passes, round);
  }
  end = true;
  token.Set();
  for (std::thread& waiter : waiters) waiter.join();
}

INSTANTIATE_TEST_SUITE_P(Counts, PlatformEventThreads, testing::Values(2, 4, 10));

}  // namespace
