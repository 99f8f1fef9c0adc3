#include "zelbase/concurrency/ParallelProcessor.h"

#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <csignal>
#include <functional>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/ChildProcess.h"
#include "zelbase/platform/PlatformEvent.h"
#include "zelbase/platform/RefusingThreads.h"

namespace {

using process_item = ParallelProcessor::process_item;

// Each run is a function of the test's.
class Job : public Processor {
 public:
  explicit Job(std::function<bool(Job&)> process = [](Job&) { return true; }) : m_process(std::move(process)) {}
  bool Process() override { return m_process(*this); }

 private:
  std::function<bool(Job&)> m_process;
};

Job* Succeeds() { return new Job; }

Job* Fails(const std::string& message) {
  return new Job([message](Job& job) {
    job.SetErrorMessage(message);
    return false;
  });
}

// Runs until it is stopped, and then fails: which counts as successful.
Job* RunsUntilStopped(std::atomic<int>& stopped) {
  return new Job([&stopped](Job& job) {
    while (!job.IsStopped()) std::this_thread::yield();
    ++stopped;
    job.SetErrorMessage("stopped");
    return false;
  });
}

unsigned long CurrentId() { return PlatformThreads::System().CurrentId(); }

TEST(ParallelProcessor, IsAProcessorAndNotCopied) {
  EXPECT_TRUE((std::is_base_of_v<Processor, ParallelProcessor>));
  EXPECT_FALSE(std::is_abstract_v<ParallelProcessor>);
  EXPECT_FALSE(std::is_copy_constructible_v<ParallelProcessor>);
}

TEST(ParallelProcessor, ItsItemIsAnAggregateOfOwnerProcessorAndResult) {
  EXPECT_TRUE(std::is_aggregate_v<process_item>);
  ParallelProcessor owner;
  Job job;
  const process_item item{&owner, &job, true};
  EXPECT_EQ(item.owner, &owner);
  EXPECT_EQ(item.processor, &job);
  EXPECT_TRUE(item.result);
  const process_item empty{};
  EXPECT_FALSE(empty.result);
}

TEST(ParallelProcessor, WithoutProcessorsItSucceedsAtProgressZero) {
  RefusingThreads threads;
  const PlatformOverride<PlatformThreads> guard(threads);
  ParallelProcessor all;
  EXPECT_TRUE(all.Initialize());
  EXPECT_TRUE(all.Process());
  EXPECT_EQ(all.GetProgress(), 0.0);
  all.Stop();
  EXPECT_TRUE(all.IsStopped());
  EXPECT_TRUE(threads.Requests().empty());
}

// --- Processors that it owns ----------------------------------------------------------------------------------------

TEST(ParallelProcessor, DeletesItsProcessorsLastFirst) {
  class Named final : public Job {
   public:
    Named(int number, std::vector<int>& gone) : m_number(number), m_gone(gone) {}
    ~Named() override { m_gone.push_back(m_number); }

   private:
    int m_number;
    std::vector<int>& m_gone;
  };
  std::vector<int> gone;
  {
    ParallelProcessor all;
    for (int i = 0; i < 3; ++i) all.AddProcessor(new Named(i, gone));
    EXPECT_TRUE(gone.empty());
  }
  EXPECT_EQ(gone, (std::vector<int>{2, 1, 0}));
}

TEST(ParallelProcessor, IgnoresNullItselfAndWhatItHasAlready) {
  int runs = 0;
  ParallelProcessor all;
  Job* const job = new Job([&](Job&) {
    ++runs;
    return true;
  });
  all.AddProcessor(nullptr);
  all.AddProcessor(&all);
  all.AddProcessor(job);
  all.AddProcessor(job);
  EXPECT_TRUE(all.Process());
  EXPECT_EQ(runs, 1);
}

TEST(ParallelProcessor, AddProcessorSetsNoProgressParent) {
  ParallelProcessor all;
  Job* const job = Succeeds();
  all.AddProcessor(job);
  job->SetProgress(0.5);
  EXPECT_EQ(job->GetProgress(), 0.5);
  EXPECT_EQ(all.GetProgress(), 0.5);
}

// --- Initialize -----------------------------------------------------------------------------------------------------

class Initialized final : public Job {
 public:
  Initialized(std::vector<int>& log, int number, bool succeeds) : m_log(log), m_number(number), m_succeeds(succeeds) {}
  bool Initialize() override {
    Job::Initialize();
    m_log.push_back(m_number);
    if (!m_succeeds) SetErrorMessage("number " + std::to_string(m_number));
    return m_succeeds;
  }

