// Any bytes as a coordinate, against the reading with a list word by word, and as a caller's format for a double and an int,
// against the C library where that is safe. Also any double as a coordinate to show.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "fuzz/Target.h"
#include "tests/frame/LiteralCoordinate.h"
#include "zelbase/frame/GeographicText.h"
#include "zelbase/frame/NumberFormat.h"
#include "zelbase/frame/TimeSpanText.h"

namespace {

void Check(bool holds) {
  if (!holds) std::abort();
}

void CheckReading(const std::string& text) {
  double ours = 77;
  double expected = 77;
  Check(StringToGeo(text, ours) == ReadByList(text, expected));
  Check(std::bit_cast<std::uint64_t>(ours) == std::bit_cast<std::uint64_t>(expected));
}

// Whether the C library may have `format` for one argument, which is printed by one of `kinds`.
bool IsGood(const std::string& format, std::string_view kinds) {
  bool printed = false;
  for (std::size_t at = format.find('%'); at != format.npos; at = format.find('%', at)) {
    if (format.compare(at, 2, "%%") == 0) {
      at += 2;
      continue;
    }
    std::size_t end = format.find_first_not_of("-+ #0", at + 1);
    const auto number = [&] {
      const std::size_t behind = std::min(format.find_first_not_of("0123456789", end), format.size());
      const bool shortEnough = behind - std::min(end, behind) <= 4;
      end = behind;
      return shortEnough;
    };
    if (end == format.npos || printed || !number()) return false;
    if (end < format.size() && format[end] == '.' && (++end, !number())) return false;
    if (end >= format.size() || kinds.find(format[end]) == kinds.npos) return false;
    printed = true;
    at = end + 1;
  }
  return true;
}

template <class Number>
void CheckFormat(const std::string& format, std::string_view kinds, Number value, const std::string& ours) {
  if (!IsGood(format, kinds)) return Check(ours.empty());
  if (format.find('\0') != format.npos) return;  // ends a format of the C library
  const int length = std::snprintf(nullptr, 0, format.c_str(), value);
  std::string expected(static_cast<std::size_t>(length) + 1, '\0');
  std::snprintf(expected.data(), expected.size(), format.c_str(), value);
  expected.pop_back();
  Check(ours == expected);
}

void CheckShowing(double value, unsigned char choice) {
  const unsigned int style = choice & 7;
  const int axis = 9 + (choice >> 3 & 3);
  const int decimals = (choice >> 5) * 3 - 1;
  std::string text = "before";
  const bool good = FormatGeogs(value, style, decimals, axis, text, (choice & 1) != 0, (choice & 8) != 0);
  const bool shown = std::fabs(value) <= 1e9 && (style == 1 || style == 3 || style == 7);
  Check(good == (shown && (axis == 10 || axis == 11)));
  Check(shown || text == "before");
  Check(text.size() < 60);
  double back = 0;
  if (good && (choice & 1) != 0) Check(StringToGeo(text, back) && std::fabs(back - value) <= 0.6 + std::fabs(value) * 1e-12);
  Check(FormatWinFrogGeogs(value, axis, text) && text.size() < 400);
  Check(!TimeSpanToString(value, true).empty());
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  CheckReading(text);

  // The first bytes are also the value, the rest the format.
  std::uint64_t bits = 0;
  std::memcpy(&bits, text.data(), std::min<std::size_t>(size, sizeof bits));
  const double value = std::bit_cast<double>(bits);
  const int whole = static_cast<int>(static_cast<std::uint32_t>(bits));
  CheckShowing(value, size > 8 ? data[8] : 0);
  for (const std::string& format : {text, text.substr(std::min<std::size_t>(size, 8))}) {
    CheckFormat(format, "aefgAEFG", value, FormatDouble(value, format));
    CheckFormat(format, "diouxXc", whole, FormatInt(whole, format));
  }
}
