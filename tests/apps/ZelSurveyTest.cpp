// zel survey: a folder read, reduced, cut, compared with its design, and reported. The small survey is worked out by hand.

#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <map>

#include "tests/apps/ZelFixture.h"
#include "tests/support/InChild.h"
#include "tests/support/Printed.h"
#include "tests/support/ThisProcess.h"
#include "zelbase/xml/XmlReader.h"

namespace {

namespace fs = std::filesystem;

constexpr double kBegin = 1778544000000.0;  // 2026-05-12 00:00:00 UTC

std::string TideRecord(double time, double height) {
  std::string record(16, '\0');
  std::memcpy(record.data(), &time, 8);
  std::memcpy(record.data() + 8, &height, 8);
  return record;
}

// A file's text for each name; "survey.ini" among them.
using Folder = std::map<std::string, std::string>;

// Seven soundings: four are used, at heights -9, -8.5, -10 and -10 after a tide of 1, 1.5, 2 and 1 metres; one lies outside the work
// area, one has no tide at its time, one no time at all. The design lies at -9.5, 20 metres wide, its over-depth 0.3 lower.
Folder SmallSurvey() {
  return {
      {"survey.ini",
       "[Survey]\nTitle = Small\nClient = Nobody\nVessel = Punt\nDate = today\nDatum = LAT\n[Soundings]\nFile = s.xyz\n[Tide]\nFile = "
       "t.tid\n"
       "[Area]\nWork area = area.txt\nLand = land.txt\n[Colours]\nDepth = depth.col\nDifference = diff.col\n"
       "[Design]\nLine = design.txt\nWidth = 20\nOver-depth = -0.3\nOver-depth is vertical = yes\n[Section]\nStep = 4\nCorridor = "
       "1.5\n[Volumes]\nCell = 2\n"
       "[Track]\nFile = track.txt\nTime origin = 2026-05-12 06:00\nGate = 20\n[Vessel]\nContour = v.con\n"},
      {"s.xyz",
       "1 1 -10 1778544000000\n3 1 -10 1778544300000\n1 3 -12 1778544600000\n3 3 -11 1778544000000\n"
       "20 20 -5 1778544000000\n5 5 -5 1778547600000\n6 6 -3\n"},
      {"t.tid", TideRecord(kBegin, 1.0) + TideRecord(kBegin + 600000.0, 2.0)},
      {"area.txt", "0 0\n8 0\n8 8\n0 8\n"},
      {"land.txt", "9 9\n12 9\n12 12\n"},
      {"depth.col", "[Colors]\n0 = 1, 2, 3\n[Values]\n0 = 5\n"},
      {"diff.col", "[Colors]\nALowColor = 9, 9, 9\n0 = 1, 0, 0\n1 = 2, 0, 0\n[Values]\n0 = -0.25\n1 = 0.75\n[Names]\n1 = high\n"},
      {"design.txt", "0 2 -9.5\n10 2 -9.5\n"},
      {"track.txt", "fix 0 0 0 1\nvelocity 1 2 0\nfix 2 4 0 1\n"},
      {"v.con", "[DRAW]\nPenWidth = 1\nPenColor = 0\n[POINTS]\nPoint(1) = 0, 5, 1\nPoint(2) = 1, -5, 0\nPoint(3) = -1, -5, 0\n"},
  };
}

}  // namespace

class ZelSurvey : public Zel {
 protected:
  ProgramResult Survey(const Folder& folder, const std::vector<std::string>& further = {}) {
    const std::string path = m_folder.File("survey");
    fs::remove_all(path);
    fs::create_directory(path);
    for (const auto& [name, text] : folder) m_folder.Write("survey/" + name, text);
    return SurveyAt(path, further);
  }

  ProgramResult SurveyAt(const std::string& path, const std::vector<std::string>& further = {}) {
    std::vector<std::string> arguments = {"survey", path, "--out", m_folder.File("out"), "--no-pictures"};
    arguments.insert(arguments.end(), further.begin(), further.end());
    const ProgramResult result = Run(arguments);
    m_text = m_folder.Read("out/report.txt");
    m_report.Clear();
    XmlReader(m_report).ReadFile(m_folder.File("out/report.xml").c_str());
    return result;
  }

  // The attribute of the first element of that name, or the n-th.
  std::string At(const std::string& element, const std::string& attribute, unsigned int index = 0) const {
    std::string value = "(none)";
    XmlElement::GetAttribute(m_report.Find(element, index), attribute, value);
    return value;
  }
  double Value(const std::string& element, const std::string& attribute, unsigned int index = 0) const {
    return std::atof(At(element, attribute, index).c_str());
  }

  std::string m_text;
  XmlElement m_report;

 private:
  const CLocale m_locale;  // numbers of the folders and of the report go through the C library; the program has a locale of its own
};
using ZelSurveyLong = ZelSurvey;

// ---- the small survey, by hand ----

TEST_F(ZelSurvey, CountsWhatIsReadAndWhatIsLeftOut) {
  Folder folder = SmallSurvey();
  folder["s.xyz"] += "7 seven -3\n";
  const ProgramResult result = Survey(folder);
  EXPECT_EQ(result.exitCode, 1) << "a broken line is something wrong";
  EXPECT_EQ(At("soundings", "lines"), "8");
  EXPECT_EQ(At("soundings", "read"), "7");
  EXPECT_EQ(At("soundings", "broken"), "1");
  EXPECT_EQ(At("soundings", "outside"), "1");
  EXPECT_EQ(At("soundings", "without-tide"), "2");
  EXPECT_EQ(At("soundings", "kept-unreduced"), "0");
  EXPECT_EQ(At("soundings", "used"), "4");
  EXPECT_TRUE(Holds(m_text, "line 8: ")) << m_text;
  EXPECT_TRUE(Holds(m_text, "2 soundings have no tide at their time: left out"));
}

