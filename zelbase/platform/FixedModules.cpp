#include "zelbase/platform/FixedModules.h"

ModuleHandle FixedModules::AddLibrary(const std::string& path) {
  for (Library& library : m_libraries) {
    if (library.path == path) return &library;
  }
  m_libraries.push_back({path, {}, 0});
  return &m_libraries.back();
}

FixedModules::Library* FixedModules::FindLibrary(ModuleHandle module) {
  for (Library& library : m_libraries) {
    if (&library == module) return &library;
  }
  return nullptr;
}

void FixedModules::AddExport(ModuleHandle module, const std::string& name, void* address) {
  if (Library* const library = FindLibrary(module)) library->exports[name] = address;
}

int FixedModules::LoadCount(ModuleHandle module) const {
  for (const Library& library : m_libraries) {
    if (&library == module) return library.loads;
  }
  return 0;
}

std::string FixedModules::ProgramPath() { return m_programPath; }

std::string FixedModules::ModulePath(const void* address) {
  const auto found = m_modulePaths.find(address);
  return found != m_modulePaths.end() ? found->second : m_defaultModulePath;
}

std::string FixedModules::HandlePath(ModuleHandle module) { return module == nullptr ? m_programPath : ModulePath(module); }

std::string FixedModules::LibraryEnding() { return m_libraryEnding; }

ModuleHandle FixedModules::Load(const std::string& path) {
  m_requests.push_back(path);
  for (Library& library : m_libraries) {
    if (library.path != path) continue;
    ++library.loads;
    return &library;
  }
  return nullptr;
}

void* FixedModules::FindExport(ModuleHandle module, const std::string& name) {
  Library* const library = FindLibrary(module);
  if (library == nullptr) return nullptr;
  const auto found = library->exports.find(name);
  return found != library->exports.end() ? found->second : nullptr;
}

void FixedModules::Unload(ModuleHandle module) {
  if (Library* const library = FindLibrary(module)) --library->loads;
}
