// A survey folder, as "zel survey" reads it: its settings name the other files. Its argument is the folder samples/ of the source tree.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "zelbase/config/FileObject.h"
#include "zelbase/data/XYZDataSource.h"
#include "zelbase/files/HugeFileStream.h"
#include "zelbase/platform/CArchive.h"
#include "zelbase/sonar/TideFile.h"

// Points of a text, x y z a line; the extents come with the base.
class PointFile : public XYZDataSource {
 public:
  explicit PointFile(const std::string& name) { m_file.Open(name.c_str(), CFile::modeRead | CFile::shareDenyNone); }

  bool GetFirstPoint(TimePoint& point) override {
    m_file.SeekToBegin();
    m_lines.emplace(&m_file, CArchive::load);
    return GetNextPoint(point);
  }
  bool GetNextPoint(TimePoint& point) override {
    for (std::string_view line; m_lines && m_lines->ReadLine(line);) {
      if (TakeNumber(line, point.position.x) && TakeNumber(line, point.position.y) && TakeNumber(line, point.position.z)) return true;
    }
    return false;
  }
  double GetPosition() override { return static_cast<double>(m_file.GetPosition()) / static_cast<double>(m_file.GetLength()); }

 private:
  static bool TakeNumber(std::string_view& line, double& number) {
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
    line.remove_prefix(static_cast<std::size_t>(end - line.data()));
    return error == std::errc();
  }

  CFile m_file;
  std::optional<CArchive> m_lines;
};

int main(int argumentCount, char** arguments) {
  if (argumentCount < 2) return 1;
  const std::string folder = std::string(arguments[1]) + "\\survey\\";
  FileObject settings;
  if (!settings.FileOpen(folder + "survey.ini", CFile::modeRead | CFile::shareDenyWrite)) return 1;
  std::string title, soundings, tideName;
  settings.GetItem("Survey", "Title", title);
  settings.GetItem("Soundings", "File", soundings);
  settings.GetItem("Tide", "File", tideName);
  std::printf("%s\n", title.c_str());

  PointFile points(folder + soundings);
  Point lowest, highest;
  if (!points.GetExtents(lowest, highest)) return 1;
  std::printf("%d soundings, z from %.2f to %.2f m\n", points.GetNumberOfPoints(), lowest.z, highest.z);

  // Read as records: TideFile opens its file for writing, too, and a survey is only read.
  HugeFileStream stream((folder + tideName).c_str(), false, false);
  TideFile tide;
  for (double record[2]; stream.Read(record, sizeof record);) tide.AddTideValue(record[0], record[1]);
  double first = 0.0, last = 0.0, height = 0.0;
  if (!tide.GetFirstTideValue(first, height) || !tide.GetLastTideValue(last, height)) return 1;
  std::printf("%d heights in %.0f minutes, %.2f m at the end\n", tide.GetNumValues(), (last - first) / 60000.0, height);
  return 0;
}

// Prints:
//   Approach channel, out-survey after dredging
//   60048 soundings, z from -14.65 to -6.18 m
//   137 heights in 1440 minutes, 1.19 m at the end
