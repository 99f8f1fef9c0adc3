#include "zelbase/platform/CArchive.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/TemporaryFolder.h"
#include "zelbase/platform/CArchiveException.h"
#include "zelbase/platform/FaultInjectionFiles.h"

namespace {

// Bytes in memory behind CFile's operations, with a limit to what one Read gives.
class MemoryFile : public CFile {
 public:
  explicit MemoryFile(std::string content = {}, unsigned int readLimit = 1u << 30)
      : m_content(std::move(content)), m_readLimit(readLimit) {}

  unsigned int Read(void* buffer, unsigned int count) override {
    m_asked.push_back(count);
    const std::size_t size = std::min<std::size_t>({count, m_readLimit, m_content.size() - m_position});
    std::memcpy(buffer, m_content.data() + m_position, size);
    m_position += size;
    return static_cast<unsigned int>(size);
  }

  void Write(const void* buffer, unsigned int count) override {
    m_written.push_back(count);
    if (m_writesUntilFailure == 0) throw CFileException(FileResult::DiskFull, "memory");
    --m_writesUntilFailure;
    m_content.append(static_cast<const char*>(buffer), count);
  }

  std::string m_content;
  std::size_t m_position = 0;
  unsigned int m_readLimit;
  unsigned int m_writesUntilFailure = 1u << 30;
  std::vector<unsigned int> m_asked;
  std::vector<unsigned int> m_written;
};

std::vector<std::string> ReadLines(const std::string& content, int bufferSize, unsigned int readLimit = 1u << 30) {
  MemoryFile file(content, readLimit);
  CArchive archive(&file, CArchive::load, bufferSize);
  std::vector<std::string> lines;
  std::string line;
  while (archive.ReadString(line)) lines.push_back(line);
  return lines;
}

// The line rules once more, byte by byte.
std::vector<std::string> SplitByHand(const std::string& content) {
  std::vector<std::string> lines;
  std::string line;
  for (const char c : content) {
    if (c != '\n') {
      line += c;
      continue;
    }
    if (!line.empty() && line[line.size() - 1] == '\r') line.erase(line.size() - 1);
    lines.push_back(line);
    line.clear();
  }
  if (!line.empty()) lines.push_back(line);
  return lines;
}

using Lines = std::vector<std::string>;

struct LineRow {
  const char* description;
  std::string content;
  Lines lines;
};

std::vector<LineRow> LineRows() {
  using namespace std::string_literals;
  return {
      {"an empty file has no line", "", {}},
      {"LF ends a line", "a\nb\n", {"a", "b"}},
      {"CR LF ends a line", "a\r\nb\r\n", {"a", "b"}},
      {"a last line without LF counts", "a\nb", {"a", "b"}},
      {"a final LF makes no further line", "a\n", {"a"}},
      {"empty lines count", "\n\r\n\n", {"", "", ""}},
      {"a lone CR is text", "a\rb\nc\r", {"a\rb", "c\r"}},
      {"one CR belongs to the line end", "a\r\r\n", {"a\r"}},
      {"zero bytes are text", "a\0b\n\0\n"s, {"a\0b"s, "\0"s}},
      {"a byte order mark is text", "\xEF\xBB\xBFx\n", {"\xEF\xBB\xBFx"}},
      {"bytes from 128 up are text", "\xB0\xFF\n", {"\xB0\xFF"}},
      {"the end-of-file byte is text", "a\x1A\nb\n", {"a\x1A", "b"}},
  };
}

TEST(CArchive, LineEndsAtEveryBufferSize) {
  for (const LineRow& row : LineRows()) {
    for (const int size : {1, 2, 3, 4, 5, 7, 4096}) {
      EXPECT_EQ(ReadLines(row.content, size), row.lines) << row.description << ", buffer of " << size;
    }
  }
}

TEST(CArchive, CarriageReturnAtTheBorderOfTheBufferBelongsToTheLineEnd) {
  const std::string front(4095, 'x');
  EXPECT_EQ(ReadLines(front + "\r\ny\r\n", 4096), (Lines{front, "y"}));
  EXPECT_EQ(ReadLines(front + "x\r\ny", 4096), (Lines{front + "x", "y"}));
  EXPECT_EQ(ReadLines(front + "\ry", 4096), (Lines{front + "\ry"}));
}

TEST(CArchive, LinesLongerThanTheBufferComeWhole) {
  const std::string one(100000, 'a');
  const std::string two(8192, 'b');
  EXPECT_EQ(ReadLines(one + "\r\n" + two + "\n", 4096), (Lines{one, two}));
}

TEST(CArchive, RandomTextsAgreeWithSplittingByHand) {
  std::mt19937 random(20260721);
  const std::string alphabet("a\r\n\0", 4);
  int borders = 0;
  for (int round = 0; round < 3000; ++round) {
    std::string content;
    const std::size_t length = random() % 40;
    while (content.size() < length) content += alphabet[random() % alphabet.size()];
    const int size = static_cast<int>(random() % 9) + 1;
    const unsigned int limit = static_cast<unsigned int>(random() % 5) + 1;
    for (std::size_t i = static_cast<std::size_t>(size); i < content.size(); i += static_cast<std::size_t>(size)) {
      if (content[i] == '\n' && content[i - 1] == '\r') ++borders;
    }
    ASSERT_EQ(ReadLines(content, size), SplitByHand(content)) << "round " << round;
    ASSERT_EQ(ReadLines(content, size, limit), SplitByHand(content)) << "round " << round;
  }
  EXPECT_GT(borders, 100);
}

TEST(CArchive, ReadsInBlocksOfTheBufferSize) {
  MemoryFile file(std::string(10000, 'x'));
  CArchive archive(&file, CArchive::load, 4096);
  std::string line;
  EXPECT_TRUE(archive.ReadString(line));
  EXPECT_EQ(file.m_asked, (std::vector<unsigned int>{4096, 4096, 4096, 4096}));
}

TEST(CArchive, BufferSizesOutOfRangeTake4096) {
  for (const int size : {0, -1, -2147483647 - 1, 16777217, 2147483647}) {
    MemoryFile file("a\n");
    CArchive archive(&file, CArchive::load, size);
    std::string line;
    EXPECT_TRUE(archive.ReadString(line));
    EXPECT_EQ(file.m_asked.front(), 4096u) << size;
  }
}

TEST(CArchive, ReadStringAtTheEndGivesAnEmptyLine) {
  MemoryFile file("a\n");
  CArchive archive(&file, CArchive::load);
  std::string line;
  EXPECT_TRUE(archive.ReadString(line));
  EXPECT_EQ(line, "a");
  EXPECT_FALSE(archive.ReadString(line));
  EXPECT_EQ(line, "");
  line = "before";
  EXPECT_FALSE(archive.ReadString(line));
  EXPECT_EQ(line, "");
}

TEST(CArchive, ReadLineGivesTheSameLines) {
  MemoryFile file("one\r\n\ntwo and more\nlast");
  CArchive archive(&file, CArchive::load, 6);
  Lines lines;
  std::string_view line;
  while (archive.ReadLine(line)) lines.emplace_back(line);
  EXPECT_EQ(lines, (Lines{"one", "", "two and more", "last"}));
}

TEST(CArchive, ReadingFailurePassesAndKeepsTheLineBegun) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("x.ini", "0123456789\nabc\n");
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  CFile file;
  ASSERT_TRUE(file.Open(path, CFile::modeRead));
  CArchive archive(&file, CArchive::load, 4);
  files.FailAt(FileOperation::Read, 2, FileResult::NetworkNameDeleted);
  std::string line = "before";
  try {
    archive.ReadString(line);
    ADD_FAILURE() << "no exception";
  } catch (const CFileException& failure) {
    EXPECT_EQ(failure.m_lOsError, 64);
    EXPECT_EQ(failure.m_cause, CFileException::hardIO);
    EXPECT_EQ(failure.m_strFileName, path);
  }
  EXPECT_EQ(line, "before");
  EXPECT_TRUE(archive.ReadString(line));
  EXPECT_EQ(line, "0123456789");
  EXPECT_TRUE(archive.ReadString(line));
  EXPECT_EQ(line, "abc");
}

