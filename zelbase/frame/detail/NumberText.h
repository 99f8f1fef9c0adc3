// Numbers from text and to text exactly as the named C formats do it, but in the "C" locale whatever the process has set.
// Internal to the library; every conversion between a number and a text in it goes through here.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// Scanning. Each skips leading white space, takes an optional sign, then the longest valid front, and ignores the rest.
// The result is the number of bytes taken, white space included; 0 means that nothing parsed, and `value` is untouched.
// A whole number beyond its type is the value modulo 2^16, 2^32 or 2^64: "-1" as unsigned is the largest number.

ZELBASE_API std::size_t ScanInt(std::string_view text, int& value);                        // "%d"
ZELBASE_API std::size_t ScanUnsigned(std::string_view text, unsigned int& value);          // "%u"
ZELBASE_API std::size_t ScanUnsignedShort(std::string_view text, unsigned short& value);   // "%hu"
ZELBASE_API std::size_t ScanInt64(std::string_view text, long long& value);                // "%lld"
ZELBASE_API std::size_t ScanUnsigned64(std::string_view text, unsigned long long& value);  // "%llu"

// An optional "0x" or "0X" may stand before the digits; "0x" alone is 0.
ZELBASE_API std::size_t ScanHex(std::string_view text, unsigned int& value);          // "%x"
ZELBASE_API std::size_t ScanHex64(std::string_view text, unsigned long long& value);  // "%llx"

// Decimal only, no "inf", no "nan". Beyond the range: infinity of that sign; below it: zero of that sign. The double is
// the nearest; the float is the nearest float to the text (not rounded twice).
ZELBASE_API std::size_t ScanDouble(std::string_view text, double& value);  // "%lf"
ZELBASE_API std::size_t ScanFloat(std::string_view text, float& value);    // "%f"

// Printing. Each appends to `text` and is of any length the number needs; an exact half rounds to even.

ZELBASE_API void AppendInt(std::string& text, long long value);                       // "%lld"
ZELBASE_API void AppendUnsigned(std::string& text, unsigned long long value);         // "%llu"
ZELBASE_API void AppendHex(std::string& text, unsigned long long value, int digits);  // "%0*llX", upper case
ZELBASE_API void AppendPadded(std::string& text, long long value, int width);         // "%0*lld"

// "%.*f" with `decimals` taken within 0 to 350; "nan", "inf", "-inf" when not finite (NaN never has a sign).
ZELBASE_API void AppendFixed(std::string& text, double value, int decimals);

// "%g"
ZELBASE_API void AppendGeneral(std::string& text, double value);
ZELBASE_API void AppendGeneral(std::string& text, long double value);

// To a count or a time: truncates; what does not fit or is NaN gives the smallest 64-bit value.
ZELBASE_API long long ToCount(double value) noexcept;

// The low half of ToCount.
ZELBASE_API int ToCount32(double value) noexcept;

// To a pixel: truncates; NaN gives 0, beyond the range the nearest int.
ZELBASE_API int ToPixel(double value) noexcept;

}  // namespace zelbase::detail
