#include "zelbase/colour/ColorTable.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/colour/ColorTableTestHelp.h"

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Entries with the colours 1, 2, ... and the names "1", "2", ...; the low colour is 1000, its name "low".
OpenColorTable TableOf(const std::vector<double>& values) {
  OpenColorTable table;
  table.SetLowColor(1000);
  table.SetLowColorName("low");
  for (const double value : values) {
    const unsigned int number = static_cast<unsigned int>(table.NumEntries()) + 1;
    EXPECT_TRUE(table.AddEntry(value, number, false, std::to_string(number)));
  }
  return table;
}

// The same with any values in any order, brought in by the back door: nothing passes a value that is not a number, so that
// each entry, the last one first, goes in front of such a one, which is then removed.
OpenColorTable UnsortedTableOf(const std::vector<double>& values) {
  OpenColorTable table;
  table.SetLowColor(1000);
  table.SetLowColorName("low");
  for (std::size_t i = values.size(); i-- > 0;) {
    table.InsertEntry(kNan, 0, false);
    EXPECT_EQ(table.InsertEntry(values[i], static_cast<unsigned int>(i) + 1, false), 0);
    table.RemoveEntry(1);
    table.SetEntryName(0, std::to_string(i + 1));
  }
  return table;
}

// --- Fields --------------------------------------------------------------------------------------------------------

TEST(ColorTable, ANewTableIsEmptyAndHasTheColoursOfDredging) {
  const ColorTable table;
  EXPECT_EQ(table.NumEntries(), 0);
  EXPECT_EQ(table.NumLocked(), 0);
  EXPECT_EQ(table.LowColor(), LOWCOLOR_DEFAULT);
  EXPECT_EQ(LOWCOLOR_DEFAULT, 0u);
  EXPECT_EQ(table.LowColorName(), "");
  EXPECT_FALSE(table.HasOpened());
  EXPECT_FALSE(table.HasDredgeDiffSection());
  unsigned int min = 0, max = 0, count = 0;
  table.GetUnderDredgeColorRange(min, max, count);
  EXPECT_EQ(min, 0xC0C0C0u);
  EXPECT_EQ(max, 0x808080u);
  EXPECT_EQ(count, 5u);
  table.GetInTolColorRange(min, max, count);
  EXPECT_EQ(min, 0x00FFFFu);
  EXPECT_EQ(max, 0x00FF00u);
  EXPECT_EQ(count, 5u);
  table.GetOverDredgeColorRange(min, max, count);
  EXPECT_EQ(min, 0x0000C8u);
  EXPECT_EQ(max, 0x0000FFu);
  EXPECT_EQ(count, 5u);
  double limit = 0;
  table.GetUnderDredgeLimit(limit);
  EXPECT_EQ(limit, 0.5);
  table.GetOverDredgeLimit(limit);
  EXPECT_EQ(limit, -0.5);
  bool sync = true;
  table.GetSyncWithDesignModel(sync);
  EXPECT_FALSE(sync);
}

TEST(ColorTable, FieldsAreSetAndReadOneByOne) {
  ColorTable table;
  table.SetLowColor(0x123456);
  table.SetLowColorName("deep");
  table.SetDredgeDiffColTab(true);
  table.SetUnderDredgeLimit(2.5);
  table.SetOverDredgeLimit(3.5);
  table.SetSyncWithDesignModel(true);
  table.SetUnderDredgeColorRange(1, 2, 3);
  table.SetInTolColorRange(4, 5, 6);
  table.SetOverDredgeColorRange(7, 8, 9);
  const ColorTable copy = table;
  EXPECT_EQ(copy.LowColor(), 0x123456u);
  EXPECT_EQ(copy.LowColorName(), "deep");
  EXPECT_TRUE(copy.HasDredgeDiffSection());
  double under = 0, over = 0;
  copy.GetUnderDredgeLimit(under);
  copy.GetOverDredgeLimit(over);
  EXPECT_EQ(under, 2.5);
  EXPECT_EQ(over, 3.5);
  bool sync = false;
  copy.GetSyncWithDesignModel(sync);
  EXPECT_TRUE(sync);
  unsigned int parts[9] = {};
  copy.GetUnderDredgeColorRange(parts[0], parts[1], parts[2]);
  copy.GetInTolColorRange(parts[3], parts[4], parts[5]);
  copy.GetOverDredgeColorRange(parts[6], parts[7], parts[8]);
  for (unsigned int i = 0; i < 9; ++i) EXPECT_EQ(parts[i], i + 1);
}

