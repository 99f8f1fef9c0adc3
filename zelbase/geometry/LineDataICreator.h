// What a module hands in so that lines of its kind can be made without knowing their class. Neighbours: LineDataList.h
// holds the creators, LineData.h is what they make.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

class LineData;

// Implemented by the modules that load lines; one object for each type, handed to LineDataList::RegisterLineData.
class ZELBASE_API LineDataICreator {
 public:
  // A new line of the given name, which the caller owns, or null.
  virtual LineData* Create(const std::string& name) = 0;

  virtual ~LineDataICreator() = default;
};
