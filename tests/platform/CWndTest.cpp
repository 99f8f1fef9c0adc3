#include "zelbase/platform/CWnd.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>
#include <vector>

class CDepthView : public CWnd {};
struct PlainView : CWnd {};

namespace {

using Message = std::tuple<unsigned int, unsigned long long, long long>;

TEST(CWnd, HandsAMessageWithItsTwoWordsToTheCallback) {
  std::vector<Message> messages;
  CWnd window([&](unsigned int message, unsigned long long first, long long second) { messages.emplace_back(message, first, second); });
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

TEST(CWnd, RuntimeClassNameIsThatOfTheObjectsOwnClass) {
  CWnd window;
  CDepthView derived;
  const CWnd& view = derived;
  EXPECT_EQ(window.RuntimeClassName(), "class CWnd");
  EXPECT_EQ(view.RuntimeClassName(), "class CDepthView");
  EXPECT_EQ(PlainView().RuntimeClassName(), "class PlainView");  // however it was declared
}

TEST(CWnd, AHostMayGiveItsWindowsAnotherName) {
  struct Named : CWnd {
    std::string RuntimeClassName() const override { return "class CNamed"; }
  } named;
  const CWnd& window = named;
  EXPECT_EQ(window.RuntimeClassName(), "class CNamed");
}

}  // namespace
