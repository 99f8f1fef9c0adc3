// The steps of a colour table as a column of swatches with the values between them. Neighbours: ChartFurniture.h and
// ProfilePicture.cpp, whose sheets it stands on; LegendPicture.h is a picture of a table alone.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "survey/SheetPen.h"
#include "zelbase/colour/ColorTable.h"

namespace zel {

// What lies between two values of a table. The lowest step has no low value, the highest no high one.
struct LegendStep {
  COLORREF color = 0;
  double low = 0.0, high = 0.0;
  bool isLowest = false, isHighest = false;
  std::string name;  // UTF-8
};

// From the lowest up: one more than the table has entries. Of tables with many, those that values from `minimum` to `maximum` take,
// and one more at each end.
std::vector<LegendStep> LegendSteps(const ColorTable& table, double minimum, double maximum);

struct LegendForm {
  double x = 0.0, y = 0.0;  // the upper left corner
  double mostHeight = 60.0;
  bool lowestFirst = true;  // at the top
  double swatchWidth = 11.0;
  double width = 40.0;                  // with values and names
  int roughDecimals = 1;                // of values that two decimals do not show as they are
  std::function<double(double)> shown;  // from the table's value to the unit that is written
};

// Gives the height that it took.
double DrawLegend(const SheetPen& pen, std::vector<LegendStep> steps, const LegendForm& form);

}  // namespace zel
