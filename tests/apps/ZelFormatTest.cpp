// zel format.

#include "tests/apps/ZelFixture.h"

TEST_F(Zel, FormatShowsACoordinateInAllStylesAndReadsItBack) {
  const ProgramResult result = Run({"format", "coordinate", "52.5125"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(OneBlank(result.output),
            "52.5125\n degrees 052.512500\xC2\xB0N reads back as 52.512500000\n minutes 052\xC2\xB0"
            "30.7500'N reads back as 52.512500000\n"
            " seconds 052\xC2\xB0"
            "30'45.00\"N reads back as 52.512500000\n WinFrog N52 30.7500\n");
}

TEST_F(Zel, FormatReadsWhatAnOperatorTypes) {
  const ProgramResult result = Run({"format", "coordinate",
                                    "4\xC2\xB0"
                                    "15'00\"W",
                                    "--decimals", "0", "--plain", "--front"});
  EXPECT_TRUE(Holds(OneBlank(result.output), "minutes W 004 15 ")) << result.output;
  EXPECT_TRUE(Holds(Run({"format", "coordinate", "-4.25", "--axis", "longitude", "--decimals", "2"}).output, "004.25\xC2\xB0W"));
  EXPECT_TRUE(Holds(Run({"format", "coordinate", "120"}).output,
                    "120.000000\xC2\xB0"
                    "E"));
}

TEST_F(Zel, FormatRefusesWhatIsNoCoordinate) {
  for (const char* const value : {"north", "S52.5", "", "1e300", "\xE6\xBC\xA2"}) {
    const ProgramResult result = Run({"format", "coordinate", value});
    EXPECT_EQ(result.exitCode, 1) << value;
    EXPECT_FALSE(result.errors.empty());
  }
  EXPECT_EQ(Run({"format", "coordinate", "1", "--decimals", "16"}).exitCode, 2);
}

TEST_F(Zel, FormatShowsATimeSpan) {
  EXPECT_EQ(Run({"format", "span", "90061000"}).output, "1 days 01:01:01\n");
  EXPECT_EQ(Run({"format", "span", "3660000", "--no-seconds"}).output, "01:01\n");
  EXPECT_EQ(Run({"format", "span", "soon"}).exitCode, 1);
}

TEST_F(Zel, FormatShowsANumberByWidthDecimalsOrFormat) {
  EXPECT_EQ(Run({"format", "number", "12.3456", "--width", "8", "--decimals", "2"}).output, "   12.35\n");
  EXPECT_EQ(Run({"format", "number", "12.3456", "--decimals", "1"}).output, "12.3\n");
  EXPECT_EQ(Run({"format", "number", "12.5"}).output, "12.500000\n");
  EXPECT_EQ(Run({"format", "number", "1000", "--format", "%.1e m"}).output, "1.0e+03 m\n");
  EXPECT_EQ(Run({"format", "number", "1", "--format", "%s"}).exitCode, 1);
}
