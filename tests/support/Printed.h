// What the C library prints, for tests that hold a text of ours against it.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

// The C library's print, of any length, in the "C" locale that a test process starts with. Zero bytes count.
template <class... Values>
std::string Printed(const char* format, Values... values) {
  char small[512];
  const int length = std::snprintf(small, sizeof small, format, values...);
  if (length < static_cast<int>(sizeof small)) return std::string(small, static_cast<std::size_t>(length));
  std::string text(static_cast<std::size_t>(length) + 1, '\0');
  std::snprintf(text.data(), text.size(), format, values...);
  text.pop_back();
  return text;
}
