#include "Navigation.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "zelbase/geometry/MathConstants.h"

namespace zel {
namespace {

constexpr const char* kBackwards = "time runs backwards";
constexpr double kUnknownVariance = 1e6;  // metres squared, of the position before the first fix

// A velocity as the sensor would give it without its heading offset and scale error.
void Correct(double headingOffset, double scaleError, double& vx, double& vy) {
  const double turn = headingOffset * MATH::DTR, scale = 1.0 + scaleError / 1000.0;
  const double east = (vx * std::cos(turn) + vy * std::sin(turn)) * scale;
  vy = (vy * std::cos(turn) - vx * std::sin(turn)) * scale;
  vx = east;
}

std::string NameOf(Observation::Kind kind) {
  if (kind == Observation::Kind::Fix) return "fix";
  return kind == Observation::Kind::Velocity ? "velocity" : "lines of position";
}

}  // namespace

void Navigation::Run(const TrackFile& file, const NavigationOptions& options) {
  m_options = options;
  m_filter.SetCalibrationValues(options.headingOffset, options.scaleError);
  for (const Observation& observation : file.observations) {
    switch (observation.kind) {
      case Observation::Kind::Fix: TakeFix(observation); break;
      case Observation::Kind::Velocity: TakeVelocity(observation); break;
      case Observation::Kind::Lines: TakeLines(file, observation); break;
    }
  }
}

// The filter begins at the first fix with a position that is as good as unknown, so that the fix decides.
void Navigation::Start(const Observation& fix) {
  int status = 0;
  m_filter.Initialize(fix.time, fix.x, fix.y, 0.0, 0.0, kUnknownVariance, kUnknownVariance, 0.0, m_options.headingOffset,
                      m_options.scaleError, m_options.dynamics, status);
  m_started = true;
}

bool Navigation::Predict(double time, TrackState& state) {
  int status = 0;
  m_filter.PredictState(time, state.x, state.y, state.vx, state.vy, state.varX, state.varY, state.covXY, status);
  return status == KalmanFilter::kSuccess;
}

void Navigation::Refuse(const Observation& observation, const std::string& why) {
  faults.push_back("line " + std::to_string(observation.lineNumber) + ": " + NameOf(observation.kind) + " not used: " + why);
}

TrackState& Navigation::Append(const Observation& observation) {
  const bool afterGap = !states.empty() && observation.time - states.back().time > m_options.gap;
  TrackState& state = states.emplace_back();
  state.kind = observation.kind;
  state.time = observation.time;
  state.afterGap = afterGap;
  return state;
}

void Navigation::TakeFix(const Observation& fix) {
  const bool first = !m_started;
  if (first) Start(fix);
  TrackState predicted;
  if (!Predict(fix.time, predicted)) return Refuse(fix, kBackwards);
  TrackState& state = Append(fix);
  state.fixX = fix.x;
  state.fixY = fix.y;
  if (!first) state.off = std::hypot(fix.x - predicted.x, fix.y - predicted.y);
  state.refused = m_options.gate > 0 && state.off > m_options.gate;
  state.x = state.refused ? predicted.x : fix.x;
  state.y = state.refused ? predicted.y : fix.y;
  state.vx = predicted.vx;
  state.vy = predicted.vy;
  state.varX = state.refused ? predicted.varX : fix.varX;
  state.varY = state.refused ? predicted.varY : fix.varY;
  state.covXY = state.refused ? predicted.covXY : fix.covXY;
  if (state.refused) return;
  int status = 0;
  m_filter.UpdatePosition(fix.time, state.x, state.y, state.vx, state.vy, state.varX, state.varY, state.covXY, status);
}

void Navigation::TakeVelocity(const Observation& velocity) {
  if (!m_started) return Refuse(velocity, "there is no position yet");
  double headingOffset = 0.0, scaleError = 0.0, vx = velocity.x, vy = velocity.y;
  m_filter.GetCalibrationValues(headingOffset, scaleError);
  if (m_options.correct) Correct(headingOffset, scaleError, vx, vy);
  TrackState state;
  int status = 0;
  m_filter.UpdateVelocity(velocity.time, state.x, state.y, vx, vy, state.varX, state.varY, state.covXY, status);
  if (status == KalmanFilter::kTimeRanBackwards) return Refuse(velocity, kBackwards);
  TrackState& kept = Append(velocity);
  state.kind = kept.kind;
  state.time = kept.time;
  state.afterGap = kept.afterGap;
  state.vx = vx;
  state.vy = vy;
  kept = state;
  NoteCalibration(velocity.time);
}

Calibration Navigation::LastCalibration() const {
  return calibrations.empty() ? Calibration{0.0, m_options.headingOffset, m_options.scaleError} : calibrations.back();
}

void Navigation::NoteCalibration(double time) {
  Calibration now{time, 0.0, 0.0};
  m_filter.GetCalibrationValues(now.headingOffset, now.scaleError);
  const Calibration before = LastCalibration();
  if (now.headingOffset != before.headingOffset || now.scaleError != before.scaleError) calibrations.push_back(now);
}

// Where the search for the fix of a set begins.
bool Navigation::Estimate(const TrackFile& file, const Observation& set, double& x, double& y) {
  if (m_started) {
    TrackState predicted;
    const bool done = Predict(set.time, predicted);
    x = predicted.x;
    y = predicted.y;
    return done;
  }
  x = file.nearX;
  y = file.nearY;
  if (file.hasNear) return true;
  for (const LopStruct& line : set.lines) {
    x += line.x / static_cast<double>(set.lines.size());
    y += line.y / static_cast<double>(set.lines.size());
  }
  return true;
}

void Navigation::TakeLines(const TrackFile& file, const Observation& set) {
  Reduction reduction;
  reduction.set = set;
  Observation& fix = reduction.set;
  if (!Estimate(file, set, fix.x, fix.y)) return Refuse(set, kBackwards);
  std::array<LopStruct, KalmanFilter::kLopCount> lines{};
  std::copy(set.lines.begin(), set.lines.end(), lines.begin());
  m_filter.ReduceLops(fix.time, lines.data(), fix.x, fix.y, fix.varX, fix.varY, fix.covXY, reduction.sigma, reduction.count,
                      reduction.status);
  std::copy_n(lines.begin(), fix.lines.size(), fix.lines.begin());
  reductions.push_back(reduction);
  if (reduction.status != KalmanFilter::kSuccess) return Refuse(set, StatusText(reduction.status));
  TakeFix(fix);
}

Ellipse EllipseOf(const TrackState& state) {
  Ellipse ellipse;
  KalmanFilter::ComputeEllipse(state.varX, state.varY, state.covXY, ellipse.semiMajor, ellipse.semiMinor, ellipse.orientation);
  return ellipse;
}

std::string StatusText(int status) {
  switch (status) {
    case KalmanFilter::kSuccess: return "reduced";
    case KalmanFilter::kTooFewLops: return "fewer than two lines of position";
    case KalmanFilter::kNoConvergence: return "the lines do not converge to a position";
    case KalmanFilter::kMisclosureTooLarge: return "a line misses the position by more than 10 km";
    default: return "status " + std::to_string(status);
  }
}

}  // namespace zel
