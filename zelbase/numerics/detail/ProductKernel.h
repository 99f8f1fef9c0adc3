// Products of matrices, in blocks that stay in registers. Internal to the library. Neighbours: Lanes.h, the registers, and what a
// source that includes this defines first; InverseKernel.h, whose elimination takes off products by the same blocks.
//
// An element is one lane of one register from its first summand to its last, so that it is summed in ascending order whatever
// the blocks are. Between two parts of a long sum it waits in memory, which does not change a bit.
#pragma once

#include <algorithm>
#include <cstddef>

#include "zelbase/numerics/detail/Lanes.h"
#include "zelbase/numerics/detail/MatrixKernels.h"
#include "zelbase/numerics/detail/ScratchBlock.h"

namespace zelbase::detail {
namespace {

// What becomes of the elements that are there.
enum class Sum { Anew, Onward, TakenOff };

// A block of rows, somewhere in a larger one.
struct Rows {
  const double* at;
  std::size_t stride;
};
struct OutRows {
  double* at;
  std::size_t stride;
};

// The shape of a block: as many sums as hide the time that an addition takes. In narrow registers a factor is dear, so that
// more of a row goes with each.
template <int kLanes>
constexpr int kRegistersARow = kLanes > 2 ? 2 : 4;
template <int kRegisters>
constexpr std::size_t kRowsAtOnce = kRegisters > 2 ? 2 : 4;
template <int kLanes>
constexpr std::size_t kStrip = kLanes* kRegistersARow<kLanes>;  // columns

// `kRows` rows by `kRegisters` registers of `out`; `b` and `out` begin at its first column, `a` and `out` at its first row.
template <int kLanes, int kRows, int kRegisters, Sum kSum>
ZELBASE_KERNEL_INLINE void ProductBlock(Rows a, Rows b, OutRows out, std::size_t inner) {
  Lanes<kLanes> sums[kRows][kRegisters];
  ZELBASE_UNROLL
  for (std::size_t r = 0; r < kRows; ++r) {
    ZELBASE_UNROLL
    for (std::size_t v = 0; v < kRegisters; ++v) {
      sums[r][v] = kSum == Sum::Anew ? Lanes<kLanes>{} : Load<kLanes>(out.at + r * out.stride + v * kLanes);
    }
  }
  for (std::size_t k = 0; k < inner; ++k) {
    ZELBASE_UNROLL
    for (std::size_t r = 0; r < kRows; ++r) {
      const double factor = a.at[r * a.stride + k];
      ZELBASE_UNROLL
      for (std::size_t v = 0; v < kRegisters; ++v) {
        const Lanes<kLanes> product = factor * Load<kLanes>(b.at + k * b.stride + v * kLanes);
        sums[r][v] = kSum == Sum::TakenOff ? sums[r][v] - product : sums[r][v] + product;
      }
    }
  }
  ZELBASE_UNROLL
  for (std::size_t r = 0; r < kRows; ++r) {
    ZELBASE_UNROLL
    for (std::size_t v = 0; v < kRegisters; ++v) Store<kLanes>(out.at + r * out.stride + v * kLanes, sums[r][v]);
  }
}

// A strip of `kRegisters` registers over all rows.
template <int kLanes, int kRegisters, Sum kSum>
ZELBASE_KERNEL void ProductStrip(Rows a, Rows b, OutRows out, std::size_t rows, std::size_t inner) {
  constexpr std::size_t kRows = kRowsAtOnce<kRegisters>;
  for (; rows >= kRows; rows -= kRows) {
    ProductBlock<kLanes, kRows, kRegisters, kSum>(a, b, out, inner);
    a.at += kRows * a.stride;
    out.at += kRows * out.stride;
  }
  for (; rows > 0; --rows) {
    ProductBlock<kLanes, 1, kRegisters, kSum>(a, b, out, inner);
    a.at += a.stride;
    out.at += out.stride;
  }
}

// The columns that do not fill a strip: by fewer registers, then by narrower ones.
template <int kLanes, int kRegisters, Sum kSum>
ZELBASE_KERNEL_INLINE void ProductRest(Rows a, Rows b, OutRows out, const ProductSize& size) {
  constexpr std::size_t kWidth = kLanes * kRegisters;
  const std::size_t done = size.columns >= kWidth ? kWidth : 0;
  if (done != 0) ProductStrip<kLanes, kRegisters, kSum>(a, b, out, size.rows, size.inner);
  if constexpr (kWidth > 1) {
    constexpr int kNextRegisters = kRegisters > 1 ? kRegisters / 2 : 1;
    constexpr int kNextLanes = kRegisters > 1 ? kLanes : kLanes / 2;
    b.at += done;
    out.at += done;
    ProductRest<kNextLanes, kNextRegisters, kSum>(a, b, out, {size.rows, size.inner, size.columns - done});
  }
}

// Over `b` as it lies.
template <int kLanes, Sum kSum>
ZELBASE_KERNEL void ProductInPlace(Rows a, Rows b, OutRows out, ProductSize size) {
  for (; size.columns >= kStrip<kLanes>; size.columns -= kStrip<kLanes>) {
    ProductStrip<kLanes, kRegistersARow<kLanes>, kSum>(a, b, out, size.rows, size.inner);
    b.at += kStrip<kLanes>;
    out.at += kStrip<kLanes>;
  }
  ProductRest<kLanes, kRegistersARow<kLanes> / 2, kSum>(a, b, out, size);
}

// --- Large products ------------------------------------------------------------------------------------------------------

constexpr std::size_t kPackedInner = 256;    // rows of b that are packed at once
constexpr std::size_t kPackedColumns = 512;  // and columns; together a megabyte
constexpr std::size_t kPackedRows = 64;      // rows of a that go over all strips while they are in the cache
constexpr std::size_t kPackingPays = 4096;   // elements of b, from which on they no longer fit beside the rest
constexpr std::size_t kFewRows = 8;          // of a; below them packing costs more than it saves

// Copies the whole strips of `b` one after the other, each row by row without gaps.
template <int kLanes>
ZELBASE_KERNEL void PackStrips(Rows b, std::size_t inner, std::size_t strips, double* packed) {
  for (std::size_t strip = 0; strip < strips; ++strip) {
    const double* from = b.at + strip * kStrip<kLanes>;
    for (std::size_t k = 0; k < inner; ++k, from += b.stride, packed += kStrip<kLanes>) {
      ZELBASE_UNROLL
      for (std::size_t v = 0; v < kRegistersARow<kLanes>; ++v) {
        Store<kLanes>(packed + v * kLanes, Load<kLanes>(from + v * kLanes));
      }
    }
  }
}

template <int kLanes, Sum kSum>
ZELBASE_KERNEL void ProductPacked(Rows a, Rows b, OutRows out, const ProductSize& size, double* packed) {
  constexpr std::size_t kWidth = kStrip<kLanes>;
  const std::size_t strips = size.columns / kWidth;
  PackStrips<kLanes>(b, size.inner, strips, packed);
  for (std::size_t row = 0; row < size.rows; row += kPackedRows) {
    const std::size_t rows = std::min(kPackedRows, size.rows - row);
    const Rows someA{a.at + row * a.stride, a.stride};
    for (std::size_t strip = 0; strip < strips; ++strip) {
      const Rows someB{packed + strip * kWidth * size.inner, kWidth};
      const OutRows someOut{out.at + row * out.stride + strip * kWidth, out.stride};
      ProductStrip<kLanes, kRegistersARow<kLanes>, kSum>(someA, someB, someOut, rows, size.inner);
    }
  }
  const std::size_t done = strips * kWidth;
  ProductRest<kLanes, kRegistersARow<kLanes> / 2, kSum>(a, {b.at + done, b.stride}, {out.at + done, out.stride},
                                                        {size.rows, size.inner, size.columns - done});
}

template <int kLanes>
ZELBASE_KERNEL void MultiplyLarge(Rows a, Rows b, OutRows out, const ProductSize& size) {
  const std::size_t mostInner = std::min(size.inner, kPackedInner);
  const std::size_t mostPacked = mostInner * std::min(size.columns, kPackedColumns);
  ScratchBlock<double> scratch(mostPacked);
  double* const packed = scratch.Take(mostPacked);
  for (std::size_t column = 0; column < size.columns; column += kPackedColumns) {
    const std::size_t columns = std::min(kPackedColumns, size.columns - column);
    const OutRows someOut{out.at + column, out.stride};
    for (std::size_t k = 0; k < size.inner; k += kPackedInner) {
      const ProductSize part{size.rows, std::min(kPackedInner, size.inner - k), columns};
      const Rows someA{a.at + k, a.stride};
      const Rows someB{b.at + k * b.stride + column, b.stride};
      if (k == 0) {
        ProductPacked<kLanes, Sum::Anew>(someA, someB, someOut, part, packed);
      } else {
        ProductPacked<kLanes, Sum::Onward>(someA, someB, someOut, part, packed);
      }
    }
  }
}

// --- Entries of the table ------------------------------------------------------------------------------------------------

template <int kLanes>
ZELBASE_KERNEL void Multiply(const double* a, const double* b, double* out, const ProductSize& size) {
  if (size.inner == 0) {
    std::fill_n(out, size.rows * size.columns, 0.0);
    return;
  }
  const Rows rowsA{a, size.inner};
  const Rows rowsB{b, size.columns};
  const OutRows rowsOut{out, size.columns};
  if (size.rows < kFewRows || size.inner * size.columns < kPackingPays) {
    ProductInPlace<kLanes, Sum::Anew>(rowsA, rowsB, rowsOut, size);
  } else {
    MultiplyLarge<kLanes>(rowsA, rowsB, rowsOut, size);
  }
}

// The dot products of `kLanes` rows with one more, side by side.
template <int kLanes>
ZELBASE_KERNEL_INLINE Lanes<kLanes> DotRows(Rows rows, const double* factors, std::size_t count) {
  Lanes<kLanes> sums{};
  std::size_t k = 0;
  for (; k + kLanes <= count; k += kLanes) {
    Lanes<kLanes> columns[kLanes];
    ZELBASE_UNROLL
    for (std::size_t r = 0; r < kLanes; ++r) columns[r] = Load<kLanes>(rows.at + r * rows.stride + k);
    Transpose<kLanes>(columns);
    ZELBASE_UNROLL
    for (std::size_t c = 0; c < kLanes; ++c) sums = sums + factors[k + c] * columns[c];
  }
  for (; k < count; ++k) {
    double column[kLanes];
    for (std::size_t r = 0; r < kLanes; ++r) column[r] = rows.at[r * rows.stride + k];
    sums = sums + factors[k] * Load<kLanes>(column);
  }
  return sums;
}

template <int kLanes>
ZELBASE_KERNEL void MultiplyColumn(const double* a, const double* column, double* out, std::size_t rows, std::size_t columns) {
  std::size_t row = 0;
  for (; row + kLanes <= rows; row += kLanes) {
    Store<kLanes>(out + row, DotRows<kLanes>({a + row * columns, columns}, column, columns));
  }
  for (; row < rows; ++row) out[row] = DotRows<1>({a + row * columns, columns}, column, columns);
}

}  // namespace
}  // namespace zelbase::detail
