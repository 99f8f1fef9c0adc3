#include "zelbase/colour/detail/ColorLookupSlot.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

namespace {

using zelbase::detail::ColorLookup;
using zelbase::detail::ColorLookupSlot;

std::unique_ptr<const ColorLookup> SmallIndex() {
  const std::vector<double> starts = {0, 1};
  const std::vector<COLORREF> colors = {5, 6, 7};
  return std::make_unique<const ColorLookup>(starts, colors);
}

TEST(ColorLookupSlot, OneCallPassesTheBoundAndNoOtherDoes) {
  const ColorLookupSlot slot;
  EXPECT_FALSE(slot.CountsPast(10, 4));
  EXPECT_FALSE(slot.CountsPast(10, 6));  // 10 are not past 10
  EXPECT_TRUE(slot.CountsPast(10, 1));
  EXPECT_FALSE(slot.CountsPast(10, 1));
  EXPECT_FALSE(slot.CountsPast(10, 100));
}

TEST(ColorLookupSlot, GivesWhatItKeepsUntilItForgets) {
  ColorLookupSlot slot;
  EXPECT_EQ(slot.Get(), nullptr);
  EXPECT_TRUE(slot.CountsPast(10, 11));
  const ColorLookup* const kept = slot.Keep(SmallIndex());
  ASSERT_NE(kept, nullptr);
  EXPECT_EQ(slot.Get(), kept);
  EXPECT_EQ(kept->ColorOf(0.5), 6u);
  slot.Forget();
  EXPECT_EQ(slot.Get(), nullptr);
  EXPECT_TRUE(slot.CountsPast(10, 11));
}

TEST(ColorLookupSlot, AMoveTakesIndexAndCountAlong) {
  ColorLookupSlot from;
  EXPECT_FALSE(from.CountsPast(10, 10));
  const ColorLookup* const kept = from.Keep(SmallIndex());
  const ColorLookupSlot to(std::move(from));
  EXPECT_EQ(to.Get(), kept);
  EXPECT_TRUE(to.CountsPast(10, 1));
  from = ColorLookupSlot();
  EXPECT_EQ(from.Get(), nullptr);
  EXPECT_FALSE(from.CountsPast(10, 10));
}

TEST(ColorLookupSlot, ACopyStartsEmpty) {
  const ColorLookupSlot from;
  EXPECT_FALSE(from.CountsPast(10, 10));
  from.Keep(SmallIndex());
  const ColorLookupSlot to(from);
  EXPECT_EQ(to.Get(), nullptr);
  EXPECT_FALSE(to.CountsPast(10, 10));
}

}  // namespace