TEST(ColorTable, HasNoVirtualOperationsAndCopiesAndMoves) {
  EXPECT_FALSE(std::is_polymorphic_v<ColorTable>);
  OpenColorTable table = TableOf({1, 2, 3});
  const ColorTable copy = table;
  table.SetEntryColor(1, 77);
  table.SetLowColor(5);
  EXPECT_EQ(copy.EntryColor(1), 2u);
  EXPECT_EQ(copy.GetColor(0), 1000u);
  ColorTable assigned = TableOf({9});
  assigned = copy;
  ExpectSameTable(assigned, SecondColorTable(copy));
  const ColorTable moved = std::move(assigned);
  ExpectSameTable(moved, SecondColorTable(copy));
  ExpectSameLookUp(moved, SecondColorTable(copy));
}

TEST(ColorTable, ItsNumbersAreIntAndItsReadersConstant) {
  const ColorTable table;
  EXPECT_TRUE((std::is_same_v<decltype(table.NumEntries()), int>));
  EXPECT_TRUE((std::is_same_v<decltype(table.NumLocked()), int>));
  EXPECT_TRUE((std::is_same_v<decltype(ColorTable().InsertEntry(0, 0, false)), int>));
  EXPECT_TRUE((std::is_same_v<decltype(table.GetColor(0)), unsigned int>));
  EXPECT_EQ(table.GetName(0), "");
}

// --- Entries -------------------------------------------------------------------------------------------------------

TEST(ColorTable, AddEntryAppendsOnlyWhatIsStrictlyAbove) {
  ColorTable table;
  EXPECT_TRUE(table.AddEntry(1.0, 10, true, "one"));
  EXPECT_FALSE(table.AddEntry(1.0, 11, false, "again"));
  EXPECT_FALSE(table.AddEntry(0.5, 11, false, "below"));
  EXPECT_FALSE(table.AddEntry(kNan, 11, false, "no number"));
  EXPECT_TRUE(table.AddEntry(std::nextafter(1.0, 2.0), 12, false, "next"));
  ASSERT_EQ(table.NumEntries(), 2);
  EXPECT_EQ(table.EntryValue(0), 1.0);
  EXPECT_EQ(table.EntryColor(0), 10u);
  EXPECT_EQ(table.EntryName(0), "one");
  EXPECT_TRUE(table.EntryLocked(0));
  EXPECT_FALSE(table.EntryLocked(1));
  EXPECT_EQ(table.EntryName(1), "next");
  EXPECT_EQ(table.NumLocked(), 1);
}

TEST(ColorTable, NothingFollowsAnEntryThatIsNotANumber) {
  ColorTable table;
  EXPECT_TRUE(table.AddEntry(kNan, 1, false, ""));
  EXPECT_FALSE(table.AddEntry(1.0, 2, false, ""));
  EXPECT_FALSE(table.AddEntry(kInfinity, 2, false, ""));
}

TEST(ColorTable, InsertEntryFindsItsPlaceAndHasAnEmptyName) {
  ColorTable table = TableOf({1, 3});
  EXPECT_EQ(table.InsertEntry(2.0, 20, true), 1);
  EXPECT_EQ(table.InsertEntry(0.0, 21, false), 0);
  EXPECT_EQ(table.InsertEntry(9.0, 22, false), 4);
  ASSERT_EQ(table.NumEntries(), 5);
  const double values[] = {0, 1, 2, 3, 9};
  const unsigned int colors[] = {21, 1, 20, 2, 22};
  const char* const names[] = {"", "1", "", "2", ""};
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(table.EntryValue(i), values[i]);
    EXPECT_EQ(table.EntryColor(i), colors[i]);
    EXPECT_EQ(table.EntryName(i), names[i]);
    EXPECT_EQ(table.EntryLocked(i), i == 2);
  }
}

