// The ordinary lines of a text of positions in a few nanoseconds: plain numbers with a blank, a comma or a semicolon between
// them. Internal to the reader. Whatever looks unusual is left to XyzLine.h, and what is read here reads the same there.
//
// What makes it quick: where the digits of a line are is found for 64 bytes at once, so that the beginning of a number does not
// wait for the one before it to be read; and eight digits become a number in one word.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "adapters/xyz/detail/XyzLine.h"
#include "zelbase/geometry/TimePoint.h"
#include "zelbase/platform/detail/IntendedWraps.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zelbase::detail {

// The bytes from a line's beginning that are looked at at once; so many must be there to be read, whatever they mean.
inline constexpr std::size_t kPlainXyzBytes = 64;

// Bit i is set when byte i of the 64 at `text` is no digit. The portable form; FindOtherThanDigits is the one to call.
inline std::uint64_t FindOtherThanDigitsByWords(const char* text) {
  std::uint64_t others = 0;
  for (unsigned int i = 0; i < kPlainXyzBytes; i += 8) {
    std::uint64_t bits = 0;
    for (unsigned int byte = 0; byte < 8; ++byte) {
      bits |= std::uint64_t{static_cast<unsigned char>(text[i + byte] - '0') > 9} << byte;
    }
    others |= bits << i;
  }
  return others;
}

inline std::uint64_t FindOtherThanDigits(const char* text) {
#if defined(__SSE2__)
  std::uint64_t others = 0;
  for (unsigned int i = 0; i < kPlainXyzBytes; i += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
    const __m128i values = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
    const __m128i isDigit = _mm_cmpeq_epi8(_mm_min_epu8(values, _mm_set1_epi8(9)), values);
    others |= std::uint64_t{static_cast<std::uint16_t>(~_mm_movemask_epi8(isDigit))} << i;
  }
  return others;
#else
  return FindOtherThanDigitsByWords(text);
#endif
}

// `count` digits at `text`, 1 to 8 of them, as a number. Eight bytes are read.
ZELBASE_WRAPS inline std::uint64_t ReadShortDigits(const char* text, unsigned int count) {
  std::uint64_t word = 0;
  std::memcpy(&word, text, sizeof word);
  // The first digit is in the lowest byte. Upwards with them: leading zeros in front, and nothing behind.
  word = (word ^ 0x3030303030303030u) << (64 - 8 * count);
  // Pairs, then fours, then all eight: each step multiplies the left neighbour and adds the right one.
  word = word * 10 + (word >> 8);
  const std::uint64_t odd = (word & 0x000000FF000000FFu) * 0x000F424000000064u;
  const std::uint64_t even = ((word >> 16) & 0x000000FF000000FFu) * 0x0000271000000001u;
  return (odd + even) >> 32;
}

// 0 to 16 digits.
inline std::uint64_t ReadDigits(const char* text, unsigned int count) {
  constexpr std::uint64_t kEightPlaces = 100000000;
  if (count == 0) return 0;
  if (count <= 8) return ReadShortDigits(text, count);
  // The last eight, and those before them.
  return ReadShortDigits(text, count - 8) * kEightPlaces + ReadShortDigits(text + count - 8, 8);
}

template <class Number>
constexpr std::array<Number, 17> MakePowersOfTen() {
  std::array<Number, 17> powers{1};
  for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
  return powers;
}
inline constexpr auto kPowersOfTen = MakePowersOfTen<std::uint64_t>();
inline constexpr auto kExactPowersOfTen = MakePowersOfTen<double>();  // exact up to 1e22

// One line, walked over column by column. Each Take... moves on over what it says, or is false and the line is none for this.
class PlainXyzLine {
 public:
  explicit PlainXyzLine(const char* line) : m_line(line), m_at(line), m_others(FindOtherThanDigits(line)) {}

  const char* At() const { return m_at; }

  void SkipBlanks() {
    while (*m_at == ' ' || *m_at == '\t') ++m_at;
  }

