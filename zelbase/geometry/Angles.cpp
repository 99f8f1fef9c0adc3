#include "zelbase/geometry/Angles.h"

#include <cmath>

double TrimAngle(double angle) {
  const double rest = std::fmod(angle, 360.0);
  // Kept: the sum may round up to 360.0 and -0.0 passes; stored bearings were made so.
  return rest < 0 ? rest + 360.0 : rest;
}

double modgeo(double angle) {
  double rest = std::fmod(angle, 360.0);
  // Kept: both ends of the range stay, 180 and -180.
  if (rest > 180.0) rest -= 360.0;
  if (rest < -180.0) rest += 360.0;
  return rest;
}

double InterpolateCircular(double lo, double hi, double a, double b, double t) {
  const double period = hi - lo;
  if (std::fabs(b - a) > period * 0.5) (a < b ? a : b) += period;
  double value = a + (b - a) * t;
  // Kept: one period only, so that t outside 0..1 may leave the range.
  if (value < lo) value += period;
  if (value >= hi) value -= period;
  return value;
}
