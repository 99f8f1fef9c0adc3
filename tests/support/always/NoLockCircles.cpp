// Fails a test program in which locks were taken in two orders that contradict each other. Part of every test program.

#include <gtest/gtest.h>

#include "zelbase/platform/detail/LockOrder.h"

namespace {

using zelbase::detail::LockOrder;

class NoLockCircles : public testing::Environment {
 public:
  void TearDown() override { EXPECT_EQ(LockOrder::Circles(), 0u) << "standard error says which locks, in the test that took them"; }
};

[[maybe_unused]] const testing::Environment* const g_noLockCircles = testing::AddGlobalTestEnvironment(new NoLockCircles);

}  // namespace
