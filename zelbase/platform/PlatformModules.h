// Programs and shared libraries: where they lie, how one is loaded and asked for an export. Neighbour: FixedModules.h, the
// stand-in.
#pragma once

#include <string>

#include "zelbase/platform/PlatformService.h"
#include "zelbase/platform/ZelBaseApi.h"

// A loaded module; 0 is none.
using ModuleHandle = void*;

class ZELBASE_API PlatformModules {
 public:
  virtual ~PlatformModules() = default;

  // Full path of the running program in the "\" form; a name without an extension is given as "name.exe". Empty when
  // unknown.
  virtual std::string ProgramPath() = 0;

  // Full path in the "\" form of the module that holds `address`; "libName.so..." is given as "NameR.dll". Empty when
  // unknown.
  virtual std::string ModulePath(const void* address) = 0;

  // Full path, as above, of the loaded module that `module` is the handle of, or in which it is an address; null is the
  // program. Empty when it is neither.
  virtual std::string HandlePath(ModuleHandle module) = 0;

  // How the names of this system's shared libraries end, with the dot.
  virtual std::string LibraryEnding() = 0;

  // Loads the shared library at `path` ("\" or "/"; relative to the current folder). Null on failure, in silence: cut
  // short, say, or with a word of the loader's own ("$LIB") in its path. What its statics throw ends the process.
  virtual ModuleHandle Load(const std::string& path) = 0;

  // The address of an exported name; null when there is none or `module` is null.
  virtual void* FindExport(ModuleHandle module, const std::string& name) = 0;

  // Gives one Load back. Null is ignored.
  virtual void Unload(ModuleHandle module) = 0;

  // This system's modules; never destroyed.
  static PlatformModules& System();
};
