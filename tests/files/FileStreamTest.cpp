#include "zelbase/files/FileStream.h"

#include <gtest/gtest.h>

#include <climits>
#include <filesystem>
#include <string>

#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"
#include "zelbase/files/HugeFileStream.h"
#include "zelbase/platform/FaultInjectionFiles.h"

namespace {

struct Flags {
  bool create;
  bool simple;
};

constexpr Flags kAllFlags[] = {{false, false}, {false, true}, {true, false}, {true, true}};

bool Put(DataStream& stream, const std::string& text) { return stream.Write(text.data(), static_cast<unsigned int>(text.size())); }

// What a read of exactly `size` bytes gives; "!" and the front that came when it is false.
std::string Take(DataStream& stream, unsigned int size) {
  std::string text(size, '\0');
  if (stream.Read(text.data(), size)) return text;
  return "!" + text.substr(0, text.find('\0'));
}

TEST(FileStream, NewObjectIsNotOpen) {
  FileStream stream;
  char byte = 0;
  EXPECT_FALSE(stream.IsOpen());
  EXPECT_FALSE(stream.Sync());
  EXPECT_FALSE(stream.Read(&byte, 1));
  EXPECT_FALSE(stream.Read(&byte, 0));
  EXPECT_FALSE(stream.Write(&byte, 1));
  EXPECT_FALSE(stream.Write(&byte, 0));
  EXPECT_FALSE(stream.Seek(0, 0));
  EXPECT_EQ(stream.Position(), -1);
  EXPECT_FALSE(stream.SetSize(0));
  stream.Close();
  EXPECT_FALSE(stream.IsOpen());
}

TEST(FileStream, FlagsChooseWhatTheStreamDoes) {
  const TemporaryFolder folder;
  for (const Flags flags : kAllFlags) {
    const std::string path = folder.Write("a", "abc");
    FileStream stream(path.c_str(), flags.create, flags.simple);
    ASSERT_TRUE(stream.IsOpen());
    EXPECT_EQ(folder.Read("a"), flags.create ? "" : "abc");
    EXPECT_EQ(Take(stream, 1), flags.create ? "!" : "a");
    const bool writes = flags.create || !flags.simple;
    EXPECT_EQ(Put(stream, "X"), writes) << flags.create << flags.simple;
    stream.Close();
    EXPECT_EQ(folder.Read("a"), flags.create ? "X" : flags.simple ? "abc" : "aXc");
  }
}

TEST(FileStream, OnlyCreateMakesAFile) {
  const TemporaryFolder folder;
  const std::string path = folder.File("a");
  for (const Flags flags : kAllFlags) {
    FileStream stream;
    EXPECT_EQ(stream.Open(path.c_str(), flags.create, flags.simple), flags.create);
    EXPECT_EQ(stream.IsOpen(), flags.create);
    stream.Close();
    EXPECT_EQ(folder.Exists("a"), flags.create);
    std::filesystem::remove(path);
  }
}

TEST(FileStream, NamesThatDoNotOpen) {
  const TemporaryFolder folder;
  const std::string fifo = folder.MakeFifo("fifo");
  const int descriptors = CountOpenDescriptors();
  for (const char* const name : {static_cast<const char*>(nullptr), "", folder.Path().c_str(), fifo.c_str(), "/dev/null"}) {
    for (const Flags flags : kAllFlags) {
      FileStream stream(name, flags.create, flags.simple);
      EXPECT_FALSE(stream.IsOpen()) << (name != nullptr ? name : "null");
    }
  }
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

TEST(FileStream, BackslashSeparatesFolders) {
  const TemporaryFolder folder;
  folder.MakeFolder("sub");
  FileStream stream((folder.InterfacePath() + "\\sub\\a").c_str(), true, true);
  EXPECT_TRUE(Put(stream, "abc"));
  stream.Close();
  EXPECT_EQ(folder.Read("sub/a"), "abc");
}

TEST(FileStream, ReadIsTrueOnlyForAllBytes) {
  const TemporaryFolder folder;
  FileStream stream(folder.Write("a", "abcde").c_str(), false, true);
  EXPECT_EQ(Take(stream, 3), "abc");
  EXPECT_EQ(Take(stream, 3), "!de");
  EXPECT_EQ(stream.Position(), 5);
  EXPECT_EQ(Take(stream, 1), "!");
  EXPECT_TRUE(stream.Read(nullptr, 0));
  EXPECT_FALSE(stream.Read(nullptr, 1));
  EXPECT_FALSE(stream.Write(nullptr, 1));
}

TEST(FileStream, EndOfFileIsMetAnewByEachRead) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "ab");
  FileStream reader(path.c_str(), false, true);
  EXPECT_EQ(Take(reader, 3), "!ab");
  FileStream writer(path.c_str(), false, false);
  EXPECT_TRUE(writer.Seek(0, 2));
  EXPECT_TRUE(Put(writer, "cd"));
  EXPECT_TRUE(writer.Sync());
  EXPECT_EQ(Take(reader, 2), "cd");
}

