#include "zelbase/platform/PlatformProcesses.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "tests/support/ChildProcess.h"
#include "tests/support/RunningProgram.h"
#include "tests/support/TemporaryFolder.h"

namespace {

PlatformProcesses& Processes() { return PlatformProcesses::System(); }

long long CountOf(const std::string& name) {
  const std::vector<std::string> names = Processes().ExecutableNames();
  return std::count(names.begin(), names.end(), name);
}

// A file name that no other program on this computer bears, tests of the same name in another process included.
std::string UniqueName(const TemporaryFolder& folder) {
  return "A survey program (of " + std::filesystem::path(folder.Path()).filename().string() + ")";
}

TEST(SystemProcesses, AreTheServiceInForceByDefault) {
  EXPECT_EQ(&PlatformService<PlatformProcesses>::Current(), &PlatformProcesses::System());
}

TEST(SystemProcesses, ListTheCallerByItsFileName) { EXPECT_GE(CountOf("platform_tests"), 1); }

TEST(SystemProcesses, ListOneEntryAProcess) {
  const TemporaryFolder folder;
  const std::string name = UniqueName(folder);
  const RunningProgram first(folder.File(name));
  EXPECT_EQ(CountOf(name), 1);
  const TemporaryFolder other;
  const RunningProgram second(other.File(name));
  EXPECT_EQ(CountOf(name), 2);
}

TEST(SystemProcesses, AProgramWhoseFileIsGoneKeepsItsName) {
  const TemporaryFolder folder;
  const std::string name = UniqueName(folder);
  const RunningProgram program(folder.File(name));
  std::filesystem::remove(folder.File(name));
  EXPECT_EQ(CountOf(name), 1);
}

TEST(SystemProcesses, AProgramThatHasEndedIsLeftOut) {
  const TemporaryFolder folder;
  const std::string name = UniqueName(folder);
  RunningProgram program(folder.File(name));
  EXPECT_EQ(CountOf(name), 1);
  program.EndWithoutFetching();
  EXPECT_EQ(CountOf(name), 0);
}

TEST(SystemProcesses, LeaveNoDescriptorOpen) {
  const int before = CountOpenDescriptors();
  Processes().ExecutableNames();
  EXPECT_EQ(CountOpenDescriptors(), before);
}

TEST(SystemProcesses, CurrentIdDiffersInAForkedChild) {
  const long long parent = Processes().CurrentId();
  EXPECT_EQ(Processes().CurrentId(), parent);
  ChildProcess child([parent] { return Processes().CurrentId() == parent ? 1 : 0; });
  EXPECT_EQ(child.Wait(), 0);
  EXPECT_NE(child.Id(), parent);
}

TEST(SystemProcesses, GiveNoVersionRecord) {
  SystemVersion version;
  version.major = 77;
  EXPECT_FALSE(Processes().ReadVersion(VersionRecord::Extended, version));
  EXPECT_FALSE(Processes().ReadVersion(VersionRecord::Plain, version));
  EXPECT_EQ(version.major, 77u);
}

TEST(SystemProcesses, KeepNoRecordsOfProcessors) {
  EXPECT_FALSE(Processes().HasProcessorRecords());
  std::size_t count = 0;
  EXPECT_EQ(Processes().ReadProcessorRecords(nullptr, count), PROCESSOR_RECORDS_READ);
  EXPECT_EQ(count, 0u);
}

TEST(SystemProcesses, AtLeastOneProcessorIsOnline) { EXPECT_GE(Processes().LogicalProcessors(), 1u); }

}  // namespace
