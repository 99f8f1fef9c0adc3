// Cursors: walks over sections and items while everything changes.
#include "zelbase/config/FobjSection.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/config/SettingsTestHelp.h"

namespace {

FileObject Numbered(int sections, int items) {
  FileObject settings;
  for (int s = 0; s < sections; ++s) {
    for (int i = 0; i < items; ++i) settings.SetItem("S" + std::to_string(s), "k" + std::to_string(i), i, true);
  }
  return settings;
}

TEST(FobjSection, IsBornWithoutSelection) {
  FobjSection cursor;
  std::string key = "x";
  std::string value = "y";
  FileObject settings = Numbered(2, 2);
  EXPECT_FALSE(cursor.IsValid());
  EXPECT_FALSE(settings.GetNextMapEntry(cursor, key, value));
  EXPECT_EQ(key + value, "");
  key = "x";
  EXPECT_FALSE(settings.GetNextSectionEntry(cursor, key));
  EXPECT_EQ(key, "");
}

TEST(FobjSection, SetNoSelectionForgetsEverything) {
  FileObject settings = Numbered(2, 2);
  FobjSection cursor;
  std::string name;
  std::string key;
  std::string value;
  settings.GetFirstSectionEntry(cursor, name);
  settings.GetFirstMapEntry(cursor, "S0", key, value);
  cursor.SetNoSelection();
  EXPECT_FALSE(cursor.IsValid());
  EXPECT_FALSE(settings.GetNextMapEntry(cursor, key, value));
  EXPECT_FALSE(settings.GetNextSectionEntry(cursor, name));
}

TEST(FobjSection, AMissingSectionLeavesNoSelectionAndEmptyTexts) {
  FileObject settings = Numbered(1, 1);
  FobjSection cursor;
  std::string key;
  std::string value;
  settings.GetFirstMapEntry(cursor, "S0", key, value);
  EXPECT_FALSE(settings.GetFirstMapEntry(cursor, "none", key, value));
  EXPECT_EQ(key + value, "");
  EXPECT_FALSE(cursor.IsValid());
}

// One cursor for both walks, and a section deleted before them: the walk over sections must neither end nor start again.
TEST(FobjSection, SelectingAMissingSectionLetsTheWalkOverSectionsGoOn) {
  FileObject settings = Numbered(4, 1);
  settings.DeleteSection("S3");
  FobjSection cursor;
  std::string name;
  std::string key;
  std::string value;
  std::multiset<std::string> seen;
  for (bool more = settings.GetFirstSectionEntry(cursor, name); more && seen.size() < 10;
       more = settings.GetNextSectionEntry(cursor, name)) {
    seen.insert(name);
    EXPECT_FALSE(settings.GetFirstMapEntry(cursor, "More of " + name, key, value));
    EXPECT_FALSE(cursor.IsValid());
  }
  EXPECT_EQ(seen, (std::multiset<std::string>{"S0", "S1", "S2"}));
}

TEST(FobjSection, DeletingAnySectionThroughTheCursorEndsItsWalkOverItems) {
  FileObject settings = Numbered(2, 3);
  FobjSection cursor;
  std::string key;
  std::string value;
  EXPECT_TRUE(settings.GetFirstMapEntry(cursor, "S0", key, value));
  EXPECT_TRUE(settings.DeleteSection(cursor, "S1"));
  EXPECT_FALSE(settings.GetNextMapEntry(cursor, key, value));
}

TEST(FobjSection, AnEmptySectionIsSelectedAllTheSame) {
  FileObject settings;
  settings.CreateSection("A", false);
  FobjSection cursor;
  std::string key = "x";
  std::string value = "y";
  EXPECT_FALSE(settings.GetFirstMapEntry(cursor, "A", key, value));
  EXPECT_EQ(key + value, "");
  EXPECT_TRUE(cursor.IsValid());
}

TEST(FobjSection, EnumerationLeavesTheStatus) {
  FileObject settings = Numbered(1, 1);
  settings.DeleteItem("none", "k", false);
  SectionNames(settings);
  ItemsOf(settings, "S0");
  ItemsOf(settings, "none");
  EXPECT_EQ(settings.GetErrorStatus(), 4);
}

TEST(FobjSection, WalksEndAfterTheObjectWasEmptiedOrAssigned) {
  for (int way = 0; way < 4; ++way) {
    FileObject settings = Numbered(3, 3);
    FobjSection cursor;
    std::string name;
    std::string key;
    std::string value;
    settings.GetFirstSectionEntry(cursor, name);
    settings.GetFirstMapEntry(cursor, name, key, value);
    FobjSection sections;
    settings.GetFirstSectionEntry(sections, name);
    if (way == 0) settings.MakeEmpty();
    if (way == 1) settings.FileClose();
    if (way == 2) settings = Numbered(5, 5);
    if (way == 3) settings.FileOpen("", 0U);
    if (way != 2) settings.SetItem("S0", "k9", "new", true);
    EXPECT_FALSE(settings.GetNextMapEntry(cursor, key, value)) << way;
    EXPECT_FALSE(settings.GetNextSectionEntry(sections, name)) << way;
    EXPECT_FALSE(settings.GetNextSectionEntry(sections, name)) << way;
    EXPECT_EQ(name + key + value, "") << way;
  }
}

TEST(FobjSection, DeletingTheItemJustDeliveredLetsTheWalkGoOn) {
  FileObject settings = Numbered(1, 100);
  FobjSection cursor;
  std::string key;
  std::string value;
  std::set<std::string> seen;
  for (bool more = settings.GetFirstMapEntry(cursor, "S0", key, value); more; more = settings.GetNextMapEntry(cursor, key, value)) {
    EXPECT_TRUE(seen.insert(key).second);
    EXPECT_TRUE(settings.DeleteItem("S0", key, false));
  }
  EXPECT_EQ(seen.size(), 100U);
  EXPECT_EQ(settings.GetNumItems("S0"), 0);
}

TEST(FobjSection, DeletingEachSectionThroughTheWalkingCursorVisitsAll) {
  FileObject settings = Numbered(100, 1);
  FobjSection cursor;
  std::string name;
  std::set<std::string> seen;
  for (bool more = settings.GetFirstSectionEntry(cursor, name); more; more = settings.GetNextSectionEntry(cursor, name)) {
    EXPECT_TRUE(seen.insert(name).second);
    EXPECT_TRUE(settings.DeleteSection(cursor, name));
  }
  EXPECT_EQ(seen.size(), 100U);
  EXPECT_EQ(settings.GetNumSections(), 0);
  settings.CreateSection("late", false);
  EXPECT_FALSE(settings.GetNextSectionEntry(cursor, name));
}

TEST(FobjSection, DeletingTheNextSectionThroughTheWalkingCursorPassesItOver) {
  FileObject settings = Numbered(3, 1);
  const std::vector<std::string> order = SectionNames(settings);
  FobjSection cursor;
  std::string name;
  settings.GetFirstSectionEntry(cursor, name);
  EXPECT_TRUE(settings.DeleteSection(cursor, order[1]));
  EXPECT_TRUE(settings.GetNextSectionEntry(cursor, name));
  EXPECT_EQ(name, order[2]);
}

TEST(FobjSection, ADeletionWithoutTheCursorMakesTheSectionWalkStartAgain) {
  FileObject settings = Numbered(3, 1);
  const std::vector<std::string> order = SectionNames(settings);
  FobjSection cursor;
  std::string name;
  settings.GetFirstSectionEntry(cursor, name);
  settings.GetNextSectionEntry(cursor, name);
  EXPECT_TRUE(settings.DeleteSection(order[2]));
  EXPECT_TRUE(settings.GetNextSectionEntry(cursor, name));
  EXPECT_EQ(name, order[0]);
  while (settings.GetNextSectionEntry(cursor, name)) {
  }
  EXPECT_TRUE(settings.DeleteItem(order[0], "k0", true));
  EXPECT_TRUE(settings.GetNextSectionEntry(cursor, name));  // a walk that had ended, too
  EXPECT_EQ(name, order[1]);
}

TEST(FobjSection, RenamingDisturbsNoWalk) {
  FileObject settings = Numbered(3, 2);
  const std::vector<std::string> order = SectionNames(settings);
  FobjSection cursor;
  std::string name;
  std::string key;
  std::string value;
  settings.GetFirstMapEntry(cursor, order[1], key, value);
  settings.GetFirstSectionEntry(cursor, name);
  EXPECT_TRUE(settings.RenameSection(order[1], "renamed"));
  EXPECT_TRUE(settings.GetNextMapEntry(cursor, key, value));
  std::multiset<std::string> rest;
  while (settings.GetNextSectionEntry(cursor, name)) rest.insert(name);
  EXPECT_EQ(rest, (std::multiset<std::string>{"renamed", order[2]}));
}

TEST(FobjSection, ReplacingASectionEndsTheWalkOverItsItems) {
  FileObject settings = Numbered(1, 3);
  FobjSection cursor;
  std::string key;
  std::string value;
  settings.GetFirstMapEntry(cursor, "S0", key, value);
  settings.CreateSection("S0", true);
  settings.SetItem("S0", "k1", "new", true);
  EXPECT_FALSE(settings.GetNextMapEntry(cursor, key, value));
}

TEST(FobjSection, ALoopThatAddsAnItemForEachItemEnds) {
  FileObject settings = Numbered(1, 50);
  FobjSection cursor;
  std::string key;
  std::string value;
  int count = 0;
  for (bool more = settings.GetFirstMapEntry(cursor, "S0", key, value); more && count < 1000;
       more = settings.GetNextMapEntry(cursor, key, value)) {
    settings.SetItem("S0", key + "+", value, true);
    settings.SetItem(key, key, value, true);
    ++count;
  }
  EXPECT_EQ(count, 50);
}

TEST(FobjSection, ACursorMayOutliveItsObjectAndBeGivenToAnother) {
  auto settings = std::make_unique<FileObject>(Numbered(3, 3));
  FobjSection cursor;
  std::string name;
  std::string key;
  std::string value;
  settings->GetFirstSectionEntry(cursor, name);
  settings->GetFirstMapEntry(cursor, "S0", key, value);
  FileObject other(*settings);
  EXPECT_FALSE(other.GetNextSectionEntry(cursor, name));
  EXPECT_FALSE(other.GetNextMapEntry(cursor, key, value));
  settings.reset();
  FileObject third = Numbered(3, 3);
  EXPECT_FALSE(third.GetNextSectionEntry(cursor, name));
  EXPECT_FALSE(third.GetNextMapEntry(cursor, key, value));
  EXPECT_TRUE(third.DeleteSection(cursor, "S1"));
}

// A transcription of the store in std::map, where each section and item has a number of its own; a walk is the set of
// numbers that it still owes. Random operations on both, everything compared.
class Model {
 public:
  struct Section {
    int number = 0;
    int mapNumber = 0;
    std::map<std::string, std::pair<int, std::string>> items;
  };
  struct Cursor {
    FobjSection real;
    std::set<int> owedSections;
    bool sectionsBegun = false;
    int sectionEpoch = 0;
    int generation = 0;
    std::set<int> owedItems;
    int mapNumber = 0;  // 0: none
    bool valid = false;
  };

