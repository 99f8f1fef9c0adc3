// Builds a message in one expression: `text << "Line " << 12 << ": " << 2.5`. Neighbours: StringBytes.h appends bytes,
// detail/NumberText.h holds the forms.
//
// These operators stand at global scope. Inside a namespace that has an operator<< of its own they are hidden; say
// `using ::operator<<;` there.
#pragma once

#include <concepts>
#include <string>
#include <utility>

#include "zelbase/platform/ZelBaseApi.h"

// Each appends the text form of its right side to `text`, in every locale the same, and returns `text`.

// As it is. Null appends nothing.
ZELBASE_API std::string& operator<<(std::string& text, const std::string& value);
ZELBASE_API std::string& operator<<(std::string& text, const char* value);
ZELBASE_API std::string& operator<<(std::string& text, char value);

// 1 or 0.
ZELBASE_API std::string& operator<<(std::string& text, bool value);

// In decimal. The bytes `signed char` and `unsigned char` are numbers too, by their promotion to int.
ZELBASE_API std::string& operator<<(std::string& text, short value);
ZELBASE_API std::string& operator<<(std::string& text, int value);
ZELBASE_API std::string& operator<<(std::string& text, long value);
ZELBASE_API std::string& operator<<(std::string& text, long long value);
ZELBASE_API std::string& operator<<(std::string& text, unsigned short value);
ZELBASE_API std::string& operator<<(std::string& text, unsigned int value);
ZELBASE_API std::string& operator<<(std::string& text, unsigned long value);
ZELBASE_API std::string& operator<<(std::string& text, unsigned long long value);

// Six significant digits, "%g": 2.5 as "2.5", 0.00001 as "1e-05"; "nan", "inf", "-inf".
ZELBASE_API std::string& operator<<(std::string& text, float value);
ZELBASE_API std::string& operator<<(std::string& text, double value);
ZELBASE_API std::string& operator<<(std::string& text, long double value);

// The same on a temporary, whose text is then the result: `std::string() << "Line " << 12`.
template <class Text, class Value>
requires std::same_as<Text, std::string> && requires(std::string& text, const Value& value) { text << value; }
std::string operator<<(Text&& text, const Value& value) {
  text << value;
  return std::move(text);
}
