#include "zelbase/data/CCF_DispInfo.h"

#include "zelbase/platform/CArchive.h"

namespace {

[[maybe_unused]] const CRuntimeClass* const g_class = CCF_DispInfo::GetThisClass();

}  // namespace

CObject* CCF_DispInfo::CreateObject() { return new CCF_DispInfo; }

CRuntimeClass* CCF_DispInfo::GetThisClass() {
  // Never destroyed, so that it can be asked for until the process has ended.
  static CRuntimeClass& runtimeClass = *new CRuntimeClass("CCF_DispInfo", CreateObject);
  return &runtimeClass;
}

CRuntimeClass* CCF_DispInfo::GetRuntimeClass() const { return GetThisClass(); }

void CCF_DispInfo::Serialize(CArchive& archive) {
  for (std::string* const text : {&m_group, &m_type, &m_name}) {
    if (archive.IsLoading()) {
      archive.ReadString(*text);
    } else {
      archive.WriteString(*text);  // Kept: no line end, which reading needs
    }
  }
}
