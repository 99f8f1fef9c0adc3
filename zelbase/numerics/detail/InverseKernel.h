// The inverse of a matrix by elimination, along the rows. Internal to the library. Neighbours: Lanes.h, the registers, and what
// a source that includes this defines first; ProductKernel.h, the blocks of a large elimination.
//
// Each element goes through the same operations in the same order as in the textbook's three loops: what is taken off it in the
// elimination by ascending pivot, in the forward substitution by descending row, in the back substitution by ascending row.
// Only which elements go side by side, and when, is chosen here.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>

#include "zelbase/numerics/detail/Lanes.h"
#include "zelbase/numerics/detail/ProductKernel.h"
#include "zelbase/numerics/detail/ScratchBlock.h"
#include "zelbase/platform/detail/IntendedWraps.h"

namespace zelbase::detail {
namespace {

constexpr double kSmallestPivot = 1e-15;

// The work matrix with its row order: row i was row order[i].
struct Elimination {
  double* at;
  std::size_t stride;  // at least kLanes more than n, so that a register that begins in a row ends in it
  std::size_t n;
  unsigned int* order;

  double* Row(std::size_t row) const { return at + row * stride; }
};

inline void SwapRows(const Elimination& lu, std::size_t a, std::size_t b) {
  std::swap_ranges(lu.Row(a), lu.Row(a) + lu.n, lu.Row(b));
  std::swap(lu.order[a], lu.order[b]);
}

// --- Elimination -----------------------------------------------------------------------------------------------------

// Which of `count` values, `step` apart, is the largest without its sign: the first of equals. A not-a-number that comes
// first is never replaced, a later one never replaces.
inline std::size_t FirstLargest(const double* values, std::size_t step, std::size_t count) {
  std::size_t best = 0;
  double largest = std::fabs(values[0]);
  for (std::size_t i = 1; i < count; ++i) {
    const double candidate = std::fabs(values[i * step]);
    if (!(candidate > largest)) continue;
    largest = candidate;
    best = i;
  }
  return best;
}

// Kept: the bound is absolute, and holds for the last column as well.
inline bool IsTooSmall(double pivot) { return std::fabs(pivot) < kSmallestPivot; }

// Pivot by pivot, each taken off all rows below at once.
template <int kLanes>
ZELBASE_KERNEL bool EliminateSmall(const Elimination& lu) {
  for (std::size_t k = 0; k < lu.n; ++k) {
    const std::size_t pivotRow = k + FirstLargest(lu.Row(k) + k, lu.stride, lu.n - k);
    if (pivotRow != k) SwapRows(lu, k, pivotRow);
    const double* const above = lu.Row(k);
    if (IsTooSmall(above[k])) return false;
    for (std::size_t i = k + 1; i < lu.n; ++i) {
      double* const row = lu.Row(i);
      row[k] /= above[k];
      const double factor = row[k];
      for (std::size_t j = k + 1; j < lu.n; j += kLanes) {
        Store<kLanes>(row + j, Load<kLanes>(row + j) - factor * Load<kLanes>(above + j));
      }
    }
  }
  return true;
}

// --- Elimination by panels -------------------------------------------------------------------------------------------

constexpr std::size_t kPanelColumns = 16;
constexpr std::size_t kPanelsPay = 48;  // rows from which on the elimination goes by panels

// Some columns of the work matrix from their diagonal down, column by column.
struct Panel {
  double* at;
  std::size_t stride;  // at least kLanes more than the rows
  std::size_t rows;
  std::size_t columns;

