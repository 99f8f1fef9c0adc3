// What a module of the suite contributes: devices, computations, loggers, layers, tools, views, actions, geoid models,
// document templates. Neighbour: CInitializerList.h, which takes one instance a module and calls it phase by phase.
#pragma once

#include <string>

#include "zelbase/platform/CWinApp.h"
#include "zelbase/platform/ZelBaseApi.h"

// Each phase is called once by each CInitializerList walk of its name, on the host's start-up thread. A phase that a module
// has nothing for stays as it is here and does nothing.
class ZELBASE_API CBaseInitializer {
 public:
  virtual ~CBaseInitializer() = default;

  // The name under which CInitializerList::RemoveInitializer finds it. An answer only: it changes nothing in the list.
  virtual std::string GetName() const = 0;

  virtual void InitializeTemplates(CWinApp* /*application*/) {}
  virtual void RegisterDevices() {}
  virtual void RegisterComps() {}
  virtual void RegisterLoggers() {}
  virtual void RegisterLayers() {}
  virtual void RegisterTools() {}

  // The only phase with a result; the list throws it away.
  virtual bool RegisterViews() { return false; }

  virtual void RegisterActionGroups() {}
  virtual void RegisterActions() {}
  virtual void RegisterGeoidModel() {}

 protected:
  CBaseInitializer() = default;
  CBaseInitializer(const CBaseInitializer&) = default;
  CBaseInitializer& operator=(const CBaseInitializer&) = default;
};
