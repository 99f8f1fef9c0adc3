#include "zelbase/platform/PlatformFiles.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/ChildProcess.h"
#include "tests/support/RunProgram.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"

namespace {

constexpr FileRights kRights[] = {FileRights::None, FileRights::Read, FileRights::Write, FileRights::ReadWrite};
constexpr FileDisposition kDispositions[] = {FileDisposition::OpenExisting, FileDisposition::OpenOrCreate, FileDisposition::CreateAlways,
                                             FileDisposition::CreateNew};

FileOpenRequest Request(const std::string& path, FileRights access = FileRights::Read, FileRights sharing = FileRights::ReadWrite,
                        FileDisposition disposition = FileDisposition::OpenExisting) {
  return {path, access, sharing, disposition, false};
}

std::unique_ptr<PlatformFile> Open(const FileOpenRequest& request) {
  FileResult result = FileResult::IoFailed;
  return PlatformFiles::System().Open(request, result);
}

// The result of opening; the file is closed again.
FileResult Try(const FileOpenRequest& request) {
  FileResult result = FileResult::IoFailed;
  const bool opened = PlatformFiles::System().Open(request, result) != nullptr;
  EXPECT_EQ(opened, result == FileResult::Ok);
  return result;
}

std::string ReadAll(PlatformFile& file) {
  std::string text(1000, '\0');
  std::size_t done = 0;
  EXPECT_EQ(file.Read(text.data(), text.size(), done), FileResult::Ok);
  text.resize(done);
  return text;
}

FileResult WriteText(PlatformFile& file, const std::string& text) {
  std::size_t done = 0;
  return file.Write(text.data(), text.size(), done);
}

// ---- Opening ----

TEST(PlatformFiles, ReadsWhatIsThere) {
  const TemporaryFolder folder;
  const auto file = Open(Request(folder.Write("a", "abc")));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(ReadAll(*file), "abc");
  std::size_t done = 99;
  char byte = 0;
  EXPECT_EQ(file->Read(&byte, 1, done), FileResult::Ok);
  EXPECT_EQ(done, 0u);
}

TEST(PlatformFiles, DispositionsOfAMissingFile) {
  const TemporaryFolder folder;
  for (const FileRights access : kRights) {
    EXPECT_EQ(Try(Request(folder.File("none"), access)), FileResult::NotFound);
    EXPECT_FALSE(folder.Exists("none"));
    for (const FileDisposition disposition : {FileDisposition::OpenOrCreate, FileDisposition::CreateAlways, FileDisposition::CreateNew}) {
      EXPECT_EQ(Try(Request(folder.File("new"), access, FileRights::ReadWrite, disposition)), FileResult::Ok);
      EXPECT_TRUE(folder.Exists("new"));
      std::filesystem::remove(folder.File("new"));
    }
  }
}

TEST(PlatformFiles, DispositionsOfAnExistingFile) {
  const TemporaryFolder folder;
  for (const FileRights access : kRights) {
    const auto contentAfter = [&](FileDisposition disposition, FileResult expected) {
      const std::string path = folder.Write("a", "abc");
      EXPECT_EQ(Try(Request(path, access, FileRights::ReadWrite, disposition)), expected);
      return folder.Read("a");
    };
    EXPECT_EQ(contentAfter(FileDisposition::OpenExisting, FileResult::Ok), "abc");
    EXPECT_EQ(contentAfter(FileDisposition::OpenOrCreate, FileResult::Ok), "abc");
    EXPECT_EQ(contentAfter(FileDisposition::CreateAlways, FileResult::Ok), "");
    EXPECT_EQ(contentAfter(FileDisposition::CreateNew, FileResult::FileExists), "abc");
  }
}

TEST(PlatformFiles, BothSeparatorsOpenAndCaseCounts) {
  const TemporaryFolder folder;
  folder.MakeFolder("Sub");
  folder.Write("Sub/a.ini", "abc");
  EXPECT_EQ(Try(Request(folder.InterfacePath() + "\\Sub\\a.ini")), FileResult::Ok);
  EXPECT_EQ(Try(Request(folder.Path() + "/Sub\\a.ini")), FileResult::Ok);
  EXPECT_EQ(Try(Request(folder.Path() + "/Sub/A.ini")), FileResult::NotFound);
  EXPECT_EQ(Try(Request(folder.Path() + "/sub/a.ini")), FileResult::PathNotFound);
}

TEST(PlatformFiles, NamesThatCannotBe) {
  using namespace std::string_literals;
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  EXPECT_EQ(Try(Request("")), FileResult::PathNotFound);
  EXPECT_EQ(Try(Request(path + "\0x"s)), FileResult::InvalidName);
  EXPECT_EQ(Try(Request(path + "/b")), FileResult::PathNotFound);
  EXPECT_EQ(Try(Request(folder.File(std::string(300, 'x')))), FileResult::InvalidName);
  EXPECT_EQ(Try(Request(folder.Path() + std::string(5000, '/') + "a")), FileResult::InvalidName);
}

TEST(PlatformFiles, NamesMayBeLongerThan260) {
  const TemporaryFolder folder;
  std::string name;
  for (int depth = 0; depth < 5; ++depth) {
    name += std::string(200, static_cast<char>('a' + depth));
    folder.MakeFolder(name);
    name += '/';
  }
  const std::string path = folder.File(name + "x");
  ASSERT_GT(path.size(), 1000u);
  const auto file = Open(Request(path, FileRights::Write, FileRights::ReadWrite, FileDisposition::CreateNew));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(WriteText(*file, "abc"), FileResult::Ok);
  EXPECT_EQ(folder.Read(name + "x"), "abc");
}

TEST(PlatformFiles, NamesHoldAnyByte) {
  const TemporaryFolder folder;
  const std::string name = "\xB0 \x80\xFF\x01\n.ini";
  ASSERT_EQ(Try(Request(folder.File(name), FileRights::Write, FileRights::ReadWrite, FileDisposition::CreateNew)), FileResult::Ok);
  EXPECT_TRUE(folder.Exists(name));
}

TEST(PlatformFiles, NothingButRegularFilesOpensAndNothingIsWaitedFor) {
  const TemporaryFolder folder;
  const std::string fifo = folder.MakeFifo("fifo");
  const int descriptors = CountOpenDescriptors();
  for (const std::string& path : {folder.Path(), fifo, folder.MakeLink("link", fifo), std::string("/dev/null"), std::string("/dev/zero"),
                                  std::string("/dev/full"), std::string("/dev/tty")}) {
    for (const FileRights access : kRights) {
      for (const FileDisposition disposition : kDispositions) {
        const FileResult expected = disposition == FileDisposition::CreateNew ? FileResult::FileExists : FileResult::AccessDenied;
        EXPECT_EQ(Try(Request(path, access, FileRights::ReadWrite, disposition)), expected) << path;
      }
    }
  }
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

TEST(PlatformFiles, PermissionsCount) {
  const TemporaryFolder folder;
  std::filesystem::permissions(folder.Path(), std::filesystem::perms(0777));
  const std::string secret = folder.Write("secret", "abc");
  const std::string readable = folder.Write("readable", "abc");
  const std::string writable = folder.Write("writable", "abc");
  std::filesystem::permissions(secret, std::filesystem::perms(0));
  std::filesystem::permissions(readable, std::filesystem::perms(0444));
  std::filesystem::permissions(writable, std::filesystem::perms(0222));
  ChildProcess child([&] {
    if (!BecomeOrdinaryUser()) return 100;
    if (Try(Request(secret)) != FileResult::AccessDenied) return 1;
    if (Try(Request(readable)) != FileResult::Ok) return 2;
    if (Try(Request(readable, FileRights::Write)) != FileResult::AccessDenied) return 3;
    if (Try(Request(readable, FileRights::Read, FileRights::Read, FileDisposition::OpenOrCreate)) != FileResult::Ok) return 4;
    if (Try(Request(readable, FileRights::Read, FileRights::Read, FileDisposition::CreateAlways)) != FileResult::AccessDenied) return 5;
    if (Try(Request(writable)) != FileResult::AccessDenied) return 6;
    const auto file = Open(Request(writable, FileRights::Write));
    return file != nullptr && WriteText(*file, "x") == FileResult::Ok ? 0 : 7;
  });
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  EXPECT_EQ(folder.Read("readable"), "abc");
}

TEST(PlatformFiles, DescriptorsRunOut) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  ChildProcess child([&] {
    LimitDescriptors(10);
    std::vector<std::unique_ptr<PlatformFile>> files;
    FileResult result = FileResult::Ok;
    for (int i = 0; i < 20 && result == FileResult::Ok; ++i) {
      files.push_back(PlatformFiles::System().Open(Request(path), result));
    }
    LimitDescriptors(20);  // the undefined-behaviour sanitizer takes one to look at an object that ends
    return static_cast<int>(result);
  });
  EXPECT_EQ(child.Wait(), static_cast<int>(FileResult::TooManyOpenFiles)) << child.ErrorText();
}

TEST(PlatformFiles, StartedProgramsInheritNoFile) {
  const TemporaryFolder folder;
  const int inheritable = CountInheritableDescriptors();
  const int open = CountOpenDescriptors();
  const auto reading = Open(Request(folder.Write("a", "abc")));
  const auto writing = Open(Request(folder.File("b"), FileRights::ReadWrite, FileRights::None, FileDisposition::CreateAlways));
  EXPECT_EQ(CountOpenDescriptors(), open + 2);
  EXPECT_EQ(CountInheritableDescriptors(), inheritable);
}

TEST(PlatformFiles, NoFailureLeavesADescriptorOpen) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  const auto holder = Open(Request(path, FileRights::Read, FileRights::None));
  const int descriptors = CountOpenDescriptors();
  EXPECT_EQ(Try(Request(path)), FileResult::SharingViolation);
  EXPECT_EQ(Try(Request(path, FileRights::Write, FileRights::Read, FileDisposition::CreateAlways)), FileResult::SharingViolation);
  EXPECT_EQ(Try(Request(path, FileRights::Write, FileRights::Read, FileDisposition::CreateNew)), FileResult::FileExists);
  EXPECT_EQ(Try(Request(folder.File("none"))), FileResult::NotFound);
  EXPECT_EQ(Try(Request(folder.Path(), FileRights::Write)), FileResult::AccessDenied);
  EXPECT_EQ(PlatformFiles::System().Replace(folder.Write("b", ""), path), FileResult::SharingViolation);
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

// ---- Sharing ----

// The rule once more: neither may do what the other does not grant.
bool Agree(FileRights access, FileRights sharing, FileRights otherAccess, FileRights otherSharing) {
  for (const FileRights right : {FileRights::Read, FileRights::Write}) {
    if (Includes(access, right) && !Includes(otherSharing, right)) return false;
    if (Includes(otherAccess, right) && !Includes(sharing, right)) return false;
  }
  return true;
}

// Tries all 16 combinations against a holder of the file; returns how many were refused.
int TryAllAgainst(const std::string& path, FileRights heldAccess, FileRights heldSharing) {
  int refused = 0;
  for (const FileRights access : kRights) {
    for (const FileRights sharing : kRights) {
      const bool agree = Agree(access, sharing, heldAccess, heldSharing);
      EXPECT_EQ(Try(Request(path, access, sharing)), agree ? FileResult::Ok : FileResult::SharingViolation)
          << "access " << static_cast<int>(access) << ", sharing " << static_cast<int>(sharing) << ", against access "
          << static_cast<int>(heldAccess) << ", sharing " << static_cast<int>(heldSharing);
      if (!agree) ++refused;
    }
  }
  return refused;
}

TEST(PlatformFiles, EverySharingCombinationWithinAProcess) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  int refused = 0;
  for (const FileRights access : kRights) {
    for (const FileRights sharing : kRights) {
      const auto holder = Open(Request(path, access, sharing));
      ASSERT_NE(holder, nullptr);
      refused += TryAllAgainst(path, access, sharing);
    }
  }
  // For one right each side has four states (does it or not, grants it or not). Of the 16 pairs 7 clash: 4 where one
  // does what the other does not grant, 4 the other way, 1 counted twice. So 9 agree for one right and 81 for both.
  EXPECT_EQ(refused, 256 - 81);
}

