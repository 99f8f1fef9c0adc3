#include "zelbase/errors/detail/EmptyError.h"

#include <gtest/gtest.h>

#include "tests/errors/ProbeError.h"
#include "zelbase/errors/ErrorList.h"
#include "zelbase/errors/GlobalErrorList.h"

namespace {

TEST(EmptyError, IsOneObjectWithoutContent) {
  const Error& empty = zelbase::detail::EmptyError();
  EXPECT_EQ(&empty, &zelbase::detail::EmptyError());
  EXPECT_EQ(empty.Format(), "");
  EXPECT_EQ(empty.ID(), 0u);
  EXPECT_EQ(empty.ErrorTime(), 0);
}

TEST(EmptyError, StandsWhereverAnIndexIsOutOfRange) {
  const Error* const empty = &zelbase::detail::EmptyError();
  EXPECT_EQ(&ProbeError(1).GetCause(0), empty);
  EXPECT_EQ(&ErrorList()[0], empty);
  GlobalErrorList::Get().Clear();
  EXPECT_EQ(&GlobalErrorList::Get()[0], empty);
}

}  // namespace
