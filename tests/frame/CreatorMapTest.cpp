#include "zelbase/frame/detail/CreatorMap.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using zelbase::detail::CreatorMap;

struct Noting {
  explicit Noting(std::string& text, const std::string& note) : m_text(text), m_note(note) {}
  ~Noting() {
    m_text += m_note;
    if (onEnd) onEnd();
  }
  std::function<void()> onEnd;
  std::string& m_text;
  std::string m_note;
};

using Registry = CreatorMap<std::string, Noting>;

std::vector<std::string> NamesOf(const Registry& registry) {
  std::vector<std::string> names = {"before"};
  const int count = registry.Keys(names);
  EXPECT_EQ(count, static_cast<int>(names.size()));
  return names;
}

TEST(CreatorMap, TheFirstOfANameStaysAndNullIsIgnored) {
  std::string text;
  Noting refused(text, "refused ");
  {
    Registry registry;
    auto* const first = new Noting(text, "first ");
    registry.Register("a", static_cast<Noting*>(nullptr));
    EXPECT_EQ(registry.Find("a").get(), nullptr);
    registry.Register("a", first);
    registry.Register("a", &refused);
    registry.Register("a", static_cast<Noting*>(nullptr));
    EXPECT_EQ(registry.Find("a").get(), first);
    EXPECT_EQ(registry.Find("A").get(), nullptr);
  }
  EXPECT_EQ(text, "first ");
}

TEST(CreatorMap, ObjectsGoOnceInTheOrderOfTheirLastNames) {
  std::string text;
  {
    Registry registry;
    auto* const shared = new Noting(text, "shared ");
    registry.Register("c", shared);
    registry.Register("a", shared);
    registry.Register("d", new Noting(text, "d "));
    registry.Register("b", new Noting(text, "b "));
    EXPECT_EQ(NamesOf(registry), (std::vector<std::string>{"a", "b", "c", "d"}));
  }
  EXPECT_EQ(text, "b shared d ");
}

TEST(CreatorMap, ObjectsThatAreRegisteredByTurnsGoOnceEach) {
  std::string text;
  {
    Registry registry;
    auto* const one = new Noting(text, "one ");
    auto* const other = new Noting(text, "other ");
    for (const char* const name : {"a", "b", "c"}) {
      registry.Register(std::string("1") + name, one);
      registry.Register(std::string("2") + name, other);
      registry.Register(std::string("3") + name, other);
    }
    registry.Register("4", one);
    registry.Clear();
    EXPECT_EQ(text, "other one ");
    for (int i = 0; i < 50; ++i) {
      registry.Register("a", new Noting(text, "."));  // the memory of the one before, most likely
      registry.Clear();
    }
  }
  EXPECT_EQ(text, "other one " + std::string(50, '.'));
}

TEST(CreatorMap, WhatIsRegisteredWhileAnotherGoesGoesAsWell) {
  std::string text;
  Registry registry;
  auto* const object = new Noting(text, "a ");
  object->onEnd = [&] {
    EXPECT_EQ(registry.Find("a").get(), nullptr);
    registry.Register("a", new Noting(text, "late "));
  };
  registry.Register("a", object);
  registry.Clear();
  EXPECT_EQ(text, "a late ");
  EXPECT_TRUE(NamesOf(registry).empty());
}

TEST(CreatorMap, CopiesShareAndRegisterForThemselves) {
  std::string text;
  auto registry = std::make_unique<Registry>();
  auto* const object = new Noting(text, "a ");
  registry->Register("a", object);
  Registry copy(*registry);
  copy.Register("b", object);  // known to the copy as well
  EXPECT_EQ(registry->Find("b").get(), nullptr);
  registry.reset();
  EXPECT_EQ(text, "");
  EXPECT_EQ(copy.Find("b").get(), object);
  copy = Registry();
  EXPECT_EQ(text, "a ");
}

TEST(CreatorMap, WhatAnAssignmentDestroysFindsTheNewRegistryWhole) {
  std::string text;
  Registry registry, other;
  auto* const object = new Noting(text, "a ");
  const Noting* seen = nullptr;
  object->onEnd = [&] { seen = registry.Find("b").get(); };
  registry.Register("a", object);
  auto* const kept = new Noting(text, "b ");
  other.Register("b", kept);
  registry = other;
  EXPECT_EQ(text, "a ");
  EXPECT_EQ(seen, kept);
  Registry& same = registry;
  registry = same;
  EXPECT_EQ(registry.Find("b").get(), kept);
}

TEST(CreatorMap, WhatWasFoundStaysAsLongAsItIsHeld) {
  std::string text;
  Registry registry;
  registry.Register("a", new Noting(text, "a "));
  auto held = registry.Find("a");
  EXPECT_TRUE(registry.UnRegister("a"));
  EXPECT_FALSE(registry.UnRegister("a"));
  EXPECT_EQ(text, "");
  held.reset();
  EXPECT_EQ(text, "a ");
}

TEST(CreatorMap, AnOwnershipSettledElsewhereIsSharedOrIsNone) {
  std::string text;
  Noting notOwned(text, "never ");
  Registry owner;
  CreatorMap<int, Noting> other;
  auto* const object = new Noting(text, "a ");
  owner.Register("a", object);
  other.Register(1, owner.Held(object));
  other.Register(2, std::shared_ptr<Noting>(&notOwned, [](Noting*) {}));
  other.Register(3, std::shared_ptr<Noting>());
  EXPECT_EQ(owner.Held(&notOwned), nullptr);
  EXPECT_EQ(other.Find(3), nullptr);
  owner.Clear();
  EXPECT_TRUE(owner.IsEmpty());
  EXPECT_EQ(text, "");
  EXPECT_EQ(other.Find(1).get(), object);
  EXPECT_FALSE(other.IsEmpty());
  other.Clear();
  EXPECT_EQ(text, "a ");
}

TEST(CreatorMap, ThereIsOneRegistryOfAKind) {
  struct Kind {
    int number = 0;
  };
  const auto one = []() -> Kind& { return zelbase::detail::OneRegistry<Kind>([](Kind& kind) { kind.number = -1; }); };
  one().number = 7;
  EXPECT_EQ(one().number, 7);
}

TEST(CreatorMapLong, ManyNamesOfOneObjectAreNoMatter) {
  std::string text;
  {
    Registry registry;
    auto* const object = new Noting(text, "gone ");
    for (int i = 0; i < 200000; ++i) registry.Register(std::to_string(i), object);
    EXPECT_EQ(registry.Find("199999").get(), object);
  }
  EXPECT_EQ(text, "gone ");
}

}  // namespace
