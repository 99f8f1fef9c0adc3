#include "zelbase/data/CWDClipboardData.h"

#include <algorithm>
#include <cstddef>
#include <memory>

#include "zelbase/data/CCF_HDROP.h"
#include "zelbase/platform/CArchive.h"
#include "zelbase/platform/COleDataObject.h"
#include "zelbase/platform/COleDataSource.h"
#include "zelbase/platform/CSharedFile.h"
#include "zelbase/platform/ClipboardFormats.h"
#include "zelbase/platform/DroppedFiles.h"

namespace {

constexpr int kBufferSize = 4096;
constexpr std::size_t kLongestFileName = 259;

void AddFileNames(const COleDataObject& dataObject, CCF_HDROP& list) {
  for (const std::string& name : DroppedFileNames(dataObject.GetGlobalData(CF_HDROP))) {
    list.AddFileName(name.substr(0, kLongestFileName).c_str());
  }
}

}  // namespace

CWDClipboardData::CWDClipboardData() : m_formats{CF_HDROP} {
  for (const char* const name : {"CF_WD_DATAINFO", "CF_WD_DISPINFO", "CF_WD_STRINGDATA"}) AddFormat(name);
}

CWDClipboardData::~CWDClipboardData() = default;

CWDClipboardData& CWDClipboardData::Get() {
  static CWDClipboardData& data = *new CWDClipboardData;
  return data;
}

int CWDClipboardData::AddFormat(const std::string& name) {
  // Kept: a known name is appended once more.
  m_formats.push_back(static_cast<unsigned short>(RegisterClipboardFormatA(name.c_str()) & 0xFFFF));
  return static_cast<int>(m_formats.size()) - 1;
}

unsigned short CWDClipboardData::GetClipboardFormat(int index) const {
  const bool known = index >= 0 && index < static_cast<int>(m_formats.size());
  return known ? m_formats[static_cast<std::size_t>(index)] : static_cast<unsigned short>(0);
}

bool CWDClipboardData::IsValidFormat(unsigned short format) const {
  return std::find(m_formats.begin(), m_formats.end(), format) != m_formats.end();
}

bool CWDClipboardData::IsDataAvailable(COleDataObject* dataObject) const {
  if (dataObject == nullptr) return false;
  bool available = false;
  FORMATETC details;
  dataObject->BeginEnumFormats();
  // Kept: every format is visited, so that the walk ends at its end.
  while (dataObject->GetNextFormat(&details)) available = IsValidFormat(details.cfFormat) || available;
  return available;
}

bool CWDClipboardData::IsDataAvailable(COleDataObject* dataObject, int index) const {
  const unsigned short format = GetClipboardFormat(index);
  return IsDataAvailable(dataObject) && format != 0 && dataObject->IsDataAvailable(format);
}

void CWDClipboardData::SetData(COleDataSource* dataSource, CObject* payload, int index, FORMATETC* details) {
  const unsigned short format = GetClipboardFormat(index);
  if (dataSource == nullptr || payload == nullptr || format == 0) return;
  CSharedFile file(kBufferSize);
  CArchive archive(&file, CArchive::store, kBufferSize);
  payload->Serialize(archive);
  archive.Close();
  dataSource->CacheGlobalData(format, file.Detach(), details);
}

bool CWDClipboardData::GetData(COleDataObject* dataObject, CObject* payload, int index) {
  if (dataObject == nullptr || payload == nullptr) return false;
  const unsigned short format = GetClipboardFormat(index);
  if (format == CF_HDROP) {
    if (auto* const list = dynamic_cast<CCF_HDROP*>(payload)) AddFileNames(*dataObject, *list);
    return true;
  }
  const std::unique_ptr<CFile> file = format != 0 ? dataObject->GetFileData(format) : nullptr;
  // Kept: true without data, too.
  if (file == nullptr) return true;
  CArchive archive(file.get(), CArchive::load, kBufferSize);
  payload->Serialize(archive);
  archive.Close();
  return true;
}
