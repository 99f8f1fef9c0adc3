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
// Two shapes: with at most one start a bucket, each bucket is a cell that holds the start and both colours (one place
// in memory to look at). Otherwise a bucket names its first start, and a search without branches goes on from there.
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
    return m_cells.empty() ? m_colors[NumStartsUpTo(value)] : ColorInCell(m_cells[BucketOf(value)], value);
  }

  // The same of each value; `colors` has room for as many. By vectors where the processor has them.
  void ColorsOf(std::span<const double> values, COLORREF* colors) const;

  // The same without vectors.
  void ColorsOfPortably(std::span<const double> values, COLORREF* colors) const;

  // Whether every bucket is a cell. Only cells are looked at by vectors.
  bool HasCells() const { return !m_cells.empty(); }

  // Whether this processor has the vectors.
  static bool HasVectors();

 private:
  // A bucket with at most one start. Without one, the next start stands here, which no number of this bucket reaches.
  struct Cell {
    double start;
    std::uint64_t colors;  // below `start` in the low half, from it on in the high half
  };

  bool IsSpread(std::span<const double> starts, std::size_t numBuckets);
  void SetBuckets(std::span<const double> starts, std::size_t numBuckets);
  void MakeCells(std::span<const double> starts, std::span<const COLORREF> colors);
  void MakeSteps(std::span<const double> starts, std::span<const COLORREF> colors);
  std::size_t ColorsByVectors(std::span<const double> values, COLORREF* colors) const;

  std::size_t BucketOf(double value) const {
    const double place = (value - m_first) * m_scale;
    const double notBelow = place > 0 ? place : 0;  // not a number goes here, too
    return static_cast<std::size_t>(static_cast<std::int32_t>(notBelow < m_lastBucket ? notBelow : m_lastBucket));
  }

  static COLORREF ColorInCell(const Cell& cell, double value) {
    return static_cast<COLORREF>(cell.colors >> (cell.start <= value ? 32 : 0));
  }

  std::size_t NumStartsUpTo(double value) const {
    std::size_t count = m_buckets[BucketOf(value)];
    for (std::size_t half = m_half; half != 0; half /= 2) {
      count += half & (0 - static_cast<std::size_t>(m_starts[count + half - 1] <= value));
    }
    return count;
  }

  double m_first = 0;
  double m_scale = 0;
  double m_lastBucket = 0;

  std::vector<Cell> m_cells;

  std::size_t m_half = 0;                // the first step of the search, a power of two
  std::vector<std::uint32_t> m_buckets;  // the number of starts in lower buckets
  std::vector<double> m_starts;          // with 2 * m_half at the end that no number reaches
  std::vector<COLORREF> m_colors;
};

}  // namespace zelbase::detail
