// Time values as whole seconds, milliseconds and text. The text has the form of the process's LC_TIME: the one text of the
// library that follows the locale. Internal to the library; neighbour: zelbase/time/CExTime.h, which offers these to hosts.
// Nothing here starts the clock discipline.
#pragma once

#include <string>

#include "zelbase/platform/CTime.h"
#include "zelbase/platform/PlatformClock.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// The whole seconds of a time value (milliseconds since 1970), truncated towards zero; the smallest 64-bit number for what
// does not fit, NaN included.
ZELBASE_API CTime WholeSeconds(double time);

// The milliseconds of a time value beyond its whole seconds: -999..999 with the sign of the time.
ZELBASE_API int MillisecondsBeyondSeconds(double time);

// CExTime::TimeToString.
ZELBASE_API std::string FormatTime(double time, bool showMilliseconds, bool showDate, bool showSeconds);

// The fields in the format of strftime. Empty when the text needs more than 127 bytes.
ZELBASE_API std::string FormatCalendar(const CalendarTime& calendar, const std::string& format);

// Puts "." and at least three digits, behind a sign if there is one, at the end of a time of day, or before the last
// three characters when it ends in "M", the mark of a twelve-hour clock (" AM", " PM").
ZELBASE_API void InsertMilliseconds(std::string& text, int milliseconds);

}  // namespace zelbase::detail
