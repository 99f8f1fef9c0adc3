// The library's file service on calls of the system that fail, are cut short or come upon somebody else's doing. Neighbours:
// tests/platform/PlatformFilesTest.cpp, the service on calls that work; StreamFaultTest.cpp, what is built on it.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/faults/AllocationFaults.h"
#include "tests/faults/SystemCallFaults.h"
#include "tests/support/InChild.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"
#include "zelbase/platform/PlatformFiles.h"

namespace {

using Repeat = SystemCallFaults::Repeat;

class SystemFiles : public testing::Test {
 protected:
  std::unique_ptr<PlatformFile> Open(const std::string& path, FileRights access = FileRights::ReadWrite,
                                     FileRights sharing = FileRights::ReadWrite,
                                     FileDisposition disposition = FileDisposition::OpenExisting, PlatformFile* inPlaceOf = nullptr) {
    FileOpenRequest request;
    request.path = path;
    request.access = access;
    request.sharing = sharing;
    request.disposition = disposition;
    request.inPlaceOf = inPlaceOf;
    return m_files.Open(request, m_result);
  }

  PlatformFiles& m_files = PlatformFiles::System();
  TemporaryFolder m_folder;
  const std::string m_name = m_folder.Write("a", "abcdef");
  FileResult m_result = FileResult::Ok;
  std::size_t m_done = 0;
};

// ---- Reading and writing -------------------------------------------------------------------------------------------------

TEST_F(SystemFiles, InterruptedAndShortCallsGoOnUntilAllIsDone) {
  const auto file = Open(m_name);
  char text[7] = {};
  {
    SystemCallFaults calls;
    calls.InterruptAt(1, Repeat::ForEver);
    EXPECT_EQ(file->Read(text, 6, m_done), FileResult::Ok);
    EXPECT_EQ(m_done, 6u);
    EXPECT_EQ(file->Write("ghi", 3, m_done), FileResult::Ok);
    EXPECT_EQ(file->Flush(), FileResult::Ok);
    EXPECT_EQ(file->SetEnd(), FileResult::Ok);
    EXPECT_GE(calls.FaultsGiven(), 4u);
  }
  {
    SystemCallFaults calls;
    calls.ShortenAt(SystemCall::Write, 1, Repeat::ForEver);
    EXPECT_EQ(file->Write("jkl", 3, m_done), FileResult::Ok);
    EXPECT_EQ(calls.Writes().size(), 3u);
  }
  EXPECT_STREQ(text, "abcdef");
  EXPECT_EQ(m_folder.Read("a"), "abcdefghijkl");
}

TEST_F(SystemFiles, AWriteThatPutsOutNothingFails) {
  const auto file = Open(m_name);
  SystemCallFaults calls;
  calls.ShortenAt(SystemCall::Write, 1, Repeat::Once, 0, 0);
  EXPECT_EQ(file->Write("ghi", 3, m_done), FileResult::IoFailed);
  EXPECT_EQ(m_done, 0u);
}

TEST_F(SystemFiles, FailuresOfAnOpenFileAreGivenOn) {
  const auto file = Open(m_name);
  char text[6];
  long long number = -7;
  FileTimes times;
  times.written = -7.0;
  const auto failing = [](SystemCall kind, int error, auto operation) {
    SystemCallFaults calls;
    calls.FailAt(kind, 1, error, Repeat::ForEver);
    return operation();
  };
  EXPECT_EQ(failing(SystemCall::Read, EIO, [&] { return file->Read(text, 6, m_done); }), FileResult::IoFailed);
  EXPECT_EQ(failing(SystemCall::Write, ESTALE, [&] { return file->Write("x", 1, m_done); }), FileResult::NetworkNameDeleted);
  EXPECT_EQ(failing(SystemCall::Seek, EOVERFLOW, [&] { return file->Seek(0, 0, number); }), FileResult::InvalidParameter);
  EXPECT_EQ(failing(SystemCall::Sync, ENOSPC, [&] { return file->Flush(); }), FileResult::DiskFull);
  EXPECT_EQ(failing(SystemCall::Status, ESTALE, [&] { return file->GetSize(number); }), FileResult::NetworkNameDeleted);
  EXPECT_EQ(failing(SystemCall::Seek, EIO, [&] { return file->SetEnd(); }), FileResult::IoFailed);
  EXPECT_EQ(failing(SystemCall::Truncate, ENOSPC, [&] { return file->SetEnd(); }), FileResult::DiskFull);
  EXPECT_EQ(failing(SystemCall::Status, EIO, [&] { return file->GetTimes(times); }), FileResult::IoFailed);
  EXPECT_EQ(failing(SystemCall::Status, EIO, [&] { return file->CopyModeFrom(m_name); }), FileResult::IoFailed);
  EXPECT_EQ(failing(SystemCall::Mode, EPERM, [&] { return file->CopyModeFrom(m_name); }), FileResult::AccessDenied);
  EXPECT_EQ(file->CopyModeFrom(m_name + std::string(1, '\0')), FileResult::InvalidName);
  EXPECT_EQ(number, -7);
  EXPECT_EQ(times.written, -7.0);
  EXPECT_EQ(m_folder.Read("a"), "abcdef");
}

TEST_F(SystemFiles, AFileSystemThatCannotForceOutHasNothingToWaitFor) {
  const auto file = Open(m_name);
  SystemCallFaults calls;
  calls.FailAt(SystemCall::Sync, 1, EINVAL, Repeat::Once);
  EXPECT_EQ(file->Flush(), FileResult::Ok);
}

TEST_F(SystemFiles, WithoutAMomentOfBirthTheEarliestTimeStandsIn) {
  // Files of this kind have none.
  const auto file = Open("/proc/self/status", FileRights::Read);
  ASSERT_NE(file, nullptr);
  FileTimes times;
  EXPECT_EQ(file->GetTimes(times), FileResult::Ok);
  EXPECT_LE(times.created, times.written);
  EXPECT_LE(times.created, times.accessed);
  EXPECT_GT(times.created, 0.0);
  const auto other = Open(m_name);
  SystemCallFaults calls;
  calls.FailAt(SystemCall::Status, 2, ENOSYS, Repeat::Once);
  EXPECT_EQ(other->GetTimes(times), FileResult::Ok);
  EXPECT_LE(times.created, times.written);
  EXPECT_EQ(calls.FaultsGiven(), 1u);
}

// ---- Owner and mode ------------------------------------------------------------------------------------------------------

class SystemFilesOwner : public SystemFiles {
 protected:
  static constexpr unsigned int kSomebody = 12345;

