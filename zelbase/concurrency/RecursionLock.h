// A guard against re-entry on one thread, as when a handler triggers itself. Neighbours: Locker.h and ReadWriteLocker.h,
// which keep threads apart; this one does not.
#pragma once

// Watches over a flag of its owner, which must outlive it. Not atomic and not for several threads. Not copyable.
//
//   bool m_busy = false;                    // of the handler's object
//   RecursionLock guard(m_busy);
//   if (!guard.Lock()) return;              // we are inside already
class RecursionLock {
 public:
  explicit RecursionLock(bool& flag) : m_flag(flag) {}

  // Clears the flag when this guard has set it, and leaves it alone otherwise.
  ~RecursionLock() {
    if (m_locked) m_flag = false;
  }

  RecursionLock(const RecursionLock&) = delete;
  RecursionLock& operator=(const RecursionLock&) = delete;

  // Sets the flag. False when it was set already, be it by this very guard, which still clears it at its end.
  bool Lock() {
    if (m_flag) return false;
    m_flag = true;
    m_locked = true;
    return true;
  }

 private:
  bool& m_flag;
  bool m_locked = false;
};
