#include "zelbase/platform/FixedFolders.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

TEST(FixedFolders, KnowsNothingAtFirst) {
  FixedFolders folders;
  std::string folder = "untouched";
  unsigned long long bytes = 77;
  EXPECT_FALSE(folders.CommonData(folder));
  EXPECT_FALSE(folders.Current(folder));
  EXPECT_FALSE(folders.FreeSpace("x", bytes));
  EXPECT_EQ(folder, "untouched");
  EXPECT_EQ(bytes, 77u);
}

TEST(FixedFolders, AnswersWhatItWasTold) {
  FixedFolders folders;
  folders.SetCommonData("/tmp\\common");
  folders.SetCurrent("C:\\here");
  folders.SetFreeSpace(5000000000u);
  const PlatformOverride<PlatformFolders> guard(folders);
  PlatformFolders& current = PlatformService<PlatformFolders>::Current();
  std::string folder;
  unsigned long long bytes = 0;
  EXPECT_TRUE(current.CommonData(folder));
  EXPECT_EQ(folder, "/tmp\\common");
  EXPECT_TRUE(current.Current(folder));
  EXPECT_EQ(folder, "C:\\here");
  EXPECT_TRUE(current.FreeSpace("anywhere", bytes));
  EXPECT_EQ(bytes, 5000000000u);
}

TEST(FixedFolders, FolderCanBeTakenAwayAgain) {
  FixedFolders folders;
  folders.SetCommonData("x");
  folders.SetCommonData(std::nullopt);
  std::string folder;
  EXPECT_FALSE(folders.CommonData(folder));
}

}  // namespace
