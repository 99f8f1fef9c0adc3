#include <cxxabi.h>

#include <cstdlib>
#include <memory>

#include "zelbase/platform/detail/ClassName.h"

namespace zelbase::detail {

std::string ClassName(const std::type_info& type) {
  int status = 0;
  const std::unique_ptr<char, void (*)(void*)> name(abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), std::free);
  // Unreached: no name, which only comes of a text that is no type's.
  return name != nullptr ? name.get() : type.name();
}

}  // namespace zelbase::detail
