// zel geodesy: the plug-in told, systems found, positions converted, geoid heights looked up.

#include <filesystem>
#include <fstream>

#include "tests/adapters/GtxGrid.h"
#include "tests/apps/ZelFixture.h"

class ZelGeodesy : public Zel {
 protected:
  // With text on standard input.
  ProgramResult RunWithInput(const std::string& input, const std::string& arguments) {
    return RunProgram("/bin/sh", {"-c", "\"" ZELBASE_ZEL "\" " + arguments + " < \"" + Write("input.txt", input) + "\""});
  }

  // What stands behind "->" in the first line that has it.
  static std::string Result(const ProgramResult& result) {
    const std::size_t arrow = result.output.find("->");
    if (arrow == std::string::npos) return "";
    const std::string text = OneBlank(result.output.substr(arrow + 2, result.output.find('\n', arrow) - arrow - 2));
    return text.substr(text.find_first_not_of(' '));
  }
};

// ---- info and the plug-in ----

TEST_F(ZelGeodesy, InfoTellsWhereThePlugInIsAndWhatItRegistered) {
  const ProgramResult result = Run({"geodesy", "info"});
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  const std::string text = OneBlank(result.output);
  const std::string folder = std::filesystem::path(ZELBASE_ZEL).parent_path().string();
  EXPECT_TRUE(Holds(text, "Plug-in " + folder + "/libZELGeoCoordSysR.so\n")) << text;
  EXPECT_TRUE(Holds(text, "coordinate systems: PROJ\n"));
  EXPECT_TRUE(Holds(text, "databases: PROJ\n"));
  EXPECT_TRUE(Holds(text, "static data: PROJ\n"));
  EXPECT_TRUE(Holds(text, "geoid models by name: Grid Model(Grid coordinates), Grid Model(Satellite coordinates)\n"));
  EXPECT_TRUE(Holds(text, "geoid models by type: 3 \"Grid Model(Satellite coordinates)\", 15 \"Grid Model(Grid coordinates)\"\n"));
  EXPECT_TRUE(Holds(text, "Engine PROJ "));
  EXPECT_TRUE(Holds(text, ", ready, ")) << text;
  EXPECT_TRUE(Holds(text, " geographic, "));
  EXPECT_TRUE(Holds(text, " prime meridians\n"));
}

TEST_F(ZelGeodesy, APlugInMayLieInAnotherFolder) {
  const std::string module = std::filesystem::path(ZELBASE_ZEL).parent_path().string() + "/libZELGeoCoordSysR.so";
  std::filesystem::copy_file(module, m_folder.File("ZELGeoCoordSysR.dll"));
  const ProgramResult result = Run({"geodesy", "info", "--plugin", m_folder.Path()});
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(OneBlank(result.output), "Plug-in " + m_folder.Path() + "/ZELGeoCoordSysR.dll\n")) << "by the suite's own name";
  EXPECT_TRUE(Holds(result.output, "coordinate systems: PROJ\n"));
}

// The loader goes on to the second name when the first is no module.
TEST_F(ZelGeodesy, ThePlugInThatIsToldIsTheOneThatWasLoaded) {
  Write("ZELGeoCoordSysR.dll", "no module");
  const std::string module = std::filesystem::path(ZELBASE_ZEL).parent_path().string() + "/libZELGeoCoordSysR.so";
  std::filesystem::copy_file(module, m_folder.File("libZELGeoCoordSysR.so"));
  const ProgramResult result = Run({"geodesy", "info", "--plugin", m_folder.Path()});
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(OneBlank(result.output), "Plug-in " + m_folder.Path() + "/libZELGeoCoordSysR.so\n")) << result.output;
}

TEST_F(ZelGeodesy, AMissingPlugInIsToldWithTheFolderLookedIn) {
  for (const std::string& folder : {m_folder.Path(), m_folder.File("none")}) {
    for (const std::vector<std::string>& command : {std::vector<std::string>{"info"},
                                                    {"systems", "UTM"},
                                                    {"convert", "--from", "EPSG:4326", "--to", "EPSG:32631", "1", "2"},
                                                    {"geoid", "--grid", "a.gtx", "1", "2"}}) {
      std::vector<std::string> arguments = {"geodesy", "--plugin", folder};
      arguments.insert(arguments.end(), command.begin(), command.end());
      const ProgramResult result = Run(arguments);
      EXPECT_EQ(result.exitCode, 1);
      EXPECT_EQ(result.output, "");
      EXPECT_EQ(result.errors, "zel: no geodesy plug-in (ZELGeoCoordSysR.dll or libZELGeoCoordSysR.so) in \"" + folder +
                                   "\"; --plugin names its folder\n");
    }
  }
}

