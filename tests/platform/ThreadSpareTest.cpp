#include "zelbase/platform/detail/ThreadSpare.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>

#include "tests/support/ChildProcess.h"

namespace {

using zelbase::detail::ThreadSpare;

constexpr const char* kLong = "a text that is longer than the short ones, and so has memory of its own";

TEST(ThreadSpare, IsOneForEachThread) {
  std::string& own = ThreadSpare<std::string>();
  own = kLong;
  EXPECT_EQ(&ThreadSpare<std::string>(), &own);
  std::thread([&own] {
    EXPECT_NE(&ThreadSpare<std::string>(), &own);
    EXPECT_EQ(ThreadSpare<std::string>(), "");
    ThreadSpare<std::string>() = kLong;
  }).join();
  EXPECT_EQ(own, kLong);
  own.clear();
}

// Made and gone, counted.
struct Counted {
  Counted() { ++made; }
  ~Counted() { ++gone; }
  static inline int made = 0;
  static inline int gone = 0;
};

TEST(ThreadSpare, IsMadeAnewWhenItsThreadEnds) {
  Counted::made = Counted::gone = 0;
  std::thread([] { ThreadSpare<Counted>(); }).join();
  EXPECT_EQ(Counted::made, 2);
  EXPECT_EQ(Counted::gone, 1);
}

// Uses the object when it goes, behind all that the main thread has of its own.
struct LateUser {
  ~LateUser() {
    if (!inForce) return;
    if (!ThreadSpare<std::string>().empty()) std::_Exit(1);
    ThreadSpare<std::string>() = kLong;
    if (ThreadSpare<std::string>() != kLong) std::_Exit(2);
  }
  static inline bool inForce = false;
};
const LateUser g_late;

TEST(ThreadSpare, ServesInDestructorsOfStaticsWhetherItWasUsedBeforeOrNot) {
  for (const bool isUsedBefore : {true, false}) {
    ChildProcess child(
        [isUsedBefore] {
          LateUser::inForce = true;
          if (isUsedBefore) ThreadSpare<std::string>() = kLong;
          return 0;
        },
        ChildProcess::Ending::Full);
    EXPECT_EQ(child.Wait(), 0) << isUsedBefore << child.ErrorText();
    EXPECT_EQ(child.ErrorText(), "") << isUsedBefore;
  }
}

}  // namespace
