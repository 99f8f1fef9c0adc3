// Positions of coordinate systems as "zel geodesy" reads, converts and shows them. Neighbours: GeodesyCommand.cpp; PositionText.h for
// latitudes and longitudes in letters.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "zelbase/geodesy/GeoCoordSys.h"

namespace zel {

// A pair of numbers as it is typed and shown: latitude and longitude in degrees, or easting and northing.
struct Pair {
  double first = 0.0, second = 0.0;
};

bool IsGeographic(GeoCoordSys& system);

// A name of the suite's for the terminal; a system by code and name.
std::string Shown(const std::string& text);
std::string SystemText(GeoCoordSys& system);

// A pair as typed; false after a message.
bool ReadPair(GeoCoordSys& system, const std::string& first, const std::string& second, Pair& pair);

// A number in a column of 15 characters.
std::string NumberColumn(double value, int decimals);

// How latitudes and longitudes are written, and how many decimals there are.
struct PairStyle {
  std::string angles = "degrees";  // degrees, minutes or seconds
  int decimals = -1;               // below 0: a millimetre, or less
};

// How pairs of one system are shown.
class Columns {
 public:
  Columns(GeoCoordSys& system, const PairStyle& style);

  // What the columns hold: "easting, northing in metre".
  std::string Head() const;
  std::string Text(const Pair& pair) const;

 private:
  std::string Angle(double degrees, int axis) const;

  bool m_geographic;
  std::string m_unit;
  unsigned int m_style = 1;  // of FormatGeogs
  int m_decimals;
};

// Carries positions from one system to another and keeps account of how that went.
class Conversion {
 public:
  // `from` has `to` for its target.
  Conversion(std::unique_ptr<GeoCoordSys> from, std::unique_ptr<GeoCoordSys> to) : m_from(std::move(from)), m_to(std::move(to)) {}

  GeoCoordSys& From() { return *m_from; }
  GeoCoordSys& To() { return *m_to; }

  // False, counted, when the position has no counterpart.
  bool Convert(const Pair& pair, Pair& result);

  // Each way that positions went, with its accuracy.
  void PrintWays(const char* front) const;

  // Tells which positions lie outside the areas of use. The exit code.
  int Report();

 private:
  void NoteWay();

  std::unique_ptr<GeoCoordSys> m_from, m_to;
  std::map<std::string, std::size_t> m_ways;
  std::size_t m_failed = 0, m_outsideFrom = 0, m_outsideTo = 0;
};

}  // namespace zel
