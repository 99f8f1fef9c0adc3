#include "zelbase/sonar/detail/TideSeries.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace zelbase::detail {
namespace {

constexpr std::size_t kChunkRecords = 512;
constexpr std::size_t kHalf = kChunkRecords / 2;

}  // namespace

void TideSeries::Clear() {
  m_chunks = {};
  m_size = 0;
}

TideSeries::Position TideSeries::First() const { return IsEmpty() ? Position{} : Position{0, 0}; }

TideSeries::Position TideSeries::Last() const {
  return IsEmpty() ? Position{} : Position{m_chunks.size() - 1, m_chunks.back().records.size() - 1};
}

template <class Predicate>
TideSeries::Position TideSeries::FirstNot(Predicate isBefore) const {
  const auto chunk =
      std::partition_point(m_chunks.begin(), m_chunks.end(), [&](const Chunk& candidate) { return isBefore(candidate.first); });
  const auto number = static_cast<std::size_t>(chunk - m_chunks.begin());
  if (number > 0) {
    const std::vector<TideRecord>& records = m_chunks[number - 1].records;
    const auto record =
        std::partition_point(records.begin() + 1, records.end(), [&](const TideRecord& candidate) { return isBefore(candidate.time); });
    if (record != records.end()) return {number - 1, static_cast<std::size_t>(record - records.begin())};
  }
  return number < m_chunks.size() ? Position{number, 0} : Position{};
}

TideSeries::Position TideSeries::LowerBound(double time) const {
  return FirstNot([time](double candidate) { return candidate < time; });
}

TideSeries::Position TideSeries::UpperBound(double time) const {
  return FirstNot([time](double candidate) { return candidate <= time; });
}

TideSeries::Position TideSeries::Find(double time) const {
  const Position position = LowerBound(time);
  return !position.IsEnd() && At(position).time == time ? position : Position{};
}

TideSeries::Position TideSeries::Previous(Position position) const {
  if (position.IsEnd()) return Last();
  if (position.index > 0) return {position.chunk, position.index - 1};
  if (position.chunk == 0) return position;
  return {position.chunk - 1, m_chunks[position.chunk - 1].records.size() - 1};
}

void TideSeries::Set(double time, double value, Position& kept) {
  if (IsEmpty() || m_chunks.back().records.back().time < time) {
    Append({time, value});
    return;
  }
  const Position position = LowerBound(time);
  if (At(position).time == time) {
    SetValue(position, value);
  } else {
    Insert(position, {time, value}, kept);
  }
}

// Series come in order nearly always: full chunks are followed by new ones instead of being split.
void TideSeries::Append(const TideRecord& record) {
  if (IsEmpty() || m_chunks.back().records.size() >= kChunkRecords) {
    Chunk chunk;
    chunk.first = record.time;
    if (!IsEmpty()) chunk.records.reserve(kChunkRecords);
    chunk.records.push_back(record);
    m_chunks.push_back(std::move(chunk));
  } else {
    m_chunks.back().records.push_back(record);
  }
  ++m_size;
}

void TideSeries::Insert(Position position, const TideRecord& record, Position& kept) {
  if (m_chunks[position.chunk].records.size() >= kChunkRecords) {
    Split(position.chunk, kept);
    if (position.index > kHalf) position = {position.chunk + 1, position.index - kHalf};
  }
  Chunk& chunk = m_chunks[position.chunk];
  chunk.records.insert(chunk.records.begin() + static_cast<std::ptrdiff_t>(position.index), record);
  chunk.first = chunk.records.front().time;
  ++m_size;
  if (kept.chunk == position.chunk && kept.index >= position.index) ++kept.index;
}

void TideSeries::Split(std::size_t chunk, Position& kept) {
  Chunk upper;
  const std::vector<TideRecord>& records = m_chunks[chunk].records;
  upper.records.reserve(kChunkRecords);
  upper.records.assign(records.begin() + kHalf, records.end());
  upper.first = upper.records.front().time;
  m_chunks.insert(m_chunks.begin() + static_cast<std::ptrdiff_t>(chunk) + 1, std::move(upper));
  m_chunks[chunk].records.resize(kHalf);
  if (kept.IsEnd() || kept.chunk < chunk) return;
  if (kept.chunk > chunk) {
    ++kept.chunk;
  } else if (kept.index >= kHalf) {
    kept = {chunk + 1, kept.index - kHalf};
  }
}

void TideSeries::Erase(Position position, Position& kept) {
  if (kept == position) {
    kept = Next(position);
  }
  Chunk& chunk = m_chunks[position.chunk];
  chunk.records.erase(chunk.records.begin() + static_cast<std::ptrdiff_t>(position.index));
  --m_size;
  if (kept.chunk == position.chunk && kept.index > position.index) --kept.index;
  if (chunk.records.empty()) {
    EraseChunk(position.chunk, kept);
    return;
  }
  chunk.first = chunk.records.front().time;
  // What is left of chunks that others were erased from is put together, or a long history would end in chunks of one.
  if (position.chunk + 1 < m_chunks.size()) MergeWithNext(position.chunk, kept);
  if (position.chunk > 0) MergeWithNext(position.chunk - 1, kept);
}

void TideSeries::EraseChunk(std::size_t chunk, Position& kept) {
  m_chunks.erase(m_chunks.begin() + static_cast<std::ptrdiff_t>(chunk));
  if (!kept.IsEnd() && kept.chunk > chunk) --kept.chunk;
}

// Only when both together are well below a full chunk, so that what follows does not split them again at once; and only into
// room that is there, so that erasing never asks for memory.
void TideSeries::MergeWithNext(std::size_t chunk, Position& kept) {
  std::vector<TideRecord>& records = m_chunks[chunk].records;
  const std::vector<TideRecord>& next = m_chunks[chunk + 1].records;
  const std::size_t before = records.size();
  if (before + next.size() > std::min(kHalf, records.capacity())) return;
  records.insert(records.end(), next.begin(), next.end());
  if (kept.chunk == chunk + 1) kept = {chunk, kept.index + before};
  EraseChunk(chunk + 1, kept);
}

}  // namespace zelbase::detail
