// Holds a lock for the life of a scope, in a form that clang's -Wthread-safety understands, which the standard library's
// guards are not. Neighbours: ThreadSafety.h, the words of that check; zelbase/concurrency/Locker.h, the lock for most uses.
#pragma once

#include "zelbase/platform/ThreadSafety.h"

// `Lock` has lock() and unlock(). The lock must outlive the guard. Not copyable.
//
//   const LockGuard guard(m_lock);
template <class Lock>
class ZELBASE_SCOPED_CAPABILITY LockGuard {
 public:
  explicit LockGuard(Lock& lock) ZELBASE_ACQUIRE(lock) : m_lock(lock) { m_lock.lock(); }
  ~LockGuard() ZELBASE_RELEASE() { m_lock.unlock(); }

  LockGuard(const LockGuard&) = delete;
  LockGuard& operator=(const LockGuard&) = delete;

 private:
  Lock& m_lock;
};
