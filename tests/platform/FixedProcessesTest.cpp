#include "zelbase/platform/FixedProcesses.h"

#include <gtest/gtest.h>

namespace {

TEST(FixedProcesses, AnswerWithWhatTheyWereGiven) {
  FixedProcesses processes;
  EXPECT_TRUE(processes.ExecutableNames().empty());
  EXPECT_EQ(processes.CurrentId(), 1);
  EXPECT_EQ(processes.LogicalProcessors(), 1u);

  processes.names = {"survey.exe", "survey.exe", "dredge.exe"};
  processes.id = 4711;
  processes.processors = 0;
  const PlatformOverride<PlatformProcesses> guard(processes);
  PlatformProcesses& current = PlatformService<PlatformProcesses>::Current();
  EXPECT_EQ(current.ExecutableNames(), processes.names);
  EXPECT_EQ(current.CurrentId(), 4711);
  EXPECT_EQ(current.LogicalProcessors(), 0u);
}

}  // namespace
