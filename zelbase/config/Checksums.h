// The suite's 16-bit and 8-bit checksums over a range of bytes. Neighbour: CRCChecksum.h has the 32-bit one.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

// Both take the bytes from `begin` up to, not including, `end`. An empty range, `end` before `begin` and a null pointer
// give 0. Any thread; nothing fails.

// A reflected CRC-16 with the polynomial 0x8408 that starts at 0 and is not inverted (the parameters known as
// CRC-16/KERMIT). Over "123456789" it is 0x2189.
ZELBASE_API unsigned short Compute16BitCRC(const unsigned char* begin, const unsigned char* end);

// The bitwise OR of all bytes, in spite of its name: it answers which bits occur at all. 0x01, 0x02, 0x80 give 0x83.
ZELBASE_API unsigned char Compute8BitCRC(const unsigned char* begin, const unsigned char* end);
