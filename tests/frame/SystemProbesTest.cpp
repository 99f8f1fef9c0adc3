#include "zelbase/frame/SystemProbes.h"

#include <gtest/gtest.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <filesystem>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/ChildProcess.h"
#include "tests/support/RunningProgram.h"
#include "tests/support/TemporaryFolder.h"
#include "zelbase/platform/FixedFolders.h"
#include "zelbase/platform/FixedModules.h"
#include "zelbase/platform/FixedProcesses.h"

namespace {

// --- The operating system ----------------------------------------------------------------------------------------

SystemVersion Version(unsigned int platformId, unsigned int major, unsigned int minor) {
  SystemVersion version;
  version.platformId = platformId;
  version.major = major;
  version.minor = minor;
  return version;
}

SystemVersion WithText(SystemVersion version, const std::string& serviceText) {
  version.serviceText = serviceText;
  return version;
}

SystemVersion WithPack(SystemVersion version, unsigned int servicePack) {
  version.servicePack = servicePack;
  return version;
}

SystemVersion Workstation(SystemVersion version) {
  version.productType = 1;
  return version;
}

// Version 5.2 with what its tests look at.
SystemVersion Version52(bool secondRelease, unsigned int suite, unsigned int product, unsigned int architecture) {
  SystemVersion version = Version(2, 5, 2);
  version.secondServerRelease = secondRelease;
  version.suiteMask = suite;
  version.productType = product;
  version.processorArchitecture = architecture;
  return version;
}

struct VersionRow {
  SystemVersion version;
  int expected;
};

void ExpectRows(const std::vector<VersionRow>& rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(static_cast<int>(OSTypeOf(rows[i].version)), rows[i].expected) << i;
}

TEST(OSType, IsAnIntWhoseNumbersAreStored) {
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<OSType>, int>));
  const OSType types[] = {OS_UNKNOWN,
                          OS_WIN32S,
                          OS_WINDOWS_95,
                          OS_WINDOWS_95_OSR2,
                          OS_WINDOWS_NT_4,
                          OS_WINDOWS_98,
                          OS_WINDOWS_98_SE,
                          OS_WINDOWS_ME,
                          OS_WINDOWS_2000,
                          OS_WINDOWS_XP,
                          OS_WINDOWS_XP_X64,
                          OS_WINDOWS_XP_SP2,
                          OS_WINDOWS_XP_SP3,
                          OSType(13),
                          OS_WINDOWS_VISTA,
                          OS_SERVER_2003,
                          OS_STORAGE_SERVER_2003,
                          OS_SERVER_2003_R2,
                          OS_HOME_SERVER,
                          OS_SERVER_2008,
                          OS_SERVER_2008_R2,
                          OS_WINDOWS_7,
                          OS_WINDOWS_8};
  for (int i = 0; i < 23; ++i) EXPECT_EQ(static_cast<int>(types[i]), i);
}

TEST(OSTypeOf, Family0IsOneSystem) { ExpectRows({{Version(0, 0, 0), 1}, {Version(0, 3, 11), 1}, {Version(0, 6, 2), 1}}); }

TEST(OSTypeOf, Family1GoesByTheSecondCharacterOfTheServiceText) {
  ExpectRows({{WithText(Version(1, 4, 0), " C"), 3},
              {WithText(Version(1, 4, 0), " B"), 3},
              {WithText(Version(1, 4, 0), ""), 2},
              {WithText(Version(1, 4, 0), " A"), 2},
              {WithText(Version(1, 4, 0), "C"), 2},
              {WithText(Version(1, 4, 0), "B "), 2},
              {WithText(Version(1, 4, 0), " b"), 2},
              {WithText(Version(1, 4, 0), " C and more"), 3},
              {WithText(Version(1, 4, 10), " A"), 6},
              {WithText(Version(1, 4, 10), " B"), 6},
              {WithText(Version(1, 4, 10), ""), 5},
              {WithText(Version(1, 4, 10), " C"), 5},
              {WithText(Version(1, 4, 10), "A"), 5},
              {WithText(Version(1, 4, 90), " A"), 7},
              {Version(1, 4, 90), 7},
              {Version(1, 4, 1), 0},
              {Version(1, 4, 91), 0},
              {Version(1, 3, 0), 0},
              {Version(1, 5, 0), 0},
              {WithText(Version(1, 4, 0), std::string("\0\0", 2)), 2}});
}

