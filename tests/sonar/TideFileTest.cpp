#include "zelbase/sonar/TideFile.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/sonar/LiteralTide.h"
#include "tests/sonar/TideScript.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/files/FileStream.h"
#include "zelbase/files/HugeFileStream.h"
#include "zelbase/platform/CFile.h"
#include "zelbase/platform/FaultInjectionFiles.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

using Entry = std::pair<double, double>;
using Entries = std::vector<Entry>;

// 1.0 is 3F F0 and six zeros, least byte first: written by hand here, once.
std::string BytesOf(double number) {
  std::string bytes;
  unsigned long long bits = 0;
  std::memcpy(&bits, &number, sizeof bits);
  for (int i = 0; i < 8; ++i) bytes += static_cast<char>(bits >> (8 * i) & 0xFF);
  return bytes;
}

std::string BytesOf(const Entries& entries) {
  std::string bytes;
  for (const auto& [time, value] : entries) bytes += BytesOf(time) + BytesOf(value);
  return bytes;
}

Entries EntriesOf(TideFile tide) {
  Entries entries;
  double time = 0.0, value = 0.0;
  for (bool more = tide.GetFirstTideValue(time, value); more; more = tide.GetNextTideValue(time, value)) {
    entries.emplace_back(time, value);
  }
  EXPECT_EQ(static_cast<int>(entries.size()), tide.GetNumValues());
  return entries;
}

// What is current; (-1, -1) at the end.
Entry CurrentOf(const TideFile& tide) {
  Entry entry(-1, -1);
  const bool found = tide.GetCurrentTideValue(entry.first, entry.second);
  EXPECT_EQ(found, entry != Entry(-1, -1));
  return entry;
}

constexpr Entry kEnd(-1, -1);

const Entries kThree = {{10, 1}, {20, 2}, {30, 3}};

class TideFileTest : public testing::Test {
 protected:
  void Add(const Entries& entries) {
    for (const auto& [time, value] : entries) EXPECT_TRUE(m_tide.AddTideValue(time, value));
  }
  std::string Write(const Entries& entries) { return m_folder.Write("tide", BytesOf(entries)); }
  bool OpenThree() { return m_tide.FileOpen(Write(kThree), false); }

  TemporaryFolder m_folder;
  TideFile m_tide;
  double m_time = 0.0;
  double m_value = 0.0;
};

// ---- The file ----

TEST_F(TideFileTest, ReadsRecordsOfTimeAndValueLeastByteFirst) {
  const std::string bytes(
      "\0\0\0\0\0\0\xF0\x3F"
      "\0\0\0\0\0\0\x04\xC0",
      16);  // 1.0 and -2.5
  EXPECT_TRUE(m_tide.FileOpen(m_folder.Write("t", bytes), false));
  EXPECT_EQ(EntriesOf(m_tide), (Entries{{1.0, -2.5}}));
}

TEST_F(TideFileTest, AShortLastRecordIsIgnoredAtEveryLength) {
  const std::string bytes = BytesOf(kThree);
  for (std::size_t size = 0; size <= bytes.size(); ++size) {
    TideFile tide;
    EXPECT_TRUE(tide.FileOpen(m_folder.Write("t", bytes.substr(0, size)), false));
    EXPECT_EQ(EntriesOf(tide), Entries(kThree.begin(), kThree.begin() + static_cast<std::ptrdiff_t>(size / 16))) << size;
    EXPECT_EQ(tide.FileClose(true), 0);
    EXPECT_EQ(m_folder.Read("t"), bytes.substr(0, size));
  }
}

TEST_F(TideFileTest, UnsortedAndRepeatedRecordsAreSortedAndTheLaterValueStands) {
  m_tide.FileOpen(Write({{30, 3}, {10, 1}, {20, 2}, {10, 9}}), false);
  EXPECT_EQ(EntriesOf(m_tide), (Entries{{10, 9}, {20, 2}, {30, 3}}));
}

TEST_F(TideFileTest, RecordsWithoutATimeAreSkipped) {
  m_tide.FileOpen(Write({{10, 1}, {kNaN, 5}, {-kNaN, 6}, {20, 2}}), false);
  EXPECT_EQ(EntriesOf(m_tide), (Entries{{10, 1}, {20, 2}}));
}

TEST_F(TideFileTest, InfiniteTimesAndAnyValuesAreKept) {
  m_tide.FileOpen(Write({{kInfinity, 1}, {-kInfinity, -kInfinity}, {0, kNaN}}), false);
  ASSERT_EQ(m_tide.GetNumValues(), 3);
  EXPECT_TRUE(m_tide.GetFirstTideValue(m_time, m_value));
  EXPECT_EQ(m_time, -kInfinity);
  EXPECT_TRUE(m_tide.GetNextTideValue(m_time, m_value));
  EXPECT_TRUE(std::isnan(m_value));
}

TEST_F(TideFileTest, AnEmptyFileIsOpenAndHasNoSpan) {
  EXPECT_TRUE(m_tide.FileOpen(Write({}), false));
  EXPECT_EQ(m_tide.GetNumValues(), 0);
  double first = 5, last = 6;
  EXPECT_TRUE(m_tide.GetTimeSpan(first, last));
  EXPECT_EQ(first, 5);
  EXPECT_EQ(last, 6);
}

