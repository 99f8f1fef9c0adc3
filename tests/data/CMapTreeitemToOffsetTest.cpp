#include "zelbase/data/CMapTreeitemToOffset.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <type_traits>

#include "tests/data/ArchiveBytes.h"
#include "zelbase/platform/CArchiveException.h"

namespace {

CCompOffset Offset(unsigned int type, const std::string& name = "", double x = 0) {
  CCompOffset offset;
  offset.SetOffsetType(type);
  offset.SetOffsetName(name);
  offset.SetOffset(x, -2.5, 1e308);
  offset.SetOffsetDataId(CDataId(5, 1002, 3, 1));
  return offset;
}

TEST(CMapTreeitemToOffset, SetsLooksUpAndRemoves) {
  CMapTreeitemToOffset map;
  map.SetAt(3, Offset(1, "bow"));
  map[4] = Offset(1, "stern");
  EXPECT_EQ(map.GetCount(), 2);
  CCompOffset offset;
  EXPECT_TRUE(map.Lookup(3, offset));
  EXPECT_EQ(offset.GetOffsetName(), "bow");
  EXPECT_FALSE(map.Lookup(5, offset));
  EXPECT_EQ(offset.GetOffsetName(), "bow");
  EXPECT_TRUE(map.RemoveKey(3));
  EXPECT_FALSE(map.RemoveKey(3));
  map.RemoveAll();
  EXPECT_EQ(map.GetCount(), 0);
}

TEST(CMapTreeitemToOffset, FindsTheLowestRowByTheOffsetsOwnEquality) {
  CMapTreeitemToOffset map;
  map.SetAt(9, Offset(1, "bow", 1.0));
  map.SetAt(8, Offset(1, "bow", 2.0));  // positions do not count for a name
  map.SetAt(7, Offset(1, "Bow", 1.0));
  unsigned int row = 0;
  EXPECT_TRUE(map.GetItemHandle(Offset(1, "bow", 3.0), row));
  EXPECT_EQ(row, 8u);
}

TEST(CMapTreeitemToOffset, AnOffsetOfUnknownTypeIsNeverFound) {
  CMapTreeitemToOffset map;
  map.SetAt(9, Offset(7));
  unsigned int row = 77;
  EXPECT_FALSE(map.GetItemHandle(Offset(7), row));
  EXPECT_FALSE(map.GetItemHandle(map[9], row));
  EXPECT_EQ(row, 77u);
}

TEST(CMapTreeitemToOffset, NoHitLeavesTheHandle) {
  CMapTreeitemToOffset map;
  unsigned int row = 77;
  EXPECT_FALSE(map.GetItemHandle(CCompOffset(), row));
  map.SetAt(1, Offset(2));
  EXPECT_FALSE(map.GetItemHandle(CCompOffset(), row));
  EXPECT_EQ(row, 77u);
}

// 4 + 64 bytes, as the table has them.
Bytes& AddEntry(Bytes& bytes, unsigned int row, const CCompOffset& offset) {
  const CDataId& id = offset.GetOffsetDataId();
  double x = 0, y = 0, z = 0;
  offset.GetOffset(x, y, z);
  bytes.Number(row, 4).Zeros(4).Number(offset.GetOffTrackSelection(), 4).Number(offset.GetOffsetType(), 4);
  bytes.Number(offset.GetOffsetVesselId(), 4).Number(offset.GetOffsetName().size(), 4);
  bytes.Number(id.GetDataType(), 2).Number(id.GetGroupId(), 2).Number(id.GetDeviceNum(), 2).Number(id.GetVesselId(), 2);
  return bytes.Number(id.GetKey().size(), 4).Zeros(8).Double(x).Double(y).Double(z);
}

TEST(CMapTreeitemToOffset, AnArchiveHasTheCountThenEntriesOf68BytesInAscendingOrderThenTheStrings) {
  CMapTreeitemToOffset map;
  CCompOffset selected = Offset(3, "bow");
  selected.SetOffTrackSelection(0x01020304);
  selected.SetOffsetVesselId(0xFFFFFFFF);
  map.SetAt(0xFFFFFFFF, selected);
  map.SetAt(2, Offset(1, "stern", 1.5));
  Bytes expected;
  expected.Number(2, 2);
  AddEntry(expected, 2, Offset(1, "stern", 1.5));
  AddEntry(expected, 0xFFFFFFFF, selected);
  ASSERT_EQ(expected.Get().size(), 2 + 2 * 68u);
  EXPECT_EQ(StoredBytes(map), expected.Text("stern").Text("5,1,1002,3").Text("bow").Text("5,1,1002,3").Get());
}

TEST(CMapTreeitemToOffset, ComesBackAsItWasInPlaceOfWhatWasThere) {
  CMapTreeitemToOffset map;
  map.SetAt(1, Offset(7, "a, b", std::nan("")));
  map.SetAt(2, Offset(2, "", -HUGE_VAL));
  map.SetAt(3, CCompOffset());
  CMapTreeitemToOffset back;
  back.SetAt(9, CCompOffset());
  LoadBytes(back, StoredBytes(map), 5);
  EXPECT_EQ(back.GetCount(), 3);
  EXPECT_EQ(StoredBytes(back), StoredBytes(map));
  double x = 0, y = 0, z = 0;
  back[1].GetOffset(x, y, z);
  EXPECT_TRUE(std::isnan(x));
  EXPECT_EQ(y, -2.5);
  EXPECT_EQ(z, 1e308);
  EXPECT_EQ(back[1].GetOffsetName(), "a, b");
}

TEST(CMapTreeitemToOffset, EveryTruncationThrowsEndOfFileAndLeavesTheMap) {
  CMapTreeitemToOffset map;
  map.SetAt(1, Offset(1, "stern"));
  map.SetAt(2, Offset(1, "bow"));
  const std::string bytes = StoredBytes(map);
  CMapTreeitemToOffset target;
  target.SetAt(9, Offset(1, "before"));
  const std::string before = StoredBytes(target);
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_THROW(LoadBytes(target, bytes.substr(0, length)), CArchiveException) << length;
    ASSERT_EQ(StoredBytes(target), before);
  }
  EXPECT_THROW(LoadBytes(target, "\xFF\xFF\xFF\xFF\xFF\xFF" + bytes.substr(2)), CArchiveException);
  EXPECT_EQ(StoredBytes(target), before);
}

TEST(CMapTreeitemToOffset, OfTwoEntriesOfOneRowTheLaterCounts) {
  CMapTreeitemToOffset map;
  map.SetAt(1, Offset(1, "first"));
  map.SetAt(2, Offset(1, "other"));
  std::string bytes = StoredBytes(map);
  bytes[2 + 68] = 1;
  CMapTreeitemToOffset back;
  LoadBytes(back, bytes);
  EXPECT_EQ(back.GetCount(), 1);
  EXPECT_EQ(back[1].GetOffsetName(), "other");
  static_assert(std::is_base_of_v<CObject, CMapTreeitemToOffset>);
}

}  // namespace