TEST(ColorTable, InsertEntryPutsAnEqualValueInFront) {
  ColorTable table = TableOf({1, 2, 3});
  EXPECT_EQ(table.InsertEntry(2.0, 20, false), 1);
  EXPECT_EQ(table.InsertEntry(2.0, 21, false), 1);
  EXPECT_EQ(table.EntryColor(1), 21u);
  EXPECT_EQ(table.EntryColor(2), 20u);
  EXPECT_EQ(table.EntryColor(3), 2u);
}

TEST(ColorTable, InsertEntryPutsWhatIsNotANumberFirstAndPassesNone) {
  ColorTable table = TableOf({1, 2});
  EXPECT_EQ(table.InsertEntry(kNan, 20, false), 0);
  EXPECT_EQ(table.InsertEntry(5.0, 21, false), 0);
  EXPECT_EQ(table.InsertEntry(7.0, 22, false), 1);
  EXPECT_TRUE(std::isnan(table.EntryValue(2)));
}

TEST(ColorTable, SetEntryValueKeepsTheOrderStrict) {
  ColorTable table = TableOf({1, 2, 3});
  EXPECT_FALSE(table.SetEntryValue(1, 1.0));
  EXPECT_FALSE(table.SetEntryValue(1, 3.0));
  EXPECT_FALSE(table.SetEntryValue(1, 0.0));
  EXPECT_FALSE(table.SetEntryValue(1, 4.0));
  EXPECT_FALSE(table.SetEntryValue(0, 2.0));
  EXPECT_FALSE(table.SetEntryValue(2, 2.0));
  EXPECT_EQ(table.EntryValue(1), 2.0);
  EXPECT_TRUE(table.SetEntryValue(1, 2.5));
  EXPECT_TRUE(table.SetEntryValue(0, -100.0));
  EXPECT_TRUE(table.SetEntryValue(2, 100.0));
  EXPECT_EQ(table.EntryValue(0), -100.0);
  EXPECT_EQ(table.EntryValue(1), 2.5);
  EXPECT_EQ(table.EntryValue(2), 100.0);
  EXPECT_TRUE(table.SetEntryValue(1, kNan));
}

TEST(ColorTable, RemoveEntryTakesAllFourPartsAway) {
  ColorTable table;
  table.AddEntry(1, 10, true, "a");
  table.AddEntry(2, 20, false, "b");
  table.AddEntry(3, 30, true, "c");
  table.RemoveEntry(1);
  ASSERT_EQ(table.NumEntries(), 2);
  EXPECT_EQ(table.EntryValue(1), 3.0);
  EXPECT_EQ(table.EntryColor(1), 30u);
  EXPECT_EQ(table.EntryName(1), "c");
  EXPECT_TRUE(table.EntryLocked(1));
}