TEST(FileStream, ReadingAndWritingMayAlternate) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abcdefgh");
  FileStream stream(path.c_str(), false, false);
  EXPECT_EQ(Take(stream, 1), "a");
  EXPECT_TRUE(Put(stream, "X"));
  EXPECT_EQ(Take(stream, 1), "c");
  EXPECT_TRUE(Put(stream, "Y"));
  EXPECT_TRUE(Put(stream, "Z"));
  EXPECT_EQ(Take(stream, 3), "fgh");
  EXPECT_EQ(Take(stream, 1), "!");
  EXPECT_TRUE(Put(stream, "W"));
  EXPECT_EQ(stream.Position(), 9);
  stream.Close();
  EXPECT_EQ(folder.Read("a"), "aXcYZfghW");
}

// The same bytes in a vector by hand, for a long series of operations.
TEST(FileStream, AgreesWithAPlainArrayOfBytes) {
  const TemporaryFolder folder;
  const std::string path = folder.File("a");
  FileStream stream(path.c_str(), true, false);
  std::string bytes;
  std::size_t at = 0;
  unsigned int random = 20090213;
  const auto next = [&](unsigned int below) {
    random = random * 1664525u + 1013904223u;
    return (random >> 8) % below;
  };
  for (int step = 0; step < 4000; ++step) {
    const unsigned int size = next(3) == 0 ? next(9000) : next(30);
    switch (next(4)) {
      case 0: {
        const std::string text(size, static_cast<char>('a' + next(26)));
        ASSERT_TRUE(Put(stream, text));
        if (size > 0 && at > bytes.size()) bytes.resize(at, '\0');
        if (size > 0 && at + size > bytes.size()) bytes.resize(at + size);
        if (size > 0) bytes.replace(at, size, text);
        at += size;
        break;
      }
      case 1: {
        std::string text(size, '?');
        const bool whole = stream.Read(text.data(), size);
        const std::string expected = at < bytes.size() ? bytes.substr(at, size) : "";
        ASSERT_EQ(whole, expected.size() == size);
        ASSERT_EQ(text.substr(0, expected.size()), expected);
        at += expected.size();
        break;
      }
      case 2:
        at = next(20000);
        ASSERT_TRUE(stream.Seek(static_cast<long long>(at), 0));
        break;
      default:
        ASSERT_EQ(stream.Position(), static_cast<long long>(at));
        if (next(20) == 0) {
          ASSERT_TRUE(stream.Sync());
        }
    }
  }
  stream.Close();
  EXPECT_EQ(folder.Read("a"), bytes);
}

TEST(FileStream, SeeksFromEachOrigin) {
  const TemporaryFolder folder;
  FileStream stream(folder.Write("a", "abcdef").c_str(), false, true);
  EXPECT_TRUE(stream.Seek(2, 0));
  EXPECT_EQ(stream.Position(), 2);
  EXPECT_TRUE(stream.Seek(1, 1));
  EXPECT_EQ(Take(stream, 1), "d");
  EXPECT_TRUE(stream.Seek(-1, 2));
  EXPECT_EQ(Take(stream, 1), "f");
  EXPECT_FALSE(stream.Seek(-1, 0));
  EXPECT_EQ(stream.Position(), 6);
  for (const int origin : {-1, 3, INT_MAX, INT_MIN}) EXPECT_FALSE(stream.Seek(0, origin)) << origin;
}

TEST(FileStream, SeekTakesSigned32BitOffsetsOnly) {
  const TemporaryFolder folder;
  FileStream stream(folder.Write("a", "abc").c_str(), false, true);
  EXPECT_TRUE(stream.Seek(2147483647, 0));
  EXPECT_EQ(stream.Position(), 2147483647);
  for (const long long offset : {2147483648LL, -2147483649LL, 4294967296LL, LLONG_MAX, LLONG_MIN}) {
    EXPECT_FALSE(stream.Seek(offset, 0)) << offset;
    EXPECT_FALSE(stream.Seek(offset, 1)) << offset;
    EXPECT_EQ(stream.Position(), 2147483647);
  }
}