TEST(PlatformFiles, EverySharingCombinationBetweenProcesses) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  for (const FileRights access : kRights) {
    for (const FileRights sharing : kRights) {
      ChildProcess child([&](ChildProcess::Turns& turns) {
        const auto holder = Open(Request(path, access, sharing));
        turns.Tell();
        turns.Await();
        return holder != nullptr ? 0 : 1;
      });
      ASSERT_TRUE(child.Await());
      TryAllAgainst(path, access, sharing);
      child.Tell();
      EXPECT_EQ(child.Wait(), 0);
    }
  }
}

TEST(PlatformFiles, ClosingEndsTheClaim) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  auto holder = Open(Request(path, FileRights::ReadWrite, FileRights::None));
  EXPECT_EQ(Try(Request(path)), FileResult::SharingViolation);
  holder.reset();
  EXPECT_EQ(Try(Request(path, FileRights::ReadWrite, FileRights::None)), FileResult::Ok);
}

TEST(PlatformFiles, RefusedOpeningLeavesTheClaimsOfTheHolder) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  const auto holder = Open(Request(path, FileRights::Read, FileRights::Read));
  EXPECT_EQ(Try(Request(path, FileRights::ReadWrite, FileRights::None)), FileResult::SharingViolation);
  EXPECT_EQ(Try(Request(path, FileRights::Write)), FileResult::SharingViolation);
  EXPECT_EQ(Try(Request(path, FileRights::Read, FileRights::Read)), FileResult::Ok);
}

