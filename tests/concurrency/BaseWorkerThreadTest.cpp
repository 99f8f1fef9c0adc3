#include "zelbase/concurrency/BaseWorkerThread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "zelbase/platform/PlatformEvent.h"
#include "zelbase/platform/RefusingThreads.h"

namespace {

constexpr unsigned long kNoLimit = 0xFFFFFFFFul;

// Each pass is a function of the test's, told the number of the pass, from 1.
class Worker final : public BaseWorkerThread {
 public:
  explicit Worker(std::function<bool(int)> pass) : m_pass(std::move(pass)) {}
  bool ThreadWork() override { return m_pass(++m_passes); }

  int Passes() const { return m_passes; }
  using BaseWorkerThread::SetError;

 private:
  std::function<bool(int)> m_pass;
  std::atomic<int> m_passes{0};
};

// A pass that holds the worker until it is let go on, and then ends it.
class HeldWorker final : public BaseWorkerThread {
 public:
  bool ThreadWork() override {
    inside.Set();
    proceed.Wait();
    return true;
  }
  PlatformEvent inside;
  PlatformEvent proceed;
};

using Message = std::tuple<unsigned int, unsigned long long, long long>;

// A window that keeps what it gets.
class Mailbox {
 public:
  Mailbox()
      : window([this](unsigned int message, unsigned long long first, long long second) {
          const std::lock_guard guard(m_mutex);
          m_messages.emplace_back(message, first, second);
        }) {}
  std::vector<Message> Messages() {
    const std::lock_guard guard(m_mutex);
    return m_messages;
  }
  CWnd window;

 private:
  std::mutex m_mutex;
  std::vector<Message> m_messages;
};

// The system's threads, each of which tells its very end: also one that the worker has let go.
class WatchedThreads final : public PlatformThreads {
 public:
  std::unique_ptr<PlatformThread> CreateSuspended(std::function<void()> function, int priority, std::size_t stackSize) override {
    return System().CreateSuspended(
        [this, function = std::move(function)] {
          function();
          const std::lock_guard guard(m_mutex);
          ++m_ended;
          m_changed.notify_all();
        },
        priority, stackSize);
  }
  unsigned long CurrentId() override { return System().CurrentId(); }
  void NameThread(unsigned long, const std::string&) override {}

  // Returns when `count` threads have ended, with the number of those that have.
  int AwaitEnds(int count) {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_ended >= count; });
    return m_ended;
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_changed;
  int m_ended = 0;
};

bool Nothing(int) { return true; }

TEST(BaseWorkerThread, BeginsWithAllFieldsZero) {
  const Worker worker(Nothing);
  EXPECT_EQ(worker.GetEndThread(), 0);
  EXPECT_EQ(worker.GetError(), 0u);
  EXPECT_EQ(worker.GetNotifyWnd(), nullptr);
}

TEST(BaseWorkerThread, ItsDestructorIsNotVirtual) { EXPECT_FALSE(std::has_virtual_destructor_v<BaseWorkerThread>); }

TEST(BaseWorkerThread, RepeatsItsPassUntilItIsStopped) {
  PlatformEvent hundred;
  Worker worker([&](int pass) {
    if (pass == 100) hundred.Set();
    return true;
  });
  EXPECT_TRUE(worker.StartBaseWorkerThread(0, "Worker"));
  hundred.Wait();
  EXPECT_TRUE(worker.StopBaseWorkerThread(kNoLimit));
  const int passes = worker.Passes();
  EXPECT_GE(passes, 100);
  EXPECT_NE(worker.GetEndThread(), 0);
  EXPECT_EQ(worker.GetError(), 0u);
  EXPECT_TRUE(worker.StopBaseWorkerThread(0)) << "nothing is left to stop";
  EXPECT_EQ(worker.Passes(), passes);
}

TEST(BaseWorkerThread, AStopOfAWorkerNeverStartedIsTrueAndSetsTheEndFlag) {
  Worker worker(Nothing);
  EXPECT_TRUE(worker.StopBaseWorkerThread(0));
  EXPECT_NE(worker.GetEndThread(), 0);
  EXPECT_EQ(worker.GetError(), 0u);
}

