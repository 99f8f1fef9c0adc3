#include "zelbase/frame/TimeSpanText.h"

#include "zelbase/frame/detail/NumberText.h"

using zelbase::detail::AppendInt;
using zelbase::detail::AppendPadded;

namespace {

// Cut towards zero; 0 for what 64 bits do not hold.
long long WholeSeconds(double milliseconds) {
  constexpr double kLimit = 9223372036854775808.0;  // 2^63
  const double seconds = milliseconds / 1000;
  return seconds >= -kLimit && seconds < kLimit ? static_cast<long long>(seconds) : 0;
}

}  // namespace

std::string TimeSpanToString(double milliseconds, bool withSeconds) {
  const long long seconds = WholeSeconds(milliseconds);
  const long long days = seconds / 86400;
  std::string text;
  if (days >= 1) {  // Kept: no days on a negative span, whose fields carry the sign.
    AppendInt(text, days);
    text += " days ";
  }
  AppendPadded(text, seconds / 3600 % 24, 2);
  text += ':';
  AppendPadded(text, seconds / 60 % 60, 2);
  if (!withSeconds) return text;
  text += ':';
  AppendPadded(text, seconds % 60, 2);
  return text;
}
