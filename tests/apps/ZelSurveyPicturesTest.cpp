// zel survey: the pictures that it leaves beside its reports.

#include "tests/apps/ZelFixture.h"

class ZelSurveyPicturesLong : public Zel {};

TEST_F(ZelSurveyPicturesLong, AreWrittenBesideTheReports) {
  const ProgramResult result = Run({"survey", Sample("survey"), "--out", m_folder.File("out")});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "chart.png, chart.svg, chart.pdf, profile.png, report.txt and report.xml are in")) << result.output;
  for (const char* const name : {"out/chart.png", "out/profile.png"})
    EXPECT_EQ(m_folder.Read(name).substr(0, 8), "\x89PNG\r\n\x1a\n") << name;
  EXPECT_TRUE(Holds(m_folder.Read("out/chart.svg"), "</svg>"));
  EXPECT_EQ(m_folder.Read("out/chart.pdf").substr(0, 5), "%PDF-");
}

TEST_F(ZelSurveyPicturesLong, WhatCannotBeWrittenIsAnErrorOfTheReportAndTheRestIsThere) {
  m_folder.MakeFolder("out");
  m_folder.MakeFolder("out/chart.svg");
  const ProgramResult result = Run({"survey", Sample("survey"), "--out", m_folder.File("out")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "chart.svg")) << result.errors;
  EXPECT_TRUE(Holds(m_folder.Read("out/report.txt"), "chart.svg"));
  EXPECT_TRUE(m_folder.Exists("out/chart.pdf") && m_folder.Exists("out/profile.png"));
}

TEST_F(ZelSurveyPicturesLong, AreLeftOutWhenAsked) {
  EXPECT_EQ(Run({"survey", Sample("survey"), "--no-pictures", "--out", m_folder.File("out")}).exitCode, 0);
  EXPECT_FALSE(m_folder.Exists("out/chart.png"));
  EXPECT_TRUE(m_folder.Exists("out/report.txt"));
}

TEST_F(ZelSurveyPicturesLong, AFaultySurveyIsDrawnAllTheSame) {
  EXPECT_EQ(Run({"survey", Sample("survey-faulty"), "--out", m_folder.File("out")}).exitCode, 1);
  EXPECT_EQ(m_folder.Read("out/chart.png").substr(0, 8), "\x89PNG\r\n\x1a\n");
}
