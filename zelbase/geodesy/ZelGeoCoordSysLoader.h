// Brings the geodesy plug-in into the process. Neighbours: ZelGeoCoordSysList.h, ZelGeoDatabaseBaseList.h,
// ZelGeoStaticDatabaseList.h and GeoidModelList.h, the registries that it fills; SpareGeoCoordSys.h and its two sisters, what
// it derives its classes from; docs/geodesy.md, how to write and link one.
#pragma once

#include <string>

#include "zelbase/geodesy/ZelGeoCoordSysBase.h"
#include "zelbase/platform/PlatformModules.h"
#include "zelbase/platform/ZelBaseApi.h"

// The plug-in is the module "ZELGeoCoordSysR.dll", or "libZELGeoCoordSysR.so", in the current folder, with the export
//
//   extern "C" void RegisterCoordSys();
//
// which registers creators of the plug-in's classes with the one registries. It is called each time that LoadDLL is, so that
// it is to guard itself: a creator that comes a second time is refused and stays its own. Nothing is given back: the module
// stays loaded until the process ends, as its objects do.
//
// A plug-in must meet the library that the host has, not carry one of its own, or it fills registries that nobody asks:
// - libZelBase shared: host and plug-in both link it.
// - libZelBase static: the host links all of it and exports its symbols, the plug-in links none of it and takes them from the
//   host.
// The targets ZelBase::Host and ZelBase::Plugin do the right one of the two; who links by hand finds the options in
// docs/geodesy.md.
//
// Not locked: the plug-in is loaded at the start, when one thread runs.
class ZELBASE_API ZelGeoCoordSysLoader {
 public:
  ZelGeoCoordSysLoader(const ZelGeoCoordSysLoader&) = delete;
  ZelGeoCoordSysLoader& operator=(const ZelGeoCoordSysLoader&) = delete;

  virtual ~ZelGeoCoordSysLoader();

  // The one loader, made at first use and never destroyed.
  static ZelGeoCoordSysLoader& Instance();

  // Loads the plug-in when `name` is exactly "ZELCoordSys" and it was not tried before, then calls its export. It is tried
  // once: what failed is not retried, even when the file appears later. True when the export was called and came back. False,
  // in silence, as long as no plug-in is loaded, when it has no such export, and when the export throws, whose exception ends
  // here. Once one is loaded, any name calls the export again. The second argument is not used. Without memory for its own texts
  // std::bad_alloc passes, and it was a try all the same.
  bool LoadDLL(std::string name, ZelGeoCoordSysBase* unused);

 private:
  ZelGeoCoordSysLoader() = default;

  bool m_loaded = false;  // tried, whatever came of it
  ModuleHandle m_module = nullptr;
};
