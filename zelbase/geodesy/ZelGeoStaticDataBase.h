// A store of static geodetic data, as a geodesy plug-in supplies it: the interface that the library and the plug-in agree on,
// by slot. Neighbours: GeoStaticICreator.h and ZelGeoStaticDatabaseList.h, which make and register them;
// SpareGeoStaticData.h, the base a plug-in derives from; ZelGeoCoordSysBase.h and ZelGeoDatabaseBase.h, the other two.
#pragma once

#include "zelbase/geodesy/detail/OperationRuns.h"
#include "zelbase/platform/ZelBaseApi.h"

// No data, no bases. The destructor stands first, and after it exactly 76 operations: a plug-in and a program that were built
// apart meet in these places, so that none may be added, taken out or moved. All are spare, each numbered by its place after
// the destructor, and are given a meaning between a plug-in and who knows it.
//
// One object belongs to one thread at a time, as far as the plug-in says nothing else.
class ZELBASE_API ZelGeoStaticDataBase {
 public:
  // In the library, so that the class is one and the same for every module of a process: a dynamic_cast in one knows what
  // another has made.
  virtual ~ZelGeoStaticDataBase();

  // virtual bool Operation1() = 0 to Operation76, which answer with false where a plug-in has nothing for them.
  ZELBASE_OPERATIONS_1_TO_76(ZELBASE_PURE_OPERATION)
};
