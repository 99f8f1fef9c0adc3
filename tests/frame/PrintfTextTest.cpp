#include "zelbase/frame/detail/PrintfText.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <string_view>

#include "tests/support/Printed.h"
#include "tests/support/RandomDoubles.h"

namespace zelbase::detail {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// "%", flags with repetitions, width, precision and one of `kinds`.
std::string RandomFormat(std::mt19937_64& random, std::string_view kinds) {
  std::string format = "%";
  for (auto flags = random() % 4; flags > 0; --flags) format += "-+ #0"[random() % 5];
  if (random() % 2 == 0) format += std::to_string(random() % (random() % 16 == 0 ? 400 : 30));
  if (random() % 2 == 0) format += "." + std::to_string(random() % (random() % 16 == 0 ? 400 : 25));
  if (random() % 32 == 0) format += ".";
  if (format.find('.') != format.rfind('.')) format.pop_back();
  return format + kinds[random() % kinds.size()];
}

void ExpectDouble(const std::string& format, double value) {
  EXPECT_EQ(PrintfText(format, value), Printed(format.c_str(), value)) << format << ' ' << value;
}

void ExpectInt(const std::string& format, int value) {
  EXPECT_EQ(PrintfText(format, value), Printed(format.c_str(), value)) << format << ' ' << value;
}

TEST(PrintfTextLong, DoublesEqualTheCLibraryInEveryForm) {
  std::mt19937_64 random(3);
  RandomDoubles doubles;
  for (int i = 0; i < 300'000; ++i) {
    const double value = doubles.Next();
    const std::string format = RandomFormat(random, "aefgAEFG");
    ASSERT_EQ(PrintfText(format, value), Printed(format.c_str(), value)) << format;
  }
}

TEST(PrintfTextLong, IntsEqualTheCLibraryInEveryForm) {
  std::mt19937_64 random(4);
  for (int i = 0; i < 300'000; ++i) {
    const int value = static_cast<int>(static_cast<unsigned int>(random())) >> (random() % 32);
    const std::string format = RandomFormat(random, "diouxXc");
    ASSERT_EQ(PrintfText(format, value), Printed(format.c_str(), value)) << format << ' ' << value;
  }
}

TEST(PrintfText, TheEndsOfDoublesInEveryKind) {
  const double values[] = {0.0,     -0.0,      1.0,        DBL_TRUE_MIN, DBL_MIN,
                           DBL_MAX, -DBL_MAX,  1e308,      9.9999995,    0.00009999995,
                           1e15,    kInfinity, -kInfinity, kNan,         std::copysign(kNan, -1.0)};
  for (const double value : values) {
    for (const char kind : std::string_view("aefgAEFG")) {
      for (const char* front : {"%", "%+", "% ", "%#", "%012", "%-12", "%+#030", "%.0", "%#.0", "%.1", "%.20", "%.350"}) {
        ExpectDouble(std::string(front) + kind, value);
      }
    }
  }
}

TEST(PrintfText, TheEndsOfIntsInEveryKind) {
  for (const int value : {0, 1, -1, 9, 255, 256, INT_MAX, INT_MIN}) {
    for (const char kind : std::string_view("diouxXc")) {
      for (const char* front : {"%", "%+", "% ", "%#", "%012", "%-12", "%+#030", "%.0", "%#.0", "%.1", "%.20", "%8.3"}) {
        ExpectInt(std::string(front) + kind, value);
      }
    }
  }
}

TEST(PrintfText, HexadecimalRoundsHalvesToEvenAndMayLeadWithTwo) {
  EXPECT_EQ(PrintfText("%.0a", 1.5), "0x2p+0");
  EXPECT_EQ(PrintfText("%.0a", 1.25), "0x1p+0");
  EXPECT_EQ(PrintfText("%.1a", 1.0 + 1.0 / 32), "0x1.0p+0");  // 1.08 in hexadecimal
  EXPECT_EQ(PrintfText("%.1a", 1.0 + 3.0 / 32), "0x1.2p+0");  // 1.18
  EXPECT_EQ(PrintfText("%a", DBL_TRUE_MIN), "0x0.0000000000001p-1022");
}

TEST(PrintfText, WidthAndPrecisionOfFourDigits) {
  ExpectDouble("%9999.9999f", DBL_MAX);
  ExpectDouble("%-9999.9999e", -DBL_TRUE_MIN);
  ExpectDouble("%#.9999g", 0.0001);
  ExpectDouble("%.9999g", 0.0001);
  ExpectDouble("%.9999a", 0.1);
  ExpectInt("%9999d", -5);
  ExpectInt("%.9999d", INT_MIN);
  ExpectInt("%#.9999x", 5);
  ExpectInt("%#.9999o", 5);
}

TEST(PrintfText, AppendsBehindWhatIsThere) {
  std::string text = "x = ";
  AppendPrintf(text, {.kind = 'f', .width = 8, .precision = 2, .zeros = true}, -1.5);
  AppendPrintf(text, {.kind = 'd', .plus = true}, 7);
  EXPECT_EQ(text, "x = -0001.50+7");
}

TEST(PrintfText, ACharacterIsTheLowByteAlsoWhenItIsZero) {
  EXPECT_EQ(PrintfText("[%c]", 0x141), "[A]");
  EXPECT_EQ(PrintfText("[%c]", -80), "[\xB0]");
  EXPECT_EQ(PrintfText("[%c]", 0), std::string("[\0]", 3));
  EXPECT_EQ(PrintfText("%3c|%-3c", 'x'), "");
  EXPECT_EQ(PrintfText("%3c|", 'x'), "  x|");
}

TEST(PrintfText, TextAroundTheConversionStays) {
  EXPECT_EQ(PrintfText("depth %.1f m", 2.25), "depth 2.2 m");
  EXPECT_EQ(PrintfText("100%% of %d%%", 5), "100% of 5%");
  EXPECT_EQ(PrintfText("%%%d", 5), "%5");
  EXPECT_EQ(PrintfText("%%d", 5), "%d");
  EXPECT_EQ(PrintfText(std::string_view("a\0%d\0", 5), 5), std::string("a\0"
                                                                       "5\0",
                                                                       4));
}

}  // namespace
}  // namespace zelbase::detail
