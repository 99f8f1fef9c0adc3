// A coordinate system, as a geodesy plug-in supplies it: the interface that the library and the plug-in agree on, by slot.
// Neighbours: ZelCoordSysICreator.h and ZelGeoCoordSysList.h, which make and register them; SpareGeoCoordSys.h, the base a plug-in
// derives from; ZelGeoDatabaseBase.h and ZelGeoStaticDataBase.h, the other two.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

// No data, no bases. The destructor stands first, and after it exactly 66 operations: a plug-in and a program that were built apart
// meet in these places, so that none may be added, taken out or moved. The 20th has a name; the others are spare, each
// numbered by its place after the destructor, and are given a meaning between a plug-in and who knows it.
//
// One object belongs to one thread at a time, as far as the plug-in says nothing else.
class ZELBASE_API ZelGeoCoordSysBase {
 public:
  // In the library, so that the class is one and the same for every module of a process: a dynamic_cast in one knows what another
  // has made.
  virtual ~ZelGeoCoordSysBase();

  // Spare slots answer with false where a plug-in has nothing for them.
  virtual bool Operation1() = 0;
  virtual bool Operation2() = 0;
  virtual bool Operation3() = 0;
  virtual bool Operation4() = 0;
  virtual bool Operation5() = 0;
  virtual bool Operation6() = 0;
  virtual bool Operation7() = 0;
  virtual bool Operation8() = 0;
  virtual bool Operation9() = 0;
  virtual bool Operation10() = 0;
  virtual bool Operation11() = 0;
  virtual bool Operation12() = 0;
  virtual bool Operation13() = 0;
  virtual bool Operation14() = 0;
  virtual bool Operation15() = 0;
  virtual bool Operation16() = 0;
  virtual bool Operation17() = 0;
  virtual bool Operation18() = 0;
  virtual bool Operation19() = 0;

  // The linear unit of the system, in metres to one unit (0.3048 for the foot). `factor` comes in with the caller's present unit
  // and may be left as it is, which is what a system without a unit does; GeoidModel::Init takes 0.0 for no unit as well. The
  // result says whether the system has one; it is not looked at there.
  virtual bool GetLinearUnit(double& factor) = 0;

  virtual bool Operation21() = 0;
  virtual bool Operation22() = 0;
  virtual bool Operation23() = 0;
  virtual bool Operation24() = 0;
  virtual bool Operation25() = 0;
  virtual bool Operation26() = 0;
  virtual bool Operation27() = 0;
  virtual bool Operation28() = 0;
  virtual bool Operation29() = 0;
  virtual bool Operation30() = 0;
  virtual bool Operation31() = 0;
  virtual bool Operation32() = 0;
  virtual bool Operation33() = 0;
  virtual bool Operation34() = 0;
  virtual bool Operation35() = 0;
  virtual bool Operation36() = 0;
  virtual bool Operation37() = 0;
  virtual bool Operation38() = 0;
  virtual bool Operation39() = 0;
  virtual bool Operation40() = 0;
  virtual bool Operation41() = 0;
  virtual bool Operation42() = 0;
  virtual bool Operation43() = 0;
  virtual bool Operation44() = 0;
  virtual bool Operation45() = 0;
  virtual bool Operation46() = 0;
  virtual bool Operation47() = 0;
  virtual bool Operation48() = 0;
  virtual bool Operation49() = 0;
  virtual bool Operation50() = 0;
  virtual bool Operation51() = 0;
  virtual bool Operation52() = 0;
  virtual bool Operation53() = 0;
  virtual bool Operation54() = 0;
  virtual bool Operation55() = 0;
  virtual bool Operation56() = 0;
  virtual bool Operation57() = 0;
  virtual bool Operation58() = 0;
  virtual bool Operation59() = 0;
  virtual bool Operation60() = 0;
  virtual bool Operation61() = 0;
  virtual bool Operation62() = 0;
  virtual bool Operation63() = 0;
  virtual bool Operation64() = 0;
  virtual bool Operation65() = 0;
  virtual bool Operation66() = 0;
};
