#include "zelbase/frame/StringCompare.h"

#include <algorithm>
#include <string_view>

#include "zelbase/frame/detail/Characters.h"
#include "zelbase/frame/detail/NumberText.h"

namespace {

std::string_view UpToZero(const char* text) { return text == nullptr ? std::string_view() : std::string_view(text); }

bool EqualExceptCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return zelbase::detail::ToUpper(x) == zelbase::detail::ToUpper(y); });
}

bool ComesBefore(char x, char y) {
  return static_cast<unsigned char>(zelbase::detail::ToLower(x)) < static_cast<unsigned char>(zelbase::detail::ToLower(y));
}

}  // namespace

bool icompare(const std::string& a, const std::string& b) { return EqualExceptCase(a, b); }
bool icompare(const std::string& a, const char* b) { return icompare(a.c_str(), b); }
bool icompare(const char* a, const std::string& b) { return icompare(a, b.c_str()); }
bool icompare(const char* a, const char* b) { return EqualExceptCase(UpToZero(a), UpToZero(b)); }

bool Greater(const std::string& a, const std::string& b) { return Smaller(b, a); }

bool Smaller(const std::string& a, const std::string& b) {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), ComesBefore);
}

double atof(const std::string& text) {
  double value = 0;
  zelbase::detail::ScanDouble(text, value);
  return value;
}

int atoi(const std::string& text) {
  int value = 0;
  zelbase::detail::ScanInt(text, value);
  return value;
}
