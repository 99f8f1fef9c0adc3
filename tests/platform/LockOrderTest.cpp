#include "zelbase/platform/detail/LockOrder.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/ChildProcess.h"
#include "zelbase/concurrency/Locker.h"
#include "zelbase/concurrency/ReadWriteLocker.h"
#include "zelbase/concurrency/detail/ShortLock.h"
#include "zelbase/platform/LockGuard.h"
#include "zelbase/platform/detail/Mutex.h"

namespace {

using zelbase::detail::LockOrder;
using zelbase::detail::Mutex;
using zelbase::detail::ShortLock;

// The recorder knows locks by their address: they are no larger for it.
static_assert(sizeof(ReadWriteLocker) == sizeof(unsigned int));
static_assert(sizeof(ShortLock) == sizeof(unsigned int));
static_assert(sizeof(Locker) == 3 * sizeof(void*));
static_assert(std::is_trivially_destructible_v<Locker>);

using Told = std::vector<std::pair<const void*, const void*>>;

// Notes what is told, for the life of a test.
class LockOrderTest : public testing::Test {
 protected:
  LockOrderTest() : m_former(LockOrder::SetHook(&Tell)) { Said().clear(); }
  ~LockOrderTest() override { LockOrder::SetHook(m_former); }

  static Told& Said() {
    static Told told;
    return told;
  }

 private:
  static void Tell(const void* held, const void* wanted) { Said().emplace_back(held, wanted); }

