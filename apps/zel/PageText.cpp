#include "PageText.h"

#include <array>
#include <charconv>
#include <cmath>

#include "SettingsFile.h"

namespace zel {
namespace {

// Four numbers with commas.
bool ReadEdges(const std::string& text, std::array<double, 4>& edges) {
  const char* at = text.data();
  const char* const end = at + text.size();
  for (std::size_t i = 0; i < edges.size(); ++i) {
    if (i > 0 && (at == end || *at++ != ',')) return false;
    const auto result = std::from_chars(at, end, edges[i]);
    if (result.ec != std::errc() || !std::isfinite(edges[i])) return false;
    at = result.ptr;
  }
  return at == end;
}

}  // namespace

bool ReadPage(const std::string& text, Page& page) {
  std::array<double, 4> edges{};
  if (!ReadEdges(text, edges)) {
    Fail("\"" + text + "\" is not a page; four numbers are: left,bottom,right,top");
    return false;
  }
  page.Set(edges[0], edges[1], edges[2], edges[3]);
  page.Normalize();
  return true;
}

}  // namespace zel
