#include "zelbase/errors/ErrorStatus.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace {

TEST(ErrorStatus, InitialValuesAreFixed) {
  EXPECT_EQ(static_cast<int>(SEVERITY_INITIAL), 1);
  EXPECT_EQ(static_cast<int>(ACCEPT_STATUS_INITIAL), 0);
  EXPECT_EQ(static_cast<int>(ACTIVE_STATUS_INITIAL), 0);
}

TEST(ErrorStatus, EveryIntIsAValue) {
  static_assert(std::is_same_v<std::underlying_type_t<SEVERITY>, int>);
  static_assert(std::is_same_v<std::underlying_type_t<ACCEPT_STATUS>, int>);
  static_assert(std::is_same_v<std::underlying_type_t<ACTIVE_STATUS>, int>);
  for (const int value : {std::numeric_limits<int>::min(), -1, 2, std::numeric_limits<int>::max()}) {
    EXPECT_EQ(static_cast<int>(static_cast<SEVERITY>(value)), value);
    EXPECT_EQ(static_cast<int>(static_cast<ACCEPT_STATUS>(value)), value);
    EXPECT_EQ(static_cast<int>(static_cast<ACTIVE_STATUS>(value)), value);
  }
}

}  // namespace
