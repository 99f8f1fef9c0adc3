#include "zelbase/config/FileSection.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/config/SettingsTestHelp.h"

namespace {

FileObject Sample() {
  FileObject settings;
  ReadFrom(settings, "extra\n[A]\nx=1\ny=2\n[B]\nz=3\n[Checksum]\nChecksum=7\n");
  return settings;
}

FileSection Taken(const std::string& name) {
  FileSection section;
  section.GetFromFileObject(name, Sample());
  return section;
}

Items Walked(FileSection& section) {
  Items items;
  std::string key;
  std::string value;
  for (bool more = section.GetFirstMapEntry(key, value); more; more = section.GetNextMapEntry(key, value)) items[key] = value;
  return items;
}

TEST(FileSection, TakenFromAFileAndWrittenToAFreshObjectGivesThatOneSection) {
  FileSection section = Taken("A");
  EXPECT_EQ(section.Name(), "A");
  FileObject fresh;
  EXPECT_TRUE(section.SetToFileObject(fresh));
  EXPECT_EQ(PictureOf(fresh), (Picture{{"A", {{"x", "1"}, {"y", "2"}}}}));
}

TEST(FileSection, TheSameItemsUnderDifferentNamesAreNotEqual) {
  FileObject settings;
  ReadFrom(settings, "[A]\nx=1\n[B]\nx=1\n");
  FileSection a;
  FileSection b;
  FileSection other;
  a.GetFromFileObject("A", settings);
  b.GetFromFileObject("B", settings);
  other.GetFromFileObject("A", settings);
  EXPECT_FALSE(a == b);
  EXPECT_TRUE(a != b);
  EXPECT_TRUE(a == other);
  EXPECT_FALSE(a != other);
}

TEST(FileSection, EqualityLooksAtKeysAndValues) {
  FileSection a = Taken("A");
  FileSection b = Taken("A");
  b.SetItem("x", 2);
  EXPECT_TRUE(a != b);
  b.SetItem("x", 1);
  EXPECT_TRUE(a == b);
  b.SetItem("w", 1);
  EXPECT_TRUE(a != b);
  b.DeleteItem("y", false);
  EXPECT_TRUE(a != b);  // the count is equal, the keys are not
  b.ThrowExceptions(true);
  EXPECT_NO_THROW(EXPECT_TRUE(b != a));
}

TEST(FileSection, TwoNewOnesAreNotEqualNorIsACopyEqualToANewOne) {
  const FileSection a;
  const FileSection b;
  EXPECT_FALSE(a == b);
  EXPECT_FALSE(a == a);
  const FileSection copy(a);
  EXPECT_TRUE(copy.HasSection(""));
  EXPECT_FALSE(copy == a);
  EXPECT_FALSE(a == copy);
  EXPECT_TRUE(copy == FileSection(copy));
}

TEST(FileSection, GetFromFileObjectSetsTheNameAlsoWhenItFails) {
  FileSection section = Taken("A");
  EXPECT_FALSE(section.GetFromFileObject("none", Sample()));
  EXPECT_EQ(section.Name(), "none");
  EXPECT_EQ(section.GetNumSections(), 0);
}

TEST(FileSection, TheChecksumSectionCanBeTaken) {
  FileSection section = Taken("Checksum");
  std::string value;
  EXPECT_TRUE(section.GetItem(checksumKeys[0], value));
  EXPECT_EQ(value, "7");
  EXPECT_EQ(checksumKeys[1], "Integrity");
  EXPECT_EQ(std::size(checksumKeys), 2U);
}

TEST(FileSection, SetToFileObjectMergesIntoTheTarget) {
  FileObject target;
  ReadFrom(target, "[A]\nx=9\nold=1\n");
  EXPECT_TRUE(Taken("A").SetToFileObject(target));
  EXPECT_EQ(ItemsOf(target, "A"), (Items{{"x", "1"}, {"y", "2"}, {"old", "1"}}));
}

TEST(FileSection, SetToFileObjectWithANameNeedsThatSectionInThisObject) {
  FileSection section = Taken("A");
  FileObject target;
  EXPECT_FALSE(section.SetToFileObject("B", target));
  EXPECT_EQ(target.GetNumSections(), 0);
  section.CreateSection("B", false);
  EXPECT_TRUE(section.SetToFileObject("B", target));
  EXPECT_TRUE(target.HasSection("B"));
  EXPECT_FALSE(FileSection().SetToFileObject(target));
}

TEST(FileSection, TypedItems) {
  FileSection section;
  EXPECT_TRUE(section.SetItem("text", "literal"));
  EXPECT_TRUE(section.SetItem("string", std::string("s")));
  EXPECT_TRUE(section.SetItem("null", static_cast<const char*>(nullptr)));
  EXPECT_TRUE(section.SetItem("int", -1));
  EXPECT_TRUE(section.SetItem("unsigned", 4294967295U));
  EXPECT_TRUE(section.SetItem("long", 4294967296L));
  EXPECT_TRUE(section.SetItem("bool", true));
  EXPECT_TRUE(section.SetItem("double", 2.5));
  EXPECT_TRUE(section.SetItem("float", 0.5F));
  EXPECT_EQ(PictureOf(section), (Picture{{"",
                                          {{"text", "literal"},
                                           {"string", "s"},
                                           {"null", ""},
                                           {"int", "-1"},
                                           {"unsigned", "4294967295"},
                                           {"long", "4294967296"},
                                           {"bool", "1"},
                                           {"double", "2.5"},
                                           {"float", "0.5"}}}}));
  int i = 0;
  unsigned int u = 0;
  long l = 0;
  bool b = false;
  double d = 0;
  float f = 0;
  std::string s;
  EXPECT_TRUE(section.GetItem("int", i) && i == -1);
  EXPECT_TRUE(section.GetItem("unsigned", u) && u == 4294967295U);
  EXPECT_TRUE(section.GetItem("int", l) && l == -1);
  EXPECT_TRUE(section.GetItem("bool", b) && b);
  EXPECT_TRUE(section.GetItem("double", d) && d == 2.5);
  EXPECT_TRUE(section.GetItem("float", f) && f == 0.5F);
  EXPECT_TRUE(section.GetItem("text", s) && s == "literal");
  EXPECT_FALSE(section.GetItem("none", s));
  EXPECT_EQ(section.GetErrorStatus(), 5);
  EXPECT_EQ(s, "literal");
}

TEST(FileSection, TheFormsOfTheBaseAreReachedThroughTheBase) {
  FileSection section = Taken("A");
  FileObject& base = section;
  EXPECT_TRUE(base.SetItem("Other", "k", std::string("v"), true));
  EXPECT_TRUE(base.SetItem("Other", "l", "literal", true));
  std::string value;
  EXPECT_TRUE(base.GetItem("Other", "l", value));
  EXPECT_EQ(value, "literal");
  EXPECT_FALSE(section.GetItem("l", value));
  EXPECT_EQ(base.GetErrorStatus(), 5);
}

// Writes down what comes by the one form that all others end in.
class NotedSection : public FileSection {
 public:
  using FileSection::SetItem;
  bool SetItem(const std::string& section, const std::string& key, const std::string& value, bool createSection) override {
    noted += section + "." + key + "=" + value + (createSection ? " made;" : ";");
    return FileSection::SetItem(section, key, value, createSection);
  }
  std::string noted;
};

TEST(FileSection, AnOverriddenSetItemSeesEveryItemThatIsWritten) {
  NotedSection section;
  FileSection& written = section;
  EXPECT_TRUE(written.SetItem("a", std::string("text")));
  EXPECT_TRUE(written.SetItem("b", "literal"));
  EXPECT_TRUE(written.SetItem("c", 1));
  EXPECT_TRUE(written.SetItem("d", 2U));
  EXPECT_TRUE(written.SetItem("e", 3L));
  EXPECT_TRUE(written.SetItem("f", true));
  EXPECT_TRUE(written.SetItem("g", 2.5));
  EXPECT_EQ(section.noted, ".a=text made;.b=literal made;.c=1 made;.d=2 made;.e=3 made;.f=1 made;.g=2.5 made;");
  EXPECT_FALSE(written.SetItem("Other", "h", std::string("v"), false));
  EXPECT_EQ(written.GetErrorStatus(), 4);
}

TEST(FileSection, WalkingAndDeleting) {
  FileSection section = Taken("A");
  EXPECT_EQ(Walked(section), (Items{{"x", "1"}, {"y", "2"}}));
  EXPECT_TRUE(section.HasKey("x"));
  EXPECT_TRUE(section.DeleteItem("x", true));
  EXPECT_FALSE(section.HasKey("x"));
  EXPECT_FALSE(section.DeleteItem("x", true));
  EXPECT_EQ(section.GetErrorStatus(), 7);
  EXPECT_TRUE(section.DeleteItem("y", true));
  EXPECT_FALSE(section.HasSection("A"));
  std::string key;
  std::string value;
  EXPECT_FALSE(section.GetFirstMapEntry(key, value));
}

TEST(FileSection, ACopyHasNameAndItemsAndNothingElse) {
  FileSection section = Taken("A");
  section.CreateSection("More", false);
  section.SetFileName("file");
  section.ThrowExceptions(true);
  FileSection target = Taken("B");
  std::string key;
  std::string value;
  section.GetFirstMapEntry(key, value);
  target = section;
  EXPECT_EQ(target.Name(), "A");
  EXPECT_EQ(PictureOf(target), (Picture{{"A", {{"x", "1"}, {"y", "2"}}}}));
  EXPECT_EQ(target.GetFileName(), "");
  EXPECT_FALSE(target.ThrowExceptions());
  EXPECT_EQ(target.GetErrorStatus(), 0);
  // The walk of the source goes on, that of the target was not taken over.
  EXPECT_FALSE(target.GetNextMapEntry(key, value));
  EXPECT_TRUE(section.GetNextMapEntry(key, value));
}

TEST(FileSection, SelfAssignmentLeavesTheNameAndAnEmptySection) {
  FileSection section = Taken("A");
  FileSection& same = section;
  section = same;
  EXPECT_EQ(section.Name(), "A");
  EXPECT_EQ(PictureOf(section), (Picture{{"A", {}}}));
}

}  // namespace
