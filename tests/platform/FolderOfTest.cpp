#include "zelbase/platform/detail/FolderOf.h"

#include <gtest/gtest.h>

namespace {

using zelbase::detail::FolderOf;

TEST(FolderOf, EndsWithTheLastSeparator) {
  EXPECT_EQ(FolderOf("C:\\suite\\survey.exe"), "C:\\suite\\");
  EXPECT_EQ(FolderOf("/opt\\suite\\survey.exe"), "/opt\\suite\\");
  EXPECT_EQ(FolderOf("C:\\a folder\\"), "C:\\a folder\\");
  EXPECT_EQ(FolderOf("\\survey.exe"), "\\");
}

TEST(FolderOf, RootOfThisSystemIsAFolder) { EXPECT_EQ(FolderOf("/survey.exe"), "/"); }

TEST(FolderOf, NameAloneHasNone) {
  EXPECT_EQ(FolderOf("survey.exe"), "");
  EXPECT_EQ(FolderOf(""), "");
  EXPECT_EQ(FolderOf("C:survey.exe"), "");
}

}  // namespace
