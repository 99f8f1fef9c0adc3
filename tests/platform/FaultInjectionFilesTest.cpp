#include "zelbase/platform/FaultInjectionFiles.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace {

using Repeat = FaultInjectionFiles::Repeat;

class FaultInjectionFilesTest : public testing::Test {
 protected:
  std::unique_ptr<PlatformFile> Open(const std::string& path) {
    FileOpenRequest request;
    request.path = path;
    request.access = FileRights::ReadWrite;
    return m_files.Open(request, m_result);
  }

  FileResult Write(PlatformFile& file, std::size_t size) { return file.Write(std::string(size, 'x').data(), size, m_done); }

  FileResult Read(PlatformFile& file, std::size_t size) {
    m_text.assign(size, '\0');
    const FileResult result = file.Read(m_text.data(), size, m_done);
    m_text.resize(m_done);
    return result;
  }

  // One operation of each kind on an open file, in the order of FileOperation.
  std::vector<FileResult> EveryFileOperation(PlatformFile& file) {
    long long number = 0;
    FileTimes times;
    std::vector<FileResult> results = {Read(file, 1), Write(file, 1)};
    results.push_back(file.Seek(0, 0, number));
    results.push_back(file.Flush());
    results.push_back(file.GetSize(number));
    results.push_back(file.SetEnd());
    results.push_back(file.GetTimes(times));
    results.push_back(file.CopyModeFrom(m_path));
    return results;
  }

  TemporaryFolder m_folder;
  std::string m_path = m_folder.Write("a", "abcdef");
  FaultInjectionFiles m_files;
  FileResult m_result = FileResult::Ok;
  std::size_t m_done = 0;
  std::string m_text;
};

TEST_F(FaultInjectionFilesTest, PassesEverythingOnWithoutOrders) {
  const auto file = Open(m_path);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(EveryFileOperation(*file), std::vector<FileResult>(8, FileResult::Ok));
  EXPECT_EQ(m_files.Replace(m_path, m_folder.File("b")), FileResult::Ok);
  EXPECT_TRUE(m_files.IsRegularFile(m_folder.File("b")));
  EXPECT_EQ(m_files.FollowLinks(m_folder.MakeLink("link", "b")), m_folder.InterfacePath() + "\\b");
  EXPECT_EQ(m_files.Remove(m_folder.File("b")), FileResult::Ok);
  EXPECT_EQ(m_files.FaultsGiven(), 0u);
  EXPECT_EQ(m_files.Remove(m_folder.File("b")), FileResult::NotFound);
  EXPECT_EQ(m_files.FaultsGiven(), 0u);
}

TEST_F(FaultInjectionFilesTest, CountsEachKind) {
  const auto file = Open(m_path);
  EveryFileOperation(*file);
  m_files.Replace(m_path, m_path);
  m_files.Remove(m_path);
  FileStatus status;
  m_files.GetStatus(m_path, status);
  std::vector<FolderEntry> entries;
  m_files.List(m_path, entries);
  for (unsigned int kind = 0; kind <= static_cast<unsigned int>(FileOperation::List); ++kind) {
    EXPECT_EQ(m_files.Count(static_cast<FileOperation>(kind)), 1u) << kind;
  }
  EXPECT_EQ(m_files.Count(), 13u);
  EXPECT_EQ(m_files.Count(static_cast<FileOperation>(13)), 0u);
  m_files.Reset();
  EXPECT_EQ(m_files.Count(), 0u);
  EXPECT_EQ(m_files.OpenFiles(), 1);
}

TEST_F(FaultInjectionFilesTest, TheNthOperationFailsOnce) {
  for (unsigned long long n = 1; n <= 8; ++n) {
    const auto file = Open(m_path);
    m_files.FailAt(n, FileResult::WriteProtected);
    std::vector<FileResult> expected(8, FileResult::Ok);
    expected[n - 1] = FileResult::WriteProtected;
    EXPECT_EQ(EveryFileOperation(*file), expected) << n;
  }
  EXPECT_EQ(m_files.FaultsGiven(), 8u);
}

