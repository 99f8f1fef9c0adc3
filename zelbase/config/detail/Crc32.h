// The engine of the 32-bit checksum: one register, a block of bytes, several ways that all give the same register.
// Internal to the library; CRCChecksum.h is what callers use.
#pragma once

#include <cstddef>

#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// The reflected polynomial of IEEE 802.3.
inline constexpr unsigned int kCrc32Polynomial = 0xEDB88320u;

// Takes `size` bytes at `data` into `state` and gives the new register. No inversion before or after; calls chain. Null
// data or size 0 gives `state`. Uses the fastest way this processor has. Any thread.
ZELBASE_API unsigned int UpdateCrc32(unsigned int state, const void* data, std::size_t size) noexcept;

// The ways there are, for tests and benchmarks.
enum class Crc32Way {
  Portable,  // tables, sixteen bytes a step; everywhere
  Fold128,   // carry-less multiplication of 128-bit registers, four at a time
  Fold512,   // the same with 512-bit registers
};

// False when this processor (or this build) does not have the way.
ZELBASE_API bool HasCrc32Way(Crc32Way way) noexcept;

// UpdateCrc32 by one way; the portable one takes the place of a way that is not there.
ZELBASE_API unsigned int UpdateCrc32By(Crc32Way way, unsigned int state, const void* data, std::size_t size) noexcept;

}  // namespace zelbase::detail
