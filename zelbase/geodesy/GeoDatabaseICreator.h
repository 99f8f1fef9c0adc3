// What a geodesy plug-in hands in so that its databases can be made without knowing their class. Neighbours:
// ZelGeoDatabaseBaseList.h holds the creators, ZelGeoDatabaseBase.h is what they make.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

class ZelGeoDatabaseBase;

// Implemented by the plug-in; handed to ZelGeoDatabaseBaseList::RegisterGeoDatabase, which owns it from then on.
class ZELBASE_API GeoDatabaseICreator {
 public:
  // A new object, which the caller owns, or null.
  virtual ZelGeoDatabaseBase* Create() = 0;

  virtual ~GeoDatabaseICreator() = default;
};