TEST_F(ZelSurvey, ReducesByTheTideBetweenItsValues) {
  Survey(SmallSurvey());
  EXPECT_EQ(At("extents", "lowest"), "-10.0000");
  EXPECT_EQ(At("extents", "highest"), "-8.5000") << "half way between a tide of 1 and of 2 metres";
  EXPECT_EQ(At("extents", "left"), "1.0000");
  EXPECT_EQ(At("extents", "top"), "3.0000");
  EXPECT_EQ(At("tide", "values"), "2");
  EXPECT_EQ(At("tide", "lowest"), "1.0000");
  EXPECT_EQ(At("tide", "highest"), "2.0000");
}

// Depths of 8.5, 9, 10, 10.
TEST_F(ZelSurvey, StatisticsOfDepths) {
  Survey(SmallSurvey());
  EXPECT_EQ(At("statistics", "count"), "4");
  EXPECT_NEAR(Value("statistics", "mean"), 9.375, 1e-4);
  EXPECT_NEAR(Value("statistics", "deviation"), std::sqrt(0.421875), 1e-4);
  EXPECT_NEAR(Value("statistics", "p25"), 8.875, 1e-4);
  EXPECT_NEAR(Value("statistics", "p50"), 9.5, 1e-4);
  EXPECT_NEAR(Value("statistics", "p95"), 10.0, 1e-4);
  EXPECT_NEAR(Value("statistics", "least"), 8.5, 1e-4);
}

// Four cells of 4 square metres, 0.5, 1.0, -0.5 and -0.5 from the design.
TEST_F(ZelSurvey, VolumesByBand) {
  Survey(SmallSurvey());
  EXPECT_EQ(At("volumes", "cells"), "4");
  EXPECT_NEAR(Value("volumes", "area"), 16.0, 1e-4);
  EXPECT_NEAR(Value("volumes", "above"), 6.0, 1e-4);
  EXPECT_NEAR(Value("volumes", "below"), 4.0, 1e-4);
  EXPECT_NEAR(Value("volumes", "below-over-depth"), 2 * 0.2 * 4.0, 1e-4);
  const XmlElement* volumes = m_report.Find("volumes", 0);
  ASSERT_NE(volumes, nullptr);
  ASSERT_EQ(volumes->CountElements("band"), 3U);
  const char* const expected[3][3] = {{"2", "8.0000", "-4.0000"}, {"1", "4.0000", "2.0000"}, {"1", "4.0000", "4.0000"}};
  for (unsigned int i = 0; i < 3; ++i) {
    std::string cells, area, volume;
    XmlElement::GetAttribute(volumes->Find("band", i), "cells", cells);
    XmlElement::GetAttribute(volumes->Find("band", i), "area", area);
    XmlElement::GetAttribute(volumes->Find("band", i), "volume", volume);
    EXPECT_EQ(cells + " " + area + " " + volume, std::string(expected[i][0]) + " " + expected[i][1] + " " + expected[i][2]) << i;
  }
  EXPECT_TRUE(Holds(OneBlank(m_text), "0.75 and above 1 4.0 4.0 high\n")) << m_text;
}

// Beside the floor the design rises by the slope: at 3 metres from an edge with 1 to 2, by 1.5 metres.
TEST_F(ZelSurvey, TheDesignRisesBesideTheFloor) {
  Folder folder = SmallSurvey();
  folder["survey.ini"] += "[Area]\nWork area = area.txt\n[Design]\nWidth = 2\nSlope = 2\nSlope width = 4\n";
  folder["s.xyz"] = "5 6 -10 1778544000000\n5 7.5 -10 1778544000000\n";
  Survey(folder);
  EXPECT_EQ(At("statistics", "count", 1), "1") << "the second lies beyond the slope";
  EXPECT_NEAR(Value("statistics", "mean", 1), -9.0 - (-9.5 + 1.5), 1e-4);
}

// Rows at 0, 4, 8 and 10; soundings at chainage 1 and 3, 1 metre to either side.
TEST_F(ZelSurvey, TheLongSectionTakesTheSoundingsNearTheLine) {
  Survey(SmallSurvey());
  const XmlElement* section = m_report.Find("section", 0);
  ASSERT_NE(section, nullptr);
  ASSERT_EQ(section->CountElements("row"), 4U);
  const auto at = [section](unsigned int row, const char* name) {
    std::string value = "(none)";
    XmlElement::GetAttribute(section->Find("row", row), name, value);
    return value;
  };
  EXPECT_EQ(at(0, "chainage") + " " + at(1, "chainage") + " " + at(2, "chainage") + " " + at(3, "chainage"),
            "0.0000 4.0000 8.0000 10.0000");
  EXPECT_EQ(at(0, "bottom"), "-9.5000") << "mean of -9 and -10";
  EXPECT_EQ(at(0, "shoalest"), "-9.0000");
  EXPECT_EQ(at(0, "difference"), "0.0000");
  EXPECT_EQ(at(1, "bottom"), "-9.2500") << "mean of -8.5 and -10";
  EXPECT_EQ(at(1, "over-depth"), "-9.8000");
  EXPECT_EQ(at(2, "bottom"), "(none)");
  Folder folder = SmallSurvey();
  folder["survey.ini"] += "[Section]\nCorridor = 0.5\n";
  Survey(folder);
  EXPECT_FALSE(Holds(m_folder.Read("out/report.xml"), "shoalest")) << "all lie beyond the corridor";
}

