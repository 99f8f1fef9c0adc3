#include "zelbase/data/CMapTreeitemToDatainfo.h"

#include <bit>
#include <cstdint>
#include <utility>

#include "zelbase/data/detail/DataImage.h"
#include "zelbase/data/detail/EntryArchive.h"

namespace {

using zelbase::detail::DataImage;

// The low 32 bits of a row's address, and the value.
using Entry = std::pair<unsigned int, CDataInfo>;

unsigned int Low32(const _TREEITEM* item) { return static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(item) & 0xFFFFFFFF); }

_TREEITEM* ToItem(unsigned int handle) { return reinterpret_cast<_TREEITEM*>(static_cast<std::uintptr_t>(handle)); }

}  // namespace

void CMapTreeitemToDatainfo::Serialize(CArchive& archive) {
  if (archive.IsStoring()) {
    return zelbase::detail::StoreEntries(archive, m_values, [](auto& image, const auto& entry) {
      image.Value(Low32(entry.first));
      DataImage::Describe(image, entry.second);
    });
  }
  const auto entries = zelbase::detail::LoadEntries<Entry>(archive, [](auto& image, Entry& entry) {
    image.Value(entry.first);
    DataImage::Describe(image, entry.second);
  });
  decltype(m_values) loaded;
  for (const auto& [handle, value] : entries) loaded.insert_or_assign(ToItem(handle), value);
  m_values.swap(loaded);
}
