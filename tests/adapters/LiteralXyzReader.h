// A text of positions, read a second time the plain way: all of it in memory, character by character, with the calendar of the
// language and the numbers of the C library. For the tests and the fuzzer of the reader; lines are of any length here.
#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

#include "tests/support/Printed.h"
#include "zelbase/geometry/TimePoint.h"

struct LiteralXyz {
  std::vector<TimePoint> points;
  std::vector<long long> brokenLines;  // their numbers, from 1
  long long lines = 0;
  long long timedPoints = 0;
  bool hasNames = false;
};

namespace literal_xyz {

inline bool IsBlank(char c) { return c == ' ' || (c >= 9 && c <= 13); }
inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Takes the digits from `at` on and tells how many there are.
inline std::size_t PassDigits(const std::string& text, std::size_t& at) {
  const std::size_t begin = at;
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at - begin;
}

// [+-] digits [. digits] [e [+-] digits], with a digit before or behind the point.
inline bool ReadNumber(const std::string& text, double& value) {
  std::size_t at = 0;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
  std::size_t digits = PassDigits(text, at);
  if (at < text.size() && text[at] == '.') digits += PassDigits(text, ++at);
  if (digits == 0) return false;
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    ++at;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
    if (PassDigits(text, at) == 0) return false;
  }
  if (at != text.size()) return false;
  const double number = ReadDouble(text.c_str());
  if (std::isinf(number)) return false;
  value = number;
  return true;
}

// True when `text` has at `at` the form of `pattern`, in which "9" stands for a digit.
inline bool Matches(const std::string& text, std::size_t at, const std::string& pattern) {
  if (at > text.size() || text.size() - at < pattern.size()) return false;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == '9' ? !IsDigit(text[at + i]) : text[at + i] != pattern[i]) return false;
  }
  return true;
}

inline int Number(const std::string& text, std::size_t at, std::size_t count) { return std::atoi(text.substr(at, count).c_str()); }

inline bool ReadZone(const std::string& text, int& minutes) {
  minutes = 0;
  if (text.empty() || text == "Z" || text == "z") return true;
  const bool known = (text.size() == 3 && Matches(text, 1, "99")) || (text.size() == 5 && Matches(text, 1, "9999")) ||
                     (text.size() == 6 && Matches(text, 1, "99:99"));
  if (!known || (text[0] != '+' && text[0] != '-')) return false;
  const int hours = Number(text, 1, 2);
  const int rest = text.size() == 3 ? 0 : Number(text, text.size() - 2, 2);
  if (hours > 23 || rest > 59) return false;
  minutes = (text[0] == '-' ? -1 : 1) * (hours * 60 + rest);
  return true;
}

inline bool ReadDateAndTime(std::string text, double& time) {
  if (!Matches(text, 0, "9999-99-99")) return false;
  const std::chrono::year_month_day date{std::chrono::year(Number(text, 0, 4)),
                                         std::chrono::month(static_cast<unsigned>(Number(text, 5, 2))),
                                         std::chrono::day(static_cast<unsigned>(Number(text, 8, 2)))};
  if (!date.ok()) return false;
  const double midnight = 86400000.0 * static_cast<double>(std::chrono::sys_days(date).time_since_epoch().count());
  text.erase(0, 10);
  if (text.empty()) {
    time = midnight;
    return true;
  }
  if (text[0] != 'T' && text[0] != 't') return false;
  if (!Matches(text, 1, "99:99")) return false;
  const int hour = Number(text, 1, 2), minute = Number(text, 4, 2);
  int second = 0;
  std::string fraction = "0";
  text.erase(0, 6);
  if (!text.empty() && text[0] == ':') {
    if (!Matches(text, 0, ":99")) return false;
    second = Number(text, 1, 2);
    text.erase(0, 3);
    if (!text.empty() && text[0] == '.') {
      std::size_t at = 1;
      if (PassDigits(text, at) == 0) return false;
      fraction = text.substr(1, std::min<std::size_t>(at - 1, 15));
      text.erase(0, at);
    }
  }
  int ahead = 0;
  if (hour > 23 || minute > 59 || second > 59 || !ReadZone(text, ahead)) return false;
  // The digits behind the point, as a number that is a thousand times as large.
  const double milliseconds = ReadDouble(("0." + fraction + "e3").c_str());
  time = midnight - ahead * 60000.0 + (((hour * 60 + minute) * 60 + second) * 1000.0 + milliseconds);
  return true;
}

inline bool ReadTime(const std::string& text, double& time) {
  if (text.size() >= 10 && text[4] == '-' && text[7] == '-') return ReadDateAndTime(text, time);
  return ReadNumber(text, time);
}

// The columns; with an empty one wherever two separators follow each other. A separator at the end begins no column.
inline std::vector<std::string> SplitColumns(std::string line) {
  line = line.substr(0, line.find('#'));
  std::vector<std::string> columns;
  std::string column;
  bool isOpen = false;   // a column has begun, or a separator asks for one
  bool mayMark = false;  // blanks behind a column: a comma still belongs to it
  for (const char c : line) {
    if (IsBlank(c)) {
      if (!column.empty()) {
        columns.push_back(column);
        column.clear();
        isOpen = false;
        mayMark = true;
      }
    } else if (c == ',' || c == ';') {
      if (!column.empty()) {
        columns.push_back(column);
        column.clear();
      } else if (!mayMark) {
        columns.push_back("");
      }
      mayMark = false;
      isOpen = true;
    } else {
      column += c;
      isOpen = true;
      mayMark = false;
    }
  }
  if (isOpen && !column.empty()) columns.push_back(column);
  return columns;
}

}  // namespace literal_xyz

inline void ReadLiteralXyzLine(const std::string& line, bool positionOnly, LiteralXyz& result) {
  using namespace literal_xyz;
  ++result.lines;
  const std::vector<std::string> columns = SplitColumns(line);
  if (columns.empty()) return;
  double numbers[4] = {};
  bool isPoint = columns.size() >= 3;
  for (std::size_t i = 0; i < 3 && isPoint; ++i) isPoint = ReadNumber(columns[i], numbers[i]);
  bool isTimed = false;
  if (!positionOnly) {
    isTimed = isPoint && columns.size() > 3 && !columns[3].empty();
    if (isTimed) isPoint = ReadTime(columns[3], numbers[3]);
    for (std::size_t i = 4; i < columns.size(); ++i) isPoint = isPoint && columns[i].empty();
  }
  if (isPoint) {
    result.points.emplace_back(numbers[0], numbers[1], numbers[2], numbers[3]);
    result.timedPoints += isTimed;
    return;
  }
  bool anyNumber = false;
  double number = 0.0;
  for (const std::string& column : columns) anyNumber = anyNumber || ReadNumber(column, number);
  if (!anyNumber && result.points.empty() && result.brokenLines.empty() && !result.hasNames) {
    result.hasNames = true;
  } else {
    result.brokenLines.push_back(result.lines);
  }
}

inline LiteralXyz ReadLiteralXyz(std::string text, bool positionOnly = false) {
  LiteralXyz result;
  if (text.starts_with("\xEF\xBB\xBF")) {
    text.erase(0, 3);
    if (text.empty()) ++result.lines;  // a line without anything
  }
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    ReadLiteralXyzLine(text.substr(at, end - at), positionOnly, result);
    at = end + 1;
  }
  return result;
}
