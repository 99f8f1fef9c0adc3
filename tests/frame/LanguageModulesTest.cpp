#include "zelbase/frame/LanguageModules.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/InChild.h"
#include "tests/support/ProcessUse.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestModules.h"
#include "zelbase/errors/FileError.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/errors/NumberedTexts.h"
#include "zelbase/frame/ModuleStart.h"
#include "zelbase/platform/CFile.h"
#include "zelbase/platform/FaultInjectionFiles.h"
#include "zelbase/platform/FixedFolders.h"
#include "zelbase/platform/FixedModules.h"

namespace {

int g_application = 0;
int g_extension = 0;
int g_otherExtension = 0;
const HINSTANCE kApplication = &g_application;
const HINSTANCE kExtension = &g_extension;
const HINSTANCE kOtherExtension = &g_otherExtension;

const char* TextsOfLibrary(int number) { return number == 12034 ? "from the library" : nullptr; }

// A computer whose settings and languages lie in a folder of the test's own, which Enter makes the current one.
class Computer {
 public:
  explicit Computer(const std::string& settings = "[Language]\nLanguage = Deutsch\n") {
    for (const char* const name : {"common", "common/VESOK", "common/VESOK/ZELCORE", "localizations", "localizations/Deutsch"}) {
      m_folder.MakeFolder(name);
    }
    WriteSettings(settings);
    m_folders.SetCommonData(m_folder.InterfacePath() + "\\common");
    m_modules.SetProgramPath("C:\\x\\app.exe");
    m_modules.SetModulePath(kApplication, "C:\\x\\app.exe");
    m_modules.SetModulePath(kExtension, "C:\\x\\ZelBaseR.dll");
    m_modules.SetModulePath(kOtherExtension, "C:\\x\\OtherR.dll");
  }

  void WriteSettings(const std::string& content) const { m_folder.Write("common/VESOK/ZELCORE/zelcore.ini", content); }

  // The language module of that title as a text file.
  void WriteTexts(const std::string& title, const std::string& rows) const {
    m_folder.Write("localizations/Deutsch/" + title + "_res.dll", "[Texts]\n" + rows);
  }

  void Enter() const { std::filesystem::current_path(m_folder.Path()); }

  const TemporaryFolder& Folder() const { return m_folder; }
  FixedFolders& Folders() { return m_folders; }
  FixedModules& Modules() { return m_modules; }

 private:
  TemporaryFolder m_folder;
  FixedFolders m_folders;
  FixedModules m_modules;
  PlatformOverride<PlatformFolders> m_foldersInForce{m_folders};
  PlatformOverride<PlatformModules> m_modulesInForce{m_modules};
};

// Chains an extension module in, as its own start does.
CDynLinkLibrary* Chain(HINSTANCE module) {
  AFX_EXTENSION_MODULE record;
  AfxInitExtensionModule(record, module);
  return new CDynLinkLibrary(record);
}

// What a failed choice leaves: nothing loaded, installed or reported.
void ExpectNothingChosen(Computer& computer, const std::string& what) {
  const int errors = GlobalErrorList::Get().NumErrors(true);
  ExpectInChild([&] {
    computer.Enter();
    const CDynLinkLibrary* const record = Chain(kExtension);
    EXPECT_FALSE(ZELCORE::LoadAPPResourceDLL(kApplication)) << what;
    EXPECT_FALSE(ZELCORE::LoadDLLResourceDLL(kExtension, nullptr)) << what;
    EXPECT_EQ(AfxGetModuleState()->m_hCurrentResourceHandle, nullptr) << what;
    EXPECT_EQ(record->m_hResource, kExtension) << what;
    EXPECT_EQ(InstallNumberedTexts(nullptr), nullptr) << what;
    EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), errors) << what;
    EXPECT_EQ(NumberedText(12034), "Unspecified Error") << what;
  });
}

// --- Which language module is asked for -------------------------------------------------------------------------

