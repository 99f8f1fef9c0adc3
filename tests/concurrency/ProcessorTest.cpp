#include "zelbase/concurrency/Processor.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <limits>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

class Job : public Processor {
 public:
  bool Process() override { return true; }
};

TEST(Processor, BeginsReadyAndMayOfferAStop) {
  const Job job;
  EXPECT_FALSE(job.IsStopped());
  EXPECT_TRUE(job.AllowStop());
  EXPECT_EQ(job.ErrorMessage(), "");
  EXPECT_EQ(job.GetProgress(), 0.0);
}

TEST(Processor, IsAbstractWithAVirtualDestructor) {
  EXPECT_TRUE(std::is_abstract_v<Processor>);
  EXPECT_TRUE(std::has_virtual_destructor_v<Processor>);
  EXPECT_FALSE(std::is_copy_constructible_v<Job>);
}

// Where the compiler looks a virtual operation up: a pointer to it holds the place in the table, in bytes, and one.
template <class Operation>
std::size_t Slot(Operation operation) {
  std::size_t words[2];
  static_assert(sizeof operation == sizeof words);
  std::memcpy(words, &operation, sizeof words);
  return (words[0] - 1) / sizeof(void*);
}

TEST(Processor, VirtualOperationsStandInTheOrderDestructorInitializeProcessProgressStop) {
  constexpr std::size_t kAfterDestructors = 2;  // this compiler makes two of the one
  EXPECT_EQ(Slot(&Processor::Initialize), kAfterDestructors);
  EXPECT_EQ(Slot(&Processor::Process), kAfterDestructors + 1);
  EXPECT_EQ(Slot(&Processor::GetProgress), kAfterDestructors + 2);
  EXPECT_EQ(Slot(&Processor::Stop), kAfterDestructors + 3);
}

TEST(Processor, InitializeMakesReadyAndLeavesAllowStopAndTheParentAlone) {
  Job job, parent;
  job.SetProgress(0.5);
  job.PushProgressPart(0.5);
  job.SetProgressParent(&parent);
  job.SetAllowStop(false);
  job.SetErrorMessage("no depth");
  job.Stop();
  EXPECT_TRUE(job.IsStopped());
  EXPECT_EQ(job.ErrorMessage(), "no depth");
  EXPECT_EQ(job.GetProgress(), 0.5);

  EXPECT_TRUE(job.Initialize());
  EXPECT_FALSE(job.IsStopped());
  EXPECT_EQ(job.ErrorMessage(), "");
  EXPECT_EQ(job.GetProgress(), 0.0);
  EXPECT_FALSE(job.AllowStop());
  job.SetProgress(0.25);
  EXPECT_EQ(parent.GetProgress(), 0.25);
}

TEST(Processor, StopDoesNotAskWhetherAStopIsAllowed) {
  Job job;
  job.SetAllowStop(false);
  job.Stop();
  EXPECT_TRUE(job.IsStopped());
  job.SetAllowStop(true);
  EXPECT_TRUE(job.AllowStop());
}

// --- Parts ----------------------------------------------------------------------------------------------------------

TEST(Processor, ProgressIsCarriedOutwardsThroughAllParts) {
  Job job;
  job.SetProgress(0.5);
  job.PushProgressPart(0.5);  // from 0.5 on
  EXPECT_EQ(job.GetProgress(), 0.5);
  job.PushProgressPart(0.5);  // from 0 on
  job.SetProgress(1.0);
  EXPECT_EQ(job.GetProgress(), 0.75);
}

TEST(Processor, APartBeginsAtProgressZeroWhereTheEnclosingOneStood) {
  Job job;
  job.SetProgress(0.25);
  job.PushProgressPart(0.5);
  EXPECT_EQ(job.GetProgress(), 0.25);
  job.SetProgress(0.5);
  EXPECT_EQ(job.GetProgress(), 0.5);
}

TEST(Processor, PopEndsAPartAtTheEndOfItsShare) {
  Job job;
  job.SetProgress(0.5);
  job.PushProgressPart(0.25);
  job.PopProgressPart();
  EXPECT_EQ(job.GetProgress(), 0.75);
}

TEST(Processor, PopDoesNotAskHowFarThePartHasCome) {
  for (const double reached : {0.0, 0.1, 1.0, 7.0, kNaN}) {
    Job job;
    job.PushProgressPart(0.25);
    job.SetProgress(reached);
    job.PopProgressPart();
    EXPECT_EQ(job.GetProgress(), 0.25) << reached;
  }
}

TEST(Processor, PopWithoutAPartDoesNothing) {
  Job job;
  job.SetProgress(0.375);
  job.PopProgressPart();
  EXPECT_EQ(job.GetProgress(), 0.375);
  job.PushProgressPart(0.25);
  job.PopProgressPart();
  job.PopProgressPart();
  EXPECT_EQ(job.GetProgress(), 0.625);
}

TEST(Processor, ResetLeavesAllParts) {
  Job job;
  job.SetProgress(0.5);
  job.PushProgressPart(0.5);
  job.PushProgressPart(0.5);
  job.ResetProgress();
  EXPECT_EQ(job.GetProgress(), 0.0);
  job.SetProgress(1.0);
  EXPECT_EQ(job.GetProgress(), 1.0);
}

TEST(Processor, ManyPartsInsideEachOther) {
  Job job;
  double end = 0.0, scale = 1.0;
  for (int depth = 0; depth < 40; ++depth) {
    job.SetProgress(0.5);
    job.PushProgressPart(0.5);
    end += 0.5 * scale;
    scale *= 0.5;
  }
  EXPECT_EQ(job.GetProgress(), end);  // 1 - 2^-40, in which every step is exact
}

