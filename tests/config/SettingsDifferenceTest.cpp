#include "zelbase/config/SettingsDifference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "tests/config/SettingsTestHelp.h"

void PrintTo(const SettingsChange& change, std::ostream* stream) {
  *stream << static_cast<int>(change.kind) << " [" << change.section << "] " << change.key << ": " << change.oldValue << " -> "
          << change.newValue;
}

namespace {

using Kind = SettingsChangeKind;

FileObject Read(const std::string& text) {
  FileObject settings;
  ReadFrom(settings, text);
  return settings;
}

std::vector<std::string> Places(const SettingsChanges& changes) {
  std::vector<std::string> places;
  for (const SettingsChange& change : changes) places.push_back(change.section + "/" + change.key);
  return places;
}

TEST(SettingsDifference, ListsWhatWasAddedChangedAndRemoved) {
  EXPECT_EQ(ListSettingsChanges(Read("[A]\nx=2\ny=3\nsame=1\n[N]\nn=\n"), Read("[A]\nx=1\nz=4\nsame=1\n[O]\no=5\n")),
            (SettingsChanges{{Kind::Changed, "A", "x", "1", "2"},
                             {Kind::Added, "A", "y", "", "3"},
                             {Kind::Removed, "A", "z", "4", ""},
                             {Kind::Added, "N", "n", "", ""},
                             {Kind::Removed, "O", "o", "5", ""}}));
}

TEST(SettingsDifference, OfAFileAndItselfIsEmpty) {
  const FileObject settings = Read("x\n[A]\nx=2\n[B]\n");
  EXPECT_TRUE(ListSettingsChanges(settings, settings).empty());
  EXPECT_TRUE(ListSettingsChanges(FileObject(), FileObject()).empty());
  EXPECT_TRUE(ListDifference(FileObject(), settings).empty());
}

TEST(SettingsDifference, SectionsThatAreOnlyThereEmptyExtraLinesAndChecksumsAreNotListed) {
  FileObject newer;
  FileObject older;
  ReadFrom(newer, "new\n[Empty]\n[Checksum]\nChecksum=1\n");
  ReadFrom(older, "[Hollow]\n[Checksum]\nChecksum=2\n");
  EXPECT_TRUE(ListSettingsChanges(newer, older).empty());
  EXPECT_FALSE(newer == older);
}

TEST(SettingsDifference, ValuesThatChangeByThemselvesAreNotListed) {
  EXPECT_EQ(ListSettingsChanges(Read("[A]\n@tr.x=8192, 2\n@tr.y=1\n@tr.z=8192\n"), Read("[A]\n@tr.x=8192, 1\n@tr.y=8192\n")),
            (SettingsChanges{{Kind::Changed, "A", "@tr.y", "8192", "1"}, {Kind::Added, "A", "@tr.z", "", "8192"}}));
}

TEST(SettingsDifference, IsSortedWithoutRegardToCaseAndThenByBytes) {
  const FileObject newer = Read("[b]\nk=1\n[B]\nk=1\n[A]\nb=1\nB=1\na=1\nAa=1\n\xB0=1\n_=1\n[]\nk=1\n[a b]\nk=1\n");
  EXPECT_EQ(Places(ListSettingsChanges(newer, FileObject())),
            (std::vector<std::string>{"/k", "A/_", "A/a", "A/Aa", "A/B", "A/b", "A/\xB0", "a b/k", "B/k", "b/k"}));
}

TEST(SettingsDifference, TheOrderDoesNotDependOnTheOrderOfTheFiles) {
  std::vector<std::string> lines = {"[A]\nx=1\ny=2\n", "[A]\nz=3\nX=4\n", "[B]\nx=1\n", "[a]\nw=1\n", "[C.D]\nv=1\n"};
  const FileObject older = Read("[B]\nx=0\n[Z]\nz=1\n");
  const SettingsChanges expected = ListSettingsChanges(Read("[A]\nx=1\ny=2\nz=3\nX=4\n[B]\nx=1\n[a]\nw=1\n[C.D]\nv=1\n"), older);
  EXPECT_EQ(expected.size(), 8U);
  std::mt19937 random(3);
  for (int round = 0; round < 20; ++round) {
    std::shuffle(lines.begin(), lines.end(), random);
    std::string text;
    for (const std::string& line : lines) text += line;
    EXPECT_EQ(ListSettingsChanges(Read(text), older), expected) << text;
  }
}

TEST(SettingsDifference, SectionsKeepTheirTrueNames) {
  // Written down as a difference, these would be other sections.
  const FileObject newer = Read("[My.Section]\nk=2\n[add.X]\nk=1\n[.]\nk=1\n");
  const FileObject older = Read("[My.Section]\nk=1\n[remove.X]\nk=1\n");
  EXPECT_EQ(ListSettingsChanges(newer, older), (SettingsChanges{{Kind::Added, ".", "k", "", "1"},
                                                                {Kind::Added, "add.X", "k", "", "1"},
                                                                {Kind::Changed, "My.Section", "k", "1", "2"},
                                                                {Kind::Removed, "remove.X", "k", "1", ""}}));
  FileObject same = newer;
  EXPECT_TRUE(ListSettingsChanges(newer, same).empty());
}

TEST(SettingsDifference, ListsADifferenceAsItIsApplied) {
  const FileObject older = Read("[A]\nx=1\nz=4\n[My]\nk=0\n");
  const FileObject difference =
      Read("[A]\nx=2\n[add.A]\ny=3\n[ change . A ]\nx=2\n[remove.A]\nz=4\n[change.My.Section]\nk=1\n[add]\nq=1\n[other.A]\nq=1\n");
  EXPECT_EQ(ListDifference(difference, older), (SettingsChanges{{Kind::Changed, "A", "x", "1", "2"},
                                                                {Kind::Added, "A", "y", "", "3"},
                                                                {Kind::Removed, "A", "z", "4", ""},
                                                                {Kind::Changed, "My", "k", "0", "1"}}));
}

TEST(SettingsDifference, AnotherFileGivesTheOldValuesThatItHas) {
  const FileObject difference = Read("[add.A]\nx=1\n[change.A]\ny=2\n[change.B]\ny=2\n[remove.A]\nz=3\nw=4\n");
  EXPECT_EQ(ListDifference(difference, Read("[A]\nx=0\nz=9\n[B]\ny=7\n")), (SettingsChanges{{Kind::Removed, "A", "w", "4", ""},
                                                                                            {Kind::Added, "A", "x", "", "1"},
                                                                                            {Kind::Changed, "A", "y", "", "2"},
                                                                                            {Kind::Removed, "A", "z", "9", ""},
                                                                                            {Kind::Changed, "B", "y", "7", "2"}}));
}

TEST(SettingsDifference, SeveralOperationsOnOneItemAreAllListed) {
  const FileObject difference = Read("[remove.A]\nx=1\n[change.A.b]\nx=3\n[change.A]\nx=2\n[add.A.]\nx=4\n");
  EXPECT_EQ(ListDifference(difference, FileObject()), (SettingsChanges{{Kind::Added, "A", "x", "", "4"},
                                                                       {Kind::Changed, "A", "x", "", "2"},
                                                                       {Kind::Changed, "A", "x", "", "3"},
                                                                       {Kind::Removed, "A", "x", "1", ""}}));
}

TEST(SettingsDifference, NeitherThrowsNorTouchesAStatus) {
  FileObject newer = Read("[A]\nk=2\n[Left]\nk=1\n");
  FileObject older = Read("[A]\nk=1\nl=1\n[Left]\nk=1\n");
  FileObject difference = Read("[change.B]\nk=1\n[Left]\nk=1\n");
  for (FileObject* settings : {&newer, &older, &difference}) {
    settings->DeleteItem("Left", "none", false);
    settings->ThrowExceptions(true);
  }
  EXPECT_NO_THROW(EXPECT_EQ(ListSettingsChanges(newer, older).size(), 2U));
  EXPECT_NO_THROW(EXPECT_EQ(ListDifference(difference, older).size(), 1U));
  for (const FileObject* settings : {&newer, &older, &difference}) EXPECT_EQ(settings->GetErrorStatus(), 7);
}

TEST(SettingsDifference, BothListsAgreeWhereNamesAreOrdinary) {
  std::mt19937 random(11);
  const auto make = [&random] {
    FileObject settings;
    for (int i = 0; i < 12; ++i) {
      const auto bits = static_cast<unsigned int>(random());
      settings.SetItem(std::string(1, static_cast<char>('A' + bits % 3U)), "k" + std::to_string(bits / 3U % 6U),
                       std::to_string(bits / 18U % 3U), true);
    }
    return settings;
  };
  std::size_t listed = 0;
  for (int round = 0; round < 500; ++round) {
    const FileObject newer = make();
    const FileObject older = make();
    FileObject difference;
    newer.GetDifference(older, difference);
    const SettingsChanges changes = ListSettingsChanges(newer, older);
    ASSERT_EQ(changes, ListDifference(difference, older));
    // Each change, done by hand, leads from the older file to the newer one.
    Picture picture = PictureOf(older);
    for (const SettingsChange& change : changes) {
      Items& items = picture[change.section];
      ASSERT_EQ(items.count(change.key), change.kind == Kind::Added ? 0U : 1U);
      ASSERT_EQ(items[change.key], change.oldValue);
      if (change.kind == Kind::Removed) {
        items.erase(change.key);
      } else {
        items[change.key] = change.newValue;
      }
      if (items.empty()) picture.erase(change.section);
    }
    ASSERT_EQ(picture, PictureOf(newer));
    listed += changes.size();
  }
  EXPECT_GT(listed, 2000U);
}

}  // namespace
