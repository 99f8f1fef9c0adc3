#include "tests/support/Scheduler.h"

#include <sched.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <sstream>
#include <thread>

#include "zelbase/platform/PlatformThreads.h"

namespace {

constexpr std::size_t kTooManySteps = 100000;
constexpr std::size_t kReportedSteps = 80;

// Hands the turn to one thread.
class Signal {
 public:
  void Set() {
    m_set.store(1);
    m_set.notify_one();
  }
  void Await() {
    m_set.wait(0);
    m_set.store(0);
  }

 private:
  std::atomic<unsigned int> m_set{0};
};

// A thread of the system that runs the threads of schedules, one after the other. It is never ended.
struct Carrier {
  Signal go;
  std::function<void()> job;

  void Serve() {
    for (;;) {
      go.Await();
      const std::function<void()> present = std::move(job);
      present();
    }
  }
};

// Carriers without a job. Bodies and threads of the library have their own each: the library marks the threads of a pool,
// and a body is none. Used by whoever has the turn.
std::vector<Carrier*>& IdleCarriers(bool ofLibrary) {
  static auto* const idle = new std::vector<Carrier*>[2];
  return idle[ofLibrary ? 1 : 0];
}

Carrier* TakeCarrier(bool ofLibrary) {
  std::vector<Carrier*>& idle = IdleCarriers(ofLibrary);
  if (idle.empty()) {
    auto* const carrier = new Carrier;
    std::thread([carrier] { carrier->Serve(); }).detach();
    return carrier;
  }
  Carrier* const carrier = idle.back();
  idle.pop_back();
  return carrier;
}

// The turn of whoever calls Run. Never destroyed: the thread that sets it at the end may still be in its call.
Signal& MainTurn() {
  static Signal& turn = *new Signal;
  return turn;
}

// One thread of a schedule.
struct Thread {
  enum class Status { Suspended, Ready, Asleep, AsleepWithLimit, Ended };

  std::size_t number = 0;
  bool ofLibrary = false;
  Status status = Status::Suspended;
  const void* sleepsAt = nullptr;
  std::size_t steps = 0;
  std::function<void()> function;
  Carrier* carrier = nullptr;
};

struct Traced {
  std::size_t thread;
  const char* what;
  const void* where;
};

// Keeps the calling thread, and those that it makes meanwhile, on one processor: the turn goes from thread to thread many
// times faster there than it wakes another processor.
class OneProcessor {
 public:
  OneProcessor() {
    CPU_ZERO(&m_former);
    if (sched_getaffinity(0, sizeof m_former, &m_former) != 0) return;
    cpu_set_t one;
    CPU_ZERO(&one);
    for (int processor = 0; processor < CPU_SETSIZE; ++processor) {
      if (!CPU_ISSET(processor, &m_former)) continue;
      CPU_SET(processor, &one);
      break;
    }
    m_kept = sched_setaffinity(0, sizeof one, &one) == 0;
  }
  ~OneProcessor() {
    if (m_kept) sched_setaffinity(0, sizeof m_former, &m_former);
  }
  OneProcessor(const OneProcessor&) = delete;
  OneProcessor& operator=(const OneProcessor&) = delete;

 private:
  cpu_set_t m_former;
  bool m_kept = false;
};

}  // namespace

struct Scheduler::State {
  const OneProcessor processor;
  Chooser& chooser;
  const Grain grain;
  std::unique_ptr<PlatformThreads> library;
  PlatformThreads* former = nullptr;
  std::vector<std::shared_ptr<Thread>> threads;
  std::vector<std::size_t> choices;
  std::vector<Traced> trace;
  std::string failure;
  bool deadlock = false;
  bool starting = false;  // bodies run up to their first step, one after the other

  State(Chooser& c, Grain g) : chooser(c), grain(g) {}

  std::size_t Choose(std::size_t count, std::size_t current) {
    if (count == 1) return 0;
    const std::size_t chosen = std::min(chooser.Choose(count, current), count - 1);
    choices.push_back(chosen);
    return chosen;
  }

  static bool CanGoOn(const Thread& thread) {
    return thread.status == Thread::Status::Ready || thread.status == Thread::Status::AsleepWithLimit;
  }

  // Null when nobody can.
  Thread* ChooseNext(const Thread* present) {
    Thread* able[64];
    std::size_t count = 0, current = 64;
    for (const auto& thread : threads) {
      if (!CanGoOn(*thread) || count == 64) continue;
      if (thread.get() == present && thread->status == Thread::Status::Ready) current = count;
      able[count++] = thread.get();
    }
    if (count == 0) return nullptr;
    return able[Choose(count, std::min(current, count))];
  }

  // The calling thread of the schedule gives its turn away, and goes on when it has it again.
  void GiveTurn(Thread& present) {
    Signal& mine = present.carrier->go;
    const bool ended = present.status == Thread::Status::Ended;
    Thread* next = nullptr;
    if (!starting && trace.size() <= kTooManySteps) next = ChooseNext(&present);
    if (next == &present) return;
    (next != nullptr ? next->carrier->go : MainTurn()).Set();
    if (!ended) mine.Await();
  }

