#include "zelbase/geometry/detail/GroupedRow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <utility>
#include <vector>

namespace {

// The largest number of a group.
struct Most {
  void Add(const Most& other) { value = std::max(value, other.value); }
  bool operator==(const Most&) const = default;
  int value = 0;
};

using Row = zelbase::detail::GroupedRow<Most>;

Row RowOf(const std::vector<int>& values) {
  std::vector<Most> entries;
  for (const int value : values) entries.push_back({value});
  return Row(std::move(entries));
}

std::size_t NextAbove(const Row& row, std::size_t from, std::size_t end, int limit) {
  return row.Next(from, end, [limit](const Most& most) { return most.value > limit; });
}

std::size_t PreviousAbove(const Row& row, std::size_t first, std::size_t end, int limit) {
  return row.Previous(first, end, [limit](const Most& most) { return most.value > limit; });
}

std::size_t NextByEach(const std::vector<int>& values, std::size_t from, std::size_t end, int limit) {
  for (std::size_t i = from; i < end; ++i) {
    if (values[i] > limit) return i;
  }
  return Row::kNone;
}

std::size_t PreviousByEach(const std::vector<int>& values, std::size_t first, std::size_t end, int limit) {
  for (std::size_t i = end; i > first; --i) {
    if (values[i - 1] > limit) return i - 1;
  }
  return Row::kNone;
}

TEST(GroupedRow, AnEmptyRowHasNothing) {
  const Row row = RowOf({});
  EXPECT_EQ(NextAbove(row, 0, 0, 0), Row::kNone);
  EXPECT_EQ(PreviousAbove(row, 0, 0, 0), Row::kNone);
}

TEST(GroupedRow, AnEmptyWayHasNothing) {
  const Row row = RowOf({5, 5, 5});
  EXPECT_EQ(NextAbove(row, 2, 2, 0), Row::kNone);
  EXPECT_EQ(NextAbove(row, 3, 2, 0), Row::kNone);
  EXPECT_EQ(PreviousAbove(row, 2, 2, 0), Row::kNone);
  EXPECT_EQ(PreviousAbove(row, 3, 2, 0), Row::kNone);
}

TEST(GroupedRow, FindsTheOneAtAnyPlace) {
  constexpr std::size_t kSize = 600;
  for (std::size_t place = 0; place < kSize; ++place) {
    std::vector<int> values(kSize, 0);
    values[place] = 1;
    const Row row = RowOf(values);
    ASSERT_EQ(NextAbove(row, 0, kSize, 0), place);
    ASSERT_EQ(PreviousAbove(row, 0, kSize, 0), place);
    ASSERT_EQ(NextAbove(row, place + 1, kSize, 0), Row::kNone);
    ASSERT_EQ(PreviousAbove(row, 0, place, 0), Row::kNone);
  }
}

TEST(GroupedRow, AgreesWithALookAtEachThroughManyChanges) {
  long found = 0;
  long missed = 0;
  for (unsigned int seed = 1; seed <= 300; ++seed) {
    std::mt19937 random(seed);
    const std::size_t sizes[] = {1, 2, 7, 8, 9, 16, 63, 64, 65, 72, 511, 512, 513, 5000};
    std::vector<int> values(sizes[random() % 14]);
    for (int& value : values) value = static_cast<int>(random() % 100);
    Row row = RowOf(values);
    for (int step = 0; step < 100; ++step) {
      const std::size_t changed = random() % values.size();
      values[changed] = static_cast<int>(random() % (random() % 2 == 0 ? 110 : 2));
      row.Set(changed, {values[changed]});
      ASSERT_EQ(row[changed].value, values[changed]);
      const std::size_t end = random() % (values.size() + 1);
      const std::size_t from = random() % (end + 1);
      const int limit = 90 + static_cast<int>(random() % 20);
      const std::size_t next = NextAbove(row, from, end, limit);
      ASSERT_EQ(next, NextByEach(values, from, end, limit)) << seed;
      ASSERT_EQ(PreviousAbove(row, from, end, limit), PreviousByEach(values, from, end, limit)) << seed;
      ++(next == Row::kNone ? missed : found);
    }
  }
  EXPECT_GT(found, 1000);
  EXPECT_GT(missed, 1000);
}

}  // namespace
