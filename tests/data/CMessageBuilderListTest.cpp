#include "zelbase/data/CMessageBuilderList.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>

#include "tests/support/ChildProcess.h"

namespace {

// A builder with a name to know it by.
class NamedBuilder : public CMessageBuilder {
 public:
  explicit NamedBuilder(const std::string& builderName) : name(builderName) {}
  const std::string name;
};

// Makes builders of a name, none for an empty one, and counts its own end.
class Creator : public MessageBuilderICreator {
 public:
  explicit Creator(const std::string& name = "a", int* destroyed = nullptr) : m_name(name), m_destroyed(destroyed) {}
  ~Creator() override {
    if (m_destroyed != nullptr) ++*m_destroyed;
    if (onEnd) onEnd();
  }
  CMessageBuilder* Create() override {
    if (onCreate) onCreate();
    return m_name.empty() ? nullptr : new NamedBuilder(m_name);
  }

  std::function<void()> onCreate;
  std::function<void()> onEnd;

 private:
  std::string m_name;
  int* m_destroyed;
};

// The name of the builder that is made, "none" without one.
std::string Made(CMessageBuilderList& list, const std::string& name) {
  const std::unique_ptr<CMessageBuilder> builder(list.Create(name));
  const auto* const named = dynamic_cast<NamedBuilder*>(builder.get());
  return named == nullptr ? "none" : named->name;
}

TEST(CMessageBuilderList, AnUnknownNameGivesNull) {
  CMessageBuilderList list;
  EXPECT_EQ(list.Create("a"), nullptr);
  list.RegisterMessageBuilder("a", new Creator);
  EXPECT_EQ(list.Create("b"), nullptr);
  EXPECT_EQ(list.Create(""), nullptr);
}

TEST(CMessageBuilderList, CreatesByNameCaseSensitively) {
  CMessageBuilderList list;
  list.RegisterMessageBuilder("course", new Creator("small"));
  list.RegisterMessageBuilder("Course", new Creator("capital"));
  list.RegisterMessageBuilder("", new Creator("empty"));
  EXPECT_EQ(Made(list, "course"), "small");
  EXPECT_EQ(Made(list, "Course"), "capital");
  EXPECT_EQ(Made(list, "COURSE"), "none");
  EXPECT_EQ(Made(list, ""), "empty");
}

TEST(CMessageBuilderList, EachBuilderIsANewOne) {
  CMessageBuilderList list;
  list.RegisterMessageBuilder("a", new Creator);
  const std::unique_ptr<CMessageBuilder> first(list.Create("a"));
  const std::unique_ptr<CMessageBuilder> second(list.Create("a"));
  EXPECT_NE(first, second);
}

TEST(CMessageBuilderList, ACreatorMayGiveNull) {
  CMessageBuilderList list;
  list.RegisterMessageBuilder("a", new Creator(""));
  EXPECT_EQ(list.Create("a"), nullptr);
}

TEST(CMessageBuilderList, TheFirstOfANameStaysAndTheRefusedOneIsItsCallers) {
  int refusedDestroyed = 0;
  const auto refused = std::make_unique<Creator>("second", &refusedDestroyed);
  {
    CMessageBuilderList list;
    list.RegisterMessageBuilder("a", new Creator("first"));
    list.RegisterMessageBuilder("a", refused.get());
    EXPECT_EQ(Made(list, "a"), "first");
  }
  EXPECT_EQ(refusedDestroyed, 0);
}

TEST(CMessageBuilderList, ANullCreatorIsIgnored) {
  CMessageBuilderList list;
  list.RegisterMessageBuilder("a", nullptr);
  EXPECT_FALSE(list.UnRegisterMessageBuilder("a"));
  list.RegisterMessageBuilder("a", new Creator("first"));
  EXPECT_EQ(Made(list, "a"), "first");
}

TEST(CMessageBuilderList, UnregisteringDestroysTheCreator) {
  int destroyed = 0;
  CMessageBuilderList list;
  list.RegisterMessageBuilder("a", new Creator("first", &destroyed));
  EXPECT_FALSE(list.UnRegisterMessageBuilder("A"));
  EXPECT_EQ(destroyed, 0);
  EXPECT_TRUE(list.UnRegisterMessageBuilder("a"));
  EXPECT_EQ(destroyed, 1);
  EXPECT_FALSE(list.UnRegisterMessageBuilder("a"));
  EXPECT_EQ(list.Create("a"), nullptr);
  list.RegisterMessageBuilder("a", new Creator("second"));
  EXPECT_EQ(Made(list, "a"), "second");
}

TEST(CMessageBuilderList, ABuilderOutlivesItsCreator) {
  CMessageBuilderList list;
  list.RegisterMessageBuilder("a", new Creator);
  const std::unique_ptr<CMessageBuilder> builder(list.Create("a"));
  EXPECT_TRUE(list.UnRegisterMessageBuilder("a"));
  std::vector<std::string> messages;
  EXPECT_FALSE(builder->GetMessage(messages));
}

TEST(CMessageBuilderList, CreatorsGoWithTheList) {
  int destroyed = 0;
  {
    CMessageBuilderList list;
    list.RegisterMessageBuilder("a", new Creator("a", &destroyed));
    list.RegisterMessageBuilder("b", new Creator("b", &destroyed));
    EXPECT_EQ(destroyed, 0);
  }
  EXPECT_EQ(destroyed, 2);
}

TEST(CMessageBuilderList, CopiesShareTheCreatorsAndTheLastDestroysThemOnce) {
  int destroyed = 0;
  auto list = std::make_unique<CMessageBuilderList>();
  list->RegisterMessageBuilder("a", new Creator("a", &destroyed));
  auto copy = std::make_unique<CMessageBuilderList>(*list);
  CMessageBuilderList assigned;
  assigned = *copy;
  list.reset();
  EXPECT_TRUE(copy->UnRegisterMessageBuilder("a"));
  EXPECT_EQ(destroyed, 0);
  copy.reset();
  EXPECT_EQ(Made(assigned, "a"), "a");
  assigned = CMessageBuilderList();
  EXPECT_EQ(destroyed, 1);
}

TEST(CMessageBuilderList, OneCreatorForTwoNamesIsDestroyedOnceWithTheLastOfThem) {
  int destroyed = 0;
  CMessageBuilderList list;
  Creator* const creator = new Creator("x", &destroyed);
  list.RegisterMessageBuilder("a", creator);
  list.RegisterMessageBuilder("b", creator);
  EXPECT_TRUE(list.UnRegisterMessageBuilder("a"));
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(Made(list, "b"), "x");
  EXPECT_TRUE(list.UnRegisterMessageBuilder("b"));
  EXPECT_EQ(destroyed, 1);
}

TEST(CMessageBuilderList, ACreatorMayAskTheListWhileItGoes) {
  int destroyed = 0;
  std::string ofOther;
  {
    CMessageBuilderList list;
    Creator* const creator = new Creator("a", &destroyed);
    list.RegisterMessageBuilder("a", creator);
    list.RegisterMessageBuilder("b", new Creator("b", &destroyed));
    creator->onEnd = [&] {
      EXPECT_EQ(list.Create("a"), nullptr);
      ofOther = Made(list, "b");
      list.RegisterMessageBuilder("c", new Creator("c", &destroyed));
    };
  }
  EXPECT_EQ(ofOther, "b");
  EXPECT_EQ(destroyed, 3);
}

TEST(CMessageBuilderList, ACreatorMayTakeItsOwnNameOutWhileItWorks) {
  int destroyed = 0;
  CMessageBuilderList list;
  Creator* const creator = new Creator("a", &destroyed);
  list.RegisterMessageBuilder("a", creator);
  creator->onCreate = [&] {
    EXPECT_TRUE(list.UnRegisterMessageBuilder("a"));
    EXPECT_EQ(destroyed, 0);
  };
  EXPECT_EQ(Made(list, "a"), "a");
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(list.Create("a"), nullptr);
}

TEST(CMessageBuilderList, DestroysThroughTheBases) {
  static_assert(std::has_virtual_destructor_v<MessageBuilderICreator>);
  static_assert(std::has_virtual_destructor_v<CMessageBuilderList>);
  static_assert(std::is_abstract_v<MessageBuilderICreator>);
}

TEST(CMessageBuilderList, ThereIsOne) {
  CMessageBuilderList* onThread = nullptr;
  std::thread([&] { onThread = &CMessageBuilderList::GetMessageBuilderList(); }).join();
  EXPECT_EQ(onThread, &CMessageBuilderList::GetMessageBuilderList());
}

TEST(CMessageBuilderList, TheOneListDestroysItsCreatorsAtExit) {
  ChildProcess child(
      [] {
        Creator* const creator = new Creator;
        creator->onEnd = [] {
          // Still there, and without the creator that goes.
          if (CMessageBuilderList::GetMessageBuilderList().Create("a") == nullptr) std::fputs("gone", stdout);
          std::fflush(stdout);
        };
        CMessageBuilderList::GetMessageBuilderList().RegisterMessageBuilder("a", creator);
        return 0;
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  EXPECT_EQ(child.OutputText(), "gone");
}

}  // namespace
