#include "PointFile.h"

#include <filesystem>
#include <fstream>
#include <string_view>

#include "FieldText.h"
#include "TextEdge.h"

namespace zel {
namespace {

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
