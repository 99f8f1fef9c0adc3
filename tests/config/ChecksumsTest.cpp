#include "zelbase/config/Checksums.h"

#include <gtest/gtest.h>

#include <random>
#include <string_view>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

unsigned short Sum16(const Bytes& bytes) { return Compute16BitCRC(bytes.data(), bytes.data() + bytes.size()); }
unsigned char Sum8(const Bytes& bytes) { return Compute8BitCRC(bytes.data(), bytes.data() + bytes.size()); }
Bytes Of(std::string_view text) { return Bytes(text.begin(), text.end()); }

// The definition: one bit at a time, no table.
unsigned short BitByBit(const unsigned char* bytes, std::size_t size) {
  unsigned int state = 0;
  for (std::size_t i = 0; i < size; ++i) {
    state ^= bytes[i];
    for (int bit = 0; bit < 8; ++bit) state = (state & 1u) != 0 ? state >> 1 ^ 0x8408u : state >> 1;
  }
  return static_cast<unsigned short>(state);
}

TEST(Compute16BitCRC, NineDigits) { EXPECT_EQ(Sum16(Of("123456789")), 0x2189); }

TEST(Compute16BitCRC, EmptyRangeIsZero) {
  const unsigned char byte = 7;
  EXPECT_EQ(Compute16BitCRC(&byte, &byte), 0);
}

TEST(Compute16BitCRC, EndBeforeBeginOrNullIsAsEmpty) {
  const unsigned char bytes[] = {1, 2, 3};
  EXPECT_EQ(Compute16BitCRC(bytes + 2, bytes), 0);
  EXPECT_EQ(Compute16BitCRC(nullptr, nullptr), 0);
  EXPECT_EQ(Compute16BitCRC(nullptr, bytes), 0);
  EXPECT_EQ(Compute16BitCRC(bytes, nullptr), 0);
}

TEST(Compute16BitCRC, ZeroBytesInFrontChangeNothing) {
  // The register starts at 0 and stays there.
  EXPECT_EQ(Sum16(Bytes(100, 0)), 0);
  Bytes padded(33, 0);
  const Bytes digits = Of("123456789");
  padded.insert(padded.end(), digits.begin(), digits.end());
  EXPECT_EQ(Sum16(padded), 0x2189);
}

TEST(Compute16BitCRC, OneByteIsTheTableOfThePolynomial) {
  // By hand: 0x80 meets the polynomial at its last step only, 0x01 is shifted eight times.
  EXPECT_EQ(Sum16({0x80}), 0x8408);
  EXPECT_EQ(Sum16({0x01}), 0x1189);
}

TEST(Compute16BitCRC, SumFollowedByItsOwnBytesIsZero) {
  // Not inverted, lowest byte first: the well-known residue.
  std::mt19937 random(1);
  for (int round = 0; round < 100; ++round) {
    Bytes bytes(random() % 200);
    for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random());
    const unsigned int sum = Sum16(bytes);
    bytes.push_back(static_cast<unsigned char>(sum));
    bytes.push_back(static_cast<unsigned char>(sum >> 8));
    EXPECT_EQ(Sum16(bytes), 0);
  }
}

TEST(Compute16BitCRC, EqualsTheDefinitionAtAllLengthsAndAlignments) {
  std::mt19937 random(2);
  Bytes bytes(320);
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random());
  for (std::size_t offset = 0; offset < 16; ++offset) {
    for (std::size_t size = 0; size + offset <= bytes.size(); ++size) {
      const unsigned char* const begin = bytes.data() + offset;
      ASSERT_EQ(Compute16BitCRC(begin, begin + size), BitByBit(begin, size)) << "size " << size << " offset " << offset;
    }
  }
}

TEST(Compute16BitCRC, ReadsNoByteOutsideTheRange) {
  for (std::size_t size = 1; size <= 100; ++size) {
    const Bytes exact(size, 0xA5);
    ASSERT_EQ(Sum16(exact), BitByBit(exact.data(), size));
  }
}

TEST(Compute8BitCRC, IsTheOrOfAllBytes) {
  EXPECT_EQ(Sum8({0x01, 0x02, 0x80}), 0x83);
  EXPECT_EQ(Sum8({0x80, 0x80}), 0x80);  // a sum or an exclusive or would give 0
  EXPECT_EQ(Sum8(Bytes(1000, 0x11)), 0x11);
}

TEST(Compute8BitCRC, EmptyRangeIsZero) {
  const unsigned char bytes[] = {1, 2, 3};
  EXPECT_EQ(Compute8BitCRC(bytes, bytes), 0);
  EXPECT_EQ(Compute8BitCRC(bytes + 2, bytes), 0);
  EXPECT_EQ(Compute8BitCRC(nullptr, nullptr), 0);
  EXPECT_EQ(Compute8BitCRC(bytes, nullptr), 0);
}

TEST(Compute8BitCRC, EachBitIsFoundWhereverItStands) {
  for (std::size_t at = 0; at < 70; ++at) {
    for (int bit = 0; bit < 8; ++bit) {
      Bytes bytes(70, 0);
      bytes[at] = static_cast<unsigned char>(1 << bit);
      ASSERT_EQ(Sum8(bytes), bytes[at]);
    }
  }
}

}  // namespace
