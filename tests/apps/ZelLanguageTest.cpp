// zel language, and the wording of errors from end to end.

#include "tests/apps/ZelFixture.h"

TEST_F(Zel, LanguageTellsTheSettingItsFileAndWhatIsMissing) {
  const ProgramResult result = Run({"--common", Sample("common"), "language"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.output, "Language      \"0407\", foreign"));
  EXPECT_TRUE(Holds(result.output, "common/VESOK/ZELCORE/zelcore.ini"));
  EXPECT_TRUE(Holds(result.output, "localizations/0407/Translator.ini"));
  EXPECT_TRUE(Holds(OneBlank(result.output), "FileTypes.ini 7 of 109")) << result.output;
  EXPECT_TRUE(
      Holds(result.output, "Translation for key (FileObject Error.KeyNotFound) in section (ErrorMessages.ini) could not be found!"));
  EXPECT_TRUE(Holds(result.output, "Translation for key (Dax Error.Extrapolate) in section (ErrorMessages.ini) is empty!"));
  EXPECT_TRUE(Holds(result.output, "--all lists them"));
  EXPECT_TRUE(Holds(Run({"--common", Sample("common"), "language", "--all"}).output, "FileTypeList.UKOOAP190"));
}

TEST_F(Zel, LanguageWithoutASettingIsEnglish) {
  const ProgramResult none = Run({"--common", m_folder.Path(), "language"});
  EXPECT_EQ(none.exitCode, 0);
  EXPECT_TRUE(Holds(none.output, "not set, English"));
  EXPECT_TRUE(Holds(Run({"--common", Sample("english"), "language"}).output, "\"0409\", English"));
}

// The same failures: in the built-in words, in those of the message file, in the language's numbered texts, and translated.
TEST_F(Zel, ErrorsAreWordedFromEndToEnd) {
  const std::string builtIn = OneBlank(Run({"--common", m_folder.Path(), "language", "errors"}).output);
  EXPECT_TRUE(Holds(builtIn, "File IO Error Error opening \"tide.tid\".\n")) << builtIn;
  EXPECT_TRUE(Holds(builtIn, "Dax Error Computation failed \"Heave\".\n"));

  const std::string messages =
      OneBlank(RunInSamples("--common english --messages common/VESOK/ZELCORE/ErrorMessages.ini language errors").output);
  EXPECT_TRUE(Holds(messages, "File trouble Cannot open \"tide.tid\". Is the drive connected?\n")) << messages;
  EXPECT_TRUE(Holds(messages, "Data trouble Computation failed \"Heave\".\n"));

  const std::string german = OneBlank(RunInSamples("--common common language errors").output);
  EXPECT_TRUE(Holds(german,
                    "Dateifehler \"tide.tid\" l\xC3\xA4\xC3\x9Ft sich nicht \xC3\xB6"
                    "ffnen. Ist das Laufwerk verbunden?\n"))
      << german;
  EXPECT_TRUE(Holds(german, "Datenfehler No value of \"Heave\" beyond the last sample.\n")) << "an empty translation keeps the file's";
  EXPECT_TRUE(Holds(german, "Datenfehler Die Berechnung von \"Heave\" ist gescheitert.\n")) << "not in the file: the numbered text";
  EXPECT_TRUE(Holds(german, "Unbekannter Fehler\n"));
}

TEST_F(Zel, ReportWordsItsErrorListInTheUsersLanguage) {
  const ProgramResult result = RunInSamples("--common common report settings/suite.ini");
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_TRUE(Holds(result.output, "Dateifehler: \"network.ini\" l\xC3\xA4\xC3\x9Ft sich nicht")) << result.output;
}

TEST_F(Zel, AMessagesFileThatIsMissingIsBadUsage) {
  EXPECT_EQ(Run({"--messages", m_folder.File("none.ini"), "language", "errors"}).exitCode, 2);
  EXPECT_EQ(Run({"--common", m_folder.File("none"), "language"}).exitCode, 2);
}
