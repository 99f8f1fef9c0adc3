// The base for a plug-in's coordinate systems: every spare slot answers with false, so that a class overrides only what it has.
// Neighbours: ZelGeoCoordSysBase.h, the interface; SpareGeoDatabase.h and SpareGeoStaticData.h, the other two.
#pragma once

#include "zelbase/geodesy/ZelGeoCoordSysBase.h"
#include "zelbase/platform/ZelBaseApi.h"

// Still abstract: GetLinearUnit, the one slot that the library itself asks, stays with the plug-in.
class ZELBASE_API SpareGeoCoordSys : public ZelGeoCoordSysBase {
 public:
  ~SpareGeoCoordSys() override;

  bool Operation1() override { return false; }
  bool Operation2() override { return false; }
  bool Operation3() override { return false; }
  bool Operation4() override { return false; }
  bool Operation5() override { return false; }
  bool Operation6() override { return false; }
  bool Operation7() override { return false; }
  bool Operation8() override { return false; }
  bool Operation9() override { return false; }
  bool Operation10() override { return false; }
  bool Operation11() override { return false; }
  bool Operation12() override { return false; }
  bool Operation13() override { return false; }
  bool Operation14() override { return false; }
  bool Operation15() override { return false; }
  bool Operation16() override { return false; }
  bool Operation17() override { return false; }
  bool Operation18() override { return false; }
  bool Operation19() override { return false; }
  bool Operation21() override { return false; }
  bool Operation22() override { return false; }
  bool Operation23() override { return false; }
  bool Operation24() override { return false; }
  bool Operation25() override { return false; }
  bool Operation26() override { return false; }
  bool Operation27() override { return false; }
  bool Operation28() override { return false; }
  bool Operation29() override { return false; }
  bool Operation30() override { return false; }
  bool Operation31() override { return false; }
  bool Operation32() override { return false; }
  bool Operation33() override { return false; }
  bool Operation34() override { return false; }
  bool Operation35() override { return false; }
  bool Operation36() override { return false; }
  bool Operation37() override { return false; }
  bool Operation38() override { return false; }
  bool Operation39() override { return false; }
  bool Operation40() override { return false; }
  bool Operation41() override { return false; }
  bool Operation42() override { return false; }
  bool Operation43() override { return false; }
  bool Operation44() override { return false; }
  bool Operation45() override { return false; }
  bool Operation46() override { return false; }
  bool Operation47() override { return false; }
  bool Operation48() override { return false; }
  bool Operation49() override { return false; }
  bool Operation50() override { return false; }
  bool Operation51() override { return false; }
  bool Operation52() override { return false; }
  bool Operation53() override { return false; }
  bool Operation54() override { return false; }
  bool Operation55() override { return false; }
  bool Operation56() override { return false; }
  bool Operation57() override { return false; }
  bool Operation58() override { return false; }
  bool Operation59() override { return false; }
  bool Operation60() override { return false; }
  bool Operation61() override { return false; }
  bool Operation62() override { return false; }
  bool Operation63() override { return false; }
  bool Operation64() override { return false; }
  bool Operation65() override { return false; }
  bool Operation66() override { return false; }
};
