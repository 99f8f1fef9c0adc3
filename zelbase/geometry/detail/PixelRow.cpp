#include "zelbase/geometry/detail/PixelRow.h"

#include <cstddef>
#include <limits>

#if defined(__x86_64__) && defined(__GNUC__)
#define ZELBASE_PIXEL_VECTORS 1
#include <immintrin.h>
#else
#define ZELBASE_PIXEL_VECTORS 0
#endif

namespace zelbase::detail {

namespace {

void PixelsBySingle(const CoordinateSystem& system, std::span<const Point> points, CPoint* pixels) {
  for (const Point& point : points) *pixels++ = system.WorldToPixel(point);
}

}  // namespace

#if ZELBASE_PIXEL_VECTORS

namespace {

static_assert(sizeof(CPoint) == 2 * sizeof(int) && sizeof(Point) == 3 * sizeof(double));

// What a vector's conversion gives for what is no number or beyond int. Four points with one such are done singly.
constexpr int kNotConverted = std::numeric_limits<int>::min();

constexpr std::size_t kAtOnce = 4;

__attribute__((target("avx2"), always_inline)) inline __m256d TwoOf(double x, double y) { return _mm256_setr_pd(x, y, x, y); }
__attribute__((target("avx2"), always_inline)) inline __m256d TwoOf(const Point& value) { return TwoOf(value.x, value.y); }

__attribute__((target("avx512f,avx512vl"), always_inline)) inline __m512d FourOf(double x, double y) {
  return _mm512_setr_pd(x, y, x, y, x, y, x, y);
}
__attribute__((target("avx512f,avx512vl"), always_inline)) inline __m512d FourOf(const Point& value) { return FourOf(value.x, value.y); }

// CoordinateSystem::WorldToPixel, operation by operation: x and y of two points in a vector.
template <bool kTurned>
class TwoPlaces {
 public:
  __attribute__((target("avx2"), always_inline)) inline explicit TwoPlaces(const CoordinateSystem& system)
      : m_worldCentre(TwoOf(system.worldCentre)),
        m_pixelCentre(TwoOf(system.pixelCentre)),
        m_scale(TwoOf(system.scale)),
        m_cosine(TwoOf(system.cosSkew, system.cosSkew)),
        m_sine(TwoOf(system.sinSkew, -system.sinSkew)) {}

  __attribute__((target("avx2"), always_inline)) inline __m128i PixelsOf(const Point* points) const {
    const __m256d first = _mm256_castpd128_pd256(_mm_loadu_pd(&points[0].x));
    __m256d place = _mm256_sub_pd(_mm256_insertf128_pd(first, _mm_loadu_pd(&points[1].x), 1), m_worldCentre);
    if constexpr (kTurned) {
      const __m256d swapped = _mm256_permute_pd(place, 0b0101);
      place = _mm256_add_pd(_mm256_mul_pd(place, m_cosine), _mm256_mul_pd(swapped, m_sine));
    }
    return _mm256_cvttpd_epi32(_mm256_floor_pd(_mm256_add_pd(_mm256_mul_pd(place, m_scale), m_pixelCentre)));
  }

 private:
  __m256d m_worldCentre;
  __m256d m_pixelCentre;
  __m256d m_scale;
  __m256d m_cosine;
  __m256d m_sine;
};

// The same of four points.
template <bool kTurned>
class FourPlaces {
 public:
  __attribute__((target("avx512f,avx512vl"), always_inline)) inline explicit FourPlaces(const CoordinateSystem& system)
      : m_worldCentre(FourOf(system.worldCentre)),
        m_pixelCentre(FourOf(system.pixelCentre)),
        m_scale(FourOf(system.scale)),
        m_cosine(FourOf(system.cosSkew, system.cosSkew)),
        m_sine(FourOf(system.sinSkew, -system.sinSkew)) {}

