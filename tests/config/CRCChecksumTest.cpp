#include "zelbase/config/CRCChecksum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "zelbase/config/detail/Crc32.h"

namespace {

using zelbase::detail::Crc32Way;
using zelbase::detail::HasCrc32Way;
using zelbase::detail::UpdateCrc32;
using zelbase::detail::UpdateCrc32By;

constexpr unsigned int kStart = 0xFFFFFFFFu;

// The definition: one bit at a time, no table.
unsigned int BitByBit(unsigned int state, const unsigned char* bytes, std::size_t size) {
  for (std::size_t i = 0; i < size; ++i) {
    state ^= bytes[i];
    for (int bit = 0; bit < 8; ++bit) state = (state & 1u) != 0 ? state >> 1 ^ 0xEDB88320u : state >> 1;
  }
  return state;
}

unsigned int SumOf(const std::string& text) {
  CRCChecksum sum;
  sum += text;
  return sum.Value();
}

std::vector<unsigned char> RandomBytes(std::size_t size, unsigned int seed) {
  std::mt19937 random(seed);
  std::vector<unsigned char> bytes(size);
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random() >> 24);
  return bytes;
}

TEST(CRCChecksum, NothingAddedIsAllOnes) { EXPECT_EQ(CRCChecksum().Value(), 0xFFFFFFFFu); }

TEST(CRCChecksum, NineDigitsGiveTheComplementOfTheCustomaryCheckValue) {
  EXPECT_EQ(SumOf("123456789"), 0x340BC6D9u);
  EXPECT_EQ(~SumOf("123456789"), 0xCBF43926u);
}

TEST(CRCChecksum, ValueIsNotInvertedAtTheEnd) {
  // One zero byte: the register 0xFFFFFFFF steps eight times, by hand 0xFFFFFFFF -> 0x2DFD1072.
  CRCChecksum sum;
  sum += static_cast<unsigned char>(0);
  EXPECT_EQ(sum.Value(), 0x2DFD1072u);
}

TEST(CRCChecksum, ResetGoesBackToTheStart) {
  CRCChecksum sum;
  sum += 5;
  sum.Reset();
  EXPECT_EQ(sum.Value(), kStart);
  sum += std::string("123456789");
  EXPECT_EQ(sum.Value(), 0x340BC6D9u);
}

TEST(CRCChecksum, UnsignedIntIsItsFourBytesLowestFirst) {
  CRCChecksum whole;
  whole += 0x04030201u;
  CRCChecksum bytes;
  for (unsigned char byte = 1; byte <= 4; ++byte) bytes += byte;
  EXPECT_EQ(whole.Value(), bytes.Value());
}

TEST(CRCChecksum, IntIsItsTwosComplementForm) {
  CRCChecksum negative;
  negative += -1;
  EXPECT_EQ(negative.Value(), SumOf("\xFF\xFF\xFF\xFF"));

  CRCChecksum smallest;
  smallest += -2147483647 - 1;
  EXPECT_EQ(smallest.Value(), SumOf(std::string("\0\0\0\x80", 4)));
}

TEST(CRCChecksum, CharacterLiteralAndBoolAreFourBytes) {
  CRCChecksum letter;
  letter += 'A';
  EXPECT_EQ(letter.Value(), SumOf(std::string("A\0\0\0", 4)));
  EXPECT_NE(letter.Value(), SumOf("A"));

  CRCChecksum yes;
  yes += true;
  EXPECT_EQ(yes.Value(), SumOf(std::string("\x01\0\0\0", 4)));

  CRCChecksum byte;
  byte += static_cast<unsigned char>('A');
  EXPECT_EQ(byte.Value(), SumOf("A"));
}

TEST(CRCChecksum, TextHasNoTerminatorAndNoLength) {
  EXPECT_EQ(SumOf(""), kStart);
  CRCChecksum parts;
  parts += std::string("12345");
  parts += std::string();
  parts += std::string("6789");
  EXPECT_EQ(parts.Value(), 0x340BC6D9u);
}

