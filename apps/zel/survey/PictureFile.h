// Puts a drawn surface into a file. Neighbours: ChartPicture.cpp and ProfilePicture.cpp, which draw; OutputFile.h, the file.
#pragma once

#include <string>

#include "adapters/cairo/CairoSurface.h"

namespace zel {

// The resolution that makes so many pixels a millimetre.
int DotsPerInch(int partsPerMillimetre);

// The file at `path` is replaced when all is written; otherwise false, with a reason, and it is as it was.
bool SavePicture(CairoSurface& surface, const std::string& path, std::string& reason);

}  // namespace zel