TEST_F(TideFileTest, AMissingFileOpensOnlyWhenItMayBeMade) {
  const std::string name = m_folder.File("t");
  EXPECT_FALSE(m_tide.FileOpen(name, false));
  EXPECT_FALSE(m_folder.Exists("t"));
  EXPECT_TRUE(m_tide.FileOpen(name, true));
  EXPECT_TRUE(m_folder.Exists("t"));
  EXPECT_EQ(m_folder.Read("t"), "");
}

TEST_F(TideFileTest, CreatingCutsAnExistingFile) {
  EXPECT_TRUE(m_tide.FileOpen(Write(kThree), true));
  EXPECT_EQ(m_tide.GetNumValues(), 0);
  EXPECT_EQ(m_folder.Read("tide"), "");
}

TEST_F(TideFileTest, WhatIsNoRegularFileDoesNotOpen) {
  for (const std::string& name : {m_folder.MakeFolder("folder"), m_folder.MakeFifo("fifo"), std::string("/dev/zero"), std::string(),
                                  m_folder.Write("a", BytesOf(kThree)) + std::string("\0b", 2)}) {
    for (const bool create : {false, true}) EXPECT_FALSE(m_tide.FileOpen(name, create)) << name;
  }
  EXPECT_EQ(m_folder.Read("a"), BytesOf(kThree));
}

TEST_F(TideFileTest, OpeningNeedsTheRightToWrite) {
  OpenThree();
  HugeFileStream writer;
  EXPECT_TRUE(writer.Open(m_folder.File("tide").c_str(), false, true));  // the file is not held open
  TideFile second;
  EXPECT_FALSE(second.FileOpen(m_folder.File("tide"), false));
  writer.Close();
  EXPECT_TRUE(second.FileOpen(m_folder.File("tide"), false));
}

TEST_F(TideFileTest, SavesAllEntriesInOrder) {
  m_tide.FileOpen(m_folder.File("t"), true);
  Add({{30, 3}, {10, 1}, {20, 2}, {10, 9}});
  EXPECT_TRUE(m_tide.FileSave());
  EXPECT_EQ(m_folder.Read("t"), BytesOf({{10, 9}, {20, 2}, {30, 3}}));
}

TEST_F(TideFileTest, SavingALongSeriesAndReadingItAgainLosesNothing) {
  m_tide.FileOpen(m_folder.File("t"), true);
  Entries entries;
  for (int i = 0; i < 20000; ++i) entries.emplace_back(i * 600000.0, std::sin(i * 0.01));
  Add(entries);
  EXPECT_EQ(m_tide.FileClose(true), 0);
  EXPECT_EQ(m_folder.Read("t"), BytesOf(entries));
  EXPECT_TRUE(m_tide.FileOpen(m_folder.File("t"), false));
  EXPECT_EQ(EntriesOf(m_tide), entries);
}

TEST_F(TideFileTest, SavingWithoutAChangeDoesNotTouchTheFile) {
  OpenThree();
  m_folder.Write("tide", "other");
  EXPECT_TRUE(m_tide.FileSave());
  EXPECT_EQ(m_folder.Read("tide"), "other");
  m_tide.AddTideValue(5, 5);
  EXPECT_TRUE(m_tide.FileSave());
  m_folder.Write("tide", "other");
  EXPECT_TRUE(m_tide.FileSave());
  EXPECT_EQ(m_folder.Read("tide"), "other");
}

TEST_F(TideFileTest, SettingTheSameValueAgainIsAChangeToBeSaved) {
  OpenThree();
  m_folder.Write("tide", "other");
  m_tide.AddTideValue(10, 1);
  EXPECT_TRUE(m_tide.FileSave());
  EXPECT_EQ(m_folder.Read("tide"), BytesOf(kThree));
  m_folder.Write("tide", "other");
  m_tide.UpdateTideValue(10, 1);
  EXPECT_TRUE(m_tide.FileSave());
  EXPECT_EQ(m_folder.Read("tide"), BytesOf(kThree));
}

TEST_F(TideFileTest, ADeletionIsAChangeAndAFailedOneIsNot) {
  OpenThree();
  m_folder.Write("tide", "other");
  EXPECT_FALSE(m_tide.DeleteTideValue(15));
  EXPECT_FALSE(m_tide.UpdateTideValue(15, 1));
  EXPECT_FALSE(m_tide.AddTideValue(kNaN, 1));
  EXPECT_TRUE(m_tide.FileSave());
  EXPECT_EQ(m_folder.Read("tide"), "other");
  EXPECT_TRUE(m_tide.DeleteTideValue(20));
  EXPECT_TRUE(m_tide.FileSave());
  EXPECT_EQ(m_folder.Read("tide"), BytesOf({{10, 1}, {30, 3}}));
}

TEST_F(TideFileTest, AClosedObjectIsNotSaved) {
  Add(kThree);
  EXPECT_FALSE(m_tide.FileSave());
  EXPECT_EQ(m_tide.FileClose(true), 0);
  EXPECT_EQ(m_tide.GetNumValues(), 3);  // nobody had it open
}

