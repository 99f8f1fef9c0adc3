#include "zelbase/units/UnitDefinition.h"

#include <string_view>

#include "zelbase/frame/KeyTables.h"
#include "zelbase/units/CZelUnitCnv.h"

namespace {

constexpr char kSeparator = ',';

// Items of a value.
constexpr int kFactor = 0;
constexpr int kMnemonic = 1;
constexpr int kDisplayName = 2;
constexpr int kOffset = 3;

}  // namespace

UnitDefinition::UnitDefinition() : m_list(kSeparator) {}

UnitDefinition::~UnitDefinition() = default;

UnitDefinition::UnitDefinition(const UnitDefinition& other) = default;

// Kept: as the base has it, assigning an object to itself empties it.
UnitDefinition& UnitDefinition::operator=(const UnitDefinition& other) = default;

bool UnitDefinition::GetGroupName(int formatCode, std::string& name) const {
  // Kept: angles have a kind, but are formatted without a choice of unit, so that their group is not offered.
  if (formatCode == CZelUnitCnv::FormatAngular) return false;
  const int kind = CZelUnitCnv::ConvertFMTtoUNIT(formatCode);
  if (kind == CZelUnitCnv::NoUnit) return false;
  name = unitsParamKeys[kind];
  return true;
}

// The name of the code's group, when the catalogue has its section.
bool UnitDefinition::FindGroup(int formatCode, std::string& name) const { return GetGroupName(formatCode, name) && HasSection(name); }

bool UnitDefinition::GetGroupNumItems(int formatCode, int& count) const {
  std::string group;
  if (!FindGroup(formatCode, group)) return false;
  count = GetNumItems(group);
  return true;
}

bool UnitDefinition::GetFirstGroupItem(int formatCode, std::string& key, std::string& displayName, double& factor, double& offset,
                                       std::string& mnemonic) {
  m_walk.clear();
  m_nextItem = 0;
  std::string group;
  if (!FindGroup(formatCode, group)) return false;
  std::vector<Entry> entries;
  FobjSection cursor;
  Entry entry;
  for (bool more = GetFirstMapEntry(cursor, group, entry.first, entry.second); more;
       more = GetNextMapEntry(cursor, entry.first, entry.second)) {
    entries.push_back(entry);
  }
  m_walk = std::move(entries);
  return GetNextGroupItem(key, displayName, factor, offset, mnemonic);
}

bool UnitDefinition::GetNextGroupItem(std::string& key, std::string& displayName, double& factor, double& offset, std::string& mnemonic) {
  if (m_nextItem == m_walk.size()) return false;
  const Entry& entry = m_walk[m_nextItem++];
  key = entry.first;
  return Fill(entry, displayName, factor, offset, mnemonic);
}

bool UnitDefinition::GetGroupItemData(int formatCode, const std::string& key, std::string& displayName, double& factor, double& offset,
                                      std::string& mnemonic) const {
  std::string group;
  std::string_view value;
  // Kept: a key with an empty value is there, and fills what it can; so not HasKey, to which it is none.
  if (!GetGroupName(formatCode, group) || !Peek(group, key, value)) return false;
  // A copy, since the key may be one of the outputs.
  return Fill({key, std::string(value)}, displayName, factor, offset, mnemonic);
}

// Writes the outputs from the entry, which none of them is part of. Gives whether the mnemonic was there.
bool UnitDefinition::Fill(const Entry& entry, std::string& displayName, double& factor, double& offset, std::string& mnemonic) const {
  CZelString list(m_list);  // not the member itself, which other threads may be reading
  list.LoadString(entry.second, true);
  list.GetItem(kFactor, factor);
  if (!list.GetItem(kDisplayName, displayName)) displayName = entry.first;
  offset = 0.0;
  list.GetItem(kOffset, offset);
  // Kept: without a mnemonic the result is false although all else is filled.
  return list.GetItem(kMnemonic, mnemonic);
}
