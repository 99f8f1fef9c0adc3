// Small grids of separations as files, for the tests of geoid models: here and in tests/apps.
#pragma once

#include <algorithm>
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

template <class Bits>
std::string LittleEndian(Bits bits) {
  std::string bytes = BigEndian(bits);
  std::reverse(bytes.begin(), bytes.end());
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

  // The same grid as a GeoTIFF of one strip, whose rows go from the north and whose values stand for points.
  std::string TiffBytes() const {
    constexpr std::uint32_t kStart = 8, kEntries = 13;
    constexpr std::uint16_t kShort = 3, kLong = 4, kDouble = 12;
    const std::uint16_t keys[] = {1, 1, 0, 3, 1024, 0, 1, 2, 1025, 0, 1, 2, 2048, 0, 1, 4326};
    std::string data, directory = LittleEndian(static_cast<std::uint16_t>(kEntries));
    const std::uint32_t dataStart = kStart + 2 + kEntries * 12 + 4;
    const auto entry = [&](std::uint16_t tag, std::uint16_t type, std::uint32_t count, std::uint32_t value) {
      directory += LittleEndian(tag) + LittleEndian(type) + LittleEndian(count) + LittleEndian(value);
    };
    const auto place = [&] { return dataStart + static_cast<std::uint32_t>(data.size()); };
    const auto width = static_cast<std::uint32_t>(columns), height = static_cast<std::uint32_t>(rows);
    entry(256, kLong, 1, width);
    entry(257, kLong, 1, height);
    entry(258, kShort, 1, 32);
    entry(259, kShort, 1, 1);
    entry(262, kShort, 1, 1);
    entry(273, kLong, 1, place());
    for (int row = rows - 1; row >= 0; --row) {
      for (int column = 0; column < columns; ++column) data += LittleEndian(std::bit_cast<std::uint32_t>(At(row, column)));
    }
    entry(277, kShort, 1, 1);
    entry(278, kLong, 1, height);
    entry(279, kLong, 1, width * height * 4);
    entry(339, kShort, 1, 3);
    entry(33550, kDouble, 3, place());
    for (const double number : {longitudeStep, latitudeStep, 0.0}) data += LittleEndian(std::bit_cast<std::uint64_t>(number));
    entry(33922, kDouble, 6, place());
    for (const double number : {0.0, 0.0, 0.0, west, south + (rows - 1) * latitudeStep, 0.0})
      data += LittleEndian(std::bit_cast<std::uint64_t>(number));
    entry(34735, kShort, 16, place());
    for (const std::uint16_t key : keys) data += LittleEndian(key);
    return std::string("II*\0", 4) + LittleEndian(kStart) + directory + LittleEndian(std::uint32_t{0}) + data;
  }
};
