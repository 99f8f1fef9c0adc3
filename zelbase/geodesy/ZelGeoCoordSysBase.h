// A coordinate system, as a geodesy plug-in supplies it: the interface that the library and the plug-in agree on, by slot.
// Neighbours: ZelCoordSysICreator.h and ZelGeoCoordSysList.h, which make and register them; SpareGeoCoordSys.h, the base a
// plug-in derives from; ZelGeoDatabaseBase.h and ZelGeoStaticDataBase.h, the other two.
#pragma once

#include "zelbase/geodesy/detail/OperationRuns.h"
#include "zelbase/platform/ZelBaseApi.h"

// No data, no bases. The destructor stands first, and after it exactly 66 operations: a plug-in and a program that were built
// apart meet in these places, so that none may be added, taken out or moved. The 20th has a name; the others are spare, each
// numbered by its place after the destructor, and are given a meaning between a plug-in and who knows it.
//
// One object belongs to one thread at a time, as far as the plug-in says nothing else.
class ZELBASE_API ZelGeoCoordSysBase {
 public:
  // In the library, so that the class is one and the same for every module of a process: a dynamic_cast in one knows what
  // another has made.
  virtual ~ZelGeoCoordSysBase();

  // virtual bool Operation1() = 0 to Operation19, which answer with false where a plug-in has nothing for them.
  ZELBASE_OPERATIONS_1_TO_19(ZELBASE_PURE_OPERATION)

  // The linear unit of the system, in metres to one unit (0.3048 for the foot). `factor` comes in with the caller's present
  // unit and may be left as it is, which is what a system without a unit does; GeoidModel::Init takes 0.0 for no unit as
  // well. The result says whether the system has one; it is not looked at there.
  virtual bool GetLinearUnit(double& factor) = 0;

  // virtual bool Operation21() = 0 to Operation66, likewise.
  ZELBASE_OPERATIONS_21_TO_66(ZELBASE_PURE_OPERATION)
};
