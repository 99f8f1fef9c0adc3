#include "zelbase/config/Checksums.h"

#include <cstddef>
#include <functional>

#include "zelbase/config/detail/CrcTables.h"
#include "zelbase/config/detail/Prefetch.h"

namespace {

constexpr unsigned short kPolynomial = 0x8408;
constexpr std::size_t kSlice = 16;
constexpr auto kTables = zelbase::detail::MakeCrcTables<unsigned short, kSlice>(kPolynomial);

// Number of bytes of the range; 0 for one that is empty, null or upside down.
std::size_t Length(const unsigned char* begin, const unsigned char* end) {
  if (begin == nullptr || end == nullptr || !std::less<>()(begin, end)) return 0;
  return static_cast<std::size_t>(end - begin);
}

// Two bytes from `p`, the first of which has `Row` bytes of the step behind it.
template <std::size_t Row>
unsigned int Two(const unsigned char* p) {
  return static_cast<unsigned int>(kTables.rows[Row][p[0]] ^ kTables.rows[Row - 1][p[1]]);
}

}  // namespace

unsigned short Compute16BitCRC(const unsigned char* begin, const unsigned char* end) {
  std::size_t size = Length(begin, end);
  const unsigned char* p = begin;
  unsigned int state = 0;
  for (; size >= kSlice; p += kSlice, size -= kSlice) {
    zelbase::detail::PrefetchAhead(p);
    state = kTables.rows[15][(state ^ p[0]) & 0xFFu] ^ kTables.rows[14][(state >> 8) ^ p[1]] ^ Two<13>(p + 2) ^ Two<11>(p + 4) ^
            Two<9>(p + 6) ^ Two<7>(p + 8) ^ Two<5>(p + 10) ^ Two<3>(p + 12) ^ Two<1>(p + 14);
  }
  for (; size > 0; ++p, --size) state = state >> 8 ^ kTables.rows[0][(state ^ *p) & 0xFFu];
  return static_cast<unsigned short>(state);
}

unsigned char Compute8BitCRC(const unsigned char* begin, const unsigned char* end) {
  const std::size_t size = Length(begin, end);
  unsigned int bits = 0;
  // Kept: an OR under the name of a CRC, so that data stored with it keeps checking.
  for (std::size_t i = 0; i < size; ++i) bits |= begin[i];
  return static_cast<unsigned char>(bits);
}
