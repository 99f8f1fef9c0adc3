// Units: a chosen unit for each kind of quantity, a depth shown in it and read back, and a coordinate as
// text.
#include <cstdio>
#include <string>

#include "zelbase/frame/GeographicText.h"
#include "zelbase/units/CZelUnitCnv.h"

int main() {
  CZelUnitCnv units;
  units.SetUnit(CZelUnitCnv::Depth, 0.3048, 0.0, "ft", "Foot", "International foot");
  const double shown = units.ConvertUnit(CZelUnitCnv::Depth, 3.048);
  std::printf("3.048 m are %.1f %s\n", shown, units.GetUnitMnem(CZelUnitCnv::Depth).c_str());
  std::printf("and back %.3f m\n", units.ConvertFromUnit(CZelUnitCnv::Depth, shown));

  constexpr unsigned int kDegreesAndMinutes = 3;
  constexpr int kLatitude = 10;
  std::string text;
  FormatGeogs(52.5125, kDegreesAndMinutes, 2, kLatitude, text, true, false);
  std::printf("%s\n", text.c_str());
  double latitude = 0.0;
  StringToGeo("52 30 45 N", latitude);
  std::printf("%.4f\n", latitude);
  return 0;
}

// Prints:
//   3.048 m are 10.0 ft
//   and back 3.048 m
//   052 30.75 N
//   52.5125
