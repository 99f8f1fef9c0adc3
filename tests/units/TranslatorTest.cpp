#include "zelbase/units/Translator.h"

#include <gtest/gtest.h>

#include <atomic>
#include <initializer_list>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "tests/support/InChild.h"
#include "tests/support/LanguageFolder.h"
#include "tests/support/ThisProcess.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/frame/FileNames.h"
#include "zelbase/frame/KeyTables.h"
#include "zelbase/platform/FaultInjectionFiles.h"

// The language is read at the first use in a process: whatever touches Translator::Instance() stands in a child.

namespace {

constexpr const char* kDutch = "[Language]\nLanguage = 0413\n";

class NotingLogger : public AbstractZELMessage {
 public:
  void ShowMessage(int messageClass, const std::string& text, int second, const std::string& detail, int third) override {
    EXPECT_EQ(messageClass, 3);
    EXPECT_EQ(second, 1);
    EXPECT_EQ(detail, "");
    EXPECT_EQ(third, 1);
    texts.push_back(text);
  }
  std::vector<std::string> texts;
};

// Notes which files are opened, and how.
class NotingFiles : public FaultInjectionFiles {
 public:
  std::unique_ptr<PlatformFile> Open(const FileOpenRequest& request, FileResult& result) override {
    paths.push_back(request.path);
    EXPECT_EQ(request.access, FileRights::Read);
    EXPECT_EQ(request.sharing, FileRights::Read);  // others denied writing
    EXPECT_EQ(request.disposition, FileDisposition::OpenExisting);
    return FaultInjectionFiles::Open(request, result);
  }
  std::vector<std::string> paths;
};

int ErrorsReported() { return GlobalErrorList::Get().NumErrors(true); }

// --- Names ----------------------------------------------------------------------------------------------------------

TEST(Translator, ConstantsHaveTheirValues) {
  EXPECT_EQ(Translator::PATH_SEPARATOR, '\\');
  EXPECT_EQ(Translator::INI_ITEM_SEPARATOR, '.');
  EXPECT_EQ(Translator::LCID_ENGLISH, "0409");
  EXPECT_EQ(Translator::LOCALIZATIONS_FOLDER_NAME, "localizations");
  EXPECT_EQ(Translator::SECTION_DISPLAY_MANAGER, "DisplayManager.ini");
  EXPECT_EQ(Translator::SECTION_DEFAULT_ACTIONS, "DefaultActions[xxx].ini");
  EXPECT_EQ(Translator::SECTION_ATTRIB_DEF_V2, "AttribDefV2.ini");
  EXPECT_EQ(Translator::SECTION_PLOT_FRIENDLY_NAMES, "PlotFriendlyNames.ini");
  EXPECT_EQ(Translator::SECTION_FILE_TYPES, "FileTypes.ini");
  EXPECT_EQ(Translator::SECTION_ERROR_MESSAGES, "ErrorMessages.ini");
  EXPECT_EQ(Translator::SECTION_EVENTS, "Events.ini");
  EXPECT_EQ(Translator::SECTION_TRANSFORMATIONS, "Transformations.ini");
  EXPECT_EQ(Translator::SECTION_UNITS, "Units.uni");
  EXPECT_EQ(Translator::SECTION_DATA_DEF, "DataDef.ini");
  EXPECT_EQ(Translator::SECTION_USERMAP_SYMBOLS, "UserMapSymbols");
}

const std::size_t g_sizeInAStaticInitialiser = Translator::SECTION_DEFAULT_ACTIONS.size();

TEST(Translator, ConstantsMayBeReadByAStaticInitialiser) { EXPECT_EQ(g_sizeInAStaticInitialiser, 23u); }

TEST(Translator, NamesOfDefaultActionsFiles) {
  const auto text = [](int number) { return DefaultActionFilename2String(static_cast<DefaultActionsFilenames>(number)); };
  EXPECT_EQ(text(0), "Acquisition");
  EXPECT_EQ(text(1), "Control Center");
  EXPECT_EQ(text(2), "Presentation");
  for (const int other : {-1, 3, 256, 0x7FFFFFFF, -0x7FFFFFFF}) EXPECT_EQ(text(other), "") << other;
}

TEST(Translator, KeysOfDefaultActions) {
  const auto text = [](int number) { return DefaultActionKey2String(static_cast<DefaultActionsKeys>(number)); };
  EXPECT_EQ(text(0), "Name");
  EXPECT_EQ(text(1), "Description");
  EXPECT_EQ(text(2), "ToolTip");
  for (const int other : {-1, 3, 256, 0x7FFFFFFF, -0x7FFFFFFF}) EXPECT_EQ(text(other), "") << other;
}

TEST(Translator, ConversionsAreKnownByTheClassToo) {
  static_assert(std::is_same_v<Translator::DefaultActionsFilenames, DefaultActionsFilenames>);
  static_assert(std::is_same_v<Translator::DefaultActionsKeys, DefaultActionsKeys>);
  EXPECT_EQ(Translator::DefaultActionFilename2String(DEFAULT_ACTIONS_CONTROL_CENTER), "Control Center");
  EXPECT_EQ(Translator::DefaultActionKey2String(DEFAULT_ACTIONS_TOOLTIP), "ToolTip");
}

// --- Which language -------------------------------------------------------------------------------------------------

TEST(Translator, WithoutALanguageKeyItIsEnglish) {
  ExpectInChild([] {
    const LanguageFolder computer("[Language]\nUseDeveloperAsserts = false\nShowTranslatorMessages = false\n");
    NotingFiles files;
    const PlatformOverride<PlatformFiles> guard(files);
    const Translator& translator = Translator::Instance();
    EXPECT_FALSE(translator.IsLanguageForeign());
    EXPECT_EQ(translator.GetLanguageID(), "");
    // Settings stay at their initial values when the language is not foreign.
    EXPECT_TRUE(translator.UseDeveloperAsserts());
    EXPECT_TRUE(translator.ShowTranslatorMessages());
    EXPECT_EQ(files.paths.size(), 1u);  // zelcore.ini alone
    EXPECT_EQ(files.OpenFiles(), 0);
    EXPECT_EQ(ErrorsReported(), 0);
  });
}

TEST(Translator, WithoutZelcoreIniItIsEnglishAndNothingIsReported) {
  ExpectInChild([] {
    const LanguageFolder computer;
    const Translator& translator = Translator::Instance();
    EXPECT_FALSE(translator.IsLanguageForeign());
    EXPECT_EQ(translator.GetLanguageID(), "");
    EXPECT_EQ(ErrorsReported(), 0);
  });
}

TEST(Translator, EnglishDoesNotOpenTheTranslations) {
  ExpectInChild([] {
    const LanguageFolder computer("[Language]\nLanguage = 0409\n");
    computer.WriteTranslations("0409", "[Events.ini]\n12.Name = twelve\n");
    NotingFiles files;
    const PlatformOverride<PlatformFiles> guard(files);
    const Translator& translator = Translator::Instance();
    EXPECT_FALSE(translator.IsLanguageForeign());
    EXPECT_EQ(translator.GetLanguageID(), "0409");
    EXPECT_EQ(files.paths, (std::vector<std::string>{computer.Folder().InterfacePath() + "\\VESOK\\ZELCORE\\zelcore.ini"}));
    EXPECT_EQ(translator.GetEventsString(12), "");
    EXPECT_FALSE(translator.GetTranslatorIni().FileInitialised());
  });
}

TEST(Translator, TranslationsAreSoughtBelowTheFolderOfTheModule) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    NotingFiles files;
    const PlatformOverride<PlatformFiles> guard(files);
    const Translator& translator = Translator::Instance();
    EXPECT_TRUE(translator.IsLanguageForeign());
    EXPECT_EQ(translator.GetLanguageID(), "0413");
    const std::string folder = computer.Folder().InterfacePath();
    const std::string zelcore = folder + "\\VESOK\\ZELCORE\\zelcore.ini";
    EXPECT_EQ(files.paths, (std::vector<std::string>{zelcore, folder + "\\suite\\.\\localizations\\0413\\Translator.ini", zelcore}));
  });
}

