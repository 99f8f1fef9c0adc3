// ThreadPool under all schedules of two threads by eight calls, under those with few interruptions of a pool's own thread
// beside its callers, and under a thousand seeds of three threads by two hundred steps. What holds in each: a task that was
// accepted runs once or is dropped by Clear; tasks begin in the order of their dispatch; nothing is accepted after Close;
// when Wait has returned, no thread is left, and what was not cleared has run.

#include "zelbase/concurrency/ThreadPool.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <deque>
#include <memory>
#include <random>
#include <set>
#include <vector>

#include "tests/support/Effort.h"
#include "tests/support/Interleavings.h"

namespace {

using Grain = Scheduler::Grain;

constexpr unsigned int kSeeds = static_cast<unsigned int>(Effort(1000, 250));
constexpr unsigned int kSteps = 8;

// A pool whose tasks note that they begin, and that they go without having run.
class Watched {
 public:
  Watched(Scheduler& scheduler, unsigned int threads) : m_scheduler(scheduler), pool(threads) {}

  // The number of the task; -1 when it was refused.
  int Dispatch() {
    const int number = m_next++;
    bool accepted = false;
    {
      const auto fate = std::make_shared<Fate>(*this, number);
      m_accepted.insert(number);
      accepted = pool.Dispatch([fate] { fate->Run(); });
      fate->refused = !accepted;
    }
    if (accepted) return number;
    m_accepted.erase(number);
    return -1;
  }

  void ExpectAllDone() {
    m_scheduler.Expect(pool.Size() == 0, "nothing waits");
    m_scheduler.Expect(m_ran.size() + m_dropped.size() == m_accepted.size(), "each task has run or was dropped");
    for (const int number : m_accepted) {
      m_scheduler.Expect(m_ran.contains(number) != m_dropped.contains(number), "and not both");
    }
  }
  void ExpectEnded() {
    m_scheduler.Expect(!pool.IsRunning() && pool.IsClosed(), "the pool has ended");
    ExpectAllDone();
  }
  bool HasRun(int number) const { return m_ran.contains(number); }
  bool WasDropped(int number) const { return m_dropped.contains(number); }

 private:
  struct Fate {
    Fate(Watched& w, int n) : of(w), number(n) {}
    ~Fate() {
      if (!hasRun && !refused) of.m_dropped.insert(number);
    }
    void Run() {
      of.m_scheduler.Expect(!hasRun, "a task runs once");
      hasRun = true;
      of.m_ran.insert(number);
      Scheduler::Turn("works");
    }
    Watched& of;
    const int number;
    bool hasRun = false;
    bool refused = false;
  };

  Scheduler& m_scheduler;
  int m_next = 0;
  std::set<int> m_accepted;
  std::set<int> m_ran;
  std::set<int> m_dropped;

 public:
  ThreadPool pool;  // the first to go: its tasks note that they are dropped
};

// A pool without threads against a list: with a call a step, each call gives what the list says.
class Listed {
 public:
  explicit Listed(Scheduler& scheduler) : m_scheduler(scheduler) {}

  void Dispatch() {
    Scheduler::Turn("dispatch");
    const int number = m_next++;
    m_scheduler.Expect(m_pool.Dispatch([this, number] { m_last = number; }) == !m_closed, "accepted until it is closed");
    if (!m_closed) m_list.push_back(number);
  }
  void Execute() {
    Scheduler::Turn("execute");
    m_scheduler.Expect(m_pool.ExecuteOneTask() == !m_list.empty(), "there is a task");
    if (m_list.empty()) return;
    m_scheduler.Expect(m_last == m_list.front(), "it is the first that was dispatched");
    m_list.pop_front();
  }
  void Clear() {
    Scheduler::Turn("clear");
    m_pool.Clear();
    m_list.clear();
  }
  void Close() {
    Scheduler::Turn("close");
    m_pool.Close();
    m_closed = true;
  }
  void Wait() {
    Scheduler::Turn("wait");
    m_pool.Wait();
  }
  void Look() {
    Scheduler::Turn("look");
    m_scheduler.Expect(m_pool.Size() == m_list.size(), "as many tasks as in the list");
    m_scheduler.Expect(m_pool.IsClosed() == m_closed, "closed or not");
    m_scheduler.Expect(!m_pool.IsRunning(), "it has no threads");
  }

