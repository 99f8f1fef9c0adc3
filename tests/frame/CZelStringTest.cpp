#include "zelbase/frame/CZelString.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace {

using Items = std::vector<std::string>;

Items ItemsOf(const CZelString& list) {
  Items items;
  for (int i = 0; i < list.Size(); ++i) items.push_back(list[i]);
  return items;
}

Items Split(const std::string& text, char separator, bool trim) { return ItemsOf(CZelString(text, separator, trim)); }

// The splitting told step by step, blanks collapsed pair by pair: a second transcription for short texts.
Items SplitStepByStep(std::string text, char separator) {
  if (separator == ' ') {
    while (!text.empty() && text.front() == ' ') text.erase(0, 1);
    while (!text.empty() && text.back() == ' ') text.pop_back();
    for (auto at = text.find("  "); at != std::string::npos; at = text.find("  ")) text.replace(at, 2, " ");
  }
  Items items;
  std::size_t from = 0;
  while (from < text.size()) {
    const auto at = text.find(separator, from);
    if (at == std::string::npos) break;
    items.push_back(text.substr(from, at - from));
    from = at + 1;
  }
  items.push_back(text.substr(from));
  return items;
}

TEST(CZelString, ANewOneHasNoElements) {
  CZelString list;
  EXPECT_EQ(list.Size(), 0);
  EXPECT_TRUE(list.IsEmpty());
  EXPECT_EQ(list.CountSeparators(), -1);
  EXPECT_EQ(list.String(), "");
  EXPECT_EQ(list.GetString(), "");
  list.AddItem("a");
  list.AddItem("b");
  EXPECT_EQ(list.String(), "a,b");

  CZelString other(';');
  other.AddItem(" a ");
  other.AddItem("b");
  EXPECT_EQ(other.String(), " a ;b");
}

TEST(CZelString, SetSeparatorOnANewOneSplitsTheEmptyText) {
  CZelString list;
  list.SetSeparator(';');
  EXPECT_EQ(ItemsOf(list), Items{""});
}

TEST(CZelString, SplitsAtEachSeparator) {
  const CZelString list("1, 2 , 3", ',', true);
  EXPECT_EQ(ItemsOf(list), (Items{"1", "2", "3"}));
  EXPECT_EQ(list.Size(), 3);
  EXPECT_EQ(list.CountSeparators(), 2);
  EXPECT_EQ(Split("1, 2 , 3", ',', false), (Items{"1", " 2 ", " 3"}));
  EXPECT_EQ(Split(",,a", ',', false), (Items{"", "", "a"}));
  EXPECT_EQ(Split(" \t\r\n", ',', true), Items{""});
}

TEST(CZelString, TheEmptyTextHasOneEmptyElement) {
  const CZelString list("", ',', false);
  EXPECT_EQ(ItemsOf(list), Items{""});
  EXPECT_FALSE(list.IsEmpty());
  EXPECT_EQ(list.CountSeparators(), 0);
  EXPECT_EQ(list.String(), "");
}

TEST(CZelString, ASeparatorAtTheEndIsFollowedByAnEmptyElement) {
  EXPECT_EQ(Split("a,", ',', false), (Items{"a", ""}));
  EXPECT_EQ(Split(",", ',', false), (Items{"", ""}));
}

TEST(CZelString, ARunOfBlanksIsOneSeparator) {
  EXPECT_EQ(Split("a  b   c", ' ', false), (Items{"a", "b", "c"}));
  EXPECT_EQ(Split("   a b  ", ' ', false), (Items{"a", "b"}));
  EXPECT_EQ(Split("    ", ' ', false), Items{""});
  EXPECT_EQ(Split("a \t b", ' ', false), (Items{"a", "\t", "b"}));
  EXPECT_EQ(Split("a \t b", ' ', true), (Items{"a", "", "b"}));
  // Of other separators each one counts.
  EXPECT_EQ(Split("a\t\tb", '\t', false), (Items{"a", "", "b"}));
}

