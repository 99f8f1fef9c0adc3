#include "zelbase/frame/GeographicText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <string_view>

#include "tests/errors/FixedWording.h"
#include "tests/frame/LiteralCoordinate.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/Printed.h"
#include "zelbase/frame/CZelString.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// "{false}" in front of a text whose result was false.
std::string Geogs(double value, unsigned int format, int decimals, int axis, bool behind, bool symbols) {
  std::string text = "before";
  const bool good = FormatGeogs(value, format, decimals, axis, text, behind, symbols);
  return good ? text : "{false}" + text;
}

std::string WinFrog(double value, int axis) {
  std::string text = "before";
  EXPECT_TRUE(FormatWinFrogGeogs(value, axis, text));
  return text;
}

// What StringToGeo gives; NaN when it is false, and then the value was 0.
double Geo(const std::string& text) {
  double value = 77;
  if (StringToGeo(text, value)) return value;
  EXPECT_EQ(std::bit_cast<std::uint64_t>(value), 0u) << text;
  return kNan;
}

bool Unreadable(const std::string& text) { return std::isnan(Geo(text)); }

std::uint64_t Bits(double value) { return std::bit_cast<std::uint64_t>(value); }

// --- FormatGeogs ---

TEST(FormatGeogs, DecimalDegrees) {
  EXPECT_EQ(Geogs(52.5, 1, 2, 10, true, true), "052.50\xB0N");
  EXPECT_EQ(Geogs(0.0, 1, 0, 10, true, false), "000 N");
  EXPECT_EQ(Geogs(-4.25, 1, 3, 11, false, true), "W 004.250\xB0");
  EXPECT_EQ(Geogs(-4.25, 1, 3, 11, false, false), "W 004.250 ");
  EXPECT_EQ(Geogs(2.5, 1, 0, 11, true, true),
            "002\xB0"
            "E");  // an exact half to even
}

TEST(FormatGeogs, DegreesAndDecimalMinutes) {
  EXPECT_EQ(Geogs(-4.25, 3, 3, 11, false, false), "W 004 15.000 ");
  EXPECT_EQ(Geogs(-4.25, 3, 3, 11, true, true),
            "004\xB0"
            "15.000'W");
  EXPECT_EQ(Geogs(52.5125, 3, 2, 10, true, true),
            "052\xB0"
            "30.75'N");
  EXPECT_EQ(Geogs(7.1, 3, 0, 10, true, true),
            "007\xB0"
            "06'N");
}

TEST(FormatGeogs, DegreesMinutesAndDecimalSeconds) {
  EXPECT_EQ(Geogs(52.5125, 7, 2, 10, true, true),
            "052\xB0"
            "30'45.00\"N");
  EXPECT_EQ(Geogs(52.5125, 7, 2, 10, false, false), "N 052 30 45.00 ");
  EXPECT_EQ(Geogs(-179.999, 7, 0, 11, true, true),
            "179\xB0"
            "59'56\"W");
}

TEST(FormatGeogs, RoundingComesBeforeTheSplit) {
  EXPECT_EQ(Geogs(59.99999999, 3, 1, 10, true, false), "060 00.0 N");
  EXPECT_EQ(Geogs(59.99999999, 7, 1, 10, true, false), "060 00 00.0 N");
  EXPECT_EQ(Geogs(12.0 + 59.96 / 60, 3, 1, 10, true, true),
            "013\xB0"
            "00.0'N");
  EXPECT_EQ(Geogs(12.0 + 34.0 / 60 + 59.96 / 3600, 7, 1, 10, true, true),
            "012\xB0"
            "35'00.0\"N");
}

