#include "adapters/xyz/detail/XyzLine.h"

#include <fast_float/fast_float.h>

#include <cmath>
#include <cstddef>
#include <system_error>

#include "zelbase/frame/detail/Characters.h"
#include "zelbase/platform/detail/CivilDate.h"

namespace zelbase::detail {
namespace {

constexpr std::size_t kMostShown = 40;
constexpr const char* kColumnNames[] = {"x", "y", "z", "the time"};

// Between columns: blanks, or one comma or semicolon with blanks around it.
class Columns {
 public:
  explicit Columns(std::string_view line) : m_rest(TrimLeft(line.substr(0, line.find('#')))) {}

  // Nothing more, not even an empty column before a separator.
  bool AtEnd() const { return m_rest.empty(); }

  // The next column; empty between two separators and at the end.
  std::string_view Next() {
    std::size_t size = 0;
    while (size < m_rest.size() && !IsSpace(m_rest[size]) && !IsMark(m_rest[size])) ++size;
    const std::string_view column = m_rest.substr(0, size);
    m_rest = TrimLeft(m_rest.substr(size));
    if (!m_rest.empty() && IsMark(m_rest.front())) m_rest = TrimLeft(m_rest.substr(1));
    return column;
  }

 private:
  static bool IsMark(char c) { return c == ',' || c == ';'; }

  std::string_view m_rest;
};

// Digits of fixed number, as of a date; -1 when one is none.
int ReadDigits(std::string_view text, std::size_t at, std::size_t count) {
  if (at + count > text.size()) return -1;
  int value = 0;
  for (const char c : text.substr(at, count)) {
    if (!IsDigit(c)) return -1;
    value = value * 10 + (c - '0');
  }
  return value;
}

bool IsWithin(int value, int lowest, int highest) { return value >= lowest && value <= highest; }

bool HasDateShape(std::string_view text) { return text.size() >= 10 && text[4] == '-' && text[7] == '-'; }

// "2026-05-04", the front of the text, in days since 1970.
bool ReadDate(std::string_view text, long long& days) {
  const int year = ReadDigits(text, 0, 4);
  const int month = ReadDigits(text, 5, 2);
  const int day = ReadDigits(text, 8, 2);
  if (year < 0 || !IsWithin(month, 1, 12) || !IsWithin(day, 1, DaysInMonth(year, month))) return false;
  days = DaysFromCivil(year, month, day);
  return true;
}

// Behind the point, in milliseconds: thousandths exactly, digits beyond them to the nearest double, those beyond 15 left out.
// Takes the digits off `text`; false when there is none.
bool TakeFraction(std::string_view& text, double& milliseconds) {
  constexpr int kMostDigits = 15;
  constexpr int kThousandths = 3;
  long long whole = 0;
  int digits = 0;
  std::size_t count = 0;
  for (; count < text.size() && IsDigit(text[count]); ++count) {
    if (digits == kMostDigits) continue;
    whole = whole * 10 + (text[count] - '0');
    ++digits;
  }
  text.remove_prefix(count);
  for (; digits < kThousandths; ++digits) whole *= 10;
  double scale = 1.0;
  for (; digits > kThousandths; --digits) scale *= 10;
  milliseconds = static_cast<double>(whole) / scale;
  return count > 0;
}

// "10:20", "10:20:30" or "10:20:30.5" off the front of `text`, in milliseconds of the day.
bool TakeTimeOfDay(std::string_view& text, double& milliseconds) {
  const int hour = ReadDigits(text, 0, 2);
  const int minute = ReadDigits(text, 3, 2);
  if (!IsWithin(hour, 0, 23) || !IsWithin(minute, 0, 59) || text[2] != ':') return false;
  text.remove_prefix(5);
  int second = 0;
  double fraction = 0.0;
  if (text.starts_with(':')) {
    second = ReadDigits(text, 1, 2);
    if (!IsWithin(second, 0, 59)) return false;
    text.remove_prefix(3);
    if (text.starts_with('.')) {
      text.remove_prefix(1);
      if (!TakeFraction(text, fraction)) return false;
    }
  }
  milliseconds = ((hour * 60 + minute) * 60 + second) * 1000.0 + fraction;
  return true;
}

// "", "Z", "+01:00", "+0100" or "+01", the whole of `text`, in milliseconds ahead of UTC.
bool ReadZone(std::string_view text, double& ahead) {
  ahead = 0.0;
  if (text.empty() || text == "Z" || text == "z") return true;
  if (text.front() != '+' && text.front() != '-') return false;
  const int hours = ReadDigits(text, 1, 2);
  const bool hasColon = text.size() == 6 && text[3] == ':';
  const int minutes = text.size() == 3 ? 0 : hasColon ? ReadDigits(text, 4, 2) : ReadDigits(text, 3, 2);
  if (text.size() != 3 && text.size() != 5 && !hasColon) return false;
  if (!IsWithin(hours, 0, 23) || !IsWithin(minutes, 0, 59)) return false;
  ahead = (hours * 60 + minutes) * 60000.0;
  if (text.front() == '-') ahead = -ahead;
  return true;
}

bool ReadDateAndTime(std::string_view text, double& time) {
  long long days = 0;
  double ofDay = 0.0;
  double ahead = 0.0;
  if (!ReadDate(text, days)) return false;
  std::string_view rest = text.substr(10);
  if (!rest.empty()) {
    if (ToUpper(rest.front()) != 'T') return false;
    rest.remove_prefix(1);
    if (!TakeTimeOfDay(rest, ofDay) || !ReadZone(rest, ahead)) return false;
  }
  time = static_cast<double>(days * kSecondsPerDay * 1000) - ahead + ofDay;
  return true;
}

// The columns of one line, read from the left until something is wrong.
struct Reading {
  XyzLineKind kind = XyzLineKind::Broken;
  double numbers[4] = {};
  int column = 0;         // the one that is wrong, 0 to 4; 4 is one too many
  std::string_view text;  // what stands there
};

bool HasNoNumber(std::string_view line) {
  Columns columns(line);
  double number = 0.0;
  while (!columns.AtEnd()) {
    if (ReadXyzNumber(columns.Next(), number)) return false;
  }
  return true;
}

Reading ReadColumns(std::string_view line, bool positionOnly) {
  Reading reading;
  Columns columns(line);
  if (columns.AtEnd()) {
    reading.kind = XyzLineKind::Nothing;
    return reading;
  }
  for (; reading.column < 3; ++reading.column) {
    reading.text = columns.Next();
    if (!ReadXyzNumber(reading.text, reading.numbers[reading.column])) {
      if (reading.column == 0 && HasNoNumber(line)) reading.kind = XyzLineKind::Names;
      return reading;
    }
  }
  reading.kind = XyzLineKind::Point;
  if (positionOnly) return reading;
  reading.text = columns.Next();
  if (!reading.text.empty()) {
    reading.kind = ReadXyzTime(reading.text, reading.numbers[3]) ? XyzLineKind::Timed : XyzLineKind::Broken;
    if (reading.kind == XyzLineKind::Broken) return reading;
  }
  reading.column = 4;
  while (!columns.AtEnd()) {
    reading.text = columns.Next();
    if (reading.text.empty()) continue;
    reading.kind = XyzLineKind::Broken;
    break;
  }
  return reading;
}

std::string Shown(std::string_view text) {
  std::string shown(text.substr(0, kMostShown));
  for (char& c : shown) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 32 || byte == 127) c = '?';
  }
  return text.size() > kMostShown ? shown + "..." : shown;
}

}  // namespace