TEST(LanguageModules, TheChoiceTellsItsSteps) {
  const Computer computer;
  const std::string settings = computer.Folder().InterfacePath() + "\\common\\VESOK\\ZELCORE\\zelcore.ini";
  const LanguageModuleChoice application = ZELCORE::FindAPPResourceDLL(kApplication);
  EXPECT_EQ(application.settingsFile, settings);
  EXPECT_EQ(application.language, "Deutsch");
  EXPECT_EQ(application.languageModule, ".\\localizations\\Deutsch\\app_res");
  const LanguageModuleChoice extension = ZELCORE::FindDLLResourceDLL(kExtension);
  EXPECT_EQ(extension.settingsFile, settings);
  EXPECT_EQ(extension.language, "Deutsch");
  EXPECT_EQ(extension.languageModule, ".\\localizations\\Deutsch\\ZelBase_res");
}

TEST(LanguageModules, EachAsksForTheModuleOfItsTitle) {
  ExpectInChild([] {
    Computer computer;
    computer.Enter();
    EXPECT_FALSE(ZELCORE::LoadAPPResourceDLL(kApplication));
    EXPECT_FALSE(ZELCORE::LoadDLLResourceDLL(kExtension, kApplication));
    EXPECT_EQ(computer.Modules().Requests(),
              (std::vector<std::string>{".\\localizations\\Deutsch\\app_res.dll", ".\\localizations\\Deutsch\\ZelBase_res.dll"}));
  });
}

TEST(LanguageModules, NoHandleIsTheProgram) {
  const Computer computer;
  EXPECT_EQ(ZELCORE::FindAPPResourceDLL(nullptr).languageModule, ".\\localizations\\Deutsch\\app_res");
}

TEST(LanguageModules, OneProgramHasSettingsOfItsOwnWhateverTheModule) {
  Computer computer;
  computer.Modules().SetProgramPath("C:\\x\\TERNAXUI.exe");
  EXPECT_EQ(ZELCORE::FindDLLResourceDLL(kExtension).language, "");
  computer.Folder().Write("common/VESOK/ZELCORE/TernaxUI.ini", "[Language]\nLanguage = Nederlands\n");
  const LanguageModuleChoice choice = ZELCORE::FindDLLResourceDLL(kExtension);
  EXPECT_EQ(choice.settingsFile, computer.Folder().InterfacePath() + "\\common\\VESOK\\ZELCORE\\TernaxUI.ini");
  EXPECT_EQ(choice.languageModule, ".\\localizations\\Nederlands\\ZelBase_res");
  computer.Modules().SetProgramPath("C:\\x\\app.exe");
  computer.Modules().SetModulePath(kExtension, "C:\\x\\ternaxui.exe");
  EXPECT_EQ(ZELCORE::FindDLLResourceDLL(kExtension).language, "Deutsch");
}

// --- What chooses nothing ---------------------------------------------------------------------------------------

TEST(LanguageModules, AModuleWithoutAFolderHasNone) {
  Computer computer;
  computer.WriteTexts("app", "12034 = x");
  computer.WriteTexts("ZelBase", "12034 = x");
  computer.Modules().SetModulePath(kApplication, "app.exe");
  computer.Modules().SetModulePath(kExtension, "");
  ExpectNothingChosen(computer, "no folder");
  EXPECT_EQ(ZELCORE::FindAPPResourceDLL(kApplication).settingsFile, "");
}

TEST(LanguageModules, WithoutACommonFolderThereIsNone) {
  Computer computer;
  computer.WriteTexts("app", "12034 = x");
  computer.Folders().SetCommonData({});
  ExpectNothingChosen(computer, "no common folder");
  EXPECT_EQ(ZELCORE::FindAPPResourceDLL(kApplication).settingsFile, "");
}

