// Colour tables in files: the suite's own, and those of other programs, which are told by their ending.
#pragma once

#include <string>

#include "zelbase/colour/ColorTable.h"

namespace zel {

// Ending  | Form
// .cpt    | palette of the Generic Mapping Tools: slices from value to value; colours as R G B, R/G/B, #RRGGBB, grey or HSV
// .txt    | colour text of GDAL: value R G B a line, "nv" for the low colour
// other   | the suite's table, a settings file
//
// Opens any of them. A slice between two colours becomes `steps` entries of the colours in their middles. False, with a reason
// a person can read, when the file cannot be read.
bool OpenColourFile(const std::string& path, int steps, ColorTable& table, std::string& reason);

// Saves into any of them; the file is replaced. Names and locks go into the suite's alone, the values above the last entry get
// a slice of no height in none.
bool SaveColourFile(const std::string& path, const ColorTable& table, std::string& reason);

}  // namespace zel