  // Mode of a new file after it has taken over that of a model with owner and group, 06750, while changes of owner fail as ordered.
  unsigned int ModeTaken(unsigned int owner, unsigned int group, unsigned long long failures) {
    const std::string model = m_folder.Write("model", "");
    EXPECT_EQ(::chown(model.c_str(), owner, group), 0);
    EXPECT_EQ(::chmod(model.c_str(), 06750), 0);
    std::filesystem::remove(m_folder.File("new"));
    const auto file = Open(m_folder.File("new"), FileRights::Write, FileRights::None, FileDisposition::CreateNew);
    {
      SystemCallFaults calls;
      if (failures > 0) calls.FailAt(SystemCall::Owner, 1, EPERM, failures > 1 ? Repeat::ForEver : Repeat::Once);
      EXPECT_EQ(file->CopyModeFrom(model), FileResult::Ok);
    }
    struct stat status {};
    EXPECT_EQ(::stat(m_folder.File("new").c_str(), &status), 0);
    m_owner = status.st_uid;
    m_group = status.st_gid;
    return status.st_mode & 07777;
  }

  unsigned int m_owner = 0;
  unsigned int m_group = 0;
};

// What only the superuser may do is tried where he runs the tests; the refusals are those of everybody else.
TEST_F(SystemFilesOwner, TheOwnersBitsComeOnlyWithTheOwner) {
  const unsigned int self = ::geteuid();
  const unsigned int group = ::getegid();
  EXPECT_EQ(ModeTaken(self, group, 0), 06750u);
  ASSERT_EQ(self, 0u) << "the files of others take the superuser to make";
  EXPECT_EQ(ModeTaken(kSomebody, kSomebody, 0), 06750u);
  EXPECT_EQ(m_owner, kSomebody);
  EXPECT_EQ(ModeTaken(self, kSomebody, 1), 06750u);  // the group alone was to change
  EXPECT_EQ(m_group, kSomebody);
  EXPECT_EQ(ModeTaken(kSomebody, kSomebody, 1), 0750u);
  EXPECT_EQ(m_owner, self);
  EXPECT_EQ(m_group, kSomebody);
  EXPECT_EQ(ModeTaken(kSomebody, kSomebody, 2), 0750u);
  EXPECT_EQ(m_group, group);
  EXPECT_EQ(ModeTaken(kSomebody, group, 2), 0750u);
}

TEST_F(SystemFilesOwner, AFileThatCannotBeLookedAtTakesTheOwnerAllTheSame) {
  const auto file = Open(m_name);
  SystemCallFaults calls;
  calls.FailAt(SystemCall::Status, 2, EIO, Repeat::Once);
  EXPECT_EQ(file->CopyModeFrom(m_name), FileResult::Ok);
  EXPECT_EQ(calls.FaultsGiven(), 1u);
}

// ---- Opening -------------------------------------------------------------------------------------------------------------

TEST_F(SystemFiles, APathWithoutAFolderLiesInTheCurrentOne) {
  EXPECT_EQ(Open("there is no such file here", FileRights::Read), nullptr);
  EXPECT_EQ(m_result, FileResult::NotFound);
  EXPECT_EQ(Open("/there is no such file here", FileRights::Read), nullptr);
  EXPECT_EQ(m_result, FileResult::NotFound);
}

TEST_F(SystemFiles, AFileThatMayNotBeReadIsOpenedForWritingAlone) {
  {
    SystemCallFaults calls;
    calls.FailAt(SystemCall::Open, 1, EACCES, Repeat::Once);
    const auto file = Open(m_name, FileRights::Write);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->Write("x", 1, m_done), FileResult::Ok);
  }
  SystemCallFaults calls;
  calls.FailAt(SystemCall::Open, 1, EACCES, Repeat::Once);
  EXPECT_EQ(Open(m_name, FileRights::ReadWrite), nullptr);
  EXPECT_EQ(m_result, FileResult::AccessDenied);
  calls.FailAt(SystemCall::Open, 1, EIO, Repeat::Once);
  EXPECT_EQ(Open(m_name, FileRights::Write), nullptr);
  EXPECT_EQ(m_result, FileResult::IoFailed);
}

