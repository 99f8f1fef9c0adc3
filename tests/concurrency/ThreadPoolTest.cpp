#include "zelbase/concurrency/ThreadPool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <barrier>
#include <csignal>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "tests/support/ChildProcess.h"
#include "zelbase/platform/PlatformEvent.h"
#include "zelbase/platform/RefusingThreads.h"

namespace {

void End(ThreadPool& pool) {
  pool.Close();
  pool.Wait();
}

void ExpectAborted(const std::function<void()>& body) {
  ChildProcess child([&body] {
    body();
    return 0;
  });
  EXPECT_EQ(child.Wait(), -SIGABRT) << child.ErrorText();
}

// The system's threads, which notes when each ends.
class OrderedThreads final : public PlatformThreads {
 public:
  // Tells of each wait and each end.
  struct Watched final : PlatformThread {
    Watched(std::unique_ptr<PlatformThread> real, std::vector<std::string>& log, int number)
        : m_real(std::move(real)), m_log(log), m_number(number) {}
    ~Watched() override { m_log.push_back("delete " + std::to_string(m_number)); }
    void Resume() override { m_real->Resume(); }
    void SetPriority(int priority) override { m_real->SetPriority(priority); }
    bool Wait(unsigned long milliseconds) override {
      m_log.push_back("wait " + std::to_string(m_number));
      return m_real->Wait(milliseconds);
    }
    unsigned long Id() const override { return m_real->Id(); }

    std::unique_ptr<PlatformThread> m_real;
    std::vector<std::string>& m_log;
    const int m_number;
  };

  std::unique_ptr<PlatformThread> CreateSuspended(std::function<void()> function, int priority, std::size_t stackSize) override {
    return std::make_unique<Watched>(System().CreateSuspended(std::move(function), priority, stackSize), log, ++m_made);
  }
  unsigned long CurrentId() override { return System().CurrentId(); }
  void NameThread(unsigned long, const std::string&) override {}

  std::vector<std::string> log;