 private:
  std::vector<int>& m_log;
  int m_number;
  bool m_succeeds;
};

TEST(ParallelProcessor, InitializesItselfAndThenEachInOrder) {
  std::vector<int> log;
  ParallelProcessor all;
  for (int i = 0; i < 3; ++i) all.AddProcessor(new Initialized(log, i, true));
  all.Stop();
  all.SetErrorMessage("old");
  EXPECT_TRUE(all.Initialize());
  EXPECT_FALSE(all.IsStopped());
  EXPECT_EQ(all.ErrorMessage(), "");
  EXPECT_EQ(log, (std::vector<int>{0, 1, 2}));
}

TEST(ParallelProcessor, InitializeEndsAtTheFirstFailureWithItsMessage) {
  std::vector<int> log;
  ParallelProcessor all;
  for (int i = 0; i < 4; ++i) all.AddProcessor(new Initialized(log, i, i == 0 || i == 3));
  EXPECT_FALSE(all.Initialize());
  EXPECT_EQ(all.ErrorMessage(), "number 1");
  EXPECT_EQ(log, (std::vector<int>{0, 1}));
}

// --- Progress -------------------------------------------------------------------------------------------------------

TEST(ParallelProcessor, ProgressIsTheSumNotTheMean) {
  ParallelProcessor all;
  Job* const first = Succeeds();
  Job* const second = Succeeds();
  all.AddProcessor(first);
  all.AddProcessor(second);
  first->SetProgress(0.25);
  second->SetProgress(0.5);
  EXPECT_EQ(all.GetProgress(), 0.75);
  first->SetProgress(0.7);
  second->SetProgress(0.7);
  EXPECT_EQ(all.GetProgress(), 1.0) << "clamped";
}

TEST(ParallelProcessor, ItsOwnProgressAndPartsAreNeverRead) {
  ParallelProcessor all;
  Job* const job = Succeeds();
  all.AddProcessor(job);
  all.SetProgress(0.5);
  all.PushProgressPart(0.5);
  EXPECT_EQ(all.GetProgress(), 0.0);
  job->SetProgress(0.25);
  EXPECT_EQ(all.GetProgress(), 0.25);
  job->SetProgressParent(&all);
  job->SetProgress(0.75);
  EXPECT_EQ(all.GetProgress(), 0.25) << "what a child reports to it is not read either";
}

TEST(ParallelProcessor, SumsWhatOverridesGiveAndClampsTheSumAlone) {
  class Odd final : public Job {
   public:
    explicit Odd(double progress) : m_progress(progress) {}
    double GetProgress() const override { return m_progress; }

   private:
    double m_progress;
  };
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const std::vector<std::pair<std::vector<double>, double>> rows = {{{3.0, -2.5}, 0.5},
                                                                    {{-1.0, 0.5}, 0.0},
                                                                    {{0.5, kInfinity}, 1.0},
                                                                    {{kInfinity, -kInfinity}, 0.0},
                                                                    {{0.5, std::numeric_limits<double>::quiet_NaN()}, 0.0}};
  for (const auto& [parts, sum] : rows) {
    ParallelProcessor all;
    for (const double part : parts) all.AddProcessor(new Odd(part));
    EXPECT_EQ(all.GetProgress(), sum) << parts[0] << ", " << parts[1];
  }
}

// --- Stop -----------------------------------------------------------------------------------------------------------

TEST(ParallelProcessor, StopStopsItselfAndEachInOrder) {
  class Stopped final : public Job {
   public:
    Stopped(const Processor& owner, std::vector<int>& log, int number) : m_owner(owner), m_log(log), m_number(number) {}
    void Stop() override {
      EXPECT_TRUE(m_owner.IsStopped()) << "the owner comes first";
      m_log.push_back(m_number);
      Job::Stop();
    }

   private:
    const Processor& m_owner;
    std::vector<int>& m_log;
    int m_number;
  };
  std::vector<int> log;
  ParallelProcessor all;
  for (int i = 0; i < 3; ++i) all.AddProcessor(new Stopped(all, log, i));
  all.Stop();
  EXPECT_EQ(log, (std::vector<int>{0, 1, 2}));
}

// --- ProcessItem and ThreadProc -------------------------------------------------------------------------------------

TEST(ParallelProcessor, ProcessItemTakesTheResultAndStopsTheOwnerOnFailure) {
  ParallelProcessor owner;
  Job* const sibling = Succeeds();
  Job* const failing = Fails("x");
  owner.AddProcessor(sibling);
  owner.AddProcessor(failing);

  process_item good{&owner, sibling, false};
  ParallelProcessor::ProcessItem(good);
  EXPECT_TRUE(good.result);
  EXPECT_FALSE(owner.IsStopped());

  process_item bad{&owner, failing, true};
  ParallelProcessor::ProcessItem(bad);
  EXPECT_FALSE(bad.result) << "the failing one is stopped too, but its result stays";
  EXPECT_TRUE(owner.IsStopped());
  EXPECT_TRUE(sibling->IsStopped());
  EXPECT_TRUE(failing->IsStopped());
}

TEST(ParallelProcessor, ProcessItemCountsAStoppedProcessorAsSuccessful) {
  ParallelProcessor owner;
  Job job([](Job& self) {
    self.Stop();
    return false;
  });
  process_item item{&owner, &job, false};
  ParallelProcessor::ProcessItem(item);
  EXPECT_TRUE(item.result);
  EXPECT_FALSE(owner.IsStopped());
}

TEST(ParallelProcessor, ProcessItemOfAnIncompleteItemIsQuiet) {
  ParallelProcessor owner;
  process_item empty{&owner, nullptr, true};
  ParallelProcessor::ProcessItem(empty);
  EXPECT_TRUE(empty.result);
  Job job([](Job&) { return false; });
  process_item orphan{nullptr, &job, true};
  ParallelProcessor::ProcessItem(orphan);
  EXPECT_FALSE(orphan.result);
  EXPECT_FALSE(job.IsStopped());
}

TEST(ParallelProcessor, ThreadProcTellsItsNameAndRunsTheItem) {
  RefusingThreads threads;
  const PlatformOverride<PlatformThreads> guard(threads);
  ParallelProcessor owner;
  Job job;
  process_item item{&owner, &job, false};
  EXPECT_EQ(ParallelProcessor::ThreadProc(&item), 0u);
  EXPECT_TRUE(item.result);
  EXPECT_EQ(ParallelProcessor::ThreadProc(nullptr), 0u);
  ASSERT_EQ(threads.Namings().size(), 2u);
  EXPECT_EQ(threads.Namings()[0].id, PlatformThreads::kCallingThread);
  EXPECT_EQ(threads.Namings()[0].name, "ParallelProcessor::ThreadProc");
}

// --- Process --------------------------------------------------------------------------------------------------------

TEST(ParallelProcessor, OneProcessorRunsOnTheCallingThread) {
  RefusingThreads threads;
  const PlatformOverride<PlatformThreads> guard(threads);
  unsigned long id = 0;
  ParallelProcessor all;
  all.AddProcessor(new Job([&](Job&) {
    id = CurrentId();
    return true;
  }));
  EXPECT_TRUE(all.Process());
  EXPECT_EQ(id, CurrentId());
  EXPECT_TRUE(threads.Requests().empty());
  EXPECT_TRUE(threads.Namings().empty());
}

TEST(ParallelProcessor, AllButTheLastRunOnThreadsOfTheirOwnBelowOrdinaryPriority) {
  RefusingThreads threads;
  const PlatformOverride<PlatformThreads> guard(threads);
  std::vector<unsigned long> ids(4);
  ParallelProcessor all;
  for (unsigned long& id : ids) {
    all.AddProcessor(new Job([&id](Job&) {
      id = CurrentId();
      return true;
    }));
  }
  EXPECT_TRUE(all.Process());
  EXPECT_EQ(ids[3], CurrentId());
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = i + 1; j < 4; ++j) EXPECT_NE(ids[i], ids[j]);
  }
  ASSERT_EQ(threads.Requests().size(), 3u);
  for (const auto& request : threads.Requests()) {
    EXPECT_EQ(request.priority, -1);
    EXPECT_EQ(request.stackSize, 0u);
  }
  EXPECT_EQ(threads.Namings().size(), 3u);
}

