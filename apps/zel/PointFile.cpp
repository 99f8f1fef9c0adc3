#include "PointFile.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "SettingsFile.h"

namespace zel {
namespace {

constexpr std::string_view kSeparators = " \t,;\r";

// Takes the next number off the front of `rest`. False when there is none, or what stands there is no finite number.
bool TakeNumber(std::string_view& rest, double& number) {
  rest.remove_prefix(std::min(rest.find_first_not_of(kSeparators), rest.size()));
  const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), number);
  if (result.ec != std::errc() || !std::isfinite(number)) return false;
  rest.remove_prefix(static_cast<std::size_t>(result.ptr - rest.data()));
  return rest.empty() || kSeparators.find(rest.front()) != std::string_view::npos;
}

bool IsEmpty(std::string_view line) { return line.find_first_not_of(kSeparators) == std::string_view::npos; }

bool ReadPoint(std::string_view line, Point& point) {
  if (!TakeNumber(line, point.x) || !TakeNumber(line, point.y)) return false;
  return IsEmpty(line) || (TakeNumber(line, point.z) && IsEmpty(line));
}

}  // namespace

bool PointFile::Open(const std::string& path, std::string& reason) {
  if (!std::filesystem::is_regular_file(path)) {
    reason = "cannot open \"" + path + "\"";
    return false;
  }
  std::ifstream stream(path);
  bool begin = true;
  long long number = 0;
  for (std::string line; std::getline(stream, line);) {
    ++number;
    const bool comment = !line.empty() && line.front() == '#';
    if (comment) continue;
    if (IsEmpty(line)) {
      begin = true;
      continue;
    }
    Point point;
    if (!ReadPoint(line, point)) {
      reason = path + ":" + std::to_string(number) + ": not a point: \"" + ToTerminal(line, DetectEncoding(line)) + "\"";
      return false;
    }
    if (begin) runs.emplace_back();
    begin = false;
    runs.back().push_back(point);
  }
  if (!runs.empty()) return true;
  reason = "\"" + path + "\" has no points";
  return false;
}

}  // namespace zel