TEST(OSTypeOf, Family2UpTo4IsOneSystem) {
  ExpectRows({{Version(2, 4, 0), 4}, {Version(2, 3, 51), 4}, {Version(2, 0, 0), 4}, {Version(2, 4, 99), 4}});
}

TEST(OSTypeOf, Family2Version5) {
  ExpectRows({{Version(2, 5, 0), 8},
              {WithPack(Version(2, 5, 0), 2), 8},
              {Version(2, 5, 1), 9},
              {WithPack(Version(2, 5, 1), 1), 9},
              {WithPack(Version(2, 5, 1), 2), 11},
              {WithPack(Version(2, 5, 1), 3), 12},
              {WithPack(Version(2, 5, 1), 4), 9},
              {WithText(Version(2, 5, 1), "Service Pack 2"), 9},  // the number decides, not the text
              {Version(2, 5, 3), 0},
              {Version(2, 5, 99), 0}});
}

TEST(OSTypeOf, TheTestsFor52AreMadeInTheirOrder) {
  ExpectRows({{Version52(true, 0x2000 | 0x8000, 1, 9), 17},
              {Version52(false, 0x2000 | 0x8000, 1, 9), 16},
              {Version52(false, 0x8000, 1, 9), 18},
              {Version52(false, 0, 1, 9), 10},
              {Version52(false, 0, 3, 9), 15},
              {Version52(false, 0, 1, 0), 15},
              {Version52(false, 0, 0, 0), 15},
              {Version52(true, 0, 3, 0), 17},
              {Version52(false, 0x2000, 3, 0), 16},
              {Version52(false, 0x8000, 3, 0), 18},
              {Version52(false, 0xFFFF & ~0xA000u, 3, 9), 15}});
}

TEST(OSTypeOf, Family2Version6) {
  ExpectRows({{Workstation(Version(2, 6, 0)), 14},
              {Version(2, 6, 0), 19},
              {Workstation(Version(2, 6, 1)), 21},
              {Version(2, 6, 1), 20},
              {Workstation(Version(2, 6, 2)), 22},
              {Version(2, 6, 2), 22}});
}

TEST(OSTypeOf, WhatIsNewerIsUnknown) {
  constexpr unsigned int kMost = std::numeric_limits<unsigned int>::max();
  ExpectRows({{Workstation(Version(2, 6, 3)), 0},
              {Version(2, 7, 0), 0},
              {Workstation(Version(2, 10, 0)), 0},
              {Version(2, kMost, kMost), 0},
              {Version(3, 5, 1), 0},
              {Version(kMost, 4, 0), 0}});
}

// All of a wide grid against the table written down a second time, in another form.
int SecondOSTable(const SystemVersion& v) {
  const std::string key = std::to_string(v.platformId) + ":" + std::to_string(v.major) + "." + std::to_string(v.minor);
  const std::string second = v.serviceText.size() < 2 ? "" : v.serviceText.substr(1, 1);
  const bool workstation = v.productType == 1;
  if (key.starts_with("0:")) return 1;
  if (key == "1:4.0") return second == "C" || second == "B" ? 3 : 2;
  if (key == "1:4.10") return second == "A" || second == "B" ? 6 : 5;
  if (key == "1:4.90") return 7;
  if (v.platformId == 2 && v.major < 5) return 4;
  if (key == "2:5.0") return 8;
  if (key == "2:5.1") return v.servicePack == 2 ? 11 : v.servicePack == 3 ? 12 : 9;
  if (key == "2:5.2" && v.secondServerRelease) return 17;
  if (key == "2:5.2" && (v.suiteMask >> 13) % 2 == 1) return 16;
  if (key == "2:5.2" && (v.suiteMask >> 15) % 2 == 1) return 18;
  if (key == "2:5.2") return workstation && v.processorArchitecture == 9 ? 10 : 15;
  if (key == "2:6.0") return workstation ? 14 : 19;
  if (key == "2:6.1") return workstation ? 21 : 20;
  return key == "2:6.2" ? 22 : 0;
}

