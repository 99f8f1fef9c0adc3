#include "zelbase/geometry/StatusPoint.h"

#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/geometry/detail/ComponentText.h"

std::string StatusPoint::ToString() const {
  std::string text = zelbase::detail::ComponentText("point: ", x, y, z) + ", status: ";
  zelbase::detail::AppendUnsigned(text, status);
  return text;
}