TEST(LanguageModules, WithoutTheSettingThereIsNone) {
  for (const char* const settings : {"", "[Language]\n", "[Language]\nLanguage =\n", "[language]\nLanguage = Deutsch\n",
                                     "[Language]\nlanguage = Deutsch\n", "Language = Deutsch\n"}) {
    Computer computer(settings);
    computer.WriteTexts("app", "12034 = x");
    computer.WriteTexts("ZelBase", "12034 = x");
    ExpectNothingChosen(computer, settings);
  }
}

TEST(LanguageModules, MissingSettingsAreSilent) {
  Computer computer;
  computer.WriteTexts("app", "12034 = x");
  std::filesystem::remove(computer.Folder().File("common/VESOK/ZELCORE/zelcore.ini"));
  ExpectNothingChosen(computer, "no file");
  computer.Folder().MakeFolder("common/VESOK/ZELCORE/zelcore.ini");
  ExpectNothingChosen(computer, "a folder");
}

TEST(LanguageModules, SettingsThatFailWhileTheyAreReadAreSilent) {
  Computer computer;
  computer.WriteTexts("app", "12034 = x");
  FaultInjectionFiles files;
  files.FailAt(FileOperation::Read, 1, FileResult::IoFailed, FaultInjectionFiles::Repeat::ForEver);
  const PlatformOverride<PlatformFiles> guard(files);
  ExpectNothingChosen(computer, "read failure");
}

TEST(LanguageModules, SettingsThatAnotherIsWritingAreSilent) {
  Computer computer;
  computer.WriteTexts("app", "12034 = x");
  CFile writer;
  ASSERT_TRUE(
      writer.Open(computer.Folder().InterfacePath() + "\\common\\VESOK\\ZELCORE\\zelcore.ini", CFile::modeWrite | CFile::shareDenyNone));
  ExpectNothingChosen(computer, "being written");
}

TEST(LanguageModules, ALanguageThatLeavesTheFolderLoadsNothing) {
  for (const char* const language :
       {"..\\evil", "../evil", "..", "Deutsch\\..\\..\\evil", "Deutsch/../evil", "/evil", "C:evil", "Deutsch\\", "a..b"}) {
    Computer computer(std::string("[Language]\nLanguage = ") + language + "\n");
    for (const char* const folder : {"evil", "localizations/a..b"}) computer.Folder().MakeFolder(folder);
    for (const char* const name : {"evil/app_res.dll", "evil/ZelBase_res.dll", "app_res.dll", "ZelBase_res.dll",
                                   "localizations/a..b/app_res.dll", "localizations/Deutsch/app_res.dll"}) {
      computer.Folder().Write(name, "[Texts]\n12034 = evil\n");
    }
    ExpectNothingChosen(computer, language);
    const LanguageModuleChoice choice = ZELCORE::FindAPPResourceDLL(kApplication);
    EXPECT_EQ(choice.language, "") << language;
    EXPECT_EQ(choice.languageModule, "") << language;
  }
}

TEST(LanguageModules, AMissingLanguageModuleIsSilent) {
  Computer computer;
  ExpectNothingChosen(computer, "no language module");
}

// --- Installing -------------------------------------------------------------------------------------------------

TEST(LanguageModules, TheApplicationsHandleGoesIntoTheModuleState) {
  ExpectInChild([] {
    const Computer computer;
    computer.WriteTexts("app", "12034 = Unbekannter Fehler\n99 = neu\n");
    computer.Enter();
    EXPECT_TRUE(ZELCORE::LoadAPPResourceDLL(kApplication));
    EXPECT_NE(AfxGetModuleState()->m_hCurrentResourceHandle, nullptr);
    EXPECT_EQ(NumberedText(12034), "Unbekannter Fehler");
    EXPECT_EQ(NumberedText(99), "neu");
    EXPECT_EQ(NumberedText(12039), "Unknown");  // not in the file: built in
  });
}