  std::map<std::string, Section> sections;
  int generation = 0;
  int epoch = 1;
  int next = 1;

  Section& Make(const std::string& name) {
    if (sections.find(name) == sections.end()) {
      sections[name].number = next++;
      sections[name].mapNumber = next++;
    }
    return sections[name];
  }

  void Set(Section& section, const std::string& key, const std::string& value) {
    auto& item = section.items[key];
    if (item.first == 0) item.first = next++;
    item.second = value;
  }

  void Select(Cursor& cursor, const Section& section) {
    cursor.mapNumber = section.mapNumber;
    cursor.owedItems.clear();
    for (const auto& [key, item] : section.items) cursor.owedItems.insert(item.first);
  }

  void BeginSections(Cursor& cursor) {
    cursor.owedSections.clear();
    for (const auto& [name, section] : sections) {
      if (name != "Checksum") cursor.owedSections.insert(section.number);
    }
    cursor.sectionsBegun = true;
    cursor.sectionEpoch = epoch;
    cursor.generation = generation;
  }

  Section* OfMap(int mapNumber) {
    for (auto& [name, section] : sections) {
      if (section.mapNumber == mapNumber) return &section;
    }
    return nullptr;
  }

  Picture ToPicture() const {
    Picture picture;
    for (const auto& [name, section] : sections) {
      picture[name];
      for (const auto& [key, item] : section.items) picture[name][key] = item.second;
    }
    return picture;
  }
};

class RandomRun {
 public:
  explicit RandomRun(unsigned int seed) : m_random(seed) {}

