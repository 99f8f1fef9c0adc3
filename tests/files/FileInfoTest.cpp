#include "zelbase/files/FileInfo.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"

namespace {

bool IsAllZero(const struct stat& record) {
  const auto* const bytes = reinterpret_cast<const unsigned char*>(&record);
  return std::all_of(bytes, bytes + sizeof(record), [](unsigned char byte) { return byte == 0; });
}

TEST(FileInfo, KnowsAFile) {
  const TemporaryFolder folder;
  const FileInfo info(folder.Write("a.txt", "abc"));
  EXPECT_EQ(info.Attributes(), 128u);
  EXPECT_EQ(info.Stat().st_size, 3);
  EXPECT_TRUE(S_ISREG(info.Stat().st_mode));
}

TEST(FileInfo, KnowsAFolder) {
  const TemporaryFolder folder;
  for (const std::string& path : {folder.Path(), folder.InterfacePath() + "\\", folder.MakeLink("link", folder.Path())}) {
    const FileInfo info(path);
    EXPECT_EQ(info.Attributes(), 16u) << path;
    EXPECT_TRUE(S_ISDIR(info.Stat().st_mode));
  }
}

TEST(FileInfo, WhatMayNotBeWrittenIsReadOnly) {
  const TemporaryFolder folder;
  const std::string file = folder.Write("a", "abc");
  const std::string sub = folder.MakeFolder("sub");
  std::filesystem::permissions(file, std::filesystem::perms(0444));
  std::filesystem::permissions(sub, std::filesystem::perms(0555));
  EXPECT_EQ(FileInfo(file).Attributes(), 1u);
  EXPECT_EQ(FileInfo(sub).Attributes(), 17u);
}

TEST(FileInfo, WhatThisUserMayNotWriteIsReadOnly) {
  const TemporaryFolder folder;
  std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
  const std::string file = folder.Write("a", "abc");
  std::filesystem::permissions(file, std::filesystem::perms(0644));
  ChildProcess child([&] {
    if (!BecomeOrdinaryUser()) return 100;
    const bool writable = std::ofstream(file, std::ios::app).is_open();  // where the tests do not run as superuser
    return FileInfo(file).Attributes() == (writable ? 128u : 1u) ? 0 : 1;
  });
  EXPECT_EQ(child.Wait(), 0);
}

TEST(FileInfo, MissingFileHasInvalidAttributesAndAnEmptyRecord) {
  const TemporaryFolder folder;
  for (const std::string& path : {folder.File("none"), folder.File("no/a"), std::string(), folder.MakeLink("link", "none"),
                                  folder.Write("a", "") + "/b", folder.File(std::string("a\0b", 3))}) {
    const FileInfo info(path);
    EXPECT_EQ(info.Attributes(), 0xFFFFFFFFu) << path;
    EXPECT_TRUE(IsAllZero(info.Stat()));
  }
}

TEST(FileInfo, IsAFileName) {
  const TemporaryFolder folder;
  folder.Write("a.txt", "abc");
  const std::string path = folder.InterfacePath() + "\\a.txt";
  const FileInfo info(path);
  EXPECT_EQ(*info, path);
  EXPECT_EQ(info.Name(true), "a.txt");
  EXPECT_EQ(info.Name(false), "a");
  EXPECT_EQ(info.Name(), FileName(path));
}

TEST(FileInfo, IsMadeFromTextAndName) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  EXPECT_EQ(FileInfo(path).Attributes(), 128u);
  EXPECT_EQ(FileInfo(path.c_str()).Attributes(), 128u);
  EXPECT_EQ(FileInfo(FileName(path)).Attributes(), 128u);
  EXPECT_EQ(FileInfo(static_cast<const char*>(nullptr)).Attributes(), 0xFFFFFFFFu);
}

TEST(FileInfo, CopiesAndKeepsItsAnswers) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  const FileInfo info(path);
  std::filesystem::remove(path);
  FileInfo copy(info);
  EXPECT_EQ(copy.Attributes(), 128u);
  EXPECT_EQ(copy.Stat().st_size, 3);
  copy = FileInfo(path);
  EXPECT_EQ(copy.Attributes(), 0xFFFFFFFFu);
  copy = info;
  EXPECT_EQ(copy.Stat().st_size, 3);
  EXPECT_EQ(*copy, *info);
}

TEST(FileInfo, ChangingTheNameAsksNothingAnew) {
  const TemporaryFolder folder;
  FileInfo info(folder.Write("a", "abc"));
  info.SetName("none", false);
  EXPECT_EQ(info.Attributes(), 128u);
  info = folder.File("none");
  EXPECT_EQ(info.Attributes(), 0xFFFFFFFFu);
}

}  // namespace
