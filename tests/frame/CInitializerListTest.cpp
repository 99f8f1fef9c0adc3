#include "zelbase/frame/CInitializerList.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using Journal = std::vector<std::string>;

// Writes "name:phase" into the journal for each call and "~name" at its end; `onDevices` and `onEnd` run
// inside those calls.
class Noted : public CBaseInitializer {
 public:
  Noted(std::string name, Journal& journal) : m_name(std::move(name)), m_journal(journal) {}
  ~Noted() override {
    m_journal.push_back("~" + m_name);
    if (onEnd) onEnd();
  }

  std::string GetName() const override {
    m_journal.push_back("?" + m_name);
    return m_name;
  }
  void InitializeTemplates(CWinApp* given) override {
    application = given;
    Note("Templates");
  }
  void RegisterDevices() override {
    Note("Devices");
    if (onDevices) onDevices();
  }
  void RegisterComps() override { Note("Comps"); }
  void RegisterLoggers() override { Note("Loggers"); }
  void RegisterLayers() override { Note("Layers"); }
  void RegisterTools() override { Note("Tools"); }
  bool RegisterViews() override {
    Note("Views");
    return m_name == "a";
  }
  void RegisterActionGroups() override { Note("ActionGroups"); }
  void RegisterActions() override { Note("Actions"); }
  void RegisterGeoidModel() override { Note("GeoidModel"); }

  const std::string& Name() const { return m_name; }

  CWinApp* application = nullptr;
  std::function<void()> onDevices;
  std::function<void()> onEnd;

 private:
  void Note(const char* phase) { m_journal.push_back(m_name + ":" + phase); }

  std::string m_name;
  Journal& m_journal;
};

class CInitializerListTest : public testing::Test {
 protected:
  Noted* Add(const std::string& name) {
    Noted* const initializer = new Noted(name, journal);
    list.AddInitializer(initializer);
    return initializer;
  }

  Journal journal;
  CInitializerList list;
};

TEST_F(CInitializerListTest, AnEmptyListDoesNothing) {
  list.InitializeTemplates(nullptr);
  list.RegisterDevices();
  list.RegisterComps();
  list.RegisterLoggers();
  list.RegisterLayers();
  list.RegisterTools();
  list.RegisterViews();
  list.RegisterActionGroups();
  list.RegisterActions();
  list.RegisterGeoidModel();
  EXPECT_FALSE(list.RemoveInitializer(""));
  list.RemoveAll();
  EXPECT_EQ(journal, Journal{});
}

TEST_F(CInitializerListTest, EachPhaseCallsItsOwnOperationInOrderOfAddition) {
  using Phase = void (CInitializerList::*)();
  const std::pair<Phase, std::string> phases[] = {{&CInitializerList::RegisterDevices, "Devices"},
                                                  {&CInitializerList::RegisterComps, "Comps"},
                                                  {&CInitializerList::RegisterLoggers, "Loggers"},
                                                  {&CInitializerList::RegisterLayers, "Layers"},
                                                  {&CInitializerList::RegisterTools, "Tools"},
                                                  {&CInitializerList::RegisterViews, "Views"},
                                                  {&CInitializerList::RegisterActionGroups, "ActionGroups"},
                                                  {&CInitializerList::RegisterActions, "Actions"},
                                                  {&CInitializerList::RegisterGeoidModel, "GeoidModel"}};
  Add("b");
  Add("a");
  for (const auto& [phase, name] : phases) {
    journal.clear();
    (list.*phase)();
    EXPECT_EQ(journal, (Journal{"b:" + name, "a:" + name}));
  }
}

TEST_F(CInitializerListTest, TheApplicationIsPassedOn) {
  CWinApp application;
  Noted* const a = Add("a");
  list.InitializeTemplates(&application);
  EXPECT_EQ(a->application, &application);
  EXPECT_EQ(journal, Journal{"a:Templates"});
}

