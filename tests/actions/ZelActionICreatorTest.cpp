#include "zelbase/actions/ZelActionICreator.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

#include "tests/actions/ActionsTestHelp.h"

TEST(ZelActionICreator, CreateIsFirstNotConstantAndPure) {
  static_assert(std::is_abstract_v<ZelActionICreator>);
  static_assert(std::is_same_v<decltype(&ZelActionICreator::Create), ZelAction* (ZelActionICreator::*)()>);
  EXPECT_EQ(Slot(&ZelActionICreator::Create) + 1, 0u) << "before the destructor";
}

TEST(ZelActionICreator, IsDestroyedThroughItself) {
  static_assert(std::has_virtual_destructor_v<ZelActionICreator>);
  int destroyed = 0;
  std::unique_ptr<ZelActionICreator> creator = std::make_unique<MakingCreator>([] { return new ZelAction; }, &destroyed);
  EXPECT_NE(std::unique_ptr<ZelAction>(creator->Create()), nullptr);
  creator.reset();
  EXPECT_EQ(destroyed, 1);
}
