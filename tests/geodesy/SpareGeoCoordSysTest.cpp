#include "zelbase/geodesy/SpareGeoCoordSys.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "tests/geodesy/OperationSlots.h"

namespace {

TEST(SpareGeoCoordSys, LacksTheLinearUnitOnly) {
  static_assert(std::is_abstract_v<SpareGeoCoordSys>);
  static_assert(!std::is_abstract_v<WithLinearUnit<SpareGeoCoordSys>>);
}

TEST(SpareGeoCoordSys, AnswersEverySpareSlotWithFalse) {
  WithLinearUnit<SpareGeoCoordSys> object;
  ZelGeoCoordSysBase& system = object;
#define EXPECT_SPARE(number) EXPECT_FALSE(system.Operation##number()) << number;
  FOR_NUMBERS_1_TO_19(EXPECT_SPARE)
  FOR_NUMBERS_21_TO_61(EXPECT_SPARE)
  FOR_NUMBERS_62_TO_66(EXPECT_SPARE)
#undef EXPECT_SPARE
}

}  // namespace
