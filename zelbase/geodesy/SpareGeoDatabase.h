// The base for a plug-in's geodetic databases: every spare slot answers with false, so that a class overrides only what it
// has. Neighbours: ZelGeoDatabaseBase.h, the interface; SpareGeoCoordSys.h and SpareGeoStaticData.h, the other two.
#pragma once

#include "zelbase/geodesy/ZelGeoDatabaseBase.h"
#include "zelbase/geodesy/detail/OperationRuns.h"
#include "zelbase/platform/ZelBaseApi.h"

// Still abstract: IsReady, the one slot that the library itself asks, stays with the plug-in.
class ZELBASE_API SpareGeoDatabase : public ZelGeoDatabaseBase {
 public:
  ~SpareGeoDatabase() override;

  // Operation2 to Operation61.
  ZELBASE_OPERATIONS_2_TO_61(ZELBASE_FALSE_OPERATION)
};
