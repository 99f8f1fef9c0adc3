// A survey as it was read and computed: all that its report says and its pictures show. Neighbours: SurveyFile.h reads one from
// a folder; SurveyReport.h writes it as text and as XML; SurveyPictures.h draws it; docs/survey.md tells how each value comes.
//
// What holds throughout:
// - Lengths are metres, x to the east, y to the north in the survey's grid. A height z is positive upwards above the chart datum, so
//   that the bottom is negative; a depth is -z. The chosen unit comes in only where a value turns into text.
// - Times are milliseconds since 1970-01-01 00:00:00 UTC. Angles are degrees, clockwise from grid north.
// - A difference is measured bottom less design: positive where too little was dredged, as ColorTable has it.
// - Texts are the suite's, in Windows-1252.
// - No coordinate, height or time in here is NaN or infinite.
#pragma once

#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "zelbase/colour/ColorTable.h"
#include "zelbase/frame/NumberFormat.h"
#include "zelbase/geodesy/GeoCoordSys.h"
#include "zelbase/geometry/Extents3D.h"
#include "zelbase/geometry/LineData.h"
#include "zelbase/geometry/Point.h"
#include "zelbase/geometry/VesselContour.h"
#include "zelbase/units/CZelUnitCnv.h"

namespace zel {

// ---- texts and their forms ----

struct SurveyTitle {
  std::string title;   // "Approach channel, out-survey"
  std::string client;  // these may be empty
  std::string vessel;
  std::string date;
  std::string datum;  // the name of the height that soundings are reduced to: "LAT"
};

// How a position is written beside the chart's grid.
enum class CoordinateForm { Grid, Degrees, Minutes, Seconds };

// The way from the grid to geographic coordinates, by the geodesy plug-in.
class SurveyProjection {
 public:
  SurveyProjection() = default;

  // A projected system, chosen.
  explicit SurveyProjection(std::unique_ptr<GeoCoordSys> system) : m_system(std::move(system)) {}

  // Otherwise there is only CoordinateForm::Grid.
  bool IsKnown() const { return m_system != nullptr; }

  // "WGS 84 / UTM zone 31N"; empty when it is not known.
  std::string Name() const { return IsKnown() ? m_system->Name() : std::string(); }

  // Latitude and longitude in degrees, north and east positive. False, outputs as they were, where the system has no answer.
  bool ToGeographic(double x, double y, double& latitude, double& longitude) const {
    return IsKnown() && m_system->Inverse(x, y, latitude, longitude);
  }
  bool ToGrid(double latitude, double longitude, double& x, double& y) const {
    return IsKnown() && m_system->Forward(latitude, longitude, x, y);
  }

 private:
  std::shared_ptr<GeoCoordSys> m_system;
};

struct SurveyCoordinates {
  CoordinateForm form = CoordinateForm::Grid;
  int decimals = 0;  // of metres, degrees, minutes or seconds, whichever is the smallest that is shown
  SurveyProjection projection;

  // The number of the form for FormatGeogs; 0 for the grid.
  unsigned int GeogsFormat() const {
    constexpr std::array<unsigned int, 4> formats = {0, 1, 3, 7};
    return formats[static_cast<std::size_t>(form)];
  }
};

// ---- what was counted ----

struct SurveyCounts {
  long long lines = 0;          // of the text of soundings, all of them
  long long read = 0;           // soundings of the text and of accepted beams, before anything is left out
  long long broken = 0;         // lines of the text, and of the text of pings, that do not read
  long long outside = 0;        // read, but outside the work area
  long long withoutTide = 0;    // read, but without tide at their time
  long long keptUnreduced = 0;  // of these, those in `soundings` all the same, since the settings ask for it
  long long pings = 0;
  long long beams = 0;          // of the pings, all of them
  long long rejectedBeams = 0;  // flagged as rejected, or not measured
};

struct SurveyStatistics {
  long long count = 0;  // 0: all others are 0
  double minimum = 0.0, maximum = 0.0, mean = 0.0;
  double deviation = 0.0;                                        // of the population
  double p05 = 0.0, p25 = 0.0, p50 = 0.0, p75 = 0.0, p95 = 0.0;  // percentiles, interpolated between neighbours
};

// ---- tide ----

struct SurveyTide {
  bool used = false;  // otherwise the soundings came reduced, or there was none to be had
  int values = 0;
  double first = 0.0, last = 0.0;       // the series' span of time
  double minimum = 0.0, maximum = 0.0;  // metres above the chart datum, over the time of the soundings
  double longestStep = 0.0;             // milliseconds; a longer step between two values is a gap, and no tide is taken from within it
  struct Gap {
    double from = 0.0, to = 0.0;
  };
  std::vector<Gap> gaps;  // within the series
};

// ---- design and long section ----

// A profile line whose points are given: chainage along the plan, each run of them a section.
class SurveyLine : public LineData {
 public:
  using LineData::DataPoint;

