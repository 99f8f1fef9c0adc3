#include <limits.h>
#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <new>
#include <optional>
#include <utility>

#include "zelbase/platform/LockGuard.h"
#include "zelbase/platform/PlatformThreads.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/detail/Mutex.h"

namespace {

constexpr std::size_t kSmallestStack = 64 * 1024;

// A step of priority is five of nice, so that the platform's usual four steps either way span the range.
constexpr int kNicePerStep = 5;

unsigned long NewId() {
  static constinit std::atomic<unsigned long> last{0};
  return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

// Numbers of our own: never given twice, and known before the thread has begun.
unsigned long& IdOfThisThread() {
  thread_local constinit unsigned long id = 0;
  return id;
}

unsigned long EnsureId() {
  unsigned long& id = IdOfThisThread();
  if (id == 0) id = NewId();
  return id;
}

int NiceFor(int priority) {
  const int steps = std::clamp(priority, -8, 8);
  const int ordinary = getpriority(PRIO_PROCESS, static_cast<id_t>(getpid()));
  return std::clamp(ordinary - steps * kNicePerStep, -20, 19);
}

// What the object and the running thread share; it lives until both have gone.
class ThreadState {
 public:
  ThreadState(std::function<void()> function, int priority) : m_function(std::move(function)), m_priority(priority), m_id(NewId()) {}

  unsigned long Id() const { return m_id; }

  // On the thread itself. Nothing that leaves the function is caught: it ends the process.
  void Run() noexcept {
    IdOfThisThread() = m_id;
    if (AwaitStart()) m_function();
    m_function = nullptr;  // what it holds goes before anybody is told
    const LockGuard guard(m_mutex);
    m_systemId = 0;
    m_finished = true;
    m_changed.NotifyAll();
  }

  void Start() { Decide(Decision::Run); }
  void Drop() { Decide(Decision::Drop); }

  void SetPriority(int priority) {
    const LockGuard guard(m_mutex);
    m_priority = priority;
    ApplyPriority();
  }

  bool AwaitFinish(unsigned long milliseconds) {
    const LockGuard guard(m_mutex);
    if (milliseconds >= PlatformThread::kNoLimit) {
      while (!m_finished) m_changed.Wait(m_mutex);
      return true;
    }
    const auto limit = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (!m_finished && m_changed.WaitUntil(m_mutex, limit)) {
    }
    return m_finished;
  }

 private:
  enum class Decision { None, Run, Drop };

  bool AwaitStart() {
    const LockGuard guard(m_mutex);
    m_systemId = gettid();
    ApplyPriority();
    while (m_decision == Decision::None) m_changed.Wait(m_mutex);
    return m_decision == Decision::Run;
  }

  void Decide(Decision decision) {
    const LockGuard guard(m_mutex);
    if (m_decision != Decision::None) return;
    m_decision = decision;
    m_changed.NotifyAll();
  }

  // Refusals are of no interest: the priority is a hint.
  void ApplyPriority() ZELBASE_REQUIRES(m_mutex) {
    if (m_systemId == 0) return;
    const id_t thread = static_cast<id_t>(m_systemId);
    const int nice = NiceFor(m_priority);
    if (getpriority(PRIO_PROCESS, thread) != nice) setpriority(PRIO_PROCESS, thread, nice);
  }

  std::function<void()> m_function;
  zelbase::detail::Mutex m_mutex;
  zelbase::detail::Condition m_changed;
  Decision m_decision ZELBASE_GUARDED_BY(m_mutex) = Decision::None;
  bool m_finished ZELBASE_GUARDED_BY(m_mutex) = false;
  int m_priority ZELBASE_GUARDED_BY(m_mutex);
  pid_t m_systemId ZELBASE_GUARDED_BY(m_mutex) = 0;  // 0 before the thread's first step and after its last
  const unsigned long m_id;
};

class PosixThread final : public PlatformThread {
 public:
  explicit PosixThread(std::shared_ptr<ThreadState> state) : m_state(std::move(state)) {}

  ~PosixThread() override {
    m_state->Drop();
    if (m_thread.has_value() && !m_joined) pthread_detach(*m_thread);
  }

  // Before anybody else has the object.
  void Take(pthread_t thread) { m_thread = thread; }

  void Resume() override { m_state->Start(); }
  void SetPriority(int priority) override { m_state->SetPriority(priority); }
  unsigned long Id() const override { return m_state->Id(); }

  bool Wait(unsigned long milliseconds) override {
    if (EnsureId() == m_state->Id()) return false;
    if (!m_state->AwaitFinish(milliseconds)) return false;
    const LockGuard guard(m_joining);
    if (!m_joined) m_joined = pthread_join(*m_thread, nullptr) == 0;
    return true;
  }

 private:
  const std::shared_ptr<ThreadState> m_state;
  std::optional<pthread_t> m_thread;
  zelbase::detail::Mutex m_joining;
  bool m_joined ZELBASE_GUARDED_BY(m_joining) = false;  // by nobody once the object goes
};

extern "C" void* ZelBaseThreadEntry(void* argument) {
  const std::unique_ptr<std::shared_ptr<ThreadState>> state(static_cast<std::shared_ptr<ThreadState>*>(argument));
  (*state)->Run();
  return nullptr;
}

// The size to ask the system for: whole pages, and never less than a thread needs. False when it is beyond all bounds.
bool StackSize(std::size_t wanted, std::size_t& size) {
  const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::size_t least = std::max(kSmallestStack, static_cast<std::size_t>(PTHREAD_STACK_MIN));
  size = std::max(wanted, least);
  if (size > static_cast<std::size_t>(PTRDIFF_MAX) - page) return false;
  size = (size + page - 1) / page * page;
  return true;
}

class PosixThreads final : public PlatformThreads {
 public:
  constexpr PosixThreads() = default;

  std::unique_ptr<PlatformThread> CreateSuspended(std::function<void()> function, int priority, std::size_t stackSize) override {
    if (!function) return nullptr;
    std::size_t size = 0;
    if (stackSize != 0 && !StackSize(stackSize, size)) return nullptr;

    const auto state = std::make_shared<ThreadState>(std::move(function), priority);
    auto argument = std::make_unique<std::shared_ptr<ThreadState>>(state);
    // Made before the thread: that would wait for its start for ever without the memory for this.
    auto result = std::make_unique<PosixThread>(state);
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0) return nullptr;
    pthread_t thread{};
    const bool made = (size == 0 || pthread_attr_setstacksize(&attributes, size) == 0) &&
                      pthread_create(&thread, &attributes, &ZelBaseThreadEntry, argument.get()) == 0;
    pthread_attr_destroy(&attributes);
    if (!made) return nullptr;
    static_cast<void>(argument.release());  // the thread's now
    result->Take(thread);
    return result;
  }

  unsigned long CurrentId() override { return EnsureId(); }

  void NameThread(unsigned long, const std::string&) override {}
};

// Ready before any code runs and never destroyed.
union ThreadsStorage {
  constexpr ThreadsStorage() : threads() {}
  constexpr ~ThreadsStorage() {}
  PosixThreads threads;
};
constinit ThreadsStorage g_storage;

}  // namespace

PlatformThreads& PlatformThreads::System() { return g_storage.threads; }
