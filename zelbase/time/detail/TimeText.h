// Times of day as text, in the form of the process's LC_TIME: the one text of the library that follows the locale.
// Internal to the library; neighbour: zelbase/time/CExTime.h, whose TimeToString is made of these.
#pragma once

#include <string>

#include "zelbase/platform/PlatformClock.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// The fields in the format of strftime. Empty when the text needs more than 127 bytes.
ZELBASE_API std::string FormatCalendar(const CalendarTime& calendar, const std::string& format);

// Puts "." and at least three digits, behind a sign if there is one, at the end of a time of day, or before the last
// three characters when it ends in "M", the mark of a twelve-hour clock (" AM", " PM").
ZELBASE_API void InsertMilliseconds(std::string& text, int milliseconds);

}  // namespace zelbase::detail
