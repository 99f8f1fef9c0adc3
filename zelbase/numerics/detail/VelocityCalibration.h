// What the velocity sensor is off by: the distance and bearing made good between two fixes against those of the integrated
// velocity. Neighbour: KalmanFilter.h, whose fixes and velocities feed it and which says the rule from a caller's side.
#pragma once

namespace zelbase::detail {

// Goes by these states; every velocity is one step:
//
//   state         step                                                               next
//   Idle          the last fix is at most 5 s old: start at it                       Integrating
//                 otherwise nothing                                                  Idle
//   Integrating   a gap of more than 5 s, to the last fix or the last velocity       Idle
//                 integrate; up to 60 s since the start                              Integrating
//                 integrate; more than 60 s since the start                          Closing
//   Closing       integrate up to the last fix, compare, take a tenth over           Idle
//
// A value; one thread at a time. Times in seconds, metres, metres a second, degrees clockwise from north.
class VelocityCalibration {
 public:
  // Idle again, with the start at the origin; the calibration values and the last fix stay.
  void Restart();

  void TakeFix(double time, double x, double y);
  void TakeVelocity(double time, double vx, double vy);

  // Degrees; parts per thousand.
  double HeadingOffset() const { return m_headingOffset; }
  double ScaleError() const { return m_scaleError; }
  void SetValues(double headingOffset, double scaleError);

 private:
  enum class State : int { Idle, Integrating, Closing };

  struct Timed {
    double time = 0.0;
    double x = 0.0;
    double y = 0.0;
  };

  void Start(double vx, double vy);
  void Continue(double time, double vx, double vy);
  void Close(double vx, double vy);
  void Compare();
  void Reset();
  void Integrate(double seconds, double vx, double vy);

  State m_state = State::Idle;
  Timed m_lastFix;
  Timed m_start;
  Timed m_lastVelocity;
  double m_integratedX = 0.0;
  double m_integratedY = 0.0;
  double m_headingOffset = 0.0;
  double m_scaleError = 0.0;
};

}  // namespace zelbase::detail
