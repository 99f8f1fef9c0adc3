#include "zelbase/platform/CAtlException.h"

const char* CAtlException::what() const noexcept {
  switch (m_hr) {
    case 0x80004005u: return "unspecified failure (0x80004005)";
    case 0x80070057u: return "invalid argument (0x80070057)";
    default: return "framework failure";
  }
}
