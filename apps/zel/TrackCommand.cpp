#include "TrackCommand.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Navigation.h"
#include "SettingsFile.h"
#include "SvgPicture.h"
#include "TextEdge.h"
#include "zelbase/geometry/MathConstants.h"

namespace zel {
namespace {

struct Arguments {
  std::string file;
  std::string picture;
  NavigationOptions options;
  bool fixesOnly = false;
};

constexpr double kEllipseShare = 0.012;  // of the picture's extent, for the mean ellipse
constexpr int kEllipses = 40;            // in a picture, about

// ---- table ----

double CourseOf(double vx, double vy) {
  const double course = std::atan2(vx, vy) * MATH::RTD;
  return course < 0 ? course + 360.0 : course;
}

const char* SourceOf(const TrackState& state) {
  if (state.refused) return "refused";
  switch (state.kind) {
    case Observation::Kind::Fix: return "fix";
    case Observation::Kind::Velocity: return "velocity";
    case Observation::Kind::Lines: return "lines";
  }
  return "";
}

void PrintState(const TrackState& state) {
  const Ellipse ellipse = EllipseOf(state);
  std::printf("%10.2f  %-8s %13.3f %13.3f %7.3f %6.1f %8.3f %8.3f %6.1f", state.time, SourceOf(state), state.x, state.y,
              std::hypot(state.vx, state.vy), CourseOf(state.vx, state.vy), ellipse.semiMajor, ellipse.semiMinor, ellipse.orientation);
  if (state.IsFix()) std::printf(" %8.3f", state.off);
  std::printf("%s\n", state.afterGap ? "  gap before" : "");
}

void PrintStates(const Navigation& navigation, bool fixesOnly) {
  std::printf("%10s  %-8s %13s %13s %7s %6s %8s %8s %6s %8s\n", "time s", "from", "x m", "y m", "m/s", "course", "major m", "minor m",
              "along", "off m");
  for (const TrackState& state : navigation.states) {
    if (state.IsFix() || !fixesOnly) PrintState(state);
  }
}

void PrintReduction(const Reduction& reduction) {
  const Observation& set = reduction.set;
  if (reduction.status == KalmanFilter::kSuccess) {
    std::printf("\nLines of position at %.2f s: x %.3f, y %.3f, from %d lines, weighted residuals %.3f\n", set.time, set.x, set.y,
                reduction.count, reduction.sigma);
  } else {
    std::printf("\nLines of position at %.2f s: no fix, %s\n", set.time, StatusText(reduction.status).c_str());
  }
  std::printf("  %-8s %13s %13s %13s %9s %10s\n", "", "station x", "station y", "observed", "azimuth", "residual m");
  for (const LopStruct& line : set.lines) {
    std::printf("  %-8s %13.3f %13.3f %13.3f %9.3f %10.3f\n", line.type == 0 ? "range" : "bearing", line.x, line.y, line.observed,
                line.azimuth, line.residual);
  }
}

void PrintSummary(const Navigation& navigation) {
  std::size_t fixes = 0, velocities = 0, gaps = 0, refused = 0;
  double squares = 0.0, worst = 0.0;
  for (const TrackState& state : navigation.states) {
    if (state.afterGap) ++gaps;
    if (state.refused) ++refused;
    if (!state.IsFix()) ++velocities;
    if (!state.IsFix() || state.refused) continue;
    ++fixes;
    squares += state.off * state.off;
    worst = std::max(worst, state.off);
  }
  std::printf("\n%s used, %zu refused by the gate, %s, %s\n", Counted(fixes, "fix", "fixes").c_str(), refused,
              Counted(velocities, "velocity", "velocities").c_str(), Counted(gaps, "gap", "gaps").c_str());
  if (fixes > 1) {
    std::printf("Fixes off their prediction: %.3f m root mean square, %.3f m at most\n",
                std::sqrt(squares / static_cast<double>(fixes - 1)), worst);
  }
  const Calibration last = navigation.LastCalibration();
  std::printf(
      "Velocity sensor: heading offset %.3f degrees, scale error %.2f per thousand, %s\n", last.headingOffset, last.scaleError,
      navigation.calibrations.empty() ? "as given" : ("from " + Counted(navigation.calibrations.size(), "window", "windows")).c_str());
}

// ---- picture ----

const Ink kTrack{"#1f5f99", 2, "none", {}};
const Ink kEllipseInk{"#7a4fa3", 1, "#d9cbe8", {}};
const Ink kLineOfPosition{"#c08a2d", 1, "none", "5 4"};
constexpr const char* kFixColour = "#2c8a57";
constexpr const char* kRefusedColour = "#c0392b";
constexpr double kFixRadius = 2;
constexpr double kRefusedRadius = 4;
constexpr const char* kStationColour = "#8a5a12";

// The track, a new piece behind every gap.
std::vector<Places> PiecesOf(const Navigation& navigation) {
  std::vector<Places> pieces;
  for (const TrackState& state : navigation.states) {
    if (state.afterGap || pieces.empty()) pieces.emplace_back();
    if (!state.refused) pieces.back().push_back({state.x, state.y});
  }
  return pieces;
}

Places OutlineOf(const TrackState& state, double scale) {
  const Ellipse ellipse = EllipseOf(state);
  const double along = ellipse.orientation * MATH::DTR;
  constexpr int kCorners = 36;
  Places places;
  for (int i = 0; i < kCorners; ++i) {
    const double angle = 2 * MATH::M_PI * i / kCorners;
    const double a = ellipse.semiMajor * scale * std::cos(angle), b = ellipse.semiMinor * scale * std::sin(angle);
    places.push_back({state.x + a * std::sin(along) + b * std::cos(along), state.y + a * std::cos(along) - b * std::sin(along)});
  }
  return places;
}

// 1, 2 or 5 times a power of ten, so that the mean ellipse is large enough to be seen in `extent`, and never below 1.
double EllipseScale(const Navigation& navigation, double extent) {
  double sum = 0.0;
  for (const TrackState& state : navigation.states) sum += EllipseOf(state).semiMajor;
  const double wanted = kEllipseShare * extent * static_cast<double>(navigation.states.size()) / sum;
  if (!(wanted > 1) || !std::isfinite(wanted)) return 1.0;
  const double power = std::pow(10.0, std::floor(std::log10(wanted)));
  const double lead = wanted / power;
  return (lead >= 5 ? 5 : lead >= 2 ? 2 : 1) * power;
}

void DrawEllipses(const Navigation& navigation, double scale, SvgPicture& picture) {
  std::vector<const TrackState*> fixes;
  for (const TrackState& state : navigation.states) {
    if (state.IsFix() && !state.refused) fixes.push_back(&state);
  }
  const std::size_t step = fixes.size() / kEllipses + 1;
  for (std::size_t i = 0; i < fixes.size(); i += step) picture.Area({OutlineOf(*fixes[i], scale)}, kEllipseInk);
}

// Each station once, with a line to every fix that it took part in.
void DrawStations(const Navigation& navigation, SvgPicture& picture) {
  std::set<std::pair<double, double>> stations;
  for (const Reduction& reduction : navigation.reductions) {
    for (const LopStruct& line : reduction.set.lines) {
      stations.insert({line.x, line.y});
      if (reduction.status == KalmanFilter::kSuccess) {
        picture.Line({{line.x, line.y}, {reduction.set.x, reduction.set.y}}, kLineOfPosition);
      }
    }
  }
  for (const auto& [x, y] : stations) picture.Dot({x, y}, 6, kStationColour);
}

void DrawFixes(const Navigation& navigation, SvgPicture& picture) {
  for (const TrackState& state : navigation.states) {
    if (!state.IsFix()) continue;
    picture.Dot({state.fixX, state.fixY}, state.refused ? kRefusedRadius : kFixRadius, state.refused ? kRefusedColour : kFixColour);
  }
}

void DrawLegend(const Navigation& navigation, double scale, SvgPicture& picture) {
  picture.Legend("filtered track, interrupted at gaps", kTrack);
  picture.LegendDot("fixes as they came", kFixRadius, kFixColour);
  const bool refused =
      std::any_of(navigation.states.begin(), navigation.states.end(), [](const TrackState& state) { return state.refused; });
  if (refused) picture.LegendDot("fixes refused by the gate", kRefusedRadius, kRefusedColour);
  char text[80];
  std::snprintf(text, sizeof text, "standard error ellipses, %.0f times their size", scale);
  picture.Legend(scale > 1 ? text : "standard error ellipses", kEllipseInk);
  if (!navigation.reductions.empty()) picture.Legend("lines of position, from their stations", kLineOfPosition);
}

SvgPicture Draw(const Navigation& navigation, const std::string& file) {
  SvgPicture picture(std::filesystem::path(file).filename().string() + " through the navigation filter");
  DrawStations(navigation, picture);
  DrawFixes(navigation, picture);
  const double scale = EllipseScale(navigation, picture.Extent());
  DrawEllipses(navigation, scale, picture);
  for (const Places& piece : PiecesOf(navigation)) picture.Line(piece, kTrack);
  DrawLegend(navigation, scale, picture);
  return picture;
}

// ---- command ----

int Track(const Arguments& arguments) {
  TrackFile file;
  std::string reason;
  if (!file.Open(arguments.file, reason)) return Fail(reason);
  Navigation navigation;
  navigation.Run(file, arguments.options);
  if (!navigation.states.empty()) PrintStates(navigation, arguments.fixesOnly);
  for (const Reduction& reduction : navigation.reductions) PrintReduction(reduction);
  if (!navigation.states.empty()) PrintSummary(navigation);
  std::fflush(stdout);
  for (const std::string& fault : navigation.faults) Fail(arguments.file + ", " + fault);
  if (navigation.states.empty()) return Fail("\"" + arguments.file + "\" gives no position");
  const int exitCode = FinishPicture(Draw(navigation, arguments.file), arguments.picture, arguments.file, "-track");
  return navigation.faults.empty() ? exitCode : kFoundWrong;
}

}  // namespace

void AddTrackCommand(CLI::App& program, int& exitCode) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* const app = program.add_subcommand("track", "Fixes, velocities and lines of position through the navigation filter");
  NavigationOptions& options = arguments->options;
  app->add_option("FILE", arguments->file, "Observations by time: fix, velocity, range, bearing")->required();
  app->add_option("--dynamics", options.dynamics, "How steady the vessel is, 1 (lively) to 5 (steady)")
      ->check(CLI::Range(1, 5))
      ->capture_default_str();
  app->add_option("--gate", options.gate, "Leave out a fix that is further than this from its prediction, in metres")
      ->check(CLI::PositiveNumber);
  app->add_option("--gap", options.gap, "Seconds without an observation that part the track")
      ->check(CLI::PositiveNumber)
      ->capture_default_str();
  app->add_option("--heading-offset", options.headingOffset, "The velocity sensor's, degrees, to begin with");
  app->add_option("--scale-error", options.scaleError, "The velocity sensor's, parts per thousand, to begin with");
  app->add_flag("--uncorrected{false}", options.correct, "Use velocities as they come, without the calibration");
  app->add_flag("--fixes", arguments->fixesOnly, "Only fixes in the table");
  app->add_option("-o,--output", arguments->picture, "SVG picture to write; by default in the current folder");
  app->footer(
      "A line of FILE is one of\n"
      "  fix TIME X Y SIGMA [SIGMA_Y [CORRELATION]]\n"
      "  velocity TIME VX VY\n"
      "  range TIME STATION_X STATION_Y METRES SIGMA [CORRECTION]\n"
      "  bearing TIME STATION_X STATION_Y DEGREES SIGMA_DEGREES [CORRECTION]\n"
      "  near X Y\n"
      "Seconds, metres, metres a second; x to the east, y to the north. Ranges and bearings of one time make one fix.\n\n"
      "Example:\n  zel track samples/track/harbour.txt --gate 15 --fixes\n\n"
      "Exit code: 0, or 1 when an observation could not be used.\n");
  app->callback([arguments, &exitCode] { exitCode = Track(*arguments); });
}

}  // namespace zel