TEST(PlatformFiles, DeathOfTheHolderEndsTheClaim) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  {
    ChildProcess child([&](ChildProcess::Turns& turns) {
      const auto holder = Open(Request(path, FileRights::ReadWrite, FileRights::None));
      turns.Tell();
      turns.Await();
      return 0;
    });
    ASSERT_TRUE(child.Await());
    EXPECT_EQ(Try(Request(path)), FileResult::SharingViolation);
  }  // killed
  EXPECT_EQ(Try(Request(path)), FileResult::Ok);
}

TEST(PlatformFiles, LinksOfBothKindsAreTheSameFile) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  std::filesystem::create_hard_link(path, folder.File("hard"));
  const auto holder = Open(Request(path, FileRights::Read, FileRights::Read));
  EXPECT_EQ(Try(Request(folder.MakeLink("soft", path), FileRights::Write)), FileResult::SharingViolation);
  EXPECT_EQ(Try(Request(folder.File("hard"), FileRights::Write)), FileResult::SharingViolation);
}

TEST(PlatformFiles, CreatingDoesNotCutWhatSharingRefuses) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  const auto denier = Open(Request(path, FileRights::Read, FileRights::Read));
  for (const FileRights access : kRights) {
    EXPECT_EQ(Try(Request(path, access, FileRights::ReadWrite, FileDisposition::CreateAlways)), FileResult::SharingViolation);
    EXPECT_EQ(folder.Read("a"), "abc");
  }
}

