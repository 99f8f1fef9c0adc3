#include "zelbase/files/FixedPacker.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int kMax = std::numeric_limits<int>::max();
constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kLongestLine = 16 * 1024 * 1024;

std::string AfterItem(const std::string& line, int position, int width, const std::string& text) {
  FixedPacker packer;
  packer.LoadString(line);
  EXPECT_TRUE(packer.SetItem(position, width, text));
  return packer.GetString();
}

std::string AfterLabel(const std::string& line, int position, int width, const std::string& label, const std::string& value) {
  FixedPacker packer;
  packer.LoadString(line);
  EXPECT_TRUE(packer.SetLabeledItem(position, width, label, value));
  return packer.GetString();
}

TEST(FixedPacker, BeginsEmptyAndTakesAText) {
  FixedPacker packer;
  EXPECT_EQ(packer.GetString(), "");
  packer.LoadString("12345");
  EXPECT_EQ(packer.GetString(), "12345");
  packer.LoadString(packer.GetString());
  EXPECT_EQ(packer.GetString(), "12345");
}

TEST(FixedPacker, CopiesAreIndependent) {
  FixedPacker packer;
  packer.LoadString("12345");
  FixedPacker copy(packer);
  FixedPacker assigned;
  assigned = packer;
  packer.SetItem(0, 1, "x");
  EXPECT_EQ(packer.GetString(), "x2345");
  EXPECT_EQ(copy.GetString(), "12345");
  EXPECT_EQ(assigned.GetString(), "12345");
}

struct ItemRow {
  const char* description;
  const char* line;
  int position;
  int width;
  const char* text;
  const char* after;
};

TEST(FixedPacker, ItemsByHand) {
  const std::vector<ItemRow> rows = {
      {"blanks up to the field", "", 3, 2, "ab", "   ab"},
      {"over what stands there", "12345", 0, 3, "xy", "xy345"},
      {"at the end of the line", "123", 3, 2, "ab", "123ab"},
      {"a long text is cut to the field", "", 0, 3, "abcdef", "abc"},
      {"a long text is cut to a field within the line", "123456", 1, 2, "abcdef", "1ab456"},
      {"a field over the end cuts what stood there", "12345", 2, 4, "ab", "12ab"},
      {"a field of no width behind the line adds blanks", "12", 4, 0, "ab", "12  "},
      {"a field of no width within the line", "12345", 2, 0, "ab", "12345"},
      {"a field of no width at the end", "12345", 5, 0, "ab", "12345"},
      {"an empty text over the end cuts", "12345", 2, 4, "", "12"},
      {"an empty text behind the line adds blanks", "12", 4, 3, "", "12  "},
      {"bytes from 128 up are characters", "", 1, 2, "\xB0\xFF", " \xB0\xFF"},
  };
  for (const ItemRow& row : rows) {
    EXPECT_EQ(AfterItem(row.line, row.position, row.width, row.text), row.after) << row.description;
  }
}

TEST(FixedPacker, AFieldBeyondTheLineCutsOffAllBehindAndAnyOtherIsWrittenOver) {
  EXPECT_EQ(AfterItem("12345678", 5, 4, "x"), "12345x");
  EXPECT_EQ(AfterItem("12345678", 5, 2, "x"), "12345x78");
}

TEST(FixedPacker, AShortTextIsNotFilledUp) {
  EXPECT_EQ(AfterItem("", 0, 5, "x"), "x");
  EXPECT_EQ(AfterItem("12345", 0, 5, "x"), "x2345");
}

TEST(FixedPacker, AFieldThatEndsExactlyAtTheEndIsWrittenOverAndNotCut) {
  EXPECT_EQ(AfterItem("12345", 2, 3, "x"), "12x45");
  EXPECT_EQ(AfterItem("12345", 2, 4, "x"), "12x");
}

TEST(FixedPacker, TheLineItselfMayBeTheText) {
  FixedPacker packer;
  packer.LoadString("abc");
  packer.SetItem(2, 10, packer.GetString());
  EXPECT_EQ(packer.GetString(), "ababc");
  packer.SetItem(1, 4, packer.GetString());
  EXPECT_EQ(packer.GetString(), "aabab");
}

struct LabelRow {
  const char* description;
  const char* line;
  int position;
  int width;
  const char* label;
  const char* value;
  const char* after;
};

TEST(FixedPacker, LabeledItemsByHand) {
  const std::vector<LabelRow> rows = {
      {"label left, value right", "", 0, 8, "T=", " 12 ", "T=    12"},
      {"blanks before the field", "", 2, 4, "T", "1", "  T  1"},
      {"behind what stands before", "ab", 3, 4, "T", "1", "ab T  1"},
      {"a field within the line leaves what is behind", "12345678", 1, 4, "T", "1", "1T  1678"},
      {"a value meets the label", "", 0, 4, "abc", "12", "ab12"},
      {"a value covers the label", "", 0, 2, "ab", "12", "12"},
      {"a label longer than the field is cut", "123456", 1, 2, "abcdef", "", "1ab456"},
      {"white space of every kind goes", "", 0, 4, "", "\t\n\v\f\r 1 2 \r", " 1 2"},
      {"white space alone is no value", "", 0, 4, "ab", " \t ", "ab  "},
      {"no width: the value ends before the field", "12345", 3, 0, "ab", "xy", "1xy45"},
      {"no width at column 0 shows nothing", "12345", 0, 0, "ab", "xy", "12345"},
  };
  for (const LabelRow& row : rows) {
    EXPECT_EQ(AfterLabel(row.line, row.position, row.width, row.label, row.value), row.after) << row.description;
  }
}