TEST_F(FaultInjectionFilesTest, TheNthOperationAndAllLaterOnesFail) {
  for (unsigned long long n = 1; n <= 8; ++n) {
    m_files.Reset();
    const auto file = Open(m_path);
    m_files.FailAt(n, FileResult::IoFailed, Repeat::ForEver);
    std::vector<FileResult> expected(n - 1, FileResult::Ok);
    expected.resize(8, FileResult::IoFailed);
    EXPECT_EQ(EveryFileOperation(*file), expected) << n;
    EXPECT_EQ(m_files.FaultsGiven(), 9 - n);
  }
}

TEST_F(FaultInjectionFilesTest, OnlyTheOrderedKindCounts) {
  const auto file = Open(m_path);
  m_files.FailAt(FileOperation::Seek, 2, FileResult::InvalidHandle);
  EXPECT_EQ(EveryFileOperation(*file), std::vector<FileResult>(8, FileResult::Ok));
  EXPECT_EQ(EveryFileOperation(*file)[2], FileResult::InvalidHandle);
  EXPECT_EQ(m_files.FaultsGiven(), 1u);
}

TEST_F(FaultInjectionFilesTest, FailedOpeningLeavesTheFile) {
  m_files.FailAt(1, FileResult::TooManyOpenFiles);
  FileOpenRequest request;
  request.path = m_path;
  request.access = FileRights::Write;
  request.disposition = FileDisposition::CreateAlways;
  EXPECT_EQ(m_files.Open(request, m_result), nullptr);
  EXPECT_EQ(m_result, FileResult::TooManyOpenFiles);
  EXPECT_EQ(m_folder.Read("a"), "abcdef");
  EXPECT_EQ(m_files.OpenFiles(), 0);
}

TEST_F(FaultInjectionFilesTest, FailedReplacingAndRemovingLeaveTheFile) {
  m_files.FailAt(1, FileResult::IoFailed, Repeat::ForEver);
  EXPECT_EQ(m_files.Replace(m_path, m_folder.File("b")), FileResult::IoFailed);
  EXPECT_EQ(m_files.Remove(m_path), FileResult::IoFailed);
  EXPECT_EQ(m_folder.Read("a"), "abcdef");
  EXPECT_FALSE(m_folder.Exists("b"));
}

TEST_F(FaultInjectionFilesTest, ShortWritePutsOutSoManyBytesAndFails) {
  const auto file = Open(m_path);
  m_files.FailAt(FileOperation::Write, 1, FileResult::IoFailed);
  m_files.BytesBeforeFailure(3);
  EXPECT_EQ(Write(*file, 5), FileResult::IoFailed);
  EXPECT_EQ(m_done, 3u);
  EXPECT_EQ(m_folder.Read("a"), "xxxdef");
  EXPECT_EQ(Write(*file, 1), FileResult::Ok);
  EXPECT_EQ(m_folder.Read("a"), "xxxxef");
}

TEST_F(FaultInjectionFilesTest, ShortReadGivesSoManyBytesAndFails) {
  const auto file = Open(m_path);
  m_files.FailAt(FileOperation::Read, 1, FileResult::UnexpectedNetwork);
  m_files.BytesBeforeFailure(100);
  EXPECT_EQ(Read(*file, 2), FileResult::UnexpectedNetwork);
  EXPECT_EQ(m_text, "ab");
}

TEST_F(FaultInjectionFilesTest, DeviceFillsUp) {
  const auto file = Open(m_path);
  m_files.FillUpAfter(5);
  EXPECT_EQ(Write(*file, 3), FileResult::Ok);
  EXPECT_EQ(Write(*file, 3), FileResult::DiskFull);
  EXPECT_EQ(m_done, 2u);
  EXPECT_EQ(Write(*file, 1), FileResult::DiskFull);
  EXPECT_EQ(m_done, 0u);
  EXPECT_EQ(Write(*file, 0), FileResult::Ok);
  EXPECT_EQ(m_folder.Read("a"), "xxxxxf");
  EXPECT_EQ(m_files.FaultsGiven(), 2u);
}

