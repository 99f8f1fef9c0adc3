// The curve of a tide series as a picture: days across, heights up, interrupted at gaps.
#pragma once

#include <string>

#include "TideSeries.h"

namespace zel {

// PNG for a path that ends so, SVG for any other. `longestStep` in milliseconds: beyond it the curve is interrupted. False when it
// cannot be written. A series without two different times draws its frame.
bool SaveTidePicture(const TideSeries& series, double longestStep, const std::string& title, const std::string& path);

}  // namespace zel
