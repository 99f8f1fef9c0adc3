#include "zelbase/platform/detail/ClassName.h"

#include <gtest/gtest.h>

#include "zelbase/platform/CWinApp.h"
#include "zelbase/platform/CWnd.h"

namespace class_name_test {
class CInside {};
struct Plain {};
}  // namespace class_name_test

namespace {

using zelbase::detail::ClassName;

TEST(ClassName, IsAsTheProgrammerWroteIt) {
  EXPECT_EQ(ClassName(typeid(CWnd)), "CWnd");
  EXPECT_EQ(ClassName(typeid(CWinApp)), "CWinApp");
  EXPECT_EQ(ClassName(typeid(class_name_test::CInside)), "class_name_test::CInside");
  EXPECT_EQ(ClassName(typeid(class_name_test::Plain)), "class_name_test::Plain");
}

TEST(ClassName, OfAnObjectIsItsOwn) {
  class CDerived : public CWnd {};
  const CDerived derived;
  const CWnd& window = derived;
  EXPECT_NE(ClassName(typeid(window)), "CWnd");
}

}  // namespace