TEST(ColorTable, ABadIndexReadsNothingAndChangesNothing) {
  ColorTable table = TableOf({1, 2});
  for (const int index : {-1, 2, 3, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(table.EntryValue(index), 0.0);
    EXPECT_EQ(table.EntryColor(index), 0u);
    EXPECT_EQ(table.EntryName(index), "");
    EXPECT_FALSE(table.EntryLocked(index));
    EXPECT_FALSE(table.SetEntryColor(index, 9));
    EXPECT_FALSE(table.SetEntryName(index, "x"));
    EXPECT_FALSE(table.SetEntryValue(index, 9));
    table.RemoveEntry(index);
  }
  ExpectSameTable(table, SecondColorTable(TableOf({1, 2})));
}

TEST(ColorTable, ColoursAndNamesOfEntriesAreSet) {
  ColorTable table = TableOf({1, 2});
  EXPECT_TRUE(table.SetEntryColor(1, 0xABCDEF));
  EXPECT_TRUE(table.SetEntryName(0, "shoal"));
  EXPECT_EQ(table.EntryColor(1), 0xABCDEFu);
  EXPECT_EQ(table.GetColor(5), 0xABCDEFu);
  EXPECT_EQ(table.EntryName(0), "shoal");
}

TEST(ColorTable, ClearEntriesKeepsLockedOnesButNotTheLowColour) {
  ColorTable table;
  table.SetLowColor(99);
  table.SetLowColorName("low");
  for (int i = 0; i < 7; ++i) table.AddEntry(i, static_cast<unsigned int>(i), i % 3 == 1, std::to_string(i));
  table.ClearEntries(false);
  EXPECT_EQ(table.LowColor(), 0u);
  EXPECT_EQ(table.LowColorName(), "low");
  ASSERT_EQ(table.NumEntries(), 2);
  EXPECT_EQ(table.EntryValue(0), 1.0);
  EXPECT_EQ(table.EntryName(1), "4");
  EXPECT_EQ(table.NumLocked(), 2);
  table.ClearEntries(true);
  EXPECT_EQ(table.NumEntries(), 0);
}

TEST(ColorTable, ClearKeepsWhatBelongsToDredging) {
  ColorTable table = TableOf({1, 2});
  table.SetDredgeDiffColTab(true);
  table.SetSyncWithDesignModel(true);
  table.SetUnderDredgeLimit(7);
  table.SetInTolColorRange(1, 2, 3);
  table.Clear();
  EXPECT_EQ(table.NumEntries(), 0);
  EXPECT_EQ(table.LowColor(), 0u);
  EXPECT_EQ(table.LowColorName(), "");
  EXPECT_TRUE(table.HasDredgeDiffSection());
  bool sync = false;
  table.GetSyncWithDesignModel(sync);
  EXPECT_TRUE(sync);
  double limit = 0;
  table.GetUnderDredgeLimit(limit);
  EXPECT_EQ(limit, 7.0);
  unsigned int min = 0, max = 0, count = 0;
  table.GetInTolColorRange(min, max, count);
  EXPECT_EQ(count, 3u);
}

// --- Look-up -------------------------------------------------------------------------------------------------------

TEST(ColorTable, AnEmptyTableGivesTheLowColourAndName) {
  const ColorTable table = TableOf({});
  for (const double value : {-kInfinity, -1.0, 0.0, 1e300, kInfinity, kNan}) {
    EXPECT_EQ(table.GetColor(value), 1000u);
    EXPECT_EQ(table.GetName(value), "low");
  }
}

TEST(ColorTable, ASingleEntryHoldsAtAndAboveItsValue) {
  const ColorTable table = TableOf({5});
  EXPECT_EQ(table.GetColor(std::nextafter(5.0, 0.0)), 1000u);
  EXPECT_EQ(table.GetColor(5), 1u);
  EXPECT_EQ(table.GetColor(6), 1u);
  EXPECT_EQ(table.GetColor(kInfinity), 1u);
  EXPECT_EQ(table.GetColor(-kInfinity), 1000u);
  EXPECT_EQ(table.GetName(4), "low");
  EXPECT_EQ(table.GetName(5), "1");
}

TEST(ColorTable, WhatIsNotANumberTakesTheLowColourButTheOnlyEntryOfATable) {
  EXPECT_EQ(TableOf({5}).GetColor(kNan), 1u);
  EXPECT_EQ(TableOf({5, 6}).GetColor(kNan), 1000u);
  EXPECT_EQ(TableOf({5, 6}).GetName(kNan), "low");
}

TEST(ColorTable, AValueTakesTheColourOfTheStepItLiesOn) {
  const ColorTable table = TableOf({-3, 0, 0.5, 7, 1000});
  const double values[] = {-3.5, -2.999, -0.001, 0.25, 0.75, 6.9, 7.1, 999, 1001, 1e300};
  const unsigned int colors[] = {1000, 1, 1, 2, 3, 3, 4, 4, 5, 5};
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(table.GetColor(values[i]), colors[i]) << values[i];
    EXPECT_EQ(table.GetName(values[i]), colors[i] == 1000 ? "low" : std::to_string(colors[i])) << values[i];
  }
}

TEST(ColorTable, AnEntryMetInTheMiddleGivesTheColourBeforeItAndItsOwnName) {
  const ColorTable table = TableOf({40, 41, 42, 82, 92, 102});
  EXPECT_EQ(table.GetColor(41), 1u);
  EXPECT_EQ(table.GetName(41), "2");
  EXPECT_EQ(table.GetColor(std::nextafter(41.0, 50.0)), 2u);
  EXPECT_EQ(table.GetColor(40), 1u);
  EXPECT_EQ(table.GetColor(102), 6u);
}

