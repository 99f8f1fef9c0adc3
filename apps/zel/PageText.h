// A page as people type it.
#pragma once

#include <string>

#include "zelbase/geometry/Page.h"

namespace zel {

// "left,bottom,right,top", in any order of the edges. False, told on standard error, when it is not four numbers.
bool ReadPage(const std::string& text, Page& page);

}  // namespace zel
