#include "zelbase/errors/detail/FillText.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using zelbase::detail::FillText;

TEST(FillText, Rows) {
  const struct {
    const char* text;
    const char* filled;
  } rows[] = {
      {"", ""},           {"plain", "plain"},
      {"%s", "one"},      {"\"%s\" in \"%s\"", "\"one\" in \"two\""},
      {"%s%s", "onetwo"}, {"%s, %s, %s.", "one, two, ."},  // surplus places give nothing
      {"none", "none"},                                    // surplus arguments are dropped
      {"100%%", "100%"},  {"%%s", "%s"},                   // a percent sign, then the letter
      {"%%%s", "%one"},   {"%%%%", "%%"},
      {"%", "%"},         {"%s%", "one%"},
      {"%%%", "%%"},      {"%n%d%5s%S", "%n%d%5s%S"},  // other places stay as they are written
      {"% s", "% s"},     {"%\xB0%s", "%\xB0one"},
  };
  for (const auto& row : rows) EXPECT_EQ(FillText(row.text, {"one", "two"}), row.filled) << row.text;
}

TEST(FillText, WithoutArgumentsPlacesVanish) { EXPECT_EQ(FillText("a%sb%%", {}), "ab%"); }

TEST(FillText, ArgumentsAreNotLookedInto) { EXPECT_EQ(FillText("%s%s", {"%s", "%%"}), "%s%%"); }

TEST(FillText, ZeroBytesPassThrough) {
  const std::string text("a\0%s", 4);
  const std::string argument("\0b", 2);
  EXPECT_EQ(FillText(text, {argument}), std::string("a\0\0b", 4));
}

TEST(FillText, AnyLength) {
  const std::string argument(1 << 20, 'x');
  EXPECT_EQ(FillText("<%s>", {argument}), "<" + argument + ">");
  std::string text;
  for (int i = 0; i < 100000; ++i) text += "%s%%";
  EXPECT_EQ(FillText(text, {"a"}), "a" + std::string(100000, '%'));
}

// A second transcription: one character at a time with a state.
std::string Slow(const std::string& text, const std::vector<std::string>& arguments) {
  std::string filled;
  std::size_t next = 0;
  bool percent = false;
  for (const char c : text) {
    if (!percent) {
      if (c == '%') percent = true;
      else filled += c;
      continue;
    }
    percent = false;
    if (c == 's') filled += next < arguments.size() ? arguments[next++] : std::string();
    else if (c == '%') filled += '%';
    else filled = filled + '%' + c;
  }
  return percent ? filled + '%' : filled;
}

TEST(FillText, EqualsASlowTranscription) {
  std::mt19937 random(42);
  const std::string letters = "%%%%ssab";
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    for (auto length = random() % 12; length > 0; --length) text += letters[random() % letters.size()];
    ASSERT_EQ(FillText(text, {"X", "%s", "Z"}), Slow(text, {"X", "%s", "Z"})) << text;
  }
}

}  // namespace
