// The decimal digits of a number with a fixed count of decimals, exact and quick: what stands behind "%.*f". Internal to the
// library. Neighbours: NumberText.h and PrintfText.h, which put sign, width and words around them.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// The most digits that stand in front of the point of a double.
inline constexpr int kMostWholeDigits = 309;

// Writes "%.*f" of `magnitude` to `at` and gives the end. `magnitude` is finite and not negative, `decimals` not negative;
// there is room for kMostWholeDigits + 1 + `decimals` bytes. The digits are those of the exact binary value, an exact
// half rounds to even.
ZELBASE_API char* WriteFixed(char* at, double magnitude, int decimals) noexcept;

}  // namespace zelbase::detail
