#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tests/colour/ColorTableTestHelp.h"
#include "tests/config/SettingsTestHelp.h"
#include "tests/support/CommaLocale.h"
#include "zelbase/colour/ColorTable.h"
#include "zelbase/config/FileObject.h"

namespace {

// Keeps a list of what is written, and refuses from a certain write on.
class RefusingSettings : public FileObject {
 public:
  explicit RefusingSettings(int accepted = 1000000) : m_accepted(accepted) {}

  using FileObject::SetItem;
  bool SetItem(const std::string& section, const std::string& key, const std::string& value, bool createSection) override {
    if (static_cast<int>(writes.size()) == m_accepted) return false;
    writes.push_back(section + '/' + key + '=' + value);
    return FileObject::SetItem(section, key, value, createSection);
  }

  std::vector<std::string> writes;

 private:
  int m_accepted;
};

FileObject SettingsOf(const std::string& text) {
  FileObject settings;
  ReadFrom(settings, text);
  return settings;
}

ColorTable Opened(const std::string& text) {
  ColorTable table;
  EXPECT_TRUE(table.FileOpen(SettingsOf(text)));
  return table;
}

ColorTable SmallTable() {
  ColorTable table;
  table.SetLowColor(0x030201);
  table.SetLowColorName("low");
  table.AddEntry(-1.5, 0x0000FF, true, "shoal");
  table.AddEntry(2, 0xFF0000, false, "");
  return table;
}

using Writes = std::vector<std::string>;

// --- Saving --------------------------------------------------------------------------------------------------------

TEST(ColorTableFiles, SavesTheLowColourThenEachEntry) {
  const ColorTable table = SmallTable();
  RefusingSettings settings;
  EXPECT_TRUE(table.FileSave(settings));
  EXPECT_EQ(settings.writes, (Writes{"Colors/ALowColor=1, 2, 3", "Names/ALowColor=low",                    //
                                     "Values/0=-1.5", "Colors/0=255, 0, 0", "Locks/0=1", "Names/0=shoal",  //
                                     "Values/1=2", "Colors/1=0, 0, 255", "Locks/1=0", "Names/1="}));
  EXPECT_FALSE(settings.HasSection("DredgeDiff"));
}

TEST(ColorTableFiles, SavesWhatBelongsToDredgingOnlyForADredgeTable) {
  ColorTable table;
  table.SetDredgeDiffColTab(true);
  table.SetSyncWithDesignModel(true);
  RefusingSettings settings;
  EXPECT_TRUE(table.FileSave(settings));
  EXPECT_EQ(settings.writes, (Writes{"Colors/ALowColor=0, 0, 0", "Names/ALowColor=", "DredgeDiff/MaxUnderDredgeColor=128, 128, 128",
                                     "DredgeDiff/MinUnderDredgeColor=192, 192, 192", "DredgeDiff/MaxInToleranceColor=0, 255, 0",
                                     "DredgeDiff/MinInToleranceColor=255, 255, 0", "DredgeDiff/MaxOverDredgeColor=255, 0, 0",
                                     "DredgeDiff/MinOverDredgeColor=200, 0, 0", "DredgeDiff/NumColorsUnderDredge=5",
                                     "DredgeDiff/NumColorsInTolerance=5", "DredgeDiff/NumColorsOverDredge=5",
                                     "DredgeDiff/UnderDredgeLimit=0.5", "DredgeDiff/OverDredgeLimit=-0.5", "DredgeDiff/SyncWithDesign=1"}));
}

TEST(ColorTableFiles, SavingSetsHasOpenedThoughTheTableIsConstant) {
  const ColorTable table = SmallTable();
  EXPECT_FALSE(table.HasOpened());
  FileObject settings;
  EXPECT_TRUE(table.FileSave(settings));
  EXPECT_TRUE(table.HasOpened());
  ColorTable cleared = table;
  cleared.Clear();
  EXPECT_FALSE(cleared.HasOpened());
}

TEST(ColorTableFiles, SavingEndsAtTheFirstFailureAndIgnoresThoseOfDredging) {
  ColorTable table = SmallTable();
  table.SetDredgeDiffColTab(true);
  for (int accepted = 0; accepted < 10; ++accepted) {
    const ColorTable fresh = table;
    RefusingSettings settings(accepted);
    EXPECT_FALSE(fresh.FileSave(settings)) << accepted;
    EXPECT_EQ(static_cast<int>(settings.writes.size()), accepted);
    EXPECT_FALSE(fresh.HasOpened());
    EXPECT_FALSE(settings.HasSection("DredgeDiff"));
  }
  for (int accepted = 10; accepted < 22; ++accepted) {
    const ColorTable fresh = table;
    RefusingSettings settings(accepted);
    EXPECT_TRUE(fresh.FileSave(settings)) << accepted;
    EXPECT_TRUE(settings.HasSection("DredgeDiff"));
  }
}

TEST(ColorTableFiles, RowsOfAnOlderLongerTableStay) {
  ColorTable longer;
  for (int i = 0; i < 4; ++i) longer.AddEntry(i * 10, 7, false, "old");
  FileObject settings;
  EXPECT_TRUE(longer.FileSave(settings));
  EXPECT_TRUE(SmallTable().FileSave(settings));
  ColorTable both;
  EXPECT_TRUE(both.FileOpen(settings));
  ASSERT_EQ(both.NumEntries(), 4);
  EXPECT_EQ(both.EntryValue(1), 2.0);
  EXPECT_EQ(both.EntryValue(2), 20.0);
  EXPECT_EQ(both.EntryName(3), "old");
}

TEST(ColorTableFiles, ForeignKeysOfTheDredgeSectionStay) {
  FileObject settings = SettingsOf("[DredgeDiff]\nMine = 1\n");
  ColorTable table;
  table.SetDredgeDiffColTab(true);
  EXPECT_TRUE(table.FileSave(settings));
  EXPECT_EQ(TextOf(settings, "DredgeDiff", "Mine"), "1");
  EXPECT_EQ(TextOf(settings, "DredgeDiff", "NumColorsOverDredge"), "5");
}

TEST(ColorTableFiles, ATopByteIsNotSaved) {
  ColorTable table;
  table.SetLowColor(0xFF030201);
  FileObject settings;
  table.FileSave(settings);
  EXPECT_EQ(TextOf(settings, "Colors", "ALowColor"), "1, 2, 3");
}

// --- Opening -------------------------------------------------------------------------------------------------------

TEST(ColorTableFiles, OpensWhatItSaved) {
  ColorTable table = SmallTable();
  table.SetDredgeDiffColTab(true);
  table.SetSyncWithDesignModel(true);
  table.SetUnderDredgeLimit(1.25);
  table.SetOverDredgeLimit(-7.5);
  table.SetUnderDredgeColorRange(0x010203, 0x040506, 7);
  table.SetInTolColorRange(0x070809, 0x0A0B0C, 4000000000);
  table.SetOverDredgeColorRange(0x0D0E0F, 0x101112, 0);
  FileObject settings;
  EXPECT_TRUE(table.FileSave(settings));
  const ColorTable again = Opened(WrittenBy(settings));
  ExpectSameTable(again, SecondColorTable(table));
  const SecondColorTable a(table);
  const SecondColorTable b(again);
  EXPECT_EQ(b.under.min, a.under.min);
  EXPECT_EQ(b.under.max, a.under.max);
  EXPECT_EQ(b.under.number, 7u);
  EXPECT_EQ(b.tolerance.max, a.tolerance.max);
  EXPECT_EQ(b.tolerance.number, 4000000000u);
  EXPECT_EQ(b.over.min, a.over.min);
  EXPECT_EQ(b.over.number, 0u);
  EXPECT_EQ(b.underLimit, 1.25);
  EXPECT_EQ(b.overLimit, -7.5);
  bool sync = false;
  again.GetSyncWithDesignModel(sync);
  EXPECT_TRUE(sync);
  EXPECT_TRUE(again.HasDredgeDiffSection());
  EXPECT_TRUE(again.HasOpened());
}

TEST(ColorTableFiles, AnEmptyFileIsAnEmptyTable) {
  ColorTable table = SmallTable();
  table.SetDredgeDiffColTab(true);
  EXPECT_TRUE(table.FileOpen(FileObject()));
  EXPECT_EQ(table.NumEntries(), 0);
  EXPECT_EQ(table.LowColor(), 0u);
  EXPECT_FALSE(table.HasDredgeDiffSection());
  EXPECT_TRUE(table.HasOpened());
}

TEST(ColorTableFiles, OpeningDoesNotClearTheLowColoursName) {
  ColorTable table = SmallTable();
  EXPECT_TRUE(table.FileOpen(SettingsOf("[Values]\n0=1\n[Colors]\n0=1, 1, 1\n")));
  EXPECT_EQ(table.LowColorName(), "low");
  EXPECT_TRUE(table.FileOpen(SettingsOf("[Names]\nALowColor =\n")));
  EXPECT_EQ(table.LowColorName(), "low");
  EXPECT_TRUE(table.FileOpen(SettingsOf("[Names]\nALowColor = new\n")));
  EXPECT_EQ(table.LowColorName(), "new");
}

TEST(ColorTableFiles, AMissingColourEndsWithFalseAndKeepsWhatWasRead) {
  const std::string bad[] = {"", "1=\n", "1=red\n", "1=1, 2\n", "1=1 2 3\n", "1=1 , 2, 3\n", "1=1; 2; 3\n", "1=1, x, 3\n"};
  for (const std::string& row : bad) {
    ColorTable table;
    table.AddEntry(77, 7, true, "goes");
    EXPECT_FALSE(table.FileOpen(SettingsOf("[Colors]\nALowColor=9, 8, 7\n0=1, 2, 3\n" + row +
                                           "[Values]\n0=1\n1=2\n2=3\n[Names]\n0=a\n[DredgeDiff]\nOverDredgeLimit=9\n")));
    ASSERT_EQ(table.NumEntries(), 1) << row;
    EXPECT_EQ(table.EntryValue(0), 1.0);
    EXPECT_EQ(table.EntryColor(0), Rgb(1, 2, 3));
    EXPECT_EQ(table.EntryName(0), "a");
    EXPECT_EQ(table.LowColor(), Rgb(9, 8, 7));
    EXPECT_FALSE(table.HasOpened());
    EXPECT_FALSE(table.HasDredgeDiffSection());
    double limit = 0;
    table.GetOverDredgeLimit(limit);
    EXPECT_EQ(limit, -0.5);
  }
}

TEST(ColorTableFiles, AnEarlyFalseLeavesHasOpenedAndTheDredgeFlag) {
  ColorTable table = Opened("[DredgeDiff]\nOverDredgeLimit=9\n");
  EXPECT_FALSE(table.FileOpen(SettingsOf("[Values]\n0=1\n")));
  EXPECT_TRUE(table.HasOpened());
  EXPECT_TRUE(table.HasDredgeDiffSection());
}

TEST(ColorTableFiles, TheListEndsAtAValueThatIsMissingOrDoesNotParse) {
  for (const char* const value : {"2=\n", "2=x\n", "2=nan\n", "2=inf\n", "", "2=\n3=4\n"}) {
    const std::string front = "[Colors]\n0=1,1,1\n1=2,2,2\n2=3,3,3\n3=4,4,4\n[Values]\n0=1\n1=2e0x\n";
    const ColorTable table = Opened(front + value);
    ASSERT_EQ(table.NumEntries(), 2) << value;
    EXPECT_EQ(table.EntryValue(1), 2.0);
    EXPECT_TRUE(table.HasOpened());
  }
}

TEST(ColorTableFiles, RowsOutOfOrderAreDroppedSilently) {
  const ColorTable table = Opened("[Values]\n0=1\n1=1\n2=0\n3=1e999\n4=5\n[Colors]\n0=1,1,1\n1=2,2,2\n2=3,3,3\n3=4,4,4\n4=5,5,5\n");
  ASSERT_EQ(table.NumEntries(), 2);
  EXPECT_EQ(table.EntryColor(0), Rgb(1, 1, 1));
  EXPECT_EQ(table.EntryValue(1), std::numeric_limits<double>::infinity());
  EXPECT_EQ(table.EntryColor(1), Rgb(4, 4, 4));
}

TEST(ColorTableFiles, NumbersOfAColourGiveTheirLowByte) {
  const ColorTable table = Opened("[Colors]\nALowColor = 300, -1, 511\n0=  +256,4294967297,-256 and more\n[Values]\n0=1\n");
  EXPECT_EQ(table.LowColor(), Rgb(44, 255, 255));
  EXPECT_EQ(table.EntryColor(0), Rgb(0, 1, 0));
}

TEST(ColorTableFiles, ABadLowColourIsBlackAndDoesNotFail) {
  ColorTable table = SmallTable();
  EXPECT_TRUE(table.FileOpen(SettingsOf("[Colors]\nALowColor = 7, 7\n")));
  EXPECT_EQ(table.LowColor(), 0u);
}

TEST(ColorTableFiles, MissingLocksAndNamesAreFalseAndEmpty) {
  const ColorTable table = Opened(
      "[Values]\n0=1\n1=2\n2=3\n[Colors]\n0=1,1,1\n1=2,2,2\n2=3,3,3\n"
      "[Locks]\n0=7\n1=yes\n[Names]\n1= two words \n");
  EXPECT_TRUE(table.EntryLocked(0));
  EXPECT_FALSE(table.EntryLocked(1));
  EXPECT_FALSE(table.EntryLocked(2));
  EXPECT_EQ(table.EntryName(0), "");
  EXPECT_EQ(table.EntryName(1), "two words");
}

TEST(ColorTableFiles, AMissingDredgeColourIsBlackAndAMissingNumberStays) {
  ColorTable table;
  table.SetSyncWithDesignModel(true);
  EXPECT_TRUE(table.FileOpen(SettingsOf("[DredgeDiff]\nNumColorsOverDredge = 0x10\nMinInToleranceColor=1,2,3\nUnderDredgeLimit=?\n")));
  const SecondColorTable second(table);
  EXPECT_EQ(second.under.min, 0u);
  EXPECT_EQ(second.under.max, 0u);
  EXPECT_EQ(second.tolerance.max, 0u);
  EXPECT_EQ(second.tolerance.min, Rgb(1, 2, 3));
  EXPECT_EQ(second.under.number, 5u);
  EXPECT_EQ(second.over.number, 16u);
  EXPECT_EQ(second.underLimit, 0.5);
  EXPECT_EQ(second.overLimit, -0.5);
  bool sync = false;
  table.GetSyncWithDesignModel(sync);
  EXPECT_TRUE(sync);
  EXPECT_TRUE(table.HasDredgeDiffSection());
}

TEST(ColorTableFiles, WithoutADredgeSectionEverythingOfDredgingStays) {
  ColorTable table;
  table.SetUnderDredgeColorRange(1, 2, 3);
  table.SetInTolColorRange(4, 5, 6);
  table.SetOverDredgeColorRange(7, 8, 9);
  EXPECT_TRUE(table.FileOpen(SettingsOf("[Colors]\nALowColor=1,2,3\n")));
  const SecondColorTable second(table);
  EXPECT_EQ(second.under.min, 1u);
  EXPECT_EQ(second.under.max, 2u);
  EXPECT_EQ(second.tolerance.min, 4u);
  EXPECT_EQ(second.tolerance.max, 5u);
  EXPECT_EQ(second.over.min, 7u);
  EXPECT_EQ(second.over.max, 8u);
}

TEST(ColorTableFiles, OpeningNeverThrowsThoughTheSettingsDo) {
  const std::string texts[] = {"",
                               "[Values]\n",
                               "[Values]\n0=x\n",
                               "[Values]\n0=1\n",
                               "[Values]\n0=1\n[Colors]\n0=\n",
                               "[Values]\n0=1\n[Colors]\n0=1,1,1\nALowColor=?\n[Locks]\n0=?\n[Names]\n0=\n",
                               "[DredgeDiff]\nUnderDredgeLimit=?\nNumColorsOverDredge=\nSyncWithDesign=?\n"};
  for (const std::string& text : texts) {
    FileObject quiet = SettingsOf(text);
    FileObject loud = quiet;
    loud.ThrowExceptions(true);
    ColorTable fromQuiet;
    ColorTable fromLoud;
    bool opened = false;
    EXPECT_NO_THROW(opened = fromLoud.FileOpen(loud)) << text;
    EXPECT_EQ(opened, fromQuiet.FileOpen(quiet)) << text;
    ExpectSameTable(fromLoud, SecondColorTable(fromQuiet));
    EXPECT_TRUE(loud.ThrowExceptions());
  }
}

TEST(ColorTableFiles, ADecimalCommaChangesNothing) {
  const CommaLocale comma;
  FileObject settings;
  EXPECT_TRUE(SmallTable().FileSave(settings));
  EXPECT_EQ(TextOf(settings, "Values", "0"), "-1.5");
  ColorTable again;
  EXPECT_TRUE(again.FileOpen(settings));
  EXPECT_EQ(again.EntryValue(0), -1.5);
}

TEST(ColorTableFiles, AGeneratedDredgeTableComesBackWithItsColours) {
  ColorTable table;
  table.SetDredgeDiffColTab(true);
  table.GenerateDredgeDiffColorTable();
  FileObject settings;
  EXPECT_TRUE(table.FileSave(settings));
  ColorTable again;
  EXPECT_TRUE(again.FileOpen(settings));
  ASSERT_EQ(again.NumEntries(), 14);
  for (int i = 0; i < 14; ++i) {
    EXPECT_NEAR(again.EntryValue(i), table.EntryValue(i), 1e-12);
    EXPECT_EQ(again.EntryColor(i), table.EntryColor(i));
  }
}

}  // namespace
