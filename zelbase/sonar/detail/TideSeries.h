// A map from time to height for very long series: sorted records in chunks of a few kilobytes. Internal to the library; TideFile
// is made of it.
//
// It answers as a std::map from double to double would, in a quarter of the memory: 16 bytes a record and little beside. A search
// is two binary searches, over the chunks and within one; adding or erasing anywhere moves no more than one chunk's records
// (and, once in hundreds of times, the list of chunks).
#pragma once

#include <cstddef>
#include <vector>

#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

struct TideRecord {
  double time = 0.0;
  double value = 0.0;
};

// Times are never NaN, which has no place in an order: the caller sees to it. 0 and -0 are one time. Copies are of their own.
class ZELBASE_API TideSeries {
 public:
  // A record's place, or the end. Set and Erase move the records, and with them the one position that they are given to keep;
  // every other position is invalid after them.
  struct Position {
    static constexpr std::size_t kEnd = static_cast<std::size_t>(-1);

    bool IsEnd() const { return chunk == kEnd; }
    bool operator==(const Position&) const = default;

    std::size_t chunk = kEnd;
    std::size_t index = 0;  // within the chunk; 0 at the end
  };

  bool IsEmpty() const { return m_chunks.empty(); }
  std::size_t Size() const { return m_size; }
  void Clear();

  // First is the end of an empty series, as Last is.
  Position First() const;
  Position Last() const;

  // The first record whose time is not below, or is above, the time given; the end if there is none.
  Position LowerBound(double time) const;
  Position UpperBound(double time) const;
  // The record of exactly this time, or the end.
  Position Find(double time) const;

  // Behind the last record is the end, and it stays there. Before the end is the last record; the first stays.
  Position Next(Position position) const {
    if (position.IsEnd()) return position;
    if (position.index + 1 < m_chunks[position.chunk].records.size()) return {position.chunk, position.index + 1};
    return position.chunk + 1 < m_chunks.size() ? Position{position.chunk + 1, 0} : Position{};
  }
  Position Previous(Position position) const;

  // Not for the end.
  const TideRecord& At(Position position) const { return m_chunks[position.chunk].records[position.index]; }
  void SetValue(Position position, double value) { m_chunks[position.chunk].records[position.index].value = value; }

  // Adds a record, or sets the value of the one that has this time, whose time keeps its sign of zero. `kept` stays on its
  // record, and an end stays the end. When memory runs out (std::bad_alloc) nothing has changed.
  void Set(double time, double value, Position& kept);

  // Takes a record out. `kept` stays on its record; on the record taken out it moves on to the next.
  void Erase(Position position, Position& kept);

 private:
  struct Chunk {
    double first = 0.0;               // time of the first record, beside its neighbours' for the search
    std::vector<TideRecord> records;  // never empty
  };

  void Append(const TideRecord& record);
  void Insert(Position position, const TideRecord& record, Position& kept);
  void Split(std::size_t chunk, Position& kept);
  void EraseChunk(std::size_t chunk, Position& kept);
  void MergeWithNext(std::size_t chunk, Position& kept);

  // The first record for which `isBefore(time of it)` is false.
  template <class Predicate>
  Position FirstNot(Predicate isBefore) const;

  std::vector<Chunk> m_chunks;
  std::size_t m_size = 0;
};

}  // namespace zelbase::detail