TEST(FileStream, PositionBeyond32BitsIsMinusOne) {
  const TemporaryFolder folder;
  FileStream stream(folder.Write("a", "abc").c_str(), false, true);
  EXPECT_TRUE(stream.Seek(2147483647, 0));
  EXPECT_TRUE(stream.Seek(1, 1));
  EXPECT_EQ(stream.Position(), -1);
  EXPECT_TRUE(stream.Seek(-2147483648LL, 1));
  EXPECT_EQ(stream.Position(), 0);
}

TEST(FileStream, SetSizeIsAlwaysFalse) {
  const TemporaryFolder folder;
  FileStream stream(folder.Write("a", "abc").c_str(), false, false);
  for (const long long size : {0LL, 1LL, 3LL, 100LL, -1LL}) EXPECT_FALSE(stream.SetSize(size));
  EXPECT_EQ(stream.Position(), 0);
  stream.Close();
  EXPECT_FALSE(stream.SetSize(0));
  EXPECT_EQ(folder.Read("a"), "abc");
}

TEST(FileStream, WhatIsWrittenIsOutAfterSyncAndAfterClose) {
  const TemporaryFolder folder;
  FileStream stream(folder.File("a").c_str(), true, true);
  EXPECT_TRUE(Put(stream, "abc"));
  EXPECT_TRUE(stream.Sync());
  EXPECT_EQ(folder.Read("a"), "abc");
  EXPECT_TRUE(Put(stream, "def"));
  stream.Close();
  EXPECT_EQ(folder.Read("a"), "abcdef");
}

TEST(FileStream, SyncOfAReadingStreamIsTrueAndKeepsThePosition) {
  const TemporaryFolder folder;
  FileStream stream(folder.Write("a", "abcdef").c_str(), false, true);
  EXPECT_EQ(Take(stream, 2), "ab");
  EXPECT_TRUE(stream.Sync());
  EXPECT_EQ(stream.Position(), 2);
  EXPECT_EQ(Take(stream, 2), "cd");
}

TEST(FileStream, OnlyTheReadWriteFormsSyncToTheDevice) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  for (const Flags flags : kAllFlags) {
    FaultInjectionFiles files;
    const PlatformOverride<PlatformFiles> guard(files);
    FileStream stream(path.c_str(), flags.create, flags.simple);
    EXPECT_TRUE(stream.Sync());
    EXPECT_EQ(files.Count(FileOperation::Flush), flags.simple ? 0u : 1u);
    files.FailAt(FileOperation::Flush, 1);
    EXPECT_EQ(stream.Sync(), flags.simple);
  }
}

TEST(FileStream, StaysOpenAfterCloseButDoesNothing) {
  const TemporaryFolder folder;
  FileStream stream(folder.Write("a", "abc").c_str(), false, false);
  const int descriptors = CountOpenDescriptors();
  stream.Close();
  EXPECT_EQ(CountOpenDescriptors(), descriptors - 1);
  EXPECT_TRUE(stream.IsOpen());
  EXPECT_FALSE(stream.Sync());
  EXPECT_EQ(Take(stream, 1), "!");
  EXPECT_FALSE(stream.Read(nullptr, 0));
  EXPECT_FALSE(Put(stream, "x"));
  EXPECT_FALSE(stream.Seek(0, 0));
  EXPECT_EQ(stream.Position(), -1);
  EXPECT_FALSE(stream.SetSize(0));
  stream.Close();
  EXPECT_TRUE(stream.IsOpen());
}

TEST(FileStream, OpensAgainAfterClose) {
  const TemporaryFolder folder;
  FileStream stream(folder.Write("a", "abc").c_str(), false, true);
  stream.Close();
  EXPECT_TRUE(stream.Open(folder.File("a").c_str(), false, true));
  EXPECT_EQ(Take(stream, 3), "abc");
}

TEST(FileStream, FailedOpenHasClosedTheOldFileAndIsNotOpen) {
  const TemporaryFolder folder;
  const int descriptors = CountOpenDescriptors();
  FileStream stream(folder.File("a").c_str(), true, true);
  EXPECT_TRUE(Put(stream, "abc"));
  EXPECT_FALSE(stream.Open(folder.File("none").c_str(), false, true));
  EXPECT_FALSE(stream.IsOpen());
  EXPECT_EQ(folder.Read("a"), "abc");
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
  EXPECT_FALSE(stream.Open(nullptr, true, true));
}

