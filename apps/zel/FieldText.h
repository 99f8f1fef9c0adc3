// Words and numbers off the front of a line of a text file, parted by blanks, tabs, commas or semicolons.
#pragma once

#include <istream>
#include <string_view>

namespace zel {

// Whether nothing but separators is left.
bool IsEmpty(std::string_view rest);

// Takes the next number. False when there is none, or what stands there is no finite number.
bool TakeNumber(std::string_view& rest, double& number);

// Takes the next word; empty when there is none.
std::string_view TakeWord(std::string_view& rest);

// Passes over the three bytes that some editors begin a file in UTF-8 with. The stream stands at the file's beginning.
void PassMark(std::istream& stream);

}  // namespace zel
