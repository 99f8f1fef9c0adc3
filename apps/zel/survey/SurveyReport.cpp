#include "survey/SurveyReport.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "SettingsFile.h"
#include "TextEdge.h"
#include "UtcText.h"
#include "zelbase/frame/GeographicText.h"

namespace zel {
namespace {

constexpr std::size_t kLabel = 34;  // width of the column of names
constexpr int kNumber = 16;         // and of that of numbers
constexpr std::size_t kMostGaps = 20;
constexpr double kHour = 3600000.0;  // milliseconds

// To `decimals`, where a rounded -0.0 is 0.
std::string Decimal(double value, int decimals) {
  const std::string text = FormatDouble(value, decimals);
  return text.find_first_not_of("-0.") == std::string::npos && text.front() == '-' ? text.substr(1) : text;
}

std::string RightAligned(const std::string& text, std::size_t width) {
  return std::string(text.size() < width ? width - text.size() : 0, ' ') + text;
}

// The lines of the report, in UTF-8. Words and units come in Windows-1252, where a byte is a column.
class Lines {
 public:
  explicit Lines(const Survey& survey) : m_survey(survey) {}

  void Section(const std::string& title) {
    const std::string& word = m_survey.Word(title);
    m_text += (m_text.empty() ? "" : "\n") + ToTerminal(word, Encoding::Windows1252) + '\n' + std::string(word.size(), '-') + '\n';
  }
  void Row(const std::string& name, const std::string& value, const std::string& unit = "") {
    m_text += "  " + ToColumn(m_survey.Word(name), kLabel) + RightAligned(value, kNumber) +
              (unit.empty() ? "" : " " + ToTerminal(unit, Encoding::Windows1252)) + '\n';
  }
  void Count(const std::string& name, long long count) { Row(name, std::to_string(count)); }
  void Words(const std::string& name, const std::string& text) {
    if (!text.empty()) m_text += "  " + ToColumn(m_survey.Word(name), kLabel) + "  " + ToTerminal(text, Encoding::Windows1252) + '\n';
  }
  // A line that comes in UTF-8.
  void Line(const std::string& line) { m_text += (line.empty() ? "" : "  ") + line + '\n'; }
  void Sentence(const std::string& sentence) { Line(ToTerminal(m_survey.Word(sentence), Encoding::Windows1252)); }

  std::string Take() { return std::move(m_text); }

 private:
  const Survey& m_survey;
  std::string m_text;
};

class TextReport {
 public:
  explicit TextReport(const Survey& survey)
      : m_survey(survey),
        m_lines(survey),
        m_depthUnit(survey.DepthUnit()),
        m_depthScale(survey.units.ConvertUnit(CZelUnitCnv::Depth, 1.0) - survey.units.ConvertUnit(CZelUnitCnv::Depth, 0.0)),
        m_distanceUnit(survey.units.GetUnitMnem(CZelUnitCnv::Distance)),
        m_volumeUnit(survey.units.GetUnitMnem(CZelUnitCnv::Volume)) {}

  std::string Write() {
    Head();
    Counts();
    Extents();
    Tide();
    Statistics("Depths", m_survey.depths, true);
    if (m_survey.design.IsGiven()) {
      Design();
      Statistics("Differences from the design", m_survey.differences, false);
      Section();
      Volumes();
    }
    Track();
    Settings();
    Errors();
    return m_lines.Take();
  }

 private:
  // ---- values in the survey's units ----

  std::string Depth(double z) const { return Decimal(m_survey.ShownDepth(z), m_survey.depthDecimals + 1); }
  std::string Difference(double metres) const { return Decimal(metres * m_depthScale, m_survey.depthDecimals + 1); }
  std::string Distance(double metres) const { return Measure(CZelUnitCnv::Distance, metres); }
  std::string Volume(double cubicMetres) const { return Measure(CZelUnitCnv::Volume, cubicMetres); }

  // One decimal, and in large units as many more as keep it finer than a tenth of a metre, or of a cubic metre.
  std::string Measure(int kind, double value) const {
    const double scale = m_survey.units.ConvertUnit(kind, 1.0) - m_survey.units.ConvertUnit(kind, 0.0);
    const int more = scale > 0.0 ? static_cast<int>(std::ceil(-std::log10(scale) - 1e-9)) : 0;
    return Decimal(m_survey.units.ConvertUnit(kind, value), 1 + std::max(0, more));
  }

