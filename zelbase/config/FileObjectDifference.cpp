// Comparison of two FileObjects, and what separates them as a third one.
#include <string>
#include <string_view>

#include "zelbase/config/FileObject.h"
#include "zelbase/config/detail/DifferenceNames.h"
#include "zelbase/frame/detail/Characters.h"
#include "zelbase/frame/detail/NumberText.h"

using zelbase::detail::DifferenceKind;
using zelbase::detail::DifferenceName;
using zelbase::detail::ItemMap;
using zelbase::detail::kAddPrefix;
using zelbase::detail::kChangePrefix;
using zelbase::detail::kChecksumSection;
using zelbase::detail::kRemovePrefix;
using zelbase::detail::SectionMap;
using zelbase::detail::SectionSelection;
using zelbase::detail::TableWalk;

namespace {

constexpr std::string_view kSelfChangingKeys = "@tr.";
constexpr unsigned int kSelfChangingFlag = 0x2000;

// The next section but "Checksum", as section enumeration delivers them; null at the end.
const SectionMap::Section* NextSection(const SectionMap& sections, TableWalk& walk) {
  const SectionMap::Section* const section = sections.Next(walk);
  return section != nullptr && section->name == kChecksumSection ? sections.Next(walk) : section;
}

// The items of one section, or of none. It remembers numbers and no address of a section: a subclass's SetItem, which is
// called while one is in use, may do anything to any store. The views that it gives hold until that call.
class SectionItems {
 public:
  SectionItems(const SectionMap& sections, const SectionMap::Section* section) : m_sections(sections) {
    if (section == nullptr) return;
    m_selection = sections.Select(*section);
    m_walk = section->items->Begin();
  }

  std::size_t Size() {
    const ItemMap* const items = m_sections.SelectedItems(m_selection);
    return items == nullptr ? 0 : items->Size();
  }

  bool Next(std::string_view& key, std::string_view& value) {
    const ItemMap* const items = m_sections.SelectedItems(m_selection);
    return items != nullptr && items->Next(m_walk, key, value);
  }

  bool Find(std::string_view key, std::string_view& value) {
    const ItemMap* const items = m_sections.SelectedItems(m_selection);
    return items != nullptr && items->Find(key, value);
  }

 private:
  const SectionMap& m_sections;
  SectionSelection m_selection;
  TableWalk m_walk;
};

// Whether a new value says of itself that it changes without anybody's doing.
bool ChangesByItself(std::string_view key, std::string_view value) {
  if (!key.starts_with(kSelfChangingKeys)) return false;
  unsigned int number = 0;
  // Kept: decimal only, and its front counts: "0x2000" is 0, "8192abc" has the flag; files in use are read so.
  if (zelbase::detail::ScanUnsigned(zelbase::detail::Trim(value.substr(0, value.find(','))), number) == 0) return false;
  return (number & kSelfChangingFlag) != 0;
}

// Writes the items of one operation into a difference.
class OperationWriter {
 public:
  OperationWriter(FileObject& difference, std::string_view prefix, std::string_view section)
      : m_difference(difference), m_section(std::string(prefix).append(section)) {}

  void Write(std::string_view key, std::string_view value) const {
    m_difference.SetItem(m_section, std::string(key), std::string(value), true);
  }

 private:
  FileObject& m_difference;
  const std::string m_section;
};

// The items that are new or differ, to "add." and "change.". Gives the number of keys that both have.
std::size_t WriteNewItems(const std::string& name, SectionItems newer, SectionItems older, FileObject& difference) {
  const OperationWriter add(difference, kAddPrefix, name);
  const OperationWriter change(difference, kChangePrefix, name);
  std::size_t common = 0;
  std::string_view key;
  std::string_view value;
  while (newer.Next(key, value)) {
    std::string_view oldValue;
    if (!older.Find(key, oldValue)) {
      // Kept: a new or a gone item is never passed over for its flag, only a changed one.
      add.Write(key, value);
      continue;
    }
    ++common;
    if (value != oldValue && !ChangesByItself(key, value)) change.Write(key, value);
  }
  return common;
}

// The items that have gone, to "remove.".
void WriteGoneItems(const std::string& name, SectionItems newer, SectionItems older, FileObject& difference) {
  const OperationWriter remove(difference, kRemovePrefix, name);
  std::string_view key;
  std::string_view value;
  while (older.Next(key, value)) {
    std::string_view newValue;
    if (!newer.Find(key, newValue)) remove.Write(key, value);
  }
}

}  // namespace

