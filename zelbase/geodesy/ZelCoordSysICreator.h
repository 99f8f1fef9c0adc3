// What a geodesy plug-in hands in so that its coordinate systems can be made without knowing their class. Neighbours:
// ZelGeoCoordSysList.h holds the creators, ZelGeoCoordSysBase.h is what they make.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

class ZelGeoCoordSysBase;

// Implemented by the plug-in; handed to ZelGeoCoordSysList::RegisterGeoCoordSys, which owns it from then on.
class ZELBASE_API ZelCoordSysICreator {
 public:
  // A new object, which the caller owns, or null.
  virtual ZelGeoCoordSysBase* Create() = 0;

  virtual ~ZelCoordSysICreator() = default;
};
