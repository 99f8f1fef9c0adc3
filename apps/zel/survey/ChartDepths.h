// Depths as numbers on the chart. Neighbours: ChartLabels.h decides which soundings have one.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "survey/ChartLabels.h"
#include "survey/SheetPen.h"
#include "survey/Survey.h"

namespace zel {

// The depth of a sounding: whole units, and the decimals smaller and a little lower, as on a nautical chart. What lies above the datum
// and dries is underlined.
struct DepthNumber {
  DepthNumber(const Survey& survey, double z);

  std::string whole, decimals;
  bool dries = false;
};

// A depth with its place on the sheet; the middle of the sounding is the middle of the box.
struct DepthLabel {
  LabelCandidate sounding;
  DepthNumber text;
  Page box;  // millimetres, its upper edge in `bottom`
};

// How large depths are written, and how far apart they stay.
namespace depths {
inline constexpr double kSize = 2.35, kSmall = 0.74;   // of the font: millimetres, and the decimals' share
inline constexpr double kDrop = 0.22;                  // of the decimals below the base line, of the font's size
inline constexpr double kApartX = 2.6, kApartY = 2.4;  // millimetres of free paper between two
inline constexpr double kCell = 2.4;                   // of which the shoalest sounding is a candidate
}  // namespace depths

// The labels that find room within `area` and clear of `taken`, to which their boxes are added: the shoalest first, so that a sounding
// goes without only where a label in its way is of one at least as shoal.
std::vector<DepthLabel> PlaceDepths(const SheetPen& pen, const Survey& survey, const std::vector<LabelCandidate>& byShoalest,
                                    const Page& area, BoxIndex& taken);

void DrawDepths(const SheetPen& pen, const std::vector<DepthLabel>& labels);

}  // namespace zel