TEST(LanguageModules, AnExtensionModulesHandleGoesIntoItsRecord) {
  ExpectInChild([] {
    const Computer computer;
    computer.WriteTexts("ZelBase", "12035 = Fehler beim \\x22\\xD6\" \"%s\".\n");
    computer.Enter();
    const CDynLinkLibrary* const first = Chain(kExtension);
    const CDynLinkLibrary* const other = Chain(kOtherExtension);
    EXPECT_TRUE(ZELCORE::LoadDLLResourceDLL(kExtension, nullptr));
    EXPECT_NE(first->m_hResource, kExtension);
    EXPECT_NE(first->m_hResource, nullptr);
    EXPECT_EQ(first->m_hModule, kExtension);
    EXPECT_EQ(other->m_hResource, kOtherExtension);
    EXPECT_EQ(AfxGetModuleState()->m_hCurrentResourceHandle, nullptr);
    EXPECT_EQ(FileError("C:\\a\\b.txt", FileError::Open).Format(), "Fehler beim \"\xD6\" \"b.txt\".");
  });
}

TEST(LanguageModules, WithoutARecordNothingIsInstalledAndTheLibraryStaysLoaded) {
  ExpectInChild([] {
    Computer computer;
    computer.Enter();
    const ModuleHandle library = computer.Modules().AddLibrary(".\\localizations\\Deutsch\\ZelBase_res.dll");
    computer.Modules().AddExport(library, "ZelNumberedText", reinterpret_cast<void*>(&TextsOfLibrary));
    const CDynLinkLibrary* const other = Chain(kOtherExtension);
    EXPECT_FALSE(ZELCORE::LoadDLLResourceDLL(kExtension, nullptr));
    EXPECT_EQ(computer.Modules().LoadCount(library), 1);
    EXPECT_EQ(other->m_hResource, kOtherExtension);
    EXPECT_EQ(NumberedText(12034), "Unspecified Error");
    EXPECT_EQ(InstallNumberedTexts(nullptr), nullptr);
  });
}

TEST(LanguageModules, ALibrarysOwnHandleIsInstalled) {
  ExpectInChild([] {
    Computer computer;
    computer.Enter();
    const ModuleHandle library = computer.Modules().AddLibrary(".\\localizations\\Deutsch\\ZelBase_res.dll");
    computer.Modules().AddExport(library, "ZelNumberedText", reinterpret_cast<void*>(&TextsOfLibrary));
    const CDynLinkLibrary* const record = Chain(kExtension);
    EXPECT_TRUE(ZELCORE::LoadDLLResourceDLL(kExtension, nullptr));
    EXPECT_EQ(record->m_hResource, library);
    EXPECT_EQ(NumberedText(12034), "from the library");
    EXPECT_EQ(NumberedText(12039), "Unknown");
  });
}

TEST(LanguageModules, TheSecondArgumentIsNeverRead) {
  ExpectInChild([] {
    const Computer computer;
    computer.WriteTexts("ZelBase", "12034 = x\n");
    computer.Enter();
    Chain(kExtension);
    EXPECT_TRUE(ZELCORE::LoadDLLResourceDLL(kExtension, reinterpret_cast<HINSTANCE>(1)));
  });
}

TEST(LanguageModules, TheApplicationIsAskedFirstAndThenTheModulesInTheOrderOfTheList) {
  ExpectInChild([] {
    const Computer computer;
    computer.WriteTexts("app", "1 = app\n");
    computer.WriteTexts("ZelBase", "1 = base\n2 = base\n3 = base\n");
    computer.WriteTexts("Other", "1 = other\n2 = other\n12039 = other\n");
    computer.Enter();
    Chain(kExtension);
    Chain(kOtherExtension);  // the latest stands first in the list
    EXPECT_TRUE(ZELCORE::LoadDLLResourceDLL(kOtherExtension, nullptr));
    EXPECT_TRUE(ZELCORE::LoadDLLResourceDLL(kExtension, nullptr));
    EXPECT_EQ(NumberedText(1), "other");
    EXPECT_TRUE(ZELCORE::LoadAPPResourceDLL(kApplication));
    EXPECT_EQ(NumberedText(1), "app");
    EXPECT_EQ(NumberedText(2), "other");
    EXPECT_EQ(NumberedText(3), "base");
    EXPECT_EQ(NumberedText(12039), "other");
    EXPECT_EQ(NumberedText(12034), "Unspecified Error");
  });
}