TEST(OSTypeOf, AgreesWithASecondTableAndNeverGives13) {
  const std::string texts[] = {"", "C", " A", " B", " C", " D"};
  int rows = 0;
  for (unsigned int platform = 0; platform < 4; ++platform) {
    for (unsigned int major = 2; major < 8; ++major) {
      for (const unsigned int minor : {0u, 1u, 2u, 3u, 10u, 11u, 90u}) {
        for (unsigned int bits = 0; bits < 6 * 5 * 16; ++bits) {
          SystemVersion version = Version(platform, major, minor);
          version.serviceText = texts[bits % 6];
          version.servicePack = bits / 6 % 5;
          const unsigned int further = bits / 30;
          version.secondServerRelease = (further & 1) != 0;
          version.suiteMask = (further & 2) != 0 ? 0x2000 : (further & 4) != 0 ? 0x8001 : 0x0400;
          version.productType = further % 3;
          version.processorArchitecture = (further & 8) != 0 ? 9 : 6;
          ASSERT_EQ(static_cast<int>(OSTypeOf(version)), SecondOSTable(version)) << platform << " " << major << " " << minor;
          ASSERT_NE(static_cast<int>(OSTypeOf(version)), 13);
          ++rows;
        }
      }
    }
  }
  EXPECT_EQ(rows, 4 * 6 * 7 * 480);
}

TEST(GetOSType, IsUnknownOnThisSystem) { EXPECT_EQ(GetOSType(), 0); }

TEST(GetOSType, AsksForTheExtendedRecordAndThenForThePlainOne) {
  FixedProcesses processes;
  const PlatformOverride<PlatformProcesses> guard(processes);
  EXPECT_EQ(GetOSType(), OS_UNKNOWN);
  processes.plainVersion = Version(1, 4, 90);
  EXPECT_EQ(GetOSType(), OS_WINDOWS_ME);
  processes.extendedVersion = Version(2, 5, 0);
  EXPECT_EQ(GetOSType(), OS_WINDOWS_2000);
  processes.plainVersion.reset();
  EXPECT_EQ(GetOSType(), OS_WINDOWS_2000);
}

// --- Processors --------------------------------------------------------------------------------------------------

// What the probe gives, and what it writes to standard output, with `processes` in force.
struct CoresAnswer {
  unsigned long cores = 0;
  std::string output;
};

CoresAnswer AskForCores(PlatformProcesses& processes) {
  CoresAnswer answer;
  ChildProcess child([&] {
    const PlatformOverride<PlatformProcesses> guard(processes);
    return static_cast<int>(GetTotalNumberOfCores());
  });
  answer.cores = static_cast<unsigned long>(child.Wait());
  answer.output = child.OutputText();
  EXPECT_EQ(child.ErrorText(), "");
  return answer;
}

constexpr auto kCore = ProcessorRelation::Core;

TEST(GetTotalNumberOfCores, IsTheNumberOfLogicalProcessorsOnlineHere) {
  EXPECT_EQ(GetTotalNumberOfCores(), static_cast<unsigned long>(::sysconf(_SC_NPROCESSORS_ONLN)));
  EXPECT_EQ(AskForCores(PlatformProcesses::System()).output, "");
}

TEST(GetTotalNumberOfCores, WithoutRecordsIsTheSystemsOwnCount) {
  FixedProcesses processes;
  processes.processors = 12;
  const CoresAnswer answer = AskForCores(processes);
  EXPECT_EQ(answer.cores, 12u);
  EXPECT_EQ(answer.output, "");
}

