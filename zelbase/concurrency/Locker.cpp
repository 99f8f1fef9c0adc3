#include "zelbase/concurrency/Locker.h"

namespace {

// One byte a thread: its address tells the thread apart from all others that live.
const void* CallingThread() noexcept {
  thread_local constinit char identity = 0;
  return &identity;
}

}  // namespace

// Only the calling thread itself writes its own identity as owner, so a stale value never equals it.
bool Locker::TakeAgain(const void* caller) noexcept {
  if (m_owner.load(std::memory_order_relaxed) != caller) return false;
  ++m_again;
  return true;
}

bool Locker::TryLock() noexcept {
  const void* const caller = CallingThread();
  if (TakeAgain(caller)) return true;
  unsigned int state = kFree;
  if (!m_state.compare_exchange_strong(state, kHeld, std::memory_order_acquire, std::memory_order_relaxed)) {
    return false;
  }
  m_owner.store(caller, std::memory_order_relaxed);
  zelbase::detail::NoteLockHeld(this);
  return true;
}

// Whoever has waited takes the lock with the mark set, since it cannot know whether others still sleep; the Unlock that
// finds the mark wakes one of them.
bool Locker::Lock() noexcept {
  zelbase::detail::NoteLockWanted(this);
  if (TryLock()) return true;
  while (m_state.exchange(kHeldAndWanted, std::memory_order_acquire) != kFree) {
    m_state.wait(kHeldAndWanted, std::memory_order_relaxed);
  }
  m_owner.store(CallingThread(), std::memory_order_relaxed);
  zelbase::detail::NoteLockHeld(this);
  return true;
}

void Locker::Unlock() noexcept {
  if (m_owner.load(std::memory_order_relaxed) != CallingThread()) return;
  if (m_again > 0) {
    --m_again;
    return;
  }
  zelbase::detail::NoteLockGivenBack(this);
  m_owner.store(nullptr, std::memory_order_relaxed);
  // Waking uses the address alone: whoever has the lock by now may already have destroyed it.
  if (m_state.exchange(kFree, std::memory_order_seq_cst) == kHeldAndWanted) m_state.notify_one();
}
