#include "zelbase/platform/ClipboardFormats.h"

#include <gtest/gtest.h>

#include "zelbase/platform/MemoryClipboard.h"

namespace {

TEST(ClipboardFormats, OneNameHasOneNumberWithoutRegardToCase) {
  const unsigned int number = RegisterClipboardFormatA("ClipboardFormats: a name");
  EXPECT_GE(number, 0xC000u);
  EXPECT_LE(number, 0xFFFFu);
  EXPECT_EQ(RegisterClipboardFormatA("ClipboardFormats: a name"), number);
  EXPECT_EQ(RegisterClipboardFormatA("CLIPBOARDFORMATS: A NAME"), number);
  EXPECT_NE(RegisterClipboardFormatA("ClipboardFormats: another name"), number);
}

TEST(ClipboardFormats, NoNameHasNoNumber) {
  EXPECT_EQ(RegisterClipboardFormatA(nullptr), 0u);
  EXPECT_EQ(RegisterClipboardFormatA(""), 0u);
}

TEST(ClipboardFormats, AsksTheClipboardInForce) {
  MemoryClipboard clipboard;
  const PlatformOverride<PlatformClipboard> guard(clipboard);
  EXPECT_EQ(RegisterClipboardFormatA("a"), 0xC000u);
  EXPECT_EQ(RegisterClipboardFormatA("b"), 0xC001u);
  EXPECT_EQ(RegisterClipboardFormatA("A"), 0xC000u);
  EXPECT_EQ(CF_HDROP, 15);
}

}  // namespace