TEST_F(CInitializerListTest, ViewsThatAreRefusedStopNothing) {
  Add("refuses");
  Add("a");
  Add("refuses too");
  list.RegisterViews();
  EXPECT_EQ(journal, (Journal{"refuses:Views", "a:Views", "refuses too:Views"}));
}

TEST_F(CInitializerListTest, OneAddedDuringAPhaseIsCalledInItAndNotInEarlierOnes) {
  list.RegisterComps();
  Add("a")->onDevices = [this] {
    for (int i = 0; i < 50; ++i) Add("new");  // enough to move the array
  };
  list.RegisterDevices();
  Journal expected{"a:Devices"};
  expected.insert(expected.end(), 50, "new:Devices");
  EXPECT_EQ(journal, expected);
}

TEST_F(CInitializerListTest, RemovingAnEarlierOneDuringAPhasePassesTheNextOneOver) {
  Add("a");
  Add("b")->onDevices = [this] { list.RemoveInitializer("a"); };
  Add("c");
  Add("d");
  list.RegisterDevices();
  EXPECT_EQ(journal, (Journal{"a:Devices", "b:Devices", "?a", "~a", "d:Devices"}));
}

TEST_F(CInitializerListTest, OneThatRemovesItselfHasItsSuccessorPassedOver) {
  Add("a")->onDevices = [this] { list.RemoveInitializer("a"); };
  Add("b");
  Add("c");
  list.RegisterDevices();
  EXPECT_EQ(journal, (Journal{"a:Devices", "?a", "~a", "c:Devices"}));
}

TEST_F(CInitializerListTest, RemoveAllDuringAPhaseEndsIt) {
  Add("a")->onDevices = [this] { list.RemoveAll(); };
  Add("b");
  list.RegisterDevices();
  EXPECT_EQ(journal, (Journal{"a:Devices", "~b", "~a"}));
}

TEST_F(CInitializerListTest, AnExceptionEndsThePhaseAndGoesToTheHost) {
  Add("a");
  Add("b")->onDevices = [] { throw std::runtime_error("b"); };
  Add("c");
  EXPECT_THROW(list.RegisterDevices(), std::runtime_error);
  EXPECT_EQ(journal, (Journal{"a:Devices", "b:Devices"}));
}

TEST_F(CInitializerListTest, ANullInitializerIsPassedOver) {
  list.AddInitializer(nullptr);
  Add("a");
  list.AddInitializer(nullptr);
  list.RegisterTools();
  EXPECT_TRUE(list.RemoveInitializer("a"));
  EXPECT_FALSE(list.RemoveInitializer("a"));
  list.RemoveAll();
  EXPECT_EQ(journal, (Journal{"a:Tools", "?a", "~a"}));
}

TEST_F(CInitializerListTest, RemoveInitializerTakesTheFirstOfTheNameAndAsksNoFurther) {
  Add("x");
  Noted* const first = Add("same");
  Add("y");
  Noted* const second = Add("same");
  EXPECT_NE(first, second);
  EXPECT_TRUE(list.RemoveInitializer("same"));
  EXPECT_EQ(journal, (Journal{"?x", "?same", "~same"}));
  journal.clear();
  list.RegisterTools();
  EXPECT_EQ(journal, (Journal{"x:Tools", "y:Tools", "same:Tools"}));
}

TEST_F(CInitializerListTest, RemoveInitializerDistinguishesCase) {
  Add("Name");
  EXPECT_FALSE(list.RemoveInitializer("name"));
  EXPECT_FALSE(list.RemoveInitializer("Nam"));
  EXPECT_TRUE(list.RemoveInitializer("Name"));
}

TEST_F(CInitializerListTest, TheNameMayLiveInTheOneThatGoes) {
  Noted* const a = Add("a name too long to be kept inside the string itself");
  Add("b");
  EXPECT_TRUE(list.RemoveInitializer(a->Name()));
  journal.clear();
  list.RegisterTools();
  EXPECT_EQ(journal, Journal{"b:Tools"});
}

