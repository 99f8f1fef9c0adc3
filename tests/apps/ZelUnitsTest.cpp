// zel units.

#include "tests/apps/ZelFixture.h"

class ZelUnits : public Zel {
 protected:
  std::string m_catalogue = Write("Units.uni",
                                  "[Depth Units]\nMetre = 1.0, m, Metre\nFoot = 0.3048, ft, International foot\nBare = 2.0\n"
                                  "[Volume Units]\nCubicMetre = 1.0, m\xB3\nCubicFoot = 0.3048, ft\xB3\n"
                                  "[Temperature Units]\nCelsius = 1.0, \xB0"
                                  "C\nKelvin = 1.0, K, Kelvin, 273.15\n");
};

TEST_F(ZelUnits, ConvertsByKeyMnemonicOrName) {
  EXPECT_EQ(Run({"units", "convert", "3.048", "Metre", "ft", "--catalogue", m_catalogue}).output, "3.048 m = 10 ft  (Depth Units)\n");
  EXPECT_EQ(Run({"units", "convert", "10", "International foot", "m", "--catalogue", m_catalogue}).output,
            "10 ft = 3.048 m  (Depth Units)\n");
  EXPECT_EQ(Run({"units", "convert", "1", "m\xC2\xB3", "ft\xC2\xB3", "--catalogue", m_catalogue}).output,
            "1 m\xC2\xB3 = 35.31466672 ft\xC2\xB3  (Volume Units)\n");
  EXPECT_EQ(Run({"units", "convert", "-10", "Celsius", "Kelvin", "--catalogue", m_catalogue}).output,
            "-10 \xC2\xB0"
            "C = 263.15 K  (Temperature Units)\n");
}

TEST_F(ZelUnits, TellsWhatItCannotConvert) {
  EXPECT_TRUE(Holds(Run({"units", "convert", "1", "Metre", "Kelvin", "--catalogue", m_catalogue}).errors, "no group"));
  EXPECT_EQ(Run({"units", "convert", "one", "Metre", "ft", "--catalogue", m_catalogue}).exitCode, 1);
  EXPECT_EQ(Run({"units", "convert", "1", "Metre", "ft", "--kind", "Speed", "--catalogue", m_catalogue}).exitCode, 1);
  EXPECT_TRUE(Holds(Run({"units", "convert", "1", "m", "ft", "--kind", "Sped", "--catalogue", m_catalogue}).errors, "no kind"));
  EXPECT_TRUE(Holds(Run({"units", "list", "--catalogue", m_folder.File("none")}).errors, "cannot open"));
}

TEST_F(ZelUnits, ListsGroupsAndMarksWhatIsIncomplete) {
  const ProgramResult result = Run({"units", "list", "--catalogue", m_catalogue});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(OneBlank(result.output), "Bare Bare factor 2 (incomplete")) << result.output;
  EXPECT_TRUE(Holds(OneBlank(result.output), "Foot ft International foot factor 0.3048\n"));
  const ProgramResult one = Run({"units", "list", "temperature", "--catalogue", m_catalogue});
  EXPECT_EQ(one.exitCode, 0);
  EXPECT_EQ(OneBlank(one.output),
            "Temperature Units\n Celsius \xC2\xB0"
            "C Celsius factor 1\n Kelvin K Kelvin factor 1, offset 273.15\n");
}

TEST_F(ZelUnits, KindsAreTwentyFour) {
  const std::string output = OneBlank(Run({"units", "kinds"}).output);
  EXPECT_TRUE(Holds(output, " 4 Depth Units m 4\n")) << output;
  EXPECT_TRUE(Holds(output, "18 Delivery Units m\xC2\xB3/s 12\n"));
  EXPECT_TRUE(Holds(output, "20 Area Units m\xC2\xB2 -\n"));
  EXPECT_TRUE(Holds(output, "23 Force Units kgf 50\n"));
}

TEST_F(ZelUnits, TheSuitesCatalogueIsFoundInTheCommonFolderAndNamedInTheUsersLanguage) {
  const ProgramResult result = Run({"--common", Sample("common"), "units", "list", "Depth"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "Faden")) << result.output;
  const ProgramResult fathoms = Run({"--common", Sample("common"), "units", "convert", "2", "Fathom", "m"});
  EXPECT_TRUE(Holds(fathoms.output, "= 3.6576 m")) << fathoms.output << fathoms.errors;
  EXPECT_TRUE(Holds(Run({"--common", Sample("common"), "units", "convert", "1", "Foot", "Metre"}).output, "= 0.3048 m"))
      << "System Units, which have both, convert nothing";
}
