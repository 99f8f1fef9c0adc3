#include "zelbase/numerics/Matrix.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <initializer_list>
#include <limits>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/numerics/SecondMatrix.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/Printed.h"
#include "zelbase/numerics/detail/MatrixKernels.h"

using zelbase::detail::KernelsOf;
using zelbase::detail::MatrixKernels;
using zelbase::detail::MatrixWay;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

Matrix Of(unsigned int rows, unsigned int cols, std::initializer_list<double> values) {
  EXPECT_EQ(values.size(), std::size_t{rows} * cols);
  return Matrix(rows, cols, values.begin());
}

bool IsNull(const Matrix& matrix) { return matrix.NumRows() == 0 && matrix.NumColumns() == 0 && matrix[0] == nullptr; }

// Each way that this processor has.
std::vector<const MatrixKernels*> AllWays() {
  std::vector<const MatrixKernels*> ways;
  for (const MatrixWay way : {MatrixWay::Portable, MatrixWay::Avx2, MatrixWay::Avx512}) {
    if (KernelsOf(way) != nullptr) ways.push_back(KernelsOf(way));
  }
  return ways;
}

// Largest difference of an element.
double Distance(const Matrix& a, const Matrix& b) {
  const Doubles difference = ElementsOf(a - b);
  EXPECT_FALSE(difference.empty());
  double largest = 0.0;
  for (const double value : difference) {
    if (!(std::fabs(value) <= largest)) largest = std::fabs(value);
  }
  return largest;
}

// --- Making and copying ----------------------------------------------------------------------------------------------

TEST(Matrix, HasTheSizesItIsMadeWith) {
  const Matrix matrix(2, 3);
  EXPECT_EQ(matrix.NumRows(), 2u);
  EXPECT_EQ(matrix.NumColumns(), 3u);
  EXPECT_FALSE(matrix.IsSquare());
  EXPECT_TRUE(Matrix(3, 3).IsSquare());
  EXPECT_TRUE(IsNull(Matrix()));
}

TEST(Matrix, OneSizeOfZeroMakesBothZero) {
  EXPECT_TRUE(IsNull(Matrix(0, 5)));
  EXPECT_TRUE(IsNull(Matrix(5, 0)));
  EXPECT_TRUE(IsNull(Matrix(0, 0)));
}

TEST(Matrix, WithValuesASizeOfZeroKeepsTheOther) {
  double values[] = {1};
  const Matrix wide(0, 5, values);
  EXPECT_EQ(wide.NumRows(), 0u);
  EXPECT_EQ(wide.NumColumns(), 5u);
  EXPECT_EQ(wide[0], nullptr);
  EXPECT_EQ(wide[3], nullptr);
  const Matrix copy(wide);
  EXPECT_EQ(copy.NumColumns(), 5u);
  EXPECT_TRUE(copy == wide);
  EXPECT_FALSE(copy == Matrix());
  EXPECT_TRUE(IsNull(wide.trn()));
  EXPECT_TRUE(wide * 2.0 == wide);
}

TEST(Matrix, ValuesAreCopiedRowByRow) {
  double values[] = {1, 2, 3, 4, 5, 6};
  const Matrix matrix(2, 3, values);
  values[0] = 9;
  EXPECT_EQ(matrix[0][0], 1);
  EXPECT_EQ(matrix[0][2], 3);
  EXPECT_EQ(matrix[1][0], 4);
  EXPECT_EQ(matrix[1][2], 6);
}

TEST(Matrix, NullValuesCountAsZeros) {
  EXPECT_EQ(ElementsOf(Matrix(1, 2, nullptr)), (Doubles{0, 0}));
  EXPECT_EQ(Matrix(0, 2, nullptr).NumColumns(), 2u);
}

TEST(Matrix, ARowIsTheAddressOfItsFirstElement) {
  const Matrix matrix(4, 3);
  static_assert(std::is_same_v<decltype(matrix[0]), double*>);
  EXPECT_EQ(matrix[2], matrix[0] + 6);
  Matrix changed = Of(2, 2, {1, 2, 3, 4});
  changed[1][0] = 7;
  EXPECT_EQ(ElementsOf(changed), (Doubles{1, 2, 7, 4}));
}

TEST(Matrix, ASizeBeyondTheMemoryThrowsAndDoesNotWrap) {
  double value = 1;
  EXPECT_THROW(Matrix(4294967295u, 4294967295u), std::bad_alloc);
  EXPECT_THROW(Matrix(4294967295u, 4294967295u, &value), std::bad_alloc);
  EXPECT_THROW(Matrix(2147483648u, 1073741824u), std::bad_alloc);  // 2^61 elements: 2^64 bytes
  EXPECT_THROW(Matrix::idn(4294967295u), std::bad_alloc);
}

TEST(Matrix, AFailingAllocationLeavesEverythingAsItWas) {
  Matrix matrix = Of(1, 2, {3, 4});
  const Matrix wide(4294967295u, 0, nullptr);
  const Matrix flat(0, 4294967295u, nullptr);
  EXPECT_THROW(matrix = wide * flat, std::bad_alloc);
  EXPECT_EQ(ElementsOf(matrix), (Doubles{3, 4}));
}

TEST(Matrix, ACopyHasABlockOfItsOwn) {
  Matrix matrix = Of(1, 2, {3, 4});
  const Matrix copy(matrix);
  matrix[0][0] = 9;
  EXPECT_EQ(ElementsOf(copy), (Doubles{3, 4}));
  EXPECT_TRUE(IsNull(Matrix(Matrix::NULL_MATRIX)));
}