TEST_F(SystemFiles, WhatBecomesAFifoWhileItIsOpenedIsRefused) {
  SystemCallFaults calls;
  calls.CallAt(SystemCall::Open, 1, [&] {
    std::filesystem::remove(m_name);
    m_folder.MakeFifo("a");
  });
  EXPECT_EQ(Open(m_name), nullptr);
  EXPECT_EQ(m_result, FileResult::AccessDenied);
}

TEST_F(SystemFiles, AFileOfWhichNothingIsKnownIsRefused) {
  SystemCallFaults calls;
  calls.FailAt(SystemCall::Status, 2, EIO, Repeat::Once);
  EXPECT_EQ(Open(m_name), nullptr);
  EXPECT_EQ(m_result, FileResult::AccessDenied);
}

TEST_F(SystemFiles, AFileWhoseFlagsAreUnknownStaysAsItIs) {
  SystemCallFaults calls;
  calls.FailAt(SystemCall::Flags, 1, EBADF, Repeat::Once);
  const auto file = Open(m_name);
  ASSERT_NE(file, nullptr);
  char byte = 0;
  EXPECT_EQ(file->Read(&byte, 1, m_done), FileResult::Ok);
  EXPECT_EQ(byte, 'a');
}

TEST_F(SystemFiles, AFileThatCannotBeCutIsNotOpened) {
  SystemCallFaults calls;
  calls.FailAt(SystemCall::Truncate, 1, EIO, Repeat::Once);
  EXPECT_EQ(Open(m_name, FileRights::Write, FileRights::ReadWrite, FileDisposition::CreateAlways), nullptr);
  EXPECT_EQ(m_result, FileResult::IoFailed);
  EXPECT_EQ(m_folder.Read("a"), "abcdef");
}

// ---- Sharing -------------------------------------------------------------------------------------------------------------

TEST_F(SystemFiles, AFileSystemWithoutLocksIsNotChecked) {
  const auto first = Open(m_name, FileRights::ReadWrite, FileRights::None);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(Open(m_name), nullptr);
  SystemCallFaults calls;
  calls.FailAt(SystemCall::Lock, 1, ENOLCK, Repeat::ForEver);
  EXPECT_NE(Open(m_name), nullptr);
}

TEST_F(SystemFiles, AnInterruptedQuestionIsAskedAgain) {
  const auto first = Open(m_name, FileRights::ReadWrite, FileRights::None);
  SystemCallFaults calls;
  calls.InterruptAt(1, Repeat::ForEver);
  EXPECT_EQ(Open(m_name), nullptr);
  EXPECT_EQ(m_result, FileResult::SharingViolation);
}

