#include "zelbase/data/CCF_DataInfo.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/data/ArchiveBytes.h"

namespace {

const CDataId kId(5, 1002, 3, 1);

std::string Written(const CDataInfo& info) {
  CCF_DataInfo payload;
  payload.SetDataInfo(info);
  return StoredBytes(payload);
}

TEST(CCF_DataInfo, HoldsADataInfo) {
  CCF_DataInfo payload;
  EXPECT_EQ(payload.GetDataInfo(), CDataInfo());
  payload.SetDataInfo(CDataInfo(kId, 7, 9));
  EXPECT_EQ(payload.GetDataInfo(), CDataInfo(kId, 7, 9));
  CDataInfo info;
  payload.GetDataInfo(info);
  EXPECT_EQ(info, CDataInfo(kId, 7, 9));
}

TEST(CCF_DataInfo, WritesKeyAndElementWithACommaAtTheEndAndNoLineEnd) {
  EXPECT_EQ(Written(CDataInfo(kId, 7, 9)), "5,1,1002,3,7,");
  EXPECT_EQ(Written(CDataInfo()), "0,0,0,0,65535,");
}

TEST(CCF_DataInfo, WritesTheKeyThoughItIsStale) {
  CDataId stale = kId;
  stale.SetUndefined();
  EXPECT_EQ(Written(CDataInfo(stale, 7, 9)), "5,1,1002,3,7,");
}

TEST(CCF_DataInfo, KeepsIdentifierAndElementAndLosesTheArrayIndex) {
  CCF_DataInfo back;
  LoadBytes(back, Written(CDataInfo(kId, 7, 9)));
  EXPECT_EQ(back.GetDataInfo(), CDataInfo(kId, 7, 65535));
}

TEST(CCF_DataInfo, ReadingKeepsTheReceiversArrayIndex) {
  CCF_DataInfo back;
  back.SetDataInfo(CDataInfo(CDataId(1, 2, 3, 4), 5, 6));
  LoadBytes(back, Written(CDataInfo(kId, 7, 9)));
  EXPECT_EQ(back.GetDataInfo(), CDataInfo(kId, 7, 6));
}

TEST(CCF_DataInfo, ReadsALineAndNoMore) {
  CCF_DataInfo back;
  LoadBytes(back, "5,1,1002,3,7,8\r\n9,9,9,9,9,9\n");
  EXPECT_EQ(back.GetDataInfo(), CDataInfo(kId, 7, 8));
  EXPECT_EQ(back.GetDataInfo().GetDataId().GetKey(), "5,1,1002,3");
}

TEST(CCF_DataInfo, ALineThatDoesNotReadChangesNothing) {
  const CDataInfo before(CDataId(1, 2, 3, 4), 5, 6);
  for (const std::string bytes : {"", "\n5,1,1002,3,7,", "5,1,1002,3,", "x", "5;1;1002;3;7"}) {
    CCF_DataInfo back;
    back.SetDataInfo(before);
    LoadBytes(back, bytes);
    EXPECT_EQ(back.GetDataInfo(), before) << bytes;
  }
}

TEST(CCF_DataInfo, IsMadeByItsName) {
  const std::unique_ptr<CObject> made(CRuntimeClass::CreateObject("CCF_DataInfo"));
  ASSERT_NE(dynamic_cast<CCF_DataInfo*>(made.get()), nullptr);
  EXPECT_EQ(made->GetRuntimeClass(), CCF_DataInfo::GetThisClass());
  EXPECT_EQ(CRuntimeClass::FromName("CCF_DataInfo"), CCF_DataInfo::GetThisClass());
  const std::unique_ptr<CObject> created(CCF_DataInfo::CreateObject());
  EXPECT_NE(dynamic_cast<CCF_DataInfo*>(created.get()), nullptr);
}

}  // namespace
