#include "zelbase/numerics/KalmanFilter.h"

#include <algorithm>

#include "zelbase/numerics/detail/PositionUpdate.h"
#include "zelbase/numerics/detail/VelocityCalibration.h"

using zelbase::detail::FilterState;
using zelbase::detail::PredictedState;
using zelbase::detail::PrintSingular;
using zelbase::detail::StateCovariance;
using zelbase::detail::StateVector;
using zelbase::detail::UpdateByFix;
using zelbase::detail::VelocityCalibration;

namespace {

// Five per cent of the speed, squared: 0.05 * 0.05, with its rounding.
constexpr double kSpeedVariance = 0.0025000000000000005;

// What callers see of a covariance.
struct PositionCovariance {
  double varX = 0.0;
  double varY = 0.0;
  double covXY = 0.0;
};

PositionCovariance PositionPart(const StateCovariance& covariance) { return {covariance[0][0], covariance[1][1], covariance[1][0]}; }

// Hands out a state, with the covariance that is told beside it.
void Give(const StateVector& state, const PositionCovariance& covariance, double& x, double& y, double& vx, double& vy, double& varX,
          double& varY, double& covXY) {
  x = state[0][0];
  y = state[1][0];
  vx = state[2][0];
  vy = state[3][0];
  varX = covariance.varX;
  varY = covariance.varY;
  covXY = covariance.covXY;
}

// 0 to 4; compared before anything is subtracted.
int DynamicsIndex(int dynamics) { return std::clamp(dynamics, 1, zelbase::detail::kDynamicsCount) - 1; }

}  // namespace

// What outlasts a call. Everything else of the formulas is made where it is used, without allocation.
struct KalmanFilter::State {
  int dynamics = 0;  // column of the table
  double time = 0.0;
  FilterState filter;
  PositionCovariance lastUpdate;  // of filter.p as the last position update left it
  VelocityCalibration calibration;
};

KalmanFilter::KalmanFilter() : m_state(std::make_unique<State>()) {}

KalmanFilter::~KalmanFilter() = default;

KalmanFilter::KalmanFilter(const KalmanFilter& other) : m_state(std::make_unique<State>(*other.m_state)) {}

KalmanFilter& KalmanFilter::operator=(const KalmanFilter& other) {
  *m_state = *other.m_state;
  return *this;
}

void KalmanFilter::Initialize(double time, double x, double y, double vx, double vy, double varX, double varY, double covXY,
                              double headingOffset, double scaleError, int dynamics, int& /*status*/) {
  State& s = *m_state;
  s.time = time;
  s.filter.x = {{{x}, {y}, {vx}, {vy}}};
  // Kept: the other elements stay, and so does what the last position update left for GetStateVector.
  s.filter.p[0][0] = varX;
  s.filter.p[0][1] = covXY;
  s.filter.p[1][0] = covXY;
  s.filter.p[1][1] = varY;
  s.dynamics = DynamicsIndex(dynamics);
  s.calibration.SetValues(headingOffset, scaleError);
  // Kept: the last fix stays; a filter whose clock starts near 0 calibrates from the origin without a fix.
  s.calibration.Restart();
}

void KalmanFilter::SetFilterDynamics(int dynamics) { m_state->dynamics = DynamicsIndex(dynamics); }

void KalmanFilter::GetCalibrationValues(double& headingOffset, double& scaleError) const {
  headingOffset = m_state->calibration.HeadingOffset();
  scaleError = m_state->calibration.ScaleError();
}

void KalmanFilter::SetCalibrationValues(double headingOffset, double scaleError) {
  m_state->calibration.SetValues(headingOffset, scaleError);
}

void KalmanFilter::GetStateVector(double& time, double& x, double& y, double& vx, double& vy, double& varX, double& varY,
                                  double& covXY) const {
  const State& s = *m_state;
  // Kept: the state predicted last and the covariance of the last position update, not those that the next step goes by.
  time = s.time;
  Give(s.filter.predicted, s.lastUpdate, x, y, vx, vy, varX, varY, covXY);
}

void KalmanFilter::PredictState(double time, double& x, double& y, double& vx, double& vy, double& varX, double& varY, double& covXY,
                                int& status) {
  State& s = *m_state;
  const double dt = time - s.time;
  if (dt < 0.0) {
    status = kTimeRanBackwards;
    return;
  }
  s.filter.predicted = PredictedState(s.filter.x, dt);
  // Kept: the covariance of the last position update. So none is predicted here; nobody could see it.
  Give(s.filter.predicted, s.lastUpdate, x, y, vx, vy, varX, varY, covXY);
  status = kSuccess;
}

void KalmanFilter::UpdatePosition(double time, double& x, double& y, double& vx, double& vy, double& varX, double& varY, double& covXY,
                                  int& status) {
  State& s = *m_state;
  const double dt = time - s.time;
  if (dt < 0.0) {
    status = kTimeRanBackwards;
    return;
  }
  // Kept: here and not before, so that a refused fix is not remembered.
  s.calibration.TakeFix(time, x, y);
  PrintSingular(UpdateByFix(s.filter, dt, s.dynamics, {x, y, varX, varY, covXY}));
  s.lastUpdate = PositionPart(s.filter.p);
  s.time = time;

  Give(s.filter.x, s.lastUpdate, x, y, vx, vy, varX, varY, covXY);
  status = kSuccess;
}

void KalmanFilter::UpdateVelocity(double time, double& x, double& y, double& vx, double& vy, double& varX, double& varY, double& covXY,
                                  int& status) {
  State& s = *m_state;
  const double dt = time - s.time;
  if (dt < 0.0) {
    status = kTimeRanBackwards;
    return;
  }
  const double measuredX = vx;
  const double measuredY = vy;
  const double speedVariance = (measuredX * measuredX + measuredY * measuredY) * kSpeedVariance;
  s.filter.x[2][0] = measuredX;
  s.filter.x[3][0] = measuredY;
  s.filter.predicted = PredictedState(s.filter.x, dt);
  s.filter.x = s.filter.predicted;
  // Kept: the covariance does not go through the transition; the position's variances grow, and nothing else. What
  // GetStateVector gives of it stays that of the last position update.
  s.filter.p[0][0] += speedVariance * dt * dt;
  s.filter.p[1][1] += speedVariance * dt * dt;
  s.time = time;

  const PositionCovariance covariance = PositionPart(s.filter.p);
  x = s.filter.x[0][0];
  y = s.filter.x[1][0];
  varX = covariance.varX;
  varY = covariance.varY;
  covXY = covariance.covXY;
  status = kSuccess;
  s.calibration.TakeVelocity(time, measuredX, measuredY);
}

void KalmanFilter::UpdatePositionVelocity(double /*time*/, double& /*x*/, double& /*y*/, double& /*vx*/, double& /*vy*/, double& /*varX*/,
                                          double& /*varY*/, double& /*covXY*/, int& status) {
  // Kept: callers that offer both at once get a success and no update.
  status = kSuccess;
}
