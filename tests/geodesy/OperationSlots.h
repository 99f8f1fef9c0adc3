// Asks the abstract classes of geodesy/ what stands in which slot: who leaves one out stays abstract, and each has its place.
#pragma once

#include <bit>
#include <cstddef>
#include <type_traits>
#include <utility>

// All numbers that a spare operation may have.
// clang-format off
#define FOR_NUMBERS_2_TO_19(X) \
  X(2) X(3) X(4) X(5) X(6) X(7) X(8) X(9) X(10) X(11) X(12) X(13) X(14) X(15) X(16) X(17) X(18) X(19)
#define FOR_NUMBERS_1_TO_19(X) X(1) FOR_NUMBERS_2_TO_19(X)
#define FOR_NUMBERS_21_TO_61(X)                                                                                     \
  X(21) X(22) X(23) X(24) X(25) X(26) X(27) X(28) X(29) X(30) X(31) X(32) X(33) X(34) X(35) X(36) X(37) X(38) X(39) \
  X(40) X(41) X(42) X(43) X(44) X(45) X(46) X(47) X(48) X(49) X(50) X(51) X(52) X(53) X(54) X(55) X(56) X(57) X(58) \
  X(59) X(60) X(61)
#define FOR_NUMBERS_62_TO_66(X) X(62) X(63) X(64) X(65) X(66)
#define FOR_NUMBERS_67_TO_76(X) X(67) X(68) X(69) X(70) X(71) X(72) X(73) X(74) X(75) X(76)
#define FOR_NUMBERS_1_TO_76(X) \
  FOR_NUMBERS_1_TO_19(X) X(20) FOR_NUMBERS_21_TO_61(X) FOR_NUMBERS_62_TO_66(X) FOR_NUMBERS_67_TO_76(X)
// clang-format on

// What a class has in slot Number, on top of Base.
template <int Number, class Base>
struct WithOperation;
#define DEFINE_WITH_OPERATION(number)                   \
  template <class Base>                                 \
  struct WithOperation<number, Base> : Base {           \
    bool Operation##number() override { return false; } \
  };
FOR_NUMBERS_1_TO_76(DEFINE_WITH_OPERATION)
#undef DEFINE_WITH_OPERATION

template <class Base>
struct WithLinearUnit : Base {
  bool GetLinearUnit(double&) override { return false; }
};
template <class Base>
struct WithIsReady : Base {
  bool IsReady() override { return false; }
};

// Overrides slots 1 to Count of Interface, except Missing; 0 misses none. Slot<Number, Base> overrides one of them.
template <template <int, class> class Slot, class Interface, int Count, int Missing>
struct Overriding;
template <template <int, class> class Slot, class Interface, int Count, int Missing>
using Below = Overriding<Slot, Interface, Count - 1, (Missing < Count ? Missing : 0)>;
template <template <int, class> class Slot, class Interface, int Count, int Missing>
struct Overriding : std::conditional_t<Count == Missing, std::type_identity<Below<Slot, Interface, Count, Missing>>,
                                       std::type_identity<Slot<Count, Below<Slot, Interface, Count, Missing>>>>::type {};
template <template <int, class> class Slot, class Interface>
struct Overriding<Slot, Interface, 0, 0> : Interface {};

// Whether each of the Count slots, left out alone, leaves a class abstract.
template <template <int, class> class Slot, class Interface, int Count>
constexpr bool EachSlotIsPure() {
  constexpr auto each = []<int... Less>(std::integer_sequence<int, Less...>) {
    return (std::is_abstract_v<Overriding<Slot, Interface, Count, Less + 1>> && ...);
  };
  return each(std::make_integer_sequence<int, Count>{});
}

// The place of a virtual operation after the destructor, from 1, by the value of its member pointer: the offset in the table
// of functions, of which a virtual destructor has the first two.
template <class Operation>
int SlotOf(Operation operation) {
  struct Words {
    std::ptrdiff_t offset;
    std::ptrdiff_t adjustment;
  };
  const std::ptrdiff_t offset = std::bit_cast<Words>(operation).offset & ~std::ptrdiff_t{1};
  return static_cast<int>(offset / static_cast<std::ptrdiff_t>(sizeof(void*))) - 1;
}

// Has one operation more than Interface.
template <class Interface>
struct OneMore : Interface {
  virtual bool TheNext() = 0;
};
