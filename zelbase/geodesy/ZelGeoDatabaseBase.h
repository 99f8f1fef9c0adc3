// A geodetic database, as a geodesy plug-in supplies it: the interface that the library and the plug-in agree on, by slot.
// Neighbours: GeoDatabaseICreator.h and ZelGeoDatabaseBaseList.h, which make and register them; SpareGeoDatabase.h, the base
// a plug-in derives from; ZelGeoCoordSysBase.h and ZelGeoStaticDataBase.h, the other two.
#pragma once

#include "zelbase/geodesy/detail/OperationRuns.h"
#include "zelbase/platform/ZelBaseApi.h"

// No data, no bases. The destructor stands first, and after it exactly 61 operations: a plug-in and a program that were built
// apart meet in these places, so that none may be added, taken out or moved. The first has a name; the others are spare, each
// numbered by its place after the destructor, and are given a meaning between a plug-in and who knows it.
//
// One object belongs to one thread at a time, as far as the plug-in says nothing else.
class ZELBASE_API ZelGeoDatabaseBase {
 public:
  // In the library, so that the class is one and the same for every module of a process: a dynamic_cast in one knows what
  // another has made.
  virtual ~ZelGeoDatabaseBase();

  // Whether the object can be used: its file is there, its tables are read. Asked once for each object, right after its
  // creator has made it; one that says no is destroyed and never reaches a caller.
  virtual bool IsReady() = 0;

  // virtual bool Operation2() = 0 to Operation61, which answer with false where a plug-in has nothing for them.
  ZELBASE_OPERATIONS_2_TO_61(ZELBASE_PURE_OPERATION)
};
