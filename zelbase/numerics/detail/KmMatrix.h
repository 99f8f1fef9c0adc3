// The small dense matrix of the position filter: its sizes are part of its type, its elements lie in the object, and nothing
// is ever allocated. Neighbours: PositionUpdate.h and KalmanFilterLops.cpp, which calculate with it; Matrix.h is the general
// matrix, with sizes at run time and another inverse.
//
// The order of operations is exact and the same for every size: an element of a product is summed from 0.0 by ascending
// index with every term in it. A term with a factor 0 is not left out: it makes a not-a-number of an infinity, and results
// must not depend on what somebody knew of a matrix beforehand. Operators associate from the left, so that a * b * c is
// (a * b) * c; the formulas of the filter are written in that order and mean it.
#pragma once

#include <cmath>
#include <cstdio>
#include <utility>

namespace zelbase::detail {

// A value; zero-filled when made. m[row][column], not checked.
template <int Rows, int Columns>
struct KmMatrix {
  double m[Rows][Columns] = {};

  double* operator[](int row) { return m[row]; }
  const double* operator[](int row) const { return m[row]; }
};

template <int Size>
KmMatrix<Size, Size> KmIdentity() {
  KmMatrix<Size, Size> result;
  for (int i = 0; i < Size; ++i) result[i][i] = 1.0;
  return result;
}

template <int Rows, int Columns>
KmMatrix<Columns, Rows> Transpose(const KmMatrix<Rows, Columns>& a) {
  KmMatrix<Columns, Rows> result;
  for (int i = 0; i < Rows; ++i) {
    for (int j = 0; j < Columns; ++j) result[j][i] = a[i][j];
  }
  return result;
}

template <int Rows, int Columns>
KmMatrix<Rows, Columns> operator+(const KmMatrix<Rows, Columns>& a, const KmMatrix<Rows, Columns>& b) {
  KmMatrix<Rows, Columns> result;
  for (int i = 0; i < Rows; ++i) {
    for (int j = 0; j < Columns; ++j) result[i][j] = a[i][j] + b[i][j];
  }
  return result;
}

template <int Rows, int Columns>
KmMatrix<Rows, Columns> operator-(const KmMatrix<Rows, Columns>& a, const KmMatrix<Rows, Columns>& b) {
  KmMatrix<Rows, Columns> result;
  for (int i = 0; i < Rows; ++i) {
    for (int j = 0; j < Columns; ++j) result[i][j] = a[i][j] - b[i][j];
  }
  return result;
}

// The columns of a row advance side by side, each by ascending k.
template <int Rows, int Inner, int Columns>
KmMatrix<Rows, Columns> operator*(const KmMatrix<Rows, Inner>& a, const KmMatrix<Inner, Columns>& b) {
  KmMatrix<Rows, Columns> result;
  for (int i = 0; i < Rows; ++i) {
    for (int k = 0; k < Inner; ++k) {
      for (int j = 0; j < Columns; ++j) result[i][j] += a[i][k] * b[k][j];
    }
  }
  return result;
}

// A matrix as the product of a lower triangle with a diagonal of ones and an upper triangle, its rows exchanged on the way
// (Crout's method; the pivot is the largest element of a column in terms of the largest element of its row). Both triangles
// share the one matrix. A singular matrix gives numbers without meaning and no failure; its rows that are all zero are
// counted.
template <int Size>
class KmDecomposition {
 public:
  explicit KmDecomposition(const KmMatrix<Size, Size>& a) : m_lu(a) {
    FillScales();
    for (int j = 0; j < Size; ++j) DecomposeColumn(j);
  }

  // Rows of the matrix without an element other than 0 (or not-a-numbers).
  int ZeroRows() const { return m_zeroRows; }

  // Solves for one right side, in place.
  void Solve(double (&b)[Size]) const {
    int first = -1;  // of the right side's elements, the first that is not 0
    for (int i = 0; i < Size; ++i) {
      double sum = b[m_pivots[i]];
      b[m_pivots[i]] = b[i];
      // Kept: nothing is summed before the first element that is not 0; 0 times an infinity would be a not-a-number.
      if (first >= 0) {
        for (int k = first; k < i; ++k) sum -= m_lu[i][k] * b[k];
      } else if (sum != 0.0) {
        first = i;
      }
      b[i] = sum;
    }
    for (int i = Size - 1; i >= 0; --i) {
      double sum = b[i];
      for (int k = i + 1; k < Size; ++k) sum -= m_lu[i][k] * b[k];
      b[i] = sum / m_lu[i][i];
    }
  }

 private:
  void FillScales() {
    for (int i = 0; i < Size; ++i) {
      double big = 0.0;
      for (int j = 0; j < Size; ++j) {
        const double size = std::fabs(m_lu[i][j]);
        if (size > big) big = size;
      }
      // Kept: counted and passed over; the row's scale is an infinity then, and the filter goes on.
      if (big == 0.0) ++m_zeroRows;
      m_scales[i] = 1.0 / big;
    }
  }

  void DecomposeColumn(int j) {
    for (int i = 0; i < j; ++i) Eliminate(i, j, i);
    const int pivot = EliminateBelow(j);
    if (pivot != j) {
      std::swap(m_lu.m[pivot], m_lu.m[j]);
      m_scales[pivot] = m_scales[j];
    }
    m_pivots[j] = pivot;
    // Kept: stands in for a pivot of 0, so that a singular matrix gives huge numbers and no failure.
    if (m_lu[j][j] == 0.0) m_lu[j][j] = 1e-20;
    if (j == Size - 1) return;
    // Kept: multiplied by the reciprocal, which is not always the quotient to the last bit.
    const double reciprocal = 1.0 / m_lu[j][j];
    for (int i = j + 1; i < Size; ++i) m_lu[i][j] *= reciprocal;
  }

  // Takes the products of what is decomposed, `count` of them, from one element.
  void Eliminate(int i, int j, int count) {
    double sum = m_lu[i][j];
    for (int k = 0; k < count; ++k) sum -= m_lu[i][k] * m_lu[k][j];
    m_lu[i][j] = sum;
  }

  // From the diagonal down; gives the pivot's row.
  int EliminateBelow(int j) {
    int pivot = j;  // stays where no comparison holds: a zero row has 0 times an infinity here
    double big = 0.0;
    for (int i = j; i < Size; ++i) {
      Eliminate(i, j, j);
      const double size = m_scales[i] * std::fabs(m_lu[i][j]);
      // Kept: "or equal", so that of equal pivots the last row wins.
      if (size >= big) {
        big = size;
        pivot = i;
      }
    }
    return pivot;
  }

  KmMatrix<Size, Size> m_lu;
  double m_scales[Size];
  int m_pivots[Size];
  int m_zeroRows = 0;
};

// Says on standard output that a matrix could not be inverted, once for each of its rows that were all zero.
inline void PrintSingular(int zeroRows) {
  for (int i = 0; i < zeroRows; ++i) static_cast<void>(std::fputs("Singular KmMatrix in routine LUDCMP\n", stdout));
}

// Column by column from the identity. `zeroRows` is for PrintSingular.
template <int Size>
KmMatrix<Size, Size> Inverse(const KmMatrix<Size, Size>& a, int& zeroRows) {
  const KmDecomposition<Size> decomposition(a);
  zeroRows = decomposition.ZeroRows();
  KmMatrix<Size, Size> result;
  for (int j = 0; j < Size; ++j) {
    double column[Size] = {};
    column[j] = 1.0;
    decomposition.Solve(column);
    for (int i = 0; i < Size; ++i) result[i][j] = column[i];
  }
  return result;
}

}  // namespace zelbase::detail