TEST(CZelString, AnySeparatorAndAnyByteMaySplit) {
  EXPECT_EQ(Split(std::string("a\0b\0", 4), '\0', false), (Items{"a", "b", ""}));
  EXPECT_EQ(Split("a\xB0"
                  "b",
                  '\xB0', false),
            (Items{"a", "b"}));
  EXPECT_EQ(Split(std::string("a\0x,b", 5), ',', false), (Items{std::string("a\0x", 3), "b"}));
}

TEST(CZelString, SplittingEqualsASecondTranscription) {
  std::mt19937 random(3);
  for (int i = 0; i < 20'000; ++i) {
    std::string text;
    for (auto length = random() % 12; length > 0; --length) text += " ,ab"[random() % 4];
    for (const char separator : {' ', ','}) EXPECT_EQ(Split(text, separator, false), SplitStepByStep(text, separator)) << text;
  }
}

TEST(CZelString, LongRunsOfBlanksAreOnePass) {
  const std::string run(8'000'000, ' ');
  EXPECT_EQ(Split(run + "a" + run + "b" + run, ' ', false), (Items{"a", "b"}));
}

TEST(CZelString, LoadStringTakesLiteralsAndArraysAndNull) {
  CZelString list;
  list.LoadString("a, b", true);
  EXPECT_EQ(ItemsOf(list), (Items{"a", "b"}));
  char array[] = "c,d";
  list.LoadString(array, false);
  EXPECT_EQ(ItemsOf(list), (Items{"c", "d"}));
  list.LoadString(std::string("e"), false);
  EXPECT_EQ(ItemsOf(list), Items{"e"});
  list.LoadString(nullptr, false);
  EXPECT_EQ(ItemsOf(list), Items{""});
  EXPECT_EQ(list.GetString(), "");
}

TEST(CZelString, LoadStringTakesAnElementOfItsOwn) {
  CZelString list("a b,c", ',', false);
  list.LoadString(list[0], false);
  EXPECT_EQ(ItemsOf(list), Items{"a b"});
}

TEST(CZelString, SetSeparatorThrowsChangesToTheElementsAway) {
  CZelString list("a;b,c", ',', false);
  list.AddItem("lost");
  list.SetItem(0, "lost");
  list.SetSeparator(';');
  EXPECT_EQ(ItemsOf(list), (Items{"a", "b,c"}));
}

TEST(CZelString, TheTrimFlagStaysForLaterSplits) {
  CZelString list("a ; b", ',', true);
  list.SetSeparator(';');
  EXPECT_EQ(ItemsOf(list), (Items{"a", "b"}));
  list.LoadString("a ; b", false);
  list.SetSeparator(';');
  EXPECT_EQ(ItemsOf(list), (Items{"a ", " b"}));
}

TEST(CZelString, GetStringIsTheTextLastLoadedAndStringTheElements) {
  CZelString list("a, b", ',', true);
  list.AddItem("c");
  EXPECT_EQ(list.GetString(), "a, b");
  EXPECT_EQ(list.String(), "a,b,c");
}

TEST(CZelString, GetItemReadsEachType) {
  const CZelString list("text|-12x| 1.5e2|70000|-1|0|", '|', false);
  std::string text;
  EXPECT_TRUE(list.GetItem(0, text));
  EXPECT_EQ(text, "text");
  EXPECT_TRUE(list.GetItem(6, text));
  EXPECT_EQ(text, "");
  int whole = 0;
  EXPECT_TRUE(list.GetItem(1, whole));
  EXPECT_EQ(whole, -12);
  EXPECT_TRUE(list.GetItem(2, whole));
  EXPECT_EQ(whole, 1);
  double real = 0;
  EXPECT_TRUE(list.GetItem(2, real));
  EXPECT_EQ(real, 150.0);
  float single = 0;
  EXPECT_TRUE(list.GetItem(2, single));
  EXPECT_EQ(single, 150.0f);
  unsigned short small = 0;
  EXPECT_TRUE(list.GetItem(3, small));
  EXPECT_EQ(small, 70000 - 65536);
  unsigned int natural = 0;
  EXPECT_TRUE(list.GetItem(4, natural));
  EXPECT_EQ(natural, UINT_MAX);
  bool flag = false;
  EXPECT_TRUE(list.GetItem(4, flag));
  EXPECT_TRUE(flag);
  EXPECT_TRUE(list.GetItem(5, flag));
  EXPECT_FALSE(flag);
}

