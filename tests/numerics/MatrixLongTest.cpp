// Products, inverses and decompositions of 100,000 small matrices, half of them singular or nearly so: rows that coincide, are
// reversed, are combinations of others, exactly and by a rounding. Held bit for bit against the plain ways of SecondMatrix.h.

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <iostream>
#include <limits>
#include <utility>
#include <vector>

#include "tests/geometry/EdgeValues.h"
#include "tests/numerics/SecondMatrix.h"
#include "zelbase/numerics/Matrix.h"
#include "zelbase/numerics/col_vector.h"
#include "zelbase/numerics/detail/MatrixKernels.h"

using zelbase::detail::KernelsOf;
using zelbase::detail::MatrixKernels;
using zelbase::detail::MatrixWay;

namespace {

class MatrixLong : public testing::Test {
 protected:
  MatrixLong() : m_random(kSeed) {
    std::cout << "seed " << kSeed << '\n';
    for (const MatrixWay way : {MatrixWay::Portable, MatrixWay::Avx2, MatrixWay::Avx512}) {
      if (KernelsOf(way) != nullptr) m_ways.push_back(KernelsOf(way));
    }
  }

  // The kinds that are finite come first.
  Kind AnyKind(bool isFinite) { return kKinds[m_random.Whole(0, isFinite ? 3 : 5)]; }

  // Itself or a neighbour.
  double Near(double value) {
    const int step = m_random.Whole(-1, 1);
    return step == 0 ? value : std::nextafter(value, step * std::numeric_limits<double>::infinity());
  }

  // Half of them with a row that comes of one or two others.
  Doubles AnyElements(std::size_t rows, std::size_t cols, bool isFinite = true) {
    Doubles a = m_random.Many(rows * cols, AnyKind(isFinite));
    m_isRelated = rows > 1 && m_random.Whole(0, 1) == 0;
    if (!m_isRelated) return a;
    const auto row = [&] { return static_cast<std::size_t>(m_random.Whole(0, static_cast<int>(rows) - 1)); };
    const std::size_t from = row();
    const std::size_t other = row();
    const std::size_t to = (from + 1) % rows;
    const double factors[] = {1, -1, 2, 0, m_random.Uniform(-3, 3)};
    const double factor = factors[m_random.Whole(0, 4)];
    const double share = m_random.Whole(0, 1) == 0 ? 0 : m_random.Whole(-2, 2);
    const bool isExact = m_random.Whole(0, 1) == 0;
    for (std::size_t j = 0; j < cols; ++j) {
      const double value = a[from * cols + j] * factor + a[other * cols + j] * share;
      a[to * cols + j] = isExact ? value : Near(value);
    }
    return a;
  }

  std::size_t Size() { return static_cast<std::size_t>(m_random.Whole(1, 6)); }

