#include "zelbase/frame/detail/PrintfText.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "zelbase/frame/detail/Characters.h"
#include "zelbase/frame/detail/FixedDigits.h"
#include "zelbase/platform/detail/IntendedWraps.h"

namespace zelbase::detail {
namespace {

constexpr std::string_view kDoubleKinds = "aefgAEFG";
constexpr std::string_view kIntKinds = "diouxXc";

// Room for the longest number without its padding: digits, point, decimals, exponent.
constexpr int kLongest = kMostWholeDigits + 1 + kMostPrinted + 8;

// --- A field: padding, prefix (sign or base), zeros, digits ---

void AppendField(std::string& text, const PrintfForm& form, bool zeros, std::string_view prefix, std::string_view digits) {
  const std::size_t length = prefix.size() + digits.size();
  const std::size_t width = static_cast<std::size_t>(form.width);
  const std::size_t padding = width > length ? width - length : 0;
  if (padding == 0) {
    text.append(prefix).append(digits);
    return;
  }
  if (!form.left && !zeros) text.append(padding, ' ');
  text.append(prefix);
  if (!form.left && zeros) text.append(padding, '0');
  text.append(digits);
  if (form.left) text.append(padding, ' ');
}

std::string_view Sign(const PrintfForm& form, bool negative) { return negative ? "-" : form.plus ? "+" : form.blank ? " " : ""; }

// --- The kinds of a double: each writes a magnitude that is finite and gives its end ---

// Puts a point in at `place`, unless one stands among the digits before it.
char* EnsurePoint(char* begin, char* place, char* end) {
  if (std::find(begin, place, '.') != place) return end;
  std::copy_backward(place, end, end + 1);
  *place = '.';
  return end + 1;
}

char* WriteScientific(char* at, double magnitude, int precision, bool alternate) {
  char* const end = std::to_chars(at, at + kLongest, magnitude, std::chars_format::scientific, precision).ptr;
  return alternate ? EnsurePoint(at, std::find(at, end, 'e'), end) : end;
}

char* WriteFixedForm(char* at, double magnitude, int precision, bool alternate) {
  char* const end = WriteFixed(at, magnitude, precision);
  return alternate ? EnsurePoint(at, end, end) : end;
}

// With "#", zeros at the end stay.
char* WriteGeneral(char* at, double magnitude, int precision, bool alternate) {
  const int digits = std::max(precision, 1);
  if (!alternate) return std::to_chars(at, at + kLongest, magnitude, std::chars_format::general, digits).ptr;
  char* const end = WriteScientific(at, magnitude, digits - 1, true);
  const char* const mark = std::find(at, end, 'e');
  int exponent = 0;
  std::from_chars(mark + 2, end, exponent);
  if (mark[1] == '-') exponent = -exponent;
  if (exponent < -4 || exponent >= digits) return end;
  return WriteFixedForm(at, magnitude, digits - 1 - exponent, true);
}

// The mantissa's 52 bits are 13 hexadecimal digits behind the point. A number too small for a leading 1 has a
// leading 0 and the lowest exponent; rounding may make the leading digit a 2.
char* WriteHexadecimal(char* at, double magnitude, int precision, bool alternate) {
  constexpr int kDigits = 13;
  const auto bits = std::bit_cast<std::uint64_t>(magnitude);
  const auto stored = static_cast<int>(bits >> 52);
  const std::uint64_t fraction = bits & ((std::uint64_t{1} << 52) - 1);
  const int exponent = bits == 0 ? 0 : std::max(stored, 1) - 1023;
  std::uint64_t mantissa = fraction | (stored == 0 ? 0 : std::uint64_t{1} << 52);

  int digits = kDigits;
  if (precision < 0) {
    while (digits > 0 && (mantissa >> (4 * (kDigits - digits)) & 15) == 0) --digits;
  } else if (precision < kDigits) {
    digits = precision;
    const std::uint64_t unit = std::uint64_t{1} << (4 * (kDigits - digits));
    const std::uint64_t rest = mantissa & (unit - 1);
    mantissa -= rest;
    if (rest > unit / 2 || (rest == unit / 2 && (mantissa & unit) != 0)) mantissa += unit;
  }

  *at++ = static_cast<char>('0' + (mantissa >> 52));
  if (digits > 0 || precision > 0 || alternate) *at++ = '.';
  for (int i = 1; i <= digits; ++i) *at++ = "0123456789abcdef"[mantissa >> (4 * (kDigits - i)) & 15];
  if (precision > digits) at = std::fill_n(at, precision - digits, '0');
  *at++ = 'p';
  *at++ = exponent < 0 ? '-' : '+';
  return std::to_chars(at, at + 4, std::abs(exponent)).ptr;
}

char* WriteFinite(char* at, const PrintfForm& form, double magnitude) {
  constexpr int kUsual = 6;
  const int precision = form.precision < 0 ? kUsual : form.precision;
  switch (ToLower(form.kind)) {
    case 'a': return WriteHexadecimal(at, magnitude, form.precision, form.alternate);
    case 'e': return WriteScientific(at, magnitude, precision, form.alternate);
    case 'g': return WriteGeneral(at, magnitude, precision, form.alternate);
    default: return WriteFixedForm(at, magnitude, precision, form.alternate);
  }
}

bool IsUpper(char c) { return c != ToLower(c); }

// --- The kinds of an int ---

void AppendCharacter(std::string& text, const PrintfForm& form, int value) {
  const auto byte = static_cast<char>(static_cast<unsigned char>(value));
  AppendField(text, form, false, "", std::string_view(&byte, 1));
}

int BaseOf(char kind) { return kind == 'o' ? 8 : kind == 'x' || kind == 'X' ? 16 : 10; }

// --- Reading a format ---

bool TakeFlag(char c, PrintfForm& form) {
  switch (c) {
    case '-': return form.left = true;
    case '+': return form.plus = true;
    case ' ': return form.blank = true;
    case '#': return form.alternate = true;
    case '0': return form.zeros = true;
    default: return false;
  }
}

// Takes a number of at most four digits; none at all is 0.
bool TakeNumber(std::string_view& rest, int& number) {
  constexpr std::size_t kMostDigits = 4;
  const std::string_view all = rest;
  for (number = 0; !rest.empty() && IsDigit(rest.front()); rest.remove_prefix(1)) {
    if (all.size() - rest.size() == kMostDigits) return false;
    number = number * 10 + (rest.front() - '0');
  }
  return true;
}

// Takes what stands behind a "%". False when that is no conversion of `kinds`.
bool TakeForm(std::string_view& rest, std::string_view kinds, PrintfForm& form) {
  while (!rest.empty() && TakeFlag(rest.front(), form)) rest.remove_prefix(1);
  if (!TakeNumber(rest, form.width)) return false;
  if (rest.starts_with('.')) {
    rest.remove_prefix(1);
    if (!TakeNumber(rest, form.precision)) return false;
  }
  if (rest.empty() || kinds.find(rest.front()) == kinds.npos) return false;
  form.kind = rest.front();
  rest.remove_prefix(1);
  return true;
}

template <class Number>
std::string PrintOne(std::string_view rest, std::string_view kinds, Number value) {
  std::string text;
  bool printed = false;
  for (;;) {
    const std::size_t percent = rest.find('%');
    text.append(rest.substr(0, percent));
    if (percent == rest.npos) return text;
    rest.remove_prefix(percent + 1);
    if (rest.starts_with('%')) {
      text += '%';
      rest.remove_prefix(1);
      continue;
    }
    PrintfForm form;
    if (printed || !TakeForm(rest, kinds, form)) return std::string();
    AppendPrintf(text, form, value);
    printed = true;
  }
}

}  // namespace

void AppendPrintf(std::string& text, const PrintfForm& form, double value) {
  const std::string_view sign = Sign(form, std::signbit(value));
  const bool upper = IsUpper(form.kind);
  if (!std::isfinite(value)) {
    AppendField(text, form, false, sign, std::isnan(value) ? (upper ? "NAN" : "nan") : (upper ? "INF" : "inf"));
    return;
  }
  char digits[kLongest];
  char* const end = WriteFinite(digits, form, std::fabs(value));
  if (upper) std::transform(digits, end, digits, ToUpper);
  const std::string_view written(digits, static_cast<std::size_t>(end - digits));
  if (ToLower(form.kind) != 'a') {
    AppendField(text, form, form.zeros, sign, written);
    return;
  }
  // The "0x" stands in front of padding zeros, as the sign does.
  AppendField(text, form, form.zeros, std::string(sign) + (upper ? "0X" : "0x"), written);
}

ZELBASE_WRAPS void AppendPrintf(std::string& text, const PrintfForm& form, int value) {
  if (form.kind == 'c') return AppendCharacter(text, form, value);
  const bool hasSign = form.kind == 'd' || form.kind == 'i';
  const bool negative = hasSign && value < 0;
  const unsigned int bits = static_cast<unsigned int>(value);
  const unsigned int magnitude = negative ? 0 - bits : bits;

  char buffer[16];  // 11 octal digits
  char* const end = std::to_chars(buffer, buffer + sizeof buffer, magnitude, BaseOf(form.kind)).ptr;
  if (form.kind == 'X') std::transform(buffer, end, buffer, ToUpper);
  std::string_view digits(buffer, static_cast<std::size_t>(end - buffer));
  if (form.precision == 0 && magnitude == 0) digits = "";

  // The precision is the least number of digits; "#" adds a zero to an octal that does not begin with one.
  std::size_t zeros = static_cast<std::size_t>(std::max(form.precision, 0));
  zeros = zeros > digits.size() ? zeros - digits.size() : 0;
  if (form.kind == 'o' && form.alternate && zeros == 0 && !digits.starts_with('0')) zeros = 1;
  std::string longer;
  if (zeros > 0) digits = longer.assign(zeros, '0').append(digits);

  const std::string_view base = form.kind == 'X' ? "0X" : "0x";
  const bool showsBase = form.alternate && BaseOf(form.kind) == 16 && magnitude != 0;
  AppendField(text, form, form.zeros && form.precision < 0, hasSign ? Sign(form, negative) : showsBase ? base : "", digits);
}

std::string PrintfText(std::string_view format, double value) { return PrintOne(format, kDoubleKinds, value); }

std::string PrintfText(std::string_view format, int value) { return PrintOne(format, kIntKinds, value); }

}  // namespace zelbase::detail