TEST(BaseWorkerThread, NotifyEndEndsTheLoopAfterThePassUnderWay) {
  for (const auto end : {&BaseWorkerThread::NotifyEnd, &BaseWorkerThread::SetEndThread}) {
    HeldWorker worker;
    ASSERT_TRUE(worker.StartBaseWorkerThread(0, ""));
    worker.inside.Wait();
    (worker.*end)();
    EXPECT_EQ(worker.GetEndThread(), 1);
    worker.proceed.Set();
    EXPECT_TRUE(worker.StopBaseWorkerThread(kNoLimit));
  }
}

TEST(BaseWorkerThread, CanBeStartedAgainAfterAStop) {
  PlatformEvent passed(PlatformEvent::Mode::AutoReset);
  Worker worker([&](int) {
    passed.Set();
    return true;
  });
  for (int start = 0; start < 3; ++start) {
    ASSERT_TRUE(worker.StartBaseWorkerThread(0, ""));
    EXPECT_EQ(worker.GetEndThread(), 0);
    passed.Wait();
    ASSERT_TRUE(worker.StopBaseWorkerThread(kNoLimit));
    passed.Reset();
  }
}

TEST(BaseWorkerThread, AStopThatTimesOutIsFalseWithErrorTwoAndMayBeTriedAgain) {
  HeldWorker worker;
  ASSERT_TRUE(worker.StartBaseWorkerThread(0, ""));
  worker.inside.Wait();
  EXPECT_FALSE(worker.StopBaseWorkerThread(0));
  EXPECT_EQ(worker.GetError(), 2u);
  EXPECT_FALSE(worker.StopBaseWorkerThread(3));
  worker.proceed.Set();
  EXPECT_TRUE(worker.StopBaseWorkerThread(0xFFFFFFFFFFFFFFFFul));
  EXPECT_EQ(worker.GetError(), 2u) << "a good stop clears nothing";
  ASSERT_TRUE(worker.StartBaseWorkerThread(0, ""));
  EXPECT_EQ(worker.GetError(), 2u) << "nor does a start";
  EXPECT_TRUE(worker.StopBaseWorkerThread(kNoLimit));
}

TEST(BaseWorkerThread, AFailedPassSetsErrorFourAndDoesNotEndTheLoop) {
  PlatformEvent tenth;
  Worker worker([&](int pass) {
    if (pass == 10) tenth.Set();
    return false;
  });
  ASSERT_TRUE(worker.StartBaseWorkerThread(0, ""));
  tenth.Wait();
  EXPECT_EQ(worker.GetError(), 4u);
  EXPECT_TRUE(worker.StopBaseWorkerThread(kNoLimit));
  EXPECT_GE(worker.Passes(), 10);
}

TEST(BaseWorkerThread, TheErrorIsReplacedNotCombined) {
  Worker worker(Nothing);
  worker.SetError(2);
  worker.SetError(4);
  EXPECT_EQ(worker.GetError(), 4u);
  worker.SetError(0x80000000u);
  EXPECT_EQ(worker.GetError(), 0x80000000u);
}

// --- The message after each pass ------------------------------------------------------------------------------------

TEST(BaseWorkerThread, PostsOneMessageAfterEveryPassTheLastOneIncluded) {
  Mailbox mailbox;
  Worker* self = nullptr;
  Worker worker([&](int pass) {
    EXPECT_EQ(mailbox.Messages().size(), static_cast<std::size_t>(pass - 1)) << "the pass before has been told";
    if (pass == 3) self->NotifyEnd();
    return pass != 2;
  });
  self = &worker;
  worker.SetNotifyWnd(&mailbox.window);
  EXPECT_EQ(worker.GetNotifyWnd(), &mailbox.window);
  EXPECT_EQ(BaseWorkerThread::BaseWorkerThreadFunction(&worker), 0u);
  const std::vector<Message> expected = {{0x8007u, 0u, 0}, {0x8007u, 1u, 0}, {0x8007u, 0u, 0}};
  EXPECT_EQ(mailbox.Messages(), expected);
  EXPECT_EQ(worker.Passes(), 3);
}

