// Whether a map is turned on the screen. Neighbour: CoordinateSystem.h, which does it.
#pragma once

// Any number is stored. Only ROTATIONMODE_SKEW has an effect: the map is turned by its skew. All else is north up.
enum ROTATIONMODE : int {
  ROTATIONMODE_0 = 0,
  ROTATIONMODE_1 = 1,
  ROTATIONMODE_2 = 2,
  ROTATIONMODE_SKEW = 3,
};
