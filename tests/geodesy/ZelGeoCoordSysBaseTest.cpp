#include "zelbase/geodesy/ZelGeoCoordSysBase.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "tests/geodesy/OperationSlots.h"

namespace {

template <int Number, class Base>
struct Slot : WithOperation<Number, Base> {};
template <class Base>
struct Slot<20, Base> : WithLinearUnit<Base> {};

TEST(ZelGeoCoordSysBase, HasSixtySixOperationsAndEachIsPure) {
  static_assert(!std::is_abstract_v<Overriding<Slot, ZelGeoCoordSysBase, 66, 0>>);
  static_assert(EachSlotIsPure<Slot, ZelGeoCoordSysBase, 66>());
}

TEST(ZelGeoCoordSysBase, EachOperationHasItsPlace) {
#define EXPECT_PLACE(number) EXPECT_EQ(SlotOf(&ZelGeoCoordSysBase::Operation##number), number);
  FOR_NUMBERS_1_TO_19(EXPECT_PLACE)
  FOR_NUMBERS_21_TO_61(EXPECT_PLACE)
  FOR_NUMBERS_62_TO_66(EXPECT_PLACE)
#undef EXPECT_PLACE
  EXPECT_EQ(SlotOf(&ZelGeoCoordSysBase::GetLinearUnit), 20);
  EXPECT_EQ(SlotOf(&OneMore<ZelGeoCoordSysBase>::TheNext), 67);
}

TEST(ZelGeoCoordSysBase, HasNoDataAndIsDestroyedThroughItself) {
  static_assert(sizeof(ZelGeoCoordSysBase) == sizeof(void*));
  static_assert(std::has_virtual_destructor_v<ZelGeoCoordSysBase>);
}

}  // namespace
