// How the elements of a matrix or a vector are allocated. Internal to the library; Matrix.h and col_vector.h own what it gives.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace zelbase::detail {

// Elements of a matrix. The product of two 32-bit numbers always fits.
constexpr std::uint64_t ElementCount(unsigned int rows, unsigned int cols) noexcept {
  return std::uint64_t{rows} * cols;
}

// `count` elements that are not initialised; null for 0. Throws std::bad_alloc when there is no room, also when the size in
// bytes is beyond 64 bits: the array form of new sees to that.
inline std::unique_ptr<double[]> NewElements(std::uint64_t count) {
  if (count == 0) return nullptr;
  return std::unique_ptr<double[]>(new double[count]);
}

}  // namespace zelbase::detail
