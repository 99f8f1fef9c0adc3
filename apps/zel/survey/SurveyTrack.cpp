#include "survey/SurveyTrack.h"

#include <algorithm>
#include <cmath>

#include "survey/SurveyFaults.h"
#include "zelbase/geometry/MathConstants.h"

namespace zel {
namespace {

constexpr const char* kContext = "Track";
constexpr double kMostMetres = 1e8;
constexpr double kLyingStill = 0.05;  // metres a second, below which a course says nothing

bool IsUsable(const TrackState& state) {
  const bool near = std::abs(state.x) <= kMostMetres && std::abs(state.y) <= kMostMetres && std::abs(state.vx) <= kMostMetres &&
                    std::abs(state.vy) <= kMostMetres;
  return near && std::isfinite(state.varX) && std::isfinite(state.varY) && std::isfinite(state.covXY);
}

double CourseOf(double vx, double vy) {
  if (std::hypot(vx, vy) < kLyingStill) return 0.0;
  const double course = std::atan2(vx, vy) * MATH::RTD;
  return course < 0.0 ? course + 360.0 : course;
}

TrackPlace PlaceOf(const TrackState& state, double origin) {
  TrackPlace place;
  place.time = origin + state.time * 1000.0;
  place.x = state.x;
  place.y = state.y;
  place.speed = std::hypot(state.vx, state.vy);
  place.course = CourseOf(state.vx, state.vy);
  const Ellipse ellipse = EllipseOf(state);
  place.semiMajor = ellipse.semiMajor;
  place.semiMinor = ellipse.semiMinor;
  place.orientation = ellipse.orientation;
  place.isFix = state.IsFix();
  place.refused = state.refused;
  place.afterGap = state.afterGap;
  return place;
}

void Count(const TrackState& state, SurveyTrack& track) {
  if (state.refused) {
    ++track.refused;
  } else if (state.kind == Observation::Kind::Lines) {
    ++track.linesOfPosition;
  } else {
    ++(state.IsFix() ? track.fixes : track.velocities);
  }
}

void AddPlaces(const Navigation& navigation, double origin, SurveyTrack& track) {
  std::size_t unusable = 0;
  for (const TrackState& state : navigation.states) {
    const TrackPlace place = PlaceOf(state, origin);
    const bool usable = IsUsable(state) && std::isfinite(place.semiMajor) && std::isfinite(place.semiMinor) &&
                        std::isfinite(place.orientation) && std::isfinite(place.time);
    if (!usable) {
      ++unusable;
      continue;
    }
    if (!track.places.empty() && !place.afterGap) {
      track.length += std::hypot(place.x - track.places.back().x, place.y - track.places.back().y);
    }
    track.places.push_back(place);
    Count(state, track);
  }
  if (unusable > 0) ReportFault(kContext, Counted(unusable, "position is", "positions are") + " no place on the grid");
}

void ReportNavigation(const std::string& path, const Navigation& navigation) {
  constexpr std::size_t kShown = LineFaults::kMost;
  const std::size_t faults = navigation.faults.size();
  for (std::size_t i = 0; i < std::min(faults, kShown); ++i) ReportFault(kContext, navigation.faults[i], path);
  if (faults > kShown) {
    ReportFault(kContext, "and " + Counted(faults - kShown, "more observation was", "more observations were") + " not used", path);
  }
}

void SetVessel(const SurveyTrack& track, SurveyVessel& vessel) {
  const TrackPlace& last = track.places.back();
  vessel.known = true;
  vessel.x = last.x;
  vessel.y = last.y;
  vessel.time = last.time;
  vessel.heading = last.course;
}

}  // namespace

void ReadTrack(const std::string& path, double origin, const NavigationOptions& options, Survey& survey) {
  TrackFile file;
  if (!ReadReported(kContext, path, file)) return;
  if (file.observations.empty()) {
    ReportFault(kContext, "the track has no observations", path);
    return;
  }
  Navigation navigation;
  navigation.Run(file, options);
  ReportNavigation(path, navigation);
  SurveyTrack& track = survey.track;
  AddPlaces(navigation, origin, track);
  const Calibration calibration = navigation.LastCalibration();
  track.headingOffset = calibration.headingOffset;
  track.scaleError = calibration.scaleError;
  track.calibrations = static_cast<int>(navigation.calibrations.size());
  track.gate = options.gate;
  if (!track.places.empty()) SetVessel(track, survey.vessel);
}

}  // namespace zel
