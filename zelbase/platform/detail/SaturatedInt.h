// Whole-number arithmetic of pixels that ends at the nearest int instead of overflowing. Nothing else belongs here.
#pragma once

#include <limits>

namespace zelbase::detail {

constexpr int NearestInt(long long value) {
  constexpr int kLowest = std::numeric_limits<int>::min();
  constexpr int kHighest = std::numeric_limits<int>::max();
  return value < kLowest ? kLowest : value > kHighest ? kHighest : static_cast<int>(value);
}

constexpr int SaturatedAdd(int a, int b) { return NearestInt(static_cast<long long>(a) + b); }
constexpr int SaturatedSubtract(int a, int b) { return NearestInt(static_cast<long long>(a) - b); }

}  // namespace zelbase::detail