  std::string Angle(double value, int axis) const {
    std::string text;
    FormatGeogs(value, m_survey.coordinates.GeogsFormat(), m_survey.coordinates.decimals, axis, text, true, true);
    return text;
  }

  // "543210.0 E  5812345.0 N", or in degrees.
  std::string Position(double x, double y) const {
    const SurveyCoordinates& coordinates = m_survey.coordinates;
    if (coordinates.form == CoordinateForm::Grid) {
      return Decimal(x, coordinates.decimals) + " E  " + Decimal(y, coordinates.decimals) + " N";
    }
    double latitude = 0.0, longitude = 0.0;
    if (!coordinates.projection.ToGeographic(x, y, latitude, longitude)) return Decimal(x, 1) + " E  " + Decimal(y, 1) + " N";
    return Angle(latitude, 10) + "  " + Angle(longitude, 11);
  }

  // "below -0.50", "-0.50 to -0.25", "0.50 and above".
  std::string BandText(const VolumeBand& band) const {
    const std::string low = Difference(band.low), high = Difference(band.high);
    if (band.isLowest && band.isHighest) return m_survey.Word("all");
    if (band.isLowest) return m_survey.Word("below") + " " + high;
    return low + " " + (band.isHighest ? m_survey.Word("and above") : m_survey.Word("to") + " " + high);
  }

  // ---- sections ----

  void Head() {
    m_lines.Section(m_survey.title.title.empty() ? "Survey" : m_survey.title.title);
    m_lines.Words("Client", m_survey.title.client);
    m_lines.Words("Vessel", m_survey.title.vessel);
    m_lines.Words("Date", m_survey.title.date);
    m_lines.Words("Heights and depths from", m_survey.title.datum);
    if (m_survey.counts.keptUnreduced > 0) m_lines.Sentence("NOT ALL SOUNDINGS ARE REDUCED BY THE TIDE: see below");
  }

  void Counts() {
    const SurveyCounts& counts = m_survey.counts;
    m_lines.Section("Soundings");
    m_lines.Count("read", counts.read);
    m_lines.Count("lines that do not read", counts.broken);
    m_lines.Count("outside the work area, left out", counts.outside);
    m_lines.Count("without tide, left out", counts.withoutTide - counts.keptUnreduced);
    m_lines.Count("without tide, kept unreduced", counts.keptUnreduced);
    m_lines.Count("used", static_cast<long long>(m_survey.soundings.size()));
    if (counts.pings == 0) return;
    m_lines.Count("pings", counts.pings);
    m_lines.Count("beams", counts.beams);
    m_lines.Count("beams rejected, left out", counts.rejectedBeams);
  }

  void Extents() {
    const Extents3D& extents = m_survey.extents;
    m_lines.Section("Extents");
    if (!extents.IsValid()) return m_lines.Sentence("no soundings");
    m_lines.Words("south-west corner", Position(extents.xMin, extents.yMin));
    m_lines.Words("north-east corner", Position(extents.xMax, extents.yMax));
    m_lines.Row("width", Distance(extents.GetXDiff()), m_distanceUnit);
    m_lines.Row("height", Distance(extents.GetYDiff()), m_distanceUnit);
    m_lines.Row("area covered", Decimal(m_survey.areaCovered, 1), "m\xB2");
    m_lines.Row("in cells of", Decimal(m_survey.coverCell, 2), "m");
    if (m_survey.firstTime == 0.0 && m_survey.lastTime == 0.0) return;
    m_lines.Words("first sounding", UtcText(m_survey.firstTime) + " UTC");
    m_lines.Words("last sounding", UtcText(m_survey.lastTime) + " UTC");
  }

