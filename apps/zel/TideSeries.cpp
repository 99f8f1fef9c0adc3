#include "TideSeries.h"

#include <algorithm>

#include "SettingsFile.h"
#include "zelbase/sonar/TideFile.h"

namespace zel {

bool TideSeries::Open(const std::string& path, std::string& reason) {
  TideFile file;
  if (!file.FileOpen(ToSuitePath(path), false)) {
    reason = "cannot open \"" + path + "\" for reading and writing";
    return false;
  }
  TideRow row{};
  for (bool more = file.GetFirstTideValue(row.time, row.height); more; more = file.GetNextTideValue(row.time, row.height))
    rows.push_back(row);
  file.FileClose(false);
  return true;
}

double TideSeries::UsualStep() const {
  if (rows.size() < 2) return 0.0;
  std::vector<double> steps;
  for (std::size_t i = 1; i < rows.size(); ++i) steps.push_back(rows[i].time - rows[i - 1].time);
  const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
  std::nth_element(steps.begin(), middle, steps.end());
  return *middle;
}

std::vector<std::size_t> TideSeries::Gaps(double longest) const {
  std::vector<std::size_t> gaps;
  for (std::size_t i = 1; i < rows.size(); ++i) {
    if (rows[i].time - rows[i - 1].time > longest) gaps.push_back(i);
  }
  return gaps;
}

}  // namespace zel
