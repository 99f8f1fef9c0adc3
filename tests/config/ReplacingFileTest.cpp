#include "zelbase/config/detail/ReplacingFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>

#include "tests/support/InChild.h"
#include "tests/support/TemporaryFolder.h"
#include "zelbase/platform/FaultInjectionFiles.h"

namespace {

using zelbase::detail::ReplacingFile;

TEST(ReplacingFile, TheTargetIsReplacedByCommitAlone) {
  const TemporaryFolder folder;
  const std::string name = folder.Write("a", "former");
  ReplacingFile file;
  ASSERT_TRUE(file.Begin(name));
  EXPECT_TRUE(file.WriteAll("new"));
  file.Write(" text", 5);
  EXPECT_EQ(folder.Read("a"), "former");
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ(folder.Read("a"), "new text");
}

TEST(ReplacingFile, WithoutABeginningThereIsNothingToWriteTo) {
  const TemporaryFolder folder;
  ReplacingFile file;
  EXPECT_FALSE(file.Begin(""));
  EXPECT_FALSE(file.Begin(std::string("a\0b", 3)));
  EXPECT_FALSE(file.WriteAll("x"));
  EXPECT_THROW(file.Write("x", 1), CFileException);
  EXPECT_FALSE(file.Commit());
  // The same again behind a commit: it ended the writing.
  ASSERT_TRUE(file.Begin(folder.File("a")));
  EXPECT_TRUE(file.Commit());
  EXPECT_FALSE(file.WriteAll("x"));
  EXPECT_THROW(file.Write("x", 1), CFileException);
  EXPECT_FALSE(file.Commit());
  EXPECT_EQ(folder.Read("a"), "");
}

// Each name for the temporary file is there already, as in a folder where somebody laid them out beforehand.
TEST(ReplacingFile, AfterSixteenNamesThatAreTakenItGivesUp) {
  const TemporaryFolder folder;
  const std::string name = folder.Write("a", "former");
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  files.FailAt(FileOperation::Open, 2, FileResult::FileExists, FaultInjectionFiles::Repeat::ForEver);
  ReplacingFile file;
  EXPECT_FALSE(file.Begin(name));
  EXPECT_EQ(files.FaultsGiven(), 16u);
  EXPECT_EQ(files.OpenFiles(), 0);
  EXPECT_EQ(folder.Read("a"), "former");
}

TEST(ReplacingFile, ANameThatIsTakenIsFollowedByAnother) {
  const TemporaryFolder folder;
  const std::string name = folder.Write("a", "former");
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  files.FailAt(FileOperation::Open, 2, FileResult::FileExists);
  ReplacingFile file;
  ASSERT_TRUE(file.Begin(name));
  EXPECT_TRUE(file.WriteAll("new") && file.Commit());
  EXPECT_EQ(files.FaultsGiven(), 1u);
  EXPECT_EQ(folder.Read("a"), "new");
}

TEST(ReplacingFile, ANameWithoutAFolderIsOneOfTheCurrentFolder) {
  const TemporaryFolder folder;
  folder.Write("a", "former");
  ExpectInChild([&] {
    std::filesystem::current_path(folder.Path());
    ReplacingFile file;
    ASSERT_TRUE(file.Begin("a"));
    EXPECT_TRUE(file.WriteAll("new") && file.Commit());
  });
  EXPECT_EQ(folder.Read("a"), "new");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), std::filesystem::directory_iterator()), 1);
}

}  // namespace