TEST(GetTotalNumberOfCores, CountsEveryThreadOfACoreAndNothingBesides) {
  FixedProcesses processes;
  processes.processors = 99;
  processes.records = {{{0b11, kCore},
                        {0b1100, kCore},
                        {0xF, ProcessorRelation::MemoryNode},
                        {0xF, ProcessorRelation::Cache},
                        {0xFF, ProcessorRelation::Package},
                        {1ull << 63, kCore},
                        {0, kCore}}};
  const CoresAnswer answer = AskForCores(processes);
  EXPECT_EQ(answer.cores, 5u);
  EXPECT_EQ(answer.output, "");
  processes.records = {{{~0ull, kCore}}};
  EXPECT_EQ(AskForCores(processes).cores, 64u);
}

TEST(GetTotalNumberOfCores, EmptyRecordsAreNoProcessors) {
  FixedProcesses processes;
  processes.records.emplace();
  const CoresAnswer answer = AskForCores(processes);
  EXPECT_EQ(answer.cores, 0u);
  EXPECT_EQ(answer.output, "");
}

TEST(GetTotalNumberOfCores, TellsOfEachRecordOfAnUnknownKindAndGoesOn) {
  FixedProcesses processes;
  processes.records = {{{1, kCore}, {7, ProcessorRelation(4)}, {7, ProcessorRelation(0xFFFF)}, {2, kCore}}};
  const CoresAnswer answer = AskForCores(processes);
  EXPECT_EQ(answer.cores, 2u);
  const std::string line = "\nError: Unsupported LOGICAL_PROCESSOR_RELATIONSHIP value.\n";
  EXPECT_EQ(answer.output, line + line);
}

TEST(GetTotalNumberOfCores, TellsTheSystemsErrorAndGivesNone) {
  FixedProcesses processes;
  processes.records = {{{1, kCore}}};
  for (const int error : {5, -1, 87}) {
    processes.recordsError = error;
    const CoresAnswer answer = AskForCores(processes);
    EXPECT_EQ(answer.cores, 0u);
    EXPECT_EQ(answer.output, "\nError " + std::to_string(error) + "\n");
  }
}

// Needs more room each time it is asked, up to `last` records of one processor each.
class GrowingProcesses : public FixedProcesses {
 public:
  explicit GrowingProcesses(std::size_t last) : m_last(last) {}
  bool HasProcessorRecords() override { return true; }
  int ReadProcessorRecords(ProcessorRecord* room, std::size_t& count) override {
    if (count < m_last) {
      ++count;
      return PROCESSOR_RECORDS_DO_NOT_FIT;
    }
    for (std::size_t i = 0; i < count; ++i) room[i] = {1, kCore};
    return PROCESSOR_RECORDS_READ;
  }

 private:
  std::size_t m_last;
};

TEST(GetTotalNumberOfCores, GrowsItsRoomAsOftenAsTheSystemAsks) {
  GrowingProcesses processes(17);
  EXPECT_EQ(AskForCores(processes).cores, 17u);
}

// Fills in fewer records than it had room for, or claims more.
class FickleProcesses : public FixedProcesses {
 public:
  explicit FickleProcesses(std::size_t claimed) : m_claimed(claimed) {}
  bool HasProcessorRecords() override { return true; }
  int ReadProcessorRecords(ProcessorRecord* room, std::size_t& count) override {
    if (count == 0) {
      count = 3;
      return PROCESSOR_RECORDS_DO_NOT_FIT;
    }
    for (std::size_t i = 0; i < count; ++i) room[i] = {1, kCore};
    count = m_claimed;
    return PROCESSOR_RECORDS_READ;
  }

 private:
  std::size_t m_claimed;
};