TEST(Matrix, AssignmentTakesSizesAndElements) {
  const Matrix source = Of(2, 1, {3, 4});
  Matrix matrix(5, 7);
  matrix = source;
  EXPECT_TRUE(matrix == source);
  Matrix flat = Of(1, 2, {8, 9});
  flat = source;
  EXPECT_EQ(flat.NumRows(), 2u);
  EXPECT_TRUE(flat == source);
  flat = Matrix::NULL_MATRIX;
  EXPECT_TRUE(IsNull(flat));
  flat = source;
  EXPECT_TRUE(flat == source);
}

TEST(Matrix, AssignmentToItselfDoesNothing) {
  Matrix matrix = Of(2, 1, {3, 4});
  const Matrix& itself = matrix;
  matrix = itself;
  EXPECT_EQ(ElementsOf(matrix), (Doubles{3, 4}));
  Matrix& again = matrix;
  matrix = std::move(again);
  EXPECT_EQ(ElementsOf(matrix), (Doubles{3, 4}));
}

TEST(Matrix, AMovedOneIsLeftEmpty) {
  Matrix matrix = Of(2, 1, {3, 4});
  Matrix moved(std::move(matrix));
  EXPECT_TRUE(IsNull(matrix));
  EXPECT_EQ(ElementsOf(moved), (Doubles{3, 4}));
  matrix = std::move(moved);
  EXPECT_TRUE(IsNull(moved));
  EXPECT_EQ(ElementsOf(matrix), (Doubles{3, 4}));
}

// --- The null object -------------------------------------------------------------------------------------------------

TEST(Matrix, TheNullObjectIsEmpty) {
  EXPECT_TRUE(IsNull(Matrix::NULL_MATRIX));
  EXPECT_TRUE(Matrix::NULL_MATRIX == Matrix());
}

// Another file's static initialiser may run before any of the library's.
const Matrix g_nothing = Matrix(2, 3) * Matrix(2, 3);
const bool g_nothingIsNull = g_nothing == Matrix::NULL_MATRIX;
const Matrix g_half = Matrix::idn(1) / 2.0 * Matrix::idn(1);

TEST(Matrix, AStaticInitialiserMayUseNullObjectsAndCompute) {
  EXPECT_TRUE(g_nothingIsNull);
  EXPECT_EQ(ElementsOf(g_half), (Doubles{0.5}));
}

// --- Filling ---------------------------------------------------------------------------------------------------------

TEST(Matrix, ANumberFillsEveryElementAndKeepsTheSize) {
  Matrix matrix(2, 3);
  matrix = 1.5;
  EXPECT_EQ(ElementsOf(matrix), Doubles(6, 1.5));
  matrix = 0;
  EXPECT_EQ(ElementsOf(matrix), Doubles(6, 0.0));
  Matrix empty;
  empty = 3.0;
  EXPECT_TRUE(IsNull(empty));
}

TEST(Matrix, ZeroSetsAllElements) {
  Matrix matrix = Of(1, 2, {3, kNaN});
  matrix.zero();
  EXPECT_EQ(ElementsOf(matrix), (Doubles{0, 0}));
  Matrix empty;
  empty.zero();
  EXPECT_TRUE(IsNull(empty));
}

TEST(Matrix, IdnMakesASquareMatrixTheIdentity) {
  Matrix matrix = Of(2, 2, {3, kNaN, 5, 6});
  matrix.idn();
  EXPECT_EQ(ElementsOf(matrix), (Doubles{1, 0, 0, 1}));
  Matrix empty;
  empty.idn();
  EXPECT_TRUE(IsNull(empty));
}

TEST(Matrix, IdnLeavesAMatrixThatIsNotSquareAsItIs) {
  Matrix matrix = Of(2, 3, {1, 2, 3, 4, 5, 6});
  matrix.idn();
  EXPECT_EQ(ElementsOf(matrix), (Doubles{1, 2, 3, 4, 5, 6}));
}

TEST(Matrix, IdnOfASizeIsAnIdentity) {
  EXPECT_TRUE(Matrix::idn(3) == Of(3, 3, {1, 0, 0, 0, 1, 0, 0, 0, 1}));
  EXPECT_TRUE(IsNull(Matrix::idn(0)));
}

TEST(Matrix, TrnIsTheTranspose) {
  EXPECT_TRUE(Of(2, 3, {1, 2, 3, 4, 5, 6}).trn() == Of(3, 2, {1, 4, 2, 5, 3, 6}));
  EXPECT_TRUE(IsNull(Matrix().trn()));
  Matrix matrix(37, 19);
  for (int r = 0; r < 37; ++r) {
    for (int c = 0; c < 19; ++c) matrix[r][c] = 100 * r + c;
  }
  const Matrix turned = matrix.trn();
  ASSERT_EQ(turned.NumRows(), 19u);
  ASSERT_EQ(turned.NumColumns(), 37u);
  for (int r = 0; r < 37; ++r) {
    for (int c = 0; c < 19; ++c) ASSERT_EQ(turned[c][r], 100 * r + c);
  }
}

// --- Sums and scales -------------------------------------------------------------------------------------------------

TEST(Matrix, SumAndDifferenceGoElementByElement) {
  const Matrix a = Of(2, 2, {1, 2, 3, 4});
  const Matrix b = Of(2, 2, {10, 20, 30, 0.5});
  EXPECT_TRUE(a + b == Of(2, 2, {11, 22, 33, 4.5}));
  EXPECT_TRUE(b - a == Of(2, 2, {9, 18, 27, -3.5}));
  EXPECT_TRUE(IsNull(Matrix() + Matrix()));
}

TEST(Matrix, SumOfOtherSizesIsNull) {
  const Matrix a(2, 3);
  for (const Matrix& b : {Matrix(2, 4), Matrix(3, 3), Matrix(3, 2), Matrix()}) {
    EXPECT_TRUE(IsNull(a + b));
    EXPECT_TRUE(IsNull(a - b));
    EXPECT_TRUE(IsNull(b - a));
  }
}

