#include "zelbase/data/CMapTreeitemToDatainfo.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <string>
#include <type_traits>

#include "tests/data/ArchiveBytes.h"
#include "zelbase/platform/CArchiveException.h"

namespace {

_TREEITEM* Row(std::uintptr_t address) { return reinterpret_cast<_TREEITEM*>(address); }

const CDataInfo kDepth(CDataId(5, 1002, 3, 1), 7, 65535);
const CDataInfo kSpeed(CDataId(6, 12, 1, 1), 2, 4);

TEST(CMapTreeitemToDatainfo, SetsLooksUpAndRemoves) {
  CMapTreeitemToDatainfo map;
  EXPECT_EQ(map.GetCount(), 0);
  map.SetAt(Row(16), kDepth);
  map[Row(32)] = kSpeed;
  map.SetAt(Row(16), kSpeed);
  EXPECT_EQ(map.GetCount(), 2);
  CDataInfo info;
  EXPECT_TRUE(map.Lookup(Row(16), info));
  EXPECT_EQ(info, kSpeed);
  EXPECT_EQ(map[Row(48)], CDataInfo());  // enters the map
  EXPECT_EQ(map.GetCount(), 3);
  EXPECT_TRUE(map.RemoveKey(Row(32)));
  EXPECT_FALSE(map.RemoveKey(Row(32)));
  info = kDepth;
  EXPECT_FALSE(map.Lookup(Row(32), info));
  EXPECT_EQ(info, kDepth);
  map.RemoveAll();
  EXPECT_EQ(map.GetCount(), 0);
}

TEST(CMapTreeitemToDatainfo, TheNullRowIsARow) {
  CMapTreeitemToDatainfo map;
  map.SetAt(nullptr, kDepth);
  _TREEITEM* row = Row(16);
  EXPECT_TRUE(map.GetItemHandle(kDepth, row));
  EXPECT_EQ(row, nullptr);
}

TEST(CMapTreeitemToDatainfo, FindsTheLowestRowOfAValue) {
  CMapTreeitemToDatainfo map;
  map.SetAt(Row(48), kDepth);
  map.SetAt(Row(32), kDepth);
  map.SetAt(Row(16), kSpeed);
  _TREEITEM* row = nullptr;
  const CMapTreeitemToDatainfo& same = map;
  EXPECT_TRUE(same.GetItemHandle(CDataInfo(CDataId(5, 1002, 3, 1), 7, 65535), row));
  EXPECT_EQ(row, Row(32));
  EXPECT_TRUE(same.GetItemHandle(kSpeed, row));
  EXPECT_EQ(row, Row(16));
}

TEST(CMapTreeitemToDatainfo, NoHitLeavesTheHandle) {
  CMapTreeitemToDatainfo map;
  _TREEITEM* row = Row(7);
  EXPECT_FALSE(map.GetItemHandle(kDepth, row));
  map.SetAt(Row(16), kDepth);
  EXPECT_FALSE(map.GetItemHandle(CDataInfo(CDataId(5, 1002, 3, 1), 7, 0), row));
  EXPECT_EQ(row, Row(7));
}

TEST(CMapTreeitemToDatainfo, CopiesAreIndependent) {
  CMapTreeitemToDatainfo map;
  map.SetAt(Row(16), kDepth);
  CMapTreeitemToDatainfo copy(map);
  CMapTreeitemToDatainfo assigned;
  assigned = map;
  map.RemoveAll();
  EXPECT_EQ(copy.GetCount(), 1);
  EXPECT_EQ(assigned.GetCount(), 1);
  static_assert(std::is_base_of_v<CObject, CMapTreeitemToDatainfo>);
}

// 4 + 16 bytes, as the table has them.
Bytes& AddEntry(Bytes& bytes, unsigned int row, const CDataInfo& info) {
  const CDataId& id = info.GetDataId();
  bytes.Number(row, 4).Number(id.GetDataType(), 2).Number(id.GetGroupId(), 2).Number(id.GetDeviceNum(), 2);
  bytes.Number(id.GetVesselId(), 2).Number(id.GetKey().size(), 4);
  return bytes.Number(info.GetElemId(), 2).Number(info.GetArrayIndex(), 2);
}

TEST(CMapTreeitemToDatainfo, AnArchiveHasTheCountThenEntriesOf20BytesInAscendingOrderThenTheStrings) {
  CMapTreeitemToDatainfo map;
  map.SetAt(Row(0x89ABCDEF), kSpeed);
  map.SetAt(Row(16), kDepth);
  Bytes expected;
  expected.Number(2, 2);
  AddEntry(expected, 16, kDepth);
  AddEntry(expected, 0x89ABCDEF, kSpeed);
  ASSERT_EQ(expected.Get().size(), 2 + 2 * 20u);
  EXPECT_EQ(StoredBytes(map), expected.Text("5,1,1002,3").Text("6,1,12,1").Get());
}

// The bytes that docs/data-identifiers.md shows.
TEST(CMapTreeitemToDatainfo, WritesTheExampleOfTheFormatPage) {
  CMapTreeitemToDatainfo map;
  map.SetAt(Row(16), CDataInfo(CDataId(5, 1002, 3, 1), 7, 9));
  const unsigned char example[] = {0x01, 0x00, 0x10, 0x00, 0x00, 0x00, 0x05, 0x00, 0xEA, 0x03, 0x03, 0x00, 0x01, 0x00, 0x0A, 0x00,
                                   0x00, 0x00, 0x07, 0x00, 0x09, 0x00, 0x35, 0x2C, 0x31, 0x2C, 0x31, 0x30, 0x30, 0x32, 0x2C, 0x33};
  EXPECT_EQ(StoredBytes(map), std::string(std::begin(example), std::end(example)));
}

TEST(CMapTreeitemToDatainfo, OfAnAddressTheLow32BitsTravel) {
  if constexpr (sizeof(void*) > 4) {
    CMapTreeitemToDatainfo map;
    map.SetAt(Row(static_cast<std::uintptr_t>(0x12345678) << 32 | 0x10), kDepth);
    map.SetAt(Row(static_cast<std::uintptr_t>(0x12345679) << 32 | 0x10), kSpeed);
    CMapTreeitemToDatainfo back;
    LoadBytes(back, StoredBytes(map));
    EXPECT_EQ(back.GetCount(), 1);
    CDataInfo info;
    EXPECT_TRUE(back.Lookup(Row(0x10), info));
    EXPECT_EQ(info, kSpeed);  // the later of two that have become one
  }
}

TEST(CMapTreeitemToDatainfo, ComesBackAsItWasInPlaceOfWhatWasThere) {
  CMapTreeitemToDatainfo map;
  CDataId stale(5, 1002, 3, 1);
  stale.SetUndefined();
  map.SetAt(Row(16), kDepth);
  map.SetAt(Row(32), CDataInfo(stale, 1, 2));
  map.SetAt(nullptr, CDataInfo());
  CMapTreeitemToDatainfo back;
  back.SetAt(Row(64), kSpeed);
  LoadBytes(back, StoredBytes(map), 5);
  EXPECT_EQ(back.GetCount(), 3);
  CDataInfo info;
  EXPECT_TRUE(back.Lookup(Row(32), info));
  EXPECT_EQ(info, CDataInfo(CDataId(0, 1002, 3, 1), 1, 2));
  EXPECT_EQ(info.GetDataId().GetKey(), "5,1,1002,3");
  EXPECT_EQ(StoredBytes(back), StoredBytes(map));
}

TEST(CMapTreeitemToDatainfo, EveryTruncationThrowsEndOfFileAndLeavesTheMap) {
  CMapTreeitemToDatainfo map;
  map.SetAt(Row(16), kDepth);
  map.SetAt(Row(32), kSpeed);
  const std::string bytes = StoredBytes(map);
  CMapTreeitemToDatainfo target;
  target.SetAt(Row(64), kSpeed);
  const std::string before = StoredBytes(target);
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_THROW(LoadBytes(target, bytes.substr(0, length)), CArchiveException) << length;
    ASSERT_EQ(StoredBytes(target), before);
  }
  EXPECT_THROW(LoadBytes(target, "\xFF\xFF\xFF\xFF\xFF\xFF" + bytes.substr(2)), CArchiveException);
  EXPECT_EQ(StoredBytes(target), before);
}

}  // namespace
