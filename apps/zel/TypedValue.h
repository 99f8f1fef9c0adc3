// What a settings value reads as, by the store's own typed access.
#pragma once

#include <string>

#include "zelbase/config/FileObject.h"

namespace zel {

// The types that "zel settings get --type" knows, in the order of its help.
extern const char* const kValueTypes[];
extern const int kValueTypeCount;

// The item read by the store as `type`, printed. False when the item is missing or does not parse; the store's status tells
// which.
bool ReadAs(const FileObject& store, const std::string& section, const std::string& key, const std::string& type, std::string& text);

// The narrowest type that the whole of `value` is written in: "integer", "number", "colour" or "text".
std::string GuessType(const std::string& value);

}  // namespace zel
