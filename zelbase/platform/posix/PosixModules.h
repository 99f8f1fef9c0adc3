// How this system's file names of programs and shared libraries become the suite's. Internal to platform/posix/; the
// modules themselves are behind PlatformModules::System().
#pragma once

#include <string>
#include <string_view>

#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// "zel" becomes "zel.exe"; a name with an extension stays. A "." in front begins no extension.
ZELBASE_API std::string ProgramFileName(std::string_view name);

// "libName.so" and "libName.so.4.1" become "NameR.dll". Everything else stays: a name without "lib" or ".so", or with
// nothing between the two.
ZELBASE_API std::string LibraryFileName(std::string_view name);

}  // namespace zelbase::detail