TEST_F(ZelSurvey, TheTrackIsFiltered) {
  Survey(SmallSurvey());
  EXPECT_EQ(At("track", "fixes"), "2");
  EXPECT_EQ(At("track", "velocities"), "1");
  EXPECT_TRUE(Holds(m_text, "2026-05-12 06:00:02 UTC")) << m_text;
  const XmlElement* track = m_report.Find("track", 0);
  ASSERT_NE(track, nullptr);
  std::string x;
  XmlElement::GetAttribute(track->Find("last", 0), "x", x);
  EXPECT_NEAR(std::atof(x.c_str()), 4.0, 0.1);
}

TEST_F(ZelSurvey, ReadsAWholeSurveyWithoutAWord) {
  Folder folder = SmallSurvey();
  folder["s.xyz"] = "1 1 -10 1778544000000\n3 3 -10 1778544000000\n";
  const ProgramResult result = Survey(folder);
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.errors, "");
  EXPECT_TRUE(Holds(m_text, "Small\n-----\n") && Holds(m_text, "Nobody") && Holds(m_text, "Punt")) << m_text;
  EXPECT_TRUE(Holds(m_text, "Errors\n------\n  none\n"));
}

// ---- tide ----

TEST_F(ZelSurvey, SoundingsWithoutTideMayBeKept) {
  Folder folder = SmallSurvey();
  folder["survey.ini"] += "[Soundings]\nWithout tide = keep\n";
  const ProgramResult result = Survey(folder);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.output, "6 soundings of 7 read, 1 outside the work area, 2 without tide, which are NOT reduced\n"));
  EXPECT_EQ(At("soundings", "without-tide"), "2");
  EXPECT_EQ(At("soundings", "kept-unreduced"), "2");
  EXPECT_EQ(At("soundings", "used"), "6");
  EXPECT_EQ(At("extents", "highest"), "-3.0000");
  EXPECT_TRUE(Holds(m_text, "NOT ALL SOUNDINGS ARE REDUCED"));
}

TEST_F(ZelSurvey, NoTideIsTakenFromWithinAGap) {
  Folder folder = SmallSurvey();
  folder["survey.ini"] += "[Tide]\nLongest step = 9.9\n";
  Survey(folder);
  EXPECT_EQ(At("soundings", "used"), "3") << "only at the very times of the values";
  EXPECT_TRUE(Holds(OneBlank(m_text), "gaps 1\n")) << m_text;
}

TEST_F(ZelSurvey, WithoutATideFileInTheSettingsSoundingsAreTakenAsReduced) {
  Folder folder = SmallSurvey();
  const std::string tide = "[Tide]\nFile = t.tid\n";
  folder["survey.ini"].erase(folder["survey.ini"].find(tide), tide.size());
  EXPECT_EQ(Survey(folder).exitCode, 0);
  EXPECT_EQ(At("soundings", "used"), "6");
  EXPECT_EQ(At("soundings", "without-tide"), "0");
  EXPECT_EQ(At("extents", "lowest"), "-12.0000");
}