TEST(CArchive, FileThatClaimsTooMuchIsNotBelieved) {
  class Boaster : public CFile {
   public:
    unsigned int Read(void* buffer, unsigned int count) override {
      if (m_rounds++ == 2) return 0;
      std::memset(buffer, 'x', count);
      return count + 1000;
    }
    int m_rounds = 0;
  };
  Boaster file;
  CArchive archive(&file, CArchive::load, 8);
  std::string line;
  EXPECT_TRUE(archive.ReadString(line));
  EXPECT_EQ(line, std::string(16, 'x'));
}

TEST(CArchive, WritesTextAsItIs) {
  using namespace std::string_literals;
  MemoryFile file;
  CArchive archive(&file, CArchive::store);
  archive.WriteString("literal\r\n");
  archive.WriteString("zero\0byte"s);
  archive.WriteString(std::string_view("\xB0"));
  archive.WriteString("");
  archive.WriteString(static_cast<const char*>(nullptr));
  EXPECT_EQ(file.m_content, "");
  archive.Close();
  EXPECT_EQ(file.m_content, "literal\r\nzero\0byte\xB0"s);
}

TEST(CArchive, WritesWholeBlocks) {
  for (const int size : {1, 3, 10}) {
    MemoryFile file;
    std::string expected;
    {
      CArchive archive(&file, CArchive::store, size);
      for (std::size_t length = 0; length < 30; ++length) {
        archive.WriteString(std::string(length, 'x'));
        expected.append(length, 'x');
      }
    }
    EXPECT_EQ(file.m_content, expected);
    file.m_written.pop_back();
    for (const unsigned int written : file.m_written) EXPECT_EQ(written, static_cast<unsigned int>(size));
  }
}

