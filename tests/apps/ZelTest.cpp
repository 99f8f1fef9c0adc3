// The program zel from outside: what it prints, what it leaves in files, and how it exits.

#include "tests/apps/ZelFixture.h"

TEST_F(Zel, WithoutACommandIsBadUsage) {
  const ProgramResult result = Run({});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_TRUE(result.output.empty());
  EXPECT_FALSE(result.errors.empty());
}

TEST_F(Zel, HelpShowsExamplesAndExitsWell) {
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--help"},
                                                    {"report", "--help"},
                                                    {"settings", "list", "--help"},
                                                    {"settings", "get", "--help"},
                                                    {"settings", "set", "--help"},
                                                    {"settings", "delete", "--help"},
                                                    {"settings", "rename", "--help"},
                                                    {"settings", "copy", "--help"},
                                                    {"settings", "check", "--help"},
                                                    {"settings", "diff", "--help"},
                                                    {"settings", "apply", "--help"},
                                                    {"displays", "--help"},
                                                    {"format", "coordinate", "--help"},
                                                    {"format", "span", "--help"},
                                                    {"format", "number", "--help"},
                                                    {"units", "kinds", "--help"},
                                                    {"units", "list", "--help"},
                                                    {"units", "convert", "--help"},
                                                    {"actions", "--help"},
                                                    {"language", "--help"},
                                                    {"language", "errors", "--help"}}) {
    const ProgramResult result = Run(arguments);
    EXPECT_EQ(result.exitCode, 0) << arguments.front();
    EXPECT_TRUE(Holds(result.output, "Example")) << result.output;
    EXPECT_EQ(result.errors, "");
  }
}

TEST_F(Zel, UnknownCommandsOptionsAndTypesAreBadUsage) {
  const std::string file = Write("a.ini", "[A]\nk = 1\n");
  EXPECT_EQ(Run({"fly"}).exitCode, 2);
  EXPECT_EQ(Run({"settings"}).exitCode, 2);
  EXPECT_EQ(Run({"settings", "list"}).exitCode, 2);
  EXPECT_EQ(Run({"settings", "list", "--fast", file}).exitCode, 2);
  EXPECT_EQ(Run({"settings", "get", file, "A", "k", "--type", "word"}).exitCode, 2);
}

TEST_F(Zel, ReportShowsTypedValuesTheTimeAndTheErrorList) {
  const ProgramResult result = Run({"report", Sample("settings/suite.ini")});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_TRUE(Holds(result.output, " UTC, time stamp <0x")) << result.output;
  EXPECT_TRUE(Holds(OneBlank(result.output), "Deviceflags integer 31\n"));
  EXPECT_TRUE(Holds(OneBlank(result.output), "Draught number 2.75\n"));
  EXPECT_TRUE(Holds(result.output, "red 255, green 96, blue 64 (#FF6040)"));
  EXPECT_TRUE(Holds(result.output, "9007199254740993"));
  EXPECT_TRUE(Holds(result.output, "11.5 °C"));
  EXPECT_TRUE(Holds(result.output, "File IO Error: Error opening"));
  EXPECT_TRUE(Holds(result.output, "network.ini"));
  EXPECT_TRUE(Holds(result.output, "Settings check"));
}

TEST_F(Zel, ReportOfAMissingFileExitsWithOneAndSaysSoInTheErrorList) {
  const ProgramResult result = Run({"report", m_folder.File("none.ini")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.output, "Error list: 1 entry"));
  EXPECT_TRUE(Holds(result.output, "none.ini"));
}

TEST_F(Zel, ListPrintsSectionsAndItemsSorted) {
  const std::string file = Write("a.ini", "[B]\nz = 1\na = 2\n[A]\nk=\n[Checksum]\nIntegrity = 5\n");
  const ProgramResult result = Run({"settings", "list", file});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output, "[A]\nk = \n\n[B]\na = 2\nz = 1\n\n[Checksum]\nIntegrity = 5\n");
  EXPECT_EQ(Run({"settings", "list", file, "B"}).output, "[B]\na = 2\nz = 1\n");
  EXPECT_EQ(Run({"settings", "list", file, "C"}).exitCode, 1);
}

