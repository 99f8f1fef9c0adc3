#include "zelbase/errors/detail/SharedSlot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <thread>
#include <vector>

namespace {

using Slot = zelbase::detail::SharedSlot<const int>;

TEST(SharedSlot, StartsEmptyAndGivesBackWhatItHeld) {
  Slot slot;
  EXPECT_EQ(slot.Get(), nullptr);
  const auto first = std::make_shared<const int>(1);
  EXPECT_EQ(slot.Exchange(first), nullptr);
  EXPECT_EQ(slot.Get(), first);
  EXPECT_EQ(slot.Exchange(nullptr), first);
  EXPECT_EQ(slot.Get(), nullptr);
}

TEST(SharedSlot, WhatIsInUseStaysAlive) {
  Slot slot;
  slot.Exchange(std::make_shared<const int>(7));
  const auto used = slot.Get();
  slot.Exchange(nullptr);
  EXPECT_EQ(*used, 7);
}

class SharedSlotThreads : public testing::TestWithParam<int> {};

TEST_P(SharedSlotThreads, ReadersSeeWholeObjects) {
  Slot slot;
  slot.Exchange(std::make_shared<const int>(0));
  std::vector<std::thread> threads;
  std::vector<int> highest(static_cast<std::size_t>(GetParam()));
  for (int& own : highest) {
    threads.emplace_back([&slot, &own] {
      for (int i = 0; i < 200; ++i) {
        own = std::max(own, *slot.Get());
        slot.Exchange(std::make_shared<const int>(i));
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const int own : highest) {
    EXPECT_GE(own, 0);
    EXPECT_LT(own, 200);
  }
}

INSTANTIATE_TEST_SUITE_P(SharedSlot, SharedSlotThreads, testing::Values(2, 4, 10));

}  // namespace
