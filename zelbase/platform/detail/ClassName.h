// The name of a class as its programmer wrote it. Internal to the library; each compiler has its own way to it.
#pragma once

#include <string>
#include <typeinfo>

#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// With its namespaces, "survey::CDepthView", and without "class" or "struct".
ZELBASE_API std::string ClassName(const std::type_info& type);

}  // namespace zelbase::detail
