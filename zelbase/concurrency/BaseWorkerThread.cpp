#include "zelbase/concurrency/BaseWorkerThread.h"

#include <utility>

#include "zelbase/concurrency/NameThread.h"
#include "zelbase/platform/LockGuard.h"

BaseWorkerThread::BaseWorkerThread(const BaseWorkerThread& other) { *this = other; }

BaseWorkerThread& BaseWorkerThread::operator=(const BaseWorkerThread& other) {
  std::shared_ptr<PlatformThread> thread = other.Thread();
  {
    const LockGuard guard(m_threadLock);
    m_thread.swap(thread);
  }
  m_notifyWnd = other.m_notifyWnd.load();
  m_endThread = other.m_endThread.load();
  m_error = other.m_error.load();
  return *this;
}

bool BaseWorkerThread::StartBaseWorkerThread(int priority, const std::string& name) {
  m_endThread = 0;
  PlatformThreads& threads = PlatformService<PlatformThreads>::Current();
  std::shared_ptr<PlatformThread> thread = threads.CreateSuspended([this] { BaseWorkerThreadFunction(this); }, priority, 0);
  if (!thread) {
    m_error = WORKER_ERROR_CREATE;
    return false;
  }
  NameThread(thread->Id(), name.empty() ? "BaseWorkerThread" : name);
  std::shared_ptr<PlatformThread> former = thread;
  {
    const LockGuard guard(m_threadLock);
    m_thread.swap(former);  // Kept: a thread that runs already is let go, not waited for
  }
  thread->Resume();
  return true;
}

bool BaseWorkerThread::StopBaseWorkerThread(unsigned long timeoutMs) {
  m_endThread = 1;  // Kept: also when there is no thread
  std::shared_ptr<PlatformThread> thread = Thread();
  if (!thread) return true;
  if (!thread->Wait(timeoutMs)) {
    m_error = WORKER_ERROR_TIMEOUT;
    return false;
  }
  const LockGuard guard(m_threadLock);
  if (m_thread == thread) m_thread.reset();
  return true;
}

unsigned int BaseWorkerThread::BaseWorkerThreadFunction(void* worker) {
  BaseWorkerThread* const self = static_cast<BaseWorkerThread*>(worker);
  if (self == nullptr) return 0;
  while (self->m_endThread == 0) self->RunPass();
  return 0;
}

void BaseWorkerThread::RunPass() {
  const bool failed = !ThreadWork();
  if (failed) m_error = WORKER_ERROR_PASS;  // Kept: a failed pass does not end the loop
  CWnd* const window = m_notifyWnd;
  if (window != nullptr) window->PostMessageA(WM_WORKER_PASS, failed ? 1 : 0, 0);
}

std::shared_ptr<PlatformThread> BaseWorkerThread::Thread() const {
  const LockGuard guard(m_threadLock);
  return m_thread;
}
