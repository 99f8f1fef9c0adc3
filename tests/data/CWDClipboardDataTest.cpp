#include "zelbase/data/CWDClipboardData.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "zelbase/data/CCF_DataInfo.h"
#include "zelbase/data/CCF_DispInfo.h"
#include "zelbase/data/CCF_HDROP.h"
#include "zelbase/platform/CArchive.h"
#include "zelbase/platform/COleDataObject.h"
#include "zelbase/platform/COleDataSource.h"
#include "zelbase/platform/ClipboardFormats.h"
#include "zelbase/platform/MemoryClipboard.h"

namespace {

constexpr int kDroppedFiles = 0;
constexpr int kDataInfo = 1;
constexpr int kDispInfo = 2;
constexpr int kStringData = 3;

const CDataInfo kDepth(CDataId(5, 1002, 3, 1), 7, 9);

HGLOBAL Block(const std::string& bytes) { return std::make_shared<const std::string>(bytes); }

// An object that offers what the source does.
COleDataObject Over(const COleDataSource& source) {
  COleDataObject object;
  object.Attach(source);
  return object;
}

TEST(CWDClipboardData, KnowsFourFormats) {
  const CWDClipboardData data;
  EXPECT_EQ(data.GetClipboardFormat(kDroppedFiles), 15);
  EXPECT_EQ(data.GetClipboardFormat(kDataInfo), RegisterClipboardFormatA("CF_WD_DATAINFO"));
  EXPECT_EQ(data.GetClipboardFormat(kDispInfo), RegisterClipboardFormatA("CF_WD_DISPINFO"));
  EXPECT_EQ(data.GetClipboardFormat(kStringData), RegisterClipboardFormatA("CF_WD_STRINGDATA"));
  for (const int index : {kDataInfo, kDispInfo, kStringData}) EXPECT_GE(data.GetClipboardFormat(index), 0xC000);
  for (const int index : {-1, 4, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(data.GetClipboardFormat(index), 0);
  }
}

TEST(CWDClipboardData, AddFormatGivesTheNextIndexFromFourOn) {
  CWDClipboardData data;
  EXPECT_EQ(data.AddFormat("CWDClipboardDataTest"), 4);
  EXPECT_EQ(data.GetClipboardFormat(4), RegisterClipboardFormatA("CWDClipboardDataTest"));
  EXPECT_EQ(data.AddFormat("CWDClipboardDataTest, another"), 5);
}

TEST(CWDClipboardData, AKnownNameIsAppendedAgain) {
  CWDClipboardData data;
  EXPECT_EQ(data.AddFormat("cf_wd_datainfo"), 4);
  EXPECT_EQ(data.GetClipboardFormat(4), data.GetClipboardFormat(kDataInfo));
}

TEST(CWDClipboardData, AnEmptyNameHasNoNumber) {
  CWDClipboardData data;
  EXPECT_EQ(data.AddFormat(""), 4);
  EXPECT_EQ(data.GetClipboardFormat(4), 0);
  COleDataSource source;
  CCF_DataInfo payload;
  data.SetData(&source, &payload, 4);
  EXPECT_TRUE(source.Content()->Formats().empty());
}

TEST(CWDClipboardData, ThereIsOne) {
  EXPECT_EQ(&CWDClipboardData::Get(), &CWDClipboardData::Get());
  static_assert(std::has_virtual_destructor_v<CWDClipboardData>);
}

TEST(CWDClipboardData, DataInfoTravels) {
  CWDClipboardData data;
  COleDataSource source;
  CCF_DataInfo payload;
  payload.SetDataInfo(kDepth);
  data.SetData(&source, &payload, kDataInfo, nullptr);
  const HGLOBAL block = source.Content()->Block(data.GetClipboardFormat(kDataInfo));
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(*block, "5,1,1002,3,7,");  // of exactly that length
  COleDataObject object = Over(source);
  CCF_DataInfo back;
  EXPECT_TRUE(data.GetData(&object, &back, kDataInfo));
  EXPECT_EQ(back.GetDataInfo(), CDataInfo(kDepth.GetDataId(), 7, 65535));
}

TEST(CWDClipboardData, DispInfoTravelsOverTheClipboard) {
  MemoryClipboard clipboard;
  const PlatformOverride<PlatformClipboard> guard(clipboard);
  CWDClipboardData data;
  CCF_DispInfo payload;
  payload.SetGroup("group\n");
  payload.SetType("type\n");
  payload.SetName(std::string(10000, 'n'));  // longer than a buffer
  {
    COleDataSource source;
    data.SetData(&source, &payload, kDispInfo);
    EXPECT_TRUE(source.SetClipboard());
  }
  COleDataObject object;
  ASSERT_TRUE(object.AttachClipboard());
  EXPECT_TRUE(data.IsDataAvailable(&object, kDispInfo));
  CCF_DispInfo back;
  EXPECT_TRUE(data.GetData(&object, &back, kDispInfo));
  EXPECT_EQ(back.GetGroup(), "group");
  EXPECT_EQ(back.GetType(), "type");
  EXPECT_EQ(back.GetName(), std::string(10000, 'n'));
}

TEST(CWDClipboardData, DroppedFilesAreAddedToTheList) {
  CWDClipboardData data;
  COleDataSource source;
  CCF_HDROP payload;
  payload.AddFileName("C:\\a.txt");
  payload.AddFileName("b");
  data.SetData(&source, &payload, kDroppedFiles);
  EXPECT_EQ(source.Content()->Block(CF_HDROP)->size(), 20u + 9 + 2 + 1);
  COleDataObject object = Over(source);
  CCF_HDROP back;
  back.AddFileName("before");
  EXPECT_TRUE(data.GetData(&object, &back, kDroppedFiles));
  ASSERT_EQ(back.GetCount(), 3);
  EXPECT_EQ(back.GetFileName(0), "before");
  EXPECT_EQ(back.GetFileName(1), "C:\\a.txt");
  EXPECT_EQ(back.GetFileName(2), "b");
}

TEST(CWDClipboardData, NamesOfDroppedFilesAreCutAt259Characters) {
  CWDClipboardData data;
  COleDataSource source;
  CCF_HDROP payload;
  for (const std::size_t length : {258u, 259u, 260u, 1000u}) payload.AddFileName(std::string(length, 'x').c_str());
  data.SetData(&source, &payload, kDroppedFiles);
  COleDataObject object = Over(source);
  CCF_HDROP back;
  EXPECT_TRUE(data.GetData(&object, &back, kDroppedFiles));
  ASSERT_EQ(back.GetCount(), 4);
  EXPECT_EQ(back.GetFileName(0).size(), 258u);
  for (const int index : {1, 2, 3}) EXPECT_EQ(back.GetFileName(index).size(), 259u);
}

TEST(CWDClipboardData, ManyDroppedFilesAreReadInOnePass) {
  CWDClipboardData data;
  COleDataSource source;
  std::string bytes = std::string("\x14\0\0\0", 4) + std::string(16, '\0');
  constexpr int kCount = 200000;
  for (int i = 0; i < kCount; ++i) bytes += std::string("x\0", 2);
  source.CacheGlobalData(CF_HDROP, Block(bytes));
  COleDataObject object = Over(source);
  CCF_HDROP back;
  EXPECT_TRUE(data.GetData(&object, &back, kDroppedFiles));
  EXPECT_EQ(back.GetCount(), kCount);
}

TEST(CWDClipboardData, DroppedFilesNeedTheirOwnPayload) {
  CWDClipboardData data;
  COleDataSource source;
  CCF_HDROP payload;
  payload.AddFileName("5,1,1002,3,7,");
  data.SetData(&source, &payload, kDroppedFiles);
  COleDataObject object = Over(source);
  CCF_DataInfo other;
  EXPECT_TRUE(data.GetData(&object, &other, kDroppedFiles));
  EXPECT_EQ(other.GetDataInfo(), CDataInfo());
}

TEST(CWDClipboardData, GetDataIsFalseWithoutObjectOrPayload) {
  CWDClipboardData data;
  COleDataObject object;
  CCF_DataInfo payload;
  for (const int index : {kDroppedFiles, kDataInfo, 99}) {
    EXPECT_FALSE(data.GetData(nullptr, &payload, index));
    EXPECT_FALSE(data.GetData(&object, nullptr, index));
    EXPECT_FALSE(data.GetData(nullptr, nullptr, index));
  }
}

TEST(CWDClipboardData, GetDataIsTrueWithoutDataAndWithoutSuchAnIndex) {
  CWDClipboardData data;
  COleDataObject empty;
  COleDataSource source;
  CCF_DispInfo other;
  data.SetData(&source, &other, kDispInfo);
  COleDataObject object = Over(source);
  CCF_DataInfo payload;
  payload.SetDataInfo(kDepth);
  CCF_HDROP files;
  for (COleDataObject* const asked : {&empty, &object}) {
    for (const int index : {kDataInfo, -1, 4, std::numeric_limits<int>::max()}) {
      EXPECT_TRUE(data.GetData(asked, &payload, index)) << index;
    }
    EXPECT_TRUE(data.GetData(asked, &files, kDroppedFiles));
  }
  EXPECT_EQ(payload.GetDataInfo(), kDepth);
  EXPECT_EQ(files.GetCount(), 0);
}

TEST(CWDClipboardData, SetDataDoesNothingWithoutSourcePayloadOrSuchAnIndex) {
  CWDClipboardData data;
  COleDataSource source;
  CCF_DataInfo payload;
  data.SetData(nullptr, &payload, kDataInfo);
  data.SetData(&source, nullptr, kDataInfo);
  for (const int index : {-1, 4}) data.SetData(&source, &payload, index);
  EXPECT_TRUE(source.Content()->Formats().empty());
}

TEST(CWDClipboardData, SetDataHandsTheDetailsOn) {
  CWDClipboardData data;
  COleDataSource source;
  CCF_DataInfo payload;
  FORMATETC details;
  details.lindex = 3;
  data.SetData(&source, &payload, kDataInfo, &details);
  ASSERT_EQ(source.Content()->Formats().size(), 1u);
  EXPECT_EQ(source.Content()->Formats()[0].lindex, 3);
  EXPECT_EQ(source.Content()->Formats()[0].cfFormat, data.GetClipboardFormat(kDataInfo));
}

TEST(CWDClipboardData, DataIsAvailableWhenAnyKnownFormatIsOffered) {
  CWDClipboardData data;
  COleDataSource source;
  COleDataObject object = Over(source);
  EXPECT_FALSE(data.IsDataAvailable(nullptr));
  EXPECT_FALSE(data.IsDataAvailable(nullptr, kDataInfo));
  EXPECT_FALSE(data.IsDataAvailable(&object));
  source.CacheGlobalData(1, Block("text"));
  object.Attach(source);
  EXPECT_FALSE(data.IsDataAvailable(&object));
  EXPECT_FALSE(data.IsDataAvailable(&object, kDataInfo));
  CCF_DispInfo payload;
  data.SetData(&source, &payload, kDispInfo);
  source.CacheGlobalData(2, Block("a picture"));
  object.Attach(source);
  EXPECT_TRUE(data.IsDataAvailable(&object));
  EXPECT_TRUE(data.IsDataAvailable(&object, kDispInfo));
  EXPECT_FALSE(data.IsDataAvailable(&object, kDataInfo));
  EXPECT_FALSE(data.IsDataAvailable(&object, kDroppedFiles));
  for (const int index : {-1, 4}) EXPECT_FALSE(data.IsDataAvailable(&object, index));
}

TEST(CWDClipboardData, EveryOfferedFormatIsVisitedAlsoAfterAHit) {
  CWDClipboardData data;
  COleDataSource source;
  source.CacheGlobalData(CF_HDROP, Block("x"));
  source.CacheGlobalData(1, Block("text"));
  COleDataObject object = Over(source);
  EXPECT_TRUE(data.IsDataAvailable(&object));
  FORMATETC details;
  EXPECT_FALSE(object.GetNextFormat(&details));
}

// What a desktop's adapter may hand over: it has bytes for whatever number it is asked for.
class AnsweringContent : public ClipboardContent {
 public:
  explicit AnsweringContent(unsigned short format) : m_format(format) {}
  std::vector<FORMATETC> Formats() const override {
    std::vector<FORMATETC> formats(2);
    formats.front().cfFormat = m_format;
    return formats;  // the second one has the number 0
  }
  HGLOBAL Block(unsigned short) const override { return std::make_shared<const std::string>("1,2,3,4,5,"); }

 private:
  unsigned short m_format;
};

TEST(CWDClipboardData, AnIndexThatIsNoneHasNoDataThoughTheObjectAnswersToEveryNumber) {
  CWDClipboardData data;
  COleDataObject object;
  object.Attach(std::make_shared<const AnsweringContent>(data.GetClipboardFormat(kDataInfo)));
  EXPECT_TRUE(data.IsDataAvailable(&object, kDataInfo));
  CCF_DataInfo payload;
  payload.SetDataInfo(kDepth);
  for (const int index : {-1, 4}) {
    EXPECT_FALSE(data.IsDataAvailable(&object, index));
    EXPECT_TRUE(data.GetData(&object, &payload, index));
    EXPECT_EQ(payload.GetDataInfo(), kDepth);
  }
}

// A payload of a user's own.
struct StringPayload : CObject {
  void Serialize(CArchive& archive) override {
    if (fails) throw std::runtime_error("told to");
    if (archive.IsLoading()) {
      while (archive.ReadString(text)) lines.push_back(text);
    } else {
      archive.WriteString(text);
    }
  }
  bool fails = false;
  std::string text;
  std::vector<std::string> lines;
};

TEST(CWDClipboardData, CarriesAUsersOwnPayload) {
  CWDClipboardData data;
  const int index = data.AddFormat("CWDClipboardDataTest, own");
  COleDataSource source;
  StringPayload payload;
  payload.text = "one\r\ntwo\n";
  for (const int at : {index, kStringData}) {
    data.SetData(&source, &payload, at);
    COleDataObject object = Over(source);
    StringPayload back;
    EXPECT_TRUE(data.GetData(&object, &back, at));
    EXPECT_EQ(back.lines, (std::vector<std::string>{"one", "two"}));
  }
}

TEST(CWDClipboardData, WhatAPayloadThrowsPassesAndNothingIsOffered) {
  CWDClipboardData data;
  COleDataSource source;
  StringPayload payload;
  payload.fails = true;
  EXPECT_THROW(data.SetData(&source, &payload, kStringData), std::runtime_error);
  EXPECT_TRUE(source.Content()->Formats().empty());
  source.CacheGlobalData(data.GetClipboardFormat(kStringData), Block("x"));
  COleDataObject object = Over(source);
  EXPECT_THROW(data.GetData(&object, &payload, kStringData), std::runtime_error);
}

}  // namespace
