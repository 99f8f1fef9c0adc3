// Any bytes to the helpers on texts and numbers: escapes, byte searches, trimming, comparing and the scans,
// each against a slow second way to the same answer.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>

#include "fuzz/Target.h"
#include "zelbase/frame/ByteSize.h"
#include "zelbase/frame/StringAppend.h"
#include "zelbase/frame/StringBytes.h"
#include "zelbase/frame/StringCompare.h"
#include "zelbase/frame/TextEscapes.h"
#include "zelbase/frame/Trim.h"
#include "zelbase/frame/detail/NumberText.h"

namespace {

using namespace zelbase::detail;

void Check(bool holds) {
  if (!holds) std::abort();
}

constexpr std::string_view kSpaces = "\t\n\v\f\r ";
constexpr std::string_view kDecimal = "0123456789";
constexpr std::string_view kHexadecimal = "0123456789abcdefABCDEF";

// The digits behind `at`.
std::string_view DigitsAt(std::string_view text, std::size_t at, std::string_view digits) {
  const std::string_view rest = at < text.size() ? text.substr(at) : std::string_view();
  return rest.substr(0, rest.find_first_not_of(digits));
}

struct Front {
  std::size_t end;  // behind blanks and sign
  bool negative;
};

Front FrontOf(std::string_view text) {
  std::size_t at = std::min(text.find_first_not_of(kSpaces), text.size());
  const bool signedNumber = at < text.size() && (text[at] == '+' || text[at] == '-');
  return {at + (signedNumber ? 1 : 0), signedNumber && text[at] == '-'};
}

// The number modulo 2^64 from its last digit to its first.
unsigned long long ByPlaces(std::string_view digits, unsigned long long base) {
  unsigned long long sum = 0;
  unsigned long long place = 1;
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, place *= base) {
    const std::size_t value = kHexadecimal.find(*digit);
    sum += place * (value < 16 ? value : value - 6);
  }
  return sum;
}

template <class Number>
void CheckWhole(std::string_view text, std::size_t (*scan)(std::string_view, Number&), bool hexadecimal) {
  const Front front = FrontOf(text);
  std::size_t start = front.end;
  const std::string_view prefix = text.substr(std::min(start, text.size()), 2);
  const bool prefixed = hexadecimal && (prefix == "0x" || prefix == "0X");
  if (prefixed) start += 2;
  const std::string_view digits = DigitsAt(text, start, hexadecimal ? kHexadecimal : kDecimal);
  const bool parses = prefixed || !digits.empty();
  const unsigned long long magnitude = ByPlaces(digits, hexadecimal ? 16 : 10);

  Number value = 77;
  Check(scan(text, value) == (parses ? start + digits.size() : 0));
  Check(value == (parses ? static_cast<Number>(front.negative ? 0 - magnitude : magnitude) : Number{77}));
}

// The longest front of `text` that is a decimal number; empty when there is none.
std::string_view RealFront(std::string_view text) {
  const std::size_t start = FrontOf(text).end;
  const std::string_view whole = DigitsAt(text, start, kDecimal);
  std::size_t end = start + whole.size();
  if (end < text.size() && text[end] == '.') {
    const std::string_view decimals = DigitsAt(text, end + 1, kDecimal);
    if (whole.empty() && decimals.empty()) return {};
    end += 1 + decimals.size();
  } else if (whole.empty()) {
    return {};
  }
  if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
    const std::size_t sign = end + 1 < text.size() && (text[end + 1] == '+' || text[end + 1] == '-') ? 1 : 0;
    const std::string_view exponent = DigitsAt(text, end + 1 + sign, kDecimal);
    if (!exponent.empty()) end += 1 + sign + exponent.size();
  }
  return text.substr(0, end);
}

void CheckReal(std::string_view text) {
  const std::string front(RealFront(text));
  double real = 77;
  Check(ScanDouble(text, real) == front.size());
  const double expected = front.empty() ? 77 : std::strtod(front.c_str(), nullptr);
  Check(std::bit_cast<std::uint64_t>(real) == std::bit_cast<std::uint64_t>(expected));
  float single = 77;
  Check(ScanFloat(text, single) == front.size());
  const float expectedSingle = front.empty() ? 77 : std::strtof(front.c_str(), nullptr);
  Check(std::bit_cast<std::uint32_t>(single) == std::bit_cast<std::uint32_t>(expectedSingle));
}