// --- Clamping -------------------------------------------------------------------------------------------------------

TEST(Processor, ProgressIsKeptAsGivenAndClampedInItsReadingOnly) {
  Job job;
  job.SetProgress(3.0);
  EXPECT_EQ(job.GetProgress(), 1.0);
  job.PushProgressPart(-1.0);  // from 3 on
  job.SetProgress(2.5);
  EXPECT_EQ(job.GetProgress(), 0.5) << "2.5 * -1 + 3";
  job.SetProgress(-4.0);
  EXPECT_EQ(job.GetProgress(), 1.0);
  job.SetProgress(9.0);
  EXPECT_EQ(job.GetProgress(), 0.0);
}

TEST(Processor, WhatIsNotANumberReadsAsZero) {
  Job job;
  job.SetProgress(kNaN);
  EXPECT_EQ(job.GetProgress(), 0.0);
  job.SetProgress(kInfinity);
  EXPECT_EQ(job.GetProgress(), 1.0);
  job.PushProgressPart(0.0);
  EXPECT_EQ(job.GetProgress(), 1.0);
  job.SetProgress(-kInfinity);
  EXPECT_EQ(job.GetProgress(), 0.0) << "-inf * 0 + inf";
  job.ResetProgress();
  job.PushProgressPart(kNaN);
  EXPECT_EQ(job.GetProgress(), 0.0);
}

// --- Parents --------------------------------------------------------------------------------------------------------

TEST(Processor, SetProgressGoesToTheTopmostParentUnclampedPastTheParts) {
  Job child, middle, top;
  child.SetProgressParent(&middle);
  middle.SetProgressParent(&top);
  child.PushProgressPart(0.5);
  middle.PushProgressPart(0.25);
  child.SetProgress(5.0);
  EXPECT_EQ(child.GetProgress(), 0.0);
  EXPECT_EQ(middle.GetProgress(), 0.0);
  EXPECT_EQ(top.GetProgress(), 1.0);
  top.PushProgressPart(-0.5);  // from the unclamped 5 on
  child.SetProgress(9.0);
  EXPECT_EQ(top.GetProgress(), 0.5) << "into the parent's innermost part: 9 * -0.5 + 5";
}

TEST(Processor, PartsStayWithEachProcessor) {
  Job child, parent;
  child.SetProgress(0.5);
  child.SetProgressParent(&parent);
  child.PushProgressPart(0.25);
  EXPECT_EQ(child.GetProgress(), 0.5);
  EXPECT_EQ(parent.GetProgress(), 0.0);
  child.PopProgressPart();
  EXPECT_EQ(child.GetProgress(), 0.75);
  EXPECT_EQ(parent.GetProgress(), 0.0);
  parent.SetProgress(0.125);
  EXPECT_EQ(child.GetProgress(), 0.75);
}

TEST(Processor, WithoutAParentAnyMoreProgressIsItsOwnAgain) {
  Job child, parent;
  child.SetProgressParent(&parent);
  child.SetProgress(0.5);
  child.SetProgressParent(nullptr);
  child.SetProgress(0.25);
  EXPECT_EQ(child.GetProgress(), 0.25);
  EXPECT_EQ(parent.GetProgress(), 0.5);
}

TEST(Processor, AParentWhoseChainLeadsBackIsIgnored) {
  Job first, second, third;
  first.SetProgressParent(&first);
  first.SetProgress(0.5);
  EXPECT_EQ(first.GetProgress(), 0.5);

  first.SetProgressParent(&second);
  second.SetProgressParent(&third);
  third.SetProgressParent(&first);
  third.SetProgress(0.25);
  EXPECT_EQ(third.GetProgress(), 0.25) << "it is still the topmost";
  first.SetProgress(0.75);
  EXPECT_EQ(third.GetProgress(), 0.75);
  second.SetProgressParent(&first);
  second.SetProgress(0.125);
  EXPECT_EQ(third.GetProgress(), 0.125) << "the former parent stays";
}

// --- Threads --------------------------------------------------------------------------------------------------------

class ProcessorThreads : public testing::TestWithParam<int> {};

TEST_P(ProcessorThreads, MayBeUsedFromAnyThread) {
  constexpr int kRounds = 500;
  Job job, parent;
  std::vector<std::thread> threads;
  for (int i = 0; i < GetParam(); ++i) {
    threads.emplace_back([&, i] {
      const std::string message(40, static_cast<char>('a' + i));
      for (int round = 0; round < kRounds; ++round) {
        job.PushProgressPart(0.5);
        job.SetProgress(0.5);
        job.SetErrorMessage(message);
        const std::string seen = job.ErrorMessage();
        EXPECT_EQ(seen, std::string(40, seen.front()));
        EXPECT_GE(job.GetProgress(), 0.0);
        EXPECT_LE(job.GetProgress(), 1.0);
        job.SetProgressParent(round % 2 == 0 ? &parent : nullptr);
        parent.SetProgressParent(round % 3 == 0 ? &job : nullptr);
        job.SetAllowStop(!job.AllowStop());
        job.PopProgressPart();
        job.Stop();
        EXPECT_TRUE(job.IsStopped());
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  job.SetProgressParent(nullptr);
  job.ResetProgress();
  job.SetProgress(0.5);
  EXPECT_EQ(job.GetProgress(), 0.5);
}

INSTANTIATE_TEST_SUITE_P(Counts, ProcessorThreads, testing::Values(2, 4, 10));

}  // namespace
