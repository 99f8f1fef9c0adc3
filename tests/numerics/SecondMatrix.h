// Product, inverse and singular value decomposition told a second time, plainly: one loop an index, one element at a time, the
// whole square block of the decomposition column by column. The library's are held against them, bit for bit.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

#include "zelbase/numerics/Matrix.h"
#include "zelbase/numerics/col_vector.h"

using Doubles = std::vector<double>;

// The rounded steps of a Golub-Reinsch decomposition that each way was gone.
struct DecompositionTally {
  long leftSkipped = 0;
  long rightSkipped = 0;
  long cancellations = 0;
  long negated = 0;
  long turnsWithoutLength = 0;
  long sweeps = 0;
  long sweepsGivenUp = 0;
};

inline Doubles SecondProduct(const Doubles& a, const Doubles& b, std::size_t rows, std::size_t inner, std::size_t cols) {
  Doubles out(rows * cols);
  for (std::size_t i = 0; i < rows; ++i) {
    for (std::size_t j = 0; j < cols; ++j) {
      double sum = 0.0;
      for (std::size_t k = 0; k < inner; ++k) sum += a[i * inner + k] * b[k * cols + j];
      out[i * cols + j] = sum;
    }
  }
  return out;
}

// Empty for a singular matrix.
inline Doubles SecondInverse(Doubles a, std::size_t n) {
  Doubles b(n * n, 0.0);
  std::vector<int> p(n);
  for (std::size_t i = 0; i < n; ++i) {
    b[i * n + i] = 1.0;
    p[i] = static_cast<int>(i);
  }
  for (std::size_t k = 0; k < n; ++k) {
    std::size_t best = k;
    double largest = std::fabs(a[k * n + k]);
    for (std::size_t i = k; i < n; ++i) {
      if (std::fabs(a[i * n + k]) > largest) {
        largest = std::fabs(a[i * n + k]);
        best = i;
      }
    }
    if (best != k) {
      for (std::size_t j = 0; j < n; ++j) std::swap(a[k * n + j], a[best * n + j]);
      std::swap(p[k], p[best]);
    }
    if (std::fabs(a[k * n + k]) < 1e-15) return {};
    for (std::size_t i = k + 1; i < n; ++i) {
      a[i * n + k] /= a[k * n + k];
      for (std::size_t j = k + 1; j < n; ++j) a[i * n + j] -= a[i * n + k] * a[k * n + j];
    }
  }
  for (std::size_t i = 0; i + 1 < n; ++i) {
    const int there = p[i];
    if (there == static_cast<int>(i)) continue;
    for (std::size_t c = 0; c < n; ++c) std::swap(b[i * n + c], b[static_cast<std::size_t>(there) * n + c]);
    std::size_t j = i + 1;
    while (p[j] != static_cast<int>(i)) ++j;
    p[j] = there;
    p[i] = static_cast<int>(i);
  }
  for (std::size_t c = 0; c < n; ++c) {
    for (std::size_t i = 1; i < n; ++i) {
      for (std::size_t j = i; j-- > 0;) b[i * n + c] -= b[j * n + c] * a[i * n + j];
    }
    for (std::size_t i = n; i-- > 0;) {
      for (std::size_t j = i + 1; j < n; ++j) b[i * n + c] -= b[j * n + c] * a[i * n + j];
      b[i * n + c] /= a[i * n + i];
    }
  }
  return b;
}

struct SecondDecomposition {
  Doubles u;  // m by n, row by row
  Doubles w;  // n
  Doubles v;  // n by n, row by row
};

// The work array: m rows, the n columns of the matrix and the m columns of the block beside them, column by column.
class SecondGolubReinsch {
 public:
  SecondGolubReinsch(const Doubles& matrix, std::size_t m, std::size_t n, DecompositionTally& tally)
      : m_m(m), m_n(n), m_work((m + n) * m, 0.0), m_q(n), m_e(n), m_tally(tally) {
    for (std::size_t i = 0; i < m; ++i) {
      for (std::size_t j = 0; j < n; ++j) At(i, j) = matrix[i * n + j];
      At(i, n + i) = 1.0;
    }
  }

  SecondDecomposition Run() {
    Reduce();
    AccumulateRight();
    m_eps = 1e-15 * m_x;
    for (std::size_t k = m_n; k-- > 0;) Settle(k);
    SecondDecomposition result{Doubles(m_m * m_n), m_q, Doubles(m_n * m_n)};
    for (std::size_t i = 0; i < m_m; ++i) {
      for (std::size_t j = 0; j < m_n; ++j) result.u[i * m_n + j] = m_work[(m_m + j) * m_m + i];
    }
    for (std::size_t i = 0; i < m_n; ++i) {
      for (std::size_t j = 0; j < m_n; ++j) result.v[i * m_n + j] = m_work[j * m_m + i];
    }
    return result;
  }