TEST(LanguageModules, TheRecordOfAModuleIsTheFirstInTheList) {
  ExpectInChild([] {
    const Computer computer;
    computer.WriteTexts("ZelBase", "1 = base\n");
    computer.Enter();
    const CDynLinkLibrary* const earlier = Chain(kExtension);
    const CDynLinkLibrary* const later = Chain(kExtension);
    EXPECT_TRUE(ZELCORE::LoadDLLResourceDLL(kExtension, nullptr));
    EXPECT_NE(later->m_hResource, kExtension);
    EXPECT_EQ(earlier->m_hResource, kExtension);
  });
}

TEST(LanguageModules, ChoosingAgainTakesThePlaceOfTheFormerLanguage) {
  ExpectInChild([] {
    const Computer computer;
    computer.Folder().MakeFolder("localizations/Nederlands");
    computer.WriteTexts("app", "1 = eins\n2 = zwei\n");
    computer.Folder().Write("localizations/Nederlands/app_res.dll", "[Texts]\n1 = een\n");
    computer.Enter();
    EXPECT_TRUE(ZELCORE::LoadAPPResourceDLL(kApplication));
    EXPECT_EQ(NumberedText(2), "zwei");
    const HINSTANCE former = AfxGetModuleState()->m_hCurrentResourceHandle;
    computer.WriteSettings("[Language]\nLanguage = Nederlands\n");
    EXPECT_TRUE(ZELCORE::LoadAPPResourceDLL(kApplication));
    EXPECT_NE(AfxGetModuleState()->m_hCurrentResourceHandle, former);
    EXPECT_EQ(NumberedText(1), "een");
    EXPECT_EQ(NumberedText(2), "");
    // A choice that fails leaves what is installed.
    computer.WriteSettings("[Language]\nLanguage = Suomi\n");
    EXPECT_FALSE(ZELCORE::LoadAPPResourceDLL(kApplication));
    EXPECT_EQ(NumberedText(1), "een");
  });
}

TEST(LanguageModules, AModuleThatEndedLosesItsTextsAtTheNextInstallation) {
  ExpectInChild([] {
    const Computer computer;
    computer.WriteTexts("app", "1 = app\n");
    computer.WriteTexts("ZelBase", "2 = base\n");
    computer.Enter();
    const std::unique_ptr<CDynLinkLibrary> other(Chain(kOtherExtension));
    std::unique_ptr<CDynLinkLibrary> record(Chain(kExtension));
    EXPECT_TRUE(ZELCORE::LoadDLLResourceDLL(kExtension, nullptr));
    record.reset();
    EXPECT_EQ(NumberedText(2), "base");
    EXPECT_TRUE(ZELCORE::LoadAPPResourceDLL(kApplication));
    EXPECT_EQ(NumberedText(1), "app");
    EXPECT_EQ(NumberedText(2), "");
  });
}

TEST(LanguageModules, TheLanguageModuleIsThatOfTheCurrentFolder) {
  ExpectInChild([] {
    const Computer computer;
    computer.WriteTexts("app", "1 = app\n");
    std::filesystem::current_path(computer.Folder().File("common"));
    EXPECT_FALSE(ZELCORE::LoadAPPResourceDLL(kApplication));
    computer.Enter();
    EXPECT_TRUE(ZELCORE::LoadAPPResourceDLL(kApplication));
  });
}

