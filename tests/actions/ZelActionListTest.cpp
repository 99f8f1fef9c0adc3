#include "zelbase/actions/ZelActionList.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "tests/actions/ActionsTestHelp.h"
#include "tests/numerics/CountedAllocations.h"
#include "tests/support/InChild.h"
#include "tests/support/TemporaryFolder.h"
#include "zelbase/platform/CFile.h"
#include "zelbase/platform/FixedFolders.h"
#include "zelbase/platform/FixedModules.h"

namespace {

using Names = std::vector<std::string>;

// An action that knows its kind.
class KindAction : public ZelAction {
 public:
  explicit KindAction(const std::string& kindName) : kind(kindName) {}
  const std::string kind;
};

MakingCreator* Kind(const std::string& kind, int* destroyed = nullptr) {
  return new MakingCreator([kind] { return new KindAction(kind); }, destroyed);
}

// "kind|fields" of the action that is made, "none" without one.
std::string Made(ZelActionList& list, const std::string& id) {
  const std::unique_ptr<ZelAction> action(list.Create(id));
  if (action == nullptr) return "none";
  const auto* const known = dynamic_cast<KindAction*>(action.get());
  return (known == nullptr ? "" : known->kind) + "|" + FieldsOf(*action);
}

// What Made gives for an action of no more than a group and a description; and for a bare one.
std::string Loaded(const std::string& kind, const std::string& id, const std::string& group, const std::string& description = "") {
  return kind + "|0|" + id + "|" + group + "|" + description + "|||||||" + id;
}
std::string Bare(const std::string& kind) { return kind + "|0||BaseAction||||||||"; }

// --- Create -----------------------------------------------------------------------------------------------------------------

TEST(ZelActionListCreate, AnUnknownNameGivesNull) {
  ZelActionList list;
  EXPECT_EQ(list.Create("a"), nullptr);
  list.RegisterActionGroup("G", Kind("g"));
  EXPECT_EQ(list.Create("g"), nullptr);
  EXPECT_EQ(list.Create(""), nullptr);
}

TEST(ZelActionListCreate, AnIdGivesAnActionOfItsGroupConfiguredFromItsSection) {
  ZelActionList list;
  list.RegisterActionGroup("G", Kind("g"));
  list.RegisterActionGroup("H", Kind("h"));
  list.RegisterAction("one",
                      new CountedFile(nullptr, {{"one", {{"Group", "H"}, {"Custom", "1"}, {"ToolTip", "T"}}}, {"two", {{"Group", "G"}}}}));
  EXPECT_EQ(Made(list, "one"), "h|0 custom|one|H||T||||||one");
  EXPECT_EQ(list.Create("two"), nullptr) << "in the file, but not registered";
}

TEST(ZelActionListCreate, AGroupGivesABareActionWithoutASectionNameAndNotLoaded) {
  ZelActionList list;
  list.RegisterActionGroup("G", Kind("g"));
  list.RegisterAction("one", new CountedFile(nullptr, {{"one", {{"Group", "G"}}}, {"G", {{"Description", "not read"}}}}));
  EXPECT_EQ(Made(list, "G"), Bare("g"));
}

TEST(ZelActionListCreate, ARegisteredIdGoesBeforeAGroupOfTheSameName) {
  ZelActionList list;
  list.RegisterActionGroup("G", Kind("g"));
  list.RegisterActionGroup("H", Kind("h"));
  list.RegisterAction("G", new CountedFile(nullptr, {{"G", {{"Group", "H"}}}}));
  EXPECT_EQ(Made(list, "G"), Loaded("h", "G", "H"));
}

TEST(ZelActionListCreate, AnUnknownOrMissingGroupGivesNullAndTheIdIsNotTriedAsAGroup) {
  ZelActionList list;
  for (const char* const name : {"unknown", "missing", "no section", "wrong case", "empty"}) {
    list.RegisterActionGroup(name, Kind("not this"));
  }
  list.RegisterActionGroup("G", Kind("g"));
  auto* const file = new CountedFile(
      nullptr,
      {{"unknown", {{"Group", "X"}}}, {"missing", {{"Description", "D"}}}, {"wrong case", {{"Group", "g"}}}, {"empty", {{"Group", ""}}}});
  for (const char* const name : {"unknown", "missing", "no section", "wrong case", "empty"}) list.RegisterAction(name, file);
  for (const char* const name : {"unknown", "missing", "no section", "wrong case", "empty"}) {
    EXPECT_EQ(list.Create(name), nullptr) << name;
  }
  list.RegisterActionGroup("", Kind("of no name"));
  EXPECT_EQ(Made(list, "empty"), Loaded("of no name", "empty", ""));
}

TEST(ZelActionListCreate, ACreatorMayGiveNull) {
  ZelActionList list;
  list.RegisterActionGroup("G", new MakingCreator([] { return nullptr; }));
  list.RegisterAction("one", new CountedFile(nullptr, {{"one", {{"Group", "G"}}}}));
  EXPECT_EQ(list.Create("G"), nullptr);
  EXPECT_EQ(list.Create("one"), nullptr);
}

// Writes down what it finds when it is loaded, and fails.
class FailingLoad : public ZelAction {
 public:
  explicit FailingLoad(std::string& seen) : m_seen(seen) {}
  bool Load(FileObject& file) override {
    m_seen = GetSectionName() + "|" + GetName() + "|" + std::to_string(file.GetNumSections());
    return false;
  }

