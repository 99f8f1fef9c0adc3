#include "zelbase/files/PathHelpers.h"

#include "zelbase/platform/detail/IntendedWraps.h"

namespace {

// The index of the last `character`, -1 when there is none.
long long LastIndex(const std::string& text, char character) {
  const std::size_t found = text.rfind(character);
  return found == std::string::npos ? -1 : static_cast<long long>(found);
}

std::string Between(const std::string& text, long long begin, long long end) {
  if (end <= begin) return {};
  return text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
}

}  // namespace

void SplitPath(const std::string& path, std::string& directory, std::string& name, std::string& extension) {
  const std::string text = path;
  const auto length = static_cast<long long>(text.size());
  const long long separator = LastIndex(text, '\\');
  const long long dot = LastIndex(text, '.');
  const bool hasRest = separator + 1 < length;
  directory.clear();
  name.clear();
  extension.clear();
  if (separator > 0 && hasRest) directory = Between(text, 0, separator + 1);
  if (dot > 0) {
    if (hasRest) name = Between(text, separator + 1, dot);
    extension = Between(text, dot + 1, length);  // Kept: also when the dot is a directory's
  }
  // Kept: "dir\" is a name, too.
  if (directory.empty() && name.empty() && extension.empty()) name = text;
}

ZELBASE_WRAPS const std::string GetTitleFromPath(const std::string& path) {
  const long long separator = LastIndex(path, '\\');
  const long long dot = LastIndex(path, '.');
  std::string title = dot >= 1 && dot > separator ? path.substr(0, static_cast<std::size_t>(dot)) : path;
  // Kept: so a name that is nothing but an extension gives its directory's.
  if (!title.empty() && title.back() == '\\') title.pop_back();
  title.erase(0, title.rfind('\\') + 1);
  title.erase(0, title.rfind(':') + 1);
  return title;
}

ZELBASE_WRAPS const std::string GetFileNameFromPath(const std::string& path) { return path.substr(path.rfind('\\') + 1); }

bool AllValidFileSystemChars(const std::string& name) { return name.find_first_of("\\/:*\"<>|?") == std::string::npos; }
