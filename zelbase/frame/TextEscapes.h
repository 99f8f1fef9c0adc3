// Texts with escapes: backslash escapes into characters, and characters into what XML can hold. Neighbour: the XML writer,
// which escapes by its own rules.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// `text` with each escape replaced by its character, in one pass. Behind the backslash:
//   r 13, n 10, f 12, t 9, b 8, v 11, a 7, and the characters ? \ " themselves;
//   x and all hexadecimal digits that follow: one character of that number; "\x" without digits gives a zero byte;
//   all octal digits that follow: one character of that number.
// A number above 4294967295 counts as that; the character is the number's low byte. So "\x141" is "A" and "\1011" is byte 9.
// Anything else behind the backslash gives a zero byte and is then copied itself. A backslash at the very end is dropped.
ZELBASE_API std::string StrHandleEscape(std::string text);

// `text` fit to stand in XML, for texts without ">":
//   each "&" becomes "&amp;", also the one of "&amp;";
//   "<" becomes "&lt;", but one with a ">" anywhere behind it stays, and so does every ">";
//   ' becomes "&#8217;", the double quote "&#8221;", the bytes 0xB3, 0xB2, 0xB0 "&#179;", "&#178;", "&#176;", \ "&#92;".
// Null gives an empty text. Takes time in proportion to the length.
ZELBASE_API std::string XMLEscape(const char* text);
ZELBASE_API std::string XMLEscape(const std::string& text);

// Replaces every byte below 32 and every byte from 128 up by a blank; 127 stays.
ZELBASE_API void MakeXmlCompatible(std::string& text);
