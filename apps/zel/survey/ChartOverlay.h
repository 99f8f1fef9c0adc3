// What lies on the chart's map above the soundings: grid, coast, work area, design, track and vessel. Neighbours: ChartSymbols.h, the key
// to it; MapPen.h, which draws it.
#pragma once

#include "survey/ChartGrid.h"
#include "survey/ChartLabels.h"
#include "survey/ChartLayout.h"
#include "survey/MapPen.h"
#include "survey/Survey.h"

namespace zel {

// Below the soundings.
void DrawGround(const MapPen& pen, const Survey& survey);

// Above them. The boxes of the texts and of the vessel are added to `taken`, for the depths to stay clear of.
void DrawOverlay(MapPen& pen, const Survey& survey, const MapView& view, const ChartGrid& grid, BoxIndex& taken);

}  // namespace zel
