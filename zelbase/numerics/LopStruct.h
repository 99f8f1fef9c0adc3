// One line of position: what a range or a bearing to a known station says about where the vessel is. Neighbour:
// KalmanFilter.h, whose ReduceLops makes a fix of eight of them.
#pragma once

#include <type_traits>

#include "zelbase/platform/ZelBaseApi.h"

// A plain record of 80 bytes in the order that callers exchange it; all zero when made, and then not in use.
//
//   LopStruct lops[8] = {};
//   lops[0].type = 0;             // a range
//   lops[0].flags = 3;            // takes part
//   lops[0].x = 1000.0;           // the station
//   lops[0].y = 2000.0;
//   lops[0].observed = 1431.2;
//   lops[0].variance = 4.0;
struct ZELBASE_API LopStruct {
  // 0 a range, 1 a bearing. Any other entry counts among the used ones and adds no equation.
  int type = 0;

  // Two words that the filter does not read; they belong to the callers.
  unsigned int callerWord1 = 0;
  unsigned int callerWord2 = 0;

  // The entry takes part when both bit 0 and bit 1 are set. What each of them says belongs to the callers.
  unsigned int flags = 0;

  // The station, metres: x east, y north.
  double x = 0.0;
  double y = 0.0;

  // Not read by the filter; it belongs to the callers.
  double callerValue = 0.0;

  // What was measured: a range in metres, or a bearing from the station to the vessel in degrees, clockwise from north.
  double observed = 0.0;

  // Of the observation before the reduction: of a range in square metres; of a bearing in that unit which makes the
  // square of the distance times the variance square metres.
  double variance = 0.0;

  // Added to `observed` before use, in its unit.
  double correction = 0.0;

  // Written by the reduction: computed minus observed, metres; for a bearing the offset across it. 0 for an entry that is
  // not in use, and after a reduction that failed.
  double residual = 0.0;

  // Written by the reduction: the bearing from the station to the estimate of the last pass, degrees, [0, 360]; 360 itself
  // only from an angle that is a rounding below north. 0 for an entry that is not in use.
  double azimuth = 0.0;
};

static_assert(sizeof(LopStruct) == 80);
static_assert(std::is_trivially_copyable_v<LopStruct> && std::is_standard_layout_v<LopStruct>);
