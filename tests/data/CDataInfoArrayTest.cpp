#include "zelbase/data/CDataInfoArray.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <type_traits>

#include "tests/data/ArchiveBytes.h"
#include "zelbase/platform/CArchiveException.h"

namespace {

constexpr std::size_t kCountSize = 2;
constexpr std::size_t kEntrySize = 60;

CDataInfoEx Item(const std::string& description) {
  return CDataInfoEx(CDataId(5, 1002, 3, 1), 7, 9, false, description, true, {0x01020304, 2, "Arial", 3, 4, 0xFFFFFFFF}, -2);
}

bool Same(const CDataInfoEx& a, const CDataInfoEx& b) {
  const DATATEXTATTRIBS& first = a.GetDataTxtAttr();
  const DATATEXTATTRIBS& second = b.GetDataTxtAttr();
  return a == b && a.GetDataId().GetKey() == b.GetDataId().GetKey() && a.IsSeparator() == b.IsSeparator() &&
         a.GetUserDescription() == b.GetUserDescription() && a.IsDefaultattribsOn() == b.IsDefaultattribsOn() &&
         first.attrib1 == second.attrib1 && first.attrib2 == second.attrib2 && first.attribText == second.attribText &&
         first.attribFlag1 == second.attribFlag1 && first.attribFlag2 == second.attribFlag2 && first.attrib3 == second.attrib3 &&
         a.IsDefaultFmtSet() == b.IsDefaultFmtSet() && a.GetDecimals() == b.GetDecimals();
}

TEST(CDataInfoArray, Grows) {
  CDataInfoArray array;
  EXPECT_EQ(array.GetSize(), 0);
  EXPECT_EQ(array.Add(Item("a")), 0);
  EXPECT_EQ(array.Add(Item("b")), 1);
  for (int i = 2; i < 100; ++i) EXPECT_EQ(array.Add(array[0]), i);
  EXPECT_EQ(array.GetSize(), 100);
  EXPECT_EQ(array[99].GetUserDescription(), "a");
  EXPECT_EQ(array.GetAt(1).GetUserDescription(), "b");
}

TEST(CDataInfoArray, ElementsAreSetRemovedAndChanged) {
  CDataInfoArray array;
  for (const char* name : {"a", "b", "c"}) array.Add(Item(name));
  array.SetAt(1, Item("x"));
  array[2].SetDecimals(5);
  array.GetAt(2).SetUserDescription("y");
  array.RemoveAt(0);
  ASSERT_EQ(array.GetSize(), 2);
  EXPECT_EQ(array[0].GetUserDescription(), "x");
  EXPECT_EQ(array[1].GetUserDescription(), "y");
  EXPECT_EQ(array[1].GetDecimals(), 5);
  array.RemoveAll();
  EXPECT_EQ(array.GetSize(), 0);
}

TEST(CDataInfoArray, IndexesOutOfRange) {
  CDataInfoArray array;
  array.Add(Item("a"));
  const CDataInfoArray& same = array;
  for (const int index : {-1, 1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    array.SetAt(index, Item("x"));
    array.RemoveAt(index);
    EXPECT_TRUE(Same(array[index], CDataInfoEx()));
    EXPECT_TRUE(Same(same[index], CDataInfoEx()));
    array[index].SetUserDescription("written to nobody");
    EXPECT_EQ(same.GetAt(index).GetUserDescription(), "");
  }
  ASSERT_EQ(array.GetSize(), 1);
  EXPECT_EQ(array[0].GetUserDescription(), "a");
}

TEST(CDataInfoArray, CopiesAreIndependent) {
  CDataInfoArray array;
  array.Add(Item("a"));
  CDataInfoArray copy(array);
  CDataInfoArray assigned;
  assigned.Add(Item("before"));
  assigned = array;
  array[0].SetUserDescription("changed");
  EXPECT_EQ(copy[0].GetUserDescription(), "a");
  ASSERT_EQ(assigned.GetSize(), 1);
  EXPECT_EQ(assigned[0].GetUserDescription(), "a");
  static_assert(std::is_base_of_v<CObject, CDataInfoArray>);
}

// The 60 bytes of an entry, field by field as the table has them.
Bytes& AddEntry(Bytes& bytes, const CDataInfoEx& item) {
  const DATATEXTATTRIBS& attribs = item.GetDataTxtAttr();
  const CDataId& id = item.GetDataId();
  bytes.Zeros(4).Number(id.GetDataType(), 2).Number(id.GetGroupId(), 2).Number(id.GetDeviceNum(), 2);
  bytes.Number(id.GetVesselId(), 2).Number(id.GetKey().size(), 4);
  bytes.Number(item.GetElemId(), 2).Number(item.GetArrayIndex(), 2);
  bytes.Number(item.IsSeparator(), 4).Number(item.GetUserDescription().size(), 4).Number(item.IsDefaultattribsOn(), 4);
  bytes.Number(attribs.attrib1, 4).Number(attribs.attrib2, 4).Number(attribs.attribText.size(), 4);
  bytes.Number(attribs.attribFlag1, 1).Number(attribs.attribFlag2, 1).Zeros(2).Number(attribs.attrib3, 4);
  return bytes.Number(item.IsDefaultFmtSet(), 4).Number(static_cast<unsigned int>(item.GetDecimals()), 4);
}

TEST(CDataInfoArray, AnArchiveHasTheCountThenEntriesOf60BytesThenTheStrings) {
  CDataInfoArray array;
  array.Add(Item("first"));
  array.Add(CDataInfoEx());
  CDataInfoEx third = Item("");
  third.SetSeparator();
  third.SetDefaultattr(false);
  array.Add(third);
  Bytes expected;
  expected.Number(3, 2);
  for (int i = 0; i < 3; ++i) AddEntry(expected, array[i]);
  ASSERT_EQ(expected.Get().size(), kCountSize + 3 * kEntrySize);
  expected.Text("5,1,1002,3").Text("first").Text("Arial").Text("0,0,0,0").Text("5,1,1002,3").Text("Arial");
  EXPECT_EQ(StoredBytes(array), expected.Get());
  EXPECT_EQ(StoredBytes(array, 7), expected.Get());
}

TEST(CDataInfoArray, AnEmptyArrayIsACountOfZero) {
  CDataInfoArray array;
  EXPECT_EQ(StoredBytes(array), std::string(2, '\0'));
  array.Add(Item("a"));
  LoadBytes(array, std::string(2, '\0'));
  EXPECT_EQ(array.GetSize(), 0);
}

TEST(CDataInfoArray, ComesBackAsItWasInPlaceOfWhatWasThere) {
  using namespace std::string_literals;
  CDataInfoArray array;
  for (const std::string& name : {"first"s, ""s, "zero\0byte\r\n"s, std::string(100000, 'x')}) array.Add(Item(name));
  array[1].SetSeparator();
  array[1].SetDefaultattr(false);
  CDataId stale(5, 1002, 3, 1);
  stale.SetUndefined();
  array[2].SetDataId(stale);
  const std::string bytes = StoredBytes(array);
  for (const int bufferSize : {1, 13, 4096}) {
    CDataInfoArray back;
    back.Add(Item("before"));
    LoadBytes(back, bytes, bufferSize);
    ASSERT_EQ(back.GetSize(), array.GetSize());
    for (int i = 0; i < array.GetSize(); ++i) EXPECT_TRUE(Same(back[i], array[i])) << i;
    EXPECT_EQ(back[2].GetDataId().GetKey(), "5,1,1002,3");  // the stale key travels
    EXPECT_EQ(StoredBytes(back), bytes);
  }
}

TEST(CDataInfoArray, ManyElementsHaveALongCount) {
  CDataInfoArray array;
  CDataInfoEx item;
  item.SetDataId(CDataId());
  for (int i = 0; i < 65535; ++i) array.Add(item);
  const std::string bytes = StoredBytes(array);
  EXPECT_EQ(bytes.substr(0, 6), Bytes().Number(0xFFFF, 2).Number(65535, 4).Get());
  EXPECT_EQ(bytes.size(), 6 + 65535 * (kEntrySize + 7));
  CDataInfoArray back;
  LoadBytes(back, bytes);
  EXPECT_EQ(back.GetSize(), 65535);
}

TEST(CDataInfoArray, EveryTruncationThrowsEndOfFileAndLeavesTheArray) {
  CDataInfoArray array;
  array.Add(Item("first"));
  array.Add(Item("second"));
  const std::string bytes = StoredBytes(array);
  CDataInfoArray target;
  target.Add(Item("before"));
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    try {
      LoadBytes(target, bytes.substr(0, length));
      ADD_FAILURE() << "no exception, length " << length;
    } catch (const CArchiveException& failure) {
      EXPECT_EQ(failure.m_cause, CArchiveException::endOfFile);
    }
    ASSERT_EQ(target.GetSize(), 1);
    ASSERT_TRUE(Same(target[0], Item("before")));
  }
  EXPECT_NO_THROW(LoadBytes(target, bytes));
}

TEST(CDataInfoArray, CountsAndLengthsBeyondTheBytesTakeNoMemory) {
  CDataInfoArray array;
  array.Add(Item("first"));
  const std::string bytes = StoredBytes(array);
  CDataInfoArray target;
  const std::string manyEntries = Bytes().Number(0xFFFF, 2).Number(0xFFFFFFFF, 4).Text(bytes.substr(2)).Get();
  EXPECT_THROW(LoadBytes(target, manyEntries), CArchiveException);
  for (const std::size_t place : {12u, 24u, 40u}) {  // key, description, attribute text
    std::string longText = bytes;
    longText.replace(kCountSize + place, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_THROW(LoadBytes(target, longText), CArchiveException);
  }
  EXPECT_EQ(target.GetSize(), 0);
}

TEST(CDataInfoArray, WhatFollowsInTheArchiveIsLeftThere) {
  CDataInfoArray array;
  array.Add(Item("first"));
  CSharedFile file(std::make_shared<const std::string>(StoredBytes(array) + "what follows"));
  CArchive archive(&file, CArchive::load);
  CDataInfoArray back;
  back.Serialize(archive);
  std::string line;
  EXPECT_TRUE(archive.ReadString(line));
  EXPECT_EQ(line, "what follows");
}

}  // namespace
