#include "survey/SurveySoundings.h"

#include <algorithm>
#include <filesystem>

#include "SettingsFile.h"
#include "TextEdge.h"
#include "adapters/xyz/XyzTextSource.h"
#include "survey/SurveyFaults.h"
#include "survey/SurveyPings.h"
#include "zelbase/data/XyzImporter.h"

namespace zel {
namespace {

constexpr const char* kContext = "Soundings";
constexpr long long kLook = 4096;      // soundings from look to look at the clock and at Ctrl-C
constexpr double kRoom = 1.02;         // memory that is asked for beyond what the file seems to need
constexpr double kShortestLine = 6.0;  // "0 0 0\n"

LineFaults FaultsOf(const XyzTextSummary& summary) {
  LineFaults faults;
  faults.count = summary.brokenLines;
  for (const XyzLineProblem& problem : summary.problems) {
    faults.kept.push_back({problem.line, ToTerminal(problem.reason, DetectEncoding(problem.reason))});
  }
  return faults;
}

bool GoesOn(const SurveyProgress& progress, double part) { return !progress || progress(part); }

}  // namespace

// ---- texts ----

class SurveySoundings::TextImport : public XyzImporter {
 public:
  TextImport(XYZDataSource& source, SurveySoundings& soundings, double bytes, const SurveyProgress& progress)
      : XyzImporter(&source, false), m_soundings(soundings), m_bytes(bytes), m_progress(progress) {}

  long long OffGrid() const { return m_offGrid; }

 protected:
  bool AddPoint(const TimePoint& point) override {
    if (++m_count % kLook == 0 && !Look()) return false;
    if (!IsOnGrid(point.position)) {
      ++m_offGrid;
      return true;
    }
    m_soundings.Take(point.position, point.time);
    return true;
  }

 private:
  // Growing by doubling would hold the soundings twice for a while; the first lines tell how many there will be.
  bool Look() {
    const double part = GetProgress();
    std::vector<Point>& kept = m_soundings.m_survey.soundings;
    if (m_count == kLook && part > 0.0) {
      const double expected = std::min(static_cast<double>(kLook) / part * kRoom, m_bytes / kShortestLine);
      kept.reserve(kept.size() + static_cast<std::size_t>(expected));
    }
    return GoesOn(m_progress, part);
  }

  SurveySoundings& m_soundings;
  double m_bytes;
  const SurveyProgress& m_progress;
  long long m_count = 0;
  long long m_offGrid = 0;
};

bool SurveySoundings::ReadText(const std::string& path, const SurveyProgress& progress) {
  XyzTextSource source;
  if (!source.Open(ToSuitePath(path))) {
    ReportFile(kContext, path, FileError::Open);
    return true;
  }
  std::error_code failed;
  const double bytes = static_cast<double>(std::filesystem::file_size(path, failed));
  TextImport import(source, *this, failed ? 0.0 : bytes, progress);
  if (!import.Process()) return false;
  const XyzTextSummary& summary = source.SoFar();
  m_survey.counts.lines += summary.lines;
  m_survey.counts.broken += summary.brokenLines + import.OffGrid();
  ReportLines(kContext, path, FaultsOf(summary));
  if (import.OffGrid() > 0) {
    ReportFault(kContext,
                Counted(static_cast<std::size_t>(import.OffGrid()), "sounding is", "soundings are") + " too far away to be in any grid",
                path);
  }
  if (source.Result() != FileResult::Ok) ReportFile(kContext, path, FileError::Read);
  if (summary.points == 0 && summary.brokenLines == 0) ReportFault(kContext, "the text has no soundings", path);
  return true;
}

// ---- pings ----

void SurveySoundings::TakePing(const SurveyPing& ping) {
  SurveyCounts& counts = m_survey.counts;
  ++counts.pings;
  for (int i = 0; i < ping.ping.numBeams; ++i) {
    ++counts.beams;
    if (!ping.ping.IsValidBeam(i)) {
      ++counts.rejectedBeams;
      continue;
    }
    Point point(ping.ping.beamX[i], ping.ping.beamY[i], ping.ping.beamZ[i]);
    point.Rotate(ping.heading, Point());
    point += Point(ping.x, ping.y, 0.0);
    if (IsOnGrid(point)) {
      Take(point, ping.time);
    } else {
      ++m_offGrid;
    }
  }
  if (ping.time < m_headingTime) return;
  m_heading = ping.heading;
  m_headingTime = ping.time;
}

bool SurveySoundings::ReadPings(const std::string& path, const SurveyProgress& progress) {
  SurveyPingFile file(path);
  if (!file.IsOpen()) {
    ReportFile("Pings", path, FileError::Open);
    return true;
  }
  SurveyPing ping;
  long long pings = 0;
  m_offGrid = 0;
  while (file.Next(ping)) {
    TakePing(ping);
    if (++pings % 64 == 0 && !GoesOn(progress, 0.5)) return false;
  }
  m_survey.counts.broken += file.Faults().count + m_offGrid;
  ReportLines("Pings", path, file.Faults());
  if (m_offGrid > 0) {
    ReportFault("Pings", Counted(static_cast<std::size_t>(m_offGrid), "beam is", "beams are") + " too far away to be in any grid", path);
  }
  if (pings == 0 && file.Faults().count == 0) ReportFault("Pings", "the text has no pings", path);
  return true;
}

// ---- what is done with each sounding ----

bool SurveySoundings::Reduce(double time, double& height) {
  SurveyTide& tide = m_survey.tide;
  double rise = 0.0;
  if (m_options.tide != Tide::Series || time == 0.0 || !m_series.HeightAt(time, rise)) return false;
  height += rise;
  tide.minimum = m_reduced ? std::min(tide.minimum, rise) : rise;
  tide.maximum = m_reduced ? std::max(tide.maximum, rise) : rise;
  m_reduced = true;
  return true;
}

void SurveySoundings::Take(const Point& point, double time) {
  SurveyCounts& counts = m_survey.counts;
  ++counts.read;
  if (!m_area.Holds(point.x, point.y)) {
    ++counts.outside;
    return;
  }
  Point reduced = point;
  if (m_options.tide != Tide::NotAsked && !Reduce(time, reduced.z)) {
    ++counts.withoutTide;
    if (m_options.tide == Tide::Series && !m_options.keepWithoutTide) return;
    ++counts.keptUnreduced;
  }
  m_survey.soundings.push_back(reduced);
  m_survey.extents |= reduced;
  if (time == 0.0) return;
  const bool first = m_survey.firstTime == 0.0 && m_survey.lastTime == 0.0;
  m_survey.firstTime = first ? time : std::min(m_survey.firstTime, time);
  m_survey.lastTime = first ? time : std::max(m_survey.lastTime, time);
}

}  // namespace zel
