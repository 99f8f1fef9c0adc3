// The queue of the pool, operation by operation, under all schedules of two threads by some eight steps. What holds in each:
// a task that was pushed is handed out once or dropped; whoever waits for a task gets one or hears of the end; nobody sleeps
// while a task waits.

#include "zelbase/concurrency/detail/TaskQueue.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/support/Effort.h"
#include "tests/support/Interleavings.h"

namespace zelbase::detail {

namespace {

using Grain = Scheduler::Grain;
using Task = TaskQueue::Task;

// A queue whose tasks are counted as they run, and as dropped when they go without having run.
struct Tasks {
  explicit Tasks(Scheduler& s) : scheduler(s) {}

  bool Push() {
    const auto fate = std::make_shared<Fate>(*this);
    Task task = [fate] { fate->Run(); };
    fate->refused = !queue.Push(task);
    pushed += fate->refused ? 0 : 1;
    return !fate->refused;
  }
  bool TryPop() {
    Task task;
    if (!queue.TryPop(task)) return false;
    task();
    return true;
  }
  bool Pop() {
    Task task;
    if (!queue.Pop(task)) return false;
    task();
    return true;
  }
  void ExpectAllDone() {
    scheduler.Expect(ran + dropped + static_cast<int>(queue.Size()) == pushed, "each task has run, was dropped, or waits");
  }

  struct Fate {
    explicit Fate(Tasks& of) : tasks(of) {}
    ~Fate() { tasks.dropped += hasRun || refused ? 0 : 1; }
    void Run() {
      tasks.scheduler.Expect(!hasRun, "a task runs once");
      hasRun = true;
      ++tasks.ran;
    }
    Tasks& tasks;
    bool hasRun = false;
    bool refused = false;
  };

  Scheduler& scheduler;
  int pushed = 0;
  int ran = 0;
  int dropped = 0;
  TaskQueue queue;  // the first to go: its tasks note that they are dropped
};

template <class Setup, class First, class Second>
unsigned long long TryBoth(Setup setup, First first, Second second, int interruptions = kAllOrFew) {
  return TryAllSchedules(
      [&](Scheduler& scheduler) {
        Tasks tasks(scheduler);
        setup(tasks);
        scheduler.Run({[&] { first(tasks); }, [&] { second(tasks); }});
        tasks.ExpectAllDone();
      },
      Grain::Operations, interruptions);
}

constexpr auto kPushOne = [](Tasks& tasks) { tasks.Push(); };
constexpr auto kTakeOne = [](Tasks& tasks) { tasks.TryPop(); };

// Five steps each: the lock of an end, what the other end has done, one's own count, unlock.
TEST(TaskQueueInterleavingsLong, APushAndATakeMeetInAllOrders) {
  int taken = 0, missed = 0;
  TryBoth([](Tasks&) {}, kPushOne, [&](Tasks& tasks) { ++(tasks.TryPop() ? taken : missed); });
  EXPECT_GT(taken, 0);
  EXPECT_GT(missed, 0);
}

TEST(TaskQueueInterleavingsLong, TwoTakesGetATaskEachInAllOrders) {
  const unsigned long long count = TryBoth(
      [](Tasks& tasks) {
        tasks.Push();
        tasks.Push();
      },
      [](Tasks& tasks) { tasks.scheduler.Expect(tasks.TryPop(), "there are two"); },
      [](Tasks& tasks) { tasks.scheduler.Expect(tasks.TryPop(), "there are two"); });
  EXPECT_GT(count, 50u);
}

TEST(TaskQueueInterleavingsLong, APushAndACloseMeetInAllOrders) {
  int pushed = 0, refused = 0;
  TryBoth([](Tasks&) {}, [&](Tasks& tasks) { ++(tasks.Push() ? pushed : refused); }, [](Tasks& tasks) { tasks.queue.Close(); });
  EXPECT_GT(pushed, 0);
  EXPECT_GT(refused, 0);
}

TEST(TaskQueueInterleavingsLong, AClearMeetsAPushOrATakeInAllOrders) {
  const auto one = [](Tasks& tasks) { tasks.Push(); };
  const auto clear = [](Tasks& tasks) { tasks.queue.Clear(); };
  EXPECT_GT(TryBoth(one, clear, kPushOne), 100u);
  EXPECT_GT(TryBoth(one, clear, kTakeOne), 100u);
}

// Longer than eight steps: with three interruptions at most.
TEST(TaskQueueInterleavingsLong, WhoWaitsForATaskGetsItOrHearsOfTheEnd) {
  const auto waits = [](Tasks& tasks) { tasks.scheduler.Expect(tasks.Pop(), "the task is waited for"); };
  EXPECT_GT(TryBoth([](Tasks&) {}, waits, kPushOne, 3), 500u);
  const auto hears = [](Tasks& tasks) { tasks.scheduler.Expect(!tasks.Pop(), "there is none"); };
  const auto close = [](Tasks& tasks) { tasks.queue.Close(); };
  EXPECT_GT(TryBoth([](Tasks&) {}, hears, close, 3), 500u);
  const auto both = [](Tasks& tasks) {
    tasks.scheduler.Expect(tasks.Pop(), "a closed queue is drained");
    tasks.scheduler.Expect(!tasks.Pop(), "and ends then");
  };
  const auto pushAndClose = [](Tasks& tasks) {
    tasks.Push();
    tasks.queue.Close();
  };
  EXPECT_GT(TryBoth([](Tasks&) {}, both, pushAndClose, 2), 500u);
}

// Both wake at once, and one finds that the other has been there first.
TEST(TaskQueueInterleavingsLong, TwoWhoWaitBothHearOfTheEnd) {
  const unsigned long long count = TryAllSchedules(
      [](Scheduler& scheduler) {
        Tasks tasks(scheduler);
        const auto hears = [&] { scheduler.Expect(!tasks.Pop(), "there is none"); };
        scheduler.Run({hears, hears, [&] { tasks.queue.Close(); }});
        tasks.ExpectAllDone();
      },
      Grain::Operations, 1);
  EXPECT_GT(count, 100u);
}

}  // namespace

}  // namespace zelbase::detail
