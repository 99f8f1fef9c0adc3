// A worker that repeats one piece of work on a thread of its own until it is told to end. Neighbours: PlatformThreads.h, which
// makes the thread; CWnd.h, the receiver of a message after every pass.
#pragma once

#include <memory>
#include <string>

#include "zelbase/concurrency/Locker.h"
#include "zelbase/concurrency/detail/Primitives.h"
#include "zelbase/platform/CWnd.h"
#include "zelbase/platform/PlatformThreads.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/ZelBaseApi.h"

// What GetError tells: the last thing that went wrong. No start and no good stop clears it.
inline constexpr unsigned int WORKER_NO_ERROR = 0;
inline constexpr unsigned int WORKER_ERROR_CREATE = 1;   // the thread could not be made
inline constexpr unsigned int WORKER_ERROR_TIMEOUT = 2;  // a stop timed out
inline constexpr unsigned int WORKER_ERROR_PASS = 4;     // a pass of ThreadWork returned false

// The message that the notify window gets after every pass, with 1 (the pass failed) or 0, and 0.
inline constexpr unsigned int WM_WORKER_PASS = WM_APP + 7;  // 0x8007

// Derive, and implement ThreadWork as one pass. The loop has no sleep of its own: the pace is up to ThreadWork. Each pass is
// followed by its message, on the worker's thread, before the end is looked for; the last pass too.
//
// | called                | does                                                                                  |
// |-----------------------|---------------------------------------------------------------------------------------|
// | StartBaseWorkerThread | clears the end flag and runs the loop on a new thread                                 |
// | NotifyEnd             | sets the end flag; the loop ends after the pass under way                             |
// | StopBaseWorkerThread  | sets the end flag and waits; the worker can then be started again                     |
//
// Before the object goes its owner stops it: the destructor neither stops nor waits, lets a thread that is still held go,
// and is not virtual. A second start without a stop runs a second thread, and the first is let go. Copies share the thread
// but not the flags: a stop of a copy waits for the thread that it does not end.
//
// Flags, error and window may be read and set from any thread, starts and stops called from any, ThreadWork included.
class ZELBASE_API BaseWorkerThread {
 public:
  BaseWorkerThread() = default;
  BaseWorkerThread(const BaseWorkerThread& other);
  BaseWorkerThread& operator=(const BaseWorkerThread& other);
  ~BaseWorkerThread() = default;

  // `priority` in steps above (positive) or below the ordinary, a hint. `name` goes to the naming hook; an empty one is
  // "BaseWorkerThread". False, error 1, when there is no thread to be had; the end flag is clear all the same.
  bool StartBaseWorkerThread(int priority, const std::string& name);

  // Sets the end flag and waits at most `timeoutMs` milliseconds, without limit from 0xFFFFFFFF on. True when the thread has
  // ended, or there was none. False, error 2, when it has not: a further stop may be tried. Called from ThreadWork it
  // fails at once.
  bool StopBaseWorkerThread(unsigned long timeoutMs);

  // Ask the loop to end, and do not wait.
  void NotifyEnd() { m_endThread = 1; }
  void SetEndThread() { m_endThread = 1; }

  // Not 0 when the loop is to end.
  int GetEndThread() const { return m_endThread; }

  unsigned int GetError() const { return m_error; }

  // The receiver of the message, not owned; null for none. It must outlive the worker's run.
  CWnd* GetNotifyWnd() const { return m_notifyWnd; }
  void SetNotifyWnd(CWnd* window) { m_notifyWnd = window; }

  // One pass. False counts as failed: error 4, and the loop goes on.
  virtual bool ThreadWork() = 0;

  // The loop, on the calling thread. `worker` is a BaseWorkerThread*; null is ignored. Always 0.
  static unsigned int BaseWorkerThreadFunction(void* worker);

 protected:
  void SetError(unsigned int error) { m_error = error; }

 private:
  std::shared_ptr<PlatformThread> Thread() const;
  void RunPass();

  mutable Locker m_threadLock;
  std::shared_ptr<PlatformThread> m_thread ZELBASE_GUARDED_BY(m_threadLock);  // null: not started
  zelbase::detail::Atomic<CWnd*> m_notifyWnd{nullptr};
  zelbase::detail::Atomic<int> m_endThread{0};
  zelbase::detail::Atomic<unsigned int> m_error{WORKER_NO_ERROR};
};
