#include "zelbase/frame/detail/Characters.h"

#include <gtest/gtest.h>

#include <locale>
#include <string>

namespace zelbase::detail {
namespace {

char Byte(int value) { return static_cast<char>(static_cast<unsigned char>(value)); }

TEST(Characters, WhiteSpaceIsSixBytes) {
  std::string spaces;
  for (int i = 0; i < 256; ++i) {
    if (IsSpace(Byte(i))) spaces += Byte(i);
  }
  EXPECT_EQ(spaces, "\t\n\v\f\r ");
}

TEST(Characters, DigitsAreTen) {
  std::string digits;
  for (int i = 0; i < 256; ++i) {
    if (IsDigit(Byte(i))) digits += Byte(i);
  }
  EXPECT_EQ(digits, "0123456789");
}

TEST(Characters, OnlyTheLettersAToZHaveACase) {
  const std::string upper = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  const std::string lower = "abcdefghijklmnopqrstuvwxyz";
  for (int i = 0; i < 256; ++i) {
    const char c = Byte(i);
    const auto asUpper = upper.find(c);
    const auto asLower = lower.find(c);
    EXPECT_EQ(ToLower(c), asUpper == std::string::npos ? c : lower[asUpper]) << i;
    EXPECT_EQ(ToUpper(c), asLower == std::string::npos ? c : upper[asLower]) << i;
  }
}

TEST(Characters, TrimTakesWhiteSpaceOffTheEndsOnly) {
  EXPECT_EQ(Trim(" \t a b \r\n"), "a b");
  EXPECT_EQ(TrimLeft("  a "), "a ");
  EXPECT_EQ(TrimRight("  a "), "  a");
  EXPECT_EQ(Trim(""), "");
  EXPECT_EQ(Trim(" \v\f "), "");
  EXPECT_EQ(Trim("\xA0x\xA0"), "\xA0x\xA0");
  EXPECT_EQ(Trim(std::string_view("\0 ", 2)), std::string_view("\0", 1));
}

}  // namespace
}  // namespace zelbase::detail
