#include "zelbase/frame/StringAppend.h"

#include "zelbase/frame/detail/NumberText.h"

namespace {

std::string& Signed(std::string& text, long long value) {
  zelbase::detail::AppendInt(text, value);
  return text;
}

std::string& Unsigned(std::string& text, unsigned long long value) {
  zelbase::detail::AppendUnsigned(text, value);
  return text;
}

template <class Real>
std::string& General(std::string& text, Real value) {
  zelbase::detail::AppendGeneral(text, value);
  return text;
}

}  // namespace

std::string& operator<<(std::string& text, const std::string& value) { return text += value; }
std::string& operator<<(std::string& text, const char* value) { return value == nullptr ? text : text += value; }
std::string& operator<<(std::string& text, char value) { return text += value; }
std::string& operator<<(std::string& text, bool value) { return text += value ? '1' : '0'; }

std::string& operator<<(std::string& text, short value) { return Signed(text, value); }
std::string& operator<<(std::string& text, int value) { return Signed(text, value); }
std::string& operator<<(std::string& text, long value) { return Signed(text, value); }
std::string& operator<<(std::string& text, long long value) { return Signed(text, value); }
std::string& operator<<(std::string& text, unsigned short value) { return Unsigned(text, value); }
std::string& operator<<(std::string& text, unsigned int value) { return Unsigned(text, value); }
std::string& operator<<(std::string& text, unsigned long value) { return Unsigned(text, value); }
std::string& operator<<(std::string& text, unsigned long long value) { return Unsigned(text, value); }

std::string& operator<<(std::string& text, float value) { return General(text, static_cast<double>(value)); }
std::string& operator<<(std::string& text, double value) { return General(text, value); }
std::string& operator<<(std::string& text, long double value) { return General(text, value); }
