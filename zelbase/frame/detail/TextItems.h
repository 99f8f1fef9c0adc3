// What the two list types, CZelString and FormatString, share: joining and searching a sequence of texts. Internal to the
// library.
#pragma once

#include <string>
#include <vector>

#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

using TextItems = std::vector<std::string>;

// The items with the separator between them; empty for no items.
ZELBASE_API std::string JoinItems(const TextItems& items, char separator);

// The first or last `count` items, each followed by the separator. Empty for a count below 1; all items for one too large.
ZELBASE_API std::string LeftItems(const TextItems& items, char separator, int count);
ZELBASE_API std::string RightItems(const TextItems& items, char separator, int count);

// The index of the first item equal to `text`, letters of either case alike; -1 when there is none.
ZELBASE_API int FindItem(const TextItems& items, const std::string& text);

// What an index out of range refers to: an empty text that belongs to no list, emptied again by the calling thread's next
// call.
ZELBASE_API std::string& NoItem();

}  // namespace zelbase::detail
