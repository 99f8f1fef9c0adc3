#include "zelbase/concurrency/thread.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <thread>
#include <type_traits>
#include <vector>

#include "tests/support/ChildProcess.h"
#include "zelbase/frame/SystemProbes.h"
#include "zelbase/platform/PlatformEvent.h"
#include "zelbase/platform/RefusingThreads.h"

namespace {

// Tells when it is destroyed, and counts how often it has been copied since the first.
class Token {
 public:
  explicit Token(PlatformEvent& gone) : m_shared(std::make_shared<Shared>(gone)) {}
  std::weak_ptr<void> Watch() const { return m_shared; }

 private:
  struct Shared {
    explicit Shared(PlatformEvent& event) : gone(event) {}
    ~Shared() { gone.Set(); }
    PlatformEvent& gone;
  };
  std::shared_ptr<Shared> m_shared;
};

// No room for anything.
class ExhaustedThreads final : public PlatformThreads {
 public:
  std::unique_ptr<PlatformThread> CreateSuspended(std::function<void()>, int, std::size_t) override { throw std::bad_alloc(); }
  unsigned long CurrentId() override { return System().CurrentId(); }
  void NameThread(unsigned long, const std::string&) override {}
};

void ExpectAborted(const std::function<void()>& body) {
  ChildProcess child([&body] {
    body();
    return 0;
  });
  EXPECT_EQ(child.Wait(), -SIGABRT) << child.ErrorText();
}

TEST(TmpThread, BeginsNotJoinable) {
  tmp::thread thread;
  EXPECT_FALSE(thread.joinable());
  EXPECT_EQ(thread.native_handle(), nullptr);
}

TEST(TmpThread, IsNeitherCopiedNorMoved) {
  EXPECT_FALSE(std::is_copy_constructible_v<tmp::thread>);
  EXPECT_FALSE(std::is_copy_assignable_v<tmp::thread>);
  EXPECT_FALSE(std::is_move_constructible_v<tmp::thread>);
}

TEST(TmpThread, RunsItsFunctionOnAThreadOfItsOwnAndJoinWaitsForIt) {
  unsigned long id = 0;
  tmp::thread thread([&] { id = PlatformThreads::System().CurrentId(); });
  EXPECT_TRUE(thread.joinable());
  ASSERT_NE(thread.native_handle(), nullptr);
  const unsigned long handed = thread.native_handle()->Id();
  thread.join();
  EXPECT_EQ(id, handed);
  EXPECT_NE(id, PlatformThreads::System().CurrentId());
  EXPECT_FALSE(thread.joinable());
  EXPECT_EQ(thread.native_handle(), nullptr);
}

TEST(TmpThread, JoinAndDetachWithoutAHandleDoNothing) {
  tmp::thread never;
  never.join();
  never.detach();
  EXPECT_FALSE(never.joinable());
  tmp::thread joined([] {});
  joined.join();
  joined.join();
  joined.detach();
  EXPECT_FALSE(joined.joinable());
}

TEST(TmpThread, AlwaysRunsOneStepBelowOrdinaryPriorityOnADefaultStack) {
  RefusingThreads threads;
  const PlatformOverride<PlatformThreads> guard(threads);
  tmp::thread thread([] {});
  thread.join();
  ASSERT_EQ(threads.Requests().size(), 1u);
  EXPECT_EQ(threads.Requests()[0].priority, -1);
  EXPECT_EQ(threads.Requests()[0].stackSize, 0u);
  EXPECT_TRUE(threads.Namings().empty());
}

TEST(TmpThread, AThreadThatCannotBeMadeLeavesItNotJoinableAndThrowsNothing) {
  RefusingThreads refusing;
  refusing.RefuseAll();
  ExhaustedThreads exhausted;
  for (PlatformThreads* const threads : std::vector<PlatformThreads*>{&refusing, &exhausted}) {
    const PlatformOverride<PlatformThreads> guard(*threads);
    bool ran = false;
    tmp::thread thread([&] { ran = true; });
    EXPECT_FALSE(thread.joinable());
    thread.join();
    EXPECT_FALSE(ran);
  }
}

TEST(TmpThread, ADetachedThreadGoesOnByItself) {
  PlatformEvent proceed, done;
  {
    tmp::thread thread([&] {
      proceed.Wait();
      done.Set();
    });
    thread.detach();
    EXPECT_FALSE(thread.joinable());
  }
  proceed.Set();
  done.Wait();
}

TEST(TmpThread, KeepsItsFunctionUntilItIsDestroyedAlsoAfterJoin) {
  PlatformEvent gone;
  {
    tmp::thread thread([token = Token(gone)] {});
    thread.join();
    EXPECT_FALSE(gone.TryWait());
  }
  EXPECT_TRUE(gone.TryWait());
}

TEST(TmpThread, TheRunningThreadKeepsTheFunctionAliveByItself) {
  PlatformEvent proceed, ended, gone;
  {
    tmp::thread thread([&proceed, &ended, token = Token(gone)] {
      proceed.Wait();
      EXPECT_FALSE(token.Watch().expired());
      ended.Set();
    });
    thread.detach();
  }
  EXPECT_FALSE(gone.TryWait());
  proceed.Set();
  ended.Wait();
  gone.Wait();
}

TEST(TmpThread, SwapExchangesThreadsAndFunctions) {
  PlatformEvent proceed, firstGone, secondGone;
  auto first = std::make_unique<tmp::thread>([&proceed, token = Token(firstGone)] { proceed.Wait(); });
  auto second = std::make_unique<tmp::thread>();
  PlatformThread* const handle = first->native_handle();
  first->swap(*second);
  EXPECT_FALSE(first->joinable());
  EXPECT_EQ(second->native_handle(), handle);
  first.reset();
  proceed.Set();
  second->join();
  EXPECT_FALSE(firstGone.TryWait()) << "the function went along";
  second->swap(*second);
  second.reset();
  EXPECT_TRUE(firstGone.TryWait());
}

TEST(TmpThread, SwapDetachAndDestructionDoNotRaceWithTheStart) {
  constexpr int kRounds = 300;
  std::atomic<int> ran{0};
  PlatformEvent all;
  const auto function = [&] {
    if (++ran == 2 * kRounds) all.Set();
  };
  for (int round = 0; round < kRounds; ++round) {
    tmp::thread detached(function);
    detached.detach();
    tmp::thread swapped;
    {
      tmp::thread made(function);
      made.swap(swapped);
    }
    swapped.join();
  }
  all.Wait();
  EXPECT_EQ(ran, 2 * kRounds);
}

TEST(TmpThread, AJoinByTheThreadItselfDoesNothing) {
  PlatformEvent made, tried;
  tmp::thread* self = nullptr;
  tmp::thread thread([&] {
    made.Wait();
    self->join();
    EXPECT_TRUE(self->joinable());
    tried.Set();
  });
  self = &thread;
  made.Set();
  tried.Wait();
  thread.join();
  EXPECT_FALSE(thread.joinable());
}

TEST(TmpThread, ItsDestructionWhileJoinableEndsTheProcess) {
  ExpectAborted([] {
    PlatformEvent never;
    tmp::thread thread([&] { never.Wait(); });
  });
}

TEST(TmpThread, ItsDestructionEndsTheProcessEvenWhenTheFunctionHasReturned) {
  ExpectAborted([] {
    tmp::thread thread([] {});
    thread.native_handle()->Wait(PlatformThread::kNoLimit);
  });
}

TEST(TmpThread, AnEmptyFunctionEndsTheProcess) {
  ExpectAborted([] {
    tmp::thread thread{std::function<void()>()};
    thread.join();
  });
}

TEST(TmpThread, AnExceptionThatLeavesTheFunctionEndsTheProcess) {
  ExpectAborted([] {
    tmp::thread thread([] { throw std::runtime_error("sounder"); });
    thread.join();
  });
}

TEST(TmpThread, HardwareConcurrencyIsTheNumberOfLogicalProcessors) {
  EXPECT_EQ(tmp::thread::hardware_concurrency(), static_cast<unsigned int>(::sysconf(_SC_NPROCESSORS_ONLN)));
  EXPECT_EQ(tmp::thread::hardware_concurrency(), GetTotalNumberOfCores());
}

}  // namespace
