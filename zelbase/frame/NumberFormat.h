// Numbers as texts by a printf format, built from a width and decimals or handed over by the caller. Neighbours:
// StringAppend.h to put a number into a message, GeographicText.h for coordinates, TimeSpanText.h for time spans.
//
// The texts are byte for byte those of C's printf in the "C" locale, whatever the process has set: an exact half rounds to
// even, 1e308 has all its 309 digits, and what is not finite is "inf" or "nan" with the sign it has ("-nan"; on many processors
// the NaN of 0.0 / 0.0 carries one). All are pure functions, safe on any thread.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// --- Formats ---

// The printf format that goes with the arguments, which are filled in as they are: below 0 and of any size.
//   GetFormatStringDouble()       "%f"
//   GetFormatStringDouble(3)      "%.3f"
//   GetFormatStringDouble(8, 2)   "%8.2f"
//   GetFormatStringInt()          "%d"
//   GetFormatStringInt(-4)        "%-4d", which pads on the right
ZELBASE_API std::string GetFormatStringDouble();
ZELBASE_API std::string GetFormatStringDouble(int decimals);
ZELBASE_API std::string GetFormatStringDouble(int width, int decimals);
ZELBASE_API std::string GetFormatStringInt();
ZELBASE_API std::string GetFormatStringInt(int width);

// --- Numbers ---

// `value` printed with the format of the same arguments. `decimals` is taken within 0 to 350; `width` within -4096 to 4096,
// where blanks fill up to it on the left, and below 0 on the right.
//   FormatDouble(2.5)             "2.500000"
//   FormatDouble(2.5, 0)          "2"
//   FormatDouble(-2.5, 8, 2)      "   -2.50"
ZELBASE_API std::string FormatDouble(double value);
ZELBASE_API std::string FormatDouble(double value, int decimals);
ZELBASE_API std::string FormatDouble(double value, int width, int decimals);
ZELBASE_API std::string FormatInt(int value);
ZELBASE_API std::string FormatInt(int value, int width);

// `value` printed with a format of the caller's, such as one from a settings file: any text with at most one conversion, and
// "%%" for a "%". The conversion is "%", flags of "-+ #0", a width and "." with a precision of at most four digits each, and
// a letter: of a e f g A E F G for a double, of d i o u x X c for an int (o u x X take its 32 bits without sign, c the byte
// of its low 8 bits).
//   FormatDouble(3.25, "h = %+.1f m")   "h = +3.2 m"
//   FormatInt(7, "%03d%%")              "007%"
//
// Any other format gives the empty text, since it comes from a file and would reach beyond the one value: a second
// conversion, "%d" for a double, "%f" for an int, "%s", "%n", "%*d", a length as in "%lf" or "%ld", a "%" at the end. A format
// without a conversion comes back without the value.
ZELBASE_API std::string FormatDouble(double value, const std::string& format);
ZELBASE_API std::string FormatInt(int value, const std::string& format);
