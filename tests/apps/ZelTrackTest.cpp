// zel track: observations through the navigation filter, as a table and as a picture.

#include <cmath>
#include <cstdio>

#include "tests/apps/ZelFixture.h"
#include "tests/support/Printed.h"

class ZelTrack : public Zel {
 protected:
  std::string m_picture = m_folder.File("track.svg");

  ProgramResult Track(const std::string& text, const std::vector<std::string>& further = {}) {
    std::vector<std::string> arguments = {"track", Write("track.txt", text), "-o", m_picture};
    arguments.insert(arguments.end(), further.begin(), further.end());
    return Run(arguments);
  }
};

TEST_F(ZelTrack, TheFirstFixDecidesAndAVelocityMovesItOn) {
  const ProgramResult result = Track("fix 10 100 200 3 4 0.5\nvelocity 12 1.5 -2\n");
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  const std::string output = OneBlank(result.output);
  EXPECT_TRUE(Holds(output, "\n 10.00 fix 100.000 200.000 ")) << output;
  EXPECT_TRUE(Holds(output, "\n 12.00 velocity 103.000 196.000 2.500 143.1 ")) << output;
  EXPECT_TRUE(Holds(output, "1 fix used, 0 refused by the gate, 1 velocity, 0 gaps"));
  const std::string svg = m_folder.Read("track.svg");
  EXPECT_TRUE(svg.starts_with("<svg ") && Holds(svg, "track.txt through the navigation filter"));
}

TEST_F(ZelTrack, AGateLeavesOutWhatIsFarFromItsPrediction) {
  const std::string text = "fix 0 0 0 1\nfix 1 1 0 1\nfix 2 500 0 1\nfix 3 3 0 1\n";
  ProgramResult result = Track(text, {"--gate", "20"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "refused")) << result.output;
  EXPECT_TRUE(Holds(result.output, "3 fixes used, 1 refused by the gate"));
  EXPECT_TRUE(Holds(m_folder.Read("track.svg"), "fixes refused by the gate"));
  EXPECT_TRUE(Holds(Track(text).output, "4 fixes used, 0 refused by the gate")) << "no gate unless asked for";
}

TEST_F(ZelTrack, GapsPartTheTrack) {
  const ProgramResult result = Track("fix 0 0 0 1\nfix 5 1 0 1\nfix 16 2 0 1\n");
  EXPECT_TRUE(Holds(result.output, "gap before")) << result.output;
  EXPECT_TRUE(Holds(result.output, "1 gap\n"));
  EXPECT_TRUE(Holds(Track("fix 0 0 0 1\nfix 5 1 0 1\nfix 16 2 0 1\n", {"--gap", "11"}).output, "0 gaps\n"));
}

TEST_F(ZelTrack, LinesOfPositionMakeAFix) {
  // From (300, 400): 500 m to the origin, 640.312 to (700, -100); from (300, 1000) it lies due south.
  const ProgramResult result = Track("near 250 350\nrange 0 0 0 499 1 1\nrange 0 700 -100 640.312 1\nbearing 0 300 1000 180 0.1\n");
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "x 300.000, y 400.000, from 3 lines")) << result.output;
  EXPECT_TRUE(Holds(OneBlank(result.output), "range 0.000 0.000 499.000 36.870 ")) << result.output;
  EXPECT_TRUE(Holds(m_folder.Read("track.svg"), "lines of position, from their stations"));
}

TEST_F(ZelTrack, SetsThatGiveNoFixAreTold) {
  const ProgramResult result = Track(
      "near 250 350\nrange 0 0 0 500 1\n\nrange 5 0 0 500 1\nrange 5 700 -100 20000 1\n\n"
      "velocity 6 1 1\nfix 7 300 400 1\nfix 6 300 400 1\n");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "line 2: lines of position not used: fewer than two lines of position")) << result.errors;
  EXPECT_TRUE(Holds(result.errors, "line 4: lines of position not used: a line misses the position by more than 10 km"));
  EXPECT_TRUE(Holds(result.errors, "line 7: velocity not used: there is no position yet"));
  EXPECT_TRUE(Holds(result.errors, "line 9: fix not used: time runs backwards"));
  EXPECT_TRUE(Holds(result.output, "1 fix used"));
}

