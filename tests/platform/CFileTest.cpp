#include "zelbase/platform/CFile.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"
#include "zelbase/platform/FaultInjectionFiles.h"

namespace {

std::string ReadAll(CFile& file) {
  std::array<char, 100> buffer{};
  const unsigned int size = file.Read(buffer.data(), buffer.size());
  return {buffer.data(), size};
}

int CauseOfOpening(const std::string& name, unsigned int flags) {
  CFile file;
  CFileException error;
  return file.Open(name, flags, &error) ? 0 : error.m_cause;
}

TEST(CFile, FlagsHaveTheUsualValues) {
  EXPECT_EQ(CFile::modeRead, 0u);
  EXPECT_EQ(CFile::modeWrite, 1u);
  EXPECT_EQ(CFile::modeReadWrite, 2u);
  EXPECT_EQ(CFile::shareCompat, 0u);
  EXPECT_EQ(CFile::shareExclusive, 0x10u);
  EXPECT_EQ(CFile::shareDenyWrite, 0x20u);
  EXPECT_EQ(CFile::shareDenyRead, 0x30u);
  EXPECT_EQ(CFile::shareDenyNone, 0x40u);
  EXPECT_EQ(CFile::modeNoInherit, 0x80u);
  EXPECT_EQ(CFile::modeCreate, 0x1000u);
  EXPECT_EQ(CFile::modeNoTruncate, 0x2000u);
}

TEST(CFile, ReadsInPieces) {
  const TemporaryFolder folder;
  CFile file;
  ASSERT_TRUE(file.Open(folder.Write("a", "abcdef"), CFile::modeRead));
  std::array<char, 4> buffer{};
  EXPECT_EQ(file.Read(buffer.data(), 4), 4u);
  EXPECT_EQ(file.GetPosition(), 4u);
  EXPECT_EQ(file.Read(buffer.data(), 4), 2u);
  EXPECT_EQ(std::string(buffer.data(), 2), "ef");
  EXPECT_EQ(file.Read(buffer.data(), 4), 0u);
  EXPECT_EQ(file.Read(nullptr, 4), 0u);
}

TEST(CFile, WritesSeeksAndChangesItsLength) {
  const TemporaryFolder folder;
  const std::string path = folder.File("a");
  CFile file(path.c_str(), CFile::modeCreate | CFile::modeReadWrite);
  file.Write("abcdef", 6);
  EXPECT_EQ(file.Seek(-4, CFile::current), 2u);
  file.Write("XY", 2);
  EXPECT_EQ(file.SeekToEnd(), 6u);
  file.SeekToBegin();
  EXPECT_EQ(ReadAll(file), "abXYef");
  EXPECT_EQ(file.Seek(-1, CFile::end), 5u);
  file.SetLength(3);
  EXPECT_EQ(file.GetPosition(), 3u);
  EXPECT_EQ(file.GetLength(), 3u);
  file.SetLength(5);
  file.Flush();
  file.Close();
  EXPECT_EQ(folder.Read("a"), std::string("abX\0\0", 5));
}

TEST(CFile, OnlyCreateCutsTheFile) {
  const TemporaryFolder folder;
  for (const unsigned int flags : {0u, 1u, 2u, 0x2000u, 0x2001u, 0x3000u, 0x3001u, 0x3002u}) {
    folder.Write("a", "abc");
    EXPECT_EQ(CauseOfOpening(folder.File("a"), flags), 0) << flags;
    EXPECT_EQ(folder.Read("a"), "abc") << flags;
  }
  for (const unsigned int flags : {0x1000u, 0x1001u, 0x1002u, 0x1011u}) {
    folder.Write("a", "abc");
    EXPECT_EQ(CauseOfOpening(folder.File("a"), flags), 0) << flags;
    EXPECT_EQ(folder.Read("a"), "") << flags;
  }
}

TEST(CFile, OnlyCreateMakesTheFile) {
  const TemporaryFolder folder;
  for (const unsigned int flags : {0u, 1u, 2u, 0x2000u, 0x2002u}) {
    EXPECT_EQ(CauseOfOpening(folder.File("a"), flags), CFileException::fileNotFound) << flags;
    EXPECT_FALSE(folder.Exists("a"));
  }
  EXPECT_EQ(CauseOfOpening(folder.File("b"), CFile::modeCreate), 0);
  EXPECT_TRUE(folder.Exists("b"));
  EXPECT_EQ(CauseOfOpening(folder.File("c"), CFile::modeCreate | CFile::modeNoTruncate), 0);
  EXPECT_TRUE(folder.Exists("c"));
}

TEST(CFile, CreateWithModeReadReadsAndWrites) {
  const TemporaryFolder folder;
  CFile file;
  ASSERT_TRUE(file.Open(folder.File("a"), CFile::modeCreate | CFile::modeRead));
  file.Write("abc", 3);
  file.SeekToBegin();
  EXPECT_EQ(ReadAll(file), "abc");
}

TEST(CFile, AccessIsWhatWasAskedFor) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  CFile reading(path.c_str(), CFile::modeRead);
  EXPECT_THROW(reading.Write("x", 1), CFileException);
  EXPECT_THROW(reading.SetLength(0), CFileException);
  CFile writing(path.c_str(), CFile::modeWrite);
  char byte = 0;
  EXPECT_THROW(writing.Read(&byte, 1), CFileException);
  EXPECT_EQ(folder.Read("a"), "abc");
}

