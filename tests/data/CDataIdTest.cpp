#include "zelbase/data/CDataId.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "tests/support/CommaLocale.h"
#include "zelbase/files/CharBuffer.h"

namespace {

using Numbers = std::tuple<unsigned, unsigned, unsigned, unsigned>;

// In field order.
Numbers NumbersOf(const CDataId& id) { return {id.GetDataType(), id.GetGroupId(), id.GetDeviceNum(), id.GetVesselId()}; }

TEST(CDataId, BeginsWithZeros) {
  const CDataId id;
  EXPECT_EQ(NumbersOf(id), Numbers(0, 0, 0, 0));
  EXPECT_EQ(id.GetKey(), "0,0,0,0");
  EXPECT_EQ(id.GenerateString(), "0,0,0,0");
  EXPECT_FALSE(id.IsDefined());
  EXPECT_FALSE(id.IsValid());
  EXPECT_FALSE(id.IsDevice());
  EXPECT_FALSE(id.IsComputation());
  EXPECT_FALSE(id.IsDataSource());
}

TEST(CDataId, TheConstructorTakesFieldOrderAndTheKeyHasTextOrder) {
  const CDataId id(5, 1002, 3, 1);
  EXPECT_EQ(id.GetDataType(), 5);
  EXPECT_EQ(id.GetGroupId(), 1002);
  EXPECT_EQ(id.GetDeviceNum(), 3);
  EXPECT_EQ(id.GetVesselId(), 1);
  EXPECT_EQ(id.GetKey(), "5,1,1002,3");
}

TEST(CDataId, SetTakesFieldOrderAndIsAlwaysTrue) {
  CDataId id;
  EXPECT_TRUE(id.Set(5, 1002, 3, 1));
  EXPECT_EQ(NumbersOf(id), Numbers(5, 1002, 3, 1));
  EXPECT_EQ(id.GetKey(), "5,1,1002,3");
  EXPECT_TRUE(id.Set(65535, 65535, 65535, 65535));
  EXPECT_EQ(id.GetKey(), "65535,65535,65535,65535");
}

TEST(CDataId, EachSetterChangesItsNumberAndTheKey) {
  CDataId id(5, 1002, 3, 1);
  id.SetDataType(6);
  EXPECT_EQ(id.GetKey(), "6,1,1002,3");
  id.SetGroupId(7);
  EXPECT_EQ(id.GetKey(), "6,1,7,3");
  id.SetDeviceNum(8);
  EXPECT_EQ(id.GetKey(), "6,1,7,8");
  id.SetVesselId(9);
  EXPECT_EQ(id.GetKey(), "6,9,7,8");
  EXPECT_EQ(NumbersOf(id), Numbers(6, 7, 8, 9));
}

TEST(CDataId, GivesOneAndTheSameKeyByReference) {
  const CDataId id(5, 1002, 3, 1);
  EXPECT_EQ(&id.GetKey(), &id.GenerateString());
}

struct TextRow {
  const char* text;
  bool read;
  Numbers numbers;  // in field order
};

// What stays when a text is not read.
const Numbers kBefore(11, 12, 13, 14);

TEST(CDataId, TextsByHand) {
  const std::vector<TextRow> rows = {
      {"5,1,1002,3", true, {5, 1002, 3, 1}},
      {"0,0,0,0", true, {0, 0, 0, 0}},
      {"1,2,3,4,5", true, {1, 3, 4, 2}},
      {"1,2,3,4abc", true, {1, 3, 4, 2}},
      {"1,2,3,4,", true, {1, 3, 4, 2}},
      {" 1,\t2,\n3, \r\v\f4 ", true, {1, 3, 4, 2}},
      {"+1,-1,65536,65535", true, {1, 0, 65535, 65535}},
      {"-0,131073,-65535,007", true, {0, 1, 7, 1}},
      {"100000000000000000000000,0,0,1", true, {0, 0, 1, 0}},  // 10^23 is a multiple of 2^16
      {"", false, kBefore},
      {"1", false, kBefore},
      {"1,2,3", false, kBefore},
      {"1,2,3,", false, kBefore},
      {"1,2,3,x", false, kBefore},
      {"1 ,2,3,4", false, kBefore},
      {"1,2,3 ,4", false, kBefore},
      {",1,2,3,4", false, kBefore},
      {"1,,3,4", false, kBefore},
      {"1;2;3;4", false, kBefore},
      {"1.5,2,3,4", false, kBefore},
      {"- 1,2,3,4", false, kBefore},
      {"+-1,2,3,4", false, kBefore},
      {"0x1,2,3,4", false, kBefore},
      {"x1,2,3,4", false, kBefore},
  };
  for (const TextRow& row : rows) {
    CDataId byKey(11, 12, 13, 14);
    CDataId byText(byKey);
    EXPECT_EQ(byKey.SetFromKey(row.text), row.read) << row.text;
    EXPECT_EQ(byText.SetFromString(row.text), row.read) << row.text;
    EXPECT_EQ(NumbersOf(byKey), row.numbers) << row.text;
    EXPECT_EQ(NumbersOf(byText), row.numbers) << row.text;
    const auto [type, group, device, vessel] = row.numbers;
    char key[64];
    std::snprintf(key, sizeof key, "%u,%u,%u,%u", type, vessel, group, device);
    EXPECT_EQ(byKey.GetKey(), key) << row.text;
  }
}

TEST(CDataId, AZeroByteEndsTheNumbers) {
  using namespace std::string_literals;
  CDataId id(11, 12, 13, 14);
  EXPECT_FALSE(id.SetFromKey("1,2,3\0,4"s));
  EXPECT_EQ(NumbersOf(id), kBefore);
  EXPECT_TRUE(id.SetFromKey("1,2,3,4\0,5"s));
  EXPECT_EQ(NumbersOf(id), Numbers(1, 3, 4, 2));
}

TEST(CDataId, ATextThatIsNotReadLeavesAStaleKeyToo) {
  CDataId id(5, 1002, 3, 1);
  id.SetUndefined();
  EXPECT_FALSE(id.SetFromKey("1,2,3"));
  EXPECT_EQ(NumbersOf(id), Numbers(0, 1002, 3, 1));
  EXPECT_EQ(id.GetKey(), "5,1,1002,3");
}

TEST(CDataId, ItsOwnKeyMayBeTheText) {
  CDataId id(5, 1002, 3, 1);
  id.SetUndefined();
  EXPECT_TRUE(id.SetFromKey(id.GetKey()));
  EXPECT_EQ(NumbersOf(id), Numbers(5, 1002, 3, 1));
  EXPECT_EQ(id.GetKey(), "5,1,1002,3");
}

TEST(CDataId, KeysDoNotDependOnTheLocale) {
  const CommaLocale locale;
  CDataId id(65535, 12345, 1000, 20000);
  EXPECT_EQ(id.GetKey(), "65535,20000,12345,1000");
  EXPECT_TRUE(id.SetFromKey("1000,2000,3000,4000"));
  EXPECT_EQ(NumbersOf(id), Numbers(1000, 3000, 4000, 2000));
}

// The C library reads numbers that fit the way they are meant.
TEST(CDataId, RandomTextsReadAsTheCLibraryReadsThem) {
  std::mt19937 random(20261108);
  const std::string alphabet = "0123456789,,,,,  -+\tx";
  int read = 0;
  int refused = 0;
  for (int round = 0; round < 60000; ++round) {
    std::string text;
    if (round % 2 == 0) text = "1,2,";
    for (std::size_t left = random() % 12; left > 0; --left) text += alphabet[random() % alphabet.size()];
    unsigned short type = 0, vessel = 0, group = 0, device = 0;
    const bool expected = std::sscanf(text.c_str(), "%hu,%hu,%hu,%hu", &type, &vessel, &group, &device) == 4;
    CDataId id(11, 12, 13, 14);
    ASSERT_EQ(id.SetFromKey(text), expected) << text;
    ASSERT_EQ(NumbersOf(id), expected ? Numbers(type, group, device, vessel) : kBefore) << text;
    ++(expected ? read : refused);
  }
  EXPECT_GT(read, 1000);
  EXPECT_GT(refused, 1000);
}

TEST(CDataId, SetUndefinedLeavesTheKeyShowingTheOldType) {
  CDataId id(5, 1002, 3, 1);
  id.SetUndefined();
  EXPECT_FALSE(id.IsDefined());
  EXPECT_EQ(NumbersOf(id), Numbers(0, 1002, 3, 1));
  EXPECT_EQ(id.GetKey(), "5,1,1002,3");
  EXPECT_EQ(id, CDataId(0, 1002, 3, 1));
  id.SetVesselId(2);
  EXPECT_EQ(id.GetKey(), "0,2,1002,3");
}

TEST(CDataId, CopiesTakeTheStaleKey) {
  CDataId id(5, 1002, 3, 1);
  id.SetUndefined();
  const CDataId copy(id);
  CDataId assigned;
  assigned = id;
  EXPECT_EQ(copy.GetKey(), "5,1,1002,3");
  EXPECT_EQ(assigned.GetKey(), "5,1,1002,3");
  EXPECT_FALSE(assigned.IsDefined());
}

TEST(CDataId, ValidityLooksAtTypeGroupAndDeviceAndNotAtTheVessel) {
  EXPECT_TRUE(CDataId(1, 1, 1, 0).IsValid());
  EXPECT_TRUE(CDataId(1, 1, 1, 1).IsValid());
  EXPECT_FALSE(CDataId(0, 1, 1, 1).IsValid());
  EXPECT_FALSE(CDataId(1, 0, 1, 1).IsValid());
  EXPECT_FALSE(CDataId(1, 1, 0, 1).IsValid());
  EXPECT_TRUE(CDataId(1, 0, 0, 0).IsDefined());
}

TEST(CDataId, EveryGroupIsOneOfThreeClassesOrOfNone) {
  for (unsigned int group = 0; group <= 65535; ++group) {
    const CDataId id(1, static_cast<unsigned short>(group), 1, 1);
    ASSERT_EQ(id.IsDevice(), group > 0 && group < 1000) << group;
    ASSERT_EQ(id.IsComputation(), group > 1000 && group < 1117) << group;
    ASSERT_EQ(id.IsDataSource(), group > 2000 && group < 2010) << group;
  }
}

TEST(CDataId, EqualityLooksAtAllFourNumbersAndNotAtTheKey) {
  const CDataId id(1, 2, 3, 4);
  EXPECT_TRUE(id == CDataId(1, 2, 3, 4));
  EXPECT_FALSE(id != CDataId(1, 2, 3, 4));
  for (const CDataId& other : {CDataId(9, 2, 3, 4), CDataId(1, 9, 3, 4), CDataId(1, 2, 9, 4), CDataId(1, 2, 3, 9)}) {
    EXPECT_FALSE(id == other);
    EXPECT_TRUE(id != other);
  }
  CDataId stale(5, 1002, 3, 1);
  stale.SetUndefined();
  EXPECT_NE(stale.GetKey(), CDataId(0, 1002, 3, 1).GetKey());
  EXPECT_TRUE(stale == CDataId(0, 1002, 3, 1));
}

TEST(CDataId, TheOrderIsThatOfTypeGroupDeviceVessel) {
  std::mt19937 random(20261109);
  const auto number = [&] { return static_cast<unsigned short>(random() % 3 == 0 ? random() % 65536 : random() % 3); };
  for (int round = 0; round < 5000; ++round) {
    const CDataId a(number(), number(), number(), number());
    const CDataId b(number(), number(), number(), number());
    ASSERT_EQ(a < b, NumbersOf(a) < NumbersOf(b));
    ASSERT_EQ(b < a, NumbersOf(b) < NumbersOf(a));
    ASSERT_EQ(a == b, NumbersOf(a) == NumbersOf(b));
  }
  EXPECT_TRUE(CDataId(1, 2, 3, 4) < CDataId(1, 2, 3, 5));
  EXPECT_TRUE(CDataId(1, 65535, 65535, 65535) < CDataId(2, 0, 0, 0));
  EXPECT_TRUE(CDataId(1, 1, 9, 9) < CDataId(1, 2, 1, 1));  // the vessel, second in the text, comes last
}

TEST(CDataId, SavesEightBytesInFieldOrderAndMachineByteOrder) {
  CharBuffer buffer;
  CDataId(0x0102, 0x0304, 0x0506, 0x0708).Save(buffer);
  ASSERT_EQ(buffer.Size(), 8);
  const unsigned short expected[] = {0x0102, 0x0304, 0x0506, 0x0708};
  EXPECT_EQ(std::memcmp(buffer.Begin(), expected, 8), 0);
  CDataId().Save(buffer);
  EXPECT_EQ(buffer.Size(), 16);
}

TEST(CDataId, LoadingLeavesTheKeyStale) {
  CharBuffer buffer;
  CDataId(5, 1002, 3, 1).Save(buffer);
  buffer.SetPos(0);
  CDataId id(6, 7, 8, 9);
  id.Load(buffer);
  EXPECT_EQ(buffer.GetPos(), 8);
  EXPECT_EQ(NumbersOf(id), Numbers(5, 1002, 3, 1));
  EXPECT_EQ(id.GetKey(), "6,9,7,8");
  EXPECT_EQ(id, CDataId(5, 1002, 3, 1));
  id.SetDeviceNum(3);
  EXPECT_EQ(id.GetKey(), "5,1,1002,3");
}

TEST(CDataId, LoadingFromAShortBufferGivesZeros) {
  CharBuffer buffer;
  const unsigned short words[] = {7, 8};
  buffer.Write(words, 4);
  buffer.SetPos(0);
  CDataId id(1, 2, 3, 4);
  id.Load(buffer);
  EXPECT_EQ(NumbersOf(id), Numbers(7, 8, 0, 0));
}

}  // namespace