TEST(CArchive, FlushHandsOverTheBuffer) {
  MemoryFile file;
  CArchive archive(&file, CArchive::store);
  archive.WriteString("abc");
  archive.Flush();
  EXPECT_EQ(file.m_content, "abc");
  archive.Flush();
  EXPECT_EQ(file.m_written.size(), 1u);
}

TEST(CArchive, DestructorWritesOutWhatIsLeft) {
  MemoryFile file;
  { CArchive(&file, CArchive::store).WriteString("abc"); }
  EXPECT_EQ(file.m_content, "abc");
}

TEST(CArchive, DestructorSwallowsFailure) {
  static_assert(std::is_nothrow_destructible_v<CArchive>);
  MemoryFile file;
  file.m_writesUntilFailure = 0;
  { CArchive(&file, CArchive::store).WriteString("abc"); }
  EXPECT_EQ(file.m_written.size(), 1u);
  EXPECT_EQ(file.m_content, "");
}

TEST(CArchive, CloseThrowsAFailureAndLetsGo) {
  MemoryFile file;
  file.m_writesUntilFailure = 0;
  CArchive archive(&file, CArchive::store);
  archive.WriteString("abc");
  EXPECT_THROW(archive.Close(), CFileException);
  EXPECT_EQ(archive.GetFile(), nullptr);
  EXPECT_NO_THROW(archive.Close());
}

TEST(CArchive, AfterAFailedWriteNothingMoreGoesOut) {
  MemoryFile file;
  file.m_writesUntilFailure = 1;
  CArchive archive(&file, CArchive::store, 4);
  archive.WriteString("abcd");
  EXPECT_THROW(archive.WriteString("efgh"), CFileException);
  file.m_writesUntilFailure = 100;
  try {
    archive.WriteString("ijkl");
    ADD_FAILURE() << "no exception";
  } catch (const CFileException& failure) {
    EXPECT_EQ(failure.m_cause, CFileException::diskFull);
    EXPECT_EQ(failure.m_strFileName, "memory");
  }
  EXPECT_THROW(archive.Flush(), CFileException);
  EXPECT_THROW(archive.Close(), CFileException);
  EXPECT_EQ(file.m_content, "abcd");
}

std::string ReadBytes(CArchive& archive, std::size_t size) {
  std::string bytes(size, '?');
  bytes.resize(archive.Read(bytes.data(), size));
  return bytes;
}

TEST(CArchive, BytesComeAcrossTheBordersOfTheBuffer) {
  const std::string content = "0123456789\r\n\0abcdef";
  for (const int size : {1, 2, 3, 7, 4096}) {
    for (const unsigned int limit : {1u, 2u, 1u << 30}) {
      MemoryFile file(content, limit);
      CArchive archive(&file, CArchive::load, size);
      EXPECT_EQ(ReadBytes(archive, 4), content.substr(0, 4));
      EXPECT_EQ(ReadBytes(archive, 0), "");
      EXPECT_EQ(ReadBytes(archive, 7), content.substr(4, 7));
      EXPECT_EQ(ReadBytes(archive, 100), content.substr(11));
      EXPECT_EQ(ReadBytes(archive, 1), "");
    }
  }
}

TEST(CArchive, LinesAndBytesTakeTurns) {
  for (const int size : {1, 2, 3, 5, 4096}) {
    MemoryFile file("one\r\nabctwo\nde");
    CArchive archive(&file, CArchive::load, size);
    std::string line;
    EXPECT_TRUE(archive.ReadString(line));
    EXPECT_EQ(line, "one");
    EXPECT_EQ(ReadBytes(archive, 3), "abc");
    EXPECT_TRUE(archive.ReadString(line));
    EXPECT_EQ(line, "two");
    EXPECT_EQ(ReadBytes(archive, 3), "de");
  }
}

