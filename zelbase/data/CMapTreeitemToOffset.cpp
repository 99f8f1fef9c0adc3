#include "zelbase/data/CMapTreeitemToOffset.h"

#include <utility>

#include "zelbase/data/detail/DataImage.h"
#include "zelbase/data/detail/EntryArchive.h"

namespace {

using Entry = std::pair<unsigned int, CCompOffset>;

}  // namespace

void CMapTreeitemToOffset::Serialize(CArchive& archive) {
  const auto describe = [](auto& image, auto& entry) {
    image.Value(entry.first);
    zelbase::detail::DataImage::Describe(image, entry.second);
  };
  if (archive.IsStoring()) return zelbase::detail::StoreEntries(archive, m_values, describe);
  const auto entries = zelbase::detail::LoadEntries<Entry>(archive, describe);
  decltype(m_values) loaded;
  for (const auto& [row, value] : entries) loaded.insert_or_assign(row, value);
  m_values.swap(loaded);
}