  void Start(Thread& thread);
  void EndOfRun();
};

namespace {

thread_local Scheduler::State* t_state = nullptr;
thread_local Thread* t_thread = nullptr;

}  // namespace

// Brings the thread up with a carrier; it waits there for its first turn.
void Scheduler::State::Start(Thread& thread) {
  thread.status = Thread::Status::Ready;
  thread.carrier = TakeCarrier(thread.ofLibrary);
  thread.carrier->job = [this, &thread] {
    t_state = this;
    t_thread = &thread;
    thread.function();
    thread.function = nullptr;
    thread.status = Thread::Status::Ended;
    Scheduler::WakeAll(&thread);
    t_thread = nullptr;
    t_state = nullptr;
    IdleCarriers(thread.ofLibrary).push_back(thread.carrier);
    GiveTurn(thread);
  };
}

void Scheduler::State::EndOfRun() {
  const bool tooLong = trace.size() > kTooManySteps;
  const bool ended = std::all_of(threads.begin(), threads.end(), [](const auto& thread) {
    return thread->status == Thread::Status::Ended || thread->status == Thread::Status::Suspended;
  });
  deadlock = !ended && !tooLong;
  if (!failure.empty() || ended) return;
  failure = tooLong ? "does not come to an end" : "nobody can go on";
}

// The threads that the library asks for.
class ScheduledThreads final : public PlatformThreads {
 public:
  explicit ScheduledThreads(Scheduler::State& state) : m_state(state) {}

  std::unique_ptr<PlatformThread> CreateSuspended(std::function<void()> function, int, std::size_t) override {
    if (!function) return nullptr;
    auto thread = std::make_shared<Thread>();
    thread->ofLibrary = true;
    thread->function = std::move(function);
    thread->number = m_state.threads.size();
    m_state.threads.push_back(thread);
    return std::make_unique<Handle>(m_state, std::move(thread));
  }
  unsigned long CurrentId() override { return t_thread == nullptr ? 1000 : t_thread->number + 1; }
  void NameThread(unsigned long, const std::string&) override {}

 private:
  class Handle final : public PlatformThread {
   public:
    Handle(Scheduler::State& state, std::shared_ptr<Thread> thread) : m_state(state), m_thread(std::move(thread)) {}
    void Resume() override {
      if (m_thread->status == Thread::Status::Suspended) m_state.Start(*m_thread);
    }
    void SetPriority(int) override {}
    bool Wait(unsigned long milliseconds) override {
      if (t_thread == m_thread.get()) return false;
      Scheduler::Step("wait for the thread", m_thread.get());
      while (m_thread->status != Thread::Status::Ended) {
        if (milliseconds == 0 || !Scheduler::IsInside()) return false;
        const auto limit = milliseconds >= kNoLimit ? Scheduler::Limit::None : Scheduler::Limit::Some;
        if (!Scheduler::Sleep(m_thread.get(), limit)) return false;
      }
      return true;
    }
    unsigned long Id() const override { return m_thread->number + 1; }

   private:
    Scheduler::State& m_state;
    const std::shared_ptr<Thread> m_thread;
  };

  Scheduler::State& m_state;
};

Scheduler::Scheduler(Chooser& chooser, Grain grain) : m_state(std::make_unique<State>(chooser, grain)) {
  m_state->library = std::make_unique<ScheduledThreads>(*m_state);
  m_state->former = PlatformService<PlatformThreads>::Replace(m_state->library.get());
}

// Threads that stand still for ever keep what they look at.
Scheduler::~Scheduler() {
  PlatformService<PlatformThreads>::Replace(m_state->former);
  const bool left = std::any_of(m_state->threads.begin(), m_state->threads.end(),
                                [](const auto& thread) { return thread->carrier != nullptr && thread->status != Thread::Status::Ended; });
  if (left) static_cast<void>(m_state.release());
}

void Scheduler::Run(std::vector<std::function<void()>> bodies) {
  std::vector<std::shared_ptr<Thread>> started;
  for (std::function<void()>& body : bodies) {
    auto thread = std::make_shared<Thread>();
    thread->function = std::move(body);
    thread->number = m_state->threads.size();
    m_state->threads.push_back(thread);
    started.push_back(std::move(thread));
  }
  m_state->starting = true;
  for (const auto& thread : started) {
    m_state->Start(*thread);
    thread->carrier->go.Set();
    MainTurn().Await();
  }
  m_state->starting = false;
  if (Thread* const first = m_state->ChooseNext(nullptr)) {
    first->carrier->go.Set();
    MainTurn().Await();
  }
  m_state->EndOfRun();
}

void Scheduler::Expect(bool holds, const char* what) {
  if (!holds && m_state->failure.empty()) {
    m_state->failure = std::string(what) + " (after step " + std::to_string(m_state->trace.size()) + ")";
  }
}

bool Scheduler::HasFailed() const { return !m_state->failure.empty(); }

bool Scheduler::IsDeadlock() const { return m_state->deadlock; }

