// Whether a file may be handed to the system's loader. Internal to platform/posix/.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// True for a library of this machine's own word size that has all the bytes it is to be loaded with. The loader maps a file
// without a look at its length: one that was cut short, by a full disk or a broken copy, would end the process at its first
// missing page. `path` is in this system's form and names a regular file. What the bytes say is not judged.
ZELBASE_API bool IsWholeLibrary(const std::string& path);

}  // namespace zelbase::detail
