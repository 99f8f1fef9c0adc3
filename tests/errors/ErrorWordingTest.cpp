#include "zelbase/errors/ErrorWording.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "tests/errors/FixedWording.h"
#include "zelbase/errors/FileError.h"

namespace {

TEST(ErrorWording, NothingIsFoundAtTheStart) {
  std::string text = "untouched";
  EXPECT_FALSE(ErrorWording::Find("File Error", "Open", text));
  EXPECT_EQ(text, "untouched");
}

TEST(ErrorWording, FindsWhatIsInstalled) {
  const WordingGuard guard({{{"s", "k"}, "text"}, {{"s", "empty"}, ""}});
  std::string text = "untouched";
  EXPECT_FALSE(ErrorWording::Find("s", "other", text));
  EXPECT_FALSE(ErrorWording::Find("k", "s", text));
  EXPECT_EQ(text, "untouched");
  EXPECT_TRUE(ErrorWording::Find("s", "k", text));
  EXPECT_EQ(text, "text");
  EXPECT_TRUE(ErrorWording::Find("s", "empty", text));
  EXPECT_EQ(text, "");
}

class Spoiler : public ErrorWording {
 public:
  bool Get(const std::string&, const std::string&, std::string& text) const override {
    text = "spoiled";
    return false;
  }
};

TEST(ErrorWording, OutputStaysUntouchedWhateverAnUnknowingWordingDoes) {
  const auto former = ErrorWording::Install(std::make_shared<Spoiler>());
  std::string text = "untouched";
  EXPECT_FALSE(ErrorWording::Find("s", "k", text));
  EXPECT_EQ(text, "untouched");
  ErrorWording::Install(former);
}

TEST(ErrorWording, InstallingGivesBackTheFormer) {
  const auto wording = std::make_shared<FixedWording>(FixedWording::Texts{});
  const auto former = ErrorWording::Install(wording);
  EXPECT_EQ(ErrorWording::Install(nullptr), wording);
  EXPECT_EQ(ErrorWording::Install(former), nullptr);
}

// A wording that takes itself out while it is asked.
class Leaving : public ErrorWording {
 public:
  bool Get(const std::string&, const std::string& key, std::string& text) const override {
    ErrorWording::Install(nullptr);
    text = m_prefix + key;
    return true;
  }

 private:
  std::string m_prefix = "a prefix long enough to live outside the object: ";
};

TEST(ErrorWording, LookUpUnderWayKeepsTheWordingAlive) {
  const auto former = ErrorWording::Install(std::make_shared<Leaving>());
  std::string text;
  EXPECT_TRUE(ErrorWording::Find("s", "k", text));
  EXPECT_EQ(text, "a prefix long enough to live outside the object: k");
  EXPECT_FALSE(ErrorWording::Find("s", "k", text));
  ErrorWording::Install(former);
}

class ErrorWordingThreads : public testing::TestWithParam<int> {};

TEST_P(ErrorWordingThreads, ErrorsFormatWhileWordingsChange) {
  const std::shared_ptr<const ErrorWording> former = ErrorWording::Install(nullptr);
  std::vector<std::thread> threads;
  std::atomic<int> odd{0};
  for (int i = 0; i < GetParam(); ++i) {
    threads.emplace_back([&odd] {
      const FileError error("a\\b", FileError::Open);
      for (int round = 0; round < 100; ++round) {
        ErrorWording::Install(std::make_shared<FixedWording>(FixedWording::Texts{{{"File Error", "Open"}, "worded %s"}}));
        const std::string text = error.Format();
        if (text != "worded b" && text != "Error opening \"b\".") ++odd;
        ErrorWording::Install(nullptr);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(odd.load(), 0);
  ErrorWording::Install(former);
}

INSTANTIATE_TEST_SUITE_P(ErrorWording, ErrorWordingThreads, testing::Values(2, 4, 10));

}  // namespace
