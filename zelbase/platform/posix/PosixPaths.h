// Path names between the "\" form of every interface and this system's own, and where a link leads. Internal to
// platform/posix/.
#pragma once

#include <string>
#include <string_view>

#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// Every "\" becomes "/": "data\x.ini" is "data/x.ini", "/tmp\x" is "/tmp/x". A name of this system that itself holds a "\"
// cannot be reached.
ZELBASE_API std::string ToSystemPath(std::string_view path);

// Every "/" but a first one becomes "\": "/tmp/x/y" is "/tmp\x\y", "a/b" is "a\b", "/" stays.
ZELBASE_API std::string ToInterfacePath(std::string_view path);

// What the link at `path`, in this system's form, holds, whole at any length; empty when it is no link or may not be read.
ZELBASE_API std::string LinkText(const std::string& path);

}  // namespace zelbase::detail