  void Step() {
    switch (Pick(15)) {
      case 0:
      case 1:
      case 2: Set(); break;
      case 3:
      case 4: DeleteItem(); break;
      case 5: DeleteSection(); break;
      case 6: DeleteThroughCursor(); break;
      case 7: Rename(); break;
      case 8: Create(); break;
      case 9: Copy(); break;
      case 10: FirstSection(); break;
      case 11: FirstItem(); break;
      case 12:
        if (Pick(40) == 0) Empty();
        break;
      case 13:
        NextSection();
        NextSection();
        break;
      default:
        NextItem();
        NextItem();
        break;
    }
  }

  void Compare() const {
    ASSERT_EQ(PictureOf(m_store), m_model.ToPicture());
    ASSERT_EQ(m_store.GetNumSections(), static_cast<int>(m_model.sections.size()));
  }

  int delivered = 0;

 private:
  unsigned int Pick(unsigned int count) { return static_cast<unsigned int>(m_random() % count); }
  std::string Name() {
    static const char* const names[] = {"A", "B", "C", "D", "E", "Checksum", ""};
    return names[Pick(7)];
  }
  std::string Key() { return "k" + std::to_string(Pick(12)); }
  Model::Cursor& AnyCursor() { return m_cursors[Pick(3)]; }

