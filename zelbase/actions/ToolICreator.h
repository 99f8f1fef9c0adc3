// What a module hands in so that a tool of its kind can be made without knowing its class. Neighbours: CToolList.h holds the
// creators, ZelTool.h is what they make.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

class ZelTool;

// Implemented by the modules that have tools; one object for each name, handed to CToolList::RegisterTool.
class ZELBASE_API ToolICreator {
 public:
  // A new tool, which the caller owns, or null.
  virtual ZelTool* Create() = 0;

  virtual ~ToolICreator() = default;
};
