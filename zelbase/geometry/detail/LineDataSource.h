// How a line that shows another one holds it. Internal to the library.
#pragma once

#include <memory>

#include "zelbase/geometry/LineData.h"

namespace zelbase::detail {

// Copies share `source`. When it is owned, the last copy destroys it; otherwise nobody does.
inline std::shared_ptr<LineData> HoldSource(LineData* source, bool ownsSource) {
  if (ownsSource) return std::shared_ptr<LineData>(source);
  return std::shared_ptr<LineData>(source, [](LineData*) {});
}

}  // namespace zelbase::detail
