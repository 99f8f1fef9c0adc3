// A lock for critical sections of a few nanoseconds that several threads want all the time. Neighbours: Locker.h, the lock
// for every other use; TaskQueue.h, which needs this one.
#pragma once

#include "zelbase/concurrency/detail/Primitives.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/platform/detail/LockOrder.h"

namespace zelbase::detail {

// Not recursive. Whoever finds it held looks again a few times and gives way to others in between, before it sleeps until
// the holder wakes it: a holder that the system has put aside costs the others no processor time. It may be destroyed as
// soon as nobody holds it or waits, even while the unlock that let the last one in is on its way out. Not copyable.
class ZELBASE_CAPABILITY("lock") ZELBASE_API ShortLock {
 public:
  constexpr ShortLock() noexcept { NoteLockBegins(this); }
  ShortLock(const ShortLock&) = delete;
  ShortLock& operator=(const ShortLock&) = delete;

  void lock() noexcept ZELBASE_ACQUIRE() {
    NoteLockWanted(this);
    unsigned int state = kFree;
    if (!m_state.compare_exchange_strong(state, kHeld, std::memory_order_acquire, std::memory_order_relaxed)) {
      LockSlowly();
    }
    NoteLockHeld(this);
  }

  void unlock() noexcept ZELBASE_RELEASE() {
    NoteLockGivenBack(this);
    // Waking uses the address alone: whoever has the lock by now may already have destroyed it.
    if (m_state.exchange(kFree, std::memory_order_seq_cst) == kHeldAndWanted) m_state.notify_one();
  }

 private:
  static constexpr unsigned int kFree = 0;
  static constexpr unsigned int kHeld = 1;
  static constexpr unsigned int kHeldAndWanted = 2;  // others may be asleep until it is free

  void LockSlowly() noexcept;

  Atomic<unsigned int> m_state{kFree};
};

}  // namespace zelbase::detail
