#include "zelbase/actions/ToolICreator.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

#include "tests/actions/ActionsTestHelp.h"
#include "tests/actions/ToolTestHelp.h"

TEST(ToolICreator, CreateIsFirstNotConstantAndPure) {
  static_assert(std::is_abstract_v<ToolICreator>);
  static_assert(std::is_same_v<decltype(&ToolICreator::Create), ZelTool* (ToolICreator::*)()>);
  EXPECT_EQ(Slot(&ToolICreator::Create) + 1, 0u) << "before the destructor";
}

TEST(ToolICreator, IsDestroyedThroughItself) {
  static_assert(std::has_virtual_destructor_v<ToolICreator>);
  int destroyed = 0;
  std::unique_ptr<ToolICreator> creator = std::make_unique<ToolCreator>("a", &destroyed);
  EXPECT_NE(std::unique_ptr<ZelTool>(creator->Create()), nullptr);
  creator.reset();
  EXPECT_EQ(destroyed, 1);
}