TEST(Matrix, ScaleMultipliesEveryElement) {
  const Matrix a = Of(1, 3, {1, -2, 0.5});
  EXPECT_TRUE(a * 2.0 == Of(1, 3, {2, -4, 1}));
  EXPECT_TRUE(a * 2 == a * 2.0);
  Matrix b = a;
  b *= 3;
  EXPECT_TRUE(b == Of(1, 3, {3, -6, 1.5}));
  EXPECT_EQ(&(b *= 2), &b);
  EXPECT_TRUE(IsNull(Matrix() * 2.0));
}

TEST(Matrix, DivisionMultipliesByTheReciprocal) {
  const double byReciprocal = 49.0 * (1.0 / 49.0);
  ASSERT_NE(byReciprocal, 1.0);
  EXPECT_EQ((Of(1, 1, {49}) / 49.0)[0][0], byReciprocal);
  Matrix matrix = Of(1, 1, {49});
  matrix /= 49;
  EXPECT_EQ(matrix[0][0], byReciprocal);
}

TEST(Matrix, DivisionByZeroGivesInfinitiesAndNotANumbers) {
  const Matrix quotient = Of(1, 3, {2, -3, 0}) / 0.0;
  EXPECT_EQ(quotient[0][0], kInfinity);
  EXPECT_EQ(quotient[0][1], -kInfinity);
  EXPECT_TRUE(std::isnan(quotient[0][2]));
  Matrix matrix = Of(1, 1, {1});
  matrix /= -0.0;
  EXPECT_EQ(matrix[0][0], -kInfinity);
}

TEST(Matrix, AddingInPlaceGoesElementByElement) {
  Matrix matrix = Of(2, 2, {1, 2, 3, 4});
  EXPECT_EQ(&(matrix += Of(2, 2, {10, 20, 30, 40})), &matrix);
  EXPECT_EQ(ElementsOf(matrix), (Doubles{11, 22, 33, 44}));
  EXPECT_EQ(&(matrix -= Of(2, 2, {1, 2, 3, 4})), &matrix);
  EXPECT_EQ(ElementsOf(matrix), (Doubles{10, 20, 30, 40}));
  const Matrix& itself = matrix;
  matrix += itself;
  EXPECT_EQ(ElementsOf(matrix), (Doubles{20, 40, 60, 80}));
  matrix -= itself;
  EXPECT_EQ(ElementsOf(matrix), Doubles(4, 0.0));
}

TEST(Matrix, AddingInPlaceRunsOnWhenOnlyOneSizeDiffers) {
  const Matrix wider = Of(2, 4, {1, 2, 3, 4, 5, 6, 7, 8});
  Matrix matrix = Of(2, 3, {10, 20, 30, 40, 50, 60});
  matrix += wider;
  EXPECT_EQ(ElementsOf(matrix), (Doubles{11, 22, 33, 44, 55, 66}));
  EXPECT_EQ(matrix.NumColumns(), 3u);
  matrix -= wider;
  EXPECT_EQ(ElementsOf(matrix), (Doubles{10, 20, 30, 40, 50, 60}));
  matrix += Of(3, 3, {1, 1, 1, 1, 1, 2, 7, 8, 9});
  EXPECT_EQ(ElementsOf(matrix), (Doubles{11, 21, 31, 41, 51, 62}));
}

TEST(Matrix, AddingInPlaceDoesNothingWhenBothSizesDiffer) {
  Matrix matrix = Of(2, 3, {1, 2, 3, 4, 5, 6});
  Matrix larger(3, 4);
  larger = 1.0;
  matrix += larger;
  matrix -= larger;
  matrix += Matrix();
  EXPECT_EQ(ElementsOf(matrix), (Doubles{1, 2, 3, 4, 5, 6}));
}

TEST(Matrix, AddingInPlaceEndsWithAShorterOperand) {
  Matrix matrix = Of(2, 3, {1, 2, 3, 4, 5, 6});
  matrix += Of(1, 3, {10, 20, 30});
  EXPECT_EQ(ElementsOf(matrix), (Doubles{11, 22, 33, 4, 5, 6}));
  matrix -= Of(2, 2, {1, 1, 1, 1});
  EXPECT_EQ(ElementsOf(matrix), (Doubles{10, 21, 32, 3, 5, 6}));
  matrix += Matrix(0, 3, nullptr);
  EXPECT_EQ(ElementsOf(matrix), (Doubles{10, 21, 32, 3, 5, 6}));
}

// --- Comparing -------------------------------------------------------------------------------------------------------

TEST(Matrix, EqualityIsAnIntAndInequalityItsOpposite) {
  const Matrix a = Of(1, 2, {1, 2});
  static_assert(std::is_same_v<decltype(a == a), int>);
  EXPECT_EQ(a == Of(1, 2, {1, 2}), 1);
  EXPECT_EQ(a == Of(1, 2, {1, 3}), 0);
  EXPECT_EQ(a == Of(2, 1, {1, 2}), 0);
  EXPECT_EQ(a != Of(1, 2, {1, 2}), 0);
  EXPECT_EQ(a != Of(1, 2, {1, 3}), 1);
  EXPECT_EQ(a == a, 1);
}

TEST(Matrix, TwoEmptyMatricesAreEqual) {
  EXPECT_EQ(Matrix() == Matrix::NULL_MATRIX, 1);
  EXPECT_EQ(Matrix(0, 5) == Matrix(7, 0), 1);
}

TEST(Matrix, EqualityComparesBytes) {
  EXPECT_EQ(Of(1, 1, {0.0}) == Of(1, 1, {-0.0}), 0);
  EXPECT_EQ(Of(1, 1, {kNaN}) == Of(1, 1, {kNaN}), 1);
  EXPECT_EQ(Of(1, 1, {kNaN}) == Of(1, 1, {-kNaN}), 0);
}

