#include "zelbase/data/CDataInfoArray.h"

#include <utility>

#include "zelbase/data/detail/DataImage.h"
#include "zelbase/data/detail/EntryArchive.h"
#include "zelbase/platform/detail/ThreadSpare.h"

CDataInfoArray::CDataInfoArray() = default;

CDataInfoArray::CDataInfoArray(const CDataInfoArray& other) = default;

CDataInfoArray& CDataInfoArray::operator=(const CDataInfoArray& other) = default;

CDataInfoArray::~CDataInfoArray() = default;

void CDataInfoArray::Serialize(CArchive& archive) {
  const auto describe = [](auto& image, auto& item) { zelbase::detail::DataImage::Describe(image, item); };
  if (archive.IsStoring()) return zelbase::detail::StoreEntries(archive, m_items, describe);
  m_items = zelbase::detail::LoadEntries<CDataInfoEx>(archive, describe);
}

int CDataInfoArray::Add(const CDataInfoEx& item) {
  m_items.push_back(item);
  return GetSize() - 1;
}

CDataInfoEx& CDataInfoArray::GetAt(int index) { return const_cast<CDataInfoEx&>(std::as_const(*this).GetAt(index)); }

const CDataInfoEx& CDataInfoArray::GetAt(int index) const {
  if (HasIndex(index)) return m_items[static_cast<std::size_t>(index)];
  CDataInfoEx& none = zelbase::detail::ThreadSpare<CDataInfoEx>();
  none = CDataInfoEx();
  return none;
}

void CDataInfoArray::SetAt(int index, const CDataInfoEx& item) {
  if (HasIndex(index)) m_items[static_cast<std::size_t>(index)] = item;
}

void CDataInfoArray::RemoveAt(int index) {
  if (HasIndex(index)) m_items.erase(m_items.begin() + index);
}

void CDataInfoArray::RemoveAll() { m_items.clear(); }
