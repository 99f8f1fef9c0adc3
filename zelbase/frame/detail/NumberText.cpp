#include "zelbase/frame/detail/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "zelbase/frame/detail/Characters.h"
#include "zelbase/frame/detail/FixedDigits.h"
#include "zelbase/platform/detail/IntendedWraps.h"

namespace zelbase::detail {
namespace {

// What stands in front of every number: blanks, then at most one sign. `digits` is where the number itself
// begins.
struct Front {
  const char* digits;
  bool negative;
};

Front SkipFront(const char* at, const char* end) {
  while (at != end && IsSpace(*at)) ++at;
  if (at == end || (*at != '-' && *at != '+')) return {at, false};
  return {at + 1, *at == '-'};
}

std::size_t BytesTaken(std::string_view text, const char* end) { return static_cast<std::size_t>(end - text.data()); }

// Unsigned arithmetic wraps at 2^64, and 2^16 and 2^32 divide that, so that the low bits are right for every
// type.
template <class Number>
ZELBASE_WRAPS std::size_t ScanDecimal(std::string_view text, Number& value) {
  const char* const end = text.data() + text.size();
  const auto [digits, negative] = SkipFront(text.data(), end);
  unsigned long long sum = 0;
  const char* at = digits;
  for (; at != end && IsDigit(*at); ++at) sum = sum * 10 + static_cast<unsigned long long>(*at - '0');
  if (at == digits) return 0;
  value = static_cast<Number>(negative ? 0 - sum : sum);
  return BytesTaken(text, at);
}

int HexDigit(char c) {
  if (IsDigit(c)) return c - '0';
  const char lower = ToLower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

template <class Number>
ZELBASE_WRAPS std::size_t ScanHexadecimal(std::string_view text, Number& value) {
  const char* const end = text.data() + text.size();
  const auto [digits, negative] = SkipFront(text.data(), end);
  const char* at = digits;
  if (end - at >= 2 && at[0] == '0' && ToLower(at[1]) == 'x') at += 2;
  unsigned long long sum = 0;
  for (; at != end; ++at) {
    const int digit = HexDigit(*at);
    if (digit < 0) break;
    sum = sum * 16 + static_cast<unsigned long long>(digit);
  }
  if (at == digits) return 0;
  value = static_cast<Number>(negative ? 0 - sum : sum);
  return BytesTaken(text, at);
}

// The exponent written in [at, end), which begins behind the "e". It stops growing far beyond any range.
long long WrittenExponent(const char* at, const char* end) {
  constexpr long long kFar = 1'000'000'000'000'000;
  const auto [digits, negative] = SkipFront(at, end);
  long long exponent = 0;
  for (at = digits; at != end && exponent < kFar; ++at) exponent = exponent * 10 + (*at - '0');
  return negative ? -exponent : exponent;
}

// Whether a number that has left the range left it at the upper end. [at, end) holds it without its sign.
// Written as 0.d1d2... times a power of ten, with d1 not 0, the power is positive for those and negative for
// the others.
bool IsHuge(const char* at, const char* end) {
  long long power = 0;
  bool behindPoint = false;
  bool significant = false;
  for (; at != end && ToLower(*at) != 'e'; ++at) {
    if (*at == '.') {
      behindPoint = true;
      continue;
    }
    significant = significant || *at != '0';
    if (significant && !behindPoint) ++power;
    if (!significant && behindPoint) --power;
  }
  if (at != end) power += WrittenExponent(at + 1, end);
  return power > 0;
}

template <class Number>
std::size_t ScanReal(std::string_view text, Number& value) {
  const char* const end = text.data() + text.size();
  const auto [digits, negative] = SkipFront(text.data(), end);
  // std::from_chars would take a second sign, "inf" and "nan".
  if (digits == end || (!IsDigit(*digits) && *digits != '.')) return 0;
  Number magnitude = 0;
  const auto [taken, error] = std::from_chars(digits, end, magnitude);
  if (error == std::errc::invalid_argument) return 0;
  if (error == std::errc::result_out_of_range) {
    magnitude = IsHuge(digits, taken) ? std::numeric_limits<Number>::infinity() : Number{0};
  }
  value = negative ? -magnitude : magnitude;
  return BytesTaken(text, taken);
}

// "nan" has no sign here: which sign a NaN carries is chance, and chance does not belong in a file.
template <class Number>
bool AppendNotFinite(std::string& text, Number value) {
  if (std::isfinite(value)) return false;
  text += std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf";
  return true;
}

template <class Number>
void AppendGeneralOf(std::string& text, Number value) {
  if (AppendNotFinite(text, value)) return;
  char buffer[32];  // "-1.23456e-4951"
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 6);
  text.append(buffer, result.ptr);
}

template <class Integer>
void AppendWhole(std::string& text, Integer value) {
  char buffer[24];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  text.append(buffer, result.ptr);
}

void AppendZerosBefore(std::string& text, std::size_t length, int width) {
  if (width > 0 && static_cast<std::size_t>(width) > length) {
    text.append(static_cast<std::size_t>(width) - length, '0');
  }
}

}  // namespace

std::size_t ScanInt(std::string_view text, int& value) { return ScanDecimal(text, value); }
std::size_t ScanUnsigned(std::string_view text, unsigned int& value) { return ScanDecimal(text, value); }
std::size_t ScanUnsignedShort(std::string_view text, unsigned short& value) { return ScanDecimal(text, value); }
std::size_t ScanInt64(std::string_view text, long long& value) { return ScanDecimal(text, value); }
std::size_t ScanUnsigned64(std::string_view text, unsigned long long& value) { return ScanDecimal(text, value); }

std::size_t ScanHex(std::string_view text, unsigned int& value) { return ScanHexadecimal(text, value); }
std::size_t ScanHex64(std::string_view text, unsigned long long& value) { return ScanHexadecimal(text, value); }

std::size_t ScanDouble(std::string_view text, double& value) { return ScanReal(text, value); }
std::size_t ScanFloat(std::string_view text, float& value) { return ScanReal(text, value); }

void AppendInt(std::string& text, long long value) { AppendWhole(text, value); }
void AppendUnsigned(std::string& text, unsigned long long value) { AppendWhole(text, value); }

void AppendHex(std::string& text, unsigned long long value, int digits) {
  char buffer[16];
  char* const end = buffer + sizeof buffer;
  char* at = end;
  do {
    *--at = "0123456789ABCDEF"[value & 15];
    value >>= 4;
  } while (value != 0);
  AppendZerosBefore(text, static_cast<std::size_t>(end - at), digits);
  text.append(at, end);
}

ZELBASE_WRAPS void AppendPadded(std::string& text, long long value, int width) {
  const bool negative = value < 0;
  const auto bits = static_cast<unsigned long long>(value);
  char buffer[24];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, negative ? 0 - bits : bits);
  if (negative) text += '-';
  AppendZerosBefore(text, static_cast<std::size_t>(result.ptr - buffer) + (negative ? 1 : 0), width);
  text.append(buffer, result.ptr);
}

void AppendFixed(std::string& text, double value, int decimals) {
  constexpr int kMostDecimals = 350;
  if (AppendNotFinite(text, value)) return;
  char buffer[kMostWholeDigits + 1 + kMostDecimals];
  char* const end = WriteFixed(buffer, std::fabs(value), std::clamp(decimals, 0, kMostDecimals));
  if (std::signbit(value)) text += '-';
  text.append(buffer, end);
}

void AppendGeneral(std::string& text, double value) { AppendGeneralOf(text, value); }
void AppendGeneral(std::string& text, long double value) { AppendGeneralOf(text, value); }

long long ToCount(double value) noexcept {
  constexpr double kLimit = 9223372036854775808.0;  // 2^63
  if (!(value >= -kLimit && value < kLimit)) return std::numeric_limits<long long>::min();
  return static_cast<long long>(value);
}

int ToCount32(double value) noexcept { return static_cast<int>(static_cast<unsigned int>(ToCount(value))); }

int ToPixel(double value) noexcept {
  if (std::isnan(value)) return 0;
  constexpr double kLowest = std::numeric_limits<int>::min();
  constexpr double kHighest = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(value, kLowest, kHighest));
}

}  // namespace zelbase::detail
