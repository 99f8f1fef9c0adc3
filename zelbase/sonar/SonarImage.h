// What a swath knows of its sonar image. Neighbours: WaterColumnProjection.h and TwttIncident.h, the other records that sonar
// modules hand to each other; geometry/Sway.h, which holds one.
#pragma once

#include <type_traits>

#include "zelbase/platform/ZelBaseApi.h"

// A plain value, filled and read by the sonar modules: this library stores and copies it. The fields are named by their
// place; their order and widths are what the modules agree on.
struct ZELBASE_API SonarImage {
  unsigned int word0 = 0;
  double double0 = 0.0;
  unsigned int word1 = 0;
  unsigned int word2 = 0;
  unsigned int word3 = 0;
  unsigned int word4 = 0;
  unsigned int word5 = 0;
  unsigned int word6 = 0;
  unsigned int word7 = 0;
  unsigned int word8 = 0;
  double double1 = 0.0;
};

static_assert(sizeof(SonarImage) == 56 && std::is_trivially_copyable_v<SonarImage>);