  void Tide() {
    const SurveyTide& tide = m_survey.tide;
    m_lines.Section("Tide");
    if (!tide.used) {
      return m_lines.Sentence(m_survey.counts.withoutTide > 0 ? "the tide could not be had: soundings are NOT reduced"
                                                              : "none asked for: soundings are taken as reduced");
    }
    m_lines.Count("values", tide.values);
    m_lines.Words("from", UtcText(tide.first) + " UTC");
    m_lines.Words("to", UtcText(tide.last) + " UTC");
    m_lines.Row("lowest at a sounding", Difference(tide.minimum), m_depthUnit);
    m_lines.Row("highest at a sounding", Difference(tide.maximum), m_depthUnit);
    m_lines.Row("longest step without a gap", Decimal(tide.longestStep / 60000.0, 1), "min");
    m_lines.Count("gaps", static_cast<long long>(tide.gaps.size()));
    for (std::size_t i = 0; i < std::min(tide.gaps.size(), kMostGaps); ++i) {
      const SurveyTide::Gap& gap = tide.gaps[i];
      m_lines.Words("gap", UtcText(gap.from) + " - " + UtcText(gap.to) + ", " + Decimal((gap.to - gap.from) / kHour, 1) + " h");
    }
  }

  // A depth takes the offset that its unit may have, a difference does not.
  void Statistics(const std::string& title, const SurveyStatistics& statistics, bool areDepths) {
    const auto shown = [this, areDepths](double value) { return areDepths ? Depth(-value) : Difference(value); };
    m_lines.Section(title);
    m_lines.Count("soundings", statistics.count);
    if (statistics.count == 0) return;
    m_lines.Row("least", shown(statistics.minimum), m_depthUnit);
    m_lines.Row("5 % are below", shown(statistics.p05), m_depthUnit);
    m_lines.Row("25 % are below", shown(statistics.p25), m_depthUnit);
    m_lines.Row("50 % are below", shown(statistics.p50), m_depthUnit);
    m_lines.Row("75 % are below", shown(statistics.p75), m_depthUnit);
    m_lines.Row("95 % are below", shown(statistics.p95), m_depthUnit);
    m_lines.Row("greatest", shown(statistics.maximum), m_depthUnit);
    m_lines.Row("mean", shown(statistics.mean), m_depthUnit);
    m_lines.Row("standard deviation", Difference(statistics.deviation), m_depthUnit);
  }

  void Design() {
    const SurveyDesign& design = m_survey.design;
    m_lines.Section("Design");
    m_lines.Row("line from chainage", Distance(design.start), m_distanceUnit);
    m_lines.Row("to chainage", Distance(design.end), m_distanceUnit);
    m_lines.Row("width of the floor", Distance(design.width), m_distanceUnit);
    if (design.slope > 0.0 && design.slopeWidth > 0.0) {
      m_lines.Words("slope beside it", "1 : " + Decimal(design.slope, 2) + ", " + Distance(design.slopeWidth) + " " + m_distanceUnit);
    }
    if (design.overDepth != nullptr) {
      m_lines.Row(design.offsetIsVertical ? "over-depth, vertical" : "over-depth, at right angles", Difference(design.offset), m_depthUnit);
    }
  }

  void Section() {
    const LongSection& section = m_survey.section;
    const SectionRow* worst = nullptr;
    long long measured = 0;
    for (const SectionRow& row : section.rows) {
      if (!row.measured) continue;
      ++measured;
      if (worst == nullptr || row.difference > worst->difference) worst = &row;
    }
    m_lines.Section("Long section");
    m_lines.Count("rows", static_cast<long long>(section.rows.size()));
    m_lines.Count("of these measured", measured);
    m_lines.Row("from row to row", Distance(section.step), m_distanceUnit);
    m_lines.Row("corridor to either side", Distance(section.corridor), m_distanceUnit);
    if (worst == nullptr) return;
    m_lines.Row("highest above the design", Difference(worst->difference), m_depthUnit);
    m_lines.Row("at chainage", Distance(worst->chainage), m_distanceUnit);
  }