template <class Number>
void ExpectNothingRead(const CZelString& list, Number before) {
  for (const int index : {-1, INT_MIN, 0, 1, 2, 3, INT_MAX}) {
    Number value = before;
    EXPECT_FALSE(list.GetItem(index, value)) << index;
    EXPECT_EQ(value, before) << index;
  }
}

TEST(CZelString, GetItemThatFailsLeavesTheValue) {
  const CZelString list("x,,true", ',', false);  // index 3 is behind the end
  ExpectNothingRead(list, 7);
  ExpectNothingRead(list, true);
  ExpectNothingRead(list, 7u);
  ExpectNothingRead(list, static_cast<unsigned short>(7));
  ExpectNothingRead(list, 7.5);
  ExpectNothingRead(list, 7.5f);
  std::string text = "before";
  EXPECT_FALSE(list.GetItem(3, text));
  EXPECT_FALSE(list.GetItem(-1, text));
  EXPECT_EQ(text, "before");
}

TEST(CZelString, GetItemKnowsNoHexadecimal) {
  const CZelString list("0x1F", ',', false);
  int value = 7;
  EXPECT_TRUE(list.GetItem(0, value));
  EXPECT_EQ(value, 0);
  bool flag = true;
  EXPECT_TRUE(list.GetItem(0, flag));
  EXPECT_FALSE(flag);
}

TEST(CZelString, AnIndexOutOfRangeRefersToAnEmptyText) {
  CZelString list("a", ',', false);
  list[1] = "lost";
  EXPECT_EQ(list[-1], "");
  const CZelString& fixed = list;
  EXPECT_EQ(fixed[INT_MAX], "");
  EXPECT_EQ(ItemsOf(list), Items{"a"});
  list[0] = "b";
  EXPECT_EQ(fixed[0], "b");
}

TEST(CZelString, SetItemGrowsTheList) {
  CZelString list("a", ',', false);
  EXPECT_TRUE(list.SetItem(3, "x"));
  EXPECT_EQ(ItemsOf(list), (Items{"a", "", "", "x"}));
  EXPECT_TRUE(list.SetItem(0, "b"));
  EXPECT_EQ(list.String(), "b,,,x");
  EXPECT_FALSE(list.SetItem(-1, "y"));
  EXPECT_FALSE(list.SetItem(CZelString::kLastIndex + 1, "y"));
  EXPECT_FALSE(list.SetItem(INT_MAX, "y"));
  EXPECT_EQ(list.Size(), 4);
}

TEST(CZelString, AnElementMayBePutIntoItsOwnList) {
  CZelString list("a long enough text to live on the heap,b", ',', false);
  const std::string text = list[0];
  EXPECT_TRUE(list.SetItem(500, list[0]));
  EXPECT_EQ(list[500], text);
  for (int i = 0; i < 600; ++i) list.AddItem(list[0]);
  EXPECT_EQ(list[1100], text);
  list.Insert(0, list[500]);
  EXPECT_EQ(list[0], text);
  list += list[0];
  EXPECT_EQ(list[list.Size() - 1], text);
}

TEST(CZelString, SetIsSetItemWithoutAnAnswer) {
  CZelString list("a", ',', false);
  list.Set(1, "b");
  list.Set(0, nullptr);
  list.Set(-1, "c");
  EXPECT_EQ(ItemsOf(list), (Items{"", "b"}));
}

TEST(CZelString, InsertPutsAnElementInBefore) {
  CZelString list("a,b", ',', false);
  list.Insert(1, "x");
  list.Insert(0, "y");
  list.Insert(4, "z");
  EXPECT_EQ(list.String(), "y,a,x,b,z");
  list.Insert(6, "lost");
  list.Insert(-1, "lost");
  EXPECT_EQ(list.String(), "y,a,x,b,z");
}