TEST(LanguageModules, TextsAreReadOnce) {
  ExpectInChild([] {
    const Computer computer;
    computer.WriteTexts("app", "1 = app\n");
    computer.Enter();
    EXPECT_TRUE(ZELCORE::LoadAPPResourceDLL(kApplication));
    computer.WriteTexts("app", "1 = changed\n");
    EXPECT_EQ(NumberedText(1), "app");
  });
}

TEST(LanguageModules, ManyThreadsAskWhileLanguagesAreInstalled) {
  ExpectInChild([] {
    const Computer computer;
    computer.WriteTexts("app", "1 = app\n");
    computer.WriteTexts("ZelBase", "1 = base\n2 = base\n");
    computer.Enter();
    Chain(kExtension);
    EXPECT_TRUE(ZELCORE::LoadAPPResourceDLL(kApplication));
    std::atomic<bool> goOn = true;
    std::atomic<int> wrong = 0;
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i) {
      readers.emplace_back([&] {
        while (goOn) {
          const std::string second = NumberedText(2);
          if (NumberedText(1) != "app" || NumberedText(12034) != "Unspecified Error") ++wrong;
          if (second != "base" && !second.empty()) ++wrong;
        }
      });
    }
    for (int i = 0; i < 50; ++i) {
      EXPECT_TRUE(ZELCORE::LoadDLLResourceDLL(kExtension, nullptr));
      EXPECT_TRUE(ZELCORE::LoadAPPResourceDLL(kApplication));
    }
    goOn = false;
    for (std::thread& reader : readers) reader.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(NumberedText(2), "base");
  });
}

// --- This system ------------------------------------------------------------------------------------------------

// The title of this test program: its file name, as it has no extension of its own.
std::string OwnTitle() { return std::filesystem::read_symlink("/proc/self/exe").filename().string(); }

// A computer whose language of the program is a file of the system's own kind. For a child: it makes the current folder its own.
class RealComputer {
 public:
  RealComputer() {
    for (const char* const name : {"VESOK", "VESOK/ZELCORE", "localizations", "localizations/Deutsch"}) m_folder.MakeFolder(name);
    m_folder.Write("VESOK/ZELCORE/zelcore.ini", "[Language]\r\nLanguage = Deutsch\r\n");
    m_folders.SetCommonData(m_folder.InterfacePath());
    std::filesystem::current_path(m_folder.Path());
  }

  std::string ModulePath() const { return m_folder.File("localizations/Deutsch/" + OwnTitle() + "_res.so"); }
  void Place(const std::string& module) const { std::filesystem::copy_file(ModuleFile(module), ModulePath()); }
  void Write(const std::string& content) const { m_folder.Write("localizations/Deutsch/" + OwnTitle() + "_res.so", content); }

 private:
  TemporaryFolder m_folder;
  FixedFolders m_folders;
  PlatformOverride<PlatformFolders> m_foldersInForce{m_folders};
};

TEST(LanguageModules, TheProgramLoadsARealSharedLibrary) {
  ExpectInChild([] {
    const RealComputer computer;
    computer.Place("LanguageModule");
    EXPECT_EQ(ZELCORE::FindAPPResourceDLL(nullptr).languageModule, ".\\localizations\\Deutsch\\" + OwnTitle() + "_res");
    EXPECT_TRUE(ZELCORE::LoadAPPResourceDLL(nullptr));
    EXPECT_EQ(NumberedText(12034), "Unbekannter Fehler");
    EXPECT_EQ(NumberedText(12039), "Unknown");  // the module has no words for it
    EXPECT_EQ(NumberedText(4711), "Kein eingebauter Text");
    EXPECT_EQ(NumberedText(12035), "Error opening \"%s\".");
    const ModuleHandle handle = AfxGetModuleState()->m_hCurrentResourceHandle;
    EXPECT_NE(PlatformModules::System().FindExport(handle, NUMBERED_TEXT_EXPORT), nullptr);
  });
}

