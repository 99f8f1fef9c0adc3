// The base for a plug-in's coordinate systems: every spare slot answers with false, so that a class overrides only what it
// has. Neighbours: ZelGeoCoordSysBase.h, the interface; SpareGeoDatabase.h and SpareGeoStaticData.h, the other two.
#pragma once

#include "zelbase/geodesy/ZelGeoCoordSysBase.h"
#include "zelbase/geodesy/detail/OperationRuns.h"
#include "zelbase/platform/ZelBaseApi.h"

// Still abstract: GetLinearUnit, the one slot that the library itself asks, stays with the plug-in.
class ZELBASE_API SpareGeoCoordSys : public ZelGeoCoordSysBase {
 public:
  ~SpareGeoCoordSys() override;

  // Operation1 to Operation19 and Operation21 to Operation66.
  ZELBASE_OPERATIONS_1_TO_19(ZELBASE_FALSE_OPERATION)
  ZELBASE_OPERATIONS_21_TO_66(ZELBASE_FALSE_OPERATION)
};