// --- Product ---------------------------------------------------------------------------------------------------------

TEST(MatrixProduct, IsTheOrdinaryOne) {
  const Matrix a = Of(2, 3, {1, 2, 3, 4, 5, 6});
  const Matrix b = Of(3, 2, {7, 8, 9, 10, 11, 12});
  EXPECT_TRUE(a * b == Of(2, 2, {58, 64, 139, 154}));
}

TEST(MatrixProduct, OfSizesThatDoNotFitIsNull) {
  EXPECT_TRUE(IsNull(Matrix(2, 3) * Matrix(2, 3)));
  EXPECT_EQ((Matrix(2, 3) * col_vector(2)).Count(), 0u);
  EXPECT_TRUE(IsNull(Matrix() * Matrix()));
  EXPECT_TRUE(IsNull(Matrix(2, 3) * Matrix()));
}

TEST(MatrixProduct, SumsOverNothingAreZero) {
  const Matrix tall(2, 0, nullptr);
  const Matrix wide(0, 3, nullptr);
  EXPECT_TRUE(tall * wide == Of(2, 3, {0, 0, 0, 0, 0, 0}));
  const col_vector column = tall * col_vector(0);
  ASSERT_EQ(column.Count(), 2u);
  EXPECT_EQ(column[0], 0);
  EXPECT_EQ(column[1], 0);
}

TEST(MatrixProduct, StartsFromZeroAndLeavesNoFactorOut) {
  // -0.0 alone is added to 0.0; a factor of 0 meets an infinity.
  EXPECT_TRUE(Of(1, 1, {-0.0}) * Of(1, 1, {1}) == Of(1, 1, {0.0}));
  EXPECT_TRUE(std::isnan((Of(1, 2, {0, 1}) * Of(2, 1, {kInfinity, 1}))[0][0]));
  EXPECT_TRUE(std::isnan((Of(1, 2, {kNaN, 1}) * Of(2, 1, {0, 1}))[0][0]));
}

TEST(MatrixProduct, SumsInAscendingOrder) {
  // From the left 1 is lost beside 1e16 and then 1e16 goes; from the right 1 would remain.
  const Matrix row = Of(1, 3, {1, 1e16, -1e16});
  const Matrix ones = Of(3, 1, {1, 1, 1});
  EXPECT_EQ((row * ones)[0][0], 0.0);
  EXPECT_EQ((Of(1, 3, {1e16, -1e16, 1}) * ones)[0][0], 1.0);
}

TEST(MatrixProduct, AColumnIsMultipliedRowByRow) {
  col_vector column(3);
  column[0] = 1;
  column[1] = 10;
  column[2] = 100;
  const col_vector product = Of(2, 3, {1, 2, 3, 4, 5, 6}) * column;
  ASSERT_EQ(product.Count(), 2u);
  EXPECT_EQ(product[0], 321);
  EXPECT_EQ(product[1], 654);
}

struct Sizes {
  std::size_t rows;
  std::size_t inner;
  std::size_t cols;
};

void ExpectProductsAsTheSecond(const Sizes& sizes, Kind kind, std::uint32_t seed) {
  SCOPED_TRACE(testing::Message() << sizes.rows << " by " << sizes.inner << " by " << sizes.cols << ", kind " << static_cast<int>(kind));
  RandomElements random(seed);
  const Doubles a = random.Many(sizes.rows * sizes.inner, kind);
  const Doubles b = random.Many(sizes.inner * sizes.cols, kind);
  const Doubles second = SecondProduct(a, b, sizes.rows, sizes.inner, sizes.cols);
  ASSERT_TRUE(SameBits(ElementsOf(ToMatrix(sizes.rows, sizes.inner, a) * ToMatrix(sizes.inner, sizes.cols, b)), second));
  for (const MatrixKernels* way : AllWays()) {
    Doubles product(second.size(), 77.0);
    way->multiply(a.data(), b.data(), product.data(), {sizes.rows, sizes.inner, sizes.cols});
    ASSERT_TRUE(SameBits(product, second));
  }
}

TEST(MatrixProduct, HasTheBitsOfThePlainOneAtAllSmallSizes) {
  std::uint32_t seed = 0;
  for (std::size_t n = 1; n <= 40; ++n) {
    for (const Kind kind : kKinds) {
      ExpectProductsAsTheSecond({n, n, n}, kind, ++seed);
      ExpectProductsAsTheSecond({n % 7 + 1, 41 - n, n}, kind, ++seed);
      ExpectProductsAsTheSecond({n, n % 5, 41 - n}, kind, ++seed);
    }
  }
}

TEST(MatrixProduct, HasTheBitsOfThePlainOneInBlocks) {
  const Sizes large[] = {{64, 64, 64}, {65, 65, 65}, {100, 100, 100}, {130, 257, 20}, {9, 300, 530}, {67, 513, 33}, {8, 4, 1025}};
  std::uint32_t seed = 1000;
  for (const Sizes& sizes : large) {
    for (const Kind kind : kKinds) ExpectProductsAsTheSecond(sizes, kind, ++seed);
  }
}

