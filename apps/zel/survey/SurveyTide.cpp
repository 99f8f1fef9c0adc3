#include "survey/SurveyTide.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <fstream>

#include "SettingsFile.h"
#include "survey/SurveyFaults.h"

namespace zel {
namespace {

constexpr const char* kContext = "Tide";
constexpr double kHighest = 1000.0;  // metres; no tide, and no mistake of a datum, is beyond
constexpr std::size_t kMostGaps = 1000;
constexpr std::size_t kRecordBytes = 16;

double DoubleAt(const std::string& bytes, std::size_t at) {
  std::uint64_t bits = 0;
  for (std::size_t i = 8; i > 0; --i) bits = bits << 8 | static_cast<unsigned char>(bytes[at + i - 1]);
  return std::bit_cast<double>(bits);
}

// TideFile opens for writing too. A survey only reads: a folder that is archived, or somebody else's, has its tide all the same.
bool ReadRecords(const std::string& path, TideFile& file) {
  if (!std::ifstream(path, std::ios::binary)) return false;
  const std::string bytes = ReadBytes(path);
  for (std::size_t at = 0; at + kRecordBytes <= bytes.size(); at += kRecordBytes) {
    file.AddTideValue(DoubleAt(bytes, at), DoubleAt(bytes, at + 8));
  }
  return true;
}

}  // namespace

bool SurveyTideSeries::Open(const std::string& path, double longestStep, SurveyTide& tide) {
  if (!m_file.FileOpen(ToSuitePath(path), false) && !ReadRecords(path, m_file)) {
    ReportFile(kContext, path, FileError::Open);
    return false;
  }
  if (m_file.GetNumValues() == 0) {
    ReportFault(kContext, "the tide file has no values", path);
    return false;
  }
  m_longestStep = longestStep;
  NoteSeries(tide);
  tide.longestStep = longestStep;
  tide.used = true;
  return true;
}

void SurveyTideSeries::NoteSeries(SurveyTide& tide) {
  double time = 0.0, height = 0.0, former = 0.0;
  for (bool more = m_file.GetFirstTideValue(time, height); more; more = m_file.GetNextTideValue(time, height)) {
    if (!std::isfinite(time)) continue;
    const bool gap = tide.values > 0 && time - former > m_longestStep;
    if (tide.values++ == 0) tide.first = time;
    if (gap && tide.gaps.size() < kMostGaps) tide.gaps.push_back({former, time});
    former = time;
  }
  tide.last = former;
}

bool SurveyTideSeries::FindStep(double time) {
  double begin = time, beginHeight = 0.0, end = time, endHeight = 0.0;
  // Before the whole series the first entry is delivered, which lies behind the time.
  if (!m_file.GetValueOnOrBefore(begin, beginHeight) || begin > time) return false;
  if (begin == time) {
    end = begin;
    endHeight = beginHeight;
  } else if (!m_file.GetValueAfter(end, endHeight) || end - begin > m_longestStep) {
    return false;
  }
  const bool usable = std::abs(beginHeight) <= kHighest && std::abs(endHeight) <= kHighest;
  if (!usable) return false;
  m_begin = begin;
  m_beginHeight = beginHeight;
  m_end = end;
  m_endHeight = endHeight;
  return true;
}

bool SurveyTideSeries::HeightAt(double time, double& height) {
  const bool isKnown = time >= m_begin && time <= m_end;
  if (!isKnown && !FindStep(time)) return false;
  const double part = m_end > m_begin ? (time - m_begin) / (m_end - m_begin) : 0.0;
  height = m_beginHeight + part * (m_endHeight - m_beginHeight);
  return true;
}

}  // namespace zel