  static constexpr std::uint32_t kSeed = 8110;
  RandomElements m_random;
  std::vector<const MatrixKernels*> m_ways;
  bool m_isRelated = false;
};

TEST_F(MatrixLong, ProductsHaveTheBitsOfThePlainOne) {
  Tally tally({"finite", "not finite", "related rows"});
  for (int round = 0; round < kHeavyRounds; ++round) {
    const std::size_t rows = Size();
    const std::size_t inner = Size();
    const std::size_t cols = Size();
    const Doubles a = AnyElements(rows, inner, false);
    if (m_isRelated) tally.Count("related rows");
    const Doubles b = AnyElements(inner, cols);
    const Doubles second = SecondProduct(a, b, rows, inner, cols);
    ASSERT_TRUE(SameBits(ElementsOf(ToMatrix(rows, inner, a) * ToMatrix(inner, cols, b)), second)) << "round " << round;
    tally.Count(std::isfinite(second[0]) ? "finite" : "not finite");
    col_vector column(static_cast<unsigned int>(inner));
    for (std::size_t k = 0; k < inner; ++k) column[static_cast<int>(k)] = b[k * cols];
    const col_vector product = ToMatrix(rows, inner, a) * column;
    ASSERT_EQ(product.Count(), rows);
    for (std::size_t i = 0; i < rows; ++i) ASSERT_TRUE(SameBits(product[static_cast<int>(i)], second[i * cols]));
  }
}

TEST_F(MatrixLong, SumsTransposesAndScalesGoElementByElement) {
  Tally tally({"equal", "differ in size", "differ in a bit", "same size"});
  for (int round = 0; round < kHeavyRounds; ++round) {
    const std::size_t rows = Size();
    const std::size_t cols = Size();
    const bool isSameSize = m_random.Whole(0, 3) != 0;
    const std::size_t otherCols = isSameSize ? cols : cols % 6 + 1;
    const Doubles a = AnyElements(rows, cols);
    Doubles b = isSameSize && m_random.Whole(0, 1) == 0 ? a : AnyElements(rows, otherCols);
    if (isSameSize && m_random.Whole(0, 1) == 0) b[0] = b[0] == 0 ? -b[0] : Near(b[0]);
    const double factor = m_random.Next(Kind::WideRange);
    const Matrix ours = ToMatrix(rows, cols, a);
    const Matrix other = ToMatrix(rows, otherCols, b);

    const bool isEqual = isSameSize && SameBits(a, b);
    tally.Count(isEqual ? "equal" : isSameSize ? "differ in a bit" : "differ in size");
    ASSERT_EQ(ours == other, isEqual ? 1 : 0) << "round " << round;
    ASSERT_EQ(ours != other, !isEqual) << "round " << round;

    Doubles turned(a.size());
    Doubles scaled = a;
    Doubles divided = a;
    for (std::size_t i = 0; i < a.size(); ++i) {
      turned[i % cols * rows + i / cols] = a[i];
      scaled[i] = a[i] * factor;
      divided[i] = a[i] * (1.0 / factor);
    }
    ASSERT_TRUE(SameBits(ElementsOf(ours.trn()), turned)) << "round " << round;
    ASSERT_TRUE(SameBits(ElementsOf(ours * factor), scaled)) << "round " << round;
    ASSERT_TRUE(SameBits(ElementsOf(ours / factor), divided)) << "round " << round;
    if (!isSameSize) {
      ASSERT_EQ((ours + other).NumRows(), 0u);
      ASSERT_EQ((ours - other).NumColumns(), 0u);
      continue;
    }
    tally.Count("same size");
    Doubles sum = a;
    Doubles difference = a;
    for (std::size_t i = 0; i < a.size(); ++i) {
      sum[i] += b[i];
      difference[i] -= b[i];
    }
    ASSERT_TRUE(SameBits(ElementsOf(ours + other), sum)) << "round " << round;
    ASSERT_TRUE(SameBits(ElementsOf(ours - other), difference)) << "round " << round;
    Matrix inPlace = ours;
    inPlace += other;
    ASSERT_TRUE(SameBits(ElementsOf(inPlace), sum)) << "round " << round;
    inPlace = ours;
    inPlace -= other;
    ASSERT_TRUE(SameBits(ElementsOf(inPlace), difference)) << "round " << round;
  }
}

TEST_F(MatrixLong, InversesHaveTheBitsOfThePlainOne) {
  Tally tally({"regular", "singular", "related rows, regular", "related rows, singular"});
  for (int round = 0; round < kHeavyRounds; ++round) {
    const std::size_t n = Size();
    const Doubles a = AnyElements(n, n);
    const Doubles second = SecondInverse(a, n);
    const bool isRegular = tally.Either(!second.empty(), "regular", "singular");
    if (m_isRelated) tally.Count(isRegular ? "related rows, regular" : "related rows, singular");
    ASSERT_TRUE(SameBits(ElementsOf(ToMatrix(n, n, a).inv()), second)) << "round " << round;
    for (const MatrixKernels* way : m_ways) {
      Doubles inverse(n * n, 77.0);
      ASSERT_EQ(way->invert(a.data(), inverse.data(), n), isRegular) << "round " << round;
      if (isRegular) {
        ASSERT_TRUE(SameBits(inverse, second)) << "round " << round;
      }
    }
  }
}

TEST_F(MatrixLong, DecompositionsHaveTheBitsOfThePlainOne) {
  Tally tally({"refused", "related rows", "column skipped", "row skipped", "cancelled", "negated", "swept", "turned without length"});
  for (int round = 0; round < kHeavyRounds; ++round) {
    const std::size_t n = Size();
    const std::size_t m = Size();
    const Doubles a = AnyElements(m, n);
    Matrix u(1, 1);
    Matrix w(1, 1);
    Matrix v(1, 1);
    u = w = v = 7.0;
    ASSERT_EQ(ToMatrix(m, n, a).SVD(u, w, v), m >= n);
    if (m < n) {
      tally.Count("refused");
      ASSERT_TRUE(u[0][0] == 7 && w[0][0] == 7 && v[0][0] == 7 && u.NumRows() * w.NumRows() * v.NumRows() == 1);
      continue;
    }
    if (m_isRelated) tally.Count("related rows");
    DecompositionTally ways;
    const SecondDecomposition second = SecondGolubReinsch(a, m, n, ways).Run();
    ASSERT_TRUE(SameBits(ElementsOf(u), second.u)) << "round " << round;
    ASSERT_TRUE(SameBits(ElementsOf(v), second.v)) << "round " << round;
    for (std::size_t i = 0; i < n; ++i) {
      for (std::size_t j = 0; j < n; ++j) {
        ASSERT_TRUE(SameBits(w[static_cast<int>(i)][j], i == j ? second.w[i] : 0.0)) << "round " << round;
      }
    }
    for (const auto& [count, name] : {std::pair(ways.leftSkipped, "column skipped"), std::pair(ways.rightSkipped - 1, "row skipped"),
                                      std::pair(ways.cancellations, "cancelled"), std::pair(ways.negated, "negated"),
                                      std::pair(ways.sweeps, "swept"), std::pair(ways.turnsWithoutLength, "turned without length")}) {
      if (count > 0) tally.Count(name);
    }
  }
}

}  // namespace
