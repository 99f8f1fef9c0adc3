#include "zelbase/frame/StringCompare.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <string>

#include "tests/support/Printed.h"

namespace {

TEST(StringCompare, IcompareIsEqualityWithoutCase) {
  EXPECT_TRUE(icompare(std::string("AbC"), std::string("aBc")));
  EXPECT_FALSE(icompare(std::string("abc"), std::string("abcd")));
  EXPECT_FALSE(icompare(std::string("abc"), std::string("abd")));
  EXPECT_TRUE(icompare(std::string(), std::string()));
  EXPECT_FALSE(icompare(std::string("\xE4"), std::string("\xC4")));
  EXPECT_FALSE(icompare(std::string("["), std::string("{")));  // as far apart as the letters' cases
}

TEST(StringCompare, IcompareTakesPointersOnEitherSide) {
  char array[] = "ABC";
  const std::string text = "abc";
  EXPECT_TRUE(icompare(text, "ABC"));
  EXPECT_TRUE(icompare("ABC", text));
  EXPECT_TRUE(icompare("abc", "ABC"));
  EXPECT_TRUE(icompare(array, text));
  EXPECT_TRUE(icompare(text, array));
  EXPECT_FALSE(icompare(text, "AB"));
}

TEST(StringCompare, IcompareOfNullIsOfAnEmptyText) {
  EXPECT_TRUE(icompare("", nullptr));
  EXPECT_FALSE(icompare(nullptr, std::string("a")));
  const char* const none = nullptr;
  EXPECT_TRUE(icompare(none, none));
}

TEST(StringCompare, IcompareWithAPointerEndsAtAZeroByte) {
  const std::string text("ab\0c", 4);
  EXPECT_TRUE(icompare(text, "AB"));
  EXPECT_TRUE(icompare("AB", text));
  EXPECT_FALSE(icompare(text, std::string("ab")));
}

TEST(StringCompare, GreaterAndSmallerAreStrict) {
  EXPECT_TRUE(Smaller("abc", "ABD"));
  EXPECT_FALSE(Smaller("ABD", "abc"));
  EXPECT_TRUE(Greater("ABD", "abc"));
  EXPECT_FALSE(Smaller("abc", "ABC"));
  EXPECT_FALSE(Greater("abc", "ABC"));
  EXPECT_TRUE(Smaller("ab", "ABC"));
  EXPECT_TRUE(Smaller("", "a"));
}

TEST(StringCompare, OrderIsOfLowerCaseLettersAndUnsignedBytes) {
  EXPECT_TRUE(Smaller("_", "A"));  // 95 before 97; in upper case it would come after 65
  EXPECT_TRUE(Smaller("z", "\x80"));
  EXPECT_TRUE(Greater("\xFF", "\x01"));
}

TEST(StringCompare, AtofAndAtoiReadTheFront) {
  EXPECT_EQ(atof(std::string(" 2.5 m")), 2.5);
  EXPECT_EQ(atof(std::string("x")), 0.0);
  EXPECT_EQ(atof(std::string()), 0.0);
  EXPECT_EQ(atof(std::string("inf")), 0.0);
  EXPECT_EQ(atoi(std::string("-12.9")), -12);
  EXPECT_EQ(atoi(std::string("abc")), 0);
  EXPECT_EQ(atoi(std::string("2147483648")), INT_MIN);
}

TEST(StringCompare, AtofStandsBesideTheCLibrarys) {
  const CLocale locale;  // the C library's goes by it
  EXPECT_EQ(atof("2.5"), 2.5);
  EXPECT_EQ(atoi("7"), 7);
}

}  // namespace