TEST(Translator, ReadsZelcoreIniWhateverTheProgram) {
  ExpectInChild([] {
    LanguageFolder computer(kDutch);
    // The one program for which a module start reads another settings file.
    computer.Modules().SetProgramPath(computer.Folder().InterfacePath() + "\\suite\\ternaxui.exe");
    computer.Modules().SetModulePath(computer.Folder().InterfacePath() + "\\suite\\ternaxui.exe");
    computer.Folder().Write("VESOK/ZELCORE/" + TUI_DEF_FILENAME, "[Language]\nLanguage = 0407\n");
    EXPECT_EQ(Translator::Instance().GetLanguageID(), "0413");
  });
}

TEST(Translator, MissingTranslationsAreForeignAndNotReported) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    Translator& translator = Translator::Instance();
    NotingLogger logger;
    translator.SetZELMessageLogger(&logger);
    EXPECT_TRUE(translator.IsLanguageForeign());
    EXPECT_EQ(translator.GetUnitsString("Length", "Metre"), "");
    EXPECT_EQ(logger.texts, (std::vector<std::string>{"Section (Units.uni) could not be found!"}));
    EXPECT_FALSE(translator.GetTranslatorIni().FileInitialised());
    EXPECT_EQ(ErrorsReported(), 0);
  });
}

