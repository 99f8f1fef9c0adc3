#include "zelbase/time/detail/TimeText.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <ctime>

#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/platform/detail/CalendarTm.h"

namespace zelbase::detail {

namespace {

constexpr std::size_t kBufferSize = 128;
constexpr std::size_t kMarkSize = 3;

}  // namespace

// Kept: truncated towards zero, so that -1.5 s is second -1; every module takes whole seconds this way.
CTime WholeSeconds(double time) { return ToCount(time / 1000.0); }

int MillisecondsBeyondSeconds(double time) { return ToCount32(std::fmod(time, 1000.0)); }

std::string FormatTime(double time, bool showMilliseconds, bool showDate, bool showSeconds) {
  std::string format = showDate ? "%x " : "";
  // Kept: milliseconds alone show the seconds, too.
  format += showSeconds || showMilliseconds ? "%X" : "%H:%M";
  std::string text;
  CalendarTime local;
  if (PlatformService<PlatformClock>::Current().LocalTime(WholeSeconds(time), local)) text = FormatCalendar(local, format);
  if (showMilliseconds) InsertMilliseconds(text, MillisecondsBeyondSeconds(time));
  return text;
}

std::string FormatCalendar(const CalendarTime& calendar, const std::string& format) {
  const std::tm fields = ToTm(calendar);
  std::array<char, kBufferSize> buffer;
  return std::string(buffer.data(), std::strftime(buffer.data(), buffer.size(), format.c_str(), &fields));
}

void InsertMilliseconds(std::string& text, int milliseconds) {
  std::string part = milliseconds < 0 ? ".-" : ".";
  const long long magnitude = milliseconds;
  AppendPadded(part, magnitude < 0 ? -magnitude : magnitude, 3);
  const bool hasMark = text.size() >= kMarkSize && text.back() == 'M';
  text.insert(text.size() - (hasMark ? kMarkSize : 0), part);
}

}  // namespace zelbase::detail
