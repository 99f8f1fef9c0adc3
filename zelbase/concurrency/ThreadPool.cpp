#include "zelbase/concurrency/ThreadPool.h"

#include <exception>
#include <new>

#include "zelbase/concurrency/NameThread.h"
#include "zelbase/platform/LockGuard.h"
#include "zelbase/platform/PlatformThreads.h"

namespace {

// The pool whose thread this is; null on all other threads.
const ThreadPool*& PoolOfThisThread() {
  thread_local constinit const ThreadPool* pool = nullptr;
  return pool;
}

}  // namespace

ThreadPool::ThreadPool(unsigned int count) {
  const LockGuard guard(m_waitLock);
  StartThreads(count);
}

ThreadPool::~ThreadPool() {
  if (IsRunning()) std::terminate();  // Kept: also when the threads have ended; the owner calls Close and Wait
}

bool ThreadPool::Dispatch(const std::function<void()>& task) {
  std::function<void()> copy(task);
  return m_queue.Push(copy);
}

void ThreadPool::Close() { m_queue.Close(); }

void ThreadPool::Wait() {
  if (PoolOfThisThread() == this) return;
  const LockGuard guard(m_waitLock);
  while (!m_threads.empty()) {
    m_threads.back()->join();
    m_threads.pop_back();
    m_running.store(m_threads.size(), std::memory_order_release);
  }
}

void ThreadPool::Clear() { m_queue.Clear(); }

bool ThreadPool::ExecuteOneTask() {
  std::function<void()> task;
  if (!m_queue.TryPop(task)) return false;  // Kept: a closed pool still hands its tasks out
  task();
  return true;
}

// Room in the list comes first, so that a thread, once it runs, cannot be lost.
void ThreadPool::StartThreads(unsigned int count) {
  try {
    for (unsigned int i = 0; i < count; ++i) {
      m_threads.push_back(nullptr);
      m_threads.back() = std::make_unique<tmp::thread>([this] { ThreadFunc(); });
      if (!m_threads.back()->joinable()) break;
      m_running.store(m_threads.size(), std::memory_order_release);
    }
  } catch (const std::bad_alloc&) {
    // Kept: whatever refuses a thread, the pool goes on with those it has.
  }
  m_threads.resize(m_running.load(std::memory_order_relaxed));
}

void ThreadPool::ThreadFunc() {
  NameThread(PlatformThreads::kCallingThread, "ThreadPool::ThreadFunc");
  PoolOfThisThread() = this;
  for (;;) {
    std::function<void()> task;
    if (!m_queue.Pop(task)) return;
    task();
  }
}
