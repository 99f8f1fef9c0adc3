#include "zelbase/concurrency/Locker.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <random>
#include <thread>
#include <type_traits>
#include <vector>

#include "zelbase/platform/PlatformEvent.h"

namespace {

constinit Locker g_static;

template <class Work>
void OnAnotherThread(Work work) {
  std::thread(work).join();
}

bool IsFreeForOthers(Locker& locker) {
  bool taken = false;
  OnAnotherThread([&] {
    taken = locker.TryLock();
    locker.Unlock();
  });
  return taken;
}

TEST(Locker, KeepsOtherThreadsOutUntilUnlocked) {
  Locker locker;
  EXPECT_TRUE(IsFreeForOthers(locker));
  EXPECT_TRUE(locker.Lock());
  EXPECT_FALSE(IsFreeForOthers(locker));
  locker.Unlock();
  EXPECT_TRUE(IsFreeForOthers(locker));
}

TEST(Locker, TheSameThreadLocksAgainAndUnlocksAsOften) {
  Locker locker;
  EXPECT_TRUE(locker.Lock());
  EXPECT_TRUE(locker.TryLock());
  EXPECT_TRUE(locker.Lock());
  for (int held = 3; held > 0; --held) {
    EXPECT_FALSE(IsFreeForOthers(locker)) << held;
    locker.Unlock();
  }
  EXPECT_TRUE(IsFreeForOthers(locker));
}

TEST(Locker, UnlockByAThreadThatDoesNotHoldItIsIgnored) {
  Locker locker;
  locker.Unlock();
  locker.Unlock();
  locker.Lock();
  OnAnotherThread([&] { locker.Unlock(); });
  EXPECT_FALSE(IsFreeForOthers(locker));
  locker.Unlock();
  EXPECT_TRUE(IsFreeForOthers(locker));
}

TEST(Locker, UnlockBeyondTheLocksIsIgnored) {
  Locker locker;
  locker.Lock();
  locker.Unlock();
  locker.Unlock();
  locker.Lock();
  EXPECT_FALSE(IsFreeForOthers(locker)) << "the surplus unlock was not saved up";
  locker.Unlock();
}

TEST(Locker, AHeldTargetOfAnAssignmentStaysHeld) {
  Locker target, source;
  target.Lock();
  target = source;
  EXPECT_FALSE(IsFreeForOthers(target));
  EXPECT_TRUE(IsFreeForOthers(source));
  target.Unlock();
  EXPECT_TRUE(IsFreeForOthers(target));
}

TEST(Locker, AHeldSourceDoesNotHoldTheTarget) {
  Locker source;
  source.Lock();
  Locker copy(source);
  Locker target;
  target = source;
  EXPECT_TRUE(IsFreeForOthers(copy));
  EXPECT_TRUE(IsFreeForOthers(target));
  EXPECT_FALSE(IsFreeForOthers(source));
  source.Unlock();
}

TEST(Locker, OwnersMayBeAssignedByValue) {
  struct Owner {
    Locker locker;
    int value = 0;
  };
  Owner target, source;
  source.value = 7;
  const std::lock_guard guard(target.locker);
  target = source;
  EXPECT_EQ(target.value, 7);
  EXPECT_FALSE(IsFreeForOthers(target.locker));
}

TEST(Locker, WorksAsAConstantInitialisedStaticAndWithTheStandardGuards) {
  static_assert(std::is_trivially_destructible_v<Locker>);
  const std::scoped_lock outer(g_static);
  const std::unique_lock inner(g_static, std::try_to_lock);
  EXPECT_TRUE(inner.owns_lock());
  EXPECT_FALSE(IsFreeForOthers(g_static));
}

// Two threads take turns in a random sequence of calls; a plain count beside each says what must come.
TEST(Locker, RandomCallsAgreeWithACount) {
  Locker locker;
  const unsigned int seed = 20240229;
  std::mt19937 random(seed);
  PlatformEvent go(PlatformEvent::Mode::AutoReset), done(PlatformEvent::Mode::AutoReset);
  std::function<void()> job;
  std::thread other([&] {
    for (;;) {
      go.Wait();
      if (!job) return;
      job();
      done.Set();
    }
  });
  int held[2] = {0, 0};
  int refusals = 0;
  for (int step = 0; step < 20000; ++step) {
    const std::size_t who = random() % 2;
    const std::size_t what = random() % 4;
    const bool mayEnter = held[1 - who] == 0;
    job = [&, who, what] {
      if (what == 0 && mayEnter) {
        EXPECT_TRUE(locker.Lock());
        ++held[who];
      } else if (what == 1) {
        EXPECT_EQ(locker.TryLock(), mayEnter) << "seed " << seed << ", step " << step;
        held[who] += mayEnter ? 1 : 0;
        refusals += mayEnter ? 0 : 1;
      } else if (what >= 2) {
        locker.Unlock();
        held[who] -= held[who] > 0 ? 1 : 0;
      }
    };
    if (who == 0) {
      job();
    } else {
      go.Set();
      done.Wait();
    }
  }
  EXPECT_GT(refusals, 1000);
  job = nullptr;
  go.Set();
  other.join();
}

class LockerThreads : public testing::TestWithParam<int> {};

TEST_P(LockerThreads, OneThreadAtATimeIsInside) {
  constexpr int kRounds = 3000;
  Locker locker;
  long long value = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < GetParam(); ++i) {
    threads.emplace_back([&, i] {
      for (int round = 0; round < kRounds; ++round) {
        if ((round + i) % 3 == 0) {
          while (!locker.TryLock()) std::this_thread::yield();
        } else {
          locker.Lock();
        }
        locker.Lock();
        ++value;
        locker.Unlock();
        ++value;
        locker.Unlock();
        locker.Unlock();  // one too many: by now it may be another thread's
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(value, 2LL * kRounds * GetParam());
  EXPECT_TRUE(locker.TryLock());
}

TEST_P(LockerThreads, EveryThreadThatSleepsIsWokenInTurn) {
  Locker locker;
  std::atomic<int> inside{0};
  std::vector<std::thread> threads;
  for (int round = 0; round < 100; ++round) {
    locker.Lock();
    for (int i = 0; i < GetParam(); ++i) {
      threads.emplace_back([&] {
        locker.Lock();
        EXPECT_EQ(++inside, 1);
        --inside;
        locker.Unlock();
      });
    }
    locker.Unlock();
    for (std::thread& thread : threads) thread.join();
    threads.clear();
  }
  EXPECT_TRUE(IsFreeForOthers(locker));
}

TEST_P(LockerThreads, MayBeDestroyedByTheLastWhoHoldsIt) {
  for (int round = 0; round < 300; ++round) {
    auto locker = std::make_unique<Locker>();
    std::atomic<int> left{GetParam()};
    std::vector<std::thread> threads;
    for (int i = 0; i < GetParam(); ++i) {
      threads.emplace_back([&] {
        Locker* const mine = locker.get();
        mine->Lock();
        const bool last = --left == 0;
        mine->Unlock();
        if (last) locker.reset();
      });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(locker, nullptr);
  }
}

INSTANTIATE_TEST_SUITE_P(Counts, LockerThreads, testing::Values(2, 4, 10));

}  // namespace