  explicit SurveyLine(const std::vector<std::vector<Point>>& sections) : LineData("Survey") {
    double distance = 0.0;
    const Point* previous = nullptr;
    for (const std::vector<Point>& section : sections) {
      for (const Point& point : section) {
        if (previous != nullptr) distance += previous->Dist2D(point);
        m_points.emplace_back(point, distance, &point == &section.front());
        previous = &point;
      }
    }
  }
};

struct SurveyDesign {
  // Null without a design. Seen from above these are the plan line (x, y), in the plane of the profile (distance, z) the design
  // level. At least two points.
  std::shared_ptr<LineData> line;

  // The over-depth line that belongs to it, an OffsetLineData or a VerticalOffsetLineData on `line`; null without one. Go by index:
  // not every line answers by chainage.
  std::shared_ptr<LineData> overDepth;
  double offset = 0.0;            // metres; negative below the design
  bool offsetIsVertical = false;  // otherwise at right angles to the line in the plane of the profile

  double width = 0.0;             // of the channel's floor, half of it to either side of the line
  double slope = 0.0;             // metres run for a metre of rise beside the floor; 0 for none
  double slopeWidth = 0.0;        // how far beside the floor the slope and with it the design reaches
  double start = 0.0, end = 0.0;  // chainage

  bool IsGiven() const { return line != nullptr; }
};

// One row of the long section: the bottom along the design line.
struct SectionRow {
  double chainage = 0.0;
  double x = 0.0, y = 0.0;  // on the line
  double design = 0.0;      // z
  double overDepth = 0.0;   // z; the design's without an over-depth line
  bool measured = false;    // otherwise the four below are 0
  double bottom = 0.0;      // mean z of the soundings near this place
  double shoalest = 0.0;    // the highest z among them
  double difference = 0.0;  // bottom less design
  int soundings = 0;
  bool sectionStart = false;  // no line runs to this row from the one before
};

struct LongSection {
  double step = 0.0;             // metres of chainage from row to row
  double corridor = 0.0;         // soundings this far to either side of the line count
  std::vector<SectionRow> rows;  // by rising chainage; empty without a design
};

// ---- volumes ----

// One step of the difference colours: from `low` up to `high`. The first reaches from minus infinity, the last to infinity: low and
// high are then the same value.
struct VolumeBand {
  double low = 0.0, high = 0.0;
  bool isLowest = false, isHighest = false;
  COLORREF color = 0;
  std::string name;
  long long cells = 0;
  double area = 0.0;    // square metres
  double volume = 0.0;  // cubic metres, area times difference: positive above the design, negative below
};

struct SurveyVolumes {
  double cellSize = 0.0;          // metres; 0 without a design
  long long cells = 0;            // with soundings, where the design applies
  double area = 0.0;              // of these
  double above = 0.0;             // cubic metres still to be dredged down to the design
  double below = 0.0;             // cubic metres dredged below the design
  double belowOverDepth = 0.0;    // of these, below the over-depth level
  std::vector<VolumeBand> bands;  // by rising difference
};

// ---- track ----

struct TrackPlace {
  double time = 0.0;
  double x = 0.0, y = 0.0;
  double speed = 0.0;                       // metres a second over ground
  double course = 0.0;                      // over ground; 0 while the vessel lies still
  double semiMajor = 0.0, semiMinor = 0.0;  // of the error ellipse, metres, one sigma
  double orientation = 0.0;                 // of its major axis
  bool isFix = false;                       // a fix or a set of lines of position; otherwise a velocity
  bool refused = false;                     // a fix beyond the gate: the place is the prediction
  bool afterGap = false;                    // a new piece of track begins: no line is drawn from the place before
};

struct SurveyTrack {
  std::vector<TrackPlace> places;  // by rising time; empty without a track
  double headingOffset = 0.0;      // the velocity sensor's calibration by the filter, degrees
  double scaleError = 0.0;         // parts per thousand
  int calibrations = 0;            // how often it has changed
  int fixes = 0, velocities = 0, linesOfPosition = 0, refused = 0;
  double gate = 0.0;    // metres; 0: none
  double length = 0.0;  // metres, without what lies across gaps
};

struct SurveyVessel {
  bool known = false;       // otherwise there is no position to draw it at
  double x = 0.0, y = 0.0;  // the last one
  double heading = 0.0;
  double time = 0.0;
  bool hasContour = false;  // otherwise `contour` is empty
  VesselContour contour;    // seen from above, y to the bow, its origin at the position; GetPoint from 1
};

// ---- errors ----

struct SurveyError {
  std::string context, type, text, details;
};

// ---- the survey ----

using SurveyPolygon = std::vector<Point>;  // at least three points; not closed by a repeated point

struct Survey {
  SurveyTitle title;