// As far as a double resolves a hundredth of the last place shown.
TEST(FormatGeogs, NoMinuteAndNoSecondShows60) {
  std::mt19937_64 random(19);
  for (int i = 0; i < 200'000; ++i) {
    // On or a hair beside a whole second.
    double value = static_cast<double>(random() % 648'001) / 3600;
    for (auto steps = random() % 3; steps > 0; --steps) value = std::nextafter(value, 0.0);
    const int decimals = static_cast<int>(random() % 9);
    const std::string minutes = Geogs(value, 3, decimals, 11, true, true);
    ASSERT_NE(minutes.substr(4, 2), "60") << minutes;
    const std::string seconds = Geogs(value, 7, decimals, 11, true, true);
    ASSERT_NE(seconds.substr(4, 2), "60") << seconds;
    ASSERT_NE(seconds.substr(7, 2), "60") << seconds;
  }
}

TEST(FormatGeogs, LatitudesTooHaveThreeDigits) {
  EXPECT_EQ(Geogs(5.0, 1, 1, 10, true, true), "005.0\xB0N");
  EXPECT_EQ(Geogs(5.0, 3, 1, 10, true, true),
            "005\xB0"
            "00.0'N");
  EXPECT_EQ(Geogs(5.0, 7, 1, 10, true, true),
            "005\xB0"
            "00'00.0\"N");
}

TEST(FormatGeogs, TheHemisphereComesFromTheUnroundedValue) {
  EXPECT_EQ(Geogs(-1e-9, 1, 2, 10, true, true), "000.00\xB0S");
  EXPECT_EQ(Geogs(-1e-9, 3, 2, 11, true, true),
            "000\xB0"
            "00.00'W");
  EXPECT_EQ(Geogs(-5e-324, 7, 2, 10, true, true),
            "000\xB0"
            "00'00.00\"S");
}

TEST(FormatGeogs, BothZerosAreNorthAndEast) {
  for (const double zero : {0.0, -0.0}) {
    EXPECT_EQ(Geogs(zero, 1, 2, 10, true, true), "000.00\xB0N");
    EXPECT_EQ(Geogs(zero, 3, 2, 11, true, true),
              "000\xB0"
              "00.00'E");
  }
}

TEST(FormatGeogs, TheLetterInFrontHasABlankAndBehindNone) {
  EXPECT_EQ(Geogs(1.0, 1, 1, 10, false, true), "N 001.0\xB0");
  EXPECT_EQ(Geogs(1.0, 1, 1, 10, true, true), "001.0\xB0N");
}

TEST(FormatGeogs, WithoutSymbolsTheNumberItselfEndsInABlank) {
  EXPECT_EQ(Geogs(1.5, 1, 1, 10, false, false), "N 001.5 ");
  EXPECT_EQ(Geogs(1.5, 3, 1, 10, false, false), "N 001 30.0 ");
  EXPECT_EQ(Geogs(1.5, 7, 1, 10, false, false), "N 001 30 00.0 ");
  EXPECT_EQ(Geogs(1.5, 7, 1, 10, true, false), "001 30 00.0 N");
}

TEST(FormatGeogs, AnUnknownStyleLeavesTheText) {
  for (const unsigned int format : {0u, 2u, 4u, 5u, 6u, 8u, 10u, UINT_MAX}) {
    EXPECT_EQ(Geogs(1.0, format, 2, 10, true, true), "{false}before") << format;
    EXPECT_EQ(Geogs(1.0, format, 2, 12, true, true), "{false}before") << format;
  }
}

TEST(FormatGeogs, AnUnknownAxisFillsTheTextAndThenFails) {
  for (const int axis : {0, 1, 9, 12, -10, INT_MIN, INT_MAX}) {
    EXPECT_EQ(Geogs(-52.5, 1, 2, axis, true, true), "{false}052.50\xB0") << axis;
    EXPECT_EQ(Geogs(-52.5, 3, 2, axis, false, false), "{false}052 30.00 ") << axis;
    EXPECT_EQ(Geogs(-52.5, 7, 2, axis, false, true),
              "{false}052\xB0"
              "30'00.00\"")
        << axis;
  }
}

TEST(FormatGeogs, WhatIsNotFiniteOrBeyondABillionLeavesTheText) {
  for (const double value : {kNan, -kNan, kInfinity, -kInfinity, 1e308, -1e308, std::nextafter(1e9, 2e9), -1.1e9}) {
    for (const unsigned int format : {1u, 3u, 7u}) {
      EXPECT_EQ(Geogs(value, format, 2, 10, true, true), "{false}before") << value;
    }
  }
  EXPECT_EQ(Geogs(1e9, 1, 2, 10, true, true), "1000000000.00\xB0N");
  EXPECT_EQ(Geogs(-1e9, 3, 0, 10, true, true),
            "1000000000\xB0"
            "00'S");
  EXPECT_EQ(Geogs(-1e9, 7, 15, 11, true, false).substr(0, 11), "1000000000 ");
}

TEST(FormatGeogs, DecimalsAreTakenWithin0And15) {
  for (const unsigned int format : {1u, 3u, 7u}) {
    for (const int decimals : {-1, INT_MIN}) {
      EXPECT_EQ(Geogs(52.5125, format, decimals, 10, true, true), Geogs(52.5125, format, 0, 10, true, true));
    }
    for (const int decimals : {16, 351, INT_MAX}) {
      EXPECT_EQ(Geogs(52.5125, format, decimals, 10, true, true), Geogs(52.5125, format, 15, 10, true, true));
    }
  }
  EXPECT_EQ(Geogs(0.5, 1, 99, 10, true, true), "000.500000000000000\xB0N");
}

TEST(FormatGeogs, TheSymbolIsFetchedOnce) {
  const std::string before = Geogs(1.0, 1, 0, 10, true, true);
  const NumberedTextsGuard guard({{12053, "deg"}});
  EXPECT_EQ(Geogs(1.0, 1, 0, 10, true, true), before);
}

// In a process of its own, where nobody has asked for the symbol yet.
TEST(FormatGeogs, ASymbolOfTheLanguageIsTextAndNoFormat) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto show = [] {
    const NumberedTextsGuard guard({{12053, "%s%n%%"}});
    std::string text;
    FormatGeogs(1.5, 1, 1, 10, text, true, true);
    std::fprintf(stderr, "<%s>", text.c_str());
    FormatGeogs(1.5, 7, 0, 10, text, true, true);
    std::fprintf(stderr, "<%s>", text.c_str());
    std::exit(0);
  };
  EXPECT_EXIT(show(), testing::ExitedWithCode(0), "<001.5%s%n%%N><001%s%n%%30'00\"N>");
}