  double* Column(std::size_t column) const { return at + column * stride; }
};

inline void CopyOut(const Elimination& lu, std::size_t first, const Panel& panel) {
  for (std::size_t r = 0; r < panel.rows; ++r) {
    const double* const row = lu.Row(first + r) + first;
    for (std::size_t c = 0; c < panel.columns; ++c) panel.Column(c)[r] = row[c];
  }
}

inline void CopyBack(const Elimination& lu, std::size_t first, const Panel& panel) {
  for (std::size_t r = 0; r < panel.rows; ++r) {
    double* const row = lu.Row(first + r) + first;
    for (std::size_t c = 0; c < panel.columns; ++c) row[c] = panel.Column(c)[r];
  }
}

template <int kLanes>
ZELBASE_KERNEL void TakeOffColumn(const Panel& panel, std::size_t k) {
  double* const factors = panel.Column(k);
  const double pivot = factors[k];
  for (std::size_t r = k + 1; r < panel.rows; r += kLanes) Store<kLanes>(factors + r, Load<kLanes>(factors + r) / pivot);
  for (std::size_t c = k + 1; c < panel.columns; ++c) {
    double* const column = panel.Column(c);
    const double above = column[k];
    for (std::size_t r = k + 1; r < panel.rows; r += kLanes) {
      Store<kLanes>(column + r, Load<kLanes>(column + r) - Load<kLanes>(factors + r) * above);
    }
  }
}

// Eliminates the columns of the panel and swaps the rows of the whole work matrix.
template <int kLanes>
ZELBASE_KERNEL bool EliminatePanel(const Elimination& lu, std::size_t first, const Panel& panel) {
  for (std::size_t k = 0; k < panel.columns; ++k) {
    const std::size_t pivotRow = k + FirstLargest(panel.Column(k) + k, 1, panel.rows - k);
    if (pivotRow != k) {
      SwapRows(lu, first + k, first + pivotRow);
      for (std::size_t c = 0; c < panel.columns; ++c) std::swap(panel.Column(c)[k], panel.Column(c)[pivotRow]);
    }
    if (IsTooSmall(panel.Column(k)[k])) return false;
    TakeOffColumn<kLanes>(panel, k);
  }
  return true;
}

// Takes the pivots of the panel off everything to the right of it: first off its own rows, then off those below.
template <int kLanes>
ZELBASE_KERNEL void TakeOffPanel(const Elimination& lu, std::size_t first, std::size_t width) {
  const std::size_t right = first + width;
  const std::size_t columns = Whole<kLanes>(lu.n - right);
  const Rows above{lu.Row(first) + right, lu.stride};
  for (std::size_t i = 1; i < width; ++i) {
    double* const row = lu.Row(first + i);
    ProductInPlace<kLanes, Sum::TakenOff>({row + first, lu.stride}, above, {row + right, lu.stride}, {1, i, columns});
  }
  double* const below = lu.Row(right);
  ProductInPlace<kLanes, Sum::TakenOff>({below + first, lu.stride}, above, {below + right, lu.stride}, {lu.n - right, width, columns});
}

template <int kLanes>
ZELBASE_KERNEL bool EliminateLarge(const Elimination& lu) {
  ScratchBlock<double> scratch(kPanelColumns * lu.stride);
  double* const columns = scratch.Take(kPanelColumns * lu.stride);
  std::fill_n(columns, kPanelColumns * lu.stride, 0.0);
  for (std::size_t first = 0; first < lu.n; first += kPanelColumns) {
    const std::size_t width = std::min(kPanelColumns, lu.n - first);
    const Panel panel{columns, lu.stride, lu.n - first, width};
    CopyOut(lu, first, panel);
    if (!EliminatePanel<kLanes>(lu, first, panel)) return false;
    CopyBack(lu, first, panel);
    if (first + width < lu.n) TakeOffPanel<kLanes>(lu, first, width);
  }
  return true;
}

// --- Substitution ----------------------------------------------------------------------------------------------------
//
// The columns of the inverse are solved for with those of the identity in their natural order, and go to their places at the
// end: column c of the solution belongs to the right-hand side whose 1 stands in row c after the exchange of rows.

// Solves for `kRegisters` registers of columns at `x`. Above row `first` the columns are zero, and stay so.
template <int kLanes, int kRegisters>
ZELBASE_WRAPS ZELBASE_KERNEL void SolveStrip(const Elimination& lu, double* x, std::size_t first) {
  Lanes<kLanes> values[kRegisters];
  for (std::size_t i = first + 1; i < lu.n; ++i) {
    const double* const factors = lu.Row(i);
    double* const row = x + i * lu.stride;
    ZELBASE_UNROLL
    for (int v = 0; v < kRegisters; ++v) values[v] = Load<kLanes>(row + v * kLanes);
    for (std::size_t j = i; j-- > first;) {
      ZELBASE_UNROLL
      for (int v = 0; v < kRegisters; ++v) {
        values[v] = values[v] - Load<kLanes>(x + j * lu.stride + v * kLanes) * factors[j];
      }
    }
    ZELBASE_UNROLL
    for (int v = 0; v < kRegisters; ++v) Store<kLanes>(row + v * kLanes, values[v]);
  }
  for (std::size_t i = lu.n; i-- > 0;) {
    const double* const factors = lu.Row(i);
    double* const row = x + i * lu.stride;
    ZELBASE_UNROLL
    for (int v = 0; v < kRegisters; ++v) values[v] = Load<kLanes>(row + v * kLanes);
    for (std::size_t j = i + 1; j < lu.n; ++j) {
      ZELBASE_UNROLL
      for (int v = 0; v < kRegisters; ++v) {
        values[v] = values[v] - Load<kLanes>(x + j * lu.stride + v * kLanes) * factors[j];
      }
    }
    ZELBASE_UNROLL
    for (int v = 0; v < kRegisters; ++v) Store<kLanes>(row + v * kLanes, values[v] / factors[i]);
  }
}

constexpr int kMostRegisters = 8;  // of a strip

template <int kLanes, int kRegisters = kMostRegisters>
ZELBASE_KERNEL_INLINE void SolveRegisters(const Elimination& lu, double* x, std::size_t first, std::size_t registers) {
  if (registers == kRegisters) return SolveStrip<kLanes, kRegisters>(lu, x, first);
  if constexpr (kRegisters > 1) SolveRegisters<kLanes, kRegisters - 1>(lu, x, first, registers);
}

// Whether all multipliers of the elimination are finite. Then 0.0 - 0.0 * multiplier is 0.0 and value - 0.0 * multiplier is
// value, and the zeros above a column's 1 may be left out. (No value is -0.0: a difference is never that unless its first
// member was.)
inline bool AreMultipliersFinite(const Elimination& lu) {
  bool finite = true;
  for (std::size_t i = 1; i < lu.n; ++i) {
    const double* const row = lu.Row(i);
    for (std::size_t j = 0; j < i; ++j) finite &= std::isfinite(row[j]);
  }
  return finite;
}

template <int kLanes>
ZELBASE_KERNEL void SolveAll(const Elimination& lu, double* x) {
  std::fill_n(x, lu.n * lu.stride, 0.0);
  for (std::size_t i = 0; i < lu.n; ++i) x[i * lu.stride + i] = 1.0;
  const bool skipZeros = AreMultipliersFinite(lu);
  std::size_t left = Whole<kLanes>(lu.n) / kLanes;
  std::size_t strips = (left + kMostRegisters - 1) / kMostRegisters;
  for (std::size_t column = 0; strips > 0; --strips) {
    const std::size_t registers = (left + strips - 1) / strips;  // even shares
    SolveRegisters<kLanes>(lu, x + column, skipZeros ? column : 0, registers);
    column += registers * kLanes;
    left -= registers;
  }
}

// --- Entry of the table ----------------------------------------------------------------------------------------------

constexpr std::size_t kFewColumns = 24;  // for which narrower registers are quicker: less of them stays empty

template <int kLanes>
ZELBASE_KERNEL bool Invert(const double* a, double* out, std::size_t n) {
  if constexpr (kLanes > 4) {
    if (n <= kFewColumns) return Invert<4>(a, out, n);
  }
  const std::size_t stride = Stride<kLanes>(n + kLanes);
  ScratchBlock<double> scratch(2 * ScratchBlock<double>::RoundUp(n * stride));
  ScratchBlock<unsigned int> order(n);
  const Elimination lu{scratch.Take(n * stride), stride, n, order.Take(n)};
  std::iota(lu.order, lu.order + n, 0u);
  for (std::size_t i = 0; i < n; ++i) {
    std::copy_n(a + i * n, n, lu.Row(i));
    std::fill(lu.Row(i) + n, lu.Row(i) + stride, 0.0);
  }
  const bool regular = n < kPanelsPay ? EliminateSmall<kLanes>(lu) : EliminateLarge<kLanes>(lu);
  if (!regular) return false;
  double* const x = scratch.Take(n * stride);
  SolveAll<kLanes>(lu, x);
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t c = 0; c < n; ++c) out[i * n + lu.order[c]] = x[i * stride + c];
  }
  return true;
}

}  // namespace
}  // namespace zelbase::detail
