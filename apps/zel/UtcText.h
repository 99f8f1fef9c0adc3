// Moments of time as people read and type them: UTC, milliseconds since 1970 inside.
#pragma once

#include <string>
#include <string_view>

namespace zel {

// "2026-05-01 10:20:30", with ".5" or so behind it where there are fractions of a second. A time beyond the years 0 to 9999
// is the number of milliseconds.
std::string UtcText(double time);

// "2026-05-01", "2026-05-01 10:20", "2026-05-01T10:20:30.5Z". False, `time` untouched, for anything else or a day that is none.
bool FromUtcText(std::string_view text, double& time);

// The moment of a calendar date and a time of day; false, `time` untouched, when there is none such.
bool FromCalendar(int year, int month, int day, int hour, int minute, double second, double& time);

}  // namespace zel