TEST_F(ZelGeodesy, AFileThatIsNoPlugInIsTold) {
  const std::string file = Write("libZELGeoCoordSysR.so", "no module");
  const ProgramResult result = Run({"geodesy", "--plugin", m_folder.Path(), "info"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "\"" + file + "\" is no geodesy plug-in")) << result.errors;
}

// ---- systems ----

TEST_F(ZelGeodesy, SystemsAreFoundByWords) {
  const ProgramResult result = Run({"geodesy", "systems", "wgs", "84", "utm", "31n"});
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(OneBlank(result.output), "EPSG:32631 projected WGS 84 / UTM zone 31N ")) << result.output;
  EXPECT_FALSE(Holds(result.output, "EPSG:32632"));
  EXPECT_TRUE(Holds(Run({"geodesy", "systems", "EPSG:32631"}).output, "...\n")) << "a long area is cut";
  EXPECT_TRUE(Holds(Run({"geodesy", "systems", "EPSG:32631", "--long"}).output, "United Kingdom")) << "unless it is wanted whole";
  const ProgramResult one = Run({"geodesy", "systems", "EPSG:28992"});
  EXPECT_TRUE(Holds(one.output, "\n1 coordinate system\n")) << one.output;
  EXPECT_TRUE(Holds(OneBlank(one.output), "Amersfoort / RD New Netherlands - onshore"));
}

TEST_F(ZelGeodesy, SystemsAreFoundByAPlace) {
  const ProgramResult result = Run({"geodesy", "systems", "--at", "4 30 E", "52 N", "--", "UTM", "WGS"});
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "EPSG:32631 "));
  EXPECT_FALSE(Holds(result.output, "EPSG:32632 "));
  EXPECT_EQ(Run({"geodesy", "systems", "--at", "4 30 E", "52 N", "UTM", "WGS"}).output, result.output) << "two belong to the place";
  EXPECT_TRUE(Holds(Run({"geodesy", "systems", "--at", "-25.7", "28.3", "Hartebeesthoek94"}).output, "EPSG:4148 ")) << "south";
}

