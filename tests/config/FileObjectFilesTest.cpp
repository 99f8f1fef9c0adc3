// A FileObject and its file: opening, saving, replacing, and what happens when the file fails.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "tests/config/SettingsTestHelp.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/platform/FaultInjectionFiles.h"

namespace {

constexpr unsigned int kRead = CFile::modeRead | CFile::shareDenyWrite;
constexpr unsigned int kCreate = CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive;

class FileObjectFiles : public testing::Test {
 protected:
  void SetUp() override { GlobalErrorList::Get().Clear(); }
  void TearDown() override { GlobalErrorList::Get().Clear(); }

  // The one error of the process, in words; "" when there is none.
  static std::string OnlyError() {
    GlobalErrorList& errors = GlobalErrorList::Get();
    if (errors.NumErrors(true) == 0) return "";
    if (errors.NumErrors(true) != 1 || errors.NumErrors(false) != 1) return "(several)";
    return errors.CurrentContext() + ": " + errors[0].Format() + " " + errors[0].Details();
  }

  static FileObject Sample() {
    FileObject settings;
    ReadFrom(settings, "first\n[A]\nk=1\nlong=" + std::string(9000, 'x') + "\n");
    return settings;
  }

  TemporaryFolder folder;
};

TEST_F(FileObjectFiles, OpeningReadsTheFile) {
  const std::string name = folder.Write("a.ini", "x\n[A]\nk=1\n");
  FileObject settings;
  EXPECT_FALSE(settings.FileInitialised());
  EXPECT_TRUE(settings.FileOpen(name, kRead));
  EXPECT_TRUE(settings.FileInitialised());
  EXPECT_EQ(settings.GetErrorStatus(), 0);
  EXPECT_EQ(settings.GetFileName(), name);
  EXPECT_EQ(PictureOf(settings), (Picture{{"A", {{"k", "1"}}}}));
}

TEST_F(FileObjectFiles, OpeningTakesBackslashes) {
  folder.Write("a.ini", "[A]\nk=1\n");
  FileObject settings;
  EXPECT_TRUE(settings.FileOpen(folder.InterfacePath() + "\\a.ini", 0U));
  EXPECT_TRUE(settings.HasSection("A"));
}

TEST_F(FileObjectFiles, AnEmptyFileOpensWithStatus2) {
  FileObject settings;
  EXPECT_TRUE(settings.FileOpen(folder.Write("a.ini", ""), kRead));
  EXPECT_TRUE(settings.FileInitialised());
  EXPECT_EQ(settings.GetNumSections(), 0);
  EXPECT_EQ(settings.GetErrorStatus(), 2);
}

TEST_F(FileObjectFiles, AFileWithoutSectionsOpensWithAllItsLines) {
  FileObject settings;
  EXPECT_TRUE(settings.FileOpen(folder.Write("a.ini", "a=1\nb\n"), kRead));
  EXPECT_EQ(settings.GetErrorStatus(), 2);
  EXPECT_EQ(settings.GetExtraInfo(), (std::vector<std::string>{"a=1", "b"}));
}

TEST_F(FileObjectFiles, AFailedOpenHasEmptiedTheObjectAndItsName) {
  FileObject settings;
  settings.FileOpen(folder.Write("a.ini", "x\n[A]\nk=1\n"), kRead);
  settings.SetErrorContext("Store");
  const std::string missing = folder.File("none.ini");
  EXPECT_FALSE(settings.FileOpen(missing, kRead));
  EXPECT_EQ(settings.GetErrorStatus(), 9);
  EXPECT_FALSE(settings.FileInitialised());
  EXPECT_EQ(settings.GetFileName(), "");
  EXPECT_EQ(settings.GetNumSections(), 0);
  EXPECT_TRUE(settings.GetExtraInfo().empty());
  EXPECT_EQ(OnlyError(), "Store: Error opening \"" + missing + "\". " + missing);
}

TEST_F(FileObjectFiles, ACopyReportsUnderTheContextOfItsSource) {
  FileObject settings;
  settings.SetErrorContext("Store");
  FileObject copy(settings);
  const std::string missing = folder.File("none.ini");
  EXPECT_FALSE(copy.FileOpen(missing, kRead));
  EXPECT_EQ(OnlyError(), "Store: Error opening \"" + missing + "\". " + missing);
}

TEST_F(FileObjectFiles, AnEmptyNameIsStatus8AndNotReported) {
  FileObject settings = Sample();
  EXPECT_FALSE(settings.FileOpen("", kRead));
  EXPECT_EQ(settings.GetErrorStatus(), 8);
  EXPECT_EQ(settings.GetNumSections(), 0);
  EXPECT_FALSE(settings.FileSave("", kCreate));
  EXPECT_EQ(settings.GetErrorStatus(), 8);
  EXPECT_FALSE(settings.FileSaveReplacing(""));
  EXPECT_EQ(settings.GetErrorStatus(), 8);
  EXPECT_EQ(OnlyError(), "");
}

TEST_F(FileObjectFiles, FoldersAndFifosDoNotOpen) {
  for (const std::string& name : {folder.MakeFolder("sub"), folder.MakeFifo("fifo"), std::string("/dev/zero")}) {
    FileObject settings;
    EXPECT_FALSE(settings.FileOpen(name, kRead));
    EXPECT_EQ(settings.GetErrorStatus(), 9);
    EXPECT_FALSE(Sample().FileSave(name, kCreate));
    EXPECT_FALSE(Sample().FileSaveReplacing(name)) << name;
  }
  EXPECT_TRUE(folder.Exists("fifo"));
}

TEST_F(FileObjectFiles, TheCreateFlagCutsTheFileAtFileOpenAndReadsNothing) {
  const std::string name = folder.Write("a.ini", "[A]\nk=1\n");
  FileObject settings;
  EXPECT_TRUE(settings.FileOpen(name, CFile::modeCreate));
  EXPECT_TRUE(settings.FileInitialised());
  EXPECT_EQ(settings.GetFileName(), name);
  EXPECT_EQ(settings.GetNumSections(), 0);
  EXPECT_EQ(settings.GetErrorStatus(), 0);
  EXPECT_TRUE(folder.Exists("a.ini"));
  EXPECT_EQ(folder.Read("a.ini"), "");
}

class Hooked : public FileObject {
 public:
  bool answer = true;
  bool claimsToBeRead = false;
  int calls = 0;