TEST(FixedPacker, TheLabelClearsTheField) {
  EXPECT_EQ(AfterLabel("12345678", 2, 4, "", ""), "12    78");
  EXPECT_EQ(AfterLabel("12345678", 2, 4, "a", "b"), "12a  b78");
}

TEST(FixedPacker, ALongValueReachesOutBeforeTheField) {
  EXPECT_EQ(AfterLabel("12345678", 4, 2, "", "abcd"), "12abcd78");
  EXPECT_EQ(AfterLabel("12345678", 4, 2, "", "abcdef"), "abcdef78");
}

TEST(FixedPacker, OfAValueThatWouldBeginBeforeTheLineTheEndIsWritten) {
  EXPECT_EQ(AfterLabel("12345678", 4, 2, "", "abcdefghij"), "efghij78");
  EXPECT_EQ(AfterLabel("", 0, 3, "x", "12345"), "345");
}

TEST(FixedPacker, PartsOfTheLineMayBeLabelAndValue) {
  FixedPacker packer;
  packer.LoadString("ab");
  packer.SetLabeledItem(0, 6, packer.GetString(), packer.GetString());
  EXPECT_EQ(packer.GetString(), "ab  ab");
}

TEST(FixedPacker, NegativePositionsAndWidthsChangeNothing) {
  for (const int bad : {-1, kMin}) {
    for (const int other : {-1, 0, 2, kMax}) {
      EXPECT_EQ(AfterItem("123", bad, other, "ab"), "123");
      EXPECT_EQ(AfterItem("123", other, bad, "ab"), "123");
      EXPECT_EQ(AfterLabel("123", bad, other, "ab", "cd"), "123");
      EXPECT_EQ(AfterLabel("123", other, bad, "ab", "cd"), "123");
    }
  }
}

TEST(FixedPacker, ALineBeyondSixteenMebibytesChangesNothing) {
  EXPECT_EQ(AfterItem("123", kMax, kMax, "ab"), "123");
  EXPECT_EQ(AfterItem("123", kLongestLine, 1, "a"), "123");
  EXPECT_EQ(AfterItem("123", kLongestLine - 1, 2, "ab"), "123");
  EXPECT_EQ(AfterLabel("123", kMax, kMax, "ab", "cd"), "123");
  EXPECT_EQ(AfterLabel("123", 0, kMax, "ab", "cd"), "123");
  EXPECT_EQ(AfterLabel("123", kLongestLine, 1, "a", ""), "123");
}

TEST(FixedPacker, ALineOfSixteenMebibytesIsTaken) {
  const std::string line = AfterItem("123", kLongestLine - 2, 2, "ab");
  ASSERT_EQ(line.size(), static_cast<std::size_t>(kLongestLine));
  EXPECT_EQ(line.substr(0, 5), "123  ");
  EXPECT_EQ(line.substr(line.size() - 4), "  ab");
  EXPECT_EQ(AfterLabel("", kLongestLine - 2, 2, "", "1").size(), static_cast<std::size_t>(kLongestLine));
}

TEST(FixedPacker, AWideFieldOfAShortTextMakesAShortLine) { EXPECT_EQ(AfterItem("123", 1, kMax, "ab"), "1ab"); }

// The columns once more, one character at a time on a map of columns.
struct Columns {
  std::string line;

  void Put(long long column, char c) {
    if (column >= 0) line[static_cast<std::size_t>(column)] = c;
  }
  long long Length() const { return static_cast<long long>(line.size()); }

  void Item(int position, int width, const std::string& text) {
    const bool within = Length() >= position + width;
    while (!within && Length() > position) line.pop_back();
    while (Length() < position) line.push_back(' ');
    for (int i = 0; i < width && i < static_cast<int>(text.size()); ++i) {
      if (!within) line.push_back('?');
      Put(position + i, text[static_cast<std::size_t>(i)]);
    }
  }

  void Labeled(int position, int width, const std::string& label, std::string value) {
    while (Length() < position + width) line.push_back(' ');
    for (int i = 0; i < width; ++i) {
      Put(position + i, i < static_cast<int>(label.size()) ? label[static_cast<std::size_t>(i)] : ' ');
    }
    const std::string white = "\t\n\v\f\r ";
    while (!value.empty() && white.find(value.back()) != std::string::npos) value.pop_back();
    while (!value.empty() && white.find(value.front()) != std::string::npos) value.erase(0, 1);
    for (long long at = position + width - 1; !value.empty(); --at) {
      Put(at, value.back());
      value.pop_back();
    }
  }
};

TEST(FixedPacker, RandomLinesAgreeWithColumnsSetOneByOne) {
  std::mt19937 random(20261107);
  const std::string alphabet = "ab1 \t";
  const auto text = [&] {
    std::string made;
    for (std::size_t left = random() % 9; left > 0; --left) made += alphabet[random() % alphabet.size()];
    return made;
  };
  int cut = 0;
  for (int round = 0; round < 2000; ++round) {
    FixedPacker packer;
    Columns columns;
    for (int step = 0; step < 8; ++step) {
      const int position = static_cast<int>(random() % 14);
      const int width = static_cast<int>(random() % 7);
      const std::string first = text();
      const std::string second = text();
      const std::size_t before = columns.line.size();
      if (random() % 2 == 0) {
        ASSERT_TRUE(packer.SetItem(position, width, first));
        columns.Item(position, width, first);
      } else {
        ASSERT_TRUE(packer.SetLabeledItem(position, width, first, second));
        columns.Labeled(position, width, first, second);
      }
      if (columns.line.size() < before) ++cut;
      ASSERT_EQ(packer.GetString(), columns.line) << "round " << round << ", step " << step;
    }
  }
  EXPECT_GT(cut, 100);
}

}  // namespace
