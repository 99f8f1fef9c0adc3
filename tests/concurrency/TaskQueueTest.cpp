#include "zelbase/concurrency/detail/TaskQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include "zelbase/platform/LockGuard.h"
#include "zelbase/platform/PlatformEvent.h"

namespace zelbase::detail {

// Who sleeps.
struct TaskQueuePeer {
  static std::size_t Sleepers(const TaskQueue& queue) {
    const LockGuard guard(queue.m_back);
    return queue.m_sleepers;
  }
};

namespace {

using Task = TaskQueue::Task;
using Peer = TaskQueuePeer;

void AwaitSleepers(const TaskQueue& queue, std::size_t count) {
  while (Peer::Sleepers(queue) != count) std::this_thread::yield();
}

bool Push(TaskQueue& queue, Task task) { return queue.Push(task); }

// A worker that takes and runs until the queue is closed and empty.
std::thread Worker(TaskQueue& queue) {
  return std::thread([&queue] {
    for (;;) {
      Task task;
      if (!queue.Pop(task)) return;
      task();
    }
  });
}

TEST(TaskQueue, BeginsEmptyAndOpen) {
  TaskQueue queue;
  Task task;
  EXPECT_EQ(queue.Size(), 0u);
  EXPECT_FALSE(queue.IsClosed());
  EXPECT_FALSE(queue.TryPop(task));
  EXPECT_FALSE(task);
}

TEST(TaskQueue, ARefusedTaskStaysWithTheCaller) {
  TaskQueue queue;
  queue.Close();
  Task task = [] {};
  EXPECT_FALSE(queue.Push(task));
  EXPECT_TRUE(task);
  EXPECT_EQ(queue.Size(), 0u);
}

// A thousand random steps, the queue's answers against a plain list's; tasks in flight go over many blocks.
TEST(TaskQueue, HandsOutInOrderWhateverTheMixOfCalls) {
  for (unsigned int seed = 0; seed < 8; ++seed) {
    std::mt19937 random(seed);
    TaskQueue queue;
    std::deque<int> expected;
    int next = 0, ran = -1;
    for (int step = 0; step < 1000; ++step) {
      const unsigned long count = random() % 600;
      if (random() % 20 == 0) {
        queue.Clear();
        expected.clear();
      } else if (random() % 2 == 0) {
        for (unsigned long i = 0; i < count; ++i, ++next) {
          ASSERT_TRUE(Push(queue, [&ran, next] { ran = next; }));
          expected.push_back(next);
        }
      } else {
        for (unsigned long i = 0; i < count; ++i) {
          Task task;
          ASSERT_EQ(queue.TryPop(task), !expected.empty());
          if (expected.empty()) break;
          task();
          ASSERT_EQ(ran, expected.front());
          expected.pop_front();
        }
      }
      ASSERT_EQ(queue.Size(), expected.size());
    }
  }
}

TEST(TaskQueue, AClosedQueueHandsOutWhatIsLeftAndThenEnds) {
  TaskQueue queue;
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(Push(queue, [] {}));
  queue.Close();
  queue.Close();
  EXPECT_TRUE(queue.IsClosed());
  for (int i = 0; i < 3; ++i) {
    Task task;
    EXPECT_TRUE(queue.Pop(task));
    EXPECT_TRUE(task);
  }
  Task task;
  EXPECT_FALSE(queue.Pop(task));
  EXPECT_FALSE(queue.TryPop(task));
}

TEST(TaskQueue, TasksAreDestroyedWithoutALockHeld) {
  TaskQueue queue;
  std::vector<std::size_t> sizes;
  std::vector<bool> pushed;
  struct Caller {
    ~Caller() {
      sizes.push_back(queue.Size());
      pushed.push_back(Push(queue, [] {}));
      queue.Clear();
    }
    TaskQueue& queue;
    std::vector<std::size_t>& sizes;
    std::vector<bool>& pushed;
  };
  for (int i = 0; i < 2; ++i) {
    const std::shared_ptr<Caller> caller(new Caller{queue, sizes, pushed});
    Push(queue, [caller] {});
  }
  queue.Clear();
  EXPECT_EQ(sizes, (std::vector<std::size_t>{0, 0}));
  EXPECT_EQ(pushed, (std::vector<bool>{true, true}));
  EXPECT_EQ(queue.Size(), 0u);
}

TEST(TaskQueue, TasksThatPushAsTheQueueGoesAreRefused) {
  struct Caller {
    Caller(TaskQueue& called, bool& result) : queue(called), pushed(result) {}
    ~Caller() {
      Task task;
      pushed = Push(queue, [] {}) || queue.TryPop(task);
      queue.Clear();
    }
    TaskQueue& queue;
    bool& pushed;
  };
  bool pushed = true;
  {
    TaskQueue queue;
    Push(queue, [caller = std::make_shared<Caller>(queue, pushed)] {});
  }
  EXPECT_FALSE(pushed);
}

TEST(TaskQueue, AQueueOfAMillionTasksGoesWithoutDeepRecursion) {
  int tasks = 0;
  TaskQueue queue;
  for (; tasks < 1000000; ++tasks) Push(queue, [] {});
  EXPECT_EQ(queue.Size(), 1000000u);
}

TEST(TaskQueue, WorkersWithoutATaskFallAsleep) {
  TaskQueue queue;
  std::vector<std::thread> workers;
  for (int i = 0; i < 3; ++i) workers.push_back(Worker(queue));
  AwaitSleepers(queue, 3);
  PlatformEvent ran(PlatformEvent::Mode::AutoReset);
  for (int round = 0; round < 50; ++round) {
    Push(queue, [&] { ran.Set(); });
    ran.Wait();
    AwaitSleepers(queue, 3);
  }
  queue.Close();
  for (std::thread& worker : workers) worker.join();
  EXPECT_EQ(Peer::Sleepers(queue), 0u);
}

class TaskQueueWorkers : public testing::TestWithParam<int> {};

// As many tasks as workers, each of which ends when all have begun: a wake-up that is lost hangs here.
TEST_P(TaskQueueWorkers, TasksThatNeedEachOtherAllRun) {
  const int count = GetParam();
  TaskQueue queue;
  std::vector<std::thread> workers;
  for (int i = 0; i < count; ++i) workers.push_back(Worker(queue));
  for (int round = 0; round < 300; ++round) {
    if (round % 3 == 0) AwaitSleepers(queue, static_cast<std::size_t>(count));
    std::atomic<int> begun{0}, ended{0};
    PlatformEvent allBegun, allEnded;
    for (int i = 0; i < count; ++i) {
      Push(queue, [&] {
        if (++begun == count) allBegun.Set();
        allBegun.Wait();
        if (++ended == count) allEnded.Set();
      });
    }
    allEnded.Wait();
    EXPECT_EQ(queue.Size(), 0u);
  }
  queue.Close();
  for (std::thread& worker : workers) worker.join();
}

INSTANTIATE_TEST_SUITE_P(Counts, TaskQueueWorkers, testing::Values(2, 4, 10));

}  // namespace

}  // namespace zelbase::detail
