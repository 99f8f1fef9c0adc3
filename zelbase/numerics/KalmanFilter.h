// The position filter of the navigation: fixes and velocities in, a smoothed position with its covariance out, and the
// errors of the velocity sensor beside it. Neighbours: LopStruct.h for the lines of position that ReduceLops makes a fix
// of.
#pragma once

#include <memory>

#include "zelbase/numerics/LopStruct.h"
#include "zelbase/platform/ZelBaseApi.h"

// A plane state of four elements, x and y in metres (east and north), vx and vy in metres a second, and three things done
// with it:
//
//   UpdatePosition   a Kalman filter of constant velocity, driven by position fixes. Every fix is taken, there is no gate:
//                    a caller who doubts a fix compares it with PredictState first.
//   UpdateVelocity   dead reckoning by measured velocities. It also compares them with the fixes and estimates the sensor's
//                    heading offset and scale error; it does not apply them.
//   ReduceLops       up to eight lines of position reduced to one fix, by least squares. It needs and changes no state.
//
// Times are seconds on any continuous clock of the caller. Angles are degrees, clockwise from north. Variances are square
// metres. Whatever a function takes by reference it reads first and writes last, so arguments may be the same variable.
//
// Failure is a status and nothing else:
//
//   0   done
//   1   fewer than two usable lines of position, or no array
//   2   the reduction did not converge
//   3   a line of position contradicts the estimate by more than 10000 metres
//   4   time ran backwards
//
// A matrix that cannot be inverted is no failure: "Singular KmMatrix in routine LUDCMP" goes to standard output once for each
// of its rows that holds nothing but zeros and not-a-numbers, and the filter carries on with numbers without meaning.
// Not-a-numbers and infinities go through the formulas, and what they reach stays so, beyond Initialize as well, which does
// not set all of the covariance: begin again with a new filter. A time that is not a number passes for one that does not run backwards.
//
// Which covariance is given where is deliberate, and callers rely on it:
//
//   call               x, y, vx, vy                       varX, varY, covXY
//   UpdatePosition     the updated state                  of this update
//   UpdateVelocity     the dead-reckoned x, y             dead-reckoned with them
//   PredictState       predicted for the time asked       of the last UpdatePosition
//   GetStateVector     what was predicted last            of the last UpdatePosition
//
// A copy is deep: both filters go their own way. There is no cheaper move, so that no filter is ever without its state. One
// thread at a time for each filter. Nothing is allocated but by construction and copying.
//
//   KalmanFilter filter;
//   int status = 0;
//   filter.Initialize(0.0, 1000.0, 2000.0, 0.0, 0.0, 25.0, 25.0, 0.0, 0.0, 0.0, 3, status);
//   double x = 1002.0, y = 2001.0, vx, vy, varX = 4.0, varY = 4.0, covXY = 0.0;
//   filter.UpdatePosition(1.0, x, y, vx, vy, varX, varY, covXY, status);   // x, y and the rest are now the filtered ones
class ZELBASE_API KalmanFilter {
 public:
  static constexpr int kSuccess = 0;
  static constexpr int kTooFewLops = 1;
  static constexpr int kNoConvergence = 2;
  static constexpr int kMisclosureTooLarge = 3;
  static constexpr int kTimeRanBackwards = 4;

  // The lines of position that ReduceLops takes.
  static constexpr int kLopCount = 8;

  // All zero, for the liveliest vessel. Initialize is expected before the first update; nothing enforces it.
  KalmanFilter();
  ~KalmanFilter();
  KalmanFilter(const KalmanFilter& other);
  KalmanFilter& operator=(const KalmanFilter& other);

  // --- Setting up ---

  // Sets time, position, velocity and the covariance of the position, the dynamics (as SetFilterDynamics) and the
  // calibration values, and gives a running calibration up. Kept as they were, and relied on so: the covariance of the
  // velocity, what GetStateVector gives, and the last fix: a filter that never had one holds the fix (0, 0) at time 0.
  // `status` is not written.
  void Initialize(double time, double x, double y, double vx, double vy, double varX, double varY, double covXY, double headingOffset,
                  double scaleError, int dynamics, int& status);

