// zel xyz: points from text files, looked at and imported.

#include <filesystem>

#include "tests/apps/ZelFixture.h"

class ZelXyz : public Zel {
 protected:
  std::string m_output = m_folder.File("out.xyz");

  ProgramResult Import(const std::string& text, const std::vector<std::string>& further = {}) {
    std::vector<std::string> arguments = {"xyz", "import", Write("in.xyz", text), m_output};
    arguments.insert(arguments.end(), further.begin(), further.end());
    return Run(arguments);
  }
};

TEST_F(ZelXyz, InfoCountsAndBounds) {
  const ProgramResult result =
      Run({"xyz", "info", Write("a.xyz", "x y z time\n1 2 -3 1000\n4;5;-6\n\n# comment\n-7,8,9,2026-05-10T08:00:00\n")});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  const std::string output = OneBlank(result.output);
  EXPECT_TRUE(Holds(output, "3 points, 6 lines, 2 with a time, 0 broken\n")) << output;
  EXPECT_TRUE(Holds(output, "x -7.000 to 4.000\ny 2.000 to 8.000\nz -6.000 to 9.000\n")) << output;
  EXPECT_EQ(result.errors, "") << "no bar in a pipe";
}

TEST_F(ZelXyz, BrokenLinesAreToldByNumber) {
  const ProgramResult result = Run({"xyz", "info", Write("a.xyz", "1 2 3\n1 two 3\n1 2\n1 2 3\n")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "a.xyz:2: ") && Holds(result.errors, "a.xyz:3: ")) << result.errors;
  EXPECT_TRUE(Holds(result.output, "2 points, 4 lines, 0 with a time, 2 broken"));
  EXPECT_EQ(Run({"xyz", "info", m_folder.File("none.xyz")}).exitCode, 1);
  EXPECT_EQ(Run({"xyz", "info", Write("empty.xyz", "")}).exitCode, 0);
}

TEST_F(ZelXyz, ImportWritesACleanText) {
  const ProgramResult result = Import("# head\r\n1.0000;2.50;-3.1234\r\n 4\t5e1 -6 1778400000000\r\n");
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(m_folder.Read("out.xyz"), "1 2.5 -3.123\n4 50 -6 1778400000000\n");
  EXPECT_TRUE(Holds(result.output, "out.xyz: 2 of 2 points"));
}

TEST_F(ZelXyz, ImportTakesWhatIsAskedFor) {
  const std::string text = "0 0 -1\n1 1 -2\n2 2 -3\n3 3 -4\n4 4 -5\n";
  EXPECT_EQ(Import(text, {"--page", "1,1,3,3"}).exitCode, 0);
  EXPECT_EQ(m_folder.Read("out.xyz"), "1 1 -2\n2 2 -3\n3 3 -4\n");
  Import(text, {"--low", "-4", "--high", "-2", "--shift", "0.5"});
  EXPECT_EQ(m_folder.Read("out.xyz"), "1 1 -1.5\n2 2 -2.5\n3 3 -3.5\n");
  Import(text, {"--every", "2"});
  EXPECT_EQ(m_folder.Read("out.xyz"), "0 0 -1\n2 2 -3\n4 4 -5\n");
  EXPECT_EQ(Import(text, {"--page", "1,1,3"}).exitCode, 2);
}

TEST_F(ZelXyz, AFailedImportLeavesTheTargetAsItWas) {
  Write("out.xyz", "old");
  EXPECT_EQ(Run({"xyz", "import", m_folder.File("none.xyz"), m_output}).exitCode, 1);
  EXPECT_EQ(m_folder.Read("out.xyz"), "old");
  EXPECT_EQ(Run({"xyz", "import", Write("in.xyz", "1 2 3\n"), m_folder.File("none/out.xyz")}).exitCode, 1);
  EXPECT_FALSE(m_folder.Exists("out.xyz.new"));
}

TEST_F(ZelXyz, InfoTellsTheTimesOfPointsThatHaveOne) {
  const ProgramResult result = Run({"xyz", "info", Write("a.xyz", "1 2 3\n1 2 3 2026-05-10T08:00:00\n1 2 3\n1 2 3 2026-05-10T07:00:00\n")});
  EXPECT_TRUE(Holds(result.output, "time 2026-05-10 07:00:00 to 2026-05-10 08:00:00 UTC\n")) << result.output;
  EXPECT_FALSE(Holds(Run({"xyz", "info", Write("b.xyz", "1 2 3\n")}).output, "time 1970"));
}

