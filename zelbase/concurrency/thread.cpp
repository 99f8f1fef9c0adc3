#include "zelbase/concurrency/thread.h"

#include <exception>
#include <new>
#include <utility>

#include "zelbase/frame/SystemProbes.h"

namespace tmp {

namespace {

constexpr int kBelowNormal = -1;

}  // namespace

thread::thread(std::function<void()> function) {
  try {
    m_function = std::make_shared<const Function>(std::move(function));
    start_thread();
  } catch (const std::bad_alloc&) {
    // Kept: a thread that cannot be made raises nothing; the object is not joinable.
  }
}

thread::~thread() {
  if (joinable()) std::terminate();  // Kept: also when the function has returned long ago
}

// Kept: without a thread to wait for it does nothing.
void thread::join() {
  if (m_handle && m_handle->Wait(PlatformThread::kNoLimit)) m_handle.reset();
}

void thread::swap(thread& other) noexcept {
  m_handle.swap(other.m_handle);
  m_function.swap(other.m_function);
}

unsigned int thread::hardware_concurrency() { return static_cast<unsigned int>(GetTotalNumberOfCores()); }

// The thread gets the function and nothing of this object, which may be swapped or destroyed before it begins.
void thread::start_thread() {
  m_handle = PlatformService<PlatformThreads>::Current().CreateSuspended([function = m_function] { (*function)(); }, kBelowNormal, 0);
  if (m_handle) m_handle->Resume();
}

}  // namespace tmp
