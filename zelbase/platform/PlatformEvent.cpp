#include "zelbase/platform/PlatformEvent.h"

#include <algorithm>
#include <chrono>

#include "zelbase/platform/LockGuard.h"

// Waiters are told while the mutex is held, so that one who then destroys the event finds nobody inside it.
void PlatformEvent::Set() {
  const LockGuard guard(m_mutex);
  m_set = true;
  if (m_mode == Mode::ManualReset) {
    m_condition.NotifyAll();
  } else {
    m_condition.NotifyOne();
  }
  for (Observer* const observer : m_observers) observer->OnSet();
}

void PlatformEvent::Reset() {
  const LockGuard guard(m_mutex);
  m_set = false;
}

bool PlatformEvent::TryWait() {
  const LockGuard guard(m_mutex);
  return TakeIfSet();
}

void PlatformEvent::Wait() {
  const LockGuard guard(m_mutex);
  while (!TakeIfSet()) m_condition.Wait(m_mutex);
}

bool PlatformEvent::WaitFor(unsigned long milliseconds) {
  if (milliseconds >= kNoLimit) {
    Wait();
    return true;
  }
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  const LockGuard guard(m_mutex);
  while (!TakeIfSet()) {
    if (!m_condition.WaitUntil(m_mutex, deadline)) return TakeIfSet();
  }
  return true;
}

void PlatformEvent::AddObserver(Observer& observer) {
  const LockGuard guard(m_mutex);
  m_observers.push_back(&observer);
}

void PlatformEvent::RemoveObserver(Observer& observer) {
  const LockGuard guard(m_mutex);
  const auto found = std::find(m_observers.begin(), m_observers.end(), &observer);
  if (found != m_observers.end()) m_observers.erase(found);
}

bool PlatformEvent::TakeIfSet() {
  if (!m_set) return false;
  if (m_mode == Mode::AutoReset) m_set = false;
  return true;
}