class ParallelProcessorCounts : public testing::TestWithParam<int> {};

// A pool, or a limit by the number of cores, would hang here.
TEST_P(ParallelProcessorCounts, ProcessorsThatWaitForEachOtherAllRunAtOnce) {
  const int count = GetParam();
  std::barrier meeting(count);
  ParallelProcessor all;
  for (int i = 0; i < count; ++i) {
    all.AddProcessor(new Job([&](Job&) {
      for (int round = 0; round < 20; ++round) meeting.arrive_and_wait();
      return true;
    }));
  }
  EXPECT_TRUE(all.Process());
  EXPECT_TRUE(all.Process()) << "once more";
}

TEST_P(ParallelProcessorCounts, AFailingProcessorStopsItsSiblings) {
  const int count = GetParam();
  for (int failing = 0; failing < count; ++failing) {
    std::atomic<int> stopped{0};
    ParallelProcessor all;
    for (int i = 0; i < count; ++i) all.AddProcessor(i == failing ? Fails("no echo") : RunsUntilStopped(stopped));
    ASSERT_TRUE(all.Initialize());
    EXPECT_FALSE(all.Process());
    EXPECT_EQ(stopped, count - 1);
    EXPECT_EQ(all.ErrorMessage(), "no echo");
    EXPECT_TRUE(all.IsStopped());

    EXPECT_TRUE(all.Initialize()) << "ready for a further run";
    EXPECT_FALSE(all.IsStopped());
  }
}