 protected:
  bool AfterFileOpen() override {
    ++calls;
    if (claimsToBeRead) SetReadStatus(true);
    SetErrorStatus(77);
    return answer;
  }
};

TEST_F(FileObjectFiles, TheHookDecidesTheResult) {
  const std::string name = folder.Write("a.ini", "no section\n");
  Hooked settings;
  EXPECT_TRUE(settings.FileOpen(name, kRead));
  EXPECT_TRUE(settings.FileInitialised());
  settings.answer = false;
  EXPECT_FALSE(settings.FileOpen(name, kRead));
  EXPECT_FALSE(settings.FileInitialised());
  EXPECT_EQ(settings.GetFileName(), name);
  EXPECT_EQ(settings.GetErrorStatus(), 77);
  EXPECT_FALSE(settings.FileOpen(name, CFile::modeCreate | CFile::modeReadWrite));
  EXPECT_FALSE(settings.FileInitialised());
  EXPECT_EQ(settings.calls, 3);
  EXPECT_FALSE(settings.FileOpen(folder.File("none"), kRead));
  EXPECT_EQ(settings.calls, 3);
}

TEST_F(FileObjectFiles, AHookThatRefusesKeepsTheReadStatusItHasSet) {
  const std::string name = folder.Write("a.ini", "[A]\nk=1\n");
  Hooked settings;
  settings.answer = false;
  settings.claimsToBeRead = true;
  EXPECT_FALSE(settings.FileOpen(name, kRead));
  EXPECT_TRUE(settings.FileInitialised());
  EXPECT_FALSE(settings.FileOpen(name, CFile::modeCreate | CFile::modeReadWrite));
  EXPECT_TRUE(settings.FileInitialised());
  EXPECT_FALSE(settings.FileOpen(folder.File("none"), kRead));
  EXPECT_FALSE(settings.FileInitialised());
}

TEST_F(FileObjectFiles, AnOpenFileIsReadAndStaysOpen) {
  CFile file;
  ASSERT_TRUE(file.Open(folder.Write("a.ini", "[A]\nk=1\n"), kRead));
  FileObject settings;
  EXPECT_TRUE(settings.FileOpen(file, "given"));
  EXPECT_EQ(settings.GetFileName(), "given");
  EXPECT_TRUE(settings.HasSection("A"));
  EXPECT_EQ(file.GetLength(), 8U);
}

TEST_F(FileObjectFiles, SavingElsewhereKeepsTheFileName) {
  FileObject settings;
  settings.FileOpen(folder.Write("a.ini", "[A]\nk=1\n"), kRead);
  const std::string other = folder.File("b.ini");
  EXPECT_TRUE(settings.FileSave(other, kCreate));
  EXPECT_EQ(settings.GetErrorStatus(), 0);
  EXPECT_EQ(settings.GetFileName(), folder.File("a.ini"));
  EXPECT_EQ(folder.Read("b.ini"), "[A]\r\nk = 1\r\n\r\n");
  settings.SetItem("A", "k", 2, true);
  EXPECT_TRUE(settings.FileSave("", kCreate));
  EXPECT_EQ(folder.Read("a.ini"), "[A]\r\nk = 2\r\n\r\n");
  EXPECT_TRUE(settings.FileSaveReplacing(other));
  EXPECT_EQ(settings.GetFileName(), folder.File("a.ini"));
  EXPECT_EQ(folder.Read("b.ini"), folder.Read("a.ini"));
}

TEST_F(FileObjectFiles, OnlyTheCreateFlagCutsWhatWasThere) {
  folder.Write("a.ini", std::string(40, 'x'));
  FileObject settings;
  settings.SetItem("A", "k", 1, true);
  EXPECT_TRUE(settings.FileSave(folder.File("a.ini"), CFile::modeWrite));
  EXPECT_EQ(folder.Read("a.ini"), "[A]\r\nk = 1\r\n\r\n" + std::string(26, 'x'));
  EXPECT_FALSE(settings.FileSave(folder.File("none.ini"), CFile::modeWrite));
  EXPECT_EQ(settings.GetErrorStatus(), 9);
}

TEST_F(FileObjectFiles, ASaveThatDoesNotOpenIsStatus9) {
  FileObject settings = Sample();
  const std::string name = folder.File("none/a.ini");
  EXPECT_FALSE(settings.FileSave(name, kCreate));
  EXPECT_EQ(settings.GetErrorStatus(), 9);
  EXPECT_EQ(OnlyError(), "General: Error opening \"" + name + "\". " + name);
}

TEST_F(FileObjectFiles, AFailedWriteReportsTheObjectsOwnFileNameAndNotTheFileWritten) {
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  FileObject settings = Sample();
  settings.SetFileName("C:\\own.ini");
  files.FailAt(FileOperation::Write, 1, FileResult::DiskFull);
  EXPECT_FALSE(settings.FileSave(folder.File("other.ini"), kCreate));
  EXPECT_EQ(settings.GetErrorStatus(), 1);
  EXPECT_EQ(OnlyError(), "General: Error writing to \"own.ini\". C:\\own.ini");
}

TEST_F(FileObjectFiles, ReplacingMakesANewFile) {
  FileObject settings;
  settings.SetItem("A", "k", 1, true);
  EXPECT_TRUE(settings.FileSaveReplacing(folder.File("a.ini")));
  EXPECT_EQ(folder.Read("a.ini"), "[A]\r\nk = 1\r\n\r\n");
}

TEST_F(FileObjectFiles, ReplacingKeepsTheMode) {
  const std::string name = folder.Write("a.ini", "old");
  ASSERT_EQ(chmod(name.c_str(), 0640), 0);
  EXPECT_TRUE(Sample().FileSaveReplacing(name));
  struct stat status = {};
  ASSERT_EQ(stat(name.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST_F(FileObjectFiles, ReplacingFollowsALink) {
  const std::string target = folder.Write("target.ini", "old");
  const std::string link = folder.MakeLink("link.ini", "target.ini");
  const FileObject settings = Sample();
  EXPECT_TRUE(settings.FileSaveReplacing(link));
  struct stat status = {};
  ASSERT_EQ(lstat(link.c_str(), &status), 0);
  EXPECT_TRUE(S_ISLNK(status.st_mode));
  EXPECT_EQ(folder.Read("target.ini"), WrittenBy(settings));
}

TEST_F(FileObjectFiles, ReplacingAFileThatSomebodyHoldsFails) {
  const std::string name = folder.Write("a.ini", "old");
  CFile holder;
  ASSERT_TRUE(holder.Open(name, CFile::modeRead | CFile::shareDenyWrite));
  const FileObject settings = Sample();
  EXPECT_FALSE(settings.FileSaveReplacing(name));
  EXPECT_EQ(settings.GetErrorStatus(), 9);
  EXPECT_EQ(folder.Read("a.ini"), "old");
}

TEST_F(FileObjectFiles, ReplacingANameWithAZeroByteFails) {
  folder.Write("a.ini", "old");
  EXPECT_FALSE(Sample().FileSaveReplacing(folder.File("a.ini") + std::string(1, '\0') + "b"));
  EXPECT_EQ(folder.Read("a.ini"), "old");
}

// Every file operation of an open or a save fails once, and all from it on fail for ever.
class FileObjectFaults : public FileObjectFiles, public testing::WithParamInterface<FaultInjectionFiles::Repeat> {
 protected:
  // Calls `run` with the n-th operation failing, for each n until a run is clean.
  void ForEachFault(FileResult result, const std::function<void()>& run) {
    FaultInjectionFiles files;
    const PlatformOverride<PlatformFiles> guard(files);
    const int descriptors = CountOpenDescriptors();
    unsigned long long n = 1;
    for (;; ++n) {
      GlobalErrorList::Get().Clear();
      m_before();
      files.Reset();
      files.FailAt(n, result, GetParam());
      m_faults = &files;
      run();
      EXPECT_EQ(files.OpenFiles(), 0) << n;
      EXPECT_EQ(CountOpenDescriptors(), descriptors) << n;
      if (files.FaultsGiven() == 0) break;
    }
    EXPECT_GE(n, 3U);
  }

  bool Faulty() const { return m_faults->FaultsGiven() != 0; }

  // No name but these may be in the folder.
  bool HoldsOnly(const std::vector<std::string>& names) const {
    std::size_t found = 0;
    for (const std::string& name : names) found += folder.Exists(name) ? 1U : 0U;
    return CountFiles() == found;
  }

  std::size_t CountFiles() const {
    const std::filesystem::directory_iterator entries(folder.Path());
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
  }

  std::function<void()> m_before = [] {};
  FaultInjectionFiles* m_faults = nullptr;
};

TEST_P(FileObjectFaults, Opening) {
  const std::string name = folder.Write("a.ini", WrittenBy(Sample()));
  const Picture whole = PictureOf(Sample());
  ForEachFault(FileResult::IoFailed, [&] {
    FileObject settings;
    settings.SetItem("Old", "k", 1, true);
    bool opened = false;
    bool thrown = false;
    try {
      opened = settings.FileOpen(name, kRead);
    } catch (const CFileException&) {
      thrown = true;
    }
    EXPECT_FALSE(settings.HasSection("Old"));
    EXPECT_EQ(opened, !Faulty());
    EXPECT_EQ(settings.FileInitialised(), opened);
    if (opened) {
      EXPECT_EQ(PictureOf(settings), whole);
      EXPECT_EQ(OnlyError(), "");
    } else if (thrown) {
      EXPECT_EQ(settings.GetFileName(), name);
      EXPECT_EQ(settings.GetErrorStatus(), 0);
      EXPECT_EQ(OnlyError(), "");
    } else {
      EXPECT_EQ(settings.GetFileName(), "");
      EXPECT_EQ(settings.GetErrorStatus(), 9);
      EXPECT_EQ(OnlyError(), "General: Error opening \"" + name + "\". " + name);
    }
  });
}

TEST_P(FileObjectFaults, Saving) {
  FileObject settings = Sample();
  const std::string name = folder.File("a.ini");
  settings.SetFileName(name);
  const Picture whole = PictureOf(settings);
  const std::string text = WrittenBy(settings);
  ForEachFault(FileResult::DiskFull, [&] {
    const bool saved = settings.FileSave("", kCreate);
    const int status = settings.GetErrorStatus();
    EXPECT_EQ(saved, !Faulty());
    EXPECT_EQ(PictureOf(settings), whole);
    EXPECT_EQ(settings.GetExtraInfo().size(), 1U);
    if (saved) {
      EXPECT_EQ(status, 0);
      EXPECT_EQ(folder.Read("a.ini"), text);
      EXPECT_EQ(OnlyError(), "");
    } else {
      EXPECT_TRUE(status == 9 || status == 1);
      EXPECT_EQ(OnlyError(), std::string("General: Error ") + (status == 9 ? "opening" : "writing to") + " \"" + name + "\". " + name);
    }
  });
}

TEST_P(FileObjectFaults, SavingInPlaceOfTheOldFile) {
  FileObject settings = Sample();
  const std::string name = folder.File("a.ini");
  settings.SetFileName(name);
  const Picture whole = PictureOf(settings);
  const std::string text = WrittenBy(settings);
  for (const bool present : {true, false}) {
    m_before = [&] {
      std::filesystem::remove_all(folder.Path());
      std::filesystem::create_directory(folder.Path());
      if (present) folder.Write("a.ini", "old");
    };
    ForEachFault(FileResult::DiskFull, [&] {
      const bool saved = settings.FileSaveReplacing("");
      const int status = settings.GetErrorStatus();
      EXPECT_EQ(saved, !Faulty());
      EXPECT_EQ(PictureOf(settings), whole);
      EXPECT_EQ(folder.Read("a.ini"), saved ? text : present ? "old" : "");
      EXPECT_EQ(folder.Exists("a.ini"), saved || present);
      // What fails for ever cannot be removed either.
      EXPECT_TRUE(GetParam() == FaultInjectionFiles::Repeat::ForEver || HoldsOnly({"a.ini"}));
      if (saved) {
        EXPECT_EQ(status, 0);
        EXPECT_EQ(OnlyError(), "");
      } else {
        EXPECT_TRUE(status == 9 || status == 1);
        EXPECT_EQ(OnlyError(), std::string("General: Error ") + (status == 9 ? "opening" : "writing to") + " \"" + name + "\". " + name);
      }
    });
  }
}

INSTANTIATE_TEST_SUITE_P(OnceAndForEver, FileObjectFaults,
                         testing::Values(FaultInjectionFiles::Repeat::Once, FaultInjectionFiles::Repeat::ForEver));

TEST_F(FileObjectFiles, AFullDiskLeavesTheOldFileWhole) {
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  const std::string name = folder.Write("a.ini", "old");
  const FileObject settings = Sample();
  files.FillUpAfter(5000);
  EXPECT_FALSE(settings.FileSaveReplacing(name));
  EXPECT_EQ(settings.GetErrorStatus(), 1);
  EXPECT_EQ(folder.Read("a.ini"), "old");
}

TEST_F(FileObjectFiles, AReadThatFailsMidwayPassesAsCFileExceptionOutOfBothForms) {
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  const std::string name = folder.Write("a.ini", WrittenBy(Sample()));
  FileObject settings;
  files.FailAt(FileOperation::Read, 2);
  EXPECT_THROW(settings.FileOpen(name, kRead), CFileException);
  EXPECT_TRUE(settings.HasSection("A"));
  EXPECT_FALSE(settings.FileInitialised());
  CFile file;
  ASSERT_TRUE(file.Open(name, kRead));
  files.FailAt(FileOperation::Read, 2);
  EXPECT_THROW(settings.FileOpen(file, name), CFileException);
  EXPECT_EQ(files.OpenFiles(), 1);
}

TEST_F(FileObjectFiles, SlowReadsGiveTheSameText) {
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  const std::string name = folder.Write("a.ini", WrittenBy(Sample()));
  files.LimitReads(7);
  FileObject settings;
  EXPECT_TRUE(settings.FileOpen(name, kRead));
  EXPECT_EQ(PictureOf(settings), PictureOf(Sample()));
}

}  // namespace
