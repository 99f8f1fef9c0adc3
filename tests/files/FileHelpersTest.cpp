#include "zelbase/files/FileHelpers.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <limits>
#include <string>

#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"
#include "zelbase/platform/FaultInjectionFiles.h"

namespace {

void SetWriteTime(const std::string& path, long long milliseconds) {
  const std::chrono::sys_time<std::chrono::milliseconds> time{std::chrono::milliseconds(milliseconds)};
  std::filesystem::last_write_time(path, std::chrono::file_clock::from_sys(time));
}

TEST(FileHelpers, SizeIsThatOfTheFile) {
  const TemporaryFolder folder;
  unsigned long long size = 77;
  EXPECT_TRUE(GetFileSize(folder.Write("a", "abc"), size));
  EXPECT_EQ(size, 3u);
  EXPECT_TRUE(GetFileSize(folder.MakeLink("link", "a"), size));
  EXPECT_EQ(size, 3u);
  EXPECT_TRUE(GetFileSize(folder.InterfacePath() + "\\a", size));
  EXPECT_EQ(size, 3u);
  EXPECT_TRUE(GetFileSize(folder.Write("b", ""), size));
  EXPECT_EQ(size, 0u);
}

TEST(FileHelpers, SizeMayExceed32Bits) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "");
  std::filesystem::resize_file(path, 5000000000u);
  unsigned long long size = 0;
  EXPECT_TRUE(GetFileSize(path, size));
  EXPECT_EQ(size, 5000000000u);
}

TEST(FileHelpers, SizeOfAFolderIsZero) {
  const TemporaryFolder folder;
  unsigned long long size = 77;
  EXPECT_TRUE(GetFileSize(folder.Path(), size));
  EXPECT_EQ(size, 0u);
}

TEST(FileHelpers, SizeOfWhatIsMissingIsUntouched) {
  const TemporaryFolder folder;
  folder.Write("a", "abc");
  unsigned long long size = 77;
  for (const std::string& path : {folder.File("none"), folder.File("*"), folder.File("?"), std::string(),
                                  folder.File(std::string("a\0b", 3)), folder.MakeLink("dangling", "none")}) {
    EXPECT_FALSE(GetFileSize(path, size)) << path;
  }
  EXPECT_EQ(size, 77u);
}

TEST(FileHelpers, WriteTimeIsMillisecondsSince1970) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  double time = 0.0;
  for (const long long milliseconds : {1234567890250LL, 0LL, -86400001LL, 1700000000001LL}) {
    SetWriteTime(path, milliseconds);
    EXPECT_TRUE(GetFileWriteTime(path, time));
    EXPECT_EQ(time, static_cast<double>(milliseconds));
  }
}

TEST(FileHelpers, WriteTimeOfWhatDoesNotOpenIsUntouched) {
  const TemporaryFolder folder;
  folder.Write("a", "abc");
  const int descriptors = CountOpenDescriptors();
  double time = 77.0;
  for (const std::string& path : {folder.File("none"), folder.Path(), std::string(), folder.File(std::string("a\0b", 3))}) {
    EXPECT_FALSE(GetFileWriteTime(path, time)) << path;
  }
  EXPECT_EQ(time, 77.0);
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

TEST(FileHelpers, WriteTimeComparesExactly) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  SetWriteTime(path, 1234567890250);
  const double time = 1234567890250.0;
  EXPECT_TRUE(CompareFileWriteTime(path, time));
  EXPECT_FALSE(CompareFileWriteTime(path, std::nextafter(time, 0.0)));
  EXPECT_FALSE(CompareFileWriteTime(path, std::nextafter(time, 1e300)));
  EXPECT_FALSE(CompareFileWriteTime(path, std::numeric_limits<double>::quiet_NaN()));
  EXPECT_FALSE(CompareFileWriteTime(folder.File("none"), 0.0));
}

TEST(FileHelpers, EachFailingOperationGivesFalseAndLeaksNothing) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a", "abc");
  const int descriptors = CountOpenDescriptors();
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  for (unsigned long long n = 1;; ++n) {
    files.Reset();
    files.FailAt(n);
    double time = 77.0;
    unsigned long long size = 77;
    const bool timed = GetFileWriteTime(path, time);
    const bool sized = GetFileSize(path, size);
    EXPECT_EQ(timed, time != 77.0);
    EXPECT_EQ(sized, size == 3);
    EXPECT_EQ(CountOpenDescriptors(), descriptors);
    EXPECT_EQ(timed && sized, files.FaultsGiven() == 0);
    if (files.FaultsGiven() == 0) break;
  }
}

}  // namespace
