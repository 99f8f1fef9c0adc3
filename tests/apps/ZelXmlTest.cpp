// zel xml: files read by the suite's rules, told and written back.

#include "tests/apps/ZelFixture.h"

class ZelXml : public Zel {};

TEST_F(ZelXml, CheckCountsWhatIsThere) {
  const std::string file = Write("a.xml", "<a x=\"1\" y=\"2\"><b>text</b><b/>more<c><d z=\"3\"/></c></a>");
  const ProgramResult result = Run({"xml", "check", file});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.output, file + ": 5 elements, 3 attributes, 2 texts, 3 levels\n");
}

TEST_F(ZelXml, ARefusalIsToldByLineAndColumn) {
  const std::string file = Write("bad.xml", "<a>\n <b c=1/>\n</a>"), good = Write("good.xml", "<a/>");
  const ProgramResult result = Run({"xml", "check", file, good, m_folder.File("none.xml")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "bad.xml:2:")) << result.errors;
  EXPECT_TRUE(Holds(result.errors, "none.xml: ")) << result.errors;
  EXPECT_EQ(result.output, good + ": 1 element, 0 attributes, 0 texts, 1 level\n") << "the others are read all the same";
}

TEST_F(ZelXml, AnEarlyEndIsToldAndTheFrontIsRead) {
  const std::string file = Write("open.xml", "<a>\n<b/>\n");
  const ProgramResult result = Run({"xml", "check", file});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "what stands before it was read")) << result.errors;
  EXPECT_TRUE(Holds(result.output, "2 elements"));
}

TEST_F(ZelXml, WhatIsToldFitsWhatWasFound) {
  const std::string stopped = Write("stopped.xml", "<a>\n<b/>x &deg; y</a>"), empty = Write("empty.xml", "\n");
  EXPECT_EQ(Run({"xml", "check", stopped}).errors,
            "zel: " + stopped + ":2:7: the text has an unknown reference; what stands before it was read\n");
  EXPECT_EQ(Run({"xml", "check", empty}).errors, "zel: " + empty + ":2:1: the text has no element\n");
}

TEST_F(ZelXml, PrintWritesAsTheSuiteDoes) {
  const std::string file = Write("a.xml", "<a>  <b c=\"&lt;\"></b>\n</a>");
  const std::string written = "<?xml version=\"1.0\"?>\r\n<a>\r\n\t<b c=\"&lt;\"/>\r\n</a>\r\n";
  EXPECT_EQ(Run({"xml", "print", file}).output, written);
  EXPECT_EQ(Run({"xml", "print", file, "-o", m_folder.File("out.xml")}).exitCode, 0);
  EXPECT_EQ(m_folder.Read("out.xml"), written);
  EXPECT_EQ(Run({"xml", "print", m_folder.File("out.xml")}).output, written) << "reading and writing are inverse";
  EXPECT_EQ(Run({"xml", "print", file, "-o", m_folder.File("none/out.xml")}).exitCode, 1);
  EXPECT_EQ(Run({"xml", "print", Write("empty.xml", "")}).exitCode, 1);
}

TEST_F(ZelXml, TheSamplesAreAGoodOneAndABadOne) {
  EXPECT_EQ(Run({"xml", "check", Sample("xml/project.xml")}).exitCode, 0);
  EXPECT_EQ(Run({"xml", "check", Sample("xml/faulty.xml")}).exitCode, 1);
}
