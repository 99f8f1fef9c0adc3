#include "zelbase/time/Time5Q.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <random>
#include <type_traits>

#include "tests/time/ClockAccess.h"
#include "zelbase/time/CExTime.h"

namespace {

using Time5QTest = ClockTest;

tagTIME5Q Record(unsigned short year, unsigned short day, unsigned char hours, unsigned char minutes, float seconds) {
  tagTIME5Q record{};
  record.year = year;
  record.day = day;
  record.seconds = seconds;
  record.hours = hours;
  record.minutes = minutes;
  return record;
}

void ExpectRecord(const tagTIME5Q& record, int year, int day, int hours, int minutes, float seconds) {
  EXPECT_EQ(int{record.year}, year);
  EXPECT_EQ(int{record.day}, day);
  EXPECT_EQ(int{record.hours}, hours);
  EXPECT_EQ(int{record.minutes}, minutes);
  const float value = record.seconds;
  EXPECT_EQ(value, seconds);
}

TEST_F(Time5QTest, RecordIsTenBytesInTheStatedOrder) {
  static_assert(sizeof(tagTIME5Q) == 10);
  static_assert(offsetof(tagTIME5Q, year) == 0 && offsetof(tagTIME5Q, day) == 2 && offsetof(tagTIME5Q, seconds) == 4);
  static_assert(offsetof(tagTIME5Q, hours) == 8 && offsetof(tagTIME5Q, minutes) == 9);
  static_assert(std::is_trivial_v<tagTIME5Q> && std::is_standard_layout_v<tagTIME5Q>);
  const auto bytes = std::bit_cast<std::array<unsigned char, 10>>(Record(0x07D9, 0x0102, 23, 31, 1.0f));
  const std::array<unsigned char, 10> expected = {0xD9, 0x07, 0x02, 0x01, 0x00, 0x00, 0x80, 0x3F, 23, 31};
  EXPECT_EQ(bytes, expected);
}

TEST_F(Time5QTest, RecordOfATimeIsInUtc) {
  tagTIME5Q record = Record(1, 2, 3, 4, 5.0f);
  EXPECT_TRUE(time.TimeTo5qTime(1234567890125.0, &record));  // 2009-02-13 23:31:30.125, day 31 + 13
  ExpectRecord(record, 2009, 44, 23, 31, 30.125f);
  EXPECT_TRUE(time.TimeTo5qTime(0.0, &record));
  ExpectRecord(record, 1970, 1, 0, 0, 0.0f);
  EXPECT_TRUE(time.TimeTo5qTime(978307199000.0, &record));  // 2000-12-31 23:59:59
  ExpectRecord(record, 2000, 366, 23, 59, 59.0f);
}

TEST_F(Time5QTest, NullRecordIsFalseBothWays) {
  double value = 42.0;
  EXPECT_FALSE(time.TimeTo5qTime(0.0, nullptr));
  EXPECT_FALSE(time.TimeFrom5qTime(value, nullptr));
  EXPECT_EQ(value, 42.0);
}

TEST_F(Time5QTest, TimeOutsideTheCalendarZeroesTheRecordAndIsTrue) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double value : {-1000.0, 32535216000000.0, kInfinity, -kInfinity, std::nan("")}) {
    tagTIME5Q record = Record(1, 2, 3, 4, 5.0f);
    EXPECT_TRUE(time.TimeTo5qTime(value, &record)) << value;
    ExpectRecord(record, 0, 0, 0, 0, 0.0f);
  }
}

TEST_F(Time5QTest, SecondsMayRoundUpToSixty) {
  tagTIME5Q record{};
  time.TimeTo5qTime(59999.9999, &record);
  ExpectRecord(record, 1970, 1, 0, 0, 60.0f);
  double back = 0.0;
  EXPECT_TRUE(time.TimeFrom5qTime(back, &record));
  EXPECT_EQ(back, 60000.0);
}

TEST_F(Time5QTest, FractionJustBefore1970StaysNegative) {
  tagTIME5Q record{};
  time.TimeTo5qTime(-500.0, &record);
  ExpectRecord(record, 1970, 1, 0, 0, -0.5f);
}

TEST_F(Time5QTest, DayThatItsYearDoesNotHaveIsFalseAndLeavesTheTime) {
  double value = 42.0;
  const tagTIME5Q rows[] = {Record(2000, 0, 0, 0, 0.0f), Record(2000, 367, 0, 0, 0.0f), Record(2001, 366, 0, 0, 0.0f),
                            Record(2000, 65535, 0, 0, 0.0f)};
  for (const tagTIME5Q& record : rows) EXPECT_FALSE(time.TimeFrom5qTime(value, &record));
  EXPECT_EQ(value, 42.0);
}

TEST_F(Time5QTest, TimeOfARecord) {
  double value = 0.0;
  tagTIME5Q record = Record(2009, 44, 23, 31, 30.125f);
  EXPECT_TRUE(time.TimeFrom5qTime(value, &record));
  EXPECT_EQ(value, 1234567890125.0);
  record = Record(2000, 366, 23, 59, 59.0f);
  EXPECT_TRUE(time.TimeFrom5qTime(value, &record));
  EXPECT_EQ(value, 978307199000.0);
}

TEST_F(Time5QTest, TimeOfDayIsNotTested) {
  double value = 0.0;
  tagTIME5Q record = Record(1970, 1, 255, 255, 100000.0f);
  EXPECT_TRUE(time.TimeFrom5qTime(value, &record));
  EXPECT_EQ(value, (255.0 * 3600.0 + 255.0 * 60.0 + 100000.0) * 1000.0);
  record.seconds = std::numeric_limits<float>::quiet_NaN();
  EXPECT_TRUE(time.TimeFrom5qTime(value, &record));
  EXPECT_TRUE(std::isnan(value));
}

TEST_F(Time5QTest, YearsBefore1970AreNegativeTimes) {
  double value = 0.0;
  const tagTIME5Q record = Record(1969, 365, 23, 59, 59.0f);
  EXPECT_TRUE(time.TimeFrom5qTime(value, &record));
  EXPECT_EQ(value, -1000.0);
}

TEST_F(Time5QTest, WholeSecondsComeBackFromARecord) {
  std::mt19937_64 random(11);
  for (int i = 0; i < 100000; ++i) {
    const double value = static_cast<double>(random() % 32535216000) * 1000.0;
    tagTIME5Q record{};
    double back = 0.0;
    time.TimeTo5qTime(value, &record);
    ASSERT_TRUE(time.TimeFrom5qTime(back, &record));
    ASSERT_EQ(back, value);
  }
}

}  // namespace
