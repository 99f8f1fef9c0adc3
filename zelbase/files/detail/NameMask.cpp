#include "zelbase/files/detail/NameMask.h"

#include <cstddef>

#include "zelbase/frame/detail/Characters.h"

namespace zelbase::detail {

namespace {

bool MatchesOne(char character, char mask) { return mask == '?' || ToLower(character) == ToLower(mask); }

}  // namespace

// Walks along both texts. Where they part, the last "*" takes one character more and the walk goes on behind it; an earlier
// one needs no second look, since the later one can take whatever it would have taken.
bool MatchesMask(std::string_view name, std::string_view mask) {
  if (mask.empty()) return false;
  if (mask == "*.*") return true;  // Kept: also a name without a dot
  constexpr std::size_t kNone = std::string_view::npos;
  std::size_t n = 0;
  std::size_t m = 0;
  std::size_t star = kNone;  // the last "*" met
  std::size_t starEnd = 0;   // where in `name` its characters end
  while (n < name.size()) {
    if (m < mask.size() && mask[m] == '*') {
      star = m++;
      starEnd = n;
    } else if (m < mask.size() && MatchesOne(name[n], mask[m])) {
      ++n;
      ++m;
    } else if (star != kNone) {
      m = star + 1;
      n = ++starEnd;
    } else {
      return false;
    }
  }
  return mask.find_first_not_of('*', m) == kNone;
}

}  // namespace zelbase::detail
