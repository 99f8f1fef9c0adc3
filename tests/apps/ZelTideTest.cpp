// zel tide: tide files made from text, looked into and drawn.

#include <filesystem>

#include "tests/apps/ZelFixture.h"

class ZelTide : public Zel {
 protected:
  std::string m_file = m_folder.File("t.tid");

  ProgramResult Import(const std::string& text, const std::vector<std::string>& further = {}) {
    std::vector<std::string> arguments = {"tide", "import", Write("t.txt", text), m_file};
    arguments.insert(arguments.end(), further.begin(), further.end());
    return Run(arguments);
  }
};

TEST_F(ZelTide, ImportMakesAFileThatInfoAndListTellOf) {
  ProgramResult result = Import("# head\n2026-05-01 00:00 1.25\n2026-05-01 00:10 -0.5\n2026-05-01 00:20 2\n");
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "3 values read, 3 in the file")) << result.output;
  EXPECT_EQ(std::filesystem::file_size(m_file), 48u);
  const std::string info = OneBlank(Run({"tide", "info", m_file}).output);
  EXPECT_EQ(info,
            "3 values\nfirst 2026-05-01 00:00:00 1.250\nlast 2026-05-01 00:20:00 2.000\nlowest 2026-05-01 00:10:00 -0.500\n"
            "highest 2026-05-01 00:20:00 2.000\nmean 0.917\nstep 10 min, 0 gaps\n");
  EXPECT_EQ(Run({"tide", "list", m_file, "--from", "2026-05-01T00:05", "--to", "2026-05-01 00:10"}).output,
            "2026-05-01 00:10:00  -0.500\n");
}

TEST_F(ZelTide, ImportTakesAnyOrderOfDateAndSeparators) {
  for (const auto& [format, line] : {std::pair{"DMY", "03/05/26, 04:05 1.5"},
                                     {"MDY", "5-3-2026 4:05;1.5"},
                                     {"YDM", "2026:3:5\\04:05\t1.5"},
                                     {"DYM", "3 2026 5 4 5 1.5"},
                                     {"MYD", "5,2026,3,4,5,1.5"},
                                     {"YMD", "2026 05 03 04 05 1.5"}}) {
    const ProgramResult result = Import(std::string(line) + "\r\n", {"--date", format});
    EXPECT_EQ(result.exitCode, 0) << format << ": " << result.errors;
    EXPECT_EQ(Run({"tide", "list", m_file}).output, "2026-05-03 04:05:00  1.500\n") << format;
  }
  Import("2026-05-03 04:05:30.5 -1.5\n", {"--time", "HMS"});
  EXPECT_EQ(Run({"tide", "list", m_file}).output, "2026-05-03 04:05:30.5  -1.500\n");
}

TEST_F(ZelTide, ImportAddsOnlyWhenAsked) {
  Import("2026-05-01 00:00 1\n2026-05-01 00:10 2\n");
  EXPECT_TRUE(Holds(Import("2026-05-01 00:10 5\n2026-05-01 00:20 6\n", {"--add"}).output, "2 values read, 3 in the file"));
  EXPECT_EQ(Run({"tide", "list", m_file}).output, "2026-05-01 00:00:00  1.000\n2026-05-01 00:10:00  5.000\n2026-05-01 00:20:00  6.000\n");
  Import("2026-05-02 00:00 9\n");
  EXPECT_EQ(Run({"tide", "list", m_file}).output, "2026-05-02 00:00:00  9.000\n");
}