TEST_F(TideFileTest, TheDestructorSavesNothing) {
  {
    TideFile tide;
    tide.FileOpen(Write(kThree), false);
    tide.AddTideValue(40, 4);
  }
  EXPECT_EQ(m_folder.Read("tide"), BytesOf(kThree));
}

TEST_F(TideFileTest, UsersAreCounted) {
  OpenThree();
  EXPECT_TRUE(m_tide.FileOpen(m_folder.File("tide"), false));
  EXPECT_TRUE(m_tide.FileOpen(m_folder.File("tide"), false));
  EXPECT_EQ(m_tide.FileClose(false), 2);
  EXPECT_EQ(m_tide.FileClose(false), 1);
  EXPECT_EQ(m_tide.GetNumValues(), 3);
  EXPECT_EQ(m_tide.FileClose(false), 0);
  EXPECT_EQ(m_tide.GetNumValues(), 0);
  EXPECT_EQ(m_tide.FileClose(false), 0);
}

TEST_F(TideFileTest, ClosingForOneOfTwoUsersSavesAndKeepsTheData) {
  OpenThree();
  m_tide.FileOpen(m_folder.File("tide"), false);
  m_tide.AddTideValue(40, 4);
  EXPECT_EQ(m_tide.FileClose(true), 1);
  EXPECT_EQ(m_folder.Read("tide"), BytesOf({{10, 1}, {20, 2}, {30, 3}, {40, 4}}));
  EXPECT_EQ(m_tide.GetNumValues(), 4);
}

TEST_F(TideFileTest, ClosingWithoutSavingLosesChanges) {
  OpenThree();
  m_tide.AddTideValue(40, 4);
  EXPECT_EQ(m_tide.FileClose(false), 0);
  EXPECT_EQ(m_folder.Read("tide"), BytesOf(kThree));
  EXPECT_EQ(CurrentOf(m_tide), kEnd);
}

TEST_F(TideFileTest, AFurtherOpeningNeitherReadsNorMakesAFile) {
  OpenThree();
  EXPECT_TRUE(m_tide.FileOpen(m_folder.File("none"), true));
  EXPECT_FALSE(m_folder.Exists("none"));
  EXPECT_TRUE(m_tide.FileOpen(m_folder.File("neither"), false));
  EXPECT_EQ(EntriesOf(m_tide), kThree);
}

TEST_F(TideFileTest, TheNameChangesAtEveryOpeningAndTheNextSaveGoesThere) {
  OpenThree();
  m_tide.FileOpen(m_folder.File("second"), false);
  m_tide.AddTideValue(40, 4);
  EXPECT_TRUE(m_tide.FileSave());
  EXPECT_EQ(m_folder.Read("tide"), BytesOf(kThree));
  EXPECT_EQ(m_folder.Read("second"), BytesOf({{10, 1}, {20, 2}, {30, 3}, {40, 4}}));
}

TEST_F(TideFileTest, AFailedOpeningLeavesTheValuesAndTheCount) {
  Add(kThree);
  EXPECT_FALSE(m_tide.FileOpen(m_folder.File("none"), false));
  EXPECT_EQ(EntriesOf(m_tide), kThree);
  EXPECT_FALSE(m_tide.FileSave());
  EXPECT_EQ(m_tide.FileClose(false), 0);
  EXPECT_EQ(m_tide.GetNumValues(), 3);
}

TEST_F(TideFileTest, ValuesOfAClosedObjectStayAndTheFilesAreSetOverThem) {
  Add({{5, 50}, {20, 200}});
  m_tide.GetTideValue(20, m_value);
  EXPECT_TRUE(OpenThree());
  EXPECT_EQ(EntriesOf(m_tide), (Entries{{5, 50}, {10, 1}, {20, 2}, {30, 3}}));
  EXPECT_EQ(CurrentOf(m_tide), Entry(20, 2));
  m_folder.Write("tide", "other");
  EXPECT_TRUE(m_tide.FileSave());  // not changed since it was read
  EXPECT_EQ(m_folder.Read("tide"), "other");
}

TEST_F(TideFileTest, ReportsNothingToTheErrorLists) {
  const int before = GlobalErrorList::Get().NumErrors(true);
  EXPECT_FALSE(m_tide.FileOpen(m_folder.File("none"), false));
  EXPECT_FALSE(m_tide.FileSave());
  EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), before);
}

TEST_F(TideFileTest, KeepsNoDescriptor) {
  const int before = CountOpenDescriptors();
  OpenThree();
  m_tide.AddTideValue(40, 4);
  m_tide.FileSave();
  EXPECT_EQ(CountOpenDescriptors(), before);
}

