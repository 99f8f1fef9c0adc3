// An event that a thread waits for. Neighbour: PlatformClock::Wait, which waits for one with a time limit by the clock
// in force, so that a simulated clock can end the wait.
#pragma once

#include <condition_variable>
#include <mutex>

#include "zelbase/platform/ZelBaseApi.h"

// A flag with waiters. A manual-reset event stays set, and lets every waiter pass, until Reset; an auto-reset event
// lets one waiter pass and is then clear again. Any thread may call any operation. Not copyable.
class ZELBASE_API PlatformEvent {
 public:
  enum class Mode { ManualReset, AutoReset };

  explicit PlatformEvent(Mode mode = Mode::ManualReset) : m_mode(mode) {}
  PlatformEvent(const PlatformEvent&) = delete;
  PlatformEvent& operator=(const PlatformEvent&) = delete;

  void Set();
  void Reset();

  // Takes the event at once when it is set (an auto-reset event is then clear). False when it is not set.
  bool TryWait();

  // Waits without limit.
  void Wait();

  // Waits at most `milliseconds` of real time; true when the event was set.
  bool WaitFor(unsigned long milliseconds);

 private:
  bool TakeIfSet();

  const Mode m_mode;
  bool m_set = false;
  std::mutex m_mutex;
  std::condition_variable m_condition;
};
