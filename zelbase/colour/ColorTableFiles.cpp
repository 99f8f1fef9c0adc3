// A ColorTable from and into a settings text.
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "zelbase/colour/ColorTable.h"
#include "zelbase/config/FileObject.h"
#include "zelbase/frame/detail/NumberText.h"

namespace {

constexpr char kValues[] = "Values";
constexpr char kColors[] = "Colors";
constexpr char kLocks[] = "Locks";
constexpr char kNames[] = "Names";
constexpr char kLowColor[] = "ALowColor";
constexpr char kDredgeDiff[] = "DredgeDiff";

std::string KeyOf(int index) {
  std::string key;
  zelbase::detail::AppendInt(key, index);
  return key;
}

// "red, green, blue"
std::string ColorText(COLORREF color) {
  std::string text;
  for (unsigned int shift = 0; shift <= 16; shift += 8) {
    if (shift != 0) text += ", ";
    zelbase::detail::AppendUnsigned(text, color >> shift & 0xFF);
  }
  return text;
}

// "%d, %d, %d": each comma at once behind its number. False when there are not three numbers.
bool ScanColor(std::string_view text, COLORREF& color) {
  COLORREF scanned = 0;
  for (unsigned int shift = 0; shift <= 16; shift += 8) {
    if (shift != 0) {
      if (!text.starts_with(',')) return false;
      text.remove_prefix(1);
    }
    int channel = 0;
    const std::size_t taken = zelbase::detail::ScanInt(text, channel);
    if (taken == 0) return false;
    text.remove_prefix(taken);
    // Kept: each number gives its low byte, so that "300, -1, 511" is 44, 255, 255.
    scanned |= (static_cast<COLORREF>(channel) & 0xFF) << shift;
  }
  color = scanned;
  return true;
}

// GetItem of any type, without what it throws under ThrowExceptions: false instead. An item that is not there is looked
// for first, since every list ends in one.
template <class Value>
bool Read(const FileObject& settings, const std::string& section, const std::string& key, Value& value) {
  if (!settings.HasKey(section, key)) return false;
  try {
    return settings.GetItem(section, key, value);
  } catch (const std::string&) {
    return false;  // a text that does not parse
  }
}

// The string item and not the colour item, which adds unmasked numbers. Black on failure.
bool ReadColor(const FileObject& settings, const std::string& section, const std::string& key, COLORREF& color) {
  color = 0;
  std::string text;
  return Read(settings, section, key, text) && ScanColor(text, color);
}

bool WriteColor(FileObject& settings, const std::string& section, const std::string& key, COLORREF color) {
  return settings.SetItem(section, key, ColorText(color), true);
}

}  // namespace

bool ColorTable::FileOpen(const FileObject& settings) {
  ClearEntries(true);
  COLORREF lowColor = 0;
  ReadColor(settings, kColors, kLowColor, lowColor);
  SetLowColor(lowColor);
  // Kept: the name of an earlier file stays when this one has none; an empty one counts as none.
  Read(settings, kNames, kLowColor, m_lowColorName);
  // Kept: the entries read so far stay, and nothing below is done.
  if (!OpenEntries(settings)) return false;
  m_isDredgeDiff = settings.HasSection(kDredgeDiff);
  if (m_isDredgeDiff) OpenDredgeDiff(settings);
  m_hasOpened = true;
  return true;
}

bool ColorTable::OpenEntries(const FileObject& settings) {
  double value = 0;
  std::string key = KeyOf(0);
  for (int i = 0; Read(settings, kValues, key, value); key = KeyOf(++i)) {
    COLORREF color = 0;
    if (!ReadColor(settings, kColors, key, color)) return false;
    bool locked = false;
    Read(settings, kLocks, key, locked);
    std::string name;
    Read(settings, kNames, key, name);
    // Kept: a value that is not above the one before is dropped without a word.
    AddEntry(value, color, locked, std::move(name));
  }
  return true;
}

