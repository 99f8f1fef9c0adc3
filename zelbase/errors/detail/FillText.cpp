#include "zelbase/errors/detail/FillText.h"

#include <cstddef>

namespace zelbase::detail {

std::string FillText(std::string_view text, std::initializer_list<std::string_view> arguments) {
  std::string filled;
  auto argument = arguments.begin();
  for (;;) {
    const std::size_t percent = text.find('%');
    filled.append(text.substr(0, percent));
    if (percent == std::string_view::npos) return filled;

    const char kind = percent + 1 < text.size() ? text[percent + 1] : '\0';
    text.remove_prefix(percent + (kind == 's' || kind == '%' ? 2 : 1));
    if (kind != 's') {
      filled.push_back('%');
    } else if (argument != arguments.end()) {
      filled.append(*argument++);
    }
  }
}

}  // namespace zelbase::detail
