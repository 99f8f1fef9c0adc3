// The queue of the pool, operation by operation, under all schedules of two threads by some eight steps. What holds in each:
// a task that was pushed is handed out once or dropped, in the order of the pushes; whoever waits for a task gets one or
// hears of the end; nobody sleeps while a task waits.

#include "zelbase/concurrency/detail/TaskQueue.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/Effort.h"
#include "tests/support/Interleavings.h"

namespace zelbase::detail {

namespace {

using Grain = Scheduler::Grain;
using Task = TaskQueue::Task;

// A queue whose tasks note their numbers as they run, and count as dropped when they go without having run.
struct Tasks {
  explicit Tasks(Scheduler& s) : scheduler(s) {}

  bool Push() {
    auto fate = std::make_shared<Fate>(*this, next);
    Task task = [fate] { fate->Run(); };
    fate.reset();
    if (!queue.Push(task)) return false;
    ++next;
    return true;
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
    scheduler.Expect(static_cast<int>(ran.size()) + dropped + static_cast<int>(queue.Size()) == next,
                     "each task has run, was dropped, or waits");
  }

  struct Fate {
    Fate(Tasks& of, int n) : tasks(of), number(n) {}
    ~Fate() { tasks.dropped += hasRun || number >= tasks.next ? 0 : 1; }
    void Run() {
      tasks.scheduler.Expect(!hasRun, "a task runs once");
      tasks.scheduler.Expect(tasks.ran.empty() || tasks.ran.back() < number, "tasks come in the order of their pushes");
      tasks.ran.push_back(number);
      hasRun = true;
    }
    Tasks& tasks;
    const int number;
    bool hasRun = false;
  };

  Scheduler& scheduler;
  int next = 0;
  int dropped = 0;
  std::vector<int> ran;
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
  TryBoth([](Tasks&) {}, kPushOne,
          [&](Tasks& tasks) { ++(tasks.TryPop() ? taken : missed); });
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
  TryBoth([](Tasks&) {}, [&](Tasks& tasks) { ++(tasks.Push() ? pushed : refused); },
          [](Tasks& tasks) { tasks.queue.Close(); });
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

}  // namespace

}  // namespace zelbase::detail
