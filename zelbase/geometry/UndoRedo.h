// One step of an operator's work on an object of a chart view, as it lies on a stack to be undone or redone. Neighbour:
// EditableObject.h, which owns the stacks and says what each kind does.
#pragma once

#include "zelbase/geometry/Point.h"
#include "zelbase/platform/ZelBaseApi.h"

// A plain record; a new one has kind 0, which is no step at all.
struct ZELBASE_API UndoRedo {
  int kind = 0;   // 1 added, 2 inserted, 3 deleted, 4 all deleted, 5 and 6 moved
  int index = 0;  // of the item concerned
  Point from;     // where the item was
  Point to;       // where it went, or the point at which the operator acted
};
