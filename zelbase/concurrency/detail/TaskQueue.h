// The queue behind a pool of threads: first in, first out, with workers that sleep while there is nothing to do.
// Neighbours: ThreadPool.h, whose queue it is; ShortLock.h, the lock at either end.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>

#include "zelbase/concurrency/detail/Primitives.h"
#include "zelbase/concurrency/detail/ShortLock.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// What always holds:
//   (1) Each task that Push took is handed out once, or dropped by Clear or the destructor.
//   (2) Tasks are handed out in the order of their pushes.
//   (3) No task is run, copied or destroyed while a lock is held, so that tasks and their destructors may call any operation.
//   (4) While a task waits in the queue, no worker sleeps that has not been woken: of two tasks that wait for each other,
//       both run when there are two workers.
//   (5) It may be destroyed once it is closed and every Pop has returned, even while a Push whose task has run is on its
//       way out.
//
// The tasks lie in a chain of blocks. Pushing and taking lock an end each, so that the two do not wait for each other; when
// both ends are locked, the front is locked first. Any thread may call any operation. Not copyable.
class ZELBASE_API TaskQueue {
 public:
  using Task = std::function<void()>;

  TaskQueue();
  ~TaskQueue();
  TaskQueue(const TaskQueue&) = delete;
  TaskQueue& operator=(const TaskQueue&) = delete;

  // Adds a task at the back and wakes a worker if need be. False, and the task stays with the caller, when it is closed.
  bool Push(Task& task);

  // Takes the front task, waiting for one as long as the queue is not closed. False when it is closed and empty. `task` is
  // empty before.
  bool Pop(Task& task);

  // The same without waiting: false when the queue is empty, closed or not.
  bool TryPop(Task& task);

  // No more pushes; wakes every worker. What is in the queue stays to be taken.
  void Close();
  bool IsClosed() const noexcept { return m_closed.load(std::memory_order_acquire); }

  // Drops all tasks that have not been taken.
  void Clear();

  // Tasks that have not been taken.
  std::size_t Size() const;

 private:
  friend struct TaskQueuePeer;  // a test's look at who sleeps

  static constexpr std::size_t kBlockTasks = 255;
  static constexpr std::size_t kCacheLine = 64;  // the ends do not share one

  struct Block {
    Task tasks[kBlockTasks];
    std::unique_ptr<Block> next;  // written by the push that finds this block full
  };

  std::unique_ptr<Block> TakeBlock();
  void GiveBlock(std::unique_ptr<Block> block) noexcept;
  static void DestroyChain(std::unique_ptr<Block> chain);
  void WakeOneIfNeeded() ZELBASE_REQUIRES(m_back);
  void AwaitTaskOrClose();
  bool LookClosely() const noexcept;
  bool LookPatiently() const noexcept;
  bool LieDown();
  void Sleep();
  bool HasNews() const noexcept;

  // The end where tasks are taken. The count is written with the lock held and read without it by whoever waits.
  alignas(kCacheLine) mutable ShortLock m_front;
  std::unique_ptr<Block> m_first ZELBASE_GUARDED_BY(m_front);
  std::size_t m_firstUsed ZELBASE_GUARDED_BY(m_front) = 0;  // tasks of m_first that have been taken
  std::size_t m_seen ZELBASE_GUARDED_BY(m_front) = 0;       // m_pushed, as last looked at
  Atomic<std::size_t> m_taken{0};

  // The end where tasks are added.
  alignas(kCacheLine) mutable ShortLock m_back;
  Block* m_last ZELBASE_GUARDED_BY(m_back) = nullptr;
  std::size_t m_lastUsed ZELBASE_GUARDED_BY(m_back) = 0;  // tasks that m_last has had
  std::size_t m_sleepers ZELBASE_GUARDED_BY(m_back) = 0;  // workers asleep that nobody has woken
  Atomic<std::size_t> m_pushed{0};
  Atomic<bool> m_closed{false};

  // What workers wait at.
  alignas(kCacheLine) Atomic<unsigned int> m_wakeUps{0};  // given to sleepers and not yet taken by one
  Atomic<std::size_t> m_lookers{0};                       // workers that are awake and look for a task
  Atomic<Block*> m_spare{nullptr};                        // owned
};

}  // namespace zelbase::detail
