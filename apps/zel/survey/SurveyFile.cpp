#include "survey/SurveyFile.h"

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "PointFile.h"
#include "UtcText.h"
#include "survey/SurveyArea.h"
#include "survey/SurveyComputation.h"
#include "survey/SurveyDesign.h"
#include "survey/SurveyFaults.h"
#include "survey/SurveyForms.h"
#include "survey/SurveySettings.h"
#include "survey/SurveySoundings.h"
#include "survey/SurveyTide.h"
#include "survey/SurveyTrack.h"
#include "zelbase/errors/FileObjectError.h"
#include "zelbase/errors/GlobalErrorList.h"

namespace zel {
namespace {

constexpr double kMinute = 60000.0;        // milliseconds
constexpr double kHeadingHolds = kMinute;  // a ping's heading is the vessel's for that long
constexpr double kMostOverDepth = 50.0;    // metres, to either side
constexpr double kLargestVessel = 1000.0;  // metres from its origin, of an outline
constexpr long long kMostBytes = std::numeric_limits<long long>::max();

class Reader {
 public:
  Reader(const SurveyStage& stage, Survey& survey) : m_stage(stage), m_survey(survey) {}

  bool Open(const std::string& folder, const std::string& name) { return m_settings.Open(folder, name); }

  // False when it was stopped.
  bool Read() {
    ReadTitle(m_settings, m_survey);
    ReadLanguage(m_settings, m_survey);
    ReadUnits(m_settings, m_survey);
    ReadCoordinates(m_settings, m_survey);
    ReadAreas();
    if (!ReadSoundings()) return false;
    ReadColours(m_settings, m_survey);
    ReadDesignLine();
    if (!Stage("filtering the track", 0.0)) return false;
    ReadVessel();
    return ComputeSurvey(m_survey, m_area, ReadOptions(), [this](double part) { return Stage("computing", part); });
  }

 private:
  bool Stage(const char* stage, double progress) { return !m_stage || m_stage(stage, progress); }

  std::vector<SurveyPolygon> ReadPolygons(const std::string& item);
  void ReadAreas();
  bool ReadSoundings();
  SurveySoundings::Options ReadTide();
  void ReadDesignLine();
  void ReadVessel();
  void ReadContour();
  void ReadTrackFile();
  ComputationOptions ReadOptions();

