#include "zelbase/time/detail/TimeText.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

using zelbase::detail::FormatCalendar;
using zelbase::detail::InsertMilliseconds;

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
      {"23:31:30", 5, "23:31:30.005"},   {"11:31:30 PM", 5, "11:31:30.005 PM"}, {"11:31:30 AM", 999, "11:31:30.999 AM"},
      {"11:31:30 pm", 5, "11:31:30 pm.005"}, {"", 7, ".007"},                   {"M", 7, "M.007"},
      {"PM", 7, "PM.007"},               {" PM", 7, ".007 PM"},                 {"x", -5, "x.-005"},
      {"x", -500, "x.-500"},             {"x", 1000, "x.1000"},                 {"x", INT_MIN, "x.-2147483648"},
  };
  for (const Row& row : rows) {
    std::string text = row.text;
    InsertMilliseconds(text, row.milliseconds);
    EXPECT_EQ(text, row.expected);
  }
}

}  // namespace
