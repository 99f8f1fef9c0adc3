#include "zelbase/numerics/detail/VelocityCalibration.h"

#include <algorithm>
#include <cmath>

#include "zelbase/numerics/detail/PlaneBearing.h"

namespace zelbase::detail {

namespace {

constexpr double kWindow = 60.0;       // seconds
constexpr double kLongestGap = 5.0;    // seconds
constexpr double kSlowest = 0.1;       // metres a second, made good
constexpr double kMostHeading = 10.0;  // degrees
constexpr double kMostScale = 200.0;   // parts per thousand

// NaN stays.
double Limited(double value, double most) { return std::clamp(value, -most, most); }

double Length(double x, double y) { return std::sqrt(x * x + y * y); }

// One tenth of the measured error on top of the running value.
double Smoothed(double value, double measured) { return 0.9 * value + 0.1 * (measured + value); }

}  // namespace

void VelocityCalibration::Restart() {
  Reset();
  m_start.x = 0.0;
  m_start.y = 0.0;
}

void VelocityCalibration::SetValues(double headingOffset, double scaleError) {
  m_headingOffset = headingOffset;
  m_scaleError = scaleError;
}

void VelocityCalibration::TakeFix(double time, double x, double y) { m_lastFix = {time, x, y}; }

void VelocityCalibration::TakeVelocity(double time, double vx, double vy) {
  switch (m_state) {
    case State::Idle:
      if (time - m_lastFix.time <= kLongestGap) Start(vx, vy);
      return;
    case State::Integrating: Continue(time, vx, vy); return;
    case State::Closing: Close(vx, vy); return;
  }
}

void VelocityCalibration::Start(double vx, double vy) {
  m_integratedX = 0.0;
  m_integratedY = 0.0;
  m_start = m_lastFix;
  // Kept: at the fix's time, not at this velocity's, so that the first step is a trapezoid from the fix on.
  m_lastVelocity = {m_start.time, vx, vy};
  m_state = State::Integrating;
}

void VelocityCalibration::Continue(double time, double vx, double vy) {
  const double seconds = time - std::max(m_start.time, m_lastVelocity.time);
  if (seconds > kLongestGap || time - m_lastFix.time > kLongestGap) {
    Reset();
    return;
  }
  Integrate(seconds, vx, vy);
  m_lastVelocity = {time, vx, vy};
  if (m_lastVelocity.time - m_start.time > kWindow) m_state = State::Closing;
}

void VelocityCalibration::Close(double vx, double vy) {
  // Kept: from the last velocity to the last fix, whatever the time of this velocity; no gap ends the run here.
  const double seconds = m_lastFix.time - m_lastVelocity.time;
  Integrate(seconds < 0.0 ? 0.0 : seconds, vx, vy);
  Compare();
  Reset();
}

void VelocityCalibration::Compare() {
  const double madeGoodX = m_lastFix.x - m_start.x;
  const double madeGoodY = m_lastFix.y - m_start.y;
  const double madeGood = Length(madeGoodX, madeGoodY);
  // Kept: divided by the window, not by the time that passed.
  if (madeGood / kWindow < kSlowest) return;

  double integratedBearing = PlaneBearing(m_integratedX, m_integratedY);
  double madeGoodBearing = PlaneBearing(madeGoodX, madeGoodY);
  if (madeGoodBearing - integratedBearing > 180.0) integratedBearing += 360.0;
  if (madeGoodBearing - integratedBearing < -180.0) madeGoodBearing += 360.0;
  const double heading = Limited(madeGoodBearing - integratedBearing, kMostHeading);
  // An integral of 0 gives an infinity here, and so the limit.
  const double ratio = madeGood / Length(m_integratedX, m_integratedY);
  const double scale = Limited((ratio - 1.0) * 1000.0, kMostScale);
  m_headingOffset = Limited(Smoothed(m_headingOffset, heading), kMostHeading);
  m_scaleError = Limited(Smoothed(m_scaleError, scale), kMostScale);
}

void VelocityCalibration::Reset() {
  m_integratedX = 0.0;
  m_integratedY = 0.0;
  m_state = State::Idle;
}

// The area of a trapezoid between the last velocity and this one.
void VelocityCalibration::Integrate(double seconds, double vx, double vy) {
  m_integratedX += 0.5 * (m_lastVelocity.x + vx) * seconds;
  m_integratedY += seconds * ((m_lastVelocity.y + vy) * 0.5);
}

}  // namespace zelbase::detail
