// The settings file of a survey: its items read with their types and ranges, and the files that it names found. Neighbours:
// SettingsFile.h, the file; docs/survey.md, what each item means; SurveyFile.h, which asks for them.
#pragma once

#include <string>
#include <vector>

#include "SettingsFile.h"

namespace zel {

// What is wrong with an item is reported, once, under the name of its section, and the fallback holds.
class SurveySettings {
 public:
  // False, reported, when the settings cannot be read. Items that no survey has are reported, for a slip of the pen would otherwise
  // go unnoticed.
  bool Open(const std::string& folder, const std::string& name);

  // In Windows-1252, with "?" for what has no place there, which is an error.
  std::string Text(const std::string& section, const std::string& key, const std::string& fallback = "") const;

  // A finite number from `low` to `high`.
  double Number(const std::string& section, const std::string& key, double fallback, double low, double high) const;
  int Whole(const std::string& section, const std::string& key, int fallback, int low, int high) const;

  // One of `words`, letters of either case; its index.
  std::size_t Choice(const std::string& section, const std::string& key, const std::vector<std::string>& words, std::size_t fallback) const;

  // "yes" and "no".
  bool Flag(const std::string& section, const std::string& key, bool fallback) const;

  // Whether the item is there and says something.
  bool Has(const std::string& section, const std::string& key) const { return m_file.store.HasKey(section, key); }

  // The file that an item names, as a person types it here: relative to the survey's folder, with "/" or "\". Empty when there is no
  // such item, or, reported, when it leads to no regular file or to one of more than `mostBytes`.
  std::string File(const std::string& section, const std::string& key, long long mostBytes = kMostBytes) const;

  // All files of the items "key", "key(2)", "key(3)" and so on without a gap.
  std::vector<std::string> Files(const std::string& section, const std::string& key, long long mostBytes = kMostBytes) const;

  // The folder that an item names; empty as with File.
  std::string Folder(const std::string& section, const std::string& key) const;

  const std::string& Path() const { return m_file.path; }

  static constexpr long long kMostBytes = 256LL << 20;

 private:
  void CheckNames() const;
  std::string Place(const std::string& section, const std::string& key) const;
  void Refuse(const std::string& section, const std::string& key, const std::string& why) const;

  SettingsFile m_file;
  std::string m_folder;
};

}  // namespace zel
