#include "zelbase/data/CDataInfo.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace {

const CDataId kId(5, 1002, 3, 1);

TEST(CDataInfo, BeginsWithoutElementAndIndex) {
  const CDataInfo info;
  EXPECT_EQ(info.GetDataId(), CDataId());
  EXPECT_EQ(info.GetElemId(), 65535);
  EXPECT_EQ(info.GetArrayIndex(), 65535);
  EXPECT_FALSE(info.HasElemId());
  EXPECT_FALSE(info.HasArrayIndex());
  EXPECT_FALSE(info.IsValid());
  EXPECT_EQ(info.GenerateString(), "0,0,0,0,65535");
}

TEST(CDataInfo, TakesAllThree) {
  const CDataInfo made(kId, 7, 9);
  CDataInfo set;
  set.SetInfo(kId, 7, 9);
  for (const CDataInfo& info : {made, set, CDataInfo(made)}) {
    EXPECT_EQ(info.GetDataId(), kId);
    EXPECT_EQ(info.GetElemId(), 7);
    EXPECT_EQ(info.GetArrayIndex(), 9);
  }
}

TEST(CDataInfo, GetInfoGivesIdentifierAndElementAndNotTheIndex) {
  CDataId id;
  unsigned short element = 0;
  CDataInfo(kId, 7, 9).GetInfo(id, element);
  EXPECT_EQ(id, kId);
  EXPECT_EQ(id.GetKey(), "5,1,1002,3");
  EXPECT_EQ(element, 7);
}

TEST(CDataInfo, TheIdentifierIsGivenByReferenceWithItsKey) {
  CDataInfo info;
  CDataId stale = kId;
  stale.SetUndefined();
  info.SetDataId(stale);
  EXPECT_EQ(&info.GetDataId(), &info.GetDataId());
  EXPECT_EQ(info.GetDataId().GetKey(), "5,1,1002,3");
}

TEST(CDataInfo, ElementAndIndexExistBelow65535) {
  CDataInfo info;
  info.SetElemId(65534);
  info.SetArrayIndex(65534);
  EXPECT_TRUE(info.HasElemId());
  EXPECT_TRUE(info.HasArrayIndex());
  info.SetElemId(0);
  info.SetArrayIndex(0);
  EXPECT_TRUE(info.HasElemId());
  EXPECT_TRUE(info.HasArrayIndex());
  info.SetElemId(65535);
  info.SetArrayIndex(65535);
  EXPECT_FALSE(info.HasElemId());
  EXPECT_FALSE(info.HasArrayIndex());
}

TEST(CDataInfo, IsValidWithAValidIdentifierAndAnElement) {
  EXPECT_TRUE(CDataInfo(CDataId(1, 1, 1, 0), 0, 65535).IsValid());
  EXPECT_FALSE(CDataInfo(CDataId(1, 1, 1, 0), 65535, 0).IsValid());
  EXPECT_FALSE(CDataInfo(CDataId(0, 1, 1, 1), 0, 0).IsValid());
}

TEST(CDataInfo, EqualityLooksAtAllSixNumbers) {
  const CDataInfo info(kId, 7, 9);
  EXPECT_TRUE(info == CDataInfo(kId, 7, 9));
  EXPECT_FALSE(info != CDataInfo(kId, 7, 9));
  for (const CDataInfo& other : {CDataInfo(CDataId(5, 1002, 3, 2), 7, 9), CDataInfo(kId, 8, 9), CDataInfo(kId, 7, 65535)}) {
    EXPECT_FALSE(info == other);
    EXPECT_TRUE(info != other);
  }
}

TEST(CDataInfo, WritesSixNumbersWithAnIndexAndFiveWithoutOne) {
  EXPECT_EQ(CDataInfo(kId, 7, 9).GenerateString(), "5,1,1002,3,7,9");
  EXPECT_EQ(CDataInfo(kId, 7, 65534).GenerateString(), "5,1,1002,3,7,65534");
  EXPECT_EQ(CDataInfo(kId, 7, 65535).GenerateString(), "5,1,1002,3,7");
  EXPECT_EQ(CDataInfo(kId, 65535, 65535).GenerateString(), "5,1,1002,3,65535");
}

TEST(CDataInfo, WritesTheIdentifiersNumbersAndNotItsKey) {
  CDataId stale = kId;
  stale.SetUndefined();
  EXPECT_EQ(CDataInfo(stale, 7, 65535).GenerateString(), "0,1,1002,3,7");
}

TEST(CDataInfo, FiveNumbersKeepTheReceiversArrayIndex) {
  CDataInfo info(CDataId(), 1, 9);
  EXPECT_TRUE(info.SetFromString(CDataInfo(kId, 7, 65535).GenerateString()));
  EXPECT_EQ(info, CDataInfo(kId, 7, 9));
  EXPECT_EQ(info.GetDataId().GetKey(), "5,1,1002,3");
}

struct TextRow {
  const char* text;
  bool read;
  CDataInfo info;
};

TEST(CDataInfo, TextsByHand) {
  const CDataInfo before(CDataId(11, 12, 13, 14), 15, 16);
  const std::vector<TextRow> rows = {
      {"5,1,1002,3,7,9", true, CDataInfo(kId, 7, 9)},
      {"5,1,1002,3,7,65535", true, CDataInfo(kId, 7, 65535)},
      {"5,1,1002,3,7,9,10", true, CDataInfo(kId, 7, 9)},
      {"5,1,1002,3,7,9x", true, CDataInfo(kId, 7, 9)},
      {"5,1,1002,3,7", true, CDataInfo(kId, 7, 16)},
      {"5,1,1002,3,7,", true, CDataInfo(kId, 7, 16)},
      {"5,1,1002,3,7,x", true, CDataInfo(kId, 7, 16)},
      {"5,1,1002,3,7 ,9", true, CDataInfo(kId, 7, 16)},
      {" 5, 1, 1002, 3, 7, -1", true, CDataInfo(kId, 7, 65535)},
      {"5,1,1002,3", false, before},
      {"5,1,1002,3,", false, before},
      {"", false, before},
      {"x", false, before},
  };
  for (const TextRow& row : rows) {
    CDataInfo info = before;
    EXPECT_EQ(info.SetFromString(row.text), row.read) << row.text;
    EXPECT_EQ(info, row.info) << row.text;
  }
}

TEST(CDataInfo, RandomTextsReadAsTheCLibraryReadsThem) {
  std::mt19937 random(20261110);
  const std::string alphabet = "0123456789,,,,,,  -+x";
  int counts[7] = {};
  for (int round = 0; round < 60000; ++round) {
    std::string text = round % 3 == 0 ? "" : "1,2,3,";
    for (std::size_t left = random() % 12; left > 0; --left) text += alphabet[random() % alphabet.size()];
    unsigned short n[6] = {};
    const int read = std::max(0, std::sscanf(text.c_str(), "%hu,%hu,%hu,%hu,%hu,%hu", &n[0], &n[1], &n[2], &n[3], &n[4], &n[5]));
    CDataInfo expected(CDataId(11, 12, 13, 14), 15, 16);
    CDataInfo info = expected;
    if (read >= 5) expected = CDataInfo(CDataId(n[0], n[2], n[3], n[1]), n[4], read == 6 ? n[5] : 16);
    ASSERT_EQ(info.SetFromString(text), read >= 5) << text;
    ASSERT_EQ(info, expected) << text;
    ++counts[read];
  }
  EXPECT_GT(counts[5], 100);
  EXPECT_GT(counts[6], 100);
  EXPECT_GT(counts[4], 100);
}

}  // namespace
