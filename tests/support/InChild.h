// Expectations about what a process does only once, tried in a child of its own: its first use of a singleton, say.
// Neighbour: ChildProcess.h, for children that take turns with the test.
#pragma once

#include <gtest/gtest.h>

#include "tests/support/ChildProcess.h"

// Runs `body` in a forked child and fails with what the child said when an expectation of it fails, it throws or it crashes.
// The test's own process must not have used what the child is to use first.
template <class Body>
void ExpectInChild(Body body, ChildProcess::Ending ending = ChildProcess::Ending::Quick) {
  ChildProcess child(
      [&body] {
        body();
        return testing::Test::HasFailure() ? 1 : 0;
      },
      ending);
  EXPECT_EQ(child.Wait(), 0) << child.OutputText() << child.ErrorText();
}
