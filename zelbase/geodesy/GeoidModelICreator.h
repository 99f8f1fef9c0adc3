// What a geodesy plug-in hands in so that its geoid models can be made without knowing their class. Neighbours:
// GeoidModelList.h holds the creators, GeoidModel.h is what they make.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

class GeoidModel;

// Implemented by the plug-in; handed to GeoidModelList::RegisterGeoidModel, which owns it from then on.
class ZELBASE_API GeoidModelICreator {
 public:
  // A new object, which the caller owns, or null.
  virtual GeoidModel* Create() = 0;

  virtual ~GeoidModelICreator() = default;
};
