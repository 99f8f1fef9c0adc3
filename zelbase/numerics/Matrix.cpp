#include "zelbase/numerics/Matrix.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <utility>

#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/numerics/detail/ElementBlock.h"
#include "zelbase/numerics/detail/MatrixKernels.h"

using zelbase::detail::ElementCount;
using zelbase::detail::Kernels;
using zelbase::detail::NewElements;

namespace {

constexpr int kDecimals = 6;  // of "%f"

}  // namespace

constinit const Matrix Matrix::NULL_MATRIX;

// --- Making and copying ----------------------------------------------------------------------------------------------

Matrix::Matrix(unsigned int rows, unsigned int cols)
    : m_rows(cols == 0 ? 0 : rows), m_cols(rows == 0 ? 0 : cols), m_data(NewElements(Count())) {}

// Kept: without the test for a zero size, so that (0, 5, values) has 0 rows and 5 columns.
Matrix::Matrix(unsigned int rows, unsigned int cols, const double* values) : m_rows(rows), m_cols(cols), m_data(NewElements(Count())) {
  if (values == nullptr) {
    zero();
  } else {
    std::copy_n(values, Count(), m_data.get());
  }
}

Matrix::Matrix(const Matrix& other) : m_rows(other.m_rows), m_cols(other.m_cols), m_data(NewElements(Count())) {
  std::copy_n(other.m_data.get(), Count(), m_data.get());
}

Matrix::Matrix(Matrix&& other) noexcept
    : m_rows(std::exchange(other.m_rows, 0)), m_cols(std::exchange(other.m_cols, 0)), m_data(std::move(other.m_data)) {}

Matrix& Matrix::operator=(const Matrix& other) {
  if (this == &other) return *this;
  if (Count() != other.Count()) m_data = NewElements(other.Count());
  m_rows = other.m_rows;
  m_cols = other.m_cols;
  std::copy_n(other.m_data.get(), Count(), m_data.get());
  return *this;
}

Matrix& Matrix::operator=(Matrix&& other) noexcept {
  if (this == &other) return *this;
  m_rows = std::exchange(other.m_rows, 0);
  m_cols = std::exchange(other.m_cols, 0);
  m_data = std::move(other.m_data);
  return *this;
}

std::uint64_t Matrix::Count() const noexcept { return ElementCount(m_rows, m_cols); }

// --- Filling ---------------------------------------------------------------------------------------------------------

Matrix& Matrix::operator=(double value) {
  std::fill_n(m_data.get(), Count(), value);
  return *this;
}

void Matrix::zero() { *this = 0.0; }

// Kept: a matrix that is not square is left as it is, without a word.
void Matrix::idn() {
  if (!IsSquare()) return;
  zero();
  for (std::size_t i = 0; i < m_rows; ++i) m_data[i * m_cols + i] = 1.0;
}

Matrix Matrix::idn(unsigned int n) {
  Matrix identity(n, n);
  identity.idn();
  return identity;
}

Matrix Matrix::trn() const {
  constexpr std::size_t kTile = 8;  // a cache line of doubles
  Matrix result(m_cols, m_rows);
  if (m_data == nullptr) return result;
  const std::size_t rows = m_rows;
  const std::size_t cols = m_cols;
  for (std::size_t top = 0; top < rows; top += kTile) {
    const std::size_t bottom = std::min(top + kTile, rows);
    for (std::size_t c = 0; c < cols; ++c) {
      for (std::size_t r = top; r < bottom; ++r) result.m_data[c * rows + r] = m_data[r * cols + c];
    }
  }
  return result;
}

// --- Arithmetic ------------------------------------------------------------------------------------------------------

Matrix Matrix::operator+(const Matrix& other) const {
  if (m_rows != other.m_rows || m_cols != other.m_cols) return NULL_MATRIX;
  Matrix result(*this);
  result += other;
  return result;
}

Matrix Matrix::operator-(const Matrix& other) const {
  if (m_rows != other.m_rows || m_cols != other.m_cols) return NULL_MATRIX;
  Matrix result(*this);
  result -= other;
  return result;
}

Matrix Matrix::operator*(const Matrix& other) const {
  if (m_cols != other.m_rows) return NULL_MATRIX;
  Matrix result(m_rows, other.m_cols);
  Kernels().multiply(m_data.get(), other.m_data.get(), result.m_data.get(), {result.m_rows, m_cols, result.m_cols});
  return result;
}

