// Programs and shared libraries of a test's own, in place of the computer's. Neighbour: PlatformModules.h, the interface.
#pragma once

#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "zelbase/platform/PlatformModules.h"
#include "zelbase/platform/ZelBaseApi.h"

// Answers what it was told and keeps what it was asked for. At first it knows no module: paths are empty, loading fails.
//
//   FixedModules modules;
//   modules.SetProgramPath("C:\\suite\\survey.exe");
//   modules.AddLibrary(".\\localizations\\Deutsch\\survey_res.dll");
//   PlatformOverride<PlatformModules> guard(modules);
//
// Not locked: one thread at a time. Not copyable, since handles point into it.
class ZELBASE_API FixedModules : public PlatformModules {
 public:
  FixedModules() = default;
  FixedModules(const FixedModules&) = delete;
  FixedModules& operator=(const FixedModules&) = delete;

  void SetProgramPath(std::string path) { m_programPath = std::move(path); }

  // The path of the module that holds exactly this address, or has it for its handle; others have the default's.
  void SetModulePath(const void* address, std::string path) { m_modulePaths[address] = std::move(path); }
  void SetModulePath(std::string path) { m_defaultModulePath = std::move(path); }

  // ".dll" at first.
  void SetLibraryEnding(std::string ending) { m_libraryEnding = std::move(ending); }

  // A library that loads under this very text, and the handle that loading gives. A second library of the same path is
  // the first.
  ModuleHandle AddLibrary(const std::string& path);

  // Gives a library an export; ignored for a handle that is none of this object's.
  void AddExport(ModuleHandle module, const std::string& name, void* address);

  // Every path that Load was called with, in order.
  const std::vector<std::string>& Requests() const { return m_requests; }

  // Loads of this library not yet given back; negative when it was unloaded too often, 0 for an unknown handle.
  int LoadCount(ModuleHandle module) const;

  std::string ProgramPath() override;
  std::string ModulePath(const void* address) override;
  std::string HandlePath(ModuleHandle module) override;
  std::string LibraryEnding() override;
  ModuleHandle Load(const std::string& path) override;
  void* FindExport(ModuleHandle module, const std::string& name) override;
  void Unload(ModuleHandle module) override;

 private:
  struct Library {
    std::string path;
    std::map<std::string, void*> exports;
    int loads = 0;
  };

  Library* FindLibrary(ModuleHandle module);

  std::string m_programPath;
  std::string m_defaultModulePath;
  std::string m_libraryEnding = ".dll";
  std::map<const void*, std::string> m_modulePaths;
  std::deque<Library> m_libraries;  // a handle is the address of its library
  std::vector<std::string> m_requests;
};
