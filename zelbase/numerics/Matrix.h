// A dense matrix of doubles with the arithmetic, the inverse and the singular value decomposition that the suite's adjustments
// need. Neighbours: col_vector.h, the column it is multiplied with; KalmanFilter.h, which has small matrices of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "zelbase/numerics/col_vector.h"
#include "zelbase/platform/ZelBaseApi.h"

// Rows and columns count from 0; the elements lie row by row in one block that the matrix owns. A copy has a block of its own.
//
//   double values[] = {4, 7, 2, 6};
//   const Matrix a(2, 2, values);
//   const Matrix inverse = a.inv();
//   if (inverse == Matrix::NULL_MATRIX) { ... singular }
//   Matrix x = inverse * a;            // x[0][0] is 1, or nearly
//
// What gives no result (sizes that do not fit, a singular matrix) returns a copy of NULL_MATRIX, with 0 rows and 0 columns,
// and says nothing. A failing allocation throws std::bad_alloc, also when the size in bytes is beyond 64 bits, and leaves every
// object as it was. Not-a-numbers and infinities pass through all operations.
//
// The order of every sum is part of the interface: the same elements give the same bits on every machine, whatever wider
// registers its processor has. (Which of several not-a-numbers comes out is not.)
//
// What surprises, and is relied on:
//   (1) Division multiplies by 1.0 / value, so that 49 / 49 is not 1.
//   (2) == compares bytes: 0.0 differs from -0.0, a not-a-number equals the same one. It returns an int.
//   (3) += and -= give up only when rows AND columns differ. When one of them fits they run on in storage order.
//   (4) inv() takes a pivot below 1e-15 for zero, whatever the size of the elements.
//   (5) SVD gives the left factor of a square matrix transposed, and of a tall one its last rows and columns; see there.
//
// One object belongs to one thread at a time; reading is safe from several.
class ZELBASE_API Matrix {
 public:
  // No rows, no columns. There from the start of the program: a static initialiser may use it.
  static const Matrix NULL_MATRIX;

  constexpr Matrix() noexcept = default;

  // rows by cols elements, undefined until they are set. When either is 0 both are.
  Matrix(unsigned int rows, unsigned int cols);

  // Copies rows * cols doubles, row by row. When either is 0 there are no elements, but both numbers stay as given. Null
  // `values` count as zeros.
  Matrix(unsigned int rows, unsigned int cols, const double* values);

  Matrix(const Matrix& other);
  Matrix(Matrix&& other) noexcept;  // `other` is left empty
  ~Matrix() = default;

  // Takes sizes and elements; to itself, nothing happens.
  Matrix& operator=(const Matrix& other);
  Matrix& operator=(Matrix&& other) noexcept;

  // Sets every element and keeps the size.
  Matrix& operator=(double value);

  unsigned int NumRows() const noexcept { return m_rows; }
  unsigned int NumColumns() const noexcept { return m_cols; }
  bool IsSquare() const noexcept { return m_rows == m_cols; }

  // The first element of a row, so that m[row][column] is an element; null without elements. Neither index is checked. The
  // elements may be written through a constant matrix, too.
  double* operator[](int row) const noexcept {
    return m_data == nullptr ? nullptr : m_data.get() + static_cast<std::ptrdiff_t>(row) * m_cols;
  }

  // Sets all elements to 0.
  void zero();

  // Makes a square matrix the identity; another one stays as it is.
  void idn();

  // An identity of n by n; NULL_MATRIX for 0.
  static Matrix idn(unsigned int n);

  // The transpose.
  Matrix trn() const;

  // Element by element; NULL_MATRIX when a size differs.
  Matrix operator+(const Matrix& other) const;
  Matrix operator-(const Matrix& other) const;

  // The product, each element summed in ascending order from 0.0, no factor left out. NULL_MATRIX, or NULL_COL_VECTOR, when this
  // matrix has not as many columns as the other one has rows or elements.
  Matrix operator*(const Matrix& other) const;
  col_vector operator*(const col_vector& column) const;

  Matrix operator*(double value) const;
  Matrix& operator*=(double value);

  // Multiplies by 1.0 / value; by 0 there are infinities and not-a-numbers.
  Matrix operator/(double value) const;
  Matrix& operator/=(double value);

  // Element by element in place. Nothing happens when both sizes differ. When only one differs, all elements of this matrix
  // take the other's in storage order, as far as those reach; the rest stays.
  Matrix& operator+=(const Matrix& other);
  Matrix& operator-=(const Matrix& other);

  // 1 when both sizes are equal and the elements are, byte by byte; otherwise 0. != is the opposite.
  int operator==(const Matrix& other) const noexcept;
  int operator!=(const Matrix& other) const noexcept;

  // The inverse, by elimination with row pivoting: the pivot is the first of the largest in its column. NULL_MATRIX when the
  // matrix is not square or a pivot, the last one included, is smaller than 1e-15. Cost: the cube of the size.
  Matrix inv() const;

  // Singular value decomposition by Householder reduction and QR sweeps with implicit shift (Golub and Reinsch, "Singular value
  // decomposition and least squares solutions", Numerische Mathematik 14, 1970) of a matrix a of m by n, m at least n:
  //
  //   w   n by n, the singular values on the diagonal, not negative, in no order
  //   v   n by n, its columns the right singular vectors
  //   u   m by n. For m = n its ROWS are the left singular vectors: a = u.trn() * w * v.trn(). For m > n it holds the last n
  //       columns of the m by m matrix whose rows are the left singular vectors: the first n rows of u give the last n
  //       rows of a, as u'.trn() * w * v.trn(); the other rows go with no singular value.
  //
  // False, with the results as they were, when m is less than n; true otherwise, however many columns there are. The
  // results may be this matrix, and one may be another: w is written last, v before it, u first. A column shorter than
  // 1e-34 counts as zero. A value that has not settled after 1000 sweeps is taken as it stands, so that not-a-numbers end as well. Cost: m
  // times n squared, and memory for three times m by n.
  bool SVD(Matrix& u, Matrix& w, Matrix& v) const;

  // Every element as "%f " with its blank, each row followed by a line feed; empty without elements. No locale changes it.
  std::string ToString() const;

  // Writes the line "Matrix  Rows=%u Cols=%u" and then ToString() to standard output.
  void dump() const;

 private:
  std::uint64_t Count() const noexcept;  // of elements
  void AppendRow(std::string& text, unsigned int row) const;

  unsigned int m_rows = 0;
  unsigned int m_cols = 0;
  std::unique_ptr<double[]> m_data;  // null without elements
};
