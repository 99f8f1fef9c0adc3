#include "zelbase/geometry/Page.h"

#include "zelbase/frame/detail/NumberText.h"

std::string Page::ToString() const {
  constexpr int kDecimals = 6;
  std::string text;
  zelbase::detail::AppendFixed(text, left, kDecimals);
  text += ", ";
  zelbase::detail::AppendFixed(text, bottom, kDecimals);
  text += '\n';
  zelbase::detail::AppendFixed(text, right, kDecimals);
  text += ", ";
  zelbase::detail::AppendFixed(text, top, kDecimals);
  return text;
}