  const SurveyStage& m_stage;
  Survey& m_survey;
  SurveySettings m_settings;
  SurveyArea m_area;
  SurveyTideSeries m_series;
  double m_pingHeading = 0.0, m_pingTime = 0.0;
};

// ---- polygons ----

bool IsUsablePolygon(SurveyPolygon& polygon) {
  for (const Point& point : polygon) {
    if (!IsOnGrid(point)) return false;
  }
  if (polygon.size() > 1 && polygon.front().x == polygon.back().x && polygon.front().y == polygon.back().y) polygon.pop_back();
  return polygon.size() > 2;
}

std::vector<SurveyPolygon> Reader::ReadPolygons(const std::string& item) {
  std::vector<SurveyPolygon> polygons;
  for (const std::string& path : m_settings.Files("Area", item)) {
    PointFile file;
    if (!ReadReported("Area", path, file)) continue;
    std::size_t unusable = 0;
    for (SurveyPolygon& polygon : file.runs) {
      if (IsUsablePolygon(polygon)) {
        polygons.push_back(std::move(polygon));
      } else {
        ++unusable;
      }
    }
    if (unusable > 0) {
      ReportFault("Area", Counted(unusable, "polygon has", "polygons have") + " fewer than three points, or points on no grid", path);
    }
    if (file.runs.empty()) ReportFault("Area", "the file has no polygons", path);
  }
  return polygons;
}

void Reader::ReadAreas() {
  m_survey.land = ReadPolygons("Land");
  m_survey.workArea = ReadPolygons("Work area");
  std::size_t edges = 0;
  for (const SurveyPolygon& polygon : m_survey.workArea) edges += polygon.size();
  if (edges > SurveyArea::kMostEdges) {
    ReportFault(
        "Area",
        "the work area has " + std::to_string(edges) + " points, more than " + std::to_string(SurveyArea::kMostEdges) + ": it is not used",
        m_settings.Path());
    m_survey.workArea.clear();
  }
  m_area = SurveyArea(m_survey.workArea);
}

// ---- soundings ----

// A tide that is asked for and not to be had leaves the soundings unreduced, for the chart to say so; they are no use to anybody otherwise.
SurveySoundings::Options Reader::ReadTide() {
  SurveySoundings::Options options;
  options.keepWithoutTide = m_settings.Choice("Soundings", "Without tide", {"leave out", "keep"}, 0) == 1;
  const double longestStep = m_settings.Number("Tide", "Longest step", 30.0, 0.01, 1e6) * kMinute;
  if (!m_settings.Has("Tide", "File")) return options;
  const std::string path = m_settings.File("Tide", "File");
  const bool opened = !path.empty() && m_series.Open(path, longestStep, m_survey.tide);
  options.tide = opened ? SurveySoundings::Tide::Series : SurveySoundings::Tide::Missing;
  return options;
}

void ReportWithoutTide(const Survey& survey) {
  const SurveyCounts& counts = survey.counts;
  if (counts.withoutTide == 0) return;
  const std::string done = counts.keptUnreduced == counts.withoutTide ? "kept without reduction" : "left out";
  ReportFault("Tide", Counted(static_cast<std::size_t>(counts.withoutTide), "sounding has", "soundings have") +
                          (counts.withoutTide == 1 ? " no tide at its time: " : " no tide at their time: ") + done);
}

// That some lie outside is as it should be; all of them are of another grid, or the area is.
void ReportOutside(const Survey& survey) {
  const SurveyCounts& counts = survey.counts;
  if (counts.read == 0 || counts.outside < counts.read) return;
  ReportFault("Area", "no sounding lies in the work area: soundings and area may be of different grids, or x and y have changed places");
}

bool Reader::ReadSoundings() {
  const std::vector<std::string> texts = m_settings.Files("Soundings", "File", kMostBytes);
  const std::vector<std::string> pings = m_settings.Files("Soundings", "Pings", kMostBytes);
  const bool named = m_settings.Has("Soundings", "File") || m_settings.Has("Soundings", "Pings");
  if (!named) {
    ReportError(FileObjectError(ToSuitePath(m_settings.Path()), "Soundings", "File", FileObjectError::KeyNotFound), "Soundings");
  }
  SurveySoundings soundings(m_survey, m_area, m_series, ReadTide());
  for (const std::string& path : texts) {
    if (!soundings.ReadText(path, [this](double part) { return Stage("reading soundings", part); })) return false;
  }
  for (const std::string& path : pings) {
    if (!soundings.ReadPings(path, [this](double part) { return Stage("reading pings", part); })) return false;
  }
  m_pingHeading = soundings.LastHeading();
  m_pingTime = soundings.HeadingTime();
  ReportOutside(m_survey);
  ReportWithoutTide(m_survey);
  return true;
}

// ---- design ----

void Reader::ReadDesignLine() {
  const std::string section = "Design";
  SurveyDesign& design = m_survey.design;
  design.width = m_settings.Number(section, "Width", 50.0, 0.1, 100000.0);
  design.slope = m_settings.Number(section, "Slope", 0.0, 0.0, 1000.0);
  design.slopeWidth = m_settings.Number(section, "Slope width", 0.0, 0.0, 100000.0);
  const double offset = m_settings.Number(section, "Over-depth", 0.0, -kMostOverDepth, kMostOverDepth);
  const bool vertical = m_settings.Flag(section, "Over-depth is vertical", false);
  const std::string path = m_settings.File(section, "Line");
  if (!path.empty()) ReadDesign(path, offset, vertical, design);
}

ComputationOptions Reader::ReadOptions() {
  ComputationOptions options;
  options.cellSize = m_settings.Number("Volumes", "Cell", options.cellSize, 0.01, 100000.0);
  options.step = m_settings.Number("Section", "Step", options.step, 0.01, 100000.0);
  options.corridor = m_settings.Number("Section", "Corridor", options.corridor, 0.01, 100000.0);
  return options;
}

// ---- track and vessel ----

void Reader::ReadTrackFile() {
  const std::string section = "Track";
  NavigationOptions options;
  options.dynamics = m_settings.Whole(section, "Dynamics", options.dynamics, 1, 5);
  options.gate = m_settings.Number(section, "Gate", options.gate, 0.0, 1e6);
  options.gap = m_settings.Number(section, "Gap", options.gap, 0.001, 1e9);
  options.headingOffset = m_settings.Number(section, "Heading offset", options.headingOffset, -360.0, 360.0);
  options.scaleError = m_settings.Number(section, "Scale error", options.scaleError, -1000.0, 1000.0);
  double origin = 0.0;
  const std::string moment = m_settings.Text(section, "Time origin");
  if (!moment.empty() && !FromUtcText(moment, origin)) {
    ReportFault(section, "\"Time origin\" is no moment: \"" + moment + "\"", m_settings.Path());
  }
  const std::string path = m_settings.File(section, "File");
  if (!path.empty()) ReadTrack(path, origin, options, m_survey);
}

void Reader::ReadContour() {
  const std::string path = m_settings.File("Vessel", "Contour");
  if (path.empty()) return;
  VesselContour contour;
  Page page;
  const bool read = contour.Create(ToSuitePath(path), 0);
  const bool usable = read && contour.GetBoundingPage(page) && page.left >= -kLargestVessel && page.right <= kLargestVessel &&
                      page.bottom >= -kLargestVessel && page.top <= kLargestVessel;
  if (!usable) {
    ReportFault("Vessel", "the contour has no outline from above, or one that is no vessel's", path);
    return;
  }
  m_survey.vessel.contour = contour;
  m_survey.vessel.hasContour = true;
}

void Reader::ReadVessel() {
  ReadTrackFile();
  ReadContour();
  SurveyVessel& vessel = m_survey.vessel;
  if (m_pingTime > 0.0 && std::abs(m_pingTime - vessel.time) <= kHeadingHolds) vessel.heading = m_pingHeading;
  vessel.heading = m_settings.Number("Vessel", "Heading", vessel.heading, -360.0, 360.0);
  vessel.heading = std::fmod(std::fmod(vessel.heading, 360.0) + 360.0, 360.0);
}

}  // namespace

SurveyOutcome ReadSurvey(const std::string& folder, const std::string& settingsName, const SurveyStage& stage, Survey& survey) {
  Reader reader(stage, survey);
  if (!reader.Open(folder, settingsName)) return SurveyOutcome::NoSettings;
  return reader.Read() ? SurveyOutcome::Read : SurveyOutcome::Stopped;
}

}  // namespace zel