TEST(ColorTable, ManyExactHitsOfUnevenTablesTakeTheColourBefore) {
  std::mt19937_64 random(7);
  int hits = 0;
  int before = 0;
  for (int round = 0; round < 200; ++round) {
    OpenColorTable table;
    double value = 0;
    for (unsigned int i = 1; i <= 20; ++i) {
      table.AddEntry(value, i, false, std::to_string(i));
      value += static_cast<double>(random() % 1000 + 1);
    }
    for (int i = 0; i < 20; ++i) {
      const unsigned int color = table.GetColor(table.EntryValue(i));
      EXPECT_EQ(table.GetName(table.EntryValue(i)), table.EntryName(i));
      before += color == static_cast<unsigned int>(i) ? 1 : 0;
      hits += color == static_cast<unsigned int>(i + 1) ? 1 : 0;
    }
  }
  EXPECT_EQ(hits + before, 200 * 20);
  EXPECT_GT(before, 200 * 20 / 8);
  EXPECT_LT(before, 200 * 20 / 2);
}

TEST(ColorTable, ATableOfEqualValuesGivesItsLastColourAndTheLowName) {
  OpenColorTable table;
  table.SetLowColor(1000);
  table.SetLowColorName("low");
  for (unsigned int i = 5; i >= 1; --i) {
    table.InsertEntry(3.0, i, false);
    table.SetEntryName(0, std::to_string(i));
  }
  EXPECT_EQ(table.GetColor(2.9), 1000u);
  EXPECT_EQ(table.GetColor(3.0), 5u);
  EXPECT_EQ(table.GetColor(3.1), 5u);
  EXPECT_EQ(table.GetName(2.9), "low");
  EXPECT_EQ(table.GetName(3.0), "low");
  EXPECT_EQ(table.GetName(3.1), "5");
}

TEST(ColorTable, ASpanBeyondAllNumbersIsNotConvertedToAnIndex) {
  const ColorTable table = TableOf({-1.5e308, 0, 1.5e308});
  EXPECT_EQ(table.GetColor(0.5), SecondColorTable(table).Color(0.5));
  EXPECT_EQ(table.GetColor(1.4e308), 1000u);  // infinity / infinity
  EXPECT_EQ(TableOf({0, 1, 2}).GetColor(1.7e308), 3u);
  EXPECT_EQ(TableOf({-kInfinity, 1, 2}).GetColor(1.5), 1000u);
  EXPECT_EQ(TableOf({0, 1, kInfinity}).GetColor(kInfinity), 1000u);
}

// (0 + 1e300) * 2 / 1e300 is 2, the last place, though the last entry is 5.
TEST(ColorTable, ANumberWithinRoundingOfTheLastEntryHasItsColourAlready) {
  const ColorTable table = TableOf({-1e300, 0, 5});
  for (int pass = 0; pass < 2; ++pass) {
    EXPECT_EQ(table.GetColor(-1e299), 1u);
    EXPECT_EQ(table.GetColor(-1e280), 3u);
    EXPECT_EQ(table.GetColor(0), 3u);
    EXPECT_EQ(table.GetColor(5), 3u);
    EXPECT_EQ(table.GetName(-1e280), "3");
    LookUpOften(table);
  }
}

TEST(ColorTable, FindColorSearchesWithinTheGivenEntries) {
  const OpenColorTable table = TableOf({0, 10, 20, 30, 40});
  EXPECT_EQ(table.FindColor(15, 0, 4), 2u);
  EXPECT_EQ(table.FindColor(35, 0, 2), 3u);
  EXPECT_EQ(table.FindColor(-5, 0, 4), 1000u);
  EXPECT_EQ(table.FindColor(20, 0, 4), 2u);  // met in the middle
  EXPECT_EQ(table.FindColor(20, 0, 2), 3u);  // met at the end
  EXPECT_EQ(table.FindName(15, 0, 4), "2");
  EXPECT_EQ(table.FindName(20, 0, 4), "3");
  EXPECT_EQ(table.FindName(-5, 0, 4), "low");
}

