#include "zelbase/config/detail/TextHash.h"

#include <cstring>
#include <random>

namespace zelbase::detail {
namespace {

struct Seeds {
  std::uint64_t low;
  std::uint64_t high;
};

std::uint64_t RandomWord(std::random_device& source) {
  const std::uint64_t high = source();
  return (high << 32) | source();
}

const Seeds& ProcessSeeds() {
  // Trivially destructible, so that destructors of statics may still hash.
  static const Seeds seeds = [] {
    std::random_device source;
    const std::uint64_t low = RandomWord(source);
    return Seeds{low, RandomWord(source)};
  }();
  return seeds;
}

std::uint64_t LoadWord(const char* from) noexcept {
  std::uint64_t word;
  std::memcpy(&word, from, sizeof word);
  return word;
}

std::uint64_t LoadUpTo8(const char* from, std::size_t size) noexcept {
  if (size >= 4) {
    std::uint32_t front;
    std::uint32_t back;
    std::memcpy(&front, from, sizeof front);
    std::memcpy(&back, from + size - 4, sizeof back);
    return (static_cast<std::uint64_t>(front) << 32) | back;
  }
  if (size == 0) return 0;
  const auto byte = [from](std::size_t at) { return static_cast<std::uint64_t>(static_cast<unsigned char>(from[at])); };
  return (byte(0) << 16) | (byte(size / 2) << 8) | byte(size - 1);
}

// Both halves of the 128-bit product, folded.
std::uint64_t Mix(std::uint64_t a, std::uint64_t b) noexcept {
  __extension__ using Wide = unsigned __int128;
  const Wide product = static_cast<Wide>(a) * b;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

}  // namespace

std::uint32_t HashText(std::string_view text) noexcept {
  const Seeds& seeds = ProcessSeeds();
  const char* from = text.data();
  std::size_t left = text.size();
  std::uint64_t state = seeds.low ^ text.size();
  for (; left > 16; left -= 16, from += 16) {
    state = Mix(LoadWord(from) ^ seeds.high, LoadWord(from + 8) ^ state);
  }
  const std::uint64_t front = left > 8 ? LoadWord(from) : LoadUpTo8(from, left);
  const std::uint64_t back = left > 8 ? LoadWord(from + left - 8) : 0;
  const std::uint64_t mixed = Mix(front ^ seeds.high, back ^ state);
  return static_cast<std::uint32_t>(Mix(mixed ^ seeds.low, seeds.high | 1));
}

}  // namespace zelbase::detail
