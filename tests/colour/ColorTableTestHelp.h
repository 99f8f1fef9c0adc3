// What the tests of the colour table share: comparisons with the second table.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/colour/SecondColorTable.h"

inline void ExpectSameTable(const ColorTable& table, const SecondColorTable& second) {
  EXPECT_EQ(table.LowColor(), second.low);
  EXPECT_EQ(table.LowColorName(), second.lowName);
  ASSERT_EQ(table.NumEntries(), static_cast<int>(second.rows.size()));
  for (int i = 0; i < table.NumEntries(); ++i) {
    const SecondColorTable::Row& row = second.rows[static_cast<std::size_t>(i)];
    ASSERT_TRUE(SameDouble(table.EntryValue(i), row.value)) << i << ": " << table.EntryValue(i) << ", " << row.value;
    ASSERT_EQ(table.EntryColor(i), row.color) << i;
    ASSERT_EQ(table.EntryLocked(i), row.locked) << i;
    ASSERT_EQ(table.EntryName(i), row.name) << i;
  }
}

// Each probe one by one, then, with the index of the table, one by one and as a row.
inline void ExpectSameLookUp(const ColorTable& table, const SecondColorTable& second) {
  const std::vector<double> probes = ProbesOf(table);
  std::vector<unsigned int> expected;
  for (const double value : probes) {
    expected.push_back(second.Color(value));
    ASSERT_EQ(table.GetColor(value), expected.back()) << value;
    ASSERT_EQ(table.GetName(value), second.Name(value)) << value;
  }
  LookUpOften(table);
  for (std::size_t i = 0; i < probes.size(); ++i) ASSERT_EQ(table.GetColor(probes[i]), expected[i]) << probes[i];
  std::vector<unsigned int> row(probes.size(), 0xEEEEEEEE);
  table.GetColors(probes, row);
  for (std::size_t i = 0; i < probes.size(); ++i) ASSERT_EQ(row[i], expected[i]) << probes[i];
}
