#include "zelbase/geodesy/GeoidModelList.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "tests/geodesy/GeodesyRegistries.h"
#include "tests/numerics/CountedAllocations.h"
#include "tests/support/ChildProcess.h"
#include "zelbase/frame/KeyTables.h"

namespace {

using Creator = NotingCreator<GeoidRegistry>;

// The name of the model that a name or type gives, "none" without one.
std::string Made(GeoidModelList& list, const std::string& name) { return NameOf(list.Create(name)); }
std::string Made(GeoidModelList& list, unsigned short type) { return NameOf(list.Create(type)); }

std::vector<std::string> Names(GeoidModelList& list) {
  std::vector<std::string> names = {"what was there"};
  list.GetGeoidModelNames(names);
  return names;
}

TEST(GeoidModelList, AnUnknownNameOrTypeGivesNull) {
  GeoidModelList list;
  EXPECT_EQ(list.Create("EGM2008"), nullptr);
  EXPECT_EQ(list.Create(18), nullptr);
  list.RegisterGeoidModel("EGM2008", 18, new Creator);
  EXPECT_EQ(list.Create("egm2008"), nullptr);
  EXPECT_EQ(list.Create(""), nullptr);
  EXPECT_EQ(list.Create(17), nullptr);
  EXPECT_EQ(list.Create(0), nullptr);  // a type, not a null text
}

TEST(GeoidModelList, CreatesByNameAndByType) {
  GeoidModelList list;
  for (unsigned short type = 0; type < 20; ++type) {
    list.RegisterGeoidModel(GeoidmodelTypeKeys[type], type, new Creator(GeoidmodelTypeKeys[type]));
  }
  list.RegisterGeoidModel("", 65535, new Creator("the last"));
  for (unsigned short type = 0; type < 20; ++type) {
    EXPECT_EQ(Made(list, type), GeoidmodelTypeKeys[type]);
    EXPECT_EQ(Made(list, GeoidmodelTypeKeys[type]), GeoidmodelTypeKeys[type]);
  }
  EXPECT_EQ(Made(list, 65535), "the last");
  EXPECT_EQ(Made(list, ""), "the last");
}

TEST(GeoidModelList, EachModelIsANewOne) {
  GeoidModelList list;
  list.RegisterGeoidModel("a", 1, new Creator);
  const std::unique_ptr<GeoidModel> first(list.Create("a"));
  const std::unique_ptr<GeoidModel> second(list.Create("a"));
  const std::unique_ptr<GeoidModel> third(list.Create(1));
  EXPECT_NE(first, second);
  EXPECT_NE(second, third);
}

TEST(GeoidModelList, ACreatorMayGiveNull) {
  GeoidModelList list;
  list.RegisterGeoidModel("a", 1, new Creator(""));
  EXPECT_EQ(list.Create("a"), nullptr);
  EXPECT_EQ(list.Create(1), nullptr);
}

TEST(GeoidModelList, ANullCreatorIsIgnored) {
  GeoidModelList list;
  list.RegisterGeoidModel("a", 1, nullptr);
  EXPECT_TRUE(Names(list).empty());
  list.RegisterGeoidModel("a", 1, new Creator("first"));
  list.RegisterGeoidModel("b", 2, nullptr);
  EXPECT_EQ(Made(list, "a"), "first");
  EXPECT_EQ(Made(list, 1), "first");
  EXPECT_EQ(Names(list), std::vector<std::string>{"a"});
}

TEST(GeoidModelList, GivesTheNamesInTheOrderOfTheirBytes) {
  GeoidModelList list;
  EXPECT_TRUE(Names(list).empty());
  unsigned short type = 0;
  for (const char* const name : {"b", "\xB0", "B", "a", "ab", ""}) list.RegisterGeoidModel(name, type++, new Creator);
  EXPECT_EQ(Names(list), (std::vector<std::string>{"", "B", "a", "ab", "b", "\xB0"}));
}

// Kept: each of the two maps keeps its first, whatever the other does.
TEST(GeoidModelList, AKnownNameWithANewTypeIsStoredByTypeOnlySoThatTheMapsDisagree) {
  GeoidModelList list;
  list.RegisterGeoidModel("a", 1, new Creator("old"));
  list.RegisterGeoidModel("a", 2, new Creator("new"));
  EXPECT_EQ(Made(list, "a"), "old");
  EXPECT_EQ(Made(list, 1), "old");
  EXPECT_EQ(Made(list, 2), "new");
}

TEST(GeoidModelList, AKnownTypeWithANewNameIsStoredByNameOnlySoThatTheMapsDisagree) {
  int destroyed = 0;
  const auto creator = std::make_unique<Creator>("new", &destroyed);
  {
    GeoidModelList list;
    list.RegisterGeoidModel("a", 1, new Creator("old"));
    list.RegisterGeoidModel("b", 1, creator.get());
    EXPECT_EQ(Made(list, 1), "old");
    EXPECT_EQ(Made(list, "a"), "old");
    EXPECT_EQ(Made(list, "b"), "new");
    EXPECT_EQ(Names(list), (std::vector<std::string>{"a", "b"}));
  }
  EXPECT_EQ(destroyed, 0);  // kept: only the map by type owns
}

TEST(GeoidModelList, AKnownNameAndAKnownTypeRefuseTheCreatorWhichStaysItsCallers) {
  int destroyed = 0;
  const auto refused = std::make_unique<Creator>("new", &destroyed);
  {
    GeoidModelList list;
    list.RegisterGeoidModel("a", 1, new Creator("old"));
    list.RegisterGeoidModel("b", 2, new Creator("other"));
    list.RegisterGeoidModel("a", 2, refused.get());
    EXPECT_EQ(Made(list, "a"), "old");
    EXPECT_EQ(Made(list, 2), "other");
  }
  EXPECT_EQ(destroyed, 0);
}

TEST(GeoidModelList, ACreatorOfManyNamesAndTypesIsDestroyedOnce) {
  int destroyed = 0;
  {
    GeoidModelList list;
    auto* const creator = new Creator("x", &destroyed);
    list.RegisterGeoidModel("a", 1, creator);
    list.RegisterGeoidModel("a", 2, creator);
    list.RegisterGeoidModel("b", 1, creator);
    list.RegisterGeoidModel("c", 3, creator);
    EXPECT_EQ(Made(list, "b"), "x");
    EXPECT_EQ(Made(list, 3), "x");
    EXPECT_EQ(destroyed, 0);
  }
  EXPECT_EQ(destroyed, 1);
}

TEST(GeoidModelList, ACreatorThatHadANameOnlyIsOwnedOnceItHasAType) {
  int destroyed = 0;
  {
    GeoidModelList list;
    auto* const creator = new Creator("x", &destroyed);
    list.RegisterGeoidModel("a", 1, new Creator);
    list.RegisterGeoidModel("b", 1, creator);
    list.RegisterGeoidModel("b", 2, creator);
    EXPECT_EQ(Made(list, "b"), "x");
    EXPECT_EQ(Made(list, 2), "x");
  }
  EXPECT_EQ(destroyed, 1);
}

TEST(GeoidModelList, CopiesShareTheCreatorsAndTheLastDestroysThemOnce) {
  int destroyed = 0;
  int nameOnlyDestroyed = 0;
  Creator nameOnly("name only", &nameOnlyDestroyed);
  auto list = std::make_unique<GeoidModelList>();
  list->RegisterGeoidModel("a", 1, new Creator("x", &destroyed));
  list->RegisterGeoidModel("b", 1, &nameOnly);
  auto copy = std::make_unique<GeoidModelList>(*list);
  GeoidModelList assigned;
  assigned = *copy;
  list.reset();
  EXPECT_EQ(Made(*copy, 1), "x");
  EXPECT_EQ(Made(*copy, "a"), "x");
  copy.reset();
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(Made(assigned, "a"), "x");
  EXPECT_EQ(Made(assigned, "b"), "name only");
  assigned = GeoidModelList();
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(nameOnlyDestroyed, 0);
  EXPECT_EQ(assigned.Create("a"), nullptr);
  EXPECT_EQ(assigned.Create(1), nullptr);
}

TEST(GeoidModelList, ACopyRegistersForItself) {
  GeoidModelList list;
  GeoidModelList copy(list);
  copy.RegisterGeoidModel("a", 1, new Creator);
  EXPECT_EQ(list.Create("a"), nullptr);
  EXPECT_EQ(list.Create(1), nullptr);
}

TEST(GeoidModelList, AssignmentToItselfKeepsTheCreators) {
  int destroyed = 0;
  GeoidModelList list;
  list.RegisterGeoidModel("a", 1, new Creator("x", &destroyed));
  GeoidModelList& same = list;
  list = same;
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(Made(list, "a"), "x");
  EXPECT_EQ(Made(list, 1), "x");
}

TEST(GeoidModelList, WhatACreatorThrowsPassesAndNothingBreaks) {
  GeoidModelList list;
  auto* const creator = new Creator("x");
  creator->onCreate = [] { throw std::runtime_error("no grid"); };
  list.RegisterGeoidModel("a", 1, creator);
  EXPECT_THROW(list.Create("a"), std::runtime_error);
  EXPECT_THROW(list.Create(1), std::runtime_error);
  creator->onCreate = nullptr;
  EXPECT_EQ(Made(list, "a"), "x");
}

TEST(GeoidModelList, ACreatorMayEmptyTheListWhileItWorks) {
  for (const bool byName : {false, true}) {
    int destroyed = 0;
    GeoidModelList list;
    auto* const creator = new Creator("x", &destroyed);
    creator->onCreate = [&] {
      list = GeoidModelList();
      EXPECT_EQ(destroyed, 0);
    };
    list.RegisterGeoidModel("a", 1, creator);
    EXPECT_EQ(byName ? Made(list, "a") : Made(list, 1), "x");
    EXPECT_EQ(destroyed, 1);
  }
}

TEST(GeoidModelList, CreatorsGoInTheOrderOfTheirTypesAndMayAskTheListMeanwhile) {
  std::string order;
  {
    GeoidModelList list;
    const auto add = [&](const char* name, unsigned short type, char letter) {
      auto* const creator = new Creator(name);
      creator->onEnd = [&list, &order, letter] {
        order += letter;
        EXPECT_EQ(list.Create(1), nullptr);  // the first has gone, or is going
        order += list.Create("a") == nullptr ? '-' : '+';
        if (letter == 'x') list.RegisterGeoidModel("late", 4, new Creator);
      };
      list.RegisterGeoidModel(name, type, creator);
    };
    add("c", 1, 'x');
    add("b", 2, 'y');
    add("a", 3, 'z');
  }
  EXPECT_EQ(order, "x-y-z-");
}

TEST(GeoidModelList, CreatingAsksForNoMemoryOfItsOwn) {
  GeoidModelList list;
  const std::string known(200, 'k');
  const std::string unknown(200, 'u');
  list.RegisterGeoidModel(known, 1, new Creator(""));
  const long before = CountedAllocations();
  EXPECT_EQ(list.Create(known), nullptr);
  EXPECT_EQ(list.Create(unknown), nullptr);
  EXPECT_EQ(list.Create(1), nullptr);
  EXPECT_EQ(CountedAllocations() - before, 0);
}

TEST(GeoidModelList, DestroysThroughTheBases) {
  static_assert(std::has_virtual_destructor_v<GeoidModelICreator>);
  static_assert(std::has_virtual_destructor_v<GeoidModelList>);
  static_assert(std::has_virtual_destructor_v<GeoidModel>);
  static_assert(std::is_abstract_v<GeoidModelICreator>);
}

TEST(GeoidModelList, ThereIsOne) {
  GeoidModelList* onThread = nullptr;
  std::thread([&] { onThread = &GeoidModelList::GetGeoidModelList(); }).join();
  EXPECT_EQ(onThread, &GeoidModelList::GetGeoidModelList());
}

TEST(GeoidModelList, TheOneListDestroysWhatHasATypeOnceAtExitAndNeverWhatHasANameOnly) {
  ChildProcess child(
      [] {
        GeoidModelList& list = GeoidModelList::GetGeoidModelList();
        auto* const typed = new Creator;
        typed->onEnd = [] { std::fputs("t", stdout); };
        static Creator* const nameOnly = new Creator;
        nameOnly->onEnd = [] { std::fputs("n", stdout); };
        list.RegisterGeoidModel("a", 1, typed);
        list.RegisterGeoidModel("b", 2, typed);
        list.RegisterGeoidModel("c", 2, nameOnly);
        return 0;
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  EXPECT_EQ(child.OutputText(), "t");
}

}  // namespace
