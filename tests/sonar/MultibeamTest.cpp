#include "zelbase/sonar/Multibeam.h"

#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

// The setting is the process's: back to 0 at the end of a test.
class MultibeamSetting : public testing::Test {
 protected:
  ~MultibeamSetting() override { Multibeam::SetShowNoDetectionBeams(0); }
};

// Every word with one bit and with two, and the empty one.
std::vector<unsigned int> SingleBitsAndPairs() {
  std::vector<unsigned int> words = {0};
  for (int a = 0; a < 32; ++a) {
    for (int b = a; b < 32; ++b) words.push_back(1u << a | 1u << b);
  }
  return words;
}

// ---- Rejected -------------------------------------------------------------------------------------------------------

TEST(Multibeam, APingIsRejectedByBit16) {
  for (int bit = 0; bit < 32; ++bit) EXPECT_EQ(Multibeam::IsPingRejected(1u << bit), bit == 16) << bit;
  EXPECT_FALSE(Multibeam::IsPingRejected(0));
  EXPECT_TRUE(Multibeam::IsPingRejected(0xFFFFFFFF));
  EXPECT_FALSE(Multibeam::IsPingRejected(0xFFFEFFFF));
}

TEST(Multibeam, ABeamIsRejectedFrom256On) {
  EXPECT_FALSE(Multibeam::IsBeamRejected(0));
  EXPECT_FALSE(Multibeam::IsBeamRejected(0x00000080));
  EXPECT_FALSE(Multibeam::IsBeamRejected(0x000000FF));
  EXPECT_TRUE(Multibeam::IsBeamRejected(0x00000100));
  EXPECT_TRUE(Multibeam::IsBeamRejected(0x7FFFFFFF));
}

TEST(Multibeam, ANegativeWordIsGoodUnlessBit16IsSet) {
  EXPECT_FALSE(Multibeam::IsBeamRejected(0x80000000));
  EXPECT_FALSE(Multibeam::IsBeamRejected(0x80000100));
  EXPECT_TRUE(Multibeam::IsBeamRejected(0x80010000));
  EXPECT_FALSE(Multibeam::IsBeamRejected(0xFFFEFFFF));
  EXPECT_TRUE(Multibeam::IsBeamRejected(0xFFFFFFFF));
}

TEST(Multibeam, RejectedFollowsBits8To30AndTheTopBit) {
  for (const unsigned int word : SingleBitsAndPairs()) {
    const bool negative = word >= 0x80000000u;
    const bool expected = negative ? (word >> 16) % 2 == 1 : word / 256 > 0;
    EXPECT_EQ(Multibeam::IsBeamRejected(word), expected) << std::hex << word;
  }
}

// ---- Undetected -----------------------------------------------------------------------------------------------------

TEST_F(MultibeamSetting, ABeamIsUndetectedWithoutBits2And3) {
  for (unsigned int low = 0; low < 16; ++low) EXPECT_EQ(Multibeam::IsBeamUndetected(2040, low), low < 4) << low;
  EXPECT_TRUE(Multibeam::IsBeamUndetected(2040, 0xFFFFFFF3));
  EXPECT_FALSE(Multibeam::IsBeamUndetected(2040, 0x80000004));
}

TEST_F(MultibeamSetting, ElevenSonarsHaveNoUndetectedBeams) {
  int without = 0;
  for (int id = -1000; id <= 30000; ++id) without += Multibeam::IsBeamUndetected(id, 0) ? 0 : 1;
  EXPECT_EQ(without, 11);
  for (const int id : {0, 1, 2, 72, 73, 74, 1000, 3000, 3001, 3002, 20000}) {
    EXPECT_FALSE(Multibeam::IsBeamUndetected(id, 0)) << id;
  }
}

TEST_F(MultibeamSetting, NegativeAndUnknownSonarsDoHaveThem) {
  for (const int id : {-1, INT_MIN, INT_MAX, 3, 71, 75, 999, 1001, 2999, 3003, 19999, 20001}) {
    EXPECT_TRUE(Multibeam::IsBeamUndetected(id, 0x3)) << id;
  }
}

TEST_F(MultibeamSetting, ShowingBeamsWithoutDetectionMakesNoneUndetected) {
  for (const int show : {1, -1, 256, INT_MIN}) {
    Multibeam::SetShowNoDetectionBeams(show);
    for (const int id : {-1, 0, 5, 20000}) {
      for (const unsigned int word : SingleBitsAndPairs()) EXPECT_FALSE(Multibeam::IsBeamUndetected(id, word));
    }
  }
  Multibeam::SetShowNoDetectionBeams(0);
  EXPECT_TRUE(Multibeam::IsBeamUndetected(5, 0));
}

TEST_F(MultibeamSetting, ASonarsBeamIsRejectedWhenUndetectedToo) {
  EXPECT_TRUE(Multibeam::IsBeamRejected(5, 0));
  EXPECT_FALSE(Multibeam::IsBeamRejected(5, 0x4));
  EXPECT_TRUE(Multibeam::IsBeamRejected(5, 0x104));
  EXPECT_FALSE(Multibeam::IsBeamRejected(1000, 0));
  EXPECT_TRUE(Multibeam::IsBeamRejected(1000, 0x100));
  EXPECT_TRUE(Multibeam::IsBeamRejected(5, 0x80000100));
  EXPECT_FALSE(Multibeam::IsBeamRejected(5, 0x80000108));
}

