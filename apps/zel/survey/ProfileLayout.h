// The sheet of the long section: where its frame lies, which chainages and heights it shows, and at what scales. Neighbour:
// ProfilePicture.cpp draws it.
#pragma once

#include "survey/Survey.h"
#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/geometry/Page.h"

namespace zel {

// As the sheet of the chart: millimetres, y down, pages with their upper edge in `bottom`.
namespace section_sheet {
inline constexpr int kWidth = 420, kHeight = 210;
inline constexpr int kFrameLeft = 28, kFrameTop = 36, kFrameRight = 330, kFrameBottom = 172;
inline constexpr Page kFrame(kFrameLeft, kFrameTop, kFrameRight, kFrameBottom);
inline constexpr Page kColumn(346.0, kFrameTop, 408.0, 198.0);
}  // namespace section_sheet

struct ProfileView {
  double alongScale = 1000.0;  // denominators, along the line and upwards
  double upwardScale = 100.0;
  Page window;             // chainage across, height up
  bool isEmpty = false;    // there is nothing to show
  bool isDrawable = true;  // otherwise it is too large for any scale

  double Exaggeration() const { return alongScale / upwardScale; }

  // From chainage and height to the frame, with so many pixels to a millimetre.
  CoordinateSystem System(int parts) const;
};

// All of the design, the over-depth line and the measured bottom, at round scales.
ProfileView ProfileViewOf(const Survey& survey);

}  // namespace zel
