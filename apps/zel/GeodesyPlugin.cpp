#include "GeodesyPlugin.h"

#include <filesystem>
#include <system_error>

#include "SettingsFile.h"
#include "TextEdge.h"
#include "zelbase/geodesy/ZelGeoCoordSysList.h"
#include "zelbase/geodesy/ZelGeoCoordSysLoader.h"
#include "zelbase/geodesy/ZelGeoDatabaseBaseList.h"
#include "zelbase/geodesy/ZelGeoStaticDatabaseList.h"
#include "zelbase/platform/PlatformModules.h"

namespace zel {
namespace {

namespace fs = std::filesystem;

// The loader's names, in its order.
constexpr const char* kFiles[] = {"ZELGeoCoordSysR.dll", "libZELGeoCoordSysR.so"};

// The loader looks in the current folder only; this is another one for as long as it lives.
class CurrentFolder {
 public:
  explicit CurrentFolder(const fs::path& folder) : m_former(fs::current_path()) { fs::current_path(folder); }
  ~CurrentFolder() {
    std::error_code fault;
    fs::current_path(m_former, fault);
  }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;

 private:
  fs::path m_former;
};

// Empty when the folder has none.
fs::path FileIn(const fs::path& folder) {
  std::error_code fault;
  for (const char* const name : kFiles) {
    if (fs::is_regular_file(folder / name, fault)) return folder / name;
  }
  return {};
}

// The one that the loader has taken from the current folder, by its rule: the first that loads, which is in the process already
// and is only counted here. Empty when none does.
std::string LoadedFile() {
  PlatformModules& modules = PlatformModules::System();
  for (std::string name : kFiles) {
    const ModuleHandle module = modules.Load("./" + name);
    modules.Unload(module);
    if (module != nullptr) return name;
  }
  return {};
}

std::vector<fs::path> Folders(const std::string& folder) {
  if (!folder.empty()) return {folder};
  const fs::path own = fs::path(ToShownPath(PlatformModules::System().ProgramPath())).parent_path();
  return {own, (own / ZEL_PLUGIN_FOLDER).lexically_normal()};
}

template <class Interface, class Registry>
std::unique_ptr<Interface> Make(const std::vector<std::string>& types, Registry& registry, const char* what, std::string& reason) {
  for (const std::string& type : types) {
    auto* const made = registry.Create(type);
    std::unique_ptr<Interface> named(dynamic_cast<Interface*>(made));
    if (named != nullptr) return named;
    delete made;
  }
  reason = std::string("the plug-in has no ") + what + " that is ready";
  return nullptr;
}

}  // namespace

bool GeodesyPlugin::Load(const std::string& folder) {
  std::string looked;
  for (const fs::path& place : Folders(folder)) {
    const fs::path file = FileIn(place);
    looked += (looked.empty() ? "\"" : ", \"") + place.string() + "\"";
    if (file.empty()) continue;
    const fs::path whole = fs::absolute(file).lexically_normal();
    const CurrentFolder current(place);
    const bool loaded = ZelGeoCoordSysLoader::Instance().LoadDLL("ZELCoordSys", nullptr);
    const std::string taken = LoadedFile();
    m_file = (taken.empty() ? whole : whole.parent_path() / taken).string();
    if (loaded) return true;
    m_reason = "\"" + m_file + "\" is no geodesy plug-in: it does not load, or has no working \"RegisterCoordSys\"";
    return false;
  }
  m_reason = "no geodesy plug-in (" + std::string(kFiles[0]) + " or " + kFiles[1] + ") in " + looked;
  return false;
}

std::unique_ptr<GeoCoordSys> GeodesyPlugin::MakeSystem() {
  return Make<GeoCoordSys>(CoordSysTypes(), ZelGeoCoordSysList::GetCoordSysList(), "coordinate system", m_reason);
}

std::unique_ptr<GeoDatabase> GeodesyPlugin::MakeDatabase() {
  return Make<GeoDatabase>(DatabaseTypes(), ZelGeoDatabaseBaseList::GetGeoDatabaseList(), "database", m_reason);
}

std::unique_ptr<GeoStaticData> GeodesyPlugin::MakeStaticData() {
  return Make<GeoStaticData>(StaticDataTypes(), ZelGeoStaticDatabaseList::GetGeoStaticDataList(), "static data", m_reason);
}

std::unique_ptr<GeoCoordSys> GeodesyPlugin::Select(const std::string& code) {
  std::unique_ptr<GeoCoordSys> system = MakeSystem();
  std::string text;
  if (system == nullptr) return nullptr;
  if (FromArgument(code, Encoding::Windows1252, text) && system->Select(text)) return system;
  const std::string why = system->Reason();
  m_reason = why.empty() ? "\"" + code + "\" has characters that no code has" : ToTerminal(why, Encoding::Windows1252);
  return nullptr;
}

std::vector<std::string> CoordSysTypes() {
  std::vector<std::string> types;
  ZelGeoCoordSysList::GetCoordSysList().GetCoordSysTypes(types);
  return types;
}

std::vector<std::string> DatabaseTypes() {
  std::vector<std::string> types;
  ZelGeoDatabaseBaseList::GetGeoDatabaseList().GetGeoDatabaseTypes(types);
  return types;
}

std::vector<std::string> StaticDataTypes() {
  std::vector<std::string> types;
  ZelGeoStaticDatabaseList::GetGeoStaticDataList().GetGeoStaticTypes(types);
  return types;
}

}  // namespace zel