  void Set() {
    const std::string name = Name();
    const std::string key = Key();
    const std::string value(Pick(30), 'v');
    const bool create = Pick(3) != 0;
    const bool expected = create || m_model.sections.count(name) != 0;
    ASSERT_EQ(m_store.SetItem(name, key, value, create), expected);
    ASSERT_EQ(m_store.GetErrorStatus(), expected ? 0 : 4);
    if (expected) m_model.Set(m_model.Make(name), key, value);
  }

  void DropSection(const std::string& name, Model::Cursor* cursor) {
    const bool selected = cursor != nullptr && cursor->mapNumber == m_model.sections[name].mapNumber;
    m_model.sections.erase(name);
    ++m_model.generation;
    if (cursor != nullptr) {
      ++cursor->generation;
      cursor->owedItems.clear();
      // Which one is selected then is the store's choice; its items are not delivered.
      if (selected) cursor->mapNumber = 0;
    }
    if (!m_model.sections.empty()) return;
    ++m_model.generation;
    if (cursor == nullptr) return;
    ++cursor->generation;
    cursor->owedSections.clear();
    cursor->mapNumber = 0;
  }

  int DeletionStatus(const std::string& name) const { return m_model.sections.empty() ? 2 : m_model.sections.count(name) == 0 ? 4 : 0; }

  void DeleteSection() {
    const std::string name = Name();
    const int status = DeletionStatus(name);
    ASSERT_EQ(m_store.DeleteSection(name), status == 0);
    ASSERT_EQ(m_store.GetErrorStatus(), status);
    if (status == 0) DropSection(name, nullptr);
  }

  void DeleteThroughCursor() {
    const std::string name = Name();
    Model::Cursor& cursor = AnyCursor();
    const int status = DeletionStatus(name);
    ASSERT_EQ(m_store.DeleteSection(cursor.real, name), status == 0);
    ASSERT_EQ(m_store.GetErrorStatus(), status);
    if (status == 0) DropSection(name, &cursor);
  }

  void DeleteItem() {
    const std::string name = Name();
    const std::string key = Key();
    const bool deleteEmpty = Pick(2) == 0;
    const auto section = m_model.sections.find(name);
    const int status = section == m_model.sections.end() ? 4 : section->second.items.count(key) == 0 ? 7 : 0;
    ASSERT_EQ(m_store.DeleteItem(name, key, deleteEmpty), status == 0);
    ASSERT_EQ(m_store.GetErrorStatus(), status);
    if (status != 0) return;
    section->second.items.erase(key);
    if (deleteEmpty && section->second.items.empty()) DropSection(name, nullptr);
  }

  void Rename() {
    const std::string from = Name();
    const std::string to = Name();
    const int status = DeletionStatus(from);
    ASSERT_EQ(m_store.RenameSection(from, to), status == 0);
    ASSERT_EQ(m_store.GetErrorStatus(), status);
    if (status != 0 || from == to) return;
    const Model::Section moved = m_model.sections[from];
    m_model.sections.erase(from);
    m_model.sections[to] = moved;
    // A walk that began before owes it under its new name, unless that is the checksum's.
    m_renamed.insert(moved.number);
  }

  void Create() {
    const std::string name = Name();
    const bool replace = Pick(2) == 0;
    Model::Cursor& cursor = AnyCursor();
    ASSERT_TRUE(m_store.CreateSection(cursor.real, name, replace));
    const bool known = m_model.sections.count(name) != 0;
    Model::Section& section = m_model.Make(name);
    if (known && replace) {
      section.items.clear();
      section.mapNumber = m_model.next++;
    }
    m_model.Select(cursor, section);
  }

