// A picture drawn once, saved as PNG or SVG.
#pragma once

#include <cairo.h>

#include <functional>
#include <string>

namespace zel {

// Calls `draw` for a white sheet of `width` by `height` units and saves it: as PNG with two pixels a unit for a path that ends
// in ".png", as SVG for any other. False when it cannot be written.
bool SaveCairoPicture(const std::string& path, double width, double height, const std::function<void(cairo_t*)>& draw);

// The hand of all pictures: black on white would be too hard.
inline constexpr double kInkRed = 0.2, kInkGreen = 0.25, kInkBlue = 0.3;
inline constexpr double kFontSize = 14.0;

// Chooses the font; above 1 `factor` makes it bold, too.
void SetFont(cairo_t* pen, double factor = 1.0);

// How far a text reaches.
double TextWidth(const std::string& text, double factor = 1.0);

// Writes UTF-8 from (x, y) on.
void DrawText(cairo_t* pen, double x, double y, const std::string& text, double factor = 1.0);

}  // namespace zel