TEST_F(SystemFiles, ALockThatSomebodyElseTakesMeanwhileIsTriedForAgain) {
  SystemCallFaults calls;
  calls.FailAt(SystemCall::Lock, 3, EAGAIN, Repeat::Once);  // behind the two questions
  EXPECT_NE(Open(m_name), nullptr);
  EXPECT_EQ(calls.FaultsGiven(), 1u);
  calls.FailAt(SystemCall::Lock, 3, EAGAIN, Repeat::ForEver);
  EXPECT_EQ(Open(m_name), nullptr);
  EXPECT_EQ(m_result, FileResult::SharingViolation);
}

TEST_F(SystemFiles, WhoComesBetweenTheQuestionAndTheClaimIsSeen) {
  std::unique_ptr<PlatformFile> rival;
  SystemCallFaults calls;
  calls.CallAt(SystemCall::Lock, 3, [&] { rival = Open(m_name, FileRights::Read, FileRights::Read); });
  EXPECT_EQ(Open(m_name), nullptr);
  EXPECT_EQ(m_result, FileResult::SharingViolation);
  ASSERT_NE(rival, nullptr);
  rival.reset();
  EXPECT_NE(Open(m_name, FileRights::ReadWrite, FileRights::None), nullptr) << "nothing of the refused one is left";
}

TEST_F(SystemFiles, AnOpeningInAnothersPlaceThatGetsNoLockLeavesTheOther) {
  const auto former = Open(m_name, FileRights::Read, FileRights::Read);
  ASSERT_NE(former, nullptr);
  unsigned long long n = 1;
  for (;; ++n) {
    SystemCallFaults calls;
    calls.FailAt(SystemCall::Lock, n, EAGAIN, Repeat::ForEver);
    const auto file = Open(m_name, FileRights::ReadWrite, FileRights::Read, FileDisposition::OpenExisting, former.get());
    if (calls.FaultsGiven() == 0) {
      EXPECT_NE(file, nullptr);
      break;
    }
  }
  EXPECT_GT(n, 4u);
  EXPECT_EQ(Open(m_name, FileRights::Write), nullptr) << "the former one still denies writing";
  EXPECT_NE(Open(m_name, FileRights::Read), nullptr);
}

TEST_F(SystemFiles, AnOpeningInThePlaceOfAnotherFileIsOneLikeAnyOther) {
  const std::string other = m_folder.Write("b", "");
  const auto former = Open(other, FileRights::ReadWrite, FileRights::None);
  EXPECT_NE(Open(m_name, FileRights::ReadWrite, FileRights::None, FileDisposition::OpenExisting, former.get()), nullptr);
  const auto elsewhere = Open("/proc/self/status", FileRights::Read);
  EXPECT_NE(Open(m_name, FileRights::Read, FileRights::Read, FileDisposition::OpenExisting, elsewhere.get()), nullptr);
  for (const unsigned long long n : {3ULL, 4ULL}) {  // the two looks at which file each is
    SystemCallFaults calls;
    calls.FailAt(SystemCall::Status, n, EIO, Repeat::Once);
    EXPECT_NE(Open(m_name, FileRights::Read, FileRights::Read, FileDisposition::OpenExisting, former.get()), nullptr);
    EXPECT_EQ(calls.FaultsGiven(), 1u);
  }
}

// ---- The file system -----------------------------------------------------------------------------------------------------

TEST_F(SystemFiles, ReplacingAcrossFoldersForcesBothOut) {
  m_folder.MakeFolder("sub");
  const std::string source = m_folder.Write("sub/b", "new");
  SystemCallFaults calls;
  EXPECT_EQ(m_files.Replace(source, m_name), FileResult::Ok);
  std::vector<std::string> forced;
  for (const DiskChange& change : calls.Changes()) {
    if (change.kind == DiskChange::Kind::SyncFolder) forced.push_back(change.path);
  }
  EXPECT_EQ(forced, (std::vector<std::string>{m_folder.Path(), m_folder.File("sub")}));
  EXPECT_EQ(m_folder.Read("a"), "new");
}

TEST_F(SystemFiles, AFolderThatMayNotBeReadIsNotForcedOut) {
  const std::string source = m_folder.Write("b", "new");
  {
    SystemCallFaults calls;
    calls.FailAt(SystemCall::Open, 2, EACCES, Repeat::Once);  // behind the look at who has the target
    EXPECT_EQ(m_files.Replace(source, m_name), FileResult::Ok);
    EXPECT_EQ(calls.FaultsGiven(), 1u);
  }
  m_folder.Write("b", "newer");
  SystemCallFaults calls;
  calls.FailAt(SystemCall::Open, 2, EIO, Repeat::Once);
  EXPECT_EQ(m_files.Replace(source, m_name), FileResult::IoFailed);
}

