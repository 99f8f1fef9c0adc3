#include "zelbase/platform/RefusingThreads.h"

#include <gtest/gtest.h>

namespace {

TEST(RefusingThreads, PassOnWhatTheyDoNotRefuse) {
  RefusingThreads threads;
  bool ran = false;
  unsigned long id = 0;
  const auto thread = threads.CreateSuspended(
      [&] {
        ran = true;
        id = threads.CurrentId();
      },
      1, 100000);
  ASSERT_NE(thread, nullptr);
  thread->Resume();
  EXPECT_TRUE(thread->Wait(PlatformThread::kNoLimit));
  EXPECT_TRUE(ran);
  EXPECT_EQ(id, thread->Id());
  EXPECT_EQ(threads.CurrentId(), PlatformThreads::System().CurrentId());
}

TEST(RefusingThreads, RefuseTheNthCreationAlone) {
  RefusingThreads threads;
  EXPECT_NE(threads.CreateSuspended([] {}, 0, 0), nullptr);
  threads.RefuseNumber(2);
  EXPECT_NE(threads.CreateSuspended([] {}, 0, 0), nullptr);
  EXPECT_EQ(threads.CreateSuspended([] {}, 0, 0), nullptr);
  EXPECT_NE(threads.CreateSuspended([] {}, 0, 0), nullptr);
}

TEST(RefusingThreads, RefuseAllUntilToldOtherwise) {
  RefusingThreads threads;
  threads.RefuseAll();
  EXPECT_EQ(threads.CreateSuspended([] {}, 0, 0), nullptr);
  EXPECT_EQ(threads.CreateSuspended([] {}, 0, 0), nullptr);
  threads.RefuseNone();
  EXPECT_NE(threads.CreateSuspended([] {}, 0, 0), nullptr);
}

TEST(RefusingThreads, NoteWhatWasAskedFor) {
  RefusingThreads threads;
  threads.RefuseNumber(2);
  threads.CreateSuspended([] {}, -1, 4096);
  threads.CreateSuspended([] {}, 2, 0);
  threads.NameThread(PlatformThreads::kCallingThread, "first");
  threads.NameThread(7, "");

  const auto requests = threads.Requests();
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_EQ(requests[0].priority, -1);
  EXPECT_EQ(requests[0].stackSize, 4096u);
  EXPECT_FALSE(requests[0].refused);
  EXPECT_EQ(requests[1].priority, 2);
  EXPECT_EQ(requests[1].stackSize, 0u);
  EXPECT_TRUE(requests[1].refused);

  const auto namings = threads.Namings();
  ASSERT_EQ(namings.size(), 2u);
  EXPECT_EQ(namings[0].id, PlatformThreads::kCallingThread);
  EXPECT_EQ(namings[0].name, "first");
  EXPECT_EQ(namings[1].id, 7u);
  EXPECT_EQ(namings[1].name, "");
}

}  // namespace