TEST_F(FaultInjectionFilesTest, ReadsStayBelowTheLimit) {
  const auto file = Open(m_path);
  m_files.LimitReads(4);
  EXPECT_EQ(Read(*file, 100), FileResult::Ok);
  EXPECT_EQ(m_text, "abcd");
  m_files.LimitReads(0);
  EXPECT_EQ(Read(*file, 100), FileResult::Ok);
  EXPECT_EQ(m_text, "ef");
}

TEST_F(FaultInjectionFilesTest, DroppedConnectionFailsEverythingUntilItIsBack) {
  const auto file = Open(m_path);
  Read(*file, 2);
  m_files.DropConnection();
  EXPECT_EQ(EveryFileOperation(*file), std::vector<FileResult>(8, FileResult::NetworkNameDeleted));
  EXPECT_EQ(Open(m_path), nullptr);
  EXPECT_EQ(m_result, FileResult::NetworkNameDeleted);
  EXPECT_EQ(m_files.Replace(m_path, m_folder.File("b")), FileResult::NetworkNameDeleted);
  EXPECT_EQ(m_files.Remove(m_path), FileResult::NetworkNameDeleted);
  EXPECT_FALSE(m_files.IsRegularFile(m_path));
  m_files.RestoreConnection();
  EXPECT_TRUE(m_files.IsRegularFile(m_path));
  EXPECT_EQ(Read(*file, 100), FileResult::Ok);
  EXPECT_EQ(m_text, "cdef");
}

TEST_F(FaultInjectionFilesTest, LookingAtPathsFailsWithoutAConnectionAndByOrder) {
  FileStatus status;
  std::vector<FolderEntry> entries;
  m_files.DropConnection();
  EXPECT_EQ(m_files.GetStatus(m_path, status), FileResult::NetworkNameDeleted);
  EXPECT_EQ(m_files.List(m_folder.Path(), entries), FileResult::NetworkNameDeleted);
  EXPECT_EQ(status.size, 0u);
  EXPECT_TRUE(entries.empty());
  m_files.DropConnection(false);
  EXPECT_EQ(m_files.GetStatus(m_path, status), FileResult::Ok);
  EXPECT_EQ(status.size, 6u);
  EXPECT_EQ(m_files.List(m_folder.Path(), entries), FileResult::Ok);
  EXPECT_EQ(entries.size(), 1u);
  m_files.FailAt(FileOperation::List, 1, FileResult::AccessDenied);
  EXPECT_EQ(m_files.List(m_folder.Path(), entries), FileResult::AccessDenied);
  m_files.FailAt(FileOperation::GetStatus, 1, FileResult::AccessDenied);
  EXPECT_EQ(m_files.GetStatus(m_path, status), FileResult::AccessDenied);
}

TEST_F(FaultInjectionFilesTest, DroppedConnectionMayLetFilesOpen) {
  const auto file = Open(m_path);
  m_files.DropConnection(false);
  EXPECT_NE(Open(m_path), nullptr);
  EXPECT_TRUE(m_files.IsRegularFile(m_path));
  EXPECT_EQ(Read(*file, 1), FileResult::NetworkNameDeleted);
}

TEST_F(FaultInjectionFilesTest, BrokenFilesFailForEverAndLaterOnesDoNot) {
  const auto file = Open(m_path);
  m_files.BreakOpenFiles(FileResult::UnexpectedNetwork);
  EXPECT_EQ(EveryFileOperation(*file), std::vector<FileResult>(8, FileResult::UnexpectedNetwork));
  const auto later = Open(m_path);
  EXPECT_EQ(EveryFileOperation(*later), std::vector<FileResult>(8, FileResult::Ok));
  m_files.Reset();
  EXPECT_EQ(Read(*file, 1), FileResult::UnexpectedNetwork);
  EXPECT_EQ(m_files.FaultsGiven(), 1u);
  m_files.BreakOpenFiles();
  EXPECT_EQ(Read(*later, 1), FileResult::NetworkNameDeleted);
}