TEST(MatrixProduct, WithAColumnHasTheBitsOfThePlainOne) {
  std::uint32_t seed = 2000;
  for (std::size_t rows = 1; rows <= 40; ++rows) {
    for (const Kind kind : kKinds) {
      RandomElements random(++seed);
      const std::size_t cols = static_cast<std::size_t>(random.Whole(1, 40));
      const Doubles a = random.Many(rows * cols, kind);
      const Doubles x = random.Many(cols, kind);
      const Doubles second = SecondProduct(a, x, rows, cols, 1);
      col_vector column(static_cast<unsigned int>(cols));
      for (std::size_t i = 0; i < cols; ++i) column[static_cast<int>(i)] = x[i];
      const col_vector product = ToMatrix(rows, cols, a) * column;
      ASSERT_EQ(product.Count(), rows);
      for (std::size_t i = 0; i < rows; ++i) ASSERT_TRUE(SameBits(product[static_cast<int>(i)], second[i]));
      for (const MatrixKernels* way : AllWays()) {
        Doubles sums(rows, 77.0);
        way->multiplyColumn(a.data(), x.data(), sums.data(), rows, cols);
        ASSERT_TRUE(SameBits(sums, second)) << rows << " by " << cols;
      }
    }
  }
}

// --- Inverse ---------------------------------------------------------------------------------------------------------

TEST(MatrixInverse, TimesTheMatrixIsTheIdentity) {
  const Matrix a = Of(2, 2, {4, 7, 2, 6});
  EXPECT_LT(Distance(a.inv(), Of(2, 2, {0.6, -0.7, -0.2, 0.4})), 1e-15);
  const Matrix b = Of(3, 3, {0, 2, 1, 1, 0, 3, -4, 5, 2});
  EXPECT_LT(Distance(b * b.inv(), Matrix::idn(3)), 1e-14);
  EXPECT_LT(Distance(b.inv() * b, Matrix::idn(3)), 1e-14);
}

TEST(MatrixInverse, OfOneElementIsItsReciprocal) {
  EXPECT_TRUE(Of(1, 1, {2}).inv() == Of(1, 1, {0.5}));
  EXPECT_TRUE(IsNull(Of(1, 1, {0}).inv()));
}

TEST(MatrixInverse, OfAMatrixThatIsNotSquareIsNull) {
  EXPECT_TRUE(IsNull(Matrix(2, 3).inv()));
  EXPECT_TRUE(IsNull(Matrix(0, 3, nullptr).inv()));
  EXPECT_TRUE(IsNull(Matrix().inv()));
}

TEST(MatrixInverse, OfASingularMatrixIsNull) {
  EXPECT_TRUE(IsNull(Of(2, 2, {1, 2, 2, 4}).inv()));
  EXPECT_TRUE(IsNull(Of(3, 3, {0, 0, 0, 0, 1, 0, 0, 0, 1}).inv()));
  Matrix large = Matrix::idn(100);
  large[70][70] = 0;
  EXPECT_TRUE(IsNull(large.inv()));
}

TEST(MatrixInverse, ThePivotBoundIsAbsoluteStrictAndHoldsForTheLastColumn) {
  EXPECT_TRUE(Of(2, 2, {1e-14, 0, 0, 1e-14}).inv() == Of(2, 2, {1 / 1e-14, 0, 0, 1 / 1e-14}));
  EXPECT_TRUE(Of(1, 1, {1e-15}).inv() == Of(1, 1, {1 / 1e-15}));
  EXPECT_TRUE(Of(1, 1, {-1e-15}).inv() == Of(1, 1, {1 / -1e-15}));
  EXPECT_TRUE(IsNull(Of(1, 1, {9.9e-16}).inv()));
  EXPECT_TRUE(IsNull(Of(2, 2, {1, 0, 0, 9e-16}).inv()));
  EXPECT_TRUE(IsNull(Of(2, 2, {9e-16, 0, 0, 1}).inv()));
  // Well conditioned, but small.
  EXPECT_TRUE(IsNull(Of(2, 2, {4e-16, 7e-16, 2e-16, 6e-16}).inv()));
}

TEST(MatrixInverse, OfAPermutationIsItsTranspose) {
  Matrix permutation(5, 5);
  permutation.zero();
  const int to[] = {3, 0, 4, 2, 1};
  for (int i = 0; i < 5; ++i) permutation[i][to[i]] = 1;
  EXPECT_TRUE(permutation.inv() == permutation.trn());
}

TEST(MatrixInverse, OfEqualPivotsTheFirstWins) {
  // With row 0 as the pivot the multiplier is exactly -1, and everything stays whole.
  EXPECT_TRUE(Of(2, 2, {1, 1, -1, 1}).inv() == Of(2, 2, {0.5, -0.5, 0.5, 0.5}));
  const Doubles a = {3, 1, -3, 7};
  EXPECT_TRUE(SameBits(ElementsOf(ToMatrix(2, 2, a).inv()), SecondInverse(a, 2)));
}

TEST(MatrixInverse, LeavesTheMatrixAsItIs) {
  const Matrix a = Of(2, 2, {0, 7, 2, 6});
  const Matrix before = a;
  const Matrix inverse = a.inv();
  EXPECT_EQ(inverse.NumRows(), 2u);
  EXPECT_TRUE(a == before);
  Matrix b = a;
  b = b.inv();
  EXPECT_TRUE(b == inverse);
}

TEST(MatrixInverse, NotANumbersPassThrough) {
  const Matrix inverse = Of(2, 2, {kNaN, 1, 1, 1}).inv();
  ASSERT_EQ(inverse.NumRows(), 2u);
  EXPECT_TRUE(std::isnan(inverse[0][0]));
}

void ExpectInversesAsTheSecond(std::size_t n, Kind kind, std::uint32_t seed, std::size_t& regular) {
  SCOPED_TRACE(testing::Message() << n << " by " << n << ", kind " << static_cast<int>(kind));
  const Doubles a = RandomElements(seed).Many(n * n, kind);
  const Doubles second = SecondInverse(a, n);
  regular += second.empty() ? 0 : 1;
  ASSERT_TRUE(SameBits(ElementsOf(ToMatrix(n, n, a).inv()), second));
  for (const MatrixKernels* way : AllWays()) {
    Doubles inverse(n * n, 77.0);
    ASSERT_EQ(way->invert(a.data(), inverse.data(), n), !second.empty());
    if (second.empty()) continue;
    ASSERT_TRUE(SameBits(inverse, second));
  }
}