TEST(Translator, FindsATranslationOfItsLanguage) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    computer.WriteTranslations("0413", "[Units.uni]\r\nLength.Metre = Meter \r\n");
    computer.WriteTranslations("0407", "[Units.uni]\r\nLength.Metre = wrong\r\n");
    const Translator& translator = Translator::Instance();
    EXPECT_EQ(translator.GetUnitsString("Length", "Metre"), "Meter");
    EXPECT_TRUE(translator.GetTranslatorIni().FileInitialised());
    EXPECT_EQ(ErrorsReported(), 0);
  });
}

TEST(Translator, LanguageWithAnEmptyValueIsForeignWithoutAName) {
  ExpectInChild([] {
    const LanguageFolder computer("[Language]\nLanguage =\n");
    computer.Folder().Write("suite/localizations/Translator.ini", "[Events.ini]\n1.Name = een\n");
    const Translator& translator = Translator::Instance();
    EXPECT_TRUE(translator.IsLanguageForeign());
    EXPECT_EQ(translator.GetLanguageID(), "");
    EXPECT_EQ(translator.GetEventsString(1), "een");  // "localizations\\Translator.ini" is the same file
  });
}

TEST(Translator, LanguageIsOpaqueAndComparedExactly) {
  const struct {
    const char* language;
    bool foreign;
  } rows[] = {{"0409", false}, {"409", true}, {"0x0409", true}, {"Deutsch", true}, {"english", true}, {"04 09", true}};
  for (const auto& row : rows) {
    ExpectInChild([&row] {
      const LanguageFolder computer(std::string("[Language]\nLanguage = ") + row.language + "\n");
      computer.WriteTranslations(row.language, "[UserMapSymbols]\nBoei = gevonden\n");
      const Translator& translator = Translator::Instance();
      EXPECT_EQ(translator.IsLanguageForeign(), row.foreign) << row.language;
      EXPECT_EQ(translator.GetLanguageID(), row.language);
      EXPECT_EQ(translator.GetUserMapSymbolString("Boei"), row.foreign ? "gevonden" : "") << row.language;
    });
  }
}

TEST(Translator, LanguageIsNotValidated) {
  ExpectInChild([] {
    const LanguageFolder computer("[Language]\nLanguage = ..\\..\\elsewhere\n");
    computer.Folder().MakeFolder("elsewhere");
    computer.Folder().Write("elsewhere/Translator.ini", "[UserMapSymbols]\nBoei = gevonden\n");
    EXPECT_EQ(Translator::Instance().GetUserMapSymbolString("Boei"), "gevonden");
  });
}

TEST(Translator, ModuleWithoutAFolderMeansEnglish) {
  for (const char* const path : {"", "ZelBaseR.dll", "suite/ZelBaseR.dll"}) {
    ExpectInChild([path] {
      LanguageFolder computer(kDutch);
      computer.Modules().SetModulePath(path);
      std::string language = "untouched";
      EXPECT_FALSE(Translator::GetLanguageSetting(language));
      EXPECT_EQ(language, "untouched");
      EXPECT_FALSE(Translator::Instance().IsLanguageForeign());
    });
  }
}

TEST(Translator, ModuleInTheRootOfThisSystemHasItsTranslationsThere) {
  ExpectInChild([] {
    LanguageFolder computer(kDutch);
    computer.Modules().SetModulePath("/ZelBaseR.dll");
    NotingFiles files;
    const PlatformOverride<PlatformFiles> guard(files);
    EXPECT_TRUE(Translator::Instance().IsLanguageForeign());
    ASSERT_EQ(files.paths.size(), 3u);
    EXPECT_EQ(files.paths[1], "/.\\localizations\\0413\\Translator.ini");
  });
}

