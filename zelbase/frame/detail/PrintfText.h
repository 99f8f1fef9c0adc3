// One number as C's printf prints it in the "C" locale, byte for byte, with all flags, and the formats that a caller or a
// file brings along. Internal to the library. Neighbours: NumberText.h for numbers without flags, FixedDigits.h below both.
//
// No format ever reaches the C library: it is taken apart here, and what is not understood in full prints nothing.
#pragma once

#include <string>
#include <string_view>

#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// The largest width and precision, of four digits.
inline constexpr int kMostPrinted = 9999;

// One conversion, "%" flags width "." precision kind.
struct PrintfForm {
  char kind = 'f';         // a e f g A E F G for a double, d i o u x X c for an int
  int width = 0;           // at least so many bytes, 0 to kMostPrinted
  int precision = -1;      // up to kMostPrinted; below 0: none given, the kind's own
  bool left = false;       // "-"
  bool plus = false;       // "+"
  bool blank = false;      // " "
  bool alternate = false;  // "#"
  bool zeros = false;      // "0"
};

// Appends `value`. A kind that is not the value's, and a width or precision out of range, are the caller's fault. A NaN has
// its sign here, as printf has it: "-nan". 'c' appends one byte, the low one of the value, also when it is 0.
ZELBASE_API void AppendPrintf(std::string& text, const PrintfForm& form, double value);
ZELBASE_API void AppendPrintf(std::string& text, const PrintfForm& form, int value);

// `format` with its one conversion replaced by `value` and each "%%" by "%". Empty when the format holds anything else
// behind a "%": a second conversion, one of a kind not the value's, a length ("%lf"), a "*", a "$", a width or a precision of
// more than four digits, or nothing at all. A format without a conversion is returned without the value. A zero byte is
// a byte like others.
ZELBASE_API std::string PrintfText(std::string_view format, double value);
ZELBASE_API std::string PrintfText(std::string_view format, int value);

}  // namespace zelbase::detail