TEST_F(ZelXyz, ImportTouchesNoOtherFileBesideTheTarget) {
  Write("out.xyz.new", "somebody's");
  EXPECT_EQ(Import("1 2 3\n").exitCode, 0);
  EXPECT_EQ(m_folder.Read("out.xyz"), "1 2 3\n");
  EXPECT_EQ(m_folder.Read("out.xyz.new"), "somebody's");
  EXPECT_FALSE(m_folder.Exists("out.xyz.new1"));
}

TEST_F(ZelXyz, ImportWritesThroughALinkAndKeepsPermissions) {
  namespace fs = std::filesystem;
  const std::string target = Write("target.xyz", "old");
  fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write);
  m_folder.MakeLink("out.xyz", target);
  EXPECT_EQ(Import("1 2 3\n").exitCode, 0);
  EXPECT_TRUE(fs::is_symlink(m_output));
  EXPECT_EQ(m_folder.Read("target.xyz"), "1 2 3\n");
  EXPECT_EQ(fs::status(target).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(ZelXyz, ImportReplacesNeitherAPipeNorAFolder) {
  m_folder.MakeFifo("out.xyz");
  EXPECT_EQ(Import("1 2 3\n").exitCode, 1);
  EXPECT_TRUE(std::filesystem::is_fifo(m_output));
  EXPECT_EQ(Run({"xyz", "import", Write("in.xyz", "1 2 3\n"), m_folder.Path()}).exitCode, 1);
  EXPECT_TRUE(std::filesystem::is_directory(m_folder.Path()));
}

TEST_F(ZelXyz, OutputThatIsLostOnAFullDiskIsAFailure) {
  const ProgramResult result =
      RunProgram("/bin/sh", {"-c", "\"" ZELBASE_ZEL "\" xyz info \"" + Write("a.xyz", "1 2 3\n") + "\" > /dev/full"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "cannot write all of the output")) << result.errors;
}

// The signal is already on its way when the program starts, so that its first look finds it.
class ZelXyzStopped : public ZelXyz, public testing::WithParamInterface<const char*> {};

TEST_P(ZelXyzStopped, TheImportStopsWithNothingWritten) {
  Write("out.xyz", "old");
  std::string text;
  for (int i = 0; i < 10000; ++i) text += "1 2 3\n";
  const std::string signal = GetParam();
  const std::string program = "use POSIX; $SIG{" + signal + "} = 'DEFAULT'; sigprocmask(SIG_BLOCK, POSIX::SigSet->new(SIG" + signal +
                              ")); kill '" + signal + "', $$; exec @ARGV";
  const ProgramResult result = RunProgram("/usr/bin/perl", {"-e", program, ZELBASE_ZEL, "xyz", "import", Write("in.xyz", text), m_output});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "stopped; nothing written")) << result.errors;
  EXPECT_EQ(m_folder.Read("out.xyz"), "old");
  EXPECT_FALSE(m_folder.Exists("out.xyz.new"));
}

INSTANTIATE_TEST_SUITE_P(CtrlCAndOthers, ZelXyzStopped, testing::Values("INT", "TERM", "HUP"));

// On a terminal the bar is gone before the first word, so that no line of the answer begins with it.
TEST_F(ZelXyz, OnATerminalTheBarIsGoneBeforeTheAnswer) {
  std::string text;
  for (int i = 0; i < 10000; ++i) text += "1 2 3\n";
  const std::string command = "\"" ZELBASE_ZEL "\" xyz import \"" + Write("in.xyz", text) + "\" \"" + m_output + "\"";
  const ProgramResult result = RunProgram("/usr/bin/script", {"-qec", command, "/dev/null"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "\rimporting [")) << result.output;
  EXPECT_TRUE(Holds(result.output, "%\r\033[K" + m_output + ": 10000 of 10000 points")) << result.output;
}

TEST_F(ZelXyz, TheSampleOfAHarbourHasItsSoundings) {
  const ProgramResult result = Run({"xyz", "info", Sample("soundings/harbour.xyz")});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "102400 points, 102401 lines, 102400 with a time, 0 broken")) << result.output;
}
