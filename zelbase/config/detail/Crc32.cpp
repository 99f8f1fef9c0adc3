#include "zelbase/config/detail/Crc32.h"

#include <array>
#include <atomic>
#include <cstdint>

#include "zelbase/config/detail/CrcTables.h"
#include "zelbase/config/detail/Prefetch.h"

#if defined(__x86_64__) && defined(__GNUC__)
#define ZELBASE_CRC32_FOLDS 1
#include <immintrin.h>
#else
#define ZELBASE_CRC32_FOLDS 0
#endif

namespace zelbase::detail {

namespace {

using Byte = unsigned char;

// --- Portable -------------------------------------------------------------------------------------------------------

constexpr std::size_t kSlice = 16;
constexpr auto kTables = MakeCrcTables<std::uint32_t, kSlice>(kCrc32Polynomial);

std::uint32_t LoadLow4(const Byte* p) noexcept {
  return static_cast<std::uint32_t>(p[0]) | static_cast<std::uint32_t>(p[1]) << 8 | static_cast<std::uint32_t>(p[2]) << 16 |
         static_cast<std::uint32_t>(p[3]) << 24;
}

// Four bytes, the first of which has `Row` bytes of the step behind it.
template <std::size_t Row>
std::uint32_t Four(std::uint32_t word) noexcept {
  return kTables.rows[Row][word & 0xFFu] ^ kTables.rows[Row - 1][word >> 8 & 0xFFu] ^ kTables.rows[Row - 2][word >> 16 & 0xFFu] ^
         kTables.rows[Row - 3][word >> 24];
}

std::uint32_t ByTables(std::uint32_t state, const Byte* p, std::size_t size) noexcept {
  for (; size >= kSlice; p += kSlice, size -= kSlice) {
    PrefetchAhead(p);
    state = Four<15>(state ^ LoadLow4(p)) ^ Four<11>(LoadLow4(p + 4)) ^ Four<7>(LoadLow4(p + 8)) ^ Four<3>(LoadLow4(p + 12));
  }
  for (; size >= 4; p += 4, size -= 4) state = Four<3>(state ^ LoadLow4(p));
  for (; size > 0; ++p, --size) state = state >> 8 ^ kTables.rows[0][(state ^ *p) & 0xFFu];
  return state;
}

#if ZELBASE_CRC32_FOLDS

// --- Folding --------------------------------------------------------------------------------------------------------
//
// The bytes are the coefficients of a polynomial over two elements, the lowest bit of the first byte at the highest
// power. A register of 128 bits whose bytes stand D bits before others may be replaced by its remainder at that place:
// with L the first eight bytes (the higher powers) and H the last eight it is L * x^(D+64) + H * x^D, and each power is
// first reduced by the polynomial to 32 bits. In this reflected order the product of two 64-bit words, read as 128 bits,
// comes out multiplied by one x more, so that the factors are x^(D+63) and x^(D-1).
// Method: Gopal, Ozturk, Guilford and others, "Fast CRC computation for generic polynomials using PCLMULQDQ", 2009.

// x^n reduced by the polynomial; the highest bit is x^0.
constexpr std::uint32_t PowerOfX(unsigned int n) {
  std::uint32_t value = 0x80000000u;
  for (; n > 0; --n) value = (value >> 1) ^ ((value & 1u) != 0 ? kCrc32Polynomial : 0u);
  return value;
}

// The two factors that carry a 128-bit register over `bits`, as 64-bit words in the reflected order.
struct Factors {
  long long low;
  long long high;
};
constexpr Factors Over(unsigned int bits) {
  return {static_cast<long long>(std::uint64_t{PowerOfX(bits + 63)} << 32),
          static_cast<long long>(std::uint64_t{PowerOfX(bits - 1)} << 32)};
}
constexpr Factors kOver128 = Over(128);
constexpr Factors kOver256 = Over(256);
constexpr Factors kOver384 = Over(384);
constexpr Factors kOver512 = Over(512);
constexpr Factors kOver2048 = Over(2048);

// The polynomial with its x^32, and the word whose carry-less product with it is 1 in the low 64 bits.
constexpr std::uint64_t kWholePolynomial = std::uint64_t{kCrc32Polynomial} << 1 | 1u;
constexpr std::uint64_t InverseOf(std::uint64_t divisor) {
  std::uint64_t inverse = 0;
  std::uint64_t rest = 1;
  for (int bit = 0; bit < 64; ++bit) {
    if ((rest >> bit & 1u) == 0) continue;
    inverse |= std::uint64_t{1} << bit;
    rest ^= divisor << bit;
  }
  return inverse;
}
constexpr std::uint64_t kInverse = InverseOf(kWholePolynomial);

#define ZELBASE_FOLD128 __attribute__((target("pclmul,sse4.1"), always_inline)) inline
#define ZELBASE_FOLD512 __attribute__((target("vpclmulqdq,avx512f,avx512vl,pclmul,sse4.1"), always_inline)) inline

ZELBASE_FOLD128 __m128i Load128(const Byte* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }

ZELBASE_FOLD128 __m128i Fold128(__m128i value, __m128i factors, __m128i next) {
  return _mm_xor_si128(_mm_xor_si128(_mm_clmulepi64_si128(value, factors, 0x00), _mm_clmulepi64_si128(value, factors, 0x11)), next);
}

ZELBASE_FOLD128 __m128i Pair(Factors factors) { return _mm_set_epi64x(factors.high, factors.low); }

// Takes the last 1 to 15 bytes behind `value`, which stand at the end of at least 16 readable ones. The 16 + size bytes
// are written as two registers with zeros in front; the first is carried over the second.
ZELBASE_FOLD128 __m128i FoldRest(__m128i value, const Byte* end, std::size_t size) {
  alignas(16) static constexpr Byte kShifts[48] = {0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80,
                                                   0x80, 0x80, 0x80, 0x80, 0,    1,    2,    3,    4,    5,    6,    7,
                                                   8,    9,    10,   11,   12,   13,   14,   15,   0x80, 0x80, 0x80, 0x80,
                                                   0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80};
  const __m128i front = _mm_shuffle_epi8(value, Load128(kShifts + size));  // first `size` bytes, moved to the end
  const __m128i toFront = Load128(kShifts + 16 + size);                    // the other bytes, moved to the front
  const __m128i last = Load128(end - 16);
  const __m128i back = _mm_blendv_epi8(_mm_shuffle_epi8(value, toFront), last, toFront);
  return Fold128(front, Pair(kOver128), back);
}

// The register for the 128 bits of `value`: reduced to 96 bits by a factor, then by the multiple of the polynomial that
// clears the low 64 of them.
ZELBASE_FOLD128 std::uint32_t Reduce128(__m128i value) {
  const __m128i factor = _mm_cvtsi32_si128(static_cast<int>(PowerOfX(95)));
  const __m128i divisor = _mm_set_epi64x(static_cast<long long>(kWholePolynomial), static_cast<long long>(kInverse));
  const __m128i shorter = _mm_xor_si128(_mm_clmulepi64_si128(value, factor, 0x00), _mm_srli_si128(value, 8));
  const __m128i quotient = _mm_clmulepi64_si128(shorter, divisor, 0x00);
  const __m128i rest = _mm_xor_si128(shorter, _mm_clmulepi64_si128(quotient, divisor, 0x10));
  return static_cast<std::uint32_t>(_mm_extract_epi32(rest, 2));
}

// `value` stands for everything before `p`.
ZELBASE_FOLD128 std::uint32_t Finish128(__m128i value, const Byte* p, std::size_t size) {
  const __m128i over128 = Pair(kOver128);
  for (; size >= 16; p += 16, size -= 16) value = Fold128(value, over128, Load128(p));
  if (size > 0) value = FoldRest(value, p + size, size);
  return Reduce128(value);
}

__attribute__((target("pclmul,sse4.1"))) std::uint32_t ByFold128(std::uint32_t state, const Byte* p, std::size_t size) noexcept {
  if (size < 16) return ByTables(state, p, size);
  __m128i a = _mm_xor_si128(Load128(p), _mm_cvtsi32_si128(static_cast<int>(state)));
  if (size < 64) return Finish128(a, p + 16, size - 16);

  __m128i b = Load128(p + 16);
  __m128i c = Load128(p + 32);
  __m128i d = Load128(p + 48);
  const __m128i over512 = Pair(kOver512);
  for (p += 64, size -= 64; size >= 64; p += 64, size -= 64) {
    PrefetchAhead(p);
    a = Fold128(a, over512, Load128(p));
    b = Fold128(b, over512, Load128(p + 16));
    c = Fold128(c, over512, Load128(p + 32));
    d = Fold128(d, over512, Load128(p + 48));
  }
  c = Fold128(a, Pair(kOver256), c);
  d = Fold128(b, Pair(kOver256), d);
  return Finish128(Fold128(c, Pair(kOver128), d), p, size);
}

ZELBASE_FOLD512 __m512i Load512(const Byte* p) { return _mm512_loadu_si512(p); }

ZELBASE_FOLD512 __m512i Fold512(__m512i value, __m512i factors, __m512i next) {
  constexpr int kXorOfThree = 0x96;
  return _mm512_ternarylogic_epi64(_mm512_clmulepi64_epi128(value, factors, 0x00), _mm512_clmulepi64_epi128(value, factors, 0x11), next,
                                   kXorOfThree);
}

ZELBASE_FOLD512 __m512i Quad(Factors f) { return _mm512_set_epi64(f.high, f.low, f.high, f.low, f.high, f.low, f.high, f.low); }

// Carries the first three quarters of `value` over to its last.
ZELBASE_FOLD512 __m128i Narrow(__m512i value) {
  constexpr __mmask8 kAll = 0xF;  // the unmasked form draws a false warning from the compiler's own header
  const __m128i a = _mm512_maskz_extracti32x4_epi32(kAll, value, 0);
  const __m128i b = _mm512_maskz_extracti32x4_epi32(kAll, value, 1);
  const __m128i c = _mm512_maskz_extracti32x4_epi32(kAll, value, 2);
  const __m128i d = _mm512_maskz_extracti32x4_epi32(kAll, value, 3);
  return Fold128(a, Pair(kOver384), Fold128(b, Pair(kOver256), Fold128(c, Pair(kOver128), d)));
}

__attribute__((target("vpclmulqdq,avx512f,avx512vl,pclmul,sse4.1"))) std::uint32_t ByFold512(std::uint32_t state, const Byte* p,
                                                                                             std::size_t size) noexcept {
  if (size < 256) return ByFold128(state, p, size);
  const __m512i first = _mm512_zextsi128_si512(_mm_cvtsi32_si128(static_cast<int>(state)));
  __m512i a = _mm512_xor_si512(Load512(p), first);
  __m512i b = Load512(p + 64);
  __m512i c = Load512(p + 128);
  __m512i d = Load512(p + 192);
  const __m512i over2048 = Quad(kOver2048);
  for (p += 256, size -= 256; size >= 256; p += 256, size -= 256) {
    for (std::size_t line = 0; line < 256; line += 64) PrefetchAhead(p + line);
    a = Fold512(a, over2048, Load512(p));
    b = Fold512(b, over2048, Load512(p + 64));
    c = Fold512(c, over2048, Load512(p + 128));
    d = Fold512(d, over2048, Load512(p + 192));
  }
  const __m512i over512 = Quad(kOver512);
  d = Fold512(Fold512(Fold512(a, over512, b), over512, c), over512, d);
  for (; size >= 64; p += 64, size -= 64) d = Fold512(d, over512, Load512(p));
  return Finish128(Narrow(d), p, size);
}

bool HasFold128() noexcept {
  __builtin_cpu_init();
  // Unreached: the side of a processor of another kind
  return __builtin_cpu_supports("pclmul") != 0 && __builtin_cpu_supports("sse4.1") != 0;
}

bool HasFold512() noexcept {
  // Unreached: the side of a processor of another kind
  return HasFold128() && __builtin_cpu_supports("vpclmulqdq") != 0 && __builtin_cpu_supports("avx512f") != 0 &&
         __builtin_cpu_supports("avx512vl") != 0;  // Unreached: as the line before
}

#else

constexpr auto* ByFold128 = &ByTables;
constexpr auto* ByFold512 = &ByTables;
constexpr bool HasFold128() noexcept { return false; }
constexpr bool HasFold512() noexcept { return false; }

#endif

// --- Choice ---------------------------------------------------------------------------------------------------------

using Update = std::uint32_t (*)(std::uint32_t, const Byte*, std::size_t) noexcept;

Update FunctionFor(Crc32Way way) noexcept {
  if (way == Crc32Way::Fold512 && HasFold512()) return ByFold512;  // Unreached: a processor of another kind
  if (way == Crc32Way::Fold128 && HasFold128()) return ByFold128;  // Unreached: a processor of another kind
  return ByTables;
}

std::uint32_t ChooseAndUpdate(std::uint32_t state, const Byte* p, std::size_t size) noexcept;

// Set by the first call, which may come from the initialiser of any static.
constinit std::atomic<Update> g_update{&ChooseAndUpdate};

std::uint32_t ChooseAndUpdate(std::uint32_t state, const Byte* p, std::size_t size) noexcept {
  // Unreached: the side of a processor of another kind
  const Update update = FunctionFor(HasFold512() ? Crc32Way::Fold512 : Crc32Way::Fold128);
  g_update.store(update, std::memory_order_relaxed);
  return update(state, p, size);
}

}  // namespace

unsigned int UpdateCrc32(unsigned int state, const void* data, std::size_t size) noexcept {
  if (data == nullptr) return state;
  return g_update.load(std::memory_order_relaxed)(state, static_cast<const Byte*>(data), size);
}

bool HasCrc32Way(Crc32Way way) noexcept {
  if (way == Crc32Way::Fold512) return HasFold512();
  if (way == Crc32Way::Fold128) return HasFold128();
  return way == Crc32Way::Portable;
}

unsigned int UpdateCrc32By(Crc32Way way, unsigned int state, const void* data, std::size_t size) noexcept {
  if (data == nullptr) return state;
  return FunctionFor(way)(state, static_cast<const Byte*>(data), size);
}

}  // namespace zelbase::detail
