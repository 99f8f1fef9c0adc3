// A host with a decimal comma, for tests of texts that must not change with it.
#pragma once

#include <clocale>
#include <locale>
#include <string>

// Both the language's locale and, where the machine has one, the C library's are set to a decimal comma.
class CommaLocale {
 public:
  CommaLocale()
      : m_beforeInC(std::setlocale(LC_ALL, nullptr)), m_before(std::locale::global(std::locale(std::locale::classic(), new Comma))) {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8", "nl_NL.UTF-8"}) {
      if (std::setlocale(LC_ALL, name) != nullptr) return;
    }
  }
  ~CommaLocale() {
    std::locale::global(m_before);
    std::setlocale(LC_ALL, m_beforeInC.c_str());
  }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;

 private:
  struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  std::string m_beforeInC;
  std::locale m_before;
};
