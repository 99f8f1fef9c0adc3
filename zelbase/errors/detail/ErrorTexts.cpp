#include "zelbase/errors/detail/ErrorTexts.h"

#include <cstddef>

#include "zelbase/errors/ErrorWording.h"
#include "zelbase/errors/NumberedTexts.h"

namespace zelbase::detail {

std::string TextOf(const std::string& section, const std::string& key, int number) {
  std::string text;
  return ErrorWording::Find(section, key, text) ? text : NumberedText(number);
}

std::string TextOf(const std::string& section, const std::string& key, const char* literal) {
  std::string text;
  return ErrorWording::Find(section, key, text) ? text : literal;
}

std::string_view NameAfterFolders(std::string_view path) {
  const std::size_t separator = path.rfind('\\');
  return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

}  // namespace zelbase::detail
