// The program's edge: between the suite's 8-bit texts (Windows-1252) and the UTF-8 of a terminal and of its arguments.
#pragma once

#include <string>
#include <string_view>

namespace zel {

// How the bytes of one settings file are meant. The suite writes Windows-1252; files of other makers are often UTF-8, and
// showing those as Windows-1252 would garble them.
enum class Encoding { Windows1252, Utf8 };

// Utf8 when the text holds bytes from 128 up and all of them form valid UTF-8 sequences, Windows1252 otherwise.
Encoding DetectEncoding(std::string_view text);

// To UTF-8 for a terminal. Control characters, which could steer the terminal, come out as "\xNN" (a tab as it is).
std::string ToTerminal(std::string_view text, Encoding encoding);

// To UTF-8 with all characters as they are.
std::string ToUtf8(std::string_view text, Encoding encoding);

// From UTF-8, as arguments come, to the bytes of a file. False, with the result untouched, when a character has no place in
// Windows-1252.
bool FromArgument(std::string_view argument, Encoding encoding, std::string& bytes);

// From UTF-8 to Windows-1252, with "?" for each character that has no place there and each byte that is no UTF-8.
std::string FromUtf8(std::string_view text);

// A text of the suite's (Windows-1252) for the terminal, with blanks behind it up to `width` characters.
std::string ToColumn(std::string_view text, std::size_t width);

// The whole of an argument as a finite number; false, `value` unspecified, when it is anything else.
bool ToNumber(std::string_view argument, double& value);

// "1 ring", "2 rings".
std::string Counted(std::size_t count, const char* one, const char* many);

}  // namespace zel
