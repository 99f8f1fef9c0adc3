// What holds alike for the registries of coordinate systems, databases and static data, each of whose tests instantiates it.
// Neighbour: GeodesyRegistries.h, which gives the three one set of names.
#pragma once

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

template <class Registry>
class GeodesyRegistry : public testing::Test {
 protected:
  using Creator = NotingCreator<Registry>;

  // A new creator, registered.
  Creator* Add(const std::string& type, const std::string& name = "made") {
    Creator* const creator = new Creator(name, &m_destroyed);
    Registry::Register(m_list, type, creator);
    return creator;
  }
  std::string Made(const std::string& type) { return NameOf(m_list.Create(type)); }
  bool Remove(const std::string& type) { return Registry::UnRegister(m_list, type); }
  std::vector<std::string> Types() {
    std::vector<std::string> types = {"what was there"};
    const int count = Registry::Types(m_list, types);
    EXPECT_EQ(count, static_cast<int>(types.size()));
    return types;
  }

  int m_destroyed = 0;  // creators
  typename Registry::List m_list;
};
TYPED_TEST_SUITE_P(GeodesyRegistry);

TYPED_TEST_P(GeodesyRegistry, AnUnknownTypeGivesNull) {
  EXPECT_EQ(this->m_list.Create("a"), nullptr);
  this->Add("a");
  EXPECT_EQ(this->m_list.Create("b"), nullptr);
  EXPECT_EQ(this->m_list.Create("a "), nullptr);
  EXPECT_EQ(this->m_list.Create(""), nullptr);
}

TYPED_TEST_P(GeodesyRegistry, CreatesByTypeCaseSensitively) {
  this->Add("utm", "small");
  this->Add("UTM", "capital");
  this->Add("", "empty");
  this->Add(std::string("u\0m", 3), "zero");
  this->Add("u", "short");
  EXPECT_EQ(this->Made("utm"), "small");
  EXPECT_EQ(this->Made("UTM"), "capital");
  EXPECT_EQ(this->Made("Utm"), "none");
  EXPECT_EQ(this->Made(""), "empty");
  EXPECT_EQ(this->Made(std::string("u\0m", 3)), "zero");
  EXPECT_EQ(this->Made("u"), "short");
}

TYPED_TEST_P(GeodesyRegistry, EachObjectIsANewOne) {
  this->Add("a");
  const std::unique_ptr<typename TypeParam::Product> first(this->m_list.Create("a"));
  const std::unique_ptr<typename TypeParam::Product> second(this->m_list.Create("a"));
  EXPECT_NE(first, second);
}

TYPED_TEST_P(GeodesyRegistry, ACreatorMayGiveNull) {
  this->Add("a", "");
  EXPECT_EQ(this->m_list.Create("a"), nullptr);
  EXPECT_EQ(this->m_destroyed, 0);
}

TYPED_TEST_P(GeodesyRegistry, TheFirstOfATypeStaysAndTheRefusedOneIsItsCallers) {
  int refusedDestroyed = 0;
  const auto refused = std::make_unique<NotingCreator<TypeParam>>("second", &refusedDestroyed);
  {
    typename TypeParam::List list;
    TypeParam::Register(list, "a", new NotingCreator<TypeParam>("first"));
    TypeParam::Register(list, "a", refused.get());
    EXPECT_EQ(NameOf(list.Create("a")), "first");
    EXPECT_TRUE(TypeParam::UnRegister(list, "a"));
    EXPECT_EQ(list.Create("a"), nullptr);
  }
  EXPECT_EQ(refusedDestroyed, 0);
}

TYPED_TEST_P(GeodesyRegistry, TheSameCreatorTwiceUnderATypeIsDestroyedOnce) {
  auto* const creator = this->Add("a");
  TypeParam::Register(this->m_list, "a", creator);
  EXPECT_TRUE(this->Remove("a"));
  EXPECT_EQ(this->m_destroyed, 1);
}