TEST_F(TideFileTest, SavingKeepsPermissionsLinksAndTheNameOfTheFile) {
  namespace fs = std::filesystem;
  Write(kThree);
  fs::permissions(m_folder.File("tide"), fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  m_tide.FileOpen(m_folder.MakeLink("link", "tide"), false);
  m_tide.AddTideValue(40, 4);
  EXPECT_TRUE(m_tide.FileSave());
  EXPECT_TRUE(fs::is_symlink(m_folder.File("link")));
  EXPECT_EQ(m_folder.Read("tide").size(), 64u);
  EXPECT_EQ(fs::status(m_folder.File("tide")).permissions(), fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  EXPECT_EQ(std::distance(fs::directory_iterator(m_folder.Path()), fs::directory_iterator()), 2);
}

TEST_F(TideFileTest, AFolderThatTakesNoSecondFileIsSavedInByWritingOverTheFirst) {
  namespace fs = std::filesystem;
  Write(kThree);
  fs::permissions(m_folder.File("tide"), fs::perms::all);
  fs::permissions(m_folder.Path(), fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
  ChildProcess child([&]() -> int {
    if (!BecomeOrdinaryUser()) return 100;
    if (!m_tide.FileOpen(m_folder.File("tide"), false)) return 1;
    m_tide.AddTideValue(40, 4);
    return m_tide.FileSave() ? 0 : 2;
  });
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  fs::permissions(m_folder.Path(), fs::perms::owner_all);
  EXPECT_EQ(m_folder.Read("tide"), BytesOf({{10, 1}, {20, 2}, {30, 3}, {40, 4}}));
}

TEST_F(TideFileTest, AFileThatMayNotBeWrittenIsNotReplacedEither) {
  namespace fs = std::filesystem;
  Write(kThree);
  fs::permissions(m_folder.File("tide"), fs::perms::owner_read | fs::perms::others_read);
  fs::permissions(m_folder.Path(), fs::perms::all);
  ChildProcess child([&]() -> int {
    if (!BecomeOrdinaryUser()) return 100;
    if (m_tide.FileOpen(m_folder.File("tide"), false)) return 1;  // it needs the right to write, too
    m_tide.FileOpen(m_folder.File("another"), true);
    m_tide.FileOpen(m_folder.File("tide"), false);
    m_tide.AddTideValue(40, 4);
    return m_tide.FileSave() ? 2 : 0;
  });
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  EXPECT_EQ(m_folder.Read("tide"), BytesOf(kThree));
}

TEST_F(TideFileTest, ASaveThatAnotherWriterForbidsFailsAndCanBeMadeLater) {
  OpenThree();
  m_tide.AddTideValue(40, 4);
  HugeFileStream writer(m_folder.File("tide").c_str(), false, true);
  EXPECT_FALSE(m_tide.FileSave());
  EXPECT_EQ(m_folder.Read("tide"), BytesOf(kThree));
  writer.Close();
  EXPECT_TRUE(m_tide.FileSave());
  EXPECT_EQ(m_folder.Read("tide").size(), 64u);
}

// Somebody else has the series' file open with these flags of CFile: whether it can be saved.
struct OtherOpener {
  unsigned int flags;
  bool mayBeSaved;
};

TEST_F(TideFileTest, ASaveDoesNotPullTheFileAwayFromAnotherOpener) {
  const OtherOpener others[] = {{CFile::modeRead | CFile::shareDenyNone, true},
                                {CFile::modeRead | CFile::shareDenyRead, false},
                                {CFile::modeRead | CFile::shareDenyWrite, false},
                                {CFile::modeWrite | CFile::shareDenyNone, false},
                                {CFile::modeReadWrite | CFile::shareDenyNone, false}};
  for (const OtherOpener& other : others) {
    TideFile tide;
    ASSERT_TRUE(tide.FileOpen(Write(kThree), false));
    tide.AddTideValue(40, 4);
    CFile file;
    ASSERT_TRUE(file.Open(m_folder.File("tide"), other.flags));
    EXPECT_EQ(tide.FileSave(), other.mayBeSaved) << other.flags;
    EXPECT_EQ(m_folder.Read("tide").size(), other.mayBeSaved ? 64u : 48u) << other.flags;
    file.Close();
    EXPECT_TRUE(tide.FileSave()) << other.flags;
    EXPECT_EQ(m_folder.Read("tide").size(), 64u) << other.flags;
  }
}

TEST_F(TideFileTest, WhatAnotherStreamWritesIsNotLostByASave) {
  OpenThree();
  m_tide.AddTideValue(40, 4);
  FileStream stream(m_folder.File("tide").c_str(), false, false);
  EXPECT_FALSE(m_tide.FileSave());
  const std::string record = BytesOf(11) + BytesOf(12);
  EXPECT_TRUE(stream.Write(record.data(), 16));
  stream.Close();
  EXPECT_EQ(m_folder.Read("tide"), BytesOf({{11, 12}, {20, 2}, {30, 3}}));
}

TEST_F(TideFileTest, ClosingCountsDownThoughTheSaveFailed) {
  OpenThree();
  m_tide.AddTideValue(40, 4);
  std::filesystem::remove(m_folder.File("tide"));
  m_folder.MakeFolder("tide");
  EXPECT_EQ(m_tide.FileClose(true), 0);
  EXPECT_EQ(m_tide.GetNumValues(), 0);
}

TEST_F(TideFileTest, ASaveMakesAMissingFileAgain) {
  OpenThree();
  std::filesystem::remove(m_folder.File("tide"));
  m_tide.AddTideValue(40, 4);
  EXPECT_TRUE(m_tide.FileSave());
  EXPECT_EQ(m_folder.Read("tide").size(), 64u);
}

// ---- Faults ----

Entries LongSeries() {
  Entries entries;
  for (int i = 0; i < 10000; ++i) entries.emplace_back(i, i * 0.25);
  return entries;
}

TEST_F(TideFileTest, OpeningMeetsEveryFailureOfAnOperation) {
  const Entries all = LongSeries();
  const std::string name = Write(all);
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  using Repeat = FaultInjectionFiles::Repeat;
  for (const Repeat repeat : {Repeat::Once, Repeat::ForEver}) {
    for (const FileResult result : {FileResult::IoFailed, FileResult::NetworkNameDeleted}) {
      for (unsigned long long n = 1;; ++n) {
        files.Reset();
        files.BytesBeforeFailure(100);
        files.FailAt(n, result, repeat);
        TideFile tide;
        const bool opened = tide.FileOpen(name, false);
        const bool failed = files.FaultsGiven() > 0;
        files.FailAt(0);
        EXPECT_EQ(files.OpenFiles(), 0);
        const Entries read = EntriesOf(tide);
        ASSERT_LE(read.size(), all.size());
        EXPECT_TRUE(std::equal(read.begin(), read.end(), all.begin())) << n;
        if (!opened) {
          EXPECT_TRUE(read.empty());
        }
        // Nothing that the file has is ever lost by what could not be read.
        tide.AddTideValue(-1, -1);
        const bool saved = tide.FileSave();
        EXPECT_EQ(saved, opened && read.size() == all.size()) << n;
        EXPECT_EQ(m_folder.Read("tide").substr(saved ? 16 : 0), BytesOf(all)) << n;
        Write(all);
        if (!failed) {
          EXPECT_EQ(read.size(), all.size());
          break;
        }
        ASSERT_LT(n, 100000u);
      }
    }
  }
}

TEST_F(TideFileTest, AFailureThatPassesLosesNoRecord) {
  const Entries all = LongSeries();
  const std::string name = Write(all);
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  for (unsigned long long n = 1; n <= 3; ++n) {
    files.FailAt(FileOperation::Read, n);
    TideFile tide;
    EXPECT_TRUE(tide.FileOpen(name, false));
    EXPECT_EQ(tide.GetNumValues(), 10000) << n;
  }
}

TEST_F(TideFileTest, AFileThatCannotBeReadToItsEndGivesItsFront) {
  const std::string name = Write(LongSeries());
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  files.FailAt(FileOperation::Read, 2, FileResult::IoFailed, FaultInjectionFiles::Repeat::ForEver);
  EXPECT_TRUE(m_tide.FileOpen(name, false));
  EXPECT_EQ(m_tide.GetNumValues(), 4096);
  files.Reset();
  m_tide.AddTideValue(-1, -1);
  EXPECT_FALSE(m_tide.FileSave());
  // Elsewhere it may go.
  m_tide.FileOpen(m_folder.File("front"), false);
  EXPECT_TRUE(m_tide.FileSave());
  EXPECT_EQ(m_folder.Read("front").size(), 4097u * 16);
  EXPECT_EQ(m_folder.Read("tide"), BytesOf(LongSeries()));
}

TEST_F(TideFileTest, SavingMeetsEveryFailureOfAnOperationAndKeepsWhatWasSaved) {
  const Entries all = LongSeries();
  const std::string name = Write(all);
  Entries changed = all;
  changed.emplace_back(1e9, 1);
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  using Repeat = FaultInjectionFiles::Repeat;
  for (const Repeat repeat : {Repeat::Once, Repeat::ForEver}) {
    for (unsigned long long n = 1;; ++n) {
      files.Reset();
      TideFile tide;
      ASSERT_TRUE(tide.FileOpen(name, false));
      tide.AddTideValue(1e9, 1);
      files.Reset();
      files.BytesBeforeFailure(1000);
      files.FailAt(n, FileResult::DiskFull, repeat);
      const bool saved = tide.FileSave();
      const bool failed = files.FaultsGiven() > 0;
      files.FailAt(0);
      EXPECT_EQ(files.OpenFiles(), 0);
      EXPECT_EQ(m_folder.Read("tide"), BytesOf(saved ? changed : all)) << n;
      EXPECT_EQ(tide.GetNumValues(), 10001);
      // There is still something to save, and now it is.
      EXPECT_TRUE(tide.FileSave());
      EXPECT_EQ(m_folder.Read("tide"), BytesOf(changed)) << n;
      Write(all);
      if (!failed) {
        EXPECT_TRUE(saved);
        break;
      }
      ASSERT_LT(n, 1000u);
    }
  }
}

TEST_F(TideFileTest, AFullDiskKeepsTheFormerFile) {
  OpenThree();
  m_tide.AddTideValue(40, 4);
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  files.FillUpAfter(20);
  EXPECT_FALSE(m_tide.FileSave());
  EXPECT_EQ(m_folder.Read("tide"), BytesOf(kThree));
  EXPECT_EQ(files.OpenFiles(), 0);
}

// A folder that takes no second file, on a disk that then fails the `kind` of operation: the second layer refuses the temporary
// file, which is the third opening of a save.
TEST_F(TideFileTest, WritingOverTheFirstFileSaysWhenItFailedAndCanBeRepeated) {
  for (const FileOperation kind : {FileOperation::Write, FileOperation::Flush}) {
    TideFile tide;
    ASSERT_TRUE(tide.FileOpen(Write(kThree), false));
    tide.AddTideValue(40, 4);
    FaultInjectionFiles oneFileOnly;
    PlatformFiles& system = oneFileOnly;
    FaultInjectionFiles files(system);
    const PlatformOverride<PlatformFiles> guard(files);
    oneFileOnly.FailAt(FileOperation::Open, 3, FileResult::AccessDenied);
    files.FailAt(kind, 1, FileResult::DiskFull);
    EXPECT_FALSE(tide.FileSave());
    EXPECT_EQ(oneFileOnly.FaultsGiven(), 1u);
    EXPECT_EQ(files.FaultsGiven(), 1u);
    EXPECT_EQ(files.OpenFiles(), 0);
    EXPECT_EQ(EntriesOf(tide), (Entries{{10, 1}, {20, 2}, {30, 3}, {40, 4}}));
    EXPECT_TRUE(tide.FileSave());
    EXPECT_EQ(m_folder.Read("tide"), BytesOf({{10, 1}, {20, 2}, {30, 3}, {40, 4}}));
  }
}

// 4096 records are written at a time.
TEST_F(TideFileTest, SeriesThatFillTheirLastBlockOrHaveNoneAreSavedWhole) {
  for (const int count : {0, 1, 4095, 4096, 4097, 8192}) {
    Entries entries;
    for (int i = 0; i < count; ++i) entries.emplace_back(i, -i);
    TideFile tide;
    ASSERT_TRUE(tide.FileOpen(m_folder.File("blocks"), true));
    for (const auto& [time, value] : entries) tide.AddTideValue(time, value);
    tide.AddTideValue(-1, 0);
    tide.DeleteTideValue(-1);
    EXPECT_TRUE(tide.FileSave());
    EXPECT_EQ(m_folder.Read("blocks"), BytesOf(entries)) << count;
  }
}

TEST_F(TideFileTest, SlowConnectionsChangeNothing) {
  const std::string name = Write(LongSeries());
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  for (const std::size_t limit : {16u, 17u, 4000u}) {
    files.LimitReads(limit);
    TideFile tide;
    EXPECT_TRUE(tide.FileOpen(name, false));
    EXPECT_EQ(EntriesOf(tide), LongSeries()) << limit;
  }
}

// ---- Values ----

TEST_F(TideFileTest, AnEmptyObjectHasNothing) {
  double first = 1, last = 2;
  EXPECT_FALSE(m_tide.GetTimeSpan(first, last));
  EXPECT_EQ(m_tide.GetNumValues(), 0);
  m_time = 7;
  m_value = 8;
  EXPECT_FALSE(m_tide.GetTideValue(7, m_value));
  EXPECT_FALSE(m_tide.GetValueBefore(m_time, m_value));
  EXPECT_FALSE(m_tide.GetValueOnOrBefore(m_time, m_value));
  EXPECT_FALSE(m_tide.GetValueAfter(m_time, m_value));
  EXPECT_FALSE(m_tide.GetValueOnOrAfter(m_time, m_value));
  EXPECT_FALSE(m_tide.GetFirstTideValue(m_time, m_value));
  EXPECT_FALSE(m_tide.GetLastTideValue(m_time, m_value));
  EXPECT_FALSE(m_tide.GetNextTideValue(m_time, m_value));
  EXPECT_FALSE(m_tide.GetPreviousTideValue(m_time, m_value));
  EXPECT_FALSE(m_tide.GetCurrentTideValue(m_time, m_value));
  EXPECT_FALSE(m_tide.UpdateTideValue(7, 1));
  EXPECT_FALSE(m_tide.DeleteTideValue(7));
  EXPECT_EQ(m_time, 7);
  EXPECT_EQ(m_value, 8);
}

TEST_F(TideFileTest, TheSameTimeTwiceIsOneEntryWithTheLastValue) {
  Add({{10, 1}, {10, 2}});
  EXPECT_EQ(EntriesOf(m_tide), (Entries{{10, 2}}));
}

TEST_F(TideFileTest, ZeroAndMinusZeroAreOneTime) {
  Add({{0.0, 1}, {-0.0, 2}});
  EXPECT_EQ(m_tide.GetNumValues(), 1);
  EXPECT_TRUE(m_tide.GetTideValue(-0.0, m_value));
  EXPECT_EQ(m_value, 2);
}

TEST_F(TideFileTest, GetsTheExactTimeOnly) {
  Add(kThree);
  EXPECT_TRUE(m_tide.GetTideValue(20, m_value));
  EXPECT_EQ(m_value, 2);
  EXPECT_EQ(CurrentOf(m_tide), Entry(20, 2));
  EXPECT_FALSE(m_tide.GetTideValue(15, m_value));
  EXPECT_EQ(m_value, 2);
  EXPECT_EQ(CurrentOf(m_tide), kEnd);
}

TEST_F(TideFileTest, TheSpanIsOfTheFirstAndLastTimes) {
  OpenThree();
  double first = 0, last = 0;
  EXPECT_TRUE(m_tide.GetTimeSpan(first, last));
  EXPECT_EQ(first, 10);
  EXPECT_EQ(last, 30);
  m_tide.FileClose(false);
  Add(kThree);
  EXPECT_FALSE(m_tide.GetTimeSpan(first, last));  // values, but no file
}

TEST_F(TideFileTest, AddingDoesNotMoveThePosition) {
  Add({{20, 2}});
  m_tide.GetFirstTideValue(m_time, m_value);
  Add({{10, 1}, {30, 3}, {15, 1}, {20, 9}});
  EXPECT_EQ(CurrentOf(m_tide), Entry(20, 9));
  m_tide.GetValueAfter(m_time = 100, m_value);
  Add({{200, 1}});
  EXPECT_EQ(CurrentOf(m_tide), kEnd);
}

TEST_F(TideFileTest, DeletingAnotherEntryLeavesThePosition) {
  Add(kThree);
  m_tide.GetTideValue(20, m_value);
  EXPECT_TRUE(m_tide.DeleteTideValue(10));
  EXPECT_TRUE(m_tide.DeleteTideValue(30));
  EXPECT_EQ(CurrentOf(m_tide), Entry(20, 2));
  EXPECT_FALSE(m_tide.DeleteTideValue(30));
  EXPECT_EQ(CurrentOf(m_tide), Entry(20, 2));
}

TEST_F(TideFileTest, DeletingTheCurrentEntryMovesOnToTheNext) {
  Add(kThree);
  m_tide.GetFirstTideValue(m_time, m_value);
  EXPECT_TRUE(m_tide.DeleteTideValue(10));
  EXPECT_EQ(CurrentOf(m_tide), Entry(20, 2));
  m_tide.GetLastTideValue(m_time, m_value);
  EXPECT_TRUE(m_tide.DeleteTideValue(30));
  EXPECT_EQ(CurrentOf(m_tide), kEnd);
}

TEST_F(TideFileTest, FromTheEndDeletingAndUpdatingGoBySearch) {
  Add(kThree);
  EXPECT_EQ(CurrentOf(m_tide), kEnd);
  EXPECT_TRUE(m_tide.DeleteTideValue(20));
  EXPECT_EQ(CurrentOf(m_tide), kEnd);
  EXPECT_TRUE(m_tide.UpdateTideValue(10, 5));
  EXPECT_EQ(CurrentOf(m_tide), Entry(10, 5));
}

TEST_F(TideFileTest, AFailedUpdateHasMovedThePositionAndAFailedDeleteHasNot) {
  Add(kThree);
  m_tide.GetFirstTideValue(m_time, m_value);
  EXPECT_FALSE(m_tide.DeleteTideValue(25));
  EXPECT_EQ(CurrentOf(m_tide), Entry(10, 1));
  EXPECT_FALSE(m_tide.UpdateTideValue(25, 5));
  EXPECT_EQ(CurrentOf(m_tide), Entry(30, 3));
  EXPECT_FALSE(m_tide.UpdateTideValue(35, 5));
  EXPECT_EQ(CurrentOf(m_tide), kEnd);
}

TEST_F(TideFileTest, NotANumberIsNoTime) {
  Add(kThree);
  const auto atTwenty = [&] { m_tide.GetTideValue(20, m_value); };
  atTwenty();
  EXPECT_FALSE(m_tide.AddTideValue(kNaN, 1));
  EXPECT_FALSE(m_tide.DeleteTideValue(kNaN));
  EXPECT_EQ(CurrentOf(m_tide), Entry(20, 2));
  EXPECT_FALSE(m_tide.UpdateTideValue(kNaN, 1));
  EXPECT_EQ(CurrentOf(m_tide), kEnd);
  using Search = bool (TideFile::*)(double&, double&);
  for (const Search search :
       {&TideFile::GetValueBefore, &TideFile::GetValueOnOrBefore, &TideFile::GetValueAfter, &TideFile::GetValueOnOrAfter}) {
    atTwenty();
    m_time = kNaN;
    EXPECT_FALSE((m_tide.*search)(m_time, m_value));
    EXPECT_TRUE(std::isnan(m_time));
    EXPECT_EQ(CurrentOf(m_tide), kEnd);
  }
  atTwenty();
  EXPECT_FALSE(m_tide.GetTideValue(kNaN, m_value));
  EXPECT_EQ(EntriesOf(m_tide), kThree);
}

// ---- Walking ----

TEST_F(TideFileTest, BeforeOnOrAfter) {
  Add(kThree);
  using Search = bool (TideFile::*)(double&, double&);
  struct RowOfTable {
    Search search;
    double from;
    bool found;
    Entry current;
  };
  for (const RowOfTable& row : std::vector<RowOfTable>{{&TideFile::GetValueBefore, 20, true, {10, 1}},
                                                       {&TideFile::GetValueBefore, 25, true, {20, 2}},
                                                       {&TideFile::GetValueBefore, 99, true, {30, 3}},
                                                       {&TideFile::GetValueBefore, 10, false, {10, 1}},
                                                       {&TideFile::GetValueOnOrBefore, 20, true, {20, 2}},
                                                       {&TideFile::GetValueOnOrBefore, 25, true, {20, 2}},
                                                       {&TideFile::GetValueOnOrBefore, 99, true, {30, 3}},
                                                       {&TideFile::GetValueAfter, 20, true, {30, 3}},
                                                       {&TideFile::GetValueAfter, 5, true, {10, 1}},
                                                       {&TideFile::GetValueAfter, 30, false, kEnd},
                                                       {&TideFile::GetValueOnOrAfter, 20, true, {20, 2}},
                                                       {&TideFile::GetValueOnOrAfter, 21, true, {30, 3}},
                                                       {&TideFile::GetValueOnOrAfter, 31, false, kEnd}}) {
    double time = row.from, value = -5;
    EXPECT_EQ((m_tide.*row.search)(time, value), row.found) << row.from;
    EXPECT_EQ(Entry(time, value), row.found ? row.current : Entry(row.from, -5)) << row.from;
    EXPECT_EQ(CurrentOf(m_tide), row.current) << row.from;
  }
}

TEST_F(TideFileTest, BeforeTheFirstEntryThePositionStaysOnTheFirst) {
  Add(kThree);
  m_time = 5;
  EXPECT_FALSE(m_tide.GetValueBefore(m_time, m_value));
  EXPECT_TRUE(m_tide.GetCurrentTideValue(m_time, m_value));
  EXPECT_EQ(m_time, 10);
}

TEST_F(TideFileTest, OnOrBeforeATimeBeforeTheSeriesDeliversTheFirstEntry) {
  Add(kThree);
  m_time = 5;
  EXPECT_TRUE(m_tide.GetValueOnOrBefore(m_time, m_value));
  EXPECT_EQ(Entry(m_time, m_value), Entry(10, 1));
}

TEST_F(TideFileTest, TheFirstEntryIsDeliveredAgainByPreviousAndTheEndIsFalseForNext) {
  Add(kThree);
  EXPECT_TRUE(m_tide.GetFirstTideValue(m_time, m_value));
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(m_tide.GetPreviousTideValue(m_time, m_value));
    EXPECT_EQ(Entry(m_time, m_value), Entry(10, 1));
  }
  EXPECT_TRUE(m_tide.GetLastTideValue(m_time, m_value));
  for (int i = 0; i < 3; ++i) {
    EXPECT_FALSE(m_tide.GetNextTideValue(m_time, m_value));
    EXPECT_EQ(Entry(m_time, m_value), Entry(30, 3));
    EXPECT_EQ(CurrentOf(m_tide), kEnd);
  }
}

TEST_F(TideFileTest, PreviousFromTheEndIsTheLast) {
  Add(kThree);
  EXPECT_TRUE(m_tide.GetPreviousTideValue(m_time, m_value));
  EXPECT_EQ(Entry(m_time, m_value), Entry(30, 3));
}

TEST_F(TideFileTest, CopiesHaveEverythingButThePosition) {
  OpenThree();
  m_tide.AddTideValue(40, 4);
  m_tide.GetFirstTideValue(m_time, m_value);
  TideFile copy(m_tide);
  EXPECT_EQ(CurrentOf(copy), kEnd);
  EXPECT_EQ(CurrentOf(m_tide), Entry(10, 1));
  EXPECT_EQ(EntriesOf(copy), EntriesOf(m_tide));
  copy.AddTideValue(50, 5);
  EXPECT_EQ(m_tide.GetNumValues(), 4);
  EXPECT_TRUE(copy.FileSave());  // it has the name, the count and something to save
  EXPECT_EQ(m_folder.Read("tide").size(), 5u * 16);
  EXPECT_EQ(copy.FileClose(false), 0);

  TideFile assigned;
  assigned.AddTideValue(1, 1);
  assigned.GetFirstTideValue(m_time, m_value);
  assigned = m_tide;
  EXPECT_EQ(CurrentOf(assigned), kEnd);
  EXPECT_EQ(EntriesOf(assigned), EntriesOf(m_tide));
  EXPECT_TRUE(assigned.FileSave());
  EXPECT_EQ(m_folder.Read("tide").size(), 4u * 16);
}

TEST_F(TideFileTest, AssigningToItselfChangesNothing) {
  Add(kThree);
  m_tide.GetTideValue(20, m_value);
  const TideFile& same = m_tide;
  m_tide = same;
  EXPECT_EQ(CurrentOf(m_tide), Entry(20, 2));
  EXPECT_EQ(EntriesOf(m_tide), kThree);
}

TEST_F(TideFileTest, HasNoVirtualOperations) { EXPECT_FALSE(std::is_polymorphic_v<TideFile>); }

TEST_F(TideFileTest, RandomScriptsGoAsOnAPlainMap) {
  std::mt19937 random(8);
  for (int round = 0; round < 40; ++round) {
    TideFile tide;
    LiteralTide literal;
    const unsigned int range = 1u << (2 + round % 12);
    for (int i = 0; i < 3000; ++i) {
      const auto operation = static_cast<unsigned int>(random());
      const auto time = static_cast<double>(random() % range);
      ASSERT_TRUE(DoTheSame(tide, literal, operation, time, i)) << round << ", " << i;
    }
    EXPECT_EQ(EntriesOf(tide), Entries(literal.values.begin(), literal.values.end()));
  }
}

}  // namespace