TEST(FileStream, OpenClosesWhatIsOpen) {
  const TemporaryFolder folder;
  FileStream stream(folder.File("a").c_str(), true, true);
  EXPECT_TRUE(Put(stream, "abc"));
  const int descriptors = CountOpenDescriptors();
  EXPECT_TRUE(stream.Open(folder.File("b").c_str(), true, true));
  EXPECT_EQ(folder.Read("a"), "abc");
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

TEST(FileStream, CopyIsTheSameStreamAndClosesItToo) {
  const TemporaryFolder folder;
  const int descriptors = CountOpenDescriptors();
  {
    FileStream stream(folder.Write("a", "abc").c_str(), false, true);
    FileStream copy(stream);
    EXPECT_EQ(Take(stream, 1), "a");
    EXPECT_EQ(Take(copy, 1), "b");
    copy.Close();
    EXPECT_TRUE(stream.IsOpen());
    EXPECT_EQ(Take(stream, 1), "!");
    FileStream assigned;
    assigned = stream;
    EXPECT_TRUE(assigned.IsOpen());
  }
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

TEST(FileStream, LastCopyGoneClosesTheStream) {
  const TemporaryFolder folder;
  const int descriptors = CountOpenDescriptors();
  FileStream copy;
  {
    FileStream stream(folder.File("a").c_str(), true, true);
    copy = stream;
  }
  EXPECT_TRUE(Put(copy, "abc"));
  copy = FileStream();
  EXPECT_EQ(folder.Read("a"), "abc");
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

TEST(FileStream, StartedProgramsInheritNoFile) {
  const TemporaryFolder folder;
  const int inheritable = CountInheritableDescriptors();
  const FileStream stream(folder.File("a").c_str(), true, false);
  EXPECT_EQ(CountInheritableDescriptors(), inheritable);
}

TEST(FileStream, SeveralMayWriteOneFile) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "....");
  FileStream one(path.c_str(), false, false);
  FileStream two(path.c_str(), false, false);
  EXPECT_TRUE(Put(one, "1"));
  EXPECT_TRUE(two.Seek(1, 0));
  EXPECT_TRUE(Put(two, "2"));
  one.Close();
  two.Close();
  EXPECT_EQ(folder.Read("a"), "12..");
}

TEST(FileStream, FailsWhereAnotherDeniesWriting) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  const HugeFileStream writer(path.c_str(), false, true);
  EXPECT_TRUE(FileStream(path.c_str(), false, true).IsOpen());
  EXPECT_FALSE(FileStream(path.c_str(), false, false).IsOpen());
  EXPECT_FALSE(FileStream(path.c_str(), true, true).IsOpen());
  EXPECT_EQ(folder.Read("a"), "abc");
}

TEST(FileStream, FullDiskIsToldBySyncAtTheLatest) {
  const TemporaryFolder folder;
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  FileStream stream(folder.File("a").c_str(), true, true);
  files.FillUpAfter(2);
  const bool written = Put(stream, "abc");
  EXPECT_FALSE(written && stream.Sync());
  EXPECT_EQ(folder.Read("a"), "ab");
}

TEST(FileStream, BytesThatTheSystemRefusedAreWrittenByALaterSync) {
  const TemporaryFolder folder;
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  FileStream stream(folder.File("a").c_str(), true, true);
  EXPECT_TRUE(Put(stream, "abcdefgh"));
  files.FailAt(FileOperation::Write, 1, FileResult::NetworkNameDeleted);
  files.BytesBeforeFailure(3);
  EXPECT_FALSE(stream.Sync());
  EXPECT_EQ(stream.Position(), 8);
  EXPECT_EQ(folder.Read("a"), "abc");
  EXPECT_TRUE(stream.Sync());
  EXPECT_EQ(folder.Read("a"), "abcdefgh");
}

TEST(FileStream, FailedSeekLeavesThePosition) {
  const TemporaryFolder folder;
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  FileStream stream(folder.Write("a", "abcdef").c_str(), false, true);
  EXPECT_EQ(Take(stream, 2), "ab");
  files.FailAt(FileOperation::Seek, 1);
  EXPECT_FALSE(stream.Seek(0, 0));
  EXPECT_EQ(Take(stream, 2), "cd");
  files.FailAt(FileOperation::Seek, 1);
  EXPECT_EQ(stream.Position(), -1);
}