 private:
  int m_made = 0;
};

// --- Without threads ------------------------------------------------------------------------------------------------

TEST(ThreadPool, IsNotCopied) {
  EXPECT_FALSE(std::is_copy_constructible_v<ThreadPool>);
  EXPECT_FALSE(std::is_copy_assignable_v<ThreadPool>);
}

TEST(ThreadPool, WithoutThreadsTasksRunThroughExecuteOneTaskOnly) {
  ThreadPool pool(0);
  EXPECT_FALSE(pool.IsRunning());
  EXPECT_FALSE(pool.IsClosed());
  EXPECT_FALSE(pool.ExecuteOneTask());
  std::vector<int> ran;
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(pool.Dispatch([&ran, i] { ran.push_back(i); }));
  EXPECT_EQ(pool.Size(), 3u);
  EXPECT_TRUE(ran.empty());
  EXPECT_TRUE(pool.ExecuteOneTask());
  EXPECT_EQ(ran, std::vector<int>{0});
  EXPECT_EQ(pool.Size(), 2u);
  EXPECT_TRUE(pool.ExecuteOneTask());
  EXPECT_TRUE(pool.ExecuteOneTask());
  EXPECT_FALSE(pool.ExecuteOneTask());
  EXPECT_EQ(ran, (std::vector<int>{0, 1, 2}));
}

TEST(ThreadPool, WaitReturnsAtOnceWithoutThreadsClosedOrNot) {
  ThreadPool pool(0);
  pool.Wait();
  EXPECT_FALSE(pool.IsClosed());
  EXPECT_TRUE(pool.Dispatch([] {})) << "Wait does not close";
  End(pool);
  EXPECT_EQ(pool.Size(), 1u);
}

TEST(ThreadPool, ExecuteOneTaskWorksOnAClosedPool) {
  ThreadPool pool(0);
  int ran = 0;
  pool.Dispatch([&] { ++ran; });
  pool.Close();
  EXPECT_TRUE(pool.ExecuteOneTask());
  EXPECT_FALSE(pool.ExecuteOneTask());
  EXPECT_EQ(ran, 1);
}

TEST(ThreadPool, DispatchAfterCloseIsRefusedAndSizeStays) {
  ThreadPool pool(0);
  pool.Dispatch([] {});
  pool.Close();
  EXPECT_TRUE(pool.IsClosed());
  EXPECT_FALSE(pool.Dispatch([] {}));
  EXPECT_EQ(pool.Size(), 1u);
  pool.Close();
  EXPECT_TRUE(pool.IsClosed());
  EXPECT_EQ(pool.Size(), 1u);
}

TEST(ThreadPool, ClearDropsWhatHasNotBegun) {
  ThreadPool pool(0);
  int ran = 0;
  const auto alive = std::make_shared<int>(0);
  for (int i = 0; i < 1000; ++i) pool.Dispatch([&ran, alive] { ++ran; });
  EXPECT_EQ(alive.use_count(), 1001);
  pool.Clear();
  EXPECT_EQ(pool.Size(), 0u);
  EXPECT_EQ(alive.use_count(), 1);
  EXPECT_FALSE(pool.ExecuteOneTask());
  EXPECT_TRUE(pool.Dispatch([&] { ran += 10; })) << "Clear does not close";
  EXPECT_TRUE(pool.ExecuteOneTask());
  EXPECT_EQ(ran, 10);
}

TEST(ThreadPool, TasksStillQueuedWhenThePoolGoesAreDestroyedUnrun) {
  int ran = 0;
  const auto alive = std::make_shared<int>(0);
  {
    ThreadPool pool(0);
    for (int i = 0; i < 1000; ++i) pool.Dispatch([&ran, alive] { ++ran; });
  }
  EXPECT_EQ(alive.use_count(), 1);
  EXPECT_EQ(ran, 0);
}

TEST(ThreadPool, TasksAreCopiedIn) {
  ThreadPool pool(0);
  int ran = 0;
  {
    std::function<void()> task = [&] { ++ran; };
    pool.Dispatch(task);
    pool.Dispatch(task);
    task = nullptr;
  }
  EXPECT_TRUE(pool.ExecuteOneTask());
  EXPECT_TRUE(pool.ExecuteOneTask());
  EXPECT_EQ(ran, 2);
}

TEST(ThreadPool, ATaskIsGoneOnceItHasRun) {
  ThreadPool pool(0);
  const auto alive = std::make_shared<int>(0);
  pool.Dispatch([alive] {});
  EXPECT_TRUE(pool.ExecuteOneTask());
  EXPECT_EQ(alive.use_count(), 1);
}

TEST(ThreadPool, AnExceptionThroughExecuteOneTaskReachesTheCallerWithTheLockFree) {
  ThreadPool pool(0);
  pool.Dispatch([] { throw std::runtime_error("echo lost"); });
  EXPECT_THROW(pool.ExecuteOneTask(), std::runtime_error);
  bool ran = false;
  std::thread([&] {
    EXPECT_TRUE(pool.Dispatch([&] { ran = true; }));
    EXPECT_TRUE(pool.ExecuteOneTask());
  }).join();
  EXPECT_TRUE(ran);
  EXPECT_EQ(pool.Size(), 0u);
}

TEST(ThreadPool, AnEmptyTaskIsAcceptedAndRaisesBadFunctionCall) {
  ThreadPool pool(0);
  EXPECT_TRUE(pool.Dispatch(std::function<void()>()));
  EXPECT_EQ(pool.Size(), 1u);
  EXPECT_THROW(pool.ExecuteOneTask(), std::bad_function_call);
  EXPECT_EQ(pool.Size(), 0u);
}

TEST(ThreadPool, ATaskThatCannotBeCopiedLeavesTheQueueAsItWas) {
  struct Throwing {
    explicit Throwing(bool& really) : m_really(really) {}
    Throwing(const Throwing& other) : m_really(other.m_really) {
      if (m_really) throw std::bad_alloc();
    }
    void operator()() const {}
    bool& m_really;
  };
  ThreadPool pool(0);
  bool really = false;
  const std::function<void()> task = Throwing(really);
  pool.Dispatch(task);
  really = true;
  EXPECT_THROW(pool.Dispatch(task), std::bad_alloc);
  EXPECT_EQ(pool.Size(), 1u);
  EXPECT_TRUE(pool.ExecuteOneTask());
}

TEST(ThreadPool, TasksMayCallAnyOperationOfTheirPool) {
  for (const unsigned int count : {0u, 1u, 2u}) {
    ThreadPool pool(count);
    PlatformEvent second, done;
    pool.Dispatch([&] {
      EXPECT_TRUE(pool.Dispatch([&] { second.Set(); }));
      pool.ExecuteOneTask();
      second.Wait();
      EXPECT_EQ(pool.Size(), 0u);
      EXPECT_EQ(pool.IsRunning(), count > 0);
      pool.Clear();
      pool.Close();
      EXPECT_TRUE(pool.IsClosed());
      EXPECT_FALSE(pool.Dispatch([] {}));
      if (count > 0) pool.Wait();
      done.Set();
    });
    if (count == 0) pool.ExecuteOneTask();
    done.Wait();
    pool.Wait();
  }
}

// --- Threads --------------------------------------------------------------------------------------------------------

TEST(ThreadPool, MakesItsThreadsAtOnceBelowOrdinaryPriorityAndNamesThem) {
  RefusingThreads threads;
  const PlatformOverride<PlatformThreads> guard(threads);
  ThreadPool pool(3);
  EXPECT_TRUE(pool.IsRunning());
  EXPECT_EQ(threads.Requests().size(), 3u);
  End(pool);
  EXPECT_FALSE(pool.IsRunning());
  for (const auto& request : threads.Requests()) {
    EXPECT_EQ(request.priority, -1);
    EXPECT_EQ(request.stackSize, 0u);
  }
  ASSERT_EQ(threads.Namings().size(), 3u);
  for (const auto& naming : threads.Namings()) {
    EXPECT_EQ(naming.id, PlatformThreads::kCallingThread);
    EXPECT_EQ(naming.name, "ThreadPool::ThreadFunc");
  }
}

TEST(ThreadPool, AThreadThatCannotBeMadeEndsFurtherCreation) {
  RefusingThreads threads;
  const PlatformOverride<PlatformThreads> guard(threads);
  threads.RefuseNumber(3);
  ThreadPool pool(5);
  EXPECT_EQ(threads.Requests().size(), 3u);
  EXPECT_TRUE(pool.IsRunning());
  std::atomic<int> ran{0};
  for (int i = 0; i < 10; ++i) pool.Dispatch([&] { ++ran; });
  End(pool);
  EXPECT_EQ(ran, 10);
}

TEST(ThreadPool, WithoutAnyThreadToBeHadItIsAPoolWithoutThreads) {
  RefusingThreads threads;
  const PlatformOverride<PlatformThreads> guard(threads);
  threads.RefuseAll();
  ThreadPool pool(0xFFFFFFFFu);
  EXPECT_EQ(threads.Requests().size(), 1u);
  EXPECT_FALSE(pool.IsRunning());
  bool ran = false;
  pool.Dispatch([&] { ran = true; });
  pool.Wait();
  EXPECT_TRUE(pool.ExecuteOneTask());
  EXPECT_TRUE(ran);
}

TEST(ThreadPool, WaitJoinsTheLastThreadFirst) {
  OrderedThreads threads;
  const PlatformOverride<PlatformThreads> guard(threads);
  ThreadPool pool(3);
  pool.Close();
  EXPECT_TRUE(threads.log.empty());
  pool.Wait();
  EXPECT_EQ(threads.log, (std::vector<std::string>{"wait 3", "delete 3", "wait 2", "delete 2", "wait 1", "delete 1"}));
}

TEST(ThreadPool, TasksDispatchedBeforeCloseAllRunBeforeWaitReturns) {
  ThreadPool pool(2);
  std::atomic<int> ran{0};
  PlatformEvent proceed;
  for (int i = 0; i < 1000; ++i) {
    ASSERT_TRUE(pool.Dispatch([&] {
      proceed.Wait();
      ++ran;
    }));
  }
  pool.Close();
  proceed.Set();
  pool.Wait();
  EXPECT_EQ(ran, 1000);
  EXPECT_EQ(pool.Size(), 0u);
}

TEST(ThreadPool, ClearBeforeCloseDropsTheTasksNotYetStarted) {
  ThreadPool pool(1);
  std::atomic<int> ran{0};
  PlatformEvent inside, proceed;
  pool.Dispatch([&] {
    inside.Set();
    proceed.Wait();
    ++ran;
  });
  inside.Wait();
  for (int i = 0; i < 10; ++i) pool.Dispatch([&] { ran += 100; });
  EXPECT_EQ(pool.Size(), 10u) << "the running one does not count";
  pool.Clear();
  EXPECT_EQ(pool.Size(), 0u);
  proceed.Set();
  End(pool);
  EXPECT_EQ(ran, 1);
}

TEST(ThreadPool, WaitReturnsOnlyWhenALongTaskIsDone) {
  ThreadPool pool(2);
  PlatformEvent inside, proceed;
  std::atomic<bool> done{false};
  pool.Dispatch([&] {
    inside.Set();
    proceed.Wait();
    done = true;
  });
  inside.Wait();
  pool.Close();
  EXPECT_TRUE(pool.IsRunning());
  std::thread opener([&] { proceed.Set(); });
  pool.Wait();
  EXPECT_TRUE(done);
  EXPECT_FALSE(pool.IsRunning());
  opener.join();
}

TEST(ThreadPool, WaitDoesNotCloseAndBlocksUntilAnotherThreadCloses) {
  ThreadPool pool(2);
  PlatformEvent waiting;
  std::atomic<bool> closed{false};
  std::thread waiter([&] {
    waiting.Set();
    pool.Wait();
    EXPECT_TRUE(closed);
  });
  waiting.Wait();
  bool ran = false;
  PlatformEvent done;
  EXPECT_TRUE(pool.Dispatch([&] {
    ran = true;
    done.Set();
  })) << "Wait does not close";
  done.Wait();
  EXPECT_TRUE(ran);
  EXPECT_FALSE(pool.IsClosed());
  EXPECT_TRUE(pool.IsRunning());
  closed = true;
  pool.Close();
  waiter.join();
  EXPECT_FALSE(pool.IsRunning());
}

TEST(ThreadPool, SeveralMayWaitAndAllReturnWhenTheThreadsHaveEnded) {
  ThreadPool pool(3);
  std::vector<std::thread> waiters;
  for (int i = 0; i < 4; ++i) {
    waiters.emplace_back([&] {
      pool.Wait();
      EXPECT_FALSE(pool.IsRunning());
    });
  }
  pool.Close();
  for (std::thread& waiter : waiters) waiter.join();
}

TEST(ThreadPool, AWaitOnAThreadOfThePoolDoesNothing) {
  ThreadPool pool(1), other(1);
  PlatformEvent done;
  other.Close();
  pool.Dispatch([&] {
    pool.Wait();
    EXPECT_TRUE(pool.IsRunning());
    other.Wait();
    EXPECT_FALSE(other.IsRunning()) << "for another pool it waits";
    done.Set();
  });
  done.Wait();
  EXPECT_TRUE(pool.IsRunning());
  End(pool);
}

TEST(ThreadPool, TasksBeginInTheOrderOfTheirDispatch) {
  ThreadPool pool(1);
  std::vector<int> ran;
  for (int i = 0; i < 2000; ++i) pool.Dispatch([&ran, i] { ran.push_back(i); });
  End(pool);
  ASSERT_EQ(ran.size(), 2000u);
  EXPECT_TRUE(std::is_sorted(ran.begin(), ran.end()));
}

TEST(ThreadPool, TasksRunOnThreadsOfThePool) {
  ThreadPool pool(2);
  std::mutex mutex;
  std::set<unsigned long> ids;
  std::barrier both(2);
  for (int i = 0; i < 2; ++i) {
    pool.Dispatch([&] {
      both.arrive_and_wait();
      const std::lock_guard guard(mutex);
      ids.insert(PlatformThreads::System().CurrentId());
    });
  }
  End(pool);
  EXPECT_EQ(ids.size(), 2u);
  EXPECT_FALSE(ids.contains(PlatformThreads::System().CurrentId()));
}

TEST(ThreadPool, MayGoAsSoonAsATaskHasRunEvenWhileItsDispatchReturns) {
  for (int round = 0; round < 300; ++round) {
    auto pool = std::make_unique<ThreadPool>(1);
    PlatformEvent ran;
    std::thread dispatcher([raw = pool.get(), &ran] { raw->Dispatch([&ran] { ran.Set(); }); });
    ran.Wait();
    End(*pool);
    pool.reset();
    dispatcher.join();
  }
}

// --- The end of the process -----------------------------------------------------------------------------------------

TEST(ThreadPool, ItsDestructionWithThreadsEndsTheProcess) {
  ExpectAborted([] { ThreadPool pool(1); });
}

TEST(ThreadPool, ItsDestructionAfterCloseWithoutWaitEndsTheProcess) {
  ExpectAborted([] {
    OrderedThreads threads;
    const PlatformOverride<PlatformThreads> guard(threads);
    ThreadPool pool(1);
    std::atomic<bool> ran{false};
    pool.Dispatch([&] { ran = true; });
    pool.Close();
    while (!ran) std::this_thread::yield();
  });
}

TEST(ThreadPool, AnExceptionOnAThreadOfThePoolEndsTheProcess) {
  ExpectAborted([] {
    ThreadPool pool(1);
    pool.Dispatch([] { throw std::runtime_error("echo lost"); });
    End(pool);
  });
}

TEST(ThreadPool, AnEmptyTaskOnAThreadOfThePoolEndsTheProcess) {
  ExpectAborted([] {
    ThreadPool pool(1);
    pool.Dispatch(std::function<void()>());
    End(pool);
  });
}

// --- Many threads ---------------------------------------------------------------------------------------------------

class ThreadPoolThreads : public testing::TestWithParam<int> {};

TEST_P(ThreadPoolThreads, EachTaskOfManyDispatchersRunsOnce) {
  constexpr int kTasks = 2000;
  ThreadPool pool(static_cast<unsigned int>(GetParam()));
  std::vector<std::vector<std::atomic<int>>> ran;
  std::vector<std::thread> dispatchers;
  for (int i = 0; i < GetParam(); ++i) ran.emplace_back(kTasks);
  for (int i = 0; i < GetParam(); ++i) {
    dispatchers.emplace_back([&pool, &mine = ran[static_cast<std::size_t>(i)]] {
      for (std::atomic<int>& count : mine) {
        EXPECT_TRUE(pool.Dispatch([&count] { ++count; }));
        if (&count - mine.data() == kTasks / 2) pool.ExecuteOneTask();
      }
    });
  }
  for (std::thread& dispatcher : dispatchers) dispatcher.join();
  End(pool);
  for (const auto& mine : ran) {
    for (const std::atomic<int>& count : mine) EXPECT_EQ(count, 1);
  }
}

TEST_P(ThreadPoolThreads, TasksThatDispatchTasksAllRun) {
  ThreadPool pool(static_cast<unsigned int>(GetParam()));
  std::atomic<int> ran{0};
  PlatformEvent all;
  constexpr int kDepth = 10;
  const std::function<void(int)> branch = [&](int depth) {
    if (++ran == (1 << (kDepth + 1)) - 1) all.Set();
    if (depth == 0) return;
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(pool.Dispatch([&branch, depth] { branch(depth - 1); }));
  };
  pool.Dispatch([&] { branch(kDepth); });
  all.Wait();
  End(pool);
  EXPECT_EQ(ran, 2047);
}

TEST_P(ThreadPoolThreads, TasksThatWaitForEachOtherAllRun) {
  const int count = GetParam();
  ThreadPool pool(static_cast<unsigned int>(count));
  std::barrier all(count);
  std::atomic<int> ran{0};
  for (int i = 0; i < 20 * count; ++i) {
    pool.Dispatch([&] {
      all.arrive_and_wait();
      ++ran;
    });
  }
  End(pool);
  EXPECT_EQ(ran, 20 * count);
}

TEST_P(ThreadPoolThreads, AnyMixOfCallsLosesNothingButWhatClearDrops) {
  constexpr int kRounds = 1500;
  ThreadPool pool(static_cast<unsigned int>(GetParam()));
  std::atomic<int> ran{0}, accepted{0};
  const auto alive = std::make_shared<int>(0);
  std::vector<std::thread> threads;
  for (int i = 0; i < GetParam(); ++i) {
    threads.emplace_back([&, i] {
      std::mt19937 random(static_cast<unsigned int>(i));
      for (int round = 0; round < kRounds; ++round) {
        const unsigned int what = random() % 32;
        if (what == 0) {
          pool.Clear();
        } else if (what < 4) {
          pool.ExecuteOneTask();
        } else if (what == 4) {
          EXPECT_TRUE(pool.IsRunning());
          EXPECT_LE(pool.Size(), static_cast<std::size_t>(kRounds * GetParam()));
        } else if (pool.Dispatch([&ran, alive] { ++ran; })) {
          ++accepted;
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  End(pool);
  EXPECT_LE(ran, accepted);
  EXPECT_EQ(alive.use_count(), 1) << "each task has run or was dropped";
  EXPECT_EQ(pool.Size(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Counts, ThreadPoolThreads, testing::Values(2, 4, 10));

// Dispatchers that go on until they are refused, against a Close that comes at any moment, 10,000 times.
class ThreadPoolClosesLong : public testing::TestWithParam<int> {};

TEST_P(ThreadPoolClosesLong, EveryTaskDispatchedAsThePoolClosesRunsOnceOrIsRefused) {
  const int dispatchers = GetParam();
  const int rounds = dispatchers == 2 ? 10000 : 2500;
  std::unique_ptr<ThreadPool> pool;
  std::atomic<int> ran{0}, accepted{0};
  std::barrier begin(dispatchers + 1), end(dispatchers + 1);
  std::vector<std::thread> threads;
  for (int i = 0; i < dispatchers; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < rounds; ++round) {
        begin.arrive_and_wait();
        int taken = 0;
        while (taken < 50 && pool->Dispatch([&ran] { ++ran; })) ++taken;
        accepted += taken;
        end.arrive_and_wait();
      }
    });
  }
  for (int round = 0; round < rounds; ++round) {
    pool = std::make_unique<ThreadPool>(1 + static_cast<unsigned int>(round) % 2);
    ran = accepted = 0;
    begin.arrive_and_wait();
    while (accepted == 0 && pool->Size() < static_cast<std::size_t>(round) % 4 && ran == 0) std::this_thread::yield();
    End(*pool);
    const int ranBeforeWaitReturned = ran;
    end.arrive_and_wait();
    EXPECT_EQ(ranBeforeWaitReturned, accepted);
    EXPECT_EQ(ran, accepted);
    EXPECT_EQ(pool->Size(), 0u);
  }
  for (std::thread& thread : threads) thread.join();
}

INSTANTIATE_TEST_SUITE_P(Dispatchers, ThreadPoolClosesLong, testing::Values(1, 2, 4, 10));

}  // namespace
