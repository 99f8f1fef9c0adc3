#include "zelbase/platform/MemoryClipboard.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

// Asks for the clipboard while it goes.
class Content : public ClipboardContent {
 public:
  explicit Content(PlatformClipboard* asked = nullptr) : m_asked(asked) {}
  ~Content() override {
    if (m_asked != nullptr) m_asked->Get();
  }
  std::vector<FORMATETC> Formats() const override { return {}; }
  HGLOBAL Block(unsigned short) const override { return nullptr; }

 private:
  PlatformClipboard* m_asked;
};

TEST(MemoryClipboard, GivesNumbersInAscendingOrder) {
  MemoryClipboard clipboard;
  EXPECT_EQ(clipboard.RegisterFormat("one"), 0xC000u);
  EXPECT_EQ(clipboard.RegisterFormat("two"), 0xC001u);
  EXPECT_EQ(clipboard.RegisterFormat("ONE"), 0xC000u);
  EXPECT_EQ(clipboard.RegisterFormat(""), 0u);
  EXPECT_EQ(clipboard.RegisterFormat("three"), 0xC002u);
}

TEST(MemoryClipboard, BytesFrom128UpAreTheirOwn) {
  MemoryClipboard clipboard;
  EXPECT_NE(clipboard.RegisterFormat("\xC4"), clipboard.RegisterFormat("\xE4"));
}

TEST(MemoryClipboard, GivesNoNumberBehindTheLast) {
  MemoryClipboard clipboard;
  for (unsigned int number = 0xC000; number <= 0xFFFF; ++number) {
    ASSERT_EQ(clipboard.RegisterFormat("name " + std::to_string(number)), number);
  }
  EXPECT_EQ(clipboard.RegisterFormat("one more"), 0u);
  EXPECT_EQ(clipboard.RegisterFormat("NAME 65535"), 0xFFFFu);
}

TEST(MemoryClipboard, HoldsTheLastContent) {
  MemoryClipboard clipboard;
  EXPECT_EQ(clipboard.Get(), nullptr);
  const auto first = std::make_shared<const Content>();
  const auto second = std::make_shared<const Content>();
  EXPECT_TRUE(clipboard.Put(first));
  EXPECT_EQ(clipboard.Get(), first);
  EXPECT_TRUE(clipboard.Put(second));
  EXPECT_EQ(clipboard.Get(), second);
  EXPECT_EQ(first.use_count(), 1);
  EXPECT_TRUE(clipboard.Put(nullptr));
  EXPECT_EQ(clipboard.Get(), nullptr);
}

TEST(MemoryClipboard, AContentMayAskForTheClipboardWhileItGoes) {
  MemoryClipboard clipboard;
  clipboard.Put(std::make_shared<const Content>(&clipboard));
  clipboard.Put(nullptr);
  EXPECT_EQ(clipboard.Get(), nullptr);
}

TEST(MemoryClipboard, ThreadsPutGetAndRegister) {
  MemoryClipboard clipboard;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&clipboard, i] {
      for (int round = 0; round < 500; ++round) {
        clipboard.Put(std::make_shared<const Content>());
        clipboard.Get();
        EXPECT_GE(clipboard.RegisterFormat("name " + std::to_string((round + i) % 50)), 0xC000u);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(clipboard.RegisterFormat("the fifty-first"), 0xC000u + 50);
}

}  // namespace
