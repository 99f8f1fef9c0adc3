// Comparison of two stores, the difference between them, and applying it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/config/SecondDifference.h"
#include "tests/config/SettingsTestHelp.h"
#include "tests/support/TemporaryFolder.h"
#include "zelbase/config/FileSection.h"

namespace {

FileObject Read(const std::string& text) {
  FileObject settings;
  ReadFrom(settings, text);
  return settings;
}

// As Read, with the checksum, which a copy would lose.
struct Whole : FileObject {
  explicit Whole(const std::string& text) { ReadFrom(*this, text); }
};

FileObject FromPicture(const Picture& picture) {
  FileObject settings;
  for (const auto& [name, items] : picture) {
    settings.CreateSection(name, false);
    for (const auto& [key, value] : items) settings.SetItem(name, key, value, true);
  }
  return settings;
}

Picture DifferenceOf(const FileObject& newer, const FileObject& older) {
  FileObject difference;
  EXPECT_TRUE(newer.GetDifference(older, difference));
  return PictureOf(difference);
}

bool HasDifferences(const FileObject& difference) { return FileObject().HasDifferences(difference); }

// Gives the object a status that no operation leaves by success.
void LeaveStatus7(FileObject& settings) {
  settings.SetItem("Left", "k", "1", true);
  settings.DeleteItem("Left", "none", false);
}

// --- Equality ------------------------------------------------------------------------------------------------------

TEST(FileObjectEquality, TheLastExtraLineDoesNotCount) {
  EXPECT_TRUE(Read("a\nb\n[A]\nk=1\n") == Read("a\nc\n[A]\nk=1\n"));
  EXPECT_FALSE(Read("a\nb\n[A]\nk=1\n") == Read("c\nb\n[A]\nk=1\n"));
  EXPECT_TRUE(Read("a\n[A]\n") == Read("b\n[A]\n"));
  EXPECT_FALSE(Read("a\n[A]\n") == Read("[A]\n"));
  EXPECT_FALSE(Read("a\n[A]\n") == Read("a\na\n[A]\n"));
  EXPECT_FALSE(Read("a\nb\nc\n") == Read("a\nB\nc\n"));
}

TEST(FileObjectEquality, WithoutAnyLineThereIsNoLineToCompare) {
  EXPECT_TRUE(FileObject() == FileObject());
  EXPECT_FALSE(FileObject() != FileObject());
  EXPECT_TRUE(Read("[A]\nk=1\n") == Read("[A]\nk = 1\n\n"));
}

TEST(FileObjectEquality, AChecksumIsCountedButNotCompared) {
  const Whole plain("[A]\nk=1\n");
  const Whole one("[A]\nk=1\n[Checksum]\nChecksum=5\n");
  const Whole other("[A]\nk=1\n[Checksum]\nChecksum=6\nIntegrity=7\n");
  EXPECT_FALSE(plain == one);
  EXPECT_FALSE(one == plain);
  EXPECT_TRUE(one == other);
  EXPECT_TRUE(other == one);
}

TEST(FileObjectEquality, IsNotSymmetricWhenAChecksumStandsInForASection) {
  const Whole withChecksum("[A]\nk=1\n[Checksum]\nChecksum=5\n");
  const Whole withSection("[A]\nk=1\n[B]\nl=2\n");
  EXPECT_TRUE(withChecksum == withSection);
  EXPECT_FALSE(withSection == withChecksum);
  EXPECT_FALSE(withChecksum != withSection);
  EXPECT_TRUE(withSection != withChecksum);
}

TEST(FileObjectEquality, SectionsKeysAndValuesAreComparedExactly) {
  const FileObject a = Read("[A]\nk=1\nl=\n[B]\n");
  EXPECT_TRUE(a == Read("[B]\n[A]\nl=\nk=1\n"));
  for (const char* const other :
       {"", "[A]\nk=1\nl=\n", "[A]\nk=1\nl=\n[C]\n", "[a]\nk=1\nl=\n[B]\n", "[A]\nK=1\nl=\n[B]\n", "[A]\nk=1\n[B]\n",
        "[A]\nk=1\nl=\nm=\n[B]\n", "[A]\nk=2\nl=\n[B]\n", "[A]\nk=1\nm=\n[B]\n", "[A]\nk=1 1\nl=\n[B]\n", "[A]\nk=1\nl=1\n[B]\n",
        "[A]\nk=1\nl=\n[B]\nx=1\n", "[A]\nk=1\nl=\n[B]\n[C]\n"}) {
    EXPECT_FALSE(a == Read(other)) << other;
    EXPECT_FALSE(Read(other) == a) << other;
    EXPECT_TRUE(a != Read(other)) << other;
  }
}

TEST(FileObjectEquality, NamesFlagsContextAndStatusDoNotCount) {
  FileObject a = Read("[A]\nk=1\n");
  FileObject b = a;
  b.SetFileName("other");
  b.ThrowExceptions(true);
  b.SetErrorContext("Other");
  b.DeleteItem("A", "none", false);
  EXPECT_TRUE(a == b);
  EXPECT_TRUE(b == a);
}

TEST(FileObjectEquality, NeitherThrowsNorTouchesAStatus) {
  FileObject a = Read("[A]\nk=1\n[Left]\nk=1\n");
  FileObject b = Read("[A]\nl=1\n[Left]\nk=1\n");
  LeaveStatus7(a);
  LeaveStatus7(b);
  a.ThrowExceptions(true);
  b.ThrowExceptions(true);
  EXPECT_NO_THROW(EXPECT_FALSE(a == b));
  EXPECT_NO_THROW(EXPECT_TRUE(a != b));
  EXPECT_TRUE(a == FileObject(a));
  EXPECT_EQ(a.GetErrorStatus(), 7);
  EXPECT_EQ(b.GetErrorStatus(), 7);
}

TEST(FileObjectEquality, AnObjectEqualsItself) {
  const Whole settings("x\ny\n[A]\nk=1\n[Checksum]\nk=1\n[]\n");
  EXPECT_TRUE(settings == settings);
  EXPECT_FALSE(settings != settings);
}

TEST(FileObjectEquality, ASectionAndAStoreCompareAsStoresTheLeftOneAsking) {
  FileSection section;
  section.GetFromFileObject("A", Read("[A]\nk=1\n"));
  section.CreateSection("Checksum", false);
  FileObject store = Read("[A]\nk=1\n[B]\n");
  EXPECT_TRUE(section == store);
  EXPECT_FALSE(section != store);
  EXPECT_FALSE(store == section);
  EXPECT_TRUE(store != section);
  store.DeleteSection("B");
  store.CreateSection("Checksum", false);
  EXPECT_TRUE(store == section);
  // Two sections compare by their names and items still.
  FileSection same;
  same.GetFromFileObject("A", store);
  EXPECT_TRUE(section == same);
  EXPECT_FALSE(static_cast<const FileObject&>(section) == same);
}

TEST(FileObjectEquality, ObjectsOfASubclassCompareAsStores) {
  Whole a("[A]\n");
  Whole b("[A]\n");
  EXPECT_TRUE(a == b);
  EXPECT_FALSE(a != b);
  EXPECT_TRUE(a == Read("[A]\n"));
  EXPECT_TRUE(Read("[A]\n") == a);
}

// --- Making a difference -------------------------------------------------------------------------------------------

TEST(FileObjectDifference, TheThreeOperationsBesideThePlainCopy) {
  EXPECT_EQ(DifferenceOf(Read("[A]\nx=2\ny=3\n"), Read("[A]\nx=1\nz=4\n")),
            (Picture{{"A", {{"x", "2"}, {"y", "3"}}}, {"add.A", {{"y", "3"}}}, {"change.A", {{"x", "2"}}}, {"remove.A", {{"z", "4"}}}}));
}

TEST(FileObjectDifference, OfAFileAndItselfHasThePlainCopiesOnly) {
  const FileObject settings = Read("[A]\nx=1\n[B]\n[C]\n@tr.k=1\n");
  FileObject difference;
  EXPECT_TRUE(settings.GetDifference(settings, difference));
  EXPECT_EQ(PictureOf(difference), (Picture{{"A", {{"x", "1"}}}, {"B", {}}, {"C", {{"@tr.k", "1"}}}}));
  EXPECT_FALSE(HasDifferences(difference));
}

TEST(FileObjectDifference, ANewSectionIsAddedItemByItem) {
  EXPECT_EQ(DifferenceOf(Read("[A]\nx=1\ny=\n"), FileObject()),
            (Picture{{"A", {{"x", "1"}, {"y", ""}}}, {"add.A", {{"x", "1"}, {"y", ""}}}}));
}

TEST(FileObjectDifference, AGoneSectionIsRemovedItemByItemAndSoAsAWhole) {
  const FileObject newer = Read("[B]\ny=1\n");
  FileObject older = Read("[A]\nx=1\nw=\n[B]\ny=1\n");
  FileObject difference;
  newer.GetDifference(older, difference);
  EXPECT_EQ(PictureOf(difference), (Picture{{"B", {{"y", "1"}}}, {"remove.A", {{"x", "1"}, {"w", ""}}}}));
  EXPECT_TRUE(older.ApplyDifference(difference));
  EXPECT_EQ(PictureOf(older), (Picture{{"B", {{"y", "1"}}}}));
}

TEST(FileObjectDifference, ValuesAndKeysAreComparedExactly) {
  EXPECT_EQ(DifferenceOf(Read("[A]\nk=a\nl=\n"), Read("[A]\nk=A\nL=\n")),
            (Picture{{"A", {{"k", "a"}, {"l", ""}}}, {"add.A", {{"l", ""}}}, {"change.A", {{"k", "a"}}}, {"remove.A", {{"L", ""}}}}));
  // From an empty value and to one.
  EXPECT_EQ(DifferenceOf(Read("[A]\nk=\nl=1\n"), Read("[A]\nk=1\nl=\n"))["change.A"], (Items{{"k", ""}, {"l", "1"}}));
}

TEST(FileObjectDifference, EmptySectionsExtraLinesAndTheChecksumDoNotTravel) {
  const Whole newer("new\nlines\n[A]\nk=1\n[Empty]\n[Checksum]\nChecksum=1\n");
  const Whole older("[A]\nk=1\n[Hollow]\n");
  EXPECT_EQ(DifferenceOf(newer, older), (Picture{{"A", {{"k", "1"}}}, {"Empty", {}}}));
  EXPECT_EQ(DifferenceOf(older, newer), (Picture{{"A", {{"k", "1"}}}, {"Hollow", {}}}));
  FileObject target(older);
  FileObject difference;
  newer.GetDifference(older, difference);
  EXPECT_TRUE(difference.GetExtraInfo().empty());
  EXPECT_TRUE(target.ApplyDifference(difference));
  EXPECT_FALSE(target == newer);
  EXPECT_EQ(target, older);
}

TEST(FileObjectDifference, AValueWithTheFlagChangesByItselfAndIsNotReported) {
  const struct {
    const char* key;
    const char* value;
    bool reported;
  } rows[] = {
      {"@tr.x", "8192, 1", false}, {"@tr.x", "8193, 1", false},    {"@tr.x", "1, 2", true},       {"@tr.x", "abc", true},
      {"@tr.x", "", true},         {"@tr.x", "0x2000", true},      {"@tr.x", "8192abc", false},   {"@tr.x", "  +8192 ,1", false},
      {"@tr.x", "1, 8192", true},  {"@tr.x", ",8192", true},       {"@tr.x", "16384", true},      {"@tr.x", "16383", false},
      {"@tr.x", "-1", false},      {"@tr.x", "4294975488", false}, {"@tr.x", "4294967296", true}, {"@tr.x", "8192", false},
      {"@tr.", "8192", false},     {"@tr", "8192", true},          {"@TR.x", "8192", true},       {"x@tr.", "8192", true},
      {"x", "8192, 1", true},      {"@tr.x", "- 8192", true},      {"@tr.x", "8 192", true},      {"@tr.x", "12288", false},
  };
  for (const auto& row : rows) {
    Picture expected{{"A", {{row.key, row.value}}}};
    if (row.reported) expected["change.A"] = {{row.key, row.value}};
    const FileObject newer = FromPicture({{"A", {{row.key, row.value}}}});
    EXPECT_EQ(DifferenceOf(newer, FromPicture({{"A", {{row.key, "other"}}}})), expected) << row.key << " = " << row.value;
    // It is the new value that says so.
    EXPECT_EQ(DifferenceOf(FromPicture({{"A", {{row.key, "1"}}}}), newer).count("change.A"), 1U) << row.key << " = " << row.value;
  }
}

TEST(FileObjectDifference, TheFlagSparesChangedItemsOnlyNotNewOrGoneOnes) {
  const FileObject flagged = Read("[A]\n@tr.x=8192\n[B]\n@tr.y=8192\n");
  const FileObject without = Read("[A]\n");
  EXPECT_EQ(DifferenceOf(flagged, without)["add.A"], (Items{{"@tr.x", "8192"}}));
  EXPECT_EQ(DifferenceOf(flagged, without)["add.B"], (Items{{"@tr.y", "8192"}}));
  EXPECT_EQ(DifferenceOf(without, flagged)["remove.A"], (Items{{"@tr.x", "8192"}}));
  EXPECT_EQ(DifferenceOf(without, flagged)["remove.B"], (Items{{"@tr.y", "8192"}}));
}

TEST(FileObjectDifference, TakesTheFileNameOfTheNewerAndIsNotEmptiedFirst) {
  FileObject newer = Read("[A]\nk=2\n");
  FileObject older = Read("[A]\nk=1\n");
  newer.SetFileName("newer.ini");
  older.SetFileName("older.ini");
  FileObject difference = Read("kept\n[A]\nold=1\n[change.A]\nk=9\nold=1\n[remove.Z]\nz=1\n");
  difference.SetFileName("difference.ini");
  EXPECT_TRUE(newer.GetDifference(older, difference));
  EXPECT_EQ(difference.GetFileName(), "newer.ini");
  EXPECT_EQ(difference.GetExtraInfo(), (std::vector<std::string>{"kept"}));
  EXPECT_EQ(PictureOf(difference),
            (Picture{{"A", {{"old", "1"}, {"k", "2"}}}, {"change.A", {{"k", "2"}, {"old", "1"}}}, {"remove.Z", {{"z", "1"}}}}));
  EXPECT_EQ(older.GetFileName(), "older.ini");
}

TEST(FileObjectDifference, NeitherThrowsNorTouchesTheStatusesOfTheCompared) {
  FileObject newer = Read("[A]\nk=2\nm=1\n[N]\nn=1\n[Left]\nk=1\n");
  FileObject older = Read("[A]\nk=1\nl=1\n[O]\no=1\n[Left]\nk=1\n");
  FileObject difference;
  for (FileObject* settings : {&newer, &older, &difference}) {
    LeaveStatus7(*settings);
    settings->ThrowExceptions(true);
  }
  EXPECT_NO_THROW(newer.GetDifference(older, difference));
  EXPECT_EQ(newer.GetErrorStatus(), 7);
  EXPECT_EQ(older.GetErrorStatus(), 7);
  EXPECT_EQ(difference.GetErrorStatus(), 0);
  LeaveStatus7(difference);
  EXPECT_NO_THROW(EXPECT_TRUE(HasDifferences(difference)));
  EXPECT_NO_THROW(newer.ApplyDifference(difference));
  EXPECT_EQ(difference.GetErrorStatus(), 7);
  // With nothing to write, nothing is touched.
  EXPECT_TRUE(FileObject().GetDifference(FileObject(), difference));
  EXPECT_EQ(difference.GetErrorStatus(), 7);
}

TEST(FileObjectDifference, MayBeWrittenIntoAnOperand) {
  const Picture newerItems{{"A", {{"x", "2"}, {"y", "3"}}}, {"add.A", {{"y", "0"}, {"own", "1"}}}, {"N", {{"n", "1"}}}};
  const Picture olderItems{{"A", {{"x", "1"}, {"z", "4"}}}, {"change.A", {{"x", "0"}}}, {"O", {{"o", "1"}}}};
  const auto expected = [&](const Picture& start) {
    FileObject difference = FromPicture(start);
    FromPicture(newerItems).GetDifference(FromPicture(olderItems), difference);
    return PictureOf(difference);
  };
  FileObject newer = FromPicture(newerItems);
  FileObject older = FromPicture(olderItems);
  EXPECT_TRUE(newer.GetDifference(older, newer));
  EXPECT_EQ(PictureOf(newer), expected(newerItems));
  newer = FromPicture(newerItems);
  EXPECT_TRUE(newer.GetDifference(older, older));
  EXPECT_EQ(PictureOf(older), expected(olderItems));
  FileObject all = FromPicture(newerItems);
  EXPECT_TRUE(all.GetDifference(all, all));
  EXPECT_EQ(PictureOf(all), newerItems);
}

// Counts what is written through the virtual operation, and may fail from some call on.
class Watched : public FileObject {
 public:
  using FileObject::SetItem;

