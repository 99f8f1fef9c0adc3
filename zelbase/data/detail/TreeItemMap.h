// What the two maps from the rows of a configuration tree to values have in common. Internal to the library, but its operations are
// those of CMapTreeitemToDatainfo.h and CMapTreeitemToOffset.h.
#pragma once

#include <functional>
#include <map>

#include "zelbase/platform/CObject.h"

namespace zelbase::detail {

// A map in ascending order of its keys, the handles of rows. A reference to a value stays good until that value is removed.
template <class Key, class Value>
class TreeItemMap : public CObject {
 public:
  int GetCount() const { return static_cast<int>(m_values.size()); }

  // Sets or replaces the value of a row.
  void SetAt(Key handle, const Value& value) { m_values.insert_or_assign(handle, value); }

  // The value of a row; a default one enters the map where there was none.
  Value& operator[](Key handle) { return m_values[handle]; }

  // Copies the value of a row. False, and `value` as it was, when there is none.
  bool Lookup(Key handle, Value& value) const {
    const auto found = m_values.find(handle);
    if (found == m_values.end()) return false;
    value = found->second;
    return true;
  }

  // False when there was none.
  bool RemoveKey(Key handle) { return m_values.erase(handle) != 0; }
  void RemoveAll() { m_values.clear(); }

  // The way back: the lowest handle whose value equals `value`. False, and `handle` as it was, when there is none. Looks through
  // the whole map.
  bool GetItemHandle(const Value& value, Key& handle) const {
    for (const auto& [key, held] : m_values) {
      if (held == value) {
        handle = key;
        return true;
      }
    }
    return false;
  }

 protected:
  std::map<Key, Value, std::less<>> m_values;
};

}  // namespace zelbase::detail