TEST(Translator, WithoutAFolderForCommonDataItIsEnglish) {
  ExpectInChild([] {
    LanguageFolder computer(kDutch);
    computer.Folders().SetCommonData(std::nullopt);
    std::string language = "untouched";
    EXPECT_FALSE(Translator::GetLanguageSetting(language));
    EXPECT_EQ(language, "untouched");
    EXPECT_FALSE(Translator::Instance().IsLanguageForeign());
    EXPECT_EQ(ErrorsReported(), 0);
  });
}

TEST(Translator, LanguageSettingIsReadAnewAndTheLanguageIsNot) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    const Translator& translator = Translator::Instance();
    computer.Folder().Write("VESOK/ZELCORE/zelcore.ini", "[Language]\nLanguage = 0407\n");
    std::string language;
    EXPECT_TRUE(Translator::GetLanguageSetting(language));
    EXPECT_EQ(language, "0407");
    EXPECT_EQ(&Translator::Instance(), &translator);
    EXPECT_EQ(translator.GetLanguageID(), "0413");
  });
}

TEST(Translator, AsksForTheModuleThatHoldsIt) {
  ExpectInChild([] {
    // The computer's own modules: this test is linked with the library, or loads it; either way it has a folder.
    TemporaryFolder folder;
    folder.MakeFolder("VESOK");
    folder.MakeFolder("VESOK/ZELCORE");
    folder.Write("VESOK/ZELCORE/zelcore.ini", kDutch);
    const EnvironmentVariable common("ZELBASE_COMMON_DATA", folder.Path().c_str());
    NotingFiles files;
    const PlatformOverride<PlatformFiles> guard(files);
    EXPECT_TRUE(Translator::Instance().IsLanguageForeign());
    ASSERT_EQ(files.paths.size(), 3u);
    const std::string module =
        PlatformModules::System().ModulePath(reinterpret_cast<const void*>(static_cast<Translator& (*)()>(&Translator::Instance)));
    EXPECT_EQ(files.paths[1], module.substr(0, module.rfind('\\')) + "\\.\\localizations\\0413\\Translator.ini");
  });
}

TEST(Translator, ConstructsWhileAReporterAsksForIt) {
  struct Asking : ErrorReporterBase {
    void Report(const Error&) override { Translator::Instance(); }
  };
  ExpectInChild([] {
    Asking reporter;
    GlobalErrorList::Get().AddReporter(&reporter);
    const LanguageFolder computer(kDutch);
    NotingFiles files;
    files.DropConnection();
    const PlatformOverride<PlatformFiles> guard(files);
    EXPECT_FALSE(Translator::Instance().IsLanguageForeign());  // no file opens, and nobody is told
    EXPECT_EQ(ErrorsReported(), 0);
    GlobalErrorList::Get().RemoveReporter(&reporter);
  });
}

TEST(Translator, WhateverFailsWhileItIsMadeIsSilent) {
  constexpr int kMore = 30;  // than the operations there are, the last runs being clean
  for (unsigned long long n = 1; n <= kMore; ++n) {
    ExpectInChild([n] {
      const LanguageFolder computer(kDutch);
      computer.WriteTranslations("0413", "[UserMapSymbols]\nBoei = gevonden\n");
      NotingFiles files;
      files.FailAt(n);
      const PlatformOverride<PlatformFiles> guard(files);
      const Translator& translator = Translator::Instance();
      const std::string text = translator.GetUserMapSymbolString("Boei");
      EXPECT_TRUE(text == "gevonden" || (text.empty() && files.FaultsGiven() == 1)) << n << text;
      EXPECT_EQ(translator.GetTranslatorIni().FileInitialised(), !text.empty());
      EXPECT_EQ(files.OpenFiles(), 0) << n;
      EXPECT_EQ(ErrorsReported(), 0) << n;
      if (n == kMore) {
        EXPECT_EQ(files.FaultsGiven(), 0u);
      }
    });
  }
}

// --- Settings -------------------------------------------------------------------------------------------------------

TEST(Translator, InEnglishTheSettingsStayAsTheyBegin) {
  ExpectInChild([] {
    const LanguageFolder computer("[Language]\nLanguage = 0409\nUseDeveloperAsserts = false\nShowTranslatorMessages = false\n");
    EXPECT_FALSE(Translator::Instance().IsLanguageForeign());
    EXPECT_TRUE(Translator::Instance().UseDeveloperAsserts());
    EXPECT_TRUE(Translator::Instance().ShowTranslatorMessages());
  });
}

