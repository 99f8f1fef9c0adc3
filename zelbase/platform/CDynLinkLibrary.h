// The framework's chaining of extension modules, as small as the module start and the choice of language need it: a module's
// record, its place in the application's list, and the resource handle there. Neighbour: PlatformModules.h, which loads
// modules.
//
// Nothing here is locked: modules are loaded and unloaded one at a time.
#pragma once

#include <vector>

#include "zelbase/platform/CObject.h"
#include "zelbase/platform/PlatformModules.h"
#include "zelbase/platform/ZelBaseApi.h"

// The framework's name for the handle of a loaded module.
using HINSTANCE = ModuleHandle;

// What a module keeps about itself, one static object a module.
struct AFX_EXTENSION_MODULE {
  bool bInitialized = false;
  HINSTANCE hModule = nullptr;
  HINSTANCE hResource = nullptr;
};

// Fills the record in: handle and resource handle become `module`. A record that is filled in stays as it is. False, with
// the record as it was, when AfxFailInitExtensionModule said so.
ZELBASE_API bool AfxInitExtensionModule(AFX_EXTENSION_MODULE& record, HINSTANCE module);

// Destroys the CDynLinkLibrary objects of the record's module, or of every module with `all`, and empties the record. A
// record that was never filled in is left alone.
ZELBASE_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE& record, bool all = false);

// Tells the next `count` calls of AfxInitExtensionModule to fail, for tests; 0 or less ends that.
ZELBASE_API void AfxFailInitExtensionModule(int count);

// A module's link in the application's list. It chains itself in when it is made, at the front, and out when it is destroyed.
// Made with new and left to AfxTermExtensionModule.
class ZELBASE_API CDynLinkLibrary : public CObject {
 public:
  explicit CDynLinkLibrary(const AFX_EXTENSION_MODULE& record);
  ~CDynLinkLibrary() override;
  CDynLinkLibrary(const CDynLinkLibrary&) = delete;
  CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;

  HINSTANCE m_hModule;

  // Where the module's numbered texts are looked up; the module itself until a language module is installed here.
  HINSTANCE m_hResource;
};

// The state that the application shares with its extension modules.
struct AFX_MODULE_STATE {
  // The application's own resource handle.
  HINSTANCE m_hCurrentResourceHandle = nullptr;

  // The extension modules, the latest first. Owned until AfxTermExtensionModule.
  std::vector<CDynLinkLibrary*> m_libraryList;
};

// The application's state; never null, never destroyed.
ZELBASE_API AFX_MODULE_STATE* AfxGetAppModuleState();

// The state of the module that runs at present. Extension modules run with the application's, so it is that same one.
ZELBASE_API AFX_MODULE_STATE* AfxGetModuleState();