TEST_F(ZelGeodesy, DeprecatedSystemsAreShownOnlyWhenAskedFor) {
  EXPECT_EQ(Run({"geodesy", "systems", "EPSG:3785"}).exitCode, 1);
  const ProgramResult result = Run({"geodesy", "systems", "--deprecated", "EPSG:3785"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_TRUE(Holds(result.output, "(deprecated)\n")) << result.output;
}

TEST_F(ZelGeodesy, WithoutAnAnswerTheExitCodeSaysSo) {
  const ProgramResult result = Run({"geodesy", "systems", "there", "is", "none", "of", "this"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "zel: no coordinate system answers to that\n");
  EXPECT_EQ(Run({"geodesy", "systems", "\xE2\x86\x92"}).exitCode, 1) << "a character that no name has";
  EXPECT_EQ(Run({"geodesy", "systems", "--at", "here", "there"}).exitCode, 1);
}

// ---- convert ----

// The published example of the transverse Mercator method; the datum stays, so that there is no shift.
TEST_F(ZelGeodesy, ConvertTakesLatitudeAndLongitudeInAnyWriting) {
  const std::vector<std::vector<std::string>> writings = {{"50.5", "0.5"},
                                                          {"50 30 N", "0 30 E"},
                                                          {"0 30 E", "50 30 N"},
                                                          {"50\xC2\xB0"
                                                           "30'N",
                                                           "0.5"},
                                                          {"0.5 E", "50.5"}};
  for (const auto& writing : writings) {
    const ProgramResult result =
        Run({"geodesy", "convert", "--from", "EPSG:4277", "--to", "EPSG:27700", "--decimals", "1", writing[0], writing[1]});
    ASSERT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(Result(result), "577275.0 69740.5") << writing[0];
    EXPECT_TRUE(Holds(result.output,
                      "from  EPSG:4277 OSGB36: latitude, longitude in degrees\n"
                      "to    EPSG:27700 OSGB36 / British National Grid: easting, northing in metre\n"))
        << result.output;
    EXPECT_TRUE(Holds(result.output, "1 position: accuracy 0 m, ")) << result.output;
  }
}

TEST_F(ZelGeodesy, ConvertGivesDegreesInTheStyleAskedFor) {
  const std::vector<std::string> arguments = {"geodesy",   "convert",  "--from",     "EPSG:27700", "--to",   "EPSG:4277",
                                              "577274.98", "69740.49", "--decimals", "2",          "--style"};
  const auto styled = [&](const std::string& style) {
    std::vector<std::string> all = arguments;
    all.push_back(style);
    return Result(Run(all));
  };
  EXPECT_EQ(styled("degrees"), "50.50 0.50");
  EXPECT_EQ(styled("minutes"),
            "050\xC2\xB0"
            "30.00'N 000\xC2\xB0"
            "30.00'E");
  EXPECT_EQ(styled("seconds"),
            "050\xC2\xB0"
            "30'00.00\"N 000\xC2\xB0"
            "30'00.00\"E");
}

// 1 US survey foot is 1200/3937 m; both systems share datum and projection.
TEST_F(ZelGeodesy, ConvertGoesFromUnitToUnit) {
  const ProgramResult result =
      Run({"geodesy", "convert", "--from", "EPSG:26945", "--to", "EPSG:2229", "2000000", "500000", "--decimals", "2"});
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(Result(result), "6561666.67 1640416.67");
  EXPECT_TRUE(Holds(result.output, "easting, northing in US survey foot\n"));
}

TEST_F(ZelGeodesy, ANegativeNumberIsAPosition) {
  const ProgramResult result =
      Run({"geodesy", "convert", "--from", "EPSG:4148", "--to", "EPSG:2053", "--decimals", "1", "-25.73202833", "28.28263306"});
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(Result(result), "-71984.5 -2847342.7") << "east and north, though the system's axes go west and south";
}

TEST_F(ZelGeodesy, ManyPositionsAreConvertedInTheirOrder) {
  const ProgramResult result =
      Run({"geodesy", "convert", "--from", "EPSG:4326", "--to", "EPSG:32631", "--decimals", "0", "0", "3", "0.0", "3.0"});
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(OneBlank(result.output), "-> 500000 0\n"));
  EXPECT_TRUE(Holds(result.output, "2 positions: accuracy 0 m, ")) << result.output;
}

TEST_F(ZelGeodesy, ConvertCarriesLinesOverWithWhatStandsBehind) {
  const std::string lines = "# soundings\r\n0 3 -12.5 first\n\n0.0;3.0;-13\nno position\n";
  const ProgramResult result = RunWithInput(lines, "geodesy convert --from EPSG:4326 --to EPSG:32631 --decimals 1 -i -");
  EXPECT_EQ(result.exitCode, 1);
  const std::string text = OneBlank(result.output);
  EXPECT_TRUE(text.starts_with("# EPSG:32631 WGS 84 / UTM zone 31N: easting, northing in metre; from EPSG:4326 WGS 84\n")) << text;
  EXPECT_TRUE(Holds(text, "\n# soundings\n 500000.0 0.0 -12.5 first\n\n 500000.0 0.0;-13\n# 2 positions: accuracy 0 m, ")) << text;
  EXPECT_EQ(result.errors, "zel: standard input:5: no position: \"no position\"\n");
  const ProgramResult file = Run({"geodesy", "convert", "--from", "EPSG:4326", "--to", "EPSG:32631", "-i", Write("a.txt", "0 3\n")});
  EXPECT_EQ(file.exitCode, 0) << file.errors;
  EXPECT_TRUE(Holds(OneBlank(file.output), "\n 500000.000 0.000\n")) << file.output;
}

TEST_F(ZelGeodesy, APositionOutsideTheAreaOfUseIsConvertedAndTold) {
  const ProgramResult result = Run({"geodesy", "convert", "--from", "EPSG:4326", "--to", "EPSG:32631", "52", "9"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_NE(Result(result), "");
  EXPECT_TRUE(Holds(result.errors, "zel: 1 position lies outside the area of use of EPSG:32631 (")) << result.errors;
}

TEST_F(ZelGeodesy, WhatCannotBeConvertedIsTold) {
  const auto convert = [this](const std::string& from, const std::string& to, const std::vector<std::string>& positions) {
    std::vector<std::string> arguments = {"geodesy", "convert", "--from", from, "--to", to};
    arguments.insert(arguments.end(), positions.begin(), positions.end());
    return Run(arguments);
  };
  ProgramResult result = convert("EPSG:1", "EPSG:4326", {"1", "2"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "zel: there is no coordinate system \"EPSG:1\"\n");
  result = convert("EPSG:4326", "nonsense", {"1", "2"});
  EXPECT_EQ(result.errors, "zel: \"nonsense\" is not a code like EPSG:32631\n");
  result = convert("+proj=longlat +a=6378000 +b=6356000", "EPSG:4326", {"1", "2"});
  EXPECT_TRUE(Holds(result.errors, "no way is known from ")) << result.errors;
  result = convert("EPSG:4326", "EPSG:32631", {"91", "3"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(Result(result), "no such position");
  EXPECT_EQ(convert("EPSG:4326", "EPSG:32631", {"1"}).exitCode, 2) << "no pair";
  EXPECT_EQ(convert("EPSG:4326", "EPSG:32631", {}).exitCode, 2);
  EXPECT_EQ(convert("EPSG:4326", "EPSG:32631", {"1", "2", "-i", "-"}).exitCode, 2);
  EXPECT_EQ(convert("EPSG:4326", "EPSG:32631", {"-i", m_folder.Path()}).exitCode, 1);
  EXPECT_EQ(convert("EPSG:4326", "EPSG:32631", {"-i", m_folder.File("none")}).exitCode, 1);
  EXPECT_TRUE(Holds(convert("EPSG:4326", "EPSG:32631", {"52 N", "53 N"}).errors, "are both latitudes"));
  EXPECT_TRUE(Holds(convert("EPSG:4326", "EPSG:32631", {"4 W", "3 E"}).errors, "are both longitudes"));
  EXPECT_TRUE(Holds(convert("EPSG:32631", "EPSG:4326", {"52 N", "3 E"}).errors, "not an easting and a northing"));
}

// ---- geoid ----

TEST_F(ZelGeodesy, GeoidHeightsComeFromTheGrid) {
  const std::string grid = Write("a.gtx", GtxGrid().Bytes());
  const ProgramResult result = Run({"geodesy", "geoid", "--grid", grid, "50.5", "3", "50 15 N", "2 30 E"});
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  const std::string text = OneBlank(result.output);
  EXPECT_TRUE(Holds(text, " 50.500000000 3.000000000 45.0000 m\n")) << text;
  EXPECT_TRUE(Holds(text, " 50.250000000 2.500000000 42.6875 m\n")) << text;
}

TEST_F(ZelGeodesy, GeoidHeightsAreGivenInASystemsUnitToo) {
  GtxGrid grid;
  grid.south = 33.0;
  grid.west = -119.0;
  const std::string file = Write("a.gtx", grid.Bytes());
  // The origin of the projection, in both senses: 33.5 N, 118 W is the grid's node of 45 m.
  const ProgramResult result = Run({"geodesy", "geoid", "--grid", file, "--system", "EPSG:2229", "6561666.667", "1640416.667"});
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(OneBlank(result.output), " 45.0000 m 147.6375 US survey foot\n")) << result.output;
}

TEST_F(ZelGeodesy, WhatTheGridDoesNotHoldIsTold) {
  const std::string grid = Write("a.gtx", GtxGrid().Bytes());
  ProgramResult result = Run({"geodesy", "geoid", "--grid", grid, "10", "3", "50.5", "3"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "zel: \"10\", \"3\" is outside the grid\n");
  EXPECT_TRUE(Holds(result.output, "45.0000 m")) << "the others are answered";
  result = Run({"geodesy", "geoid", "--grid", Write("b.gtx", "no grid"), "50.5", "3"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "is no grid of geoid heights")) << result.errors;
  EXPECT_EQ(Run({"geodesy", "geoid", "--grid", grid, "50.5"}).exitCode, 2);
  EXPECT_TRUE(Holds(Run({"geodesy", "geoid", "--grid", grid, "--system", "EPSG:4326", "50.5", "3"}).errors, "no eastings and northings"));
}