TEST(PlatformFiles, CreatingInAnotherProcessDoesNotCutWhatSharingRefuses) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  const auto writer = Open(Request(path, FileRights::Write));
  ChildProcess child(
      [&] { return static_cast<int>(Try(Request(path, FileRights::Write, FileRights::Read, FileDisposition::CreateAlways))); });
  EXPECT_EQ(child.Wait(), static_cast<int>(FileResult::SharingViolation));
  EXPECT_EQ(folder.Read("a"), "abc");
}

TEST(PlatformFiles, WhoCreatedForReadingIsNoWriterAfterwards) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  const auto creator = Open(Request(path, FileRights::Read, FileRights::ReadWrite, FileDisposition::CreateAlways));
  ASSERT_NE(creator, nullptr);
  EXPECT_EQ(Try(Request(path, FileRights::Read, FileRights::Read)), FileResult::Ok);
  EXPECT_EQ(WriteText(*creator, "x"), FileResult::AccessDenied);
}

TEST(PlatformFiles, OneExclusiveHolderAtATime) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  std::atomic<int> holders{0};
  std::atomic<int> crowds{0};
  std::atomic<int> opened{0};
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&] {
      for (int round = 0; round < 50; ++round) {
        const auto file = Open(Request(path, FileRights::ReadWrite, FileRights::None));
        if (file == nullptr) continue;
        if (holders.fetch_add(1) != 0) ++crowds;
        ++opened;
        holders.fetch_sub(1);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(crowds, 0);
  EXPECT_GT(opened, 0);
}

TEST(PlatformFiles, RefusedWritersDoNotDisturbReaders) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  const auto holder = Open(Request(path, FileRights::Read, FileRights::Read));
  std::atomic<int> written{0};
  std::atomic<int> read{0};
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 2; ++thread) {
    threads.emplace_back([&] {
      for (int round = 0; round < 20; ++round) {
        if (Open(Request(path, FileRights::Write)) != nullptr) ++written;
      }
    });
    threads.emplace_back([&] {
      for (int round = 0; round < 500; ++round) {
        if (Open(Request(path, FileRights::Read, FileRights::Read)) != nullptr) ++read;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(written, 0);
  EXPECT_EQ(read, 1000);
}

TEST(PlatformFiles, ForkedChildHoldsOnToItsParentsFiles) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  auto holder = Open(Request(path, FileRights::Read, FileRights::None));
  ChildProcess child([](ChildProcess::Turns& turns) { return turns.Await() ? 0 : 1; });
  holder.reset();
  EXPECT_EQ(Try(Request(path)), FileResult::SharingViolation);
  child.Tell();
  EXPECT_EQ(child.Wait(), 0);
  EXPECT_EQ(Try(Request(path)), FileResult::Ok);
}

// ---- One opening in place of another ----

FileOpenRequest InPlaceOf(PlatformFile& former, const FileOpenRequest& request) {
  FileOpenRequest result = request;
  result.inPlaceOf = &former;
  return result;
}

TEST(PlatformFiles, OwnClaimsAreNoHindranceToTheFileInTheirPlace) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  for (const FileRights access : kRights) {
    for (const FileRights sharing : kRights) {
      const auto former = Open(Request(path, access, sharing));
      for (const FileRights newAccess : kRights) {
        for (const FileRights newSharing : kRights) {
          EXPECT_EQ(Try(InPlaceOf(*former, Request(path, newAccess, newSharing))), FileResult::Ok);
        }
      }
      // The former one holds what it held, no less and no more.
      TryAllAgainst(path, access, sharing);
    }
  }
}

TEST(PlatformFiles, ClaimsOfOthersCountForTheFileInPlaceOfAnother) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  for (const FileRights access : kRights) {
    for (const FileRights sharing : kRights) {
      const auto other = Open(Request(path, access, sharing));
      const auto former = Open(Request(path, FileRights::None));
      ASSERT_NE(former, nullptr);
      for (const FileRights newAccess : kRights) {
        for (const FileRights newSharing : kRights) {
          const bool agree = Agree(newAccess, newSharing, access, sharing);
          EXPECT_EQ(Try(InPlaceOf(*former, Request(path, newAccess, newSharing))), agree ? FileResult::Ok : FileResult::SharingViolation);
        }
      }
      TryAllAgainst(path, access, sharing);
    }
  }
}

TEST(PlatformFiles, TheFileInPlaceOfAnotherHasItsOwnClaimsWhenThatIsClosed) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  for (const FileRights access : kRights) {
    for (const FileRights sharing : kRights) {
      auto former = Open(Request(path, FileRights::ReadWrite, FileRights::None));
      const auto successor = Open(InPlaceOf(*former, Request(path, access, sharing)));
      ASSERT_NE(successor, nullptr);
      former.reset();
      TryAllAgainst(path, access, sharing);
    }
  }
}

TEST(PlatformFiles, InPlaceOfAFileOfAnotherNameMeansNothing) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  const auto holder = Open(Request(path, FileRights::ReadWrite, FileRights::None));
  const auto other = Open(Request(folder.Write("b", ""), FileRights::ReadWrite, FileRights::None));
  EXPECT_EQ(Try(InPlaceOf(*other, Request(path))), FileResult::SharingViolation);
}