// The definition once more, with formats put together and printed by the C library.
bool FormatGeogsByPrintf(double value, unsigned int format, int decimals, int axis, std::string& text, bool behind, bool symbols) {
  const double magnitude = std::fabs(value);
  const int p = decimals > 0 ? 1 : 0;
  const std::string s = symbols ? "\xB0" : " ";
  const std::string last = Printed("%%0%d.%df", 2 + p + decimals, decimals);
  if (format == 1) {
    text = Printed(Printed("%%0%d.%df", 3 + p + decimals, decimals).c_str(), magnitude) + s;
  } else if (format == 3) {
    const double q = std::pow(10.0, decimals) * 60;
    const double t = (std::floor(magnitude * q + 0.5) + 0.01) / q;
    const int d = static_cast<int>(t);
    const double m = std::fabs(t - d) * 60;
    text = Printed(("%03d" + s + last + (symbols ? "'" : " ")).c_str(), d, m);
  } else if (format == 7) {
    const double q = std::pow(10.0, decimals) * 3600;
    const double t = (std::floor(magnitude * q + 0.5) + 0.01) / q;
    const int d = static_cast<int>(t);
    const double w = std::fabs(t - d) * 60;
    const int m = static_cast<int>(w);
    const double sec = (w - m) * 60;
    text = Printed(("%03d" + s + "%2.2d" + (symbols ? "'" : " ") + last + (symbols ? "\"" : " ")).c_str(), d, m, sec);
  } else {
    return false;
  }
  std::string letter;
  if (axis == 10) letter = value < 0 ? "S" : "N";
  if (axis == 11) letter = value < 0 ? "W" : "E";
  if (letter.empty()) return false;
  text = behind ? text + letter : letter + " " + text;
  return true;
}

TEST(FormatGeogsLong, EqualsTheCLibraryOnAMillionRandomValues) {
  std::mt19937_64 random(23);
  std::string ours;
  std::string expected;
  for (int i = 0; i < 1'000'000; ++i) {
    const std::uint64_t bits = random();
    double value = static_cast<double>(static_cast<std::int64_t>(bits)) * 0x1p-63 * 180;
    if (i % 8 == 0) value = std::round(value * 3600) / 3600;                      // whole seconds
    if (i % 16 == 1) value = std::round(value * 36000 + 0.5) / 36000;             // tenths
    if (i % 32 == 2) value *= 5e6;                                                // up to 9e8
    const unsigned int format = 1 + 2 * static_cast<unsigned int>(random() % 4);  // 5, too
    const int decimals = static_cast<int>(random() % (i % 64 == 0 ? 16 : 6));
    const int axis = 10 + static_cast<int>(random() % 65 / 32);  // 12, too
    const bool behind = (bits & 1) != 0;
    const bool symbols = (bits & 2) != 0;
    ours = expected = "before";
    ASSERT_EQ(FormatGeogs(value, format, decimals, axis, ours, behind, symbols),
              FormatGeogsByPrintf(value, format, decimals, axis, expected, behind, symbols));
    ASSERT_EQ(ours, expected) << value << ' ' << format << ' ' << decimals;
  }
}

