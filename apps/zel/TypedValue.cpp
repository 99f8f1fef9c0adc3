#include "TypedValue.h"

#include <charconv>
#include <cstdio>
#include <iterator>
#include <map>
#include <regex>

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
      {"string", ReadText},
      {"int", ReadAndPrint<int>},
      {"unsigned", ReadAndPrint<unsigned int>},
      {"long", ReadAndPrint<long>},
      {"int64", ReadAndPrint<long long>},
      {"unsigned64", ReadAndPrint<unsigned long long>},
      {"bool", ReadAndPrint<bool>},
      {"double", ReadAndPrint<double>},
      {"float", ReadAndPrint<float>},
      {"colour", ReadColour},
  };
  return readers;
}

}  // namespace

const char* const kValueTypes[] = {"string", "int",  "unsigned", "long",  "int64",
                                   "unsigned64", "bool", "double",   "float", "colour"};
const int kValueTypeCount = static_cast<int>(std::size(kValueTypes));

bool ReadAs(const FileObject& store, const std::string& section, const std::string& key, const std::string& type,
            std::string& text) {
  const auto found = Readers().find(type);
  return found != Readers().end() && found->second(store, section, key, text);
}

std::string GuessType(const std::string& value) {
  static const std::regex integer("[+-]?[0-9]{1,18}|0[xX][0-9A-Fa-f]{1,8}");
  static const std::regex number("[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][+-]?[0-9]+)?");
  static const std::regex colour("[0-9]{1,3}, *[0-9]{1,3}, *[0-9]{1,3}");
  // std::regex recurses once a character; no number is as long as this.
  if (value.size() > 64) return "text";
  if (std::regex_match(value, integer)) return "integer";
  if (std::regex_match(value, number)) return "number";
  if (std::regex_match(value, colour)) return "colour";
  return "text";
}

}  // namespace zel
