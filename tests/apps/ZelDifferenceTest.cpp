// zel settings diff and zel settings apply.

#include "tests/apps/ZelFixture.h"

class ZelDifference : public Zel {
 protected:
  std::string m_old = Write("old.ini", "; mine\n[A]\n; about x\nx = 1\nz = 4\n[B]\nk = v\n");
  std::string m_new = Write("new.ini", "[A]\nx = 2\ny = 3\n[B]\nk = v\n");
};

TEST_F(ZelDifference, ListsWhatWasAddedChangedAndRemoved) {
  const ProgramResult result = Run({"settings", "diff", m_old, m_new});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output,
            "--- " + m_old + "\n+++ " + m_new + "\n[A]\n  ~ x = 1 -> 2\n  + y = 3\n  - z = 4\n\n1 added, 1 changed, 1 removed\n");
}

TEST_F(ZelDifference, EqualFilesPrintNothingAndExitWithZero) {
  const ProgramResult result = Run({"settings", "diff", m_old, m_old});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output, "");
}

TEST_F(ZelDifference, TroubleExitsWithTwo) {
  EXPECT_EQ(Run({"settings", "diff", m_old, m_folder.File("none.ini")}).exitCode, 2);
  EXPECT_EQ(Run({"settings", "diff", m_old, m_new, "-o", m_folder.File("no/folder.ini")}).exitCode, 2);
  EXPECT_EQ(Run({"settings", "apply", m_folder.File("none.ini"), m_old}).exitCode, 2);
}

TEST_F(ZelDifference, ColoursOnlyWhenAsked) {
  EXPECT_EQ(Run({"settings", "diff", m_old, m_new}).output.find('\x1B'), std::string::npos);
  const std::string coloured = Run({"settings", "diff", m_old, m_new, "--color", "always"}).output;
  EXPECT_TRUE(Holds(coloured, "\x1B[32m+ y = 3\x1B[0m")) << coloured;
  EXPECT_TRUE(Holds(coloured, "\x1B[31m- z = 4\x1B[0m"));
}

TEST_F(ZelDifference, AWrittenDifferenceAppliedMakesTheOlderFileTheNewer) {
  const std::string difference = m_folder.File("difference.ini");
  ASSERT_EQ(Run({"settings", "diff", m_old, m_new, "-o", difference}).exitCode, 1);
  const ProgramResult result = Run({"settings", "apply", m_old, difference});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "~ x = 1 -> 2")) << result.output;
  EXPECT_EQ(Run({"settings", "diff", m_old, m_new}).exitCode, 0);
  EXPECT_TRUE(Holds(m_folder.Read("old.ini"), "; mine\n[A]\n; about x\nx = 2\n")) << "comments stay";
}

TEST_F(ZelDifference, ApplyingTwiceTellsWhatDoesNotFitAndLeavesTheFile) {
  const std::string difference = m_folder.File("difference.ini");
  Run({"settings", "diff", m_old, m_new, "-o", difference});
  ASSERT_EQ(Run({"settings", "apply", m_old, difference}).exitCode, 0);
  const std::string text = m_folder.Read("old.ini");
  const ProgramResult again = Run({"settings", "apply", m_old, difference});
  EXPECT_EQ(again.exitCode, 1);
  EXPECT_TRUE(Holds(again.errors, "has no [A] z, which the difference removes")) << again.errors;
  EXPECT_EQ(m_folder.Read("old.ini"), text);
}

TEST_F(ZelDifference, ADryRunTellsAndLeavesTheFile) {
  const std::string difference = Write("difference.ini", "[add.C]\nnew = 1\n[remove.B]\nk = v\n");
  const std::string text = m_folder.Read("old.ini");
  const ProgramResult result = Run({"settings", "apply", m_old, difference, "--dry-run"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_TRUE(Holds(result.output, "[B]\n  - k = v"));
  EXPECT_TRUE(Holds(result.output, "[C]\n  + new = 1"));
  EXPECT_EQ(m_folder.Read("old.ini"), text);
}

TEST_F(ZelDifference, WhatIsSoAlreadyIsNotListed) {
  const std::string difference = Write("difference.ini", "[add.B]\nk = v\n");
  const ProgramResult result = Run({"settings", "apply", m_old, difference});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_TRUE(Holds(result.output, "Nothing to change"));
}

TEST_F(ZelDifference, ADifferenceThatRemovesAnItemTwiceIsRefused) {
  const std::string difference = Write("difference.ini", "[remove.A]\nx = 1\n[remove.A.b]\nx = 1\n");
  const std::string text = m_folder.Read("old.ini");
  EXPECT_EQ(Run({"settings", "apply", m_old, difference}).exitCode, 1);
  EXPECT_EQ(m_folder.Read("old.ini"), text);
}

TEST_F(ZelDifference, ShowsEachFileInItsOwnEncoding) {
  const std::string older = Write("utf8.ini", "[A]\nk = 1 \xC2\xB0\n");
  const std::string newer = Write("cp1252.ini", "[A]\nk = 2 \xB0\n");
  const ProgramResult result = Run({"settings", "diff", older, newer});
  EXPECT_TRUE(Holds(result.output, "~ k = 1 \xC2\xB0 -> 2 \xC2\xB0")) << result.output;
  EXPECT_TRUE(Holds(result.errors, "UTF-8"));
}

TEST_F(ZelDifference, ThePlainCopiesOfADifferenceAreNotApplied) {
  const std::string difference = Write("difference.ini", "[A]\nx = 77\n");
  EXPECT_TRUE(Holds(Run({"settings", "apply", m_old, difference}).output, "Nothing to change"));
}
