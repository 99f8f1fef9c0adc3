#include "zelbase/platform/PlatformThreads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <limits>
#include <memory>
#include <set>
#include <thread>
#include <vector>

#include "tests/support/ChildProcess.h"
#include "tests/support/RunningProgram.h"
#include "zelbase/platform/PlatformEvent.h"

namespace {

constexpr unsigned long kNoLimit = PlatformThread::kNoLimit;

PlatformThreads& Threads() { return PlatformThreads::System(); }

std::unique_ptr<PlatformThread> Make(std::function<void()> function, int priority = 0, std::size_t stack = 0) {
  return Threads().CreateSuspended(std::move(function), priority, stack);
}

// Fills `bytes` of stack; the address returned keeps the compiler from leaving it out.
[[gnu::noinline]] int UseStack(std::size_t bytes) {
  constexpr std::size_t kBlock = 16 * 1024;
  volatile char block[kBlock];
  for (std::size_t i = 0; i < kBlock; i += 512) block[i] = static_cast<char>(i / 512);
  const int below = bytes > kBlock ? UseStack(bytes - kBlock) : 0;
  return below + block[kBlock - 512];
}

TEST(SystemThreads, AreTheServiceInForceByDefault) { EXPECT_EQ(&PlatformService<PlatformThreads>::Current(), &PlatformThreads::System()); }

TEST(SystemThreads, RunOnlyOnceResumed) {
  std::atomic<bool> ran{false};
  const auto thread = Make([&] { ran = true; });
  ASSERT_NE(thread, nullptr);
  EXPECT_FALSE(thread->Wait(0));
  EXPECT_FALSE(thread->Wait(2));
  EXPECT_FALSE(ran);
  thread->Resume();
  thread->Resume();
  EXPECT_TRUE(thread->Wait(kNoLimit));
  EXPECT_TRUE(ran);
}

TEST(SystemThreads, WaitEndsAtItsLimitAndCanBeRepeated) {
  PlatformEvent go;
  const auto thread = Make([&] { go.Wait(); });
  thread->Resume();
  EXPECT_FALSE(thread->Wait(0));
  EXPECT_FALSE(thread->Wait(3));
  go.Set();
  EXPECT_TRUE(thread->Wait(0xFFFFFFFFFFul)) << "more than the greatest limit is none, too";
  EXPECT_TRUE(thread->Wait(0));
  EXPECT_TRUE(thread->Wait(kNoLimit));
}

TEST(SystemThreads, AThreadThatWaitsForItselfGetsFalseAtOnce) {
  std::atomic<int> answers{0};
  PlatformEvent ready;
  std::unique_ptr<PlatformThread> thread;
  thread = Make([&] {
    ready.Wait();
    if (!thread->Wait(kNoLimit)) ++answers;
    if (!thread->Wait(1000000)) ++answers;
  });
  thread->Resume();
  ready.Set();
  EXPECT_TRUE(thread->Wait(kNoLimit));
  EXPECT_EQ(answers, 2);
}

TEST(SystemThreads, LettingGoOfARunningThreadLetsItGoOn) {
  PlatformEvent go, done;
  auto thread = Make([&] {
    go.Wait();
    done.Set();
  });
  thread->Resume();
  thread.reset();
  go.Set();
  done.Wait();
}

TEST(SystemThreads, LettingGoOfASuspendedThreadEndsItWithoutRunning) {
  PlatformEvent released;
  std::atomic<bool> ran{false};
  struct TellsItsEnd {
    explicit TellsItsEnd(PlatformEvent& event) : end(event) {}
    ~TellsItsEnd() { end.Set(); }
    PlatformEvent& end;
  };
  auto thread = Make([&ran, held = std::make_shared<TellsItsEnd>(released)] { ran = true; });
  thread.reset();
  released.Wait();
  EXPECT_FALSE(ran);
}

TEST(SystemThreads, AThreadMayLetGoOfItself) {
  PlatformEvent ready, done;
  std::unique_ptr<PlatformThread> thread;
  thread = Make([&] {
    ready.Wait();
    thread.reset();
    done.Set();
  });
  thread->Resume();
  ready.Set();
  done.Wait();
}

TEST(SystemThreads, WhatTheFunctionHoldsIsGoneWhenTheWaitReturns) {
  const auto held = std::make_shared<int>(1);
  const auto thread = Make([held] {});
  EXPECT_EQ(held.use_count(), 2);
  thread->Resume();
  EXPECT_TRUE(thread->Wait(kNoLimit));
  EXPECT_EQ(held.use_count(), 1);
}

TEST(SystemThreads, IdsAreNeverZeroAndNeverGivenTwice) {
  std::set<unsigned long> ids{Threads().CurrentId()};
  EXPECT_EQ(ids.count(0), 0u);
  EXPECT_EQ(Threads().CurrentId(), *ids.begin());
  for (int i = 0; i < 100; ++i) {
    unsigned long inside = 0;
    const auto thread = Make([&] { inside = Threads().CurrentId(); });
    thread->Resume();
    ASSERT_TRUE(thread->Wait(kNoLimit));
    EXPECT_EQ(inside, thread->Id());
    EXPECT_TRUE(ids.insert(inside).second);
  }
  std::thread foreign([&] { EXPECT_TRUE(ids.insert(Threads().CurrentId()).second); });
  foreign.join();
}

TEST(SystemThreads, PriorityBelowTheOrdinaryMakesAThreadYield) {
  int nice = 0, later = 0;
  PlatformEvent looked, go;
  const auto thread = Make(
      [&] {
        nice = NicenessOfThread();
        looked.Set();
        go.Wait();
        later = NicenessOfThread();
      },
      -1);
  thread->Resume();
  looked.Wait();
  thread->SetPriority(-2);
  go.Set();
  EXPECT_TRUE(thread->Wait(kNoLimit));
  EXPECT_EQ(nice, std::min(NicenessOfProcess() + 5, 19));
  EXPECT_EQ(later, std::min(NicenessOfProcess() + 10, 19));
}

TEST(SystemThreads, AnyPriorityIsOnlyAHint) {
  for (const int priority : {2, 15, -15, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    bool ran = false;
    const auto thread = Make([&] { ran = true; }, priority);
    ASSERT_NE(thread, nullptr);
    thread->SetPriority(priority);
    thread->Resume();
    EXPECT_TRUE(thread->Wait(kNoLimit));
    thread->SetPriority(priority);
    EXPECT_TRUE(ran);
  }
}

TEST(SystemThreads, GetTheStackTheyAskFor) {
  int sum = -1;
  const auto thread = Make([&] { sum = UseStack(40u << 20); }, 0, 64u << 20);
  ASSERT_NE(thread, nullptr);
  thread->Resume();
  EXPECT_TRUE(thread->Wait(kNoLimit));
  EXPECT_GE(sum, 0);
}

TEST(SystemThreads, AStackTooSmallIsMadeLargeEnough) {
  for (const std::size_t stack : {std::size_t{1}, std::size_t{4096}, std::size_t{65537}}) {
    bool ran = false;
    const auto thread = Make([&] { ran = true; }, 0, stack);
    ASSERT_NE(thread, nullptr);
    thread->Resume();
    EXPECT_TRUE(thread->Wait(kNoLimit));
    EXPECT_TRUE(ran);
  }
}

TEST(SystemThreads, AnImpossibleStackIsRefused) {
  const auto held = std::make_shared<int>(1);
  EXPECT_EQ(Make([held] {}, 0, std::numeric_limits<std::size_t>::max()), nullptr);
  EXPECT_EQ(Make([held] {}, 0, std::size_t{1} << 60), nullptr);
  EXPECT_EQ(held.use_count(), 1);
}

TEST(SystemThreads, AnEmptyFunctionMakesNoThread) { EXPECT_EQ(Make(nullptr), nullptr); }

TEST(SystemThreads, AnExceptionThatLeavesTheFunctionEndsTheProcess) {
  ChildProcess child([] {
    const auto thread = Make([] { throw 1; });
    thread->Resume();
    thread->Wait(kNoLimit);
    return 0;
  });
  EXPECT_NE(child.Wait(), 0);
}

TEST(SystemThreads, NamingHasNoEffect) {
  Threads().NameThread(PlatformThreads::kCallingThread, "calling");
  Threads().NameThread(0, "");
  Threads().NameThread(123456, std::string(100000, 'x'));
}

class SystemThreadsCounts : public testing::TestWithParam<int> {};

TEST_P(SystemThreadsCounts, SeveralMayWaitForOneThread) {
  PlatformEvent go;
  const auto thread = Make([&] { go.Wait(); });
  std::atomic<int> seen{0};
  std::vector<std::unique_ptr<PlatformThread>> waiters;
  for (int i = 0; i < GetParam(); ++i) {
    waiters.push_back(Make([&] { seen += thread->Wait(kNoLimit) ? 1 : 0; }));
    waiters.back()->Resume();
  }
  thread->Resume();
  go.Set();
  for (const auto& waiter : waiters) EXPECT_TRUE(waiter->Wait(kNoLimit));
  EXPECT_EQ(seen, GetParam());
}

INSTANTIATE_TEST_SUITE_P(Counts, SystemThreadsCounts, testing::Values(2, 4, 10));

}  // namespace
