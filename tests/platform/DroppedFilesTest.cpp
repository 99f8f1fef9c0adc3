#include "zelbase/platform/DroppedFiles.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
using Names = std::vector<std::string>;

std::string Header(unsigned int offset, char wide = 0) {
  std::string header;
  for (int i = 0; i < 4; ++i) header += static_cast<char>(offset >> (8 * i));
  return header + std::string(12, 'x') + wide + std::string(3, '\0');
}

Names Read(const std::string& bytes) { return DroppedFileNames(std::make_shared<const std::string>(bytes)); }

TEST(DroppedFiles, NamesByHand) {
  EXPECT_EQ(Read(Header(20) + "C:\\a.txt\0b\0\0"s), (Names{"C:\\a.txt", "b"}));
  EXPECT_EQ(Read(Header(20) + "\0"s), Names());
  EXPECT_EQ(Read(Header(20)), Names());
  EXPECT_EQ(Read(Header(20) + "a\0b"s), (Names{"a", "b"}));
  EXPECT_EQ(Read(Header(20) + "a\0\0b\0\0"s), Names{"a"});
  EXPECT_EQ(Read(Header(23) + "...a\0\0"s), Names{"a"});
  EXPECT_EQ(Read(Header(20) + "\xB0\xFF\0\0"s), Names{"\xB0\xFF"});
}

TEST(DroppedFiles, BlocksThatHaveNone) {
  EXPECT_EQ(DroppedFileNames(nullptr), Names());
  for (std::size_t length = 0; length < 20; ++length) EXPECT_EQ(Read(Header(20).substr(0, length)), Names());
  EXPECT_EQ(Read(Header(22) + "a"), Names());
  EXPECT_EQ(Read(Header(0xFFFFFFFF) + "a\0\0"s), Names());
  EXPECT_EQ(Read(Header(20, 1) + "a\0b\0\0\0"s), Names());
}

TEST(DroppedFiles, RandomBlocksAgreeWithReadingByteByByte) {
  std::mt19937 random(20261112);
  for (int round = 0; round < 3000; ++round) {
    std::string bytes = Header(static_cast<unsigned int>(random() % 24));
    for (std::size_t left = random() % 12; left > 0; --left) bytes += "ab\0"[random() % 3];
    Names expected;
    std::string name;
    std::size_t at = static_cast<unsigned char>(bytes[0]);
    for (; at < bytes.size(); ++at) {
      if (bytes[at] != '\0') {
        name += bytes[at];
        continue;
      }
      if (name.empty()) break;
      expected.push_back(name);
      name.clear();
    }
    if (!name.empty()) expected.push_back(name);
    ASSERT_EQ(Read(bytes), expected) << "round " << round;
  }
}

}  // namespace
