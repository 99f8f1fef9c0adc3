// What separates two settings stores, as a sorted list that a program can print. Neighbours: FileObject.h, whose
// GetDifference writes the same down as a store that can be saved and applied; SettingsReport.h, which looks at one text.
#pragma once

#include <string>
#include <vector>

#include "zelbase/platform/ZelBaseApi.h"

class FileObject;

enum class SettingsChangeKind : int {
  Added = 0,    // only the newer store has the item
  Changed = 1,  // the value differs
  Removed = 2,  // only the older store has it
};

struct SettingsChange {
  SettingsChangeKind kind = SettingsChangeKind::Added;
  std::string section;
  std::string key;
  std::string oldValue;  // empty for Added
  std::string newValue;  // empty for Removed

  bool operator==(const SettingsChange&) const = default;
};

// By section, then by key, letters of either case alike; names that differ in case only by their bytes. The store does not
// keep the order of a file, so this is the one that a person finds his way in, and it is the same each time.
using SettingsChanges = std::vector<SettingsChange>;

//   for (const SettingsChange& change : ListSettingsChanges(newer, older))
//     std::cout << change.section << '/' << change.key << ": " << change.oldValue << " -> " << change.newValue << '\n';
//
// What newer.GetDifference(older, ...) finds, each item once and under the true name of its section, dots and all. So what does
// not travel in a difference is not listed: sections that are there on one side only and have no items, the extra
// lines, the section "Checksum", and the "@tr." values that change by themselves. An empty list does therefore not mean that
// newer == older.
//
// The statuses of both stay, and nothing throws. One thread at a time; time and memory grow with the size of the two.
ZELBASE_API SettingsChanges ListSettingsChanges(const FileObject& newer, const FileObject& older);

// What a difference that was saved, edited or sent says: the items of its "add.", "change." and "remove." sections, each
// under the section that FileObject::ApplyDifference would change (of "add.My.Section" that is "My"), with the kind that it is
// given there. `older` is the store that it is meant for and gives the old values; where it has none, an old value is
// empty for Changed, and the one that the difference names for Removed. Added has none, even when `older` has the item.
//
// Several names of a difference may stand for one section ("add.A" and "add.A.x"): then an item may come several times,
// in the order Added, Changed, Removed.
ZELBASE_API SettingsChanges ListDifference(const FileObject& difference, const FileObject& older);
