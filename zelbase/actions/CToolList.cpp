#include "zelbase/actions/CToolList.h"

CToolList::~CToolList() { m_creators.Clear(); }

CToolList& CToolList::GetToolList() {
  return zelbase::detail::OneRegistry<CToolList>([](CToolList& list) { list.m_creators.Clear(); });
}

void CToolList::RegisterTool(const std::string& name, ToolICreator* creator) { m_creators.Register(name, creator); }

ZelTool* CToolList::Create(const std::string& name) { return m_creators.Create(name); }

void CToolList::GetToolNames(std::vector<std::string>& names) const { m_creators.Keys(names); }
