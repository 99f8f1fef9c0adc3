#include "zelbase/data/detail/DataIdText.h"

#include "zelbase/frame/detail/NumberText.h"

namespace zelbase::detail {

std::size_t ScanDataNumbers(std::string_view text, DataNumbers& numbers, std::size_t most) {
  std::size_t read = 0;
  while (read < most) {
    const std::size_t taken = ScanUnsignedShort(text, numbers[read]);
    if (taken == 0) break;
    ++read;
    text.remove_prefix(taken);
    if (!text.starts_with(',')) break;
    text.remove_prefix(1);
  }
  return read;
}

void AppendDataNumbers(std::string& text, const DataNumbers& numbers, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0) text += ',';
    AppendUnsigned(text, numbers[i]);
  }
}

}  // namespace zelbase::detail
