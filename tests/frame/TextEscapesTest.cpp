#include "zelbase/frame/TextEscapes.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

std::string Bytes(const char* text, std::size_t size) { return {text, size}; }

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) text.replace(at, from.size(), to);
}

// The escaping told step by step, one character after the other over the whole text.
std::string XmlStepByStep(std::string text) {
  for (auto at = text.find('&'); at != std::string::npos; at = text.find('&', at + 3)) {
    if (text.compare(at, 4, "amp;") != 0) text.insert(at + 1, "amp;");
  }
  for (auto at = text.find('<'); at != std::string::npos; at = text.find('<', at)) {
    const auto close = text.find('>', at);
    if (close != std::string::npos) {
      at = close;
    } else {
      text.replace(at, 1, "&lt;");
    }
  }
  ReplaceAll(text, "'", "&#8217;");
  ReplaceAll(text, "\"", "&#8221;");
  ReplaceAll(text, "\xB3", "&#179;");
  ReplaceAll(text, "\xB2", "&#178;");
  ReplaceAll(text, "\xB0", "&#176;");
  ReplaceAll(text, "\\", "&#92;");
  return text;
}

TEST(TextEscapes, EachEscapeGivesItsCharacter) {
  EXPECT_EQ(StrHandleEscape("a\\tb"), "a\tb");
  EXPECT_EQ(StrHandleEscape("\\r\\n\\f\\t\\b\\v\\a\\?\\\\\\\""), "\r\n\f\t\b\v\a?\\\"");
  EXPECT_EQ(StrHandleEscape("\\x41"), "A");
  EXPECT_EQ(StrHandleEscape("\\101"), "A");
  EXPECT_EQ(StrHandleEscape("plain"), "plain");
  EXPECT_EQ(StrHandleEscape(""), "");
  EXPECT_EQ(StrHandleEscape("\\\\n"), "\\n");
}

TEST(TextEscapes, AllDigitsBelongToTheNumber) {
  EXPECT_EQ(StrHandleEscape("\\x141"), "A");
  EXPECT_EQ(StrHandleEscape("\\1011"), "\t");
  EXPECT_EQ(StrHandleEscape("\\xaFg"), "\xAFg");
  EXPECT_EQ(StrHandleEscape("\\1018"), "A8");
  EXPECT_EQ(StrHandleEscape("\\x41\\x42"), "AB");
}

TEST(TextEscapes, ANumberBeyond32BitsIsTheLargest) {
  EXPECT_EQ(StrHandleEscape("\\x100000041"), "\xFF");
  EXPECT_EQ(StrHandleEscape("\\xFFFFFF41"), "A");
  EXPECT_EQ(StrHandleEscape("\\x" + std::string(100000, '9')), "\xFF");
  EXPECT_EQ(StrHandleEscape("\\37777777501"), "A");     // 0xFFFFFF41
  EXPECT_EQ(StrHandleEscape("\\40000000101"), "\xFF");  // 0x100000041
  EXPECT_EQ(StrHandleEscape("\\x" + std::string(100000, '0') + "41"), "A");
}

TEST(TextEscapes, AnotherCharacterGivesAZeroByteAndIsCopied) {
  EXPECT_EQ(StrHandleEscape("\\q"), Bytes("\0q", 2));
  EXPECT_EQ(StrHandleEscape("\\8"), Bytes("\0"
                                          "8",
                                          2));
  EXPECT_EQ(StrHandleEscape("\\'"), Bytes("\0'", 2));
  EXPECT_EQ(StrHandleEscape("\\X41"), Bytes("\0X41", 4));
  EXPECT_EQ(StrHandleEscape("\\x"), Bytes("\0", 1));
  EXPECT_EQ(StrHandleEscape("\\xg"), Bytes("\0g", 2));
  EXPECT_EQ(StrHandleEscape(Bytes("\\\0", 2)), Bytes("\0\0", 2));
}

TEST(TextEscapes, ABackslashAtTheEndIsDropped) {
  EXPECT_EQ(StrHandleEscape("a\\"), "a");
  EXPECT_EQ(StrHandleEscape("\\\\\\"), "\\");
}

TEST(TextEscapes, XmlEscapesTheStatedCharacters) {
  EXPECT_EQ(XMLEscape("a&b"), "a&amp;b");
  EXPECT_EQ(XMLEscape("a<b"), "a&lt;b");
  EXPECT_EQ(XMLEscape("'\"\xB3\xB2\xB0\\"), "&#8217;&#8221;&#179;&#178;&#176;&#92;");
  EXPECT_EQ(XMLEscape("\xB1 \x80 /"), "\xB1 \x80 /");
  EXPECT_EQ(XMLEscape(""), "");
}

TEST(TextEscapes, XmlDoublesAnEscapedAmpersand) {
  EXPECT_EQ(XMLEscape("a&amp;b"), "a&amp;amp;b");
  EXPECT_EQ(XMLEscape("&&"), "&amp;&amp;");
}

TEST(TextEscapes, XmlLeavesBracketsThatCloseAndEnds) {
  EXPECT_EQ(XMLEscape("<a>&'<b"), "<a>&amp;&#8217;&lt;b");
  EXPECT_EQ(XMLEscape(">"), ">");
  EXPECT_EQ(XMLEscape("<<>"), "<<>");
  EXPECT_EQ(XMLEscape("><"), ">&lt;");
}

TEST(TextEscapes, XmlOfNullIsEmpty) { EXPECT_EQ(XMLEscape(nullptr), ""); }

TEST(TextEscapes, XmlOfAStringTakesZeroBytesToo) { EXPECT_EQ(XMLEscape(Bytes("a\0&", 3)), Bytes("a\0&amp;", 7)); }

TEST(TextEscapes, XmlEqualsTheStepsOneByOne) {
  std::mt19937 random(9);
  constexpr std::string_view kAlphabet = "&<>'\"\xB3\xB2\xB0\\amp;l";
  for (int i = 0; i < 50'000; ++i) {
    std::string text;
    for (auto length = random() % 12; length > 0; --length) text += kAlphabet[random() % kAlphabet.size()];
    ASSERT_EQ(XMLEscape(text), XmlStepByStep(text)) << text;
  }
}

TEST(TextEscapes, XmlOfAMillionBracketsEnds) {
  const std::string brackets(1'000'000, '<');
  EXPECT_EQ(XMLEscape(brackets).size(), 4'000'000u);
  EXPECT_EQ(XMLEscape(brackets + ">"), brackets + ">");
  EXPECT_EQ(XMLEscape(std::string(1'000'000, '&')).size(), 5'000'000u);
}

TEST(TextEscapes, MakeXmlCompatibleBlanksControlsAndEveryByteFrom128) {
  std::string all;
  std::string expected;
  for (int i = 0; i < 256; ++i) {
    all += static_cast<char>(static_cast<unsigned char>(i));
    expected += i >= 32 && i <= 127 ? static_cast<char>(i) : ' ';
  }
  MakeXmlCompatible(all);
  EXPECT_EQ(all, expected);
}

}  // namespace