TEST(ColorTable, FindColorOutsideTheTableGivesTheLowColour) {
  const OpenColorTable table = TableOf({0, 10});
  for (const auto& [low, high] : std::vector<std::pair<int, int>>{{-1, 1}, {0, 2}, {2, 2}, {0, -1}, {-5, 700}}) {
    EXPECT_EQ(table.FindColor(5, low, high), 1000u);
    EXPECT_EQ(table.FindName(5, low, high), "low");
  }
  EXPECT_EQ(TableOf({}).FindColor(5, 0, 0), 1000u);
}

TEST(ColorTable, TheSearchEndsAmongValuesThatAreNotNumbers) {
  const OpenColorTable table = UnsortedTableOf({0, kNan, kNan, 1});
  EXPECT_EQ(table.GetColor(0.5), 1u);
  const OpenColorTable all = UnsortedTableOf({kNan, kNan, kNan});
  for (const double value : {-1.0, 0.0, 1.0, kNan}) {
    EXPECT_EQ(all.GetColor(value), 1000u);
    EXPECT_EQ(all.GetName(value), "low");
    for (int low = 0; low < 3; ++low) {
      for (int high = 0; high < 3; ++high) EXPECT_EQ(all.FindColor(value, low, high), 1000u);
    }
  }
}

TEST(ColorTable, LooksUpLikeTheSecondTableInTablesOfAnyOrder) {
  std::mt19937_64 random(11);
  const double pool[] = {kNan, kNan, -kInfinity, kInfinity, -1e308, 1e308, -0.0, 0.0, 1, 1, 2, 3, 4, 5e-324, -7, 100};
  for (int round = 0; round < 4000; ++round) {
    std::vector<double> values(random() % 8);
    for (double& value : values) {
      value = random() % 4 == 0 ? pool[random() % std::size(pool)] : static_cast<double>(random() % 9);
    }
    const OpenColorTable table = UnsortedTableOf(values);
    ASSERT_EQ(table.NumEntries(), static_cast<int>(values.size()));
    const SecondColorTable second(table);
    ExpectSameLookUp(table, second);
    if (values.empty()) continue;
    const int n = table.NumEntries();
    for (const double value : ProbesOf(table)) {
      const int low = static_cast<int>(random() % values.size());
      const int high = low + static_cast<int>(random() % static_cast<unsigned int>(n - low));
      ASSERT_EQ(table.FindColor(value, low, high), second.FindColor(value, low, high)) << round;
      ASSERT_EQ(table.FindName(value, low, high), second.FindName(value, low, high)) << round;
    }
  }
}

TEST(ColorTable, LooksUpLikeTheSecondTableInOrderedTables) {
  std::mt19937_64 random(12);
  for (int round = 0; round < 600; ++round) {
    OpenColorTable table;
    table.SetLowColor(1000);
    double value = static_cast<double>(random() % 100) - 50;
    const unsigned int n = static_cast<unsigned int>(random() % 40);
    for (unsigned int i = 1; i <= n; ++i) {
      table.InsertEntry(value, i, false);
      const unsigned int kind = static_cast<unsigned int>(random() % 6);
      if (kind == 0) value = std::nextafter(value, kInfinity);
      if (kind == 1) value += 1000;
      if (kind > 2) value += static_cast<double>(random() % 64) / 16;
    }
    ExpectSameLookUp(table, SecondColorTable(table));
  }
}

// --- Rows and the index --------------------------------------------------------------------------------------------

TEST(ColorTable, ARowIsColouredValueByValue) {
  std::mt19937_64 random(13);
  for (int round = 0; round < 60; ++round) {
    ColorTable table;
    table.SetLogRange(1e6, static_cast<int>(random() % 70), round % 2 == 0);
    if (round % 3 == 0) table.SetRangeRGB(0.0, 10.0, static_cast<int>(random() % 70), 0u, 0xFFFFFFu);
    const SecondColorTable second(table);
    std::vector<double> values(random() % 100);
    for (double& value : values) value = std::pow(10.0, static_cast<double>(random() % 8000) / 1000 - 1);
    if (!values.empty()) values.back() = kNan;
    std::vector<unsigned int> colors(values.size());
    if (round % 2 == 0) LookUpOften(table);
    table.GetColors(values, colors);
    for (std::size_t i = 0; i < values.size(); ++i) ASSERT_EQ(colors[i], second.Color(values[i])) << values[i];
  }
}

