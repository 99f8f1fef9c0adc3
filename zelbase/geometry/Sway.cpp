#include "zelbase/geometry/Sway.h"

void Sway::Clear() {
  incidents0.clear();
  projections0.clear();
  points0.clear();
  floats0.clear();
  floats1.clear();
  floats2.clear();
  floats3.clear();
  image = SonarImage();
  ShallowCopy(Sway());
}

void Sway::ShallowCopy(const Sway& other) {
  point0 = other.point0;
  double0 = other.double0;
  double1 = other.double1;
  double2 = other.double2;
  point1 = other.point1;
  double3 = other.double3;
  float0 = other.float0;
  float1 = other.float1;
  float2 = other.float2;
  float3 = other.float3;
  double4 = other.double4;
  double5 = other.double5;
  double6 = other.double6;
  word0 = other.word0;
  word1 = other.word1;
  count0 = other.count0;
  float4 = other.float4;
}