TEST(CArchive, BytesOfALineThatAFailureBrokeOffComeFirst) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("x.ini", "0123456789");
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  CFile file;
  ASSERT_TRUE(file.Open(path, CFile::modeRead));
  CArchive archive(&file, CArchive::load, 4);
  files.FailAt(FileOperation::Read, 2, FileResult::NetworkNameDeleted);
  std::string line;
  EXPECT_THROW(archive.ReadString(line), CFileException);
  EXPECT_EQ(ReadBytes(archive, 3), "012");
  EXPECT_EQ(ReadBytes(archive, 7), "3456789");
}

TEST(CArchive, WritesBytes) {
  MemoryFile file;
  CArchive archive(&file, CArchive::store, 3);
  archive.Write("ab\0cd", 5);
  archive.Write(nullptr, 5);
  archive.Write("x", 0);
  archive.Close();
  EXPECT_EQ(file.m_content, std::string("ab\0cd", 5));
}

struct CountRow {
  std::size_t count;
  std::string bytes;
};

TEST(CArchive, CountsTakeTwoBytesAndFrom65535UpwardSix) {
  using namespace std::string_literals;
  const std::vector<CountRow> rows = {{0, "\0\0"s},
                                      {1, "\1\0"s},
                                      {0x1234, "\x34\x12"s},
                                      {65534, "\xFE\xFF"s},
                                      {65535, "\xFF\xFF\xFF\xFF\0\0"s},
                                      {0x12345678, "\xFF\xFF\x78\x56\x34\x12"s},
                                      {0xFFFFFFFF, "\xFF\xFF\xFF\xFF\xFF\xFF"s}};
  for (const CountRow& row : rows) {
    MemoryFile file;
    CArchive archive(&file, CArchive::store);
    archive.WriteCount(row.count);
    archive.Close();
    EXPECT_EQ(file.m_content, row.bytes) << row.count;
    CArchive loading(&file, CArchive::load);
    EXPECT_EQ(loading.ReadCount(), row.count);
  }
}

TEST(CArchive, AnArchiveThatEndsWithinACountThrowsEndOfFile) {
  const std::string whole = "\xFF\xFF\1\2\3\4";
  for (const std::size_t length : {0u, 1u, 2u, 3u, 4u, 5u}) {
    MemoryFile file(whole.substr(0, length));
    CArchive archive(&file, CArchive::load);
    try {
      archive.ReadCount();
      ADD_FAILURE() << "no exception, length " << length;
    } catch (const CArchiveException& failure) {
      EXPECT_EQ(failure.m_cause, CArchiveException::endOfFile);
    }
  }
}

TEST(CArchive, WrongDirection) {
  MemoryFile file("abc\n");
  CArchive loading(&file, CArchive::load);
  EXPECT_TRUE(loading.IsLoading());
  EXPECT_FALSE(loading.IsStoring());
  EXPECT_THROW(loading.WriteString("x"), CFileException);
  EXPECT_NO_THROW(loading.Flush());
  CArchive storing(&file, CArchive::store);
  EXPECT_TRUE(storing.IsStoring());
  std::string line = "before";
  EXPECT_FALSE(storing.ReadString(line));
  EXPECT_EQ(line, "before");
  char byte = '?';
  EXPECT_EQ(storing.Read(&byte, 1), 0u);
  EXPECT_EQ(byte, '?');
  EXPECT_EQ(loading.Read(nullptr, 1), 0u);
  EXPECT_THROW(loading.Write("x", 1), CFileException);
  EXPECT_THROW(storing.ReadCount(), CArchiveException);
  EXPECT_EQ(file.m_content, "abc\n");
}

TEST(CArchive, NullFileReadsAsEmptyAndRefusesWriting) {
  CArchive loading(nullptr, CArchive::load);
  std::string line;
  EXPECT_FALSE(loading.ReadString(line));
  CArchive storing(nullptr, CArchive::store);
  EXPECT_THROW(storing.WriteString("x"), CFileException);
  EXPECT_NO_THROW(storing.Close());
}

TEST(CArchive, AStoringArchiveHasNoLines) {
  CArchive archive(nullptr, CArchive::store);
  std::string_view line = "as before";
  EXPECT_FALSE(archive.ReadLine(line));
  EXPECT_EQ(line, "as before");
}

}  // namespace
