// The folder that a program or a shared library lies in, from its path in the "\" form. Internal to the library.
#pragma once

#include <string>
#include <string_view>

namespace zelbase::detail {

// Up to and with the last "\"; this system's root, whose "/" stays, for "/x.exe". Empty for a name without a folder.
inline std::string FolderOf(std::string_view path) {
  const std::size_t separator = path.rfind('\\');
  if (separator != std::string_view::npos) return std::string(path.substr(0, separator + 1));
  return path.starts_with('/') ? "/" : "";
}

}  // namespace zelbase::detail
