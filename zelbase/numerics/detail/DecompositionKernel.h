// The singular value decomposition of Golub and Reinsch ("Singular value decomposition and least squares solutions", Numerische
// Mathematik 14, 1970), with its order of operations kept and its loops turned. Internal to the library. Neighbours: Lanes.h, the
// registers, and what a source that includes this defines first; Matrix.h, which says what comes out.
//
// Each sum runs in the published order in one lane; many columns, or rows, are summed side by side. The published algorithm
// reflects and rotates a square block of as many columns as there are rows; a column of it never touches another one, so that
// only the last ones, which are asked for, are kept. Reflections of that block and rotations of several sweeps are collected
// first and then applied strip by strip, each strip in their order while it is in the cache.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "zelbase/numerics/detail/Lanes.h"
#include "zelbase/numerics/detail/MatrixKernels.h"
#include "zelbase/numerics/detail/ProductKernel.h"
#include "zelbase/numerics/detail/ScratchBlock.h"
#include "zelbase/platform/detail/IntendedWraps.h"

namespace zelbase::detail {
namespace {

constexpr double kRelativeThreshold = 1e-15;
constexpr double kSmallestSquare = 1e-68;  // a sum of squares below it counts as zero
constexpr int kMostSweeps = 1000;          // of one value

// A work array, row by row. A row is whole registers long; what stands behind its columns is never looked at.
struct Block {
  double* at;
  std::size_t stride;

