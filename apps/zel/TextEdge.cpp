#include "TextEdge.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace zel {
namespace {

// Code points of the bytes 0x80 to 0x9F; 0 where Windows-1252 has none.
constexpr std::array<unsigned int, 32> kWindows1252 = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0, 0x017D, 0,
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0, 0x017E, 0x0178};

unsigned char Byte(char c) { return static_cast<unsigned char>(c); }

unsigned int CodePoint(unsigned char byte) {
  if (byte < 0x80 || byte >= 0xA0) return byte;
  return kWindows1252[byte - 0x80u];
}

// Reads one UTF-8 sequence at the front of `text`; its length, 0 when it is not valid.
std::size_t ReadSequence(std::string_view text, unsigned int& codePoint) {
  const unsigned char first = Byte(text.front());
  if (first < 0x80) {
    codePoint = first;
    return 1;
  }
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || text.size() < length) return 0;
  unsigned int value = first & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((Byte(text[i]) & 0xC0) != 0x80) return 0;
    value = value << 6 | (Byte(text[i]) & 0x3Fu);
  }
  constexpr std::array<unsigned int, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
  if (value < kSmallest[length] || value > 0x10FFFF || (value >= 0xD800 && value < 0xE000)) return 0;
  codePoint = value;
  return length;
}

void AppendUtf8(std::string& text, unsigned int codePoint) {
  if (codePoint < 0x80) {
    text += static_cast<char>(codePoint);
  } else if (codePoint < 0x800) {
    text += static_cast<char>(0xC0 | codePoint >> 6);
    text += static_cast<char>(0x80 | (codePoint & 0x3F));
  } else {
    text += static_cast<char>(0xE0 | codePoint >> 12);
    text += static_cast<char>(0x80 | (codePoint >> 6 & 0x3F));
    text += static_cast<char>(0x80 | (codePoint & 0x3F));
  }
}

void AppendEscaped(std::string& text, unsigned char byte) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  text += "\\x";
  text += kDigits[byte >> 4];
  text += kDigits[byte & 0xF];
}

bool IsControl(unsigned int codePoint) { return (codePoint < 0x20 && codePoint != '\t') || (codePoint >= 0x7F && codePoint < 0xA0); }

// One character from the front of `text`, appended for the terminal; the bytes taken.
std::size_t AppendCharacter(std::string& result, std::string_view text, Encoding encoding) {
  unsigned int codePoint = 0;
  std::size_t length = 1;
  if (encoding == Encoding::Utf8) {
    length = ReadSequence(text, codePoint);
  } else {
    codePoint = CodePoint(Byte(text.front()));
  }
  if (length == 0 || codePoint == 0 || IsControl(codePoint)) {
    AppendEscaped(result, Byte(text.front()));
    return 1;
  }
  if (encoding == Encoding::Utf8) {
    result += text.substr(0, length);
  } else {
    AppendUtf8(result, codePoint);
  }
  return length;
}

bool ToWindows1252(unsigned int codePoint, char& byte) {
  for (unsigned int candidate = 1; candidate < 256; ++candidate) {
    if (CodePoint(static_cast<unsigned char>(candidate)) == codePoint) {
      byte = static_cast<char>(candidate);
      return true;
    }
  }
  return false;
}

}  // namespace

Encoding DetectEncoding(std::string_view text) {
  bool foreign = false;
  while (!text.empty()) {
    unsigned int codePoint = 0;
    const std::size_t length = ReadSequence(text, codePoint);
    if (length == 0) return Encoding::Windows1252;
    foreign = foreign || length > 1;
    text.remove_prefix(length);
  }
  return foreign ? Encoding::Utf8 : Encoding::Windows1252;
}

std::string ToTerminal(std::string_view text, Encoding encoding) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) text.remove_prefix(AppendCharacter(result, text, encoding));
  return result;
}

std::string ToUtf8(std::string_view text, Encoding encoding) {
  if (encoding == Encoding::Utf8) return std::string(text);
  std::string result;
  for (const char c : text) {
    const unsigned int codePoint = CodePoint(Byte(c));
    AppendUtf8(result, codePoint != 0 ? codePoint : Byte(c));
  }
  return result;
}

bool FromArgument(std::string_view argument, Encoding encoding, std::string& bytes) {
  if (encoding == Encoding::Utf8) {
    bytes = argument;
    return true;
  }
  std::string result;
  while (!argument.empty()) {
    unsigned int codePoint = 0;
    const std::size_t length = ReadSequence(argument, codePoint);
    char byte = 0;
    if (length == 0 || !ToWindows1252(codePoint, byte)) return false;
    result += byte;
    argument.remove_prefix(length);
  }
  bytes = result;
  return true;
}

std::string FromUtf8(std::string_view text) {
  std::string bytes;
  while (!text.empty()) {
    unsigned int codePoint = 0;
    const std::size_t length = ReadSequence(text, codePoint);
    char byte = 0;
    bytes += length > 0 && ToWindows1252(codePoint, byte) ? byte : '?';
    text.remove_prefix(length > 0 ? length : 1);
  }
  return bytes;
}

std::string ToColumn(std::string_view text, std::size_t width) {
  // A byte is a character before the conversion.
  return ToTerminal(text, Encoding::Windows1252) + std::string(text.size() < width ? width - text.size() : 0, ' ');
}

bool ToNumber(std::string_view argument, double& value) {
  const char* const end = argument.data() + argument.size();
  const auto result = std::from_chars(argument.data(), end, value);
  return result.ec == std::errc() && result.ptr == end && std::isfinite(value);
}

std::string Counted(std::size_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace zel
