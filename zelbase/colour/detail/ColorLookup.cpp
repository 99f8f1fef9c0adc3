#include "zelbase/colour/detail/ColorLookup.h"

#include <algorithm>
#include <bit>
#include <limits>

#if defined(__x86_64__) && defined(__GNUC__)
#define ZELBASE_COLOR_VECTORS 1
#include <immintrin.h>
#else
#define ZELBASE_COLOR_VECTORS 0
#endif

namespace zelbase::detail {

namespace {

// So many buckets are tried for small tables before starts may crowd; 64 kB of cells stay near the processor.
constexpr std::size_t kManyBuckets = 4096;

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();  // nothing compares with it

}  // namespace

ColorLookup::ColorLookup(std::span<const double> starts, std::span<const COLORREF> colors) {
  std::size_t numBuckets = std::bit_ceil(starts.size());
  const std::size_t most = std::max(kManyBuckets, 2 * numBuckets);
  SetBuckets(starts, numBuckets);
  while (!IsSpread(starts) && numBuckets < most) SetBuckets(starts, numBuckets *= 2);
  MakeCells(starts, colors);
}

void ColorLookup::SetBuckets(std::span<const double> starts, std::size_t numBuckets) {
  m_first = starts.front();
  m_lastBucket = static_cast<double>(numBuckets - 1);
  const double span = starts.back() - starts.front();
  m_scale = span > 0 ? m_lastBucket / span : 0;
}

// Whether no bucket has two starts.
bool ColorLookup::IsSpread(std::span<const double> starts) const {
  const auto sharesBucket = [this](double a, double b) { return BucketOf(a) == BucketOf(b); };
  return std::adjacent_find(starts.begin(), starts.end(), sharesBucket) == starts.end();
}

void ColorLookup::MakeCells(std::span<const double> starts, std::span<const COLORREF> colors) {
  m_cells.resize(static_cast<std::size_t>(m_lastBucket) + 1);
  std::size_t largestCrowd = 0;
  std::size_t numBelow = 0;
  for (std::size_t bucket = 0; bucket < m_cells.size(); ++bucket) {
    std::size_t numUpTo = numBelow;
    while (numUpTo < starts.size() && BucketOf(starts[numUpTo]) == bucket) ++numUpTo;
    const std::size_t numHere = numUpTo - numBelow;
    if (numHere > 1) {
      m_cells[bucket] = {kNotANumber, std::uint64_t{std::bit_floor(numHere)} << 32 | numBelow};
      largestCrowd = std::max(largestCrowd, numHere);
    } else {
      const std::size_t next = std::min(numBelow, starts.size() - 1);
      const std::uint64_t above = colors[std::min(numBelow + 1, starts.size())];
      m_cells[bucket] = {starts[next], above << 32 | colors[numBelow]};
    }
    numBelow = numUpTo;
  }
  if (largestCrowd == 0) return;
  m_starts.assign(starts.begin(), starts.end());
  m_starts.insert(m_starts.end(), 2 * std::bit_floor(largestCrowd), kNotANumber);
  m_colors.assign(colors.begin(), colors.end());
}

void ColorLookup::ColorsOfPortably(std::span<const double> values, COLORREF* colors) const {
  for (const double value : values) *colors++ = ColorOf(value);
}

#if ZELBASE_COLOR_VECTORS

namespace {

// BucketOf, operation by operation. The maximum gives its second operand for what is not a number.
__attribute__((target("avx2"), always_inline)) inline __m128i BucketsOf(__m256d values, __m256d first, __m256d scale, __m256d lastBucket) {
  const __m256d places = _mm256_mul_pd(_mm256_sub_pd(values, first), scale);
  return _mm256_cvttpd_epi32(_mm256_min_pd(_mm256_max_pd(places, _mm256_setzero_pd()), lastBucket));
}

}  // namespace

// Four values at a time. Gives how many it did. (The masked forms load all four, too; the plain ones start from a
// register without a value, of which the compiler warns.)
__attribute__((target("avx2"))) std::size_t ColorLookup::ColorsByVectors(std::span<const double> values, COLORREF* colors) const {
  const __m256d first = _mm256_set1_pd(m_first);
  const __m256d scale = _mm256_set1_pd(m_scale);
  const __m256d lastBucket = _mm256_set1_pd(m_lastBucket);
  const __m256i all = _mm256_set1_epi64x(-1);
  const __m256i width = _mm256_set1_epi64x(32);
  const __m256i lowHalves = _mm256_setr_epi32(0, 2, 4, 6, 0, 2, 4, 6);
  const double* const starts = &m_cells.front().start;
  const auto* const pairs = reinterpret_cast<const long long*>(&m_cells.front().halves);
  std::size_t done = 0;
  for (; done + 4 <= values.size(); done += 4) {
    const __m256d value = _mm256_loadu_pd(values.data() + done);
    const __m128i at = _mm_slli_epi32(BucketsOf(value, first, scale, lastBucket), 1);  // a cell is two words long
    const __m256d start = _mm256_mask_i32gather_pd(first, starts, at, _mm256_castsi256_pd(all), 8);
    if (_mm256_movemask_pd(_mm256_cmp_pd(start, start, _CMP_UNORD_Q)) != 0) {  // a crowd among them
      ColorsOfPortably(values.subspan(done, 4), colors + done);
      continue;
    }
    const __m256d isReached = _mm256_cmp_pd(start, value, _CMP_LE_OQ);
    const __m256i shift = _mm256_and_si256(_mm256_castpd_si256(isReached), width);
    const __m256i color = _mm256_srlv_epi64(_mm256_mask_i32gather_epi64(all, pairs, at, all, 8), shift);
    const __m128i packed = _mm256_castsi256_si128(_mm256_permutevar8x32_epi32(color, lowHalves));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(colors + done), packed);
  }
  return done;
}

bool ColorLookup::HasVectors() {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx2") != 0;
}

#else

std::size_t ColorLookup::ColorsByVectors(std::span<const double>, COLORREF*) const { return 0; }

bool ColorLookup::HasVectors() { return false; }

#endif

void ColorLookup::ColorsOf(std::span<const double> values, COLORREF* colors) const {
  // Unreached: a processor either has the vectors or not. The other way is tried by itself.
  const std::size_t done = HasVectors() ? ColorsByVectors(values, colors) : 0;
  ColorsOfPortably(values.subspan(done), colors + done);
}

}  // namespace zelbase::detail