TEST_F(CInitializerListTest, RemoveAllGoesFromTheLastToTheFirst) {
  Add("a");
  Add("b");
  Add("c");
  list.RemoveAll();
  EXPECT_EQ(journal, (Journal{"~c", "~b", "~a"}));
  list.RegisterTools();
  EXPECT_EQ(journal.size(), 3u);
}

TEST_F(CInitializerListTest, ADestructorFindsItselfGoneFromTheList) {
  Noted* const a = Add("a");
  a->onEnd = [this] {
    EXPECT_FALSE(list.RemoveInitializer("a"));
    list.RegisterTools();
  };
  Add("b");
  EXPECT_TRUE(list.RemoveInitializer("a"));
  EXPECT_EQ(journal, (Journal{"?a", "~a", "?b", "b:Tools"}));
}

TEST_F(CInitializerListTest, ADestructorMayAddDuringRemoveAll) {
  Add("a")->onEnd = [this] { Add("late"); };
  list.RemoveAll();
  EXPECT_EQ(journal, (Journal{"~a", "~late"}));
}

TEST_F(CInitializerListTest, TheListDestroysWhatItHolds) {
  {
    CInitializerList other;
    other.AddInitializer(new Noted("a", journal));
    other.AddInitializer(new Noted("b", journal));
  }
  EXPECT_EQ(journal, (Journal{"~b", "~a"}));
}

TEST_F(CInitializerListTest, CopiesShareAndAssignmentDestroysNothing) {
  Noted overwritten("overwritten", journal);
  Add("a");
  CInitializerList copy(list);
  CInitializerList assigned;
  assigned.AddInitializer(&overwritten);
  assigned = list;
  EXPECT_EQ(journal, Journal{});
  copy.RegisterTools();
  assigned.RegisterTools();
  EXPECT_EQ(journal, (Journal{"a:Tools", "a:Tools"}));
  // Emptied by assignment, so that only `list` destroys.
  copy = CInitializerList();
  assigned = CInitializerList();
  EXPECT_EQ(journal.size(), 2u);
}

TEST_F(CInitializerListTest, ThereIsOneList) {
  CInitializerList& one = CInitializerList::GetInitializers();
  EXPECT_EQ(&one, &CInitializerList::GetInitializers());
  one.AddInitializer(new Noted("a", journal));
  CInitializerList::GetInitializers().RegisterTools();
  EXPECT_EQ(journal, Journal{"a:Tools"});
  EXPECT_TRUE(one.RemoveInitializer("a"));
}

// Says its end on standard error, where the parent of a child process can read it.
class Speaking : public CBaseInitializer {
 public:
  explicit Speaking(std::string name) : m_name(std::move(name)) {}
  ~Speaking() override {
    std::fprintf(stderr, "end of %s;", m_name.c_str());
    // The list can still be asked, and no longer holds this one.
    if (CInitializerList::GetInitializers().RemoveInitializer(m_name)) std::fputs("still held;", stderr);
  }
  std::string GetName() const override { return m_name; }

 private:
  std::string m_name;
};

// Asks for the list when the process is nearly gone.
struct LateUser {
  bool armed = false;
  ~LateUser() {
    if (!armed) return;
    std::fputs(CInitializerList::GetInitializers().RemoveInitializer("first") ? "found" : "nothing left", stderr);
  }
};

void ExitWithTwo() {
  static LateUser user;  // constructed before the list, so destroyed after it
  user.armed = true;
  CInitializerList::GetInitializers().AddInitializer(new Speaking("first"));
  CInitializerList::GetInitializers().AddInitializer(new Speaking("second"));
  std::exit(0);
}

TEST(CInitializerListDeathTest, AtExitTheListDestroysFromTheLastAndMayStillBeAsked) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(ExitWithTwo(), testing::ExitedWithCode(0), "end of second;end of first;nothing left");
}

}  // namespace
