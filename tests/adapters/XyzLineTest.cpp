#include "adapters/xyz/detail/XyzLine.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "adapters/xyz/detail/PlainXyzLine.h"
#include "tests/adapters/LiteralXyzReader.h"
#include "tests/adapters/RandomXyzText.h"
#include "tests/support/CommaLocale.h"

namespace {

using zelbase::detail::FindOtherThanDigits;
using zelbase::detail::FindOtherThanDigitsByWords;
using zelbase::detail::kPlainXyzBytes;
using zelbase::detail::ReadPlainXyzLine;
using zelbase::detail::ReadXyzLine;
using zelbase::detail::ReadXyzNumber;
using zelbase::detail::ReadXyzTime;
using zelbase::detail::WhyXyzLineIsBroken;
using zelbase::detail::XyzLineKind;

constexpr double kUntouched = -77.0;

double NumberOf(const std::string& text) {
  double number = kUntouched;
  const bool isRead = ReadXyzNumber(text, number);
  EXPECT_EQ(isRead, number != kUntouched) << text;
  return number;
}

double TimeOf(const std::string& text) {
  double time = kUntouched;
  const bool isRead = ReadXyzTime(text, time);
  EXPECT_EQ(isRead, time != kUntouched) << text;
  return time;
}

bool SameBits(double a, double b) { return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b); }

bool Same(const TimePoint& a, const TimePoint& b) {
  return SameBits(a.position.x, b.position.x) && SameBits(a.position.y, b.position.y) && SameBits(a.position.z, b.position.z) &&
         SameBits(a.time, b.time);
}

TEST(XyzLine, NumbersHaveASignAPointAndAnExponentIfTheyLike) {
  const std::vector<std::pair<std::string, double>> rows = {
      {"0", 0.0},
      {"5", 5.0},
      {"5.", 5.0},
      {".5", 0.5},
      {"-.5", -0.5},
      {"+5.25", 5.25},
      {"007", 7.0},
      {"1e3", 1000.0},
      {"1E+3", 1e3},
      {"25e-1", 2.5},
      {"-1.5e2", -150.0},
      {"1e-400", 0.0},
      {"9007199254740993", 9007199254740992.0},  // halfway between two doubles: to the even one
      {"0.1", 0.1}};
  for (const auto& [text, number] : rows) EXPECT_EQ(NumberOf(text), number) << text;
  EXPECT_TRUE(std::signbit(NumberOf("-0")));
}

TEST(XyzLine, WhatIsNoWholeFiniteNumberIsNone) {
  for (const char* text : {"",    "-",   "+",    ".",        "-.",    "e5",     "1e", "1e+", "1.2.3", "--1", "+-1", "-+1",   "0x10",
                           "inf", "nan", "-inf", "infinity", "1e400", "-1e400", "5a", "a5",  "1 ",    " 1",  "1,5", "1_000", "\"5\""}) {
    EXPECT_EQ(NumberOf(text), kUntouched) << text;
  }
  EXPECT_EQ(NumberOf(std::string("5\0", 2)), kUntouched);
}

TEST(XyzLine, TimesAreMillisecondsOrDates) {
  const std::vector<std::pair<std::string, double>> rows = {{"1777890030500", 1777890030500.0},
                                                            {"-1.5", -1.5},
                                                            {"1970-01-01", 0.0},
                                                            {"1970-01-01T00:00:00Z", 0.0},
                                                            {"1970-01-01t00:00:00.001z", 1.0},
                                                            {"1970-01-02T00:00", 86400000.0},
                                                            {"1970-01-01T01:02:03", 3723000.0},
                                                            {"1969-12-31T23:59:59.999Z", -1.0},
                                                            {"2000-02-29T00:00:00Z", 951782400000.0},  // 11016 days
                                                            {"2026-05-04T10:20:30.5Z", 1777890030500.0},
                                                            {"2026-05-04T12:20:30.5+02:00", 1777890030500.0},
                                                            {"2026-05-04T04:50:30.5-0530", 1777890030500.0},
                                                            {"2026-05-04T12:20:30.50+02", 1777890030500.0},
                                                            {"2026-05-04T10:20:30.5000000000000000000Z", 1777890030500.0},
                                                            {"1970-01-01T00:00:00.0005Z", 0.5}};
  for (const auto& [text, time] : rows) EXPECT_EQ(TimeOf(text), time) << text;
}