TYPED_TEST_P(GeodesyRegistry, ANullCreatorIsIgnored) {
  TypeParam::Register(this->m_list, "a", nullptr);
  EXPECT_FALSE(this->Remove("a"));
  EXPECT_TRUE(this->Types().empty());
  this->Add("a", "first");
  TypeParam::Register(this->m_list, "a", nullptr);
  EXPECT_EQ(this->Made("a"), "first");
}

TYPED_TEST_P(GeodesyRegistry, UnregisteringDestroysTheCreator) {
  this->Add("a", "first");
  EXPECT_FALSE(this->Remove("A"));
  EXPECT_EQ(this->m_destroyed, 0);
  EXPECT_TRUE(this->Remove("a"));
  EXPECT_EQ(this->m_destroyed, 1);
  EXPECT_FALSE(this->Remove("a"));
  EXPECT_EQ(this->m_list.Create("a"), nullptr);
  this->Add("a", "second");
  EXPECT_EQ(this->Made("a"), "second");
}

TYPED_TEST_P(GeodesyRegistry, AnObjectOutlivesItsCreator) {
  this->Add("a", "first");
  std::unique_ptr<typename TypeParam::Product> object(this->m_list.Create("a"));
  EXPECT_TRUE(this->Remove("a"));
  EXPECT_EQ(NameOf(object.release()), "first");
}

TYPED_TEST_P(GeodesyRegistry, ListsItsTypesInTheOrderOfTheirBytes) {
  EXPECT_TRUE(this->Types().empty());
  for (const char* const type : {"b", "\xB0", "B", "a", "ab", "", "Z"}) this->Add(type);
  EXPECT_EQ(this->Types(), (std::vector<std::string>{"", "B", "Z", "a", "ab", "b", "\xB0"}));
  this->Remove("Z");
  EXPECT_EQ(this->Types(), (std::vector<std::string>{"", "B", "a", "ab", "b", "\xB0"}));
}

TYPED_TEST_P(GeodesyRegistry, CreatorsGoWithTheList) {
  {
    typename TypeParam::List list;
    TypeParam::Register(list, "a", new NotingCreator<TypeParam>("a", &this->m_destroyed));
    TypeParam::Register(list, "b", new NotingCreator<TypeParam>("b", &this->m_destroyed));
    EXPECT_EQ(this->m_destroyed, 0);
  }
  EXPECT_EQ(this->m_destroyed, 2);
}

TYPED_TEST_P(GeodesyRegistry, OneCreatorForTwoTypesIsDestroyedOnceWithTheLastOfThem) {
  auto* const creator = this->Add("a", "x");
  TypeParam::Register(this->m_list, "b", creator);
  EXPECT_TRUE(this->Remove("a"));
  EXPECT_EQ(this->m_destroyed, 0);
  EXPECT_EQ(this->Made("b"), "x");
  EXPECT_TRUE(this->Remove("b"));
  EXPECT_EQ(this->m_destroyed, 1);
}

TYPED_TEST_P(GeodesyRegistry, OneCreatorForManyTypesGoesOnceWithTheList) {
  {
    typename TypeParam::List list;
    auto* const creator = new NotingCreator<TypeParam>("x", &this->m_destroyed);
    for (const char* const type : {"a", "b", "c", "d"}) TypeParam::Register(list, type, creator);
  }
  EXPECT_EQ(this->m_destroyed, 1);
}

TYPED_TEST_P(GeodesyRegistry, CopiesShareTheCreatorsAndTheLastDestroysThemOnce) {
  auto list = std::make_unique<typename TypeParam::List>();
  TypeParam::Register(*list, "a", new NotingCreator<TypeParam>("a", &this->m_destroyed));
  auto copy = std::make_unique<typename TypeParam::List>(*list);
  typename TypeParam::List assigned;
  assigned = *copy;
  list.reset();
  EXPECT_TRUE(TypeParam::UnRegister(*copy, "a"));
  EXPECT_EQ(this->m_destroyed, 0);
  copy.reset();
  EXPECT_EQ(NameOf(assigned.Create("a")), "a");
  assigned = typename TypeParam::List();
  EXPECT_EQ(this->m_destroyed, 1);
  EXPECT_EQ(assigned.Create("a"), nullptr);
}