TEST(GetTotalNumberOfCores, CountsWhatWasFilledInOnly) {
  FickleProcesses fewer(2);
  EXPECT_EQ(AskForCores(fewer).cores, 2u);
  FickleProcesses more(1000000);
  EXPECT_EQ(AskForCores(more).cores, 3u);
}

// Always wants room for `wanted` records.
class GreedyProcesses : public FixedProcesses {
 public:
  explicit GreedyProcesses(std::size_t wanted) : m_wanted(wanted) {}
  bool HasProcessorRecords() override { return true; }
  int ReadProcessorRecords(ProcessorRecord*, std::size_t& count) override {
    count = m_wanted;
    return PROCESSOR_RECORDS_DO_NOT_FIT;
  }

 private:
  std::size_t m_wanted;
};

TEST(GetTotalNumberOfCores, RoomThatCannotBeHadIsAnAllocationFailure) {
  GreedyProcesses processes(std::numeric_limits<std::size_t>::max());
  const CoresAnswer answer = AskForCores(processes);
  EXPECT_EQ(answer.cores, 0u);
  EXPECT_EQ(answer.output, "\nError: Allocation failure\n");
}

TEST(GetTotalNumberOfCores, ASystemThatIsNeverContentIsAnError) {
  GreedyProcesses processes(8);
  const CoresAnswer answer = AskForCores(processes);
  EXPECT_EQ(answer.cores, 0u);
  EXPECT_EQ(answer.output, "\nError 122\n");
}

// --- Processes ---------------------------------------------------------------------------------------------------

TEST(IsProcessAlreadyRunning, ComparesWholeNamesExactly) {
  FixedProcesses processes;
  processes.names = {"survey.exe", "dredge.exe", "x"};
  const PlatformOverride<PlatformProcesses> guard(processes);
  for (const char* const name : {"survey.exe", "dredge.exe", "x"}) EXPECT_TRUE(IsProcessAlreadyRunning(name)) << name;
  for (const char* const name : {"Survey.exe", "survey", "survey.exe ", "y", "bin/x", ".exe"}) {
    EXPECT_FALSE(IsProcessAlreadyRunning(name)) << name;
  }
  EXPECT_FALSE(IsProcessAlreadyRunning(std::string("x\0y", 3)));
}

TEST(IsProcessAlreadyRunning, WithoutAnyProcessIsFalse) {
  FixedProcesses processes;
  const PlatformOverride<PlatformProcesses> guard(processes);
  EXPECT_FALSE(IsProcessAlreadyRunning("survey.exe"));
}

TEST(IsProcessAlreadyRunning, AnEmptyNameIsFalseWhateverRuns) {
  EXPECT_FALSE(IsProcessAlreadyRunning(""));
  FixedProcesses processes;
  processes.names = {""};
  const PlatformOverride<PlatformProcesses> guard(processes);
  EXPECT_FALSE(IsProcessAlreadyRunning(""));
}

TEST(IsProcessAlreadyRunning, TheCallerCounts) {
  const std::string own = std::filesystem::read_symlink("/proc/self/exe").filename().string();
  EXPECT_TRUE(IsProcessAlreadyRunning(own));
}

TEST(IsProcessAlreadyRunning, LongNamesAreWhole) {
  const TemporaryFolder folder;
  const std::string name = "longer than fifteen " + std::filesystem::path(folder.Path()).filename().string();
  EXPECT_FALSE(IsProcessAlreadyRunning(name));
  const RunningProgram program(folder.File(name));
  EXPECT_TRUE(IsProcessAlreadyRunning(name));
  EXPECT_FALSE(IsProcessAlreadyRunning(name.substr(0, 15)));
}

// --- Disks and folders -------------------------------------------------------------------------------------------

// Notes the paths it is asked for.
class NotingFolders : public FixedFolders {
 public:
  bool FreeSpace(const std::string& path, unsigned long long& bytes) override {
    asked.push_back(path);
    return FixedFolders::FreeSpace(path, bytes);
  }
  std::vector<std::string> asked;
};

