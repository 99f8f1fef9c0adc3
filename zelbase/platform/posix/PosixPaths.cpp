#include "zelbase/platform/posix/PosixPaths.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>

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

std::string LinkText(const std::string& path) {
  std::string text(256, '\0');
  for (;;) {
    const ssize_t length = ::readlink(path.c_str(), text.data(), text.size());
    if (length < 0) return {};
    if (static_cast<std::size_t>(length) < text.size()) {
      text.resize(static_cast<std::size_t>(length));
      return text;
    }
    text.resize(text.size() * 2);  // what fills its room may have been cut
  }
}

}  // namespace zelbase::detail
