#include "zelbase/platform/detail/Mutex.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "zelbase/platform/LockGuard.h"

namespace {

using zelbase::detail::Condition;
using zelbase::detail::Mutex;
using zelbase::detail::PausableGuard;

constinit Mutex g_static;

TEST(Mutex, IsConstantInitialised) { const LockGuard guard(g_static); }

TEST(Mutex, KeepsThreadsApart) {
  Mutex mutex;
  long long first = 0, second = 0;
  const auto count = [&] {
    for (int round = 0; round < 5000; ++round) {
      const LockGuard guard(mutex);
      ++first;
      ++second;
      EXPECT_EQ(first, second);
    }
  };
  std::thread other(count);
  count();
  other.join();
  EXPECT_EQ(first, 10000);
}

TEST(Condition, WaitLetsTheMutexGoAndHoldsItAgainAfterwards) {
  Mutex mutex;
  Condition changed;
  int turn = 0;
  std::thread other([&] {
    const LockGuard guard(mutex);
    while (turn != 1) changed.Wait(mutex);
    turn = 2;
    changed.NotifyAll();
  });
  {
    const LockGuard guard(mutex);
    turn = 1;
    changed.NotifyOne();
    while (turn != 2) changed.Wait(mutex);
    EXPECT_EQ(turn, 2);
  }
  other.join();
}

TEST(Condition, WaitUntilTellsThatTheLimitHasCome) {
  Mutex mutex;
  Condition never;
  const LockGuard guard(mutex);
  const auto limit = std::chrono::steady_clock::now();
  while (never.WaitUntil(mutex, limit)) {
  }
  EXPECT_GE(std::chrono::steady_clock::now(), limit);
}

TEST(PausableGuard, LetsTheMutexGoForAWhileAndGivesItBackAtItsEnd) {
  Mutex mutex;
  int entered = 0;
  const auto enter = [&] {
    std::thread([&] {
      const LockGuard guard(mutex);
      ++entered;
    }).join();
  };
  {
    PausableGuard guard(mutex);
    ++entered;
    guard.unlock();
    enter();
    guard.lock();
    EXPECT_EQ(entered, 2);
  }
  enter();
  {
    PausableGuard guard(mutex);
    guard.unlock();
  }
  enter();
  EXPECT_EQ(entered, 4);
}

}  // namespace
