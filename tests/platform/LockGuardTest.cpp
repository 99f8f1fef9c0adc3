#include "zelbase/platform/LockGuard.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <type_traits>

namespace {

// Writes down what happens to it.
struct Recorder {
  void lock() { calls += 'l'; }
  void unlock() { calls += 'u'; }
  std::string calls;
};

TEST(LockGuard, HoldsTheLockForItsScope) {
  Recorder lock;
  {
    const LockGuard guard(lock);
    EXPECT_EQ(lock.calls, "l");
  }
  EXPECT_EQ(lock.calls, "lu");
}

TEST(LockGuard, GivesTheLockBackWhenAnExceptionLeavesTheScope) {
  Recorder lock;
  try {
    const LockGuard guard(lock);
    throw std::runtime_error("x");
  } catch (const std::runtime_error&) {
    EXPECT_EQ(lock.calls, "lu");
  }
}

TEST(LockGuard, IsNotCopied) {
  EXPECT_FALSE(std::is_copy_constructible_v<LockGuard<Recorder>>);
  EXPECT_FALSE(std::is_copy_assignable_v<LockGuard<Recorder>>);
}

}  // namespace