// A colour that is missing is black; a number, a limit or the flag stays as it was.
void ColorTable::OpenDredgeDiff(const FileObject& settings) {
  ReadColor(settings, kDredgeDiff, "MaxUnderDredgeColor", m_underDredge.maxColor);
  ReadColor(settings, kDredgeDiff, "MinUnderDredgeColor", m_underDredge.minColor);
  ReadColor(settings, kDredgeDiff, "MaxInToleranceColor", m_inTolerance.maxColor);
  ReadColor(settings, kDredgeDiff, "MinInToleranceColor", m_inTolerance.minColor);
  ReadColor(settings, kDredgeDiff, "MaxOverDredgeColor", m_overDredge.maxColor);
  ReadColor(settings, kDredgeDiff, "MinOverDredgeColor", m_overDredge.minColor);
  Read(settings, kDredgeDiff, "NumColorsUnderDredge", m_underDredge.numColors);
  Read(settings, kDredgeDiff, "NumColorsInTolerance", m_inTolerance.numColors);
  Read(settings, kDredgeDiff, "NumColorsOverDredge", m_overDredge.numColors);
  Read(settings, kDredgeDiff, "UnderDredgeLimit", m_underDredgeLimit);
  Read(settings, kDredgeDiff, "OverDredgeLimit", m_overDredgeLimit);
  Read(settings, kDredgeDiff, "SyncWithDesign", m_syncWithDesign);
}

bool ColorTable::FileSave(FileObject& settings) const {
  if (!WriteColor(settings, kColors, kLowColor, m_lowColor)) return false;
  if (!settings.SetItem(kNames, kLowColor, m_lowColorName, true)) return false;
  // Kept: no section is emptied first, so that the rows of an older, longer table stay.
  for (int i = 0; i < NumEntries(); ++i) {
    if (!SaveEntry(settings, i)) return false;
  }
  if (m_isDredgeDiff) SaveDredgeDiff(settings);
  m_hasOpened = true;  // Kept: saving makes the table an opened one, constant or not
  return true;
}

bool ColorTable::SaveEntry(FileObject& settings, int index) const {
  const std::string key = KeyOf(index);
  return settings.SetItem(kValues, key, EntryValue(index), true) && WriteColor(settings, kColors, key, EntryColor(index)) &&
         settings.SetItem(kLocks, key, EntryLocked(index), true) && settings.SetItem(kNames, key, EntryName(index), true);
}

void ColorTable::SaveDredgeDiff(FileObject& settings) const {
  settings.CreateSection(kDredgeDiff, false);
  WriteColor(settings, kDredgeDiff, "MaxUnderDredgeColor", m_underDredge.maxColor);
  WriteColor(settings, kDredgeDiff, "MinUnderDredgeColor", m_underDredge.minColor);
  WriteColor(settings, kDredgeDiff, "MaxInToleranceColor", m_inTolerance.maxColor);
  WriteColor(settings, kDredgeDiff, "MinInToleranceColor", m_inTolerance.minColor);
  WriteColor(settings, kDredgeDiff, "MaxOverDredgeColor", m_overDredge.maxColor);
  WriteColor(settings, kDredgeDiff, "MinOverDredgeColor", m_overDredge.minColor);
  settings.SetItem(kDredgeDiff, "NumColorsUnderDredge", m_underDredge.numColors, true);
  settings.SetItem(kDredgeDiff, "NumColorsInTolerance", m_inTolerance.numColors, true);
  settings.SetItem(kDredgeDiff, "NumColorsOverDredge", m_overDredge.numColors, true);
  settings.SetItem(kDredgeDiff, "UnderDredgeLimit", m_underDredgeLimit, true);
  settings.SetItem(kDredgeDiff, "OverDredgeLimit", m_overDredgeLimit, true);
  settings.SetItem(kDredgeDiff, "SyncWithDesign", m_syncWithDesign, true);
}
