#include "zelbase/files/CharBuffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace {

constexpr int kMax = std::numeric_limits<int>::max();
constexpr int kMin = std::numeric_limits<int>::min();

std::string Data(const CharBuffer& buffer) { return std::string(buffer.Begin(), buffer.End()); }

std::string ReadText(CharBuffer& buffer, int size) {
  std::string text(static_cast<std::size_t>(size), '?');
  buffer.Read(text.data(), size);
  return text;
}

void WriteText(CharBuffer& buffer, const std::string& text) { buffer.Write(text.data(), static_cast<int>(text.size())); }

std::string Zeros(std::size_t count) { return std::string(count, '\0'); }

TEST(CharBuffer, BeginsEmpty) {
  const CharBuffer buffer;
  EXPECT_EQ(buffer.Size(), 0);
  EXPECT_EQ(buffer.GetPos(), 0);
  EXPECT_EQ(buffer.Begin(), nullptr);
  EXPECT_EQ(buffer.End(), nullptr);
  EXPECT_EQ(buffer.GetOffsetBuffer(0), nullptr);
}

TEST(CharBuffer, IsNotCopied) {
  static_assert(!std::is_copy_constructible_v<CharBuffer> && !std::is_copy_assignable_v<CharBuffer>);
  static_assert(!std::is_move_constructible_v<CharBuffer> && !std::is_move_assignable_v<CharBuffer>);
  static_assert(std::is_same_v<decltype(std::declval<CharBuffer&>().GetBuffer(1)), unsigned char*>);
  static_assert(std::is_same_v<decltype(std::declval<CharBuffer&>().GetOffsetBuffer(1)), unsigned char*>);
}

TEST(CharBuffer, WritesAndReadsBack) {
  CharBuffer buffer;
  const unsigned int word = 0x01020304;
  buffer.Write(&word, 4);
  EXPECT_EQ(buffer.Size(), 4);
  EXPECT_EQ(buffer.GetPos(), 4);
  buffer.SetPos(0);
  EXPECT_EQ(buffer.GetPos(), 0);
  EXPECT_EQ(buffer.Size(), 4);
  unsigned int back = 0;
  buffer.Read(&back, 4);
  EXPECT_EQ(back, word);
  EXPECT_EQ(buffer.GetPos(), 4);
}

TEST(CharBuffer, WritingInTheMiddleKeepsTheEndOfTheData) {
  CharBuffer buffer;
  WriteText(buffer, "abcdef");
  buffer.SetPos(2);
  WriteText(buffer, "XY");
  EXPECT_EQ(Data(buffer), "abXYef");
  EXPECT_EQ(buffer.GetPos(), 4);
  WriteText(buffer, "123");
  EXPECT_EQ(Data(buffer), "abXY123");
}

TEST(CharBuffer, ClearKeepsTheArrayForLaterWrites) {
  CharBuffer buffer;
  WriteText(buffer, "abcdef");
  const unsigned char* const array = buffer.Begin();
  buffer.Clear();
  EXPECT_EQ(buffer.Size(), 0);
  EXPECT_EQ(buffer.GetPos(), 0);
  EXPECT_EQ(buffer.Begin(), array);
  EXPECT_EQ(buffer.End(), array);
  WriteText(buffer, "12345");
  EXPECT_EQ(buffer.Begin(), array);
  EXPECT_EQ(Data(buffer), "12345");
}

// The capacity shows in the place up to which GetOffsetBuffer gives one.
int CapacityOf(const CharBuffer& buffer) {
  int capacity = 0;
  while (buffer.GetOffsetBuffer(capacity + 1) != nullptr) ++capacity;
  return capacity;
}

TEST(CharBuffer, TheFirstArrayHasExactlyTheSizeOfTheFirstWrite) {
  CharBuffer buffer;
  WriteText(buffer, "abcdef");
  EXPECT_EQ(CapacityOf(buffer), 6);
  CharBuffer taken;
  taken.GetBuffer(7);
  EXPECT_EQ(CapacityOf(taken), 7);
  CharBuffer moved;
  moved.SetPos(7);
  EXPECT_EQ(CapacityOf(moved), 8);
}

