#include "zelbase/geometry/detail/ComponentText.h"

#include "zelbase/frame/detail/NumberText.h"

namespace zelbase::detail {

namespace {

constexpr int kDecimals = 6;

}  // namespace

std::string ComponentText(std::string_view front, double x, double y, double z) {
  std::string text(front);
  AppendFixed(text, x, kDecimals);
  text += ", ";
  AppendFixed(text, y, kDecimals);
  text += ", ";
  AppendFixed(text, z, kDecimals);
  return text;
}

}  // namespace zelbase::detail
