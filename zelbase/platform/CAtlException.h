// The failure that the framework's time and automation-date conversions throw.
#pragma once

#include <exception>

#include "zelbase/platform/ZelBaseApi.h"

// Carries a result code: 0x80004005 (unspecified failure) or 0x80070057 (invalid argument).
class ZELBASE_API CAtlException : public std::exception {
 public:
  explicit CAtlException(unsigned int result) : m_hr(result) {}
  const char* what() const noexcept override;

  unsigned int m_hr;
};
