#include "zelbase/platform/CArchiveException.h"

const char* CArchiveException::what() const noexcept { return "archive operation failed"; }
