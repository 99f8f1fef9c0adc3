#include "zelbase/frame/ModuleStart.h"

#include <atomic>

#include "zelbase/frame/LanguageModules.h"

// When the release was built, in the form of __DATE__ and __TIME__, which themselves would give another library at
// each build.
#ifndef ZELBASE_BUILD_STAMP
#define ZELBASE_BUILD_STAMP "Jan 15 2014 16:19:18"
#endif

namespace {

constexpr int kSuccess = 1;
constexpr int kRefused = 0;

std::atomic<CheckDllVersionHook> g_checkDllVersion = nullptr;

void LoadLanguageModule(HINSTANCE module, HINSTANCE resource) { ZELCORE::LoadDLLResourceDLL(module, resource); }

std::atomic<LanguageModuleHook> g_chooseLanguage = LoadLanguageModule;

AFX_EXTENSION_MODULE g_record;

int Load(HINSTANCE module) {
  if (!CheckDllVersion(ZELBASE_VERSION, ".\\ZelBase", ZELBASE_BUILD_STAMP)) return kRefused;
  if (!AfxInitExtensionModule(g_record, module)) return kRefused;
  new CDynLinkLibrary(g_record);  // the application's list has it from now on
  if (const LanguageModuleHook choose = g_chooseLanguage) choose(module, g_record.hResource);
  return kSuccess;
}

}  // namespace

int ZelBaseMain(HINSTANCE module, unsigned int reason, void* /*reserved*/) {
  if (reason == ZELBASE_PROCESS_ATTACH) return Load(module);
  if (reason == ZELBASE_PROCESS_DETACH) AfxTermExtensionModule(g_record, false);
  return kSuccess;
}

bool CheckDllVersion(unsigned int version, const char* sourceFile, const char* buildDate) {
  const CheckDllVersionHook check = g_checkDllVersion;
  return check == nullptr || check(version, sourceFile, buildDate);
}

CheckDllVersionHook SetCheckDllVersion(CheckDllVersionHook check) { return g_checkDllVersion.exchange(check); }

LanguageModuleHook SetLanguageModuleHook(LanguageModuleHook choose) { return g_chooseLanguage.exchange(choose); }
