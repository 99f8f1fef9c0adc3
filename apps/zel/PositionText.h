// Positions as people type them: plain numbers, and degrees, minutes and seconds with a letter behind. Neighbours:
// FormatCommand.cpp and GeodesyCommand.cpp, which take them; zelbase/frame/GeographicText.h for what is read.
#pragma once

#include <string>

namespace zel {

// A coordinate of the globe in degrees. A number keeps its sign; anything else is read as the suite reads what an operator types,
// where the sign is a letter. False when it is neither.
bool ReadDegrees(const std::string& argument, double& degrees);

// A latitude and a longitude. They stand in this order, unless their letters say the other one. False, with a reason a person can
// read, when one is no coordinate or both are said to be the same.
bool ReadPosition(const std::string& first, const std::string& second, double& latitude, double& longitude, std::string& reason);

}  // namespace zel
