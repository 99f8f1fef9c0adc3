// The hash of names and keys in the settings store. Internal to the library.
//
// A settings file may come from anybody, so the hash is seeded anew in each process: keys that all fall into one place
// cannot be prepared beforehand. Nothing that leaves the process depends on a hash value, not even an order.
#pragma once

#include <cstdint>
#include <string_view>

namespace zelbase::detail {

std::uint32_t HashText(std::string_view text) noexcept;

}  // namespace zelbase::detail
