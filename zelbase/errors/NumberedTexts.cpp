#include "zelbase/errors/NumberedTexts.h"

#include <array>
#include <cstddef>
#include <utility>

#include "zelbase/errors/detail/SharedSlot.h"

namespace {

constexpr int kFirst = 12030;
constexpr std::array<const char*, 12> kBuiltIn = {
    "Interpolation error \"%s\".",
    "Extrapolation error \"%s\".",
    "Error reading from \"%s\".",  // of a data stack; the same words as for a file below
    "Computation failed \"%s\".",
    "Unspecified Error",
    "Error opening \"%s\".",
    "Error reading from \"%s\".",
    "Error writing to \"%s\".",
    "Error retrieving item \"[%s] - %s\".\nFile in question:\n\"%s\".",
    "Unknown",
    "Section \"%s\" could not be found in \"%s\".",
    "The key \"%s\" could not be found in section \"%s\" of \"%s\".",
};

using Slot = zelbase::detail::SharedSlot<const NumberedTextTable>;

// Never destroyed: the destructor of any static may still ask for a text.
Slot& Installed() {
  static Slot& slot = *new Slot;
  return slot;
}

}  // namespace

std::string NumberedText(int number) {
  std::string text;
  const std::shared_ptr<const NumberedTextTable> table = Installed().Get();
  if (table != nullptr && table->Get(number, text)) return text;
  if (number < kFirst || number >= kFirst + static_cast<int>(kBuiltIn.size())) return std::string();
  return kBuiltIn[static_cast<std::size_t>(number - kFirst)];
}

std::shared_ptr<const NumberedTextTable> InstallNumberedTexts(std::shared_ptr<const NumberedTextTable> table) {
  return Installed().Exchange(std::move(table));
}