TEST(FormatGeogs, ADecimalCommaOfTheHostChangesNothing) {
  const CommaLocale comma;
  EXPECT_EQ(Geogs(52.5, 1, 2, 10, true, true), "052.50\xB0N");
  EXPECT_EQ(Geogs(123456789.5, 1, 1, 10, true, false), "123456789.5 N");
}

// --- FormatWinFrogGeogs ---

TEST(FormatWinFrogGeogs, LatitudesHaveTwoDigitsAndAnyOtherAxisThree) {
  EXPECT_EQ(WinFrog(-52.5, 10), "S52 30.0000");
  EXPECT_EQ(WinFrog(52.5, 10), "N52 30.0000");
  EXPECT_EQ(WinFrog(4.25, 11), "E004 15.0000");
  EXPECT_EQ(WinFrog(-4.25, 12), "W004 15.0000");
  EXPECT_EQ(WinFrog(-4.25, INT_MIN), "W004 15.0000");
  EXPECT_EQ(WinFrog(104.25, 10), "N104 15.0000");
}

TEST(FormatWinFrogGeogs, MinutesArePaddedWithBlanks) {
  EXPECT_EQ(WinFrog(5.0, 10), "N05  0.0000");
  EXPECT_EQ(WinFrog(-0.125, 11), "W000  7.5000");
}

TEST(FormatWinFrogGeogs, NothingIsRoundedBeforeTheSplit) {
  EXPECT_EQ(WinFrog(52.0 + 59.99996 / 60, 10), "N52 60.0000");
  EXPECT_EQ(WinFrog(-3.0 - 59.99996 / 60, 11), "W003 60.0000");
}

TEST(FormatWinFrogGeogs, BothZerosAreNorthAndEast) {
  for (const double zero : {0.0, -0.0}) {
    EXPECT_EQ(WinFrog(zero, 10), "N00  0.0000");
    EXPECT_EQ(WinFrog(zero, 11), "E000  0.0000");
  }
  EXPECT_EQ(WinFrog(-1e-9, 10), "S00  0.0000");
}

TEST(FormatWinFrogGeogs, BeyondAnIntTheDegreesAreZero) {
  EXPECT_EQ(WinFrog(2147483647.0, 10), "N2147483647  0.0000");
  EXPECT_EQ(WinFrog(-2147483648.0, 10), "S2147483648  0.0000");
  EXPECT_EQ(WinFrog(2147483648.0, 10), "N00 128849018880.0000");
  EXPECT_EQ(WinFrog(-3e9, 11), "W000 180000000000.0000");
  EXPECT_EQ(WinFrog(1e300, 10), "N00 " + Printed("%.4f", 1e300 * 60));
  EXPECT_EQ(WinFrog(-1e308, 10), "S00     inf");
}

TEST(FormatWinFrogGeogs, WhatIsNotFiniteShowsInTheMinutes) {
  EXPECT_EQ(WinFrog(kNan, 10), "N00     nan");
  EXPECT_EQ(WinFrog(-kNan, 11), "E000     nan");
  EXPECT_EQ(WinFrog(kInfinity, 10), "N00     inf");
  EXPECT_EQ(WinFrog(-kInfinity, 11), "W000     inf");
}

TEST(FormatWinFrogGeogs, EqualsTheCLibraryOnRandomValues) {
  std::mt19937_64 random(29);
  for (int i = 0; i < 200'000; ++i) {
    const double value = static_cast<double>(static_cast<std::int64_t>(random())) * 0x1p-63 * (i % 9 == 0 ? 2e9 : 180);
    const int d = static_cast<int>(value);
    const double m = std::fabs(value - d) * 60;
    ASSERT_EQ(WinFrog(value, 10), (value < 0 ? "S" : "N") + Printed("%2.2d %7.4f", std::abs(d), m));
    ASSERT_EQ(WinFrog(value, 11), (value < 0 ? "W" : "E") + Printed("%3.3d %7.4f", std::abs(d), m));
  }
}

// --- StringToGeo ---

TEST(StringToGeo, DegreesMinutesAndSeconds) {
  EXPECT_EQ(Geo("52 30 0 N"), 52.5);
  EXPECT_EQ(Geo("52 30 36"), 30.0 / 60 + 52 + 36.0 / 3600);
  EXPECT_EQ(Geo("52 30 E"), 52.5);
  EXPECT_EQ(Geo("52.5"), 52.5);
  EXPECT_EQ(Geo("52 30 36 99"), Geo("52 30 36"));
  EXPECT_EQ(Geo("1 90 7200"), 90.0 / 60 + 1 + 2);
}

