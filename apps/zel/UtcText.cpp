#include "UtcText.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace zel {
namespace {

constexpr double kDay = 86400000.0;

// Two digits, or four.
bool TakeDigits(std::string_view& rest, std::size_t count, int& value) {
  if (rest.size() < count) return false;
  const auto result = std::from_chars(rest.data(), rest.data() + count, value);
  if (result.ec != std::errc() || result.ptr != rest.data() + count || value < 0) return false;
  rest.remove_prefix(count);
  return true;
}

bool TakeOne(std::string_view& rest, std::string_view characters) {
  if (rest.empty() || characters.find(rest.front()) == std::string_view::npos) return false;
  rest.remove_prefix(1);
  return true;
}

// ":30" or ":30.5", or nothing.
bool TakeSeconds(std::string_view& rest, double& second) {
  if (!TakeOne(rest, ":")) return true;
  const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), second, std::chars_format::fixed);
  if (result.ec != std::errc()) return false;
  rest.remove_prefix(static_cast<std::size_t>(result.ptr - rest.data()));
  return true;
}

}  // namespace

std::string UtcText(double time) {
  const double days = std::floor(time / kDay);
  if (!(days >= -719528 && days < 2932897)) {
    char number[40];
    return std::string(number, std::to_chars(number, number + sizeof number, time).ptr) + " ms";
  }
  const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(static_cast<int>(days)))};
  const long long milliseconds = std::min(static_cast<long long>(std::llround(time - days * kDay)), 86399999LL);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u %02lld:%02lld:%02lld", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), milliseconds / 3600000, milliseconds / 60000 % 60,
                milliseconds / 1000 % 60);
  std::string result = text;
  if (milliseconds % 1000 == 0) return result;
  std::snprintf(text, sizeof text, ".%03lld", milliseconds % 1000);
  result += text;
  result.erase(result.find_last_not_of('0') + 1);
  return result;
}

bool FromUtcText(std::string_view text, double& time) {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0;
  double second = 0.0;
  if (!TakeDigits(text, 4, year) || !TakeOne(text, "-") || !TakeDigits(text, 2, month) || !TakeOne(text, "-") || !TakeDigits(text, 2, day))
    return false;
  if (TakeOne(text, " T")) {
    if (!TakeDigits(text, 2, hour) || !TakeOne(text, ":") || !TakeDigits(text, 2, minute) || !TakeSeconds(text, second)) return false;
    TakeOne(text, "Z");
  }
  return text.empty() && FromCalendar(year, month, day, hour, minute, second, time);
}

bool FromCalendar(int year, int month, int day, int hour, int minute, double second, double& time) {
  const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                         std::chrono::day(static_cast<unsigned>(day))};
  const bool clock = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
  if (year < 0 || year > 9999 || month < 1 || day < 1 || !date.ok() || !clock) return false;
  const auto days = std::chrono::sys_days(date).time_since_epoch().count();
  time = static_cast<double>(days) * kDay + hour * 3600000.0 + minute * 60000.0 + second * 1000.0;
  return true;
}

}  // namespace zel