 private:
  std::string& m_seen;
};

TEST(ZelActionListCreate, TheSectionNameIsSetBeforeLoadWhoseResultIsNotLookedAt) {
  std::string seen;
  ZelActionList list;
  list.RegisterActionGroup("G", new MakingCreator([&seen] { return new FailingLoad(seen); }));
  list.RegisterAction("one", new CountedFile(nullptr, {{"one", {{"Group", "G"}}}, {"two", {{"Group", "G"}}}}));
  const std::unique_ptr<ZelAction> action(list.Create("one"));
  EXPECT_NE(action, nullptr);
  EXPECT_EQ(seen, "one||2");
}

TEST(ZelActionListCreate, EachActionIsANewOneOfTheCallers) {
  std::unique_ptr<ZelAction> first;
  {
    ZelActionList list;
    list.RegisterActionGroup("G", Kind("g"));
    first.reset(list.Create("G"));
    const std::unique_ptr<ZelAction> second(list.Create("G"));
    EXPECT_NE(first, second);
  }
  EXPECT_EQ(first->GetActionGroup(), "BaseAction") << "it outlives the list";
}

TEST(ZelActionListCreate, WhatTheFileThrowsPassesAndNothingIsLost) {
  int made = 0, gone = 0;
  struct Counting : ZelAction {
    explicit Counting(int& count) : m_count(count) {}
    ~Counting() override { ++m_count; }
    int& m_count;
  };
  ZelActionList list;
  list.RegisterActionGroup("G", new MakingCreator([&] { return ++made, new Counting(gone); }));
  auto* const file = new CountedFile(nullptr, {{"one", {{"Group", "G"}}}, {"two", {{"Custom", "1"}}}});
  file->ThrowExceptions(true);
  list.RegisterAction("one", file);
  list.RegisterAction("two", file);
  EXPECT_THROW(list.Create("one"), std::string) << "SurveyTypes is missing";
  EXPECT_THROW(list.Create("two"), std::string) << "Group is missing";
  EXPECT_EQ(made, 1);
  EXPECT_EQ(gone, 1);
}

TEST(ZelActionListCreate, ChangesOfTheFileCountAtTheNextCreate) {
  ZelActionList list;
  auto* const file = new FileObject;
  list.RegisterActionGroup("G", Kind("g"));
  list.RegisterAction("one", file);
  EXPECT_EQ(Made(list, "one"), "none");
  Fill(*file, {{"one", {{"Group", "G"}}}});
  EXPECT_EQ(Made(list, "one"), Loaded("g", "one", "G"));
}

TEST(ZelActionListCreate, AsksForNoMemoryButTheActions) {
  ZelActionList list;
  const std::string name = "a group with a name far beyond the short ones ";
  for (int i = 0; i < 100; ++i) list.RegisterActionGroup(name + std::to_string(i), new MakingCreator);
  std::string known = name + "50", unknown = name + "x";
  const long before = CountedAllocations();
  ZelAction* const none = list.Create(std::move(unknown));
  const long afterNone = CountedAllocations();
  const std::unique_ptr<ZelAction> action(list.Create(std::move(known)));
  const long after = CountedAllocations();
  EXPECT_EQ(none, nullptr);
  EXPECT_NE(action, nullptr);
  EXPECT_EQ(afterNone - before, 0);
  EXPECT_EQ(after - afterNone, 1);
}

// Random registrations against a plain transcription: the first of a name, ids before groups.
TEST(ZelActionListCreate, MatchesASecondRegistry) {
  std::mt19937 random(112);
  const auto name = [&random] { return std::string(1, static_cast<char>('a' + random() % 8)); };
  for (int round = 0; round < 200; ++round) {
    ZelActionList list;
    std::map<std::string, std::string> kinds, groups;  // group to kind, id to group
    std::vector<std::unique_ptr<MakingCreator>> refusedCreators;
    std::vector<std::unique_ptr<FileObject>> refusedFiles;
    for (int i = 0; i < 12; ++i) {
      const std::string key = name();
      if (random() % 2 == 0) {
        std::unique_ptr<MakingCreator> creator(Kind("kind" + std::to_string(i)));
        list.RegisterActionGroup(key, creator.get());
        const bool taken = kinds.emplace(key, "kind" + std::to_string(i)).second;
        if (taken) static_cast<void>(creator.release());
      } else {
        const std::string group = name();
        auto file = std::make_unique<FileObject>();
        Fill(*file, {{key, {{"Group", group}}}});
        list.RegisterAction(key, file.get());
        const bool taken = groups.emplace(key, group).second;
        if (taken) static_cast<void>(file.release());
      }
    }
    Names expectedIds, expectedGroups, ids, actionGroups;
    for (const auto& [id, group] : groups) expectedIds.push_back(id);
    for (const auto& [group, kind] : kinds) expectedGroups.push_back(group);
    EXPECT_EQ(list.GetActionIDs(ids), static_cast<int>(groups.size()));
    EXPECT_EQ(list.GetActionGroups(actionGroups), static_cast<int>(kinds.size()));
    EXPECT_EQ(ids, expectedIds);
    EXPECT_EQ(actionGroups, expectedGroups);
    for (char c = 'a'; c < 'a' + 9; ++c) {
      const std::string key(1, c);
      std::string expected = "none";
      if (groups.contains(key)) {
        const std::string& group = groups[key];
        if (kinds.contains(group)) expected = Loaded(kinds[group], key, group);
      } else if (kinds.contains(key)) {
        expected = Bare(kinds[key]);
      }
      EXPECT_EQ(Made(list, key), expected) << key;
    }
  }
}

// --- Registration -----------------------------------------------------------------------------------------------------------

TEST(ZelActionList, TheFirstOfANameStaysAndWhatIsRefusedIsItsCallers) {
  int refusedDestroyed = 0;
  const std::unique_ptr<MakingCreator> creator(Kind("second", &refusedDestroyed));
  CountedFile file(&refusedDestroyed, {{"one", {{"Group", "G"}, {"Description", "second"}}}});
  {
    ZelActionList list;
    list.RegisterActionGroup("G", Kind("first"));
    list.RegisterActionGroup("G", creator.get());
    list.RegisterAction("one", new CountedFile(nullptr, {{"one", {{"Group", "G"}, {"Description", "first"}}}}));
    list.RegisterAction("one", &file);
    EXPECT_EQ(Made(list, "one"), Loaded("first", "one", "G", "first"));
  }
  EXPECT_EQ(refusedDestroyed, 0);
}

TEST(ZelActionList, NullIsIgnored) {
  ZelActionList list;
  list.RegisterActionGroup("G", nullptr);
  list.RegisterAction("one", nullptr);
  Names names = {"before"};
  EXPECT_EQ(list.GetActionIDs(names), 0);
  EXPECT_TRUE(names.empty());
  names = {"before"};
  EXPECT_EQ(list.GetActionGroups(names), 0);
  EXPECT_TRUE(names.empty());
  list.RegisterActionGroup("one", Kind("g"));
  EXPECT_EQ(Made(list, "one"), Bare("g")) << "the id was not taken";
}

TEST(ZelActionList, NamesComeInTheOrderOfTheirBytesInPlaceOfWhatWasThere) {
  ZelActionList list;
  auto* const file = new FileObject;
  auto* const creator = new MakingCreator;
  const Names shuffled = {"b", "\xE9", "B", "", "a", "b\x01", "ab", "Z"};
  for (const std::string& name : shuffled) list.RegisterAction(name, file);
  for (const std::string& name : shuffled) list.RegisterActionGroup(name + "!", creator);
  Names ids = {"before", "more"}, groups = ids;
  EXPECT_EQ(list.GetActionIDs(ids), 8);
  EXPECT_EQ(list.GetActionGroups(groups), 8);
  EXPECT_EQ(ids, (Names{"", "B", "Z", "a", "ab", "b", "b\x01", "\xE9"}));
  EXPECT_EQ(groups, (Names{"!", "B!", "Z!", "a!", "ab!", "b\x01!", "b!", "\xE9!"}));
}

TEST(ZelActionList, CreatorsAndFilesGoWithTheListEachOnceHoweverManyNamesItHas) {
  int creators = 0, files = 0;
  {
    ZelActionList list;
    auto* const creator = Kind("g", &creators);
    auto* const file = new CountedFile(&files, {{"a", {{"Group", "G"}}}, {"b", {{"Group", "H"}}}, {"c", {{"Group", "G"}}}});
    for (const char* const group : {"G", "H", "I"}) list.RegisterActionGroup(group, creator);
    for (const char* const id : {"a", "b", "c"}) list.RegisterAction(id, file);
    list.RegisterActionGroup("J", Kind("j", &creators));
    list.RegisterAction("d", new CountedFile(&files));
    EXPECT_EQ(Made(list, "b"), Loaded("g", "b", "H"));
    EXPECT_EQ(creators + files, 0);
  }
  EXPECT_EQ(creators, 2);
  EXPECT_EQ(files, 2);
}

TEST(ZelActionList, CopiesShareThePointersAndTheLastDestroysThemOnce) {
  int creators = 0, files = 0;
  auto list = std::make_unique<ZelActionList>();
  list->RegisterActionGroup("G", Kind("g", &creators));
  auto* const file = new CountedFile(&files, {{"a", {{"Group", "G"}}}});
  list->RegisterAction("a", file);
  auto copy = std::make_unique<ZelActionList>(*list);
  ZelActionList assigned;
  assigned = *copy;
  copy->RegisterAction("b", file);
  Names ids;
  EXPECT_EQ(list->GetActionIDs(ids), 1) << "a copy registers for itself";
  list.reset();
  copy.reset();
  EXPECT_EQ(creators + files, 0);
  file->SetItem("a", "Description", "the same file", true);
  EXPECT_EQ(Made(assigned, "a"), Loaded("g", "a", "G", "the same file"));
  assigned = ZelActionList();
  EXPECT_EQ(creators, 1);
  EXPECT_EQ(files, 1);
}

TEST(ZelActionList, WhatGoesMayAskTheList) {
  int destroyed = 0;
  std::string ofOther;
  {
    ZelActionList list;
    auto* const creator = Kind("a", &destroyed);
    list.RegisterActionGroup("a", creator);
    list.RegisterActionGroup("b", Kind("b", &destroyed));
    creator->onEnd = [&] {
      EXPECT_EQ(list.Create("a"), nullptr);
      ofOther = Made(list, "b");
      list.RegisterActionGroup("c", Kind("c", &destroyed));
    };
  }
  EXPECT_EQ(ofOther, Bare("b"));
  EXPECT_EQ(destroyed, 3);
}

TEST(ZelActionList, OperationsHaveTheFormsOfTheInterface) {
  static_assert(std::has_virtual_destructor_v<ZelActionList>);
  static_assert(std::is_same_v<decltype(&ZelActionList::GetActionList), ZelActionList& (*)()>);
  static_assert(std::is_same_v<decltype(&ZelActionList::Create), ZelAction* (ZelActionList::*)(std::string)>);
  static_assert(std::is_same_v<decltype(&ZelActionList::SaveCustomActions), bool (ZelActionList::*)()>);
  EXPECT_EQ(ZelActionList::PATH_SEPARATOR, '\\');
  EXPECT_EQ(ZelActionList::INI_ITEM_SEPARATOR, '.');
}

TEST(ZelActionList, ThereIsOne) {
  ZelActionList* onThread = nullptr;
  std::thread([&] { onThread = &ZelActionList::GetActionList(); }).join();
  EXPECT_EQ(onThread, &ZelActionList::GetActionList());
}

// A static object that uses the list when it goes, after the list has gone to the first user.
struct LateUser {
  ~LateUser() {
    if (active) Made(ZelActionList::GetActionList(), "a");
  }
  bool active = false;
};
LateUser g_late;

TEST(ZelActionList, TheOneListDestroysEachCreatorAndFileOnceAtExit) {
  ChildProcess child(
      [] {
        g_late.active = true;
        const auto tell = [](const char* what) {
          return [what] {
            std::fputs(what, stdout);
            std::fflush(stdout);
            Names ids;
            ZelActionList::GetActionList().GetActionIDs(ids);  // still there
          };
        };
        auto* const creator = new MakingCreator;
        creator->onEnd = tell("creator ");
        auto* const file = new CountedFile;
        file->onEnd = tell("file ");
        ZelActionList& list = ZelActionList::GetActionList();
        for (const char* const name : {"a", "b", "c"}) list.RegisterAction(name, file);
        for (const char* const name : {"a", "b", "c"}) list.RegisterActionGroup(name, creator);
        return 0;
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  EXPECT_EQ(child.OutputText(), "creator file ");
}

// --- The name of the application and the places -------------------------------------------------------------------------------

TEST(ZelActionListNames, TheApplicationIsTheProgramWithoutExtensionUnlessAHostSaysOtherwise) {
  struct Row {
    const char* path;
    const char* name;
  };
  FixedModules modules;
  PlatformOverride<PlatformModules> guard(modules);
  for (const Row& row : {Row{"C:\\suite\\survey.exe", "survey"},
                         {"/usr\\bin\\zel.exe", "zel"},
                         {"C:\\suite\\my.tool.exe", "my.tool"},
                         {"/prog.exe", "prog"},
                         {"prog.exe", "prog"},
                         {"C:\\a.b\\prog.exe", "prog"},
                         {"", ""}}) {
    modules.SetProgramPath(row.path);
    EXPECT_EQ(ZelActionList::GetApplicationName(), row.name) << row.path;
  }
  modules.SetProgramPath("C:\\suite\\survey.exe");
  ZelActionList::SetApplicationName("Acquisition");
  EXPECT_EQ(ZelActionList::GetApplicationName(), "Acquisition");
  ZelActionList::SetApplicationName("");
  EXPECT_EQ(ZelActionList::GetApplicationName(), "survey") << "an empty name takes it back";
}

TEST(ZelActionListNames, GetModulePathIsTheProgramsFullNameCutTo260) {
  const ZelActionList list;
  EXPECT_EQ(list.GetModulePath(), PlatformModules::System().ProgramPath().substr(0, 260));
  EXPECT_NE(list.GetModulePath().find("\\actions_tests"), std::string::npos);
  FixedModules modules;
  PlatformOverride<PlatformModules> guard(modules);
  EXPECT_EQ(list.GetModulePath(), "");
  for (const std::size_t length : {259u, 260u, 261u, 1000u}) {
    modules.SetProgramPath("C:\\" + std::string(length - 3, 'x'));
    EXPECT_EQ(list.GetModulePath().size(), length < 260 ? length : 260u);
  }
  modules.SetProgramPath("C:\\" + std::string(300, 'x') + ".exe");
  EXPECT_EQ(ZelActionList::GetApplicationName(), std::string(300, 'x')) << "of the whole path";
}

TEST(ZelActionListNames, TheCustomFileLiesInTheCommonFolderUnderTheApplicationsName) {
  FixedFolders folders;
  PlatformOverride<PlatformFolders> guard(folders);
  FixedModules modules;
  modules.SetProgramPath("C:\\suite\\survey.exe");
  PlatformOverride<PlatformModules> modulesGuard(modules);
  EXPECT_EQ(ZelActionList::CustomActionsFileName(), "");
  folders.SetCommonData("C:\\data");
  EXPECT_EQ(ZelActionList::CustomActionsFileName(), "C:\\data\\VESOK\\ZELCORE\\CustomActions[survey].ini");
}

// --- SaveCustomActions --------------------------------------------------------------------------------------------------------

// Each test saves in a child of its own: what was registered with the one list stays there.
class ZelActionListSave : public testing::Test {
 protected:
  void SetUp() override {
    m_folder.MakeFolder("VESOK");
    m_folder.MakeFolder("VESOK/ZELCORE");
    m_folders.SetCommonData(m_folder.InterfacePath());
  }

  // Saves what `prepare` registers with the one list, whatever object the saving is asked of.
  template <class Prepare>
  void Save(bool expected, Prepare prepare) {
    ExpectInChild([&] {
      PlatformOverride<PlatformFolders> guard(m_folders);
      ZelActionList::SetApplicationName("app");
      prepare(ZelActionList::GetActionList());
      EXPECT_EQ(ZelActionList::GetActionList().SaveCustomActions(), expected);
    });
  }

  std::string Saved() const { return m_folder.Read(kFile); }

  Sections SavedContent() const {
    FileObject file;
    EXPECT_TRUE(file.FileOpen(m_folder.File(kFile), 0u));
    return ContentOf(file);
  }

  static std::map<std::string, std::string> Item(const std::string& group, const std::string& custom, const std::string& description = "") {
    return {{"Group", group}, {"SurveyTypes", ""}, {"Custom", custom}, {"Description", description}, {"ToolTip", ""}};
  }

  static constexpr char kFile[] = "VESOK/ZELCORE/CustomActions[app].ini";
  TemporaryFolder m_folder;
  FixedFolders m_folders;
};

TEST_F(ZelActionListSave, WritesTheCustomActionsAndNoOthers) {
  Save(true, [](ZelActionList& list) {
    list.RegisterActionGroup("G", Kind("g"));
    auto* const file = new CountedFile(nullptr, {{"mine", Item("G", "1", "my own")},
                                                 {"theirs", Item("G", "0")},
                                                 {"also mine", Item("G", "-3")},
                                                 {"unknown", Item("X", "1")},
                                                 {"not registered", Item("G", "1")}});
    for (const char* const id : {"mine", "theirs", "also mine", "unknown", "absent"}) list.RegisterAction(id, file);
  });
  EXPECT_EQ(SavedContent(), (Sections{{"mine", Item("G", "1", "my own")}, {"also mine", Item("G", "1")}}));
}

TEST_F(ZelActionListSave, TheFilesTextIsThatOfAnySettingsFile) {
  Save(true, [](ZelActionList& list) {
    list.RegisterActionGroup("G", Kind("g"));
    list.RegisterAction("mine", new CountedFile(nullptr, {{"mine", {{"Group", "G"}, {"Custom", "1"}, {"Description", "D\xE9j\xE0"}}}}));
  });
  const std::string text = Saved();
  ASSERT_GE(text.size(), 10u);
  EXPECT_EQ(text.substr(0, 8), "[mine]\r\n");
  EXPECT_EQ(text.substr(text.size() - 4), "\r\n\r\n");
  std::set<std::string> lines;
  for (std::size_t at = 8; at < text.size() - 2;) {
    const std::size_t end = text.find("\r\n", at);
    lines.insert(text.substr(at, end - at));
    at = end + 2;
  }
  EXPECT_EQ(lines, (std::set<std::string>{"Group = G", "SurveyTypes = ", "Custom = 1", "Description = D\xE9j\xE0", "ToolTip = "}));
}

TEST_F(ZelActionListSave, WithoutCustomActionsTheFileIsWrittenAllTheSame) {
  m_folder.Write(kFile, "[old]\r\nGroup = G\r\n");
  Save(true, [](ZelActionList&) {});
  EXPECT_TRUE(m_folder.Exists(kFile));
  EXPECT_EQ(Saved(), "");
}

TEST_F(ZelActionListSave, AnActionThatIsNotRegisteredVanishesFromTheFile) {
  m_folder.Write(kFile, "; mine\r\n[old]\r\nGroup = G\r\nCustom = 1\r\n");
  Save(true, [](ZelActionList& list) {
    list.RegisterActionGroup("G", Kind("g"));
    list.RegisterAction("new", new CountedFile(nullptr, {{"new", Item("G", "1")}}));
  });
  EXPECT_EQ(SavedContent(), (Sections{{"new", Item("G", "1")}}));
  EXPECT_EQ(Saved().find(';'), std::string::npos);
}

TEST_F(ZelActionListSave, SavesTheOneListsActionsWhateverListItIsCalledOn) {
  ExpectInChild([&] {
    PlatformOverride<PlatformFolders> guard(m_folders);
    ZelActionList::SetApplicationName("app");
    ZelActionList::GetActionList().RegisterActionGroup("G", Kind("g"));
    ZelActionList::GetActionList().RegisterAction("one", new CountedFile(nullptr, {{"one", Item("G", "1")}}));
    ZelActionList other;
    other.RegisterActionGroup("G", Kind("g"));
    other.RegisterAction("two", new CountedFile(nullptr, {{"two", Item("G", "1")}}));
    EXPECT_TRUE(other.SaveCustomActions());
  });
  EXPECT_EQ(SavedContent(), (Sections{{"one", Item("G", "1")}}));
}

TEST_F(ZelActionListSave, EachApplicationHasAFileOfItsOwnUnderTheEnvironmentsFolder) {
  const EnvironmentVariable common("ZELBASE_COMMON_DATA", m_folder.Path().c_str());
  ExpectInChild([] {
    ZelActionList& list = ZelActionList::GetActionList();
    EXPECT_TRUE(list.SaveCustomActions());
    ZelActionList::SetApplicationName("Control Center");
    EXPECT_TRUE(list.SaveCustomActions());
  });
  EXPECT_TRUE(m_folder.Exists("VESOK/ZELCORE/CustomActions[actions_tests].ini"));
  EXPECT_TRUE(m_folder.Exists("VESOK/ZELCORE/CustomActions[Control Center].ini"));
  EXPECT_FALSE(m_folder.Exists(kFile));
}

// An action that changes one of its names when it is loaded.
class Renaming : public ZelAction {
 public:
  Renaming(const char* section, const char* name) : m_section(section), m_newName(name) {}
  bool Load(FileObject& file) override {
    ZelAction::Load(file);
    if (m_section != nullptr) SetSectionName(m_section);
    if (m_newName != nullptr) SetName(m_newName);
    return true;
  }
  using ZelAction::SetName;

 private:
  const char* m_section;
  const char* m_newName;
};

MakingCreator* Rename(const char* section, const char* name) {
  return new MakingCreator([section, name] { return new Renaming(section, name); });
}

TEST_F(ZelActionListSave, ACustomActionIsWrittenUnderItsNameEvenIfItsSectionNameDiffers) {
  Save(true, [](ZelActionList& list) {
    list.RegisterActionGroup("G", Rename("elsewhere", "renamed"));
    list.RegisterAction("a", new CountedFile(nullptr, {{"a", Item("G", "1")}}));
  });
  EXPECT_EQ(SavedContent(), (Sections{{"renamed", Item("G", "1")}}));
}

TEST_F(ZelActionListSave, TwoThatSaveUnderOneNameMergeAndTheLaterWins) {
  Save(true, [](ZelActionList& list) {
    list.RegisterActionGroup("G", Rename(nullptr, "same"));
    auto* const file = new CountedFile(nullptr, {{"a", Item("G", "1", "first")}, {"b", Item("G", "1", "second")}});
    list.RegisterAction("b", file);
    list.RegisterAction("a", file);
  });
  EXPECT_EQ(SavedContent(), (Sections{{"same", Item("G", "1", "second")}}));
}

TEST_F(ZelActionListSave, ASectionNameThatIsThereAlreadyFailsAndLeavesAnEmptyFile) {
  m_folder.Write(kFile, "[old]\r\nGroup = G\r\n");
  Save(false, [](ZelActionList& list) {
    list.RegisterActionGroup("G", Kind("g"));
    list.RegisterActionGroup("R", Rename("a", nullptr));
    auto* const file = new CountedFile(nullptr, {{"a", Item("G", "1")}, {"b", Item("R", "1")}, {"c", Item("G", "1")}});
    for (const char* const id : {"a", "b", "c"}) list.RegisterAction(id, file);
  });
  EXPECT_TRUE(m_folder.Exists(kFile));
  EXPECT_EQ(Saved(), "") << "and the earlier content is gone";
}

TEST_F(ZelActionListSave, ASectionNameIsOnlyComparedWithWhatWasWrittenBefore) {
  Save(true, [](ZelActionList& list) {
    list.RegisterActionGroup("G", Kind("g"));
    list.RegisterActionGroup("R", Rename("b", nullptr));
    auto* const file = new CountedFile(nullptr, {{"a", Item("R", "1")}, {"b", Item("G", "1")}});
    for (const char* const id : {"a", "b"}) list.RegisterAction(id, file);
  });
  EXPECT_EQ(SavedContent(), (Sections{{"a", Item("R", "1")}, {"b", Item("G", "1")}}));
}

TEST_F(ZelActionListSave, TheOneActionThatCollidesIsNotDestroyedAndAllOthersAre) {
  ExpectInChild(
      [&] {
        static std::set<ZelAction*> alive;
        static int made = 0;
        struct Kept : Renaming {
          explicit Kept(const char* section) : Renaming(section, nullptr) { alive.insert(this), ++made; }
          ~Kept() override { alive.erase(this); }
        };
        PlatformOverride<PlatformFolders> guard(m_folders);
        ZelActionList::SetApplicationName("app");
        ZelActionList& list = ZelActionList::GetActionList();
        list.RegisterActionGroup("G", new MakingCreator([] { return new Kept(nullptr); }));
        list.RegisterActionGroup("R", new MakingCreator([] { return new Kept("a"); }));
        auto* const file = new CountedFile(
            nullptr, {{"a", Item("G", "1")}, {"b", Item("G", "0")}, {"c", Item("G", "1")}, {"d", Item("R", "1")}, {"e", Item("G", "1")}});
        for (const char* const id : {"a", "b", "c", "d", "e"}) list.RegisterAction(id, file);
        EXPECT_FALSE(list.SaveCustomActions());
        EXPECT_EQ(made, 4) << "the last is not reached";
        ASSERT_EQ(alive.size(), 1u);
        EXPECT_EQ((*alive.begin())->GetName(), "d");
        const std::set<ZelAction*> left = alive;
        for (ZelAction* const action : left) delete action;
      },
      ChildProcess::Ending::Full);
}

// Saves nothing, and says so.
class SavesNothing : public ZelAction {
 public:
  bool Save(FileObject&) override { return false; }
};

TEST_F(ZelActionListSave, AnActionSavesItselfByItsOwnSaveWhoseResultIsNotLookedAt) {
  Save(true, [](ZelActionList& list) {
    list.RegisterActionGroup("G", new MakingCreator([] { return new SavesNothing; }));
    list.RegisterAction("a", new CountedFile(nullptr, {{"a", Item("G", "1")}}));
  });
  EXPECT_EQ(Saved(), "");
}

TEST_F(ZelActionListSave, WhatALoadThrowsPassesAndLeavesAnEmptyFile) {
  m_folder.Write(kFile, "[old]\r\n");
  ExpectInChild([&] {
    PlatformOverride<PlatformFolders> guard(m_folders);
    ZelActionList::SetApplicationName("app");
    ZelActionList& list = ZelActionList::GetActionList();
    list.RegisterActionGroup("G", Kind("g"));
    auto* const file = new CountedFile(nullptr, {{"a", {{"Group", "G"}}}});
    file->ThrowExceptions(true);
    list.RegisterAction("a", file);
    EXPECT_THROW(list.SaveCustomActions(), std::string);
  });
  EXPECT_EQ(Saved(), "");
}

TEST_F(ZelActionListSave, WithoutACommonFolderItFails) {
  m_folders.SetCommonData(std::nullopt);
  Save(false, [](ZelActionList&) {});
}

TEST_F(ZelActionListSave, TheFolderIsNotMade) {
  std::filesystem::remove(m_folder.File("VESOK/ZELCORE"));
  Save(false, [](ZelActionList&) {});
  EXPECT_FALSE(m_folder.Exists("VESOK/ZELCORE"));
}

TEST_F(ZelActionListSave, AFileThatMayNotBeWrittenStaysAsItIs) {
  const std::string path = m_folder.Write(kFile, "[old]\r\nGroup = G\r\n");
  ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
  ASSERT_EQ(::chmod(m_folder.Path().c_str(), 0755), 0);
  ExpectInChild([&] {
    PlatformOverride<PlatformFolders> guard(m_folders);
    ZelActionList::SetApplicationName("app");
    ASSERT_TRUE(BecomeOrdinaryUser());
    EXPECT_FALSE(ZelActionList::GetActionList().SaveCustomActions());
  });
  EXPECT_EQ(Saved(), "[old]\r\nGroup = G\r\n");
}

TEST_F(ZelActionListSave, AFileThatAnotherKeepsToItselfStaysAsItIs) {
  const std::string path = m_folder.Write(kFile, "[old]\r\nGroup = G\r\n");
  CFile other(path.c_str(), CFile::modeRead | CFile::shareDenyWrite);
  Save(false, [](ZelActionList&) {});
  EXPECT_EQ(Saved(), "[old]\r\nGroup = G\r\n");
}

TEST_F(ZelActionListSave, AFailedWriteIsFalse) {
  ExpectInChild([&] {
    PlatformOverride<PlatformFolders> guard(m_folders);
    ZelActionList::SetApplicationName("app");
    ZelActionList& list = ZelActionList::GetActionList();
    list.RegisterActionGroup("G", Kind("g"));
    list.RegisterAction("a", new CountedFile(nullptr, {{"a", Item("G", "1", std::string(100000, 'x'))}}));
    LimitFileSize(1000);
    EXPECT_FALSE(list.SaveCustomActions());
  });
}

TEST_F(ZelActionListSave, AFolderInTheFilesPlaceFails) {
  m_folder.MakeFolder(kFile);
  Save(false, [](ZelActionList&) {});
}

TEST_F(ZelActionListSave, WhatWasSavedReadsBackAndSavesTheSame) {
  const auto prepare = [](ZelActionList& list, FileObject* file, const Sections& sections) {
    list.RegisterActionGroup("G", Kind("g"));
    list.RegisterActionGroup("H", Kind("h"));
    for (const auto& [id, items] : sections) list.RegisterAction(id, file);
  };
  Sections sections;
  for (int i = 0; i < 50; ++i) sections["action " + std::to_string(i)] = Item(i % 2 == 0 ? "G" : "H", "1", "number " + std::to_string(i));
  Save(true, [&](ZelActionList& list) { prepare(list, new CountedFile(nullptr, sections), sections); });
  EXPECT_EQ(SavedContent(), sections);
  Save(true, [&](ZelActionList& list) {
    auto* const file = new FileObject;
    EXPECT_TRUE(file->FileOpen(m_folder.File(kFile), 0u));
    prepare(list, file, sections);
  });
  EXPECT_EQ(SavedContent(), sections);
}

}  // namespace