// Opens, writes, reads back, seeks and syncs; true when every step said so.
bool WorkThrough(const std::string& path) {
  FileStream stream;
  if (!stream.Open(path.c_str(), true, false)) return false;
  const std::string text(10000, 'x');
  std::string back(text.size(), '\0');
  bool good = Put(stream, text) && stream.Sync() && stream.Seek(0, 0);
  good = stream.Read(back.data(), static_cast<unsigned int>(back.size())) && good;
  good = stream.Seek(-1, 2) && Put(stream, "y") && stream.Position() == 10000 && good;
  good = stream.Sync() && good;
  stream.Close();
  return good && back == text;
}

TEST(FileStream, EachFailingOperationIsToldAndLeaksNothing) {
  const TemporaryFolder folder;
  const std::string path = folder.File("a");
  const int descriptors = CountOpenDescriptors();
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  unsigned long long n = 1;
  for (;; ++n) {
    files.Reset();
    files.FailAt(n);
    const bool good = WorkThrough(path);
    EXPECT_EQ(files.OpenFiles(), 0);
    EXPECT_EQ(CountOpenDescriptors(), descriptors);
    if (files.FaultsGiven() == 0) {
      EXPECT_TRUE(good);
      break;
    }
    // Only a fault of the closing may go unheard.
    if (good) {
      EXPECT_EQ(n, files.Count());
    }
  }
  EXPECT_GT(n, 6u);
  EXPECT_EQ(folder.Read("a"), std::string(9999, 'x') + "y");
}

TEST(FileStream, GoesOnAfterAFailedOperation) {
  const TemporaryFolder folder;
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  FileStream stream(folder.Write("a", "abcdef").c_str(), false, true);
  files.FailAt(FileOperation::Read, 1, FileResult::NetworkNameDeleted);
  EXPECT_EQ(Take(stream, 2), "!");
  EXPECT_EQ(Take(stream, 2), "ab");
}

TEST(FileStream, NothingGoesToAndFromNowhere) {
  const TemporaryFolder folder;
  FileStream stream(folder.File("a").c_str(), true, false);
  EXPECT_TRUE(stream.Write(nullptr, 0));
  EXPECT_TRUE(stream.Read(nullptr, 0));
  EXPECT_FALSE(stream.Write(nullptr, 1));
  EXPECT_FALSE(stream.Read(nullptr, 1));
}

// What is written waits in the buffer; the device takes none of it.
class FileStreamOnAFullDisk : public testing::Test {
 protected:
  FileStreamOnAFullDisk() {
    stream.Open(folder.Write("a", std::string(10000, 'a')).c_str(), false, false);
    files.FillUpAfter(0);
    EXPECT_TRUE(Put(stream, "xyz"));
  }

  const TemporaryFolder folder;
  FaultInjectionFiles files;
  PlatformOverride<PlatformFiles> guard{files};
  FileStream stream;
};

TEST_F(FileStreamOnAFullDisk, ReadingSeekingAndALongWriteFailFirst) {
  EXPECT_EQ(Take(stream, 2), "!");
  EXPECT_FALSE(stream.Seek(0, 0));
  EXPECT_FALSE(Put(stream, std::string(4095, 'x')));
  EXPECT_FALSE(stream.Sync());
  EXPECT_EQ(stream.Position(), 3);
  files.Reset();
  EXPECT_TRUE(stream.Sync());
  EXPECT_EQ(folder.Read("a").substr(0, 4), "xyza");
}

TEST(FileStream, AReadThatFailsBehindItsFrontIsFalse) {
  const TemporaryFolder folder;
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  FileStream stream(folder.Write("a", std::string(10000, 'a')).c_str(), false, true);
  files.FailAt(FileOperation::Read, 1);
  files.BytesBeforeFailure(7);
  EXPECT_EQ(Take(stream, 9000), "!aaaaaaa");
}

TEST(FileStream, AWriteThatCannotGoBackToTheReadersPlaceFails) {
  const TemporaryFolder folder;
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  FileStream stream(folder.Write("a", "abcdef").c_str(), false, false);
  EXPECT_EQ(Take(stream, 2), "ab");
  files.FailAt(FileOperation::Seek, 1);
  EXPECT_FALSE(Put(stream, "x"));
  EXPECT_TRUE(Put(stream, "y"));
  EXPECT_TRUE(stream.Sync());
  EXPECT_EQ(folder.Read("a"), "abydef");
}

}  // namespace