  bool SetItem(const std::string& section, const std::string& key, const std::string& value, bool createSection) override {
    calls.push_back(section + "/" + key + "=" + value + (createSection ? "" : " (not created)"));
    if (onWrite) onWrite();
    if (static_cast<int>(calls.size()) == failingCall) return false;
    return FileObject::SetItem(section, key, value, createSection);
  }

  std::vector<std::string> calls;
  int failingCall = 0;
  std::function<void()> onWrite;
};

TEST(FileObjectDifference, WritesThroughTheVirtualOperationAndCreatesSections) {
  Watched difference;
  Read("[A]\nx=2\ny=3\n").GetDifference(Read("[A]\nx=1\nz=4\n"), difference);
  std::sort(difference.calls.begin(), difference.calls.end());
  EXPECT_EQ(difference.calls, (std::vector<std::string>{"add.A/y=3", "change.A/x=2", "remove.A/z=4"}));
}

TEST(FileObjectDifference, AWriteThatFailsDoesNotEndIt) {
  Watched difference;
  difference.failingCall = 1;
  EXPECT_TRUE(Read("[A]\nx=2\ny=3\n").GetDifference(Read("[A]\nx=1\nz=4\n"), difference));
  EXPECT_EQ(difference.calls.size(), 3U);
}

TEST(FileObjectDifference, AWriteThatEmptiesTheOperandsIsSurvived) {
  for (int at = 1; at <= 6; ++at) {
    FileObject newer = Read("[A]\na=1\nb=2\nc=3\n[B]\nd=4\n");
    FileObject older = Read("[A]\na=0\nx=1\ny=2\n[C]\nz=3\n");
    Watched difference;
    difference.onWrite = [&] {
      if (static_cast<int>(difference.calls.size()) != at) return;
      newer.MakeEmpty();
      older.DeleteSection("A");
      older.SetItem("D", "w", "1", true);
    };
    EXPECT_TRUE(newer.GetDifference(older, difference));
    EXPECT_GE(static_cast<int>(difference.calls.size()), at);
    EXPECT_EQ(newer.GetNumSections(), 0);
  }
}

// --- Applying one --------------------------------------------------------------------------------------------------

TEST(FileObjectApplyDifference, MakesTheOlderFileEqualToTheNewerOne) {
  const FileObject newer = Read("[A]\nx=2\ny=3\n[N]\nn=1\n");
  FileObject older = Read("[A]\nx=1\nz=4\n[O]\no=1\n");
  FileObject difference;
  newer.GetDifference(older, difference);
  EXPECT_TRUE(FileObject().HasDifferences(difference));
  EXPECT_TRUE(older.ApplyDifference(difference));
  EXPECT_TRUE(older == newer);
  EXPECT_TRUE(newer == older);
}

TEST(FileObjectApplyDifference, AnEmptyOneChangesNothing) {
  FileObject settings = Read("[A]\nx=1\n");
  LeaveStatus7(settings);
  const Picture before = PictureOf(settings);
  EXPECT_TRUE(settings.ApplyDifference(FileObject()));
  EXPECT_TRUE(settings.ApplyDifference(Read("lines\n[A]\nx=2\n[add.A]\n[remove.A]\n")));
  EXPECT_EQ(PictureOf(settings), before);
  EXPECT_EQ(settings.GetErrorStatus(), 7);
}

TEST(FileObjectApplyDifference, AddAndChangeAreTheSame) {
  FileObject settings = Read("[A]\nx=1\ny=1\n");
  LeaveStatus7(settings);
  EXPECT_TRUE(settings.ApplyDifference(Read("[add.A]\nx=2\nnew=2\n[change.A]\ny=3\nfresh=3\n[change.B]\nz=3\n")));
  EXPECT_EQ(ItemsOf(settings, "A"), (Items{{"x", "2"}, {"y", "3"}, {"new", "2"}, {"fresh", "3"}}));
  EXPECT_EQ(ItemsOf(settings, "B"), (Items{{"z", "3"}}));
  EXPECT_EQ(settings.GetErrorStatus(), 0);
}

TEST(FileObjectApplyDifference, RemoveDoesNotLookAtTheValueAndTakesAnEmptiedSectionAway) {
  FileObject settings = Read("[A]\nx=1\ny=1\n[B]\nz=1\n");
  EXPECT_TRUE(settings.ApplyDifference(Read("[remove.A]\nx=other\n[remove.B]\nz=\n")));
  EXPECT_EQ(PictureOf(settings), (Picture{{"A", {{"y", "1"}}}}));
}

TEST(FileObjectApplyDifference, RemovingWhatIsNotThereFails) {
  FileObject settings = Read("[A]\nx=1\n");
  EXPECT_FALSE(settings.ApplyDifference(Read("[remove.A]\nnone=1\n")));
  EXPECT_EQ(settings.GetErrorStatus(), 7);
  EXPECT_FALSE(settings.ApplyDifference(Read("[remove.B]\nx=1\n")));
  EXPECT_EQ(settings.GetErrorStatus(), 4);
  EXPECT_EQ(PictureOf(settings), (Picture{{"A", {{"x", "1"}}}}));
  FileObject empty;
  EXPECT_FALSE(empty.ApplyDifference(Read("[remove.A]\nx=1\n")));
  EXPECT_EQ(empty.GetErrorStatus(), 4);
}

TEST(FileObjectApplyDifference, TheFirstFailureEndsItAndWhatWasDoneStays) {
  const FileObject difference = Read("[add.A]\na=1\nb=2\n[change.B]\nc=3\n[add.C]\nd=4\n");
  for (int failing = 1; failing <= 4; ++failing) {
    Watched target;
    target.failingCall = failing;
    EXPECT_FALSE(target.ApplyDifference(difference));
    EXPECT_EQ(static_cast<int>(target.calls.size()), failing);
    int kept = 0;
    for (const auto& [name, items] : PictureOf(target)) kept += static_cast<int>(items.size());
    EXPECT_EQ(kept, failing - 1);
  }
  Watched target;
  EXPECT_TRUE(target.ApplyDifference(difference));
  std::sort(target.calls.begin(), target.calls.end());
  EXPECT_EQ(target.calls, (std::vector<std::string>{"A/a=1", "A/b=2", "B/c=3", "C/d=4"}));
}

TEST(FileObjectApplyDifference, TheNameIsSplitAtTheFirstTwoDotsAndTrimmed) {
  const struct {
    const char* name;
    const char* target;  // null: no operation
  } rows[] = {
      {"add.A", "A"},
      {"change.A", "A"},
      {" add .A", "A"},
      {"add. A ", "A"},
      {"\tchange\v.\nA\r", "A"},
      {"add.", ""},
      {"add. ", ""},
      {"add..A", ""},
      {"add.My.Section", "My"},
      {"add.A.", "A"},
      {"add.add.B", "add"},
      {"add.Checksum", "Checksum"},
      {"add.a b", "a b"},
      {"add.[", "["},
      {"add", nullptr},
      {"change", nullptr},
      {"", nullptr},
      {".", nullptr},
      {".add.A", nullptr},
      {"Add.A", nullptr},
      {"ADD.A", nullptr},
      {"added.A", nullptr},
      {"x.add.A", nullptr},
      {"changes.A", nullptr},
      {"a dd.A", nullptr},
      {"A", nullptr},
      {"A.B", nullptr},
      {"..", nullptr},
      {"Checksum", nullptr},
  };
  for (const auto& row : rows) {
    const FileObject difference = FromPicture({{row.name, {{"k", "v"}}}});
    FileObject settings;
    EXPECT_TRUE(settings.ApplyDifference(difference)) << row.name;
    const Picture expected = row.target == nullptr ? Picture{} : Picture{{row.target, {{"k", "v"}}}};
    EXPECT_EQ(PictureOf(settings), expected) << row.name;
    EXPECT_EQ(HasDifferences(difference), row.target != nullptr) << row.name;
  }
}

TEST(FileObjectApplyDifference, RemoveNamesAreSplitInTheSameWay) {
  const struct {
    const char* name;
    const char* target;
  } rows[] = {{"remove.A", "A"}, {" remove . A.B", "A"}, {"remove.", ""}, {"remove.Checksum", "Checksum"}};
  for (const auto& row : rows) {
    FileObject settings = FromPicture({{row.target, {{"k", "v"}, {"l", "w"}}}});
    EXPECT_TRUE(settings.ApplyDifference(FromPicture({{row.name, {{"k", ""}}}}))) << row.name;
    EXPECT_EQ(PictureOf(settings), (Picture{{row.target, {{"l", "w"}}}})) << row.name;
  }
  FileObject settings = Read("[A]\nk=1\n");
  EXPECT_TRUE(settings.ApplyDifference(Read("[remove]\nk=1\n[removed.A]\nk=1\n[Remove.A]\nk=1\n")));
  EXPECT_TRUE(settings.HasKey("A", "k"));
}

TEST(FileObjectApplyDifference, ASectionOfTheFileThatIsCalledLikeAnOperationBecomesOne) {
  const FileObject newer = Read("[add.X]\nk=1\n");
  FileObject target;
  FileObject difference;
  newer.GetDifference(newer, difference);
  EXPECT_TRUE(HasDifferences(difference));
  EXPECT_TRUE(target.ApplyDifference(difference));
  EXPECT_EQ(PictureOf(target), (Picture{{"X", {{"k", "1"}}}}));
}

TEST(FileObjectApplyDifference, ADottedSectionLosesWhatStandsBehindItsDot) {
  const FileObject newer = Read("[My.Section]\nk=1\n");
  FileObject target;
  FileObject difference;
  newer.GetDifference(target, difference);
  EXPECT_TRUE(target.ApplyDifference(difference));
  EXPECT_EQ(PictureOf(target), (Picture{{"My", {{"k", "1"}}}}));
}

TEST(FileObjectApplyDifference, AnObjectMayBeAppliedToItself) {
  const Picture items{{"A", {{"x", "1"}, {"y", "1"}}}, {"B", {{"z", "1"}}},        {"add.A", {{"n", "2"}}},
                      {"change.New", {{"k", "3"}}},    {"remove.A", {{"y", "1"}}}, {"remove.B", {{"z", "1"}}},
                      {"add.add.B", {{"m", "4"}}},     {"change.", {{"e", "5"}}}};
  FileObject settings = FromPicture(items);
  FileObject expected = FromPicture(items);
  EXPECT_TRUE(expected.ApplyDifference(FromPicture(items)));
  EXPECT_TRUE(settings.ApplyDifference(settings));
  EXPECT_EQ(PictureOf(settings), PictureOf(expected));
  EXPECT_EQ(ItemsOf(settings, "A"), (Items{{"x", "1"}, {"n", "2"}}));
  EXPECT_FALSE(settings.ApplyDifference(settings));  // what is to be removed has gone
  EXPECT_TRUE(settings.GetErrorStatus() == 4 || settings.GetErrorStatus() == 7);
}

TEST(FileObjectApplyDifference, AWriteThatEmptiesTheDifferenceIsSurvived) {
  for (int at = 1; at <= 3; ++at) {
    FileObject difference = Read("[add.A]\na=1\nb=2\n[add.B]\nc=3\n");
    Watched target;
    target.onWrite = [&] {
      if (static_cast<int>(target.calls.size()) == at) difference.MakeEmpty();
    };
    EXPECT_TRUE(target.ApplyDifference(difference));
    EXPECT_EQ(static_cast<int>(target.calls.size()), at);
  }
}

// A subclass that has its own way of merging.
class Merging : public FileObject {
 public:
  bool ApplyDifference(const FileObject& difference) override {
    ++applied;
    return FileObject::ApplyDifference(difference);
  }
  int applied = 0;
};

TEST(FileObjectApplyDifference, IsVirtualAndCalledOnce) {
  Merging settings;
  FileObject& base = settings;
  EXPECT_TRUE(base.ApplyDifference(Read("[add.A]\nx=1\n")));
  EXPECT_EQ(settings.applied, 1);
  EXPECT_TRUE(base.HasKey("A", "x"));
  EXPECT_TRUE(base.ApplyDifference(base));
  EXPECT_EQ(settings.applied, 2);
}

TEST(FileObjectApplyDifference, AFileSectionIsMergedLikeAnyStore) {
  FileSection section;
  section.GetFromFileObject("A", Read("[A]\nx=1\n"));
  EXPECT_TRUE(section.ApplyDifference(Read("[change.A]\nx=2\n[add.B]\ny=1\n")));
  EXPECT_EQ(PictureOf(section), (Picture{{"A", {{"x", "2"}}}, {"B", {{"y", "1"}}}}));
}

#if defined(__GXX_ABI_VERSION)
// In this ABI a pointer to a virtual member begins with 1 plus its place in the table, in bytes.
template <class Member>
std::size_t Slot(Member member) {
  std::size_t words[2] = {};
  static_assert(sizeof(words) == sizeof(member));
  std::memcpy(words, &member, sizeof(words));
  return (words[0] - 1) / sizeof(void*);
}

TEST(FileObjectApplyDifference, StandsBehindSetItemAndGetErrorStatusInTheVirtualTable) {
  using SetItem = bool (FileObject::*)(const std::string&, const std::string&, const std::string&, bool);
  // The destructor takes two places here.
  EXPECT_EQ(Slot(static_cast<SetItem>(&FileObject::SetItem)), 2U);
  EXPECT_EQ(Slot(&FileObject::GetErrorStatus), 3U);
  EXPECT_EQ(Slot(&FileObject::ApplyDifference), 4U);
}
#endif

static_assert(std::is_same_v<decltype(&FileObject::ApplyDifference), bool (FileObject::*)(const FileObject&)>);
static_assert(std::is_same_v<decltype(&FileObject::GetDifference), bool (FileObject::*)(const FileObject&, FileObject&) const>);
static_assert(std::is_same_v<decltype(&FileObject::HasDifferences), bool (FileObject::*)(const FileObject&)>);

// --- HasDifferences ------------------------------------------------------------------------------------------------

TEST(FileObjectHasDifferences, IgnoresTheObjectThatIsAsked) {
  FileObject asked = Read("[add.A]\nx=1\n");
  EXPECT_FALSE(asked.HasDifferences(FileObject()));
  EXPECT_FALSE(asked.HasDifferences(Read("[A]\nx=1\n")));
  EXPECT_TRUE(asked.HasDifferences(asked));
  EXPECT_TRUE(FileObject().HasDifferences(asked));
}

TEST(FileObjectHasDifferences, AnOperationSectionWithoutItemsIsNone) {
  EXPECT_FALSE(HasDifferences(Read("[add.A]\n[change.B]\n[remove.C]\n[A]\nx=1\n")));
  EXPECT_TRUE(HasDifferences(Read("[add.A]\n[change.B]\n[remove.C]\nx=\n")));
}

// --- Chains and chance ---------------------------------------------------------------------------------------------

TEST(FileObjectDifference, CarriesACustomisedFileOverToANewReleaseThroughFiles) {
  TemporaryFolder folder;
  const unsigned int create = CFile::modeCreate | CFile::modeWrite;
  const FileObject release1 = Read("; defaults\n[Units]\nDepth=m\nSpeed=kn\n[Colours]\nDeep=0, 0, 255\n[Old]\nk=1\n");
  FileObject customised = release1;
  customised.SetItem("Units", "Speed", "m/s", true);
  customised.SetItem("Own", "k", "v", true);
  customised.DeleteItem("Old", "k", true);
  FileObject made;
  customised.GetDifference(release1, made);
  ASSERT_TRUE(made.FileSave(folder.File("difference.ini"), create));

  FileObject difference;
  ASSERT_TRUE(difference.FileOpen(folder.File("difference.ini"), CFile::modeRead));
  EXPECT_TRUE(difference == made);
  FileObject again = release1;
  EXPECT_TRUE(again.ApplyDifference(difference));
  EXPECT_TRUE(again == customised);

  FileObject release2 = Read("; defaults\n[Units]\nDepth=fm\nSpeed=kn\nArea=m2\n[Old]\nk=2\nl=3\n");
  EXPECT_TRUE(release2.ApplyDifference(difference));
  EXPECT_EQ(PictureOf(release2),
            (Picture{{"Units", {{"Depth", "fm"}, {"Speed", "m/s"}, {"Area", "m2"}}}, {"Old", {{"l", "3"}}}, {"Own", {{"k", "v"}}}}));
  // A second time the removed key is missing.
  EXPECT_FALSE(release2.ApplyDifference(difference));
}

// Random stores from few names and values, so that they meet often.
class RandomStores {
 public:
  explicit RandomStores(unsigned int seed, bool hostile) : m_random(seed), m_hostile(hostile) {}

