#include "zelbase/units/AbstractZELMessage.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

namespace {

struct Noting : AbstractZELMessage {
  Noting(std::string& place, bool& flag) : shown(place), destroyed(flag) {}
  ~Noting() override { destroyed = true; }
  void ShowMessage(int messageClass, const std::string& text, int second, const std::string& detail, int third) override {
    shown = std::to_string(messageClass) + text + std::to_string(second) + detail + std::to_string(third);
  }
  std::string& shown;
  bool& destroyed;
};

TEST(AbstractZELMessage, IsImplementedByAnApplicationAndDestroyedThroughItsBase) {
  static_assert(std::is_abstract_v<AbstractZELMessage>);
  std::string shown;
  bool destroyed = false;
  std::unique_ptr<AbstractZELMessage> message = std::make_unique<Noting>(shown, destroyed);
  message->Reserved1();
  message->Reserved2();
  EXPECT_EQ(shown, "");  // the reserved operations do nothing
  message->ShowMessage(3, "text", 1, "detail", 1);
  EXPECT_EQ(shown, "3text1detail1");
  message.reset();
  EXPECT_TRUE(destroyed);
}

}  // namespace
