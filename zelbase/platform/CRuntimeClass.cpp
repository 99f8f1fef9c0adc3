#include "zelbase/platform/CRuntimeClass.h"

#include <string_view>

#include "zelbase/platform/LockGuard.h"
#include "zelbase/platform/detail/Mutex.h"

namespace {

// Both are there before any static object of a class, and of the lock nothing is ever destroyed.
constinit zelbase::detail::Mutex g_listLock;
constinit CRuntimeClass* g_first ZELBASE_GUARDED_BY(g_listLock) = nullptr;

}  // namespace

CRuntimeClass::CRuntimeClass(const char* name, Maker maker) : m_lpszClassName(name != nullptr ? name : ""), m_maker(maker) {
  const LockGuard guard(g_listLock);
  m_next = g_first;
  g_first = this;
}

CRuntimeClass::~CRuntimeClass() {
  const LockGuard guard(g_listLock);
  CRuntimeClass** at = &g_first;
  while (*at != this) at = &(*at)->m_next;
  *at = m_next;
}

CObject* CRuntimeClass::CreateObject() const { return m_maker == nullptr ? nullptr : m_maker(); }

CRuntimeClass* CRuntimeClass::FromName(const char* name) {
  if (name == nullptr) return nullptr;
  const LockGuard guard(g_listLock);
  CRuntimeClass* found = g_first;
  while (found != nullptr && std::string_view(found->m_lpszClassName) != name) found = found->m_next;
  return found;
}

CObject* CRuntimeClass::CreateObject(const char* name) {
  const CRuntimeClass* const found = FromName(name);
  return found == nullptr ? nullptr : found->CreateObject();
}
