// Several doubles in one register, for the sources that are compiled once for each width of registers. Internal to the
// library. Neighbours: ProductKernel.h, InverseKernel.h and DecompositionKernel.h, written on these; MatrixKernels.h, the table.
//
// A source that includes any of them defines ZELBASE_KERNEL_TARGET first, the attribute that lets its functions use the
// instructions. Everything here is in an unnamed namespace: each source has its own copy, and the linker can never put that of a
// wider processor in the place of another's.
//
// No lane is ever added to another: a register holds as many sums side by side, each in its own order.
#pragma once

#include <cstddef>
#include <utility>

#ifndef ZELBASE_KERNEL_TARGET
#define ZELBASE_KERNEL_TARGET
#endif

#if defined(__GNUC__)
#define ZELBASE_KERNEL ZELBASE_KERNEL_TARGET
#define ZELBASE_KERNEL_INLINE ZELBASE_KERNEL_TARGET __attribute__((always_inline)) inline
#else
#define ZELBASE_KERNEL
#define ZELBASE_KERNEL_INLINE inline
#endif

// In front of a loop of a few fixed rounds, whose counters choose registers.
#if defined(__clang__)
#define ZELBASE_UNROLL _Pragma("clang loop unroll(full)")
#elif defined(__GNUC__)
#define ZELBASE_UNROLL _Pragma("GCC unroll 8")
#else
#define ZELBASE_UNROLL
#endif

namespace zelbase::detail {
namespace {

template <int kLanes>
struct LanesOf;

// `Anywhere` is the same at the address of any double.
template <>
struct LanesOf<1> {
  using Type = double;
  using Anywhere = double;
};

#if defined(__GNUC__)
// NOLINTBEGIN(modernize-use-using): the attributes are a typedef's
template <>
struct LanesOf<2> {
  typedef double Type __attribute__((vector_size(16)));
  typedef double Anywhere __attribute__((vector_size(16), aligned(8), may_alias));
};
template <>
struct LanesOf<4> {
  typedef double Type __attribute__((vector_size(32)));
  typedef double Anywhere __attribute__((vector_size(32), aligned(8), may_alias));
};
template <>
struct LanesOf<8> {
  typedef double Type __attribute__((vector_size(64)));
  typedef double Anywhere __attribute__((vector_size(64), aligned(8), may_alias));
};
// NOLINTEND(modernize-use-using)
#endif

template <int kLanes>
using Lanes = typename LanesOf<kLanes>::Type;

template <int kLanes>
ZELBASE_KERNEL_INLINE Lanes<kLanes> Load(const double* at) {
  return *reinterpret_cast<const typename LanesOf<kLanes>::Anywhere*>(at);
}

template <int kLanes>
ZELBASE_KERNEL_INLINE void Store(double* at, const Lanes<kLanes>& value) {
  *reinterpret_cast<typename LanesOf<kLanes>::Anywhere*>(at) = value;
}

#if defined(__GNUC__)

// One step of a transposition: of two rows, the blocks of `kStep` lanes that stand crosswise change places.
template <int kLanes, int kStep, std::size_t... kLane>
ZELBASE_KERNEL_INLINE void Cross(Lanes<kLanes>& upper, Lanes<kLanes>& lower, std::index_sequence<kLane...>) {
  const Lanes<kLanes> a = upper;
  const Lanes<kLanes> b = lower;
  upper = __builtin_shufflevector(a, b, ((kLane & kStep) == 0 ? kLane : kLanes + kLane - kStep)...);
  lower = __builtin_shufflevector(a, b, ((kLane & kStep) == 0 ? kLane + kStep : kLanes + kLane)...);
}

template <int kLanes, int kStep>
ZELBASE_KERNEL_INLINE void CrossAll(Lanes<kLanes> (&rows)[kLanes]) {
  ZELBASE_UNROLL
  for (int row = 0; row < kLanes; ++row) {
    if ((row & kStep) != 0) continue;
    Cross<kLanes, kStep>(rows[row], rows[row + kStep], std::make_index_sequence<kLanes>());
  }
  if constexpr (kStep > 1) CrossAll<kLanes, kStep / 2>(rows);
}

#endif

// Rows become columns.
template <int kLanes>
ZELBASE_KERNEL_INLINE void Transpose(Lanes<kLanes> (&rows)[kLanes]) {
  if constexpr (kLanes > 1) CrossAll<kLanes, kLanes / 2>(rows);
}

// `count` rounded up to whole registers.
template <int kLanes>
constexpr std::size_t Whole(std::size_t count) {
  return (count + kLanes - 1) / kLanes * kLanes;
}

// Rows of so many doubles, for rows of `count` elements: whole registers, and in a large block an odd number of cache lines,
// so that the rows of a column do not crowd the same few places of the cache.
template <int kLanes>
constexpr std::size_t Stride(std::size_t count) {
  constexpr std::size_t kLine = 8;
  constexpr std::size_t kLarge = 32;
  const std::size_t stride = Whole<kLanes>(count);
  if (count < kLarge) return stride;
  return Whole<8>(stride) / kLine % 2 == 0 ? Whole<8>(stride) + kLine : Whole<8>(stride);
}

}  // namespace
}  // namespace zelbase::detail