TYPED_TEST_P(GeodesyRegistry, AssignmentToItselfKeepsTheCreators) {
  this->Add("a", "x");
  auto& same = this->m_list;
  this->m_list = same;
  EXPECT_EQ(this->m_destroyed, 0);
  EXPECT_EQ(this->Made("a"), "x");
}

TYPED_TEST_P(GeodesyRegistry, ACreatorMayTakeItsOwnTypeOutWhileItWorks) {
  this->Add("a", "x")->onCreate = [this] {
    EXPECT_TRUE(this->Remove("a"));
    EXPECT_EQ(this->m_destroyed, 0);
  };
  EXPECT_EQ(this->Made("a"), "x");
  EXPECT_EQ(this->m_destroyed, 1);
  EXPECT_EQ(this->m_list.Create("a"), nullptr);
}

TYPED_TEST_P(GeodesyRegistry, ACreatorMayEmptyTheWholeListWhileItWorks) {
  this->Add("b", "y");
  this->Add("a", "x")->onCreate = [this] {
    this->m_list = typename TypeParam::List();
    EXPECT_EQ(this->m_destroyed, 1);
  };
  EXPECT_EQ(this->Made("a"), "x");
  EXPECT_EQ(this->m_destroyed, 2);
  EXPECT_TRUE(this->Types().empty());
}

TYPED_TEST_P(GeodesyRegistry, ACreatorMayRegisterOthersWhileItWorks) {
  this->Add("m", "x")->onCreate = [this] {
    for (const char* const type : {"a", "b", "y", "z"}) this->Add(type, type);
  };
  EXPECT_EQ(this->Made("m"), "x");
  EXPECT_EQ(this->Made("a"), "a");
  EXPECT_EQ(this->Types().size(), 5u);
}

TYPED_TEST_P(GeodesyRegistry, WhatACreatorThrowsPassesAndNothingBreaks) {
  bool throws = true;
  this->Add("a", "x")->onCreate = [&throws] {
    if (throws) throw std::runtime_error("no memory for the projection");
  };
  EXPECT_THROW(this->m_list.Create("a"), std::runtime_error);
  EXPECT_EQ(this->m_destroyed, 0);
  throws = false;
  EXPECT_EQ(this->Made("a"), "x");
}

TYPED_TEST_P(GeodesyRegistry, ACreatorThatTakesItselfOutAndThrowsIsDestroyedOnce) {
  this->Add("a", "x")->onCreate = [this] {
    this->Remove("a");
    throw std::runtime_error("gone");
  };
  EXPECT_THROW(this->m_list.Create("a"), std::runtime_error);
  EXPECT_EQ(this->m_destroyed, 1);
  EXPECT_EQ(this->m_list.Create("a"), nullptr);
}

TYPED_TEST_P(GeodesyRegistry, ACreatorMayAskTheListWhileItGoes) {
  std::string ofOther;
  {
    typename TypeParam::List list;
    auto* const creator = new NotingCreator<TypeParam>("a", &this->m_destroyed);
    TypeParam::Register(list, "a", creator);
    TypeParam::Register(list, "b", new NotingCreator<TypeParam>("b", &this->m_destroyed));
    creator->onEnd = [&] {
      EXPECT_EQ(list.Create("a"), nullptr);
      ofOther = NameOf(list.Create("b"));
      TypeParam::Register(list, "c", new NotingCreator<TypeParam>("c", &this->m_destroyed));
    };
  }
  EXPECT_EQ(ofOther, "b");
  EXPECT_EQ(this->m_destroyed, 3);
}

TYPED_TEST_P(GeodesyRegistry, ACreatorMayAskTheListWhileAnotherTakesItsPlace) {
  this->Add("a", "x")->onEnd = [this] { EXPECT_EQ(this->Made("a"), "y"); };
  typename TypeParam::List other;
  TypeParam::Register(other, "a", new NotingCreator<TypeParam>("y", &this->m_destroyed));
  this->m_list = other;
  EXPECT_EQ(this->m_destroyed, 1);
}