TEST_F(Zel, GetReadsByType) {
  const std::string file = Write("a.ini", "[A]\ni = 0x1F\nd = 2.50\nc = 255, 0, 1\nb = 7\ns = 12abc\n");
  const std::vector<std::vector<std::string>> rows = {
      {"i", "int", "31"},     {"i", "string", "0x1F"}, {"i", "bool", "false"}, {"d", "double", "2.5"},
      {"d", "float", "2.5"},  {"b", "bool", "true"},   {"s", "int", "12"},     {"c", "colour", "red 255, green 0, blue 1 (#FF0001)"},
      {"b", "unsigned", "7"}, {"b", "long", "7"},      {"b", "int64", "7"},    {"b", "unsigned64", "7"}};
  for (const auto& row : rows) {
    const ProgramResult result = Run({"settings", "get", file, "A", row[0], "--type", row[1]});
    EXPECT_EQ(result.exitCode, 0) << row[0] << " as " << row[1];
    EXPECT_EQ(result.output, row[2] + "\n") << row[0] << " as " << row[1];
  }
}

TEST_F(Zel, GetTellsWhatIsMissing) {
  const std::string file = Write("a.ini", "[A]\nk = word\n");
  EXPECT_TRUE(Holds(Run({"settings", "get", file, "B", "k"}).errors, "no section [B]"));
  EXPECT_TRUE(Holds(Run({"settings", "get", file, "A", "x"}).errors, "no key [A] x"));
  const ProgramResult bad = Run({"settings", "get", file, "A", "k", "--type", "int"});
  EXPECT_EQ(bad.exitCode, 1);
  EXPECT_EQ(bad.output, "");
  EXPECT_TRUE(Holds(bad.errors, "does not read as int"));
  EXPECT_TRUE(Holds(Run({"settings", "get", m_folder.File("none"), "A", "k"}).errors, "cannot open"));
}

TEST_F(Zel, SetChangesOneLineAndNothingElse) {
  const std::string file = Write("a.ini", "; head\r\n[A]\r\n; about k\r\nk = 1 // old\r\nl=2\r\n");
  ASSERT_EQ(Run({"settings", "set", file, "A", "k", "-3.5"}).exitCode, 0);
  EXPECT_EQ(m_folder.Read("a.ini"), "; head\r\n[A]\r\n; about k\r\nk = -3.5 // old\r\nl=2\r\n");
}

TEST_F(Zel, SetMakesTheFileAndTheSection) {
  const std::string file = m_folder.File("new.ini");
  ASSERT_EQ(Run({"settings", "set", file, "A", "k", "11 °C"}).exitCode, 0);
  EXPECT_EQ(Run({"settings", "get", file, "A", "k"}).output, "11 °C\n");
  EXPECT_TRUE(Holds(m_folder.Read("new.ini"),
                    "k = 11 \xB0"
                    "C\r\n"));
}

TEST_F(Zel, SetRefusesWhatWouldNotReadBack) {
  const std::string text = "[A]\nk = 1\n";
  const std::string file = Write("a.ini", text);
  for (const char* const value : {"http://host", " 1", "1\n[B]"}) {
    const ProgramResult result = Run({"settings", "set", file, "A", "k", value});
    EXPECT_EQ(result.exitCode, 1) << value;
    EXPECT_FALSE(result.errors.empty());
  }
  EXPECT_EQ(Run({"settings", "set", file, "A", "k", "\xE6\xBC\xA2"}).exitCode, 1);
  EXPECT_EQ(m_folder.Read("a.ini"), text);
}

TEST_F(Zel, DeleteRemovesAKeyOrASection) {
  const std::string file = Write("a.ini", "[A]\nk = 1\nl = 2\n[B]\nm = 3\n");
  ASSERT_EQ(Run({"settings", "delete", file, "A", "k"}).exitCode, 0);
  EXPECT_EQ(m_folder.Read("a.ini"), "[A]\nl = 2\n[B]\nm = 3\n");
  ASSERT_EQ(Run({"settings", "delete", file, "B"}).exitCode, 0);
  EXPECT_EQ(m_folder.Read("a.ini"), "[A]\nl = 2\n");
  EXPECT_EQ(Run({"settings", "delete", file, "B"}).exitCode, 1);
}

