// A reference to a data item on its way over the clipboard. Neighbours: CDataInfo.h, what it carries; CWDClipboardData.h, which moves
// it; CCF_DispInfo.h and CCF_HDROP.h, the other payloads.
#pragma once

#include "zelbase/data/CDataInfo.h"
#include "zelbase/platform/CObject.h"
#include "zelbase/platform/CRuntimeClass.h"
#include "zelbase/platform/ZelBaseApi.h"

class CArchive;

// Holds one CDataInfo. Can be made by its name, "CCF_DataInfo". One thread at a time.
class ZELBASE_API CCF_DataInfo : public CObject {
 public:
  static CObject* CreateObject();
  static CRuntimeClass* GetThisClass();
  CRuntimeClass* GetRuntimeClass() const override;

  void SetDataInfo(const CDataInfo& dataInfo) { m_dataInfo = dataInfo; }
  void GetDataInfo(CDataInfo& dataInfo) const { dataInfo = m_dataInfo; }
  const CDataInfo& GetDataInfo() const { return m_dataInfo; }

  // Writes "5,1,1002,3,7,": the identifier's key as it was last made, so that a stale one travels, the element and a comma, without a
  // line end. Reads a line with CDataInfo::SetFromString. The array index does not travel: reading keeps the receiver's. A line
  // that does not read changes nothing.
  void Serialize(CArchive& archive) override;

 private:
  CDataInfo m_dataInfo;
};
