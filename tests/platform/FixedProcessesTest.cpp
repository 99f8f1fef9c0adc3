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

TEST(FixedProcesses, HaveNoVersionUntilToldOne) {
  FixedProcesses processes;
  SystemVersion version;
  version.major = 77;
  EXPECT_FALSE(processes.ReadVersion(VersionRecord::Extended, version));
  EXPECT_FALSE(processes.ReadVersion(VersionRecord::Plain, version));
  EXPECT_EQ(version.major, 77u);
  processes.plainVersion.emplace().major = 4;
  EXPECT_FALSE(processes.ReadVersion(VersionRecord::Extended, version));
  EXPECT_TRUE(processes.ReadVersion(VersionRecord::Plain, version));
  EXPECT_EQ(version.major, 4u);
  processes.extendedVersion.emplace().major = 5;
  EXPECT_TRUE(processes.ReadVersion(VersionRecord::Extended, version));
  EXPECT_EQ(version.major, 5u);
}

TEST(FixedProcesses, TellHowMuchRoomTheirRecordsNeed) {
  FixedProcesses processes;
  EXPECT_FALSE(processes.HasProcessorRecords());
  processes.records = {{{1, ProcessorRelation::Core}, {6, ProcessorRelation::Cache}}};
  EXPECT_TRUE(processes.HasProcessorRecords());
  std::size_t count = 0;
  EXPECT_EQ(processes.ReadProcessorRecords(nullptr, count), PROCESSOR_RECORDS_DO_NOT_FIT);
  EXPECT_EQ(count, 2u);
  ProcessorRecord room[3];
  count = 3;
  EXPECT_EQ(processes.ReadProcessorRecords(room, count), PROCESSOR_RECORDS_READ);
  EXPECT_EQ(count, 2u);
  EXPECT_EQ(room[1].mask, 6u);
  EXPECT_EQ(room[1].relation, ProcessorRelation::Cache);
  processes.recordsError = 5;
  EXPECT_EQ(processes.ReadProcessorRecords(room, count), 5);
}

TEST(FixedProcesses, WithoutRecordsThereIsNothingToRead) {
  FixedProcesses processes;
  std::size_t count = 3;
  EXPECT_EQ(processes.ReadProcessorRecords(nullptr, count), PROCESSOR_RECORDS_READ);
  EXPECT_EQ(count, 3u);
}

}  // namespace
