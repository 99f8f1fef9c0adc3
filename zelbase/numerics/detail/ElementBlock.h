// How the elements of a matrix or a vector are allocated. Internal to the library; Matrix.h and col_vector.h own what it gives.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>

namespace zelbase::detail {

// Elements of a matrix. The product of two 32-bit numbers always fits.
constexpr std::uint64_t ElementCount(unsigned int rows, unsigned int cols) noexcept { return std::uint64_t{rows} * cols; }

// `count` elements that are not initialised; null for 0. Throws std::bad_alloc when there is no room, also when the size in
// bytes is beyond what can be addressed.
inline std::unique_ptr<double[]> NewElements(std::uint64_t count) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(double);
  if (count == 0) return nullptr;
  if (count > kMost) throw std::bad_array_new_length();
  return std::unique_ptr<double[]>(new double[count]);
}

}  // namespace zelbase::detail
