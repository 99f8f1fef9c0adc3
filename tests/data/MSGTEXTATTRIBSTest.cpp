#include "zelbase/data/MSGTEXTATTRIBS.h"

#include <gtest/gtest.h>

namespace {

TEST(MSGTEXTATTRIBS, BeginsWithZerosAndIsCopiedAsAWhole) {
  MSGTEXTATTRIBS attribs;
  EXPECT_EQ(attribs.attribText, "");
  EXPECT_EQ(attribs.attribFlag1, 0);
  EXPECT_EQ(attribs.attribFlag2, 0);
  EXPECT_EQ(attribs.attrib3, 0u);
  attribs = {"Arial", 255, 4, 0xFFFFFFFF};
  const MSGTEXTATTRIBS copy = attribs;
  EXPECT_EQ(copy.attribText, "Arial");
  EXPECT_EQ(copy.attribFlag1, 255);
  EXPECT_EQ(copy.attribFlag2, 4);
  EXPECT_EQ(copy.attrib3, 0xFFFFFFFF);
}

}  // namespace
