// The text form that the points share. Internal to the library.
#pragma once

#include <string>
#include <string_view>

namespace zelbase::detail {

// `front` and then "%f, %f, %f".
std::string ComponentText(std::string_view front, double x, double y, double z);

}  // namespace zelbase::detail