  // How steady the vessel is, 1 (lively) to 5 (steady); values outside are taken as the nearer end. It chooses how much
  // the velocity may have changed between two fixes.
  void SetFilterDynamics(int dynamics);

  // --- Calibration of the velocity sensor ---

  // The heading offset in degrees and the scale error in parts per thousand, as they stand. The caller corrects the sensor
  // by them.
  void GetCalibrationValues(double& headingOffset, double& scaleError) const;
  void SetCalibrationValues(double headingOffset, double scaleError);

  // --- State ---

  // The filter's time, the state predicted last, and the covariance of the last position update. So it is all zero after
  // Initialize alone but for the time; after UpdatePosition the prediction made just before the fix; after UpdateVelocity
  // the dead-reckoned position; after PredictState what that gave, with the filter's time.
  void GetStateVector(double& time, double& x, double& y, double& vx, double& vy, double& varX, double& varY, double& covXY) const;

  // The state at `time`, which must not lie before the filter's. All but `time` is output; the covariance is that of the
  // last position update, not one predicted for `time`. Time, state and covariance of the filter stay, so a prediction can
  // be repeated for any later time. Status 0 or 4; with 4 nothing else is written.
  void PredictState(double time, double& x, double& y, double& vx, double& vy, double& varX, double& varY, double& covXY, int& status);

  // Takes a fix: `x`, `y` and their covariance are input and output, `vx` and `vy` output. A fix at the filter's own time
  // is merged with the state as it stands. Status 0 or 4; with 4 nothing else is written, and the fix is not remembered.
  void UpdatePosition(double time, double& x, double& y, double& vx, double& vy, double& varX, double& varY, double& covXY, int& status);

  // Takes a velocity: `vx`, `vy` are input and stay, the rest is output. The velocity replaces that of the state, and the
  // position moves on by it; its variances grow by (5 % of the speed times the time step) squared. Status 0 or 4; with 4
  // nothing else is written.
  //
  // Calibration goes by these calls. A velocity at most 5 s after the last fix starts it there; from then on velocities are
  // integrated, as long as no two of them, and no velocity and the fix before it, are more than 5 s apart. When more than
  // 60 s have passed, the next velocity closes the window at the last fix and compares what the fixes made good (bearing,
  // distance) with the integral: a tenth of the difference goes into the calibration values. The difference is limited to
  // 10 degrees and 200 parts per thousand, the values likewise. A run that made good less than 6 metres changes nothing.
  void UpdateVelocity(double time, double& x, double& y, double& vx, double& vy, double& varX, double& varY, double& covXY, int& status);

  // Gives status 0 and does nothing else.
  void UpdatePositionVelocity(double time, double& x, double& y, double& vx, double& vy, double& varX, double& varY, double& covXY,
                              int& status);

  // --- Lines of position ---

  // Reduces lines of position to a fix; `lops` points to kLopCount of them, of which those in use take part. `x`, `y` are
  // input, the estimate to begin with, and output with `varX`, `varY`, `covXY`; `sigma` is the weighted sum of the squared
  // residuals, `count` the number of entries that took part. `time` is not read. Each entry of `lops` gets its residual and
  // azimuth (LopStruct.h).
  //
  // At most five corrections are applied, until one is within 0.1 m in both axes: a sixth solution ends it with status 2,
  // however small. The misclosure of a range is metres, that of a bearing the offset across it: the bearings are subtracted
  // as they stand, so that 359.99 against 0 is 359.99 degrees, which is 6.28 times the distance. Status 0 to 3. With 1, 2
  // and 3 nothing is written but the status, residuals of 0 and the azimuths of the last pass; without an array the status
  // alone.
  void ReduceLops(double time, LopStruct* lops, double& x, double& y, double& varX, double& varY, double& covXY, double& sigma, int& count,
                  int& status) const;

  // The standard ellipse of a covariance: half its axes in metres, and the direction of the larger one, degrees, [0, 180].
  // Variances that are equal within 0.001 give 45 or 135. A covariance that is none (negative, not a number) gives
  // not-a-numbers.
  static void ComputeEllipse(double varX, double varY, double covXY, double& semiMajor, double& semiMinor, double& orientation);

 private:
  struct State;
  std::unique_ptr<State> m_state;
};
