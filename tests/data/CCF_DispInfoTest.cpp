#include "zelbase/data/CCF_DispInfo.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/data/ArchiveBytes.h"

namespace {

CCF_DispInfo Payload(const std::string& group, const std::string& type, const std::string& name) {
  CCF_DispInfo payload;
  payload.SetGroup(group);
  payload.SetType(type);
  payload.SetName(name);
  return payload;
}

std::string Texts(const CCF_DispInfo& payload) { return payload.GetGroup() + "|" + payload.GetType() + "|" + payload.GetName(); }

TEST(CCF_DispInfo, HoldsThreeTexts) {
  EXPECT_EQ(Texts(CCF_DispInfo()), "||");
  const CCF_DispInfo payload = Payload("group", "type", "name");
  EXPECT_EQ(Texts(payload), "group|type|name");
  std::string group, type, name;
  payload.GetGroup(group);
  payload.GetType(type);
  payload.GetName(name);
  EXPECT_EQ(group + type + name, "grouptypename");
}

TEST(CCF_DispInfo, WritesTheTextsWithNothingBetween) {
  CCF_DispInfo payload = Payload("group", "type", "name");
  EXPECT_EQ(StoredBytes(payload), "grouptypename");
}

TEST(CCF_DispInfo, WithoutLineEndsAllOfThemComeBackAsTheFirst) {
  CCF_DispInfo payload = Payload("group", "type", "name");
  CCF_DispInfo back = Payload("a", "b", "c");
  LoadBytes(back, StoredBytes(payload));
  EXPECT_EQ(Texts(back), "grouptypename||");
}

TEST(CCF_DispInfo, WithLineEndsTheyComeBackWithoutThemSoThatASecondTripRunsTogether) {
  CCF_DispInfo payload = Payload("group\r\n", "type\n", "name");
  CCF_DispInfo back;
  LoadBytes(back, StoredBytes(payload));
  EXPECT_EQ(Texts(back), "group|type|name");
  CCF_DispInfo again;
  LoadBytes(again, StoredBytes(back));
  EXPECT_EQ(Texts(again), "grouptypename||");
}

TEST(CCF_DispInfo, NothingToReadGivesEmptyTexts) {
  CCF_DispInfo back = Payload("a", "b", "c");
  LoadBytes(back, "");
  EXPECT_EQ(Texts(back), "||");
  LoadBytes(back, "\n\nname");
  EXPECT_EQ(Texts(back), "||name");
}

TEST(CCF_DispInfo, IsMadeByItsName) {
  const std::unique_ptr<CObject> made(CRuntimeClass::CreateObject("CCF_DispInfo"));
  ASSERT_NE(dynamic_cast<CCF_DispInfo*>(made.get()), nullptr);
  EXPECT_EQ(made->GetRuntimeClass(), CCF_DispInfo::GetThisClass());
  const std::unique_ptr<CObject> created(CCF_DispInfo::CreateObject());
  EXPECT_NE(dynamic_cast<CCF_DispInfo*>(created.get()), nullptr);
}

}  // namespace
