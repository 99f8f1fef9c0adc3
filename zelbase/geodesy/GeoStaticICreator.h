// What a geodesy plug-in hands in so that its static data can be made without knowing their class. Neighbours:
// ZelGeoStaticDatabaseList.h holds the creators, ZelGeoStaticDataBase.h is what they make.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

class ZelGeoStaticDataBase;

// Implemented by the plug-in; handed to ZelGeoStaticDatabaseList::RegisterGeoStaicDatabase, which owns it from then on.
class ZELBASE_API GeoStaticICreator {
 public:
  // A new object, which the caller owns, or null.
  virtual ZelGeoStaticDataBase* Create() = 0;

  virtual ~GeoStaticICreator() = default;
};
