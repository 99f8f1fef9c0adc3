#include "zelbase/platform/posix/PosixPaths.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "tests/support/TemporaryFolder.h"

namespace {

using zelbase::detail::LinkText;
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

TEST(PosixPaths, ALinkIsReadWholeAtAnyLength) {
  const TemporaryFolder folder;
  for (const std::size_t length : {1u, 255u, 256u, 257u, 511u, 512u, 513u, 4000u}) {
    const std::string target(length, 'x');
    EXPECT_EQ(LinkText(folder.MakeLink(std::to_string(length), target)), target);
  }
}

TEST(PosixPaths, WhatIsNoLinkHasNoText) {
  const TemporaryFolder folder;
  EXPECT_EQ(LinkText(folder.Write("file", "text")), "");
  EXPECT_EQ(LinkText(folder.MakeFolder("folder")), "");
  EXPECT_EQ(LinkText(folder.File("missing")), "");
  EXPECT_EQ(LinkText(""), "");
}

}  // namespace
