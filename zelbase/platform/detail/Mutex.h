// The standard library's mutex and condition variable in a form that clang's -Wthread-safety understands. Neighbours:
// ThreadSafety.h, the words of that check; LockGuard.h, the guard; Locker.h of concurrency, a recursive lock, which the
// platform does not know.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/detail/LockOrder.h"

namespace zelbase::detail {

class ZELBASE_CAPABILITY("mutex") Mutex {
 public:
  constexpr Mutex() noexcept { NoteLockBegins(this); }
  Mutex(const Mutex&) = delete;
  Mutex& operator=(const Mutex&) = delete;

  void lock() ZELBASE_ACQUIRE() {
    NoteLockWanted(this);
    m_mutex.lock();
    NoteLockHeld(this);
  }
  void unlock() ZELBASE_RELEASE() {
    NoteLockGivenBack(this);
    m_mutex.unlock();
  }

 private:
  friend class Condition;

  std::mutex m_mutex;
};

// A guard that may let the mutex go for a while, and gives it back at its end if it holds it then.
class ZELBASE_SCOPED_CAPABILITY PausableGuard {
 public:
  explicit PausableGuard(Mutex& mutex) ZELBASE_ACQUIRE(mutex) : m_mutex(mutex) { m_mutex.lock(); }
  ~PausableGuard() ZELBASE_RELEASE() {
    if (m_held) m_mutex.unlock();
  }
  PausableGuard(const PausableGuard&) = delete;
  PausableGuard& operator=(const PausableGuard&) = delete;

  void unlock() ZELBASE_RELEASE() {
    m_mutex.unlock();
    m_held = false;
  }
  void lock() ZELBASE_ACQUIRE() {
    m_mutex.lock();
    m_held = true;
  }

 private:
  Mutex& m_mutex;
  bool m_held = true;
};

// What is waited for is looked at in a loop of the caller's: a wait may end without a call, and the check sees then that
// the mutex is held there.
class Condition {
 public:
  // Lets the mutex go while it waits.
  void Wait(Mutex& mutex) ZELBASE_REQUIRES(mutex) {
    std::unique_lock lock(mutex.m_mutex, std::adopt_lock);
    m_condition.wait(lock);
    lock.release();
  }

  // False when the limit has come.
  bool WaitUntil(Mutex& mutex, std::chrono::steady_clock::time_point limit) ZELBASE_REQUIRES(mutex) {
    std::unique_lock lock(mutex.m_mutex, std::adopt_lock);
    const std::cv_status status = m_condition.wait_until(lock, limit);
    lock.release();
    return status == std::cv_status::no_timeout;
  }

  void NotifyOne() noexcept { m_condition.notify_one(); }
  void NotifyAll() noexcept { m_condition.notify_all(); }

 private:
  std::condition_variable m_condition;
};

}  // namespace zelbase::detail
