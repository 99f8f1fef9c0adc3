// The fields of a ColorTable, its entries, and the look-up.
#include "zelbase/colour/ColorTable.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace {

constexpr int kBelowAll = -1;  // the place of the low colour and its name

std::size_t Place(int index) { return static_cast<std::size_t>(index); }

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

}  // namespace

// --- Fields --------------------------------------------------------------------------------------------------------

bool ColorTable::HasOpened() const { return m_hasOpened; }

COLORREF ColorTable::LowColor() const { return m_lowColor; }

void ColorTable::SetLowColor(COLORREF color) { m_lowColor = color; }

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

void ColorTable::GetUnderDredgeColorRange(COLORREF& min, COLORREF& max, unsigned int& count) const {
  m_underDredge.Get(min, max, count);
}

void ColorTable::GetInTolColorRange(COLORREF& min, COLORREF& max, unsigned int& count) const {
  m_inTolerance.Get(min, max, count);
}

void ColorTable::GetOverDredgeColorRange(COLORREF& min, COLORREF& max, unsigned int& count) const {
  m_overDredge.Get(min, max, count);
}

void ColorTable::SetUnderDredgeColorRange(COLORREF min, COLORREF max, unsigned int count) {
  m_underDredge = {min, max, count};
}

void ColorTable::SetInTolColorRange(COLORREF min, COLORREF max, unsigned int count) { m_inTolerance = {min, max, count}; }

void ColorTable::SetOverDredgeColorRange(COLORREF min, COLORREF max, unsigned int count) {
  m_overDredge = {min, max, count};
}

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
  return true;
}

int ColorTable::InsertEntry(double value, COLORREF color, bool locked) {
  // Kept: before the first that is not below, so that an equal value goes in front of the one that was there. The walk is
  // not a binary search: values that are not numbers stop it.
  const auto at = std::find_if(m_values.begin(), m_values.end(), [value](double entry) { return !(entry < value); });
  const int index = static_cast<int>(at - m_values.begin());
  m_values.insert(at, value);
  m_colors.insert(m_colors.begin() + Offset(index), color);
  m_locked.insert(m_locked.begin() + Offset(index), locked);
  m_names.insert(m_names.begin() + Offset(index), std::string());
  return index;
}

bool ColorTable::AddEntry(double value, COLORREF color, bool locked, std::string name) {
  // Kept: an equal value is refused here, while InsertEntry takes it.
  if (!m_values.empty() && !(m_values.back() < value)) return false;
  PushEntry(value, color, locked, std::move(name));
  return true;
}

void ColorTable::PushEntry(double value, COLORREF color, bool locked, std::string name) {
  m_values.push_back(value);
  m_colors.push_back(color);
  m_locked.push_back(locked);
  m_names.push_back(std::move(name));
}

void ColorTable::RemoveEntry(int index) {
  if (!HasEntry(index)) return;
  m_values.erase(m_values.begin() + Offset(index));
  m_colors.erase(m_colors.begin() + Offset(index));
  m_locked.erase(m_locked.begin() + Offset(index));
  m_names.erase(m_names.begin() + Offset(index));
}

void ColorTable::RemoveEntries(const std::vector<bool>& dropped) {
  Compact(m_values, dropped);
  Compact(m_colors, dropped);
  Compact(m_locked, dropped);
  Compact(m_names, dropped);
}

void ColorTable::ClearEntries(bool all) {
  // Kept: the low colour goes whether or not locked entries stay.
  m_lowColor = 0;
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
  m_lowColor = LOWCOLOR_DEFAULT;
  m_lowColorName.clear();
  m_hasOpened = false;
}

// --- Look-up -------------------------------------------------------------------------------------------------------

// What GetColor and GetName do alike before they search: the guess tells the end of the table at which `value` lies. The
// guess stays a double until it is known to be an index.
int ColorTable::GuessedIndex(double guess) const {
  const int last = NumEntries() - 1;
  if (!(guess >= 0)) return kBelowAll;
  return guess >= last ? last : static_cast<int>(guess);
}

int ColorTable::ColorIndex(double value) const {
  if (m_values.empty() || value < m_values.front()) return kBelowAll;
  const int last = NumEntries() - 1;
  if (last == 0) return last;
  const double span = m_values.back() - m_values.front();
  const int i = GuessedIndex(span == 0 ? 0 : (value - m_values.front()) * last / span);
  if (i < 0 || i == last) return i;
  return value >= m_values[Place(i + 1)] ? FindColorIndex(value, i + 1, last) : FindColorIndex(value, 0, i);
}

int ColorTable::NameIndex(double value) const {
  if (m_values.empty() || value < m_values.front()) return kBelowAll;
  const int last = NumEntries() - 1;
  if (last == 0) return last;
  // Kept: a span of 0 is not looked for, so that 0 / 0 gives the low colour's name where GetColor gives the last colour.
  const int i = GuessedIndex((value - m_values.front()) * last / (m_values.back() - m_values.front()));
  if (i < 0 || i == last) return i;
  return value >= m_values[Place(i + 1)] ? FindNameIndex(value, i + 1, last) : FindNameIndex(value, 0, i);
}

int ColorTable::FindColorIndex(double value, int low, int high) const {
  if (!HasEntry(low) || !HasEntry(high)) return kBelowAll;
  while (high >= 0) {
    if (m_values[Place(high)] <= value) return high;
    const int mid = low + (high - low) / 2;
    // Kept: an entry equal to `value` that is met here is passed by, and the one before it gives the colour.
    if (m_values[Place(mid)] >= value) {
      if (mid - 1 == high) return kBelowAll;  // would go round for ever, among values that are not numbers
      high = mid - 1;
    } else {
      low = mid;
      --high;
    }
  }
  return kBelowAll;
}

int ColorTable::FindNameIndex(double value, int low, int high) const {
  if (!HasEntry(low) || !HasEntry(high)) return kBelowAll;
  while (high >= 0) {
    if (value >= m_values[Place(high)]) return high;
    const int mid = low + (high - low) / 2;
    // Kept: strictly below, so that a name begins at its value where a colour may not.
    if (value < m_values[Place(mid)]) {
      if (mid - 1 == high) return kBelowAll;  // as above
      high = mid - 1;
    } else {
      low = mid;
      --high;
    }
  }
  return kBelowAll;
}

COLORREF ColorTable::ColorAt(int index) const { return index < 0 ? m_lowColor : m_colors[Place(index)]; }

std::string ColorTable::NameAt(int index) const { return index < 0 ? m_lowColorName : m_names[Place(index)]; }

COLORREF ColorTable::FindColor(double value, int low, int high) const { return ColorAt(FindColorIndex(value, low, high)); }

std::string ColorTable::FindName(double value, int low, int high) const { return NameAt(FindNameIndex(value, low, high)); }

COLORREF ColorTable::GetColor(double value) const { return ColorAt(ColorIndex(value)); }

void ColorTable::GetColors(std::span<const double> values, std::span<COLORREF> colors) const {
  const std::size_t count = std::min(values.size(), colors.size());
  for (std::size_t i = 0; i < count; ++i) colors[i] = GetColor(values[i]);
}

std::string ColorTable::GetName(double value) const { return NameAt(NameIndex(value)); }
