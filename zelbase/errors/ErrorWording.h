// The door through which errors ask for the wording of their messages: whoever keeps a file of wordings stands behind it.
// Neighbour: NumberedTexts.h has the texts that serve when nobody does.
#pragma once

#include <memory>
#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// Wordings by section and key. Errors lie below the settings store, which reports them; so the wording that comes from a
// settings file is reached through this interface and never by name.
class ZELBASE_API ErrorWording {
 public:
  virtual ~ErrorWording() = default;

  // The wording of `key` in `section`; a "%s" in it is the place of an argument. False, `text` untouched, when there is
  // none; an empty wording that was found is true, and the message is then empty. Called from any thread, also from several
  // at once.
  virtual bool Get(const std::string& section, const std::string& key, std::string& text) const = 0;

  // Asks the installed wording. False, `text` untouched, when none is installed or it does not know. Any thread, any time.
  static bool Find(const std::string& section, const std::string& key, std::string& text);

  // Puts `wording` behind the door and returns what stood there; null for none, as at the start. It is shared: a look-up
  // under way keeps it alive.
  static std::shared_ptr<const ErrorWording> Install(std::shared_ptr<const ErrorWording> wording);
};