bool FileObject::operator==(const FileObject& other) const {
  const std::size_t lines = m_extraInfo.size();
  if (lines != other.m_extraInfo.size()) return false;
  for (std::size_t i = 0; i + 1 < lines; ++i) {
    // Kept: the walk stops one line short; files that differ only in their last extra line are equal.
    if (m_extraInfo[i] != other.m_extraInfo[i]) return false;
  }
  // Kept: a checksum is counted here and compared nowhere, which makes equality one-sided where only one object has it.
  if (m_sections->Size() != other.m_sections->Size()) return false;
  TableWalk walk = m_sections->Begin();
  while (const SectionMap::Section* const section = NextSection(*m_sections, walk)) {
    if (!HasEqualItems(section->name, other)) return false;
  }
  return true;
}

bool FileObject::operator!=(const FileObject& other) const { return !(*this == other); }

bool FileObject::GetDifference(const FileObject& older, FileObject& difference) const {
  if (&difference == this || &difference == &older) {
    const FileObject newerBefore(*this);
    const FileObject olderBefore(older);
    return newerBefore.GetDifference(olderBefore, difference);
  }
  difference.SetFileName(m_fileName);
  TableWalk walk = m_sections->Begin();
  while (const SectionMap::Section* const section = NextSection(*m_sections, walk)) {
    const std::string name = section->name;
    const SectionItems newerItems(*m_sections, section);
    difference.CopySection(name, *this);
    SectionItems olderItems(*older.m_sections, older.m_sections->Find(name));
    const std::size_t common = WriteNewItems(name, newerItems, olderItems, difference);
    if (common != olderItems.Size()) WriteGoneItems(name, newerItems, olderItems, difference);
  }
  walk = older.m_sections->Begin();
  while (const SectionMap::Section* const section = NextSection(*older.m_sections, walk)) {
    if (HasSection(section->name)) continue;
    const std::string name = section->name;
    WriteGoneItems(name, SectionItems(*m_sections, nullptr), SectionItems(*older.m_sections, section), difference);
  }
  return true;
}

bool FileObject::ApplyDifference(const FileObject& difference) {
  if (&difference == this) return FileObject::ApplyDifference(FileObject(difference));
  TableWalk walk = difference.m_sections->Begin();
  while (const SectionMap::Section* const section = NextSection(*difference.m_sections, walk)) {
    const DifferenceName operation(section->name);
    if (operation.kind == DifferenceKind::None) continue;
    const std::string target(operation.target);
    SectionItems items(*difference.m_sections, section);
    std::string_view key;
    std::string_view value;
    while (items.Next(key, value)) {
      // Kept: "add" and "change" write alike, whether the item was there or not; customised files differ in what they have.
      const bool done = operation.kind == DifferenceKind::Remove ? DeleteItem(target, std::string(key), true)
                                                                 : SetItem(target, std::string(key), std::string(value), true);
      if (!done) return false;
    }
  }
  return true;
}

// Kept: only the argument counts, and the object that is asked may be any; callers ask whichever they have at hand.
bool FileObject::HasDifferences(const FileObject& difference) {
  TableWalk walk = difference.m_sections->Begin();
  while (const SectionMap::Section* const section = NextSection(*difference.m_sections, walk)) {
    // Kept: an operation section without items is no difference.
    if (section->items->Size() != 0 && DifferenceName(section->name).kind != DifferenceKind::None) return true;
  }
  return false;
}
