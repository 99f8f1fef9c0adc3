#include "zelbase/errors/detail/ErrorTexts.h"

#include <gtest/gtest.h>

#include "tests/errors/FixedWording.h"

namespace {

using zelbase::detail::NameAfterFolders;
using zelbase::detail::TextOf;

TEST(ErrorTexts, WordingComesFirst) {
  const WordingGuard wording({{{"s", "k"}, "worded"}});
  const NumberedTextsGuard language({{12039, "unbekannt"}});
  EXPECT_EQ(TextOf("s", "k", 12039), "worded");
  EXPECT_EQ(TextOf("s", "k", "literal"), "worded");
  EXPECT_EQ(TextOf("s", "other", 12039), "unbekannt");
  EXPECT_EQ(TextOf("s", "other", 12034), "Unspecified Error");
  EXPECT_EQ(TextOf("s", "other", "literal"), "literal");
}

TEST(ErrorTexts, EmptyWordingIsFound) {
  const WordingGuard wording({{{"s", "k"}, ""}});
  EXPECT_EQ(TextOf("s", "k", 12039), "");
  EXPECT_EQ(TextOf("s", "k", "literal"), "");
}

TEST(ErrorTexts, NameAfterFoldersKnowsTheBackslashOnly) {
  EXPECT_EQ(NameAfterFolders("C:\\a\\b.txt"), "b.txt");
  EXPECT_EQ(NameAfterFolders("a/b.txt"), "a/b.txt");
  EXPECT_EQ(NameAfterFolders("a\\"), "");
  EXPECT_EQ(NameAfterFolders(""), "");
}

}  // namespace
