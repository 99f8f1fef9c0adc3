#include "zelbase/data/DATATEXTATTRIBS.h"

#include <gtest/gtest.h>

namespace {

TEST(DATATEXTATTRIBS, BeginsWithZerosAndIsCopiedAsAWhole) {
  DATATEXTATTRIBS attribs;
  EXPECT_EQ(attribs.attrib1, 0u);
  EXPECT_EQ(attribs.attrib2, 0u);
  EXPECT_EQ(attribs.attribText, "");
  EXPECT_EQ(attribs.attribFlag1, 0);
  EXPECT_EQ(attribs.attribFlag2, 0);
  EXPECT_EQ(attribs.attrib3, 0u);
  attribs = {0xFFFFFFFF, 2, "Arial", 255, 4, 5};
  const DATATEXTATTRIBS copy = attribs;
  EXPECT_EQ(copy.attrib1, 0xFFFFFFFF);
  EXPECT_EQ(copy.attrib2, 2u);
  EXPECT_EQ(copy.attribText, "Arial");
  EXPECT_EQ(copy.attribFlag1, 255);
  EXPECT_EQ(copy.attribFlag2, 4);
  EXPECT_EQ(copy.attrib3, 5u);
}

}  // namespace