// A sensor that reads 5 % low and 4 degrees too far to port, on a straight course: after each window of a minute a tenth of
// what is left goes into the calibration, and with it the error of the corrected velocities shrinks.
TEST_F(ZelTrack, TheCalibrationFindsTheSensorsErrors) {
  const CLocale locale;  // for the text and its witness; the program has one of its own
  std::string text;
  const double course = 0.7, speed = 3.0, measured = course - 4.0 * std::acos(-1.0) / 180.0;
  char line[100];
  for (int second = 0; second <= 3600; ++second) {
    std::snprintf(line, sizeof line, "fix %d %.6f %.6f 0.01\n", second, second * speed * std::sin(course),
                  second * speed * std::cos(course));
    text += line;
    std::snprintf(line, sizeof line, "velocity %d.5 %.6f %.6f\n", second, 0.95 * speed * std::sin(measured),
                  0.95 * speed * std::cos(measured));
    text += line;
  }
  const std::string output = Track(text, {"--dynamics", "5"}).output;
  double headingOffset = 0.0, scaleError = 0.0;
  const std::size_t at = output.find("heading offset");
  ASSERT_NE(at, std::string::npos);
  ASSERT_EQ(std::sscanf(output.c_str() + at, "heading offset %lf degrees, scale error %lf", &headingOffset, &scaleError), 2);
  EXPECT_NEAR(headingOffset, 4.0, 0.1);
  EXPECT_NEAR(scaleError, 1000.0 / 0.95 - 1000.0, 3.0);
  const std::string raw = Track(text, {"--dynamics", "5", "--uncorrected"}).output;
  EXPECT_TRUE(Holds(raw, "heading offset 10.000")) << "the errors of uncorrected velocities add up to the limit";
}

TEST_F(ZelTrack, TheSamplesRun) {
  ProgramResult result = Run({"track", Sample("track/harbour.txt"), "--gate", "15", "--fixes", "-o", m_picture});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "4 refused by the gate")) << result.output;
  EXPECT_FALSE(Holds(result.output, "  velocity "));
  result = Run({"track", Sample("track/lines-of-position.txt"), "-o", m_picture});
  EXPECT_EQ(result.exitCode, 1) << "two of its sets give no fix";
}

TEST_F(ZelTrack, BadLinesAreToldByNumber) {
  for (const char* const line : {"fix 1 2 3", "fix 1 2 3 0", "fix 1 2 3 1 1 1", "velocity 1 2", "velocity 1 2 3 4", "range 1 2 3 4",
                                 "bearing 1 2 3 4 -1", "near 1", "course 1 2 3", "fix 1 nan 3 1"}) {
    const ProgramResult result = Track(std::string("# head\nfix 0 0 0 1\n") + line + "\n");
    EXPECT_EQ(result.exitCode, 1) << line;
    EXPECT_TRUE(Holds(result.errors, "track.txt:3: not an observation: \"" + std::string(line) + "\"")) << result.errors;
  }
  EXPECT_TRUE(Holds(Track("# nothing\n").errors, "has no observations"));
  EXPECT_TRUE(Holds(Track("velocity 1 2 3\n").errors, "gives no position"));
  std::string nine;
  for (int i = 0; i < 9; ++i) nine += "range 1 " + std::to_string(i) + " 0 5 1\n";
  EXPECT_TRUE(Holds(Track(nine).errors, "track.txt:9: not an observation")) << "eight make a set";
  EXPECT_EQ(Run({"track", Sample("track/harbour.txt"), "--dynamics", "6"}).exitCode, 2);
}
