#include "zelbase/data/CMessageBuilderList.h"

#include <utility>

CMessageBuilderList::~CMessageBuilderList() { RemoveAll(); }

CMessageBuilderList& CMessageBuilderList::GetMessageBuilderList() {
  // The list itself stays, so that destructors that run later find it; only what it holds goes at exit.
  static CMessageBuilderList* const list = new CMessageBuilderList;
  struct Emptier {
    ~Emptier() { list->RemoveAll(); }
  };
  static const Emptier emptier;
  return *list;
}

void CMessageBuilderList::RegisterMessageBuilder(const std::string& name, MessageBuilderICreator* creator) {
  if (creator == nullptr) return;
  // Kept: no replacement, and a refused creator stays its caller's.
  if (m_creators.contains(name)) return;
  std::shared_ptr<MessageBuilderICreator> held = Held(creator);
  if (held == nullptr) held.reset(creator);
  m_creators.emplace(name, std::move(held));
}

bool CMessageBuilderList::UnRegisterMessageBuilder(const std::string& name) {
  // Out of the list before it is destroyed: its destructor may call back.
  return !m_creators.extract(name).empty();
}

CMessageBuilder* CMessageBuilderList::Create(const std::string& name) {
  const auto found = m_creators.find(name);
  if (found == m_creators.end()) return nullptr;
  // Held while it works, since it may take its own name out.
  const std::shared_ptr<MessageBuilderICreator> creator = found->second;
  return creator->Create();
}

// The ownership of a creator that already serves a name; null when it serves none.
std::shared_ptr<MessageBuilderICreator> CMessageBuilderList::Held(MessageBuilderICreator* creator) const {
  for (const auto& [name, held] : m_creators) {
    if (held.get() == creator) return held;
  }
  return nullptr;
}

void CMessageBuilderList::RemoveAll() {
  // Out of the list before it is destroyed: its destructor may call back.
  while (!m_creators.empty()) m_creators.extract(m_creators.begin());
}