TEST(CharBuffer, AWriteThatWouldReachTheEndOfTheArrayGrowsByItsSizeAndTwiceTheOldCapacity) {
  CharBuffer buffer;
  WriteText(buffer, "abcdef");
  buffer.Clear();
  WriteText(buffer, "123456");  // reaches the end
  EXPECT_EQ(CapacityOf(buffer), 6 + 2 * 6);
  WriteText(buffer, std::string(11, 'x'));
  EXPECT_EQ(CapacityOf(buffer), 18);
  WriteText(buffer, "y");
  EXPECT_EQ(CapacityOf(buffer), 1 + 2 * 18);
  EXPECT_EQ(Data(buffer), "123456xxxxxxxxxxxy");
}

TEST(CharBuffer, SetPosGrowsByTheDistanceAndTwiceTheOldCapacity) {
  CharBuffer buffer;
  WriteText(buffer, "abcdef");
  buffer.SetPos(5);
  EXPECT_EQ(CapacityOf(buffer), 6);
  buffer.SetPos(6);
  EXPECT_EQ(CapacityOf(buffer), 1 + 2 * 6);
  EXPECT_EQ(buffer.Size(), 6);
  buffer.SetPos(20);
  EXPECT_EQ(CapacityOf(buffer), (20 - 13 + 1) + 2 * 13);
  EXPECT_EQ(Data(buffer), "abcdef");
}

TEST(CharBuffer, GetBufferGrowsByTheDifferenceAndTwiceTheOldCapacity) {
  CharBuffer buffer;
  WriteText(buffer, "abcdef");
  buffer.GetBuffer(6);
  EXPECT_EQ(CapacityOf(buffer), 6);
  unsigned char* const start = buffer.GetBuffer(10);
  EXPECT_EQ(CapacityOf(buffer), 4 + 2 * 6);
  EXPECT_EQ(start, buffer.Begin());
  EXPECT_EQ(buffer.Size(), 10);
  EXPECT_EQ(buffer.GetPos(), 10);
  EXPECT_EQ(Data(buffer), "abcdef" + Zeros(4));
}

TEST(CharBuffer, ThePositionMayStandBehindTheData) {
  CharBuffer buffer;
  WriteText(buffer, "ab");
  buffer.SetPos(5);
  EXPECT_EQ(buffer.Size(), 2);
  EXPECT_EQ(buffer.GetPos(), 5);
  WriteText(buffer, "c");
  EXPECT_EQ(Data(buffer), "ab" + Zeros(3) + "c");
}

TEST(CharBuffer, GetBufferMayLowerTheEndOfTheData) {
  CharBuffer buffer;
  WriteText(buffer, "abcdef");
  unsigned char* const start = buffer.GetBuffer(2);
  start[0] = 'X';
  EXPECT_EQ(Data(buffer), "Xb");
  EXPECT_EQ(buffer.GetPos(), 2);
  EXPECT_EQ(ReadText(buffer, 3), "cde");  // the bytes themselves stay
}

TEST(CharBuffer, TheCallerFillsTheBytesOfGetBuffer) {
  CharBuffer buffer;
  std::memcpy(buffer.GetBuffer(4), "1234", 4);
  WriteText(buffer, "56");
  EXPECT_EQ(Data(buffer), "123456");
}

TEST(CharBuffer, GetOffsetBufferCountsFromTheStart) {
  CharBuffer buffer;
  WriteText(buffer, "abcdef");
  buffer.SetPos(3);
  *buffer.GetOffsetBuffer(4) = 'X';
  EXPECT_EQ(Data(buffer), "abcdXf");
  EXPECT_EQ(buffer.GetOffsetBuffer(6), buffer.Begin() + 6);
  EXPECT_EQ(buffer.GetOffsetBuffer(7), nullptr);
  EXPECT_EQ(buffer.GetOffsetBuffer(kMax), nullptr);
  EXPECT_EQ(buffer.GetOffsetBuffer(-1), buffer.Begin());
  EXPECT_EQ(buffer.GetOffsetBuffer(kMin), buffer.Begin());
  EXPECT_EQ(buffer.GetPos(), 3);
}

