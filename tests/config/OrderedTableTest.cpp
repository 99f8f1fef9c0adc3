#include "zelbase/config/detail/OrderedTable.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

using zelbase::detail::OrderedTable;
using zelbase::detail::TableEntry;
using zelbase::detail::TableWalk;

struct Letter : TableEntry {
  char letter = 0;
};

TEST(OrderedTable, ANumberIsFoundWhateverTheHint) {
  OrderedTable<Letter> table;
  for (const char letter : {'a', 'b', 'c'}) table.Append(static_cast<std::uint32_t>(letter)).letter = letter;
  for (std::uint64_t number = 1; number <= 3; ++number) {
    for (std::size_t hint = 0; hint <= 5; ++hint) {
      std::size_t place = hint;
      const Letter* const found = table.FindNumber(number, place);
      ASSERT_NE(found, nullptr) << number << ' ' << hint;
      EXPECT_EQ(found->letter, "abc"[number - 1]);
      EXPECT_EQ(place, number - 1);
    }
  }
}

TEST(OrderedTable, ANumberThatIsNotThereIsNullWhateverTheHint) {
  OrderedTable<Letter> table;
  std::size_t place = 0;
  EXPECT_EQ(table.FindNumber(1, place), nullptr);
  for (const char letter : {'a', 'b', 'c'}) table.Append(static_cast<std::uint32_t>(letter)).letter = letter;
  place = 1;
  table.Remove(*table.FindNumber(2, place));
  for (const std::uint64_t number : {std::uint64_t{0}, std::uint64_t{2}, std::uint64_t{4}}) {
    for (std::size_t hint = 0; hint <= 5; ++hint) {
      place = hint;
      EXPECT_EQ(table.FindNumber(number, place), nullptr) << number << ' ' << hint;
    }
  }
}

TEST(OrderedTable, AnOpenWalkDoesNotMeetWhatReplacesTheEntries) {
  const auto add = [](OrderedTable<Letter>& table, const char* letters) {
    for (; *letters != '\0'; ++letters) table.Append(static_cast<std::uint32_t>(*letters)).letter = *letters;
  };
  const auto lettersOf = [](OrderedTable<Letter>& table, TableWalk& walk) {
    std::string letters;
    while (const Letter* const entry = table.Next(walk)) letters += entry->letter;
    return letters;
  };
  OrderedTable<Letter> table;
  OrderedTable<Letter> other;
  add(table, "abc");
  add(other, "vwxyz");
  TableWalk open = table.Begin();
  EXPECT_EQ(table.Next(open)->letter, 'a');
  table.Replace(other);
  EXPECT_EQ(lettersOf(table, open), "");
  EXPECT_EQ(table.Size(), 5u);
  TableWalk begun = table.Begin();
  EXPECT_EQ(table.Next(begun)->letter, 'v');
  add(table, "!");
  EXPECT_EQ(lettersOf(table, begun), "wxyz") << "what is added later is not of the walk either";
  TableWalk whole = table.Begin();
  EXPECT_EQ(lettersOf(table, whole), "vwxyz!");
  const Letter* const found = table.Find('x', [](const Letter& entry) { return entry.letter == 'x'; });
  ASSERT_NE(found, nullptr);
  std::size_t place = 0;
  EXPECT_EQ(table.FindNumber(found->number, place), found);
}

}  // namespace