bool ReadXyzNumber(std::string_view text, double& value) {
  const bool hasSign = !text.empty() && (text.front() == '+' || text.front() == '-');
  const std::string_view magnitude = text.substr(hasSign ? 1 : 0);
  // Behind the sign is no second one, and neither "inf" nor "nan".
  if (magnitude.empty() || !(IsDigit(magnitude.front()) || magnitude.front() == '.')) return false;
  double number = 0.0;
  const char* const end = magnitude.data() + magnitude.size();
  const auto result = fast_float::from_chars(magnitude.data(), end, number);
  if (result.ec != std::errc() || result.ptr != end || !std::isfinite(number)) return false;
  value = text.front() == '-' ? -number : number;
  return true;
}

bool ReadXyzTime(std::string_view text, double& time) {
  return HasDateShape(text) ? ReadDateAndTime(text, time) : ReadXyzNumber(text, time);
}

XyzLineKind ReadXyzLine(std::string_view line, bool positionOnly, TimePoint& point) {
  const Reading reading = ReadColumns(line, positionOnly);
  if (reading.kind != XyzLineKind::Point && reading.kind != XyzLineKind::Timed) return reading.kind;
  point.position.Set(reading.numbers[0], reading.numbers[1], reading.numbers[2]);
  point.time = reading.numbers[3];
  return reading.kind;
}

std::string WhyXyzLineIsBroken(std::string_view line, bool positionOnly) {
  const Reading reading = ReadColumns(line, positionOnly);
  if (reading.column == 4) return "more than four columns: " + Shown(reading.text);
  const std::string name = kColumnNames[reading.column];
  if (reading.text.empty()) return name + " is missing";
  return name + (reading.column == 3 ? " is no time: " : " is not a number: ") + Shown(reading.text);
}

}  // namespace zelbase::detail