TEST(MatrixInverse, HasTheBitsOfThePlainOneAtSomeSizes) {
  std::size_t regular = 0;
  std::uint32_t seed = 3500;
  for (const std::size_t n : {2u, 3u, 4u, 5u, 9u, 17u}) {
    for (const Kind kind : kKinds) {
      for (int round = 0; round < 6; ++round) ExpectInversesAsTheSecond(n, kind, ++seed, regular);
    }
  }
  for (const std::size_t n : {48u, 65u, 130u}) ExpectInversesAsTheSecond(n, Kind::Everyday, ++seed, regular);
  ExpectInversesAsTheSecond(50, Kind::WithNaN, ++seed, regular);
  EXPECT_GT(regular, 100u);
}

TEST(MatrixInverseLong, HasTheBitsOfThePlainOneAtAllSmallSizes) {
  std::size_t regular = 0;
  std::uint32_t seed = 3000;
  for (std::size_t n = 1; n <= 40; ++n) {
    for (const Kind kind : kKinds) {
      for (int round = 0; round < 6; ++round) ExpectInversesAsTheSecond(n, kind, ++seed, regular);
    }
  }
  EXPECT_GT(regular, 1000u);
}

TEST(MatrixInverseLong, HasTheBitsOfThePlainOneByPanels) {
  std::size_t regular = 0;
  std::uint32_t seed = 4000;
  for (const std::size_t n : {47u, 48u, 49u, 63u, 64u, 65u, 72u, 97u, 100u, 130u}) {
    for (const Kind kind : kKinds) ExpectInversesAsTheSecond(n, kind, ++seed, regular);
  }
  EXPECT_GT(regular, 40u);
}

// --- Singular value decomposition ------------------------------------------------------------------------------------

struct Decomposed {
  Matrix u;
  Matrix w;
  Matrix v;
};

Decomposed SVDOf(const Matrix& a) {
  Decomposed result;
  EXPECT_TRUE(a.SVD(result.u, result.w, result.v));
  return result;
}

TEST(MatrixSVD, OfASquareMatrixGivesTheLeftFactorTransposed) {
  const Matrix a = Of(3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 10});
  const auto [u, w, v] = SVDOf(a);
  EXPECT_LT(Distance(u.trn() * w * v.trn(), a), 1e-14);
  EXPECT_GT(Distance(u * w * v.trn(), a), 0.1);
  EXPECT_LT(Distance(u * u.trn(), Matrix::idn(3)), 1e-14);
  EXPECT_LT(Distance(v * v.trn(), Matrix::idn(3)), 1e-14);
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      if (i == j) continue;
      EXPECT_EQ(w[i][j], 0.0);
    }
    EXPECT_GE(w[i][i], 0.0);
  }
  // The product of the values is the determinant, -3, and the sum of their squares that of the elements.
  EXPECT_NEAR(w[0][0] * w[1][1] * w[2][2], 3.0, 1e-13);
  EXPECT_NEAR(w[0][0] * w[0][0] + w[1][1] * w[1][1] + w[2][2] * w[2][2], 304.0, 1e-12);
}

TEST(MatrixSVD, OfATallMatrixGivesTheLastColumnsOfTheLeftFactor) {
  const Matrix a = Of(4, 2, {1, 2, 3, 4, 5, 6, 7, 9});
  const auto [u, w, v] = SVDOf(a);
  ASSERT_EQ(u.NumRows(), 4u);
  ASSERT_EQ(u.NumColumns(), 2u);
  ASSERT_EQ(w.NumRows(), 2u);
  ASSERT_EQ(v.NumRows(), 2u);
  Matrix firstRows(2, 2, u[0]);
  EXPECT_LT(Distance(firstRows.trn() * w * v.trn(), Of(2, 2, {5, 6, 7, 9})), 1e-14);
}

TEST(MatrixSVD, OfAColumnThatBeginsWithZeroTakesThePositiveRoot) {
  // Root 3, reflection (-3, 3), so that the second unit vector, the last one of two, goes to the first.
  const auto [u, w, v] = SVDOf(Of(2, 1, {0, 3}));
  EXPECT_TRUE(w == Of(1, 1, {3}));
  EXPECT_TRUE(v == Of(1, 1, {1}));
  EXPECT_TRUE(u == Of(2, 1, {1, 0}));
}

TEST(MatrixSVD, OfAPositiveElementTurnsTheRightVector) {
  // Root -3; a negative value is turned round, and the column of v with it.
  const auto [u, w, v] = SVDOf(Of(1, 1, {3}));
  EXPECT_TRUE(w == Of(1, 1, {3}));
  EXPECT_TRUE(v == Of(1, 1, {-1}));
  EXPECT_TRUE(u == Of(1, 1, {-1}));
}

TEST(MatrixSVD, ValuesAreNotSorted) {
  const auto [u, w, v] = SVDOf(Of(3, 3, {1, 0, 0, 0, 3, 0, 0, 0, 2}));
  EXPECT_TRUE(w == Of(3, 3, {1, 0, 0, 0, 3, 0, 0, 0, 2}));
  EXPECT_LT(Distance(u.trn() * w * v.trn(), w), 1e-15);
}

TEST(MatrixSVD, ARotationWithoutLengthTurnsNothing) {
  const Matrix a = Of(2, 2, {1, 1, 0, 0});
  DecompositionTally tally;
  SecondGolubReinsch(ElementsOf(a), 2, 2, tally).Run();
  EXPECT_GT(tally.turnsWithoutLength, 0);
  const auto [u, w, v] = SVDOf(a);
  EXPECT_LT(Distance(u.trn() * w * v.trn(), a), 1e-15);
  EXPECT_NEAR(w[0][0] + w[1][1], std::sqrt(2.0), 1e-15);
}

