// Lets the threads of a test take turns: one runs at a time, and at each step a chooser says who goes next, so that a test can
// go through all interleavings of a few steps, or through long ones by a seed, and see the very same again. Neighbours:
// ScheduledPrimitives.h, by which the library's locks and queues make their steps known here; Interleavings.h, the loops over
// all schedules and over many seeds.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// While it lives, the threads that the library asks for (PlatformThreads) are threads of the schedule too.
//
//   AllSchedules all;
//   do {
//     Scheduler scheduler(all);
//     Locker locker;
//     scheduler.Run({[&] { locker.Lock(); ...; locker.Unlock(); }, [&] { ... }});
//     ASSERT_FALSE(scheduler.HasFailed()) << scheduler.Report();
//   } while (all.Next());
//
// A step is what a thread does from one turn to the next. With Grain::Operations each operation on an atomic of the library
// begins one, with Grain::Calls only Turn, which bodies call before each call of the library. In both, a thread that has to
// wait gives its turn away, and has it again after it has been woken. What happens within a step is not divided, and each
// thread sees what the others have done before: of the weaker orders of memory the schedules show nothing.
//
// One schedule at a time; a scheduler runs once. Not copyable.
class Scheduler {
 public:
  enum class Grain { Operations, Calls };

  // Says who goes next.
  class Chooser {
   public:
    virtual ~Chooser() = default;

    // One of `count`, 2 or more: threads that can go on, in the order of their numbers, or sleepers one of whom is woken.
    // `current` is the place among them of the thread that has had the turn; `count` when it cannot go on.
    virtual std::size_t Choose(std::size_t count, std::size_t current) = 0;
  };

  explicit Scheduler(Chooser& chooser, Grain grain = Grain::Operations);
  ~Scheduler();
  Scheduler(const Scheduler&) = delete;
  Scheduler& operator=(const Scheduler&) = delete;

  // Runs `bodies` as threads 0, 1, ... until they and all threads of the library have ended. Fails when nobody can go on, or
  // when it takes more than a hundred thousand steps; the threads that are left then stand still for ever.
  void Run(std::vector<std::function<void()>> bodies);

  // Notes a failure when `holds` is false; the first one counts. From the threads of the schedule, and after the run.
  void Expect(bool holds, const char* what);

  bool HasFailed() const;

  // Nobody could go on.
  bool IsDeadlock() const;

  // The failure, the choices that lead to it, and the last steps, a line each: thread, step, object by its number.
  std::string Report() const;

  // All steps, the same way.
  std::string Trace() const;

  // What was chosen; GivenSchedule repeats it.
  const std::vector<std::size_t>& Choices() const;

  // Of the whole run; of the calling thread so far.
  std::size_t Steps() const;
  std::size_t StepsOfThisThread() const;

  // A step begins here. Nothing on threads that are not of a schedule.
  static void Turn(const char* what);

  // The same for the primitives: nothing with Grain::Calls.
  static void Step(const char* what, const void* where) noexcept;

  // Whether the calling thread is one of a schedule.
  static bool IsInside() noexcept;

  // Sleeps until woken at `where`. With a limit, the chooser may also let the limit come: then it is false.
  enum class Limit { None, Some };
  static bool Sleep(const void* where, Limit limit = Limit::None) noexcept;
  static void WakeOne(const void* where) noexcept;
  static void WakeAll(const void* where) noexcept;

  struct State;

 private:
  std::unique_ptr<State> m_state;
};

// All schedules, one after the other. With a bound: those in which a thread that could go on is interrupted so often at most.
class AllSchedules : public Scheduler::Chooser {
 public:
  static constexpr int kNoBound = -1;

  explicit AllSchedules(int interruptions = kNoBound) : m_bound(interruptions) {}

  std::size_t Choose(std::size_t count, std::size_t current) override;

  // On to the next schedule; false after the last.
  bool Next();

  // Schedules begun.
  unsigned long long Count() const { return m_count; }

  // False when a schedule did not repeat the choices of the former one: then the test depends on something else.
  bool IsRepeatable() const { return m_repeatable; }

 private:
  struct Choice {
    std::size_t chosen;
    std::size_t count;
  };

  const int m_bound;
  std::vector<Choice> m_path;
  std::size_t m_depth = 0;
  int m_interruptions = 0;
  unsigned long long m_count = 1;
  bool m_repeatable = true;
};

// One schedule by a seed. Even seeds choose anew at each step; with odd ones a thread keeps its turn for some eight steps.
class SeededSchedule : public Scheduler::Chooser {
 public:
  explicit SeededSchedule(unsigned int seed) : m_state(seed * 2654435769u + 1u), m_steady(seed % 2 == 1) {}

  std::size_t Choose(std::size_t count, std::size_t current) override;

 private:
  unsigned int Random();

  unsigned long long m_state;
  const bool m_steady;
};

// The choices of a former run; the first thread that can go on when they are used up.
class GivenSchedule : public Scheduler::Chooser {
 public:
  explicit GivenSchedule(std::vector<std::size_t> choices) : m_choices(std::move(choices)) {}

  std::size_t Choose(std::size_t count, std::size_t current) override;

 private:
  std::vector<std::size_t> m_choices;
  std::size_t m_next = 0;
};
