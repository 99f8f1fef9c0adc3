#include "zelbase/platform/posix/PosixPaths.h"

#include <algorithm>

namespace zelbase::detail {

std::string ToSystemPath(std::string_view path) {
  std::string result(path);
  std::replace(result.begin(), result.end(), '\\', '/');
  return result;
}

std::string ToInterfacePath(std::string_view path) {
  std::string result(path);
  if (!result.empty()) std::replace(result.begin() + 1, result.end(), '/', '\\');
  return result;
}

}  // namespace zelbase::detail
