#include "zelbase/frame/detail/FixedDigits.h"

#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace zelbase::detail {
namespace {

__extension__ using Wide = unsigned __int128;

constexpr int kQuickDecimals = 17;
constexpr double kQuickLimit = 9007199254740992.0;  // 2^53: below it the whole part splits off exactly

constexpr auto kPowers = [] {
  std::array<std::uint64_t, kQuickDecimals + 1> powers{};
  std::uint64_t power = 1;
  for (auto& entry : powers) {
    entry = power;
    power *= 10;
  }
  return powers;
}();

// "00" to "99".
constexpr auto kPairs = [] {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

// `number` in exactly `digits` digits.
char* WriteDigits(char* at, std::uint64_t number, int digits) {
  char* const end = at + digits;
  char* place = end;
  for (; place - at >= 2; number /= 100) {
    place -= 2;
    std::memcpy(place, &kPairs[2 * (number % 100)], 2);
  }
  if (place != at) *at = static_cast<char>('0' + number);
  return end;
}

// `part` * 10^decimals, a whole number and what is left of it told by how it compares with one half. `part` is
// below 1.
struct Scaled {
  std::uint64_t whole = 0;
  int half = -1;  // the rest: -1 below one half, 0 exactly that, 1 above
};

Scaled Scale(double part, int decimals) {
  const auto bits = std::bit_cast<std::uint64_t>(part);
  const auto exponent = static_cast<int>(bits >> 52);
  const std::uint64_t fraction = bits & ((std::uint64_t{1} << 52) - 1);
  // part is mantissa / 2^shift. From 128 on the product, below 2^110, stays below the half.
  const int shift = 1075 - exponent;
  if (shift >= 128) return {};
  const std::uint64_t mantissa = fraction | std::uint64_t{1} << 52;
  const Wide product = static_cast<Wide>(mantissa) * kPowers[static_cast<std::size_t>(decimals)];
  const Wide half = Wide{1} << (shift - 1);
  const Wide rest = product & ((half << 1) - 1);
  return {static_cast<std::uint64_t>(product >> shift), rest < half ? -1 : rest == half ? 0 : 1};
}

char* WriteQuickly(char* at, double magnitude, int decimals) {
  auto whole = static_cast<std::uint64_t>(static_cast<std::int64_t>(magnitude));
  Scaled part = Scale(magnitude - static_cast<double>(static_cast<std::int64_t>(whole)), decimals);
  const bool odd = ((decimals == 0 ? whole : part.whole) & 1) != 0;
  if (part.half > 0 || (part.half == 0 && odd)) ++part.whole;
  if (part.whole == kPowers[static_cast<std::size_t>(decimals)]) {
    ++whole;
    part.whole = 0;
  }
  at = std::to_chars(at, at + kMostWholeDigits, whole).ptr;
  if (decimals == 0) return at;
  *at = '.';
  return WriteDigits(at + 1, part.whole, decimals);
}

}  // namespace

char* WriteFixed(char* at, double magnitude, int decimals) noexcept {
  if (magnitude < kQuickLimit && decimals <= kQuickDecimals) return WriteQuickly(at, magnitude, decimals);
  char* const end = at + kMostWholeDigits + 1 + decimals;
  return std::to_chars(at, end, magnitude, std::chars_format::fixed, decimals).ptr;
}

}  // namespace zelbase::detail
