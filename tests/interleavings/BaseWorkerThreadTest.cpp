// BaseWorkerThread under the schedules of the worker's thread beside one or two that start and stop it: all of some eight
// steps after the start, those with few interruptions of longer ones, and a thousand seeds of three threads by two hundred.
// What holds in each: no pass begins after a stop that has succeeded; each pass is followed by its message; a stop that times out sets error 2
// and may be tried again; a failed pass sets error 4 and the loop goes on; the flag is set after a stop and clear after a start.

#include "zelbase/concurrency/BaseWorkerThread.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/Effort.h"
#include "tests/support/Interleavings.h"

namespace {

using Grain = Scheduler::Grain;

constexpr unsigned int kSeeds = static_cast<unsigned int>(Effort(1000, 250));
constexpr unsigned long kNoLimit = PlatformThread::kNoLimit;

// Counts its passes, and ends by itself after some, so that the schedules come to an end.
class Worker : public BaseWorkerThread {
 public:
  Worker(Scheduler& scheduler, int passes) : m_scheduler(scheduler), m_left(passes) { SetNotifyWnd(&m_window); }

  bool ThreadWork() override {
    m_scheduler.Expect(!m_stopped, "no pass begins after a stop");
    m_scheduler.Expect(m_messages == m_passes, "each pass was followed by its message");
    ++m_passes;
    Scheduler::Turn("works");
    if (--m_left <= 0) NotifyEnd();
    return !fails;
  }

  void NoteStop(bool succeeded) {
    if (!succeeded) return;
    m_stopped = true;
    m_scheduler.Expect(m_messages == m_passes, "the last pass was followed by its message");
    m_scheduler.Expect(GetEndThread() != 0, "the end flag is set");
  }
  void NoteStart(int passes) {
    m_stopped = false;
    m_left = passes;
  }
  int Passes() const { return m_passes; }

  bool fails = false;

 private:
  Scheduler& m_scheduler;
  int m_left;
  int m_passes = 0;
  int m_messages = 0;
  bool m_stopped = false;
  CWnd m_window{[this](unsigned int message, unsigned long long first, long long second) {
    ++m_messages;
    m_scheduler.Expect(message == WM_WORKER_PASS && first == (fails ? 1u : 0u) && second == 0, "the message of a pass");
  }};
};

TEST(BaseWorkerThreadInterleavingsLong, NoPassBeginsAfterAStopInAllOfTwoThreads) {
  bool sawNone = false, sawAll = false;
  const unsigned long long count = TryAllSchedules(
      [&](Scheduler& scheduler) {
        Worker worker(scheduler, 2);
        scheduler.Run({[&] {
          scheduler.Expect(worker.StartBaseWorkerThread(0, "worker"), "there are threads");
          worker.NoteStop(worker.StopBaseWorkerThread(kNoLimit));
        }});
        scheduler.Expect(worker.GetError() == WORKER_NO_ERROR, "nothing went wrong");
        sawNone |= worker.Passes() == 0;
        sawAll |= worker.Passes() == 2;
      },
      Grain::Operations, kAllOrFew);
  EXPECT_GT(count, 100u);
  EXPECT_TRUE(sawNone);
  EXPECT_TRUE(sawAll);
}

// The limit may come at any moment; a further stop then finds the thread again.
TEST(BaseWorkerThreadInterleavingsLong, AStopThatTimesOutIsTriedAgain) {
  bool sawTimeout = false, sawNone = false;
  TryAllSchedules(
      [&](Scheduler& scheduler) {
        Worker worker(scheduler, 1);
        scheduler.Run({[&] {
          worker.StartBaseWorkerThread(0, "");
          const bool first = worker.StopBaseWorkerThread(10);
          worker.NoteStop(first);
          scheduler.Expect(worker.GetError() == (first ? WORKER_NO_ERROR : WORKER_ERROR_TIMEOUT), "2 when it timed out");
          const bool second = worker.StopBaseWorkerThread(kNoLimit);
          scheduler.Expect(second, "without a limit it succeeds");
          worker.NoteStop(second);
          sawTimeout |= !first;
          sawNone |= first;
        }});
      },
      Grain::Operations, 3);
  EXPECT_TRUE(sawTimeout);
  EXPECT_TRUE(sawNone);
}

TEST(BaseWorkerThreadInterleavingsLong, AFailedPassDoesNotEndTheLoop) {
  bool sawTwo = false;
  TryAllSchedules(
      [&](Scheduler& scheduler) {
        Worker worker(scheduler, 2);
        worker.fails = true;
        scheduler.Run({[&] {
          worker.StartBaseWorkerThread(0, "");
          worker.NoteStop(worker.StopBaseWorkerThread(kNoLimit));
          const unsigned int error = worker.Passes() > 0 ? WORKER_ERROR_PASS : WORKER_NO_ERROR;
          scheduler.Expect(worker.GetError() == error, "4 once a pass has failed");
        }});
        sawTwo |= worker.Passes() == 2;
      },
      Grain::Operations, 3);
  EXPECT_TRUE(sawTwo);
}

// Two threads stop the same worker, one of them after a mere request: both stops succeed, with nothing left.
TEST(BaseWorkerThreadInterleavingsLong, TwoThreadsStopTheSameWorker) {
  const unsigned long long count = TryAllSchedules(
      [&](Scheduler& scheduler) {
        Worker worker(scheduler, 2);
        worker.StartBaseWorkerThread(0, "");
        const auto stop = [&] { worker.NoteStop(worker.StopBaseWorkerThread(kNoLimit)); };
        scheduler.Run({stop, [&] {
                         worker.NotifyEnd();
                         stop();
                       }});
        scheduler.Expect(worker.GetError() == WORKER_NO_ERROR, "nothing went wrong");
      },
      Grain::Operations, 2);
  EXPECT_GT(count, 500u);
}

// One thread starts and stops at random, the second asks for the end and tries short stops; the third is the worker's.
TEST(BaseWorkerThreadInterleavingsLong, StartsAndStopsByThreeThreadsOfTwoHundredSteps) {
  TrySeeds(kSeeds, [](Scheduler& scheduler, unsigned int seed) {
    Worker worker(scheduler, 0);
    scheduler.Run({[&] {
                     std::mt19937 random(seed);
                     while (scheduler.StepsOfThisThread() < 200) {
                       worker.NoteStart(static_cast<int>(random() % 5) + 1);
                       worker.StartBaseWorkerThread(0, "");
                       while (random() % 3 != 0) Scheduler::Turn("lets it work");
                       const unsigned long limit = random() % 2 == 0 ? 5 : kNoLimit;
                       bool stopped = worker.StopBaseWorkerThread(limit);
                       scheduler.Expect(stopped || limit != kNoLimit, "without a limit it succeeds");
                       if (!stopped) stopped = worker.StopBaseWorkerThread(kNoLimit);
                       worker.NoteStop(stopped);
                     }
                   },
                   [&] {
                     std::mt19937 random(seed + 1000000);
                     while (scheduler.StepsOfThisThread() < 200) {
                       if (random() % 8 == 0) worker.NotifyEnd();
                       scheduler.Expect(worker.GetError() == WORKER_NO_ERROR || worker.GetError() == WORKER_ERROR_TIMEOUT,
                                        "no pass has failed");
                     }
                   }});
  });
}

}  // namespace
