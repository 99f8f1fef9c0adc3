#include "zelbase/config/detail/SettingsMap.h"

#include <atomic>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>

#include "zelbase/config/detail/TextHash.h"

namespace zelbase::detail {
namespace {

// A buffer with less than this that nobody refers to is not worth tidying (bytes).
constexpr std::size_t kToleratedUnused = 4096;

std::uint32_t ToSize(std::size_t size) {
  if (size > std::numeric_limits<std::uint32_t>::max()) throw std::length_error("settings text");
  return static_cast<std::uint32_t>(size);
}

std::uint64_t NextEpoch() noexcept {
  static constinit std::atomic<std::uint64_t> last{0};
  return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

}  // namespace

ItemMap::Item* ItemMap::FindItem(std::uint32_t hash, std::string_view key) {
  return m_table.Find(hash, [&](const Item& item) { return KeyOf(item) == key; });
}

bool ItemMap::Find(std::string_view key, std::string_view& value) const {
  const Item* const item = const_cast<ItemMap*>(this)->FindItem(HashText(key), key);
  if (item == nullptr) return false;
  value = ValueOf(*item);
  return true;
}

void ItemMap::Set(std::string_view key, std::string_view value) {
  const std::uint32_t hash = HashText(key);
  if (Item* const item = FindItem(hash, key)) {
    Overwrite(*item, key, value);
    return;
  }
  const std::uint32_t keySize = ToSize(key.size());
  const std::uint32_t valueSize = ToSize(value.size());
  const std::size_t offset = m_text.size();
  m_text.append(key);
  m_text.append(value);
  Item& item = m_table.Append(hash);
  item.offset = offset;
  item.keySize = keySize;
  item.valueSize = valueSize;
  item.valueRoom = valueSize;
}

void ItemMap::Overwrite(Item& item, std::string_view key, std::string_view value) {
  if (value.size() <= item.valueRoom) {
    if (!value.empty()) std::memcpy(m_text.data() + item.offset + item.keySize, value.data(), value.size());
    item.valueSize = ToSize(value.size());
    return;
  }
  const std::uint32_t size = ToSize(value.size());
  const std::size_t offset = m_text.size();
  m_text.append(key);
  m_text.append(value);
  m_unused += UsedBy(item);
  item.offset = offset;
  item.valueSize = size;
  item.valueRoom = size;
  DropUnusedText();
}

bool ItemMap::Remove(std::string_view key) {
  Item* const item = FindItem(HashText(key), key);
  if (item == nullptr) return false;
  m_unused += UsedBy(*item);
  m_table.Remove(*item);
  DropUnusedText();
  return true;
}

void ItemMap::Merge(const ItemMap& source) {
  // Only where no open walk can take the numbers of the source's entries for those of its own.
  if (m_table.IsNew()) {
    ItemMap copy(source);
    *this = std::move(copy);
    return;
  }
  TableWalk walk = source.Begin();
  std::string_view key;
  std::string_view value;
  while (source.Next(walk, key, value)) Set(key, value);
}

void ItemMap::Replace(ItemMap source) noexcept {
  m_table.Replace(std::move(source.m_table));
  m_text.swap(source.m_text);
  m_unused = source.m_unused;
}

bool ItemMap::Next(TableWalk& walk, std::string_view& key, std::string_view& value) const {
  const Item* const item = m_table.Next(walk);
  if (item == nullptr) return false;
  key = KeyOf(*item);
  value = ValueOf(*item);
  return true;
}

// The work is paid for by the writes that left at least half of the buffer unused. Without memory for it, it waits for another.
void ItemMap::DropUnusedText() {
  if (m_unused < kToleratedUnused || m_unused < m_text.size() - m_unused) return;
  std::string tidy;
  try {
    tidy.reserve(m_text.size() - m_unused);
  } catch (const std::bad_alloc&) {
    return;
  }
  m_table.ForEach([&](Item& item) {
    const std::size_t offset = tidy.size();
    tidy.append(KeyOf(item)).append(ValueOf(item));
    item.offset = offset;
    item.valueRoom = item.valueSize;
  });
  m_text.swap(tidy);
  m_unused = 0;
}

SectionMap::SectionMap() : m_epoch(NextEpoch()) {}

SectionMap::Section* SectionMap::Find(std::string_view name) {
  return m_table.Find(HashText(name), [name](const Section& section) { return section.name == name; });
}

const SectionMap::Section* SectionMap::Find(std::string_view name) const { return const_cast<SectionMap*>(this)->Find(name); }

ItemMap* SectionMap::FindItems(std::string_view name) const {
  const Section* const section = Find(name);
  return section == nullptr ? nullptr : section->items.get();
}

SectionMap::Section& SectionMap::Add(std::string_view name) {
  auto items = std::make_unique<ItemMap>();
  std::string ownName(name);
  Section& section = m_table.Append(HashText(name));
  section.name = std::move(ownName);
  section.items = std::move(items);
  section.itemsNumber = m_nextItemsNumber++;
  return section;
}

void SectionMap::ReplaceItems(Section& section) {
  section.items = std::make_unique<ItemMap>();
  section.itemsNumber = m_nextItemsNumber++;
}

void SectionMap::Remove(Section& section) { m_table.Remove(section); }

void SectionMap::Rename(Section& section, std::string name) noexcept {
  m_table.Rehash(section, HashText(name));
  section.name = std::move(name);
}

void SectionMap::Clear() {
  m_table.Clear();
  m_epoch = NextEpoch();
}

SectionSelection SectionMap::Select(const Section& section) const noexcept { return {m_epoch, section.number, section.itemsNumber, 0}; }

bool SectionMap::IsSelected(const SectionSelection& selection, const Section& section) const noexcept {
  return selection.epoch == m_epoch && selection.section == section.number && selection.items == section.itemsNumber;
}

const ItemMap* SectionMap::SelectedItems(SectionSelection& selection) const {
  if (selection.epoch != m_epoch) return nullptr;
  const Section* const section = m_table.FindNumber(selection.section, selection.hint);
  return section != nullptr && section->itemsNumber == selection.items ? section->items.get() : nullptr;
}

}  // namespace zelbase::detail
