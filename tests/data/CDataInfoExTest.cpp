#include "zelbase/data/CDataInfoEx.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

const CDataId kId(5, 1002, 3, 1);

TEST(CDataInfoEx, BeginsWithTheDefaultsOfADisplay) {
  const CDataInfoEx info;
  EXPECT_EQ(info, CDataInfo());
  EXPECT_FALSE(info.IsSeparator());
  EXPECT_EQ(info.GetUserDescription(), "");
  EXPECT_TRUE(info.IsDefaultattribsOn());
  EXPECT_EQ(info.GetDataTxtAttr().attrib1, 0u);
  EXPECT_EQ(info.GetDataTxtAttr().attribText, "");
  EXPECT_FALSE(info.IsDefaultFmtSet());
  EXPECT_EQ(info.GetDecimals(), 0);
}

TEST(CDataInfoEx, TheConstructorTakesAllButTheDefaultAttributesWhichAreOn) {
  const CDataInfoEx info(kId, 7, 9, true, "depth", true, {1, 2, "Arial", 3, 4, 5}, -6);
  EXPECT_EQ(info, CDataInfo(kId, 7, 9));
  EXPECT_TRUE(info.IsSeparator());
  EXPECT_EQ(info.GetUserDescription(), "depth");
  EXPECT_TRUE(info.IsDefaultattribsOn());
  EXPECT_EQ(info.GetDataTxtAttr().attrib2, 2u);
  EXPECT_EQ(info.GetDataTxtAttr().attribText, "Arial");
  EXPECT_EQ(info.GetDataTxtAttr().attrib3, 5u);
  EXPECT_TRUE(info.IsDefaultFmtSet());
  EXPECT_EQ(info.GetDecimals(), -6);
}

TEST(CDataInfoEx, ASeparatorIsSetAndNotCleared) {
  CDataInfoEx info;
  info.SetSeparator();
  EXPECT_TRUE(info.IsSeparator());
  info.SetSeparator();
  EXPECT_TRUE(info.IsSeparator());
  info.SetDataInfo(CDataInfo(kId, 7, 9));
  EXPECT_TRUE(info.IsSeparator());
}

TEST(CDataInfoEx, SettersAndGettersAgree) {
  CDataInfoEx info;
  info.SetUserDescription("depth");
  info.SetDefaultattr(false);
  info.SetDataTxtAttr({1, 2, "Arial", 3, 4, 5});
  info.SetDefaultFmt(true);
  info.SetDecimals(3);
  EXPECT_EQ(info.GetUserDescription(), "depth");
  EXPECT_FALSE(info.IsDefaultattribsOn());
  EXPECT_EQ(info.GetDataTxtAttr().attrib1, 1u);
  EXPECT_EQ(info.GetDataTxtAttr().attribFlag1, 3);
  EXPECT_TRUE(info.IsDefaultFmtSet());
  EXPECT_EQ(info.GetDecimals(), 3);
  info.SetDefaultattr(true);
  info.SetDefaultFmt(false);
  EXPECT_TRUE(info.IsDefaultattribsOn());
  EXPECT_FALSE(info.IsDefaultFmtSet());
}

TEST(CDataInfoEx, TheReferenceIsExchangedAlone) {
  CDataInfoEx info(kId, 7, 9, false, "depth", true, {}, 2);
  CDataInfo reference;
  info.GetDataInfo(reference);
  EXPECT_EQ(reference, CDataInfo(kId, 7, 9));
  info.SetDataInfo(CDataInfo(CDataId(1, 2, 3, 4), 5, 6));
  EXPECT_EQ(info, CDataInfo(CDataId(1, 2, 3, 4), 5, 6));
  EXPECT_EQ(info.GetUserDescription(), "depth");
  EXPECT_EQ(info.GetDecimals(), 2);
}

TEST(CDataInfoEx, CopiesTakeEverything) {
  CDataInfoEx info(kId, 7, 9, true, "depth", true, {1, 2, "Arial", 3, 4, 5}, 2);
  info.SetDefaultattr(false);
  CDataInfoEx assigned;
  assigned = info;
  for (const CDataInfoEx& copy : {CDataInfoEx(info), assigned}) {
    EXPECT_EQ(copy, info);
    EXPECT_TRUE(copy.IsSeparator());
    EXPECT_EQ(copy.GetUserDescription(), "depth");
    EXPECT_FALSE(copy.IsDefaultattribsOn());
    EXPECT_EQ(copy.GetDataTxtAttr().attribText, "Arial");
    EXPECT_TRUE(copy.IsDefaultFmtSet());
    EXPECT_EQ(copy.GetDecimals(), 2);
  }
}

TEST(CDataInfoEx, IsDestroyedThroughItselfAsABase) {
  static_assert(std::has_virtual_destructor_v<CDataInfoEx>);
  static_assert(!std::is_polymorphic_v<CDataInfo>);
  static_assert(std::is_base_of_v<CDataInfo, CDataInfoEx>);
}

}  // namespace
