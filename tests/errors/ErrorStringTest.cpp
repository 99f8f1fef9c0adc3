#include "zelbase/errors/ErrorString.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "tests/errors/FixedWording.h"
#include "tests/support/ChildProcess.h"

namespace {

void SetLastError(const char* text) { const ErrorString error(text); }

TEST(ErrorString, IsAText) {
  static_assert(std::is_base_of_v<std::string, ErrorString>);
  static_assert(std::is_convertible_v<ErrorString, std::string>);
  const ErrorString error("abc");
  const std::string text = error;
  EXPECT_EQ(text, "abc");
  EXPECT_STREQ(error.c_str(), "abc");
  EXPECT_EQ(error.size(), 3u);
  EXPECT_TRUE(error == "abc");
  EXPECT_TRUE(error == text);
}

TEST(ErrorString, BoolIsTrueForSuccess) {
  const ErrorString success("");
  const ErrorString failure("failed");
  EXPECT_TRUE(static_cast<bool>(success));
  EXPECT_FALSE(!success);
  EXPECT_FALSE(static_cast<bool>(failure));
  EXPECT_TRUE(!failure);
  const bool wentWell = failure;
  EXPECT_FALSE(wentWell);
}

TEST(ErrorString, FromBool) {
  EXPECT_TRUE(static_cast<bool>(ErrorString(true)));
  EXPECT_STREQ(ErrorString(true).c_str(), "");
  EXPECT_FALSE(static_cast<bool>(ErrorString(false)));
  EXPECT_STREQ(ErrorString(false).c_str(), "Unspecified Error");
}

TEST(ErrorString, FromTextNumber) {
  EXPECT_STREQ(ErrorString(12039).c_str(), "Unknown");
  EXPECT_STREQ(ErrorString(12035).c_str(), "Error opening \"%s\".");
  EXPECT_TRUE(static_cast<bool>(ErrorString(0)));
  EXPECT_TRUE(static_cast<bool>(ErrorString(-12039)));
}

TEST(ErrorString, NumberedTextsFollowTheInstalledLanguage) {
  const NumberedTextsGuard guard({{12034, "Unbekannter Fehler"}});
  EXPECT_STREQ(ErrorString(false).c_str(), "Unbekannter Fehler");
  EXPECT_STREQ(ErrorString(12034).c_str(), "Unbekannter Fehler");
}

TEST(ErrorString, FromTexts) {
  EXPECT_EQ(ErrorString("literal"), "literal");
  EXPECT_EQ(ErrorString(std::string("a\0b", 3)).size(), 3u);
  EXPECT_TRUE(static_cast<bool>(ErrorString(static_cast<const char*>(nullptr))));
  EXPECT_TRUE(static_cast<bool>(ErrorString(nullptr)));
  EXPECT_TRUE(static_cast<bool>(ErrorString()));
}

ErrorString Answer(int kind) {
  if (kind == 0) return true;
  if (kind == 1) return false;
  if (kind == 2) return 12039;
  if (kind == 3) return "text";
  return std::string("string");
}

TEST(ErrorString, FunctionsAnswerWithAnyOfThem) {
  EXPECT_EQ(Answer(0), "");
  EXPECT_EQ(Answer(1), "Unspecified Error");
  EXPECT_EQ(Answer(2), "Unknown");
  EXPECT_EQ(Answer(3), "text");
  EXPECT_EQ(Answer(4), "string");
}

TEST(ErrorString, ShiftAppends) {
  ErrorString error("a");
  ErrorString more("d");
  error << "b" << std::string("c") << more << static_cast<const char*>(nullptr) << "";
  EXPECT_EQ(error, "abcd");
  error << error;
  EXPECT_EQ(error, "abcdabcd");
  error << error.c_str();
  EXPECT_EQ(error, "abcdabcdabcdabcd");
}

TEST(ErrorString, AssignmentTakesTexts) {
  ErrorString error("old");
  error = "literal";
  EXPECT_EQ(error, "literal");
  error = std::string("string");
  EXPECT_EQ(error, "string");
  const ErrorString other("other");
  error = other;
  EXPECT_EQ(error, "other");
  const ErrorString& same = error;
  error = same;
  EXPECT_EQ(error, "other");
  error = static_cast<const char*>(nullptr);
  EXPECT_EQ(error, "");
}

TEST(ErrorString, EndOfAFailureSetsTheLastError) {
  { const ErrorString error("x"); }
  EXPECT_EQ(ErrorString::LastError(), "x");
  { const ErrorString error("y"); }
  EXPECT_EQ(ErrorString::LastError(), "y");
}

TEST(ErrorString, EndOfASuccessLeavesTheLastErrorAlone) {
  SetLastError("x");
  {
    const ErrorString empty;
    const ErrorString ok(true);
  }
  EXPECT_EQ(ErrorString::LastError(), "x");
}

TEST(ErrorString, OnlyADestructorSetsTheLastError) {
  SetLastError("before");
  ErrorString error("a");
  error = "b";
  error = std::string("c");
  error << "d";
  EXPECT_EQ(ErrorString::LastError(), "before");
}

TEST(ErrorString, EndOfACopySetsTheLastErrorToo) {
  SetLastError("before");
  const ErrorString error("original");
  { const ErrorString copy(error); }
  EXPECT_EQ(ErrorString::LastError(), "original");
}

TEST(ErrorString, TheLastToGoWins) {
  {
    const ErrorString first("first");
    const ErrorString second("second");
  }
  EXPECT_EQ(ErrorString::LastError(), "first");  // destroyed in the reverse order
}

TEST(ErrorString, ReadingTheLastErrorDoesNotSetIt) {
  SetLastError("x");
  static_assert(std::is_same_v<decltype(ErrorString::LastError()), std::string>);
  const std::string text = ErrorString::LastError();
  SetLastError("y");
  EXPECT_EQ(text, "x");
  EXPECT_EQ(ErrorString::LastError(), "y");
}

class ErrorStringThreads : public testing::TestWithParam<int> {};

TEST_P(ErrorStringThreads, LastErrorIsAlwaysOneWholeText) {
  std::set<std::string> texts;
  for (int i = 0; i < GetParam(); ++i) {
    texts.insert(std::string(static_cast<std::size_t>(40 + 30 * i), static_cast<char>('a' + i)));
  }
  SetLastError(texts.begin()->c_str());
  std::atomic<int> odd{0};
  std::vector<std::thread> threads;
  for (const std::string& text : texts) {
    threads.emplace_back([&] {
      for (int round = 0; round < 200; ++round) {
        { const ErrorString error(text); }
        if (texts.count(ErrorString::LastError()) == 0) ++odd;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(odd.load(), 0);
}

INSTANTIATE_TEST_SUITE_P(ErrorString, ErrorStringThreads, testing::Values(2, 4, 10));

// Made before main and destroyed among the last: writes and reads the last error when nearly everything is gone.
class Late {
 public:
  ~Late() {
    { const ErrorString error("a text of the last hour, too long for the object itself"); }
    if (m_speaks) std::puts(ErrorString::LastError().c_str());
  }
  void Speak() { m_speaks = true; }

 private:
  bool m_speaks = false;
  ErrorString m_text{"text of a static"};
};
Late g_late;

TEST(ErrorString, LastErrorIsReachableFromTheDestructorOfAnyStatic) {
  ChildProcess child(
      [] {
        g_late.Speak();
        return 0;
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  EXPECT_EQ(child.OutputText(), "a text of the last hour, too long for the object itself\n");
}

}  // namespace
