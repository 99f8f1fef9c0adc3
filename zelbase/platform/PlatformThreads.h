// Operating-system threads with a suspended start, a priority hint and a naming hook. Neighbours: RefusingThreads.h, the
// stand-in that makes none; zelbase/concurrency/BaseWorkerThread.h, the worker class built on these.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "zelbase/platform/PlatformService.h"
#include "zelbase/platform/ZelBaseApi.h"

// One thread, made suspended. Destroying the object lets the thread go and never waits: a running one goes on by itself,
// and one never resumed ends without having run.
class ZELBASE_API PlatformThread {
 public:
  // A wait with this limit or more has none.
  static constexpr unsigned long kNoLimit = 0xFFFFFFFFul;

  virtual ~PlatformThread() = default;

  // Lets the suspended thread run. A second call does nothing.
  virtual void Resume() = 0;

  // Steps above (positive) or below (negative) the ordinary priority; a hint that the system may drop.
  virtual void SetPriority(int priority) = 0;

  // Waits until the thread's function has returned, at most `milliseconds`. True when it has; nothing of the thread runs
  // any more then. May be called often and from several threads. A thread that waits for itself gets false at once.
  virtual bool Wait(unsigned long milliseconds) = 0;

  // Number of the thread in this process, never 0 and never given to two threads.
  virtual unsigned long Id() const = 0;
};

class ZELBASE_API PlatformThreads {
 public:
  // The calling thread, for NameThread.
  static constexpr unsigned long kCallingThread = static_cast<unsigned long>(-1);

  virtual ~PlatformThreads() = default;

  // Makes a suspended thread that will run `function`. `stackSize` in bytes, 0 for the system's default; less than 64 KiB
  // is 64 KiB. Null when the system refuses, or for an empty function. An exception that leaves `function` ends the
  // process. `function` is destroyed on the new thread, or here when there is none.
  virtual std::unique_ptr<PlatformThread> CreateSuspended(std::function<void()> function, int priority, std::size_t stackSize) = 0;

  // Number of the calling thread, as PlatformThread::Id gives it.
  virtual unsigned long CurrentId() = 0;

  // The naming hook: tells a debugger or trace the name of a thread. Has no effect by default.
  virtual void NameThread(unsigned long id, const std::string& name) = 0;

  // This system's threads; never destroyed.
  static PlatformThreads& System();
};
