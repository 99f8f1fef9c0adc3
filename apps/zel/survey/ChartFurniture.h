// What stands beside the map: title, particulars, scale, north arrow, legend and the key to the symbols. Neighbours: ChartGrid.h, the
// frame around the map; ChartLegend.h, the colours; ChartSymbols.h, the symbols of map and key.
#pragma once

#include <string>

#include "survey/ChartLayout.h"
#include "survey/SheetPen.h"
#include "survey/Survey.h"

namespace zel {

// A bar of a round length in the survey's unit of distance.
struct ScaleBar {
  double length = 0.0;  // in the unit that is written
  double metres = 0.0;  // the same
  double paper = 0.0;   // millimetres on the sheet
  int parts = 5;        // each of a round length, too
  std::string unit;     // UTF-8
};

// The longest such bar that is not above `most` millimetres.
ScaleBar ScaleBarFor(const Survey& survey, const MapView& view, double most);

// An arrow of `size` millimetres around (x, y) that points to grid north of a map with `rotation` degrees upward.
void DrawNorthArrow(const SheetPen& pen, double x, double y, double size, double rotation);

// The whole column; `colours` is the table that the soundings are drawn by.
void DrawColumn(const SheetPen& pen, const Survey& survey, const MapView& view, const ColorTable& colours);

// The rule around the sheet, and its paper.
void DrawSheet(const SheetPen& pen);

// UTF-8 of a text of the survey's in its own language.
std::string Worded(const Survey& survey, const std::string& english);

// "12.3 m", in the survey's unit of a kind.
std::string Measured(const Survey& survey, int kind, double value, int decimals);

}  // namespace zel