  double* Row(std::size_t row) const { return at + row * stride; }
};

struct Rotation {
  double c;
  double s;
};

struct Bidiagonal {
  double* q;         // the diagonal: n
  double* e;         // beside it: n, with e[0] always 0
  double threshold;  // what is not greater counts as zero
};

struct Work {
  std::size_t m;
  std::size_t n;
  Block a;           // m by n: the matrix, then the reflections of its rows, then v transposed: a column of v is a row
  Block left;        // m by n: the last n columns of the block that is reflected from the left
  Block right;       // n by n: v
  Block reflectors;  // n by m: the reflection of each column, then n by n of each row divided by its h
  double* h;         // n: what the sum of a reflection is divided by; 0 where there is none
  double* q;         // n
  double* e;         // n, and zeros up to a whole register
};

// --- Strips ----------------------------------------------------------------------------------------------------------

constexpr int kStripRegisters = 4;

template <int kLanes, template <int, int> class Step, int kRegisters, class... Arguments>
ZELBASE_KERNEL_INLINE void RunStrip(std::size_t registers, std::size_t column, const Arguments&... arguments) {
  if (registers == kRegisters) return Step<kLanes, kRegisters>::Run(column, arguments...);
  if constexpr (kRegisters > 1) RunStrip<kLanes, Step, kRegisters - 1>(registers, column, arguments...);
}

// Calls Step<kLanes, registers>::Run(column, arguments...) for strips of a few registers each, from the one that holds column
// `first` to the one that holds the last of `columns`.
template <int kLanes, template <int, int> class Step, class... Arguments>
ZELBASE_KERNEL_INLINE void RunStrips(std::size_t first, std::size_t columns, const Arguments&... arguments) {
  std::size_t column = first / kLanes * kLanes;
  std::size_t left = Whole<kLanes>(columns - column) / kLanes;
  for (std::size_t strips = (left + kStripRegisters - 1) / kStripRegisters; strips > 0; --strips) {
    const std::size_t registers = (left + strips - 1) / strips;  // even shares
    RunStrip<kLanes, Step, kStripRegisters>(registers, column, arguments...);
    column += registers * kLanes;
    left -= registers;
  }
}

// --- Reflections -----------------------------------------------------------------------------------------------------

// For rows first to last - 1 of a block: each column takes `adds` times the sum of its products with `dots`, divided by h.
struct Reflection {
  const double* dots;
  const double* adds;
  double h;
  std::size_t first;
  std::size_t last;
};

template <int kLanes, int kRegisters>
ZELBASE_KERNEL_INLINE void ReflectColumns(const Block& block, std::size_t column, const Reflection& reflection) {
  Lanes<kLanes> sums[kRegisters];
  ZELBASE_UNROLL
  for (int v = 0; v < kRegisters; ++v) sums[v] = Lanes<kLanes>{};
  for (std::size_t k = reflection.first; k < reflection.last; ++k) {
    const double* const row = block.Row(k) + column;
    ZELBASE_UNROLL
    for (int v = 0; v < kRegisters; ++v) sums[v] = sums[v] + reflection.dots[k] * Load<kLanes>(row + v * kLanes);
  }
  ZELBASE_UNROLL
  for (int v = 0; v < kRegisters; ++v) sums[v] = sums[v] / reflection.h;
  for (std::size_t k = reflection.first; k < reflection.last; ++k) {
    double* const row = block.Row(k) + column;
    ZELBASE_UNROLL
    for (int v = 0; v < kRegisters; ++v) {
      Store<kLanes>(row + v * kLanes, Load<kLanes>(row + v * kLanes) + sums[v] * reflection.adds[k]);
    }
  }
}

template <int kLanes, int kRegisters>
struct ReflectStrip {
  ZELBASE_KERNEL static void Run(std::size_t column, const Block& block, const Reflection& reflection) {
    ReflectColumns<kLanes, kRegisters>(block, column, reflection);
  }
};

// Kept: f = 0 has the positive root; the published form takes the negative one.
inline double SignedRoot(double sumOfSquares, double f) { return f > 0.0 ? -std::sqrt(sumOfSquares) : std::sqrt(sumOfSquares); }

// Reflects column i to (.., g, 0, .. 0), and all later columns with it. Gives g and keeps the reflection for the left block.
// Column i itself is not needed any more, and neither is what stands left of it in these rows.
template <int kLanes>
ZELBASE_KERNEL double ReflectFromLeft(const Work& work, std::size_t i) {
  double* const column = work.reflectors.Row(i);
  double s = 0.0;
  for (std::size_t k = i; k < work.m; ++k) {
    column[k] = work.a.Row(k)[i];
    s += column[k] * column[k];
  }
  work.h[i] = 0.0;
  if (s < kSmallestSquare) return 0.0;
  const double f = column[i];
  const double g = SignedRoot(s, f);
  work.h[i] = f * g - s;  // at most -s
  column[i] = f - g;
  const Reflection reflection{column, column, work.h[i], i, work.m};
  if (i + 1 < work.n) RunStrips<kLanes, ReflectStrip>(i + 1, work.n, work.a, reflection);
  return g;
}

// Applies the reflections of the columns, first to last, to a strip of the left block.
template <int kLanes, int kRegisters>
struct ReflectLeftStrip {
  ZELBASE_KERNEL static void Run(std::size_t column, const Work& work) {
    for (std::size_t i = 0; i < work.n; ++i) {
      const double* const reflector = work.reflectors.Row(i);
      if (work.h[i] == 0.0) continue;
      ReflectColumns<kLanes, kRegisters>(work.left, column, {reflector, reflector, work.h[i], i, work.m});
    }
  }
};

// Adds `factor` times e to a row, from the register that holds column `first` on.
template <int kLanes>
ZELBASE_KERNEL_INLINE void AddToRow(const Work& work, double* row, std::size_t first, double factor) {
  for (std::size_t k = first / kLanes * kLanes; k < work.n; k += kLanes) {
    Store<kLanes>(row + k, Load<kLanes>(row + k) + factor * Load<kLanes>(work.e + k));
  }
}

// Reflects row i, from column i + 1 on, to (g, 0, .. 0), and all later rows with it. Gives g; the row keeps the reflection.
template <int kLanes>
ZELBASE_KERNEL double ReflectFromRight(const Work& work, std::size_t i) {
  const std::size_t first = i + 1;
  double* const row = work.a.Row(i);
  double s = 0.0;
  for (std::size_t j = first; j < work.n; ++j) s += row[j] * row[j];
  if (s < kSmallestSquare) return 0.0;
  const double f = row[first];
  const double g = SignedRoot(s, f);
  const double h = f * g - s;
  row[first] = f - g;
  for (std::size_t j = first; j < work.n; ++j) work.e[j] = row[j] / h;
  std::size_t j = first;
  for (; j + kLanes <= work.m; j += kLanes) {
    double sums[kLanes];
    Store<kLanes>(sums, DotRows<kLanes>({work.a.Row(j) + first, work.a.stride}, row + first, work.n - first));
    for (std::size_t r = 0; r < kLanes; ++r) AddToRow<kLanes>(work, work.a.Row(j + r), first, sums[r]);
  }
  for (; j < work.m; ++j) {
    const double sum = DotRows<1>({work.a.Row(j) + first, work.a.stride}, row + first, work.n - first);
    AddToRow<kLanes>(work, work.a.Row(j), first, sum);
  }
  return g;
}

// Fills q and e, and gives the largest sum of a pair.
template <int kLanes>
ZELBASE_KERNEL double Bidiagonalise(const Work& work) {
  double g = 0.0;
  double largest = 0.0;
  for (std::size_t i = 0; i < work.n; ++i) {
    work.e[i] = g;
    work.q[i] = ReflectFromLeft<kLanes>(work, i);
    g = ReflectFromRight<kLanes>(work, i);
    const double sum = std::fabs(work.q[i]) + std::fabs(work.e[i]);
    if (sum > largest) largest = sum;
  }
  return largest;
}

// Makes a strip of v from the reflections of the rows, last to first: before that of row i, column i becomes a unit vector.
template <int kLanes, int kRegisters>
struct AccumulateStrip {
  ZELBASE_WRAPS ZELBASE_KERNEL static void Run(std::size_t column, const Work& work) {
    const std::size_t end = std::min(column + kRegisters * kLanes, work.n);
    for (std::size_t i = end; i-- > 0;) {
      const std::size_t first = i + 1;
      constexpr double kNoDivision = 1.0;
      if (work.h[i] != 0.0 && first < end) {
        ReflectColumns<kLanes, kRegisters>(work.right, column, {work.a.Row(i), work.reflectors.Row(i), kNoDivision, first, work.n});
      }
      std::fill_n(work.right.Row(i) + column, end - column, 0.0);
      if (i < column) continue;
      for (std::size_t j = first; j < work.n; ++j) work.right.Row(j)[i] = 0.0;
      work.right.Row(i)[i] = 1.0;
    }
  }
};

// Makes v from the reflections that the rows of a kept.
template <int kLanes>
ZELBASE_KERNEL void AccumulateRight(const Work& work) {
  for (std::size_t i = 0; i < work.n; ++i) {
    const std::size_t first = i + 1;
    const double g = first < work.n ? work.e[first] : 0.0;
    work.h[i] = g;
    if (g == 0.0) continue;
    const double* const row = work.a.Row(i);
    const double h = row[first] * g;
    for (std::size_t j = first; j < work.n; ++j) work.reflectors.Row(i)[j] = row[j] / h;
  }
  RunStrips<kLanes, AccumulateStrip>(0, work.n, work);
}

// --- Rotations -------------------------------------------------------------------------------------------------------

// Neighbouring rows first and first + 1, then first + 1 and first + 2, up to last.
struct Sweep {
  std::size_t first;
  std::size_t last;
  const Rotation* rotations;  // last - first of them
};

template <int kLanes, int kRegisters>
struct RotateStrip {
  ZELBASE_KERNEL static void Run(std::size_t column, const Block& block, const Sweep* sweeps, std::size_t count) {
    for (const Sweep* sweep = sweeps; sweep != sweeps + count; ++sweep) RunOne(block, column, *sweep);
  }

