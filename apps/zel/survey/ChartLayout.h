// The sheet of the chart: where its parts lie, which piece of the world its map shows, and at what scale. Neighbours: ChartGrid.h rules
// the map, ChartFurniture.h fills the column beside it.
#pragma once

#include "survey/Survey.h"
#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/geometry/Page.h"

namespace zel {

// An A3 sheet, landscape, in millimetres, y down. Pages of the sheet have their upper edge, the smaller y, in `bottom`.
namespace sheet {
inline constexpr int kWidth = 420, kHeight = 297;
inline constexpr int kMapLeft = 20, kMapTop = 18, kMapRight = 316, kMapBottom = 279;
inline constexpr Page kMap(kMapLeft, kMapTop, kMapRight, kMapBottom);
inline constexpr Page kColumn(332.0, 13.0, 408.0, 285.0);
inline constexpr double kBorder = 6.0;  // from the sheet's edge to its rule

// Pixels to a millimetre: of a PNG (2520 by 1782), of the picture of the soundings, and of a sheet of strokes (SVG, PDF).
inline constexpr int kPngParts = 6, kFineParts = 12, kSheetParts = 40;
}  // namespace sheet

// What the map shows.
struct MapView {
  Point centre;
  double scale = 1000.0;   // its denominator
  double rotation = 0.0;   // the upward direction, degrees from grid north
  bool isEmpty = false;    // the survey has no place at all
  bool isDrawable = true;  // otherwise what it covers is too large for any scale

  bool IsMap() const { return !isEmpty && isDrawable; }

  // Metres of the world in a millimetre of the sheet.
  double MetresPerMillimetre() const { return scale / 1000.0; }

  // From the world to the map's window with so many pixels to a millimetre. Pixels count from the sheet's upper left corner.
  CoordinateSystem System(int parts) const;
};

// Where all of the survey's subject is seen: the soundings; the work area, design, track and vessel too, as long as they do not make it
// much smaller. Without soundings it is the first of the others that is there.
MapView ViewOf(const Survey& survey);

}  // namespace zel
