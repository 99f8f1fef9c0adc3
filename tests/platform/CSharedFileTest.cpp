#include "zelbase/platform/CSharedFile.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <string>

#include "zelbase/platform/CArchive.h"

namespace {

std::string ReadText(CFile& file, unsigned int count) {
  std::string text(count, '?');
  text.resize(file.Read(text.data(), count));
  return text;
}

std::string Content(CSharedFile& file) {
  file.SeekToBegin();
  return ReadText(file, 1000000);
}

HGLOBAL Block(const std::string& bytes) { return std::make_shared<const std::string>(bytes); }

int CauseOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const CFileException& failure) {
    return failure.m_cause;
  }
  return CFileException::none;
}

TEST(CSharedFile, BeginsOpenAndEmpty) {
  CSharedFile file;
  EXPECT_EQ(file.GetLength(), 0u);
  EXPECT_EQ(file.GetPosition(), 0u);
  EXPECT_EQ(ReadText(file, 5), "");
  EXPECT_EQ(file.GetFilePath(), "");
  EXPECT_NO_THROW(file.Flush());
}

TEST(CSharedFile, WritesAndReads) {
  CSharedFile file;
  file.Write("abcdef", 6);
  EXPECT_EQ(file.GetPosition(), 6u);
  EXPECT_EQ(file.Seek(-4, CFile::end), 2u);
  file.Write("XY", 2);
  EXPECT_EQ(ReadText(file, 100), "ef");
  EXPECT_EQ(Content(file), "abXYef");
}

TEST(CSharedFile, WhatLiesBetweenTheEndAndAPositionBehindItIsZero) {
  CSharedFile file;
  file.Write("ab", 2);
  file.Seek(3, CFile::current);
  EXPECT_EQ(file.GetLength(), 2u);
  EXPECT_EQ(ReadText(file, 5), "");
  file.Write("c", 1);
  EXPECT_EQ(Content(file), std::string("ab\0\0\0c", 6));
}

TEST(CSharedFile, SetLengthCutsAndExtendsAndStaysAtTheEnd) {
  CSharedFile file;
  file.Write("abcdef", 6);
  file.SetLength(2);
  EXPECT_EQ(file.GetPosition(), 2u);
  file.SetLength(4);
  EXPECT_EQ(Content(file), std::string("ab\0\0", 4));
}

TEST(CSharedFile, DetachGivesABlockOfExactlyTheBytesAndCloses) {
  CSharedFile file(4096);
  file.Write("abc", 3);
  const HGLOBAL block = file.Detach();
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(*block, "abc");
  EXPECT_EQ(file.Detach(), nullptr);
  EXPECT_THROW(file.Write("x", 1), CFileException);
}

TEST(CSharedFile, BeginsWithABlockAndLeavesItAsItIs) {
  const HGLOBAL block = Block("abc");
  CSharedFile file(block);
  EXPECT_EQ(ReadText(file, 2), "ab");
  file.Write("XY", 2);
  EXPECT_EQ(Content(file), "abXY");
  EXPECT_EQ(*block, "abc");
  CSharedFile empty{HGLOBAL()};
  EXPECT_EQ(empty.GetLength(), 0u);
}

TEST(CSharedFile, ServesAnArchive) {
  CSharedFile file;
  CArchive storing(&file, CArchive::store, 16);
  storing.WriteString("a line\r\nanother one, which is longer than the buffer\n");
  storing.Close();
  file.SeekToBegin();
  CArchive loading(&file, CArchive::load, 16);
  std::string line;
  EXPECT_TRUE(loading.ReadString(line));
  EXPECT_EQ(line, "a line");
  EXPECT_TRUE(loading.ReadString(line));
  EXPECT_EQ(line, "another one, which is longer than the buffer");
  EXPECT_FALSE(loading.ReadString(line));
}

TEST(CSharedFile, AClosedFileIsAnInvalidHandle) {
  CSharedFile file;
  file.Close();
  EXPECT_NO_THROW(file.Close());
  EXPECT_NO_THROW(file.Abort());
  char byte = 0;
  const int invalid = CFileException::invalidFile;
  EXPECT_EQ(CauseOf([&] { file.Read(&byte, 1); }), invalid);
  EXPECT_EQ(CauseOf([&] { file.Write(&byte, 1); }), invalid);
  EXPECT_EQ(CauseOf([&] { file.Seek(0, CFile::begin); }), invalid);
  EXPECT_EQ(CauseOf([&] { static_cast<void>(file.GetPosition()); }), invalid);
  EXPECT_EQ(CauseOf([&] { static_cast<void>(file.GetLength()); }), invalid);
  EXPECT_EQ(CauseOf([&] { file.SetLength(0); }), invalid);
  EXPECT_EQ(CauseOf([&] { file.Flush(); }), invalid);
}

TEST(CSharedFile, NothingIsOpenedByName) {
  CSharedFile file;
  file.Write("abc", 3);
  CFileException error;
  EXPECT_FALSE(file.Open("CMakeLists.txt", CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
  EXPECT_FALSE(file.Open(nullptr, CFile::modeRead));
  EXPECT_EQ(Content(file), "abc");
}

TEST(CSharedFile, PositionsOutOfRange) {
  CSharedFile file;
  file.Write("abc", 3);
  constexpr long long kMax = std::numeric_limits<long long>::max();
  const int badSeek = CFileException::badSeek;
  EXPECT_EQ(CauseOf([&] { file.Seek(-1, CFile::begin); }), badSeek);
  EXPECT_EQ(CauseOf([&] { file.Seek(-4, CFile::end); }), badSeek);
  EXPECT_EQ(CauseOf([&] { file.Seek(kMax, CFile::current); }), badSeek);
  EXPECT_EQ(CauseOf([&] { file.Seek(std::numeric_limits<long long>::min(), CFile::current); }), badSeek);
  EXPECT_EQ(CauseOf([&] { file.Seek(0, 3); }), badSeek);
  EXPECT_EQ(file.GetPosition(), 3u);
  file.Seek(kMax, CFile::begin);
  EXPECT_EQ(ReadText(file, 1), "");
  EXPECT_EQ(CauseOf([&] { file.Write("x", 1); }), CFileException::diskFull);
  EXPECT_EQ(CauseOf([&] { file.SetLength(2147483648u); }), CFileException::diskFull);
  EXPECT_EQ(Content(file), "abc");
}

TEST(CSharedFile, NullPointersDoNothing) {
  CSharedFile file;
  file.Write("abc", 3);
  file.Write(nullptr, 3);
  file.SeekToBegin();
  EXPECT_EQ(file.Read(nullptr, 3), 0u);
  EXPECT_EQ(Content(file), "abc");
}

TEST(CSharedFile, AnyGrowthHoldsWhatIsWritten) {
  for (const unsigned int grow : {0u, 1u, 4096u, std::numeric_limits<unsigned int>::max()}) {
    CSharedFile file(grow);
    std::string expected;
    for (unsigned int size = 0; size < 300; ++size) {
      const std::string part(size, static_cast<char>('a' + size % 26));
      file.Write(part.data(), size);
      expected += part;
    }
    EXPECT_EQ(Content(file), expected) << grow;
  }
}

}  // namespace
