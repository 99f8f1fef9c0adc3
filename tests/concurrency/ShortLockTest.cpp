#include "zelbase/concurrency/detail/ShortLock.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <type_traits>
#include <vector>

#include "zelbase/platform/LockGuard.h"
#include "zelbase/platform/PlatformEvent.h"

namespace {

using zelbase::detail::ShortLock;

constinit ShortLock g_static;

TEST(ShortLock, IsAConstantInitialisedStaticThatNeedsNoDestruction) {
  EXPECT_TRUE(std::is_trivially_destructible_v<ShortLock>);
  const LockGuard guard(g_static);
}

TEST(ShortLock, WhoeverComesWhileItIsHeldWaitsAndSleeps) {
  ShortLock lock;
  PlatformEvent coming;
  bool open = false;
  lock.lock();
  std::thread other([&] {
    coming.Set();
    const LockGuard guard(lock);
    EXPECT_TRUE(open);
  });
  coming.Wait();
  for (int looks = 0; looks < 1000; ++looks) std::this_thread::yield();
  open = true;
  lock.unlock();
  other.join();
}

class ShortLockThreads : public testing::TestWithParam<int> {};

TEST_P(ShortLockThreads, OnlyOneIsInsideAtATime) {
  constexpr int kRounds = 5000;
  ShortLock lock;
  long long first = 0, second = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < GetParam(); ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < kRounds; ++round) {
        const LockGuard guard(lock);
        ++first;
        if (round % 50 == 0) std::this_thread::yield();  // so that others find it held for long
        ++second;
        EXPECT_EQ(first, second);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(first, static_cast<long long>(GetParam()) * kRounds);
}

TEST_P(ShortLockThreads, MayBeDestroyedByTheLastToGetIn) {
  for (int round = 0; round < 200; ++round) {
    auto lock = std::make_unique<ShortLock>();
    int toCome = GetParam();
    std::vector<std::thread> threads;
    lock->lock();
    for (int i = 0; i < GetParam(); ++i) {
      threads.emplace_back([&lock, &toCome] {
        lock->lock();
        const bool last = --toCome == 0;
        lock->unlock();
        if (last) lock.reset();
      });
    }
    lock->unlock();
    for (std::thread& thread : threads) thread.join();
  }
}

INSTANTIATE_TEST_SUITE_P(Counts, ShortLockThreads, testing::Values(2, 4, 10));

}  // namespace