 private:
  double& At(std::size_t i, std::size_t j) { return m_work[j * m_m + i]; }

  void Reduce() {
    double g = 0.0;
    for (std::size_t i = 0; i < m_n; ++i) {
      m_e[i] = g;
      double s = 0.0;
      for (std::size_t j = i; j < m_m; ++j) s += At(j, i) * At(j, i);
      g = 0.0;
      m_tally.leftSkipped += s < 1e-68;
      if (!(s < 1e-68)) {
        double f = At(i, i);
        g = f > 0.0 ? -std::sqrt(s) : std::sqrt(s);
        const double h = f * g - s;
        At(i, i) = f - g;
        for (std::size_t j = i + 1; j < m_n + m_m; ++j) {
          s = 0.0;
          for (std::size_t k = i; k < m_m; ++k) s += At(k, i) * At(k, j);
          f = s / h;
          for (std::size_t k = i; k < m_m; ++k) At(k, j) += f * At(k, i);
        }
      }
      m_q[i] = g;
      s = 0.0;
      for (std::size_t j = i + 1; j < m_n; ++j) s += At(i, j) * At(i, j);
      g = 0.0;
      m_tally.rightSkipped += s < 1e-68;
      if (!(s < 1e-68)) {
        const double f = At(i, i + 1);
        g = f > 0.0 ? -std::sqrt(s) : std::sqrt(s);
        const double h = f * g - s;
        At(i, i + 1) = f - g;
        for (std::size_t j = i + 1; j < m_n; ++j) m_e[j] = At(i, j) / h;
        for (std::size_t j = i + 1; j < m_m; ++j) {
          s = 0.0;
          for (std::size_t k = i + 1; k < m_n; ++k) s += At(j, k) * At(i, k);
          for (std::size_t k = i + 1; k < m_n; ++k) At(j, k) += s * m_e[k];
        }
      }
      const double y = std::fabs(m_q[i]) + std::fabs(m_e[i]);
      if (y > m_x) m_x = y;
    }
    m_g = g;
  }

  void AccumulateRight() {
    for (std::size_t i = m_n; i-- > 0;) {
      if (m_g != 0.0) {
        const double h = At(i, i + 1) * m_g;
        for (std::size_t j = i + 1; j < m_n; ++j) At(j, i) = At(i, j) / h;
        for (std::size_t j = i + 1; j < m_n; ++j) {
          double s = 0.0;
          for (std::size_t k = i + 1; k < m_n; ++k) s += At(i, k) * At(k, j);
          for (std::size_t k = i + 1; k < m_n; ++k) At(k, j) += s * At(k, i);
        }
      }
      for (std::size_t j = i + 1; j < m_n; ++j) At(i, j) = At(j, i) = 0.0;
      At(i, i) = 1.0;
      m_g = m_e[i];
    }
  }

  bool IsNothing(double value) const { return !(std::fabs(value) > m_eps); }

  void Settle(std::size_t k) {
    for (int round = 0;; ++round) {
      std::size_t l = k;
      bool cancel = false;
      while (!IsNothing(m_e[l])) {
        if (IsNothing(m_q[l - 1])) {
          cancel = true;
          break;
        }
        --l;
      }
      if (cancel) Cancel(l, k);
      const double z = m_q[k];
      m_tally.sweepsGivenUp += l != k && round == 1000;
      if (l == k || round == 1000) {
        if (z < 0.0) {
          ++m_tally.negated;
          m_q[k] = -z;
          for (std::size_t j = 0; j < m_n; ++j) At(j, k) = -At(j, k);
        }
        return;
      }
      Sweep(l, k, z);
    }
  }

  void Cancel(std::size_t l, std::size_t k) {
    ++m_tally.cancellations;
    double c = 0.0;
    double s = 1.0;
    for (std::size_t i = l; i <= k; ++i) {
      const double f = s * m_e[i];
      m_e[i] = c * m_e[i];
      if (IsNothing(f)) return;
      const double g = m_q[i];
      const double h = std::sqrt(f * f + g * g);
      m_q[i] = h;
      c = g / h;
      s = -f / h;
      for (std::size_t j = m_n; j < m_n + m_m; ++j) {
        const double y = At(l - 1, j);
        const double z = At(i, j);
        At(l - 1, j) = y * c + z * s;
        At(i, j) = -y * s + z * c;
      }
    }
  }