TEST(GetFreeDiskSpace, AsksForTheFolderWithItsFinalSeparator) {
  NotingFolders folders;
  folders.SetFreeSpace(5000000000ull);
  const PlatformOverride<PlatformFolders> guard(folders);
  EXPECT_EQ(GetFreeDiskSpace("C:"), 5000000000ull);
  EXPECT_EQ(GetFreeDiskSpace("C:\\data\\"), 5000000000ull);
  EXPECT_EQ(folders.asked, (std::vector<std::string>{"C:\\", "C:\\data\\"}));
}

TEST(GetFreeDiskSpace, AnEmptyPathHasNone) {
  NotingFolders folders;
  folders.SetFreeSpace(5);
  const PlatformOverride<PlatformFolders> guard(folders);
  EXPECT_EQ(GetFreeDiskSpace(""), 0u);
}

TEST(GetFreeDiskSpace, WhatCannotBeToldIsNone) {
  FixedFolders folders;
  const PlatformOverride<PlatformFolders> guard(folders);
  EXPECT_EQ(GetFreeDiskSpace("C:\\"), 0u);
}

TEST(GetFreeDiskSpace, IsWhatTheCallerMayUse) {
  const TemporaryFolder folder;
  // Others write meanwhile; a disk of a few gigabytes does not change by a tenth.
  struct statvfs disk {};
  ASSERT_EQ(::statvfs(folder.Path().c_str(), &disk), 0);
  const double expected = static_cast<double>(disk.f_bavail) * static_cast<double>(disk.f_frsize);
  EXPECT_NEAR(static_cast<double>(GetFreeDiskSpace(folder.InterfacePath())), expected, expected / 10);
  EXPECT_NEAR(static_cast<double>(GetFreeDiskSpace(folder.Path() + "/")), expected, expected / 10);
}

TEST(GetFreeDiskSpace, OfAFileOrOfNothingIsNone) {
  const TemporaryFolder folder;
  folder.Write("file", "text");
  EXPECT_EQ(GetFreeDiskSpace(folder.InterfacePath() + "\\file"), 0u);
  EXPECT_EQ(GetFreeDiskSpace(folder.InterfacePath() + "\\missing"), 0u);
}

std::string AppPathOf(const std::string& program) {
  FixedModules modules;
  modules.SetProgramPath(program);
  const PlatformOverride<PlatformModules> guard(modules);
  return GetAppPath();
}

TEST(GetAppPath, IsTheFolderWithItsFinalSeparator) {
  EXPECT_EQ(AppPathOf("C:\\x\\app.exe"), "C:\\x\\");
  EXPECT_EQ(AppPathOf("C:\\app.exe"), "C:\\");
  EXPECT_EQ(AppPathOf("/opt\\suite\\app.exe"), "/opt\\suite\\");
}

TEST(GetAppPath, ASeparatorAtEitherEndLeavesThePathWhole) {
  EXPECT_EQ(AppPathOf("\\app.exe"), "\\app.exe");
  EXPECT_EQ(AppPathOf("C:\\x\\"), "C:\\x\\");
  EXPECT_EQ(AppPathOf("\\"), "\\");
  EXPECT_EQ(AppPathOf("/app.exe"), "/app.exe");
  EXPECT_EQ(AppPathOf("app.exe"), "app.exe");
  EXPECT_EQ(AppPathOf(""), "");
}

TEST(GetAppPath, OfThisProgramDoesNotHangOnTheCurrentFolder) {
  std::string expected = std::filesystem::read_symlink("/proc/self/exe").parent_path().string() + "/";
  for (std::size_t i = 1; i < expected.size(); ++i) {
    if (expected[i] == '/') expected[i] = '\\';
  }
  EXPECT_EQ(GetAppPath(), expected);
  ChildProcess child([&] {
    std::filesystem::current_path("/");
    return GetAppPath() == expected ? 0 : 1;
  });
  EXPECT_EQ(child.Wait(), 0);
}

}  // namespace
