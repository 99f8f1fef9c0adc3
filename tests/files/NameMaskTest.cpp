#include "zelbase/files/detail/NameMask.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

namespace {

using zelbase::detail::MatchesMask;

// Slow and obvious: a "*" takes nothing, or one character and may go on.
bool SlowlyMatches(std::string_view name, std::string_view mask) {
  if (mask.empty()) return name.empty();
  if (mask[0] == '*') {
    return SlowlyMatches(name, mask.substr(1)) || (!name.empty() && SlowlyMatches(name.substr(1), mask));
  }
  if (name.empty()) return false;
  const auto lower = [](char c) { return c == 'A' ? 'a' : c; };
  return (mask[0] == '?' || lower(mask[0]) == lower(name[0])) && SlowlyMatches(name.substr(1), mask.substr(1));
}

void ForEachText(const std::string& characters, std::size_t length, const std::function<void(const std::string&)>& visit) {
  std::string text;
  const std::function<void()> extend = [&] {
    visit(text);
    if (text.size() == length) return;
    for (const char character : characters) {
      text += character;
      extend();
      text.pop_back();
    }
  };
  extend();
}

TEST(NameMask, EveryShortMaskAgreesWithASlowMatcher) {
  std::size_t pairs = 0;
  ForEachText("*?aA.", 4, [&](const std::string& mask) {
    ForEachText("ab.", 5, [&](const std::string& name) {
      ++pairs;
      const bool expected = mask == "*.*" || (!mask.empty() && SlowlyMatches(name, mask));
      if (MatchesMask(name, mask) != expected) ADD_FAILURE() << '"' << name << "\" against \"" << mask << '"';
    });
  });
  EXPECT_EQ(pairs, 781u * 364u);
}

TEST(NameMask, StarsNeedOnlyTheirLastSecondLook) {
  ForEachText("*?a", 7, [](const std::string& mask) {
    if (mask.empty()) return;
    for (const std::string name : {"", "a", "aa", "ab", "aab", "aba", "abaab", "aaabaaa"}) {
      if (MatchesMask(name, mask) != SlowlyMatches(name, mask)) {
        ADD_FAILURE() << '"' << name << "\" against \"" << mask << '"';
      }
    }
  });
}

TEST(NameMask, StarDotStarIsEveryName) {
  for (const char* const name : {"", "a", "a.b", ".", "..", "a."}) EXPECT_TRUE(MatchesMask(name, "*.*")) << name;
  EXPECT_FALSE(MatchesMask("a", "*.**"));
}

TEST(NameMask, EmptyMaskIsNoName) {
  EXPECT_FALSE(MatchesMask("a", ""));
  EXPECT_FALSE(MatchesMask("", ""));
}

TEST(NameMask, FoldsTheLettersAToZOnly) {
  for (int a = 0; a < 256; ++a) {
    for (int b = 0; b < 256; ++b) {
      if (b == '*' || b == '?') continue;
      const bool letters = a != b && ((a ^ b) == 0x20) && ((a | 0x20) >= 'a') && ((a | 0x20) <= 'z');
      const char name = static_cast<char>(a);
      const char mask = static_cast<char>(b);
      EXPECT_EQ(MatchesMask({&name, 1}, {&mask, 1}), a == b || letters) << a << ' ' << b;
    }
  }
}

TEST(NameMask, WildCardsInANameAreOrdinary) {
  EXPECT_TRUE(MatchesMask("a*b", "a*b"));
  EXPECT_TRUE(MatchesMask("a*b", "a?b"));
  EXPECT_FALSE(MatchesMask("a*b", "axb"));
}

TEST(NameMask, HostileMasksEnd) {
  std::string mask;
  for (int i = 0; i < 2000; ++i) mask += "*a";
  EXPECT_FALSE(MatchesMask(std::string(1999, 'a'), mask));
  EXPECT_TRUE(MatchesMask(std::string(5000, 'a'), mask));
  EXPECT_FALSE(MatchesMask(std::string(5000, 'a') + "b", mask));
}

}  // namespace
