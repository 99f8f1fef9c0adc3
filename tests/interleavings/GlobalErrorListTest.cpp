// The global error list and its reporters under all schedules of two threads by eight calls or some eight steps, and under a
// thousand seeds of three threads by two hundred. What holds in each: a reporter hears of each error once as often as it is
// registered, and of none after its removal has returned; one report is told at a time; no error has two entries; entries
// stand by time; what was reported and not cleared is there.

#include "zelbase/errors/GlobalErrorList.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "tests/errors/ProbeError.h"
#include "tests/support/Effort.h"
#include "tests/support/Interleavings.h"

namespace {

using Grain = Scheduler::Grain;

constexpr unsigned int kSeeds = static_cast<unsigned int>(Effort(1000, 250));
constexpr unsigned int kSteps = 8;

GlobalErrorList& List() { return GlobalErrorList::Get(); }

// Empty, with "General" alone and without reporters, before and after each schedule.
class Fresh {
 public:
  Fresh() { List().Clear(); }
  ~Fresh() { List().Clear(); }
};

// Hears, and gives others a turn while it does.
class Listener : public ErrorReporterBase {
 public:
  explicit Listener(Scheduler& scheduler) : m_scheduler(scheduler) {}

  void Report(const Error& error) override {
    m_scheduler.Expect(!m_removed, "a reporter that was removed is not called");
    m_scheduler.Expect(!s_hearing, "one report at a time is told");
    s_hearing = true;
    Scheduler::Turn("hears");
    ++heard[error.Signature()];
    s_hearing = false;
    if (whenHeard) whenHeard();
  }

  void Add() {
    m_removed = false;
    List().AddReporter(this);
  }
  void Remove() {
    List().RemoveReporter(this);
    m_removed = true;
  }

  std::map<unsigned int, int> heard;
  std::function<void()> whenHeard;

 private:
  static inline bool s_hearing = false;
  Scheduler& m_scheduler;
  bool m_removed = false;
};

void ExpectInOrder(Scheduler& scheduler) {
  std::map<unsigned int, int> entries;
  for (int i = 0; i < List().NumErrors(false); ++i) {
    ++entries[List()[i].Signature()];
    scheduler.Expect(i == 0 || List()[i - 1].ErrorTime() <= List()[i].ErrorTime(), "entries stand by time");
  }
  for (const auto& [signature, count] : entries) scheduler.Expect(count == 1, "no error has two entries");
}

// With a call a step, each gives what a plain copy of the state says.
class Copied {
 public:
  explicit Copied(Scheduler& scheduler) : m_scheduler(scheduler), m_listener(scheduler) {}
  ~Copied() { m_listener.Remove(); }

  void Report(unsigned int signature) {
    Scheduler::Turn("report");
    ReportError(ProbeError(signature, 100), "");
    std::erase(m_stored, signature);
    m_stored.push_back(signature);  // all times are equal: the newest stands last
    if (m_added) m_heard[signature] += m_added;
    Compare();
  }
  void Add() {
    Scheduler::Turn("add");
    List().AddReporter(&m_listener);
    ++m_added;
  }
  void Remove() {
    Scheduler::Turn("remove");
    List().RemoveReporter(&m_listener);
    m_added = 0;
  }
  void Clear() {
    Scheduler::Turn("clear");
    List().Clear();
    m_stored.clear();
    Compare();
  }

 private:
  // Hears only.
  struct Counter : ErrorReporterBase {
    explicit Counter(Scheduler&) {}
    void Report(const Error& error) override { ++heard[error.Signature()]; }
    void Remove() { List().RemoveReporter(this); }
    std::map<unsigned int, int> heard;
  };

  void Compare() {
    bool equal = List().NumErrors(false) == static_cast<int>(m_stored.size());
    for (std::size_t i = 0; equal && i < m_stored.size(); ++i) {
      equal = List()[static_cast<int>(i)].Signature() == m_stored[i];
    }
    m_scheduler.Expect(equal, "the entries are those of the copy");
    m_scheduler.Expect(m_listener.heard == m_heard, "the reporter has heard what the copy has");
  }