TEST_P(ParallelProcessorCounts, AStopFromOutsideMakesAllSuccessful) {
  const int count = GetParam();
  std::atomic<int> stopped{0};
  std::barrier begun(count + 1);
  ParallelProcessor all;
  for (int i = 0; i < count; ++i) {
    all.AddProcessor(new Job([&](Job& job) {
      begun.arrive_and_wait();
      while (!job.IsStopped()) std::this_thread::yield();
      ++stopped;
      return false;
    }));
  }
  std::thread stopper([&] {
    begun.arrive_and_wait();
    all.Stop();
  });
  EXPECT_TRUE(all.Process());
  stopper.join();
  EXPECT_EQ(stopped, count);
  EXPECT_EQ(all.ErrorMessage(), "");
}

TEST_P(ParallelProcessorCounts, ProgressMayBeReadWhileTheThreadsRun) {
  const int count = GetParam();
  std::atomic<bool> done{false};
  ParallelProcessor all;
  for (int i = 0; i < count; ++i) {
    all.AddProcessor(new Job([count](Job& job) {
      for (int step = 0; step <= 1000; ++step) job.SetProgress(step / 1000.0 / count);
      return true;
    }));
  }
  std::thread reader([&] {
    double before = 0.0;
    while (!done) {
      const double progress = all.GetProgress();
      EXPECT_GE(progress, before);
      EXPECT_LE(progress, 1.0);
      before = progress;
    }
  });
  EXPECT_TRUE(all.Process());
  done = true;
  reader.join();
  EXPECT_NEAR(all.GetProgress(), 1.0, 1e-12);
}

TEST_P(ParallelProcessorCounts, AProcessorAddedDuringARunTakesPartFromTheNextOneOn) {
  const int count = GetParam();
  std::atomic<int> runs{0};
  ParallelProcessor all;
  for (int i = 0; i < count; ++i) {
    all.AddProcessor(new Job([&](Job&) {
      all.AddProcessor(new Job([&](Job&) {
        runs += 100;
        return true;
      }));
      ++runs;
      return true;
    }));
  }
  EXPECT_TRUE(all.Process());
  EXPECT_EQ(runs, count);
}

INSTANTIATE_TEST_SUITE_P(Counts, ParallelProcessorCounts, testing::Values(2, 4, 10));

TEST(ParallelProcessor, TellsTheFirstFailureInItemOrderNotInTime) {
  PlatformEvent lastHasFailed;
  ParallelProcessor all;
  all.AddProcessor(Succeeds());
  // Runs past its stop, which comes with the failure of the last one, and is not stopped when it ends.
  class Deaf final : public Job {
   public:
    explicit Deaf(PlatformEvent& event)
        : Job([&event](Job& job) {
            event.Wait();
            job.SetErrorMessage("the earlier item");
            return false;
          }) {}
    void Stop() override {}
  };
  all.AddProcessor(new Deaf(lastHasFailed));
  all.AddProcessor(new Job([&](Job& job) {
    job.SetErrorMessage("the earlier moment");
    lastHasFailed.Set();
    return false;
  }));
  EXPECT_FALSE(all.Process());
  EXPECT_EQ(all.ErrorMessage(), "the earlier item");
}

TEST(ParallelProcessor, AProcessorThatFailsAfterBeingStoppedDoesNotFailTheWhole) {
  ParallelProcessor all;
  for (int i = 0; i < 2; ++i) {
    all.AddProcessor(new Job([](Job& job) {
      job.Stop();
      job.SetErrorMessage("not told");
      return false;
    }));
  }
  EXPECT_TRUE(all.Process());
  EXPECT_EQ(all.ErrorMessage(), "");
  EXPECT_FALSE(all.IsStopped());
}

