#include "zelbase/data/CCF_HDROP.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>

#include "tests/data/ArchiveBytes.h"

namespace {

TEST(CCF_HDROP, HoldsFileNames) {
  CCF_HDROP payload;
  EXPECT_EQ(payload.GetCount(), 0);
  payload.AddFileName("C:\\a.txt");
  payload.AddFileName(std::string("b").c_str());
  payload.AddFileName(nullptr);
  EXPECT_EQ(payload.GetCount(), 2);
  EXPECT_EQ(payload.GetFileName(0), "C:\\a.txt");
  EXPECT_EQ(payload.GetFileName(1), "b");
}

TEST(CCF_HDROP, AnIndexThatIsNoneGivesAnEmptyName) {
  CCF_HDROP payload;
  payload.AddFileName("a");
  for (const int index : {-1, 1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(payload.GetFileName(index), "");
  }
}

TEST(CCF_HDROP, WritesTwentyBytesThenEachNameWithAZeroThenOneZeroMore) {
  CCF_HDROP payload;
  payload.AddDropPoint(CPoint(0x01020304, -2), 1);
  payload.AddFileName("C:\\a.txt");
  payload.AddFileName("b");
  Bytes expected;
  expected.Number(20, 4).Number(0x01020304, 4).Number(0xFFFFFFFE, 4).Number(1, 4).Zeros(4);
  expected.Text("C:\\a.txt").Zeros(1).Text("b").Zeros(1).Zeros(1);
  EXPECT_EQ(StoredBytes(payload), expected.Get());
}

TEST(CCF_HDROP, WritesTheZeroAlsoBehindNoNames) {
  CCF_HDROP payload;
  EXPECT_EQ(StoredBytes(payload), Bytes().Number(20, 4).Zeros(16).Zeros(1).Get());
}

TEST(CCF_HDROP, ReadsNothing) {
  CCF_HDROP written;
  written.AddFileName("a");
  CCF_HDROP payload;
  payload.AddFileName("before");
  LoadBytes(payload, StoredBytes(written));
  EXPECT_EQ(payload.GetCount(), 1);
  EXPECT_EQ(payload.GetFileName(0), "before");
}

TEST(CCF_HDROP, IsMadeByItsName) {
  const std::unique_ptr<CObject> made(CRuntimeClass::CreateObject("CCF_HDROP"));
  ASSERT_NE(dynamic_cast<CCF_HDROP*>(made.get()), nullptr);
  EXPECT_EQ(made->GetRuntimeClass(), CCF_HDROP::GetThisClass());
  const std::unique_ptr<CObject> created(CCF_HDROP::CreateObject());
  EXPECT_NE(dynamic_cast<CCF_HDROP*>(created.get()), nullptr);
}

}  // namespace
