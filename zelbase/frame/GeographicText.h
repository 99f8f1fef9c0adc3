// Geographic coordinates as texts in the suite's three styles and in the WinFrog exchange form, and read back from what people
// type. Neighbours: NumericHelpers.h for degrees, minutes and seconds as numbers, NumberFormat.h for plain numbers.
//
// Values are degrees, north and east positive. Texts are 8-bit, the degree symbol is the byte 0xB0. Numbers have a decimal
// point whatever the locale. Safe on any thread.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// Puts a coordinate into `text`. Of 52.5125 degrees north with 2 decimals, with symbols and the hemisphere behind:
//
//   format   style                                  text
//   1        decimal degrees                        052.51°N
//   3        degrees and decimal minutes            052°30.75'N
//   7        degrees, minutes, decimal seconds      052°30'45.00"N
//
// These are the numbers of coordinate styles; the format codes of the unit catalogue are others. `axis` is 10 for a latitude
// and 11 for a longitude; `decimals` is taken within 0 to 15.
//
// - Degrees have three digits in front of the point, latitudes too; minutes and seconds have two.
// - Without `symbols` a blank stands for each symbol, also for the last: "052 30.75 N".
// - The sign is the letter's alone: "S" or "W" below 0, otherwise "N" or "E". It comes from the value before rounding:
//   -1e-9 is "000.00°S", and -0.0 is north and east.
// - The letter follows at once with `hemisphereBehind`; otherwise it stands in front, with a blank: "N 052.51°".
// - Rounding comes before the split, so that no minute or second shows 60: 59.99999999 is "060 00.0 N". That holds while a
//   double resolves a hundredth of the last place shown: within 180 degrees up to 9 decimals of a minute, 8 of a second.
//
// False when `value` is not finite or more than 1e9 from 0, or for another `format`: `text` stays as it was. False for another
// `axis`, too, but then `text` holds the number without a letter.
//
// The degree symbol is the numbered text 12053, in the language that is installed at the first call of the process.
ZELBASE_API bool FormatGeogs(double value, unsigned int format, int decimals, int axis, std::string& text, bool hemisphereBehind,
                             bool symbols);

// Puts a coordinate into `text` as the WinFrog exchange has it: letter, degrees, a blank, and minutes with four decimals in
// seven places. -52.5 on axis 10 (latitude) is "S52 30.0000"; any other axis is a longitude with three digits, "W004 15.0000".
// Here nothing is rounded before the split: minutes of 59.99996 show as 60.0000. Beyond an int, and for NaN, the degrees are 0
// and the minutes take all. Always true.
ZELBASE_API bool FormatWinFrogGeogs(double value, int axis, std::string& text);

// Reads degrees, minutes and seconds, each with or without decimals and the last two optional: "52 30 0 N", "52°30.5'", "4.25W".
//
// - All from the first of the letters e, E, n, N, s, S, w, W on is dropped; s, S, w, W make the value negative. So the letter
//   belongs behind the numbers: "S52.5" has none, "52 deg 30" is 52 and "1e5" is 1.
// - Every character but a digit and a point is a blank: signs are lost, "-5" is 5, and "5,5" is 5 and 5 minutes.
// - Numbers are set apart by blanks. Of "1.2.3" the front counts. One that cannot be read, a lone ".", ends the reading:
//   "52 . 30" is 52. A fourth number is passed over.
// - `value` is minutes / 60 + degrees + seconds / 3600, of any size; minutes of 60 and more are taken as they are. "0 S" gives
//   -0.0, a number beyond the range of a double infinity.
//
// False, with `value` 0, when there is no number of degrees. Any bytes are good, zero bytes too; one pass.
ZELBASE_API bool StringToGeo(std::string text, double& value);
