#include "zelbase/frame/LanguageModules.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "zelbase/config/FileObject.h"
#include "zelbase/config/detail/QuietOpen.h"
#include "zelbase/errors/NumberedTexts.h"
#include "zelbase/frame/SectionNames.h"
#include "zelbase/frame/detail/LanguageChoice.h"
#include "zelbase/frame/detail/LanguageTables.h"
#include "zelbase/platform/PlatformFolders.h"
#include "zelbase/platform/PlatformModules.h"

using zelbase::detail::HasFolder;
using zelbase::detail::IsLanguage;
using zelbase::detail::LanguageModulePath;
using zelbase::detail::LanguageSettingsPath;
using zelbase::detail::LanguageTable;
using zelbase::detail::LanguageTableChain;
using zelbase::detail::LanguageTitle;
using zelbase::detail::LanguageUser;
using zelbase::detail::LoadLanguageTable;
using zelbase::detail::OpenQuietly;

namespace {

constexpr const char* kLanguageKey = "Language";

using Chain = std::shared_ptr<const LanguageTableChain>;

// The tables installed last; never destroyed, as the texts themselves.
Chain& Installed() {
  static Chain& chain = *new Chain(std::make_shared<LanguageTableChain>(std::vector<LanguageTable>()));
  return chain;
}

std::string ReadLanguage(const std::string& settingsFile) {
  FileObject settings;
  std::string language;
  if (!OpenQuietly(settings, settingsFile)) return {};
  return settings.GetItem(LANGUAGE_SECTION, kLanguageKey, language) && IsLanguage(language) ? language : std::string();
}

LanguageModuleChoice Choose(HINSTANCE module, LanguageUser user) {
  PlatformModules& modules = PlatformService<PlatformModules>::Current();
  LanguageModuleChoice choice;
  const std::string modulePath = modules.HandlePath(module);
  std::string commonFolder;
  if (!HasFolder(modulePath) || !PlatformService<PlatformFolders>::Current().CommonData(commonFolder)) return choice;
  choice.settingsFile = LanguageSettingsPath(commonFolder, modules.ProgramPath());
  choice.language = ReadLanguage(choice.settingsFile);
  if (choice.language.empty()) return choice;
  choice.languageModule = LanguageModulePath(choice.language, LanguageTitle(modulePath, user));
  return choice;
}

LanguageTable Load(const LanguageModuleChoice& choice) {
  return choice.languageModule.empty() ? LanguageTable() : LoadLanguageTable(choice.languageModule);
}

// The extension module's link in the application's list; null when it has none.
CDynLinkLibrary* FindRecord(HINSTANCE module) {
  const std::vector<CDynLinkLibrary*>& libraries = AfxGetAppModuleState()->m_libraryList;
  const auto found =
      std::find_if(libraries.begin(), libraries.end(), [module](const CDynLinkLibrary* library) { return library->m_hModule == module; });
  return found != libraries.end() ? *found : nullptr;
}

// The resource handles that texts are looked up by, in their order.
std::vector<HINSTANCE> ResourceHandles() {
  std::vector<HINSTANCE> handles = {AfxGetModuleState()->m_hCurrentResourceHandle};
  for (const CDynLinkLibrary* const library : AfxGetAppModuleState()->m_libraryList) handles.push_back(library->m_hResource);
  return handles;
}

// Puts in force what the resource handles stand for, `loaded` among it. Tables whose handle is no longer anybody's go.
void PutInForce(LanguageTable loaded) {
  std::vector<LanguageTable> known = Installed()->Tables();
  known.push_back(std::move(loaded));
  std::vector<LanguageTable> inForce;
  for (const HINSTANCE handle : ResourceHandles()) {
    const auto found = std::find_if(known.begin(), known.end(), [handle](const LanguageTable& each) { return each.handle == handle; });
    if (found != known.end()) inForce.push_back(*found);
  }
  const Chain chain = std::make_shared<LanguageTableChain>(std::move(inForce));
  InstallNumberedTexts(chain);
  Installed() = chain;
}

// `resource` is the handle that looks texts up, which becomes that of `loaded`. Without memory nothing is changed.
void Install(LanguageTable loaded, HINSTANCE& resource) {
  const HINSTANCE before = std::exchange(resource, loaded.handle);
  try {
    PutInForce(std::move(loaded));
  } catch (const std::bad_alloc&) {
    resource = before;
    throw;
  }
}

}  // namespace

namespace ZELCORE {

bool LoadAPPResourceDLL(HINSTANCE module) {
  LanguageTable loaded = Load(FindAPPResourceDLL(module));
  if (loaded.table == nullptr) return false;
  Install(std::move(loaded), AfxGetModuleState()->m_hCurrentResourceHandle);
  return true;
}

bool LoadDLLResourceDLL(HINSTANCE module, HINSTANCE /*unused*/) {
  LanguageTable loaded = Load(FindDLLResourceDLL(module));
  if (loaded.table == nullptr) return false;
  CDynLinkLibrary* const record = FindRecord(module);
  // Kept: a library that nobody has a place for stays loaded; hosts that chain themselves in later count on it.
  if (record == nullptr) return false;
  Install(std::move(loaded), record->m_hResource);
  return true;
}

LanguageModuleChoice FindAPPResourceDLL(HINSTANCE module) { return Choose(module, LanguageUser::Application); }

LanguageModuleChoice FindDLLResourceDLL(HINSTANCE module) { return Choose(module, LanguageUser::Extension); }

}  // namespace ZELCORE
