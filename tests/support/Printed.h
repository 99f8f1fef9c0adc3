// What the C library prints and reads, for tests that hold a text of ours against it.
#pragma once

#include <locale.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>

// Puts the calling thread into the "C" locale for a scope, whatever locale the process is in.
class CLocale {
 public:
  CLocale() : m_before(uselocale(Shared())) {}
  ~CLocale() { uselocale(m_before); }
  CLocale(const CLocale&) = delete;
  CLocale& operator=(const CLocale&) = delete;

 private:
  // Made once: a witness may be asked a million times.
  static locale_t Shared() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
  }

  const locale_t m_before;
};

// The C library's reading of a number in the "C" locale, whatever locale the process is in.
inline double ReadDouble(const char* text, char** end = nullptr) {
  const CLocale locale;
  return std::strtod(text, end);
}
inline float ReadFloat(const char* text) {
  const CLocale locale;
  return std::strtof(text, nullptr);
}

// The C library's print, of any length, in the "C" locale. Zero bytes count.
template <class... Values>
std::string Printed(const char* format, Values... values) {
  const CLocale locale;
  char small[512];
  const int length = std::snprintf(small, sizeof small, format, values...);
  if (length < static_cast<int>(sizeof small)) return std::string(small, static_cast<std::size_t>(length));
  std::string text(static_cast<std::size_t>(length) + 1, '\0');
  std::snprintf(text.data(), text.size(), format, values...);
  text.pop_back();
  return text;
}
