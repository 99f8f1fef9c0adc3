#include "TypedValue.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <iterator>
#include <map>
#include <string_view>

namespace zel {
namespace {

// The shortest text that reads back as the same number.
template <class T>
std::string Print(T value) {
  char text[400];
  return std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
}

std::string Print(bool value) { return value ? "true" : "false"; }

std::string PrintColour(unsigned long colour) {
  char text[64];
  std::snprintf(text, sizeof text, "red %lu, green %lu, blue %lu (#%02lX%02lX%02lX)", colour & 0xFF, colour >> 8 & 0xFF,
                colour >> 16 & 0xFF, colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
  return text;
}

template <class T>
bool ReadAndPrint(const FileObject& store, const std::string& section, const std::string& key, std::string& text) {
  T value{};
  if (!store.GetItem(section, key, value)) return false;
  text = Print(value);
  return true;
}

bool ReadText(const FileObject& store, const std::string& section, const std::string& key, std::string& text) {
  return store.GetItem(section, key, text);
}

bool ReadColour(const FileObject& store, const std::string& section, const std::string& key, std::string& text) {
  unsigned long colour = 0;
  if (!store.GetItem(section, key, colour)) return false;
  text = PrintColour(colour);
  return true;
}

using Reader = bool (*)(const FileObject&, const std::string&, const std::string&, std::string&);

const std::map<std::string, Reader>& Readers() {
  static const std::map<std::string, Reader> readers = {
      {"string", ReadText},         {"int", ReadAndPrint<int>},         {"unsigned", ReadAndPrint<unsigned int>},
      {"long", ReadAndPrint<long>}, {"int64", ReadAndPrint<long long>}, {"unsigned64", ReadAndPrint<unsigned long long>},
      {"bool", ReadAndPrint<bool>}, {"double", ReadAndPrint<double>},   {"float", ReadAndPrint<float>},
      {"colour", ReadColour},
  };
  return readers;
}

constexpr std::string_view kDigits = "0123456789";

// Takes the bytes of `set` off the front; how many there were.
std::size_t Take(std::string_view& text, std::string_view set) {
  const std::size_t count = std::min(text.find_first_not_of(set), text.size());
  text.remove_prefix(count);
  return count;
}

void TakeSign(std::string_view& text) {
  if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
}

// A whole number that fits: at most 18 digits, or at most 8 hexadecimal ones.
bool IsInteger(std::string_view text) {
  if (text.starts_with("0x") || text.starts_with("0X")) {
    text.remove_prefix(2);
    const std::size_t digits = Take(text, "0123456789ABCDEFabcdef");
    return text.empty() && digits >= 1 && digits <= 8;
  }
  TakeSign(text);
  const std::size_t digits = Take(text, kDigits);
  return text.empty() && digits >= 1 && digits <= 18;
}

bool IsNumber(std::string_view text) {
  TakeSign(text);
  std::size_t digits = Take(text, kDigits);
  if (text.starts_with('.')) {
    text.remove_prefix(1);
    digits += Take(text, kDigits);
  }
  if (digits == 0 || text.empty()) return digits != 0;
  if (text.front() != 'e' && text.front() != 'E') return false;
  text.remove_prefix(1);
  TakeSign(text);
  return Take(text, kDigits) != 0 && text.empty();
}

bool IsColour(std::string_view text) {
  for (int part = 0; part < 3; ++part) {
    if (part != 0) {
      if (!text.starts_with(',')) return false;
      text.remove_prefix(1);
      Take(text, " ");
    }
    const std::size_t digits = Take(text, kDigits);
    if (digits < 1 || digits > 3) return false;
  }
  return text.empty();
}

}  // namespace

const char* const kValueTypes[] = {"string", "int", "unsigned", "long", "int64", "unsigned64", "bool", "double", "float", "colour"};
const int kValueTypeCount = static_cast<int>(std::size(kValueTypes));

bool ReadAs(const FileObject& store, const std::string& section, const std::string& key, const std::string& type, std::string& text) {
  const auto found = Readers().find(type);
  return found != Readers().end() && found->second(store, section, key, text);
}

std::string GuessType(const std::string& value) {
  if (IsInteger(value)) return "integer";
  if (IsNumber(value)) return "number";
  if (IsColour(value)) return "colour";
  return "text";
}

}  // namespace zel