TEST(Translator, OnlyFalseInLowerCaseIsFalse) {
  const struct {
    const char* line;
    bool expected;
  } rows[] = {{"= false", false}, {"=false", false}, {"= False", true},  {"= FALSE", true}, {"= 0", true},       {"= no", true},
              {"=", true},        {"= true", true},  {"= falsey", true}, {"= fals", true},  {" 2 = false", true}};
  for (const auto& row : rows) {
    ExpectInChild([&row] {
      const LanguageFolder computer(std::string(kDutch) + "UseDeveloperAsserts " + row.line + "\n");
      EXPECT_EQ(Translator::Instance().UseDeveloperAsserts(), row.expected) << row.line;
      EXPECT_TRUE(Translator::Instance().ShowTranslatorMessages()) << row.line;
    });
    ExpectInChild([&row] {
      const LanguageFolder computer(std::string(kDutch) + "ShowTranslatorMessages " + row.line + "\n");
      EXPECT_EQ(Translator::Instance().ShowTranslatorMessages(), row.expected) << row.line;
      EXPECT_TRUE(Translator::Instance().UseDeveloperAsserts()) << row.line;
    });
  }
}

TEST(Translator, MessagesMayBeSwitchedOff) {
  ExpectInChild([] {
    const LanguageFolder computer(std::string(kDutch) + "ShowTranslatorMessages = false\n");
    Translator& translator = Translator::Instance();
    NotingLogger logger;
    translator.SetZELMessageLogger(&logger);
    EXPECT_EQ(translator.GetEventsString(12), "");
    EXPECT_TRUE(logger.texts.empty());
  });
}

// --- Look-ups -------------------------------------------------------------------------------------------------------

// What is asked for, told by the message about a key that is not there.
std::string Missing(const std::string& section, const std::string& key) {
  return "Translation for key (" + key + ") in section (" + section + ") could not be found!";
}

void AddAllSections(FileObject& translations) {
  for (const std::string& section : Translator::Instance().GetIniFilesNames()) translations.CreateSection(section, false);
  translations.CreateSection(Translator::SECTION_USERMAP_SYMBOLS, false);
}

TEST(Translator, LookUpsMakeTheirKeys) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    Translator& t = Translator::Instance();
    AddAllSections(t.GetTranslatorIni());
    NotingLogger logger;
    t.SetZELMessageLogger(&logger);
    const auto expect = [&](const std::string& result, const std::string& section, const std::string& key) {
      EXPECT_EQ(result, "") << key;
      ASSERT_EQ(logger.texts.size(), 1u) << key;
      EXPECT_EQ(logger.texts[0], Missing(section, key));
      logger.texts.clear();
    };
    expect(t.GetDefaultActionsString(DEFAULT_ACTIONS_CONTROL_CENTER, "Start", DEFAULT_ACTIONS_TOOLTIP), "DefaultActions[xxx].ini",
           "Control Center.Start.ToolTip");
    expect(t.GetDisplayManagerString("Depth"), "DisplayManager.ini", "Depth");
    expect(t.GetDisplayManagerString("Depth", "View"), "DisplayManager.ini", "Depth.View");
    expect(t.GetAttribDefV2String("Width"), "AttribDefV2.ini", "Width");
    expect(t.GetAttribDefV2CtrlString("Width"), "AttribDefV2.ini", "@Width");
    expect(t.GetPlotFriendlyNamesString("Plot"), "PlotFriendlyNames.ini", "Plot");
    expect(t.GetFileTypesString(0, "Name"), "FileTypes.ini", fileTypeKeys[0] + ".Name");
    expect(t.GetFileTypesString(108, "Name"), "FileTypes.ini", fileTypeKeys[108] + ".Name");
    expect(t.GetFileTypeListString(8), "FileTypes.ini", "FileTypeList.Units");
    expect(t.GetErrorMessagesString("File Error", "Open"), "ErrorMessages.ini", "File Error.Open");
    expect(t.GetEventsString(12), "Events.ini", "12.Name");
    expect(t.GetTransformationsString("RD"), "Transformations.ini", "RD.Description");
    expect(t.GetUnitsString("Length", "Metre"), "Units.uni", "Length.Metre");
    expect(t.GetDataDefString("Depth", "Name"), "DataDef.ini", "Depth.Name");
    expect(t.GetUserMapSymbolString("Boei"), "UserMapSymbols", "Boei");
  });
}