  __attribute__((target("avx512f,avx512vl"), always_inline)) inline __m256i PixelsOf(const Point* points) const {
    const __m512i withoutHeights = _mm512_setr_epi64(0, 1, 3, 4, 6, 7, 8 + 5, 8 + 6);
    const __m512d low = _mm512_loadu_pd(&points[0].x);   // up to y of the third
    const __m512d high = _mm512_loadu_pd(&points[1].y);  // up to z of the fourth
    __m512d place = _mm512_sub_pd(_mm512_permutex2var_pd(low, withoutHeights, high), m_worldCentre);
    if constexpr (kTurned) {
      const __m512d swapped = _mm512_shuffle_pd(place, place, 0b01010101);
      place = _mm512_add_pd(_mm512_mul_pd(place, m_cosine), _mm512_mul_pd(swapped, m_sine));
    }
    constexpr __mmask8 kAll = 0xFF;
    return _mm512_maskz_cvt_roundpd_epi32(kAll, _mm512_add_pd(_mm512_mul_pd(place, m_scale), m_pixelCentre),
                                          _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC);
  }

 private:
  __m512d m_worldCentre;
  __m512d m_pixelCentre;
  __m512d m_scale;
  __m512d m_cosine;
  __m512d m_sine;
};

// Both give how many points they did.
template <bool kTurned>
__attribute__((target("avx2"))) std::size_t PixelsByTwo(const CoordinateSystem& system, std::span<const Point> points, CPoint* pixels) {
  const TwoPlaces<kTurned> places(system);
  const __m128i notConverted = _mm_set1_epi32(kNotConverted);
  std::size_t done = 0;
  for (; done + kAtOnce <= points.size(); done += kAtOnce) {
    const __m128i low = places.PixelsOf(points.data() + done);
    const __m128i high = places.PixelsOf(points.data() + done + 2);
    const __m128i failed = _mm_or_si128(_mm_cmpeq_epi32(low, notConverted), _mm_cmpeq_epi32(high, notConverted));
    if (_mm_movemask_epi8(failed) != 0) {
      PixelsBySingle(system, points.subspan(done, kAtOnce), pixels + done);
      continue;
    }
    _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels + done), low);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels + done + 2), high);
  }
  return done;
}

template <bool kTurned>
__attribute__((target("avx512f,avx512vl"))) std::size_t PixelsByFour(const CoordinateSystem& system, std::span<const Point> points,
                                                                     CPoint* pixels) {
  const FourPlaces<kTurned> places(system);
  const __m256i notConverted = _mm256_set1_epi32(kNotConverted);
  std::size_t done = 0;
  for (; done + kAtOnce <= points.size(); done += kAtOnce) {
    const __m256i four = places.PixelsOf(points.data() + done);
    if (_mm256_cmpeq_epi32_mask(four, notConverted) != 0) {
      PixelsBySingle(system, points.subspan(done, kAtOnce), pixels + done);
      continue;
    }
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(pixels + done), four);
  }
  return done;
}

template <bool kTurned>
std::size_t PixelsByVectors(const CoordinateSystem& system, std::span<const Point> points, CPoint* pixels, PixelRow::Way way) {
  if (way == PixelRow::Way::kFour) return PixelsByFour<kTurned>(system, points, pixels);
  return PixelsByTwo<kTurned>(system, points, pixels);
}

}  // namespace

PixelRow::Way PixelRow::BestWay() {
  __builtin_cpu_init();
  // Unreached: a processor has these or not. Every way is tried by itself.
  if (__builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512vl") != 0) return Way::kFour;
  // Unreached: likewise.
  return __builtin_cpu_supports("avx2") != 0 ? Way::kTwo : Way::kSingle;
}

void PixelRow::PixelsOf(std::span<const Point> points, CPoint* pixels, Way way) const {
  std::size_t done = 0;
  if (way != Way::kSingle) {
    const bool isTurned = m_system.GetRotationMode() == ROTATIONMODE_SKEW;
    done = isTurned ? PixelsByVectors<true>(m_system, points, pixels, way) : PixelsByVectors<false>(m_system, points, pixels, way);
  }
  PixelsBySingle(m_system, points.subspan(done), pixels + done);
}

#else

PixelRow::Way PixelRow::BestWay() { return Way::kSingle; }

void PixelRow::PixelsOf(std::span<const Point> points, CPoint* pixels, Way) const { PixelsBySingle(m_system, points, pixels); }

#endif

}  // namespace zelbase::detail
