// The base for a plug-in's static geodetic data: every spare slot answers with false, so that a class overrides only what it
// has. Neighbours: ZelGeoStaticDataBase.h, the interface; SpareGeoCoordSys.h and SpareGeoDatabase.h, the other two.
#pragma once

#include "zelbase/geodesy/ZelGeoStaticDataBase.h"
#include "zelbase/geodesy/detail/OperationRuns.h"
#include "zelbase/platform/ZelBaseApi.h"

// All slots of the interface are spare, so that this class can be made as it stands.
class ZELBASE_API SpareGeoStaticData : public ZelGeoStaticDataBase {
 public:
  ~SpareGeoStaticData() override;

  // Operation1 to Operation76.
  ZELBASE_OPERATIONS_1_TO_76(ZELBASE_FALSE_OPERATION)
};