TEST(Translator, LookUpsReadTheFile) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    computer.WriteTranslations("0413",
                               "[DefaultActions[xxx].ini]\nAcquisition.Start.Name = Begin\n"
                               "[DisplayManager.ini]\nDepth = Diepte\nDepth.View = Dieptebeeld\n"
                               "[AttribDefV2.ini]\nWidth = Breedte\n@Width = Breedte:\n"
                               "[PlotFriendlyNames.ini]\nPlot = Tekening\n"
                               "[FileTypes.ini]\nUnits.Name = Eenheden\nFileTypeList.Units = Lijst\n"
                               "[ErrorMessages.ini]\nFile Error.Open = Fout bij openen van \"%s\".\n"
                               "[Events.ini]\n12.Name = Twaalf\n-2147483648.Name = Laagste\n"
                               "[Transformations.ini]\nRD.Description = Rijksdriehoek\n"
                               "[Units.uni]\nLength.Metre = Meter\n"
                               "[DataDef.ini]\nDepth.Name = Diepte\n"
                               "[UserMapSymbols]\nBuoy = Boei\n");
    Translator& t = Translator::Instance();
    NotingLogger logger;
    t.SetZELMessageLogger(&logger);
    EXPECT_EQ(t.GetDefaultActionsString(DEFAULT_ACTIONS_ACQUISITION, "Start", DEFAULT_ACTIONS_NAME), "Begin");
    EXPECT_EQ(t.GetDisplayManagerString("Depth"), "Diepte");
    EXPECT_EQ(t.GetDisplayManagerString("Depth", "View"), "Dieptebeeld");
    EXPECT_EQ(t.GetAttribDefV2String("Width"), "Breedte");
    EXPECT_EQ(t.GetAttribDefV2CtrlString("Width"), "Breedte:");
    EXPECT_EQ(t.GetPlotFriendlyNamesString("Plot"), "Tekening");
    EXPECT_EQ(t.GetFileTypesString(8, "Name"), "Eenheden");
    EXPECT_EQ(t.GetFileTypeListString(8), "Lijst");
    EXPECT_EQ(t.GetErrorMessagesString("File Error", "Open"), "Fout bij openen van \"%s\".");
    EXPECT_EQ(t.GetEventsString(12), "Twaalf");
    EXPECT_EQ(t.GetEventsString(-2147483647 - 1), "Laagste");
    EXPECT_EQ(t.GetTransformationsString("RD"), "Rijksdriehoek");
    EXPECT_EQ(t.GetUnitsString("Length", "Metre"), "Meter");
    EXPECT_EQ(t.GetDataDefString("Depth", "Name"), "Diepte");
    EXPECT_EQ(t.GetUserMapSymbolString("Buoy"), "Boei");
    EXPECT_TRUE(logger.texts.empty());
  });
}

TEST(Translator, LastBracketOfALineEndsTheSectionOfDefaultActions) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    computer.WriteTranslations("0413",
                               "[DefaultActions[xxx]]\nAcquisition.Start.Name = wrong\n"
                               "[DefaultActions[xxx].ini] // actions\nAcquisition.Start.Name = Begin\n");
    Translator& t = Translator::Instance();
    EXPECT_EQ(t.GetDefaultActionsString(DEFAULT_ACTIONS_ACQUISITION, "Start", DEFAULT_ACTIONS_NAME), "Begin");
    EXPECT_TRUE(t.GetTranslatorIni().HasSection("DefaultActions[xxx].ini"));
  });
}

TEST(Translator, BadFileTypesAndEnumeratorsLookUpKeysWithAnEmptyPart) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    Translator& t = Translator::Instance();
    AddAllSections(t.GetTranslatorIni());
    NotingLogger logger;
    t.SetZELMessageLogger(&logger);
    std::vector<std::string> expected;
    for (const int type : {-1, 109, 0x7FFFFFFF, -0x7FFFFFFF}) {
      EXPECT_EQ(t.GetFileTypesString(type, "Name"), "");
      EXPECT_EQ(t.GetFileTypeListString(type), "");
      expected.push_back(Missing("FileTypes.ini", ".Name"));
      expected.push_back(Missing("FileTypes.ini", "FileTypeList."));
    }
    const auto file = static_cast<DefaultActionsFilenames>(3);
    const auto key = static_cast<DefaultActionsKeys>(-1);
    t.GetDefaultActionsString(file, "Start", DEFAULT_ACTIONS_NAME);
    t.GetDefaultActionsString(DEFAULT_ACTIONS_PRESENTATION, "Start", key);
    t.GetDefaultActionsString(file, "", key);
    expected.push_back(Missing("DefaultActions[xxx].ini", ".Start.Name"));
    expected.push_back(Missing("DefaultActions[xxx].ini", "Presentation.Start."));
    expected.push_back(Missing("DefaultActions[xxx].ini", ".."));
    EXPECT_EQ(logger.texts, expected);
  });
}

