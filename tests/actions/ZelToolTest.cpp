#include "zelbase/actions/ZelTool.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

#include "tests/actions/ActionsTestHelp.h"
#include "tests/actions/ToolTestHelp.h"

namespace {

TEST(ZelTool, BeginsNotEnabledWithoutEditorAndWithoutName) {
  const ProbeTool tool;
  EXPECT_FALSE(tool.IsEnabled());
  EXPECT_FALSE(tool.HasEditor());
  EXPECT_EQ(tool.GetName(), "");
}

TEST(ZelTool, EnableStoresTheSwitch) {
  ProbeTool tool;
  tool.Enable(true);
  EXPECT_TRUE(tool.IsEnabled());
  tool.Enable(true);
  EXPECT_TRUE(tool.IsEnabled());
  tool.Enable(false);
  EXPECT_FALSE(tool.IsEnabled());
  EXPECT_EQ(tool.calls, "") << "nothing else is called";
}

TEST(ZelTool, ADerivedClassSetsTheFields) {
  ProbeTool tool;
  tool.m_name = "Ruler";
  tool.m_hasEditor = true;
  tool.m_enabled = true;
  EXPECT_EQ(tool.GetName(), "Ruler");
  EXPECT_TRUE(tool.HasEditor());
  EXPECT_TRUE(tool.IsEnabled());
}

TEST(ZelTool, CopiesHaveTheThreeFields) {
  ProbeTool tool("Ruler");
  tool.m_hasEditor = true;
  tool.Enable(true);
  const ProbeTool copy(tool);
  ProbeTool assigned("other");
  assigned = tool;
  tool.Enable(false);
  tool.m_name = "changed";
  for (const ProbeTool& other : {copy, assigned}) {
    EXPECT_EQ(other.GetName(), "Ruler");
    EXPECT_TRUE(other.HasEditor());
    EXPECT_TRUE(other.IsEnabled());
  }
}

TEST(ZelTool, TheVirtualOperationsStandInTheirOrder) {
  static_assert(std::is_abstract_v<ZelTool>);
  static_assert(std::has_virtual_destructor_v<ZelTool>);
  EXPECT_EQ(Slot(&ZelTool::Activate), 1u);
  EXPECT_EQ(Slot(&ZelTool::Deactivate), 2u);
  EXPECT_EQ(Slot(&ZelTool::ShowEditor), 3u);
  EXPECT_EQ(Slot(&ZelTool::CloseEditor), 4u);
  EXPECT_EQ(Slot(&ZelTool::Enable), 5u);
  static_assert(std::is_same_v<decltype(&ZelTool::GetName), std::string (ZelTool::*)() const>);
  static_assert(std::is_same_v<decltype(&ZelTool::IsEnabled), bool (ZelTool::*)() const>);
  static_assert(std::is_same_v<decltype(&ZelTool::HasEditor), bool (ZelTool::*)() const>);
}

TEST(ZelTool, ADerivedClassIsReachedAndDestroyedThroughTheBase) {
  int destroyed = 0;
  {
    auto* const probe = new ProbeTool("Ruler", &destroyed);
    const std::unique_ptr<ZelTool> tool(probe);
    tool->Activate();
    tool->ShowEditor();
    tool->CloseEditor();
    tool->Deactivate();
    EXPECT_EQ(probe->calls, "Activate ShowEditor CloseEditor Deactivate ");
  }
  EXPECT_EQ(destroyed, 1);
}

}  // namespace
