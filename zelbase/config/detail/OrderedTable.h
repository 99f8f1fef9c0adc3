// A hash table whose entries lie one behind the other in the order of their making, and can be walked whatever happens to
// the table meanwhile. The settings store keeps its sections and its items in such tables. Internal to the library.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

namespace zelbase::detail {

// Where a walk over an OrderedTable stands. It holds numbers only, nothing that could dangle.
struct TableWalk {
  std::uint64_t after = 0;  // number of the entry delivered last; 0: none yet
  std::uint64_t end = 0;    // entries with this number or a later one were made after the walk began
  std::size_t hint = 0;     // where the next entry probably lies
};

// From hash values to positions, by open addressing. It knows nothing of keys: the caller says which position it means.
class PositionIndex {
 public:
  static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

  // The first position of that hash for which `matches(position)` holds, or kNone.
  template <class Matches>
  std::uint32_t Find(std::uint32_t hash, Matches matches) const {
    if (m_slots.empty()) return kNone;
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
      if (m_slots[slot].position == kNone) return kNone;
      if (m_slots[slot].hash == hash && matches(m_slots[slot].position)) return m_slots[slot].position;
    }
  }

  void Insert(std::uint32_t hash, std::uint32_t position) {
    if ((m_count + 1) * 4 > m_slots.size() * 3) Grow();
    Place(m_slots, {hash, position});
    ++m_count;
  }

  // The pair must be there. What follows in the same run moves up, so that no mark of the removed one stays.
  void Erase(std::uint32_t hash, std::uint32_t position) {
    const std::size_t mask = m_slots.size() - 1;
    std::size_t hole = hash & mask;
    while (m_slots[hole].position != position) hole = (hole + 1) & mask;
    for (std::size_t slot = (hole + 1) & mask; m_slots[slot].position != kNone; slot = (slot + 1) & mask) {
      const std::size_t home = m_slots[slot].hash & mask;
      if (((slot - home) & mask) < ((slot - hole) & mask)) continue;
      m_slots[hole] = m_slots[slot];
      hole = slot;
    }
    m_slots[hole].position = kNone;
    --m_count;
  }

  void Clear() {
    m_slots.clear();
    m_count = 0;
  }

 private:
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t position = kNone;
  };

  static constexpr std::size_t kFirstSlots = 8;
  static constexpr std::size_t kQuickSlots = 512;  // up to here the table grows in bigger steps

  static void Place(std::vector<Slot>& slots, Slot entry) {
    const std::size_t mask = slots.size() - 1;
    std::size_t slot = entry.hash & mask;
    while (slots[slot].position != kNone) slot = (slot + 1) & mask;
    slots[slot] = entry;
  }

  void Grow() {
    std::vector<Slot> larger(m_slots.empty() ? kFirstSlots : m_slots.size() * (m_slots.size() < kQuickSlots ? 4 : 2));
    for (const Slot& slot : m_slots) {
      if (slot.position != kNone) Place(larger, slot);
    }
    m_slots.swap(larger);
  }

  std::vector<Slot> m_slots;  // a power of two of them, at most three quarters in use
  std::size_t m_count = 0;
};

// What every entry of an OrderedTable begins with.
struct TableEntry {
  std::uint64_t number : 63 = 0;  // rising along the table, never used twice
  std::uint64_t removed : 1 = 0;
  std::uint32_t hash = 0;
};

// Entry derives from TableEntry; a removed one stays in its place, with `removed` set, until there are more removed ones
// than others. Pointers to entries hold until the next Append or Remove.
//
// Look-up, append and removal take constant time on average. A walk delivers what was there at its beginning and still
// is, each exactly once, and nothing else; one step takes constant time unless entries were removed meanwhile.
template <class Entry>
class OrderedTable {
 public:
  template <class Same>
  Entry* Find(std::uint32_t hash, Same same) {
    const std::uint32_t position = m_index.Find(hash, [&](std::uint32_t candidate) { return same(m_entries[candidate]); });
    return position == PositionIndex::kNone ? nullptr : &m_entries[position];
  }

  template <class Same>
  const Entry* Find(std::uint32_t hash, Same same) const {
    return const_cast<OrderedTable*>(this)->Find(hash, same);
  }

  // The entry of that number, found where `hint` says or else by bisection; null when it has gone.
  Entry* FindNumber(std::uint64_t number, std::size_t& hint) {
    if (hint >= m_entries.size() || m_entries[hint].number != number) hint = PositionBehind(number) - 1;
    if (hint >= m_entries.size() || m_entries[hint].number != number || m_entries[hint].removed) return nullptr;
    return &m_entries[hint];
  }

  const Entry* FindNumber(std::uint64_t number, std::size_t& hint) const {
    return const_cast<OrderedTable*>(this)->FindNumber(number, hint);
  }