TEST(CRCChecksum, TextAddsItsZeroBytesToo) {
  EXPECT_NE(SumOf(std::string("a\0b", 3)), SumOf("ab"));
  EXPECT_NE(SumOf(std::string("a\0b", 3)), SumOf("a"));
  const unsigned char bytes[] = {'a', 0, 'b'};
  EXPECT_EQ(SumOf(std::string("a\0b", 3)), BitByBit(kStart, bytes, 3));
}

TEST(CRCChecksum, LiteralIsAText) {
  CRCChecksum sum;
  sum += "1234";
  sum += "";
  sum += static_cast<const char*>(nullptr);
  sum += "56789\0dropped";
  EXPECT_EQ(sum.Value(), 0x340BC6D9u);
}

TEST(CRCChecksum, AdditionsChain) {
  CRCChecksum sum;
  (sum += std::string("1234")) += std::string("56789");
  EXPECT_EQ(sum.Value(), 0x340BC6D9u);
  CRCChecksum block;
  EXPECT_EQ(block.Add("12345", 5).Add("6789", 4).Value(), 0x340BC6D9u);
}

TEST(CRCChecksum, CopyTakesOverTheRegisterAndGoesItsOwnWay) {
  CRCChecksum first;
  first += std::string("12345");
  CRCChecksum second(first);
  CRCChecksum third;
  third += 7;
  third = first;
  second += std::string("6789");
  third += std::string("6789");
  EXPECT_EQ(second.Value(), 0x340BC6D9u);
  EXPECT_EQ(third.Value(), 0x340BC6D9u);
  EXPECT_EQ(first.Value(), SumOf("12345"));
}

TEST(CRCChecksum, NullBlockAddsNothing) {
  CRCChecksum sum;
  sum.Add(nullptr, 5).Add("x", 0);
  EXPECT_EQ(sum.Value(), kStart);
  for (const Crc32Way way : {Crc32Way::Portable, Crc32Way::Fold128, Crc32Way::Fold512}) {
    EXPECT_EQ(UpdateCrc32By(way, 17u, nullptr, 400), 17u);
  }
}

TEST(CRCChecksum, PortableWayIsAlwaysThere) {
  EXPECT_TRUE(HasCrc32Way(Crc32Way::Portable));
  EXPECT_FALSE(HasCrc32Way(static_cast<Crc32Way>(3)));
  if (HasCrc32Way(Crc32Way::Fold512)) {
    EXPECT_TRUE(HasCrc32Way(Crc32Way::Fold128));
  }
}

#if defined(__x86_64__) && defined(__GNUC__)
TEST(CRCChecksum, TheFoldingWaysAreThereOnProcessorsThatHaveTheirInstructions) {
  __builtin_cpu_init();
  const bool has128 = __builtin_cpu_supports("pclmul") != 0 && __builtin_cpu_supports("sse4.1") != 0;
  const bool has512 = has128 && __builtin_cpu_supports("vpclmulqdq") != 0 && __builtin_cpu_supports("avx512f") != 0 &&
                      __builtin_cpu_supports("avx512vl") != 0;
  EXPECT_EQ(HasCrc32Way(Crc32Way::Fold128), has128);
  EXPECT_EQ(HasCrc32Way(Crc32Way::Fold512), has512);
}
#endif

// A way that the processor does not have falls back on the tables, so each of these holds on every machine.
class EachWay : public testing::TestWithParam<Crc32Way> {};

TEST_P(EachWay, EqualsTheDefinitionAtAllLengthsAndAlignments) {
  constexpr std::size_t kLongest = 1100;
  const auto bytes = RandomBytes(kLongest + 16, 20260421);
  std::mt19937 random(3);
  for (std::size_t offset = 0; offset < 16; ++offset) {
    const auto start = static_cast<unsigned int>(random());
    unsigned int expected = start;
    for (std::size_t size = 0; size <= kLongest; ++size) {
      ASSERT_EQ(UpdateCrc32By(GetParam(), start, bytes.data() + offset, size), expected) << "size " << size << " offset " << offset;
      expected = BitByBit(expected, bytes.data() + offset + size, 1);
    }
  }
}

