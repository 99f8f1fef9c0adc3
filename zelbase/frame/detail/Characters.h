// Classification and trimming of 8-bit characters, the same on every system and in every locale. Internal to the library.
#pragma once

#include <string_view>

namespace zelbase::detail {

// The six bytes 9 to 13 and 32.
constexpr bool IsSpace(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }

// A to Z only; bytes from 128 up stay as they are.
constexpr char ToLower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
constexpr char ToUpper(char c) noexcept { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

constexpr std::string_view TrimLeft(std::string_view text) noexcept {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  return text;
}

constexpr std::string_view TrimRight(std::string_view text) noexcept {
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

constexpr std::string_view Trim(std::string_view text) noexcept { return TrimRight(TrimLeft(text)); }

}  // namespace zelbase::detail
