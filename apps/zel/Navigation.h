// A track file led through the navigation filter: every observation becomes a state of the vessel.
#pragma once

#include <string>
#include <vector>

#include "TrackFile.h"
#include "zelbase/numerics/KalmanFilter.h"

namespace zel {

struct NavigationOptions {
  int dynamics = 3;            // 1 lively to 5 steady
  double gate = 0.0;           // metres; a fix further from its prediction is left out. 0: none is
  double gap = 10.0;           // seconds without an observation that begin a new piece of track
  double headingOffset = 0.0;  // the velocity sensor's, degrees, to begin with
  double scaleError = 0.0;     // parts per thousand
  bool correct = true;         // velocities are corrected by the calibration before use
};

// The vessel behind one observation.
struct TrackState {
  Observation::Kind kind = Observation::Kind::Fix;
  double time = 0.0;
  double x = 0.0, y = 0.0, vx = 0.0, vy = 0.0;
  double varX = 0.0, varY = 0.0, covXY = 0.0;
  double fixX = 0.0, fixY = 0.0;  // the fix as it came; of lines of position, as reduced
  double off = 0.0;               // of a fix from its prediction, metres; 0 for the first
  bool afterGap = false;
  bool refused = false;  // by the gate: the state is the prediction

  bool IsFix() const { return kind != Observation::Kind::Velocity; }
};

// The reduction of one set of lines of position.
struct Reduction {
  Observation set;  // with the fix that came out, and each line's residual and azimuth
  double sigma = 0.0;
  int count = 0;
  int status = 0;
};

// A change of the velocity sensor's calibration.
struct Calibration {
  double time = 0.0, headingOffset = 0.0, scaleError = 0.0;
};

struct Navigation {
  std::vector<TrackState> states;
  std::vector<Reduction> reductions;
  std::vector<Calibration> calibrations;
  std::vector<std::string> faults;  // what could not be used, as a person reads it

  void Run(const TrackFile& file, const NavigationOptions& options);

  // As it stands behind the last observation.
  Calibration LastCalibration() const;

 private:
  void TakeFix(const Observation& fix);
  void TakeVelocity(const Observation& velocity);
  void TakeLines(const TrackFile& file, const Observation& set);
  bool Estimate(const TrackFile& file, const Observation& set, double& x, double& y);
  void Start(const Observation& fix);
  bool Predict(double time, TrackState& state);
  void Refuse(const Observation& observation, const std::string& why);
  TrackState& Append(const Observation& observation);
  void NoteCalibration(double time);

  KalmanFilter m_filter;
  NavigationOptions m_options;
  bool m_started = false;
};

// The error ellipse of a state: half axes in metres, direction of the major one in degrees from north.
struct Ellipse {
  double semiMajor = 0.0, semiMinor = 0.0, orientation = 0.0;
};
Ellipse EllipseOf(const TrackState& state);

// What a reduction's status says.
std::string StatusText(int status);

}  // namespace zel