TEST(CharBuffer, GrowingKeepsAllBytesAndNotOnlyThoseBeforeThePosition) {
  CharBuffer buffer;
  WriteText(buffer, "abcdef");
  buffer.SetPos(1);
  WriteText(buffer, "XYZUVW");  // does not fit
  EXPECT_EQ(Data(buffer), "aXYZUVW");
  buffer.SetPos(1);
  buffer.SetPos(100);
  EXPECT_EQ(Data(buffer), "aXYZUVW");
}

TEST(CharBuffer, ReadingBehindTheDataGivesTheArraysBytesAndMovesOn) {
  CharBuffer buffer;
  WriteText(buffer, "abcdef");
  buffer.Clear();
  EXPECT_EQ(ReadText(buffer, 4), "abcd");
  EXPECT_EQ(buffer.GetPos(), 4);
  EXPECT_EQ(buffer.Size(), 0);
}

TEST(CharBuffer, ReadingBehindTheArrayGivesZerosAndMovesOn) {
  CharBuffer buffer;
  EXPECT_EQ(ReadText(buffer, 3), Zeros(3));
  EXPECT_EQ(buffer.GetPos(), 3);
  EXPECT_EQ(buffer.Size(), 0);
  buffer.Clear();
  WriteText(buffer, "abcd");
  buffer.SetPos(2);
  EXPECT_EQ(ReadText(buffer, 5), "cd" + Zeros(3));
  EXPECT_EQ(buffer.GetPos(), 7);
  EXPECT_EQ(buffer.Size(), 4);
  EXPECT_EQ(ReadText(buffer, 2), Zeros(2));
}

TEST(CharBuffer, AfterReadingBehindTheArrayTheNextWriteGrowsUntilItFits) {
  CharBuffer buffer;
  ReadText(buffer, 100);
  WriteText(buffer, "ab");
  EXPECT_EQ(buffer.GetPos(), 102);
  EXPECT_EQ(Data(buffer), Zeros(100) + "ab");
  ReadText(buffer, 1000);
  WriteText(buffer, "cd");
  EXPECT_EQ(Data(buffer), Zeros(100) + "ab" + Zeros(1000) + "cd");
}

TEST(CharBuffer, AfterReadingBehindTheArraySetPosGrowsUntilItFits) {
  CharBuffer buffer;
  ReadText(buffer, 100);
  buffer.SetPos(50);
  EXPECT_EQ(buffer.GetPos(), 50);
  WriteText(buffer, "ab");
  EXPECT_EQ(Data(buffer), Zeros(50) + "ab");
}

TEST(CharBuffer, ASourceInsideTheBufferSurvivesGrowth) {
  CharBuffer buffer;
  WriteText(buffer, "abcdef");
  buffer.Write(buffer.Begin(), 6);
  EXPECT_EQ(Data(buffer), "abcdefabcdef");
  buffer.SetPos(2);
  buffer.Write(buffer.Begin(), 8);  // over itself, without growing
  EXPECT_EQ(Data(buffer), "ababcdefabef");
}

TEST(CharBuffer, ATargetInsideTheBufferMayOverlapWhatIsRead) {
  CharBuffer buffer;
  WriteText(buffer, "0123456789");
  buffer.SetPos(0);
  buffer.Read(buffer.GetOffsetBuffer(2), 6);
  EXPECT_EQ(Data(buffer), "0101234589");
  EXPECT_EQ(buffer.GetPos(), 6);
}

TEST(CharBuffer, SizesBelowOneDoNothing) {
  CharBuffer buffer;
  WriteText(buffer, "abcdef");
  buffer.SetPos(3);
  const unsigned char* const array = buffer.Begin();
  for (const int size : {0, -1, kMin}) {
    char target = '?';
    buffer.Read(&target, size);
    EXPECT_EQ(target, '?');
    buffer.Write("x", size);
    EXPECT_EQ(buffer.GetBuffer(size), array);
    EXPECT_EQ(buffer.GetPos(), 3);
    EXPECT_EQ(Data(buffer), "abcdef");
  }
  CharBuffer empty;
  empty.Write("x", 0);
  EXPECT_EQ(empty.GetBuffer(0), nullptr);
  EXPECT_EQ(empty.Begin(), nullptr);
}

TEST(CharBuffer, NullPointersDoNothing) {
  CharBuffer buffer;
  WriteText(buffer, "abc");
  buffer.SetPos(1);
  buffer.Read(nullptr, 2);
  buffer.Write(nullptr, 2);
  EXPECT_EQ(buffer.GetPos(), 1);
  EXPECT_EQ(Data(buffer), "abc");
}

