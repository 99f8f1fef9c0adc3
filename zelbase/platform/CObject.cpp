#include "zelbase/platform/CObject.h"

#include "zelbase/platform/CRuntimeClass.h"

CRuntimeClass* CObject::GetRuntimeClass() const {
  static CRuntimeClass& runtimeClass = *new CRuntimeClass("CObject", nullptr);
  return &runtimeClass;
}

void CObject::Serialize(CArchive&) {}
