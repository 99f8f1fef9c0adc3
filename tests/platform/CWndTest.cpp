#include "zelbase/platform/CWnd.h"

#include <gtest/gtest.h>

#include <memory>
#include <tuple>
#include <vector>

namespace {

using Message = std::tuple<unsigned int, unsigned long long, long long>;

TEST(CWnd, HandsAMessageWithItsTwoWordsToTheCallback) {
  std::vector<Message> messages;
  CWnd window([&](unsigned int message, unsigned long long first, long long second) {
    messages.emplace_back(message, first, second);
  });
  EXPECT_TRUE(window.PostMessageA(WM_APP + 7, 1, -1));
  EXPECT_TRUE(window.PostMessageA(0, ~0ull, 0));
  EXPECT_EQ(messages, (std::vector<Message>{{0x8007u, 1u, -1}, {0u, ~0ull, 0}}));
}

TEST(CWnd, WithoutACallbackNothingIsPosted) {
  CWnd window;
  EXPECT_FALSE(window.PostMessageA(WM_APP, 0, 0));
  CWnd empty(CWnd::MessageCallback{});
  EXPECT_FALSE(empty.PostMessageA(WM_APP, 0, 0));
}

TEST(CWnd, AHostMayDeriveItsOwnReceiver) {
  struct Receiver : CWnd {
    bool PostMessageA(unsigned int message, unsigned long long, long long) override {
      last = message;
      return true;
    }
    unsigned int last = 0;
  } receiver;
  CWnd& window = receiver;
  EXPECT_TRUE(window.PostMessageA(42, 0, 0));
  EXPECT_EQ(receiver.last, 42u);
}

}  // namespace
