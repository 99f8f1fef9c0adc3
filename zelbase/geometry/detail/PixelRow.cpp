#include "zelbase/geometry/detail/PixelRow.h"

#include <limits>

#if defined(__x86_64__) && defined(__GNUC__)
#define ZELBASE_PIXEL_VECTORS 1
#include <immintrin.h>
#else
#define ZELBASE_PIXEL_VECTORS 0
#endif

namespace zelbase::detail {

static_assert(sizeof(CPoint) == 2 * sizeof(int));

void PixelRow::PixelsOfPortably(std::span<const Point> points, CPoint* pixels) const {
  for (const Point& point : points) *pixels++ = m_system.WorldToPixel(point);
}

#if ZELBASE_PIXEL_VECTORS

namespace {

// A vector holds x and y of two points.
__attribute__((target("avx2"), always_inline)) inline __m256d BothOf(const Point& value) {
  return _mm256_setr_pd(value.x, value.y, value.x, value.y);
}

__attribute__((target("avx2"), always_inline)) inline __m256d PlacesOf(const Point* points) {
  return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(&points[0].x)), _mm_loadu_pd(&points[1].x), 1);
}

// ToPixel: what is no number becomes 0, what is beyond int its nearest. Whole numbers keep their value.
__attribute__((target("avx2"), always_inline)) inline __m128i WholeOf(__m256d places) {
  const __m256d lowest = _mm256_set1_pd(std::numeric_limits<int>::min());
  const __m256d highest = _mm256_set1_pd(std::numeric_limits<int>::max());
  const __m256d numbers = _mm256_and_pd(places, _mm256_cmp_pd(places, places, _CMP_ORD_Q));
  return _mm256_cvttpd_epi32(_mm256_min_pd(_mm256_max_pd(numbers, lowest), highest));
}

// CoordinateSystem::WorldToPixel, operation by operation, for two points at a time. Gives how many points it did.
template <bool kTurned>
__attribute__((target("avx2"))) std::size_t PixelsByVectors(const CoordinateSystem& system, std::span<const Point> points,
                                                           CPoint* pixels) {
  const __m256d worldCentre = BothOf(system.worldCentre);
  const __m256d pixelCentre = BothOf(system.pixelCentre);
  const __m256d scale = BothOf(system.scale);
  const __m256d cosine = _mm256_set1_pd(system.cosSkew);
  const __m256d sine = BothOf(Point(system.sinSkew, -system.sinSkew, 0));
  std::size_t done = 0;
  for (; done + 2 <= points.size(); done += 2) {
    __m256d place = _mm256_sub_pd(PlacesOf(points.data() + done), worldCentre);
    if constexpr (kTurned) {
      const __m256d swapped = _mm256_permute_pd(place, 0b0101);
      place = _mm256_add_pd(_mm256_mul_pd(place, cosine), _mm256_mul_pd(swapped, sine));
    }
    place = _mm256_floor_pd(_mm256_add_pd(_mm256_mul_pd(place, scale), pixelCentre));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels + done), WholeOf(place));
  }
  return done;
}

}  // namespace

bool PixelRow::HasVectors() {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx2") != 0;
}

void PixelRow::PixelsOf(std::span<const Point> points, CPoint* pixels) const {
  std::size_t done = 0;
  if (HasVectors()) {
    const bool turned = m_system.rotationMode == ROTATIONMODE_SKEW;
    done = turned ? PixelsByVectors<true>(m_system, points, pixels) : PixelsByVectors<false>(m_system, points, pixels);
  }
  PixelsOfPortably(points.subspan(done), pixels + done);
}

#else

bool PixelRow::HasVectors() { return false; }

void PixelRow::PixelsOf(std::span<const Point> points, CPoint* pixels) const { PixelsOfPortably(points, pixels); }

#endif

}  // namespace zelbase::detail
