#include "zelbase/config/SettingsDifference.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "zelbase/config/FileObject.h"
#include "zelbase/config/detail/DifferenceNames.h"
#include "zelbase/frame/detail/Characters.h"

using zelbase::detail::DifferenceKind;
using zelbase::detail::DifferenceName;
using Kind = SettingsChangeKind;

namespace {

// Below 0, 0 or above 0, letters of either case alike.
int CompareWithoutCase(std::string_view a, std::string_view b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    const auto x = static_cast<unsigned char>(zelbase::detail::ToLower(a[i]));
    const auto y = static_cast<unsigned char>(zelbase::detail::ToLower(b[i]));
    if (x != y) return x < y ? -1 : 1;
  }
  return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

bool ComesBefore(const SettingsChange& a, const SettingsChange& b) {
  if (const int order = CompareWithoutCase(a.section, b.section)) return order < 0;
  if (a.section != b.section) return a.section < b.section;
  if (const int order = CompareWithoutCase(a.key, b.key)) return order < 0;
  return std::tie(a.key, a.kind, a.oldValue, a.newValue) < std::tie(b.key, b.kind, b.oldValue, b.newValue);
}

Kind KindOf(DifferenceKind kind) {
  if (kind == DifferenceKind::Add) return Kind::Added;
  return kind == DifferenceKind::Change ? Kind::Changed : Kind::Removed;
}

SettingsChange MakeChange(Kind kind, std::string section, const std::string& key, const std::string& value) {
  SettingsChange change{kind, std::move(section), key, {}, {}};
  (kind == Kind::Removed ? change.oldValue : change.newValue) = value;
  return change;
}

// Notes the operations that are written into it, each with the section that it was written for: the name of a section of a
// finished difference does not always tell that.
class NotedDifference : public FileObject {
 public:
  bool SetItem(const std::string& section, const std::string& key, const std::string& value, bool) override {
    const std::size_t dot = section.find('.');
    changes.push_back(MakeChange(KindOf(DifferenceName(section).kind), section.substr(dot + 1), key, value));
    return true;
  }

  SettingsChanges changes;
};

// Sorts the list and fills in the old values.
SettingsChanges Finish(SettingsChanges changes, const FileObject& older) {
  std::sort(changes.begin(), changes.end(), ComesBefore);
  std::string_view value;
  for (SettingsChange& change : changes) {
    if (change.kind != Kind::Added && older.Peek(change.section, change.key, value)) change.oldValue = value;
  }
  return changes;
}

}  // namespace

SettingsChanges ListSettingsChanges(const FileObject& newer, const FileObject& older) {
  NotedDifference difference;
  newer.GetDifference(older, difference);
  return Finish(std::move(difference.changes), older);
}

SettingsChanges ListDifference(const FileObject& difference, const FileObject& older) {
  SettingsChanges changes;
  FobjSection cursor;
  std::string section;
  for (bool more = difference.GetFirstSectionEntry(cursor, section); more; more = difference.GetNextSectionEntry(cursor, section)) {
    const DifferenceName operation(section);
    if (operation.kind == DifferenceKind::None) continue;
    std::string key;
    std::string value;
    for (bool item = difference.GetFirstMapEntry(cursor, section, key, value); item;
         item = difference.GetNextMapEntry(cursor, key, value)) {
      changes.push_back(MakeChange(KindOf(operation.kind), std::string(operation.target), key, value));
    }
  }
  return Finish(std::move(changes), older);
}