  void Sweep(std::size_t l, std::size_t k, double z) {
    ++m_tally.sweeps;
    double x = m_q[l];
    double y = m_q[k - 1];
    double g = m_e[k - 1];
    double h = m_e[k];
    double f = ((y - z) * (y + z) + (g - h) * (g + h)) / (2 * h * y);
    g = std::sqrt(f * f + 1);
    f = ((x - z) * (x + z) + h * (y / (f < 0 ? f - g : f + g) - h)) / x;
    double c = 1.0;
    double s = 1.0;
    for (std::size_t i = l + 1; i <= k; ++i) {
      g = m_e[i];
      y = m_q[i];
      h = s * g;
      g = c * g;
      m_e[i - 1] = Turn(f, h, c, s);
      f = x * c + g * s;
      g = -x * s + g * c;
      h = y * s;
      y = y * c;
      for (std::size_t j = 0; j < m_n; ++j) {
        x = At(j, i - 1);
        z = At(j, i);
        At(j, i - 1) = x * c + z * s;
        At(j, i) = -x * s + z * c;
      }
      m_q[i - 1] = Turn(f, h, c, s);
      f = c * g + s * y;
      x = -s * g + c * y;
      for (std::size_t j = m_n; j < m_n + m_m; ++j) {
        y = At(i - 1, j);
        z = At(i, j);
        At(i - 1, j) = y * c + z * s;
        At(i, j) = -y * s + z * c;
      }
    }
    m_e[l] = 0.0;
    m_e[k] = f;
    m_q[k] = x;
  }

  double Turn(double f, double h, double& c, double& s) {
    const double z = std::sqrt(f * f + h * h);
    const bool turns = z != 0.0;
    m_tally.turnsWithoutLength += !turns;
    c = turns ? f / z : 1.0;
    s = turns ? h / z : 0.0;
    return z;
  }

  std::size_t m_m;
  std::size_t m_n;
  Doubles m_work;
  Doubles m_q;
  Doubles m_e;
  DecompositionTally& m_tally;
  double m_g = 0.0;
  double m_x = 0.0;
  double m_eps = 0.0;
};

// --- Matrices to try -------------------------------------------------------------------------------------------------

// What the elements of a matrix are like.
enum class Kind {
  Everyday,      // -1 to 1
  SmallWhole,    // -2 to 2: ties, zeros and singular ones
  WideRange,     // 1e-40 to 1e40
  Sparse,        // mostly zeros of either sign
  WithInfinity,  // everyday with a few infinities
  WithNaN        // everyday with a few not-a-numbers
};
inline constexpr Kind kKinds[] = {Kind::Everyday, Kind::SmallWhole, Kind::WideRange, Kind::Sparse, Kind::WithInfinity, Kind::WithNaN};

class RandomElements {
 public:
  explicit RandomElements(std::uint32_t seed) : m_random(seed) {}

  double Uniform(double low, double high) { return std::uniform_real_distribution<double>(low, high)(m_random); }
  int Whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_random); }

  double Next(Kind kind) {
    switch (kind) {
      case Kind::SmallWhole: return Whole(-2, 2);
      case Kind::WideRange: return Uniform(-1, 1) * std::pow(10.0, Whole(-40, 40));
      case Kind::Sparse: return Whole(0, 3) == 0 ? Uniform(-1, 1) : Whole(0, 1) == 0 ? 0.0 : -0.0;
      case Kind::WithInfinity: return Whole(0, 30) == 0 ? (Whole(0, 1) == 0 ? HUGE_VAL : -HUGE_VAL) : Uniform(-1, 1);
      case Kind::WithNaN: return Whole(0, 30) == 0 ? std::nan("") : Uniform(-1, 1);
      default: return Uniform(-1, 1);
    }
  }

  Doubles Many(std::size_t count, Kind kind) {
    Doubles values(count);
    for (double& value : values) value = Next(kind);
    return values;
  }

 private:
  std::mt19937 m_random;
};

// --- Comparing -------------------------------------------------------------------------------------------------------

// The same bits; any not-a-number stands for any other, since which one comes out of two is the processor's affair.
inline bool SameBits(double a, double b) {
  if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

inline testing::AssertionResult SameBits(const Doubles& ours, const Doubles& second) {
  if (ours.size() != second.size()) return testing::AssertionFailure() << ours.size() << " elements, " << second.size();
  for (std::size_t i = 0; i < ours.size(); ++i) {
    if (SameBits(ours[i], second[i])) continue;
    return testing::AssertionFailure() << "element " << i << ": " << ours[i] << ", second " << second[i];
  }
  return testing::AssertionSuccess();
}

inline Matrix ToMatrix(std::size_t rows, std::size_t cols, const Doubles& values) {
  return Matrix(static_cast<unsigned int>(rows), static_cast<unsigned int>(cols), values.data());
}

inline Doubles ElementsOf(const Matrix& matrix) {
  const std::size_t count = std::size_t{matrix.NumRows()} * matrix.NumColumns();
  return count == 0 ? Doubles() : Doubles(matrix[0], matrix[0] + count);
}
