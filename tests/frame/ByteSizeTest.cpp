#include "zelbase/frame/ByteSize.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Size(unsigned long long bytes) {
  std::string text = "replaced";
  FormatByteSize(bytes, text);
  return text;
}

TEST(ByteSize, ChoosesTheUnitBySize) {
  EXPECT_EQ(Size(0), "0 KB");
  EXPECT_EQ(Size(1536), "1.5 KB");
  EXPECT_EQ(Size(10240), "10 KB");
  EXPECT_EQ(Size(0xFFFFF), "1024 KB");
  EXPECT_EQ(Size(1048576), "1.0 MB");
  EXPECT_EQ(Size(0x3FFFFFFF), "1024 MB");
  EXPECT_EQ(Size(0x40000000), "1.0 GB");
  EXPECT_EQ(Size(0xFFFFFFFFFFFFFFFF), "17179869184 GB");
}

TEST(ByteSize, ChoosesTheDecimalsBeforeRounding) {
  EXPECT_EQ(Size(10239), "10.0 KB");
  EXPECT_EQ(Size(1), "0.0 KB");
}

TEST(ByteSize, RoundsAnExactHalfToEven) {
  EXPECT_EQ(Size(256), "0.2 KB");         // 0.25
  EXPECT_EQ(Size(768), "0.8 KB");         // 0.75
  EXPECT_EQ(Size(10240 + 512), "10 KB");  // 10.5
  EXPECT_EQ(Size(11264 + 512), "12 KB");  // 11.5
}

TEST(ByteSize, PerSecondAppendsToTheUnit) {
  std::string text = "replaced";
  FormatByteSizeperSec(1536, text);
  EXPECT_EQ(text, "1.5 KB/s");
}

}  // namespace
