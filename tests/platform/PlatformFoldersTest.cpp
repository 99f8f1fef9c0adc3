#include "zelbase/platform/PlatformFolders.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"

namespace {

std::string CommonDataWith(const char* value) {
  const EnvironmentVariable variable("ZELBASE_COMMON_DATA", value);
  std::string folder = "untouched";
  EXPECT_TRUE(PlatformFolders::System().CommonData(folder));
  return folder;
}

TEST(PlatformFolders, EnvironmentSaysWhereCommonDataLies) {
  EXPECT_EQ(CommonDataWith("/srv/suite"), "/srv\\suite");
  EXPECT_EQ(CommonDataWith("/srv/suite//"), "/srv\\suite");
  EXPECT_EQ(CommonDataWith("/srv\\suite\\"), "/srv\\suite");
  EXPECT_EQ(CommonDataWith("relative/data"), "relative\\data");
  EXPECT_EQ(CommonDataWith("/"), "/");
}

TEST(PlatformFolders, WithoutTheVariableTheSystemsFolderIsGiven) {
  ASSERT_TRUE(std::filesystem::is_directory("/var/lib"));
  EXPECT_EQ(CommonDataWith(nullptr), "/var\\lib");
  EXPECT_EQ(CommonDataWith(""), "/var\\lib");
}

TEST(PlatformFolders, CurrentFolderIsGivenWithBackslashes) {
  const TemporaryFolder folder;
  ChildProcess child([&] {
    std::filesystem::current_path(folder.Path());
    std::string current;
    if (!PlatformFolders::System().Current(current)) return 1;
    return current == folder.InterfacePath() ? 0 : 2;
  });
  EXPECT_EQ(child.Wait(), 0);
}

TEST(PlatformFolders, CurrentFolderThatHasGoneIsNone) {
  const TemporaryFolder folder;
  const std::string path = folder.MakeFolder("sub");
  ChildProcess child([&] {
    std::filesystem::current_path(path);
    std::filesystem::remove(path);
    std::string current = "untouched";
    if (PlatformFolders::System().Current(current)) return 1;
    return current == "untouched" ? 0 : 2;
  });
  EXPECT_EQ(child.Wait(), 0);
}

TEST(PlatformFolders, RootIsOneSlash) {
  ChildProcess child([] {
    std::filesystem::current_path("/");
    std::string current;
    return PlatformFolders::System().Current(current) && current == "/" ? 0 : 1;
  });
  EXPECT_EQ(child.Wait(), 0);
}

TEST(PlatformFolders, FreeSpaceLiesWithinTheDisk) {
  const TemporaryFolder folder;
  unsigned long long bytes = 0;
  ASSERT_TRUE(PlatformFolders::System().FreeSpace(folder.InterfacePath(), bytes));
  EXPECT_GT(bytes, 0u);
  EXPECT_LE(bytes, std::filesystem::space(folder.Path()).capacity);
}

TEST(PlatformFolders, FreeSpaceOfNoDiskIsNotTold) {
  const TemporaryFolder folder;
  unsigned long long bytes = 77;
  EXPECT_FALSE(PlatformFolders::System().FreeSpace(folder.File("none"), bytes));
  EXPECT_FALSE(PlatformFolders::System().FreeSpace("", bytes));
  EXPECT_FALSE(PlatformFolders::System().FreeSpace(folder.Path() + std::string("\0x", 2), bytes));
  EXPECT_EQ(bytes, 77u);
}

}  // namespace