TEST_F(ZelSurvey, ATideFileThatMayNotBeWrittenIsReadAllTheSame) {
  Survey(SmallSurvey());
  const std::string out = m_folder.MakeFolder("theirs");
  fs::permissions(m_folder.Path(), fs::perms::owner_all | fs::perms::others_read | fs::perms::others_exec);
  fs::permissions(out, fs::perms::all);
  fs::permissions(m_folder.File("survey/t.tid"), fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  const std::string mine = m_text;
  ExpectInChild([&] {
    ASSERT_TRUE(BecomeOrdinaryUser());
    const ProgramResult result = Run({"survey", m_folder.File("survey"), "--out", out, "--no-pictures"});
    EXPECT_EQ(result.exitCode, 1) << result.errors;  // what the report tells of, as before
    EXPECT_FALSE(Holds(result.errors, "Error opening")) << result.errors;
  });
  EXPECT_EQ(m_folder.Read("theirs/report.txt"), mine);
}

TEST_F(ZelSurvey, TidesThatAreNoneAreNotTaken) {
  const double inf = std::numeric_limits<double>::infinity();
  Folder folder = SmallSurvey();
  folder["t.tid"] = TideRecord(-inf, 1.0) + TideRecord(kBegin, 1.0) + TideRecord(kBegin + 300000.0, 1e300) +
                    TideRecord(kBegin + 600000.0, std::nan("")) + TideRecord(inf, 2.0);
  Survey(folder);
  EXPECT_EQ(At("soundings", "used"), "2") << "those at the very time of the one good value";
  EXPECT_EQ(At("tide", "first"), "2026-05-12 00:00:00");
}

// ---- pings ----

// The sonar heads east at (2, 4): forward is +x, starboard -y.
TEST_F(ZelSurvey, RejectedBeamsAreLeftOut) {
  Folder folder = SmallSurvey();
  folder["s.xyz"] = "1 1 -10 1778544000000\n";
  folder["survey.ini"] += "[Soundings]\nPings = p.txt\n";
  folder["p.txt"] =
      "# two pings\nping 2026-05-12T00:00:00Z 2 4 90\nbeam 3 1 8\nbeam 0 0 8 255\nbeam 0 0 1 256\nbeam 0 0 1 MAN+DEP\nbeam 0 0 1 "
      "0x400\n"
      "beam 0 0 1 0 0\nbeam 0 0 8 IGN\n\nping 1778544000000 2 4 90 65536\nbeam 0 0 1\nbeam 0 0 1\n";
  const ProgramResult result = Survey(folder);
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(At("soundings", "pings"), "2");
  EXPECT_EQ(At("soundings", "beams"), "9");
  EXPECT_EQ(At("soundings", "rejected-beams"), "6") << "flagged IGN counts as good";
  EXPECT_EQ(At("soundings", "used"), "4");
  EXPECT_EQ(At("extents", "right"), "3.0000");
  EXPECT_EQ(At("extents", "bottom"), "1.0000");
  EXPECT_EQ(At("extents", "top"), "4.0000");
  EXPECT_EQ(At("extents", "highest"), "-7.0000");
}

TEST_F(ZelSurvey, LinesOfPingsThatDoNotReadAreTold) {
  Folder folder = SmallSurvey();
  folder["survey.ini"] += "[Soundings]\nPings = p.txt\n";
  folder["p.txt"] =
      "beam 0 0 8\nping 0 0 0 0\nping noon 1 1 0\nping 1778544000000 2 4 90\nbeam 0 0\nbeam 0 0 8 XYZ\nbeam 0 0 8 0 1 1\nbeam nan 0 "
      "8\nbeam 0 0 8\n";
  EXPECT_EQ(Survey(folder).exitCode, 1);
  EXPECT_EQ(At("soundings", "beams"), "1");
  EXPECT_EQ(At("soundings", "broken"), "7");
  EXPECT_TRUE(Holds(m_text, "line 6: not a ping or a beam of one: \"beam 0 0 8 XYZ\"")) << m_text;
}

// ---- areas ----

TEST_F(ZelSurvey, APolygonWithinAnotherIsAHole) {
  Folder folder = SmallSurvey();
  folder["area.txt"] = "0 0\n8 0\n8 8\n0 8\n\n2 0.5\n4 0.5\n4 2\n2 2\n";
  Survey(folder);
  EXPECT_EQ(At("soundings", "outside"), "2") << "the one at (3, 1), too";
}

// Against the rule by the book: crossings of a ray, over all edges.
TEST_F(ZelSurvey, AWorkAreaWithoutAnySoundingIsTold) {
  Folder folder = SmallSurvey();
  folder["area.txt"] = "100 100\n108 100\n108 108\n";
  const ProgramResult result = Survey(folder);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(At("soundings", "outside"), "7");
  EXPECT_TRUE(Holds(result.errors, "Area: no sounding lies in the work area")) << result.errors;
  folder["area.txt"] = "0 0\n2 0\n2 2\n0 2\n";
  EXPECT_EQ(Survey(folder).exitCode, 0) << "one of them is enough: " << m_text;
}

TEST_F(ZelSurvey, TheWorkAreaIsCutExactly) {
  std::string area, soundings;
  std::vector<std::pair<double, double>> corners;
  for (int i = 0; i < 40; ++i) {
    const double angle = i * 2 * 3.14159265358979 / 40, radius = i % 2 == 0 ? 50 : 20 + i;
    corners.emplace_back(std::round(radius * std::cos(angle) * 8) / 8, std::round(radius * std::sin(angle) * 8) / 8);
    area += std::to_string(corners.back().first) + " " + std::to_string(corners.back().second) + "\n";
  }
  int expected = 0;
  for (int i = 0; i < 3000; ++i) {
    const double x = (i * 7919 % 1100) / 10.0 - 55.05, y = (i * 104729 % 1100) / 10.0 - 55.05;
    soundings += std::to_string(x) + " " + std::to_string(y) + " -5\n";
    bool inside = false;
    for (std::size_t a = 0, b = corners.size() - 1; a < corners.size(); b = a++) {
      const auto [ax, ay] = corners[a];
      const auto [bx, by] = corners[b];
      if ((ay > y) != (by > y) && x < (bx - ax) * (y - ay) / (by - ay) + ax) inside = !inside;
    }
    expected += inside ? 1 : 0;
  }
  Survey({{"survey.ini", "[Soundings]\nFile = s.xyz\n[Area]\nWork area = area.txt\n"}, {"s.xyz", soundings}, {"area.txt", area}});
  EXPECT_EQ(At("soundings", "used"), std::to_string(expected));
}

// ---- units, coordinates, language ----

TEST_F(ZelSurvey, DepthsAreShownInTheChosenUnit) {
  Folder folder = SmallSurvey();
  folder["survey.ini"] += "[Units]\nCatalogue = units.uni\nDepth = Foot\nVolume = CubicYard\n";
  folder["units.uni"] = "[Depth Units]\nFoot = 0.3048, ft, International foot\n[Volume Units]\nCubicYard = 0.9144, yd3, Cubic yard\n";
  Survey(folder);
  EXPECT_TRUE(Holds(OneBlank(m_text), "least 27.89 ft\n")) << m_text;               // 8.5 / 0.3048
  EXPECT_TRUE(Holds(OneBlank(m_text), "still to be dredged 7.8 yd3\n")) << m_text;  // 6 / 0.9144^3
  EXPECT_TRUE(Holds(m_text, "International foot (ft)"));
  EXPECT_NEAR(Value("statistics", "least"), 8.5, 1e-4) << "metres for programs";
  folder["survey.ini"] += "[Units]\nDepth = Furlong\n";
  EXPECT_EQ(Survey(folder).exitCode, 1);
  EXPECT_TRUE(Holds(m_text, "the catalogue has no usable unit \"Furlong\" for \"Depth\"")) << m_text;
}

TEST_F(ZelSurvey, TextsMayBeWindows1252OrUtf8) {
  const std::string soundings = "1 1 -10\n";
  Survey({{"survey.ini", "[Survey]\nTitle = M\xFCnde\n[Soundings]\nFile = s.xyz\n"}, {"s.xyz", soundings}});
  EXPECT_TRUE(m_text.starts_with("M\xC3\xBCnde\n-----\n")) << m_text;
  EXPECT_EQ(m_report.HasAttribute("title"), true);
  Survey({{"survey.ini", "[Survey]\nTitle = M\xC3\xBCnde\n[Soundings]\nFile = s.xyz\n"}, {"s.xyz", soundings}});
  EXPECT_TRUE(m_text.starts_with("M\xC3\xBCnde\n-----\n")) << m_text;
}

TEST_F(ZelSurvey, CharactersOutsideWindows1252AreToldAndTheOthersStay) {
  Folder folder = SmallSurvey();
  folder["survey.ini"].replace(folder["survey.ini"].find("Small"), 5, "F\xC3\xB6rde \xC5\x81\xF0\x9F\x9A\xA2 \xE2\x82\xAC");
  EXPECT_TRUE(Holds(Survey(folder).errors, "\"Title\" has characters that are not in Windows-1252"));
  EXPECT_TRUE(m_text.starts_with("F\xC3\xB6rde ?? \xE2\x82\xAC\n----------\n")) << m_text.substr(0, 80);
}

TEST_F(ZelSurvey, TextsMayBeginWithTheMarkOfUtf8) {
  const Folder plain = SmallSurvey();
  Survey(plain);
  const std::string expected = m_text;
  Folder folder = plain;
  for (const char* const name : {"s.xyz", "area.txt", "land.txt", "design.txt", "track.txt"})
    folder[name] = "\xEF\xBB\xBF" + plain.at(name);
  Survey(folder);
  EXPECT_EQ(m_text, expected);
  folder = plain;
  folder["survey.ini"] = "[Soundings]\nPings = p.txt\n";
  folder["p.txt"] = "\xEF\xBB\xBFping 2026-05-12T00:00:00Z 2 4 90\nbeam 3 1 8\n";
  EXPECT_EQ(Survey(folder).exitCode, 0);
  EXPECT_EQ(At("soundings", "used"), "1");
}

TEST_F(ZelSurvey, SettingsThatBeginWithTheMarkOfUtf8AreTold) {
  Folder folder = SmallSurvey();
  folder["survey.ini"].insert(0, "\xEF\xBB\xBF");
  const ProgramResult result = Survey(folder);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "three bytes that mark UTF-8 stand before the first section")) << result.errors;
}

