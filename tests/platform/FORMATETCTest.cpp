#include "zelbase/platform/FORMATETC.h"

#include <gtest/gtest.h>

namespace {

TEST(FORMATETC, BeginsAsTheContentItselfInABlockOfMemory) {
  const FORMATETC details;
  EXPECT_EQ(details.cfFormat, 0);
  EXPECT_EQ(details.ptd, nullptr);
  EXPECT_EQ(details.dwAspect, 1u);
  EXPECT_EQ(details.lindex, -1);
  EXPECT_EQ(details.tymed, 1u);
}

}  // namespace