TYPED_TEST_P(GeodesyRegistry, CreatingAsksForNoMemoryOfItsOwn) {
  const std::string known(200, 'k');
  const std::string unknown(200, 'u');
  for (int i = 0; i < 100; ++i) this->Add(std::string(190, 'k') + std::to_string(i));
  this->Add(known, "");
  const long before = CountedAllocations();
  EXPECT_EQ(this->m_list.Create(known), nullptr);
  EXPECT_EQ(this->m_list.Create(unknown), nullptr);
  EXPECT_EQ(CountedAllocations() - before, 0);
}

TYPED_TEST_P(GeodesyRegistry, DestroysThroughTheBases) {
  static_assert(std::has_virtual_destructor_v<typename TypeParam::Creator>);
  static_assert(std::has_virtual_destructor_v<typename TypeParam::List>);
  static_assert(std::has_virtual_destructor_v<typename TypeParam::Product>);
  static_assert(std::is_abstract_v<typename TypeParam::Creator>);
  static_assert(std::is_same_v<decltype(TypeParam::One()), typename TypeParam::List&>);
}

TYPED_TEST_P(GeodesyRegistry, ThereIsOne) {
  typename TypeParam::List* onThread = nullptr;
  std::thread([&] { onThread = &TypeParam::One(); }).join();
  EXPECT_EQ(onThread, &TypeParam::One());
}

TYPED_TEST_P(GeodesyRegistry, TheOneListDestroysEachCreatorOnceAtExit) {
  ChildProcess child(
      [] {
        static NotingCreator<TypeParam>* const refused = new NotingCreator<TypeParam>;
        refused->onEnd = [] { std::fputs("r", stdout); };
        auto* const creator = new NotingCreator<TypeParam>;
        auto* const other = new NotingCreator<TypeParam>;
        creator->onEnd = [] {
          // Still there, and without the creator that goes.
          std::fputs(TypeParam::One().Create("a") == nullptr ? "c" : "?", stdout);
        };
        other->onEnd = [] { std::fputs("o", stdout); };
        TypeParam::Register(TypeParam::One(), "a", creator);
        TypeParam::Register(TypeParam::One(), "b", creator);
        TypeParam::Register(TypeParam::One(), "c", other);
        TypeParam::Register(TypeParam::One(), "c", refused);
        return 0;
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  EXPECT_EQ(child.OutputText(), "co");
}

REGISTER_TYPED_TEST_SUITE_P(GeodesyRegistry, AnUnknownTypeGivesNull, CreatesByTypeCaseSensitively, EachObjectIsANewOne, ACreatorMayGiveNull,
                            TheFirstOfATypeStaysAndTheRefusedOneIsItsCallers, TheSameCreatorTwiceUnderATypeIsDestroyedOnce,
                            ANullCreatorIsIgnored, UnregisteringDestroysTheCreator, AnObjectOutlivesItsCreator,
                            ListsItsTypesInTheOrderOfTheirBytes, CreatorsGoWithTheList,
                            OneCreatorForTwoTypesIsDestroyedOnceWithTheLastOfThem, OneCreatorForManyTypesGoesOnceWithTheList,
                            CopiesShareTheCreatorsAndTheLastDestroysThemOnce, AssignmentToItselfKeepsTheCreators,
                            ACreatorMayTakeItsOwnTypeOutWhileItWorks, ACreatorMayEmptyTheWholeListWhileItWorks,
                            ACreatorMayRegisterOthersWhileItWorks, WhatACreatorThrowsPassesAndNothingBreaks,
                            ACreatorThatTakesItselfOutAndThrowsIsDestroyedOnce, ACreatorMayAskTheListWhileItGoes,
                            ACreatorMayAskTheListWhileAnotherTakesItsPlace, CreatingAsksForNoMemoryOfItsOwn, DestroysThroughTheBases,
                            ThereIsOne, TheOneListDestroysEachCreatorOnceAtExit);
