// One line of a text of positions, taken apart with care: the columns, the numbers, the time, and what is wrong when something
// is. Internal to the reader; PlainXyzLine.h reads the ordinary lines faster, to the same result.
#pragma once

#include <string>
#include <string_view>

#include "zelbase/geometry/TimePoint.h"

namespace zelbase::detail {

enum class XyzLineKind {
  Nothing,  // blank, or a comment
  Point,    // x, y, z
  Timed,    // x, y, z and the time
  Names,    // no column is a number: the names of the columns, when nothing stands before them
  Broken
};

// What kind `line` is, without its end; `point` is filled in by Point (with time 0) and Timed alone. With `positionOnly`
// whatever follows z is not looked at.
XyzLineKind ReadXyzLine(std::string_view line, bool positionOnly, TimePoint& point);

// Why a line that is Broken (or Names in the wrong place) is not a point, in words for a person, such as "y is not a number:
// abc". Text of the line in it is cut short, and bytes that are no characters are shown as "?".
std::string WhyXyzLineIsBroken(std::string_view line, bool positionOnly);

// The whole of `text` as a number: digits with or without a sign, a decimal point, an exponent. False for "inf", "nan" and what
// is beyond the range.
bool ReadXyzNumber(std::string_view text, double& value);

// Milliseconds since 1970 as a number, or date and time of day as "2026-05-04T10:20:30.5Z": a "T" of either case, or the date
// alone; seconds and their fraction may be missing; the zone is "Z", hours and minutes such as "+01:00", "+0100" or "+01", or
// missing for UTC.
bool ReadXyzTime(std::string_view text, double& time);

}  // namespace zelbase::detail
