#include "FieldText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace zel {
namespace {

constexpr std::string_view kSeparators = " \t,;\r";

void SkipSeparators(std::string_view& rest) { rest.remove_prefix(std::min(rest.find_first_not_of(kSeparators), rest.size())); }

}  // namespace

bool IsEmpty(std::string_view rest) { return rest.find_first_not_of(kSeparators) == std::string_view::npos; }

bool TakeNumber(std::string_view& rest, double& number) {
  SkipSeparators(rest);
  const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), number);
  if (result.ec != std::errc() || !std::isfinite(number)) return false;
  rest.remove_prefix(static_cast<std::size_t>(result.ptr - rest.data()));
  return rest.empty() || kSeparators.find(rest.front()) != std::string_view::npos;
}

std::string_view TakeWord(std::string_view& rest) {
  SkipSeparators(rest);
  const std::string_view word = rest.substr(0, std::min(rest.find_first_of(kSeparators), rest.size()));
  rest.remove_prefix(word.size());
  return word;
}

void PassMark(std::istream& stream) {
  for (const char byte : std::string_view("\xEF\xBB\xBF")) {
    if (stream.peek() != std::char_traits<char>::to_int_type(byte)) {
      stream.clear();
      stream.seekg(0);
      return;
    }
    stream.get();
  }
}

}  // namespace zel
