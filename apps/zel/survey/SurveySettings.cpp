#include "survey/SurveySettings.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <map>
#include <set>
#include <string_view>

#include "TextEdge.h"
#include "survey/SurveyFaults.h"

namespace zel {
namespace {

namespace fs = std::filesystem;

constexpr long long kMostSettingsBytes = 16LL << 20;
constexpr std::size_t kMostUnknown = 20;  // items that are reported one by one

const std::map<std::string, std::set<std::string>>& KnownItems() {
  static const std::map<std::string, std::set<std::string>> items = {
      {"Survey", {"Title", "Client", "Vessel", "Date", "Datum", "Common"}},
      {"Soundings", {"File", "Pings", "Without tide"}},
      {"Tide", {"File", "Longest step"}},
      {"Area", {"Work area", "Land"}},
      {"Colours", {"Depth", "Difference"}},
      {"Design", {"Line", "Width", "Slope", "Slope width", "Over-depth", "Over-depth is vertical"}},
      {"Section", {"Step", "Corridor"}},
      {"Volumes", {"Cell"}},
      {"Track", {"File", "Time origin", "Dynamics", "Gate", "Gap", "Heading offset", "Scale error"}},
      {"Vessel", {"Contour", "Heading"}},
      {"Map", {"Rotation"}},
      {"Coordinates", {"Form", "Decimals", "System"}},
      {"Units", {"Catalogue", "Depth", "Distance", "Volume", "Depth decimals"}},
  };
  return items;
}

// "File" of "File(2)".
std::string WithoutNumber(const std::string& key) {
  const std::size_t open = key.find('(');
  const bool numbered = open != std::string::npos && key.back() == ')' && key.size() > open + 2 &&
                        key.find_first_not_of("0123456789", open + 1) == key.size() - 1;
  return numbered ? key.substr(0, open) : key;
}

bool SameLetters(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [lower](char x, char y) { return lower(x) == lower(y); });
}

std::string ShortNumber(double value) {
  char text[40];
  return std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
}

bool IsData(const std::string& path, long long mostBytes) {
  std::error_code failed;
  if (!fs::is_regular_file(path, failed)) return false;
  const std::uintmax_t size = fs::file_size(path, failed);
  return !failed && size <= static_cast<std::uintmax_t>(mostBytes);
}

}  // namespace

bool SurveySettings::Open(const std::string& folder, const std::string& name) {
  m_folder = folder;
  m_file.store.SetErrorContext("Survey");
  const std::string path = (fs::path(folder) / name).string();
  std::string reason;
  if (IsData(path, kMostSettingsBytes) && m_file.Open(path, reason)) {
    if (ReadBytes(path).starts_with("\xEF\xBB\xBF[")) {
      ReportFault("Survey", "three bytes that mark UTF-8 stand before the first section, which is not read so: save without them", path);
    }
    CheckNames();
    return true;
  }
  m_file.path = path;
  ReportFile("Survey", path, FileError::Open);
  return false;
}

void SurveySettings::CheckNames() const {
  std::size_t unknown = 0;
  const auto refuse = [&unknown, this](const std::string& section, const std::string& text) {
    if (++unknown <= kMostUnknown) ReportFault("Survey", text, Path() + ", [" + section + "]");
  };
  for (const std::string& section : SectionNames(m_file.store)) {
    const auto known = KnownItems().find(section);
    if (known == KnownItems().end()) {
      refuse(section, "no survey has a section \"" + section + "\"");
      continue;
    }
    for (const SettingsItem& item : Items(m_file.store, section)) {
      if (!known->second.contains(WithoutNumber(item.key))) {
        refuse(section, "section \"" + section + "\" has no item \"" + item.key + "\"");
      }
    }
  }
  if (unknown > kMostUnknown) ReportFault("Survey", "and " + std::to_string(unknown - kMostUnknown) + " more such items", Path());
}

void SurveySettings::Refuse(const std::string& section, const std::string& key, const std::string& why) const {
  ReportFault(section, "\"" + key + "\" " + why, Path() + ", [" + section + "]");
}

std::string SurveySettings::Text(const std::string& section, const std::string& key, const std::string& fallback) const {
  std::string_view value;
  if (!m_file.store.Peek(section, key, value) || value.empty()) return fallback;
  std::string text(value);
  if (m_file.encoding == Encoding::Utf8 && !FromArgument(value, Encoding::Windows1252, text)) {
    Refuse(section, key, "has characters that are not in Windows-1252");
    text = FromUtf8(value);
  }
  return text;
}

double SurveySettings::Number(const std::string& section, const std::string& key, double fallback, double low, double high) const {
  const std::string text = Text(section, key);
  double value = 0.0;
  if (text.empty()) return fallback;
  if (!ToNumber(text, value)) {
    Refuse(section, key, "is not a number: \"" + text + "\"");
    return fallback;
  }
  if (value >= low && value <= high) return value;
  Refuse(section, key, "is not from " + ShortNumber(low) + " to " + ShortNumber(high) + ": " + ShortNumber(value));
  return fallback;
}

int SurveySettings::Whole(const std::string& section, const std::string& key, int fallback, int low, int high) const {
  const double value = Number(section, key, fallback, low, high);
  if (value == std::floor(value)) return static_cast<int>(value);
  Refuse(section, key, "is not a whole number: " + ShortNumber(value));
  return fallback;
}

std::size_t SurveySettings::Choice(const std::string& section, const std::string& key, const std::vector<std::string>& words,
                                   std::size_t fallback) const {
  const std::string text = Text(section, key);
  if (text.empty()) return fallback;
  std::string all;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (SameLetters(text, words[i])) return i;
    all += (i == 0 ? "" : i + 1 == words.size() ? " nor " : ", ") + ("\"" + words[i] + "\"");
  }
  Refuse(section, key, "is neither " + all + ": \"" + text + "\"");
  return fallback;
}

bool SurveySettings::Flag(const std::string& section, const std::string& key, bool fallback) const {
  return Choice(section, key, {"no", "yes"}, fallback ? 1 : 0) == 1;
}

std::string SurveySettings::Place(const std::string& section, const std::string& key) const {
  std::string_view value;
  if (!m_file.store.Peek(section, key, value) || value.empty()) return std::string();
  return (fs::path(m_folder) / ToShownPath(std::string(value))).string();
}

std::string SurveySettings::File(const std::string& section, const std::string& key, long long mostBytes) const {
  const std::string path = Place(section, key);
  if (path.empty() || IsData(path, mostBytes)) return path;
  ReportFile(section, path, FileError::Open);
  std::error_code failed;
  if (fs::is_regular_file(path, failed)) Refuse(section, key, "names a file of more than " + std::to_string(mostBytes >> 20) + " MiB");
  return std::string();
}

std::vector<std::string> SurveySettings::Files(const std::string& section, const std::string& key, long long mostBytes) const {
  std::vector<std::string> files;
  std::string name = key;
  for (int number = 2; Has(section, name); ++number) {
    const std::string path = File(section, name, mostBytes);
    if (!path.empty()) files.push_back(path);
    name = key + "(" + std::to_string(number) + ")";
  }
  return files;
}

std::string SurveySettings::Folder(const std::string& section, const std::string& key) const {
  const std::string path = Place(section, key);
  std::error_code failed;
  if (path.empty() || fs::is_directory(path, failed)) return path;
  ReportFile(section, path, FileError::Open);
  return std::string();
}

}  // namespace zel
