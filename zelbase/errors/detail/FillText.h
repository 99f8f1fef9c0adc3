// Puts arguments into a message text. Internal to the library. The text comes from a file, so it never reaches a formatting
// function of the language.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// `text` with each "%s" replaced by the next of `arguments` and each "%%" by "%", read from the left. Everything else stays
// as it is written, another "%" too. A "%s" without an argument gives nothing, an argument without a "%s" is dropped. The
// arguments are not looked into. Of any length.
ZELBASE_API std::string FillText(std::string_view text, std::initializer_list<std::string_view> arguments);

}  // namespace zelbase::detail
