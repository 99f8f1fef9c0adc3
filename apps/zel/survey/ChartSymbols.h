// The symbols that map and key share. Neighbours: ChartOverlay.h draws the map with them, ChartFurniture.h explains them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "survey/ChartLayout.h"
#include "survey/SheetPen.h"
#include "survey/Survey.h"

namespace zel {

// Widths of lines in millimetres.
namespace lines {
inline constexpr double kGrid = 0.12, kCoast = 0.25, kWorkArea = 0.45, kDesign = 0.5, kTrack = 0.25, kRefused = 0.5, kEllipse = 0.15,
                        kVessel = 0.3;
inline constexpr double kRim = 0.17;  // of paper, to either side of a line that must be seen on any colour
}  // namespace lines

// One row of the key.
struct ChartSymbol {
  std::string text;  // UTF-8

  // From `x` to the right, around `y`.
  std::function<void(const SheetPen& pen, double x, double y, double width)> draw;
};

// Those of what the survey has.
std::vector<ChartSymbol> SymbolsOf(const Survey& survey, const MapView& view);

// The half axes of error ellipses on the chart, in those of the filter: three, or a round multiple of that which makes the usual
// one of the fixes large enough to be seen.
inline constexpr double kEllipseSigmas = 3.0;
double EllipseEnlargement(const SurveyTrack& track, const MapView& view);

}  // namespace zel