TEST(Translator, TellsSectionKeyAndEmptyValueApart) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    computer.WriteTranslations("0413", "[Units.uni]\nLength.Metre =\n");
    Translator& t = Translator::Instance();
    NotingLogger logger;
    t.SetZELMessageLogger(&logger);
    EXPECT_EQ(t.GetDataDefString("Depth", "Name"), "");
    EXPECT_EQ(t.GetUnitsString("Length", "Foot"), "");
    EXPECT_EQ(t.GetUnitsString("Length", "Metre"), "");
    EXPECT_EQ(logger.texts, (std::vector<std::string>{"Section (DataDef.ini) could not be found!",
                                                      "Translation for key (Length.Foot) in section (Units.uni) could not be found!",
                                                      "Translation for key (Length.Metre) in section (Units.uni) is empty!"}));
    EXPECT_EQ(t.GetTranslatorIni().GetNumSections(), 1);  // a look-up makes no section
    EXPECT_EQ(ErrorsReported(), 0);
  });
}

TEST(Translator, InEnglishLookUpsRunAndTellTheLogger) {
  ExpectInChild([] {
    const LanguageFolder computer("[Language]\nShowTranslatorMessages = false\n");  // not read in English
    Translator& t = Translator::Instance();
    NotingLogger logger;
    t.SetZELMessageLogger(&logger);
    EXPECT_EQ(t.GetEventsString(12), "");
    EXPECT_EQ(logger.texts, (std::vector<std::string>{"Section (Events.ini) could not be found!"}));
    t.SetZELMessageLogger(nullptr);
    EXPECT_EQ(t.GetEventsString(12), "");
    EXPECT_EQ(logger.texts.size(), 1u);
  });
}

TEST(Translator, PercentAndZeroBytesInKeysAreText) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    Translator& t = Translator::Instance();
    const std::string key("%s%n%d%%\0end", 12);
    t.GetTranslatorIni().SetItem("AttribDefV2.ini", "%s", "100%s");
    NotingLogger logger;
    t.SetZELMessageLogger(&logger);
    EXPECT_EQ(t.GetAttribDefV2String("%s"), "100%s");
    EXPECT_EQ(t.GetAttribDefV2String(key), "");
    EXPECT_EQ(logger.texts, (std::vector<std::string>{Missing("AttribDefV2.ini", key)}));
  });
}

TEST(Translator, TextsAreOfAnyLength) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    const std::string key(100000, 'k');
    const std::string value(200000, 'v');
    computer.WriteTranslations("0413", "[PlotFriendlyNames.ini]\n" + key + " = " + value + "\n");
    Translator& t = Translator::Instance();
    NotingLogger logger;
    t.SetZELMessageLogger(&logger);
    EXPECT_EQ(t.GetPlotFriendlyNamesString(key), value);
    EXPECT_EQ(t.GetPlotFriendlyNamesString(key + "k"), "");
    EXPECT_EQ(logger.texts, (std::vector<std::string>{Missing("PlotFriendlyNames.ini", key + "k")}));
  });
}

TEST(Translator, LookUpsSeeWhatIsChangedInTheFileObject) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    Translator& t = Translator::Instance();
    FileObject& translations = t.GetTranslatorIni();
    translations.SetItem("Events.ini", "12.Name", "Twaalf");
    EXPECT_EQ(t.GetEventsString(12), "Twaalf");
    translations.ThrowExceptions(true);  // look-ups fail quietly all the same
    EXPECT_EQ(t.GetEventsString(13), "");
    translations.FileClose();
    EXPECT_EQ(t.GetEventsString(12), "");
  });
}

TEST(Translator, NamesTenSectionsOfFilesInOrder) {
  ExpectInChild([] {
    const LanguageFolder computer;
    EXPECT_EQ(
        Translator::Instance().GetIniFilesNames(),
        (std::vector<std::string>{"DisplayManager.ini", "DefaultActions[xxx].ini", "AttribDefV2.ini", "PlotFriendlyNames.ini",
                                  "FileTypes.ini", "ErrorMessages.ini", "Events.ini", "Transformations.ini", "Units.uni", "DataDef.ini"}));
  });
}

// --- Hostile files --------------------------------------------------------------------------------------------------

