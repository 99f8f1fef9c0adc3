// Breaks each rule of lock annotations once. It is compiled for the errors alone: see CheckLocks.cmake.

#include "zelbase/concurrency/Locker.h"
#include "zelbase/concurrency/ReadWriteLocker.h"
#include "zelbase/platform/LockGuard.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/detail/Mutex.h"

class Sounder {
 public:
  int ReadsWithoutTheLock() { return m_depth; }

  void WritesWhereItMayReadOnly() {
    m_shared.LockRead();
    m_draught = 1;
    m_shared.UnlockRead();
  }

  void CallsWithoutTheLock() { Measure(); }

  void KeepsTheLock() { m_lock.Lock(); }

  void GivesBackWhatItDoesNotHold() { m_lock.Unlock(); }

  void WaitsWithoutTheMutex() { m_changed.Wait(m_mutex); }

  int KeepsAllRules() {
    const LockGuard guard(m_lock);
    Measure();
    return m_depth;
  }

 private:
  void Measure() ZELBASE_REQUIRES(m_lock) { ++m_depth; }

  Locker m_lock;
  int m_depth ZELBASE_GUARDED_BY(m_lock) = 0;
  ReadWriteLocker m_shared;
  int m_draught ZELBASE_GUARDED_BY(m_shared) = 0;
  zelbase::detail::Mutex m_mutex;
  zelbase::detail::Condition m_changed;
};
