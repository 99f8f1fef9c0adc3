#include "GeodesyPositions.h"

#include <iostream>

#include "PositionText.h"
#include "SettingsFile.h"
#include "TextEdge.h"
#include "zelbase/frame/GeographicText.h"
#include "zelbase/frame/NumberFormat.h"

namespace zel {
namespace {

constexpr std::size_t kColumn = 15;

// Codes of FormatGeogs.
constexpr unsigned int kDegrees = 1, kMinutes = 3, kSeconds = 7;
constexpr int kLatitude = 10, kLongitude = 11;

// To the system's x and y, and back: those of a geographic one are in its own unit.
bool ToSystem(GeoCoordSys& system, const Pair& pair, double& x, double& y) {
  if (IsGeographic(system)) return system.Forward(pair.first, pair.second, x, y);
  x = pair.first;
  y = pair.second;
  return true;
}

bool FromSystem(GeoCoordSys& system, double x, double y, Pair& pair) {
  if (IsGeographic(system)) return system.Inverse(x, y, pair.first, pair.second);
  pair = {x, y};
  return true;
}

bool IsInArea(GeoCoordSys& system, double x, double y) {
  GeoArea area;
  double latitude = 0.0, longitude = 0.0;
  return !system.GetAreaOfUse(area) || !system.Inverse(x, y, latitude, longitude) || area.Contains(latitude, longitude);
}

void TellOutside(std::size_t count, GeoCoordSys& system) {
  if (count == 0) return;
  GeoArea area;
  system.GetAreaOfUse(area);
  Fail(Counted(count, "position lies", "positions lie") + " outside the area of use of " + Shown(system.Code() + " (" + area.name + ")"));
}

// What a millimetre asks for.
int UsualDecimals(bool geographic, unsigned int style) {
  if (!geographic) return 3;
  return style == kDegrees ? 9 : style == kMinutes ? 7 : 5;
}

}  // namespace

bool IsGeographic(GeoCoordSys& system) { return system.Kind() == GeoCoordSysKind::Geographic; }

std::string Shown(const std::string& text) { return ToTerminal(text, Encoding::Windows1252); }

std::string SystemText(GeoCoordSys& system) { return Shown(system.Code().empty() ? system.Name() : system.Code() + " " + system.Name()); }

bool ReadPair(GeoCoordSys& system, const std::string& first, const std::string& second, Pair& pair) {
  if (IsGeographic(system)) {
    std::string reason;
    if (ReadPosition(first, second, pair.first, pair.second, reason)) return true;
    Fail(reason);
    return false;
  }
  if (ToNumber(first, pair.first) && ToNumber(second, pair.second)) return true;
  Fail("\"" + first + "\", \"" + second + "\" are not an easting and a northing in numbers");
  return false;
}

std::string NumberColumn(double value, int decimals) {
  const std::string text = FormatDouble(value, decimals);
  return text.size() < kColumn ? std::string(kColumn - text.size(), ' ') + text : text;
}

Columns::Columns(GeoCoordSys& system, const PairStyle& style) : m_geographic(IsGeographic(system)), m_unit(Shown(system.UnitName())) {
  if (style.angles == "minutes") m_style = kMinutes;
  if (style.angles == "seconds") m_style = kSeconds;
  m_decimals = style.decimals < 0 ? UsualDecimals(m_geographic, m_style) : style.decimals;
}

std::string Columns::Head() const { return m_geographic ? "latitude, longitude in degrees" : "easting, northing in " + m_unit; }

std::string Columns::Text(const Pair& pair) const {
  if (!m_geographic || m_style == kDegrees) return NumberColumn(pair.first, m_decimals) + ' ' + NumberColumn(pair.second, m_decimals);
  return Angle(pair.first, kLatitude) + "  " + Angle(pair.second, kLongitude);
}

std::string Columns::Angle(double degrees, int axis) const {
  std::string text;
  FormatGeogs(degrees, m_style, m_decimals, axis, text, true, true);
  return Shown(text);
}

bool Conversion::Convert(const Pair& pair, Pair& result) {
  double x = 0.0, y = 0.0, targetX = 0.0, targetY = 0.0;
  if (!ToSystem(*m_from, pair, x, y) || !m_from->Convert(x, y, targetX, targetY) || !FromSystem(*m_to, targetX, targetY, result)) {
    ++m_failed;
    return false;
  }
  if (!IsInArea(*m_from, x, y)) ++m_outsideFrom;
  if (!IsInArea(*m_to, targetX, targetY)) ++m_outsideTo;
  NoteWay();
  return true;
}

void Conversion::NoteWay() {
  GeoConversionInfo info;
  if (!m_from->GetConversionInfo(info)) return;
  const std::string accuracy = info.accuracy < 0 ? "accuracy unknown" : "accuracy " + FormatDouble(info.accuracy, "%g") + " m";
  ++m_ways[accuracy + ", " + Shown(info.description)];
}

void Conversion::PrintWays(const char* front) const {
  for (const auto& [way, count] : m_ways) std::cout << front << Counted(count, "position", "positions") << ": " << way << '\n';
}

int Conversion::Report() {
  TellOutside(m_outsideFrom, *m_from);
  TellOutside(m_outsideTo, *m_to);
  return m_failed + m_outsideFrom + m_outsideTo == 0 ? kDone : kFoundWrong;
}

}  // namespace zel