TEST_F(FaultInjectionFilesTest, PassesOnInWhosePlaceAFileIsOpened) {
  FileOpenRequest request;
  request.path = m_path;
  request.access = FileRights::ReadWrite;
  request.sharing = FileRights::Read;
  const auto former = m_files.Open(request, m_result);
  ASSERT_NE(former, nullptr);
  EXPECT_EQ(m_files.Open(request, m_result), nullptr);
  EXPECT_EQ(m_result, FileResult::SharingViolation);
  request.inPlaceOf = former.get();
  EXPECT_NE(m_files.Open(request, m_result), nullptr);
}

TEST_F(FaultInjectionFilesTest, CountsOpenFiles) {
  EXPECT_EQ(m_files.OpenFiles(), 0);
  auto one = Open(m_path);
  const auto two = Open(m_path);
  EXPECT_EQ(m_files.OpenFiles(), 2);
  EXPECT_EQ(Open(m_folder.File("missing")), nullptr);
  EXPECT_EQ(m_files.OpenFiles(), 2);
  one.reset();
  EXPECT_EQ(m_files.OpenFiles(), 1);
}

TEST_F(FaultInjectionFilesTest, FilesMayOutliveTheObject) {
  std::unique_ptr<PlatformFile> file;
  {
    FaultInjectionFiles files;
    FileOpenRequest request;
    request.path = m_path;
    file = files.Open(request, m_result);
  }
  EXPECT_EQ(Read(*file, 3), FileResult::Ok);
  EXPECT_EQ(m_text, "abc");
}

TEST_F(FaultInjectionFilesTest, StandsInFrontOfAnother) {
  PlatformFiles& inner = m_files;
  FaultInjectionFiles outer(inner);
  outer.FailAt(2);
  FileOpenRequest request;
  request.path = m_path;
  const auto file = outer.Open(request, m_result);
  EXPECT_EQ(Read(*file, 1), FileResult::IoFailed);
  EXPECT_EQ(m_files.Count(FileOperation::Open), 1u);
  EXPECT_EQ(m_files.Count(FileOperation::Read), 0u);
  EXPECT_EQ(m_files.OpenFiles(), 1);
}

TEST_F(FaultInjectionFilesTest, ADroppedConnectionThatLetsFilesOpenLetsThemBeMovedAndRemoved) {
  m_files.DropConnection(false);
  EXPECT_EQ(m_files.Replace(m_path, m_folder.File("b")), FileResult::Ok);
  EXPECT_EQ(m_files.Remove(m_folder.File("b")), FileResult::Ok);
  EXPECT_FALSE(m_files.IsRegularFile(m_folder.File("b")));
}

TEST_F(FaultInjectionFilesTest, LinksLeadNowhereWithoutAConnection) {
  const std::string link = m_folder.MakeLink("link", "a");
  m_files.DropConnection();
  EXPECT_EQ(m_files.FollowLinks(link), link);
}

TEST_F(FaultInjectionFilesTest, AFailureOfTheLayerBehindGoesBeforeTheOrderedOne) {
  PlatformFiles& inner = m_files;
  FaultInjectionFiles outer(inner);
  FileOpenRequest request;
  request.path = m_path;
  request.access = FileRights::ReadWrite;
  const auto file = outer.Open(request, m_result);
  m_files.FailAt(FileOperation::Write, 1, FileResult::WriteProtected);
  outer.FailAt(FileOperation::Write, 1, FileResult::DiskFull);
  outer.BytesBeforeFailure(2);
  EXPECT_EQ(Write(*file, 4), FileResult::WriteProtected);
  EXPECT_EQ(m_done, 0u);
  EXPECT_EQ(m_folder.Read("a"), "abcdef");
}

}  // namespace
