// A thread in the shape of the standard library's class, one step below ordinary priority. Neighbours: ThreadPool.h, which
// rests on it; BaseWorkerThread.h, a worker that repeats one piece of work; PlatformThreads.h, which makes the thread.
#pragma once

#include <functional>
#include <memory>

#include "zelbase/platform/PlatformThreads.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace tmp {

// Where it differs from the standard class:
//   (1) a thread that cannot be made throws nothing: the object is not joinable;
//   (2) join and detach of an object that is not joinable do nothing;
//   (3) it always runs below ordinary priority, and is exchanged by swap, never moved.
//
// The function belongs to the object and to the running thread together: the object keeps it until it is destroyed, also
// after join and detach, and a thread let go by detach, swapped away or not yet begun has it to itself as long as it needs.
//
// One object is for one thread at a time. Not copyable.
class ZELBASE_API thread {
 public:
  // The platform's thread, owned by the object; null when it is not joinable. Valid until join, detach or swap.
  using native_handle_type = PlatformThread*;

  // Not joinable.
  thread() noexcept = default;

  // Runs `function` on a new thread at once. An exception that leaves it ends the process, and so does an empty function,
  // whose call raises std::bad_function_call there. Not joinable when there is no thread to be had.
  explicit thread(std::function<void()> function);

  // Ends the process (std::terminate) when the object is still joinable, even when its function has returned.
  ~thread();

  thread(const thread&) = delete;
  thread& operator=(const thread&) = delete;

  // True from the start of a thread until join or detach.
  bool joinable() const noexcept { return m_handle != nullptr; }

  // Waits without limit until the function has returned; then the object is not joinable. On the very thread that it would
  // wait for it does nothing, and the object stays joinable.
  void join();

  // Lets the thread go on by itself; the object is not joinable.
  void detach() noexcept { m_handle.reset(); }

  // Exchanges threads and functions.
  void swap(thread& other) noexcept;

  native_handle_type native_handle() const noexcept { return m_handle.get(); }

  // Logical processors online, as GetTotalNumberOfCores tells them; 0 when that cannot be told.
  static unsigned int hardware_concurrency();

 private:
  using Function = std::function<void()>;

  void start_thread();

  std::unique_ptr<PlatformThread> m_handle;    // null: not joinable
  std::shared_ptr<const Function> m_function;  // shared with the thread that runs it
};

}  // namespace tmp
