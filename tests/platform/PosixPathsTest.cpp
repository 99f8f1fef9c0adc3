#include "zelbase/platform/posix/PosixPaths.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using zelbase::detail::ToInterfacePath;
using zelbase::detail::ToSystemPath;

TEST(PosixPaths, BothSeparatorsReachTheSystem) {
  EXPECT_EQ(ToSystemPath("/tmp\\x\\y"), "/tmp/x/y");
  EXPECT_EQ(ToSystemPath("\\tmp/x\\"), "/tmp/x/");
  EXPECT_EQ(ToSystemPath(".\\a"), "./a");
  EXPECT_EQ(ToSystemPath(""), "");
}

TEST(PosixPaths, AbsolutePathKeepsItsFirstCharacter) {
  EXPECT_EQ(ToInterfacePath("/tmp/x/y"), "/tmp\\x\\y");
  EXPECT_EQ(ToInterfacePath("/"), "/");
  EXPECT_EQ(ToInterfacePath("//x"), "/\\x");
}

TEST(PosixPaths, RelativePathHasBackslashesOnly) {
  EXPECT_EQ(ToInterfacePath("a/b/c"), "a\\b\\c");
  EXPECT_EQ(ToInterfacePath("a"), "a");
  EXPECT_EQ(ToInterfacePath(""), "");
}

TEST(PosixPaths, OtherBytesStay) {
  const std::string bytes("/\xB0\0 C:", 6);
  EXPECT_EQ(ToInterfacePath(bytes), bytes);
  EXPECT_EQ(ToSystemPath(bytes), bytes);
}

}  // namespace
