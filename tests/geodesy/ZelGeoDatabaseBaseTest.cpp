#include "zelbase/geodesy/ZelGeoDatabaseBase.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "tests/geodesy/OperationSlots.h"

namespace {

template <int Number, class Base>
struct Slot : WithOperation<Number, Base> {};
template <class Base>
struct Slot<1, Base> : WithIsReady<Base> {};

TEST(ZelGeoDatabaseBase, HasSixtyOneOperationsAndEachIsPure) {
  static_assert(!std::is_abstract_v<Overriding<Slot, ZelGeoDatabaseBase, 61, 0>>);
  static_assert(EachSlotIsPure<Slot, ZelGeoDatabaseBase, 61>());
}

TEST(ZelGeoDatabaseBase, EachOperationHasItsPlace) {
  EXPECT_EQ(SlotOf(&ZelGeoDatabaseBase::IsReady), 1);
#define EXPECT_PLACE(number) EXPECT_EQ(SlotOf(&ZelGeoDatabaseBase::Operation##number), number);
  FOR_NUMBERS_2_TO_19(EXPECT_PLACE)
  EXPECT_PLACE(20)
  FOR_NUMBERS_21_TO_61(EXPECT_PLACE)
#undef EXPECT_PLACE
  EXPECT_EQ(SlotOf(&OneMore<ZelGeoDatabaseBase>::TheNext), 62);
}

TEST(ZelGeoDatabaseBase, HasNoDataAndIsDestroyedThroughItself) {
  static_assert(sizeof(ZelGeoDatabaseBase) == sizeof(void*));
  static_assert(std::has_virtual_destructor_v<ZelGeoDatabaseBase>);
}

}  // namespace
