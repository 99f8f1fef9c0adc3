#include "zelbase/platform/CRuntimeClass.h"

#include <mutex>
#include <string_view>

namespace {

// Both are there before any static object of a class, and never destroyed.
constinit CRuntimeClass* g_first = nullptr;

std::mutex& ListMutex() {
  static std::mutex& mutex = *new std::mutex;
  return mutex;
}

}  // namespace

CRuntimeClass::CRuntimeClass(const char* name, Maker maker)
    : m_lpszClassName(name != nullptr ? name : ""), m_maker(maker) {
  const std::lock_guard guard(ListMutex());
  m_next = g_first;
  g_first = this;
}

CRuntimeClass::~CRuntimeClass() {
  const std::lock_guard guard(ListMutex());
  CRuntimeClass** at = &g_first;
  while (*at != this) at = &(*at)->m_next;
  *at = m_next;
}

CObject* CRuntimeClass::CreateObject() const { return m_maker == nullptr ? nullptr : m_maker(); }

CRuntimeClass* CRuntimeClass::FromName(const char* name) {
  if (name == nullptr) return nullptr;
  const std::lock_guard guard(ListMutex());
  CRuntimeClass* found = g_first;
  while (found != nullptr && std::string_view(found->m_lpszClassName) != name) found = found->m_next;
  return found;
}

CObject* CRuntimeClass::CreateObject(const char* name) {
  const CRuntimeClass* const found = FromName(name);
  return found == nullptr ? nullptr : found->CreateObject();
}
