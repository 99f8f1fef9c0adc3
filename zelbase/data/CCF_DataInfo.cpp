#include "zelbase/data/CCF_DataInfo.h"

#include <string>

#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/platform/CArchive.h"

namespace {

[[maybe_unused]] const CRuntimeClass* const g_class = CCF_DataInfo::GetThisClass();

}  // namespace

CObject* CCF_DataInfo::CreateObject() { return new CCF_DataInfo; }

CRuntimeClass* CCF_DataInfo::GetThisClass() {
  // Never destroyed, so that it can be asked for until the process has ended.
  static CRuntimeClass& runtimeClass = *new CRuntimeClass("CCF_DataInfo", CreateObject);
  return &runtimeClass;
}

CRuntimeClass* CCF_DataInfo::GetRuntimeClass() const { return GetThisClass(); }

void CCF_DataInfo::Serialize(CArchive& archive) {
  std::string text;
  if (archive.IsLoading()) {
    archive.ReadString(text);
    m_dataInfo.SetFromString(text);
    return;
  }
  // Kept: the key, stale or not, and neither the array index nor a line end.
  text = m_dataInfo.GetDataId().GetKey();
  text += ',';
  zelbase::detail::AppendUnsigned(text, m_dataInfo.GetElemId());
  text += ',';
  archive.WriteString(text);
}
