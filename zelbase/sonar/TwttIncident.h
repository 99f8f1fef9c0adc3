// Where one beam of a sonar went: how long its sound travelled and under which angle it left. Neighbours: SonarImage.h and
// WaterColumnProjection.h, the other records that sonar modules hand to each other; Multibeam.h for the flags of a beam.
#pragma once

#include <type_traits>

#include "zelbase/platform/ZelBaseApi.h"

// A plain value. Units are those of the module that fills it in.
struct ZELBASE_API TwttIncident {
  constexpr TwttIncident() = default;
  constexpr TwttIncident(double twoWayTravelTime, double incidenceAngle) : twtt(twoWayTravelTime), incident(incidenceAngle) {}

  double twtt = 0.0;      // two-way travel time
  double incident = 0.0;  // incidence angle
};

static_assert(sizeof(TwttIncident) == 16 && std::is_trivially_copyable_v<TwttIncident>);
