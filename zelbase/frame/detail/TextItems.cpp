#include "zelbase/frame/detail/TextItems.h"

#include <algorithm>
#include <cstddef>

#include "zelbase/frame/StringCompare.h"
#include "zelbase/platform/detail/ThreadSpare.h"

namespace zelbase::detail {
namespace {

std::size_t Within(int count, const TextItems& items) { return count < 0 ? 0 : std::min(static_cast<std::size_t>(count), items.size()); }

// Items of a range that is inside the list, each followed by the separator.
std::string Parts(const TextItems& items, char separator, std::size_t first, std::size_t count) {
  std::size_t length = count;
  for (std::size_t i = first; i < first + count; ++i) length += items[i].size();
  std::string text;
  text.reserve(length);
  for (std::size_t i = first; i < first + count; ++i) {
    text += items[i];
    text += separator;
  }
  return text;
}

}  // namespace

std::string JoinItems(const TextItems& items, char separator) {
  std::string text = Parts(items, separator, 0, items.size());
  if (!text.empty()) text.pop_back();
  return text;
}

std::string LeftItems(const TextItems& items, char separator, int count) { return Parts(items, separator, 0, Within(count, items)); }

std::string RightItems(const TextItems& items, char separator, int count) {
  const std::size_t parts = Within(count, items);
  return Parts(items, separator, items.size() - parts, parts);
}

int FindItem(const TextItems& items, const std::string& text) {
  const auto found = std::find_if(items.begin(), items.end(), [&](const std::string& item) { return icompare(item, text); });
  return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

std::string& NoItem() {
  std::string& none = ThreadSpare<std::string>();
  none.clear();
  return none;
}

}  // namespace zelbase::detail
