// The compass bearing of a vector in the plane, as the position filter takes it. Neighbour: Polar.h of the geometry, which
// snaps short components to 0 and has a factor to degrees of its own.
#pragma once

#include <cmath>

#include "zelbase/geometry/MathConstants.h"

namespace zelbase::detail {

// Degrees clockwise from north: from 0, and below 360 but for the angles that 360 swallows. NaN for NaN.
inline double PlaneBearing(double east, double north) {
  const double degrees = std::atan2(east, north) * MATH::RTD;
  return degrees < 0.0 ? degrees + 360.0 : degrees;
}

}  // namespace zelbase::detail
