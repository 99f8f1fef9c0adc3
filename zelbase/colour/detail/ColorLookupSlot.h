// The place where a color table keeps its index once it is worth having. Internal to the library; ColorLookup.h is the
// index.
#pragma once

#include <atomic>
#include <cstddef>
#include <memory>

#include "zelbase/colour/detail/ColorLookup.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// Empty at first, and again after each change of the table. The index is made when enough numbers have been looked up
// since: so neither a table that is built entry by entry, nor one that is changed and asked in turns, pays more than a
// constant part for it.
//
// Threads: several may call Get, CountsPast and Keep at once. Forget, assignment and destruction belong to the one
// thread that changes the table.
//
// A copy starts empty; a move takes the index along.
class ZELBASE_API ColorLookupSlot {
 public:
  ColorLookupSlot() = default;
  ColorLookupSlot(const ColorLookupSlot&) noexcept {}
  ColorLookupSlot(ColorLookupSlot&& other) noexcept { TakeFrom(other); }
  ColorLookupSlot& operator=(const ColorLookupSlot&) noexcept {
    Forget();
    return *this;
  }
  // Moved to itself it is empty: the lists of a table that is moved to itself may be so, too.
  ColorLookupSlot& operator=(ColorLookupSlot&& other) noexcept {
    Forget();
    TakeFrom(other);
    return *this;
  }
  ~ColorLookupSlot() { Forget(); }

  // Null while there is none. It holds until Forget.
  const ColorLookup* Get() const { return m_lookup.load(std::memory_order_acquire); }

  // Counts look-ups. True for the one caller whose look-ups make the count pass `bound`; it is the one to make the
  // index.
  bool CountsPast(std::size_t bound, std::size_t numLookups) const {
    // Those that come later only read, so that readers of a table that has no index do not share a line they write.
    if (m_numLookups.load(std::memory_order_relaxed) > bound) return false;
    const std::size_t before = m_numLookups.fetch_add(numLookups, std::memory_order_relaxed);
    // Unreached: that another thread has counted past between the two lines, but by chance.
    return before <= bound && numLookups > bound - before;
  }

  // Takes what was made by the one caller.
  const ColorLookup* Keep(std::unique_ptr<const ColorLookup> lookup) const {
    const ColorLookup* const kept = lookup.release();
    m_lookup.store(kept, std::memory_order_release);
    return kept;
  }

  void Forget() {
    delete m_lookup.exchange(nullptr, std::memory_order_relaxed);
    m_numLookups.store(0, std::memory_order_relaxed);
  }

 private:
  void TakeFrom(ColorLookupSlot& other) {
    m_lookup.store(other.m_lookup.exchange(nullptr, std::memory_order_relaxed), std::memory_order_relaxed);
    m_numLookups.store(other.m_numLookups.exchange(0, std::memory_order_relaxed), std::memory_order_relaxed);
  }

  mutable std::atomic<const ColorLookup*> m_lookup{nullptr};
  mutable std::atomic<std::size_t> m_numLookups{0};
};

}  // namespace zelbase::detail
