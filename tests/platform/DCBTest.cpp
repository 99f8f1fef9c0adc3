#include "zelbase/platform/DCB.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

namespace {

unsigned int FlagWord(const DCB& block) {
  unsigned int word = 0;
  std::memcpy(&word, reinterpret_cast<const char*>(&block) + 8, sizeof word);
  return word;
}

TEST(DCB, Has28BytesInTheOrderOfTheDrivers) {
  EXPECT_EQ(sizeof(DCB), 28u);
  EXPECT_EQ(offsetof(DCB, DCBlength), 0u);
  EXPECT_EQ(offsetof(DCB, BaudRate), 4u);
  EXPECT_EQ(offsetof(DCB, wReserved), 12u);
  EXPECT_EQ(offsetof(DCB, XonLim), 14u);
  EXPECT_EQ(offsetof(DCB, XoffLim), 16u);
  EXPECT_EQ(offsetof(DCB, ByteSize), 18u);
  EXPECT_EQ(offsetof(DCB, Parity), 19u);
  EXPECT_EQ(offsetof(DCB, StopBits), 20u);
  EXPECT_EQ(offsetof(DCB, XonChar), 21u);
  EXPECT_EQ(offsetof(DCB, XoffChar), 22u);
  EXPECT_EQ(offsetof(DCB, ErrorChar), 23u);
  EXPECT_EQ(offsetof(DCB, EofChar), 24u);
  EXPECT_EQ(offsetof(DCB, EvtChar), 25u);
  EXPECT_EQ(offsetof(DCB, wReserved1), 26u);
}

TEST(DCB, FlagsLieInOneWordFromItsLowestBitOn) {
  const auto wordOf = [](auto set) {
    DCB block{};
    set(block);
    return FlagWord(block);
  };
  EXPECT_EQ(wordOf([](DCB& b) { b.fBinary = 1; }), 1u);
  EXPECT_EQ(wordOf([](DCB& b) { b.fParity = 1; }), 1u << 1);
  EXPECT_EQ(wordOf([](DCB& b) { b.fOutxCtsFlow = 1; }), 1u << 2);
  EXPECT_EQ(wordOf([](DCB& b) { b.fOutxDsrFlow = 1; }), 1u << 3);
  EXPECT_EQ(wordOf([](DCB& b) { b.fDtrControl = 3; }), 3u << 4);
  EXPECT_EQ(wordOf([](DCB& b) { b.fDsrSensitivity = 1; }), 1u << 6);
  EXPECT_EQ(wordOf([](DCB& b) { b.fTXContinueOnXoff = 1; }), 1u << 7);
  EXPECT_EQ(wordOf([](DCB& b) { b.fOutX = 1; }), 1u << 8);
  EXPECT_EQ(wordOf([](DCB& b) { b.fInX = 1; }), 1u << 9);
  EXPECT_EQ(wordOf([](DCB& b) { b.fErrorChar = 1; }), 1u << 10);
  EXPECT_EQ(wordOf([](DCB& b) { b.fNull = 1; }), 1u << 11);
  EXPECT_EQ(wordOf([](DCB& b) { b.fRtsControl = 3; }), 3u << 12);
  EXPECT_EQ(wordOf([](DCB& b) { b.fAbortOnError = 1; }), 1u << 14);
  EXPECT_EQ(wordOf([](DCB& b) { b.fDummy2 = 0x1FFFF; }), 0xFFFF8000u);
}

}  // namespace