TEST(CFile, NothingButRegularFilesOpens) {
  const TemporaryFolder folder;
  for (const unsigned int flags : {0u, 1u, 2u, 0x20u, 0x1000u, 0x1001u, 0x1002u, 0x3002u}) {
    EXPECT_EQ(CauseOfOpening(folder.Path(), flags), CFileException::accessDenied) << flags;
    EXPECT_EQ(CauseOfOpening("/dev/zero", flags), CFileException::accessDenied) << flags;
    EXPECT_EQ(CauseOfOpening("/dev/full", flags), CFileException::accessDenied) << flags;
  }
  const std::string fifo = folder.MakeFifo("fifo");
  for (const unsigned int flags : {0u, 1u, 2u, 0x1001u}) {
    EXPECT_EQ(CauseOfOpening(fifo, flags), CFileException::accessDenied) << flags;
  }
}

TEST(CFile, ShareFlagsExcludeOthers) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  struct Row {
    unsigned int share;
    bool mayRead;
    bool mayWrite;
  };
  for (const Row& row :
       {Row{CFile::shareCompat, true, true}, Row{CFile::shareExclusive, false, false}, Row{CFile::shareDenyWrite, true, false},
        Row{CFile::shareDenyRead, false, true}, Row{CFile::shareDenyNone, true, true}}) {
    CFile holder(path.c_str(), CFile::modeRead | row.share);
    const int refused = CFileException::sharingViolation;
    EXPECT_EQ(CauseOfOpening(path, CFile::modeRead), row.mayRead ? 0 : refused) << row.share;
    EXPECT_EQ(CauseOfOpening(path, CFile::modeWrite), row.mayWrite ? 0 : refused) << row.share;
    EXPECT_EQ(CauseOfOpening(path, CFile::modeReadWrite), row.mayRead && row.mayWrite ? 0 : refused) << row.share;
  }
}

TEST(CFile, CreateDoesNotCutWhatAnotherHolds) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  const CFile holder(path.c_str(), CFile::modeRead | CFile::shareDenyWrite);
  for (const unsigned int flags : {0x1000u, 0x1001u, 0x1002u, 0x1011u}) {
    EXPECT_EQ(CauseOfOpening(path, flags), CFileException::sharingViolation);
    EXPECT_EQ(folder.Read("a"), "abc");
  }
}

