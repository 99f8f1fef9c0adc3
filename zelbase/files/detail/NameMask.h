// Whether the name of a directory's entry matches a mask with wild cards. Internal to the library; FileFinder.h is what callers
// use.
#pragma once

#include <string_view>

#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// "*" stands for any number of characters, also none, "?" for exactly one; A to Z equal a to z, bytes from 128 up are their own.
// "*.*" matches every name, an empty mask none. Takes at most the product of both lengths.
ZELBASE_API bool MatchesMask(std::string_view name, std::string_view mask);

}  // namespace zelbase::detail
