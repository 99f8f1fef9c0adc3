#include "zelbase/platform/COleDataObject.h"

#include <utility>

#include "zelbase/platform/COleDataSource.h"
#include "zelbase/platform/CSharedFile.h"

COleDataObject::COleDataObject() = default;

void COleDataObject::Attach(const COleDataSource& source) { Attach(source.Content()); }

void COleDataObject::Attach(std::shared_ptr<const ClipboardContent> content) {
  Release();
  m_content = std::move(content);
}

bool COleDataObject::AttachClipboard() {
  Attach(PlatformService<PlatformClipboard>::Current().Get());
  return m_content != nullptr;
}

void COleDataObject::Release() {
  m_content.reset();
  m_formats.clear();
  m_next = 0;
}

void COleDataObject::BeginEnumFormats() {
  m_formats = m_content != nullptr ? m_content->Formats() : std::vector<FORMATETC>();
  m_next = 0;
}

bool COleDataObject::GetNextFormat(FORMATETC* details) {
  if (details == nullptr || m_next >= m_formats.size()) return false;
  *details = m_formats[m_next++];
  return true;
}

bool COleDataObject::IsDataAvailable(unsigned short format) const {
  if (m_content == nullptr) return false;
  for (const FORMATETC& offered : m_content->Formats()) {
    if (offered.cfFormat == format) return true;
  }
  return false;
}

HGLOBAL COleDataObject::GetGlobalData(unsigned short format) const { return m_content != nullptr ? m_content->Block(format) : nullptr; }

std::unique_ptr<CFile> COleDataObject::GetFileData(unsigned short format) const {
  const HGLOBAL block = GetGlobalData(format);
  return block != nullptr ? std::make_unique<CSharedFile>(block) : nullptr;
}
