#include "zelbase/frame/TimeSpanText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "tests/support/Printed.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(TimeSpanText, HoursAndMinutesInTwoDigits) {
  EXPECT_EQ(TimeSpanToString(0.0, false), "00:00");
  EXPECT_EQ(TimeSpanToString(0.0, true), "00:00:00");
  EXPECT_EQ(TimeSpanToString(3661000.0, false), "01:01");
  EXPECT_EQ(TimeSpanToString(3661000.0, true), "01:01:01");
  EXPECT_EQ(TimeSpanToString(86399000.0, true), "23:59:59");
}

TEST(TimeSpanText, DaysStandInFrontFromOneDayOn) {
  EXPECT_EQ(TimeSpanToString(90061000.0, true), "1 days 01:01:01");
  EXPECT_EQ(TimeSpanToString(86400000.0, false), "1 days 00:00");
  EXPECT_EQ(TimeSpanToString(86399999.0, true), "23:59:59");
  EXPECT_EQ(TimeSpanToString(100 * 86400000.0 + 1000, true), "100 days 00:00:01");
}

TEST(TimeSpanText, SecondsAreCutAndNotRounded) {
  EXPECT_EQ(TimeSpanToString(999.999, true), "00:00:00");
  EXPECT_EQ(TimeSpanToString(1999.999, true), "00:00:01");
  EXPECT_EQ(TimeSpanToString(59999.0, false), "00:00");
  EXPECT_EQ(TimeSpanToString(-999.999, true), "00:00:00");
}

TEST(TimeSpanText, ANegativeSpanHasSignsInItsFieldsAndNoDays) {
  EXPECT_EQ(TimeSpanToString(-3661000.0, true), "-1:-1:-1");
  EXPECT_EQ(TimeSpanToString(-1000.0, true), "00:00:-1");
  EXPECT_EQ(TimeSpanToString(-59.0 * 60000, false), "00:-59");
  EXPECT_EQ(TimeSpanToString(-90061000.0, true), "-1:-1:-1");
  EXPECT_EQ(TimeSpanToString(-86400000.0, true), "00:00:00");
}

TEST(TimeSpanText, WhatIsNotFiniteOrBeyond64BitsIsZero) {
  for (const double value : {kInfinity, -kInfinity, std::numeric_limits<double>::quiet_NaN(), 1e308, -1e308, 9.3e21, -9.3e21}) {
    EXPECT_EQ(TimeSpanToString(value, true), "00:00:00") << value;
  }
}

TEST(TimeSpanText, SpansOfAnyOtherLengthHaveAllTheirDays) {
  // 2^62 seconds: 2^62 = 53375995583650 * 86400 + 27904, and 27904 = 7 h 45 min 4 s.
  EXPECT_EQ(TimeSpanToString(4611686018427387904.0 * 1000, true), "53375995583650 days 07:45:04");
  EXPECT_EQ(TimeSpanToString(5e-324, true), "00:00:00");
}

// The fields taken off from the largest to the smallest.
TEST(TimeSpanText, EqualsTheCLibraryOnRandomSpans) {
  std::mt19937_64 random(11);
  for (int i = 0; i < 200'000; ++i) {
    const auto milliseconds = static_cast<std::int64_t>(random() >> (14 + random() % 40));
    std::int64_t left = milliseconds / 1000;
    const std::int64_t days = left / 86400;
    left -= days * 86400;
    const std::int64_t hours = left / 3600;
    left -= hours * 3600;
    const int minutes = static_cast<int>(left / 60);
    const int seconds = static_cast<int>(left - minutes * 60);
    std::string expected = Printed("%02d:%02d", static_cast<int>(hours), minutes);
    if (days > 0) expected = Printed("%lld days ", static_cast<long long>(days)) + expected;
    const double span = static_cast<double>(milliseconds);
    ASSERT_EQ(TimeSpanToString(span, false), expected) << milliseconds;
    ASSERT_EQ(TimeSpanToString(span, true), expected + Printed(":%02d", seconds)) << milliseconds;
  }
}

}  // namespace