TEST(XyzLine, WhatIsNoTimeIsNone) {
  for (const char* text : {"",
                           "noon",
                           "2026-13-01",
                           "2026-00-01",
                           "2026-02-29",
                           "2026-04-31",
                           "2026-05-00",
                           "2026-5-4",
                           "2026-05-04T",
                           "2026-05-04T10",
                           "2026-05-04T24:00",
                           "2026-05-04T10:60",
                           "2026-05-04T10:20:60",
                           "2026-05-04T10:20:",
                           "2026-05-04T10:20:30.",
                           "2026-05-04T10:20:3",
                           "2026-05-04T10:20:30X",
                           "2026-05-04T10:20:30ZZ",
                           "2026-05-04T10:20+",
                           "2026-05-04T10:20+1",
                           "2026-05-04T10:20+24",
                           "2026-05-04T10:20+01:60",
                           "2026-05-04T10:20+01-00",
                           "2026-05-04T10:20+01:0",
                           "2026-05-04X10:20",
                           "2026-05-04Z",
                           "20260504T102030Z",
                           "2026-05-04T1020",
                           "aaaa-bb-cc",
                           "2026-05-04T10.20"}) {
    EXPECT_EQ(TimeOf(text), kUntouched) << text;
  }
}

TEST(XyzLine, EveryDayOfACenturyIsADayLater) {
  double expected = 0.0;
  for (int year = 1970; year < 2071; ++year) {
    for (int month = 1; month <= 12; ++month) {
      for (int day = 1; day <= 31; ++day) {
        char text[16];
        std::snprintf(text, sizeof text, "%04d-%02d-%02d", year, month, day);
        double time = 0.0;
        if (!ReadXyzTime(text, time)) continue;
        ASSERT_EQ(time, expected) << text;
        expected += 86400000.0;
      }
    }
  }
  EXPECT_EQ(expected, (101 * 365 + 25) * 86400000.0);  // leap days 1972 to 2068
}

TEST(XyzLine, SaysWhatIsWrongAndWhere) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"abc 2 3", "x is not a number: abc"},
      {"1 abc 3", "y is not a number: abc"},
      {"1,2,3m", "z is not a number: 3m"},
      {"1", "y is missing"},
      {"1 2", "z is missing"},
      {",2,3", "x is missing"},
      {"1,,3", "y is missing"},
      {"1 2 # 3", "z is missing"},
      {"1 2 3 noon", "the time is no time: noon"},
      {"1 2 3 4 5", "more than four columns: 5"},
      {"1,2,3,,5", "more than four columns: 5"},
      {"543210,12 5812345,67 -12,34", "more than four columns: -12"},
      {std::string("1 a\001b 3"), "y is not a number: a?b"},
      {"1 " + std::string(100, 'u') + " 3", "y is not a number: " + std::string(40, 'u') + "..."}};
  for (const auto& [line, reason] : rows) {
    TimePoint point(1, 2, 3, 4);
    EXPECT_EQ(ReadXyzLine(line, false, point), XyzLineKind::Broken) << line;
    EXPECT_TRUE(Same(point, TimePoint(1, 2, 3, 4))) << line;
    EXPECT_EQ(WhyXyzLineIsBroken(line, false), reason);
  }
}

TEST(XyzLine, KnowsLinesOfNothingAndOfNames) {
  TimePoint point;
  for (const char* line : {"", " ", "\t\r", "# 1 2 3", "  #", "#"}) {
    EXPECT_EQ(ReadXyzLine(line, false, point), XyzLineKind::Nothing) << line;
  }
  for (const char* line : {"x y z", "Easting;Northing;Depth;Time", "\"X\",\"Y\"", "x", ","}) {
    EXPECT_EQ(ReadXyzLine(line, false, point), XyzLineKind::Names) << line;
  }
  EXPECT_EQ(ReadXyzLine("x 2 3", false, point), XyzLineKind::Broken);
}

TEST(XyzLine, WithPositionsOnlyTheRestIsNotLookedAt) {
  TimePoint point;
  for (const char* line : {"1 2 3", "1 2 3 x", "1,2,3,4,5,6", "1 2 3 2026-05-04"}) {
    EXPECT_EQ(ReadXyzLine(line, true, point), XyzLineKind::Point) << line;
    EXPECT_TRUE(Same(point, TimePoint(1, 2, 3, 0))) << line;
  }
  EXPECT_EQ(ReadXyzLine("1 2", true, point), XyzLineKind::Broken);
}

TEST(XyzLine, ADecimalCommaOfTheHostChangesNothing) {
  const CommaLocale comma;
  EXPECT_EQ(NumberOf("1.5"), 1.5);
  EXPECT_EQ(NumberOf("1.5e-1"), 0.15);
  EXPECT_EQ(NumberOf("1,5"), kUntouched);
}

