#include "zelbase/data/CMessageBuilderList.h"

CMessageBuilderList::~CMessageBuilderList() { m_creators.Clear(); }

CMessageBuilderList& CMessageBuilderList::GetMessageBuilderList() {
  return zelbase::detail::OneRegistry<CMessageBuilderList>([](CMessageBuilderList& list) { list.m_creators.Clear(); });
}

void CMessageBuilderList::RegisterMessageBuilder(const std::string& name, MessageBuilderICreator* creator) {
  m_creators.Register(name, creator);
}

bool CMessageBuilderList::UnRegisterMessageBuilder(const std::string& name) { return m_creators.UnRegister(name); }

CMessageBuilder* CMessageBuilderList::Create(const std::string& name) { return m_creators.Create(name); }
