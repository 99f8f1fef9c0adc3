#include "zelbase/frame/ModuleStart.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "zelbase/platform/FaultInjectionFiles.h"
#include "zelbase/platform/FixedFolders.h"
#include "zelbase/platform/FixedModules.h"

namespace {

// What the hooks were asked, in order.
std::vector<std::string>& Journal() {
  static std::vector<std::string> journal;
  return journal;
}

bool g_versionFits = true;
unsigned int g_version = 0;
std::string g_source;
std::string g_stamp;
HINSTANCE g_languageFor = nullptr;
HINSTANCE g_resource = nullptr;
std::size_t g_chainedBeforeLanguage = 0;

std::size_t Chained() { return AfxGetAppModuleState()->m_libraryList.size(); }

bool Check(unsigned int version, const char* sourceFile, const char* buildDate) {
  Journal().push_back("check");
  g_version = version;
  g_source = sourceFile;
  g_stamp = buildDate;
  return g_versionFits;
}

void Choose(HINSTANCE module, HINSTANCE resource) {
  Journal().push_back("language");
  g_languageFor = module;
  g_resource = resource;
  g_chainedBeforeLanguage = Chained();
}

int g_place = 0;
const HINSTANCE kModule = &g_place;

class ModuleStart : public testing::Test {
 protected:
  void SetUp() override {
    Journal().clear();
    g_versionFits = true;
    SetCheckDllVersion(Check);
    m_formerChoice = SetLanguageModuleHook(Choose);
  }
  void TearDown() override {
    ZelBaseMain(kModule, ZELBASE_PROCESS_DETACH, nullptr);
    AfxFailInitExtensionModule(0);
    SetCheckDllVersion(nullptr);
    SetLanguageModuleHook(m_formerChoice);
  }

