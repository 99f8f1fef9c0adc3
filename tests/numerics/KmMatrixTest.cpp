#include "zelbase/numerics/detail/KmMatrix.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/geometry/EdgeValues.h"
#include "tests/numerics/SecondKalmanFilter.h"

using namespace zelbase::detail;

namespace {

template <int Rows, int Columns>
void ExpectSame(const KmMatrix<Rows, Columns>& ours, const SecondKmMatrix& second) {
  for (int i = 0; i < Rows; ++i) {
    for (int j = 0; j < Columns; ++j) {
      EXPECT_TRUE(Same(ours[i][j], second.At(i, j))) << i << ", " << j << ": " << ours[i][j] << " " << second.At(i, j);
    }
  }
}

template <int Rows, int Columns>
SecondKmMatrix SecondOf(const KmMatrix<Rows, Columns>& a) {
  SecondKmMatrix result(Rows, Columns);
  for (int i = 0; i < Rows; ++i) {
    for (int j = 0; j < Columns; ++j) result.At(i, j) = a[i][j];
  }
  return result;
}

template <int Rows, int Columns>
KmMatrix<Rows, Columns> AnyMatrix(EdgeValues& values) {
  KmMatrix<Rows, Columns> result;
  for (int i = 0; i < Rows; ++i) {
    for (int j = 0; j < Columns; ++j) result[i][j] = values.Coordinate();
  }
  return result;
}

// What it says on standard output besides.
template <int Size>
std::string PrintedOf(const KmMatrix<Size, Size>& a) {
  int zeroRows = 0;
  Inverse(a, zeroRows);
  testing::internal::CaptureStdout();
  PrintSingular(zeroRows);
  return testing::internal::GetCapturedStdout();
}

template <int Size>
void TryInverses(int rounds) {
  EdgeValues values(8200 + Size);
  for (int round = 0; round < rounds; ++round) {
    const auto a = AnyMatrix<Size, Size>(values);
    int zeroRows = -1;
    const auto inverse = Inverse(a, zeroRows);
    std::string printed;
    ExpectSame(inverse, SecondOf(a).Inverted(printed));
    ASSERT_EQ(static_cast<std::size_t>(zeroRows), printed.size() / 36) << printed;
  }
}

}  // namespace

TEST(KmMatrix, IsMadeOfZeros) { ExpectSame(KmMatrix<3, 2>(), SecondKmMatrix(3, 2)); }

TEST(KmMatrix, AddsSubtractsAndTransposesElementByElement) {
  const KmMatrix<2, 3> a = {{{1, 2, 3}, {4, 5, 6}}};
  const KmMatrix<2, 3> b = {{{10, 20, 30}, {-0.0, 50, 60}}};
  ExpectSame(a + b, SecondOf(KmMatrix<2, 3>{{{11, 22, 33}, {4, 55, 66}}}));
  ExpectSame(a - b, SecondOf(KmMatrix<2, 3>{{{-9, -18, -27}, {4, -45, -54}}}));
  ExpectSame(Transpose(a), SecondOf(KmMatrix<3, 2>{{{1, 4}, {2, 5}, {3, 6}}}));
  ExpectSame(KmIdentity<2>(), SecondOf(KmMatrix<2, 2>{{{1, 0}, {0, 1}}}));
}

TEST(KmMatrix, ProductSumsEveryTermInAscendingOrderFromZero) {
  // 1e16 + 1 is 1e16, so that the order shows.
  const KmMatrix<1, 3> row = {{{1e16, 1, -1e16}}};
  const KmMatrix<3, 1> ones = {{{1}, {1}, {1}}};
  EXPECT_EQ((row * ones)[0][0], 0.0);
  const KmMatrix<1, 2> zeroFirst = {{{0, 1}}};
  EXPECT_TRUE(std::isnan((zeroFirst * KmMatrix<2, 1>{{{kInfinity}, {5}}})[0][0]));
  EXPECT_TRUE(Same((KmMatrix<1, 1>{{{1}}} * KmMatrix<1, 1>{{{-0.0}}})[0][0], 0.0));
}

TEST(KmMatrix, ProductOfThreeAssociatesFromTheLeft) {
  const KmMatrix<1, 1> huge = {{{1e200}}};
  const KmMatrix<1, 1> tiny = {{{1e-200}}};
  EXPECT_EQ((huge * huge * tiny)[0][0], kInfinity);
  EXPECT_EQ((huge * tiny * huge)[0][0], 1e200 * 1e-200 * 1e200);
}

