#include "tests/geodesy/GeodesyRegistries.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/support/ChildProcess.h"

namespace {

// Asks each registry from a creator that goes, whichever of them still stands.
void AskAll() {
  for (const char* const name : {"a", "b", "unknown"}) {
    static_cast<void>(NameOf(CoordSysRegistry::One().Create(name)));
    static_cast<void>(NameOf(DatabaseRegistry::One().Create(name)));
    static_cast<void>(NameOf(StaticDataRegistry::One().Create(name)));
    static_cast<void>(NameOf(GeoidRegistry::One().Create(std::string(name))));
  }
}

// A creator that writes `letter` when it goes.
template <class Registry>
NotingCreator<Registry>* Telling(char letter) {
  auto* const creator = new NotingCreator<Registry>;
  creator->onEnd = [letter] {
    std::fputc(letter, stdout);
    AskAll();
  };
  return creator;
}

// First use of a registry: a creator under two names, one under a third, and one that is refused and goes at once.
template <class Registry>
void Use(char letter) {
  auto* const shared = Telling<Registry>(letter);
  Registry::Register(Registry::One(), "a", shared);
  Registry::Register(Registry::One(), "b", shared);
  Registry::Register(Registry::One(), "c", Telling<Registry>(letter));
  auto* const refused = new NotingCreator<Registry>;
  Registry::Register(Registry::One(), "c", refused);
  delete refused;
}

struct FirstUse {
  char letter;
  void (*use)(char);
};
constexpr std::array<FirstUse, 4> kUses = {
    {{'c', Use<CoordSysRegistry>}, {'d', Use<DatabaseRegistry>}, {'g', Use<GeoidRegistry>}, {'s', Use<StaticDataRegistry>}}};

std::string Sorted(std::string letters) {
  std::sort(letters.begin(), letters.end());
  return letters;
}

TEST(GeodesyRegistries, UsedFirstInAnyOrderDestroyEachCreatorOnceAtExit) {
  std::array<FirstUse, 4> uses = kUses;
  const auto byLetter = [](const FirstUse& left, const FirstUse& right) { return left.letter < right.letter; };
  int orders = 0;
  do {
    ++orders;
    ChildProcess child(
        [&uses] {
          for (const FirstUse& first : uses) first.use(first.letter);
          return 0;
        },
        ChildProcess::Ending::Full);
    EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
    EXPECT_EQ(Sorted(child.OutputText()), "ccddggss");
  } while (std::next_permutation(uses.begin(), uses.end(), byLetter));
  EXPECT_EQ(orders, 24);
}

TEST(GeodesyRegistries, MayBeUsedFirstByADestructorAtExit) {
  for (const FirstUse& first : kUses) {
    ChildProcess child(
        [&first] {
          static const FirstUse* late = nullptr;
          late = &first;
          std::atexit([] { late->use(late->letter); });
          return 0;
        },
        ChildProcess::Ending::Full);
    EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
    EXPECT_EQ(child.OutputText(), std::string(2, first.letter));
  }
}

TEST(GeodesyRegistries, AreIndependentOfEachOther) {
  int destroyed = 0;
  ZelGeoCoordSysList systems;
  ZelGeoStaticDatabaseList data;
  CoordSysRegistry::Register(systems, "a", new NotingCreator<CoordSysRegistry>("system", &destroyed));
  StaticDataRegistry::Register(data, "a", new NotingCreator<StaticDataRegistry>("data", &destroyed));
  EXPECT_TRUE(systems.UnRegisterGeoCoordSys("a"));
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(NameOf(data.Create("a")), "data");
}

}  // namespace