TEST(CZelString, EraseTakesAFirstAndACount) {
  CZelString list("a,b,c,d,e", ',', false);
  list.Erase(1, 2);
  EXPECT_EQ(list.String(), "a,d,e");
  list.Erase(3, 1);
  list.Erase(-1, 1);
  list.Erase(0, 0);
  list.Erase(0, INT_MIN);
  EXPECT_EQ(list.String(), "a,d,e");
  list.Erase(1, INT_MAX);
  EXPECT_EQ(list.String(), "a");
  list.Erase(0, 1);
  EXPECT_TRUE(list.IsEmpty());
  list.Erase(0, 1);
  EXPECT_TRUE(list.IsEmpty());
}

TEST(CZelString, ClearForgetsTheTextToo) {
  CZelString list("a;b", ';', true);
  list.Clear();
  EXPECT_TRUE(list.IsEmpty());
  EXPECT_EQ(list.GetString(), "");
  list.LoadString("c;d", true);
  EXPECT_EQ(ItemsOf(list), (Items{"c", "d"}));  // the separator stayed
}

TEST(CZelString, PlusAddsOneElementUnsplit) {
  CZelString list("a", ',', false);
  const CZelString sum = list + "b,c";
  EXPECT_EQ(ItemsOf(sum), (Items{"a", "b,c"}));
  EXPECT_EQ(ItemsOf(list), Items{"a"});
  (list += "d") += std::string("e");
  EXPECT_EQ(list.String(), "a,d,e");
}

TEST(CZelString, CopiesAreIndependent) {
  CZelString list("a;b", ';', true);
  CZelString copy = list;
  copy.SetItem(0, "x");
  EXPECT_EQ(list.String(), "a;b");
  CZelString assigned;
  assigned = copy;
  EXPECT_EQ(assigned.String(), "x;b");
  EXPECT_EQ(assigned.GetString(), "a;b");
  assigned.LoadString("c ; d", true);
  EXPECT_EQ(assigned.String(), "c;d");
}

TEST(CZelString, LeftAndRightEndInASeparator) {
  const CZelString list("a,b,c", ',', false);
  EXPECT_EQ(list.Left(2), "a,b,");
  EXPECT_EQ(list.Right(2), "b,c,");
  EXPECT_EQ(list.Left(0), "");
  EXPECT_EQ(list.Right(0), "");
  EXPECT_EQ(list.Left(-1), "");
  EXPECT_EQ(list.Right(INT_MIN), "");
  EXPECT_EQ(list.Left(9), "a,b,c,");
  EXPECT_EQ(list.Right(INT_MAX), "a,b,c,");
}

TEST(CZelString, HasSubStringFindsWholeElementsOnly) {
  EXPECT_TRUE(CZelString("abc,d", ',', false).HasSubString("ABC"));
  EXPECT_FALSE(CZelString("abcd", ',', false).HasSubString("ABC"));
  EXPECT_FALSE(CZelString("abc", ',', false).HasSubString(" abc"));
  EXPECT_TRUE(CZelString("a,,b", ',', false).HasSubString(""));
  EXPECT_FALSE(CZelString().HasSubString(""));
  EXPECT_FALSE(CZelString("\xE4", ',', false).HasSubString("\xC4"));
}

TEST(CZelString, HasSubStringGivesTheFirstIndexOrLeavesIt) {
  const CZelString list("x,Abc,aBC", ',', false);
  int index = 7;
  EXPECT_TRUE(list.HasSubString("abc", index));
  EXPECT_EQ(index, 1);
  index = 7;
  EXPECT_FALSE(list.HasSubString("none", index));
  EXPECT_EQ(index, 7);
}

TEST(CZelString, GetItemBoundariesArePlacesInTheElementsJoined) {
  CZelString list("ab,cde", ',', false);
  int first = 7;
  int last = 7;
  EXPECT_TRUE(list.GetItemBoundaries(1, first, last));
  EXPECT_EQ(first, 3);
  EXPECT_EQ(last, 5);
  EXPECT_FALSE(list.GetItemBoundaries(2, first, last));
  EXPECT_FALSE(list.GetItemBoundaries(-1, first, last));
  EXPECT_EQ(first, 3);
  EXPECT_EQ(last, 5);

  // Not in the text loaded: that one has blanks.
  list.LoadString(" ab , cde", true);
  EXPECT_TRUE(list.GetItemBoundaries(1, first, last));
  EXPECT_EQ(list.String().substr(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first + 1)), "cde");
}

