// The texts of data identifiers: whole numbers of 16 bits with commas between. Internal to the library.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace zelbase::detail {

// Type, vessel, group, device of an identifier; then the element and the array index of a reference to a record's element.
inline constexpr std::size_t kDataIdNumbers = 4;
inline constexpr std::size_t kDataInfoNumbers = 6;
using DataNumbers = std::array<unsigned short, kDataInfoNumbers>;

// Reads as "%hu,%hu,..." reads, up to `most` numbers: white space may stand before a number and not before a comma, and what
// follows the last number is passed over. The number of those read; the others stay as they were.
std::size_t ScanDataNumbers(std::string_view text, DataNumbers& numbers, std::size_t most);

// The first `count` of them, "5,1,1002,3".
void AppendDataNumbers(std::string& text, const DataNumbers& numbers, std::size_t count);

}  // namespace zelbase::detail