TEST_F(MultibeamSetting, TheSettingIsReadByTheTestForASonarsRejectedBeams) {
  Multibeam::SetShowNoDetectionBeams(1);
  EXPECT_FALSE(Multibeam::IsBeamRejected(5, 0));
  EXPECT_TRUE(Multibeam::IsBeamRejected(5, 0x100));
  EXPECT_TRUE(Multibeam::IsBeamRejected(5, 0x80010000));
}

// ---- Colours --------------------------------------------------------------------------------------------------------

// The rank of a bit, 0 first, and its colour, by its number.
const std::map<int, std::pair<int, unsigned int>> kRejectColors = {
    {16, {0, 0x00FF00}},  {31, {1, 0xB4B4FF}},  {8, {2, 0x00B4B4}},   {9, {3, 0x0000FF}},   {10, {4, 0x00FFFF}},
    {11, {5, 0xFFFF00}},  {12, {6, 0xFF8080}},  {13, {7, 0xFF00FF}},  {14, {8, 0x0080FF}},  {20, {9, 0x408000}},
    {15, {10, 0x800080}}, {23, {11, 0x28008C}}, {22, {12, 0x007878}}, {21, {13, 0x640000}}, {24, {14, 0x1CB9FD}}};

unsigned int ExpectedRejectColor(unsigned int word) {
  int rank = INT_MAX;
  unsigned int color = word < 256 ? 0xFFFFFFu : 0u;
  for (const auto& [bit, entry] : kRejectColors) {
    if ((word >> bit) % 2 == 0 || entry.first >= rank) continue;
    rank = entry.first;
    color = entry.second;
  }
  return color;
}

TEST(Multibeam, EachWordHasTheColorOfItsFirstFilter) {
  for (const unsigned int word : SingleBitsAndPairs()) {
    EXPECT_EQ(Multibeam::GetRejectColor(word), ExpectedRejectColor(word)) << std::hex << word;
  }
  EXPECT_EQ(Multibeam::GetRejectColor(0xFF), 0xFFFFFFu);
  EXPECT_EQ(Multibeam::GetRejectColor(0xFFFFFFFF), 0x00FF00u);
}

TEST(Multibeam, TheColorsTestBit16BeforeTheSignAndTheSignBeforeAllOthers) {
  EXPECT_EQ(Multibeam::GetRejectColor(0x80000100), 0xB4B4FFu);
  EXPECT_EQ(Multibeam::GetRejectColor(0x80010000), 0x00FF00u);
  EXPECT_EQ(Multibeam::GetRejectColor(0x80000000), 0xB4B4FFu);
}

TEST(Multibeam, TheColorsTestFlyBeforeStaticAndIhoBeforeCusBeforeCub) {
  EXPECT_EQ(Multibeam::GetRejectColor(0x00108000), 0x408000u);
  EXPECT_EQ(Multibeam::GetRejectColor(0x00E00000), 0x28008Cu);
  EXPECT_EQ(Multibeam::GetRejectColor(0x00600000), 0x007878u);
  EXPECT_EQ(Multibeam::GetRejectColor(0x01200000), 0x640000u);
}

TEST(Multibeam, BitsOfNoFilterAreBlack) {
  for (const int bit : {17, 18, 19, 25, 26, 27, 28, 29, 30}) EXPECT_EQ(Multibeam::GetRejectColor(1u << bit), 0u) << bit;
}

TEST(Multibeam, QualityColorsGoByBits1And0Alone) {
  const unsigned int expected[] = {0x2020FF, 0x008CFF, 0x00FFFF, 0x20FF20};
  for (const unsigned int word : SingleBitsAndPairs()) EXPECT_EQ(Multibeam::GetQualityColor(word), expected[word % 4]) << word;
}

TEST(Multibeam, DetectionColorsGoByBits2And3Alone) {
  const unsigned int expected[] = {0, 0xFF4020, 0x20FF20, 0x00B4F0};
  for (const unsigned int word : SingleBitsAndPairs()) {
    EXPECT_EQ(Multibeam::GetDetectionColor(word), expected[word / 4 % 4]) << word;
  }
}

// ---- Filters --------------------------------------------------------------------------------------------------------

TEST(Multibeam, FiltersAreKnownByName) {
  const std::map<std::string, int> bits = {{"BEA", 8},  {"QUA", 9},  {"RAN", 10}, {"DEP", 11}, {"NAD", 12},
                                           {"SLO", 13}, {"INT", 14}, {"STA", 15}, {"MAN", 16}, {"FLY", 20},
                                           {"CUB", 21}, {"CUS", 22}, {"IHO", 23}, {"SMA", 24}, {"IGN", 31}};
  for (const auto& [name, bit] : bits) {
    unsigned int flag = 0;
    EXPECT_TRUE(Multibeam::GetFilterFlag(name, flag)) << name;
    EXPECT_EQ(flag, 1u << bit) << name;
  }
}

TEST(Multibeam, AnUnknownFilterLeavesTheFlag) {
  for (const char* name : {"", "man", "Man", "MA", "MAN ", " MAN", "MANN", "XXX"}) {
    unsigned int flag = 77;
    EXPECT_FALSE(Multibeam::GetFilterFlag(name, flag)) << name;
    EXPECT_EQ(flag, 77u);
  }
  unsigned int flag = 77;
  EXPECT_FALSE(Multibeam::GetFilterFlag(std::string("MAN\0", 4), flag));
  EXPECT_EQ(flag, 77u);
}

}  // namespace
