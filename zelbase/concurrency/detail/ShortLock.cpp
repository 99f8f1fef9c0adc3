#include "zelbase/concurrency/detail/ShortLock.h"

#include "zelbase/concurrency/detail/Spin.h"

namespace zelbase::detail {

namespace {

constexpr int kCloseLooks = 60;
constexpr int kPatientLooks = 4;

}  // namespace

// Whoever has slept takes the lock with the mark set, since it cannot know whether others still sleep; the unlock that
// finds the mark wakes one of them.
void ShortLock::LockSlowly() noexcept {
  for (Spin spin(kCloseLooks, kPatientLooks); spin.Again();) {
    unsigned int state = m_state.load(std::memory_order_relaxed);
    if (state == kFree && m_state.compare_exchange_weak(state, kHeld, std::memory_order_acquire, std::memory_order_relaxed)) {
      return;
    }
  }
  while (m_state.exchange(kHeldAndWanted, std::memory_order_acquire) != kFree) {
    m_state.wait(kHeldAndWanted, std::memory_order_relaxed);
  }
}

}  // namespace zelbase::detail