TEST(ParallelProcessor, MayBeAProcessorOfAnother) {
  std::atomic<int> stopped{0};
  ParallelProcessor outer;
  ParallelProcessor* const inner = new ParallelProcessor;
  inner->AddProcessor(RunsUntilStopped(stopped));
  inner->AddProcessor(RunsUntilStopped(stopped));
  outer.AddProcessor(inner);
  outer.AddProcessor(Fails("outer"));
  EXPECT_FALSE(outer.Process());
  EXPECT_EQ(outer.ErrorMessage(), "outer");
  EXPECT_EQ(stopped, 2);
  EXPECT_TRUE(inner->IsStopped());
}

TEST(ParallelProcessor, AFailureWithinAnotherIsNotSeenBecauseItHasStoppedTheInnerOne) {
  ParallelProcessor outer;
  ParallelProcessor* const inner = new ParallelProcessor;
  inner->AddProcessor(Succeeds());
  inner->AddProcessor(Fails("inner"));
  outer.AddProcessor(inner);
  outer.AddProcessor(Succeeds());
  ASSERT_TRUE(outer.Initialize());
  EXPECT_TRUE(outer.Process());
  EXPECT_EQ(outer.ErrorMessage(), "");
  EXPECT_FALSE(outer.IsStopped());
  EXPECT_TRUE(inner->IsStopped());
  EXPECT_EQ(inner->ErrorMessage(), "inner");
}

// --- Threads that cannot be made ------------------------------------------------------------------------------------

TEST(ParallelProcessor, WithoutThreadsEachRunsOnTheCallingThreadInOrder) {
  RefusingThreads threads;
  threads.RefuseAll();
  const PlatformOverride<PlatformThreads> guard(threads);
  std::vector<int> log;
  ParallelProcessor all;
  for (int i = 0; i < 4; ++i) {
    all.AddProcessor(new Job([&log, i](Job&) {
      log.push_back(i);
      return true;
    }));
  }
  EXPECT_TRUE(all.Process());
  EXPECT_EQ(log, (std::vector<int>{0, 1, 2, 3}));
  EXPECT_EQ(threads.Requests().size(), 3u) << "each is tried";
}

TEST(ParallelProcessor, AProcessorWithoutAThreadRunsOnceAllThreadsHaveBeenStarted) {
  RefusingThreads threads;
  threads.RefuseNumber(1);
  const PlatformOverride<PlatformThreads> guard(threads);
  PlatformEvent secondBegun;
  unsigned long firstId = 0;
  ParallelProcessor all;
  all.AddProcessor(new Job([&](Job&) {
    secondBegun.Wait();  // hangs when the second has not been started before
    firstId = CurrentId();
    return true;
  }));
  all.AddProcessor(new Job([&](Job&) {
    secondBegun.Set();
    return true;
  }));
  all.AddProcessor(Succeeds());
  EXPECT_TRUE(all.Process());
  EXPECT_EQ(firstId, CurrentId());
}

TEST(ParallelProcessor, AFailureOnTheCallingThreadStopsTheOthersThere) {
  RefusingThreads threads;
  threads.RefuseAll();
  const PlatformOverride<PlatformThreads> guard(threads);
  std::atomic<int> stopped{0};
  ParallelProcessor all;
  all.AddProcessor(Fails("first"));
  all.AddProcessor(RunsUntilStopped(stopped));
  EXPECT_FALSE(all.Process());
  EXPECT_EQ(stopped, 1);
  EXPECT_EQ(all.ErrorMessage(), "first");
}

// --- Exceptions -----------------------------------------------------------------------------------------------------

TEST(ParallelProcessor, AnExceptionOnTheCallingThreadStopsTheOthersWaitsAndReachesTheCaller) {
  std::atomic<int> stopped{0};
  ParallelProcessor all;
  all.AddProcessor(RunsUntilStopped(stopped));
  all.AddProcessor(RunsUntilStopped(stopped));
  all.AddProcessor(new Job([](Job&) -> bool { throw std::runtime_error("last"); }));
  EXPECT_THROW(all.Process(), std::runtime_error);
  EXPECT_EQ(stopped, 2) << "both had ended";
}

TEST(ParallelProcessor, AnExceptionOnAThreadEndsTheProcess) {
  ChildProcess child([] {
    ParallelProcessor all;
    all.AddProcessor(new Job([](Job&) -> bool { throw std::runtime_error("first"); }));
    all.AddProcessor(Succeeds());
    all.Process();
    return 0;
  });
  EXPECT_EQ(child.Wait(), -SIGABRT) << child.ErrorText();
}

}  // namespace
