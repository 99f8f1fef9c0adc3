// The suite's 32-bit checksum: signatures of errors and the whole-file check of large streams are made with it.
// Neighbours: Checksums.h has the 16-bit and the 8-bit sum.
#pragma once

#include <cstddef>
#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// A reflected CRC-32 with the polynomial 0xEDB88320 that starts at 0xFFFFFFFF and is NOT inverted at the end: its value is
// the bitwise complement of the customary CRC-32. Over "123456789" it is 0x340BC6D9.
//
//   CRCChecksum sum;
//   sum += fileName;                 // the characters, zero bytes included, no terminator
//   sum += 2;                        // four bytes: 2, 0, 0, 0
//   unsigned int signature = sum.Value();
//
// Mind the overloads: a character literal and a bool are ints in an expression, so `sum += 'A'` and `sum += true` add
// four bytes each. Cast to unsigned char where one byte is meant. Nothing is put between two additions: "ab" then "c" gives
// the value of "a" then "bc".
//
// A value: copying takes over the register. One thread at a time; nothing fails.
class ZELBASE_API CRCChecksum {
 public:
  CRCChecksum() noexcept = default;
  CRCChecksum(const CRCChecksum&) noexcept = default;
  CRCChecksum& operator=(const CRCChecksum&) noexcept = default;

  // Back to the state of a new object.
  void Reset() noexcept { m_register = kStart; }

  // The register as it stands; 0xFFFFFFFF when nothing was added.
  unsigned int Value() const noexcept { return m_register; }

  CRCChecksum& operator+=(unsigned char byte) noexcept;

  // The four bytes of the number, lowest first.
  CRCChecksum& operator+=(unsigned int number) noexcept;

  // The four bytes of the two's complement form, lowest first.
  // Kept: for a character and a bool too, which are ints here; stored signatures were made so.
  CRCChecksum& operator+=(int number) noexcept;

  // The characters in order, zero bytes too; no terminator, no length.
  CRCChecksum& operator+=(const std::string& text) noexcept { return Add(text.data(), text.size()); }

  // The same for a text that ends at its first zero byte; null adds nothing.
  CRCChecksum& operator+=(const char* text) noexcept;

  // `size` bytes at `data` in order. Null data or size 0 adds nothing. The fast way for large blocks.
  CRCChecksum& Add(const void* data, std::size_t size) noexcept;

 private:
  static constexpr unsigned int kStart = 0xFFFFFFFFu;

  unsigned int m_register = kStart;
};
