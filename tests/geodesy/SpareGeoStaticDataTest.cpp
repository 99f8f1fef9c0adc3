#include "zelbase/geodesy/SpareGeoStaticData.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "tests/geodesy/OperationSlots.h"

namespace {

TEST(SpareGeoStaticData, LacksNothing) { static_assert(!std::is_abstract_v<SpareGeoStaticData>); }

TEST(SpareGeoStaticData, AnswersEverySpareSlotWithFalse) {
  SpareGeoStaticData object;
  ZelGeoStaticDataBase& data = object;
#define EXPECT_SPARE(number) EXPECT_FALSE(data.Operation##number()) << number;
  FOR_NUMBERS_1_TO_76(EXPECT_SPARE)
#undef EXPECT_SPARE
}

}  // namespace
