// Sections: making, deleting, renaming, copying; whole objects as values.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/config/SettingsTestHelp.h"

namespace {

FileObject Read(const std::string& text) {
  FileObject settings;
  ReadFrom(settings, text);
  return settings;
}

TEST(FileObjectSections, CreateSectionTakesWhatIsThereOrReplacesIt) {
  FileObject settings = Read("[A]\nk=1\n");
  EXPECT_TRUE(settings.CreateSection("A", false));
  EXPECT_EQ(settings.GetNumItems("A"), 1);
  EXPECT_TRUE(settings.CreateSection("A", true));
  EXPECT_EQ(settings.GetNumItems("A"), 0);
  EXPECT_TRUE(settings.CreateSection("B", true));
  EXPECT_EQ(settings.GetNumSections(), 2);
}

TEST(FileObjectSections, CreateSectionSelectsAndLeavesIsValid) {
  FileObject settings = Read("[A]\nk=1\n");
  FobjSection cursor;
  std::string key;
  std::string value;
  EXPECT_TRUE(settings.CreateSection(cursor, "A", false));
  EXPECT_FALSE(cursor.IsValid());
  EXPECT_TRUE(settings.GetNextMapEntry(cursor, key, value));
  EXPECT_EQ(key + value, "k1");
  EXPECT_FALSE(settings.GetNextMapEntry(cursor, key, value));
  settings.GetFirstMapEntry(cursor, "A", key, value);
  EXPECT_TRUE(cursor.IsValid());
  settings.CreateSection(cursor, "B", false);
  EXPECT_TRUE(cursor.IsValid());
  EXPECT_FALSE(settings.GetNextMapEntry(cursor, key, value));
}

TEST(FileObjectSections, DeleteSectionStatuses) {
  FileObject settings;
  EXPECT_FALSE(settings.DeleteSection("A"));
  EXPECT_EQ(settings.GetErrorStatus(), 2);
  settings.CreateSection("B", false);
  EXPECT_FALSE(settings.DeleteSection("A"));
  EXPECT_EQ(settings.GetErrorStatus(), 4);
  EXPECT_TRUE(settings.DeleteSection("B"));
  EXPECT_EQ(settings.GetErrorStatus(), 0);
  EXPECT_EQ(settings.GetNumSections(), 0);
}

TEST(FileObjectSections, DeletingTheSelectedSectionSelectsTheFirstOtherOneWithoutAnItem) {
  FileObject settings = Read("[A]\nk=1\n[B]\nl=2\n");
  FobjSection cursor;
  std::string key;
  std::string value;
  settings.GetFirstMapEntry(cursor, "A", key, value);
  EXPECT_TRUE(settings.DeleteSection(cursor, "A"));
  EXPECT_TRUE(cursor.IsValid());
  EXPECT_FALSE(settings.GetNextMapEntry(cursor, key, value));
  EXPECT_EQ(key + value, "");
  // It is B that is selected now: deleting it through the cursor is the last deletion.
  EXPECT_TRUE(settings.DeleteSection(cursor, "B"));
  EXPECT_FALSE(settings.GetNextMapEntry(cursor, key, value));
}

TEST(FileObjectSections, RenameSection) {
  FileObject settings;
  EXPECT_FALSE(settings.RenameSection("A", "B"));
  EXPECT_EQ(settings.GetErrorStatus(), 2);
  ReadFrom(settings, "[A]\nk=1\n[B]\nl=2\n");
  EXPECT_FALSE(settings.RenameSection("C", "D"));
  EXPECT_EQ(settings.GetErrorStatus(), 4);
  EXPECT_TRUE(settings.RenameSection("A", "A"));
  EXPECT_EQ(PictureOf(settings), (Picture{{"A", {{"k", "1"}}}, {"B", {{"l", "2"}}}}));
  EXPECT_TRUE(settings.RenameSection("A", "C"));
  EXPECT_EQ(PictureOf(settings), (Picture{{"C", {{"k", "1"}}}, {"B", {{"l", "2"}}}}));
}

TEST(FileObjectSections, RenamingReplacesASectionOfTheNewNameAndDoesNotMerge) {
  FileObject settings = Read("[A]\nk=1\n[B]\nl=2\n");
  EXPECT_TRUE(settings.RenameSection("A", "B"));
  EXPECT_EQ(PictureOf(settings), (Picture{{"B", {{"k", "1"}}}}));
  EXPECT_EQ(settings.GetErrorStatus(), 0);
}

TEST(FileObjectSections, CopySectionOfOneNameMerges) {
  FileObject settings = Read("[A]\nx=1\ny=1\n");
  const FileObject source = Read("[A]\ny=2\nz=2\n[B]\n");
  EXPECT_TRUE(settings.CopySection("A", source));
  EXPECT_EQ(ItemsOf(settings, "A"), (Items{{"x", "1"}, {"y", "2"}, {"z", "2"}}));
  EXPECT_TRUE(settings.CopySection("B", source));
  EXPECT_TRUE(settings.HasSection("B"));
  EXPECT_FALSE(settings.CopySection("C", source));
  EXPECT_FALSE(settings.HasSection("C"));
  EXPECT_TRUE(settings.CopySection("A", settings));
  EXPECT_EQ(settings.GetNumItems("A"), 3);
}

TEST(FileObjectSections, CopySectionOfTwoNamesLeavesExactlyTheSourcesItems) {
  FileObject settings = Read("[A]\nx=1\n[T]\nold=1\n");
  EXPECT_TRUE(settings.CopySection("T", settings, "A"));
  EXPECT_EQ(ItemsOf(settings, "T"), (Items{{"x", "1"}}));
  EXPECT_TRUE(settings.CopySection("New", settings, "A"));
  EXPECT_EQ(ItemsOf(settings, "New"), (Items{{"x", "1"}}));
  const Picture before = PictureOf(settings);
  EXPECT_FALSE(settings.CopySection("T", settings, "none"));
  EXPECT_FALSE(settings.CopySection("U", settings, "none"));
  EXPECT_EQ(PictureOf(settings), before);
}

TEST(FileObjectSections, AWalkOverASectionThatWasNewDeliversNothingOfWhatIsCopiedIntoIt) {
  const FileObject source = Read("[A]\nx=1\ny=2\n");
  FileObject settings;
  FobjSection cursor;
  std::string key;
  std::string value;
  settings.CreateSection(cursor, "A", false);
  EXPECT_TRUE(settings.CopySection("A", source));
  EXPECT_FALSE(settings.GetNextMapEntry(cursor, key, value));
  EXPECT_EQ(ItemsOf(settings, "A"), (Items{{"x", "1"}, {"y", "2"}}));
}

TEST(FileObjectSections, ACopyOfASectionFromWhichMuchWasDeletedWorksLikeAnyOther) {
  FileObject source;
  for (int i = 0; i < 40; ++i) source.SetItem("A", "k" + std::to_string(i), std::to_string(i), true);
  for (int i = 0; i < 20; ++i) source.DeleteItem("A", "k" + std::to_string(i), false);
  source.SetItem("A", "k30", std::string(100, 'x'), true);
  FileObject settings;
  settings.CopySection("A", source);
  const FileObject copy(source);
  EXPECT_EQ(PictureOf(settings), PictureOf(source));
  EXPECT_EQ(PictureOf(copy), PictureOf(source));
  settings.SetItem("A", "k5", "again", true);
  settings.SetItem("A", "k31", std::string(100, 'y'), true);
  EXPECT_TRUE(settings.DeleteItem("A", "k32", false));
  EXPECT_EQ(settings.GetNumItems("A"), 20);
  EXPECT_EQ(TextOf(settings, "A", "k5"), "again");
  EXPECT_EQ(TextOf(settings, "A", "k31"), std::string(100, 'y'));
  EXPECT_EQ(TextOf(source, "A", "k31"), "31");
  EXPECT_EQ(source.GetNumItems("A"), 20);
}

TEST(FileObjectSections, ASectionCopiedOntoItselfByTwoNamesEndsEmpty) {
  FileObject settings = Read("[A]\nx=1\n");
  EXPECT_TRUE(settings.CopySection("A", settings, "A"));
  EXPECT_EQ(PictureOf(settings), (Picture{{"A", {}}}));
}

TEST(FileObjectSections, TheChecksumSectionCanBeCopiedByName) {
  const FileObject source = Read("[Checksum]\nChecksum=5\n");
  FileObject settings;
  EXPECT_TRUE(settings.CopySection("Checksum", source));
  EXPECT_EQ(TextOf(settings, "Checksum", "Checksum"), "5");
}

TEST(FileObjectSections, TheChecksumSectionIsCountedAndNotEnumerated) {
  const FileObject settings = Read("[Checksum]\nChecksum=5\n");
  EXPECT_EQ(FileObject::CHECKSUM_SECTION, "Checksum");
  EXPECT_EQ(settings.GetNumSections(), 1);
  EXPECT_TRUE(settings.HasSection("Checksum"));
  EXPECT_TRUE(SectionNames(settings).empty());
  const FileObject more = Read("[A]\n[Checksum]\n[checksum]\n");
  EXPECT_EQ(more.GetNumSections(), 3);
  EXPECT_EQ(SectionNames(more).size(), 2U);
}

TEST(FileObjectSections, ACopyHasAllButTheChecksum) {
  FileObject settings = Read("first\n[A]\nk=1\n[Checksum]\nChecksum=5\n");
  settings.SetFileName("C:\\x.ini");
  settings.ThrowExceptions(true);
  settings.DeleteItem("A", "none", false);
  const FileObject copy(settings);
  EXPECT_EQ(PictureOf(copy), (Picture{{"A", {{"k", "1"}}}}));
  EXPECT_EQ(copy.GetExtraInfo(), settings.GetExtraInfo());
  EXPECT_EQ(copy.GetFileName(), "C:\\x.ini");
  EXPECT_TRUE(copy.ThrowExceptions());
  EXPECT_EQ(copy.GetErrorStatus(), 7);
  EXPECT_EQ(settings.GetNumSections(), 2);
}

TEST(FileObjectSections, AfterALookForAMissingSectionNoItemIsNext) {
  const FileObject settings = Read("[A]\nk=1\nl=2\n");
  FobjSection cursor;
  std::string key, value;
  EXPECT_TRUE(settings.GetFirstMapEntry(cursor, "A", key, value));
  EXPECT_FALSE(settings.GetFirstMapEntry(cursor, "none", key, value));
  EXPECT_FALSE(settings.GetNextMapEntry(cursor, key, value));
  EXPECT_EQ(key, "");
}

TEST(FileObjectSections, ACopyIsIndependent) {
  FileObject settings = Read("[A]\nk=1\n");
  FileObject copy;
  copy.SetItem("B", "old", "1", true);
  copy = settings;
  copy.SetItem("A", "k", "2", true);
  EXPECT_EQ(TextOf(settings, "A", "k"), "1");
  EXPECT_EQ(PictureOf(copy), (Picture{{"A", {{"k", "2"}}}}));
}

TEST(FileObjectSections, SelfAssignmentEmptiesTheObject) {
  FileObject settings = Read("x\n[A]\nk=1\n");
  settings.SetFileName("name");
  FileObject& same = settings;
  settings = same;
  EXPECT_EQ(settings.GetNumSections(), 0);
  EXPECT_TRUE(settings.GetExtraInfo().empty());
  EXPECT_EQ(settings.GetFileName(), "name");
  EXPECT_EQ(settings.GetErrorStatus(), 0);
}

TEST(FileObjectSections, MakeEmptyKeepsTheFileName) {
  FileObject settings = Read("x\n[A]\nk=1\n");
  settings.SetFileName("name");
  settings.DeleteSection("none");
  settings.MakeEmpty();
  EXPECT_EQ(settings.GetNumSections(), 0);
  EXPECT_EQ(settings.GetErrorStatus(), 0);
  EXPECT_EQ(settings.GetFileName(), "name");
  settings.FileClose();
  EXPECT_EQ(settings.GetFileName(), "");
}

TEST(FileObjectSections, GetFileTitleCutsAtTheLastDotEvenOfAFolder) {
  const struct {
    const char* name;
    const char* title;
  } rows[] = {
      {"", ""},
      {"a", "a"},
      {"a.ini", "a"},
      {"C:\\x\\a.ini", "a"},
      {"C:a.ini", "a"},
      {"C:\\a.b\\file", "a"},
      {".ini", ".ini"},
      {"a.b.c", "a.b"},
      {"C:\\x\\.ini", ""},
      {"/tmp/a.ini", "/tmp/a"},
      {"C:\\x\\", ""},
      {"..", "."},
      {"a:b\\c:d.e", "d"},
      {"C:\\a:b\\c", "c"},
  };
  for (const auto& row : rows) {
    FileObject settings;
    settings.SetFileName(row.name);
    EXPECT_EQ(settings.GetFileTitle(), row.title) << row.name;
  }
}

class Opened : public FileObject {
 public:
  using FileObject::HasEqualItems;
  using FileObject::ReportError;
  using FileObject::SelectSectionNT;
  using FileObject::SetReadStatus;
  using FileObject::SetSection;
};

TEST(FileObjectSections, WhatSubclassesAreGiven) {
  Opened settings;
  FobjSection cursor;
  std::string key;
  std::string value;
  EXPECT_FALSE(settings.FileInitialised());
  settings.SetReadStatus(true);
  EXPECT_TRUE(settings.FileInitialised());
  EXPECT_FALSE(settings.ReportError("a"));
  EXPECT_FALSE(settings.ReportError("a", "b"));
  settings.DeleteSection("none");
  EXPECT_FALSE(settings.SelectSectionNT(cursor, "A"));
  EXPECT_EQ(settings.GetErrorStatus(), 2);
  EXPECT_TRUE(settings.SetSection(cursor, "A"));
  EXPECT_TRUE(settings.HasSection("A"));
  settings.SetItem("A", "k", "v", true);
  EXPECT_TRUE(settings.SelectSectionNT(cursor, "A"));
  EXPECT_TRUE(cursor.IsValid());
  EXPECT_TRUE(settings.GetNextMapEntry(cursor, key, value));
  EXPECT_EQ(key + value, "kv");
}

TEST(FileObjectSections, ASubclassIsToldThatASectionWhichOneOfThemLacksIsNotEqual) {
  Opened with;
  const Opened without;
  with.SetItem("A", "k", "v", true);
  EXPECT_FALSE(with.HasEqualItems("A", without));
  EXPECT_FALSE(without.HasEqualItems("A", with));
  EXPECT_FALSE(without.HasEqualItems("A", without));
  EXPECT_TRUE(with.HasEqualItems("A", with));
  EXPECT_EQ(without.GetErrorStatus(), 0);
}

}  // namespace
