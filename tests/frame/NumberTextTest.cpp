#include "zelbase/frame/detail/NumberText.h"

#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/CommaLocale.h"
#include "tests/support/Printed.h"
#include "tests/support/RandomDoubles.h"

namespace zelbase::detail {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// One row of a scan: what is read, how many bytes that takes, and the value; 0 bytes means that nothing
// parses.
template <class Number>
struct ScanRow {
  std::string text;
  std::size_t taken;
  Number value;
};

template <class Number>
void ExpectScans(std::size_t (*scan)(std::string_view, Number&), const std::vector<ScanRow<Number>>& rows) {
  constexpr Number kBefore = 77;
  for (const auto& row : rows) {
    Number value = kBefore;
    EXPECT_EQ(scan(row.text, value), row.taken) << '"' << row.text << '"';
    EXPECT_EQ(value, row.taken == 0 ? kBefore : row.value) << '"' << row.text << '"';
  }
}

std::uint64_t Bits(double value) { return std::bit_cast<std::uint64_t>(value); }

double Scanned(const std::string& text) {
  double value = 77;
  EXPECT_NE(ScanDouble(text, value), 0u) << text;
  return value;
}

std::string Fixed(double value, int decimals) {
  std::string text;
  AppendFixed(text, value, decimals);
  return text;
}

template <class Number>
std::string General(Number value) {
  std::string text;
  AppendGeneral(text, value);
  return text;
}

std::string Hex(unsigned long long value, int digits) {
  std::string text;
  AppendHex(text, value, digits);
  return text;
}

std::string Padded(long long value, int width) {
  std::string text;
  AppendPadded(text, value, width);
  return text;
}

TEST(NumberText, ScanIntTakesTheLongestFront) {
  ExpectScans<int>(ScanInt, {{"0", 1, 0},
                             {"42", 2, 42},
                             {"-42", 3, -42},
                             {"+42", 3, 42},
                             {" \t\n\v\f\r7", 7, 7},
                             {"12abc", 2, 12},
                             {"12.75", 2, 12},
                             {"1e5", 1, 1},
                             {"0x1A", 1, 0},
                             {"007", 3, 7},
                             {"-0", 2, 0},
                             {"", 0, 0},
                             {"   ", 0, 0},
                             {"-", 0, 0},
                             {"+", 0, 0},
                             {"- 1", 0, 0},
                             {"--1", 0, 0},
                             {"+-1", 0, 0},
                             {"abc", 0, 0},
                             {".5", 0, 0},
                             {std::string("\0001", 2), 0, 0},
                             {std::string("1\0002", 3), 1, 1},
                             {"\xA0"
                              "1",
                              0, 0}});
}

TEST(NumberText, ScanOfAWholeNumberBeyondItsTypeWrapsAround) {
  ExpectScans<int>(ScanInt, {{"2147483647", 10, INT_MAX},
                             {"2147483648", 10, INT_MIN},
                             {"-2147483648", 11, INT_MIN},
                             {"-2147483649", 11, INT_MAX},
                             {"4294967296", 10, 0},
                             {"18446744073709551617", 20, 1}});
  ExpectScans<unsigned int>(ScanUnsigned, {{"-1", 2, 4294967295u}, {"4294967295", 10, 4294967295u}, {"4294967297", 10, 1u}});
  ExpectScans<unsigned short>(ScanUnsignedShort, {{"65535", 5, USHRT_MAX}, {"65536", 5, 0}, {"-1", 2, USHRT_MAX}, {"131073", 6, 1}});
  ExpectScans<long long>(ScanInt64, {{"9223372036854775807", 19, LLONG_MAX},
                                     {"9223372036854775808", 19, LLONG_MIN},
                                     {"-9223372036854775808", 20, LLONG_MIN},
                                     {"18446744073709551616", 20, 0}});
  ExpectScans<unsigned long long>(
      ScanUnsigned64, {{"18446744073709551615", 20, ULLONG_MAX}, {"-1", 2, ULLONG_MAX}, {"36893488147419103235", 20, 3}});  // 2^65 + 3
}

TEST(NumberText, ScanHexTakesAnOptionalPrefix) {
  ExpectScans<unsigned int>(ScanHex, {{"ff", 2, 255u},
                                      {"0xFf", 4, 255u},
                                      {"0X1a", 4, 26u},
                                      {" -0x1", 5, 4294967295u},
                                      {"+10", 3, 16u},
                                      {"0x", 2, 0u},
                                      {"0xg", 2, 0u},
                                      {"0", 1, 0u},
                                      {"00x1", 2, 0u},
                                      {"0x0x1", 3, 0u},
                                      {"1g", 1, 1u},
                                      {"123456789", 9, 0x23456789u},
                                      {"x1", 0, 0u},
                                      {"g", 0, 0u},
                                      {"-", 0, 0u},
                                      {"", 0, 0u}});
  ExpectScans<unsigned long long>(
      ScanHex64, {{"0xFFFFFFFFFFFFFFFF", 18, ULLONG_MAX}, {"10000000000000001", 17, 1ull}, {"0x", 2, 0ull}, {"z", 0, 0ull}});
}

TEST(NumberText, ScanDoubleTakesTheLongestFront) {
  ExpectScans<double>(
      ScanDouble, {{"1.5", 3, 1.5},     {"-1.5", 4, -1.5},  {"+1.5", 4, 1.5},    {"  \t 2", 5, 2.0}, {"5.", 2, 5.0},     {".5", 2, 0.5},
                   {"-.5e1x", 5, -5.0}, {"1e3", 3, 1000.0}, {"1E+3", 4, 1000.0}, {"1e-3", 4, 0.001}, {"1e", 1, 1.0},     {"1e+", 1, 1.0},
                   {"1ex", 1, 1.0},     {"1e+-3", 1, 1.0},  {"1.2.3", 3, 1.2},   {"1,5", 1, 1.0},    {"12 34", 2, 12.0}, {"", 0, 0.0},
                   {".", 0, 0.0},       {"-", 0, 0.0},      {"-.", 0, 0.0},      {".e5", 0, 0.0},    {"e5", 0, 0.0},     {"+-1", 0, 0.0},
                   {"--1", 0, 0.0},     {"- 1", 0, 0.0},    {",5", 0, 0.0}});
}

TEST(NumberText, ScanDoubleIsDecimalOnlyAndKnowsNoInfinityAndNoNan) {
  ExpectScans<double>(ScanDouble, {{"inf", 0, 0},
                                   {"-inf", 0, 0},
                                   {"INFINITY", 0, 0},
                                   {"nan", 0, 0},
                                   {"-nan", 0, 0},
                                   {"nan(1)", 0, 0},
                                   {"0x10", 1, 0.0},
                                   {"-0x1p4", 2, -0.0}});
  ExpectScans<float>(ScanFloat, {{"inf", 0, 0}, {"nan", 0, 0}, {"0x10", 1, 0.0f}});
}

TEST(NumberText, ScanDoubleBeyondTheRangeIsInfinityOrZeroOfThatSign) {
  EXPECT_EQ(Scanned("1e309"), kInfinity);
  EXPECT_EQ(Scanned("-1e309"), -kInfinity);
  EXPECT_EQ(Scanned("1e99999999999999999999999"), kInfinity);
  EXPECT_EQ(Scanned("123456e400"), kInfinity);
  EXPECT_EQ(Scanned("0.0001e400"), kInfinity);
  EXPECT_EQ(Bits(Scanned("1e-400")), Bits(0.0));
  EXPECT_EQ(Bits(Scanned("-1e-400")), Bits(-0.0));
  EXPECT_EQ(Bits(Scanned("-1e-99999999999999999999999")), Bits(-0.0));
  EXPECT_EQ(Bits(Scanned("1000000e-400")), Bits(0.0));
  EXPECT_EQ(Bits(Scanned("-0")), Bits(-0.0));
  EXPECT_EQ(Bits(Scanned("0e99999999999")), Bits(0.0));
  EXPECT_EQ(Bits(Scanned("-0.000e-99999999999")), Bits(-0.0));
}

TEST(NumberText, ScanDoubleKeepsTheLimitsOfTheType) {
  EXPECT_EQ(Scanned("1.7976931348623157e308"), DBL_MAX);
  EXPECT_EQ(Scanned("2.2250738585072014e-308"), DBL_MIN);
  EXPECT_EQ(Scanned("4.9406564584124654e-324"), DBL_TRUE_MIN);
  EXPECT_EQ(Scanned("2.4703282292062328e-324"), DBL_TRUE_MIN);  // just above half of it
  EXPECT_EQ(Scanned("2.4703282292062327e-324"), 0.0);           // just below
}

TEST(NumberText, ScanDoubleReadsThousandsOfDigits) {
  EXPECT_EQ(Scanned("0." + std::string(5000, '0') + "1e5001"), 1.0);
  EXPECT_EQ(Scanned("1" + std::string(5000, '0') + "e-5000"), 1.0);
  EXPECT_EQ(Scanned("1" + std::string(5000, '0')), kInfinity);
  EXPECT_EQ(Scanned("0." + std::string(5000, '0') + "1"), 0.0);
  // 2^53 + 1 lies half way between two doubles: even without a further digit, up with one however late it
  // comes.
  EXPECT_EQ(Scanned("9007199254740993." + std::string(4000, '0')), 9007199254740992.0);
  EXPECT_EQ(Scanned("9007199254740993." + std::string(4000, '0') + "1"), 9007199254740994.0);
  EXPECT_EQ(Scanned("1" + std::string(2'000'000, '0') + "e-2000000"), 1.0);
  double value = 0;
  EXPECT_EQ(ScanDouble("1e" + std::string(1'000'000, '0') + "2", value), 1'000'003u);
  EXPECT_EQ(value, 100.0);
}

TEST(NumberText, ScanFloatRoundsOnce) {
  // 1 + 2^-24 + 2^-60: as a double it becomes the half way 1 + 2^-24 and would then round to even, down to 1.
  ExpectScans<float>(ScanFloat, {{"1.000000059604644775390625", 26, 1.0f},
                                 {"1.00000005960464477625798636", 28, std::nextafter(1.0f, 2.0f)},
                                 {"3.4028235e38", 12, FLT_MAX},
                                 {"-1e39", 5, -std::numeric_limits<float>::infinity()},
                                 {"1e-46", 5, 0.0f},
                                 {" +2.5f", 5, 2.5f},
                                 {"x", 0, 0.0f}});
}

TEST(NumberTextLong, ScanDoubleEqualsTheCLibraryOnPrintedNumbers) {
  RandomDoubles doubles;
  for (int i = 0; i < 1'000'000; ++i) {
    const double value = doubles.Next();
    // Rounded short, to the last digit that matters, and exactly.
    const int digits = static_cast<int>(doubles.Below(20));
    const std::string text = Printed("%.*e", digits, value);
    const double expected = ReadDouble(text.c_str());
    double read = 0;
    ASSERT_EQ(ScanDouble(text, read), text.size()) << text;
    ASSERT_EQ(Bits(read), Bits(expected)) << text;
    float single = 0;
    ASSERT_EQ(ScanFloat(text, single), text.size()) << text;
    ASSERT_EQ(std::bit_cast<std::uint32_t>(single), std::bit_cast<std::uint32_t>(ReadFloat(text.c_str()))) << text;
  }
}

TEST(NumberText, ScanDoubleEqualsTheCLibraryHalfWayBetweenNeighbours) {
  static_assert(LDBL_MANT_DIG > DBL_MANT_DIG, "the half way value must be exact");
  RandomDoubles doubles;
  for (int i = 0; i < 3'000; ++i) {
    const double low = std::fabs(doubles.Next());
    const double high = std::nextafter(low, kInfinity);
    if (!std::isfinite(high)) continue;
    const std::string half = Printed("%.1100Lf", (static_cast<long double>(low) + high) / 2);
    for (const std::string& text : {half, half + "1", half + std::string(1500, '0') + "1", "-" + half}) {
      ASSERT_EQ(Bits(Scanned(text)), Bits(ReadDouble(text.c_str()))) << text;
    }
  }
}

TEST(NumberText, ScansEqualTheCLibraryOnScrambledText) {
  std::mt19937_64 random(7);
  constexpr std::string_view kAlphabet = "0123456789012345678901234567890+-.eE \t,z";
  for (int i = 0; i < 300'000; ++i) {
    std::string text;
    for (std::size_t length = random() % 14; length > 0; --length) text += kAlphabet[random() % kAlphabet.size()];

    char* end = nullptr;
    const double real = ReadDouble(text.c_str(), &end);
    double read = 77;
    ASSERT_EQ(ScanDouble(text, read), static_cast<std::size_t>(end - text.c_str())) << text;
    ASSERT_EQ(Bits(read), Bits(end == text.c_str() ? 77.0 : real)) << text;

    const long long whole = std::strtoll(text.c_str(), &end, 10);
    long long count = 77;
    ASSERT_EQ(ScanInt64(text, count), static_cast<std::size_t>(end - text.c_str())) << text;
    ASSERT_EQ(count, end == text.c_str() ? 77 : whole) << text;

    int small = 77;
    int expected = 77;
    ASSERT_EQ(ScanInt(text, small) != 0, std::sscanf(text.c_str(), "%d", &expected) == 1) << text;
    ASSERT_EQ(small, end == text.c_str() ? 77 : static_cast<int>(whole)) << text;
  }
}

TEST(NumberTextLong, AppendFixedEqualsTheCLibrary) {
  RandomDoubles doubles;
  for (int i = 0; i < 1'000'000; ++i) {
    const double value = doubles.Next();
    const int decimals = static_cast<int>(i % 100 == 0 ? doubles.Below(351) : doubles.Below(18));
    ASSERT_EQ(Fixed(value, decimals), Printed("%.*f", decimals, value)) << value << ' ' << decimals;
  }
}

TEST(NumberTextLong, AppendGeneralEqualsTheCLibrary) {
  RandomDoubles doubles;
  for (int i = 0; i < 1'000'000; ++i) {
    const double value = doubles.Next();
    ASSERT_EQ(General(value), Printed("%g", value));
  }
  for (int i = 0; i < 100'000; ++i) {
    const long double value = static_cast<long double>(doubles.Next()) * doubles.Next() / 3;
    if (!std::isfinite(value)) continue;
    ASSERT_EQ(General(value), Printed("%Lg", value));
  }
}

TEST(NumberText, AppendFixedRoundsAnExactHalfToEven) {
  EXPECT_EQ(Fixed(0.5, 0), "0");
  EXPECT_EQ(Fixed(1.5, 0), "2");
  EXPECT_EQ(Fixed(2.5, 0), "2");
  EXPECT_EQ(Fixed(0.125, 2), "0.12");
  EXPECT_EQ(Fixed(0.375, 2), "0.38");
  EXPECT_EQ(Fixed(-0.5, 0), "-0");
}

TEST(NumberText, AppendFixedIsOfAnyLength) {
  const std::string huge = Fixed(1e308, 350);
  EXPECT_EQ(huge.size(), 309u + 1 + 350);
  EXPECT_EQ(huge, Printed("%.350f", 1e308));
  EXPECT_EQ(Fixed(-DBL_MAX, 350), Printed("%.350f", -DBL_MAX));
  EXPECT_EQ(Fixed(DBL_TRUE_MIN, 350), Printed("%.350f", DBL_TRUE_MIN));
}

TEST(NumberText, AppendFixedTakesItsDecimalsWithin0And350) {
  EXPECT_EQ(Fixed(2.0, -1), "2");
  EXPECT_EQ(Fixed(2.0, INT_MIN), "2");
  EXPECT_EQ(Fixed(2.0, 351), "2." + std::string(350, '0'));
  EXPECT_EQ(Fixed(2.0, INT_MAX), "2." + std::string(350, '0'));
}

TEST(NumberText, WhatIsNotFiniteHasAWordAndNanHasNoSign) {
  EXPECT_EQ(Fixed(kInfinity, 2), "inf");
  EXPECT_EQ(Fixed(-kInfinity, 2), "-inf");
  EXPECT_EQ(Fixed(kNan, 2), "nan");
  EXPECT_EQ(Fixed(std::copysign(kNan, -1.0), 2), "nan");
  EXPECT_EQ(General(kInfinity), "inf");
  EXPECT_EQ(General(-kInfinity), "-inf");
  EXPECT_EQ(General(std::copysign(kNan, -1.0)), "nan");
  EXPECT_EQ(General(std::numeric_limits<long double>::infinity()), "inf");
  EXPECT_EQ(General(std::copysign(std::numeric_limits<long double>::quiet_NaN(), -1.0L)), "nan");
}

TEST(NumberText, AppendGeneralHasSixDigitsAndExponentsOfAtLeastTwo) {
  EXPECT_EQ(General(2.5), "2.5");
  EXPECT_EQ(General(100000.0), "100000");
  EXPECT_EQ(General(1000000.0), "1e+06");
  EXPECT_EQ(General(0.0001), "0.0001");
  EXPECT_EQ(General(0.00001), "1e-05");
  EXPECT_EQ(General(-1.0 / 3), "-0.333333");
  EXPECT_EQ(General(1e300), "1e+300");
  EXPECT_EQ(General(-0.0), "-0");
  EXPECT_EQ(General(std::numeric_limits<long double>::max()), Printed("%Lg", std::numeric_limits<long double>::max()));
}

TEST(NumberText, WholeNumbersPrintInFull) {
  std::string text = "n=";
  AppendInt(text, LLONG_MIN);
  EXPECT_EQ(text, "n=-9223372036854775808");
  AppendInt(text, 0);
  AppendUnsigned(text, ULLONG_MAX);
  EXPECT_EQ(text, "n=-9223372036854775808018446744073709551615");
}

TEST(NumberText, HexAndPaddedNumbersAreFilledWithZeros) {
  EXPECT_EQ(Hex(0, 0), "0");
  EXPECT_EQ(Hex(0xabc, 8), "00000ABC");
  EXPECT_EQ(Hex(0x123456789, 8), "123456789");
  EXPECT_EQ(Hex(ULLONG_MAX, 20), "0000FFFFFFFFFFFFFFFF");
  EXPECT_EQ(Hex(10, -3), "A");
  EXPECT_EQ(Padded(7, 3), "007");
  EXPECT_EQ(Padded(-7, 3), "-07");
  EXPECT_EQ(Padded(-1234, 3), "-1234");
  EXPECT_EQ(Padded(LLONG_MIN, 22), "-009223372036854775808");
  EXPECT_EQ(Padded(5, 0), "5");
  EXPECT_EQ(Padded(5, -4), "5");
}

TEST(NumberText, ADecimalCommaInTheProcessChangesNothing) {
  const CommaLocale comma;
  std::ostringstream witness;
  witness << 1234.5;
  ASSERT_EQ(witness.str(), "1.234,5");

  EXPECT_EQ(Fixed(1234567.5, 2), "1234567.50");
  EXPECT_EQ(General(2.5), "2.5");
  EXPECT_EQ(General(2.5L), "2.5");
  EXPECT_EQ(General(-1.25e-7L), "-1.25e-07");
  EXPECT_EQ(Scanned("2.5"), 2.5);
  ExpectScans<double>(ScanDouble, {{"2,5", 1, 2.0}, {"1.234", 5, 1.234}});
  ExpectScans<float>(ScanFloat, {{"2,5", 1, 2.0f}, {"2.5", 3, 2.5f}});
  ExpectScans<int>(ScanInt, {{"1.234", 1, 1}});
  std::string text;
  AppendInt(text, 1234567);
  EXPECT_EQ(text, "1234567");
}

TEST(NumberText, ToCountTruncatesAndGivesTheSmallestForWhatDoesNotFit) {
  EXPECT_EQ(ToCount(1.9), 1);
  EXPECT_EQ(ToCount(-1.9), -1);
  EXPECT_EQ(ToCount(9223372036854774784.0), 9223372036854774784LL);
  EXPECT_EQ(ToCount(9223372036854775808.0), LLONG_MIN);
  EXPECT_EQ(ToCount(-9223372036854775808.0), LLONG_MIN);
  EXPECT_EQ(ToCount(1e300), LLONG_MIN);
  EXPECT_EQ(ToCount(-kInfinity), LLONG_MIN);
  EXPECT_EQ(ToCount(kNan), LLONG_MIN);
}

TEST(NumberText, ToCount32IsTheLowHalf) {
  EXPECT_EQ(ToCount32(-2.5), -2);
  EXPECT_EQ(ToCount32(2147483648.0), INT_MIN);
  EXPECT_EQ(ToCount32(4294967296.0 * 5 + 7), 7);
  EXPECT_EQ(ToCount32(kNan), 0);
  EXPECT_EQ(ToCount32(1e300), 0);
}

TEST(NumberText, ToPixelStopsAtTheNearestInt) {
  EXPECT_EQ(ToPixel(1.9), 1);
  EXPECT_EQ(ToPixel(-1.9), -1);
  EXPECT_EQ(ToPixel(2147483647.5), INT_MAX);
  EXPECT_EQ(ToPixel(1e300), INT_MAX);
  EXPECT_EQ(ToPixel(-kInfinity), INT_MIN);
  EXPECT_EQ(ToPixel(kNan), 0);
}

}  // namespace
}  // namespace zelbase::detail
