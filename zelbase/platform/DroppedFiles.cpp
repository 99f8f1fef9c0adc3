#include "zelbase/platform/DroppedFiles.h"

#include <cstddef>
#include <string_view>

#include "zelbase/platform/detail/IntendedWraps.h"

namespace {

constexpr std::size_t kHeaderSize = 20;
constexpr std::size_t kOffsetAt = 0;
constexpr std::size_t kWideAt = 16;

ZELBASE_WRAPS unsigned int NumberAt(std::string_view bytes, std::size_t at) {
  unsigned int number = 0;
  for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
  return number;
}

}  // namespace

std::vector<std::string> DroppedFileNames(const HGLOBAL& block) {
  std::vector<std::string> names;
  std::string_view rest = block != nullptr ? std::string_view(*block) : std::string_view();
  if (rest.size() < kHeaderSize || NumberAt(rest, kWideAt) != 0) return names;
  const std::size_t begin = NumberAt(rest, kOffsetAt);
  if (begin > rest.size()) return names;
  rest.remove_prefix(begin);
  while (!rest.empty() && rest.front() != '\0') {
    const std::string_view name = rest.substr(0, rest.find('\0'));
    names.emplace_back(name);
    rest.remove_prefix(name.size());
    if (!rest.empty()) rest.remove_prefix(1);
  }
  return names;
}
