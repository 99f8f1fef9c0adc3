// The legend of a colour table as a picture: a swatch a step, highest on top, with values and names.
#pragma once

#include <string>

#include "zelbase/colour/ColorTable.h"

namespace zel {

// PNG for a path that ends so, SVG for any other. False, with a reason a person can read, when it cannot be written.
bool SaveLegend(const ColorTable& table, const std::string& title, const std::string& path, std::string& reason);

}  // namespace zel
