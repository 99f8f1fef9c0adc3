// Small grids of separations as files, for the tests of geoid models: here and in tests/apps.
#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <vector>

// Big-endian bytes of a value, as the form has them.
template <class Bits>
std::string BigEndian(Bits bits) {
  std::string bytes;
  for (int shift = static_cast<int>(sizeof bits) * 8 - 8; shift >= 0; shift -= 8) bytes += static_cast<char>((bits >> shift) & 0xFF);
  return bytes;
}

// A .gtx file: the south-west corner and the steps in degrees, the number of rows and columns, and the values in metres row by row from
// the south, each row from the west.
struct GtxGrid {
  double south = 50.0, west = 2.0;
  double latitudeStep = 0.5, longitudeStep = 1.0;
  int rows = 3, columns = 4;
  std::vector<float> values = {40.0F, 41.5F, 43.0F, 42.0F, 44.25F, 45.0F, 46.0F, 47.5F, -3.0F, 0.0F, 12.0F, 20.5F};

  float At(int row, int column) const { return values[static_cast<std::size_t>(row * columns + column)]; }

  std::string Bytes() const {
    std::string bytes;
    for (const double number : {south, west, latitudeStep, longitudeStep}) bytes += BigEndian(std::bit_cast<std::uint64_t>(number));
    for (const int number : {rows, columns}) bytes += BigEndian(static_cast<std::uint32_t>(number));
    for (const float number : values) bytes += BigEndian(std::bit_cast<std::uint32_t>(number));
    return bytes;
  }
};