TEST(CFile, FailedOpenTellsWhy) {
  const TemporaryFolder folder;
  const std::string path = folder.File("missing");
  CFile file;
  CFileException error;
  EXPECT_FALSE(file.Open(path, CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
  EXPECT_EQ(error.m_lOsError, 2);
  EXPECT_EQ(error.m_strFileName, path);
  EXPECT_FALSE(file.Open(path, CFile::modeRead));
  EXPECT_EQ(CauseOfOpening(folder.File("no/missing"), CFile::modeRead), CFileException::badPath);
}

TEST(CFile, NullEmptyAndCutNamesDoNotOpen) {
  using namespace std::string_literals;
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  EXPECT_EQ(CauseOfOpening("", CFile::modeCreate), CFileException::badPath);
  EXPECT_EQ(CauseOfOpening(path + "\0.ini"s, CFile::modeRead), CFileException::badPath);
  CFile file;
  EXPECT_FALSE(file.Open(nullptr, CFile::modeRead));
}

TEST(CFile, OpeningAgainClosesTheFormerFile) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  CFile file(path.c_str(), CFile::modeRead | CFile::shareExclusive);
  EXPECT_TRUE(file.Open(path, CFile::modeRead | CFile::shareExclusive));
  EXPECT_FALSE(file.Open(folder.File("missing"), CFile::modeRead));
  EXPECT_EQ(file.GetFilePath(), "");
  EXPECT_EQ(CauseOfOpening(path, CFile::modeRead), 0);
}

TEST(CFile, ConstructorThrows) {
  try {
    const CFile file("/no/such/folder/a", CFile::modeRead);
    ADD_FAILURE() << "no exception";
  } catch (const CFileException& failure) {
    EXPECT_EQ(failure.m_cause, CFileException::badPath);
    EXPECT_STRNE(failure.what(), "");
  }
}

TEST(CFile, ClosedFileThrowsInvalidHandle) {
  CFile file;
  char byte = 0;
  EXPECT_THROW(file.Read(&byte, 1), CFileException);
  EXPECT_THROW(file.Write(&byte, 1), CFileException);
  EXPECT_THROW(file.Seek(0, CFile::begin), CFileException);
  EXPECT_THROW(file.GetPosition(), CFileException);
  EXPECT_THROW(file.SetLength(0), CFileException);
  EXPECT_THROW(file.Flush(), CFileException);
  EXPECT_NO_THROW(file.Close());
  EXPECT_NO_THROW(file.Abort());
  try {
    file.GetLength();
    ADD_FAILURE() << "no exception";
  } catch (const CFileException& failure) {
    EXPECT_EQ(failure.m_cause, CFileException::invalidFile);
    EXPECT_EQ(failure.m_lOsError, 6);
  }
}

TEST(CFile, BadSeekThrowsAndMovesNothing) {
  const TemporaryFolder folder;
  CFile file(folder.Write("a", "abc").c_str(), CFile::modeReadWrite);
  file.Seek(2, CFile::begin);
  try {
    file.Seek(-3, CFile::current);
    ADD_FAILURE() << "no exception";
  } catch (const CFileException& failure) {
    EXPECT_EQ(failure.m_cause, CFileException::badSeek);
  }
  EXPECT_THROW(file.Seek(0, 3), CFileException);
  EXPECT_THROW(file.Seek(0, 0xFFFFFFFFu), CFileException);
  EXPECT_THROW(file.SetLength(~0ull), CFileException);
  EXPECT_EQ(file.GetPosition(), 2u);
  EXPECT_EQ(file.Seek(100, CFile::begin), 100u);
  EXPECT_EQ(file.GetLength(), 3u);
}

TEST(CFile, NamesAreThoseGivenToOpen) {
  const TemporaryFolder folder;
  folder.Write("a.ini", "");
  CFile file;
  ASSERT_TRUE(file.Open(folder.InterfacePath() + "\\a.ini", CFile::modeRead));
  EXPECT_EQ(file.GetFilePath(), folder.InterfacePath() + "\\a.ini");
  EXPECT_EQ(file.GetFileName(), "a.ini");
  file.Close();
  EXPECT_EQ(file.GetFilePath(), "");
  EXPECT_EQ(file.GetFileName(), "");
}

TEST(CFile, EveryFailedOperationThrowsItsNumber) {
  const TemporaryFolder folder;
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  CFile file(folder.Write("a", "abc").c_str(), CFile::modeReadWrite);
  files.FailAt(1, FileResult::DiskFull, FaultInjectionFiles::Repeat::ForEver);
  char byte = 0;
  const auto causeOf = [](auto operation) {
    try {
      operation();
    } catch (const CFileException& failure) {
      return failure.m_lOsError;
    }
    return 0;
  };
  EXPECT_EQ(causeOf([&] { file.Read(&byte, 1); }), 112);
  EXPECT_EQ(causeOf([&] { file.Write(&byte, 1); }), 112);
  EXPECT_EQ(causeOf([&] { file.Seek(0, CFile::begin); }), 112);
  EXPECT_EQ(causeOf([&] { file.GetPosition(); }), 112);
  EXPECT_EQ(causeOf([&] { file.GetLength(); }), 112);
  EXPECT_EQ(causeOf([&] { file.SetLength(1); }), 112);
  EXPECT_EQ(causeOf([&] { file.Flush(); }), 112);
  file.Close();
  EXPECT_EQ(files.OpenFiles(), 0);
}

TEST(CFileException, CausesOfEveryNumber) {
  struct Row {
    int number;
    int cause;
  };
  for (const Row& row :
       {Row{0, CFileException::none}, Row{2, CFileException::fileNotFound}, Row{3, CFileException::badPath},
        Row{4, CFileException::tooManyOpenFiles}, Row{5, CFileException::accessDenied}, Row{6, CFileException::invalidFile},
        Row{8, CFileException::genericException}, Row{19, CFileException::accessDenied}, Row{32, CFileException::sharingViolation},
        Row{59, CFileException::hardIO}, Row{64, CFileException::hardIO}, Row{80, CFileException::accessDenied},
        Row{87, CFileException::genericException}, Row{112, CFileException::diskFull}, Row{123, CFileException::badPath},
        Row{1117, CFileException::hardIO}, Row{-1, CFileException::genericException}}) {
    EXPECT_EQ(CFileException::OsErrorToException(row.number), row.cause) << row.number;
  }
}

TEST(CFile, NothingGoesToOrFromNowhere) {
  const TemporaryFolder folder;
  CFile file(folder.Write("a", "abc").c_str(), CFile::modeReadWrite);
  EXPECT_EQ(file.Read(nullptr, 2), 0u);
  file.Write(nullptr, 2);
  char byte = 'x';
  EXPECT_EQ(file.Read(&byte, 0), 0u);
  file.Write(&byte, 0);
  EXPECT_EQ(byte, 'x');
  EXPECT_EQ(file.GetPosition(), 0u);
  EXPECT_EQ(folder.Read("a"), "abc");
}

}  // namespace