  // Blanks, one comma or semicolon among them at most.
  bool TakeSeparator() {
    const char* const before = m_at;
    SkipBlanks();
    if (*m_at == ',' || *m_at == ';') {
      ++m_at;
      SkipBlanks();
    }
    return m_at != before;
  }

  // The line feed, and what is blank before it. When false nothing has moved.
  bool TakeEnd() {
    const char* at = m_at;
    while (*at == ' ' || *at == '\t') ++at;
    if (*at == '\r') ++at;
    if (*at != '\n') return false;
    m_at = at + 1;
    return true;
  }

  // A number such as "-12.345", correctly rounded: an integer of up to 53 bits divided by an exact power of ten is one rounding.
  // What continues as a number in another way is left for the next Take... to refuse.
  bool TakeNumber(double& value) {
    constexpr unsigned int kMostInARun = 16;
    constexpr unsigned int kMostDigits = 18;
    constexpr std::uint64_t kMostExact = std::uint64_t{1} << 53;
    const bool isNegative = *m_at == '-';
    if (isNegative) ++m_at;
    const char* const whole = m_at;
    const unsigned int wholeCount = DigitsAhead();
    if (wholeCount > kMostInARun) return false;
    m_at += wholeCount;
    unsigned int fractionCount = 0;
    if (*m_at == '.') {
      ++m_at;
      fractionCount = DigitsAhead();
      if (fractionCount > kMostInARun) return false;
      m_at += fractionCount;
    }
    const unsigned int count = wholeCount + fractionCount;
    if (count == 0 || count > kMostDigits) return false;
    const std::uint64_t digits =
        ReadDigits(whole, wholeCount) * kPowersOfTen[fractionCount] + ReadDigits(m_at - fractionCount, fractionCount);
    if (digits > kMostExact) return false;
    const double magnitude = static_cast<double>(static_cast<std::int64_t>(digits)) / kExactPowersOfTen[fractionCount];
    value = isNegative ? -magnitude : magnitude;
    return true;
  }

  // A time that is a date.
  bool TakeDate(double& time) {
    std::size_t size = 0;
    while (!IsColumnEnd(m_at[size])) ++size;
    if (!ReadXyzTime({m_at, size}, time)) return false;
    m_at += size;
    return true;
  }

 private:
  // Digits from here on; more than any number has when that is not known.
  unsigned int DigitsAhead() const {
    const auto offset = static_cast<std::size_t>(m_at - m_line);
    if (offset >= kPlainXyzBytes) return kPlainXyzBytes;
    return static_cast<unsigned int>(std::countr_zero(m_others >> offset));
  }

  static bool IsColumnEnd(char c) { return (c >= '\t' && c <= '\r') || c == ' ' || c == ',' || c == ';' || c == '#'; }

  const char* m_line;
  const char* m_at;
  std::uint64_t m_others;
};

// Reads the line at `text`, which ends with a line feed and has kPlainXyzBytes bytes of memory behind that. The answer is the
// beginning of the next line; null for a line that is not plain, and then nothing has changed. `isTimed` tells whether the time
// was there; it is 0 otherwise.
inline const char* ReadPlainXyzLine(const char* text, TimePoint& point, bool& isTimed) {
  if constexpr (std::endian::native != std::endian::little) return nullptr;
  PlainXyzLine line(text);
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  double time = 0.0;
  line.SkipBlanks();
  if (!line.TakeNumber(x) || !line.TakeSeparator()) return nullptr;
  if (!line.TakeNumber(y) || !line.TakeSeparator()) return nullptr;
  if (!line.TakeNumber(z)) return nullptr;
  const bool endsHere = line.TakeEnd();
  if (!endsHere) {
    if (!line.TakeSeparator()) return nullptr;
    PlainXyzLine asNumber = line;
    if (asNumber.TakeNumber(time) && asNumber.TakeEnd()) {
      line = asNumber;
    } else if (!line.TakeDate(time) || !line.TakeEnd()) {
      return nullptr;
    }
  }
  point.position.Set(x, y, z);
  point.time = time;
  isTimed = !endsHere;
  return line.At();
}

}  // namespace zelbase::detail
