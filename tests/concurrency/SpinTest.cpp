#include "zelbase/concurrency/detail/Spin.h"

#include <gtest/gtest.h>

namespace {

using zelbase::detail::Spin;

TEST(Spin, GivesTheCloseAndThePatientLooksAndNoMore) {
  for (const int close : {-1, 0, 1, 7}) {
    for (const int patient : {-1, 0, 1, 5}) {
      int looks = 0;
      Spin spin(close, patient);
      while (spin.Again()) ++looks;
      EXPECT_EQ(looks, (close > 0 ? close : 0) + (patient > 0 ? patient : 0)) << close << ", " << patient;
      EXPECT_FALSE(spin.Again());
    }
  }
}

}  // namespace
