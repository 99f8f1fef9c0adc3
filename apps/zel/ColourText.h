// Colours as people type and read them.
#pragma once

#include <string>
#include <string_view>

#include "zelbase/platform/COLORREF.h"

namespace zel {

// "#RRGGBB", "R,G,B" with three bytes, or one of a few names ("red", "navy", ...). False, `color` untouched, for anything else.
bool ToColour(std::string_view text, COLORREF& color);

// "#RRGGBB".
std::string ColourText(COLORREF color);

// Channels as bytes, and a colour of three bytes.
int RedOf(COLORREF color);
int GreenOf(COLORREF color);
int BlueOf(COLORREF color);
COLORREF MakeColour(int red, int green, int blue);

}  // namespace zel