  void Fill(FileObject& settings) {
    static const std::vector<std::string> plain = {"A", "B", "C", "", "add", "Two words"};
    static const std::vector<std::string> hostile = {"A",          "B",        "add.A",        "add.", "add.A.B",
                                                     "change.A",   "remove.B", "remove",       ".",    " add .A",
                                                     "My.Section", "Checksum", "add.remove.A", " A ",  "@tr.A"};
    static const std::vector<std::string> keys = {"k", "l", "m", "n", "K", "", "@tr.x", "@tr.y"};
    static const std::vector<std::string> values = {"1", "2", "", "8192", "8193, 1", "1, 8192", "abc", "-1", "0x2000"};
    settings.FileClose();
    const std::vector<std::string>& names = m_hostile ? hostile : plain;
    const int sections = Below(5);
    for (int i = 0; i < sections; ++i) {
      const std::string name = names[static_cast<std::size_t>(Below(static_cast<int>(names.size())))];
      settings.CreateSection(name, false);
      const int items = Below(6) + (m_hostile ? 0 : 1);
      for (int j = 0; j < items; ++j) {
        const int key = Below(static_cast<int>(keys.size()) - (m_hostile ? 0 : 2));
        settings.SetItem(name, keys[static_cast<std::size_t>(key)],
                         values[static_cast<std::size_t>(Below(static_cast<int>(values.size())))], true);
      }
    }
  }