  Scheduler& m_scheduler;
  Counter m_listener;
  std::vector<unsigned int> m_stored;
  std::map<unsigned int, int> m_heard;
  int m_added = 0;
};

TEST(GlobalErrorListInterleavingsLong, EightCallsOfTwoThreadsGiveWhatACopyGivesInAllOrders) {
  const unsigned long long count = TryAllSchedules(
      [](Scheduler& scheduler) {
        const Fresh fresh;
        Copied copied(scheduler);
        scheduler.Run({[&] {
                         copied.Report(1);
                         copied.Add();
                         copied.Report(2);
                         copied.Report(1);
                         copied.Remove();
                         copied.Report(3);
                         copied.Add();
                         copied.Report(2);
                       },
                       [&] {
                         copied.Add();
                         copied.Report(3);
                         copied.Report(4);
                         copied.Remove();
                         copied.Report(1);
                         copied.Clear();
                         copied.Report(4);
                         copied.Add();
                       }});
      },
      Grain::Calls);
  EXPECT_EQ(count, Interleavings(kSteps, kSteps));
}

// One thread reports and another takes the reporter away: it waits for a report that is being told.
TEST(GlobalErrorListInterleavingsLong, AReporterHearsNothingOnceItsRemovalHasReturned) {
  bool sawHeard = false, sawNot = false;
  const unsigned long long count = TryAllSchedules(
      [&](Scheduler& scheduler) {
        const Fresh fresh;
        Listener listener(scheduler);
        listener.Add();
        scheduler.Run({[&] { ReportError(ProbeError(1, 100), ""); }, [&] { listener.Remove(); }});
        scheduler.Expect(List().NumErrors(true) == 1, "the error is stored");
        sawHeard |= listener.heard[1] == 1;
        sawNot |= listener.heard[1] == 0;
      },
      Grain::Operations, kAllOrFew);
  EXPECT_GT(count, 100u);
  EXPECT_TRUE(sawHeard);
  EXPECT_TRUE(sawNot);
}

TEST(GlobalErrorListInterleavingsLong, TwoThreadsThatReportAreToldOneAfterTheOther) {
  const unsigned long long count = TryAllSchedules(
      [](Scheduler& scheduler) {
        const Fresh fresh;
        Listener listener(scheduler);
        listener.Add();
        scheduler.Run({[&] { ReportError(ProbeError(1, 100), ""); }, [&] { ReportError(ProbeError(2, 100), "Sonar"); }});
        scheduler.Expect(listener.heard[1] == 1 && listener.heard[2] == 1, "each is told once");
        scheduler.Expect(List().NumErrors(true) == 2, "each is stored");
        listener.Remove();
      },
      Grain::Operations, 3);
  EXPECT_GT(count, 100u);
}

// A reporter that takes itself away, puts another in and reports in its turn, as it hears of the first error.
TEST(GlobalErrorListInterleavingsLong, AReporterComesAndGoesWhileItHears) {
  const unsigned long long count = TryAllSchedules(
      [](Scheduler& scheduler) {
        const Fresh fresh;
        Listener leaving(scheduler), coming(scheduler);
        leaving.whenHeard = [&] {
          leaving.Remove();
          coming.Add();
          ReportError(ProbeError(3, 100), "");
        };
        leaving.Add();
        scheduler.Run({[&] { ReportError(ProbeError(1, 100), ""); }, [&] { ReportError(ProbeError(2, 100), ""); }});
        scheduler.Expect(leaving.heard[1] + leaving.heard[2] == 1 && leaving.heard[3] == 0, "it has heard of the first");
        scheduler.Expect(coming.heard[1] + coming.heard[2] == 1 && coming.heard[3] == 1, "its successor of the rest");
        scheduler.Expect(List().NumErrors(false) == 3, "all are stored");
        coming.Remove();
      },
      Grain::Operations, 2);
  EXPECT_GT(count, 100u);
}

// What GetErrorWithID has found stays until the finder unlocks, whoever clears meanwhile.
TEST(GlobalErrorListInterleavingsLong, WhatWasFoundStaysUntilTheFinderUnlocks) {
  bool sawFound = false, sawNone = false;
  TryAllSchedules(
      [&](Scheduler& scheduler) {
        const Fresh fresh;
        ProbeError error(7, 100);
        const unsigned int id = error.ID();
        ReportError(error, "");
        scheduler.Run({[&] {
                         const Error* const found = List().GetErrorWithID(id);
                         sawFound |= found != nullptr;
                         sawNone |= found == nullptr;
                         if (found == nullptr) return;
                         Scheduler::Turn("looks at it");
                         scheduler.Expect(found->Signature() == 7 && List().NumErrors(true) == 1, "it is still there");
                         List().Unlock();
                       },
                       [&] { List().Clear(); }});
        scheduler.Expect(List().NumErrors(true) == 0, "it is gone in the end");
      },
      Grain::Operations, 3);
  EXPECT_TRUE(sawFound);
  EXPECT_TRUE(sawNone);
}

TEST(GlobalErrorListInterleavingsLong, ReportersComeAndGoWithThreeThreadsByTwoHundredSteps) {
  TrySeeds(kSeeds, [](Scheduler& scheduler, unsigned int seed) {
    const Fresh fresh;
    Listener listeners[3] = {Listener(scheduler), Listener(scheduler), Listener(scheduler)};
    Listener always(scheduler);
    always.Add();
    std::map<unsigned int, int> reported;
    std::vector<unsigned int> ids = {0};
    const auto body = [&](unsigned int number) {
      return [&, number] {
        std::mt19937 random(seed * 3 + number);
        while (scheduler.StepsOfThisThread() < 200) {
          const unsigned int what = random() % 8;
          if (what < 4) {
            const unsigned int signature = static_cast<unsigned int>(random() % 10);
            ++reported[signature];
            const ProbeError error(signature, static_cast<long long>(100 + random() % 5));
            ids.push_back(error.ID());
            ReportError(error, "");
          } else if (what == 4) {
            listeners[number].Add();
          } else if (what == 5) {
            listeners[number].Remove();
          } else if (what == 6) {
            List().Lock();
            ExpectInOrder(scheduler);
            List().Unlock();
          } else if (const Error* const found = List().GetErrorWithID(ids[random() % ids.size()])) {
            Scheduler::Turn("looks at it");
            scheduler.Expect(found->Signature() < 10, "it is one of those reported");
            List().Unlock();
          }
        }
        listeners[number].Remove();
      };
    };
    scheduler.Run({body(0), body(1), body(2)});
    always.Remove();
    scheduler.Expect(always.heard == reported, "whoever stays hears of everything");
    ExpectInOrder(scheduler);
    scheduler.Expect(List().NumErrors(true) == static_cast<int>(reported.size()), "what was reported is there");
  });
}

}  // namespace
