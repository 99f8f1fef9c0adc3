// What a module hands in so that actions of its group can be made without knowing their class. Neighbours: ZelActionList.h
// holds the creators, ZelAction.h is what they make.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

class ZelAction;

// Implemented by the applications; one object for each group, handed to ZelActionList::RegisterActionGroup.
class ZELBASE_API ZelActionICreator {
 public:
  // A new action, which the caller owns, or null.
  virtual ZelAction* Create() = 0;

  virtual ~ZelActionICreator() = default;
};