TEST(BaseWorkerThread, PostsOnTheWorkersThreadBeforeTheEndIsLookedFor) {
  PlatformThreads& threads = PlatformThreads::System();
  unsigned long passThread = 0, postThread = 0;
  Worker worker([&](int) {
    passThread = threads.CurrentId();
    return true;
  });
  CWnd window([&](unsigned int, unsigned long long, long long) {
    postThread = threads.CurrentId();
    worker.NotifyEnd();  // by the receiver: still in time to end the loop after this very pass
  });
  worker.SetNotifyWnd(&window);
  ASSERT_TRUE(worker.StartBaseWorkerThread(0, ""));
  while (worker.GetEndThread() == 0) std::this_thread::yield();
  EXPECT_TRUE(worker.StopBaseWorkerThread(kNoLimit));
  EXPECT_EQ(worker.Passes(), 1);
  EXPECT_EQ(postThread, passThread);
  EXPECT_NE(postThread, threads.CurrentId());
}

TEST(BaseWorkerThread, WithoutANotifyWindowNothingIsPosted) {
  Mailbox mailbox;
  Worker* self = nullptr;
  Worker worker([&](int pass) {
    if (pass == 2) self->SetNotifyWnd(nullptr);
    if (pass == 4) self->NotifyEnd();
    return true;
  });
  self = &worker;
  worker.SetNotifyWnd(&mailbox.window);
  BaseWorkerThread::BaseWorkerThreadFunction(&worker);
  EXPECT_EQ(mailbox.Messages().size(), 1u) << "the window is looked up after each pass";
}

// --- The thread function --------------------------------------------------------------------------------------------

TEST(BaseWorkerThread, TheThreadFunctionReturnsAtOnceWhenTheEndFlagIsSet) {
  Worker worker(Nothing);
  worker.SetEndThread();
  EXPECT_EQ(BaseWorkerThread::BaseWorkerThreadFunction(static_cast<BaseWorkerThread*>(&worker)), 0u);
  EXPECT_EQ(worker.Passes(), 0);
}

TEST(BaseWorkerThread, TheThreadFunctionIgnoresNull) { EXPECT_EQ(BaseWorkerThread::BaseWorkerThreadFunction(nullptr), 0u); }

// --- What is asked of the platform ----------------------------------------------------------------------------------

TEST(BaseWorkerThread, AThreadThatCannotBeMadeIsErrorOne) {
  RefusingThreads threads;
  threads.RefuseAll();
  const PlatformOverride<PlatformThreads> guard(threads);
  Worker worker(Nothing);
  worker.SetEndThread();
  EXPECT_FALSE(worker.StartBaseWorkerThread(0, "x"));
  EXPECT_EQ(worker.GetError(), 1u);
  EXPECT_EQ(worker.GetEndThread(), 0) << "cleared before the thread is made";
  EXPECT_TRUE(threads.Namings().empty());
  EXPECT_TRUE(worker.StopBaseWorkerThread(kNoLimit));
  EXPECT_EQ(worker.Passes(), 0);
}

TEST(BaseWorkerThread, AFailedSecondStartLeavesTheFirstThreadToBeStopped) {
  RefusingThreads threads;
  threads.RefuseNumber(2);
  const PlatformOverride<PlatformThreads> guard(threads);
  HeldWorker worker;
  ASSERT_TRUE(worker.StartBaseWorkerThread(0, ""));
  worker.inside.Wait();
  EXPECT_FALSE(worker.StartBaseWorkerThread(0, ""));
  EXPECT_FALSE(worker.StopBaseWorkerThread(0)) << "the first still runs";
  worker.proceed.Set();
  EXPECT_TRUE(worker.StopBaseWorkerThread(kNoLimit));
}

