// zel colours: tables made, shown and converted, and the pictures of their legends.

#include "tests/apps/ZelFixture.h"

class ZelColours : public Zel {
 protected:
  std::string m_table = m_folder.File("table.col");
};

TEST_F(ZelColours, MakeRangeStraightPrintsSavesAndLooksUp) {
  const ProgramResult result = Run({"colours", "make",   "range",  "--min", "0",  "--max", "10",      "--step", "5",       "--low",
                                    "#000000", "--high", "0,0,90", "--rgb", "-o", m_table, "--value", "7.5",    "--value", "-1"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  const std::string output = OneBlank(result.output);
  EXPECT_TRUE(Holds(output, "below #000000 0, 0, 0\n")) << output;
  EXPECT_TRUE(Holds(output, "\n0 #00001E 0, 0, 30\n")) << "a step away from the low colour";
  EXPECT_TRUE(Holds(output, "\n5 #00003C 0, 0, 60\n"));
  EXPECT_TRUE(Holds(output, "\n10 #00005A 0, 0, 90\n"));
  EXPECT_TRUE(Holds(output, "value 7.5 #00003C")) << output;
  EXPECT_TRUE(Holds(output, "value -1 #000000"));
  EXPECT_TRUE(Holds(m_folder.Read("table.col"), "[Values]\r\n0 = 0\r\n1 = 5\r\n2 = 10\r\n")) << m_folder.Read("table.col");
  EXPECT_EQ(OneBlank(Run({"colours", "show", m_table, "--value", "7.5", "--value", "-1"}).output),
            output.substr(0, output.find("\nTable:")));
}

TEST_F(ZelColours, MakeByCountAndAddToATable) {
  const std::vector<std::string> first = {"colours", "make", "three", "--min", "0",      "--max", "4",  "--count", "7",
                                          "--low",   "red",  "--mid", "white", "--high", "blue",  "-o", m_table};
  EXPECT_EQ(Run(first).exitCode, 0);
  const ProgramResult result =
      Run({"colours", "make", "range", "--min", "100", "--max", "100.5", "--step", "0.5", "--rgb", "--add-to", m_table});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  const std::string output = OneBlank(result.output);
  EXPECT_TRUE(Holds(output, "\n0 #")) << "what was there stays: " << output;
  EXPECT_TRUE(Holds(output, "\n100.5 #FF0000")) << output;
}

TEST_F(ZelColours, MakeLogFilesAndDredge) {
  EXPECT_TRUE(Holds(OneBlank(Run({"colours", "make", "log", "--max", "100", "--count", "4"}).output), "\n10 #"));
  const std::string files = OneBlank(Run({"colours", "make", "files", "--count", "3", "--low", "red", "--high", "blue"}).output);
  EXPECT_TRUE(Holds(files, "\n2 #") && Holds(files, "\n3 #") && !Holds(files, "\n4 #")) << files;
  const ProgramResult result =
      Run({"colours", "make", "dredge", "--under-limit", "0.3", "--over-limit", "-0.2", "--tolerance", "yellow:green:2", "-o", m_table});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "over dredged below -0.2, under dredged from 0.3")) << result.output;
  EXPECT_TRUE(Holds(OneBlank(result.output), "in tolerance #FFFF00 to #00FF00, 2 colours"));
  EXPECT_TRUE(Holds(m_folder.Read("table.col"), "[DredgeDiff]"));
}

TEST_F(ZelColours, LegendsArePngAndSvg) {
  const std::string png = m_folder.File("legend.png"), svg = m_folder.File("legend.svg");
  EXPECT_EQ(Run({"colours", "show", Sample("colours/dredge.col"), "--legend", png}).exitCode, 0);
  EXPECT_EQ(m_folder.Read("legend.png").substr(0, 8), "\x89PNG\r\n\x1a\n");
  EXPECT_EQ(Run({"colours", "show", Sample("colours/depth.col"), "--legend", svg, "--title", "Depth below datum"}).exitCode, 0);
  const std::string text = m_folder.Read("legend.svg");
  EXPECT_TRUE(Holds(text, "<svg") && text.ends_with("</svg>\n"));
  EXPECT_EQ(Run({"colours", "show", Sample("colours/depth.col"), "--legend", m_folder.File("none/legend.png")}).exitCode, 1);
}

TEST_F(ZelColours, NamesAndSwatchesAreShown) {
  const std::string table = Write("t.col",
                                  "[Values]\n0 = 1.5\n[Colors]\nALowColor = 1, 2, 3\n0 = 10, 20, 30\n[Locks]\n0 = 1\n[Names]\n0 = Fl\xFC"
                                  "gel\n");
  EXPECT_TRUE(Holds(OneBlank(Run({"colours", "show", table}).output), "\n1.5 #0A141E 10, 20, 30 locked Fl\xC3\xBCgel\n"));
  EXPECT_TRUE(Holds(Run({"colours", "show", table, "--color", "always"}).output, "\033[48;2;10;20;30m"));
}