col_vector Matrix::operator*(const col_vector& column) const {
  if (m_cols != column.m_count) return col_vector::NULL_COL_VECTOR;
  col_vector result(m_rows);
  Kernels().multiplyColumn(m_data.get(), column.m_data.get(), result.m_data.get(), m_rows, m_cols);
  return result;
}

Matrix Matrix::operator*(double value) const {
  Matrix result(*this);
  result *= value;
  return result;
}

Matrix& Matrix::operator*=(double value) {
  double* const elements = m_data.get();
  const std::uint64_t count = Count();
  for (std::uint64_t i = 0; i < count; ++i) elements[i] *= value;
  return *this;
}

// Kept: multiplies by the reciprocal, whose last bit differs from that of a division.
Matrix Matrix::operator/(double value) const { return *this * (1.0 / value); }
Matrix& Matrix::operator/=(double value) { return *this *= 1.0 / value; }

// Kept: gives up only when both sizes differ; with one that fits it runs on over what both have, in storage order.
Matrix& Matrix::operator+=(const Matrix& other) {
  if (m_rows != other.m_rows && m_cols != other.m_cols) return *this;
  double* const elements = m_data.get();
  const double* const others = other.m_data.get();
  const std::uint64_t count = std::min(Count(), other.Count());
  for (std::uint64_t i = 0; i < count; ++i) elements[i] += others[i];
  return *this;
}

// Kept: as += does.
Matrix& Matrix::operator-=(const Matrix& other) {
  if (m_rows != other.m_rows && m_cols != other.m_cols) return *this;
  double* const elements = m_data.get();
  const double* const others = other.m_data.get();
  const std::uint64_t count = std::min(Count(), other.Count());
  for (std::uint64_t i = 0; i < count; ++i) elements[i] -= others[i];
  return *this;
}

// Kept: compares bytes, not numbers, and gives an int.
int Matrix::operator==(const Matrix& other) const noexcept {
  if (m_rows != other.m_rows || m_cols != other.m_cols) return 0;
  if (m_data == other.m_data) return 1;
  return std::memcmp(m_data.get(), other.m_data.get(), Count() * sizeof(double)) == 0 ? 1 : 0;
}

int Matrix::operator!=(const Matrix& other) const noexcept { return *this == other ? 0 : 1; }

// --- Inverse and decomposition ---------------------------------------------------------------------------------------

Matrix Matrix::inv() const {
  if (!IsSquare()) return NULL_MATRIX;
  Matrix result(m_rows, m_cols);
  if (!Kernels().invert(m_data.get(), result.m_data.get(), m_rows)) return NULL_MATRIX;
  return result;
}

bool Matrix::SVD(Matrix& u, Matrix& w, Matrix& v) const {
  if (m_rows < m_cols) return false;
  Matrix left(m_rows, m_cols);
  Matrix values(m_cols, m_cols);
  Matrix right(m_cols, m_cols);
  values.zero();
  double* const diagonal = values.m_data.get();  // comes out as the first row
  Kernels().decompose(m_data.get(), {m_rows, m_cols, left.m_data.get(), diagonal, right.m_data.get()});
  // Kept: in the order in which they came to rest; nothing sorts them.
  for (std::size_t k = 1; k < values.m_rows; ++k) std::swap(diagonal[k * m_cols + k], diagonal[k]);
  u = std::move(left);
  v = std::move(right);
  w = std::move(values);
  return true;
}

// --- Text ------------------------------------------------------------------------------------------------------------

void Matrix::AppendRow(std::string& text, unsigned int row) const {
  const double* const elements = m_data.get() + std::size_t{row} * m_cols;
  for (unsigned int c = 0; c < m_cols; ++c) {
    zelbase::detail::AppendFixed(text, elements[c], kDecimals);
    text += ' ';
  }
  text += '\n';
}

std::string Matrix::ToString() const {
  std::string text;
  if (m_data == nullptr) return text;
  for (unsigned int row = 0; row < m_rows; ++row) AppendRow(text, row);
  return text;
}

void Matrix::dump() const {
  std::string text = "Matrix  Rows=";
  zelbase::detail::AppendUnsigned(text, m_rows);
  text += " Cols=";
  zelbase::detail::AppendUnsigned(text, m_cols);
  text += '\n';
  text += ToString();
  static_cast<void>(std::fwrite(text.data(), 1, text.size(), stdout));
}
