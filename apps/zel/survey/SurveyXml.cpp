// The XML form of a survey's report.

#include <array>
#include <charconv>
#include <utility>

#include "TextEdge.h"
#include "UtcText.h"
#include "survey/SurveyReport.h"

namespace zel {
namespace {

constexpr int kDecimals = 4;  // of metres

std::string Shown(const std::string& text, Encoding encoding = Encoding::Windows1252) { return ToTerminal(text, encoding); }

// An element whose attributes are set one after the other.
class Node {
 public:
  explicit Node(XmlElement& element) : m_element(element) {}
  Node Add(const char* name) { return Node(m_element.Add(name)); }

  // A text in the suite's encoding.
  Node& Text(const char* name, const std::string& text) { return Set(name, Shown(text)); }
  Node& Set(const char* name, const std::string& value) {
    m_element.SetAttribute(name, value);
    return *this;
  }
  Node& Metres(const char* name, double value) { return Set(name, Fixed(value)); }
  Node& Number(const char* name, long long value) { return Set(name, std::to_string(value)); }
  Node& Time(const char* name, double time) { return Set(name, UtcText(time)); }
  Node& Flag(const char* name, bool value) { return Set(name, value ? "yes" : "no"); }
  void Content(const std::string& text) { m_element.SetText(text); }

 private:
  static std::string Fixed(double value) {
    const std::string text = FormatDouble(value, kDecimals);
    return text == "-0.0000" ? text.substr(1) : text;
  }