TEST_F(ZelSurvey, DistancesInLargeUnitsKeepTheirMetres) {
  Folder folder = SmallSurvey();
  folder["survey.ini"] +=
      "[Units]\nCatalogue = " + Sample("common/VESOK/ZELCORE/Units.uni") + "\nDistance = NauticalMile\nVolume = ThousandCubicMetres\n";
  Survey(folder);
  EXPECT_TRUE(Holds(OneBlank(m_text), "from row to row 0.00216 NM")) << "4 / 1852";
  EXPECT_TRUE(Holds(OneBlank(m_text), "still to be dredged 0.0060 dam\xC2\xB3")) << m_text;
}

// On the central meridian of a transverse Mercator system the northing is the arc of the meridian times the scale: on WGS 84 the arc
// from the equator to 45 degrees is 4984944.378 metres, and UTM's scale is 0.9996. Zone 32 has its meridian at 9 degrees.
TEST_F(ZelSurvey, CoordinatesInGeographicForm) {
  const std::string settings = "[Soundings]\nFile = s.xyz\n[Coordinates]\nForm = degrees\nDecimals = 6\nSystem = EPSG:32632\n";
  EXPECT_EQ(Survey({{"survey.ini", settings}, {"s.xyz", "500000 0 -1\n500000 4982950.400 -1\n"}}).exitCode, 0);
  EXPECT_TRUE(Holds(m_text,
                    "000.000000\xC2\xB0N  009.000000\xC2\xB0"
                    "E"))
      << m_text;
  EXPECT_TRUE(Holds(m_text,
                    "045.000000\xC2\xB0N  009.000000\xC2\xB0"
                    "E"))
      << m_text;
}

TEST_F(ZelSurvey, WithoutAUsableSystemTheGridIsShown) {
  const auto with = [](const std::string& system) {
    return Folder{{"survey.ini", "[Soundings]\nFile = s.xyz\n[Coordinates]\nForm = minutes\n" + system}, {"s.xyz", "1234 0 -1\n"}};
  };
  for (const auto& [system, why] :
       std::vector<std::pair<std::string, std::string>>{{"", "without a \"System\" there are no geographic coordinates"},
                                                        {"System = EPSG:1\n", "EPSG:1"},                      // there is none
                                                        {"System = EPSG:4326\n", "is no grid in metres"},     // degrees
                                                        {"System = EPSG:2229\n", "is no grid in metres"}}) {  // US survey feet
    EXPECT_EQ(Survey(with(system)).exitCode, 1) << system;
    EXPECT_TRUE(Holds(m_text, why)) << m_text;
    EXPECT_TRUE(Holds(m_text, "1234 E  0 N")) << m_text;
  }
}