TEST_P(EachWay, EqualsTheDefinitionAtLongerLengths) {
  const auto bytes = RandomBytes(300000, 5);
  std::mt19937 random(7);
  for (int i = 0; i < 40; ++i) {
    const std::size_t offset = random() % 64;
    const std::size_t size = random() % (bytes.size() - offset);
    ASSERT_EQ(UpdateCrc32By(GetParam(), kStart, bytes.data() + offset, size), BitByBit(kStart, bytes.data() + offset, size))
        << "size " << size << " offset " << offset;
  }
}

TEST_P(EachWay, ChainedCallsEqualOneCall) {
  const auto bytes = RandomBytes(20000, 11);
  std::mt19937 random(13);
  const unsigned int whole = BitByBit(kStart, bytes.data(), bytes.size());
  for (int round = 0; round < 50; ++round) {
    unsigned int state = kStart;
    for (std::size_t at = 0; at < bytes.size();) {
      const std::size_t size = std::min<std::size_t>(random() % 900, bytes.size() - at);
      state = UpdateCrc32By(GetParam(), state, bytes.data() + at, size);
      at += size;
    }
    ASSERT_EQ(state, whole);
  }
}

TEST_P(EachWay, EqualsTheDefinitionOnBytesOfOneKind) {
  for (const int fill : {0x00, 0xFF, 0x80, 0x01}) {
    for (const std::size_t size : {15u, 16u, 17u, 63u, 64u, 255u, 256u, 257u, 512u, 4096u}) {
      const std::vector<unsigned char> bytes(size, static_cast<unsigned char>(fill));
      for (const unsigned int start : {0u, kStart, 1u, 0x80000000u}) {
        ASSERT_EQ(UpdateCrc32By(GetParam(), start, bytes.data(), size), BitByBit(start, bytes.data(), size));
      }
    }
  }
}

// Under the address sanitizer a byte read outside the block ends the test.
TEST_P(EachWay, ReadsNoByteOutsideTheBlock) {
  for (std::size_t size = 1; size <= 700; ++size) {
    const auto block = RandomBytes(size, static_cast<unsigned int>(size));
    const std::vector<unsigned char> exact(block.begin(), block.end());
    ASSERT_EQ(UpdateCrc32By(GetParam(), kStart, exact.data(), size), BitByBit(kStart, exact.data(), size));
  }
}

INSTANTIATE_TEST_SUITE_P(CRCChecksum, EachWay, testing::Values(Crc32Way::Portable, Crc32Way::Fold128, Crc32Way::Fold512),
                         [](const auto& way) {
                           if (way.param == Crc32Way::Portable) return std::string("Portable");
                           return std::string(way.param == Crc32Way::Fold128 ? "Fold128" : "Fold512");
                         });

TEST(CRCChecksum, ChosenWayEqualsTheDefinition) {
  const auto bytes = RandomBytes(5000, 17);
  for (std::size_t size = 0; size <= bytes.size(); size += 37) {
    ASSERT_EQ(UpdateCrc32(kStart, bytes.data(), size), BitByBit(kStart, bytes.data(), size));
    ASSERT_EQ(CRCChecksum().Add(bytes.data(), size).Value(), BitByBit(kStart, bytes.data(), size));
  }
}

// The sum is linear over exclusive or once the part that the start leaves is taken out: an independent property.
TEST(CRCChecksum, SumsOfDifferencesCombine) {
  for (unsigned int seed = 0; seed < 20; ++seed) {
    const auto a = RandomBytes(777, seed);
    const auto b = RandomBytes(777, seed + 100);
    std::vector<unsigned char> both(a.size());
    for (std::size_t i = 0; i < a.size(); ++i) both[i] = static_cast<unsigned char>(a[i] ^ b[i]);
    const auto fromZero = [](const std::vector<unsigned char>& bytes) { return UpdateCrc32(0, bytes.data(), bytes.size()); };
    EXPECT_EQ(fromZero(a) ^ fromZero(b), fromZero(both));
  }
}

}  // namespace
