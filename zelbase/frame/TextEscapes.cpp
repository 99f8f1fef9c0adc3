#include "zelbase/frame/TextEscapes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

namespace {

// The character of the number at `at`, saturating at 32 bits; `at` moves behind its digits.
char NumberedCharacter(std::string_view text, std::size_t& at, std::string_view digits, unsigned int base) {
  constexpr std::uint64_t kHighest = std::numeric_limits<std::uint32_t>::max();
  std::uint64_t number = 0;
  for (; at < text.size(); ++at) {
    const char lower = text[at] >= 'A' && text[at] <= 'F' ? static_cast<char>(text[at] - 'A' + 'a') : text[at];
    const std::size_t digit = digits.find(lower);
    if (digit == digits.npos) break;
    number = std::min(number * base + digit, kHighest);
  }
  return static_cast<char>(number & 0xFF);
}

// The character of the escape whose backslash stands before `at`; `at` moves behind the escape.
char EscapedCharacter(std::string_view text, std::size_t& at) {
  constexpr std::string_view kWritten = "rnftbva?\\\"";
  constexpr std::string_view kResult = "\r\n\f\t\b\v\a?\\\"";
  const std::size_t known = kWritten.find(text[at]);
  if (known != kWritten.npos) {
    ++at;
    return kResult[known];
  }
  if (text[at] == 'x') return NumberedCharacter(text, ++at, "0123456789abcdef", 16);
  // Kept: any other character is an octal number without digits, a zero byte, and stays to be copied.
  return NumberedCharacter(text, at, "01234567", 8);
}

// What replaces a character anywhere; empty for one that stays.
std::string_view XmlReplacement(char c) {
  switch (static_cast<unsigned char>(c)) {
    case '&': return "&amp;";  // Kept: that of an "&amp;" too, since callers hand over raw text.
    case '\'': return "&#8217;";
    case '"': return "&#8221;";
    case 0xB3: return "&#179;";
    case 0xB2: return "&#178;";
    case 0xB0: return "&#176;";
    case '\\': return "&#92;";
    default: return {};
  }
}

}  // namespace

std::string StrHandleEscape(std::string text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const char c = text[at++];
    if (c != '\\') {
      result += c;
    } else if (at < text.size()) {
      result += EscapedCharacter(text, at);
    }
  }
  return result;
}

std::string XMLEscape(const char* text) { return XMLEscape(std::string(text == nullptr ? "" : text)); }

std::string XMLEscape(const std::string& text) {
  std::string result;
  result.reserve(text.size() + text.size() / 8);
  // Kept: a "<" with a ">" behind it may be markup and stays. Only those behind the last ">" have none.
  const std::size_t lastMarkup = text.rfind('>');
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool loneBracket = text[i] == '<' && (lastMarkup == text.npos || i > lastMarkup);
    const std::string_view replacement = loneBracket ? "&lt;" : XmlReplacement(text[i]);
    if (replacement.empty()) {
      result += text[i];
    } else {
      result += replacement;
    }
  }
  return result;
}

void MakeXmlCompatible(std::string& text) {
  // Kept: characters are signed here, so that bytes from 128 up are below 32 and go too; files hold plain
  // letters only.
  std::replace_if(
      text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) < 32; }, ' ');
}