TEST_F(ZelTide, LinesThatDoNotReadStopTheImport) {
  Import("2026-05-01 00:00 1\n");
  const std::string text =
      "2026-05-01 00:10 2\n2026-02-30 00:10 3\nnonsense\n2026-05-01 24:00 1\n2026-05-01 00:30 x\n2026-05-01 00:40 1 2\n";
  ProgramResult result = Import(text);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "t.txt:2: not a date, a time and a height: \"2026-02-30 00:10 3\"")) << result.errors;
  EXPECT_TRUE(Holds(result.errors, "t.txt:6:") && Holds(result.errors, "nothing written"));
  EXPECT_TRUE(Holds(Run({"tide", "list", m_file}).output, "00:00:00  1.000")) << "the file is as it was";
  result = Import(text, {"--force"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(Run({"tide", "list", m_file}).output, "2026-05-01 00:10:00  2.000\n");
  EXPECT_TRUE(Holds(Import("# nothing\n").errors, "has no values"));
}

TEST_F(ZelTide, WhatCannotBeWrittenIsAsItWas) {
  Import("2026-05-01 00:00 1\n");
  const std::string text = m_folder.Write("new.txt", "2026-05-02 00:00 2\n");
  EXPECT_EQ(Run({"tide", "import", text, "/dev/full"}).exitCode, 1);
  EXPECT_EQ(Run({"tide", "export", m_file, "/dev/full"}).exitCode, 1);
  EXPECT_EQ(Run({"tide", "import", text, m_folder.File("none/t.tid")}).exitCode, 1);
  const std::string link = m_folder.MakeLink("link.tid", "t.tid");
  EXPECT_EQ(Run({"tide", "import", text, link}).exitCode, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(link)) << "it means the file it leads to";
  EXPECT_EQ(Run({"tide", "list", m_file}).output, "2026-05-02 00:00:00  2.000\n");
}

TEST_F(ZelTide, ExportAndImportAreInverse) {
  const std::string text = m_folder.File("out.txt"), again = m_folder.File("again.tid");
  for (const char* const rows :
       {"2026-05-01 00:00:00 1.25\n2026-05-01 00:10:00 -0.5\n", "2026-05-01 00:00:07 1.25\n2026-05-01 00:10:00.25 -0.5\n"}) {
    Import(rows, {"--time", "HMS"});
    EXPECT_EQ(Run({"tide", "export", m_file, text}).exitCode, 0);
    const bool seconds = Holds(rows, ":07");
    EXPECT_EQ(Run({"tide", "import", text, again, "--time", seconds ? "HMS" : "HM"}).exitCode, 0) << m_folder.Read("out.txt");
    EXPECT_EQ(m_folder.Read("again.tid"), m_folder.Read("t.tid"));
  }
}

TEST_F(ZelTide, GapsAreFoundByTheUsualStepOrByALimit) {
  Import("2026-05-01 00:00 1\n2026-05-01 00:10 1\n2026-05-01 00:20 1\n2026-05-01 02:30 1\n2026-05-01 02:40 1\n");
  ProgramResult result = Run({"tide", "gaps", m_file});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "2026-05-01 00:20:00 to 2026-05-01 02:30:00  2 h 10 min\n1 gap of more than 15 min\n");
  result = Run({"tide", "gaps", m_file, "--longer-than", "130"});
  EXPECT_EQ(result.exitCode, 0) << "not longer";
  EXPECT_EQ(result.output, "0 gaps of more than 2 h 10 min\n");
}

TEST_F(ZelTide, TheCurveIsDrawn) {
  Import("2026-05-01 00:00 1\n2026-05-01 12:00 3\n2026-05-02 00:00 1\n");
  EXPECT_EQ(Run({"tide", "plot", m_file, "-o", m_folder.File("t.png")}).exitCode, 0);
  EXPECT_EQ(m_folder.Read("t.png").substr(0, 8), "\x89PNG\r\n\x1a\n");
  EXPECT_EQ(Run({"tide", "plot", m_file, "-o", m_folder.File("t.svg")}).exitCode, 0);
  EXPECT_TRUE(Holds(m_folder.Read("t.svg"), "<svg"));
  Write("empty.tid", "");
  EXPECT_EQ(Run({"tide", "plot", m_folder.File("empty.tid"), "-o", m_folder.File("e.svg")}).exitCode, 0);
  EXPECT_EQ(Run({"tide", "plot", m_file, "-o", m_folder.File("none/t.png")}).exitCode, 1);
}

TEST_F(ZelTide, TheSampleOfAMonthHasTwoGreatGaps) {
  EXPECT_EQ(Run({"tide", "import", Sample("tide/harbour.txt"), m_file}).exitCode, 0);
  EXPECT_TRUE(Holds(Run({"tide", "gaps", m_file, "--longer-than", "60"}).output, "2 gaps of more than 60 min"));
}

TEST_F(ZelTide, BadFilesAreTold) {
  EXPECT_EQ(Run({"tide", "info", m_folder.File("none.tid")}).exitCode, 1);
  Write("cut.tid", std::string(40, '\0'));
  const ProgramResult result = Run({"tide", "info", m_folder.File("cut.tid")});
  EXPECT_TRUE(Holds(result.errors, "the last 8 bytes are no whole value")) << result.errors;
  EXPECT_EQ(Run({"tide", "list", m_folder.File("cut.tid"), "--from", "soon"}).exitCode, 2);
}
