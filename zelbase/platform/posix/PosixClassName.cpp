#include <cxxabi.h>

#include <cstdlib>
#include <memory>

#include "zelbase/platform/detail/ClassName.h"

namespace zelbase::detail {

std::string ClassName(const std::type_info& type) {
  int status = 0;
  const std::unique_ptr<char, void (*)(void*)> name(abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), std::free);
  // No name: one that this compiler makes and the demangler does not know.
  return name != nullptr ? name.get() : type.name();
}

}  // namespace zelbase::detail
