// Looks that a thread takes again and again before it goes to sleep. Neighbours: ShortLock.h and TaskQueue.h, which look
// for a moment and then wait for a wake-up.
#pragma once

#include "zelbase/concurrency/detail/Primitives.h"

namespace zelbase::detail {

// Tells the processor that this is a loop that waits.
inline void RelaxProcessor() noexcept {
#if defined(__x86_64__) || defined(__i386__)
  __builtin_ia32_pause();
#elif defined(__aarch64__)
  asm volatile("yield");
#endif
}

// Bounded waiting: the first looks follow each other closely, the later ones let other threads run in between.
//
//   for (Spin spin(close, patient); spin.Again();) {
//     ... look, and leave if it is there ...
//   }
class Spin {
 public:
  constexpr Spin(int close, int patient) noexcept : m_close(Looks(close)), m_patient(Looks(patient)) {}

  // Waits a little; false when all looks have been taken.
  bool Again() noexcept {
    if (m_close > 0) {
      --m_close;
      RelaxProcessor();
      return true;
    }
    if (m_patient <= 0) return false;
    --m_patient;
    GiveWay();
    return true;
  }

 private:
  int m_close;
  int m_patient;
};

}  // namespace zelbase::detail