  LanguageModuleHook m_formerChoice = nullptr;  // the library's own
};

TEST_F(ModuleStart, AttachChecksTheVersionAndChainsTheModuleAndThenChoosesTheLanguage) {
  EXPECT_NE(ZelBaseMain(kModule, 1, nullptr), 0);
  EXPECT_EQ(Journal(), (std::vector<std::string>{"check", "language"}));
  EXPECT_EQ(g_languageFor, kModule);
  EXPECT_EQ(g_resource, kModule);
  EXPECT_EQ(g_chainedBeforeLanguage, 1u);
  ASSERT_EQ(Chained(), 1u);
  EXPECT_EQ(AfxGetAppModuleState()->m_libraryList.front()->m_hModule, kModule);
}

TEST_F(ModuleStart, TheVersionHasOneByteAComponent) {
  ZelBaseMain(kModule, 1, nullptr);
  EXPECT_EQ(g_version, (4u << 24) | (1u << 16) | (0u << 8) | 7u);
  EXPECT_EQ(g_source, ".\\ZelBase");
}

TEST_F(ModuleStart, TheBuildStampHasTheCompilersForm) {
  ZelBaseMain(kModule, 1, nullptr);
  // "Jan 15 2014 16:19:18": letters, digits (a day below 10 has a blank), and what stands between them.
  const std::string form = "Aaa d9 9999 99:99:99";
  ASSERT_EQ(g_stamp.size(), form.size());
  for (std::size_t i = 0; i < form.size(); ++i) {
    const char c = g_stamp[i];
    switch (form[i]) {
      case 'A': EXPECT_TRUE(c >= 'A' && c <= 'Z') << i; break;
      case 'a': EXPECT_TRUE(c >= 'a' && c <= 'z') << i; break;
      case 'd': EXPECT_TRUE(c == ' ' || (c >= '1' && c <= '3')) << i; break;
      case '9': EXPECT_TRUE(c >= '0' && c <= '9') << i; break;
      default: EXPECT_EQ(c, form[i]) << i;
    }
  }
}

TEST_F(ModuleStart, AVersionThatDoesNotFitRefusesAndNothingElseHappens) {
  g_versionFits = false;
  EXPECT_EQ(ZelBaseMain(kModule, 1, nullptr), 0);
  EXPECT_EQ(Journal(), std::vector<std::string>{"check"});
  EXPECT_EQ(Chained(), 0u);
}

TEST_F(ModuleStart, ARecordThatFailsRefusesAndNothingFurtherHappens) {
  AfxFailInitExtensionModule(1);
  EXPECT_EQ(ZelBaseMain(kModule, 1, nullptr), 0);
  EXPECT_EQ(Journal(), std::vector<std::string>{"check"});
  EXPECT_EQ(Chained(), 0u);
  EXPECT_NE(ZelBaseMain(kModule, 1, nullptr), 0);
  EXPECT_EQ(Chained(), 1u);
}

TEST_F(ModuleStart, SucceedsWithoutALanguageModule) {
  SetLanguageModuleHook(nullptr);
  EXPECT_NE(ZelBaseMain(kModule, 1, nullptr), 0);
  EXPECT_EQ(Chained(), 1u);
}

TEST_F(ModuleStart, ChoosesTheLibrarysLanguageModuleUntilToldOtherwise) {
  EXPECT_NE(m_formerChoice, nullptr);
  FixedFolders folders;
  folders.SetCommonData("C:\\no such folder");
  FixedModules modules;
  modules.SetProgramPath("C:\\x\\app.exe");
  modules.SetModulePath(kModule, "C:\\x\\ZelBaseR.dll");
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFolders> foldersGuard(folders);
  const PlatformOverride<PlatformModules> modulesGuard(modules);
  const PlatformOverride<PlatformFiles> filesGuard(files);
  SetLanguageModuleHook(m_formerChoice);
  EXPECT_NE(ZelBaseMain(kModule, 1, nullptr), 0);
  EXPECT_EQ(files.Count(FileOperation::Open), 1u) << "the settings that hold the language";
  EXPECT_EQ(AfxGetAppModuleState()->m_libraryList.front()->m_hResource, kModule);
}

TEST_F(ModuleStart, WithoutAHookNoLanguageIsLookedFor) {
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  SetLanguageModuleHook(nullptr);
  EXPECT_NE(ZelBaseMain(kModule, 1, nullptr), 0);
  EXPECT_EQ(files.Count(), 0u);
}

TEST_F(ModuleStart, AnyVersionFitsWhenNothingIsSet) {
  SetCheckDllVersion(nullptr);
  EXPECT_TRUE(CheckDllVersion(0, nullptr, nullptr));
  EXPECT_NE(ZelBaseMain(kModule, 1, nullptr), 0);
  EXPECT_EQ(Journal(), std::vector<std::string>{"language"});
}

TEST_F(ModuleStart, SettingAHookGivesTheOneBefore) {
  EXPECT_EQ(SetCheckDllVersion(nullptr), &Check);
  EXPECT_EQ(SetCheckDllVersion(Check), nullptr);
  EXPECT_EQ(SetLanguageModuleHook(nullptr), &Choose);
  EXPECT_EQ(SetLanguageModuleHook(Choose), nullptr);
}

TEST_F(ModuleStart, DetachTakesTheLinkBackAndLeavesOtherModules) {
  int place = 0;
  AFX_EXTENSION_MODULE other;
  ASSERT_TRUE(AfxInitExtensionModule(other, &place));
  new CDynLinkLibrary(other);
  ZelBaseMain(kModule, 1, nullptr);
  ASSERT_EQ(Chained(), 2u);
  EXPECT_NE(ZelBaseMain(kModule, 0, nullptr), 0);
  ASSERT_EQ(Chained(), 1u);
  EXPECT_EQ(AfxGetAppModuleState()->m_libraryList.front()->m_hModule, &place);
  AfxTermExtensionModule(other);
}

TEST_F(ModuleStart, DetachWithoutAttachAndTwiceIsHarmless) {
  EXPECT_NE(ZelBaseMain(kModule, 0, nullptr), 0);
  ZelBaseMain(kModule, 1, nullptr);
  EXPECT_NE(ZelBaseMain(kModule, 0, nullptr), 0);
  EXPECT_NE(ZelBaseMain(kModule, 0, nullptr), 0);
  EXPECT_EQ(Chained(), 0u);
}

TEST_F(ModuleStart, EveryOtherReasonSucceedsAndDoesNothing) {
  for (const unsigned int reason : {2u, 3u, 4u, 0xFFFFFFFFu}) EXPECT_NE(ZelBaseMain(kModule, reason, nullptr), 0);
  EXPECT_EQ(Journal(), std::vector<std::string>{});
  EXPECT_EQ(Chained(), 0u);
}

}  // namespace
