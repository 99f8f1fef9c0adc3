// A recursive lock. Neighbours: ReadWriteLocker.h for many readers and one writer; RecursionLock.h against re-entry on one
// thread; LockGuard.h, which holds a lock for a scope.
#pragma once

#include "zelbase/concurrency/detail/Primitives.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/platform/detail/LockOrder.h"

// The same thread may lock again (2^32 - 1 times) and unlocks as often. Usable as a constant-initialised static that is never
// destroyed: it holds plain atomics only, so that destructors of other statics may still lock it. It may be destroyed as soon
// as nobody holds it or waits. A thread gives back what it holds before it ends.
//
// Copying an object that owns a Locker leaves both locks as they are: a held target stays held, and a held source does not
// hold the target.
//
// Debug and sanitized builds tell of locks that are taken in two orders (LockOrder.h of platform/detail).
class ZELBASE_CAPABILITY("lock") ZELBASE_API Locker {
 public:
  constexpr Locker() noexcept { zelbase::detail::NoteLockBegins(this); }
  constexpr Locker(const Locker&) noexcept : Locker() {}
  Locker& operator=(const Locker&) noexcept { return *this; }

  // Waits until the calling thread holds the lock. Always true.
  bool Lock() noexcept ZELBASE_ACQUIRE();

  // Takes the lock if that needs no waiting; true when the calling thread holds it.
  bool TryLock() noexcept ZELBASE_TRY_ACQUIRE(true);

  // Undoes one Lock or TryLock of the calling thread. By a thread that does not hold the lock it is ignored.
  void Unlock() noexcept ZELBASE_RELEASE();

  // For LockGuard, std::lock_guard and their kin.
  void lock() noexcept ZELBASE_ACQUIRE() { Lock(); }
  bool try_lock() noexcept ZELBASE_TRY_ACQUIRE(true) { return TryLock(); }
  void unlock() noexcept ZELBASE_RELEASE() { Unlock(); }

 private:
  static constexpr unsigned int kFree = 0;
  static constexpr unsigned int kHeld = 1;
  static constexpr unsigned int kHeldAndWanted = 2;  // others may be asleep until it is free

  bool TakeAgain(const void* caller) noexcept;

  zelbase::detail::Atomic<unsigned int> m_state{kFree};
  zelbase::detail::Atomic<const void*> m_owner{nullptr};
  unsigned int m_again = 0;  // locks of the owner beyond its first; guarded by the lock itself
};