 private:
  ZELBASE_KERNEL_INLINE static void RunOne(const Block& block, std::size_t column, const Sweep& sweep) {
    double* row = block.Row(sweep.first) + column;
    Lanes<kLanes> upper[kRegisters];
    ZELBASE_UNROLL
    for (int v = 0; v < kRegisters; ++v) upper[v] = Load<kLanes>(row + v * kLanes);
    const Rotation* rotation = sweep.rotations;
    for (std::size_t i = sweep.first; i < sweep.last; ++i, ++rotation) {
      double* const next = row + block.stride;
      const double c = rotation->c;
      const double s = rotation->s;
      ZELBASE_UNROLL
      for (int v = 0; v < kRegisters; ++v) {
        const Lanes<kLanes> lower = Load<kLanes>(next + v * kLanes);
        Store<kLanes>(row + v * kLanes, upper[v] * c + lower * s);
        upper[v] = lower * c - upper[v] * s;
      }
      row = next;
    }
    ZELBASE_UNROLL
    for (int v = 0; v < kRegisters; ++v) Store<kLanes>(row + v * kLanes, upper[v]);
  }
};

// The rotations of some sweeps, those of v and those of the left block, that are still to be applied.
class PendingSweeps {
 public:
  // Room for `capacity` rotations at either place, at least one sweep.
  PendingSweeps(Rotation* right, Rotation* left, std::size_t capacity) : m_rights(right), m_lefts(left), m_capacity(capacity) {}

  bool HasRoomFor(std::size_t rotations) const { return m_count < kMost && m_used + rotations <= m_capacity; }

  // Where the rotations of a sweep go.
  std::pair<Rotation*, Rotation*> Add(std::size_t first, std::size_t last) {
    Rotation* const right = m_rights + m_used;
    Rotation* const left = m_lefts + m_used;
    m_rightSweeps[m_count] = {first, last, right};
    m_leftSweeps[m_count] = {first, last, left};
    ++m_count;
    m_used += last - first;
    return {right, left};
  }

