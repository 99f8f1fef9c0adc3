#include "PositionText.h"

#include <utility>

#include "TextEdge.h"
#include "zelbase/frame/GeographicText.h"

namespace zel {
namespace {

enum class Axis { Unsaid, Latitude, Longitude };

// By the letter; a plain number has none, "1e5" neither.
Axis AxisOf(const std::string& argument) {
  double number = 0.0;
  if (ToNumber(argument, number)) return Axis::Unsaid;
  const std::size_t letter = argument.find_first_of("nNsSeEwW");
  if (letter == std::string::npos) return Axis::Unsaid;
  return std::string("nNsS").find(argument[letter]) != std::string::npos ? Axis::Latitude : Axis::Longitude;
}

}  // namespace

bool ReadDegrees(const std::string& argument, double& degrees) {
  std::string text;
  if (ToNumber(argument, degrees)) return true;
  return FromArgument(argument, Encoding::Windows1252, text) && StringToGeo(text, degrees);
}

bool ReadPosition(const std::string& first, const std::string& second, double& latitude, double& longitude, std::string& reason) {
  for (const std::string& argument : {first, second}) {
    double degrees = 0.0;
    if (ReadDegrees(argument, degrees)) continue;
    reason = "\"" + argument + "\" is not a coordinate; letters go behind: 52 30 45.5 N";
    return false;
  }
  const Axis axisOfFirst = AxisOf(first), axisOfSecond = AxisOf(second);
  if (axisOfFirst != Axis::Unsaid && axisOfFirst == axisOfSecond) {
    reason = "\"" + first + "\" and \"" + second + "\" are both " + (axisOfFirst == Axis::Latitude ? "latitudes" : "longitudes");
    return false;
  }
  ReadDegrees(first, latitude);
  ReadDegrees(second, longitude);
  if (axisOfFirst == Axis::Longitude || axisOfSecond == Axis::Latitude) std::swap(latitude, longitude);
  return true;
}

}  // namespace zel