TEST(MatrixSVD, OfZerosIsZeroWithIdentities) {
  Matrix zeros(3, 3);
  zeros.zero();
  const auto [u, w, v] = SVDOf(zeros);
  EXPECT_TRUE(u == Matrix::idn(3));
  EXPECT_TRUE(w == zeros);
  EXPECT_TRUE(v == Matrix::idn(3));
}

TEST(MatrixSVD, ColumnsShorterThanTheBoundCountAsZero) {
  const auto [u, w, v] = SVDOf(Of(2, 2, {9e-35, 0, 0, 1}));
  EXPECT_TRUE(w == Of(2, 2, {0, 0, 0, 1}));
  EXPECT_EQ(SVDOf(Of(1, 1, {1.1e-34})).w[0][0], 1.1e-34);
}

TEST(MatrixSVD, WithFewerRowsThanColumnsIsRefusedAndLeavesTheResults) {
  Matrix u = Of(1, 1, {5});
  Matrix w = Of(1, 2, {6, 7});
  Matrix v;
  EXPECT_FALSE(Matrix(2, 3).SVD(u, w, v));
  EXPECT_FALSE(Matrix(0, 3, nullptr).SVD(u, w, v));
  EXPECT_TRUE(u == Of(1, 1, {5}));
  EXPECT_TRUE(w == Of(1, 2, {6, 7}));
  EXPECT_TRUE(IsNull(v));
}

TEST(MatrixSVD, OfNothingIsNothing) {
  Matrix u(1, 1);
  Matrix w(1, 1);
  Matrix v(1, 1);
  EXPECT_TRUE(Matrix().SVD(u, w, v));
  EXPECT_TRUE(IsNull(u));
  EXPECT_TRUE(IsNull(w));
  EXPECT_TRUE(IsNull(v));
  EXPECT_TRUE(Matrix(4294967295u, 0, nullptr).SVD(u, w, v));
  EXPECT_TRUE(IsNull(u));
}

TEST(MatrixSVD, ResultsMayBeTheMatrixItself) {
  const Matrix a = Of(3, 2, {1, 2, 3, 4, 5, 7});
  const auto [u, w, v] = SVDOf(a);
  Matrix first = a;
  Matrix x, y;
  EXPECT_TRUE(first.SVD(first, x, y));
  EXPECT_TRUE(first == u);
  EXPECT_TRUE(x == w);
  EXPECT_TRUE(y == v);
  Matrix second = a;
  EXPECT_TRUE(second.SVD(x, second, y));
  EXPECT_TRUE(second == w);
  EXPECT_TRUE(x == u);
  Matrix third = a;
  EXPECT_TRUE(third.SVD(x, y, third));
  EXPECT_TRUE(third == v);
}

TEST(MatrixSVD, OfResultsThatAreOneTheLastOneStays) {
  const Matrix a = Of(2, 2, {1, 2, 3, 4});
  const auto [u, w, v] = SVDOf(a);
  Matrix one;
  Matrix other;
  EXPECT_TRUE(a.SVD(one, one, one));
  EXPECT_TRUE(one == w);
  EXPECT_TRUE(a.SVD(one, other, one));
  EXPECT_TRUE(one == v);
}

TEST(MatrixSVD, OfATallMatrixNeedsNoSquareBlock) {
  // The whole block would be 8 GB.
  Matrix a(32768, 1);
  a = 1.0;
  const auto [u, w, v] = SVDOf(a);
  EXPECT_NEAR(w[0][0], std::sqrt(32768.0), 1e-10);
  EXPECT_EQ(u.NumRows(), 32768u);
}

void ExpectDecompositionsAsTheSecond(std::size_t m, std::size_t n, const Doubles& a, DecompositionTally& tally) {
  SCOPED_TRACE(testing::Message() << m << " by " << n);
  const SecondDecomposition second = SecondGolubReinsch(a, m, n, tally).Run();
  const auto [u, w, v] = SVDOf(ToMatrix(m, n, a));
  ASSERT_TRUE(SameBits(ElementsOf(u), second.u));
  ASSERT_TRUE(SameBits(ElementsOf(v), second.v));
  for (std::size_t k = 0; k < n; ++k) {
    ASSERT_TRUE(SameBits(w[static_cast<int>(k)][k], second.w[k])) << k;
  }
  for (const MatrixKernels* way : AllWays()) {
    SecondDecomposition ours{Doubles(m * n, 77.0), Doubles(n, 77.0), Doubles(n * n, 77.0)};
    way->decompose(a.data(), {m, n, ours.u.data(), ours.w.data(), ours.v.data()});
    ASSERT_TRUE(SameBits(ours.u, second.u));
    ASSERT_TRUE(SameBits(ours.w, second.w));
    ASSERT_TRUE(SameBits(ours.v, second.v));
  }
}

TEST(MatrixSVDLong, HasTheBitsOfThePlainOneAtAllSmallSizes) {
  DecompositionTally tally;
  std::uint32_t seed = 5000;
  for (std::size_t n = 1; n <= 40; ++n) {
    for (const std::size_t m : {n, n + 1, n + 9}) {
      for (const Kind kind : kKinds) {
        ExpectDecompositionsAsTheSecond(m, n, RandomElements(++seed).Many(m * n, kind), tally);
      }
    }
  }
  EXPECT_GT(tally.leftSkipped, 0);
  EXPECT_GT(tally.rightSkipped, 0);
  EXPECT_GT(tally.cancellations, 0);
  EXPECT_GT(tally.negated, 0);
  EXPECT_GT(tally.sweeps, 0);
}

