// The registry through which the modules of the suite announce what they contribute. Neighbours: CBaseInitializer.h for
// what a module hands in, ModuleStart.h for what runs before.
#pragma once

#include <string>
#include <vector>

#include "zelbase/frame/CBaseInitializer.h"
#include "zelbase/platform/ZelBaseApi.h"

// Holds initializers in the order in which they were added, and owns them: those still held are destroyed with the list.
// The library never walks the list by itself; the host calls the phases, in whatever order it likes, from its start-up
// thread. Nothing here is locked but the first GetInitializers.
//
// A phase calls its operation on one initializer after the other, by position, and looks at the list's length anew after each
// call: an initializer added during a phase is called in that phase too. One that removes itself or an earlier one moves the
// others forward under the walk, so that the next one is passed over. An exception ends the phase and goes to the host.
//
// A null initializer is stored, and passed over. The same initializer added twice is the caller's fault.
//
// Copies share: copying copies the pointers, and what a list assigned to had held is not destroyed. Both lists then name
// the same initializers and each would destroy them, so copies are not for use beside the one list.
class ZELBASE_API CInitializerList {
 public:
  CInitializerList() = default;
  CInitializerList(const CInitializerList&) = default;
  CInitializerList& operator=(const CInitializerList&) = default;

  // RemoveAll.
  ~CInitializerList();

  // The one list, made at first use. At process exit its initializers are destroyed, which needs their code still loaded:
  // a host that unloads a module earlier first removes its initializer. Other destructors at exit may still ask for the list.
  static CInitializerList& GetInitializers();

  // Appends, and owns from now on.
  void AddInitializer(CBaseInitializer* initializer);

  // Destroys the first initializer of that name, upper and lower case distinguished; the others keep their order. False
  // when there is none. The initializer has left the list before its destructor runs.
  bool RemoveInitializer(const std::string& name);

  // Destroys all, from the last to the first; each has left the list before its destructor runs.
  void RemoveAll();

  // --- Phases, in the order in which a host usually calls them ---

  void InitializeTemplates(CWinApp* application);
  void RegisterDevices();
  void RegisterComps();
  void RegisterLoggers();
  void RegisterLayers();
  void RegisterTools();
  void RegisterViews();
  void RegisterActionGroups();
  void RegisterActions();
  void RegisterGeoidModel();

 private:
  template <class Phase>
  void CallEach(Phase phase);

  std::vector<CBaseInitializer*> m_initializers;
};