TEST(XyzLine, ReadsRandomLinesAsThePlainReaderDoes) {
  RandomXyzText text(1);
  for (int i = 0; i < 20000; ++i) {
    std::string line = text.Line();
    line.pop_back();
    for (const bool positionOnly : {false, true}) {
      LiteralXyz literal;
      ReadLiteralXyzLine(line, positionOnly, literal);
      TimePoint point;
      const XyzLineKind kind = ReadXyzLine(line, positionOnly, point);
      const bool isPoint = kind == XyzLineKind::Point || kind == XyzLineKind::Timed;
      ASSERT_EQ(isPoint, literal.points.size() == 1) << line;
      ASSERT_EQ(kind == XyzLineKind::Timed, literal.timedPoints == 1) << line;
      ASSERT_EQ(kind == XyzLineKind::Names, literal.hasNames) << line;
      ASSERT_EQ(kind == XyzLineKind::Broken, literal.brokenLines.size() == 1) << line;
      ASSERT_TRUE(!isPoint || Same(point, literal.points[0])) << line;
    }
  }
}

// The line, and behind it what is in the buffer from elsewhere: digits, which must not be taken for its own.
const char* ReadPlain(const std::string& line, std::string& buffer, TimePoint& point, bool& isTimed) {
  buffer = line + std::string(kPlainXyzBytes, '7');
  return ReadPlainXyzLine(buffer.data(), point, isTimed);
}

TEST(PlainXyzLine, ReadsWhatItReadsAsTheCarefulOneDoes) {
  RandomXyzText text(2);
  int read = 0;
  std::string buffer;
  for (int i = 0; i < 20000; ++i) {
    const std::string line = text.Line();
    TimePoint plain, careful;
    bool isTimed = false;
    const char* const end = ReadPlain(line, buffer, plain, isTimed);
    if (end == nullptr) continue;
    ++read;
    ASSERT_EQ(end - buffer.data(), static_cast<std::ptrdiff_t>(line.size())) << line;
    const XyzLineKind kind = ReadXyzLine(line.substr(0, line.size() - 1), false, careful);
    ASSERT_EQ(kind, isTimed ? XyzLineKind::Timed : XyzLineKind::Point) << line;
    ASSERT_TRUE(Same(plain, careful)) << line;
  }
  EXPECT_GT(read, 1000);
}

TEST(PlainXyzLine, ReadsTheOrdinaryLines) {
  std::string buffer;
  for (const char* line : {"543210.12 5812345.67 -12.345\n", "1,2,3\n", "1;2;3\r\n", " 1\t2  3 \n", "1 2 3 1777890030500\n",
                           "52.1234567890 4.1234567890 -7.5 2026-05-04T10:20:30.5Z\n", "-.5 5. 0.25\n", "1, 2, 3, 4\n"}) {
    TimePoint point;
    bool isTimed = false;
    EXPECT_NE(ReadPlain(line, buffer, point, isTimed), nullptr) << line;
  }
}

TEST(PlainXyzLine, LeavesUnusualLinesAlone) {
  std::string buffer;
  for (const char* line : {"\n", "1\n", "1 2\n", "1 2 3 4 5\n", "1e5 2 3\n", "+1 2 3\n", "x y z\n", "1 2 3 # said so\n", "#\n",
                           "12345678901234567 2 3\n", "9007199254740993 2 3\n", "1 2 3 noon\n", "1,,2,3\n", ".,2,3\n"}) {
    TimePoint point(7, 7, 7, 7);
    bool isTimed = true;
    EXPECT_EQ(ReadPlain(line, buffer, point, isTimed), nullptr) << line;
    EXPECT_TRUE(Same(point, TimePoint(7, 7, 7, 7))) << line;
    EXPECT_TRUE(isTimed);
  }
}

// A line that goes on where it is not known any more what is a digit.
TEST(PlainXyzLine, LooksAtNoMoreThanItsBytes) {
  std::string buffer;
  for (std::size_t blanks = 0; blanks < 2 * kPlainXyzBytes; ++blanks) {
    const std::string line = "1 2 " + std::string(blanks, ' ') + "12345.5\n";
    TimePoint point;
    bool isTimed = false;
    const bool isRead = ReadPlain(line, buffer, point, isTimed) != nullptr;
    EXPECT_EQ(isRead, line.size() <= kPlainXyzBytes) << blanks;
    EXPECT_EQ(point.position.z, isRead ? 12345.5 : 0.0);
  }
}

TEST(PlainXyzLine, FindsDigitsByWordsAndInRegistersAlike) {
  std::mt19937 random(3);
  for (int i = 0; i < 2000; ++i) {
    std::string text(kPlainXyzBytes, '\0');
    for (char& c : text) c = static_cast<char>(random() % 3 == 0 ? random() : '0' - 2 + random() % 14);
    std::uint64_t expected = 0;
    for (std::size_t byte = 0; byte < text.size(); ++byte) {
      if (!literal_xyz::IsDigit(text[byte])) expected |= std::uint64_t{1} << byte;
    }
    ASSERT_EQ(FindOtherThanDigits(text.data()), expected);
    ASSERT_EQ(FindOtherThanDigitsByWords(text.data()), expected);
  }
}

}  // namespace
