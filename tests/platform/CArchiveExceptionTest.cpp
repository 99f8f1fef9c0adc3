#include "zelbase/platform/CArchiveException.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(CArchiveException, CarriesItsCauseByTheFrameworksNumbers) {
  EXPECT_EQ(CArchiveException().m_cause, 0);
  EXPECT_EQ(CArchiveException(CArchiveException::endOfFile).m_cause, 3);
  EXPECT_EQ(CArchiveException(7).m_cause, static_cast<int>(CArchiveException::badSchema));
}

TEST(CArchiveException, IsCaughtAsAnExceptionOfTheLanguage) {
  try {
    throw CArchiveException(CArchiveException::endOfFile);
  } catch (const std::exception& failure) {
    EXPECT_STREQ(failure.what(), "archive operation failed");
  }
}

}  // namespace