TEST(PlatformFiles, NobodyGetsInWhileOneFileTakesThePlaceOfAnother) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  const FileOpenRequest request = Request(path, FileRights::ReadWrite, FileRights::Read);
  auto file = Open(request);
  ASSERT_NE(file, nullptr);
  std::atomic<bool> done{false};
  std::atomic<int> intruders{0};
  std::atomic<int> attempts{0};
  std::thread rival([&] {
    while (!done) {
      if (Open(request) != nullptr) ++intruders;
      ++attempts;
    }
  });
  for (int round = 0; round < 200 || attempts < 20; ++round) {
    auto successor = Open(InPlaceOf(*file, request));
    EXPECT_NE(successor, nullptr);
    if (successor != nullptr) file = std::move(successor);
  }
  done = true;
  rival.join();
  EXPECT_EQ(intruders, 0);
}

// ---- One open file ----

TEST(PlatformFiles, AccessIsWhatWasAskedFor) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  char byte = 0;
  std::size_t done = 99;
  const auto reading = Open(Request(path, FileRights::Read));
  EXPECT_EQ(reading->Write(&byte, 1, done), FileResult::AccessDenied);
  EXPECT_EQ(done, 0u);
  EXPECT_EQ(reading->SetEnd(), FileResult::AccessDenied);
  done = 99;
  const auto writing = Open(Request(path, FileRights::Write));
  EXPECT_EQ(writing->Read(&byte, 1, done), FileResult::AccessDenied);
  EXPECT_EQ(done, 0u);
  EXPECT_EQ(folder.Read("a"), "abc");
}

TEST(PlatformFiles, SeeksFromEachOrigin) {
  const TemporaryFolder folder;
  const auto file = Open(Request(folder.Write("a", "abcdef")));
  long long position = -1;
  EXPECT_EQ(file->Seek(2, 0, position), FileResult::Ok);
  EXPECT_EQ(position, 2);
  EXPECT_EQ(file->Seek(1, 1, position), FileResult::Ok);
  EXPECT_EQ(position, 3);
  EXPECT_EQ(file->Seek(-1, 2, position), FileResult::Ok);
  EXPECT_EQ(position, 5);
  EXPECT_EQ(file->Seek(5000000000, 0, position), FileResult::Ok);
  EXPECT_EQ(position, 5000000000);
  for (const int origin : {-1, 3, 2147483647}) {
    EXPECT_EQ(file->Seek(0, origin, position), FileResult::InvalidParameter);
  }
  EXPECT_EQ(file->Seek(-1, 0, position), FileResult::InvalidParameter);
  EXPECT_EQ(position, 5000000000);
}

TEST(PlatformFiles, EndMovesToThePosition) {
  const TemporaryFolder folder;
  const auto file = Open(Request(folder.Write("a", "abcdef"), FileRights::ReadWrite));
  long long position = 0;
  long long size = 0;
  file->Seek(3, 0, position);
  EXPECT_EQ(file->SetEnd(), FileResult::Ok);
  EXPECT_EQ(folder.Read("a"), "abc");
  file->Seek(6000000000, 0, position);
  EXPECT_EQ(file->SetEnd(), FileResult::Ok);
  EXPECT_EQ(file->GetSize(size), FileResult::Ok);
  EXPECT_EQ(size, 6000000000);
}

TEST(PlatformFiles, FlushSucceeds) {
  const TemporaryFolder folder;
  const auto file = Open(Request(folder.Write("a", "abc"), FileRights::Write));
  EXPECT_EQ(WriteText(*file, "xyz"), FileResult::Ok);
  EXPECT_EQ(file->Flush(), FileResult::Ok);
  EXPECT_EQ(folder.Read("a"), "xyz");
}

TEST(PlatformFiles, TimesAreMillisecondsSince1970) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  // 2009-02-13 23:31:30.25 UTC.
  const std::chrono::sys_time<std::chrono::milliseconds> written{std::chrono::milliseconds(1234567890250)};
  std::filesystem::last_write_time(path, std::chrono::file_clock::from_sys(written));
  FileTimes times;
  ASSERT_EQ(Open(Request(path))->GetTimes(times), FileResult::Ok);
  EXPECT_EQ(times.written, 1234567890250.0);
  const double now = std::chrono::duration<double, std::milli>(std::chrono::system_clock::now().time_since_epoch()).count();
  EXPECT_GT(times.accessed, 1234567890250.0);
  EXPECT_LE(times.accessed, now);
  EXPECT_GT(times.created, 0.0);
  EXPECT_LE(times.created, now);
}

// In a file system in memory, which keeps any number of seconds; a disk's own bounds are nearer.
TEST(PlatformFiles, TimesFarOutEndAfter28000Years) {
  const EnvironmentVariable temporary("TMPDIR", std::filesystem::exists("/dev/shm") ? "/dev/shm" : nullptr);
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  for (const char* const seconds : {"@900000000001", "@9000000000000000000", "@-900000000001", "@-9000000000000000000"}) {
    RunProgram("touch", {"-d", seconds, path});
    FileTimes times;
    ASSERT_EQ(Open(Request(path))->GetTimes(times), FileResult::Ok);
    EXPECT_LE(std::abs(times.written), 900000000001e3) << seconds;
  }
}