TEST(LanguageModulesLong, WhatIsNoSharedLibraryIsSilentAndNoneOfItStays) {
  const auto expectNone = [](const std::string& what, const std::function<void(const RealComputer&)>& prepare) {
    ExpectInChild([&] {
      const RealComputer computer;
      prepare(computer);
      EXPECT_FALSE(ZELCORE::LoadAPPResourceDLL(nullptr)) << what;
      EXPECT_EQ(NumberedText(12034), "Unspecified Error") << what;
      EXPECT_EQ(AfxGetModuleState()->m_hCurrentResourceHandle, nullptr) << what;
      EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0) << what;
      EXPECT_FALSE(IsMapped("_res.so")) << what;
    });
  };
  expectNone("a folder", [](const RealComputer& computer) { std::filesystem::create_directory(computer.ModulePath()); });
  expectNone("empty", [](const RealComputer& computer) { computer.Write(""); });
  expectNone("text", [](const RealComputer& computer) { computer.Write("[Texts]\n12034 = no\n"); });
  expectNone("without the export", [](const RealComputer& computer) { computer.Place("GeodesyRegistersNothing"); });
  expectNone("unresolved", [](const RealComputer& computer) { computer.Place("GeodesyUnresolved"); });
  const std::string whole = ModuleContent("LanguageModule");
  const std::size_t end = EndOfSegments(whole);
  for (std::size_t i = 1; i <= 64; ++i) {
    const std::size_t length = end * i / 65;
    expectNone(std::to_string(length) + " of " + std::to_string(end) + " bytes",
               [&](const RealComputer& computer) { computer.Write(whole.substr(0, length)); });
  }
}

TEST(LanguageModules, ALibraryThatThrowsHasNoWords) {
  ExpectInChild([] {
    const RealComputer computer;
    computer.Place("LanguageThrows");
    EXPECT_TRUE(ZELCORE::LoadAPPResourceDLL(nullptr));
    EXPECT_EQ(NumberedText(12034), "Unbekannter Fehler");
    EXPECT_EQ(NumberedText(12035), "Error opening \"%s\".");
    EXPECT_EQ(NumberedText(12039), "Unknown");
    EXPECT_EQ(NumberedText(4711), "");
  });
}

TEST(LanguageModules, AThousandLoadsLeaveNothing) {
  ExpectInChild([] {
    const RealComputer computer;
    computer.Place("LanguageModule");
    for (int i = 0; i < 20; ++i) EXPECT_TRUE(ZELCORE::LoadAPPResourceDLL(nullptr));
    const ProcessUse before = UseOfThisProcess();
    for (int i = 0; i < 1000; ++i) EXPECT_TRUE(ZELCORE::LoadAPPResourceDLL(nullptr));
    const ProcessUse after = UseOfThisProcess();
    EXPECT_EQ(NumberedText(12034), "Unbekannter Fehler");
    EXPECT_EQ(after.descriptors, before.descriptors);
    EXPECT_LE(after.mappings, before.mappings + kMappingsOfTheHeap);
    EXPECT_LE(after.allocated, before.allocated + 4096);
  });
}

TEST(LanguageModules, TheLoadRoutineChoosesTheLibrarysOwnLanguage) {
  ExpectInChild([] {
    const Computer computer;
    computer.WriteTexts("ZelBase", "12034 = Unbekannter Fehler\n");
    computer.Enter();
    EXPECT_NE(ZelBaseMain(kExtension, ZELBASE_PROCESS_ATTACH, nullptr), 0);
    ASSERT_EQ(AfxGetAppModuleState()->m_libraryList.size(), 1u);
    EXPECT_NE(AfxGetAppModuleState()->m_libraryList.front()->m_hResource, kExtension);
    EXPECT_EQ(NumberedText(12034), "Unbekannter Fehler");
    EXPECT_NE(ZelBaseMain(kExtension, ZELBASE_PROCESS_DETACH, nullptr), 0);
  });
}

}  // namespace