TEST(Translator, TranslationsOfAnyContentAreRead) {
  std::string everyByte;
  for (int byte = 0; byte < 256; ++byte) everyByte += static_cast<char>(byte);
  const std::string contents[] = {"",
                                  "\n\n\n",
                                  "[",
                                  "]",
                                  "[Units.uni",
                                  "Length.Metre = before any section\n",
                                  "[Units.uni]\nLength.Metre\n=\n==\n",
                                  everyByte,
                                  "[Units.uni]\n" + everyByte + everyByte,
                                  std::string(1 << 20, '['),
                                  std::string(1 << 20, '\0'),
                                  "[Units.uni]\n" + std::string(1 << 20, '=')};
  for (const std::string& content : contents) {
    ExpectInChild([&content] {
      const LanguageFolder computer(kDutch);
      computer.WriteTranslations("0413", content);
      EXPECT_TRUE(Translator::Instance().IsLanguageForeign());
      EXPECT_EQ(Translator::Instance().GetUnitsString("Length", "Metre"), "");
      EXPECT_EQ(ErrorsReported(), 0);
    });
  }
}

TEST(Translator, SettingsOfAnyContentAreRead) {
  std::string everyByte;
  for (int byte = 0; byte < 256; ++byte) everyByte += static_cast<char>(byte);
  for (const std::string& content : {std::string(), everyByte, std::string(1 << 20, '['), "[Language]\nLanguage = " + everyByte,
                                     "[Language]\nLanguage = " + std::string(1 << 20, 'x')}) {
    ExpectInChild([&content] {
      const LanguageFolder computer(content);
      EXPECT_EQ(Translator::Instance().GetUnitsString("Length", "Metre"), "");
      EXPECT_EQ(ErrorsReported(), 0);
    });
  }
}

TEST(Translator, FoldersInPlaceOfFilesAreAsMissing) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    computer.Folder().MakeFolder("suite/localizations/0413");
    computer.Folder().MakeFolder("suite/localizations/0413/Translator.ini");
    EXPECT_TRUE(Translator::Instance().IsLanguageForeign());
    EXPECT_EQ(Translator::Instance().GetEventsString(1), "");
    EXPECT_EQ(ErrorsReported(), 0);
  });
}

// --- Threads and the end --------------------------------------------------------------------------------------------

class CountingLogger : public AbstractZELMessage {
 public:
  void ShowMessage(int, const std::string&, int, const std::string&, int) override { ++count; }
  std::atomic<int> count{0};
};

TEST(Translator, ThreadsLookUpAtOnceFromTheFirstUseOn) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    std::string translations = "[Events.ini]\n";
    for (int i = 0; i < 100; ++i) translations += std::to_string(i) + ".Name = event " + std::to_string(i) + "\n";
    computer.WriteTranslations("0413", translations);
    CountingLogger logger;
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&] {
        Translator& t = Translator::Instance();
        t.SetZELMessageLogger(&logger);
        for (int round = 0; round < 50; ++round) {
          for (int event = 0; event < 100; ++event) {
            if (t.GetEventsString(event) != "event " + std::to_string(event)) ++wrong;
          }
          if (!t.GetEventsString(100).empty() || !t.GetUnitsString("a", "b").empty()) ++wrong;
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong.load(), 0);
    EXPECT_EQ(logger.count.load(), 4 * 50 * 2);
    Translator::Instance().SetZELMessageLogger(nullptr);
  });
}

// Looks up when the statics of the process go.
struct LateUser {
  ~LateUser() {
    if (!use) return;
    const Translator& t = Translator::Instance();
    if (t.GetErrorMessagesString("File Error", "Open") != "Openen: %s") std::abort();
    if (!t.GetErrorMessagesString("File Error", "Read").empty()) std::abort();  // the logger is not told any more
  }
  bool use = false;
};

class AbortingLogger : public AbstractZELMessage {
 public:
  void ShowMessage(int, const std::string&, int, const std::string&, int) override { std::abort(); }
};

TEST(Translator, TranslatesWhileTheProcessEnds) {
  ExpectInChild(
      [] {
        static LateUser late;  // made before, and so destroyed after, the first use
        const LanguageFolder computer(kDutch);
        computer.WriteTranslations("0413", "[ErrorMessages.ini]\nFile Error.Open = Openen: %s\n");
        static AbortingLogger logger;
        Translator::Instance().SetZELMessageLogger(&logger);
        late.use = true;
      },
      ChildProcess::Ending::Full);
}

}  // namespace
