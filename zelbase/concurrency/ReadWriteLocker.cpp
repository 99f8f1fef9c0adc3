#include "zelbase/concurrency/ReadWriteLocker.h"

// Why nobody sleeps for ever. There are two reasons to sleep, and both look at the whole word before they do (atomic wait
// compares again when it puts the thread to sleep):
//   - for the writer to go: kWriter and kWaiting are set. Only EndWriting takes kWriter away; it takes kWaiting with it, and
//     then wakes everybody. Whoever finds the next writer there sets kWaiting anew before it sleeps again.
//   - for the readers to go, as the writer that has set kWriter: no reader comes any more, and UnlockRead of the last wakes
//     everybody. No other change of the word ends this wait, and the word cannot return to what it was.

void ReadWriteLocker::LockReadSlowly() const noexcept {
  for (;;) {
    unsigned int state = AwaitNoWriter();
    if (m_state.compare_exchange_strong(state, state + kReader, std::memory_order_acquire, std::memory_order_relaxed)) {
      return;
    }
  }
}

void ReadWriteLocker::LockWriteSlowly() noexcept {
  unsigned int state = 0;
  do {
    state = AwaitNoWriter();
  } while (!m_state.compare_exchange_weak(state, state | kWriter, std::memory_order_acquire, std::memory_order_relaxed));
  while ((state = m_state.load(std::memory_order_acquire)) >= kReader) m_state.wait(state, std::memory_order_acquire);
}

// A state of the word without kWriter, as it was a moment ago.
unsigned int ReadWriteLocker::AwaitNoWriter() const noexcept {
  unsigned int state = m_state.load(std::memory_order_relaxed);
  while ((state & kWriter) != 0) {
    if ((state & kWaiting) == 0 && !m_state.compare_exchange_weak(state, state | kWaiting, std::memory_order_relaxed)) {
      continue;
    }
    m_state.wait(state | kWaiting, std::memory_order_relaxed);
    state = m_state.load(std::memory_order_relaxed);
  }
  return state;
}

// Uses the address of the word alone: whoever was let in may already have destroyed the lock.
void ReadWriteLocker::WakeAll() const noexcept { m_state.notify_all(); }
