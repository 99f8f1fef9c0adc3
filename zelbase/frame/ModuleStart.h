// What happens when the library is loaded and unloaded: the version check, the chaining into the application's list of
// modules, the choice of the language module. Neighbours: LanguageModules.h, which chooses it; CInitializerList.h, through
// which the suite's modules announce themselves afterwards; CDynLinkLibrary.h, the list.
#pragma once

#include "zelbase/platform/CDynLinkLibrary.h"
#include "zelbase/platform/ZelBaseApi.h"

// The library's version, one byte a component, the highest first: 4.1.0.7.
inline constexpr unsigned int ZELBASE_VERSION = 0x4010007;

// Reasons for calling ZelBaseMain.
inline constexpr unsigned int ZELBASE_PROCESS_DETACH = 0;
inline constexpr unsigned int ZELBASE_PROCESS_ATTACH = 1;

// The load routine. Nothing runs it by itself: the host calls it after loading the library, with the library's handle, and
// again before unloading it. Load and unload run one at a time, on the host's start-up thread.
//
// ZELBASE_PROCESS_ATTACH, in this order: CheckDllVersion with version, source name and build stamp; the module's extension
// record; its link in the application's list of modules; the language module. The first two may refuse, and then nothing
// further happens and the result is 0. The language module's outcome does not touch the result.
//
// ZELBASE_PROCESS_DETACH takes the link back; the language module stays loaded. Every other reason does nothing.
// `reserved` is not read. The result is 1 for success.
//
// The build stamp is a constant, so that one source always gives one library; a release sets the macro
// ZELBASE_BUILD_STAMP when it compiles ModuleStart.cpp.
extern "C" ZELBASE_API int ZelBaseMain(HINSTANCE module, unsigned int reason, void* reserved);

// Whether a module of this version, source name and build stamp ("Jan 15 2014 16:19:18") fits the suite. Asks what
// SetCheckDllVersion has set; true when nothing is set.
ZELBASE_API bool CheckDllVersion(unsigned int version, const char* sourceFile, const char* buildDate);

using CheckDllVersionHook = bool (*)(unsigned int version, const char* sourceFile, const char* buildDate);

// Puts the suite's own check behind CheckDllVersion and returns the one before; null is none.
ZELBASE_API CheckDllVersionHook SetCheckDllVersion(CheckDllVersionHook check);

// Chooses and installs the language module for `module`, whose record holds the resource handle `resource`.
using LanguageModuleHook = void (*)(HINSTANCE module, HINSTANCE resource);

// Sets what the load routine calls to choose the language module and returns the one before. At first it is one that calls
// ZELCORE::LoadDLLResourceDLL. With null none is chosen, and the module keeps the texts built into it.
ZELBASE_API LanguageModuleHook SetLanguageModuleHook(LanguageModuleHook choose);