TEST(BaseWorkerThread, PassesPriorityAndNameOn) {
  RefusingThreads threads;
  const PlatformOverride<PlatformThreads> guard(threads);
  unsigned long id = 0;
  PlatformEvent passed(PlatformEvent::Mode::AutoReset);
  Worker worker([&](int) {
    id = PlatformThreads::System().CurrentId();
    passed.Set();
    return true;
  });
  ASSERT_TRUE(worker.StartBaseWorkerThread(-1, "Depth reader"));
  passed.Wait();
  ASSERT_TRUE(worker.StopBaseWorkerThread(kNoLimit));
  const unsigned long first = id;
  ASSERT_TRUE(worker.StartBaseWorkerThread(2, ""));
  ASSERT_TRUE(worker.StopBaseWorkerThread(kNoLimit));

  const auto requests = threads.Requests();
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_EQ(requests[0].priority, -1);
  EXPECT_EQ(requests[0].stackSize, 0u);
  EXPECT_EQ(requests[1].priority, 2);
  const auto namings = threads.Namings();
  ASSERT_EQ(namings.size(), 2u);
  EXPECT_EQ(namings[0].name, "Depth reader");
  EXPECT_EQ(namings[0].id, first);
  EXPECT_EQ(namings[1].name, "BaseWorkerThread");
}

// --- Odd calls ------------------------------------------------------------------------------------------------------

TEST(BaseWorkerThread, AStopFromInsideThreadWorkFailsInsteadOfWaitingForItself) {
  for (const unsigned long limit : {0ul, 1000000ul, kNoLimit, ~0ul}) {
    Worker* self = nullptr;
    PlatformEvent started, tried;
    bool stopped = true;
    Worker worker([&](int) {
      started.Wait();
      stopped = self->StopBaseWorkerThread(limit);
      tried.Set();
      return true;
    });
    self = &worker;
    ASSERT_TRUE(worker.StartBaseWorkerThread(0, ""));
    started.Set();
    tried.Wait();
    EXPECT_FALSE(stopped);
    EXPECT_EQ(worker.GetError(), 2u);
    EXPECT_EQ(worker.GetEndThread(), 1);
    EXPECT_TRUE(worker.StopBaseWorkerThread(kNoLimit));
    EXPECT_EQ(worker.Passes(), 1);
  }
}

TEST(BaseWorkerThread, ASecondStartRunsASecondThreadAndLetsTheFirstGo) {
  WatchedThreads threads;
  const PlatformOverride<PlatformThreads> guard(threads);
  std::atomic<unsigned long> ids[2] = {0, 0};
  PlatformEvent inside[2];
  PlatformEvent firstProceeds, secondProceeds;
  Worker worker([&](int pass) {
    ids[pass - 1] = threads.CurrentId();
    inside[pass - 1].Set();
    (pass == 1 ? firstProceeds : secondProceeds).Wait();
    return true;
  });
  ASSERT_TRUE(worker.StartBaseWorkerThread(0, ""));
  inside[0].Wait();
  ASSERT_TRUE(worker.StartBaseWorkerThread(0, ""));
  inside[1].Wait();
  EXPECT_NE(ids[0], ids[1]) << "both threads are inside their pass";
  worker.NotifyEnd();
  secondProceeds.Set();
  EXPECT_TRUE(worker.StopBaseWorkerThread(kNoLimit)) << "waits for the second alone";
  firstProceeds.Set();
  EXPECT_EQ(threads.AwaitEnds(2), 2);
  EXPECT_EQ(worker.Passes(), 2);
}