TEST(ColorTable, OfTwoLengthsTheShorterCounts) {
  const ColorTable table = TableOf({0, 1, 2});
  const std::vector<double> values = {0.5, 1.5, 2.5, 0.5, 1.5, 2.5, 0.5};
  std::vector<unsigned int> colors(9, 77);
  table.GetColors(values, colors);
  EXPECT_EQ(colors, (std::vector<unsigned int>{1, 2, 3, 1, 2, 3, 1, 77, 77}));
  std::vector<unsigned int> few(2, 77);
  table.GetColors(values, few);
  EXPECT_EQ(few, (std::vector<unsigned int>{1, 2}));
  table.GetColors({}, colors);
  table.GetColors(values, {});
  EXPECT_EQ(colors[0], 1u);
}

TEST(ColorTable, EveryChangeIsSeenByTheNextLookUp) {
  const auto changed = [](auto change) {
    OpenColorTable table = TableOf({0, 1, 2, 4, 8});
    table.SetEntryName(0, "x");
    LookUpOften(table);
    change(table);
    ExpectSameLookUp(table, SecondColorTable(table));
    LookUpOften(table);
    change(table);
    ExpectSameLookUp(table, SecondColorTable(table));
  };
  changed([](ColorTable& table) { table.SetLowColor(5); });
  changed([](ColorTable& table) { table.SetEntryColor(2, 55); });
  changed([](ColorTable& table) { table.SetEntryValue(2, 3.5); });
  changed([](ColorTable& table) { table.InsertEntry(2.5, 55, true); });
  changed([](ColorTable& table) { table.AddEntry(9, 55, false, ""); });
  changed([](ColorTable& table) { table.RemoveEntry(1); });
  changed([](ColorTable& table) { table.ClearEntries(false); });
  changed([](ColorTable& table) { table.Clear(); });
  changed([](ColorTable& table) { table.SetRange(0.0, 3.0, 1.0, 1u, 2u); });
  changed([](ColorTable& table) { table.AddRange(0.0, 3.0, 0.5, 1u, 2u, true); });
  changed([](ColorTable& table) { table.AddRange(-3.0, -2.0, -1.0, 99u, 2u, true); });
  changed([](ColorTable& table) { table.SetLogRange(100, 9, true); });
  changed([](ColorTable& table) { table.MakeFileColors(20, 1, 2); });
  changed([](ColorTable& table) { table.MakeFileColors(1, 9, 2); });
  changed([](ColorTable& table) { table.GenerateDredgeDiffColorTable(); });
  changed([](ColorTable& table) { table = TableOf({3, 4}); });
  changed([](ColorTable& table) { table = ColorTable(table); });
}

TEST(ColorTable, ACopyAndAMovedTableHaveAnIndexOfTheirOwn) {
  OpenColorTable table = TableOf({0, 1, 2});
  LookUpOften(table);
  ColorTable copy = table;
  copy.SetEntryColor(1, 50);
  EXPECT_EQ(table.GetColor(1.5), 2u);
  EXPECT_EQ(copy.GetColor(1.5), 50u);
  ColorTable moved = std::move(table);
  EXPECT_EQ(moved.GetColor(1.5), 2u);
  moved = std::move(copy);
  EXPECT_EQ(moved.GetColor(1.5), 50u);
  moved = ColorTable();
  EXPECT_EQ(moved.GetColor(1.5), 0u);
}

TEST(ColorTable, ATableAssignedToItselfKeepsItsEntries) {
  ColorTable table = TableOf({0, 1, 2});
  LookUpOften(table);
  const ColorTable& same = table;
  table = same;
  ExpectSameLookUp(table, SecondColorTable(TableOf({0, 1, 2})));
}

