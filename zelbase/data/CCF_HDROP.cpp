#include "zelbase/data/CCF_HDROP.h"

#include "zelbase/platform/CArchive.h"

namespace {

[[maybe_unused]] const CRuntimeClass* const g_class = CCF_HDROP::GetThisClass();

constexpr int kHeaderSize = 20;
constexpr int kEightBitNames = 0;

void AppendNumber(std::string& bytes, int number) {
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(static_cast<unsigned int>(number) >> shift & 0xFF);
}

}  // namespace

CObject* CCF_HDROP::CreateObject() { return new CCF_HDROP; }

CRuntimeClass* CCF_HDROP::GetThisClass() {
  // Never destroyed, so that it can be asked for until the process has ended.
  static CRuntimeClass& runtimeClass = *new CRuntimeClass("CCF_HDROP", CreateObject);
  return &runtimeClass;
}

CRuntimeClass* CCF_HDROP::GetRuntimeClass() const { return GetThisClass(); }

void CCF_HDROP::AddFileName(const char* fileName) {
  if (fileName != nullptr) m_fileNames.emplace_back(fileName);
}

void CCF_HDROP::AddDropPoint(CPoint point, int nonClientFlag) {
  m_dropPoint = point;
  m_nonClientFlag = nonClientFlag;
}

std::string CCF_HDROP::GetFileName(int index) const {
  return index >= 0 && index < GetCount() ? m_fileNames[static_cast<std::size_t>(index)] : std::string();
}

void CCF_HDROP::Serialize(CArchive& archive) {
  if (archive.IsLoading()) return;  // Kept: a list of files is never read here
  std::string bytes;
  for (const int number : {kHeaderSize, m_dropPoint.x, m_dropPoint.y, m_nonClientFlag, kEightBitNames}) {
    AppendNumber(bytes, number);
  }
  for (const std::string& name : m_fileNames) {
    bytes += name;
    bytes += '\0';
  }
  bytes += '\0';  // Kept: also behind no names at all
  archive.WriteString(bytes);
}