 private:
  int Below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(m_random); }

  std::mt19937 m_random;
  bool m_hostile;
};

TEST(FileObjectDifferenceLong, RandomPairsAgreeWithASecondTranscription) {
  RandomStores stores(20240611, true);
  int differing = 0;
  int equal = 0;
  int failed = 0;
  constexpr int kRounds = 6000;
  for (int round = 0; round < kRounds; ++round) {
    SCOPED_TRACE(round);
    FileObject newer;
    FileObject older;
    FileObject target;
    stores.Fill(newer);
    stores.Fill(older);
    stores.Fill(target);
    ASSERT_EQ(newer == older, second::Equal(newer, older));
    ASSERT_EQ(older != newer, !second::Equal(older, newer));
    equal += newer == older;

    FileObject difference;
    Picture expected;
    newer.GetDifference(older, difference);
    second::GetDifference(second::ListingOf(newer), second::ListingOf(older), expected);
    ASSERT_EQ(PictureOf(difference), expected);
    const second::Listing operations = second::ListingOf(difference);
    ASSERT_EQ(HasDifferences(difference), second::CountOperations(operations) > 0);
    differing += HasDifferences(difference);

    Picture after = PictureOf(target);
    const bool applied = second::ApplyDifference(after, operations);
    ASSERT_EQ(target.ApplyDifference(difference), applied);
    ASSERT_EQ(PictureOf(target), after);
    failed += !applied;
  }
  // The rows above were reached.
  EXPECT_GT(differing, kRounds / 2);
  EXPECT_GT(kRounds - differing, 50);
  EXPECT_GT(equal, 20);
  EXPECT_GT(failed, kRounds / 10);
}

TEST(FileObjectDifferenceLong, RandomPlainPairsBecomeEqualByApplyingAlsoThroughText) {
  RandomStores stores(7, false);
  int differing = 0;
  for (int round = 0; round < 2000; ++round) {
    SCOPED_TRACE(round);
    FileObject newer;
    FileObject older;
    stores.Fill(newer);
    stores.Fill(older);
    ASSERT_TRUE(second::TravelsWhole(newer, older));
    FileObject difference;
    newer.GetDifference(older, difference);
    ASSERT_EQ(HasDifferences(difference), PictureOf(newer) != PictureOf(older));
    differing += HasDifferences(difference);
    FileObject target = older;
    ASSERT_TRUE(target.ApplyDifference(difference));
    ASSERT_TRUE(target == newer);
    ASSERT_EQ(PictureOf(target), PictureOf(newer));
    // And back.
    FileObject backwards;
    older.GetDifference(newer, backwards);
    ASSERT_TRUE(target.ApplyDifference(backwards));
    ASSERT_TRUE(target == older);
  }
  EXPECT_GT(differing, 1500);
}

}  // namespace
