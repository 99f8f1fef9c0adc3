// How a text becomes sections and items.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/config/SecondSettingsReader.h"
#include "tests/config/SettingsTestHelp.h"

namespace {

using Lines = std::vector<std::string>;

TEST(FileObjectRead, TheLastValueOfAKeyWins) {
  FileObject settings;
  EXPECT_TRUE(ReadFrom(settings, "[A]\r\nk=1\r\nk=2\r\n"));
  EXPECT_EQ(settings.GetNumItems("A"), 1);
  EXPECT_EQ(TextOf(settings, "A", "k"), "2");
  EXPECT_EQ(WrittenBy(settings), "[A]\r\nk = 2\r\n\r\n");
}

TEST(FileObjectRead, LinesBeforeTheFirstHeadAreKeptAndThoseBehindItAreGone) {
  FileObject settings;
  ReadFrom(settings, "; header\r\n\r\njunk\r\n[A]\r\n; header\r\n\r\njunk\r\nk=1\r\n");
  EXPECT_EQ(settings.GetExtraInfo(), (Lines{"; header", "", "junk"}));
  EXPECT_EQ(WrittenBy(settings), "; header\r\n\r\njunk\r\n[A]\r\nk = 1\r\n\r\n");
}

TEST(FileObjectRead, ExtraLinesAreKeptRaw) {
  FileObject settings;
  ReadFrom(settings, "  k = 1 // note \t\n//x\n[A]\n");
  EXPECT_EQ(settings.GetExtraInfo(), (Lines{"  k = 1 // note \t", "//x"}));
}

TEST(FileObjectRead, HeadsOfAllKinds) {
  const struct {
    const char* line;
    const char* name;
  } rows[] = {
      {"[A]", "A"},       {"[ A ] trailing", "A"}, {"[A", ""},         {"[]", ""},          {"[", ""},        {"  \t[A]", "A"},
      {"[A]b]", "A]b"},   {"[[A]]", "[A]"},        {"[a=b]", "a=b"},   {"[A] // c", "A"},   {"[A // c]", ""}, {"[http://x]", ""},
      {"[A]]", "A]"},     {"[;A]", ";A"},          {"[A b]", "A b"},   {"[\tA\v]", "A"},    {"[A]=5", "A"},   {"]A[]", "(none)"},
      {";[A]", "(none)"}, {"//[A]", "(none)"},     {"x[A]", "(none)"}, {" ;[A]", "(none)"},
  };
  for (const auto& row : rows) {
    FileObject settings;
    const bool read = ReadFrom(settings, std::string(row.line) + "\n");
    EXPECT_EQ(read, std::string(row.name) != "(none)") << row.line;
    EXPECT_EQ(SectionNames(settings), read ? Lines{row.name} : Lines{}) << row.line;
  }
}

TEST(FileObjectRead, AHeadWithoutABracketIsTheSectionWithNoName) {
  FileObject settings;
  ReadFrom(settings, "[A\nk=1\n");
  EXPECT_TRUE(settings.HasSection(""));
  EXPECT_EQ(WrittenBy(settings), "[]\r\nk = 1\r\n\r\n");
}

TEST(FileObjectRead, DoubleSlashCutsSectionHeadsToo) {
  FileObject settings;
  ReadFrom(settings, "[http://x]\nk=1\n");
  EXPECT_EQ(PictureOf(settings), (Picture{{"", {{"k", "1"}}}}));
}

TEST(FileObjectRead, LinesInASection) {
  const struct {
    const char* line;
    Items items;
  } rows[] = {
      {"path = a//b", {{"path", "a"}}},
      {"=5", {}},
      {"  =5", {}},
      {"k=", {{"k", ""}}},
      {"k = a = b", {{"k", "a = b"}}},
      {"k = \"a b \"", {{"k", "\"a b \""}}},
      {"k = a \\", {{"k", "a \\"}}},
      {"k = 1 ; no comment", {{"k", "1 ; no comment"}}},
      {" ; x = 1", {{"; x", "1"}}},
      {";x = 1", {}},
      {"//x = 1", {}},
      {"k//x = 1", {}},
      {"k = 1/2", {{"k", "1/2"}}},
      {"k = a/ /b", {{"k", "a/ /b"}}},
      {"k = ///", {{"k", ""}}},
      {"k = a///b", {{"k", "a"}}},
      {" \t k \t= \v\f v \r", {{"k", "v"}}},
      {"junk", {}},
      {"k\xA0=\xA0v", {{"k\xA0", "\xA0v"}}},
  };
  for (const auto& row : rows) {
    FileObject settings;
    EXPECT_TRUE(ReadFrom(settings, std::string("[A]\n") + row.line + "\n"));
    EXPECT_EQ(ItemsOf(settings, "A"), row.items) << row.line;
    EXPECT_TRUE(settings.GetExtraInfo().empty()) << row.line;
  }
}

TEST(FileObjectRead, SemicolonIsACommentInColumn1OnlyAndSuchAKeyIsLostByTheNextReading) {
  FileObject settings;
  ReadFrom(settings, "[A]\n ; x = 1\n");
  EXPECT_EQ(TextOf(settings, "A", "; x"), "1");
  const std::string written = WrittenBy(settings);
  EXPECT_EQ(written, "[A]\r\n; x = 1\r\n\r\n");
  ReadFrom(settings, written);
  EXPECT_EQ(settings.GetNumItems("A"), 0);
}

TEST(FileObjectRead, ASectionThatOccursTwiceIsOne) {
  FileObject settings;
  ReadFrom(settings, "[A]\nx=1\ny=1\n[B]\nz=1\n[A]\ny=2\nw=3\n");
  EXPECT_EQ(PictureOf(settings), (Picture{{"A", {{"x", "1"}, {"y", "2"}, {"w", "3"}}}, {"B", {{"z", "1"}}}}));
}

TEST(FileObjectRead, NamesAreCaseSensitive) {
  FileObject settings;
  ReadFrom(settings, "[Units]\nk=1\nK=2\n[units]\nk=3\n");
  EXPECT_EQ(PictureOf(settings), (Picture{{"Units", {{"k", "1"}, {"K", "2"}}}, {"units", {{"k", "3"}}}}));
}

TEST(FileObjectRead, ATextWithoutASectionHasStatus2AndKeepsItsLines) {
  FileObject settings;
  EXPECT_FALSE(ReadFrom(settings, "k=1\n"));
  EXPECT_EQ(settings.GetErrorStatus(), 2);
  EXPECT_EQ(settings.GetExtraInfo(), Lines{"k=1"});
  EXPECT_FALSE(ReadFrom(settings, ""));
  EXPECT_EQ(settings.GetErrorStatus(), 2);
  EXPECT_TRUE(settings.GetExtraInfo().empty());
}

TEST(FileObjectRead, ReadingEmptiesTheObjectFirst) {
  FileObject settings;
  ReadFrom(settings, "x\n[A]\nk=1\n");
  settings.SetFileName("name");
  EXPECT_TRUE(ReadFrom(settings, "[B]\n"));
  EXPECT_EQ(PictureOf(settings), (Picture{{"B", {}}}));
  EXPECT_TRUE(settings.GetExtraInfo().empty());
  EXPECT_EQ(settings.GetFileName(), "name");
  EXPECT_EQ(settings.GetErrorStatus(), 0);
}

TEST(FileObjectRead, LineEnds) {
  const struct {
    std::string text;
    Lines extra;
  } rows[] = {
      {"a\nb", {"a", "b"}}, {"a\r\nb\r\n", {"a", "b"}},
      {"\n", {""}},         {"\n\n", {"", ""}},
      {"a\rb\n", {"a\rb"}}, {"a\r\r\n", {"a\r"}},
      {"a\r", {"a\r"}},     {"\r\n", {""}},
      {"\r", {"\r"}},       {std::string("a\0b\n", 4), {std::string("a\0b", 3)}},
  };
  for (const auto& row : rows) {
    FileObject settings;
    ReadFrom(settings, row.text);
    EXPECT_EQ(settings.GetExtraInfo(), row.extra) << testing::PrintToString(row.text);
  }
}

TEST(FileObjectRead, AByteOrderMarkIsText) {
  FileObject settings;
  EXPECT_FALSE(ReadFrom(settings, "\xEF\xBB\xBF[A]\nk=1\n"));
  EXPECT_EQ(settings.GetExtraInfo(), (Lines{"\xEF\xBB\xBF[A]", "k=1"}));
}

TEST(FileObjectRead, ZeroBytesAreTextInKeysAndValues) {
  FileObject settings;
  ReadFrom(settings, std::string("[A]\na\0b = c\0d\n", 14));
  EXPECT_EQ(ItemsOf(settings, "A"), (Items{{std::string("a\0b", 3), std::string("c\0d", 3)}}));
}

TEST(FileObjectReadLong, ALineOfManyBlocksAndAMillionKeysAreRead) {
  const std::string longValue(100000, 'x');
  std::string text = "[A]\nlong = " + longValue + "\n";
  for (int i = 0; i < 1000000; ++i) text += std::to_string(i % 500000) + "=" + std::to_string(i) + "\n";
  FileObject settings;
  ReadFrom(settings, text);
  EXPECT_EQ(TextOf(settings, "A", "long"), longValue);
  EXPECT_EQ(settings.GetNumItems("A"), 500001);
  EXPECT_EQ(TextOf(settings, "A", "499999"), "999999");
  EXPECT_EQ(TextOf(settings, "A", "0"), "500000");
}

// Texts put together from the pieces that matter; the second reader must agree on every one.
TEST(FileObjectRead, AgreesWithASecondReaderOnRandomTexts) {
  static const std::string pieces[] = {"[",
                                       "]",
                                       "=",
                                       ";",
                                       "/",
                                       "//",
                                       " ",
                                       "\t",
                                       "\r",
                                       "\n",
                                       "\n",
                                       "\r\n",
                                       "\n[A]\n",
                                       "\n[B] x\n",
                                       "a",
                                       "b",
                                       "k = v",
                                       "\nk=",
                                       std::string(1, '\0'),
                                       "\xEF\xBB\xBF",
                                       "\v",
                                       "Checksum"};
  int heads = 0;
  for (unsigned int seed = 1; seed <= 3000; ++seed) {
    std::mt19937 random(seed);
    std::string text;
    for (auto i = random() % 60; i != 0; --i) text += pieces[random() % std::size(pieces)];
    const SecondSettingsReader expected(text);
    FileObject settings;
    EXPECT_EQ(ReadFrom(settings, text), expected.headSeen) << seed;
    ASSERT_EQ(PictureOf(settings), expected.sections) << seed;
    ASSERT_EQ(settings.GetExtraInfo(), expected.extra) << seed;
    heads += expected.headSeen;
  }
  EXPECT_GT(heads, 1000);
}

}  // namespace
