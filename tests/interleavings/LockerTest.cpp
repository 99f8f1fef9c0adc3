// Locker under all schedules of two threads by eight steps, and under a thousand seeds of three by two hundred. What holds in
// each: one thread at a time is inside, however often it has locked; a surplus Unlock lets nobody in; TryLock never waits;
// everybody gets in; the lock is free in the end.

#include "zelbase/concurrency/Locker.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/Effort.h"
#include "tests/support/Interleavings.h"

namespace {

using Grain = Scheduler::Grain;

constexpr unsigned int kSeeds = static_cast<unsigned int>(Effort(1000, 250));
constexpr unsigned int kSteps = 8;

// A lock and who is inside.
class Room {
 public:
  explicit Room(Scheduler& scheduler) : m_scheduler(scheduler) {}

  void Enter() {
    m_scheduler.Expect(locker.Lock(), "Lock is always true");
    Note();
  }
  bool TryToEnter() {
    if (!locker.TryLock()) return false;
    Note();
    return true;
  }
  // One thread is inside from its first Enter to its last Leave, whatever the others do.
  void Stay() {
    Scheduler::Turn("inside");
    m_scheduler.Expect(m_inside > 0 && m_holder == Self(), "nobody else is inside");
  }
  void Leave() {
    m_scheduler.Expect(m_inside > 0 && m_holder == Self(), "nobody else has come in");
    --m_inside;
    locker.Unlock();
  }
  void ExpectEmpty() {
    m_scheduler.Expect(m_inside == 0, "all have left");
    m_scheduler.Expect(locker.TryLock(), "the lock is free");
    locker.Unlock();
  }

  Locker locker;

 private:
  static const void* Self() {
    thread_local constinit char self = 0;
    return &self;
  }
  void Note() {
    m_scheduler.Expect(m_inside == 0 || m_holder == Self(), "one at a time is inside");
    m_holder = Self();
    ++m_inside;
  }

  Scheduler& m_scheduler;
  const void* m_holder = nullptr;
  int m_inside = 0;
};

// Six steps when the other is away: three to lock and three to unlock. Between any two the other may come.
void LockOnce(Room& room) {
  room.Enter();
  room.Leave();
}

// Three, one, one, three.
void LockTwice(Room& room) {
  room.Enter();
  room.Enter();
  room.Leave();
  room.Leave();
}

// At most eight.
void TryTwice(Room& room) {
  for (int i = 0; i < 2; ++i) {
    if (!room.TryToEnter()) continue;
    room.Leave();
  }
}

// One and one for what is ignored, three, three.
void UnlockTooOften(Room& room) {
  room.locker.Unlock();
  room.Enter();
  room.Leave();
  room.locker.Unlock();
}

TEST(LockerInterleavingsLong, OneAtATimeIsInsideInAllOfTwoThreadsByEightSteps) {
  for (const auto& second : {LockOnce, LockTwice, TryTwice, UnlockTooOften}) {
    EXPECT_GT(TryBothIn<Room>(LockOnce, second, Grain::Operations, kAllOrFew), 100u);
  }
  EXPECT_GT(TryBothIn<Room>(LockTwice, LockTwice, Grain::Operations, kAllOrFew), 100u);
  EXPECT_GT(TryBothIn<Room>(LockTwice, UnlockTooOften, Grain::Operations, kAllOrFew), 100u);
  EXPECT_GT(TryBothIn<Room>(TryTwice, TryTwice, Grain::Operations, kAllOrFew), 100u);
}

// Eight calls that never wait.
TEST(LockerInterleavingsLong, CallsThatDoNotWaitComeInAllOrders) {
  const auto calls = [](Room& room) {
    for (unsigned int i = 0; i < kSteps / 2; ++i) {
      Scheduler::Turn("try to lock");
      const bool entered = room.TryToEnter();
      Scheduler::Turn("unlock");
      if (entered) {
        room.Leave();
      } else {
        room.locker.Unlock();  // ignored
      }
    }
  };
  EXPECT_EQ(TryBothIn<Room>(calls, calls, Grain::Calls), Interleavings(kSteps, kSteps));
}

// The schedules of two threads that lock and unlock in turn, counted by the words of the header alone: whoever finds the lock
// held sleeps, an unlock wakes the sleeper, and the lock goes to whoever is the first to take it then.
class LockCount {
 public:
  explicit LockCount(unsigned int calls) : m_calls(calls) {}

  unsigned long long Ways() { return From({}); }

 private:
  struct One {
    unsigned int done = 0;
    bool asleep = false;
    bool holds = false;
  };
  struct Both {
    One one[2];
  };

  unsigned long long From(const Both& both) {
    unsigned long long ways = 0;
    bool ended = true;
    for (int who = 0; who < 2; ++who) {
      if (both.one[who].done == m_calls) continue;
      ended = false;
      if (both.one[who].asleep) continue;
      Both next = both;
      Go(next.one[who], next.one[1 - who]);
      ways += From(next);
    }
    return ended ? 1 : ways;
  }

  static void Go(One& self, One& other) {
    const bool locks = self.done % 2 == 0;
    if (locks && other.holds) {
      self.asleep = true;
      return;
    }
    self.holds = locks;
    ++self.done;
    if (!locks) other.asleep = false;
  }

  const unsigned int m_calls;
};

TEST(LockerInterleavingsLong, CallsThatWaitComeInAsManyOrdersAsCountedWithoutTheLock) {
  const auto calls = [](Room& room) {
    for (unsigned int i = 0; i < kSteps / 2; ++i) {
      Scheduler::Turn("lock");
      room.Enter();
      Scheduler::Turn("unlock");
      room.Leave();
    }
  };
  EXPECT_EQ(TryBothIn<Room>(calls, calls, Grain::Calls), LockCount(kSteps).Ways());
}

TEST(LockerInterleavingsLong, OneAtATimeIsInsideWithThreeThreadsByTwoHundredSteps) {
  TryThreeIn<Room>(kSeeds, [](Room& room, Scheduler& scheduler, std::mt19937& random) {
    int depth = 0;
    while (scheduler.StepsOfThisThread() < 200) {
      const unsigned int what = random() % 8;
      if (what < 3 && depth < 4) {
        room.Enter();
        ++depth;
      } else if (what == 3) {
        depth += room.TryToEnter() ? 1 : 0;
      } else if (what == 4 && depth > 0) {
        room.Stay();
      } else if (depth > 0) {
        room.Leave();
        --depth;
      } else {
        room.locker.Unlock();
      }
    }
    for (; depth > 0; --depth) room.Leave();
  });
}

}  // namespace
