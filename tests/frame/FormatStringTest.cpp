#include "zelbase/frame/FormatString.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "zelbase/frame/CZelString.h"

namespace {

using Items = std::vector<std::string>;

Items ItemsOf(const FormatString& list) {
  Items items;
  for (int i = 0; i < list.Size(); ++i) items.push_back(list[i]);
  return items;
}

Items Split(const std::string& text, char separator = ',') { return ItemsOf(FormatString(text, separator)); }

TEST(FormatString, ANewOneHasNoItems) {
  FormatString list(';');
  EXPECT_EQ(list.Size(), 0);
  EXPECT_TRUE(list.IsEmpty());
  EXPECT_EQ(list.String(), "");
  list += "a";
  list += "b";
  EXPECT_EQ(list.String(), "a;b");
  EXPECT_FALSE(list.IsEmpty());
}

TEST(FormatString, SplitsAtEverySeparator) {
  EXPECT_EQ(Split("a,b,,c,"), (Items{"a", "b", "", "c"}));
  EXPECT_EQ(Split("a,b"), (Items{"a", "b"}));
  EXPECT_EQ(Split("a"), (Items{"a"}));
  EXPECT_EQ(Split(",a"), (Items{"", "a"}));
  EXPECT_EQ(Split("a;b,c", ';'), (Items{"a", "b,c"}));
}

TEST(FormatString, AnEmptyTextIsAnEmptyList) {
  const FormatString list("", ',');
  EXPECT_EQ(list.Size(), 0);
  EXPECT_TRUE(list.IsEmpty());
  EXPECT_EQ(list.String(), "");
}

TEST(FormatString, DropsOneEmptyLastPieceOnly) {
  EXPECT_EQ(Split("a,"), (Items{"a"}));
  EXPECT_EQ(Split("a,,"), (Items{"a", ""}));
  EXPECT_EQ(Split("a,,,"), (Items{"a", "", ""}));
  EXPECT_EQ(Split(","), (Items{""}));
  EXPECT_EQ(Split(",,"), (Items{"", ""}));
}

TEST(FormatString, NeitherTrimsNorJoinsBlanks) {
  EXPECT_EQ(Split(" a , b "), (Items{" a ", " b "}));
  EXPECT_EQ(Split("a  b ", ' '), (Items{"a", "", "b"}));
  EXPECT_EQ(Split("  ", ' '), (Items{"", ""}));
  EXPECT_EQ(Split(" a", ' '), (Items{"", "a"}));
  EXPECT_EQ(Split(" ", ','), (Items{" "}));
}

TEST(FormatString, AnyByteMaySeparate) {
  EXPECT_EQ(Split(std::string("a\0b\0", 4), '\0'), (Items{"a", "b"}));
  EXPECT_EQ(Split("a\xFF"
                  "b",
                  '\xFF'),
            (Items{"a", "b"}));
  EXPECT_EQ(Split(std::string("a\0,b", 4)), (Items{std::string("a\0", 2), "b"}));
}

// The other list keeps every piece: the same but for one empty last element.
TEST(FormatString, SplitsAsCZelStringButForTheEmptyEnd) {
  std::mt19937 random(5);
  for (int i = 0; i < 20'000; ++i) {
    std::string text;
    for (auto length = random() % 10; length > 0; --length) text += " ,ab"[random() % 4];
    const CZelString other(text, ',', false);
    Items expected;
    for (int at = 0; at < other.Size(); ++at) expected.push_back(other[at]);
    if (expected.back().empty()) expected.pop_back();
    ASSERT_EQ(Split(text), expected) << text;
  }
}

TEST(FormatString, StringJoinsWithoutASeparatorAtTheEnds) {
  EXPECT_EQ(FormatString("a,b,,c,", ',').String(), "a,b,,c");
  EXPECT_EQ(FormatString(",", ',').String(), "");
  EXPECT_EQ(FormatString(",,", ',').String(), ",");
}

TEST(FormatString, LeftEndsInTheSeparator) {
  const FormatString list("a,b,c", ',');
  EXPECT_EQ(list.Left(1), "a,");
  EXPECT_EQ(list.Left(2), "a,b,");
  EXPECT_EQ(list.Left(3), "a,b,c,");
  EXPECT_EQ(list.Left(0), "");
  EXPECT_EQ(list.Left(-1), "");
  EXPECT_EQ(list.Left(INT_MIN), "");
}

TEST(FormatString, RightEndsInTheSeparator) {
  const FormatString list("a,b,c", ',');
  EXPECT_EQ(list.Right(1), "c,");
  EXPECT_EQ(list.Right(2), "b,c,");
  EXPECT_EQ(list.Right(0), "");
  EXPECT_EQ(list.Right(-1), "");
  EXPECT_EQ(list.Right(INT_MIN), "");
}

TEST(FormatString, TooLargeACountGivesAllItems) {
  const FormatString list("a,b", ',');
  for (const int count : {2, 3, INT_MAX}) {
    EXPECT_EQ(list.Left(count), "a,b,") << count;
    EXPECT_EQ(list.Right(count), "a,b,") << count;
  }
  EXPECT_EQ(FormatString(',').Left(5), "");
  EXPECT_EQ(FormatString(',').Right(5), "");
}

TEST(FormatString, HasSubStringLooksForWholeItemsWithoutCase) {
  const FormatString list("abc,Easting,,\xE4", ',');
  EXPECT_TRUE(list.HasSubString("ABC"));
  EXPECT_TRUE(list.HasSubString("eASTING"));
  EXPECT_TRUE(list.HasSubString(""));
  EXPECT_FALSE(list.HasSubString("ab"));
  EXPECT_FALSE(list.HasSubString("abc,Easting"));
  EXPECT_FALSE(list.HasSubString(" abc"));
  EXPECT_FALSE(list.HasSubString("\xC4"));  // only A to Z have a case
  EXPECT_FALSE(FormatString(',').HasSubString(""));
}

TEST(FormatString, InsertPutsAnItemInFront) {
  FormatString list("a,b", ',');
  list.Insert(0, "0");
  list.Insert(2, "x,y");
  list.Insert(4, "end");
  EXPECT_EQ(ItemsOf(list), (Items{"0", "a", "x,y", "b", "end"}));
  list.Insert(1, list[3]);  // an item of its own
  EXPECT_EQ(ItemsOf(list), (Items{"0", "b", "a", "x,y", "b", "end"}));
}

TEST(FormatString, InsertOutOfRangeDoesNothing) {
  FormatString list("a,b", ',');
  for (const int index : {-1, 3, INT_MIN, INT_MAX}) list.Insert(index, "x");
  EXPECT_EQ(ItemsOf(list), (Items{"a", "b"}));
}

TEST(FormatString, EraseTakesTheIndexBehindTheLast) {
  FormatString list("a,b,c,d", ',');
  list.Erase(1, 3);
  EXPECT_EQ(ItemsOf(list), (Items{"a", "d"}));
  list.Erase(1, 2);
  EXPECT_EQ(ItemsOf(list), (Items{"a"}));
}

TEST(FormatString, EraseOutOfRangeIsCutOrDoesNothing) {
  FormatString list("a,b,c", ',');
  for (const int first : {-1, 3, INT_MIN, INT_MAX}) list.Erase(first, INT_MAX);
  for (const int last : {1, 0, -1, INT_MIN}) list.Erase(1, last);
  EXPECT_EQ(ItemsOf(list), (Items{"a", "b", "c"}));
  list.Erase(1, INT_MAX);
  EXPECT_EQ(ItemsOf(list), (Items{"a"}));
  FormatString none(',');
  none.Erase(0, 1);
  EXPECT_TRUE(none.IsEmpty());
}

TEST(FormatString, ItemsAreWrittenThroughTheIndex) {
  FormatString list("a,b", ',');
  list[1] = "x,y";
  EXPECT_EQ(list.String(), "a,x,y");
  EXPECT_EQ(list.Size(), 2);
}

TEST(FormatString, AnIndexOutOfRangeGivesAnEmptyTextOfNoList) {
  FormatString list("a,b", ',');
  for (const int index : {-1, 2, INT_MIN, INT_MAX}) {
    list[index] = "lost";
    EXPECT_EQ(list[index], "") << index;
    EXPECT_EQ(static_cast<const FormatString&>(list)[index], "") << index;
  }
  EXPECT_EQ(list.String(), "a,b");
}

TEST(FormatString, PlusGivesACopyAndPlusEqualsThisOne) {
  FormatString list("a", ';');
  const FormatString longer = list + "b;c" + "d";
  EXPECT_EQ(ItemsOf(longer), (Items{"a", "b;c", "d"}));
  EXPECT_EQ(longer.String(), "a;b;c;d");
  EXPECT_EQ(ItemsOf(list), (Items{"a"}));
  EXPECT_EQ(&(list += "z"), &list);
  list += "y";
  list += list[0];  // an item of its own
  EXPECT_EQ(list.String(), "a;z;y;a");
}

TEST(FormatString, CopiesAreIndependent) {
  FormatString list("a,b", ',');
  FormatString copy = list;
  copy[0] = "changed";
  EXPECT_EQ(list.String(), "a,b");
  FormatString other(';');
  other = list;
  other += "c";
  EXPECT_EQ(other.String(), "a,b,c");
  EXPECT_EQ(list.String(), "a,b");
  const FormatString& self = list;
  list = self;
  EXPECT_EQ(list.String(), "a,b");
}

}  // namespace
