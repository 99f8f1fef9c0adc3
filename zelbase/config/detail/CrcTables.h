// Tables for reflected cyclic sums that take several bytes a step. Internal to the library.
#pragma once

#include <array>
#include <cstddef>

namespace zelbase::detail {

// rows[0] is the common table of the polynomial: what one byte leaves behind. rows[k][b] is what the byte b leaves behind
// when k zero bytes follow it, so that N bytes are one step: each through the row of its distance from the step's end,
// all combined by exclusive or.
template <class Register, std::size_t N>
struct CrcTables {
  std::array<std::array<Register, 256>, N> rows{};
};

template <class Register, std::size_t N>
constexpr CrcTables<Register, N> MakeCrcTables(Register polynomial) {
  CrcTables<Register, N> tables;
  for (unsigned int byte = 0; byte < 256; ++byte) {
    unsigned int value = byte;
    for (int bit = 0; bit < 8; ++bit) value = (value >> 1) ^ ((value & 1u) != 0 ? polynomial : 0u);
    tables.rows[0][byte] = static_cast<Register>(value);
  }
  for (std::size_t k = 1; k < N; ++k) {
    for (std::size_t byte = 0; byte < 256; ++byte) {
      const unsigned int value = tables.rows[k - 1][byte];
      tables.rows[k][byte] = static_cast<Register>((value >> 8) ^ tables.rows[0][value & 0xFFu]);
    }
  }
  return tables;
}

}  // namespace zelbase::detail
