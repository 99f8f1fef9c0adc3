// How this system's error numbers become the interface's. Internal to platform/posix/; the files themselves are behind
// PlatformFiles::System().
#pragma once

#include "zelbase/platform/FileResult.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// 0 is Ok; a number without a counterpart is IoFailed.
ZELBASE_API FileResult FileResultFromErrno(int error) noexcept;

}  // namespace zelbase::detail