  void Volumes() {
    const SurveyVolumes& volumes = m_survey.volumes;
    m_lines.Section("Volumes between the bottom and the design");
    m_lines.Row("still to be dredged", Volume(volumes.above), m_volumeUnit);
    m_lines.Row("dredged below the design", Volume(volumes.below), m_volumeUnit);
    if (m_survey.design.overDepth != nullptr) m_lines.Row("of this below the over-depth", Volume(volumes.belowOverDepth), m_volumeUnit);
    m_lines.Row("area", Decimal(volumes.area, 1), "m\xB2");
    m_lines.Count("cells with soundings", volumes.cells);
    m_lines.Row("in cells of", Decimal(volumes.cellSize, 2), "m");
    m_lines.Line("");
    m_lines.Line(ToColumn(m_survey.Word("difference") + " " + m_depthUnit, 24) + ToRight(m_survey.Word("cells"), 12) +
                 ToRight(m_survey.Word("area") + " m\xB2", 16) + ToRight(m_survey.Word("volume") + " " + m_volumeUnit, 18));
    for (const VolumeBand& band : volumes.bands) {
      m_lines.Line(ToColumn(BandText(band), 24) + RightAligned(std::to_string(band.cells), 12) + RightAligned(Decimal(band.area, 1), 16) +
                   RightAligned(Volume(band.volume), 18) + (band.name.empty() ? "" : "  " + ToTerminal(band.name, Encoding::Windows1252)));
    }
  }

  static std::string ToRight(const std::string& text, std::size_t width) {
    return ToTerminal(RightAligned(text, width), Encoding::Windows1252);
  }

  void Track() {
    const SurveyTrack& track = m_survey.track;
    m_lines.Section("Track");
    if (track.places.empty()) return m_lines.Sentence("none");
    m_lines.Count("fixes", track.fixes);
    m_lines.Count("velocities", track.velocities);
    m_lines.Count("lines of position, as fixes", track.linesOfPosition);
    m_lines.Count("refused by the gate", track.refused);
    m_lines.Row("length", Distance(track.length), m_distanceUnit);
    m_lines.Row("heading offset of the sensor", Decimal(track.headingOffset, 3), "\xB0");
    m_lines.Row("scale error of the sensor", Decimal(track.scaleError, 3), "\x89");
    m_lines.Count("changes of the calibration", track.calibrations);
    const TrackPlace& last = track.places.back();
    m_lines.Words("last position", Position(last.x, last.y));
    m_lines.Words("at", UtcText(last.time) + " UTC");
    m_lines.Row("heading", Decimal(m_survey.vessel.heading, 1), "\xB0");
    m_lines.Row("error ellipse, half axes", Decimal(last.semiMajor, 2) + " x " + Decimal(last.semiMinor, 2), "m");
    m_lines.Row("its direction", Decimal(last.orientation, 1), "\xB0");
  }

  void Settings() {
    static constexpr std::array<const char*, 4> forms = {"grid", "degrees", "minutes", "seconds"};
    const auto unit = [this](int kind) {
      const std::string name = m_survey.units.GetUnitDispName(kind), symbol = m_survey.units.GetUnitMnem(kind);
      return name.empty() ? symbol : name + " (" + symbol + ")";
    };
    m_lines.Section("Units and language");
    m_lines.Words("depths", unit(CZelUnitCnv::Depth));
    m_lines.Words("distances", unit(CZelUnitCnv::Distance));
    m_lines.Words("volumes", unit(CZelUnitCnv::Volume));
    m_lines.Words("coordinates", m_survey.Word(forms[static_cast<std::size_t>(m_survey.coordinates.form)]));
    m_lines.Words("map turned to", Decimal(m_survey.mapRotation, 1) + "\xB0");
    m_lines.Words("language", m_survey.language.empty() ? "0409 (English)" : m_survey.language);
  }

  void Errors() {
    m_lines.Section("Errors");
    if (m_survey.errors.empty()) return m_lines.Sentence("none");
    for (const SurveyError& error : m_survey.errors) {
      const auto shown = [](const std::string& text) { return ToTerminal(text, DetectEncoding(text)); };
      m_lines.Line(shown(error.context) + ": " + shown(error.type) + ": " + shown(error.text));
      if (!error.details.empty()) m_lines.Line("    " + ToShownPath(shown(error.details)));
    }
    if (m_survey.moreErrors > 0) m_lines.Line("and " + std::to_string(m_survey.moreErrors) + " more, repeats included");
  }

  const Survey& m_survey;
  Lines m_lines;
  std::string m_depthUnit;
  double m_depthScale;
  std::string m_distanceUnit, m_volumeUnit;
};

}  // namespace

std::string SurveyReportText(const Survey& survey) { return TextReport(survey).Write(); }

}  // namespace zel
