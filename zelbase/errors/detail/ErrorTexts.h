// How the classes of errors come to their texts. Internal to the library.
#pragma once

#include <string>
#include <string_view>

#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// The installed wording of `key` in `section`, otherwise the numbered text. A wording that was found is taken even when it
// is empty.
ZELBASE_API std::string TextOf(const std::string& section, const std::string& key, int number);

// The same with a literal to fall back on.
ZELBASE_API std::string TextOf(const std::string& section, const std::string& key, const char* literal);

// The part of `path` after its last "\"; all of it when there is none. "/" is no separator here. Points into `path`.
ZELBASE_API std::string_view NameAfterFolders(std::string_view path);

}  // namespace zelbase::detail