  XmlElement& m_element;
};

std::string Colour(COLORREF color) {
  const auto part = [color](int shift) { return std::to_string(color >> shift & 0xFF); };
  return part(0) + ", " + part(8) + ", " + part(16);
}

void AddSettings(Node root, const Survey& survey) {
  static constexpr std::array<const char*, 4> forms = {"grid", "degrees", "minutes", "seconds"};
  root.Add("settings")
      .Text("language", survey.language)
      .Text("depth-unit", survey.DepthUnit())
      .Text("distance-unit", survey.units.GetUnitMnem(CZelUnitCnv::Distance))
      .Text("volume-unit", survey.units.GetUnitMnem(CZelUnitCnv::Volume))
      .Set("coordinates", forms[static_cast<std::size_t>(survey.coordinates.form)])
      .Metres("map-rotation", survey.mapRotation);
}

void AddCounts(Node root, const Survey& survey) {
  const SurveyCounts& counts = survey.counts;
  root.Add("soundings")
      .Number("lines", counts.lines)
      .Number("read", counts.read)
      .Number("broken", counts.broken)
      .Number("outside", counts.outside)
      .Number("without-tide", counts.withoutTide)
      .Number("kept-unreduced", counts.keptUnreduced)
      .Number("used", static_cast<long long>(survey.soundings.size()))
      .Number("pings", counts.pings)
      .Number("beams", counts.beams)
      .Number("rejected-beams", counts.rejectedBeams);
  if (!survey.extents.IsValid()) return;
  Node extents = root.Add("extents");
  extents.Metres("left", survey.extents.xMin)
      .Metres("bottom", survey.extents.yMin)
      .Metres("right", survey.extents.xMax)
      .Metres("top", survey.extents.yMax);
  extents.Metres("lowest", survey.extents.zMin)
      .Metres("highest", survey.extents.zMax)
      .Metres("area-covered", survey.areaCovered)
      .Metres("cell", survey.coverCell);
  if (survey.firstTime != 0.0 || survey.lastTime != 0.0) extents.Time("first", survey.firstTime).Time("last", survey.lastTime);
}

void AddTide(Node root, const SurveyTide& tide) {
  Node node = root.Add("tide");
  node.Flag("used", tide.used);
  if (!tide.used) return;
  node.Number("values", tide.values)
      .Time("first", tide.first)
      .Time("last", tide.last)
      .Metres("lowest", tide.minimum)
      .Metres("highest", tide.maximum);
  for (const SurveyTide::Gap& gap : tide.gaps) node.Add("gap").Time("from", gap.from).Time("to", gap.to);
}

void AddStatistics(Node root, const char* of, const SurveyStatistics& statistics) {
  root.Add("statistics")
      .Set("of", of)
      .Number("count", statistics.count)
      .Metres("least", statistics.minimum)
      .Metres("p05", statistics.p05)
      .Metres("p25", statistics.p25)
      .Metres("p50", statistics.p50)
      .Metres("p75", statistics.p75)
      .Metres("p95", statistics.p95)
      .Metres("greatest", statistics.maximum)
      .Metres("mean", statistics.mean)
      .Metres("deviation", statistics.deviation);
}

void AddVolumes(Node root, const Survey& survey) {
  const SurveyVolumes& volumes = survey.volumes;
  Node node = root.Add("volumes");
  node.Metres("cell", volumes.cellSize).Number("cells", volumes.cells).Metres("area", volumes.area);
  node.Metres("above", volumes.above).Metres("below", volumes.below).Metres("below-over-depth", volumes.belowOverDepth);
  for (const VolumeBand& band : volumes.bands) {
    Node row = node.Add("band");
    if (!band.isLowest) row.Metres("from", band.low);
    if (!band.isHighest) row.Metres("to", band.high);
    row.Set("color", Colour(band.color))
        .Text("name", band.name)
        .Number("cells", band.cells)
        .Metres("area", band.area)
        .Metres("volume", band.volume);
  }
}

void AddSection(Node root, const Survey& survey) {
  const SurveyDesign& design = survey.design;
  root.Add("design")
      .Metres("from", design.start)
      .Metres("to", design.end)
      .Metres("width", design.width)
      .Metres("slope", design.slope)
      .Metres("slope-width", design.slopeWidth)
      .Metres("over-depth", design.offset)
      .Flag("vertical", design.offsetIsVertical);
  Node node = root.Add("section");
  node.Metres("step", survey.section.step).Metres("corridor", survey.section.corridor);
  for (const SectionRow& row : survey.section.rows) {
    Node element = node.Add("row");
    element.Metres("chainage", row.chainage)
        .Metres("x", row.x)
        .Metres("y", row.y)
        .Metres("design", row.design)
        .Metres("over-depth", row.overDepth);
    if (row.measured) {
      element.Metres("bottom", row.bottom)
          .Metres("shoalest", row.shoalest)
          .Metres("difference", row.difference)
          .Number("soundings", row.soundings);
    }
  }
}

void AddTrack(Node root, const Survey& survey) {
  const SurveyTrack& track = survey.track;
  if (track.places.empty()) return;
  Node node = root.Add("track");
  node.Number("fixes", track.fixes)
      .Number("velocities", track.velocities)
      .Number("lines-of-position", track.linesOfPosition)
      .Number("refused", track.refused);
  node.Metres("length", track.length)
      .Metres("heading-offset", track.headingOffset)
      .Metres("scale-error", track.scaleError)
      .Number("calibrations", track.calibrations);
  const TrackPlace& last = track.places.back();
  node.Add("last")
      .Time("time", last.time)
      .Metres("x", last.x)
      .Metres("y", last.y)
      .Metres("heading", survey.vessel.heading)
      .Metres("semi-major", last.semiMajor)
      .Metres("semi-minor", last.semiMinor)
      .Metres("orientation", last.orientation);
}

void AddErrors(Node root, const Survey& survey) {
  Node node = root.Add("errors");
  node.Number("more", survey.moreErrors);
  for (const SurveyError& error : survey.errors) {
    const auto shown = [](const std::string& text) { return Shown(text, DetectEncoding(text)); };
    Node element = node.Add("error");
    element.Set("context", shown(error.context)).Set("type", shown(error.type)).Set("details", shown(error.details));
    element.Content(shown(error.text));
  }
}

}  // namespace

XmlElement SurveyReportXml(const Survey& survey) {
  XmlElement element("survey");
  Node root(element);
  const SurveyTitle& title = survey.title;
  root.Text("title", title.title)
      .Text("client", title.client)
      .Text("vessel", title.vessel)
      .Text("date", title.date)
      .Text("datum", title.datum);
  AddSettings(root, survey);
  AddCounts(root, survey);
  AddTide(root, survey.tide);
  AddStatistics(root, "depths", survey.depths);
  if (survey.design.IsGiven()) {
    AddStatistics(root, "differences", survey.differences);
    AddSection(root, survey);
    AddVolumes(root, survey);
  }
  AddTrack(root, survey);
  AddErrors(root, survey);
  return element;
}

}  // namespace zel