TEST(KmMatrix, ProductsOfAnyNumbersAreThoseOfTheSecondTranscription) {
  EdgeValues values(8201);
  for (int round = 0; round < kRandomRounds; ++round) {
    const auto a = AnyMatrix<4, 3>(values);
    const auto b = AnyMatrix<3, 2>(values);
    ExpectSame(a * b, SecondOf(a).Times(SecondOf(b)));
  }
}

TEST(KmMatrix, InverseOfAnOrdinaryMatrix) {
  int zeroRows = -1;
  const KmMatrix<2, 2> a = {{{4, 1}, {2, 2}}};  // determinant 6
  const auto inverse = Inverse(a, zeroRows);
  EXPECT_NEAR(inverse[0][0], 2.0 / 6, 1e-16);
  EXPECT_NEAR(inverse[0][1], -1.0 / 6, 1e-16);
  EXPECT_NEAR(inverse[1][0], -2.0 / 6, 1e-16);
  EXPECT_NEAR(inverse[1][1], 4.0 / 6, 1e-16);
  EXPECT_EQ(zeroRows, 0);
}

TEST(KmMatrix, InverseOfFourByFourTimesItselfIsTheIdentity) {
  EdgeValues values(8202);
  for (int round = 0; round < kRandomRounds; ++round) {
    KmMatrix<4, 4> a;
    for (int i = 0; i < 4; ++i) {
      for (int j = 0; j < 4; ++j) a[i][j] = values.Between(-1, 1) + (i == j ? 4 : 0);
    }
    int zeroRows = 0;
    const auto product = a * Inverse(a, zeroRows);
    for (int i = 0; i < 4; ++i) {
      for (int j = 0; j < 4; ++j) EXPECT_NEAR(product[i][j], i == j ? 1 : 0, 1e-13);
    }
  }
}

TEST(KmMatrix, InversesOfAnyNumbersAreThoseOfTheSecondTranscription) {
  TryInverses<1>(kHeavyRounds);
  TryInverses<2>(kRandomRounds);
  TryInverses<3>(kHeavyRounds);
  TryInverses<4>(kHeavyRounds);
}

TEST(KmMatrix, ARowOfZerosIsSaidAndPassedOver) {
  EXPECT_EQ(PrintedOf(KmMatrix<2, 2>{{{1, 2}, {0, -0.0}}}), "Singular KmMatrix in routine LUDCMP\n");
  EXPECT_EQ(PrintedOf(KmMatrix<2, 2>()), "Singular KmMatrix in routine LUDCMP\nSingular KmMatrix in routine LUDCMP\n");
  EXPECT_EQ(PrintedOf(KmMatrix<2, 2>{{{kNan, kNan}, {1, 1}}}), "Singular KmMatrix in routine LUDCMP\n");
}

TEST(KmMatrix, ASingularMatrixWithoutARowOfZerosSaysNothing) { EXPECT_EQ(PrintedOf(KmMatrix<2, 2>{{{1, 2}, {2, 4}}}), ""); }

TEST(KmMatrix, AMissingPivotIsTakenAsATinyNumber) {
  int zeroRows = 0;
  const auto inverse = Inverse(KmMatrix<2, 2>{{{2, 0}, {0, 0}}}, zeroRows);
  EXPECT_EQ(inverse[0][0], 0.5);
  EXPECT_EQ(inverse[1][1], 1.0 / 1e-20);
  EXPECT_EQ(zeroRows, 1);
}

TEST(KmMatrix, OfEqualPivotsTheLastRowWins) {
  // Both pivots of the first column are 0. With the second row on top the first unknown is (0 - 2 * 1) / 1e-20; with the
  // first it would be 1 / 1e-20.
  int zeroRows = 0;
  const auto inverse = Inverse(KmMatrix<2, 2>{{{0, 1}, {0, 2}}}, zeroRows);
  EXPECT_EQ(inverse[1][0], 1.0);
  EXPECT_EQ(inverse[0][0], -2.0 / 1e-20);
}

TEST(KmMatrix, ARowIsDividedThroughByItsReciprocal) {
  // 49 * (1 / 49) is not 1, where 49 / 49 is.
  int zeroRows = 0;
  const auto inverse = Inverse(KmMatrix<2, 2>{{{49, 0}, {49, 1000}}}, zeroRows);
  const double below = 49.0 * (1.0 / 49.0);
  ASSERT_NE(below, 1.0);
  EXPECT_EQ(inverse[1][0], -below / 1000.0);
}