namespace {

// Objects get numbers in the order in which they appear, so that two traces of one schedule are equal.
std::string Lines(const std::vector<Traced>& trace, std::size_t last) {
  std::map<const void*, std::size_t> numbers;
  std::ostringstream text;
  for (std::size_t i = 0; i < trace.size(); ++i) {
    const std::size_t number = trace[i].where == nullptr ? 0 : numbers.emplace(trace[i].where, numbers.size() + 1).first->second;
    if (i + last < trace.size()) continue;
    text << "  thread " << trace[i].thread << ": " << trace[i].what;
    if (number > 0) text << " #" << number;
    text << "\n";
  }
  return text.str();
}

}  // namespace

std::string Scheduler::Trace() const { return Lines(m_state->trace, m_state->trace.size()); }

std::string Scheduler::Report() const {
  std::ostringstream text;
  text << m_state->failure << "\nchoices:";
  for (const std::size_t choice : m_state->choices) text << " " << choice;
  text << "\nlast of " << m_state->trace.size() << " steps:\n" << Lines(m_state->trace, kReportedSteps);
  return text.str();
}

const std::vector<std::size_t>& Scheduler::Choices() const { return m_state->choices; }

std::size_t Scheduler::Steps() const { return m_state->trace.size(); }

std::size_t Scheduler::StepsOfThisThread() const { return t_thread == nullptr ? 0 : t_thread->steps; }

void Scheduler::Turn(const char* what) {
  if (t_thread == nullptr) return;
  Thread& present = *t_thread;
  State& state = *t_state;
  state.GiveTurn(present);
  ++present.steps;
  state.trace.push_back({present.number, what, nullptr});
}

void Scheduler::Step(const char* what, const void* where) noexcept {
  if (t_thread == nullptr || t_state->grain == Grain::Calls) return;
  Turn(what);
  t_state->trace.back().where = where;
}

bool Scheduler::IsInside() noexcept { return t_thread != nullptr; }

bool Scheduler::Sleep(const void* where, Limit limit) noexcept {
  Thread& present = *t_thread;
  present.sleepsAt = where;
  present.status = limit == Limit::None ? Thread::Status::Asleep : Thread::Status::AsleepWithLimit;
  t_state->trace.push_back({present.number, "sleeps", where});
  t_state->GiveTurn(present);
  const bool woken = present.status == Thread::Status::Ready;
  present.status = Thread::Status::Ready;
  t_state->trace.push_back({present.number, woken ? "is awake" : "has waited long enough", where});
  return woken;
}

namespace {

std::vector<Thread*> SleepersAt(const std::vector<std::shared_ptr<Thread>>& threads, const void* where) {
  std::vector<Thread*> found;
  for (const auto& thread : threads) {
    const bool asleep = thread->status == Thread::Status::Asleep || thread->status == Thread::Status::AsleepWithLimit;
    if (asleep && thread->sleepsAt == where) found.push_back(thread.get());
  }
  return found;
}

}  // namespace

void Scheduler::WakeOne(const void* where) noexcept {
  if (t_thread == nullptr) return;
  const std::vector<Thread*> sleepers = SleepersAt(t_state->threads, where);
  if (sleepers.empty()) return;
  sleepers[t_state->Choose(sleepers.size(), sleepers.size())]->status = Thread::Status::Ready;
}

void Scheduler::WakeAll(const void* where) noexcept {
  if (t_thread == nullptr) return;
  for (Thread* const sleeper : SleepersAt(t_state->threads, where)) sleeper->status = Thread::Status::Ready;
}

// The path holds a choice for each place with several to choose from; with a bound, the present thread stands first there.
std::size_t AllSchedules::Choose(std::size_t count, std::size_t current) {
  const bool interrupts = m_bound != kNoBound && current < count;
  if (interrupts && m_interruptions == m_bound) return current;
  if (m_depth == m_path.size()) m_path.push_back({0, count});
  const Choice choice = m_path[m_depth++];
  if (choice.count != count) m_repeatable = false;
  if (!interrupts) return choice.chosen;
  if (choice.chosen == 0) return current;
  ++m_interruptions;
  return choice.chosen <= current ? choice.chosen - 1 : choice.chosen;
}

bool AllSchedules::Next() {
  if (m_depth != m_path.size()) m_repeatable = false;
  m_depth = 0;
  m_interruptions = 0;
  while (!m_path.empty() && m_path.back().chosen + 1 == m_path.back().count) m_path.pop_back();
  if (m_path.empty() || !m_repeatable) return false;
  ++m_path.back().chosen;
  ++m_count;
  return true;
}

// The high bits of a linear congruence of 64 bits.
unsigned int SeededSchedule::Random() {
  m_state = m_state * 6364136223846793005ull + 1442695040888963407ull;
  return static_cast<unsigned int>(m_state >> 33);
}

std::size_t SeededSchedule::Choose(std::size_t count, std::size_t current) {
  if (m_steady && current < count && Random() % 8 != 0) return current;
  return Random() % count;
}

std::size_t GivenSchedule::Choose(std::size_t, std::size_t) { return m_next < m_choices.size() ? m_choices[m_next++] : 0; }