// Whatever is left of its entries: no index of others answers for them.
TEST(ColorTable, ATableMovedToItselfAnswersByTheEntriesThatItHas) {
  ColorTable table = TableOf({0, 1, 2});
  LookUpOften(table);
  ColorTable& same = table;
  table = std::move(same);
  ExpectSameLookUp(table, SecondColorTable(table));
}

// Beyond a million entries no index is made; what is found is the same.
TEST(ColorTable, ATableOfMoreEntriesThanAnIndexHoldsIsSearched) {
  ColorTable table;
  constexpr int kEntries = (1 << 20) + 1;
  table.SetLowColor(77);
  for (int i = 0; i < kEntries; ++i) table.AddEntry(i, static_cast<unsigned int>(i + 1), false, "");
  ASSERT_EQ(table.NumEntries(), kEntries);
  const SecondColorTable second(table);
  std::vector<double> values = {-1, 0, 0.5, 1, 524288, 524288.75, kEntries - 1.5, kEntries - 1.0, kEntries + 5.0};
  const std::size_t asked = values.size();
  values.resize(1'100'000, 3.25);  // more than make an index worth having
  std::vector<unsigned int> colors(values.size());
  table.GetColors(values, colors);
  for (std::size_t i = 0; i < asked; ++i) EXPECT_EQ(colors[i], second.Color(values[i])) << values[i];
  EXPECT_EQ(colors.back(), 4u);
  EXPECT_EQ(table.GetColor(524288.75), 524289u);
}

TEST(ColorTable, TablesOfEverySizeAndSpacingGiveTheStatedColours) {
  std::mt19937_64 random(14);
  for (const int size : {2, 3, 4, 5, 63, 64, 65, 300, 5000}) {
    for (int kind = 0; kind < 6; ++kind) {
      ColorTable table;
      table.SetLowColor(0xFFFFFF);
      double value = kind == 3 ? -1e-300 : -100;
      for (int i = 0; i < size; ++i) {
        table.AddEntry(value, static_cast<unsigned int>(i), false, "");
        if (kind == 0) value += 1;
        if (kind == 1) value += static_cast<double>(random() % 1000 + 1) / 7;
        if (kind == 2) value = std::nextafter(value, kInfinity);
        if (kind == 3) value = value < 0 ? 5e-324 : value * 1.1 + 5e-324;
        if (kind == 4) value += random() % 50 == 0 ? 1e6 : 1e-6;
        if (kind == 5) value = std::nextafter(value, kInfinity) + (random() % 3 == 0 ? 3 : 0);
      }
      const SecondColorTable second(table);
      std::vector<double> probes = ProbesOf(table);
      for (int i = 0; i < 200; ++i) probes.push_back(-150 + static_cast<double>(random() % 100000) / 300);
      std::vector<unsigned int> row(probes.size());
      LookUpOften(table);
      table.GetColors(probes, row);
      for (std::size_t i = 0; i < probes.size(); ++i) {
        ASSERT_EQ(row[i], second.Color(probes[i])) << size << ' ' << kind << ' ' << probes[i];
        ASSERT_EQ(table.GetColor(probes[i]), row[i]);
      }
    }
  }
}

// Under the thread sanitizer: the table makes its index while all of them read.
TEST(ColorTable, SeveralThreadsMayLookUpAtOnce) {
  for (int round = 0; round < 50; ++round) {
    ColorTable table;
    table.SetRange(0.0, 10.0, 1.0 / 16, 0u, 0xFFFFFFu);
    const ColorTable reference = table;
    std::vector<std::thread> threads;
    std::atomic<int> numWrong = 0;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&table, &reference, &numWrong, i] {
        std::vector<double> row(40);
        std::vector<unsigned int> colors(40);
        for (std::size_t k = 0; k < row.size(); ++k) row[k] = 0.25 * static_cast<double>(k) + i;
        for (int pass = 0; pass < 20; ++pass) {
          table.GetColors(row, colors);
          for (std::size_t k = 0; k < row.size(); ++k) {
            if (colors[k] != reference.GetColor(row[k]) || table.GetColor(row[k]) != colors[k]) ++numWrong;
          }
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(numWrong, 0);
  }
}

}  // namespace
