#include "zelbase/actions/CToolList.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "tests/actions/ToolTestHelp.h"
#include "tests/numerics/CountedAllocations.h"
#include "tests/support/ChildProcess.h"

namespace {

// The name of the tool that is made, "none" without one.
std::string Made(CToolList& list, const std::string& name) {
  const std::unique_ptr<ZelTool> tool(list.Create(name));
  return tool == nullptr ? "none" : tool->GetName();
}

TEST(CToolList, AnUnknownNameGivesNull) {
  CToolList list;
  EXPECT_EQ(list.Create("a"), nullptr);
  list.RegisterTool("a", new ToolCreator);
  EXPECT_EQ(list.Create("b"), nullptr);
  EXPECT_EQ(list.Create(""), nullptr);
}

TEST(CToolList, CreatesByNameCaseSensitivelyEachTimeANewOne) {
  CToolList list;
  list.RegisterTool("ruler", new ToolCreator("small"));
  list.RegisterTool("Ruler", new ToolCreator("capital"));
  list.RegisterTool("", new ToolCreator("empty"));
  EXPECT_EQ(Made(list, "ruler"), "small");
  EXPECT_EQ(Made(list, "Ruler"), "capital");
  EXPECT_EQ(Made(list, "RULER"), "none");
  EXPECT_EQ(Made(list, ""), "empty");
  const std::unique_ptr<ZelTool> first(list.Create("ruler"));
  const std::unique_ptr<ZelTool> second(list.Create("ruler"));
  EXPECT_NE(first, second);
  EXPECT_FALSE(first->IsEnabled());
  EXPECT_FALSE(first->HasEditor());
}

TEST(CToolList, ACreatorMayGiveNull) {
  CToolList list;
  list.RegisterTool("a", new ToolCreator(""));
  EXPECT_EQ(list.Create("a"), nullptr);
}

TEST(CToolList, TheFirstOfANameStaysAndTheRefusedOneIsItsCallers) {
  int refusedDestroyed = 0;
  const auto refused = std::make_unique<ToolCreator>("second", &refusedDestroyed);
  {
    CToolList list;
    list.RegisterTool("a", new ToolCreator("first"));
    list.RegisterTool("a", refused.get());
    EXPECT_EQ(Made(list, "a"), "first");
  }
  EXPECT_EQ(refusedDestroyed, 0);
}

TEST(CToolList, ANullCreatorIsIgnored) {
  CToolList list;
  list.RegisterTool("a", nullptr);
  std::vector<std::string> names = {"before"};
  list.GetToolNames(names);
  EXPECT_TRUE(names.empty());
  list.RegisterTool("a", new ToolCreator("first"));
  EXPECT_EQ(Made(list, "a"), "first");
}

TEST(CToolList, NamesComeInTheOrderOfTheirBytesInPlaceOfWhatWasThere) {
  CToolList list;
  for (const char* const name : {"b", "\xE9", "B", "", "a", "b\x01", "ab", "Z", "b"}) {
    auto creator = std::make_unique<ToolCreator>();
    const std::string known = Made(list, name);
    list.RegisterTool(name, creator.get());
    if (known == "none") static_cast<void>(creator.release());
  }
  std::vector<std::string> names = {"before", "more"};
  list.GetToolNames(names);
  EXPECT_EQ(names, (std::vector<std::string>{"", "B", "Z", "a", "ab", "b", "b\x01", "\xE9"}));
}

TEST(CToolList, CreatorsGoWithTheListEachOnceHoweverManyNamesItHas) {
  int shared = 0, own = 0;
  {
    CToolList list;
    auto* const creator = new ToolCreator("x", &shared);
    for (const char* const name : {"a", "c", "e"}) list.RegisterTool(name, creator);
    list.RegisterTool("b", new ToolCreator("b", &own));
    EXPECT_EQ(Made(list, "e"), "x");
    EXPECT_EQ(shared + own, 0);
  }
  EXPECT_EQ(shared, 1);
  EXPECT_EQ(own, 1);
}

TEST(CToolList, CopiesShareTheCreatorsAndTheLastDestroysThemOnce) {
  int destroyed = 0;
  auto list = std::make_unique<CToolList>();
  list->RegisterTool("a", new ToolCreator("a", &destroyed));
  auto copy = std::make_unique<CToolList>(*list);
  CToolList assigned;
  assigned = *copy;
  list.reset();
  EXPECT_EQ(Made(*copy, "a"), "a");
  copy.reset();
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(Made(assigned, "a"), "a");
  assigned = CToolList();
  EXPECT_EQ(destroyed, 1);
}

TEST(CToolList, ACreatorMayAskTheListWhileItGoes) {
  int destroyed = 0;
  std::string ofOther;
  {
    CToolList list;
    auto* const creator = new ToolCreator("a", &destroyed);
    list.RegisterTool("a", creator);
    list.RegisterTool("b", new ToolCreator("b", &destroyed));
    creator->onEnd = [&] {
      EXPECT_EQ(list.Create("a"), nullptr);
      ofOther = Made(list, "b");
      list.RegisterTool("c", new ToolCreator("c", &destroyed));
    };
  }
  EXPECT_EQ(ofOther, "b");
  EXPECT_EQ(destroyed, 3);
}

TEST(CToolList, CreateAsksForNoMemoryButTheTools) {
  CToolList list;
  const std::string name = "a tool with a name far beyond the short ones";
  for (int i = 0; i < 100; ++i) list.RegisterTool(name + std::to_string(i), new ToolCreator("short"));
  const std::string asked = name + "50", unknown = name + "x";
  const long before = CountedAllocations();
  ZelTool* const none = list.Create(unknown);
  const long afterNone = CountedAllocations();
  const std::unique_ptr<ZelTool> tool(list.Create(asked));
  const long after = CountedAllocations();
  EXPECT_EQ(none, nullptr);
  EXPECT_NE(tool, nullptr);
  EXPECT_EQ(afterNone - before, 0);
  EXPECT_EQ(after - afterNone, 1);
}

TEST(CToolList, OperationsHaveTheFormsOfTheInterface) {
  static_assert(std::has_virtual_destructor_v<CToolList>);
  static_assert(std::is_same_v<decltype(&CToolList::GetToolList), CToolList& (*)()>);
  static_assert(std::is_same_v<decltype(&CToolList::Create), ZelTool* (CToolList::*)(const std::string&)>);
  static_assert(std::is_void_v<decltype(std::declval<CToolList>().RegisterTool("a", nullptr))>);
  static_assert(std::is_void_v<decltype(std::declval<CToolList>().GetToolNames(std::declval<std::vector<std::string>&>()))>);
}

TEST(CToolList, ThereIsOne) {
  CToolList* onThread = nullptr;
  std::thread([&] { onThread = &CToolList::GetToolList(); }).join();
  EXPECT_EQ(onThread, &CToolList::GetToolList());
}

TEST(CToolList, TheOneListDestroysEachCreatorOnceAtExit) {
  ChildProcess child(
      [] {
        auto* const creator = new ToolCreator;
        creator->onEnd = [] {
          // Still there, and without the creator that goes.
          const bool gone = CToolList::GetToolList().Create("a") == nullptr && CToolList::GetToolList().Create("b") == nullptr;
          std::fputs(gone ? "gone " : "there ", stdout);
          std::fflush(stdout);
        };
        CToolList::GetToolList().RegisterTool("a", creator);
        CToolList::GetToolList().RegisterTool("b", creator);
        return 0;
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  EXPECT_EQ(child.OutputText(), "gone ");
}

}  // namespace