TEST(CZelString, GetItemBoundariesOfAnEmptyElementEndAtMinusOne) {
  const CZelString list("ab,,c", ',', false);
  int first = 7;
  int last = 7;
  EXPECT_TRUE(list.GetItemBoundaries(1, first, last));
  EXPECT_EQ(first, 3);
  EXPECT_EQ(last, -1);
}

TEST(CZelString, GetElementNumberLooksAtTheTextLoaded) {
  CZelString list("a,bb,c", ',', false);
  EXPECT_EQ(list.GetElementNumber("a", 0), 0);
  EXPECT_EQ(list.GetElementNumber("bb", 0), 1);
  EXPECT_EQ(list.GetElementNumber("c", 0), 2);
  EXPECT_EQ(list.GetElementNumber("bb,c", 0), 1);
  EXPECT_EQ(list.GetElementNumber("b", 0), -1);
  EXPECT_EQ(list.GetElementNumber("BB", 0), -1);
  list.SetItem(0, "x");
  EXPECT_EQ(list.GetElementNumber("x", 0), -1);
  EXPECT_EQ(list.GetElementNumber("a", 0), 0);
}

TEST(CZelString, GetElementNumberDoesNotTrim) {
  CZelString list("a, b", ',', true);
  EXPECT_EQ(list[1], "b");
  EXPECT_EQ(list.GetElementNumber("b", 0), -1);
  EXPECT_EQ(list.GetElementNumber(" b", 0), 1);
}

TEST(CZelString, GetElementNumberCountsEveryBlank) {
  CZelString list("a  b c", ' ', false);
  EXPECT_EQ(list.GetElementNumber("b", 0), 2);
  EXPECT_EQ(list.GetElementNumber("", 0), 0 + 1);  // between the two blanks
}

TEST(CZelString, GetElementNumberTakesASeparatorThroughANewSplit) {
  CZelString list("a;b", ',', false);
  list.AddItem("lost");
  EXPECT_EQ(list.GetElementNumber("b", ';'), 1);
  EXPECT_EQ(ItemsOf(list), (Items{"a", "b"}));
}

TEST(CZelString, GetElementNumberOfNullTouchesNothing) {
  CZelString list("a;b", ',', false);
  list.AddItem("kept");
  EXPECT_EQ(list.GetElementNumber(nullptr, ';'), -1);
  EXPECT_EQ(list.String(), "a;b,kept");
}

TEST(CZelString, GetElementNumberEndsAtTheFirstZeroByte) {
  CZelString list(std::string("a,b\0,c", 6), ',', false);
  EXPECT_EQ(list.GetElementNumber("b", 0), 1);
  EXPECT_EQ(list.GetElementNumber("c", 0), -1);
}

TEST(CZelString, GetElementNumberEqualsAPlainSearch) {
  std::mt19937 random(5);
  for (int i = 0; i < 20'000; ++i) {
    std::string text;
    std::string part;
    for (auto length = random() % 14; length > 0; --length) text += ",ab"[random() % 3];
    for (auto length = random() % 4; length > 0; --length) part += ",ab"[random() % 3];
    const auto place = ("," + text + ",").find("," + part + ",");
    int expected = -1;
    if (place != std::string::npos) {
      expected = 0;
      for (const char c : ("," + text + ",").substr(0, place)) expected += c == ',';
    }
    EXPECT_EQ(CZelString(text, ',', false).GetElementNumber(part.c_str(), 0), expected) << text << " | " << part;
  }
}

TEST(CZelString, GetElementNumberOfALongNearMissEnds) {
  std::string text;
  for (int i = 0; i < 500'000; ++i) text += "a,";
  CZelString list(text, ',', false);
  EXPECT_EQ(list.GetElementNumber(("b," + text.substr(0, 500'000)).c_str(), 0), -1);
  EXPECT_EQ(list.GetElementNumber((text.substr(0, 500'000) + "b").c_str(), 0), -1);
}

}  // namespace
