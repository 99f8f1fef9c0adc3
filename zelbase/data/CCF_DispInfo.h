// A reference to a display on its way over the clipboard. Neighbours: CWDClipboardData.h, which moves it; CCF_DataInfo.h and
// CCF_HDROP.h, the other payloads.
#pragma once

#include <string>

#include "zelbase/platform/CObject.h"
#include "zelbase/platform/CRuntimeClass.h"
#include "zelbase/platform/ZelBaseApi.h"

class CArchive;

// Holds the display's group, type and name. Can be made by its name, "CCF_DispInfo". One thread at a time.
class ZELBASE_API CCF_DispInfo : public CObject {
 public:
  static CObject* CreateObject();
  static CRuntimeClass* GetThisClass();
  CRuntimeClass* GetRuntimeClass() const override;

  void SetGroup(const std::string& group) { m_group = group; }
  void SetType(const std::string& type) { m_type = type; }
  void SetName(const std::string& name) { m_name = name; }

  void GetGroup(std::string& group) const { group = m_group; }
  void GetType(std::string& type) const { type = m_type; }
  void GetName(std::string& name) const { name = m_name; }
  std::string GetGroup() const { return m_group; }
  std::string GetType() const { return m_type; }
  std::string GetName() const { return m_name; }

  // Writes group, type and name with nothing between them; reads a line for each, and an empty text where there is none. So who wants
  // them apart lets each end with a line end, which is gone on the other side: a second trip runs them together.
  void Serialize(CArchive& archive) override;

 private:
  std::string m_group;
  std::string m_type;
  std::string m_name;
};