TEST_F(Zel, DeleteOfAnEmptyKeyLeavesTheSectionAlone) {
  const std::string text = "[A]\nk = 1\n";
  const std::string file = Write("a.ini", text);
  EXPECT_EQ(Run({"settings", "delete", file, "A", ""}).exitCode, 1);
  EXPECT_EQ(m_folder.Read("a.ini"), text);
}

TEST_F(Zel, RenameGivesKeysAndSectionsOtherNames) {
  const std::string file = Write("a.ini", "[A]\n; note\nk = 1\n");
  ASSERT_EQ(Run({"settings", "rename", file, "A", "l", "--key", "k"}).exitCode, 0);
  ASSERT_EQ(Run({"settings", "rename", file, "A", "C"}).exitCode, 0);
  EXPECT_EQ(m_folder.Read("a.ini"), "[C]\n; note\nl = 1\n");
  EXPECT_EQ(Run({"settings", "rename", file, "A", "D"}).exitCode, 1);
}

TEST_F(Zel, CopyGivesTheTargetExactlyTheItemsOfTheSource) {
  const std::string file = Write("a.ini", "[A]\nk = 1\n[B]\nold = 9\n");
  ASSERT_EQ(Run({"settings", "copy", file, "A", "B"}).exitCode, 0);
  EXPECT_EQ(Run({"settings", "list", file, "B"}).output, "[B]\nk = 1\n");
  const std::string other = Write("b.ini", "[S]\nx = 5\n");
  ASSERT_EQ(Run({"settings", "copy", file, "S", "B", "--from", other}).exitCode, 0);
  EXPECT_EQ(Run({"settings", "list", file, "B"}).output, "[B]\nx = 5\n");
  EXPECT_EQ(Run({"settings", "copy", file, "None", "B", "--from", other}).exitCode, 1);
  EXPECT_EQ(Run({"settings", "list", file, "B"}).output, "[B]\nx = 5\n");
}

TEST_F(Zel, CheckTellsLinesAndExitsWithOneWhenThereIsSomething) {
  const std::string good = Write("good.ini", "[A]\nk = 1\n");
  EXPECT_EQ(Run({"settings", "check", good}).exitCode, 0);
  EXPECT_EQ(Run({"settings", "check", good}).output, "");
  const ProgramResult result = Run({"settings", "check", good, Sample("settings/faulty.ini")});
  EXPECT_EQ(result.exitCode, 1);
  for (const char* place :
       {"faulty.ini:5:", "faulty.ini:6:", "faulty.ini:8:", "faulty.ini:10:", "faulty.ini:13:", "faulty.ini:14:", "faulty.ini:15:"}) {
    EXPECT_TRUE(Holds(result.output, place)) << place << '\n' << result.output;
  }
  EXPECT_TRUE(Holds(result.output, "1 of 2 files"));
}

TEST_F(Zel, FoldersAndDevicesDoNotOpen) {
  EXPECT_EQ(Run({"settings", "list", m_folder.Path()}).exitCode, 1);
  EXPECT_EQ(Run({"settings", "list", "/dev/zero"}).exitCode, 1);
  EXPECT_EQ(Run({"settings", "check", "/dev/null"}).exitCode, 1);
  EXPECT_EQ(Run({"settings", "set", m_folder.Path(), "A", "k", "1"}).exitCode, 1);
}

TEST_F(Zel, ControlBytesOfAFileDoNotReachTheTerminal) {
  const std::string file = Write("a.ini", "[A]\nk = \x1B[2J\x9B\n");
  const ProgramResult result = Run({"settings", "list", file});
  EXPECT_EQ(result.output.find('\x1B'), std::string::npos);
  EXPECT_TRUE(Holds(result.output, "\\x1B[2J"));
}
