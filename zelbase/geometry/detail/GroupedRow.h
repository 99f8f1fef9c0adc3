// A row of entries that is searched in either direction without a look at each. Internal to the library.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace zelbase::detail {

// Keeps, beside the entries, the sums of groups of 8 of them, of 8 of these, and so on. An entry is `Add`ed to another and
// compared with ==. A search asks `wanted` of entries and of sums: it must hold for a sum when it holds for an entry in it.
// Searches take about the logarithm of the way they go; so does a change, which stops where no sum changes.
template <class Entry>
class GroupedRow {
 public:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  explicit GroupedRow(std::vector<Entry> entries) {
    m_levels.push_back(std::move(entries));
    while (m_levels.back().size() > kGroup) AddLevel();
  }

  const Entry& operator[](std::size_t at) const { return m_levels[0][at]; }

  // Changes an entry.
  void Set(std::size_t at, const Entry& entry) {
    m_levels[0][at] = entry;
    for (std::size_t level = 1; level < m_levels.size(); ++level) {
      at >>= kShift;
      const Entry sum = SumBelow(level, at);
      if (sum == m_levels[level][at]) return;
      m_levels[level][at] = sum;
    }
  }

  // The first wanted entry from `from` on and before `end`; kNone without one. `end` is at most the size.
  template <class Wanted>
  std::size_t Next(std::size_t from, std::size_t end, Wanted wanted) const {
    std::size_t level = 0;
    while (from < end) {
      const std::size_t group = from >> (kShift * level);
      if (wanted(m_levels[level][group])) {
        if (level == 0) return group;
        --level;
        continue;
      }
      from = (group + 1) << (kShift * level);
      while (IsWholeAbove(level, from)) ++level;
    }
    return kNone;
  }

  // The last wanted entry from `first` on and before `end`; kNone without one.
  template <class Wanted>
  std::size_t Previous(std::size_t first, std::size_t end, Wanted wanted) const {
    std::size_t level = 0;
    while (first < end) {
      const std::size_t group = (end - 1) >> (kShift * level);
      if (wanted(m_levels[level][group])) {
        if (level == 0) return group;
        --level;
        continue;
      }
      end = group << (kShift * level);
      while (IsWholeAbove(level, end)) ++level;
    }
    return kNone;
  }

 private:
  static constexpr std::size_t kShift = 3;
  static constexpr std::size_t kGroup = std::size_t{1} << kShift;

  // Whether a group of the next level begins and ends at entry `at`.
  bool IsWholeAbove(std::size_t level, std::size_t at) const {
    return level + 1 < m_levels.size() && ((at >> (kShift * level)) & (kGroup - 1)) == 0;
  }

  Entry SumBelow(std::size_t level, std::size_t group) const {
    const std::vector<Entry>& below = m_levels[level - 1];
    const std::size_t begin = group << kShift;
    const std::size_t end = begin + kGroup < below.size() ? begin + kGroup : below.size();
    Entry sum = below[begin];
    for (std::size_t i = begin + 1; i < end; ++i) sum.Add(below[i]);
    return sum;
  }

  void AddLevel() {
    const std::size_t groups = (m_levels.back().size() + kGroup - 1) >> kShift;
    m_levels.emplace_back();
    m_levels.back().reserve(groups);
    for (std::size_t group = 0; group < groups; ++group) m_levels.back().push_back(SumBelow(m_levels.size() - 1, group));
  }

  std::vector<std::vector<Entry>> m_levels;
};

}  // namespace zelbase::detail
