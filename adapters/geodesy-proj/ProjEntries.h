// Lists of what PROJ's database holds of one type. Neighbours: ProjDatabase.cpp and ProjStaticData.cpp, which make theirs with it;
// ProjContext.h below.
#pragma once

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/geodesy-proj/ProjContext.h"
#include "zelbase/geodesy/GeoDatabase.h"

namespace zelbase::detail {

// In the order of lists.
template <class Entry>
void SortEntries(std::vector<Entry>& entries) {
  std::stable_sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return IsCodeBefore(a.code, b.code); });
}

// Whether it is the earth's, or anybody's: the database knows the moon and the planets, too.
inline bool IsOfEarth(const ProjContext& context, const PJ* object) {
  const char* const body = proj_get_celestial_body_name(context.Get(), object);
  return body == nullptr || std::string_view(body) == "Earth";
}

// Every object of a type, of every authority, sorted. `fill` completes an entry from its object; one that it refuses is left out.
template <class Entry, class Fill>
std::vector<Entry> EntriesOf(const ProjContext& context, PJ_TYPE type, PJ_CATEGORY category, Fill fill) {
  std::vector<Entry> entries;
  for (const std::string& authority : AuthoritiesOf(context)) {
    const std::vector<std::string> present = CodesOf(context, authority, type, false);
    const std::set<std::string> current(present.begin(), present.end());
    for (const std::string& code : CodesOf(context, authority, type, true)) {
      const PjPointer object(proj_create_from_database(context.Get(), authority.c_str(), code.c_str(), category, 0, nullptr));
      if (object == nullptr || !IsOfEarth(context, object.get())) continue;
      Entry entry;
      entry.code = FromProj((authority + ":" + code).c_str());
      entry.name = FromProj(proj_get_name(object.get()));
      entry.deprecated = !current.contains(code);
      if (fill(object.get(), entry)) entries.push_back(std::move(entry));
    }
  }
  SortEntries(entries);
  return entries;
}

}  // namespace zelbase::detail