TEST(CharBuffer, ANegativePositionIsTheStart) {
  CharBuffer buffer;
  WriteText(buffer, "abc");
  for (const int position : {-1, kMin}) {
    buffer.SetPos(2);
    buffer.SetPos(position);
    EXPECT_EQ(buffer.GetPos(), 0);
  }
}

// The array for that is asked for, and not touched.
TEST(CharBuffer, ThePositionStopsAtTheLargestNumber) {
  CharBuffer buffer;
  WriteText(buffer, "abc");
  buffer.SetPos(kMax);
  EXPECT_EQ(buffer.GetPos(), kMax);
  EXPECT_EQ(ReadText(buffer, 5), Zeros(5));
  EXPECT_EQ(buffer.GetPos(), kMax);
  WriteText(buffer, "x");
  EXPECT_EQ(buffer.GetPos(), kMax);
  EXPECT_EQ(Data(buffer), "abc");
  buffer.SetPos(kMax - 2);
  EXPECT_EQ(ReadText(buffer, 5), Zeros(5));
  EXPECT_EQ(buffer.GetPos(), kMax);
  buffer.SetPos(3);
  WriteText(buffer, "d");
  EXPECT_EQ(Data(buffer), "abcd");
}

// The same buffer as a vector that is always large enough, with the rule of the capacity beside it.
struct Model {
  std::vector<char> bytes = std::vector<char>(100000, '\0');
  std::size_t position = 0;
  std::size_t end = 0;
  std::size_t capacity = 0;

  void Write(const std::string& text) {
    if (text.empty()) return;
    if (position + text.size() >= capacity) capacity = std::max(text.size() + 2 * capacity, position + text.size());
    std::copy(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(position));
    position += text.size();
    end = std::max(end, position);
  }
  std::string Read(std::size_t size) {
    std::string text;
    for (std::size_t i = 0; i < size; ++i) text += position + i < capacity ? bytes[position + i] : '\0';
    position += size;
    return text;
  }
  void SetPos(std::size_t place) {
    if (place >= capacity) capacity = place - capacity + 1 + 2 * capacity;
    position = place;
  }
  void GetBuffer(std::size_t size) {
    if (size == 0) return;
    if (size > capacity) capacity = size - capacity + 2 * capacity;
    position = end = size;
  }
};

TEST(CharBuffer, RandomCallsAgreeWithAVector) {
  std::mt19937 random(20261106);
  int grown = 0;
  for (int round = 0; round < 300; ++round) {
    CharBuffer buffer;
    Model model;
    for (int step = 0; step < 30; ++step) {
      const std::size_t size = random() % 12;
      const std::size_t before = model.capacity;
      switch (random() % 8) {
        case 0:
          buffer.SetPos(static_cast<int>(size * 3));
          model.SetPos(size * 3);
          break;
        case 1:
          buffer.GetBuffer(static_cast<int>(size * 2));
          model.GetBuffer(size * 2);
          break;
        case 2:
          if (random() % 4 != 0) break;
          buffer.Clear();
          model.position = model.end = 0;
          break;
        case 3:
        case 4: ASSERT_EQ(ReadText(buffer, static_cast<int>(size)), model.Read(size)); break;
        default: {
          std::string text;
          while (text.size() < size) text += static_cast<char>('a' + random() % 26);
          WriteText(buffer, text);
          model.Write(text);
        }
      }
      if (model.capacity > before) ++grown;
      ASSERT_LT(model.capacity, 50000u);
      ASSERT_EQ(buffer.GetPos(), static_cast<int>(model.position));
      ASSERT_EQ(Data(buffer), std::string(model.bytes.data(), model.end));
      ASSERT_NE(buffer.Begin() == nullptr, model.capacity > 0);
      const int capacity = static_cast<int>(model.capacity);
      ASSERT_EQ(buffer.GetOffsetBuffer(capacity), buffer.Begin() + capacity);
      ASSERT_EQ(buffer.GetOffsetBuffer(capacity + 1), nullptr);
    }
  }
  EXPECT_GT(grown, 500);
}

}  // namespace
