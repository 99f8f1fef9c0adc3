// A fixed set of threads that run tasks from one queue, first in, first out. Neighbours: thread.h, the thread that it rests
// on; ParallelProcessor.h for a few long jobs, each on a thread of its own; BaseWorkerThread.h for one job that repeats.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "zelbase/concurrency/Locker.h"
#include "zelbase/concurrency/detail/Primitives.h"
#include "zelbase/concurrency/detail/TaskQueue.h"
#include "zelbase/concurrency/thread.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/ZelBaseApi.h"

// A pool runs, then is closed, then has ended; there is no way back:
//
// | called         | running                       | closed                            | ended (Wait has returned)     |
// |----------------|-------------------------------|-----------------------------------|-------------------------------|
// | Dispatch       | queues the task               | false                             | false                         |
// | Close          | closed; what waits still runs | nothing                           | nothing                       |
// | Clear          | drops what waits              | drops what waits                  | drops what waits              |
// | Wait           | blocks until others close it  | until the queue is empty and all  | returns at once               |
// |                |                               | running tasks are done            |                               |
// | ExecuteOneTask | runs one on the caller        | runs one on the caller            | runs one on the caller        |
// | destructor     | ends the process              | ends the process                  | drops what waits              |
//
//   ThreadPool pool(4);
//   for (...) pool.Dispatch([...] { ... });
//   pool.Close();
//   pool.Wait();                            // always both, in this order, before the pool goes
//
// What always holds:
//   (1) A task that was accepted runs once or is dropped by Clear; tasks begin in the order of their dispatch.
//   (2) No lock is held while a task is copied, run or destroyed: it may call any operation of the pool.
//   (3) Threads without a task sleep, and use no processor time.
//   (4) Of two tasks that wait for each other both run when the pool has two threads free.
//
// Memory that is not to be had throws std::bad_alloc from Dispatch and Clear, with the queue as it was.
//
// Any thread may call any operation but the destructor; that comes after all other calls have returned, or at least after
// their tasks have run. Not copyable.
class ZELBASE_API ThreadPool {
 public:
  // Starts `count` threads below ordinary priority. With 0 there are none, and tasks run by ExecuteOneTask only. When a
  // thread cannot be made, no further one is tried, and the pool has those made so far.
  explicit ThreadPool(unsigned int count);

  // Ends the process (std::terminate) when there are threads that nobody has waited for, even if all have ended since Close.
  // Tasks still in the queue are destroyed without having run.
  ~ThreadPool();

  ThreadPool(const ThreadPool&) = delete;
  ThreadPool& operator=(const ThreadPool&) = delete;

  // Copies `task` to the back of the queue. False when the pool is closed. An empty task is accepted, and raises
  // std::bad_function_call when its turn comes. An exception that leaves a task ends the process on a thread of the pool;
  // through ExecuteOneTask it reaches the caller.
  bool Dispatch(const std::function<void()>& task);

  // No more tasks are accepted; those in the queue still run.
  void Close();

  // Waits for the threads, the last one first, and removes them; does not close the pool. At once when there are none. On a
  // thread of the pool itself it would wait for itself, and does nothing.
  void Wait();

  // Removes the tasks that have not begun.
  void Clear();

  // Runs the front task on the calling thread, so that a thread that waits for results can help. False when there was none.
  bool ExecuteOneTask();

  // Tasks that have not begun.
  std::size_t Size() const { return m_queue.Size(); }

  bool IsClosed() const { return m_queue.IsClosed(); }

  // True while there are threads that nobody has waited for, even if all have ended since Close.
  bool IsRunning() const { return m_running.load(std::memory_order_acquire) > 0; }

 private:
  void StartThreads(unsigned int count) ZELBASE_REQUIRES(m_waitLock);
  void ThreadFunc();

  Locker m_waitLock;  // one Wait at a time; the next finds nothing left to wait for
  std::vector<std::unique_ptr<tmp::thread>> m_threads ZELBASE_GUARDED_BY(m_waitLock);
  zelbase::detail::Atomic<std::size_t> m_running{0};  // size of m_threads, for those who do not wait
  zelbase::detail::TaskQueue m_queue;                 // the first to go: tasks may call the pool as they are destroyed
};
