// An event that a thread waits for. Neighbour: PlatformClock::Wait, which waits for one with a time limit by the clock
// in force, so that a simulated clock can end the wait.
#pragma once

#include <vector>

#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/platform/detail/Mutex.h"

// A flag with waiters. A manual-reset event stays set, and lets every waiter pass, until Reset; an auto-reset event
// lets one waiter pass and is then clear again. Any thread may call any operation. Not copyable. It may be destroyed as
// soon as the last wait has returned, even while the Set that ended it is on its way out.
class ZELBASE_API PlatformEvent {
 public:
  enum class Mode { ManualReset, AutoReset };

  // A wait with this limit or more has none.
  static constexpr unsigned long kNoLimit = 0xFFFFFFFFul;

  // Is told of each Set. For clocks, which wait in a way of their own: see SimulatedClock.h.
  class ZELBASE_API Observer {
   public:
    virtual ~Observer() = default;

    // Called on the thread that calls Set, once the event is set, with the event held: it must be quick, and must not
    // call the event. Whether the event is still set afterwards, TryWait tells.
    virtual void OnSet() = 0;
  };

  explicit PlatformEvent(Mode mode = Mode::ManualReset) : m_mode(mode) {}
  PlatformEvent(const PlatformEvent&) = delete;
  PlatformEvent& operator=(const PlatformEvent&) = delete;

  void Set();
  void Reset();

  // Takes the event at once when it is set (an auto-reset event is then clear). False when it is not set.
  bool TryWait();

  // Waits without limit.
  void Wait();

  // Waits at most `milliseconds` of real time; true when the event was set. 0 looks once.
  bool WaitFor(unsigned long milliseconds);

  // Puts an observer on the list, not owned, or takes it off; once it is off, no call of OnSet is under way.
  void AddObserver(Observer& observer);
  void RemoveObserver(Observer& observer);

 private:
  bool TakeIfSet() ZELBASE_REQUIRES(m_mutex);

  const Mode m_mode;
  zelbase::detail::Mutex m_mutex;
  zelbase::detail::Condition m_condition;
  bool m_set ZELBASE_GUARDED_BY(m_mutex) = false;
  std::vector<Observer*> m_observers ZELBASE_GUARDED_BY(m_mutex);
};