TEST_F(SystemFiles, RenamesAndRemovalsThatFailLeaveBothFiles) {
  const std::string source = m_folder.Write("b", "new");
  SystemCallFaults calls;
  calls.FailAt(SystemCall::Rename, 1, ENOSPC, Repeat::Once);
  EXPECT_EQ(m_files.Replace(source, m_name), FileResult::DiskFull);
  calls.FailAt(SystemCall::Remove, 1, EROFS, Repeat::Once);
  EXPECT_EQ(m_files.Remove(m_name), FileResult::WriteProtected);
  EXPECT_EQ(m_folder.Read("a"), "abcdef");
  EXPECT_EQ(m_folder.Read("b"), "new");
}

TEST_F(SystemFiles, OnlyWhatCanBeLookedAtIsARegularFile) {
  EXPECT_TRUE(m_files.IsRegularFile(m_name));
  EXPECT_FALSE(m_files.IsRegularFile(m_name + std::string(1, '\0')));
  EXPECT_FALSE(m_files.IsRegularFile(m_folder.File("none")));
  EXPECT_FALSE(m_files.IsRegularFile(m_folder.Path()));
}

TEST_F(SystemFiles, WhatMayNotBeWrittenIsKnownBeforehand) {
  ASSERT_EQ(::chmod(m_name.c_str(), 0644), 0);
  FileStatus status;
  SystemCallFaults calls;
  calls.FailAt(SystemCall::Access, 1, EACCES, Repeat::Once);
  EXPECT_EQ(m_files.GetStatus(m_name, status), FileResult::Ok);
  EXPECT_FALSE(status.isWritable);
  EXPECT_EQ(m_files.GetStatus(m_name, status), FileResult::Ok);
  EXPECT_TRUE(status.isWritable);
}

TEST_F(SystemFiles, KindsOfEntriesAreLookedUpWhereTheSystemDoesNotTellThem) {
  m_folder.MakeFolder("sub");
  std::vector<FolderEntry> entries;
  {
    SystemCallFaults calls;
    calls.HideKinds();
    EXPECT_EQ(m_files.List(m_folder.Path(), entries), FileResult::Ok);
  }
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_FALSE(entries[0].isFolder);
  EXPECT_TRUE(entries[1].isFolder);
  entries.clear();
  SystemCallFaults calls;
  calls.HideKinds();
  calls.FailAt(SystemCall::Status, 1, EIO, Repeat::ForEver);
  EXPECT_EQ(m_files.List(m_folder.Path(), entries), FileResult::Ok);
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_FALSE(entries[1].isFolder);
}

TEST_F(SystemFiles, AFolderThatCannotBeReadToItsEndGivesNothing) {
  const int descriptors = CountOpenDescriptors();
  std::vector<FolderEntry> entries;
  for (unsigned long long n = 1; n <= 3; ++n) {
    SystemCallFaults calls;
    calls.FailAt(SystemCall::Folder, n, EIO, Repeat::Once);
    EXPECT_EQ(m_files.List(m_folder.Path(), entries), FileResult::IoFailed) << n;
  }
  EXPECT_TRUE(entries.empty());
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

TEST_F(SystemFiles, AnEmptyNameListsTheCurrentFolder) {
  ExpectInChild([&] {
    ASSERT_EQ(::chdir(m_folder.Path().c_str()), 0);
    std::vector<FolderEntry> entries;
    EXPECT_EQ(m_files.List("", entries), FileResult::Ok);
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].name, "a");
  });
}

// A new file is not left behind without the memory to hold it.
TEST_F(SystemFiles, WithoutMemoryNothingIsMade) {
  unsigned long long n = 1;
  for (;; ++n) {
    FileOpenRequest request;
    request.path = m_folder.File("a new file with a name too long for a short string");
    request.access = FileRights::Write;
    request.disposition = FileDisposition::CreateNew;
    const int descriptors = CountOpenDescriptors();
    {
      AllocationFaults memory;
      memory.FailAt(n);
      try {
        m_files.Open(request, m_result);
        break;
      } catch (const std::bad_alloc&) {
      }
    }
    EXPECT_EQ(CountOpenDescriptors(), descriptors);
    EXPECT_FALSE(std::filesystem::exists(request.path)) << n;
  }
  EXPECT_GT(n, 1u);
}

}  // namespace
