#include "zelbase/concurrency/RecursionLock.h"

#include <gtest/gtest.h>

namespace {

TEST(RecursionLock, SetsTheFlagAndClearsItAtItsEnd) {
  bool flag = false;
  {
    RecursionLock guard(flag);
    EXPECT_FALSE(flag) << "only Lock sets it";
    EXPECT_TRUE(guard.Lock());
    EXPECT_TRUE(flag);
  }
  EXPECT_FALSE(flag);
}

TEST(RecursionLock, OfTwoNestedGuardsTheInnerOneLeavesTheFlagAlone) {
  bool flag = false;
  {
    RecursionLock outer(flag);
    EXPECT_TRUE(outer.Lock());
    {
      RecursionLock inner(flag);
      EXPECT_FALSE(inner.Lock());
    }
    EXPECT_TRUE(flag);
  }
  EXPECT_FALSE(flag);
}

TEST(RecursionLock, ASecondLockOfTheSameGuardIsFalseAndItStillClearsTheFlag) {
  bool flag = false;
  {
    RecursionLock guard(flag);
    EXPECT_TRUE(guard.Lock());
    EXPECT_FALSE(guard.Lock());
    EXPECT_TRUE(flag);
  }
  EXPECT_FALSE(flag);
}

TEST(RecursionLock, AFlagSetBySomebodyElseIsLeftAlone) {
  bool flag = true;
  {
    RecursionLock guard(flag);
    EXPECT_FALSE(guard.Lock());
  }
  EXPECT_TRUE(flag);
  { RecursionLock unused(flag); }
  EXPECT_TRUE(flag);
}

TEST(RecursionLock, AGuardThatWasRefusedMayTryAgain) {
  bool flag = true;
  {
    RecursionLock guard(flag);
    EXPECT_FALSE(guard.Lock());
    flag = false;
    EXPECT_TRUE(guard.Lock());
  }
  EXPECT_FALSE(flag);
}

// A handler that triggers itself runs once.
struct Handler {
  void Handle() {
    RecursionLock guard(busy);
    if (!guard.Lock()) return;
    ++calls;
    Handle();
  }
  bool busy = false;
  int calls = 0;
};

TEST(RecursionLock, AHandlerThatTriggersItselfRunsOnce) {
  Handler handler;
  handler.Handle();
  EXPECT_EQ(handler.calls, 1);
  handler.Handle();
  EXPECT_EQ(handler.calls, 2);
}

}  // namespace
