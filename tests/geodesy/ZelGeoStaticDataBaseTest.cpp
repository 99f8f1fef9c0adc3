#include "zelbase/geodesy/ZelGeoStaticDataBase.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "tests/geodesy/OperationSlots.h"

namespace {

TEST(ZelGeoStaticDataBase, HasSeventySixOperationsAndEachIsPure) {
  static_assert(!std::is_abstract_v<Overriding<WithOperation, ZelGeoStaticDataBase, 76, 0>>);
  static_assert(EachSlotIsPure<WithOperation, ZelGeoStaticDataBase, 76>());
}

TEST(ZelGeoStaticDataBase, EachOperationHasItsPlace) {
#define EXPECT_PLACE(number) EXPECT_EQ(SlotOf(&ZelGeoStaticDataBase::Operation##number), number);
  FOR_NUMBERS_1_TO_76(EXPECT_PLACE)
#undef EXPECT_PLACE
  EXPECT_EQ(SlotOf(&OneMore<ZelGeoStaticDataBase>::TheNext), 77);
}

TEST(ZelGeoStaticDataBase, HasNoDataAndIsDestroyedThroughItself) {
  static_assert(sizeof(ZelGeoStaticDataBase) == sizeof(void*));
  static_assert(std::has_virtual_destructor_v<ZelGeoStaticDataBase>);
}

}  // namespace
