#include "zelbase/geodesy/SpareGeoDatabase.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "tests/geodesy/OperationSlots.h"

namespace {

TEST(SpareGeoDatabase, LacksTheReadinessOnly) {
  static_assert(std::is_abstract_v<SpareGeoDatabase>);
  static_assert(!std::is_abstract_v<WithIsReady<SpareGeoDatabase>>);
}

TEST(SpareGeoDatabase, AnswersEverySpareSlotWithFalse) {
  WithIsReady<SpareGeoDatabase> object;
  ZelGeoDatabaseBase& database = object;
#define EXPECT_SPARE(number) EXPECT_FALSE(database.Operation##number()) << number;
  FOR_NUMBERS_2_TO_19(EXPECT_SPARE)
  EXPECT_SPARE(20)
  FOR_NUMBERS_21_TO_61(EXPECT_SPARE)
#undef EXPECT_SPARE
}

}  // namespace