  template <int kLanes>
  ZELBASE_KERNEL void Apply(const Work& work) {
    if (m_count == 0) return;
    RunStrips<kLanes, RotateStrip>(0, work.n, work.a, &m_rightSweeps[0], m_count);
    RunStrips<kLanes, RotateStrip>(0, work.n, work.left, &m_leftSweeps[0], m_count);
    m_count = 0;
    m_used = 0;
  }

 private:
  static constexpr std::size_t kMost = 32;  // sweeps

  Rotation* m_rights;
  Rotation* m_lefts;
  std::size_t m_capacity;
  std::size_t m_used = 0;
  std::size_t m_count = 0;
  Sweep m_rightSweeps[kMost];
  Sweep m_leftSweeps[kMost];
};

// --- Diagonalisation -------------------------------------------------------------------------------------------------

// Whether a value counts as zero. Not a number does, so that every loop comes to its end.
inline bool IsNothing(const Bidiagonal& b, double value) { return !(std::fabs(value) > b.threshold); }

// Down from k to where the bidiagonal splits: e[l] is nothing, or q[l - 1] is.
struct Split {
  std::size_t l;
  bool mustCancel;
};
inline Split FindSplit(const Bidiagonal& b, std::size_t k) {
  for (std::size_t l = k;; --l) {
    if (l == 0 || IsNothing(b, b.e[l])) return {l, false};
    if (IsNothing(b, b.q[l - 1])) return {l, true};
  }
}

// The rotation that takes (f, h) to (z, 0); gives z.
inline double TurnOf(double f, double h, double& c, double& s) {
  const double z = std::sqrt(f * f + h * h);
  // Kept: length 0 is the identity, where f / z would be no number and spread over all results.
  c = z == 0.0 ? 1.0 : f / z;
  s = z == 0.0 ? 0.0 : h / z;
  return z;
}

// First member of the chase: the shift from the lower right minor of 2 by 2.
inline double ShiftedFront(const Bidiagonal& b, std::size_t l, std::size_t k) {
  const double x = b.q[l];
  const double y = b.q[k - 1];
  const double z = b.q[k];
  const double g = b.e[k - 1];
  const double h = b.e[k];
  const double f = ((y - z) * (y + z) + (g - h) * (g + h)) / (2 * h * y);
  const double root = std::sqrt(f * f + 1);
  return ((x - z) * (x + z) + h * (y / (f < 0 ? f - root : f + root) - h)) / x;
}

// One sweep from l to k; its rotations go to `right` and `left`.
inline void Chase(const Bidiagonal& b, std::size_t l, std::size_t k, Rotation* right, Rotation* left) {
  double f = ShiftedFront(b, l, k);
  double x = b.q[l];
  double c = 1.0;
  double s = 1.0;
  for (std::size_t i = l + 1; i <= k; ++i, ++right, ++left) {
    double g = b.e[i];
    double y = b.q[i];
    double h = s * g;
    g = c * g;
    b.e[i - 1] = TurnOf(f, h, c, s);
    *right = {c, s};
    f = x * c + g * s;
    g = g * c - x * s;
    h = y * s;
    y = y * c;
    b.q[i - 1] = TurnOf(f, h, c, s);
    *left = {c, s};
    f = c * g + s * y;
    x = c * y - s * g;
  }
  b.e[l] = 0.0;
  b.e[k] = f;
  b.q[k] = x;
}

inline void RotateRows(const Work& work, std::size_t upperRow, std::size_t lowerRow, const Rotation& rotation) {
  double* const upper = work.left.Row(upperRow);
  double* const lower = work.left.Row(lowerRow);
  for (std::size_t j = 0; j < work.n; ++j) {
    const double y = upper[j];
    const double z = lower[j];
    upper[j] = y * rotation.c + z * rotation.s;
    lower[j] = z * rotation.c - y * rotation.s;
  }
}

// q[l - 1] is nothing: drives e[l] out along the rows l to k.
inline void Cancel(const Work& work, const Bidiagonal& b, std::size_t l, std::size_t k) {
  double c = 0.0;
  double s = 1.0;
  for (std::size_t i = l; i <= k; ++i) {
    const double f = s * b.e[i];
    b.e[i] = c * b.e[i];
    if (IsNothing(b, f)) return;
    const double g = b.q[i];
    const double h = std::sqrt(f * f + g * g);
    b.q[i] = h;
    c = g / h;
    s = -f / h;
    RotateRows(work, l - 1, i, {c, s});
  }
}

// Brings q[k] to rest.
template <int kLanes>
ZELBASE_KERNEL void Settle(const Work& work, const Bidiagonal& b, std::size_t k, PendingSweeps& pending) {
  for (int sweep = 0; sweep < kMostSweeps; ++sweep) {
    const Split split = FindSplit(b, k);
    if (split.mustCancel) {
      pending.Apply<kLanes>(work);
      Cancel(work, b, split.l, k);
    }
    if (split.l == k) return;
    if (!pending.HasRoomFor(k - split.l)) pending.Apply<kLanes>(work);
    const auto [right, left] = pending.Add(split.l, k);
    Chase(b, split.l, k, right, left);
  }
}

template <int kLanes>
ZELBASE_WRAPS ZELBASE_KERNEL void Diagonalise(const Work& work, const Bidiagonal& b) {
  constexpr std::size_t kSweepsAtOnce = 16;
  const std::size_t capacity = kSweepsAtOnce * work.n;
  ScratchBlock<Rotation> scratch(2 * ScratchBlock<Rotation>::RoundUp(capacity));
  Rotation* const right = scratch.Take(capacity);
  PendingSweeps pending(right, scratch.Take(capacity), capacity);
  for (std::size_t k = work.n; k-- > 0;) {
    Settle<kLanes>(work, b, k, pending);
    // The column of v is turned round at the end, after its rotations; e[k] is free to remember it until then.
    const bool isNegative = b.q[k] < 0.0;
    if (isNegative) b.q[k] = -b.q[k];
    b.e[k] = isNegative ? -1.0 : 1.0;
  }
  pending.Apply<kLanes>(work);
  for (std::size_t k = 0; k < work.n; ++k) {
    if (b.e[k] > 0.0) continue;
    double* const row = work.a.Row(k);
    for (std::size_t j = 0; j < work.n; ++j) row[j] = -row[j];
  }
}

// --- Entry of the table ----------------------------------------------------------------------------------------------

inline void CopyIn(const double* a, const Work& work) {
  const std::size_t rest = work.a.stride - work.n;
  for (std::size_t i = 0; i < work.m; ++i) {
    std::fill_n(std::copy_n(a + i * work.n, work.n, work.a.Row(i)), rest, 0.0);
    std::fill_n(work.left.Row(i), work.left.stride, 0.0);
  }
  // Kept: of the m columns of the left block the last n, m - n to m - 1, are those that u takes.
  for (std::size_t j = 0; j < work.n; ++j) work.left.Row(work.m - work.n + j)[j] = 1.0;
  std::fill_n(work.right.at, work.n * work.right.stride, 0.0);
  std::fill_n(work.e, work.a.stride, 0.0);
}

// Kept: the rows of the left block are the left singular vectors, and u takes it as it stands.
inline void CopyOut(const Work& work, const Decomposition& out) {
  const std::size_t n = work.n;
  for (std::size_t i = 0; i < work.m; ++i) std::copy_n(work.left.Row(i), n, out.left + i * n);
  std::copy_n(work.q, n, out.values);
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j) out.right[i * n + j] = work.a.Row(j)[i];
  }
}

