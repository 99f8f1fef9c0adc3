#include "zelbase/platform/CAtlException.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(CAtlException, CarriesItsResultCodeAsAStandardException) {
  try {
    throw CAtlException(0x80070057u);
  } catch (const std::exception& failure) {
    EXPECT_EQ(static_cast<const CAtlException&>(failure).m_hr, 0x80070057u);
    EXPECT_NE(std::string(failure.what()).find("80070057"), std::string::npos);
  }
  EXPECT_NE(std::string(CAtlException(0x80004005u).what()).find("80004005"), std::string::npos);
  EXPECT_FALSE(std::string(CAtlException(0).what()).empty());
}

}  // namespace