TEST(StringToGeo, SouthAndWestAreNegativeInEitherCase) {
  for (const char* text : {"52.5S", "52.5s", "52.5 W", "52.5w", "52 30 0 S"}) EXPECT_EQ(Geo(text), -52.5) << text;
  for (const char* text : {"52.5N", "52.5n", "52.5 E", "52.5e", "52 30 0 N"}) EXPECT_EQ(Geo(text), 52.5) << text;
}

TEST(StringToGeo, ALetterInFrontLeavesNothingToRead) {
  for (const char* text : {"S52.5", "N 52 30 0", "W4", " e1", "north 52", "East 4"}) EXPECT_TRUE(Unreadable(text)) << text;
}

TEST(StringToGeo, AllFromTheFirstLetterIsDropped) {
  EXPECT_EQ(Geo("52 deg 30"), 52.0);
  EXPECT_EQ(Geo("1e5"), 1.0);
  EXPECT_EQ(Geo("52 30 N S"), 52.5);
  EXPECT_EQ(Geo("52 30 S N"), -52.5);
  EXPECT_EQ(Geo("52 min 30 S"), 52.0);  // the "n" of "min"
}

TEST(StringToGeo, SignsAreLost) {
  EXPECT_EQ(Geo("-5"), 5.0);
  EXPECT_EQ(Geo("+5"), 5.0);
  EXPECT_EQ(Geo("-5 W"), -5.0);
  EXPECT_EQ(Geo("52-30-36"), Geo("52 30 36"));
}

TEST(StringToGeo, AnyOtherCharacterIsABlank) {
  EXPECT_EQ(Geo("52\xB0"
                "12'30.5\""),
            12.0 / 60 + 52 + 30.5 / 3600);
  EXPECT_EQ(Geo("52\xB0"
                "30'00\"S"),
            -52.5);
  EXPECT_EQ(Geo("5,5"), 5.0 / 60 + 5);
  EXPECT_EQ(Geo("\t 52 :  30 \r\n"), 52.5);
  EXPECT_EQ(Geo(std::string("52\0"
                            "30",
                            5)),
            52.5);
  EXPECT_EQ(Geo("0x10"), 10.0 / 60);
  EXPECT_EQ(Geo("a52"), 52.0);
}

TEST(StringToGeo, AFieldThatCannotBeReadEndsTheReading) {
  EXPECT_EQ(Geo("52 . 30"), 52.0);
  EXPECT_EQ(Geo("52 30 ."), 52.5);
  EXPECT_EQ(Geo("52 .. 30"), 52.0);
  EXPECT_EQ(Geo("52 ..5 30"), 52.0);
  EXPECT_TRUE(Unreadable(". 52 30"));
  EXPECT_TRUE(Unreadable("..5"));
}

TEST(StringToGeo, OfAFieldTheFrontCounts) {
  EXPECT_EQ(Geo("1.5.3 30"), 30.0 / 60 + 1.5);
  EXPECT_EQ(Geo("5. 30"), 5.5);
  EXPECT_EQ(Geo(".5 30"), 1.0);
  EXPECT_EQ(Geo("5..3 30"), 5.5);
}

TEST(StringToGeo, WithoutANumberItIsFalseAndZero) {
  for (const char* text : {"", " ", ".", "S", "W", "abc", "-", "\xB0"}) EXPECT_TRUE(Unreadable(text)) << text;
  EXPECT_TRUE(Unreadable(std::string(3, '\0')));
}

TEST(StringToGeo, ZeroSouthIsMinusZero) {
  EXPECT_EQ(Bits(Geo("0 S")), Bits(-0.0));
  EXPECT_EQ(Bits(Geo("0 N")), Bits(0.0));
  EXPECT_EQ(Bits(Geo("0")), Bits(0.0));
}

TEST(StringToGeo, NumbersOfAnyLength) {
  EXPECT_EQ(Geo(std::string(400, '9')), kInfinity);
  EXPECT_EQ(Geo(std::string(400, '9') + "W"), -kInfinity);
  EXPECT_EQ(Geo("0." + std::string(400, '0') + "1"), 0.0);
  EXPECT_EQ(Geo("52." + std::string(1'000'000, '0') + " 30"), 52.5);
  EXPECT_EQ(Geo(std::string(1'000'000, '0') + "7"), 7.0);
  EXPECT_EQ(Geo("9007199254740993"), 9007199254740992.0);  // 2^53 + 1: an exact half to even
  EXPECT_EQ(Geo("9007199254740993.1"), 9007199254740994.0);
  EXPECT_EQ(Geo(std::string(1'000'000, ' ') + "7"), 7.0);
}

