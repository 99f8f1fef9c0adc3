#include "zelbase/platform/HGLOBAL.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

namespace {

TEST(HGLOBAL, IsSharedAndNotChanged) {
  const HGLOBAL block = std::make_shared<const std::string>("bytes");
  const HGLOBAL copy = block;
  EXPECT_EQ(copy.get(), block.get());
  EXPECT_TRUE(std::is_const_v<HGLOBAL::element_type>);
  EXPECT_EQ(HGLOBAL(), nullptr);
}

}  // namespace
