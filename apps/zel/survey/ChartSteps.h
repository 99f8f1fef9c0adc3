// Round numbers for axes, grids, scales and bars. Neighbours: ChartGrid.h, ProfilePicture.cpp and TidePicture.cpp,
// which rule their sheets by them.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "survey/Survey.h"

namespace zel {

// The least step of 1, 2 or 5 times a power of ten that divides `range` into `parts` or fewer. 1 for a range that is not above 0
// or not finite.
double NiceStep(double range, double parts);

// The greatest length of 1, 2 or 5 times a power of ten that is not above `most`; 1 where NiceStep gives 1.
double NiceLength(double most);

// The least denominator of a scale that is customary (1, 1.25, 1.5, 2, 2.5, 3, 4, 5, 6, 7.5 or 8 times a power of ten) and not
// below `least`, from 10 up.
double NiceScale(double least);

// The least step in degrees that divides `range` (degrees) into `parts` or fewer and is round in the coordinates' form: as NiceStep in
// degrees, but for minutes and seconds in the steps of a clock (1, 2, 5, 10, 15, 20, 30) up to the next greater unit, and as
// NiceStep below the smallest one.
double NiceAngleStep(double range, double parts, CoordinateForm form);

// How many decimals tell the multiples of a step of NiceStep apart: 0 to 12.
int DecimalsOf(double step);

// The multiples of `step` from `from` to `to`, both included, by rising value. Empty where there would be more than `most` of them, or
// for anything that is not finite, or a step not above 0.
std::vector<double> Multiples(double from, double to, double step, std::size_t most = 1000);

// "12 345 678": a whole number with a thin blank (UTF-8) between its thousands. `decimals` follow after a point.
std::string Thousands(double value, int decimals = 0);

}  // namespace zel
