// The fields of a ColorTable and its entries.
#include "zelbase/colour/ColorTable.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace {

std::ptrdiff_t Offset(int index) { return static_cast<std::ptrdiff_t>(index); }

// Moves what stays to the front, in order, and cuts the rest off.
template <class Vector>
void Compact(Vector& items, const std::vector<bool>& dropped) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (dropped[i]) continue;
    if (kept != i) items[kept] = std::move(items[i]);
    ++kept;
  }
  items.resize(kept);
}

// So that an entry comes into all four lists or, without memory, into none.
template <class List>
void MakeRoom(List& list) {
  if (list.size() == list.capacity()) list.reserve(2 * list.size() + 8);
}

}  // namespace

// --- Fields --------------------------------------------------------------------------------------------------------

bool ColorTable::HasOpened() const { return m_hasOpened; }

COLORREF ColorTable::LowColor() const { return m_lowColor; }

void ColorTable::SetLowColor(COLORREF color) {
  m_lowColor = color;
  m_lookup.Forget();
}

std::string ColorTable::LowColorName() const { return m_lowColorName; }

void ColorTable::SetLowColorName(std::string name) { m_lowColorName = std::move(name); }

bool ColorTable::HasDredgeDiffSection() const { return m_isDredgeDiff; }

void ColorTable::SetDredgeDiffColTab(bool isDredgeDiff) { m_isDredgeDiff = isDredgeDiff; }

void ColorTable::GetUnderDredgeLimit(double& limit) const { limit = m_underDredgeLimit; }

void ColorTable::GetOverDredgeLimit(double& limit) const { limit = m_overDredgeLimit; }

void ColorTable::SetUnderDredgeLimit(double limit) { m_underDredgeLimit = limit; }

void ColorTable::SetOverDredgeLimit(double limit) { m_overDredgeLimit = limit; }

void ColorTable::GetSyncWithDesignModel(bool& sync) const { sync = m_syncWithDesign; }

void ColorTable::SetSyncWithDesignModel(bool sync) { m_syncWithDesign = sync; }

void ColorTable::DredgeBand::Get(COLORREF& min, COLORREF& max, unsigned int& count) const {
  min = minColor;
  max = maxColor;
  count = numColors;
}

void ColorTable::GetUnderDredgeColorRange(COLORREF& min, COLORREF& max, unsigned int& count) const { m_underDredge.Get(min, max, count); }

void ColorTable::GetInTolColorRange(COLORREF& min, COLORREF& max, unsigned int& count) const { m_inTolerance.Get(min, max, count); }

void ColorTable::GetOverDredgeColorRange(COLORREF& min, COLORREF& max, unsigned int& count) const { m_overDredge.Get(min, max, count); }

void ColorTable::SetUnderDredgeColorRange(COLORREF min, COLORREF max, unsigned int count) { m_underDredge = {min, max, count}; }

void ColorTable::SetInTolColorRange(COLORREF min, COLORREF max, unsigned int count) { m_inTolerance = {min, max, count}; }

void ColorTable::SetOverDredgeColorRange(COLORREF min, COLORREF max, unsigned int count) { m_overDredge = {min, max, count}; }

// --- Entries -------------------------------------------------------------------------------------------------------

int ColorTable::NumEntries() const { return static_cast<int>(m_values.size()); }

bool ColorTable::HasEntry(int index) const { return index >= 0 && index < NumEntries(); }

double ColorTable::EntryValue(int index) const { return HasEntry(index) ? m_values[Place(index)] : 0.0; }

COLORREF ColorTable::EntryColor(int index) const { return HasEntry(index) ? m_colors[Place(index)] : 0; }

std::string ColorTable::EntryName(int index) const { return HasEntry(index) ? m_names[Place(index)] : std::string(); }

bool ColorTable::EntryLocked(int index) const { return HasEntry(index) && m_locked[Place(index)]; }

int ColorTable::NumLocked() const { return static_cast<int>(std::count(m_locked.begin(), m_locked.end(), true)); }

bool ColorTable::SetEntryColor(int index, COLORREF color) {
  if (!HasEntry(index)) return false;
  m_colors[Place(index)] = color;
  m_lookup.Forget();
  return true;
}

bool ColorTable::SetEntryName(int index, std::string name) {
  if (!HasEntry(index)) return false;
  m_names[Place(index)] = std::move(name);
  return true;
}

bool ColorTable::SetEntryValue(int index, double value) {
  if (!HasEntry(index)) return false;
  if (HasEntry(index - 1) && m_values[Place(index - 1)] >= value) return false;
  if (HasEntry(index + 1) && m_values[Place(index + 1)] <= value) return false;
  m_values[Place(index)] = value;
  m_lookup.Forget();
  return true;
}

int ColorTable::InsertEntry(double value, COLORREF color, bool locked) {
  // Kept: before the first that is not below, so that an equal value goes in front of the one that was there. The walk
  // is not a binary search: values that are not numbers stop it.
  const auto at = std::find_if(m_values.begin(), m_values.end(), [value](double entry) { return !(entry < value); });
  const int index = static_cast<int>(at - m_values.begin());
  MakeRoom(m_colors);
  MakeRoom(m_locked);
  MakeRoom(m_names);
  m_values.insert(at, value);
  m_colors.insert(m_colors.begin() + Offset(index), color);
  m_locked.insert(m_locked.begin() + Offset(index), locked);
  m_names.insert(m_names.begin() + Offset(index), std::string());
  m_lookup.Forget();
  return index;
}

bool ColorTable::AddEntry(double value, COLORREF color, bool locked, std::string name) {
  // Kept: an equal value is refused here, while InsertEntry takes it.
  if (!m_values.empty() && !(m_values.back() < value)) return false;
  PushEntry(value, color, locked, std::move(name));
  return true;
}

void ColorTable::PushEntry(double value, COLORREF color, bool locked, std::string name) {
  MakeRoom(m_colors);
  MakeRoom(m_locked);
  MakeRoom(m_names);
  m_values.push_back(value);
  m_colors.push_back(color);
  m_locked.push_back(locked);
  m_names.push_back(std::move(name));
  m_lookup.Forget();
}

void ColorTable::RemoveEntry(int index) {
  if (!HasEntry(index)) return;
  m_values.erase(m_values.begin() + Offset(index));
  m_colors.erase(m_colors.begin() + Offset(index));
  m_locked.erase(m_locked.begin() + Offset(index));
  m_names.erase(m_names.begin() + Offset(index));
  m_lookup.Forget();
}

void ColorTable::RemoveEntries(const std::vector<bool>& dropped) {
  Compact(m_values, dropped);
  Compact(m_colors, dropped);
  Compact(m_locked, dropped);
  Compact(m_names, dropped);
  m_lookup.Forget();
}

void ColorTable::ClearEntries(bool all) {
  // Kept: the low colour goes whether or not locked entries stay.
  SetLowColor(0);
  std::vector<bool> dropped(m_values.size(), true);
  if (!all) {
    dropped = m_locked;
    dropped.flip();
  }
  RemoveEntries(dropped);
}

void ColorTable::Clear() {
  // Kept: colours, limits and flag of dredging stay.
  ClearEntries(true);
  SetLowColor(LOWCOLOR_DEFAULT);
  m_lowColorName.clear();
  m_hasOpened = false;
}