  // Adds an entry at the end, for the caller to fill in. Its key must not be there yet.
  Entry& Append(std::uint32_t hash) {
    if (m_entries.size() >= PositionIndex::kNone) throw std::length_error("settings table");  // Unreached: four billion entries
    if (m_entries.capacity() == 0) m_entries.reserve(kFirstRoom);
    Entry& entry = m_entries.emplace_back();
    try {
      m_index.Insert(hash, static_cast<std::uint32_t>(m_entries.size() - 1));
    } catch (...) {
      m_entries.pop_back();
      throw;
    }
    entry.number = m_nextNumber++ & kNumberMask;
    entry.hash = hash;
    ++m_live;
    return entry;
  }

  // Takes the entry out and leaves `entry` as good as new in its place.
  void Remove(Entry& entry) {
    const std::size_t position = PositionOf(entry);
    m_index.Erase(entry.hash, static_cast<std::uint32_t>(position));
    const std::uint64_t number = entry.number;
    entry = Entry();
    entry.number = number & kNumberMask;
    entry.removed = 1;
    --m_live;
    while (m_firstLive < m_entries.size() && m_entries[m_firstLive].removed) ++m_firstLive;
    if (m_entries.size() - m_live > m_live + 16) Compact();
  }

  // Gives the entry another hash; its place in the order stays. The index has room for what has just been taken out of it.
  void Rehash(Entry& entry, std::uint32_t hash) noexcept {
    const auto position = static_cast<std::uint32_t>(PositionOf(entry));
    m_index.Erase(entry.hash, position);
    m_index.Insert(hash, position);
    entry.hash = hash;
  }

  void Clear() {
    m_entries.clear();
    m_index.Clear();
    m_live = 0;
    m_firstLive = 0;
  }

  // Takes the entries of `other` in place of its own, under numbers of its own: open walks are at their end.
  void Replace(OrderedTable other) noexcept {
    const std::uint64_t before = m_nextNumber - 1;
    for (Entry& entry : other.m_entries) entry.number = (entry.number + before) & kNumberMask;
    other.m_nextNumber += before;
    *this = std::move(other);
  }

  std::size_t Size() const noexcept { return m_live; }

  // True until the first Append. A walk that was begun by then delivers nothing, even when another table is assigned later.
  bool IsNew() const noexcept { return m_nextNumber == 1; }

  TableWalk Begin() const noexcept { return {0, m_nextNumber, m_firstLive}; }

  // The next entry of the walk, or null at its end, where the walk then stays.
  Entry* Next(TableWalk& walk) {
    std::size_t at = Resume(walk);
    while (at < m_entries.size() && m_entries[at].removed) ++at;
    walk.hint = at;
    if (at >= m_entries.size() || m_entries[at].number >= walk.end) return nullptr;
    walk.after = m_entries[at].number;
    walk.hint = at + 1;
    return &m_entries[at];
  }

  template <class Visit>
  void ForEach(Visit visit) {
    for (Entry& entry : m_entries) {
      if (!entry.removed) visit(entry);
    }
  }

  const Entry* Next(TableWalk& walk) const { return const_cast<OrderedTable*>(this)->Next(walk); }

 private:
  static constexpr std::size_t kFirstRoom = 8;
  static constexpr std::uint64_t kNumberMask = std::numeric_limits<std::uint64_t>::max() >> 1;

  std::size_t PositionOf(const Entry& entry) const { return static_cast<std::size_t>(&entry - m_entries.data()); }

  // The first position whose number is greater.
  std::size_t PositionBehind(std::uint64_t number) const {
    const auto behind = std::upper_bound(m_entries.begin(), m_entries.end(), number,
                                         [](std::uint64_t value, const Entry& entry) { return value < entry.number; });
    return static_cast<std::size_t>(behind - m_entries.begin());
  }

  std::size_t Resume(const TableWalk& walk) const {
    if (walk.after == 0) return m_firstLive;
    const std::size_t hint = walk.hint;
    const bool good = hint > 0 && hint <= m_entries.size() && m_entries[hint - 1].number == walk.after;
    return good ? hint : PositionBehind(walk.after);
  }

  // Without memory for the smaller index the removed ones stay until another removal.
  void Compact() {
    PositionIndex index;
    try {
      std::uint32_t position = 0;
      ForEach([&](const Entry& entry) { index.Insert(entry.hash, position++); });
    } catch (const std::bad_alloc&) {
      return;
    }
    m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(), [](const Entry& entry) { return entry.removed; }), m_entries.end());
    m_firstLive = 0;
    m_index = std::move(index);
  }

  std::vector<Entry> m_entries;
  PositionIndex m_index;
  std::uint64_t m_nextNumber = 1;
  std::size_t m_live = 0;
  std::size_t m_firstLive = 0;  // everything before it is removed
};

}  // namespace zelbase::detail
