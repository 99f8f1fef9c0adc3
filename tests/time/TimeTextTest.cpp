#include "zelbase/time/detail/TimeText.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <string>

#include "tests/support/Printed.h"
#include "tests/support/ScopedTimeZone.h"

namespace {

using zelbase::detail::FormatCalendar;
using zelbase::detail::FormatTime;
using zelbase::detail::InsertMilliseconds;
using zelbase::detail::MillisecondsBeyondSeconds;
using zelbase::detail::WholeSeconds;

CalendarTime SomeTime() {
  CalendarTime calendar;
  calendar.year = 2009;
  calendar.month = 2;
  calendar.day = 13;
  calendar.hour = 23;
  calendar.minute = 31;
  calendar.second = 30;
  calendar.dayOfYear = 43;
  calendar.dayOfWeek = 5;
  calendar.daylight = 0;
  return calendar;
}

TEST(TimeText, WholeSecondsAndMillisecondsAreTruncatedTowardsZero) {
  EXPECT_EQ(WholeSeconds(1999.9), 1);
  EXPECT_EQ(WholeSeconds(-1999.9), -1);
  EXPECT_EQ(WholeSeconds(std::numeric_limits<double>::quiet_NaN()), std::numeric_limits<long long>::min());
  EXPECT_EQ(MillisecondsBeyondSeconds(1999.9), 999);
  EXPECT_EQ(MillisecondsBeyondSeconds(-1999.9), -999);
}

TEST(TimeText, TextOfATimeIsWhatTheClockGives) {
  const CLocale form;  // of the date
  const ScopedTimeZone local("UTC0");
  EXPECT_EQ(FormatTime(1234567890125.0, true, true, true), "02/13/09 23:31:30.125");
  EXPECT_EQ(FormatTime(1234567890125.0, false, false, false), "23:31");
  EXPECT_EQ(FormatTime(-1500.0, true, true, true), ".-500");
}

TEST(TimeText, FieldsReachTheFormat) {
  EXPECT_EQ(FormatCalendar(SomeTime(), "%Y-%m-%d %H:%M:%S %j %w"), "2009-02-13 23:31:30 044 5");
  EXPECT_EQ(FormatCalendar(SomeTime(), ""), "");
}

TEST(TimeText, OneHundredAndTwentySevenBytesAreTheMost) {
  EXPECT_EQ(FormatCalendar(SomeTime(), std::string(127, 'x')), std::string(127, 'x'));
  EXPECT_EQ(FormatCalendar(SomeTime(), std::string(128, 'x')), "");
}

TEST(TimeText, MillisecondsGoBeforeATwelveHourMark) {
  struct Row {
    const char* text;
    int milliseconds;
    const char* expected;
  };
  const Row rows[] = {
      {"23:31:30", 5, "23:31:30.005"},
      {"11:31:30 PM", 5, "11:31:30.005 PM"},
      {"11:31:30 AM", 999, "11:31:30.999 AM"},
      {"11:31:30 pm", 5, "11:31:30 pm.005"},
      {"", 7, ".007"},
      {"M", 7, "M.007"},
      {"PM", 7, "PM.007"},
      {" PM", 7, ".007 PM"},
      {"x", -5, "x.-005"},
      {"x", -500, "x.-500"},
      {"x", 1000, "x.1000"},
      {"x", INT_MIN, "x.-2147483648"},
  };
  for (const Row& row : rows) {
    std::string text = row.text;
    InsertMilliseconds(text, row.milliseconds);
    EXPECT_EQ(text, row.expected);
  }
}

}  // namespace
