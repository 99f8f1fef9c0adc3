#include "zelbase/platform/COleDataObject.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "zelbase/platform/COleDataSource.h"
#include "zelbase/platform/MemoryClipboard.h"

namespace {

HGLOBAL Block(const std::string& bytes) { return std::make_shared<const std::string>(bytes); }

std::vector<unsigned short> Walk(COleDataObject& object) {
  std::vector<unsigned short> numbers;
  FORMATETC details;
  while (object.GetNextFormat(&details)) numbers.push_back(details.cfFormat);
  return numbers;
}

using Offered = std::vector<unsigned short>;

TEST(COleDataObject, WithoutAContentThereIsNoData) {
  COleDataObject object;
  EXPECT_FALSE(object.IsDataAvailable(9));
  EXPECT_EQ(object.GetGlobalData(9), nullptr);
  EXPECT_EQ(object.GetFileData(9), nullptr);
  object.BeginEnumFormats();
  EXPECT_EQ(Walk(object), Offered());
  object.Attach(nullptr);
  EXPECT_FALSE(object.IsDataAvailable(9));
}

TEST(COleDataObject, SeesWhatTheSourceOffersWhenItIsAttached) {
  COleDataSource source;
  source.CacheGlobalData(9, Block("nine"));
  source.CacheGlobalData(7, Block("seven"));
  COleDataObject object;
  object.Attach(source);
  source.Empty();
  EXPECT_TRUE(object.IsDataAvailable(9));
  EXPECT_FALSE(object.IsDataAvailable(8));
  EXPECT_EQ(*object.GetGlobalData(7), "seven");
  EXPECT_EQ(object.GetGlobalData(8), nullptr);
  EXPECT_EQ(object.GetFileData(8), nullptr);
  const std::unique_ptr<CFile> file = object.GetFileData(9);
  ASSERT_NE(file, nullptr);
  char bytes[10];
  EXPECT_EQ(file->Read(bytes, sizeof bytes), 4u);
  EXPECT_EQ(std::string(bytes, 4), "nine");
}

TEST(COleDataObject, WalksFromTheBeginningWhenTold) {
  COleDataSource source;
  source.CacheGlobalData(9, Block("nine"));
  source.CacheGlobalData(7, Block("seven"));
  COleDataObject object;
  object.Attach(source);
  EXPECT_EQ(Walk(object), Offered());  // not begun
  object.BeginEnumFormats();
  EXPECT_EQ(Walk(object), (Offered{9, 7}));
  EXPECT_EQ(Walk(object), Offered());
  object.BeginEnumFormats();
  EXPECT_FALSE(object.GetNextFormat(nullptr));
  EXPECT_EQ(Walk(object), (Offered{9, 7}));
  FORMATETC details;
  details.cfFormat = 3;
  EXPECT_FALSE(object.GetNextFormat(&details));
  EXPECT_EQ(details.cfFormat, 3);
}

TEST(COleDataObject, TakesWhatIsOnTheClipboard) {
  MemoryClipboard clipboard;
  const PlatformOverride<PlatformClipboard> guard(clipboard);
  COleDataObject object;
  EXPECT_FALSE(object.AttachClipboard());
  COleDataSource source;
  source.CacheGlobalData(9, Block("nine"));
  EXPECT_TRUE(source.SetClipboard());
  EXPECT_TRUE(object.AttachClipboard());
  EXPECT_EQ(*object.GetGlobalData(9), "nine");
  clipboard.Put(nullptr);
  const COleDataObject copy(object);
  EXPECT_FALSE(object.AttachClipboard());
  EXPECT_FALSE(object.IsDataAvailable(9));
  EXPECT_TRUE(copy.IsDataAvailable(9));
}

TEST(COleDataObject, ReleaseLetsTheContentGo) {
  COleDataSource source;
  source.CacheGlobalData(9, Block("nine"));
  COleDataObject object;
  object.Attach(source);
  object.BeginEnumFormats();
  object.Release();
  EXPECT_EQ(Walk(object), Offered());
  EXPECT_FALSE(object.IsDataAvailable(9));
}

}  // namespace