void CheckScans(std::string_view text) {
  CheckWhole(text, ScanInt, false);
  CheckWhole(text, ScanUnsigned, false);
  CheckWhole(text, ScanUnsignedShort, false);
  CheckWhole(text, ScanInt64, false);
  CheckWhole(text, ScanUnsigned64, false);
  CheckWhole(text, ScanHex, true);
  CheckWhole(text, ScanHex64, true);
  CheckReal(text);
}

// Eight bytes of the input as a double, printed in full and read back.
void CheckPrints(std::string_view text) {
  std::uint64_t bits = 0;
  for (const char c : text.substr(0, 8)) bits = bits << 8 | static_cast<unsigned char>(c);
  const double value = std::bit_cast<double>(bits);
  std::string printed;
  AppendFixed(printed, value, 350);
  printed << ' ' << value << ' ' << bits;
  FormatByteSizeperSec(bits, printed);
  printed.clear();
  AppendInt(printed, static_cast<long long>(bits));
  long long back = 0;
  Check(ScanInt64(printed, back) == printed.size() && back == static_cast<long long>(bits));
}

void CheckEscapes(const std::string& text) {
  Check(StrHandleEscape(text).size() <= text.size() + 1);
  std::string doubled;
  for (const char c : text) doubled.append(c == '\\' ? 2 : 1, c);
  Check(StrHandleEscape(doubled) == text);

  const std::string escaped = XMLEscape(text);
  Check(std::count(escaped.begin(), escaped.end(), '>') == std::count(text.begin(), text.end(), '>'));
  Check(escaped.find_first_of("'\"\\\xB3\xB2\xB0") == std::string::npos);
  Check(escaped.rfind('<') == std::string::npos || escaped.find('>', escaped.rfind('<')) != std::string::npos);
  Check(XMLEscape(text.c_str()) == XMLEscape(std::string(text.c_str())));

  std::string plain = text;
  MakeXmlCompatible(plain);
  Check(plain.size() == text.size());
  Check(std::all_of(plain.begin(), plain.end(), [](char c) { return c >= 32; }));
}

void CheckFind(const std::string& text, const std::string& pattern, int start) {
  int expected = -1;
  const int last = static_cast<int>(text.size()) - static_cast<int>(pattern.size());
  for (int i = start; i <= last && i >= 0 && !pattern.empty() && expected < 0; ++i) {
    if (text[static_cast<std::size_t>(i)] == pattern[0]) expected = i;
  }
  try {
    Check(CStringFind(text, pattern, start) == expected && start >= 0);
    if (pattern.size() == 1) Check(CStringFind(text, static_cast<unsigned char>(pattern[0]), start) == expected);
  } catch (const std::invalid_argument&) {
    Check(start < 0);
  }
}

void CheckTrims(const std::string& text, char c) {
  std::string whole = text;
  trim(whole, c);
  Check(c == '\0' || whole.empty() || (whole.front() != c && whole.back() != c));
  Check(text.find(whole) != std::string::npos);
  std::string array = text;
  std::string upToZero = text.c_str();
  Check(trim(array.data(), c) == trim(upToZero, c));
}

void CheckOrder(const std::string& a, const std::string& b) {
  Check(Smaller(a, b) + Greater(a, b) + icompare(a, b) == 1);
  Check(icompare(a.c_str(), b) == icompare(a, b.c_str()));
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  CheckScans(text);
  CheckPrints(text);
  CheckEscapes(text);
  if (size < 2) return;
  // The first two bytes also say where the rest is cut and searched.
  const std::string rest = text.substr(2);
  const std::size_t cut = std::min<std::size_t>(data[0], rest.size());
  CheckScans(rest);
  CheckFind(rest.substr(cut), rest.substr(0, cut), static_cast<signed char>(data[1]));
  CheckTrims(rest, text[0]);
  CheckOrder(rest.substr(0, cut), rest.substr(cut));
}
