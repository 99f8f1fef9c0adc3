#include "zelbase/platform/FixedFolders.h"

namespace {

template <class Value>
bool HandOut(const std::optional<Value>& known, Value& value) {
  if (!known.has_value()) return false;
  value = *known;
  return true;
}

}  // namespace

bool FixedFolders::CommonData(std::string& folder) { return HandOut(m_commonData, folder); }

bool FixedFolders::Current(std::string& folder) { return HandOut(m_current, folder); }

bool FixedFolders::FreeSpace(const std::string&, unsigned long long& bytes) { return HandOut(m_freeSpace, bytes); }
