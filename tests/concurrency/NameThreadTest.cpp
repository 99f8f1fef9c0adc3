#include "zelbase/concurrency/NameThread.h"

#include <gtest/gtest.h>

#include "zelbase/platform/RefusingThreads.h"

namespace {

TEST(NameThread, GoesToTheHookOfTheServiceInForce) {
  RefusingThreads threads;
  {
    const PlatformOverride<PlatformThreads> guard(threads);
    NameThread(PlatformThreads::kCallingThread, "Reader");
  }
  NameThread(1, "nobody hears");
  const auto namings = threads.Namings();
  ASSERT_EQ(namings.size(), 1u);
  EXPECT_EQ(namings[0].id, PlatformThreads::kCallingThread);
  EXPECT_EQ(namings[0].name, "Reader");
}

}  // namespace
