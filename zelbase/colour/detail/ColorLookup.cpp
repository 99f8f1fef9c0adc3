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

// So many buckets are tried for small tables before a bucket may hold several starts; 64 kB of cells stay near the
// processor.
constexpr std::size_t kManyBuckets = 4096;

constexpr double kNeverReached = std::numeric_limits<double>::quiet_NaN();  // nothing compares with it

}  // namespace

ColorLookup::ColorLookup(std::span<const double> starts, std::span<const COLORREF> colors) {
  const std::size_t fewest = std::bit_ceil(starts.size());
  const std::size_t most = std::max(kManyBuckets, 2 * fewest);
  for (std::size_t numBuckets = fewest; numBuckets <= most; numBuckets *= 2) {
    if (!IsSpread(starts, numBuckets)) continue;
    MakeCells(starts, colors);
    return;
  }
  SetBuckets(starts, most);
  MakeSteps(starts, colors);
}

void ColorLookup::SetBuckets(std::span<const double> starts, std::size_t numBuckets) {
  m_first = starts.front();
  m_lastBucket = static_cast<double>(numBuckets - 1);
  const double span = starts.back() - starts.front();
  m_scale = span > 0 ? m_lastBucket / span : 0;
}

// Sets the buckets and tells whether none of them has two starts.
bool ColorLookup::IsSpread(std::span<const double> starts, std::size_t numBuckets) {
  SetBuckets(starts, numBuckets);
  const auto sharesBucket = [this](double a, double b) { return BucketOf(a) == BucketOf(b); };
  return std::adjacent_find(starts.begin(), starts.end(), sharesBucket) == starts.end();
}

void ColorLookup::MakeCells(std::span<const double> starts, std::span<const COLORREF> colors) {
  m_cells.resize(static_cast<std::size_t>(m_lastBucket) + 1);
  std::size_t numPassed = 0;
  for (std::size_t bucket = 0; bucket < m_cells.size(); ++bucket) {
    const bool hasNext = numPassed < starts.size();
    const std::uint64_t above = colors[hasNext ? numPassed + 1 : numPassed];
    m_cells[bucket] = {hasNext ? starts[numPassed] : kNeverReached, above << 32 | colors[numPassed]};
    if (hasNext && BucketOf(starts[numPassed]) == bucket) ++numPassed;
  }
}

void ColorLookup::MakeSteps(std::span<const double> starts, std::span<const COLORREF> colors) {
  std::size_t mostInOne = 0;
  std::size_t numPassed = 0;
  for (std::size_t bucket = 0; bucket <= static_cast<std::size_t>(m_lastBucket); ++bucket) {
    m_buckets.push_back(static_cast<std::uint32_t>(numPassed));
    while (numPassed < starts.size() && BucketOf(starts[numPassed]) == bucket) ++numPassed;
    mostInOne = std::max(mostInOne, numPassed - m_buckets.back());
  }
  m_half = std::bit_floor(mostInOne);
  m_starts.assign(starts.begin(), starts.end());
  m_starts.insert(m_starts.end(), 2 * m_half, kNeverReached);
  m_colors.assign(colors.begin(), colors.end());
}

void ColorLookup::ColorsOfPortably(std::span<const double> values, COLORREF* colors) const {
  if (m_cells.empty()) {
    for (const double value : values) *colors++ = m_colors[NumStartsUpTo(value)];
    return;
  }
  for (const double value : values) *colors++ = ColorInCell(m_cells[BucketOf(value)], value);
}

#if ZELBASE_COLOR_VECTORS

namespace {

// BucketOf, operation by operation. The maximum gives its second operand for what is not a number.
__attribute__((target("avx2"), always_inline)) inline __m128i BucketsOf(__m256d values, __m256d first, __m256d scale,
                                                                        __m256d lastBucket) {
  const __m256d places = _mm256_mul_pd(_mm256_sub_pd(values, first), scale);
  return _mm256_cvttpd_epi32(_mm256_min_pd(_mm256_max_pd(places, _mm256_setzero_pd()), lastBucket));
}

}  // namespace

// Four values at a time, through the cells. Gives how many it did. (The masked forms load all four, too; the plain ones
// start from a register without a value, of which the compiler warns.)
__attribute__((target("avx2"))) std::size_t ColorLookup::ColorsByVectors(std::span<const double> values,
                                                                         COLORREF* colors) const {
  const __m256d first = _mm256_set1_pd(m_first);
  const __m256d scale = _mm256_set1_pd(m_scale);
  const __m256d lastBucket = _mm256_set1_pd(m_lastBucket);
  const __m256i all = _mm256_set1_epi64x(-1);
  const __m256i width = _mm256_set1_epi64x(32);
  const __m256i lowHalves = _mm256_setr_epi32(0, 2, 4, 6, 0, 2, 4, 6);
  const double* const starts = &m_cells.front().start;
  const auto* const pairs = reinterpret_cast<const long long*>(&m_cells.front().colors);
  std::size_t done = 0;
  for (; done + 4 <= values.size(); done += 4) {
    const __m256d value = _mm256_loadu_pd(values.data() + done);
    const __m128i at = _mm_slli_epi32(BucketsOf(value, first, scale, lastBucket), 1);  // a cell is two words long
    const __m256d start = _mm256_mask_i32gather_pd(first, starts, at, _mm256_castsi256_pd(all), 8);
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
  const std::size_t done = HasCells() && HasVectors() ? ColorsByVectors(values, colors) : 0;
  ColorsOfPortably(values.subspan(done), colors + done);
}

}  // namespace zelbase::detail
