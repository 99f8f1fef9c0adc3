#include "zelbase/frame/detail/LanguageChoice.h"

#include <algorithm>
#include <cstddef>

#include "zelbase/frame/FileNames.h"
#include "zelbase/frame/detail/Characters.h"

namespace zelbase::detail {

namespace {

constexpr char kSeparator = '\\';
constexpr char kRoot = '/';

std::string_view FileNameOf(std::string_view path) {
  const std::size_t separator = path.rfind(kSeparator);
  if (separator != path.npos) return path.substr(separator + 1);
  return path.starts_with(kRoot) ? path.substr(1) : path;
}

}  // namespace

bool HasFolder(std::string_view path) { return path.starts_with(kRoot) || path.find(kSeparator) != path.npos; }

std::string LanguageSettingsPath(std::string_view commonFolder, std::string_view programPath) {
  std::string program(FileNameOf(programPath));
  std::transform(program.begin(), program.end(), program.begin(), ToLower);
  std::string path(commonFolder);
  path.append("\\VESOK\\").append(DEFAULT_NAME).append("\\");
  return path.append(program == "ternaxui.exe" ? TUI_DEF_FILENAME : ZEL_DEF_FILENAME);
}

std::string LanguageTitle(std::string_view modulePath, LanguageUser user) {
  const std::string_view name = FileNameOf(modulePath);
  const std::size_t cut = static_cast<std::size_t>(user);
  // Kept: characters are counted, whatever they are; a debug build's letter is cut as the release's is.
  return std::string(name.substr(0, name.size() - std::min(cut, name.size())));
}

bool IsLanguage(std::string_view language) {
  constexpr std::string_view kForbidden("\\/:\0", 4);
  return !language.empty() && language.find_first_of(kForbidden) == language.npos && language.find("..") == language.npos;
}

std::string LanguageModulePath(std::string_view language, std::string_view title) {
  // Kept: relative, so that the folder that a program is started in decides; an installation has one folder a customer.
  std::string path = ".\\localizations\\";
  return path.append(language).append("\\").append(title).append("_res");
}

}  // namespace zelbase::detail
