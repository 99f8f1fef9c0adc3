#include "zelbase/platform/CDynLinkLibrary.h"

#include <algorithm>
#include <memory>

namespace {

int g_failuresToCome = 0;

std::vector<CDynLinkLibrary*>& Libraries() { return AfxGetAppModuleState()->m_libraryList; }

}  // namespace

bool AfxInitExtensionModule(AFX_EXTENSION_MODULE& record, HINSTANCE module) {
  if (g_failuresToCome > 0) {
    --g_failuresToCome;
    return false;
  }
  if (!record.bInitialized) record = {true, module, module};
  return true;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& record, bool all) {
  if (!record.bInitialized) return;
  const std::vector<CDynLinkLibrary*> libraries = Libraries();
  for (CDynLinkLibrary* const library : libraries) {
    // Each takes itself out of the list.
    if (all || library->m_hModule == record.hModule) const std::unique_ptr<CDynLinkLibrary> ended(library);
  }
  record = {};
}

void AfxFailInitExtensionModule(int count) { g_failuresToCome = count; }

CDynLinkLibrary::CDynLinkLibrary(const AFX_EXTENSION_MODULE& record) : m_hModule(record.hModule), m_hResource(record.hResource) {
  Libraries().insert(Libraries().begin(), this);
}

CDynLinkLibrary::~CDynLinkLibrary() { std::erase(Libraries(), this); }

AFX_MODULE_STATE* AfxGetAppModuleState() {
  static AFX_MODULE_STATE* const state = new AFX_MODULE_STATE;
  return state;
}

AFX_MODULE_STATE* AfxGetModuleState() { return AfxGetAppModuleState(); }
