#include "zelbase/config/detail/SettingsMap.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using zelbase::detail::ItemMap;

// How far the value of the last key stands behind that of "a", which was written first: all that lies between is in the buffer, too.
std::ptrdiff_t DistanceOf(const ItemMap& items, const std::string& last = "b") {
  std::string_view a;
  std::string_view b;
  EXPECT_TRUE(items.Find("a", a));
  EXPECT_TRUE(items.Find(last, b));
  return b.data() - a.data();
}

// Values that outgrow their room again and again.
void ExpectRoomIsBounded(ItemMap& items) {
  items.Set("a", "1");
  for (std::ptrdiff_t size = 1; size <= 1000; ++size) {
    items.Set("b", std::string(static_cast<std::size_t>(size), 'x'));
    ASSERT_LE(DistanceOf(items), 2 * size + 8192) << size;
  }
}

// The size is looked at before the text: nothing reads beyond the one byte that there is.
TEST(SettingsMap, AValueOfFourGibibytesIsRefusedAndChangesNothing) {
  ItemMap items;
  items.Set("k", "v");
  const char byte = 'x';
  const std::string_view large(&byte, std::size_t{1} << 32);
  EXPECT_THROW(items.Set("l", large), std::length_error);
  EXPECT_EQ(items.Size(), 1u);
  std::string_view value = "former";
  EXPECT_FALSE(items.Find("l", value));
  EXPECT_EQ(value, "former");
  EXPECT_TRUE(items.Find("k", value));
  EXPECT_EQ(value, "v");
}

// Of the buffer at most half, or a few pages, is text that nobody refers to.
TEST(SettingsMap, OutgrownValuesAreDropped) {
  ItemMap items;
  ExpectRoomIsBounded(items);
}

TEST(SettingsMap, RemovedItemsAreDropped) {
  ItemMap items;
  items.Set("a", "1");
  const std::string key(500, 'b'), value(500, 'x');
  for (int i = 0; i < 1000; ++i) {
    items.Set(key, value);
    ASSERT_LE(DistanceOf(items, key), 2 * 1000 + 8192) << i;
    items.Remove(key);
  }
}

TEST(SettingsMap, WhatWasUnusedBeforeAReplacementCountsNoMore) {
  ItemMap items;
  items.Set("a", std::string(1100000, 'x'));
  items.Set("b", std::string(1000000, 'x'));
  EXPECT_TRUE(items.Remove("b"));
  items.Replace(ItemMap());
  ExpectRoomIsBounded(items);
}

// The buffer is not copied for every value that goes: that would make a thousand removals a thousand copies.
TEST(SettingsMap, WhatIsHardlyUnusedIsNotTidied) {
  for (const std::size_t kept : {std::size_t{100}, std::size_t{100000}}) {
    ItemMap items;
    items.Set("a", std::string(kept, 'x'));
    for (int i = 0; i < 20; ++i) items.Set("b" + std::to_string(i), std::string(kept / 100, 'y'));
    std::string_view before;
    ASSERT_TRUE(items.Find("a", before));
    for (int i = 0; i < 20; ++i) {
      ASSERT_TRUE(items.Remove("b" + std::to_string(i)));
      std::string_view after;
      ASSERT_TRUE(items.Find("a", after));
      ASSERT_EQ(after.data(), before.data()) << kept << ", removal " << i;
    }
  }
}

}  // namespace