  // Inside the work area and reduced by the tide. At 24 bytes each, so that ten million take a quarter of a gigabyte.
  std::vector<Point> soundings;
  Extents3D extents;                       // of `soundings`; not valid when there are none
  double firstTime = 0.0, lastTime = 0.0;  // of `soundings`; both 0 when none has a time
  SurveyCounts counts;
  SurveyTide tide;

  std::vector<SurveyPolygon> workArea;  // by the even-odd rule; empty: everywhere
  std::vector<SurveyPolygon> land;      // z is not used

  ColorTable depthColours;       // asked with a depth, that is with -z in metres
  ColorTable differenceColours;  // asked with a difference in metres

  SurveyDesign design;
  LongSection section;
  SurveyVolumes volumes;
  SurveyStatistics depths;       // of -z, metres
  SurveyStatistics differences;  // sounding less design, where the design applies
  double areaCovered = 0.0;      // square metres: cells of `coverCell` metres with at least one sounding
  double coverCell = 0.0;

  SurveyTrack track;
  SurveyVessel vessel;

  double mapRotation = 0.0;  // the map's upward direction in degrees from grid north, 0 to 360
  SurveyCoordinates coordinates;
  CZelUnitCnv units;                         // kinds Depth, Distance, Volume and Area are set by the survey
  int depthDecimals = 1;                     // of a depth on the chart
  std::string language;                      // as the settings name it; empty for English
  std::map<std::string, std::string> words;  // English to the survey's language

  std::vector<SurveyError> errors;  // oldest first
  long long moreErrors = 0;         // beyond those that are kept

  // `english` in the survey's language, or as it is.
  const std::string& Word(const std::string& english) const {
    const auto found = words.find(english);
    return found == words.end() || found->second.empty() ? english : found->second;
  }

  // The depth at a height, in the chosen unit.
  double ShownDepth(double z) const { return units.ConvertUnit(CZelUnitCnv::Depth, -z); }
  std::string DepthText(double z) const { return FormatDouble(ShownDepth(z), depthDecimals); }

  // "m", "ft".
  std::string DepthUnit() const { return units.GetUnitMnem(CZelUnitCnv::Depth); }
};

}  // namespace zel
