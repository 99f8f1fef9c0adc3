#include "zelbase/concurrency/Locker.h"

namespace {

// One byte a thread: its address tells the thread apart from all others that live.
const void* CallingThread() noexcept {
  thread_local constinit char identity = 0;
  return &identity;
}

}  // namespace

bool Locker::Lock() noexcept {
  const void* const caller = CallingThread();
  if (m_owner.load(std::memory_order_relaxed) == caller) {
    ++m_depth;
    return true;
  }
  unsigned int expected = 0;
  if (!m_state.compare_exchange_strong(expected, 1, std::memory_order_acquire)) {
    while (m_state.exchange(2, std::memory_order_acquire) != 0) m_state.wait(2, std::memory_order_relaxed);
  }
  m_owner.store(caller, std::memory_order_relaxed);
  m_depth = 1;
  return true;
}

bool Locker::TryLock() noexcept {
  const void* const caller = CallingThread();
  if (m_owner.load(std::memory_order_relaxed) == caller) {
    ++m_depth;
    return true;
  }
  unsigned int expected = 0;
  if (!m_state.compare_exchange_strong(expected, 1, std::memory_order_acquire)) return false;
  m_owner.store(caller, std::memory_order_relaxed);
  m_depth = 1;
  return true;
}

void Locker::Unlock() noexcept {
  if (m_owner.load(std::memory_order_relaxed) != CallingThread()) return;
  if (--m_depth > 0) return;
  m_owner.store(nullptr, std::memory_order_relaxed);
  if (m_state.exchange(0, std::memory_order_release) == 2) m_state.notify_one();
}
