// Runs a program of a few threads under all schedules, or under many by seeds. Neighbour: Scheduler.h.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>

#include "tests/support/Effort.h"
#include "tests/support/Scheduler.h"

// For programs of some eight steps a thread: all schedules; under a sanitizer those with three interruptions at most.
inline constexpr int kAllOrFew = static_cast<int>(Effort(AllSchedules::kNoBound, 3));

// `program` takes a Scheduler&, makes its objects, calls Run and then looks at what has come of it, with Expect. The first
// schedule that fails ends the test. Returns how many there were.
template <class Program>
unsigned long long TryAllSchedules(Program program, Scheduler::Grain grain, int interruptions = AllSchedules::kNoBound) {
  AllSchedules all(interruptions);
  do {
    Scheduler scheduler(all, grain);
    program(scheduler);
    if (scheduler.HasFailed()) {
      ADD_FAILURE() << "schedule " << all.Count() << ": " << scheduler.Report();
      return all.Count();
    }
  } while (all.Next());
  EXPECT_TRUE(all.IsRepeatable()) << "something else than the schedule decides";
  return all.Count();
}

// Two threads in one Room, which is made with the scheduler and must be empty in the end.
template <class Room, class First, class Second>
unsigned long long TryBothIn(First first, Second second, Scheduler::Grain grain, int interruptions = AllSchedules::kNoBound) {
  return TryAllSchedules(
      [&](Scheduler& scheduler) {
        Room room(scheduler);
        scheduler.Run({[&] { first(room); }, [&] { second(room); }});
        room.ExpectEmpty();
      },
      grain, interruptions);
}

// The same with the seeds from 0 to `count` - 1; `program` takes the seed too. With ZELBASE_TEST_SEED set: that one alone.
template <class Program>
void TrySeeds(unsigned int count, Program program, Scheduler::Grain grain = Scheduler::Grain::Operations) {
  const char* const given = std::getenv("ZELBASE_TEST_SEED");
  const unsigned int first = given == nullptr ? 0u : static_cast<unsigned int>(std::stoul(given));
  const unsigned int end = given == nullptr ? count : first + 1u;
  for (unsigned int seed = first; seed < end; ++seed) {
    SeededSchedule schedule(seed);
    Scheduler scheduler(schedule, grain);
    program(scheduler, seed);
    if (scheduler.HasFailed()) {
      ADD_FAILURE() << "again with ZELBASE_TEST_SEED=" << seed << ": " << scheduler.Report();
      return;
    }
  }
}

// Three threads in one Room by seeds. `body` takes the room, the scheduler and the random numbers of its thread.
template <class Room, class Body>
void TryThreeIn(unsigned int count, Body body) {
  TrySeeds(count, [&](Scheduler& scheduler, unsigned int seed) {
    Room room(scheduler);
    const auto thread = [&](unsigned int number) {
      return [&, number] {
        std::mt19937 random(seed * 3 + number);
        body(room, scheduler, random);
      };
    };
    scheduler.Run({thread(0), thread(1), thread(2)});
    room.ExpectEmpty();
  });
}

// Interleavings of two threads of `first` and `second` steps: (first + second)! / (first! second!).
constexpr unsigned long long Interleavings(unsigned int first, unsigned int second) {
  unsigned long long ways = 1;
  for (unsigned int i = 1; i <= second; ++i) ways = ways * (first + i) / i;
  return ways;
}
