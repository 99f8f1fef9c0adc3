#include "zelbase/platform/detail/ClassName.h"

#include <gtest/gtest.h>

#include <typeinfo>

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

#ifdef __GLIBCXX__
// The name of a type as a compiler of another kind may make it.
class StrangeType : public std::type_info {
 public:
  explicit StrangeType(const char* name) : std::type_info(name) {}
};

TEST(ClassName, ThatCannotBeReadStaysAsItIs) { EXPECT_EQ(ClassName(StrangeType("no type at all")), "no type at all"); }
#endif

}  // namespace
