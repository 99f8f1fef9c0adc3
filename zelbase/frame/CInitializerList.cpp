#include "zelbase/frame/CInitializerList.h"

#include <cstddef>
#include <memory>

CInitializerList::~CInitializerList() { RemoveAll(); }

CInitializerList& CInitializerList::GetInitializers() {
  // The list itself stays, so that destructors that run later find it; only what it holds goes at exit.
  static CInitializerList* const list = new CInitializerList;
  struct Emptier {
    ~Emptier() { list->RemoveAll(); }
  };
  static const Emptier emptier;
  return *list;
}

void CInitializerList::AddInitializer(CBaseInitializer* initializer) { m_initializers.push_back(initializer); }

bool CInitializerList::RemoveInitializer(const std::string& name) {
  for (auto at = m_initializers.begin(); at != m_initializers.end(); ++at) {
    if (*at == nullptr || (*at)->GetName() != name) continue;
    // Out of the list before it is destroyed: its destructor may call back.
    const std::unique_ptr<CBaseInitializer> removed(*at);
    m_initializers.erase(at);
    return true;
  }
  return false;
}

void CInitializerList::RemoveAll() {
  while (!m_initializers.empty()) {
    const std::unique_ptr<CBaseInitializer> removed(m_initializers.back());
    m_initializers.pop_back();
  }
}

// Kept: a plain index and the length of the moment; modules add others while they are called.
template <class Phase>
void CInitializerList::CallEach(Phase phase) {
  for (std::size_t i = 0; i < m_initializers.size(); ++i) {
    if (m_initializers[i] != nullptr) phase(*m_initializers[i]);
  }
}

void CInitializerList::InitializeTemplates(CWinApp* application) {
  CallEach([application](CBaseInitializer& each) { each.InitializeTemplates(application); });
}

void CInitializerList::RegisterDevices() {
  CallEach([](CBaseInitializer& each) { each.RegisterDevices(); });
}

void CInitializerList::RegisterComps() {
  CallEach([](CBaseInitializer& each) { each.RegisterComps(); });
}

void CInitializerList::RegisterLoggers() {
  CallEach([](CBaseInitializer& each) { each.RegisterLoggers(); });
}

void CInitializerList::RegisterLayers() {
  CallEach([](CBaseInitializer& each) { each.RegisterLayers(); });
}

void CInitializerList::RegisterTools() {
  CallEach([](CBaseInitializer& each) { each.RegisterTools(); });
}

void CInitializerList::RegisterViews() {
  // Kept: the result is thrown away; a module without views answers false.
  CallEach([](CBaseInitializer& each) { each.RegisterViews(); });
}

void CInitializerList::RegisterActionGroups() {
  CallEach([](CBaseInitializer& each) { each.RegisterActionGroups(); });
}

void CInitializerList::RegisterActions() {
  CallEach([](CBaseInitializer& each) { each.RegisterActions(); });
}

void CInitializerList::RegisterGeoidModel() {
  CallEach([](CBaseInitializer& each) { each.RegisterGeoidModel(); });
}
