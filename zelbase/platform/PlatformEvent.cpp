#include "zelbase/platform/PlatformEvent.h"

#include <algorithm>
#include <chrono>

// Waiters are told while the mutex is held, so that one who then destroys the event finds nobody inside it.
void PlatformEvent::Set() {
  const std::lock_guard guard(m_mutex);
  m_set = true;
  if (m_mode == Mode::ManualReset) {
    m_condition.notify_all();
  } else {
    m_condition.notify_one();
  }
  for (Observer* const observer : m_observers) observer->OnSet();
}

void PlatformEvent::Reset() {
  const std::lock_guard guard(m_mutex);
  m_set = false;
}

bool PlatformEvent::TryWait() {
  const std::lock_guard guard(m_mutex);
  return TakeIfSet();
}

void PlatformEvent::Wait() {
  std::unique_lock guard(m_mutex);
  while (!TakeIfSet()) m_condition.wait(guard);
}

bool PlatformEvent::WaitFor(unsigned long milliseconds) {
  if (milliseconds >= kNoLimit) {
    Wait();
    return true;
  }
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  std::unique_lock guard(m_mutex);
  while (!TakeIfSet()) {
    if (m_condition.wait_until(guard, deadline) == std::cv_status::timeout) return TakeIfSet();
  }
  return true;
}

void PlatformEvent::AddObserver(Observer& observer) {
  const std::lock_guard guard(m_mutex);
  m_observers.push_back(&observer);
}

void PlatformEvent::RemoveObserver(Observer& observer) {
  const std::lock_guard guard(m_mutex);
  const auto found = std::find(m_observers.begin(), m_observers.end(), &observer);
  if (found != m_observers.end()) m_observers.erase(found);
}

// Called with m_mutex held.
bool PlatformEvent::TakeIfSet() {
  if (!m_set) return false;
  if (m_mode == Mode::AutoReset) m_set = false;
  return true;
}