TEST(PlatformFiles, FullDiskPutsOutWhatFits) {
  const TemporaryFolder folder;
  const std::string path = folder.File("a");
  ChildProcess child([&] {
    LimitFileSize(1000);
    const auto file = Open(Request(path, FileRights::Write, FileRights::Read, FileDisposition::CreateAlways));
    const std::string text(1500, 'x');
    std::size_t done = 0;
    if (file->Write(text.data(), text.size(), done) != FileResult::DiskFull) return 1;
    return done == 1000 ? 0 : 2;
  });
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  EXPECT_EQ(folder.Read("a"), std::string(1000, 'x'));
}

TEST(PlatformFiles, CopiesTheMode) {
  const TemporaryFolder folder;
  const std::string model = folder.Write("model", "");
  const std::string path = folder.Write("a", "");
  for (const unsigned int mode : {0640u, 0600u, 0755u, 0444u, 0666u}) {
    std::filesystem::permissions(model, std::filesystem::perms(mode));
    const auto file = Open(Request(path, FileRights::Write, FileRights::ReadWrite, FileDisposition::OpenOrCreate));
    if (file == nullptr) break;
    EXPECT_EQ(file->CopyModeFrom(model), FileResult::Ok);
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(mode));
    std::filesystem::permissions(path, std::filesystem::perms(0600));
  }
  EXPECT_EQ(Open(Request(path))->CopyModeFrom(folder.File("none")), FileResult::NotFound);
}

TEST(PlatformFiles, CopiedModeGivesNoRightsOfAnotherOwner) {
  const TemporaryFolder folder;
  std::filesystem::permissions(folder.Path(), std::filesystem::perms(0777));
  // /bin/su belongs to the superuser and runs with his rights.
  const std::string path = folder.File("a");
  ChildProcess child([&] {
    if (!BecomeOrdinaryUser()) return 100;
    const auto file = Open(Request(path, FileRights::Write, FileRights::ReadWrite, FileDisposition::CreateAlways));
    return static_cast<int>(file->CopyModeFrom("/bin/su"));
  });
  EXPECT_EQ(child.Wait(), 0);
  const auto model = std::filesystem::status("/bin/su").permissions();
  ASSERT_NE(model & std::filesystem::perms::set_uid, std::filesystem::perms::none);
  EXPECT_EQ(std::filesystem::status(path).permissions(), model & std::filesystem::perms(0777));
}

// ---- Names on the disk ----

TEST(PlatformFiles, ReplacePutsOneFileInPlaceOfAnother) {
  const TemporaryFolder folder;
  const std::string to = folder.Write("to", "old");
  EXPECT_EQ(PlatformFiles::System().Replace(folder.Write("from", "new"), to), FileResult::Ok);
  EXPECT_EQ(folder.Read("to"), "new");
  EXPECT_FALSE(folder.Exists("from"));
  EXPECT_EQ(PlatformFiles::System().Replace(to, folder.InterfacePath() + "\\fresh"), FileResult::Ok);
  EXPECT_EQ(folder.Read("fresh"), "new");
}

TEST(PlatformFiles, ReplaceTouchesRegularFilesOnly) {
  const TemporaryFolder folder;
  const std::string from = folder.Write("from", "new");
  PlatformFiles& files = PlatformFiles::System();
  EXPECT_EQ(files.Replace(from, folder.MakeFolder("sub")), FileResult::AccessDenied);
  EXPECT_EQ(files.Replace(from, folder.MakeFifo("fifo")), FileResult::AccessDenied);
  EXPECT_EQ(files.Replace(folder.File("fifo"), folder.File("b")), FileResult::AccessDenied);
  EXPECT_EQ(files.Replace(folder.File("none"), from), FileResult::NotFound);
  EXPECT_EQ(files.Replace(from, folder.File("no/file")), FileResult::PathNotFound);
  EXPECT_EQ(files.Replace(from, ""), FileResult::PathNotFound);
  EXPECT_EQ(files.Replace(from, folder.File(std::string("b\0c", 3))), FileResult::InvalidName);
  EXPECT_EQ(folder.Read("from"), "new");
  EXPECT_TRUE(folder.Exists("fifo"));
}

TEST(PlatformFiles, ReplaceHeedsWhoDeniesWriting) {
  const TemporaryFolder folder;
  const std::string from = folder.Write("from", "new");
  const std::string to = folder.Write("to", "old");
  auto holder = Open(Request(to, FileRights::Read, FileRights::Read));
  EXPECT_EQ(PlatformFiles::System().Replace(from, to), FileResult::SharingViolation);
  EXPECT_EQ(folder.Read("to"), "old");
  EXPECT_EQ(folder.Read("from"), "new");
  holder = Open(Request(to));
  EXPECT_EQ(PlatformFiles::System().Replace(from, to), FileResult::Ok);
}