TEST_F(ZelSurvey, HeadingsInTheLanguageThatTheSurveyNames) {
  Folder folder = SmallSurvey();
  folder["survey.ini"] += "[Survey]\nCommon = " + Sample("common") + "\n";
  Survey(folder);
  EXPECT_TRUE(Holds(m_text, "Lotungen\n--------\n")) << m_text;
  EXPECT_EQ(At("settings", "language"), "0407");
  EXPECT_EQ(At("soundings", "used"), "4") << "names for programs stay";
}

// ---- what may be wrong ----

TEST_F(ZelSurveyLong, EachPieceMayBeMissing) {
  const Folder whole = SmallSurvey();
  for (const auto& [name, text] : whole) {
    if (name == "survey.ini") continue;
    Folder folder = whole;
    folder.erase(name);
    const ProgramResult result = Survey(folder);
    EXPECT_EQ(result.exitCode, 1) << name;
    EXPECT_TRUE(Holds(result.errors, "\"" + name + "\"")) << name << ": " << result.errors;
    EXPECT_TRUE(Holds(m_text, "File IO Error: ")) << m_text;
    const bool withoutSoundings = name == "s.xyz";
    const bool unreduced = name == "t.tid";
    const bool everywhere = name == "area.txt";
    EXPECT_EQ(At("soundings", "used"), withoutSoundings ? "0" : unreduced ? "6" : everywhere ? "5" : "4") << name;
  }
}

TEST_F(ZelSurveyLong, EachPieceMayBeEmptyOrAFolderOrNonsense) {
  const Folder whole = SmallSurvey();
  std::string noise;
  for (int i = 0; i < 5000; ++i) noise += static_cast<char>(i * 7919 % 251);
  for (const auto& [name, text] : whole) {
    for (const std::string& content :
         {std::string(), noise, std::string("\n\n[\n"), std::string("nan nan nan nan\n1e999 -1e999 inf 0\n1e300 1e300 1e300\n")}) {
      Folder folder = whole;
      folder[name] = content;
      const ProgramResult result = Survey(folder);
      EXPECT_TRUE(result.exitCode == 0 || result.exitCode == 1) << name;
      EXPECT_TRUE(m_report.HasName()) << name;
    }
    Survey(whole);
    fs::remove(m_folder.File("survey/" + name));
    fs::create_directory(m_folder.File("survey/" + name));
    EXPECT_EQ(SurveyAt(m_folder.File("survey")).exitCode, 1) << name;
    fs::remove(m_folder.File("survey/" + name));
    m_folder.MakeFifo("survey/" + name);
    EXPECT_EQ(SurveyAt(m_folder.File("survey")).exitCode, 1) << name << ", and nobody waits for its other end";
  }
}

TEST_F(ZelSurveyLong, HostileSettingsAreToldAndTheDefaultsHold) {
  const Folder whole = SmallSurvey();
  for (const char* const value :
       {"nan", "inf", "-1e308", "1e308", "0", "-5", "12 apples", "\xFF\xFE", "../../../../etc/passwd", "%s%n%d", "   "}) {
    Folder folder = whole;
    std::string& settings = folder["survey.ini"];
    for (const char* const item : {"Design]\nWidth", "Design]\nSlope", "Design]\nSlope width", "Design]\nOver-depth", "Section]\nStep",
                                   "Section]\nCorridor", "Volumes]\nCell", "Tide]\nLongest step", "Track]\nGate", "Track]\nGap",
                                   "Track]\nDynamics", "Track]\nTime origin", "Map]\nRotation", "Coordinates]\nForm",
                                   "Coordinates]\nDecimals", "Units]\nDepth decimals", "Vessel]\nHeading", "Coordinates]\nSystem"}) {
      settings += std::string("[") + item + " = " + value + "\n";
    }
    const ProgramResult result = Survey(folder);
    EXPECT_TRUE(result.exitCode == 0 || result.exitCode == 1) << value;
    EXPECT_EQ(At("soundings", "used"), "4") << value;
  }
  Folder folder = whole;
  folder["survey.ini"] += "[Volumes]\nCell = -1\n[Track]\nDynamics = 2.5\n[Soundings]\nWithout tide = perhaps\n";
  Survey(folder);
  EXPECT_TRUE(Holds(m_text, "\"Cell\" is not from 0.01 to 1e+05: -1")) << m_text;
  EXPECT_TRUE(Holds(m_text, "\"Dynamics\" is not a whole number: 2.5"));
  EXPECT_TRUE(Holds(m_text, "\"Without tide\" is neither \"leave out\" nor \"keep\": \"perhaps\""));
}

TEST_F(ZelSurvey, ItemsThatNoSurveyHasAreTold) {
  Folder folder = SmallSurvey();
  folder["survey.ini"] += "[Design]\nWitdh = 30\n[Desing]\nLine = x\n[Soundings]\nFile(2) = s.xyz\n";
  EXPECT_EQ(Survey(folder).exitCode, 1);
  EXPECT_TRUE(Holds(m_text, "section \"Design\" has no item \"Witdh\"")) << m_text;
  EXPECT_TRUE(Holds(m_text, "no survey has a section \"Desing\""));
  EXPECT_EQ(At("soundings", "read"), "14") << "a second file is no mistake";
}