// The same with the C library's scan, for texts whose numbers have one point at most.
bool ReadByScanf(std::string text, double& value) {
  value = 0;
  const auto letter = text.find_first_of("eEnNsSwW");
  const char hemisphere = letter == std::string::npos ? 'x' : text[letter];
  text.resize(std::min(letter, text.size()));
  for (char& c : text) {
    if (c != '.' && (c < '0' || c > '9')) c = ' ';
  }
  double degrees = 0;
  double minutes = 0;
  double seconds = 0;
  const CLocale locale;
  if (std::sscanf(text.c_str(), "%lf %lf %lf", &degrees, &minutes, &seconds) < 1) return false;
  value = minutes / 60 + degrees + seconds / 3600;
  if (hemisphere == 's' || hemisphere == 'S' || hemisphere == 'w' || hemisphere == 'W') value = -value;
  return true;
}

template <class Peer>
void ExpectReadsAs(Peer peer, const std::string& text) {
  double ours = 77;
  double expected = 77;
  ASSERT_EQ(StringToGeo(text, ours), peer(text, expected)) << text;
  ASSERT_EQ(Bits(ours), Bits(expected)) << text;
}

// Coordinates as the suite and people write them.
std::string RandomCoordinate(std::mt19937_64& random) {
  const double value = static_cast<double>(static_cast<std::int64_t>(random())) * 0x1p-63 * 180;
  std::string text;
  if (random() % 8 == 0) return Printed("%.*f", static_cast<int>(random() % 20), std::fabs(value));
  FormatGeogs(value,
              random() % 2 == 0   ? 7u
              : random() % 2 == 0 ? 3u
                                  : 1u,
              static_cast<int>(random() % 9), 10 + static_cast<int>(random() % 2), text, random() % 16 != 0, random() % 2 == 0);
  return text;
}

TEST(StringToGeoLong, EqualsTheCLibraryOnAMillionRandomCoordinates) {
  std::mt19937_64 random(31);
  for (int i = 0; i < 1'000'000; ++i) ExpectReadsAs(ReadByScanf, RandomCoordinate(random));
}

TEST(StringToGeoLong, EqualsTheListOnRandomCoordinates) {
  std::mt19937_64 random(37);
  for (int i = 0; i < 200'000; ++i) ExpectReadsAs(ReadByList, RandomCoordinate(random));
}

TEST(StringToGeoLong, EqualsTheListOnScrambledText) {
  std::mt19937_64 random(41);
  constexpr std::string_view kAlphabet = "00123456789012345678901234567890......  ,\t\n\v-+\xB0'\"eSnwxd";
  for (int i = 0; i < 300'000; ++i) {
    std::string text;
    for (auto length = random() % 40; length > 0; --length) {
      const auto c = random() % (kAlphabet.size() + 1);
      text += c == kAlphabet.size() ? '\0' : kAlphabet[c];
    }
    ExpectReadsAs(ReadByList, text);
  }
}

TEST(StringToGeoLong, EqualsTheListOnLongDigits) {
  std::mt19937_64 random(43);
  for (int i = 0; i < 100'000; ++i) {
    std::string text;
    for (auto length = 14 + random() % 10; length > 0; --length) text += static_cast<char>('0' + random() % 10);
    if (random() % 2 == 0) text.insert(random() % text.size(), 1, '.');
    ExpectReadsAs(ReadByList, text);
  }
}

TEST(StringToGeo, ReadsBackWhatFormatGeogsShows) {
  std::mt19937_64 random(47);
  for (int i = 0; i < 20'000; ++i) {
    const double value = static_cast<double>(static_cast<std::int64_t>(random())) * 0x1p-63 * 180;
    for (const unsigned int format : {1u, 3u, 7u}) {
      const double half = 0.5 / (format == 1 ? 1e6 : format == 3 ? 60e6 : 3600e6);
      const std::string text = Geogs(value, format, 6, 11, true, (i & 1) != 0);
      ASSERT_NEAR(Geo(text), value, half * 1.1) << text;
    }
  }
}

TEST(StringToGeo, ADecimalCommaOfTheHostChangesNothing) {
  const CommaLocale comma;
  EXPECT_EQ(Geo("52.5 N"), 52.5);
}

}  // namespace