inline void TransposeRight(const Work& work) {
  for (std::size_t j = 0; j < work.n; ++j) {
    for (std::size_t i = 0; i < work.n; ++i) work.a.Row(j)[i] = work.right.Row(i)[j];
  }
}

template <int kLanes>
ZELBASE_KERNEL void Decompose(const double* a, const Decomposition& out) {
  const std::size_t m = out.rows;
  const std::size_t n = out.columns;
  if (n == 0) return;
  if constexpr (kLanes > 4) {
    if (n <= 4) return Decompose<4>(a, out);
  }
  const std::size_t stride = Stride<kLanes>(n);
  using Scratch = ScratchBlock<double>;
  Scratch scratch(2 * Scratch::RoundUp(m * stride) + Scratch::RoundUp(n * stride) + Scratch::RoundUp(n * m) + 3 * Scratch::RoundUp(stride));
  const Work work{m,
                  n,
                  {scratch.Take(m * stride), stride},
                  {scratch.Take(m * stride), stride},
                  {scratch.Take(n * stride), stride},
                  {scratch.Take(n * m), m},
                  scratch.Take(stride),
                  scratch.Take(stride),
                  scratch.Take(stride)};
  CopyIn(a, work);
  const double largest = Bidiagonalise<kLanes>(work);
  RunStrips<kLanes, ReflectLeftStrip>(0, n, work);
  AccumulateRight<kLanes>(work);
  TransposeRight(work);
  Diagonalise<kLanes>(work, {work.q, work.e, kRelativeThreshold * largest});
  CopyOut(work, out);
}

}  // namespace
}  // namespace zelbase::detail
