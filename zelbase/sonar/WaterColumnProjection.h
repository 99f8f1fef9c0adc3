// One entry of a swath's water column. Neighbours: SonarImage.h and TwttIncident.h, the other records that sonar modules
// hand to each other; geometry/Sway.h, which holds a list of them.
#pragma once

#include <type_traits>

#include "zelbase/platform/ZelBaseApi.h"

// A plain value, filled and read by the sonar modules: this library stores and copies it. The fields are named by their
// place; their order and widths are what the modules agree on.
struct ZELBASE_API WaterColumnProjection {
  unsigned int word0 = 0;
  unsigned int word1 = 0;
  unsigned int word2 = 0;
  unsigned int word3 = 0;
  unsigned int word4 = 0;
  unsigned int word5 = 0;
  unsigned int word6 = 0;
  double double0 = 0.0;
};

static_assert(sizeof(WaterColumnProjection) == 40 && std::is_trivially_copyable_v<WaterColumnProjection>);
