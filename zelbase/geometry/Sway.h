// One swath of a multibeam sonar: position and attitude of the ping, the lists of its beams, and its sonar image.
// Neighbours: zelbase/sonar/PingStruct.h, a ping as it was measured; zelbase/sonar/SonarImage.h, TwttIncident.h and
// WaterColumnProjection.h, the records that this one holds.
#pragma once

#include <vector>

#include "zelbase/geometry/FloatPoint.h"
#include "zelbase/geometry/Point.h"
#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/sonar/SonarImage.h"
#include "zelbase/sonar/TwttIncident.h"
#include "zelbase/sonar/WaterColumnProjection.h"

// A container that the sonar modules fill and read; the fields are named by their place, and every one is 0 or empty at
// first. The count is theirs as well: it says nothing about the length of a list.
//
// Copies are independent. A swath travels between threads by being handed over; it has no lock.
class ZELBASE_API Sway {
 public:
  Sway() = default;
  Sway(const Sway& other) = default;
  Sway& operator=(const Sway& other) = default;
  virtual ~Sway() = default;

  // All as new. The lists keep their memory for the next swath.
  void Clear();

  // Takes the single numbers and points, the count among them; the lists and the image stay.
  void ShallowCopy(const Sway& other);

  std::vector<TwttIncident> incidents0;
  std::vector<WaterColumnProjection> projections0;
  std::vector<FloatPoint> points0;

  Point point0;
  double double0 = 0.0;
  double double1 = 0.0;
  double double2 = 0.0;
  Point point1;
  double double3 = 0.0;
  float float0 = 0.0f;
  float float1 = 0.0f;
  float float2 = 0.0f;
  float float3 = 0.0f;
  double double4 = 0.0;
  double double5 = 0.0;
  double double6 = 0.0;
  unsigned int word0 = 0;
  unsigned int word1 = 0;

  std::vector<float> floats0;
  std::vector<float> floats1;
  int count0 = 0;
  float float4 = 0.0f;
  std::vector<float> floats2;
  std::vector<float> floats3;

  SonarImage image;
};