TEST_F(ZelSurvey, ADesignLineOfOnePointIsNone) {
  Folder folder = SmallSurvey();
  folder["design.txt"] = "0 2 -9.5\n0 2 -9.5\n";
  EXPECT_EQ(Survey(folder).exitCode, 1);
  EXPECT_TRUE(Holds(m_text, "the design line has fewer than two points")) << m_text;
  EXPECT_EQ(m_report.Find("volumes", 0), nullptr);
  EXPECT_EQ(At("soundings", "used"), "4");
}

// A line to and fro between the shores, thousands of times: neither the over-depth line nor the surface takes long.
TEST_F(ZelSurveyLong, ADesignLineOfThousandsOfCorners) {
  Folder folder = SmallSurvey();
  std::string line, soundings;
  for (int i = 0; i < 20000; ++i)
    line += std::to_string(i * 0.01) + " " + std::to_string(i % 2 * 500) + " " + std::to_string(i * 7919 % 40 - 60) + "\n";
  for (int i = 0; i < 2000; ++i) soundings += std::to_string(i * 0.02) + " " + std::to_string(i * 31 % 500) + " -10 1778544000000\n";
  folder["design.txt"] = line;
  folder["s.xyz"] = soundings;
  folder["survey.ini"] += "[Design]\nOver-depth = -50\nOver-depth is vertical = no\nWidth = 1000\n[Area]\nWork area = none.txt\n";
  EXPECT_EQ(Survey(folder).exitCode, 1);
  EXPECT_TRUE(Holds(m_text, "the first 5000 are used")) << m_text;
  EXPECT_EQ(At("soundings", "used"), "2000");
  EXPECT_NE(At("volumes", "cells"), "0");
}

TEST_F(ZelSurvey, AMillionErrorsAreCountedAndAFewKept) {
  Folder folder = SmallSurvey();
  std::string text;
  for (int i = 0; i < 1000000; ++i) text += "1 x\n";
  folder["s.xyz"] = text;
  folder["track.txt"] = text;
  EXPECT_EQ(Survey(folder).exitCode, 1);
  EXPECT_EQ(At("soundings", "broken"), "1000000");
  EXPECT_TRUE(Holds(m_text, "and 999990 more such lines")) << m_text.substr(0, 4000);
  EXPECT_LT(m_text.size(), 20000U);
}

TEST_F(ZelSurvey, WithoutSettingsThereIsOnlyTheError) {
  EXPECT_EQ(SurveyAt(m_folder.File("none")).exitCode, 1);
  EXPECT_TRUE(Holds(m_text, "survey.ini")) << m_text;
  EXPECT_EQ(At("soundings", "read"), "0");
  EXPECT_EQ(Survey({{"survey.ini", "[Survey]\n"}}).exitCode, 1);
  EXPECT_TRUE(Holds(m_text, "Configuration File Error: ") && Holds(m_text, "File")) << m_text;
}

TEST_F(ZelSurveyLong, FarApartSoundingsDoNotAskForMemory) {
  const ProgramResult result =
      Survey({{"survey.ini", "[Soundings]\nFile = s.xyz\n[Volumes]\nCell = 0.01\n[Design]\nLine = d.txt\n[Section]\nStep = 0.01\n"},
              {"s.xyz", "-1e8 -1e8 -1\n1e8 1e8 -1\n"},
              {"d.txt", "-1e8 -1e8 -1\n1e8 1e8 -1\n"}});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(At("soundings", "used"), "2");
  EXPECT_EQ(At("statistics", "count", 1), "2");
}

// ---- what is written ----

TEST_F(ZelSurvey, TheOutputFolderIsMadeOrRefused) {
  Survey(SmallSurvey());
  ProgramResult result = Run({"survey", m_folder.File("survey"), "--no-pictures", "--out", m_folder.File("new/and/deep")});
  EXPECT_TRUE(m_folder.Exists("new/and/deep/report.txt")) << result.errors;
  Write("file", "x");
  result = Run({"survey", m_folder.File("survey"), "--no-pictures", "--out", m_folder.File("file")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "cannot make the folder")) << result.errors;
  EXPECT_EQ(m_folder.Read("file"), "x");
  m_folder.MakeFolder("taken");
  m_folder.MakeFolder("taken/report.xml");
  EXPECT_EQ(Run({"survey", m_folder.File("survey"), "--no-pictures", "--out", m_folder.File("taken")}).exitCode, 1);
  EXPECT_EQ(Run({"survey", m_folder.File("survey")}).exitCode, 2);
}

// The signal waits, blocked, when the program begins: it comes at the first moment that the program lets it.
TEST_F(ZelSurvey, StoppedItLeavesWhatWasThere) {
  Survey(SmallSurvey());
  m_folder.MakeFolder("former");
  m_folder.Write("former/report.txt", "old");
  const std::string program = "use POSIX; sigprocmask(SIG_BLOCK, POSIX::SigSet->new(SIGINT)); kill 'INT', $$; exec @ARGV";
  const ProgramResult result =
      RunProgram("/usr/bin/perl", {"-e", program, ZELBASE_ZEL, "survey", m_folder.File("survey"), "--out", m_folder.File("former")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "stopped")) << result.errors;
  EXPECT_EQ(m_folder.Read("former/report.txt"), "old");
  std::size_t files = 0;
  for (const auto& entry : fs::directory_iterator(m_folder.File("former"))) files += entry.exists() ? 1 : 0;
  EXPECT_EQ(files, 1U);
}

