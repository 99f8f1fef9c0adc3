// The design line on the chart, with its chainage and the edges of the channel's floor. Neighbour: ChartOverlay.h, which draws the
// rest of the map.
#pragma once

#include <string>
#include <vector>

#include "survey/ChartLabels.h"
#include "survey/ChartLayout.h"
#include "survey/MapPen.h"
#include "survey/Survey.h"

namespace zel {

// A round chainage on the design line.
struct ChainageTick {
  double chainage = 0.0;  // in the survey's unit of distance
  Point place;
  Point across;      // of length 1, to the right of travel
  std::string text;  // empty: a small tick without a number
};

// By rising chainage, at steps for a map with so many metres in a millimetre. None where one would be ambiguous: in gaps.
std::vector<ChainageTick> ChainageTicks(const Survey& survey, double metresPerMillimetre);

// Where the design is `distance` metres away, to the right of travel when positive: a path a section.
std::vector<std::vector<Point>> PathsBeside(const Survey& survey, double distance);

void DrawDesign(MapPen& pen, const Survey& survey, const MapView& view, BoxIndex& taken);

}  // namespace zel
