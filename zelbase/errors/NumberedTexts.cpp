#include "zelbase/errors/NumberedTexts.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "zelbase/errors/detail/SharedSlot.h"

namespace {

struct NumberedRow {
  int number;
  const char* text;
};

constexpr NumberedRow kBuiltIn[] = {
    {12030, "Interpolation error \"%s\"."},
    {12031, "Extrapolation error \"%s\"."},
    {12032, "Error reading from \"%s\"."},  // of a data stack; the same words as for a file below
    {12033, "Computation failed \"%s\"."},
    {12034, "Unspecified Error"},
    {12035, "Error opening \"%s\"."},
    {12036, "Error reading from \"%s\"."},
    {12037, "Error writing to \"%s\"."},
    {12038, "Error retrieving item \"[%s] - %s\".\nFile in question:\n\"%s\"."},
    {12039, "Unknown"},
    {12040, "Section \"%s\" could not be found in \"%s\"."},
    {12041, "The key \"%s\" could not be found in section \"%s\" of \"%s\"."},
    {12044, "Base action"},
    {12045, "Composite Action"},
    {12049, "m"},
    {12050, "m/s"},
    {12051, "m\xB3"},
    {12052, "T/m\xB3"},
    {12053, "\xB0"},
    {12054, "m\xB3/s"},
    {12055, "Bar"},
    {12056, "KW"},
    {12057, "T/min"},
    {12058,
     "\xB0"
     "BU+"},
    {12059,
     "\xB0"
     "PU+"},
    {12060, "Ton"},
    {12061, "Ton/s"},
    {12062, "m\xB2"},
    {12063,
     "\xB0"
     "C"},
    {12064, "mm"},
    {12065, "kgf"},
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
  const auto* const row = std::lower_bound(std::begin(kBuiltIn), std::end(kBuiltIn), number,
                                           [](const NumberedRow& entry, int wanted) { return entry.number < wanted; });
  return row != std::end(kBuiltIn) && row->number == number ? row->text : std::string();
}

std::shared_ptr<const NumberedTextTable> InstallNumberedTexts(std::shared_ptr<const NumberedTextTable> table) {
  return Installed().Exchange(std::move(table));
}
