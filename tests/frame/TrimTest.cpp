#include "zelbase/frame/Trim.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct Row {
  std::string text;
  char c;
  std::string left;
  std::string right;
  std::string both;
};

const Row kRows[] = {{"  a b  ", ' ', "a b  ", "  a b", "a b"},
                     {"xxaxx", 'x', "axx", "xxa", "a"},
                     {"xxx", 'x', "", "", ""},
                     {"", 'x', "", "", ""},
                     {"abc", 'x', "abc", "abc", "abc"},
                     {"\xB0"
                      "1\xB0",
                      '\xB0', "1\xB0",
                      "\xB0"
                      "1",
                      "1"}};

std::string OnArray(char* (*function)(char*, char), std::string text, char c) {
  EXPECT_EQ(function(text.data(), c), text.data());
  return text.c_str();
}

std::string OnString(std::string& (*function)(std::string&, char), std::string text, char c) {
  EXPECT_EQ(&function(text, c), &text);
  return text;
}

TEST(Trim, WorksInPlaceOnAnArray) {
  for (const Row& row : kRows) {
    EXPECT_EQ(OnArray(trimleft, row.text, row.c), row.left);
    EXPECT_EQ(OnArray(trimright, row.text, row.c), row.right);
    EXPECT_EQ(OnArray(trim, row.text, row.c), row.both);
  }
}

TEST(Trim, WorksInPlaceOnAString) {
  for (const Row& row : kRows) {
    EXPECT_EQ(OnString(trimleft, row.text, row.c), row.left);
    EXPECT_EQ(OnString(trimright, row.text, row.c), row.right);
    EXPECT_EQ(OnString(trim, row.text, row.c), row.both);
  }
}

TEST(Trim, TakesOneCharacterAndNotWhiteSpace) {
  EXPECT_EQ(OnArray(trim, "\t a \t", ' '), "\t a \t");
  EXPECT_EQ(OnString(trim, " \ta\t ", ' '), "\ta\t");
}

TEST(Trim, OfTheZeroCharacterDoesNothing) {
  EXPECT_EQ(OnArray(trim, "a", '\0'), "a");
  EXPECT_EQ(OnArray(trim, "", '\0'), "");
  const std::string zeros("\0a\0", 3);
  EXPECT_EQ(OnString(trim, zeros, '\0'), zeros);
  EXPECT_EQ(OnString(trimleft, zeros, '\0'), zeros);
  EXPECT_EQ(OnString(trimright, zeros, '\0'), zeros);
}

TEST(Trim, OfNullIsNull) {
  char* const none = nullptr;
  EXPECT_EQ(trim(none, ' '), nullptr);
  EXPECT_EQ(trimleft(none, ' '), nullptr);
  EXPECT_EQ(trimright(none, ' '), nullptr);
}

TEST(Trim, OfAStringPassesItsZeroBytes) { EXPECT_EQ(OnString(trim, std::string(" \0 ", 3), ' '), std::string("\0", 1)); }

}  // namespace