TEST(MatrixSVD, HasTheBitsOfThePlainOneOnManySmallWholeMatrices) {
  DecompositionTally tally;
  RandomElements random(6000);
  for (int round = 0; round < 3000; ++round) {
    const auto n = static_cast<std::size_t>(random.Whole(1, 4));
    const std::size_t m = n + static_cast<std::size_t>(random.Whole(0, 2));
    ExpectDecompositionsAsTheSecond(m, n, random.Many(m * n, Kind::SmallWhole), tally);
  }
  EXPECT_GT(tally.turnsWithoutLength, 0);
  EXPECT_EQ(tally.sweepsGivenUp, 0);
}

TEST(MatrixSVD, HasTheBitsOfThePlainOneAtLargeSizes) {
  DecompositionTally tally;
  for (const std::size_t n : {64u, 100u, 127u}) {
    ExpectDecompositionsAsTheSecond(n, n, RandomElements(7000).Many(n * n, Kind::Everyday), tally);
  }
  ExpectDecompositionsAsTheSecond(200, 50, RandomElements(7001).Many(200 * 50, Kind::Sparse), tally);
  ExpectDecompositionsAsTheSecond(90, 90, RandomElements(7002).Many(90 * 90, Kind::SmallWhole), tally);
}

// A block of 256 elements within the decomposition once bounded the columns.
TEST(MatrixSVD, OfMoreThan256ColumnsMultipliesBack) {
  for (const unsigned int n : {256u, 257u, 300u}) {
    const Matrix a = ToMatrix(n, n, RandomElements(8000).Many(std::size_t{n} * n, Kind::Everyday));
    const auto [u, w, v] = SVDOf(a);
    EXPECT_LT(Distance(u.trn() * w * v.trn(), a), 1e-12) << n;
  }
}

TEST(MatrixSVD, OfTheMatrixOfOnesWithMoreThan256ColumnsEnds) {
  Matrix a(257, 257);
  a = 1.0;
  const auto [u, w, v] = SVDOf(a);
  double most = 0.0;
  for (int k = 0; k < 257; ++k) most = std::max(most, w[k][k]);
  EXPECT_NEAR(most, 257.0, 1e-10) << "the only value that is not 0";
}

TEST(MatrixSVD, OfEndlessAndUndefinedElementsEnds) {
  for (const double odd : {kInfinity, -kInfinity, kNaN, 1e308, 5e-324}) {
    for (int place = 0; place < 9; ++place) {
      Matrix a = Of(3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 10});
      a[0][place] = odd;
      DecompositionTally tally;
      ExpectDecompositionsAsTheSecond(3, 3, ElementsOf(a), tally);
    }
  }
}

// --- Text ------------------------------------------------------------------------------------------------------------

TEST(MatrixText, HasABlankBehindEachElementAndALineFeedBehindEachRow) {
  EXPECT_EQ(Of(2, 2, {1, -2.5, 0, 1e-7}).ToString(), "1.000000 -2.500000 \n0.000000 0.000000 \n");
  EXPECT_EQ(Of(1, 3, {0.5, kInfinity, -kInfinity}).ToString(), "0.500000 inf -inf \n");
}

TEST(MatrixText, OfAnEmptyMatrixIsEmpty) {
  EXPECT_EQ(Matrix().ToString(), "");
  EXPECT_EQ(Matrix(4294967295u, 0, nullptr).ToString(), "");
}

TEST(MatrixText, HoldsTheLongestNumbers) { EXPECT_EQ(Of(1, 2, {-1.7e308, 1e308}).ToString(), Printed("%f %f \n", -1.7e308, 1e308)); }

TEST(MatrixText, IsTheSameUnderADecimalComma) {
  const CommaLocale comma;
  EXPECT_EQ(Of(1, 1, {1234.5}).ToString(), "1234.500000 \n");
}

std::string DumpOf(const Matrix& matrix) {
  ChildProcess child([&] {
    matrix.dump();
    return std::fflush(stdout);
  });
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  return child.OutputText();
}

TEST(MatrixText, DumpWritesSizesAndElementsToStandardOutput) {
  EXPECT_EQ(DumpOf(Of(2, 1, {1, 2})), "Matrix  Rows=2 Cols=1\n1.000000 \n2.000000 \n");
  EXPECT_EQ(DumpOf(Matrix()), "Matrix  Rows=0 Cols=0\n");
  EXPECT_EQ(DumpOf(Matrix(0, 5, nullptr)), "Matrix  Rows=0 Cols=5\n");
}

// --- Ways ------------------------------------------------------------------------------------------------------------

TEST(MatrixWays, ThePortableOneIsAlwaysThereAndTheFastestIsUsed) {
  const std::vector<const MatrixKernels*> ways = AllWays();
  ASSERT_FALSE(ways.empty());
  EXPECT_EQ(ways.front(), KernelsOf(MatrixWay::Portable));
  EXPECT_EQ(&zelbase::detail::Kernels(), ways.back());
}

#if defined(__x86_64__) && defined(__GNUC__)
TEST(MatrixWays, TheWideOnesAreThereOnProcessorsThatHaveTheirInstructions) {
  __builtin_cpu_init();
  const bool has512 =
      __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512vl") != 0 && __builtin_cpu_supports("avx512dq") != 0;
  EXPECT_EQ(KernelsOf(MatrixWay::Avx2) != nullptr, __builtin_cpu_supports("avx2") != 0);
  EXPECT_EQ(KernelsOf(MatrixWay::Avx512) != nullptr, has512);
}
#endif

TEST(MatrixWays, AnUnknownOneIsNotThere) { EXPECT_EQ(KernelsOf(static_cast<MatrixWay>(17)), nullptr); }

}  // namespace