  const LockOrder::Hook m_former;
};

// The recorder by itself, with things that are no locks.
void TakeNamed(const int& outer, const int& inner) {
  LockOrder::Wants(&outer);
  LockOrder::Has(&outer);
  LockOrder::Wants(&inner);
  LockOrder::Has(&inner);
  LockOrder::GivesBack(&inner);
  LockOrder::GivesBack(&outer);
}

TEST_F(LockOrderTest, TheRecorderIsThereInEveryBuild) {
  const int first = 1, second = 2;
  LockOrder::Begins(&first);
  LockOrder::Begins(&second);
  TakeNamed(first, second);
  EXPECT_EQ(Said(), Told{});
  TakeNamed(second, first);
  TakeNamed(second, first);
  EXPECT_EQ(Said(), (Told{{&second, &first}}));
}

template <class Outer, class Inner>
void TakeBoth(Outer& outer, Inner& inner) {
  const LockGuard first(outer);
  const LockGuard second(inner);
}

// A reader's lock in the form of a guard's.
struct Reading {
  void lock() { locker.LockRead(); }
  void unlock() { locker.UnlockRead(); }
  ReadWriteLocker& locker;
};
struct Writing {
  void lock() { locker.LockWrite(); }
  void unlock() { locker.UnlockWrite(); }
  ReadWriteLocker& locker;
};

#if !ZELBASE_LOCK_ORDER

TEST_F(LockOrderTest, LocksSayNothingWhereItIsNotAskedFor) {
  Locker first, second;
  ReadWriteLocker shared;
  Reading reading{shared};
  TakeBoth(first, second);
  TakeBoth(second, first);
  TakeBoth(reading, first);
  TakeBoth(first, reading);
  EXPECT_EQ(Said(), Told{});
}

#else

TEST_F(LockOrderTest, OneOrderIsFineHoweverOften) {
  Locker first, second;
  for (int i = 0; i < 10; ++i) TakeBoth(first, second);
  std::thread([&] { TakeBoth(first, second); }).join();
  EXPECT_EQ(Said(), Told{});
}

TEST_F(LockOrderTest, TheOtherOrderIsToldOnceWithoutAnyoneHavingWaited) {
  Locker first, second;
  TakeBoth(first, second);
  for (int i = 0; i < 3; ++i) TakeBoth(second, first);
  EXPECT_EQ(Said(), (Told{{&second, &first}}));
}

TEST_F(LockOrderTest, OrdersOfSeveralThreadsAreSeenTogether) {
  Locker first, second;
  std::thread([&] { TakeBoth(first, second); }).join();
  EXPECT_EQ(Said(), Told{});
  std::thread([&] { TakeBoth(second, first); }).join();
  EXPECT_EQ(Said(), (Told{{&second, &first}}));
}

TEST_F(LockOrderTest, ACircleOfThreeIsFound) {
  Locker first, second, third;
  TakeBoth(first, second);
  TakeBoth(second, third);
  EXPECT_EQ(Said(), Told{});
  TakeBoth(third, first);
  EXPECT_EQ(Said(), (Told{{&third, &first}}));
}

TEST_F(LockOrderTest, EachLockThatIsHeldCounts) {
  Locker first, second, third;
  {
    const LockGuard outer(first);
    TakeBoth(second, third);
  }
  EXPECT_EQ(Said(), Told{});
  TakeBoth(third, first);
  EXPECT_EQ(Said(), (Told{{&third, &first}}));
}

TEST_F(LockOrderTest, AllKindsOfLocksAreSeen) {
  Locker locker;
  ReadWriteLocker shared;
  ShortLock shortLock;
  Mutex mutex;
  Reading reading{shared};
  Writing writing{shared};
  TakeBoth(locker, reading);
  TakeBoth(writing, shortLock);
  TakeBoth(shortLock, mutex);
  EXPECT_EQ(Said(), Told{});
  TakeBoth(mutex, locker);
  EXPECT_EQ(Said(), (Told{{&mutex, &locker}}));
}

TEST_F(LockOrderTest, TakingTheSameLockAgainIsNoOrder) {
  Locker first, second;
  {
    const LockGuard outer(first);
    TakeBoth(second, first);
  }
  TakeBoth(first, second);
  EXPECT_EQ(Said(), Told{});
  TakeBoth(second, first);
  EXPECT_EQ(Said().size(), 1u);
}

TEST_F(LockOrderTest, ATryClosesNoCircleButWhatFollowsCounts) {
  Locker first, second;
  TakeBoth(first, second);
  second.Lock();
  EXPECT_TRUE(first.TryLock());
  first.Unlock();
  second.Unlock();
  EXPECT_EQ(Said(), Told{});
  EXPECT_TRUE(second.TryLock());
  first.Lock();
  EXPECT_EQ(Said(), (Told{{&second, &first}}));
  first.Unlock();
  second.Unlock();
}

TEST_F(LockOrderTest, ALockThatWasGivenBackIsNotHeld) {
  Locker first, second;
  ReadWriteLocker shared;
  TakeBoth(first, second);
  second.Lock();
  second.Unlock();
  second.Unlock();  // ignored
  first.Lock();
  first.Unlock();
  shared.LockWrite();
  shared.ChangeWriteToRead();
  shared.UnlockRead();
  shared.UnlockWrite();  // ignored
  TakeBoth(first, second);
  EXPECT_EQ(Said(), Told{});
}

TEST_F(LockOrderTest, AReaderThatWasAWriterStillHoldsItsLock) {
  Locker locker;
  ReadWriteLocker shared;
  shared.LockWrite();
  shared.ChangeWriteToRead();
  locker.Lock();
  locker.Unlock();
  shared.UnlockRead();
  Reading reading{shared};
  TakeBoth(locker, reading);
  EXPECT_EQ(Said(), (Told{{&locker, &shared}}));
}

TEST_F(LockOrderTest, ANewLockInThePlaceOfAnOlderOneHasNoPast) {
  alignas(Locker) unsigned char place[sizeof(Locker)];
  Locker other;
  auto* lock = new (place) Locker;
  TakeBoth(*lock, other);
  lock = new (place) Locker;
  TakeBoth(other, *lock);
  EXPECT_EQ(Said(), Told{});
  auto* const copy = new (place) Locker(other);
  TakeBoth(*copy, other);
  EXPECT_EQ(Said(), Told{});
}

TEST_F(LockOrderTest, ALockGivenBackByAnotherThreadIsNotFollowed) {
  Locker locker;
  ReadWriteLocker shared;
  shared.LockRead();
  shared.LockRead();
  std::thread([&] {
    shared.UnlockRead();
    shared.UnlockRead();
  }).join();
  locker.Lock();  // as the recorder sees it, the lock is still held here
  locker.Unlock();
  Reading reading{shared};
  TakeBoth(locker, reading);
  TakeBoth(reading, locker);
  EXPECT_EQ(Said(), Told{});
}

// 32 locks are followed; what is held beyond them is not, and nothing is lost of those.
TEST_F(LockOrderTest, ManyLocksMayBeHeld) {
  std::vector<Locker> locks(40);
  Locker last;
  for (Locker& lock : locks) lock.Lock();
  last.Lock();
  last.Unlock();
  for (std::size_t i = locks.size(); i-- > 0;) locks[i].Unlock();
  TakeBoth(last, locks[39]);
  EXPECT_EQ(Said(), Told{});
  TakeBoth(last, locks[31]);
  EXPECT_EQ(Said(), (Told{{&last, &locks[31]}}));
}

TEST_F(LockOrderTest, SeveralWaysToOneLockAreNoCircle) {
  Locker top, left, right, bottom, last, other;
  TakeBoth(top, left);
  TakeBoth(top, right);
  TakeBoth(left, bottom);
  TakeBoth(right, bottom);
  TakeBoth(bottom, last);
  TakeBoth(other, top);
  EXPECT_EQ(Said(), Told{});
  TakeBoth(last, other);
  EXPECT_EQ(Said(), (Told{{&last, &other}}));
}

TEST_F(LockOrderTest, ManyOrdersMayBeSeenAgain) {
  std::vector<Locker> outer(40), inner(40);
  for (int round = 0; round < 2; ++round) {
    for (Locker& first : outer) {
      for (Locker& second : inner) TakeBoth(first, second);
    }
  }
  EXPECT_EQ(Said(), Told{});
}

// 4096 orders are noted, then they start afresh.
TEST_F(LockOrderTest, ManyOrdersMayBeSeen) {
  std::vector<Locker> outer(70), inner(70);
  for (Locker& first : outer) {
    for (Locker& second : inner) TakeBoth(first, second);
  }
  EXPECT_EQ(Said(), Told{});
  TakeBoth(inner[69], outer[69]);
  EXPECT_EQ(Said(), (Told{{&inner[69], &outer[69]}}));
}

TEST_F(LockOrderTest, ManyLocksMayBeGivenBackElsewhere) {
  std::vector<ReadWriteLocker> locks(100);
  std::thread([&] {
    for (ReadWriteLocker& lock : locks) lock.LockRead();
  }).join();
  std::thread([&] {
    for (ReadWriteLocker& lock : locks) lock.UnlockRead();
  }).join();
  EXPECT_EQ(Said(), Told{});
}

// What this thread still seems to hold is dropped when its list is full, and the next orders are seen.
TEST_F(LockOrderTest, ALongListOfLocksGivenBackElsewhereIsCleared) {
  std::vector<ReadWriteLocker> locks(40);
  for (ReadWriteLocker& lock : locks) {
    lock.LockRead();
    std::thread([&] { lock.UnlockRead(); }).join();
  }
  Locker first, second;
  TakeBoth(first, second);
  EXPECT_EQ(Said(), Told{});
  TakeBoth(second, first);
  EXPECT_EQ(Said(), (Told{{&second, &first}}));
}

TEST_F(LockOrderTest, ThreadsNoteTheirOrdersTogether) {
  std::vector<Locker> locks(12);
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < 200; ++round) {
        for (std::size_t first = 0; first + 1 < locks.size(); ++first) TakeBoth(locks[first], locks[first + 1]);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(Said(), Told{});
  TakeBoth(locks[11], locks[0]);
  EXPECT_EQ(Said(), (Told{{&locks[11], &locks[0]}}));
}

TEST_F(LockOrderTest, WithoutAHookALineGoesToStandardError) {
  const std::function<int()> body = [] {
    LockOrder::SetHook(nullptr);
    Locker first, second;
    TakeBoth(first, second);
    TakeBoth(second, first);
    TakeBoth(second, first);
    return static_cast<int>(LockOrder::Circles());
  };
  ChildProcess child(body, ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 1);
  EXPECT_NE(child.ErrorText().find("another time it was the other way round"), std::string::npos) << child.ErrorText();
  EXPECT_EQ(child.ErrorText().find('\n'), child.ErrorText().size() - 1) << "one line";
}

#endif

}  // namespace
