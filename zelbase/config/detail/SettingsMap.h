// Where the settings store keeps its texts: ItemMap holds the keys and values of one section, SectionMap the sections by
// name. Internal to the library; FileObject puts its rules and statuses on top.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "zelbase/config/detail/OrderedTable.h"

namespace zelbase::detail {

// Keys and values, case-sensitive, in the order in which the keys were first written. All texts of a section lie in one
// buffer. A view that is handed out holds until the map is changed.
class ItemMap {
 public:
  std::size_t Size() const noexcept { return m_table.Size(); }

  // The value, or false with `value` untouched.
  bool Find(std::string_view key, std::string_view& value) const;

  // Writes or overwrites. `key` and `value` must not lie in this map. A text of 4 GB is as if memory had run out:
  // std::length_error.
  void Set(std::string_view key, std::string_view value);

  // False when the key is not there.
  bool Remove(std::string_view key);

  // Writes all items of `source`, another map, over those here. Without memory, some of them.
  void Merge(const ItemMap& source);

  // Takes all that `source` has in place of what is here; open walks are at their end.
  void Replace(ItemMap source) noexcept;

  TableWalk Begin() const noexcept { return m_table.Begin(); }
  bool Next(TableWalk& walk, std::string_view& key, std::string_view& value) const;

 private:
  struct Item : TableEntry {
    std::uint32_t keySize = 0;
    std::uint32_t valueSize = 0;
    std::uint32_t valueRoom = 0;  // bytes that the value may take where it is
    std::size_t offset = 0;       // of the key in m_text; the value follows it
  };

  std::string_view KeyOf(const Item& item) const noexcept { return {m_text.data() + item.offset, item.keySize}; }
  std::string_view ValueOf(const Item& item) const noexcept { return {m_text.data() + item.offset + item.keySize, item.valueSize}; }
  static std::size_t UsedBy(const Item& item) noexcept { return std::size_t{item.keySize} + item.valueRoom; }
  Item* FindItem(std::uint32_t hash, std::string_view key);
  void Overwrite(Item& item, std::string_view key, std::string_view value);
  void DropUnusedText();

  OrderedTable<Item> m_table;
  std::string m_text;
  std::size_t m_unused = 0;  // bytes of m_text that no item refers to
};

// What a cursor remembers of a selected section: numbers only.
struct SectionSelection {
  std::uint64_t epoch = 0;    // of the SectionMap; 0: nothing is selected
  std::uint64_t section = 0;  // number of the section's entry
  std::uint64_t items = 0;    // number of the ItemMap that it had
  std::size_t hint = 0;       // where the entry probably lies
};

// Sections by name, case-sensitive, in the order of their making.
class SectionMap {
 public:
  struct Section : TableEntry {
    std::string name;
    std::uint64_t itemsNumber = 0;  // tells an ItemMap from the one that it replaced
    std::unique_ptr<ItemMap> items;
  };

  SectionMap();

  std::size_t Size() const noexcept { return m_table.Size(); }

  // Changes with every Clear and differs between any two maps of the process: what was remembered under another epoch
  // belongs to something that has gone.
  std::uint64_t Epoch() const noexcept { return m_epoch; }

  Section* Find(std::string_view name);
  const Section* Find(std::string_view name) const;
  ItemMap* FindItems(std::string_view name) const;

  // The section must not be there yet.
  Section& Add(std::string_view name);

  // A new empty map takes the place of the section's items.
  void ReplaceItems(Section& section);

  void Remove(Section& section);

  // `name` must not be there yet. The section keeps its place in the order, and cursors keep it.
  void Rename(Section& section, std::string name) noexcept;

  void Clear();

  SectionSelection Select(const Section& section) const noexcept;
  bool IsSelected(const SectionSelection& selection, const Section& section) const noexcept;

  // The items of the selected section; null when it, or its map, has gone.
  const ItemMap* SelectedItems(SectionSelection& selection) const;

  TableWalk Begin() const noexcept { return m_table.Begin(); }
  const Section* Next(TableWalk& walk) const { return m_table.Next(walk); }

 private:
  OrderedTable<Section> m_table;
  std::uint64_t m_epoch;
  std::uint64_t m_nextItemsNumber = 1;
};

}  // namespace zelbase::detail