 private:
  Scheduler& m_scheduler;
  ThreadPool m_pool{0};
  std::deque<int> m_list;
  int m_next = 0;
  int m_last = -1;
  bool m_closed = false;
};

TEST(ThreadPoolInterleavingsLong, EightCallsOfTwoThreadsGiveWhatAListGivesInAllOrders) {
  const unsigned long long count = TryAllSchedules(
      [](Scheduler& scheduler) {
        Listed listed(scheduler);
        scheduler.Run({[&] {
                         listed.Dispatch();
                         listed.Dispatch();
                         listed.Execute();
                         listed.Dispatch();
                         listed.Look();
                         listed.Execute();
                         listed.Close();
                         listed.Dispatch();
                       },
                       [&] {
                         listed.Execute();
                         listed.Dispatch();
                         listed.Look();
                         listed.Execute();
                         listed.Dispatch();
                         listed.Clear();
                         listed.Dispatch();
                         listed.Wait();
                       }});
      },
      Grain::Calls);
  EXPECT_EQ(count, Interleavings(kSteps, kSteps));
}

// The pool's own thread and the owner, who closes and waits.
TEST(ThreadPoolInterleavingsLong, WhatWasDispatchedHasRunWhenWaitReturns) {
  const unsigned long long count = TryAllSchedules(
      [](Scheduler& scheduler) {
        Watched watched(scheduler, 1);
        scheduler.Run({[&] {
          const int first = watched.Dispatch();
          const int second = watched.Dispatch();
          watched.pool.Close();
          scheduler.Expect(watched.Dispatch() == -1, "nothing is accepted after Close");
          watched.pool.Wait();
          scheduler.Expect(watched.HasRun(first) && watched.HasRun(second), "all have run");
        }});
        watched.ExpectEnded();
      },
      Grain::Operations, 2);
  EXPECT_GT(count, 500u);
}

// A clear drops what has not begun, and nothing else.
TEST(ThreadPoolInterleavingsLong, WhatIsClearedHasNotBegun) {
  bool sawRun = false, sawDropped = false;
  TryAllSchedules(
      [&](Scheduler& scheduler) {
        Watched watched(scheduler, 1);
        int number = -1;
        scheduler.Run({[&] {
          number = watched.Dispatch();
          watched.pool.Clear();
          watched.pool.Close();
          watched.pool.Wait();
        }});
        watched.ExpectEnded();
        sawRun |= watched.HasRun(number);
        sawDropped |= watched.WasDropped(number);
      },
      Grain::Operations, 2);
  EXPECT_TRUE(sawRun);
  EXPECT_TRUE(sawDropped);
}

// A dispatch against a close by another thread, and both wait: the one that comes second finds nothing left to wait for.
TEST(ThreadPoolInterleavingsLong, ADispatchMeetsTheCloseOfAnotherThread) {
  bool sawRun = false, sawRefused = false;
  TryAllSchedules(
      [&](Scheduler& scheduler) {
        Watched watched(scheduler, 1);
        int number = -1;
        scheduler.Run({[&] {
                         number = watched.Dispatch();
                         watched.pool.Wait();
                         scheduler.Expect(number == -1 || watched.HasRun(number), "it has run when Wait returns");
                       },
                       [&] {
                         watched.pool.Close();
                         watched.pool.Wait();
                         scheduler.Expect(!watched.pool.IsRunning(), "no thread is left");
                       }});
        watched.ExpectEnded();
        sawRun |= number != -1;
        sawRefused |= number == -1;
      },
      Grain::Operations, 1);
  EXPECT_TRUE(sawRun);
  EXPECT_TRUE(sawRefused);
}

// Two tasks that wait for each other both run when the pool has two threads, whoever sleeps or looks out meanwhile.
TEST(ThreadPoolInterleavingsLong, TwoTasksThatWaitForEachOtherBothRunOnTwoThreads) {
  const unsigned long long count = TryAllSchedules(
      [](Scheduler& scheduler) {
        ThreadPool pool(2);
        zelbase::detail::Atomic<int> come{0};
        const auto meet = [&come] {
          if (come.fetch_add(1) == 1) {
            come.notify_all();
          } else {
            come.wait(1);
          }
        };
        scheduler.Run({[&] {
          pool.Dispatch(meet);
          pool.Dispatch(meet);
          come.wait(0);
          come.wait(1);
          pool.Close();
          pool.Wait();
        }});
        scheduler.Expect(come.load() == 2, "both have come");
      },
      Grain::Operations, 1);
  EXPECT_GT(count, 50u);
}

// Two threads of the pool and an owner that does at random what owners do; the third thread is the owner's.
TEST(ThreadPoolInterleavingsLong, TasksRunOnceOrAreDroppedWithThreeThreadsByTwoHundredSteps) {
  TrySeeds(kSeeds, [](Scheduler& scheduler, unsigned int seed) {
    Watched watched(scheduler, 2);
    scheduler.Run({[&] {
      std::mt19937 random(seed);
      while (scheduler.StepsOfThisThread() < 200) {
        const unsigned int what = random() % 8;
        if (what < 5) {
          watched.Dispatch();
        } else if (what == 5) {
          watched.pool.ExecuteOneTask();
        } else if (what == 6) {
          watched.pool.Clear();
        } else {
          scheduler.Expect(watched.pool.IsRunning() && !watched.pool.IsClosed(), "the pool runs");
        }
      }
      watched.pool.Close();
      watched.pool.Wait();
    }});
    watched.ExpectEnded();
  });
}

// Three callers of a pool without threads, one of whom closes it somewhere.
TEST(ThreadPoolInterleavingsLong, ThreeCallersByTwoHundredStepsLoseNoTask) {
  TrySeeds(kSeeds, [](Scheduler& scheduler, unsigned int seed) {
    Watched watched(scheduler, 0);
    const auto body = [&](unsigned int number) {
      return [&, number] {
        std::mt19937 random(seed * 3 + number);
        while (scheduler.StepsOfThisThread() < 200) {
          const unsigned int what = random() % 16;
          if (what < 7) {
            watched.Dispatch();
          } else if (what < 13) {
            watched.pool.ExecuteOneTask();
          } else if (what < 15) {
            watched.pool.Clear();
          } else if (number == 0 && scheduler.StepsOfThisThread() > 150) {
            watched.pool.Close();
            scheduler.Expect(watched.Dispatch() == -1, "nothing is accepted after Close");
          }
        }
      };
    };
    scheduler.Run({body(0), body(1), body(2)});
    while (watched.pool.ExecuteOneTask()) {
    }
    watched.ExpectAllDone();
  });
}

}  // namespace
