// An index over the steps of a color table: finds the colour of a number without a search that branches. Internal to
// the library; ColorTable.h says which numbers begin a step.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "zelbase/platform/COLORREF.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// The range from the first start to the last is cut into equal buckets. A number's bucket is floor((number - first) *
// scale), held within the table of buckets. Every operation in it is monotone, whatever its rounding: starts in a lower
// bucket are not above the number, and starts in a higher bucket are. Only those in the same bucket are compared, so
// that the answer is exact.
//
// A bucket is a cell, which holds its start and the colours on both sides of it: one place in memory to look at. Where
// starts crowd, as at the lower end of a logarithmic table, a cell names several, and a search without branches follows.
//
// Immutable, so that any number of threads may ask.
class ZELBASE_API ColorLookup {
 public:
  // More starts than these are not indexed: callers ask first.
  static constexpr std::size_t kMostStarts = std::size_t{1} << 20;

  // `starts`: 1 to kMostStarts finite numbers, none below the one before; starts[i] is the smallest number of colors[i
  // + 1]. `colors`: one more than the starts; the first is the colour of what is below all starts, or not a number.
  ColorLookup(std::span<const double> starts, std::span<const COLORREF> colors);

  COLORREF ColorOf(double value) const {
    const Cell& cell = m_cells[BucketOf(value)];
    return IsCrowded(cell) ? ColorInCrowd(cell, value) : ColorInCell(cell, value);
  }

  // The same of each value; `colors` has room for as many. By vectors where the processor has them.
  void ColorsOf(std::span<const double> values, COLORREF* colors) const;

  // The same without vectors.
  void ColorsOfPortably(std::span<const double> values, COLORREF* colors) const;

  // Whether any bucket has more than one start.
  bool HasCrowds() const { return !m_starts.empty(); }

  // Whether this processor has the vectors.
  static bool HasVectors();

 private:
  // A bucket with at most one start: that, and the colour below it in the low half of `halves`, from it on in the high
  // half. Without one, the next start stands here, which no number of this bucket reaches; behind the last start any
  // number will do, the colours being the same.
  // A crowded bucket: not a number, the number of starts in lower buckets, and the first step of the search.
  struct Cell {
    double start;
    std::uint64_t halves;
  };

  void SetBuckets(std::span<const double> starts, std::size_t numBuckets);
  bool IsSpread(std::span<const double> starts) const;
  void MakeCells(std::span<const double> starts, std::span<const COLORREF> colors);
  std::size_t ColorsByVectors(std::span<const double> values, COLORREF* colors) const;

  std::size_t BucketOf(double value) const {
    const double place = (value - m_first) * m_scale;
    const double notBelow = place > 0 ? place : 0;  // not a number goes here, too
    return static_cast<std::size_t>(static_cast<std::int32_t>(notBelow < m_lastBucket ? notBelow : m_lastBucket));
  }

  static bool IsCrowded(const Cell& cell) { return cell.start != cell.start; }

  static COLORREF ColorInCell(const Cell& cell, double value) {
    return static_cast<COLORREF>(cell.halves >> (cell.start <= value ? 32 : 0));
  }

  COLORREF ColorInCrowd(const Cell& cell, double value) const {
    std::size_t count = cell.halves & 0xFFFFFFFF;
    for (std::size_t step = cell.halves >> 32; step != 0; step /= 2) {
      count += step & (0 - static_cast<std::size_t>(m_starts[count + step - 1] <= value));
    }
    return m_colors[count];
  }

  double m_first = 0;
  double m_scale = 0;
  double m_lastBucket = 0;
  std::vector<Cell> m_cells;

  // For crowds only. Behind the starts stand as many that no number reaches as the longest search can look at.
  std::vector<double> m_starts;
  std::vector<COLORREF> m_colors;
};

}  // namespace zelbase::detail
