#include "zelbase/geodesy/ZelGeoCoordSysLoader.h"

namespace {

// The plug-in as the suite names it, otherwise as this system does; null without either.
ModuleHandle LoadPlugin() {
  PlatformModules& modules = PlatformService<PlatformModules>::Current();
  const ModuleHandle module = modules.Load("./ZELGeoCoordSysR.dll");
  return module != nullptr ? module : modules.Load("./libZELGeoCoordSysR.so");
}

// Whether the plug-in's own code comes back: what it throws must not end the host, which runs without coordinate systems,
// too.
bool CallQuietly(void (*registerCoordSys)()) {
  try {
    registerCoordSys();
  } catch (...) {
    return false;
  }
  return true;
}

}  // namespace

ZelGeoCoordSysLoader::~ZelGeoCoordSysLoader() = default;

ZelGeoCoordSysLoader& ZelGeoCoordSysLoader::Instance() {
  // It stays, as the module does: destructors that run at exit may still ask for it.
  static ZelGeoCoordSysLoader* const loader = new ZelGeoCoordSysLoader;
  return *loader;
}

bool ZelGeoCoordSysLoader::LoadDLL(std::string name, ZelGeoCoordSysBase* /*unused*/) {
  if (name == "ZELCoordSys" && !m_loaded) {
    // Kept: tried once, and set before, so that a module which asks while it is loaded does not load itself.
    m_loaded = true;
    m_module = LoadPlugin();
  }
  if (m_module == nullptr) return false;
  // Kept: whatever the name, and each time anew; the registries refuse what they have.
  void* const entry = PlatformService<PlatformModules>::Current().FindExport(m_module, "RegisterCoordSys");
  return entry != nullptr && CallQuietly(reinterpret_cast<void (*)()>(entry));
}
