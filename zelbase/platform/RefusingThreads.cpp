#include "zelbase/platform/RefusingThreads.h"

#include <utility>

#include "zelbase/platform/LockGuard.h"

void RefusingThreads::RefuseNumber(std::size_t n) {
  const LockGuard guard(m_mutex);
  m_refuseAll = false;
  m_untilRefusal = n;
}

void RefusingThreads::RefuseAll() {
  const LockGuard guard(m_mutex);
  m_refuseAll = true;
}

void RefusingThreads::RefuseNone() { RefuseNumber(0); }

std::vector<RefusingThreads::Request> RefusingThreads::Requests() const {
  const LockGuard guard(m_mutex);
  return m_requests;
}

std::vector<RefusingThreads::Naming> RefusingThreads::Namings() const {
  const LockGuard guard(m_mutex);
  return m_namings;
}

std::unique_ptr<PlatformThread> RefusingThreads::CreateSuspended(std::function<void()> function, int priority, std::size_t stackSize) {
  {
    const LockGuard guard(m_mutex);
    const bool refused = m_refuseAll || m_untilRefusal == 1;
    if (m_untilRefusal > 0) --m_untilRefusal;
    m_requests.push_back({priority, stackSize, refused});
    if (refused) return nullptr;
  }
  return System().CreateSuspended(std::move(function), priority, stackSize);
}

unsigned long RefusingThreads::CurrentId() { return System().CurrentId(); }

void RefusingThreads::NameThread(unsigned long id, const std::string& name) {
  {
    const LockGuard guard(m_mutex);
    m_namings.push_back({id, name});
  }
  System().NameThread(id, name);
}
