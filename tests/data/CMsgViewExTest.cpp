#include "zelbase/data/CMsgViewEx.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

TEST(CMsgViewEx, BeginsBlackWithoutAFont) {
  const CMsgViewEx view;
  EXPECT_EQ(view.GetMsgInfoColor(), 0u);
  EXPECT_EQ(view.GetMsgWarningColor(), 0u);
  EXPECT_EQ(view.GetMsgErrorColor(), 0u);
  EXPECT_EQ(view.GetMsgCriticalColor(), 0u);
  EXPECT_EQ(view.GetMsgBkColor(), 0u);
  EXPECT_EQ(view.GetMsgTxtAttr().attribText, "");
  EXPECT_EQ(view.GetMsgTxtAttr().attrib3, 0u);
}

TEST(CMsgViewEx, SettersGettersAndCopiesAgree) {
  CMsgViewEx view;
  view.SetMsgInfoColor(1);
  view.SetMsgWarningColor(2);
  view.SetMsgErrorColor(3);
  view.SetMsgCriticalColor(4);
  view.SetMsgBkColor(0xFFFFFFFF);
  view.SetMsgTxtAttr({"Arial", 5, 6, 7});
  CMsgViewEx assigned;
  assigned = view;
  for (const CMsgViewEx& copy : {view, CMsgViewEx(view), assigned}) {
    EXPECT_EQ(copy.GetMsgInfoColor(), 1u);
    EXPECT_EQ(copy.GetMsgWarningColor(), 2u);
    EXPECT_EQ(copy.GetMsgErrorColor(), 3u);
    EXPECT_EQ(copy.GetMsgCriticalColor(), 4u);
    EXPECT_EQ(copy.GetMsgBkColor(), 0xFFFFFFFF);
    EXPECT_EQ(copy.GetMsgTxtAttr().attribText, "Arial");
    EXPECT_EQ(copy.GetMsgTxtAttr().attribFlag1, 5);
    EXPECT_EQ(copy.GetMsgTxtAttr().attribFlag2, 6);
    EXPECT_EQ(copy.GetMsgTxtAttr().attrib3, 7u);
  }
  static_assert(std::has_virtual_destructor_v<CMsgViewEx>);
}

}  // namespace
