#include "PointFile.h"

#include <filesystem>
#include <fstream>
#include <string_view>

#include "FieldText.h"

namespace zel {
namespace {

bool ReadPoint(std::string_view line, Point& point) {
  if (!TakeNumber(line, point.x) || !TakeNumber(line, point.y)) return false;
  return IsEmpty(line) || (TakeNumber(line, point.z) && IsEmpty(line));
}

}  // namespace

bool PointFile::Read(const std::string& path, LineFaults& faults) {
  std::ifstream stream(path);
  if (!std::filesystem::is_regular_file(path) || !stream) return false;
  PassMark(stream);
  bool begin = true;
  for (std::string line; std::getline(stream, line);) {
    ++faults.lines;
    const bool comment = !line.empty() && line.front() == '#';
    if (comment) continue;
    if (IsEmpty(line)) {
      begin = true;
      continue;
    }
    Point point;
    if (!ReadPoint(line, point)) {
      faults.Add("a point", line);
      continue;
    }
    if (begin) runs.emplace_back();
    begin = false;
    runs.back().push_back(point);
  }
  return true;
}

bool PointFile::Open(const std::string& path, std::string& reason) {
  LineFaults faults;
  const bool opened = Read(path, faults);
  reason = faults.Refusal(path, opened, runs.empty(), "points");
  return reason.empty();
}

}  // namespace zel
