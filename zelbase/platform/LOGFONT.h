// The framework's description of a font. Neighbours: CDC.h, whose CreateFontIndirect takes one; LOGPEN.h for pens.
#pragma once

#include <string>

// A plain value.
struct LOGFONT {
  int lfHeight = 0;       // pixels; above 0 of the whole line, below 0 of the letters alone; 0 is the surface's choice
  int lfWidth = 0;        // 0 goes with the height
  int lfEscapement = 0;   // direction of the line, tenths of a degree, counter-clockwise from the right
  int lfOrientation = 0;  // direction of each letter, likewise
  int lfWeight = 0;       // 400 is ordinary, 700 bold; 0 is the surface's choice
  std::string lfFaceName;
};
