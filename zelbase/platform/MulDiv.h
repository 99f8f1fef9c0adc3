// The framework's whole-number scaling: a * b / c without overflow on the way. Neighbour: CDC.h, whose dots per inch sizes are
// scaled by.
#pragma once

#include "zelbase/platform/detail/SaturatedInt.h"

// number * numerator / denominator, a half rounded away from zero; the nearest int when it is beyond. A denominator of 0 gives 0.
//   MulDiv(5, 120, 96)    // 6.25: 6
//   MulDiv(-3, 48, 96)    // -1.5: -2
constexpr int MulDiv(int number, int numerator, int denominator) {
  if (denominator == 0) return 0;
  const long long product = static_cast<long long>(number) * numerator;
  const long long quotient = product / denominator;
  const long long rest = product % denominator;
  const long long twice = rest < 0 ? -2 * rest : 2 * rest;
  const long long size = denominator < 0 ? -static_cast<long long>(denominator) : denominator;
  const long long away = (product < 0) == (denominator < 0) ? 1 : -1;
  return zelbase::detail::NearestInt(twice >= size ? quotient + away : quotient);
}
