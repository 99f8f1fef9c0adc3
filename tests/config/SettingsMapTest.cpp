#include "zelbase/config/detail/SettingsMap.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using zelbase::detail::ItemMap;

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

}  // namespace
