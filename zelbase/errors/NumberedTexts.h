// The numbered texts of this library: a built-in table, over which a table of another language may be laid. Neighbour:
// ErrorWording.h, which may word the messages of errors anew by section and key before a number is asked for.
#pragma once

#include <memory>
#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// Texts by number in one language.
class ZELBASE_API NumberedTextTable {
 public:
  virtual ~NumberedTextTable() = default;

  // The text of `number`. False, `text` untouched, when this table does not have it. Called from any thread, also from
  // several at once.
  virtual bool Get(int number, std::string& text) const = 0;
};

// The text of `number`: the installed table's, otherwise the built-in one, otherwise empty. A "%s" in it is the place of an
// argument. Any thread, at any time.
ZELBASE_API std::string NumberedText(int number);

// Lays `table` over the built-in texts and returns what was laid over them before; null for none. The table is shared: a
// look-up under way keeps it alive.
ZELBASE_API std::shared_ptr<const NumberedTextTable> InstallNumberedTexts(std::shared_ptr<const NumberedTextTable> table);
