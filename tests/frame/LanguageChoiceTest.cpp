#include "zelbase/frame/detail/LanguageChoice.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using zelbase::detail::HasFolder;
using zelbase::detail::IsLanguage;
using zelbase::detail::LanguageModulePath;
using zelbase::detail::LanguageSettingsPath;
using zelbase::detail::LanguageTitle;
using zelbase::detail::LanguageUser;

TEST(LanguageChoice, AnApplicationAndAnExtensionModuleAskForTheirOwn) {
  const std::string application = LanguageTitle("C:\\x\\app.exe", LanguageUser::Application);
  EXPECT_EQ(LanguageModulePath("Deutsch", application) + ".dll", ".\\localizations\\Deutsch\\app_res.dll");
  const std::string extension = LanguageTitle("C:\\x\\ZelBaseR.dll", LanguageUser::Extension);
  EXPECT_EQ(LanguageModulePath("Deutsch", extension) + ".dll", ".\\localizations\\Deutsch\\ZelBase_res.dll");
}

TEST(LanguageChoice, OnlyAPathWithAFolderHasALanguage) {
  for (const char* const path : {"C:\\app.exe", "\\app.exe", "app\\", "\\", "/opt\\app.exe", "/app.exe"}) {
    EXPECT_TRUE(HasFolder(path)) << path;
  }
  for (const char* const path : {"", "app.exe", "C:app.exe", "x/app.exe"}) EXPECT_FALSE(HasFolder(path)) << path;
}

TEST(LanguageChoice, TheSettingsLieBelowTheCommonFolder) {
  EXPECT_EQ(LanguageSettingsPath("C:\\ProgramData", "C:\\x\\app.exe"), "C:\\ProgramData\\VESOK\\ZELCORE\\zelcore.ini");
  EXPECT_EQ(LanguageSettingsPath("/var\\lib", "/opt\\x\\zel.exe"), "/var\\lib\\VESOK\\ZELCORE\\zelcore.ini");
  EXPECT_EQ(LanguageSettingsPath("", ""), "\\VESOK\\ZELCORE\\zelcore.ini");
}

TEST(LanguageChoice, OneProgramHasSettingsOfItsOwn) {
  for (const char* const program : {"C:\\x\\TernaxUI.exe", "ternaxui.exe", "C:\\TERNAXUI.EXE", "/ternaxui.exe"}) {
    EXPECT_EQ(LanguageSettingsPath("C:", program), "C:\\VESOK\\ZELCORE\\TernaxUI.ini") << program;
  }
  for (const char* const program : {"C:\\ternaxui.exe\\app.exe", "C:\\x\\ternaxui", "C:\\x\\ternaxui.exe.exe", "C:\\x\\myternaxui.exe",
                                    "C:\\x\\ternaxui.exe\\", "x/ternaxui.exe"}) {
    EXPECT_EQ(LanguageSettingsPath("C:", program), "C:\\VESOK\\ZELCORE\\zelcore.ini") << program;
  }
}

TEST(LanguageChoice, TitlesAreCutByCountWhateverTheEndingIs) {
  const struct {
    const char* path;
    const char* application;
    const char* extension;
  } rows[] = {{"C:\\x\\ZelBaseD.dll", "ZelBaseD", "ZelBase"},
              {"C:\\x\\program", "pro", "pr"},
              {"C:\\x\\a.b.exe", "a.b", "a."},
              {"C:\\x\\12345", "1", ""},
              {"C:\\x\\.exe", "", ""},
              {"C:\\x\\abc", "", ""},
              {"C:\\x\\", "", ""},
              {"/app.exe", "app", "ap"},
              {"\\app.exe", "app", "ap"},
              {"", "", ""}};
  for (const auto& row : rows) {
    EXPECT_EQ(LanguageTitle(row.path, LanguageUser::Application), row.application) << row.path;
    EXPECT_EQ(LanguageTitle(row.path, LanguageUser::Extension), row.extension) << row.path;
  }
}

TEST(LanguageChoice, PathsOfAnyLengthStayWhole) {
  const std::string folder = "C:\\" + std::string(1000, 'x') + "\\";
  EXPECT_EQ(LanguageTitle(folder + std::string(500, 'y') + ".exe", LanguageUser::Application), std::string(500, 'y'));
  EXPECT_EQ(LanguageSettingsPath(folder, "").size(), folder.size() + std::string("\\VESOK\\ZELCORE\\zelcore.ini").size());
}

TEST(LanguageChoice, LanguagesThatLeaveTheirFolderAreNone) {
  for (const char* const language : {"Deutsch", "0409", ".", "a.b", "de_DE",
                                     "Fran\xE7"
                                     "ais",
                                     "Deutsch (neu)", "%s", "-"}) {
    EXPECT_TRUE(IsLanguage(language)) << language;
  }
  for (const char* const language : {"", "..", "a..b", "../..", "..\\..", "\\", "/", "a\\b", "a/b", "C:", ":", "/etc"}) {
    EXPECT_FALSE(IsLanguage(language)) << language;
  }
  EXPECT_FALSE(IsLanguage(std::string("Deutsch\0", 8)));
}

}  // namespace
