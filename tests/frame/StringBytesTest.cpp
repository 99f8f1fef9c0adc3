#include "zelbase/frame/StringBytes.h"

#include <gtest/gtest.h>

#include <climits>
#include <stdexcept>
#include <string>

namespace {

TEST(StringBytes, AppendsBytesWithZeros) {
  std::string text = "a";
  CStringAppend(text, "b\0c", 3u);
  EXPECT_EQ(text, std::string("ab\0c", 4));
  const unsigned short pair = 0x4141;
  CStringAppend(text, &pair, sizeof pair);
  EXPECT_EQ(text, std::string("ab\0cAA", 6));
  CStringAppend(text, "x", 0u);
  EXPECT_EQ(text.size(), 6u);
}

TEST(StringBytes, AppendsOneByte) {
  std::string text;
  CStringAppend(text, 'a');
  CStringAppend(text, static_cast<unsigned char>(0xB0));
  CStringAppend(text, 0);
  EXPECT_EQ(text, std::string("a\xB0\0", 3));
}

TEST(StringBytes, AppendsAWholeString) {
  std::string text = "a";
  CStringAppend(text, std::string("\0b", 2));
  CStringAppend(text, "c");
  EXPECT_EQ(text, std::string("a\0bc", 4));
  CStringAppend(text, text);
  EXPECT_EQ(text.size(), 8u);
}

TEST(StringBytes, AppendsAPartOfItself) {
  std::string text = "abcdefghijklmnopqrstuvwxyz";
  const std::string twice = text + text;
  text.shrink_to_fit();
  CStringAppend(text, text.data(), 26u);
  EXPECT_EQ(text, twice);
}

TEST(StringBytes, NullDataAppendsNothing) {
  std::string text = "a";
  CStringAppend(text, nullptr, 5u);
  EXPECT_EQ(text, "a");
}

TEST(StringBytes, ANegativeSizeThrowsAndChangesNothing) {
  std::string text = "a";
  EXPECT_THROW(CStringAppend(text, "b", 0x80000000u), std::invalid_argument);
  EXPECT_THROW(CStringAppend(text, "b", static_cast<unsigned int>(-1)), std::invalid_argument);
  EXPECT_THROW(CStringAppend(text, nullptr, 0x80000000u), std::invalid_argument);
  EXPECT_EQ(text, "a");
}

TEST(StringBytes, FindsTheFirstByteOfThePatternOnly) {
  EXPECT_EQ(CStringFind("abcabd", "abd", 0), 0);
  EXPECT_EQ(CStringFind("abcabd", "abd", 1), 3);
  EXPECT_EQ(CStringFind("xxbx", "bzz", 0), -1);  // no room for the pattern
  EXPECT_EQ(CStringFind("xbxx", "bzz", 0), 1);
}

TEST(StringBytes, FindLooksUpToTheLastPlaceWithRoom) {
  EXPECT_EQ(CStringFind("xxa", "a", 0), 2);
  EXPECT_EQ(CStringFind("xab", "ab", 0), 1);
  EXPECT_EQ(CStringFind("xab", "ab", 2), -1);
  EXPECT_EQ(CStringFind("ab", "abc", 0), -1);
}

TEST(StringBytes, FindPassesZeroBytes) {
  EXPECT_EQ(CStringFind(std::string("a\0b", 3), "b", 0), 2);
  EXPECT_EQ(CStringFind(std::string("a\0b", 3), '\0', 0), 1);
  EXPECT_EQ(CStringFind(std::string("a\0b", 3), std::string("\0", 1), 0), 1);
  EXPECT_EQ(CStringFind("a\xB0", static_cast<unsigned char>(0xB0), 0), 1);
  EXPECT_EQ(CStringFind("ab", 'b', 0), 1);
  EXPECT_EQ(CStringFind("ab", 'c', 0), -1);
}

TEST(StringBytes, FindFromBehindTheEndIsMinusOne) {
  EXPECT_EQ(CStringFind("abc", "c", 3), -1);
  EXPECT_EQ(CStringFind("abc", "c", INT_MAX), -1);
  EXPECT_EQ(CStringFind("", "a", 0), -1);
  EXPECT_EQ(CStringFind("abc", 'c', 3), -1);
}

TEST(StringBytes, FindOfAnEmptyPatternIsMinusOne) {
  EXPECT_EQ(CStringFind("abc", "", 0), -1);
  EXPECT_EQ(CStringFind("", "", 0), -1);
}

TEST(StringBytes, FindFromANegativeStartThrowsBeforeAnyOtherTest) {
  EXPECT_THROW(CStringFind("abc", "a", -1), std::invalid_argument);
  EXPECT_THROW(CStringFind("", "", -1), std::invalid_argument);
  EXPECT_THROW(CStringFind("", 'a', INT_MIN), std::invalid_argument);
}

}  // namespace
