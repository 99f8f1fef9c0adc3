#include "zelbase/sonar/PingStruct.h"

#include "zelbase/sonar/detail/NadirSearch.h"

PingStruct& PingStruct::operator=(const PingStruct& other) = default;

void PingStruct::Init() { PingStruct::operator=(PingStruct()); }

int PingStruct::CompNadirBeam() { return zelbase::detail::NadirSearch<PingStruct>(*this).Run(); }

double PingStruct::CompNadirDepth() {
  CompNadirBeam();
  return nadirDepth;
}

float PingStruct::Nadir3D(int beam) const { return zelbase::detail::AngleOffVertical(beamX[beam], beamY[beam], beamZ[beam]); }