TEST(BaseWorkerThread, CopiesShareTheThreadAndTakeTheOtherFieldsOver) {
  class Plain final : public BaseWorkerThread {
   public:
    explicit Plain(HeldWorker& held) : m_held(&held) {}
    bool ThreadWork() override { return m_held->ThreadWork(); }
    using BaseWorkerThread::SetError;

   private:
    HeldWorker* m_held;
  };
  HeldWorker held;
  CWnd window;
  Plain worker(held);
  worker.SetNotifyWnd(&window);
  worker.SetError(77);
  ASSERT_TRUE(worker.StartBaseWorkerThread(0, ""));
  held.inside.Wait();

  Plain copy(worker);
  Plain assigned(held);
  assigned = worker;
  for (Plain* const other : {&copy, &assigned}) {
    EXPECT_EQ(other->GetNotifyWnd(), &window);
    EXPECT_EQ(other->GetError(), 77u);
    EXPECT_EQ(other->GetEndThread(), 0);
    EXPECT_FALSE(other->StopBaseWorkerThread(0)) << "the thread is the original's";
  }
  EXPECT_EQ(worker.GetEndThread(), 0) << "flags are each one's own";
  EXPECT_EQ(worker.GetError(), 77u);
  held.proceed.Set();
  EXPECT_TRUE(worker.StopBaseWorkerThread(kNoLimit));
  EXPECT_TRUE(copy.StopBaseWorkerThread(kNoLimit));
  EXPECT_TRUE(assigned.StopBaseWorkerThread(0));
}

TEST(BaseWorkerThread, AnAssignmentToItselfChangesNothing) {
  Worker worker(Nothing);
  BaseWorkerThread& same = worker;
  ASSERT_TRUE(worker.StartBaseWorkerThread(0, ""));
  static_cast<BaseWorkerThread&>(worker) = same;
  EXPECT_TRUE(worker.StopBaseWorkerThread(kNoLimit));
}

TEST(BaseWorkerThread, AThreadStillHeldWhenTheWorkerGoesIsLetGo) {
  WatchedThreads threads;
  const PlatformOverride<PlatformThreads> guard(threads);
  {
    HeldWorker worker;
    worker.proceed.Set();
    ASSERT_TRUE(worker.StartBaseWorkerThread(0, ""));
    worker.inside.Wait();
    worker.NotifyEnd();
    EXPECT_EQ(threads.AwaitEnds(1), 1);
  }  // not stopped: neither waits nor leaks, nor ends the process
}

TEST(BaseWorkerThreadLong, StartsAndStopsTenThousandTimesWithATimeOutAndASecondStop) {
  HeldWorker worker;
  for (int round = 0; round < 10000; ++round) {
    worker.inside.Reset();
    worker.proceed.Reset();
    ASSERT_TRUE(worker.StartBaseWorkerThread(0, ""));
    worker.inside.Wait();
    ASSERT_FALSE(worker.StopBaseWorkerThread(0)) << "the pass is under way";
    ASSERT_EQ(worker.GetError(), 2u);
    worker.proceed.Set();
    ASSERT_TRUE(worker.StopBaseWorkerThread(kNoLimit));
    ASSERT_TRUE(worker.StopBaseWorkerThread(0)) << "nothing is left to stop";
  }
}

class BaseWorkerThreadCounts : public testing::TestWithParam<int> {};

TEST_P(BaseWorkerThreadCounts, SeveralStopsAtOnceAllSucceed) {
  for (int round = 0; round < 30; ++round) {
    Worker worker(Nothing);
    ASSERT_TRUE(worker.StartBaseWorkerThread(0, ""));
    std::atomic<int> stopped{0};
    std::vector<std::thread> stoppers;
    for (int i = 0; i < GetParam(); ++i) {
      stoppers.emplace_back([&] { stopped += worker.StopBaseWorkerThread(kNoLimit) ? 1 : 0; });
    }
    for (std::thread& stopper : stoppers) stopper.join();
    EXPECT_EQ(stopped, GetParam());
  }
}

TEST_P(BaseWorkerThreadCounts, WorkersRunBesideEachOther) {
  std::vector<std::unique_ptr<HeldWorker>> workers;
  for (int i = 0; i < GetParam(); ++i) {
    workers.push_back(std::make_unique<HeldWorker>());
    ASSERT_TRUE(workers.back()->StartBaseWorkerThread(i % 3 - 1, ""));
  }
  for (const auto& worker : workers) worker->inside.Wait();
  for (const auto& worker : workers) worker->proceed.Set();
  for (const auto& worker : workers) EXPECT_TRUE(worker->StopBaseWorkerThread(kNoLimit));
}

INSTANTIATE_TEST_SUITE_P(Counts, BaseWorkerThreadCounts, testing::Values(2, 4, 10));

}  // namespace