  void Copy() {
    const std::string to = Name();
    const std::string from = Name();
    const bool one = Pick(2) == 0;
    const std::string& source = one ? to : from;
    const bool expected = m_model.sections.count(source) != 0;
    ASSERT_EQ(one ? m_store.CopySection(to, m_store) : m_store.CopySection(to, m_store, from), expected);
    if (!expected || one) return;
    m_model.Make(to).items.clear();
    if (to == from) return;
    for (const auto& [key, item] : m_model.sections[from].items) m_model.Set(m_model.sections[to], key, item.second);
  }

  void Empty() {
    m_store.MakeEmpty();
    m_model.sections.clear();
    ++m_model.epoch;
  }

  void FirstSection() {
    Model::Cursor& cursor = AnyCursor();
    m_model.BeginSections(cursor);
    std::string name;
    CheckSection(cursor, m_store.GetFirstSectionEntry(cursor.real, name), name);
  }

  void NextSection() {
    Model::Cursor& cursor = AnyCursor();
    if (cursor.sectionsBegun && cursor.sectionEpoch != m_model.epoch) {
      cursor.owedSections.clear();
    } else if (cursor.generation != m_model.generation) {
      m_model.BeginSections(cursor);
    }
    std::string name;
    CheckSection(cursor, m_store.GetNextSectionEntry(cursor.real, name), name);
  }

  void CheckSection(Model::Cursor& cursor, bool found, const std::string& name) {
    if (found) {
      ++delivered;
      ASSERT_EQ(m_model.sections.count(name), 1U) << name;
      const int number = m_model.sections[name].number;
      // One that was the checksum when the walk began may come now that it has another name.
      const bool owed = cursor.owedSections.erase(number) == 1;
      ASSERT_TRUE(owed || m_renamed.count(number) == 1) << name;
      return;
    }
    ASSERT_EQ(name, "");
    for (const auto& [live, section] : m_model.sections) {
      ASSERT_TRUE(live == "Checksum" || cursor.owedSections.count(section.number) == 0) << live;
    }
  }

  void FirstItem() {
    Model::Cursor& cursor = AnyCursor();
    const std::string name = Name();
    std::string key;
    std::string value;
    const bool found = m_store.GetFirstMapEntry(cursor.real, name, key, value);
    ASSERT_EQ(cursor.real.IsValid(), m_model.sections.count(name) != 0);
    if (!cursor.real.IsValid()) {
      cursor.owedItems.clear();
      cursor.mapNumber = 0;
      cursor.valid = false;
      ASSERT_FALSE(found);
      return;
    }
    m_model.Select(cursor, m_model.sections[name]);
    CheckItem(cursor, found, key, value);
  }

  void NextItem() {
    Model::Cursor& cursor = AnyCursor();
    std::string key;
    std::string value;
    CheckItem(cursor, m_store.GetNextMapEntry(cursor.real, key, value), key, value);
  }

  void CheckItem(Model::Cursor& cursor, bool found, const std::string& key, const std::string& value) {
    Model::Section* const section = m_model.OfMap(cursor.mapNumber);
    if (found) {
      ++delivered;
      ASSERT_NE(section, nullptr);
      ASSERT_EQ(section->items.count(key), 1U);
      ASSERT_EQ(section->items[key].second, value);
      ASSERT_EQ(cursor.owedItems.erase(section->items[key].first), 1U);
      return;
    }
    ASSERT_EQ(key + value, "");
    if (section == nullptr) return;
    for (const auto& [live, item] : section->items) ASSERT_EQ(cursor.owedItems.count(item.first), 0U) << live;
  }

  std::mt19937 m_random;
  FileObject m_store;
  Model m_model;
  Model::Cursor m_cursors[3];
  std::set<int> m_renamed;
};

TEST(FobjSectionLong, RandomOperationsAgreeWithATranscription) {
  int delivered = 0;
  for (unsigned int seed = 1; seed <= 200; ++seed) {
    RandomRun run(seed);
    for (int step = 0; step < 1500; ++step) {
      run.Step();
      if (testing::Test::HasFatalFailure()) FAIL() << "seed " << seed << " step " << step;
      if (step % 50 == 0) run.Compare();
      if (testing::Test::HasFatalFailure()) FAIL() << "seed " << seed << " step " << step;
    }
    delivered += run.delivered;
  }
  EXPECT_GT(delivered, 30000);
}

}  // namespace
