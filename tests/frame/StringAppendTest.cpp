#include "zelbase/frame/StringAppend.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <string>

// A namespace with an operator<< of its own, as the header warns of.
namespace crowded {

struct Other {};
Other& operator<<(Other& other, int) { return other; }

std::string Built() {
  using ::operator<<;
  std::string text;
  text << "n=" << 1;
  return text;
}

}  // namespace crowded

namespace {

template <class Value>
std::string Appended(Value value) {
  std::string text = ">";
  EXPECT_EQ(&(text << value), &text);
  return text.substr(1);
}

TEST(StringAppend, BuildsAMessageOnATemporary) {
  EXPECT_EQ(std::string() << "a" << 1 << 2.5 << true << 'c' << std::string("d"), "a12.51cd");
  const std::string text = std::string("n=") << 7ul;
  EXPECT_EQ(text, "n=7");
  const char* const none = nullptr;
  EXPECT_EQ(std::string("x") << none, "x");
}

TEST(StringAppend, TakesAnEnumerationAsItsNumber) {
  enum { kFive = 5 };
  std::string text;
  text << kFive;
  EXPECT_EQ(text, "5");
  EXPECT_EQ(std::string() << kFive, "5");
}

TEST(StringAppend, BuildsAMessageInOneExpression) {
  std::string text;
  text << "a" << 1 << 2.5 << true << 'c' << std::string("d");
  EXPECT_EQ(text, "a12.51cd");
}

TEST(StringAppend, TextsStayAsTheyAre) {
  EXPECT_EQ(Appended(std::string("%d\0x", 4)), std::string("%d\0x", 4));
  EXPECT_EQ(Appended("%s%n"), "%s%n");
  char array[] = "array";
  EXPECT_EQ(Appended(array), "array");
  EXPECT_EQ(Appended('\xB0'), "\xB0");
  EXPECT_EQ(Appended('\0'), std::string(1, '\0'));
}

TEST(StringAppend, NullAppendsNothing) {
  EXPECT_EQ(Appended(static_cast<const char*>(nullptr)), "");
  EXPECT_EQ(Appended(static_cast<char*>(nullptr)), "");
}

TEST(StringAppend, ATextMayBeAppendedToItself) {
  std::string text = "ab";
  text << text << text.c_str();
  EXPECT_EQ(text, "abababab");
}

TEST(StringAppend, WholeNumbersOfEveryType) {
  EXPECT_EQ(Appended(static_cast<short>(-32768)), "-32768");
  EXPECT_EQ(Appended(INT_MIN), "-2147483648");
  EXPECT_EQ(Appended(LONG_MAX), "9223372036854775807");
  EXPECT_EQ(Appended(LLONG_MIN), "-9223372036854775808");
  EXPECT_EQ(Appended(static_cast<unsigned short>(65535)), "65535");
  EXPECT_EQ(Appended(UINT_MAX), "4294967295");
  EXPECT_EQ(Appended(ULONG_MAX), "18446744073709551615");
  EXPECT_EQ(Appended(ULLONG_MAX), "18446744073709551615");
  EXPECT_EQ(Appended(static_cast<signed char>(-5)), "-5");
  EXPECT_EQ(Appended(static_cast<unsigned char>(200)), "200");
  EXPECT_EQ(Appended(sizeof(int)), "4");
}

TEST(StringAppend, ABoolIsOneOrZero) {
  EXPECT_EQ(Appended(true), "1");
  EXPECT_EQ(Appended(false), "0");
}

TEST(StringAppend, RealNumbersHaveSixDigits) {
  EXPECT_EQ(Appended(2.5), "2.5");
  EXPECT_EQ(Appended(0.1f), "0.1");
  EXPECT_EQ(Appended(16777217.0), "1.67772e+07");
  EXPECT_EQ(Appended(0.00001), "1e-05");
  EXPECT_EQ(Appended(-1.5L), "-1.5");
  EXPECT_EQ(Appended(std::numeric_limits<double>::quiet_NaN()), "nan");
  EXPECT_EQ(Appended(-std::numeric_limits<float>::infinity()), "-inf");
}

TEST(StringAppend, IsReachedFromACrowdedNamespace) { EXPECT_EQ(crowded::Built(), "n=1"); }

}  // namespace
