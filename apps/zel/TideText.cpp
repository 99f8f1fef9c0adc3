#include "TideText.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "FieldText.h"
#include "TextEdge.h"
#include "UtcText.h"
#include "zelbase/sonar/TideFormats.h"

namespace zel {
namespace {

// What may stand between two fields.
std::string Separators() {
  std::string characters = "\t;\r";
  for (const auto& separator : TideSeparators) characters += separator;
  return characters;
}

struct Moment {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0;
  double second = 0.0;
};

// A number without sign: the characters around it are separators, "-" among them.
template <class Number>
bool TakeUnsigned(std::string_view& rest, Number& value) {
  static const std::string separators = Separators();
  rest.remove_prefix(std::min(rest.find_first_not_of(separators), rest.size()));
  const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), value);
  if (result.ec != std::errc()) return false;
  rest.remove_prefix(static_cast<std::size_t>(result.ptr - rest.data()));
  return true;
}

bool TakeDate(std::string_view& rest, std::string_view layout, Moment& moment) {
  for (const char letter : layout) {
    if (!TakeUnsigned(rest, letter == 'D' ? moment.day : letter == 'M' ? moment.month : moment.year)) return false;
  }
  if (moment.year < 100) moment.year += moment.year < 70 ? 2000 : 1900;
  return true;
}

bool TakeClock(std::string_view& rest, std::string_view layout, Moment& moment) {
  return TakeUnsigned(rest, moment.hour) && TakeUnsigned(rest, moment.minute) && (layout == "HM" || TakeUnsigned(rest, moment.second));
}

}  // namespace

bool TideText::Open(const std::string& path, std::string& reason) {
  std::ifstream stream(path);
  if (!std::filesystem::is_regular_file(path) || !stream) {
    reason = "cannot open \"" + path + "\"";
    return false;
  }
  long long number = 0;
  for (std::string line; std::getline(stream, line);) {
    ++number;
    if (IsEmpty(line) || line.front() == '#') continue;
    Row row{};
    if (ReadRow(line, row)) rows.push_back(row);
    else faults.push_back({number, ToTerminal(line, DetectEncoding(line))});
  }
  return true;
}

bool TideText::ReadRow(std::string_view line, Row& row) const {
  Moment at;
  return TakeDate(line, dateFormat, at) && TakeClock(line, timeFormat, at) &&
         FromCalendar(at.year, at.month, at.day, at.hour, at.minute, at.second, row.time) && TakeNumber(line, row.height) && IsEmpty(line);
}

}  // namespace zel
