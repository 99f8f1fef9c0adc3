#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

#include "tests/colour/ColorTableTestHelp.h"
#include "zelbase/colour/ColorTable.h"

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr unsigned int kBlue = 0xFF0000;
constexpr unsigned int kGreen = 0x00FF00;
constexpr unsigned int kRed = 0x0000FF;
constexpr unsigned int kWhite = 0xFFFFFF;

std::vector<double> ValuesOf(const ColorTable& table) {
  std::vector<double> values;
  for (int i = 0; i < table.NumEntries(); ++i) values.push_back(table.EntryValue(i));
  return values;
}

std::vector<unsigned int> ColorsOf(const ColorTable& table) {
  std::vector<unsigned int> colors;
  for (int i = 0; i < table.NumEntries(); ++i) colors.push_back(table.EntryColor(i));
  return colors;
}

using Values = std::vector<double>;
using Colors = std::vector<unsigned int>;

// --- SetRange ------------------------------------------------------------------------------------------------------

TEST(ColorTableGeneration, StepsGoToTheFirstMultipleAtOrAboveTheEnd) {
  ColorTable table;
  table.SetRange(0.0, 10.0, 2.0, kBlue, kRed);
  EXPECT_EQ(ValuesOf(table), (Values{0, 2, 4, 6, 8, 10}));
  table.SetRange(0.0, 9.0, 2.0, kBlue, kRed);
  EXPECT_EQ(ValuesOf(table), (Values{0, 2, 4, 6, 8, 10}));
  table.SetRange(10.0, 0.0, -5.0, kBlue, kRed);
  EXPECT_EQ(ValuesOf(table), (Values{0, 5, 10}));
  EXPECT_EQ(table.NumLocked(), 0);
}