TEST(PlatformFiles, RemoveTakesRegularFilesAndLinks) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "");
  PlatformFiles& files = PlatformFiles::System();
  EXPECT_EQ(files.Remove(folder.MakeLink("link", path)), FileResult::Ok);
  EXPECT_TRUE(folder.Exists("a"));
  EXPECT_EQ(files.Remove(path), FileResult::Ok);
  EXPECT_FALSE(folder.Exists("a"));
  EXPECT_EQ(files.Remove(path), FileResult::NotFound);
  EXPECT_EQ(files.Remove(folder.File("no/a")), FileResult::PathNotFound);
  EXPECT_EQ(files.Remove(folder.MakeFolder("sub")), FileResult::AccessDenied);
  EXPECT_EQ(files.Remove(folder.MakeFifo("fifo")), FileResult::AccessDenied);
}

TEST(PlatformFiles, FollowsLinksToTheirEnd) {
  const TemporaryFolder folder;
  PlatformFiles& files = PlatformFiles::System();
  const std::string end = folder.InterfacePath() + "\\a";
  folder.Write("a", "");
  EXPECT_EQ(files.FollowLinks(folder.MakeLink("absolute", folder.File("a"))), end);
  EXPECT_EQ(files.FollowLinks(folder.MakeLink("relative", "a")), end);
  EXPECT_EQ(files.FollowLinks(folder.MakeLink("chain", "relative")), end);
  EXPECT_EQ(files.FollowLinks(folder.InterfacePath() + "\\chain"), end);
  folder.MakeFolder("sub");
  EXPECT_EQ(files.FollowLinks(folder.MakeLink("sub/up", "../a")), folder.InterfacePath() + "\\sub\\..\\a");
  EXPECT_EQ(files.FollowLinks(folder.MakeLink("far", std::string(1000, '.') + "/x")),
            folder.InterfacePath() + "\\" + std::string(1000, '.') + "\\x");
}

TEST(PlatformFiles, WhatIsNoLinkStaysAsGiven) {
  const TemporaryFolder folder;
  PlatformFiles& files = PlatformFiles::System();
  const std::string path = folder.Write("a", "");
  EXPECT_EQ(files.FollowLinks(path), path);
  EXPECT_EQ(files.FollowLinks(folder.InterfacePath() + "\\a"), folder.InterfacePath() + "\\a");
  EXPECT_EQ(files.FollowLinks("no\\such/file"), "no\\such/file");
  EXPECT_EQ(files.FollowLinks(""), "");
  EXPECT_EQ(files.FollowLinks(std::string("a\0b", 3)), std::string("a\0b", 3));
}

TEST(PlatformFiles, DanglingLinkStandsForTheFileThatIsToCome) {
  const TemporaryFolder folder;
  EXPECT_EQ(PlatformFiles::System().FollowLinks(folder.MakeLink("link", "missing")), folder.InterfacePath() + "\\missing");
}

TEST(PlatformFiles, LinksInACircleStayAsGiven) {
  const TemporaryFolder folder;
  const std::string one = folder.MakeLink("one", "two");
  folder.MakeLink("two", "one");
  EXPECT_EQ(PlatformFiles::System().FollowLinks(one), one);
  EXPECT_FALSE(PlatformFiles::System().IsRegularFile(one));
  EXPECT_EQ(Try(Request(one)), FileResult::InvalidName);
}

TEST(PlatformFiles, LinkToANameWithABackslashStaysAsGiven) {
  const TemporaryFolder folder;
  const std::string link = folder.MakeLink("link", "odd\\name");
  EXPECT_EQ(PlatformFiles::System().FollowLinks(link), link);
}

TEST(PlatformFiles, TellsWhatAPathIs) {
  const TemporaryFolder folder;
  PlatformFiles& files = PlatformFiles::System();
  FileStatus status;
  ASSERT_EQ(files.GetStatus(folder.Write("a", "abc"), status), FileResult::Ok);
  EXPECT_FALSE(status.isFolder);
  EXPECT_TRUE(status.isWritable);
  EXPECT_EQ(status.size, 3u);
  EXPECT_NE(status.record, nullptr);
  std::filesystem::permissions(folder.File("a"), std::filesystem::perms(0444));
  ASSERT_EQ(files.GetStatus(folder.InterfacePath() + "\\a", status), FileResult::Ok);
  EXPECT_FALSE(status.isWritable);
  ASSERT_EQ(files.GetStatus(folder.MakeLink("link", folder.Path()), status), FileResult::Ok);
  EXPECT_TRUE(status.isFolder);
  EXPECT_EQ(files.GetStatus(folder.File("none"), status), FileResult::NotFound);
  EXPECT_EQ(files.GetStatus(folder.File("no/a"), status), FileResult::PathNotFound);
  EXPECT_EQ(files.GetStatus("", status), FileResult::PathNotFound);
  EXPECT_EQ(files.GetStatus(std::string("a\0b", 3), status), FileResult::InvalidName);
  EXPECT_TRUE(status.isFolder);
}

