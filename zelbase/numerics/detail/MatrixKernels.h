// The arithmetic of a matrix on plain blocks of doubles, in several ways that all give the same bits: one for every processor
// and others for wider registers, chosen at run time. Internal to the library; Matrix.h is what callers use.
#pragma once

#include <cstddef>

#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// Of a product: rows by inner times inner by columns.
struct ProductSize {
  std::size_t rows;
  std::size_t inner;
  std::size_t columns;
};

// Where a decomposition of rows by columns (columns no more than rows) goes; Matrix.h says what is in it.
struct Decomposition {
  std::size_t rows;
  std::size_t columns;
  double* left;    // rows by columns
  double* values;  // columns
  double* right;   // columns by columns
};

// All blocks are row by row without gaps, and an output is none of the inputs. Where a product of the sizes is 0 nothing is read
// or written, but for the sums over nothing, which are 0.0. Scratch memory that is not to be had throws std::bad_alloc.
struct MatrixKernels {
  void (*multiply)(const double* a, const double* b, double* out, const ProductSize& size);

  // rows by columns times a column.
  void (*multiplyColumn)(const double* a, const double* column, double* out, std::size_t rows, std::size_t columns);

  // n by n. False, with `out` undefined, when a pivot is too small.
  bool (*invert)(const double* a, double* out, std::size_t n);

  void (*decompose)(const double* a, const Decomposition& out);
};

// The ways there are, for tests and benchmarks.
enum class MatrixWay : int {
  Portable,  // two doubles at once where the compiler can, everywhere
  Avx2,      // four doubles at once
  Avx512,    // eight doubles at once
};

// Those of the fastest way this processor has. Any thread, and from any static initialiser.
ZELBASE_API const MatrixKernels& Kernels() noexcept;

// Those of one way; null when this processor (or this build) does not have it. The portable way is always there.
ZELBASE_API const MatrixKernels* KernelsOf(MatrixWay way) noexcept;

// Of the sources behind the table: each compiled for its registers, null in a build without them.
const MatrixKernels* PortableKernels() noexcept;
const MatrixKernels* Avx2Kernels() noexcept;
const MatrixKernels* Avx512Kernels() noexcept;

}  // namespace zelbase::detail