TEST_F(ZelColours, ConvertGoesToOtherFormsAndBack) {
  const std::string cpt = m_folder.File("t.cpt"), text = m_folder.File("t.txt");
  const std::string table =
      OneBlank(Run({"colours", "make", "range", "--min", "-2", "--max", "2.5", "--step", "0.5", "-o", m_table}).output);
  EXPECT_EQ(Run({"colours", "convert", m_table, cpt}).exitCode, 0);
  EXPECT_EQ(Run({"colours", "convert", cpt, text}).exitCode, 0);
  EXPECT_EQ(OneBlank(Run({"colours", "show", text}).output), table.substr(0, table.find("\nTable:"))) << m_folder.Read("t.txt");
}

TEST_F(ZelColours, AnEvenSliceOfAPaletteBecomesOneEntryAndAGradientItsMiddles) {
  const std::string cpt = Write("p.cpt", "# comment\n0 10/20/30 1 10/20/30\n1 0 0 0 2 200 100 50 L\nB white\nF 300-1-1\nN 128\n");
  const std::string output = OneBlank(Run({"colours", "show", cpt, "--steps", "2"}).output);
  EXPECT_EQ(output,
            "below #FFFFFF 255, 255, 255\n0 #0A141E 10, 20, 30\n1 #32190D 50, 25, 13\n1.5 #964B26 150, 75, 38\n"
            "2 #FF00FF 255, 0, 255\n");
}

TEST_F(ZelColours, ColoursOfAPaletteMayHaveFractions) {
  const std::string palette = Write("x.cpt", "0 249.63/254.4/0.5 10 249.63/254.4/0.5\n");
  EXPECT_EQ(Run({"colours", "convert", palette, m_folder.File("x.col")}).exitCode, 0);
  EXPECT_TRUE(Holds(Run({"colours", "show", m_folder.File("x.col")}).output, "#FAFE01"));
  for (const char* const beyond : {"255.1/0/0", "-0.1/0/0", "nan/0/0", "1e2/0/0", "0/0/.", "0//0"}) {
    EXPECT_EQ(Run({"colours", "show", Write("x.cpt", std::string("0 ") + beyond + " 1 " + beyond + "\n")}).exitCode, 1) << beyond;
  }
}

TEST_F(ZelColours, WhatCannotBeReadIsTold) {
  const std::string bad = Write("bad.col", "[Values]\n0 = 1\n1 = 2\n[Colors]\n0 = 1, 2, 3\n1 = red\n");
  ProgramResult result = Run({"colours", "show", bad});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "the value \"1\" has no colour of three numbers in [Colors]")) << result.errors;
  result = Run({"colours", "show", Write("gap.col", "[Values]\n0 = 1\n1 = 1\n3 = 4\n[Colors]\n0 = 1, 2, 3\n1 = 4, 5, 6\n")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "2 rows not read")) << result.errors;
  EXPECT_TRUE(Holds(Run({"colours", "show", Write("other.ini", "[A]\nb = 1\n")}).errors, "no section [Colors]"));
  EXPECT_TRUE(Holds(Run({"colours", "show", Write("x.cpt", "0 red 1 rouge\n")}).errors, "x.cpt:1: not a colour"));
  EXPECT_TRUE(Holds(Run({"colours", "show", Write("x.txt", "# none\n")}).errors, "has no colours"));
  EXPECT_TRUE(Holds(Run({"colours", "show", m_folder.File("none.cpt")}).errors, "cannot open"));
  EXPECT_EQ(Run({"colours", "convert", Sample("colours/depth.col"), m_folder.File("none/x.cpt")}).exitCode, 1);
}

TEST_F(ZelColours, BadArgumentsAreUsageErrors) {
  EXPECT_EQ(Run({"colours", "make", "range", "--min", "0", "--max", "1"}).exitCode, 2) << "neither step nor count";
  EXPECT_EQ(Run({"colours", "make", "range", "--min", "0", "--max", "1", "--step", "1", "--count", "4"}).exitCode, 2);
  EXPECT_EQ(Run({"colours", "make", "range", "--min", "0", "--max", "1", "--step", "1", "--low", "#12345"}).exitCode, 2);
  EXPECT_EQ(Run({"colours", "make", "dredge", "--over", "red:blue"}).exitCode, 2);
  EXPECT_EQ(Run({"colours", "show", Sample("colours/depth.col"), "--value", "deep"}).exitCode, 2);
}
