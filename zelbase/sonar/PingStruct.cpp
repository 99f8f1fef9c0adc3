#include "zelbase/sonar/PingStruct.h"

#include "zelbase/sonar/detail/NadirSearch.h"

#define ZELBASE_PING_COPY_SCALAR(type, name, value) name = other.name;
#define ZELBASE_PING_COPY_ARRAY(type, name) name = other.name;

PingStruct& PingStruct::operator=(const PingStruct& other) {
  ZELBASE_PING_SCALARS(ZELBASE_PING_COPY_SCALAR)
  ZELBASE_PING_ARRAYS(ZELBASE_PING_COPY_ARRAY, ZELBASE_PING_COPY_ARRAY, ZELBASE_PING_COPY_ARRAY)
  return *this;
}

void PingStruct::Init() { PingStruct::operator=(PingStruct()); }

int PingStruct::CompNadirBeam() { return zelbase::detail::NadirSearch<PingStruct>(*this).Run(); }

double PingStruct::CompNadirDepth() {
  CompNadirBeam();
  return nadirDepth;
}

float PingStruct::Nadir3D(int beam) const { return zelbase::detail::AngleOffVertical(beamX[beam], beamY[beam], beamZ[beam]); }
