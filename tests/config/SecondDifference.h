// Comparison, difference and merge of settings once more, slow and plain, to judge the store: for tests and fuzzing only.
// Neighbour: SecondSettingsReader.h.
#pragma once

#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "tests/config/SettingsTestHelp.h"

namespace second {

// A store as a list, in the order in which the library delivers it: that order is free, and where two writes meet in one place
// it decides.
using Pairs = std::vector<std::pair<std::string, std::string>>;
using Listing = std::vector<std::pair<std::string, Pairs>>;

inline Listing ListingOf(const FileObject& settings) {
  Listing listing;
  for (const std::string& name : SectionNames(settings)) {
    Pairs pairs;
    FobjSection cursor;
    std::string key;
    std::string value;
    for (bool more = settings.GetFirstMapEntry(cursor, name, key, value); more; more = settings.GetNextMapEntry(cursor, key, value)) {
      pairs.emplace_back(key, value);
    }
    listing.emplace_back(name, pairs);
  }
  return listing;
}

inline std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == separator) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  for (std::string& part : parts) {
    const std::string white = " \t\n\v\f\r";
    const std::size_t first = part.find_first_not_of(white);
    part = first == std::string::npos ? "" : part.substr(first, part.find_last_not_of(white) - first + 1);
  }
  return parts;
}

// Whether a changed "@tr." value is passed over. Whole numbers wrap around at 2^32.
inline bool PassedOver(const std::string& key, const std::string& value) {
  if (key.substr(0, 4) != "@tr.") return false;
  std::string front = Split(value, ',')[0];
  bool negative = false;
  if (!front.empty() && (front[0] == '-' || front[0] == '+')) {
    negative = front[0] == '-';
    front = front.substr(1);
  }
  unsigned int number = 0;
  std::size_t digits = 0;
  for (; digits < front.size() && std::string("0123456789").find(front[digits]) != std::string::npos; ++digits) {
    number = number * 10U + static_cast<unsigned int>(front[digits] - '0');
  }
  if (digits == 0) return false;
  if (negative) number = 0U - number;
  return number / 8192U % 2U == 1U;
}

// `difference` is added to.
inline void GetDifference(const Listing& newer, const Listing& older, Picture& difference) {
  Picture newerItems;
  Picture olderItems;
  for (const auto& [name, pairs] : newer) newerItems[name] = Items(pairs.begin(), pairs.end());
  for (const auto& [name, pairs] : older) olderItems[name] = Items(pairs.begin(), pairs.end());
  for (const auto& [name, pairs] : newer) {
    difference[name];
    for (const auto& [key, value] : pairs) difference[name][key] = value;
    for (const auto& [key, value] : pairs) {
      if (olderItems.count(name) == 0 || olderItems[name].count(key) == 0) {
        difference["add." + name][key] = value;
      } else if (olderItems[name][key] != value && !PassedOver(key, value)) {
        difference["change." + name][key] = value;
      }
    }
    for (const auto& [key, value] : olderItems.count(name) == 0 ? Items() : olderItems[name]) {
      if (newerItems[name].count(key) == 0) difference["remove." + name][key] = value;
    }
  }
  for (const auto& [name, pairs] : older) {
    if (newerItems.count(name) != 0) continue;
    for (const auto& [key, value] : pairs) difference["remove." + name][key] = value;
  }
}

inline bool ApplyDifference(Picture& target, const Listing& difference) {
  for (const auto& [name, pairs] : difference) {
    const std::vector<std::string> parts = Split(name, '.');
    if (parts.size() < 2) continue;
    for (const auto& [key, value] : pairs) {
      if (parts[0] == "add" || parts[0] == "change") target[parts[1]][key] = value;
      if (parts[0] != "remove") continue;
      if (target.count(parts[1]) == 0 || target[parts[1]].erase(key) == 0) return false;
      if (target[parts[1]].empty()) target.erase(parts[1]);
    }
  }
  return true;
}

inline int CountOperations(const Listing& difference) {
  int count = 0;
  for (const auto& [name, pairs] : difference) {
    const std::vector<std::string> parts = Split(name, '.');
    if (parts.size() < 2 || (parts[0] != "add" && parts[0] != "change" && parts[0] != "remove")) continue;
    count += static_cast<int>(pairs.size());
  }
  return count;
}

inline bool Equal(const FileObject& a, const FileObject& b) {
  const auto& linesA = a.GetExtraInfo();
  const auto& linesB = b.GetExtraInfo();
  if (linesA.size() != linesB.size()) return false;
  for (std::size_t i = 1; i < linesA.size(); ++i) {
    if (linesA[i - 1] != linesB[i - 1]) return false;
  }
  const Picture pictureA = PictureOf(a);
  const Picture pictureB = PictureOf(b);
  if (pictureA.size() != pictureB.size()) return false;
  for (const auto& [name, items] : pictureA) {
    if (name != "Checksum" && (pictureB.count(name) == 0 || pictureB.at(name) != items)) return false;
  }
  return true;
}

// Whether a difference of the two is promised to travel whole: nothing in them that a difference does not carry.
inline bool TravelsWhole(const FileObject& newer, const FileObject& older) {
  if (newer.HasSection("Checksum") != older.HasSection("Checksum")) return false;
  for (const FileObject* settings : {&newer, &older}) {
    for (const auto& [name, pairs] : ListingOf(*settings)) {
      if (pairs.empty() || Split(name, '.') != std::vector<std::string>{name}) return false;
      for (const auto& [key, value] : pairs) {
        if (key.substr(0, 4) == "@tr.") return false;
      }
    }
  }
  return true;
}

}  // namespace second