// ---- pictures ----

TEST_F(ZelSurveyLong, ThePicturesAreWritten) {
  const ProgramResult result = Run({"survey", Sample("survey"), "--out", m_folder.File("out")});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(m_folder.Read("out/chart.png").substr(1, 3), "PNG");
  EXPECT_EQ(m_folder.Read("out/profile.png").substr(1, 3), "PNG");
  EXPECT_TRUE(m_folder.Read("out/chart.pdf").starts_with("%PDF"));
  EXPECT_TRUE(Holds(m_folder.Read("out/chart.svg"), "<svg"));
  EXPECT_TRUE(Holds(result.output, "chart.png, chart.svg, chart.pdf, profile.png, report.txt and report.xml are in ")) << result.output;
}

TEST_F(ZelSurveyLong, APictureThatCannotBeWrittenIsAnError) {
  m_folder.MakeFolder("out");
  m_folder.MakeFolder("out/chart.svg");
  const ProgramResult result = Run({"survey", Sample("survey"), "--out", m_folder.File("out")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.output, "\nchart.png, chart.pdf, profile.png, report.txt and report.xml are in ")) << result.output;
  EXPECT_TRUE(Holds(m_folder.Read("out/report.txt"), "Pictures: File IO Error: Error writing to \"chart.svg\".")) << result.errors;
  EXPECT_TRUE(m_folder.Exists("out/chart.png") && m_folder.Exists("out/chart.pdf")) << "the others are";
}

TEST_F(ZelSurveyLong, WithoutADesignThereIsNoLongSection) {
  Folder folder = SmallSurvey();
  folder["survey.ini"] = "[Soundings]\nFile = s.xyz\n";
  Survey(folder);
  const ProgramResult result = Run({"survey", m_folder.File("survey"), "--out", m_folder.File("plain")});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(m_folder.Exists("plain/chart.png"));
  EXPECT_FALSE(m_folder.Exists("plain/profile.png"));
}

TEST_F(ZelSurvey, WithoutSettingsThereIsNoPicture) {
  const ProgramResult result = Run({"survey", m_folder.File("none"), "--out", m_folder.File("bare")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.output, "\nreport.txt and report.xml are in ")) << result.output;
  EXPECT_TRUE(m_folder.Exists("bare/report.txt"));
  EXPECT_FALSE(m_folder.Exists("bare/chart.png"));
}

TEST_F(ZelSurvey, AReportThatCannotBeWrittenDoesNotTakeTheOtherWithIt) {
  Survey(SmallSurvey());
  m_folder.MakeFolder("taken");
  m_folder.MakeFolder("taken/report.txt");
  const ProgramResult result = Run({"survey", m_folder.File("survey"), "--no-pictures", "--out", m_folder.File("taken")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "cannot write")) << result.errors;
  EXPECT_EQ(m_folder.Read("taken/report.xml"), m_folder.Read("out/report.xml"));
}

// ---- the samples ----

TEST_F(ZelSurvey, TheSampleIsWhole) {
  const ProgramResult result = SurveyAt(Sample("survey"));
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(At("soundings", "beams"), "1152");
  EXPECT_NE(At("soundings", "rejected-beams"), "0");
  EXPECT_NE(At("soundings", "outside"), "0");
  EXPECT_EQ(At("track", "lines-of-position"), "10");
  EXPECT_NEAR(Value("track", "heading-offset"), 1.8, 0.2) << "what the sample's maker has put in";
}

TEST_F(ZelSurvey, TheFaultySampleTellsEachOfItsFaults) {
  const ProgramResult result = SurveyAt(Sample("survey-faulty"));
  EXPECT_EQ(result.exitCode, 1);
  for (const char* const told :
       {"has no item \"Wdith\"", "no usable unit \"Furlong\"", "no coordinate system \"EPSG:1\"", "not a point: \"the pier\"",
        "1 polygon has fewer than three points", "Error opening \"soundings-2.xyz\"", "z is not a number: deep", "z is missing",
        "more than four columns", "beam 0 0 13.0 XYZ", "have no tide at their time: left out", "not a colour",
        "\"Width\" is not a number: \"wide\"", "not an observation: \"course 1020 55\"", "there is no position yet", "time runs backwards",
        "fewer than two lines of position", "Error opening \"vessel.con\""}) {
    EXPECT_TRUE(Holds(m_text, told)) << told;
  }
  EXPECT_GT(Value("soundings", "used"), 900);
  EXPECT_GT(Value("track", "fixes"), 30);
}

TEST_F(ZelSurvey, TheSampleForAnotherReader) {
  const ProgramResult result = SurveyAt(Sample("survey"), {"--settings", "turned.ini"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(m_text, "Ausdehnung\n----------\n")) << m_text;
  EXPECT_TRUE(Holds(m_text,
                    "051\xC2\xB0"
                    "55'"))
      << "in degrees, minutes and seconds";
  EXPECT_EQ(At("settings", "depth-unit"), "ft");
  EXPECT_EQ(At("settings", "map-rotation"), "325.0000");
}
