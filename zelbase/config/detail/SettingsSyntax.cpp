#include "zelbase/config/detail/SettingsSyntax.h"

#include "zelbase/frame/detail/Characters.h"

namespace zelbase::detail {
namespace {

void ScanHead(SettingsLine& result) {
  result.kind = SettingsLineKind::Section;
  const std::string_view inside = result.content.substr(1);
  const std::size_t end = inside.rfind(']');
  result.closed = end != std::string_view::npos;
  result.value = inside.substr(0, end);
  if (!result.closed) {
    // Kept: a head without "]" is the section with no name; files in use rely on its items staying together.
    result.name = inside.substr(0, 0);
    return;
  }
  result.name = Trim(result.value);
}

}  // namespace

SettingsLine ScanSettingsLine(std::string_view line) {
  SettingsLine result;
  // Kept: ";" counts in column 1 only, so " ; x = 1" is an item with the key "; x".
  if (!line.empty() && line.front() == ';') {
    result.kind = SettingsLineKind::Comment;
    return result;
  }
  // Kept: "//" cuts everywhere, in values and heads too; a URL is cut, by design of the format.
  const std::size_t cut = line.find("//");
  if (cut != std::string_view::npos) result.cut = line.substr(cut);
  result.content = TrimLeft(line.substr(0, cut));
  if (result.content.empty()) {
    result.kind = result.cut.empty() ? SettingsLineKind::Blank : SettingsLineKind::Comment;
    return result;
  }
  if (result.content.front() == '[') {
    ScanHead(result);
    return result;
  }
  const std::size_t separator = result.content.find('=');
  if (separator == std::string_view::npos || separator == 0) {
    result.kind = separator == 0 ? SettingsLineKind::NoKey : SettingsLineKind::NoSeparator;
    return result;
  }
  result.kind = SettingsLineKind::Item;
  result.name = TrimRight(result.content.substr(0, separator));
  result.value = Trim(result.content.substr(separator + 1));
  return result;
}

bool TakeSettingsLine(std::string_view& text, std::string_view& line) {
  if (text.empty()) return false;
  const std::size_t end = text.find('\n');
  line = text.substr(0, end);
  if (end == std::string_view::npos) {
    text.remove_prefix(text.size());
    return true;
  }
  text.remove_prefix(end + 1);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return true;
}

}  // namespace zelbase::detail