std::vector<std::string> NamesIn(const std::string& folder) {
  std::vector<FolderEntry> entries;
  EXPECT_EQ(PlatformFiles::System().List(folder, entries), FileResult::Ok);
  std::vector<std::string> names;
  for (const FolderEntry& entry : entries) names.push_back(entry.name + (entry.isFolder ? "/" : ""));
  return names;
}

TEST(PlatformFiles, ListsAFolderInByteOrder) {
  const TemporaryFolder folder;
  for (const char* const name : {"b", "a", "B", "\xB0", "a.b", ".hidden"}) folder.Write(name, "");
  folder.MakeFolder("sub");
  folder.MakeFifo("fifo");
  folder.MakeLink("link", "sub");
  folder.MakeLink("nowhere", "none");
  folder.Write("odd\\name", "");
  EXPECT_EQ(NamesIn(folder.Path()), (std::vector<std::string>{".hidden", "B", "a", "a.b", "b", "fifo", "link", "nowhere", "sub/", "\xB0"}));
  EXPECT_EQ(NamesIn(folder.InterfacePath() + "\\sub\\"), std::vector<std::string>());
  EXPECT_EQ(NamesIn(folder.File("link")), std::vector<std::string>());
}

TEST(PlatformFiles, WhatIsNoFolderIsNotListed) {
  const TemporaryFolder folder;
  PlatformFiles& files = PlatformFiles::System();
  std::vector<FolderEntry> entries = {{"kept", false}};
  const int descriptors = CountOpenDescriptors();
  EXPECT_EQ(files.List(folder.File("none"), entries), FileResult::NotFound);
  EXPECT_EQ(files.List(folder.Write("a", ""), entries), FileResult::PathNotFound);
  EXPECT_EQ(files.List(folder.MakeFifo("fifo"), entries), FileResult::PathNotFound);
  EXPECT_EQ(files.List("/dev/null", entries), FileResult::PathNotFound);
  EXPECT_EQ(files.List(std::string("a\0b", 3), entries), FileResult::InvalidName);
  EXPECT_EQ(entries.size(), 1u);
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

TEST(PlatformFiles, ServiceWithoutFoldersKnowsNoPath) {
  class Nothing : public PlatformFiles {
   public:
    std::unique_ptr<PlatformFile> Open(const FileOpenRequest&, FileResult&) override { return nullptr; }
    FileResult Replace(const std::string&, const std::string&) override { return FileResult::NotFound; }
    FileResult Remove(const std::string&) override { return FileResult::NotFound; }
    std::string FollowLinks(const std::string& path) override { return path; }
    bool IsRegularFile(const std::string&) override { return false; }
  };
  Nothing nothing;
  FileStatus status;
  std::vector<FolderEntry> entries;
  EXPECT_EQ(nothing.GetStatus("a", status), FileResult::NotFound);
  EXPECT_EQ(nothing.List("a", entries), FileResult::PathNotFound);
}

TEST(PlatformFiles, TellsRegularFiles) {
  const TemporaryFolder folder;
  PlatformFiles& files = PlatformFiles::System();
  const std::string path = folder.Write("a", "");
  EXPECT_TRUE(files.IsRegularFile(path));
  EXPECT_TRUE(files.IsRegularFile(folder.InterfacePath() + "\\a"));
  EXPECT_TRUE(files.IsRegularFile(folder.MakeLink("link", "a")));
  EXPECT_FALSE(files.IsRegularFile(folder.Path()));
  EXPECT_FALSE(files.IsRegularFile(folder.MakeFifo("fifo")));
  EXPECT_FALSE(files.IsRegularFile("/dev/null"));
  EXPECT_FALSE(files.IsRegularFile(folder.File("none")));
  EXPECT_FALSE(files.IsRegularFile(""));
}

TEST(PlatformFiles, OwnerOnlyFilesAreNobodyElsesFromTheirFirstMoment) {
  const TemporaryFolder folder;
  FileOpenRequest request;
  request.path = folder.File("secret");
  request.access = FileRights::Write;
  request.disposition = FileDisposition::CreateNew;
  request.ownerOnly = true;
  FileResult result = FileResult::IoFailed;
  ASSERT_NE(PlatformFiles::System().Open(request, result), nullptr);
  using std::filesystem::perms;
  EXPECT_EQ(std::filesystem::status(request.path).permissions(), perms::owner_read | perms::owner_write);
}

TEST(PlatformFiles, OverrideAnswersForItsScope) {
  class Nothing : public PlatformFiles {
   public:
    std::unique_ptr<PlatformFile> Open(const FileOpenRequest&, FileResult& result) override {
      result = FileResult::NotFound;
      return nullptr;
    }
    FileResult Replace(const std::string&, const std::string&) override { return FileResult::NotFound; }
    FileResult Remove(const std::string&) override { return FileResult::NotFound; }
    std::string FollowLinks(const std::string& path) override { return path; }
    bool IsRegularFile(const std::string&) override { return false; }
  };
  Nothing nothing;
  {
    const PlatformOverride<PlatformFiles> guard(nothing);
    EXPECT_EQ(&PlatformService<PlatformFiles>::Current(), &nothing);
  }
  EXPECT_EQ(&PlatformService<PlatformFiles>::Current(), &PlatformFiles::System());
}

}  // namespace