TEST(ColorTableGeneration, AWholeThirdArgumentIsACount) {
  ColorTable table;
  table.SetRange(0.0, 10.0, 2, kBlue, kRed);
  EXPECT_EQ(ValuesOf(table), (Values{0, 10}));
  table.SetRange(0.0, 10.0, 0, kBlue, kRed);
  EXPECT_EQ(ValuesOf(table), (Values{0, 10}));
  table.SetRange(0, 10, 2, kBlue, kRed);
  EXPECT_EQ(ValuesOf(table), (Values{0, 10}));
  table.SetRange(0.0, 10.0, std::numeric_limits<int>::min(), kBlue, kRed);
  EXPECT_EQ(ValuesOf(table), (Values{0, 10}));
  table.SetRange(0.0, 10.0, 7, kBlue, kRed);
  EXPECT_EQ(ValuesOf(table), (Values{0, 2, 4, 6, 8, 10}));
  table.SetRangeRGB(0.0, 10.0, 12, kBlue, kRed);
  EXPECT_EQ(ValuesOf(table), (Values{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  table.SetRangeRGB3(0.0, 10.0, 7, kBlue, kGreen, kRed);
  EXPECT_EQ(table.NumEntries(), 5);
}

// (1 - 0) / (1 / 49) comes out just above 49.
TEST(ColorTableGeneration, ACountWhoseQuotientIsRoundedUpMakesOneMore) {
  ColorTable table;
  table.SetRange(0.0, 1.0, 50, kBlue, kRed);
  EXPECT_EQ(table.NumEntries(), 49);
  table.SetRange(0.0, 1.0, 51, kBlue, kRed);
  EXPECT_EQ(table.NumEntries(), 51);
  table.SetRange(0.0, 10.0, 63, kBlue, kRed);
  EXPECT_EQ(table.NumEntries(), 63);
}

TEST(ColorTableGeneration, BoolsChooseAScheme) {
  const unsigned int low[] = {0x000000, 0xFF0000, 0xFFFFFF, 0x0000FF};
  const unsigned int high[] = {0xFFFFFF, 0x0000FF, 0x000000, 0xFF0000};
  for (int scheme = 0; scheme < 4; ++scheme) {
    ColorTable bools;
    ColorTable colors;
    bools.SetRange(0.0, 10.0, 2.0, scheme % 2 == 1, scheme / 2 == 1);
    colors.SetRange(0.0, 10.0, 2.0, low[scheme], high[scheme]);
    ExpectSameTable(bools, SecondColorTable(colors));
    EXPECT_EQ(bools.NumEntries(), 6);
    bools.SetRange(0.0, 10.0, 2, scheme % 2 == 1, scheme / 2 == 1);
    colors.SetRange(0.0, 10.0, 2, low[scheme], high[scheme]);
    ExpectSameTable(bools, SecondColorTable(colors));
    EXPECT_EQ(bools.NumEntries(), 2);
  }
}

// Green has the hue 120, corrected 0.225 * 360 = 81: a red of trunc((1 - 0.35) * 255) = 165.
TEST(ColorTableGeneration, TheColoursAtBothEndsAreCorrected) {
  ColorTable table;
  table.SetRange(0.0, 10.0, 2.0, 0xFF0000u, 0x00FF00u);
  EXPECT_EQ(table.EntryColor(5), 0x00FFA5u);
  table.SetRange(0.0, 10.0, 2.0, 0x00FF00u, 0xFF0000u);
  EXPECT_EQ(table.LowColor(), 0x00FFA5u);
}

TEST(ColorTableGeneration, AStepOfZeroMakesOneUncorrectedEntry) {
  ColorTable table;
  table.SetRange(3.0, 10.0, 0.0, kGreen, kGreen);
  EXPECT_EQ(ValuesOf(table), Values{3});
  EXPECT_EQ(table.EntryColor(0), kGreen);
  EXPECT_EQ(table.LowColor(), 0x00FFA5u);
  table.SetRange(4.0, 4.0, 1.0, kRed, kGreen);
  EXPECT_EQ(ValuesOf(table), Values{4});
  EXPECT_EQ(table.EntryColor(0), kGreen);
  table.SetRangeRGB(5.0, 5.0, 1.0, kGreen, kRed);
  EXPECT_EQ(ValuesOf(table), Values{5});
  EXPECT_EQ(table.LowColor(), kGreen);
  table.SetRangeRGB3(6.0, 7.0, 0.0, kGreen, kRed, kBlue);
  EXPECT_EQ(ValuesOf(table), Values{6});
  EXPECT_EQ(table.EntryColor(0), kBlue);
}

TEST(ColorTableGeneration, AStepOfTheWrongSignOnlyClearsAndSetsTheLowColour) {
  ColorTable table;
  table.AddEntry(1, 7, false, "");
  table.SetRangeRGB(0.0, 10.0, -1.0, kBlue, kRed);
  EXPECT_EQ(table.NumEntries(), 0);
  EXPECT_EQ(table.LowColor(), kBlue);
}

TEST(ColorTableGeneration, LockedEntriesStayBehindNewOnesOfTheSameValue) {
  ColorTable table;
  table.AddEntry(2, 7, true, "shoal");
  table.AddEntry(3, 8, false, "gone");
  table.AddEntry(99, 9, true, "deep");
  table.SetRangeRGB(0.0, 4.0, 2.0, 0u, kWhite);
  EXPECT_EQ(ValuesOf(table), (Values{0, 2, 2, 4, 99}));
  EXPECT_EQ(table.EntryName(1), "");
  EXPECT_EQ(table.EntryName(2), "shoal");
  EXPECT_EQ(table.EntryColor(2), 7u);
  EXPECT_TRUE(table.EntryLocked(2));
  EXPECT_EQ(table.EntryName(4), "deep");
  EXPECT_EQ(table.NumLocked(), 2);
}

// Hues 0 and 24 (short way), 0 and 30 (long way, backwards through blue), 0 and 180 (as it is), 350 and 10 (short way
// through 0). Halfway the two first differ.
TEST(ColorTableGeneration, TheHueGoesTheShortWayOnlyWhenTheHuesAreClose) {
  const auto halfway = [](double from, double to) {
    ColorTable table;
    table.SetRange(0.0, 1.0, 1.0, ColorTable::HSVtoRGB(from, 1, 1), ColorTable::HSVtoRGB(to, 1, 1));
    EXPECT_EQ(table.NumEntries(), 2);
    return table.EntryColor(0);
  };
  const auto corrected = [](double hue) { return SecondHsvToRgb(SecondCorrectedHue(hue), 1, 1); };
  EXPECT_NEAR(GreenOf(halfway(0, 24)), GreenOf(corrected(12)), 2);
  EXPECT_EQ(RedOf(halfway(0, 24)), 255);
  EXPECT_NEAR(GreenOf(halfway(0, 30)), GreenOf(corrected(195)), 3);
  EXPECT_EQ(BlueOf(halfway(0, 30)), 255);
  EXPECT_EQ(halfway(0, 180), corrected(90));
  EXPECT_EQ(halfway(180, 0), corrected(90));
  EXPECT_EQ(halfway(240, 0), corrected(120));
  EXPECT_EQ(RedOf(halfway(350, 10)), 255);
  EXPECT_LT(BlueOf(halfway(350, 10)), 3);
  EXPECT_EQ(RedOf(halfway(10, 350)), 255);
}

TEST(ColorTableGeneration, AGreyTakesTheHueOfTheOtherEnd) {
  ColorTable table;
  table.SetRange(0.0, 1.0, 1.0, kWhite, kRed);
  EXPECT_EQ(ColorsOf(table), (Colors{Rgb(255, 127, 127), kRed}));
  EXPECT_EQ(table.LowColor(), kWhite);
  table.SetRange(0.0, 1.0, 1.0, kRed, 0u);
  EXPECT_EQ(ColorsOf(table), (Colors{Rgb(127, 63, 63), 0}));
  table.SetRange(0.0, 1.0, 1.0, 0u, kWhite);
  EXPECT_EQ(ColorsOf(table), (Colors{Rgb(127, 127, 127), kWhite}));
}

// --- RGB -----------------------------------------------------------------------------------------------------------

TEST(ColorTableGeneration, RgbGoesStraightAndTruncates) {
  ColorTable table;
  table.SetRangeRGB(0.0, 3.0, 1.0, Rgb(0, 255, 10), Rgb(255, 0, 11));
  EXPECT_EQ(ValuesOf(table), (Values{0, 1, 2, 3}));
  EXPECT_EQ(ColorsOf(table), (Colors{Rgb(63, 191, 10), Rgb(127, 127, 10), Rgb(191, 63, 10), Rgb(255, 0, 11)}));
  EXPECT_EQ(table.LowColor(), Rgb(0, 255, 10));
}

TEST(ColorTableGeneration, ThreeColoursMakeOneEntryLess) {
  ColorTable table;
  table.SetRangeRGB3(0.0, 4.0, 1.0, 0u, Rgb(100, 0, 0), Rgb(100, 200, 0));
  EXPECT_EQ(ValuesOf(table), (Values{0, 1, 2, 3}));
  EXPECT_EQ(ColorsOf(table), (Colors{Rgb(50, 0, 0), Rgb(100, 0, 0), Rgb(100, 100, 0), Rgb(100, 200, 0)}));
  table.SetRangeRGB3(0.0, 1.0, 1.0, kRed, kGreen, kBlue);
  EXPECT_EQ(ValuesOf(table), Values{0});
  EXPECT_EQ(ColorsOf(table), Colors{kBlue});
}

// --- AddRange ------------------------------------------------------------------------------------------------------

TEST(ColorTableGeneration, AddRangeReplacesWhatLiesWithinLockedOrNot) {
  ColorTable table;
  table.SetLowColor(77);
  for (int i = 0; i <= 10; ++i) table.AddEntry(i, 1, i == 4, "old");
  table.AddRange(3.0, 5.0, 1.0, 0u, kWhite, true);
  EXPECT_EQ(ValuesOf(table), (Values{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  EXPECT_EQ(table.EntryName(4), "");
  EXPECT_EQ(table.EntryName(6), "old");
  EXPECT_EQ(table.NumLocked(), 0);
  EXPECT_EQ(table.LowColor(), 77u);
}

TEST(ColorTableGeneration, AddRangeMayEndAboveItsEndInFrontOfAnOldEntry) {
  ColorTable table;
  table.AddEntry(-1, 1, false, "");
  table.AddEntry(6, 2, true, "old");
  table.AddRange(0.0, 5.0, 2.0, 0u, kWhite, true);
  EXPECT_EQ(ValuesOf(table), (Values{-1, 0, 2, 4, 6, 6}));
  EXPECT_EQ(table.EntryColor(4), kWhite);
  EXPECT_EQ(table.EntryName(5), "old");
}

TEST(ColorTableGeneration, AddRangeSetsTheLowColourUncorrectedAtTheFrontOnly) {
  ColorTable table;
  table.AddRange(0.0, 5.0, 1.0, kGreen, kBlue, false);
  EXPECT_EQ(table.LowColor(), kGreen);
  table.AddRange(6.0, 9.0, 1.0, kRed, kBlue, false);
  EXPECT_EQ(table.LowColor(), kGreen);
  table.AddRange(-6.0, -3.0, 1.0, kRed, kBlue, false);
  EXPECT_EQ(table.LowColor(), kRed);
  table.AddRange3(-6.0, 9.0, 1.0, kBlue, kBlue, kBlue);
  EXPECT_EQ(table.LowColor(), kBlue);
}

TEST(ColorTableGeneration, AddRangeWithAStepOfZeroChangesNothing) {
  ColorTable table;
  table.SetLowColor(77);
  table.AddEntry(1, 1, true, "kept");
  const SecondColorTable before(table);
  table.AddRange(0.0, 10.0, 0.0, kRed, kBlue, true);
  table.AddRange(1.0, 1.0, 1.0, kRed, kBlue, false);
  table.AddRange3(0.0, 10.0, 0.0, kRed, kGreen, kBlue);
  table.AddRange3(1.0, 1.0, 5, kRed, kGreen, kBlue);
  ExpectSameTable(table, before);
}

TEST(ColorTableGeneration, AddRangeWithAStepOfTheWrongSignRemovesAndAddsNothing) {
  ColorTable table;
  table.AddEntry(1, 1, true, "gone");
  table.AddEntry(20, 1, false, "kept");
  table.AddRange(0.0, 10.0, -1.0, kRed, kBlue, true);
  EXPECT_EQ(ValuesOf(table), Values{20});
  EXPECT_EQ(table.LowColor(), kRed);
}

TEST(ColorTableGeneration, AddRangeWithACountMakesItsStep) {
  ColorTable table;
  table.AddRange(0.0, 10.0, 7, 0u, kWhite, true);
  EXPECT_EQ(ValuesOf(table), (Values{0, 2, 4, 6, 8, 10}));
  table.AddRange3(0.0, 10.0, 7, 0u, kRed, kWhite);
  EXPECT_EQ(ValuesOf(table), (Values{0, 2, 4, 6, 8}));
}

// --- Logarithm and files -------------------------------------------------------------------------------------------

TEST(ColorTableGeneration, ALogRangeGoesFromOneInEqualRatios) {
  ColorTable table;
  table.AddEntry(5, 5, true, "");
  table.SetLowColorName("x");
  table.SetLogRange(1000, 5, true);
  ASSERT_EQ(table.NumEntries(), 4);
  for (int i = 0; i < 4; ++i) EXPECT_NEAR(table.EntryValue(i), std::pow(10, i), 1e-9);
  EXPECT_EQ(table.LowColorName(), "");
  SecondColorTable second;
  second.SetLogRange(1000, 5, true);
  ExpectSameTable(table, second);
  table.SetLogRange(1000, 5, false);
  second.SetLogRange(1000, 5, false);
  ExpectSameTable(table, second);
  EXPECT_EQ(table.EntryColor(3), kWhite);
}

TEST(ColorTableGeneration, ALogRangeWithoutRatiosHasNoEntries) {
  for (const double maximum : {0.0, -1.0, -kInfinity, kInfinity, kNan, 0.5, 1000.0}) {
    for (const int count : {2, 1, 0, -3, std::numeric_limits<int>::min()}) {
      ColorTable table;
      table.SetLogRange(maximum, count, true);
      EXPECT_EQ(table.NumEntries(), 0) << maximum << ' ' << count;
    }
  }
  for (const double maximum : {0.0, -1.0, kInfinity, kNan}) {
    ColorTable table;
    table.SetLogRange(maximum, 10, true);
    EXPECT_EQ(table.NumEntries(), 0) << maximum;
  }
  ColorTable one;
  one.SetLogRange(1, 2, true);
  EXPECT_EQ(ValuesOf(one), Values{1});
}

TEST(ColorTableGeneration, ALogRangeBelowOneIsAscending) {
  ColorTable table;
  table.SetLogRange(0.001, 5, false);
  ASSERT_EQ(table.NumEntries(), 4);
  for (int i = 0; i < 4; ++i) EXPECT_NEAR(table.EntryValue(i), std::pow(10, i - 3), 1e-9);
}

TEST(ColorTableGeneration, OneFileHasTheFirstColourUncorrected) {
  ColorTable table;
  table.AddEntry(5, 5, true, "");
  for (const int count : {1, 0, -7, std::numeric_limits<int>::min()}) {
    table.MakeFileColors(count, kGreen, kRed);
    EXPECT_EQ(table.NumEntries(), 0);
    EXPECT_EQ(table.LowColor(), kGreen);
  }
}

TEST(ColorTableGeneration, TwoFilesHaveTheFirstOfTwoEntries) {
  ColorTable two;
  ColorTable three;
  two.MakeFileColors(2, kGreen, kRed);
  three.MakeFileColors(3, kGreen, kRed);
  EXPECT_EQ(ValuesOf(two), Values{2});
  EXPECT_EQ(ValuesOf(three), (Values{2, 3}));
  EXPECT_EQ(two.EntryColor(0), three.EntryColor(0));
  EXPECT_EQ(two.LowColor(), 0x00FFA5u);
}

TEST(ColorTableGeneration, ColoursOfFilesComeAgainWithoutThatOfTheSecond) {
  ColorTable table;
  table.MakeFileColors(40, kGreen, kRed);
  ASSERT_EQ(table.NumEntries(), 39);
  const auto ofFile = [&table](int file) { return table.EntryColor(file - 2); };
  for (int i = 0; i < 39; ++i) EXPECT_EQ(table.EntryValue(i), i + 2);
  EXPECT_EQ(ofFile(13), table.LowColor());
  EXPECT_EQ(ofFile(24), table.LowColor());
  EXPECT_EQ(ofFile(35), table.LowColor());
  for (int file = 14; file <= 40; ++file) {
    EXPECT_EQ(ofFile(file), ofFile(file - 11)) << file;
    EXPECT_NE(ofFile(file), ofFile(2)) << file;
  }
}

TEST(ColorTableGeneration, ColoursOfFilesAreLikeTheSecondTables) {
  for (int count = -1; count < 60; ++count) {
    ColorTable table;
    SecondColorTable second;
    table.MakeFileColors(count, 0x3060C0, 0x10F020);
    second.MakeFileColors(count, 0x3060C0, 0x10F020);
    ExpectSameTable(table, second);
  }
}

// --- Bounds --------------------------------------------------------------------------------------------------------

TEST(ColorTableGeneration, ARunMakesNoMoreThanItsBound) {
  ColorTable table;
  table.SetRangeRGB(0.0, 65535.0, 1.0, 0u, kWhite);
  EXPECT_EQ(table.NumEntries(), ColorTable::MOST_RUN_ENTRIES);
  EXPECT_EQ(table.EntryValue(65535), 65535.0);
  EXPECT_EQ(table.EntryColor(65535), kWhite);
  table.SetRangeRGB(0.0, 65536.0, 1.0, 0x010203u, kWhite);
  EXPECT_EQ(table.NumEntries(), 0);
  EXPECT_EQ(table.LowColor(), 0x010203u);
  table.SetRangeRGB3(0.0, 65536.0, 1.0, 0u, kRed, kWhite);
  EXPECT_EQ(table.NumEntries(), ColorTable::MOST_RUN_ENTRIES);
  table.SetRangeRGB3(0.0, 65537.0, 1.0, 0u, kRed, kWhite);
  EXPECT_EQ(table.NumEntries(), 0);
  table.SetRange(0.0, 65535.0, 1.0, kRed, kBlue);
  EXPECT_EQ(table.NumEntries(), ColorTable::MOST_RUN_ENTRIES);
  table.SetRange(0.0, 65536.0, 1.0, kRed, kBlue);
  EXPECT_EQ(table.NumEntries(), 0);
  table.SetRange(0.0, 1.0, 1e-300, kRed, kBlue);
  EXPECT_EQ(table.NumEntries(), 0);
  table.SetRange(0.0, 1.0, std::numeric_limits<int>::max(), kRed, kBlue);
  EXPECT_EQ(table.NumEntries(), 0);
  table.SetLogRange(1000, std::numeric_limits<int>::max(), true);
  EXPECT_EQ(table.NumEntries(), 0);
}

TEST(ColorTableGeneration, FilesEndAtTheBound) {
  ColorTable table;
  table.MakeFileColors(std::numeric_limits<int>::max(), kGreen, kRed);
  EXPECT_EQ(table.NumEntries(), ColorTable::MOST_RUN_ENTRIES);
}

TEST(ColorTableGeneration, ARunWithEndsThatAreNoNumbersAddsNothing) {
  const double strange[] = {kNan, kInfinity, -kInfinity};
  for (const double value : strange) {
    for (int which = 0; which < 3; ++which) {
      double arguments[] = {0, 10, 1};
      arguments[which] = value;
      const auto [min, max, step] = arguments;
      ColorTable table;
      table.SetRange(min, max, step, kRed, kBlue);
      EXPECT_EQ(table.NumEntries(), 0) << value << ' ' << which;
      table.SetRangeRGB3(min, max, step, kRed, kGreen, kBlue);
      EXPECT_EQ(table.NumEntries(), 0) << value << ' ' << which;
      table.AddRange(min, max, step, kRed, kBlue, true);
      EXPECT_EQ(table.NumEntries(), 0) << value << ' ' << which;
      EXPECT_EQ(table.LowColor(), kRed);
    }
  }
}

TEST(ColorTableGeneration, ABandOfTooManyColoursAddsNone) {
  for (int band = 0; band < 3; ++band) {
    unsigned int counts[] = {3, 3, 3};
    counts[band] = 0xFFFFFFFF;
    ColorTable table;
    table.SetUnderDredgeColorRange(1, 2, counts[0]);
    table.SetInTolColorRange(3, 4, counts[1]);
    table.SetOverDredgeColorRange(5, 6, counts[2]);
    table.GenerateDredgeDiffColorTable();
    EXPECT_EQ(table.NumEntries(), band == 2 ? 6 : 5);
    EXPECT_EQ(table.LowColor(), 5u);
    counts[band] = 65536;
    table.SetUnderDredgeColorRange(1, 2, counts[0]);
    table.SetInTolColorRange(3, 4, counts[1]);
    table.SetOverDredgeColorRange(5, 6, counts[2]);
    table.GenerateDredgeDiffColorTable();
    EXPECT_EQ(table.NumEntries(), 65536 + (band == 2 ? 6 : 5) - (band == 2 ? 1 : 0));
  }
}

// --- Dredge differences --------------------------------------------------------------------------------------------

TEST(ColorTableGeneration, DredgeBandsSpanTwoUnitsBeyondTheLimits) {
  ColorTable table;
  table.AddEntry(100, 1, true, "goes");
  table.GenerateDredgeDiffColorTable();
  EXPECT_EQ(ValuesOf(table), (Values{-2.5, -2.0, -1.5, -1.0, -0.5, -0.5 + 1 * 0.2, -0.5 + 2 * 0.2, -0.5 + 3 * 0.2, -0.5 + 4 * 0.2, 0.5, 1.0,
                                     1.5, 2.0, 2.5}));
  EXPECT_EQ(table.LowColor(), Rgb(200, 0, 0));
  EXPECT_EQ(ColorsOf(table), (Colors{Rgb(213, 0, 0), Rgb(227, 0, 0), Rgb(241, 0, 0), Rgb(255, 0, 0),                         // over
                                     Rgb(255, 255, 0), Rgb(191, 255, 0), Rgb(127, 255, 0), Rgb(63, 255, 0), Rgb(0, 255, 0),  // tolerance
                                     Rgb(192, 192, 192), Rgb(176, 176, 176), Rgb(160, 160, 160), Rgb(144, 144, 144),         // under
                                     Rgb(128, 128, 128)}));
  EXPECT_EQ(table.NumLocked(), 0);
}

TEST(ColorTableGeneration, TwoColoursInTolerancePartAtZero) {
  ColorTable table;
  table.SetUnderDredgeLimit(5);
  table.SetOverDredgeLimit(-3);
  table.SetUnderDredgeColorRange(1, 2, 1);
  table.SetInTolColorRange(3, 4, 2);
  table.SetOverDredgeColorRange(5, 6, 1);
  table.GenerateDredgeDiffColorTable();
  EXPECT_EQ(ValuesOf(table), (Values{-3, 0, 5}));
  EXPECT_EQ(ColorsOf(table), (Colors{3, 4, 1}));
  EXPECT_EQ(table.LowColor(), 6u);
}

TEST(ColorTableGeneration, OneColourInToleranceIsTheUpperOne) {
  for (const unsigned int count : {0u, 1u}) {
    ColorTable table;
    table.SetUnderDredgeColorRange(1, 2, count);
    table.SetInTolColorRange(3, 4, count);
    table.SetOverDredgeColorRange(5, 6, 2);
    table.GenerateDredgeDiffColorTable();
    EXPECT_EQ(ValuesOf(table), (Values{-2.5, -0.5, 0.5}));
    EXPECT_EQ(ColorsOf(table), (Colors{6, 4, 1}));
    EXPECT_EQ(table.LowColor(), 5u);
  }
}

TEST(ColorTableGeneration, LimitsArePutInOrderAndKeptSo) {
  const double given[][2] = {{0.5, 0.25}, {-2.0, -1.0}, {-2.0, 1.0}, {0.5, -0.5}, {-0.5, 0.5}};
  const double kept[][2] = {{0.5, -0.25}, {-1.0, -2.0}, {-1.0, -2.0}, {0.5, -0.5}, {-0.5, -0.5}};
  for (int i = 0; i < 5; ++i) {
    ColorTable table;
    table.SetUnderDredgeLimit(given[i][0]);
    table.SetOverDredgeLimit(given[i][1]);
    table.GenerateDredgeDiffColorTable();
    double under = 0, over = 0;
    table.GetUnderDredgeLimit(under);
    table.GetOverDredgeLimit(over);
    EXPECT_EQ(under, kept[i][0]) << i;
    EXPECT_EQ(over, kept[i][1]) << i;
    EXPECT_EQ(table.NumEntries(), i == 4 ? 9 : 14) << i;  // equal limits: no tolerance band
  }
}

TEST(ColorTableGeneration, DredgeTablesAreLikeTheSecondTables) {
  std::mt19937_64 random(5);
  const double limits[] = {0, 0.0, -0.0, 0.5, -0.5, 1, -1, 2, -2, 0.3, 1e17, -1e17, 1e308, kInfinity, -kInfinity, kNan};
  const auto limit = [&] { return limits[random() % std::size(limits)]; };
  const auto color = [&] { return static_cast<unsigned int>(random() & 0xFFFFFF); };
  const auto count = [&] { return static_cast<unsigned int>(random() % 9); };
  for (int round = 0; round < 3000; ++round) {
    ColorTable table;
    table.SetUnderDredgeLimit(limit());
    table.SetOverDredgeLimit(limit());
    table.SetUnderDredgeColorRange(color(), color(), count());
    table.SetInTolColorRange(color(), color(), count());
    table.SetOverDredgeColorRange(color(), color(), count());
    SecondColorTable second(table);
    table.GenerateDredgeDiffColorTable();
    second.GenerateDredgeDiff();
    ExpectSameTable(table, second);
    double under = 0, over = 0;
    table.GetUnderDredgeLimit(under);
    table.GetOverDredgeLimit(over);
    EXPECT_TRUE(SameDouble(under, second.underLimit) && SameDouble(over, second.overLimit));
  }
}

// --- All families against the second table -------------------------------------------------------------------------

// Generators one after the other on one table, with entries locked, removed and made strange in between.
TEST(ColorTableGeneration, AllRangesAreLikeTheSecondTables) {
  std::mt19937_64 random(6);
  const double ends[] = {0, 1, 2, 3, 5, 10, -4, 0.1, 0.7, -0.0, 1e17, -1e17, 1e308, kInfinity, kNan};
  const double steps[] = {1, 0.5, 0.1, 2, 3, -1, -0.25, 0, 0.03125, 1e16, 1e300, kInfinity, kNan};
  const auto color = [&] {
    const unsigned int any = static_cast<unsigned int>(random() & 0xFFFFFF);
    return random() % 4 == 0 ? (any & 0xFF) * 0x010101 : any;
  };
  for (int round = 0; round < 1500; ++round) {
    ColorTable table;
    for (int operation = 0; operation < 4; ++operation) {
      SecondColorTable second(table);
      const double min = ends[random() % std::size(ends)];
      const double max = ends[random() % std::size(ends)];
      const double step = steps[random() % std::size(steps)];
      const unsigned int low = color(), mid = color(), high = color();
      const bool rgb = random() % 2 == 0;
      switch (random() % 6) {
        case 0:
          table.SetRange(min, max, step, low, high);
          second.SetRange(min, max, step, low, high);
          break;
        case 1:
          table.SetRangeRGB(min, max, step, low, high);
          second.SetRangeRgb(min, max, step, low, high);
          break;
        case 2:
          table.SetRangeRGB3(min, max, step, low, mid, high);
          second.SetRangeRgb3(min, max, step, low, mid, high);
          break;
        case 3:
          table.AddRange3(min, max, step, low, mid, high);
          second.AddRange3(min, max, step, low, mid, high);
          break;
        default:
          table.AddRange(min, max, step, low, high, rgb);
          second.AddRange(min, max, step, low, high, rgb);
          break;
      }
      ExpectSameTable(table, second);
      if (HasFatalFailure()) return;
      table.InsertEntry(min, 5, true);
      if (random() % 3 == 0) table.SetEntryValue(static_cast<int>(random() % 8), kNan);
      table.RemoveEntry(static_cast<int>(random() % 8));
      table.SetEntryName(static_cast<int>(random() % 8), "n");
    }
  }
}

TEST(ColorTableGeneration, LogRangesAreLikeTheSecondTables) {
  for (const double maximum : {1.0, 2.0, 10.0, 0.01, 1e6, 1e300, 3.7, 0.0}) {
    for (int count = -2; count < 40; ++count) {
      ColorTable table;
      SecondColorTable second;
      table.SetLogRange(maximum, count, count % 2 == 0);
      second.SetLogRange(maximum, count, count % 2 == 0);
      ExpectSameTable(table, second);
    }
  }
}

}  // namespace
